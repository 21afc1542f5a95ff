#include "Dial.h"

#include "ControlColors.h"
#include "ControlLayers.h"

#include <QPainter>

Dial::Dial(QWidget *parent)
    : QWidget(parent)
    , m_penColor(ControlColors::outlineGrey())
    , m_brush(ControlColors::accentBlue())
{
}

void Dial::setPenColor(const QColor &color)
{
    if (m_penColor == color)
        return;
    m_penColor = color;
    update();
}

void Dial::setM_brush(const QBrush &brush)
{
    if (m_brush == brush)
        return;
    m_brush = brush;
    update();
}

void Dial::setM_position(int degrees)
{
    m_position = m_direction == 0 ? qBound(-90, degrees, 0) : qBound(0, degrees, 90);
    update(); // always repaint: the live report repeats values
}

void Dial::setM_direction(int direction)
{
    if (m_direction == direction)
        return;
    m_direction = direction;
    update();
}

QSize Dial::sizeHint() const
{
    return QSize(80, 80);
}

void Dial::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(painter);
}

void Dial::draw(QPainter &painter)
{
    const int r = qMin(width(), height()) / 2;
    const QRect circle(-r, -r, 2 * r, 2 * r);

    painter.save();
    painter.setFont(font());
    painter.setRenderHint(QPainter::Antialiasing);

    const int rangeStart = m_direction == 0 ? 45 : -45;
    const auto still = [&](QPainter &p) {
        QPen pen(m_penColor, 1, Qt::DashLine);
        p.setPen(pen);
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(circle);
        p.drawLine(-r, 0, r, 0);
        p.drawLine(0, -r, 0, r);

        // The range: the half circle around the quarter this dial covers.
        pen.setWidth(5);
        pen.setStyle(Qt::SolidLine);
        p.setPen(pen);
        p.setBrush(m_penColor);
        p.drawArc(circle, rangeStart * 16, 180 * 16);
    };
    const auto pointer = [&](QPainter &p) {
        // Qt counts angles counter-clockwise from three o'clock; the pointer
        // sits at 90° − position, so 0 is straight up.
        QPen pen(m_penColor, 2, Qt::SolidLine);
        p.setPen(pen);
        p.setBrush(m_brush);
        p.drawPie(circle, (82 - m_position) * 16, 16 * 16);

        pen.setColor(m_brush.color());
        p.setPen(pen);
        p.drawArc(circle, (45 - m_position) * 16, 90 * 16);
    };

    // The rim and the range are drawn once per look; the pointer, a small
    // pie and arc, is drawn over them on each frame. (A kept picture per
    // pointer position would take some ten megabytes per dial.)
    const QString key = QStringLiteral("Dial/%1/%2").arg(rangeStart).arg(m_penColor.rgba());
    ControlLayers::drawCached(painter, key, size(), [&](QPainter &p) {
        p.translate(r, r);
        still(p);
    });
    painter.translate(r, r);
    pointer(painter);
    painter.restore();
}
