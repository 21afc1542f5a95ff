#include "RotaryKnob.h"

#include "ControlColors.h"
#include "ControlLayers.h"

#include <QPainter>
#include <QPolygonF>
#include <QtMath>

namespace
{
constexpr double Pi = 3.1416;

// A point at angle (degrees, counter-clockwise from three o'clock) and radius
// around the knob's centre, in screen coordinates.
QPointF polar(double degrees, double radius)
{
    const double a = degrees * Pi / 180.0;
    return QPointF(radius * qCos(a), -radius * qSin(a));
}
} // namespace

RotaryKnob::RotaryKnob(QWidget *parent)
    : QWidget(parent)
    , m_penColor(ControlColors::outlineGrey())
    , m_pointerBrush(ControlColors::accentBlue())
{
}

void RotaryKnob::setPenColor(const QColor &color)
{
    if (m_penColor == color)
        return;
    m_penColor = color;
    update();
}

void RotaryKnob::setM_pointerBrush(const QBrush &brush)
{
    if (m_pointerBrush == brush)
        return;
    m_pointerBrush = brush;
    update();
}

void RotaryKnob::setM_position(int position)
{
    m_position = qBound(0, position, 100);
    update(); // always repaint: the live report repeats values
}

QSize RotaryKnob::sizeHint() const
{
    return QSize(60, 60);
}

void RotaryKnob::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(painter);
}

void RotaryKnob::draw(QPainter &painter)
{
    const int r = qMin(width(), height()) / 2;
    const QRectF circle(-r, -r, 2 * r, 2 * r);

    painter.save();
    painter.setFont(font());
    painter.setRenderHint(QPainter::Antialiasing);

    // Rim, scale arc, index line and (with a plain brush) the hub do not move.
    const bool solidHub = m_pointerBrush.style() == Qt::SolidPattern;
    const QString key = QStringLiteral("RotaryKnob/%1/%2")
                            .arg(m_penColor.rgba())
                            .arg(solidHub ? m_pointerBrush.color().rgba() : 0u);
    const auto drawHub = [this](QPainter &p) {
        QPen pen(m_penColor);
        pen.setWidth(1);
        p.setPen(pen);
        p.setBrush(m_pointerBrush);
        p.drawEllipse(QRectF(-5, -5, 10, 10));
    };
    ControlLayers::drawCached(painter, key, size(), [&](QPainter &p) {
        p.translate(r, r);
        QPen pen(m_penColor);
        p.setPen(pen);
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(circle);
        pen.setWidth(5);
        p.setPen(pen);
        p.drawArc(circle, -45 * 16, 270 * 16);
        pen.setWidth(3);
        p.setPen(pen);
        p.drawLine(0, -r, 0, -r + 10);
        if (solidHub)
            drawHub(p);
    });

    painter.translate(r, r);
    if (!solidHub)
        drawHub(painter);
    painter.setPen(QPen(m_penColor, 1));
    painter.setBrush(m_pointerBrush);

    // The tip starts at the lower left and turns counter-clockwise through
    // the bottom; it does not follow the scale arc above, and is kept so.
    const int a = m_position * 270 / 100;
    const QPolygonF pointer({ polar(a + 135, 3), polar(a + 225, r - 8), polar(a + 315, 3) });
    painter.drawPolygon(pointer);
    painter.restore();
}
