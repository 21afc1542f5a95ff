#include "SbusChannel.h"

#include "ControlColors.h"
#include "ControlLayers.h"

#include <QPainter>
#include <QPolygon>
#include <QStaticText>
#include <QStringBuilder>
#include <QtMath>

#include <map>

namespace
{
constexpr int ValueLimit = 150;
// Room at the right of a horizontal bar for the value text.
constexpr int TextRoom = 62;
constexpr int TextWidth = 55;
// Room left of a value text's origin in its pixmap, for glyphs that reach
// left of it.
constexpr int CaptionMargin = 2;
constexpr int ValueCount = 2 * ValueLimit + 1;
} // namespace

// The value texts, each laid out and drawn once per font, colour and
// position within a pixel: a model page repaints 32 bars with every live
// report, and shaping and drawing their texts anew was a good part of it.
struct SbusCaptionSet {
    QVector<QPixmap> byValue = QVector<QPixmap>(ValueCount);
};

namespace
{

SbusCaptionSet &captionSet(const QFont &font, const QColor &colour, qreal shift, qreal ratio)
{
    // A std::map keeps its elements in place; the bars hold on to theirs.
    static std::map<QString, SbusCaptionSet> sets;
    const QString key = font.key() % QLatin1Char('|') % QString::number(colour.rgba()) % QLatin1Char('|')
        % QString::number(qRound(shift * 64)) % QLatin1Char('@') % QString::number(qRound(ratio * 100));
    return sets[key];
}
} // namespace

const QPixmap &SbusChannel::valueCaption(const QPainter &painter, int value, qreal shift)
{
    const qreal ratio = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
    if (!m_caption.set || m_caption.colour != m_penColor || m_caption.shift != shift
        || m_caption.ratio != ratio || m_caption.setFont != painter.font()) {
        m_caption.set = &captionSet(painter.font(), m_penColor, shift, ratio);
        m_caption.colour = m_penColor;
        m_caption.shift = shift;
        m_caption.ratio = ratio;
        m_caption.setFont = painter.font();
    }
    QPixmap &pixmap = m_caption.set->byValue[value + ValueLimit];
    if (pixmap.isNull()) {
        QStaticText text(QStringLiteral("%1").arg(value));
        text.setTextFormat(Qt::PlainText);
        text.prepare(QTransform(), painter.font());
        const QSizeF size = text.size();
        pixmap = QPixmap(
            QSize(qCeil(size.width()) + 2 * CaptionMargin, qCeil(size.height() + shift) + 1) * ratio);
        pixmap.setDevicePixelRatio(ratio);
        pixmap.fill(Qt::transparent);
        QPainter p(&pixmap);
        p.setRenderHints(painter.renderHints());
        p.setFont(painter.font());
        p.setPen(m_penColor);
        p.drawStaticText(QPointF(CaptionMargin, shift), text);
    }
    return pixmap;
}

SbusChannel::SbusChannel(QWidget *parent)
    : QWidget(parent)
    , m_penColor(ControlColors::outlineGrey())
{
}

void SbusChannel::setPenColor(const QColor &color)
{
    if (m_penColor == color)
        return;
    m_penColor = color;
    update();
}

void SbusChannel::setM_val(int value)
{
    m_val = qBound(-ValueLimit, value, ValueLimit);
    update(); // always repaint: the live report repeats values
}

void SbusChannel::setM_hold(int value)
{
    if (m_hold == value)
        return;
    m_hold = value;
    update();
}

void SbusChannel::setM_index(int value)
{
    if (m_index == value)
        return;
    m_index = value;
    updateGeometry();
    update();
}

void SbusChannel::setM_throttleEnable(bool enable)
{
    if (m_throttleEnable == enable)
        return;
    m_throttleEnable = enable;
    update();
}

QSize SbusChannel::sizeHint() const
{
    return m_index == 0 ? QSize(262, 20) : QSize(20, 152);
}

void SbusChannel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(painter);
}

void SbusChannel::draw(QPainter &painter)
{
    painter.save();
    painter.setFont(font());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    if (m_index == 0)
        drawHorizontal(painter);
    else
        drawVertical(painter);
    painter.restore();
}

