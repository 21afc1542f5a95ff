#include "MSpinBox.h"

#include "ControlColors.h"
#include "ControlPictures.h"
#include "MCalculator.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QtMath>

namespace
{
const char TickPicture[] = "/image/yes.png";
constexpr int RepeatMs = 50;
constexpr int CalculatorWidth = 200;
constexpr int CalculatorHeight = 250;
// The keypad opens below the value unless its 250 pixels (plus margins)
// would run past the bottom of the screen.
constexpr int CalculatorRoom = 270;
constexpr int CalculatorOffset = 20;
constexpr int CalculatorAbove = 220;
constexpr int GlyphPen = 5;
} // namespace

MSpinBox::MSpinBox(QWidget *parent)
    : QWidget(parent)
    , m_penColor(ControlColors::accentBlue())
    , m_brush(ControlColors::disabledGrey())
    , m_timer(new QTimer(this))
{
    setMouseTracking(true);
    // The repeat ticks keep a 50 ms beat that starts with the control: a held
    // button steps with the next beat after the press, then 20 times a
    // second. Between presses the timer rests on that beat, so a page of a
    // hundred spin boxes does not wake the program 20 times a second.
    m_beat.start();
    connect(m_timer, &QTimer::timeout, this, &MSpinBox::slot_timeout);
    layoutParts();
}

void MSpinBox::setPenColor(const QColor &color)
{
    if (m_penColor == color)
        return;
    m_penColor = color;
    update();
}

void MSpinBox::setM_brush(const QBrush &brush)
{
    if (m_brush == brush)
        return;
    m_brush = brush;
    update();
}

void MSpinBox::setM_checked(bool checked)
{
    if (m_checked == checked)
        return;
    m_checked = checked;
    update();
}

void MSpinBox::setM_checkEnable(bool enable)
{
    if (m_checkEnable == enable)
        return;
    m_checkEnable = enable;
    layoutParts();
    updateGeometry();
    update();
}

// The bounds are stored as given; the value is only brought inside them by
// its next set.
void MSpinBox::setM_minValue(double value)
{
    if (m_minValue == value)
        return;
    m_minValue = value;
    update();
}

void MSpinBox::setM_maxValue(double value)
{
    if (m_maxValue == value)
        return;
    m_maxValue = value;
    update();
}

double MSpinBox::clamped(double value) const
{
    // The upper bound is tested first, so with crossed bounds a high value
    // lands on m_maxValue.
    if (value > m_maxValue)
        return m_maxValue;
    if (value < m_minValue)
        return m_minValue;
    return value;
}

void MSpinBox::setM_currentValue(double value)
{
    if (!qIsNaN(value))
        m_currentValue = clamped(value);
    Q_EMIT currentValueChanged(); // even when nothing changed
    update();
}

void MSpinBox::setM_decimal(int digits)
{
    m_decimal = qBound(0, digits, 2);
    update();
}

void MSpinBox::setM_buttonState(bool enabled)
{
    if (m_buttonState == enabled)
        return;
    m_buttonState = enabled;
    update();
}

void MSpinBox::slot_calculatorMsg(double value)
{
    setM_currentValue(value);
}

double MSpinBox::step() const
{
    switch (m_decimal) {
    case 1:
        return 0.1;
    case 2:
        return 0.01;
    default:
        return 1.0;
    }
}

void MSpinBox::slot_timeout()
{
    if (m_plusPress != Pressed && m_minusPress != Pressed)
        m_timer->stop();
    else if (m_timer->interval() != RepeatMs)
        m_timer->setInterval(RepeatMs);
    if (m_plusPress == Pressed) {
        m_currentValue = clamped(m_currentValue + step());
        Q_EMIT currentValueChanged();
        update();
    }
    if (m_minusPress == Pressed) {
        m_currentValue = clamped(m_currentValue - step());
        Q_EMIT currentValueChanged();
        update();
    }
}

QSize MSpinBox::sizeHint() const
{
    const int h = qMax(28, fontMetrics().height() + 10);
    return QSize(m_checkEnable ? 200 : 150, h);
}

void MSpinBox::layoutParts()
{
    const int w = width() - 4;
    const int h = height() - 4;
    if (m_checkEnable) {
        const int x = w / 4 + 2;
        m_checkRect = QRect(2, 2, w / 4 - 5, h);
        m_minusRect = QRect(x, 2, w / 6, h);
        m_valueRect = QRect(x + w / 6, 2, 2 * w / 5, h);
        m_plusRect = QRect(x + w / 6 + 2 * w / 5, 2, w / 6, h);
    } else {
        // Kept from the unit's tools: a negative 4w (a widget narrower than
        // its margins) moves the plus button one pixel further right.
        const int plusX = 4 * w / 5 + 2 + (4 * w < 0 ? 1 : 0);
        m_checkRect = QRect(2, 2, 0, 0);
        m_minusRect = QRect(2, 2, w / 5, h);
        m_valueRect = QRect(w / 5 + 2, 2, 3 * w / 5, h);
        m_plusRect = QRect(plusX, 2, w / 5, h);
    }
}

void MSpinBox::resizeEvent(QResizeEvent *event)
{
    layoutParts();
    QWidget::resizeEvent(event);
}

