#include "MCalculator.h"

#include "ControlColors.h"
#include "ControlPictures.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>

namespace
{
const char ReturnPicture[] = "/image/return.png";
constexpr int Margin = 8;
constexpr int RowGap = 6;
constexpr int KeyRadius = 4;
} // namespace

MCalculator::MCalculator(QWidget *parent)
    : QDialog(parent, Qt::FramelessWindowHint)
    , m_display(new QLineEdit(this))
{
    setMouseTracking(true);
    setStyleSheet(QStringLiteral("QWidget {background-color:rgb(70,70,70);}"));
    m_display->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_display->setFocusPolicy(Qt::NoFocus);
    m_display->setMouseTracking(false);
    m_display->setStyleSheet(QStringLiteral("QLineEdit {color:rgb(210,210,210); border:1px solid "
                                            "rgb(155,155,155); border-radius:3px; padding-right:4px;}"));
    layoutKeys();
}

void MCalculator::setMinusAllowed(bool allowed)
{
    if (m_minusAllowed == allowed)
        return;
    m_minusAllowed = allowed;
    update();
}

void MCalculator::setPointAllowed(bool allowed)
{
    if (m_pointAllowed == allowed)
        return;
    m_pointAllowed = allowed;
    update();
}

void MCalculator::layoutKeys()
{
    const int w = width();
    const int h = height();
    const int kw = w / 5;
    const int kh = (h - h / 5) / 5;
    auto column = [kw](int c) { return Margin + c * (kw + Margin); };
    auto row = [h, kh](int r) { return h / 5 + 12 + r * (kh + RowGap); };
    auto key = [&](int c, int r) { return QRect(column(c), row(r), kw, kh); };

    m_display->setGeometry(Margin, 6, w - 2 * Margin, h / 5);

    m_keys[7] = key(0, 0);
    m_keys[8] = key(1, 0);
    m_keys[9] = key(2, 0);
    m_keys[Minus] = key(3, 0);
    m_keys[4] = key(0, 1);
    m_keys[5] = key(1, 1);
    m_keys[6] = key(2, 1);
    m_keys[Clear] = key(3, 1);
    m_keys[1] = key(0, 2);
    m_keys[2] = key(1, 2);
    m_keys[3] = key(2, 2);
    m_keys[Enter] = QRect(column(3), row(2), kw, 2 * kh + RowGap);
    m_keys[0] = QRect(column(0), row(3), 2 * kw + Margin, kh);
    m_keys[Point] = key(2, 3);
}

void MCalculator::resizeEvent(QResizeEvent *event)
{
    layoutKeys();
    QDialog::resizeEvent(event);
}

int MCalculator::keyAt(const QPoint &pos) const
{
    for (int key = 0; key < KeyCount; ++key) {
        if (m_keys[key].contains(pos))
            return key;
    }
    return -1;
}

bool MCalculator::keyDimmed(int key) const
{
    return (key == Minus && !m_minusAllowed) || (key == Point && !m_pointAllowed);
}

void MCalculator::mousePressEvent(QMouseEvent *event)
{
    const int key = keyAt(event->pos());
    m_pressedKey = keyDimmed(key) ? -1 : key;
    m_pressedInside = m_pressedKey >= 0;
    update();
}

void MCalculator::mouseMoveEvent(QMouseEvent *event)
{
    if (m_pressedKey < 0)
        return;
    const bool inside = m_keys[m_pressedKey].contains(event->pos());
    if (inside != m_pressedInside) {
        m_pressedInside = inside;
        update();
    }
}

void MCalculator::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_pressedKey >= 0 && m_keys[m_pressedKey].contains(event->pos()))
        pressKey(m_pressedKey);
    m_pressedKey = -1;
    m_pressedInside = false;
    update();
}

