#pragma once

#include <QColor>
#include <QRect>
#include <QString>
#include <QWidget>

class QPainter;

// The two-way phase selector of a channel (normal / reversed). The owning
// page reads m_index when it collects its values; no signal is emitted.
class PhaseSwitch : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor penColor READ penColor WRITE setPenColor)
    Q_PROPERTY(int m_index READ index WRITE setM_index)
    Q_PROPERTY(QString m_positive READ positive WRITE setM_positive)
    Q_PROPERTY(QString m_negative READ negative WRITE setM_negative)

public:
    explicit PhaseSwitch(QWidget *parent = nullptr);

    QColor penColor() const { return m_penColor; }
    void setPenColor(const QColor &color);
    int index() const { return m_index; }
    void setM_index(int value);
    QString positive() const { return m_positive; }
    void setM_positive(const QString &text);
    QString negative() const { return m_negative; }
    void setM_negative(const QString &text);

    void draw(QPainter &painter);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    void layoutHalves();

    QColor m_penColor;
    int m_index = 0;
    QString m_positive;
    QString m_negative;
    QRect m_leftHalf;
    QRect m_rightHalf;
};
