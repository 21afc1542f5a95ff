#pragma once

#include <QDialog>
#include <QRect>

class QLineEdit;
class QPainter;

// The frameless keypad an MSpinBox opens beside its value. Enter hands the
// typed number over once and closes the keypad; losing focus closes it
// without a number. Besides the mouse it takes the keyboard: digits, "-",
// ".", Backspace, Enter or Return (its Enter key) and Escape (closes it
// without a number).
class MCalculator : public QDialog
{
    Q_OBJECT

public:
    // Key indices: 0..9 the digits, then the four function keys.
    enum Key { Minus = 10, Clear = 11, Enter = 12, Point = 13, KeyCount = 14 };

    explicit MCalculator(QWidget *parent = nullptr);

    bool minusAllowed() const { return m_minusAllowed; }
    void setMinusAllowed(bool allowed);
    bool pointAllowed() const { return m_pointAllowed; }
    void setPointAllowed(bool allowed);

    QRect keyRect(int key) const { return m_keys[key]; }

    void draw(QPainter &painter);

Q_SIGNALS:
    void signal_calculatorMsg(double value);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void layoutKeys();
    int keyAt(const QPoint &pos) const;
    bool keyDimmed(int key) const;
    void pressKey(int key);
    void removeLast();
    void closeWithoutValue();
    void drawKey(QPainter &painter, int key);

    QLineEdit *m_display;
    QRect m_keys[KeyCount];
    bool m_minusAllowed = true;
    bool m_pointAllowed = false;
    bool m_pointEntered = false;
    int m_pressedKey = -1;
    bool m_pressedInside = false;
    bool m_done = false;
};