void MCalculator::pressKey(int key)
{
    if (m_done)
        return;
    QString text = m_display->text();
    if (key >= 0 && key <= 9) {
        text.append(QChar('0' + key));
    } else if (key == Minus) {
        if (!text.contains(QLatin1Char('-')))
            text.prepend(QLatin1Char('-'));
        else
            text.remove(0, 1);
    } else if (key == Clear) {
        text.clear();
        m_pointEntered = false;
    } else if (key == Point) {
        if (m_pointEntered)
            return;
        m_pointEntered = true;
        text = text.isEmpty() ? QStringLiteral("0.") : text + QLatin1Char('.');
    } else if (key == Enter) {
        // An unparsable entry ("-" alone, "-.") gives 0; the spin box clamps.
        const double value = text.toDouble();
        m_done = true;
        Q_EMIT signal_calculatorMsg(value);
        deleteLater();
        return;
    }
    m_display->setText(text);
}

// The keys of the keyboard act as the keys of the pad: a dimmed "-" or "."
// takes no key either.
void MCalculator::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        pressKey(key - Qt::Key_0);
    } else if (key == Qt::Key_Minus) {
        if (!keyDimmed(Minus))
            pressKey(Minus);
    } else if (key == Qt::Key_Period) {
        if (!keyDimmed(Point))
            pressKey(Point);
    } else if (key == Qt::Key_Backspace) {
        removeLast();
    } else if (key == Qt::Key_Enter || key == Qt::Key_Return) {
        pressKey(Enter);
    } else if (key == Qt::Key_Escape) {
        closeWithoutValue();
    } else {
        QDialog::keyPressEvent(event);
        return;
    }
    event->accept();
    update();
}

void MCalculator::removeLast()
{
    if (m_done)
        return;
    QString text = m_display->text();
    if (text.isEmpty())
        return;
    if (text.endsWith(QLatin1Char('.')))
        m_pointEntered = false;
    text.chop(1);
    m_display->setText(text);
}

void MCalculator::closeWithoutValue()
{
    m_done = true;
    hide();
    deleteLater();
}

void MCalculator::focusOutEvent(QFocusEvent *event)
{
    // A click anywhere else closes the keypad without a value.
    QDialog::focusOutEvent(event);
    deleteLater();
}

void MCalculator::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(painter);
}

void MCalculator::draw(QPainter &painter)
{
    painter.save();
    painter.setFont(font());
    painter.setRenderHints(
        QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);

    painter.setPen(ControlColors::outlineGrey());
    painter.setBrush(ControlColors::darkGrey());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);

    for (int key = 0; key < KeyCount; ++key)
        drawKey(painter, key);
    painter.restore();
}

void MCalculator::drawKey(QPainter &painter, int key)
{
    const QRect area = m_keys[key];
    const bool dimmed = keyDimmed(key);
    QColor face(95, 95, 95);
    QColor caption = ControlColors::paleGrey();
    if (key == m_pressedKey) {
        face = m_pressedInside ? ControlColors::accentBlue() : ControlColors::disabledGrey();
        caption = Qt::white;
    } else if (dimmed) {
        face = QColor(80, 80, 80);
        caption = QColor(120, 120, 120);
    }

    painter.setPen(dimmed ? QColor(100, 100, 100) : ControlColors::outlineGrey());
    painter.setBrush(face);
    painter.drawRoundedRect(QRectF(area).adjusted(0.5, 0.5, -0.5, -0.5), KeyRadius, KeyRadius);

    if (key == Enter) {
        const QPixmap arrow = ControlPictures::picture(QLatin1String(ReturnPicture));
        if (!arrow.isNull()) {
            const int side = qMin(area.width(), area.height()) * 3 / 4;
            QRect square(0, 0, side, side);
            square.moveCenter(area.center());
            painter.drawPixmap(square, arrow);
        }
        return;
    }

    QString label;
    if (key <= 9)
        label = QString::number(key);
    else if (key == Minus)
        label = QStringLiteral("-");
    else if (key == Clear)
        label = QStringLiteral("C");
    else
        label = QStringLiteral(".");
    painter.setPen(caption);
    painter.drawText(area, Qt::AlignCenter, label);
}
