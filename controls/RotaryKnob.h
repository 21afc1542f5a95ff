#pragma once

#include <QBrush>
#include <QColor>
#include <QWidget>

class QPainter;

// A potentiometer knob (LD/RD) showing 0..100 with a pointer triangle.
class RotaryKnob : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor penColor READ penColor WRITE setPenColor)
    Q_PROPERTY(QBrush m_pointerBrush READ pointerBrush WRITE setM_pointerBrush)
    Q_PROPERTY(int m_position READ position WRITE setM_position)

public:
    explicit RotaryKnob(QWidget *parent = nullptr);

    QColor penColor() const { return m_penColor; }
    void setPenColor(const QColor &color);
    QBrush pointerBrush() const { return m_pointerBrush; }
    void setM_pointerBrush(const QBrush &brush);
    int position() const { return m_position; }
    void setM_position(int position);

    void draw(QPainter &painter);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_penColor;
    QBrush m_pointerBrush;
    int m_position = 0;
};
