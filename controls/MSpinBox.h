#pragma once

#include <QBrush>
#include <QColor>
#include <QElapsedTimer>
#include <QPointer>
#include <QRect>
#include <QWidget>

class MCalculator;
class QPainter;
class QTimer;

// A drawn numeric input: optional enable box, minus button, value, plus
// button. A held button steps the value on every tick of a 50 ms timer; a
// press on the value opens the keypad beside it.
class MSpinBox : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor PenColor READ penColor WRITE setPenColor)
    Q_PROPERTY(QBrush m_brush READ brush WRITE setM_brush)
    Q_PROPERTY(bool m_checked READ checked WRITE setM_checked)
    Q_PROPERTY(bool m_checkEnable READ checkEnable WRITE setM_checkEnable)
    Q_PROPERTY(double m_minValue READ minValue WRITE setM_minValue)
    Q_PROPERTY(double m_maxValue READ maxValue WRITE setM_maxValue)
    Q_PROPERTY(double m_currentValue READ currentValue WRITE setM_currentValue NOTIFY currentValueChanged)
    Q_PROPERTY(int m_decimal READ decimal WRITE setM_decimal)
    Q_PROPERTY(bool m_buttonState READ buttonState WRITE setM_buttonState)

public:
    explicit MSpinBox(QWidget *parent = nullptr);

    QColor penColor() const { return m_penColor; }
    void setPenColor(const QColor &color);
    QBrush brush() const { return m_brush; }
    void setM_brush(const QBrush &brush);
    bool checked() const { return m_checked; }
    void setM_checked(bool checked);
    bool checkEnable() const { return m_checkEnable; }
    void setM_checkEnable(bool enable);
    double minValue() const { return m_minValue; }
    void setM_minValue(double value);
    double maxValue() const { return m_maxValue; }
    void setM_maxValue(double value);
    double currentValue() const { return m_currentValue; }
    void setM_currentValue(double value);
    int decimal() const { return m_decimal; }
    void setM_decimal(int digits);
    bool buttonState() const { return m_buttonState; }
    void setM_buttonState(bool enabled);

    void draw(QPainter &painter);
    QSize sizeHint() const override;

Q_SIGNALS:
    void currentValueChanged();

public Q_SLOTS:
    void slot_calculatorMsg(double value);
    void slot_timeout();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    enum PressState { Released = 0, Pressed = 2 };

    void layoutParts();
    double clamped(double value) const;
    double step() const;
    void openCalculator();
    void drawButton(QPainter &painter, const QRect &button, bool plus, bool pressed, bool working);

    QColor m_penColor;
    QBrush m_brush;
    bool m_checked = false;
    bool m_checkEnable = false;
    double m_minValue = 0.0;
    double m_maxValue = 150.0;
    double m_currentValue = 0.0;
    int m_decimal = 0;
    bool m_buttonState = true;

    QRect m_checkRect;
    QRect m_plusRect;
    QRect m_minusRect;
    QRect m_valueRect;
    int m_checkPress = Released;
    int m_plusPress = Released;
    int m_minusPress = Released;
    QTimer *m_timer;
    QElapsedTimer m_beat; // since construction: the phase of the repeat ticks
    QPointer<MCalculator> m_calculator;
};
