#include "SbusChannel.h"

#include "ControlColors.h"
#include "ControlLayers.h"

#include <QHash>
#include <QPainter>
#include <QPolygon>
#include <QStaticText>

namespace
{
constexpr int ValueLimit = 150;
// Room at the right of a horizontal bar for the value text.
constexpr int TextRoom = 62;
constexpr int TextWidth = 55;
constexpr int CaptionCacheLimit = 4096;

// The value captions, shaped once per font and value: a model page repaints
// 32 bars with every live report, and laying out their text was the larger
// part of the cost.
const QStaticText &valueCaption(const QFont &font, int value)
{
    static QHash<QString, QStaticText> captions;
    const QString text = QStringLiteral("%1").arg(value);
    const QString key = font.key() + QLatin1Char('|') + text;
    auto it = captions.find(key);
    if (it == captions.end()) {
        if (captions.size() >= CaptionCacheLimit)
            captions.clear();
        QStaticText caption(text);
        caption.setTextFormat(Qt::PlainText);
        caption.prepare(QTransform(), font);
        it = captions.insert(key, caption);
    }
    return it.value();
}
} // namespace

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
    painter.setPen(m_penColor);
    const QStaticText &caption = valueCaption(painter.font(), m_val);
    const qreal top = m + (h - 2 * m - QFontMetricsF(painter.font()).height()) / 2.0;
    painter.drawStaticText(QPointF(w - TextWidth, top), caption);

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
