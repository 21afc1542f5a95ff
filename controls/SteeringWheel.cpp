#include "SteeringWheel.h"

#include "ControlColors.h"
#include "ControlLayers.h"

#include <QPainter>

SteeringWheel::SteeringWheel(QWidget *parent, int state)
    : QWidget(parent)
    , m_penColor(Qt::white)
    , m_state(state)
{
}

void SteeringWheel::setPenColor(const QColor &color)
{
    if (m_penColor == color)
        return;
    m_penColor = color;
    update();
}

void SteeringWheel::setM_state(int state)
{
    if (m_state == state)
        return;
    m_state = state;
    update();
}

QSize SteeringWheel::sizeHint() const
{
    return QSize(100, 100);
}

void SteeringWheel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(painter);
}

void SteeringWheel::draw(QPainter &painter)
{
    painter.save();
    painter.setFont(font());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    // Five lamps and the centre's presence give 64 looks, each as large as
    // the pad: only the one on show is kept, and redrawn when a lamp changes.
    const int flags
        = int(m_up) | int(m_left) << 1 | int(m_down) << 2 | int(m_right) << 3 | int(m_centre) << 4;
    const QString key = QStringLiteral("SteeringWheel/%1/%2/%3/%4")
                            .arg(flags)
                            .arg(int(m_state != 0))
                            .arg(m_penColor.rgba())
                            .arg(font().key());
    ControlLayers::drawKept(painter, key, size(), [this](QPainter &p) { drawLook(p); });
    painter.restore();
}

void SteeringWheel::drawLook(QPainter &painter)
{
    const QRect area = rect().adjusted(5, 5, -5, -5);
    const QColor lit = ControlColors::accentBlue();
    const QColor dark(Qt::gray);

    // Quarter sectors centred on the four directions: up, left, down, right.
    const bool flags[] = { m_up, m_left, m_down, m_right };
    const int starts[] = { 135, 225, 315, 405 };
    painter.setPen(dark);
    for (int i = 0; i < 4; ++i) {
        painter.setBrush(flags[i] ? lit : dark);
        painter.drawPie(area, starts[i] * 16, -90 * 16);
    }

    const QRectF diagonal(area);
    painter.setPen(QPen(ControlColors::darkGrey(), 8));
    painter.drawLine(diagonal.topLeft(), diagonal.bottomRight());
    painter.drawLine(diagonal.topRight(), diagonal.bottomLeft());

    const QRect disc
        = area.adjusted(area.width() / 4, area.height() / 4, -area.width() / 4, -area.height() / 4);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ControlColors::darkGrey());
    painter.drawEllipse(disc);
    if (m_state != 0) {
        painter.setBrush(m_centre ? lit : dark);
        painter.drawEllipse(disc.adjusted(8, 8, -8, -8));
    }

    const int fifthW = area.width() / 5;
    const int fifthH = area.height() / 5;
    painter.setPen(m_penColor);
    painter.drawText(QRect(area.x(), area.y(), area.width(), fifthH), Qt::AlignCenter, QStringLiteral("U"));
    painter.drawText(QRect(area.x(), area.y(), fifthW, area.height()), Qt::AlignCenter, QStringLiteral("L"));
    painter.drawText(QRect(area.right() + 1 - fifthW, area.y(), fifthW, area.height()), Qt::AlignCenter,
        QStringLiteral("R"));
    painter.drawText(QRect(area.x(), area.bottom() + 1 - fifthH, area.width(), fifthH), Qt::AlignCenter,
        QStringLiteral("D"));
    painter.drawText(disc, Qt::AlignCenter, QStringLiteral("O"));
}
