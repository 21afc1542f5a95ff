#include "MCheckBox.h"

#include "ControlColors.h"
#include "ControlPictures.h"

#include <QMouseEvent>
#include <QPainter>

namespace
{
const char TickPicture[] = "/image/yes.png";
constexpr int CaptionGap = 5;
} // namespace

MCheckBox::MCheckBox(QWidget *parent)
    : QWidget(parent)
    , m_penColor(ControlColors::accentBlue())
{
}

void MCheckBox::setPenColor(const QColor &color)
{
    if (m_penColor == color)
        return;
    m_penColor = color;
    update();
}

void MCheckBox::setM_checkEnable(bool enable)
{
    if (m_checkEnable == enable)
        return;
    m_checkEnable = enable;
    update();
}

void MCheckBox::setM_checked(bool checked)
{
    if (m_checked == checked)
        return;
    m_checked = checked;
    update();
}

void MCheckBox::setM_text(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    updateGeometry();
    update();
}

void MCheckBox::setM_radio(bool radio)
{
    if (m_radio == radio)
        return;
    m_radio = radio;
    update();
}

QSize MCheckBox::sizeHint() const
{
    const int h = qMax(22, fontMetrics().height() + 6);
    return QSize(h + CaptionGap + fontMetrics().horizontalAdvance(m_text) + 4, h);
}

void MCheckBox::layoutParts()
{
    const int h = height();
    m_boxRect = QRect(0, 0, h, h);
    m_textRect = QRect(h + CaptionGap, 0, width() - h - CaptionGap, h);
}

void MCheckBox::resizeEvent(QResizeEvent *event)
{
    layoutParts();
    QWidget::resizeEvent(event);
}

void MCheckBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(painter);
}

void MCheckBox::draw(QPainter &painter)
{
    layoutParts();
    painter.save();
    painter.setFont(font());
    painter.setRenderHints(
        QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);

    painter.setPen(Qt::NoPen);
    painter.setBrush(ControlColors::lightGrey());
    painter.drawRoundedRect(m_boxRect, 5, 5);

    const QRect inset = m_boxRect.adjusted(3, 3, -3, -3);
    QColor captionColor;
    if (m_checkEnable) {
        if (m_checked) {
            painter.setBrush(Qt::white);
            painter.drawRoundedRect(inset, 3, 3);
            const QPixmap tick = ControlPictures::picture(QLatin1String(TickPicture));
            if (!tick.isNull())
                painter.drawPixmap(inset, tick);
        } else {
            painter.setBrush(ControlColors::paleGrey());
            painter.drawRoundedRect(inset, 3, 3);
        }
        captionColor = Qt::white;
    } else {
        painter.setBrush(ControlColors::disabledGrey());
        painter.drawRoundedRect(inset, 3, 3);
        captionColor = ControlColors::disabledGrey();
    }

    painter.setPen(captionColor);
    painter.drawText(m_textRect, Qt::AlignLeft | Qt::AlignVCenter, m_text);
    painter.restore();
}

void MCheckBox::mousePressEvent(QMouseEvent *event)
{
    layoutParts();
    if (!m_checkEnable || !m_boxRect.contains(event->pos()))
        return;
    // A checked radio item stays checked: only its group's slot clears it.
    if (!m_radio)
        m_checked = !m_checked;
    else if (m_checked)
        return;
    else
        m_checked = true;
    update();
    // Last: the group's slot may ask a question, and a reconnect while it is
    // open takes this item away with its page.
    if (m_radio)
        Q_EMIT checkedChange(objectName());
}
