#pragma once

#include <QBrush>
#include <QColor>
#include <QWidget>

class QPainter;

// A quarter-turn side dial (LW/RW): the pointer angle in degrees from the top,
// −90..0 for a dial left of the top, 0..90 for one right of it.
class Dial : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor penColor READ penColor WRITE setPenColor)
    Q_PROPERTY(QBrush m_brush READ brush WRITE setM_brush)
    Q_PROPERTY(int m_position READ position WRITE setM_position)
    Q_PROPERTY(int m_direction READ direction WRITE setM_direction)

public:
    explicit Dial(QWidget *parent = nullptr);

    QColor penColor() const { return m_penColor; }
    void setPenColor(const QColor &color);
    QBrush brush() const { return m_brush; }
    void setM_brush(const QBrush &brush);
    int position() const { return m_position; }
    void setM_position(int degrees);
    int direction() const { return m_direction; }
    void setM_direction(int direction);

    void draw(QPainter &painter);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_penColor;
    QBrush m_brush;
    int m_position = 0;
    int m_direction = 0;
};
