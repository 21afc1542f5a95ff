#pragma once

#include <QColor>
#include <QRect>
#include <QString>
#include <QWidget>

class QPainter;

// A check box with a caption. In radio mode a click can check it but never
// uncheck it, and checking emits checkedChange(objectName()) so the page can
// clear the other items of its group by name.
class MCheckBox : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor PenColor READ penColor WRITE setPenColor)
    Q_PROPERTY(bool m_checkEnable READ checkEnable WRITE setM_checkEnable)
    Q_PROPERTY(bool m_checked READ checked WRITE setM_checked)
    Q_PROPERTY(QString m_text READ text WRITE setM_text)
    Q_PROPERTY(bool m_radio READ radio WRITE setM_radio)

public:
    explicit MCheckBox(QWidget *parent = nullptr);

    QColor penColor() const { return m_penColor; }
    void setPenColor(const QColor &color);
    bool checkEnable() const { return m_checkEnable; }
    void setM_checkEnable(bool enable);
    bool checked() const { return m_checked; }
    void setM_checked(bool checked);
    QString text() const { return m_text; }
    void setM_text(const QString &text);
    bool radio() const { return m_radio; }
    void setM_radio(bool radio);

    void draw(QPainter &painter);
    QSize sizeHint() const override;

Q_SIGNALS:
    void checkedChange(QString name);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    void layoutParts();

    QColor m_penColor;
    bool m_checkEnable = false;
    bool m_checked = false;
    QString m_text;
    bool m_radio = false;
    QRect m_boxRect;
    QRect m_textRect;
};
