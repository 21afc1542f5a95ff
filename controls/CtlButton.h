#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

class QPainter;

// A key lamp with its caption (F1..F9): dark while the key is up, lit while
// the live report says it is pressed.
class CtlButton : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor PenColor READ penColor WRITE setPenColor)
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(int m_state READ state WRITE setM_state)

public:
    explicit CtlButton(QWidget *parent = nullptr);

    QColor penColor() const { return m_penColor; }
    void setPenColor(const QColor &color);
    QString text() const { return m_text; }
    void setText(const QString &text);
    int state() const { return m_state; }
    void setM_state(int state);

    void draw(QPainter &painter);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_penColor;
    QString m_text;
    int m_state = 1;
};
