#include "CtlButton.h"

#include "ControlColors.h"
#include "ControlLayers.h"

#include <QPainter>

CtlButton::CtlButton(QWidget *parent)
    : QWidget(parent)
    , m_penColor(Qt::white)
    , m_text(QStringLiteral("Fx"))
{
}

void CtlButton::setPenColor(const QColor &color)
{
    if (m_penColor == color)
        return;
    m_penColor = color;
    update();
}

void CtlButton::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    update();
}

void CtlButton::setM_state(int state)
{
    if (m_state == state)
        return;
    m_state = state;
    update();
}

QSize CtlButton::sizeHint() const
{
    return QSize(50, 34);
}

void CtlButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(painter);
}

void CtlButton::draw(QPainter &painter)
{
    painter.save();
    painter.setFont(font());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);

    // A lamp has only three looks per caption: dark, blue and green.
    const int look = (m_state == 1 || m_state == 2) ? m_state : 0;
    const QString key
        = QStringLiteral("CtlButton/%1/%2/%3/%4").arg(look).arg(m_penColor.rgba()).arg(font().key(), m_text);
    ControlLayers::drawCached(painter, key, size(), [&](QPainter &p) {
        p.setPen(m_penColor);
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(rect().adjusted(5, 5, -5, -5), 5, 5);

        const QRect face = rect().adjusted(7, 7, -7, -7);
        p.setPen(QColor(Qt::gray));
        if (look == 1)
            p.setBrush(ControlColors::accentBlue());
        else if (look == 2)
            p.setBrush(ControlColors::lampGreen());
        p.drawRoundedRect(face, 5, 5);

        p.setPen(Qt::white);
        p.drawText(face, Qt::AlignCenter, m_text);
    });
    painter.restore();
}
