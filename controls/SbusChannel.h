#pragma once

#include <QColor>
#include <QFont>
#include <QWidget>

class QPainter;
struct SbusCaptionSet;

// One SBUS output channel as a bar on the −150..150 scale, filled from the
// centre towards the value, with an optional hold marker underneath.
class SbusChannel : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor PenColor READ penColor WRITE setPenColor)
    Q_PROPERTY(int m_val READ val WRITE setM_val)
    Q_PROPERTY(int m_hold READ hold WRITE setM_hold)
    Q_PROPERTY(int m_index READ index WRITE setM_index)
    Q_PROPERTY(bool m_throttleEnable READ throttleEnable WRITE setM_throttleEnable)

public:
    explicit SbusChannel(QWidget *parent = nullptr);

    QColor penColor() const { return m_penColor; }
    void setPenColor(const QColor &color);
    int val() const { return m_val; }
    void setM_val(int value);
    int hold() const { return m_hold; }
    void setM_hold(int value);
    int index() const { return m_index; }
    void setM_index(int value);
    bool throttleEnable() const { return m_throttleEnable; }
    void setM_throttleEnable(bool enable);

    void draw(QPainter &painter);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void drawHorizontal(QPainter &painter);
    void drawVertical(QPainter &painter);
    const QPixmap &valueCaption(const QPainter &painter, int value, qreal shift);

    QColor m_penColor;
    int m_val = 0;
    int m_hold = 0;
    int m_index = 0;
    bool m_throttleEnable = false;

    // The value texts this bar draws with, found again only when the font,
    // the colour or the text's position within a pixel changes.
    struct Caption {
        QFont font;
        qreal lineHeight = 0;
        SbusCaptionSet *set = nullptr;
        QFont setFont;
        QColor colour;
        qreal shift = -1;
        qreal ratio = 0;
    } m_caption;
};
