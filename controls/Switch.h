#pragma once

#include <QPen>
#include <QWidget>

class QPainter;

// A three-position lever switch of the handset (SA..SF), vertical or
// horizontal as it sits on the unit.
class Switch : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor penColor READ penColor WRITE setPenColor)
    Q_PROPERTY(int m_index READ index WRITE setM_index)
    Q_PROPERTY(bool m_direction READ direction WRITE setM_direction)

public:
    explicit Switch(QWidget *parent = nullptr);

    QColor penColor() const { return m_pen.color(); }
    void setPenColor(const QColor &color);
    int index() const { return m_index; }
    void setM_index(int value);
    bool direction() const { return m_direction; }
    void setM_direction(bool vertical);

    void draw(QPainter &painter);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPen m_pen;
    int m_index = 1;
    bool m_direction = true;
};