void MSpinBox::mousePressEvent(QMouseEvent *event)
{
    const QPoint pos = event->pos();
    setFocus(Qt::MouseFocusReason);
    layoutParts();

    if (m_checkEnable && m_checkRect.contains(pos)) {
        m_checked = !m_checked;
        m_checkPress = Pressed;
    } else {
        m_checkPress = Released;
    }

    if (m_buttonState) {
        m_plusPress = m_plusRect.contains(pos) ? Pressed : Released;
        m_minusPress = m_minusRect.contains(pos) ? Pressed : Released;
        if ((m_plusPress == Pressed || m_minusPress == Pressed) && !m_timer->isActive())
            m_timer->start(RepeatMs - int(m_beat.elapsed() % RepeatMs));
    } else {
        m_plusPress = Released;
        m_minusPress = Released;
    }

    if (m_valueRect.contains(pos))
        openCalculator();
    update();
}

void MSpinBox::mouseReleaseEvent(QMouseEvent *)
{
    m_plusPress = Released;
    m_minusPress = Released;
    m_checkPress = Released;
    update();
}

void MSpinBox::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_buttonState)
        return;
    const Qt::CursorShape shape = cursor().shape();
    if (m_valueRect.contains(event->pos())) {
        if (shape == Qt::ArrowCursor)
            setCursor(Qt::PointingHandCursor);
    } else if (shape == Qt::PointingHandCursor) {
        setCursor(Qt::ArrowCursor);
    }
    update();
}

void MSpinBox::openCalculator()
{
    const QPoint below = mapToGlobal(m_valueRect.bottomLeft());
    const QList<QScreen *> screens = QGuiApplication::screens();
    const int screenHeight = screens.isEmpty() ? 0 : screens.first()->geometry().height();

    auto *calculator = new MCalculator(this);
    if (below.y() + CalculatorRoom <= screenHeight) {
        calculator->move(below.x() + CalculatorOffset, below.y() + CalculatorOffset);
    } else {
        const QPoint top = mapToGlobal(m_valueRect.topLeft());
        calculator->move(top.x() + CalculatorOffset, top.y() - CalculatorAbove);
    }
    calculator->resize(CalculatorWidth, CalculatorHeight);

    QFont keypadFont = font();
    if (keypadFont.pointSizeF() > 0)
        keypadFont.setPointSizeF(keypadFont.pointSizeF() + 2);
    else
        keypadFont.setPixelSize(keypadFont.pixelSize() + 2);
    calculator->setFont(keypadFont);

    calculator->setMinusAllowed(m_minValue < 0.0);
    calculator->setPointAllowed(m_decimal != 0);
    calculator->setFocus();
    connect(calculator, &MCalculator::signal_calculatorMsg, this, &MSpinBox::slot_calculatorMsg);
    calculator->show();
    calculator->activateWindow();
    m_calculator = calculator;
}

void MSpinBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(painter);
}

void MSpinBox::draw(QPainter &painter)
{
    layoutParts();
    painter.save();
    painter.setFont(font());
    painter.setRenderHints(
        QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);

    // The enable box decides whether the buttons work: painting it sets
    // m_buttonState from m_checked.
    if (m_checkEnable) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(ControlColors::lightGrey());
        painter.drawRoundedRect(m_checkRect, 5, 5);
        const QRect inset = m_checkRect.adjusted(3, 3, -3, -3);
        if (m_checked) {
            painter.setBrush(Qt::white);
            painter.drawRoundedRect(inset, 3, 3);
            const QPixmap tick = ControlPictures::picture(QLatin1String(TickPicture));
            if (!tick.isNull()) {
                // Keep the tick square inside a box that may be wide.
                const int side = qMin(inset.width(), inset.height());
                QRect square(0, 0, side, side);
                square.moveCenter(inset.center());
                painter.drawPixmap(square, tick);
            }
            m_buttonState = true;
        } else {
            painter.setBrush(m_checkPress == Pressed ? QColor(Qt::white) : ControlColors::paleGrey());
            painter.drawRoundedRect(inset, 3, 3);
            m_buttonState = false;
        }
    }

    painter.setPen(m_penColor);
    painter.setBrush(m_brush);
    painter.drawRect(m_valueRect);
    painter.setPen(ControlColors::paleGrey());
    painter.drawText(m_valueRect, Qt::AlignCenter, QString::number(m_currentValue, 'f', m_decimal));

    drawButton(painter, m_minusRect, false, m_minusPress == Pressed, m_buttonState);
    drawButton(painter, m_plusRect, true, m_plusPress == Pressed, m_buttonState);
    painter.restore();
}

void MSpinBox::drawButton(QPainter &painter, const QRect &button, bool plus, bool pressed, bool working)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(ControlColors::lightGrey());
    painter.drawRect(button);

    const QColor glyph = working && !pressed ? m_penColor : ControlColors::midGrey();
    painter.setPen(QPen(glyph, GlyphPen, Qt::SolidLine, Qt::FlatCap));
    const QPointF c = QRectF(button).center();
    const double arm = qMin(button.width(), button.height()) / 4.0;
    painter.drawLine(QPointF(c.x() - arm, c.y()), QPointF(c.x() + arm, c.y()));
    if (plus)
        painter.drawLine(QPointF(c.x(), c.y() - arm), QPointF(c.x(), c.y() + arm));
}
