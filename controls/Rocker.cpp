#include "Rocker.h"

#include "ControlColors.h"
#include "ControlLayers.h"

#include <QLineF>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

namespace
{
constexpr int AxisLimit = 30;
constexpr double Pi = 3.1416;
constexpr int TwistSpanDegrees = 45;
} // namespace

Rocker::Rocker(QWidget *parent)
    : QWidget(parent)
    , m_pen(ControlColors::outlineGrey(), 1, Qt::SolidLine)
    , m_brush(ControlColors::accentBlue())
    , m_guideBrush(Qt::NoBrush)
{
    m_guidePen = m_pen;
    m_guidePen.setWidth(2);
    m_guidePen.setStyle(Qt::DashLine);
}

void Rocker::setM_radius(int radius)
{
    if (m_radius == radius)
        return;
    m_radius = radius;
    update();
}

void Rocker::setM_is_z_axis(bool on)
{
    if (m_is_z_axis == on)
        return;
    m_is_z_axis = on;
    update();
}

void Rocker::setPenColor(const QColor &color)
{
    if (m_pen.color() == color)
        return;
    m_pen.setColor(color);
    m_guidePen.setColor(color);
    update();
}

void Rocker::setM_brush(const QBrush &brush)
{
    if (m_brush == brush)
        return;
    m_brush = brush;
    update();
}

void Rocker::setM_position(const QPoint &position)
{
    m_position
        = QPoint(qBound(-AxisLimit, position.x(), AxisLimit), qBound(-AxisLimit, position.y(), AxisLimit));
    update(); // always repaint: the live report repeats values
}

void Rocker::setM_z_axis_per(double fraction)
{
    // Written so that NaN is ignored along with everything outside −1..1.
    if (!(fraction >= -1.0 && fraction <= 1.0) || fraction == m_z_axis_per)
        return;
    m_z_axis_per = fraction;
    update();
}

QSize Rocker::sizeHint() const
{
    return QSize(120, 120);
}

void Rocker::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(painter);
}

void Rocker::draw(QPainter &painter)
{
    const int r = m_radius;
    const int R = qMin(width(), height()) / 2 - r;
    const QRect square(-R, -R, 2 * R, 2 * R);

    painter.save();
    painter.setFont(font());
    painter.setRenderHint(QPainter::Antialiasing);

    // The gimbal's square, circle, axes and centre dot do not move, nor do
    // the twist scale's arc and ticks; the twist band is the only moving
    // part beneath them.
    const QString key
        = QStringLiteral("Rocker/%1/%2/%3").arg(r).arg(m_guidePen.color().rgba()).arg(int(m_is_z_axis));
    const ControlLayers::Paint still = [&](QPainter &p) {
        p.translate(r + R, r + R);
        if (m_is_z_axis)
            drawTwistScale(p, R);
        QPen guide = m_guidePen;
        p.setPen(guide);
        p.setBrush(m_guideBrush);
        p.drawRect(square);
        p.drawEllipse(square);

        guide.setStyle(Qt::SolidLine);
        p.setPen(guide);
        p.drawLine(-R, 0, R, 0);
        p.drawLine(0, -R, 0, R);
        for (int k = -3; k <= 3; ++k) {
            const int at = k * R / 3;
            p.drawLine(at, -r, at, r);
            p.drawLine(-r, at, r, at);
        }

        p.setPen(Qt::NoPen);
        p.setBrush(m_guidePen.color());
        p.drawEllipse(QPoint(0, 0), r, r);
    };
    const QPoint centre(r + R, r + R);
    if (!m_is_z_axis) {
        ControlLayers::drawCached(painter, key, size(), still);
    } else if (ControlLayers::hasBackdrop(painter)) {
        // Backdrop and layer in one copy, then the band's corner of it
        // again as backdrop, band, layer.
        ControlLayers::drawCached(painter, key, size(), still);
        const QRect band = twistBandBounds(R).translated(centre);
        ControlLayers::drawUnder(painter, band);
        painter.save();
        painter.translate(centre);
        drawTwistBand(painter, R);
        painter.restore();
        ControlLayers::drawOver(painter, band, key, size(), still);
    } else {
        painter.save();
        painter.translate(centre);
        drawTwistBand(painter, R);
        painter.restore();
        ControlLayers::drawCached(painter, key, size(), still);
    }

    painter.translate(r + R, r + R);
    // Screen y grows downward, the stick's y grows upward.
    const QPoint knob(m_position.x() * R / AxisLimit, -(m_position.y() * R / AxisLimit));
    painter.setPen(m_pen);
    painter.setBrush(m_brush);
    painter.drawEllipse(knob, r, r);
    painter.restore();
}

// Where the band can reach: the pie from the top through ±45° of twist,
// with room for its antialiased edge.
QRect Rocker::twistBandBounds(int R) const
{
    QPainterPath pie;
    pie.moveTo(0, 0);
    pie.arcTo(QRectF(-R, -R, 2 * R, 2 * R), 90, -TwistSpanDegrees * m_z_axis_per);
    pie.closeSubpath();
    return pie.boundingRect().toAlignedRect().adjusted(-2, -2, 2, 2);
}

void Rocker::drawTwistBand(QPainter &painter, int R)
{
    const int r = m_radius;
    const QRect square(-R, -R, 2 * R, 2 * R);
    const QRect inner = square.adjusted(2 * r, 2 * r, -2 * r, -2 * r);
    // Positive twist grows clockwise from the top, hence the negative span.
    const int span = static_cast<int>(-TwistSpanDegrees * m_z_axis_per * 16);

    painter.setPen(Qt::NoPen);
    painter.setBrush(m_brush);
    painter.drawPie(square, 90 * 16, span);
    painter.setPen(ControlColors::darkGrey());
    painter.setBrush(ControlColors::darkGrey());
    painter.drawPie(inner, 90 * 16, span);
}

void Rocker::drawTwistScale(QPainter &painter, int R)
{
    const int r = m_radius;
    const QRect square(-R, -R, 2 * R, 2 * R);
    const QRect inner = square.adjusted(2 * r, 2 * r, -2 * r, -2 * r);

    QPen solid = m_guidePen;
    solid.setStyle(Qt::SolidLine);
    painter.setPen(solid);
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(inner, 45 * 16, 90 * 16);
    // Thin ticks, so the twist band shows between them.
    solid.setWidth(1);
    painter.setPen(solid);
    for (int i = 0; i <= 20; ++i) {
        const double angle = (45.0 + 4.5 * i) * Pi / 180.0;
        const double c = qCos(angle);
        const double s = qSin(angle);
        painter.drawLine(QLineF(R * c, -R * s, (R - 2 * r) * c, -(R - 2 * r) * s));
    }
}
