#include "Switch.h"

#include "ControlColors.h"
#include "ControlLayers.h"

#include <QPainter>

Switch::Switch(QWidget *parent)
    : QWidget(parent)
    , m_pen(ControlColors::outlineGrey(), 2)
{
}

void Switch::setPenColor(const QColor &color)
{
    if (m_pen.color() == color)
        return;
    m_pen.setColor(color);
    update();
}

void Switch::setM_index(int value)
{
    // Compared unsigned: negatives fall outside 0..2 as well and are ignored.
    if (static_cast<unsigned>(value) > 2u || value == m_index)
        return;
    m_index = value;
    update();
}

void Switch::setM_direction(bool vertical)
{
    if (m_direction == vertical)
        return;
    m_direction = vertical;
    updateGeometry();
    update();
}

QSize Switch::sizeHint() const
{
    return m_direction ? QSize(24, 66) : QSize(66, 24);
}

void Switch::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(painter);
}

void Switch::draw(QPainter &painter)
{
    const int w = width();
    const int h = height();
    painter.save();
    painter.setFont(font());
    painter.setRenderHint(QPainter::Antialiasing);

    QRect slot;
    QRect lever;
    QLine first;
    QLine second;
    if (m_direction) {
        const int a = h / 3;
        const int inset = w / 5;
        slot = rect().adjusted(inset, 1, -inset, -1);
        first = QLine(0, a, w, a);
        second = QLine(0, h - a, w, h - a);
        lever = QRect(1, a * m_index + 1, w - 2, a - 2).adjusted(inset + 1, 1, -(inset + 1), -1);
    } else {
        const int a = w / 3;
        const int inset = h / 5;
        slot = rect().adjusted(1, inset, -1, -inset);
        first = QLine(a, 0, a, h);
        second = QLine(w - a, 0, w - a, h);
        lever = QRect(a * m_index + 1, 1, a - 2, h - 2).adjusted(1, inset + 1, -1, -(inset + 1));
    }

    // Three lever positions, three looks: each is drawn once and kept.
    const QString key
        = QStringLiteral("Switch/%1/%2/%3").arg(int(m_direction)).arg(m_pen.color().rgba()).arg(m_index);
    ControlLayers::drawCached(painter, key, size(), [&](QPainter &p) {
        p.setPen(m_pen);
        p.setBrush(Qt::NoBrush);
        p.drawRect(slot);
        QPen dashed = m_pen;
        dashed.setStyle(Qt::DashLine);
        p.setPen(dashed);
        p.drawLine(first);
        p.drawLine(second);

        p.setPen(QPen(Qt::white, 1));
        p.setBrush(ControlColors::accentBlue());
        p.drawRect(lever);
    });
    painter.restore();
}
