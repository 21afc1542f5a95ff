#include "PhaseSwitch.h"

#include "ControlColors.h"

#include <QMouseEvent>
#include <QPainter>

namespace
{
// Room kept between a caption and the edges of its half.
constexpr int CaptionAir = 2;
} // namespace

PhaseSwitch::PhaseSwitch(QWidget *parent)
    : QWidget(parent)
    , m_penColor(ControlColors::outlineGrey())
    , m_positive(tr("正"))
    , m_negative(tr("负"))
{
}

void PhaseSwitch::setPenColor(const QColor &color)
{
    if (m_penColor == color)
        return;
    m_penColor = color;
    update();
}

void PhaseSwitch::setM_index(int value)
{
    // Compared signed: anything not above 1 is stored, negatives included
    // (they paint like 1, the right half lit).
    if (value > 1 || value == m_index)
        return;
    m_index = value;
    update();
}

void PhaseSwitch::setM_positive(const QString &text)
{
    if (m_positive == text)
        return;
    m_positive = text;
    update();
}

void PhaseSwitch::setM_negative(const QString &text)
{
    if (m_negative == text)
        return;
    m_negative = text;
    update();
}

QSize PhaseSwitch::sizeHint() const
{
    const int textWidth
        = qMax(fontMetrics().horizontalAdvance(m_positive), fontMetrics().horizontalAdvance(m_negative));
    return QSize(qMax(80, 2 * textWidth + 40), qMax(26, fontMetrics().height() + 12));
}

void PhaseSwitch::layoutHalves()
{
    const QRect inner = rect().adjusted(4, 4, -4, -4);
    const int halfWidth = inner.width() / 2;
    m_leftHalf = QRect(inner.x(), inner.y(), halfWidth, inner.height());
    m_rightHalf = QRect(inner.x() + halfWidth, inner.y(), inner.width() - halfWidth, inner.height());
}

void PhaseSwitch::resizeEvent(QResizeEvent *event)
{
    layoutHalves();
    QWidget::resizeEvent(event);
}

void PhaseSwitch::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(painter);
}

void PhaseSwitch::draw(QPainter &painter)
{
    layoutHalves();
    painter.save();
    painter.setFont(font());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);

    painter.setPen(m_penColor);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect().adjusted(1, 1, -1, -1), 2, 2);

    QColor track = ControlColors::accentBlue();
    track.setAlpha(100);
    painter.setPen(Qt::NoPen);
    painter.setBrush(track);
    painter.drawRoundedRect(rect().adjusted(4, 4, -4, -4), 2, 2);

    const bool leftLit = m_index == 0;
    const QRect lit = leftLit ? m_leftHalf : m_rightHalf;
    painter.setPen(leftLit ? ControlColors::darkBlue() : ControlColors::accentBlue());
    painter.setBrush(leftLit ? ControlColors::accentBlue() : ControlColors::darkBlue());
    painter.drawRoundedRect(lit, 2, 2);
    // A caption wider than its half (a long translation) is set smaller
    // rather than cut at the frame.
    const QString caption = leftLit ? m_positive : m_negative;
    const int room = lit.width() - 2 * CaptionAir;
    const int textWidth = painter.fontMetrics().horizontalAdvance(caption);
    if (room > 0 && textWidth > room) {
        QFont smaller = painter.font();
        const qreal scale = qreal(room) / textWidth;
        if (smaller.pointSizeF() > 0)
            smaller.setPointSizeF(qMax(1.0, smaller.pointSizeF() * scale));
        else
            smaller.setPixelSize(qMax(1, int(smaller.pixelSize() * scale)));
        painter.setFont(smaller);
    }
    painter.setPen(Qt::white);
    painter.drawText(lit, Qt::AlignCenter, caption);
    painter.restore();
}

void PhaseSwitch::mousePressEvent(QMouseEvent *event)
{
    // A press on the lit half moves the light to the other half; a press on
    // the dark half leaves it where it is. Kept on purpose: the pages expect it.
    layoutHalves();
    if (m_leftHalf.contains(event->pos()))
        m_index = 1;
    else if (m_rightHalf.contains(event->pos()))
        m_index = 0;
    update();
    QWidget::mousePressEvent(event);
}
