#pragma once

#include <QBrush>
#include <QPen>
#include <QPoint>
#include <QWidget>

class QPainter;

// A two-axis stick gimbal (−30..30 on each axis, y up), optionally with the
// scale of a twist axis along its top.
class Rocker : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int m_radius READ radius WRITE setM_radius)
    Q_PROPERTY(bool m_is_z_axis READ isZAxis WRITE setM_is_z_axis)
    Q_PROPERTY(QColor penColor READ penColor WRITE setPenColor)
    Q_PROPERTY(QBrush m_brush READ brush WRITE setM_brush)
    Q_PROPERTY(QPoint m_position READ position WRITE setM_position)
    Q_PROPERTY(double m_z_axis_per READ zAxisPer WRITE setM_z_axis_per)

public:
    explicit Rocker(QWidget *parent = nullptr);

    int radius() const { return m_radius; }
    void setM_radius(int radius);
    bool isZAxis() const { return m_is_z_axis; }
    void setM_is_z_axis(bool on);
    QColor penColor() const { return m_pen.color(); }
    void setPenColor(const QColor &color);
    QBrush brush() const { return m_brush; }
    void setM_brush(const QBrush &brush);
    QPoint position() const { return m_position; }
    void setM_position(const QPoint &position);
    double zAxisPer() const { return m_z_axis_per; }
    void setM_z_axis_per(double fraction);

    void draw(QPainter &painter);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QRect twistBandBounds(int r) const;
    void drawTwistBand(QPainter &painter, int r);
    void drawTwistScale(QPainter &painter, int r);

    int m_radius = 8;
    bool m_is_z_axis = false;
    QPen m_pen;
    QBrush m_brush;
    QPoint m_position;
    double m_z_axis_per = 0.0;
    QPen m_guidePen;
    QBrush m_guideBrush;
};
