#pragma once

#include <QColor>
#include <QWidget>

class QPainter;

// The four-way direction pad with an optional centre key. The owning page
// sets the key flags directly from the key word of the live report.
class SteeringWheel : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor PenColor READ penColor WRITE setPenColor)
    Q_PROPERTY(int m_state READ state WRITE setM_state)

public:
    SteeringWheel(QWidget *parent, int state);

    QColor penColor() const { return m_penColor; }
    void setPenColor(const QColor &color);
    int state() const { return m_state; }
    void setM_state(int state);

    void draw(QPainter &painter);
    QSize sizeHint() const override;

    bool m_up = false;
    bool m_left = false;
    bool m_down = false;
    bool m_right = false;
    bool m_centre = false;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void drawLook(QPainter &painter);

    QColor m_penColor;
    int m_state;
};