void SbusChannel::drawHorizontal(QPainter &painter)
{
    const int w = width();
    const int h = height();
    const int m = h / 5;
    const int barWidth = w - TextRoom;
    const QRect bar(1, m, barWidth, h - 2 * m);
    const int half = barWidth / 2;
    const int fill = (half - 1) * m_val / ValueLimit;

    // Outline and guides; the value text sits to the right of both.
    ControlLayers::drawCached(
        painter, QStringLiteral("SbusChannel/h/%1").arg(m_penColor.rgba()), size(), [&](QPainter &p) {
            QPen pen(m_penColor);
            p.setPen(pen);
            p.setBrush(Qt::NoBrush);
            p.drawRect(bar);
            pen.setStyle(Qt::DashLine);
            p.setPen(pen);
            for (int x : { barWidth / 6 + 1, half + 1, barWidth * 5 / 6 + 1 })
                p.drawLine(x, 0, x, h);
        });

    // Left aligned and vertically centred in (W - 55, m, 55, H - 2m).
    if (m_caption.lineHeight <= 0 || m_caption.font != painter.font()) {
        m_caption.font = painter.font();
        m_caption.lineHeight = QFontMetricsF(painter.font()).height();
    }
    const qreal top = m + (h - 2 * m - m_caption.lineHeight) / 2.0;
    const QPixmap &caption = valueCaption(painter, m_val, top - qFloor(top));
    painter.drawPixmap(w - TextWidth - CaptionMargin, qFloor(top), caption);

    const int centre = 1 + half;
    if (m_val >= 1)
        painter.fillRect(QRect(centre, m + 1, fill, h - 2 * m - 2), ControlColors::accentBlue());
    else if (m_val <= -1)
        painter.fillRect(
            QRect(centre - qAbs(fill), m + 1, qAbs(fill), h - 2 * m - 2), ControlColors::accentBlue());

    if (m_throttleEnable) {
        const QPoint apex(1 + barWidth / 2 + barWidth * m_hold / 300, m + (h - 2 * m));
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_penColor);
        painter.drawPolygon(QPolygon({ apex, QPoint(apex.x() - m, h), QPoint(apex.x() + m, h) }));
    }
}

void SbusChannel::drawVertical(QPainter &painter)
{
    const int w = width();
    const int h = height();
    const int m = w / 5;
    const int barWidth = w - 2 * m;
    const QRect bar(m, 1, barWidth, h - 2);
    const int half = (h - 2) / 2;
    const int fill = (half - 1) * m_val / ValueLimit;

    ControlLayers::drawCached(
        painter, QStringLiteral("SbusChannel/v/%1").arg(m_penColor.rgba()), size(), [&](QPainter &p) {
            QPen pen(m_penColor);
            p.setPen(pen);
            p.setBrush(Qt::NoBrush);
            p.drawRect(bar);
            pen.setStyle(Qt::DashLine);
            p.setPen(pen);
            for (int y : { (h - 2) / 6 + 1, half + 1, (h - 2) * 5 / 6 + 1 })
                p.drawLine(0, y, w, y);
        });

    // Positive values grow upward from the centre, negative ones downward.
    const int centre = 1 + half;
    if (m_val >= 1)
        painter.fillRect(QRect(m + 1, centre - fill, barWidth - 2, fill), ControlColors::accentBlue());
    else if (m_val <= -1)
        painter.fillRect(QRect(m + 1, centre, barWidth - 2, qAbs(fill)), ControlColors::accentBlue());

    // The hold marker keeps the horizontal formula with the bar's width and a
    // one-pixel margin, which leaves it as a small mark on the bottom edge.
    if (m_throttleEnable) {
        const int mark = 1;
        const QPoint apex(1 + barWidth / 2 + barWidth * m_hold / 300, mark + (h - 2 * mark));
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_penColor);
        painter.drawPolygon(QPolygon({ apex, QPoint(apex.x() - mark, h), QPoint(apex.x() + mark, h) }));
    }
}
