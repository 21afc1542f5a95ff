#include "AppPaths.h"
#include "MCalculator.h"
#include "MSpinBox.h"

#include <QGuiApplication>
#include <QLineEdit>
#include <QScreen>
#include <QtTest>

#include <memory>

namespace
{
// A 160 x 30 spin box without enable box: minus (2, 2, 31, 26), value
// (33, 2, 93, 26), plus (126, 2, 31, 26).
const QSize PlainSize(160, 30);
const QPoint PlainMinus(17, 15);
const QPoint PlainValue(79, 15);
const QPoint PlainPlus(141, 15);
// 200 x 30 with enable box: box (2, 2, 44, 26), minus (51, 2, 32, 26),
// value (83, 2, 78, 26), plus (161, 2, 32, 26).
const QSize BoxedSize(200, 30);
const QPoint BoxedBox(24, 15);
const QPoint BoxedPlus(177, 15);

// Key centres of the 200 x 250 keypad: keys 40 x 40, columns at x = 8, 56,
// 104, 152, rows at y = 62, 108, 154, 200; "0" is two keys wide, Enter two
// keys high.
QPoint keyCentre(const QString &key)
{
    static const QHash<QString, QPoint> centres = {
        { "7", { 28, 82 } },
        { "8", { 76, 82 } },
        { "9", { 124, 82 } },
        { "-", { 172, 82 } },
        { "4", { 28, 128 } },
        { "5", { 76, 128 } },
        { "6", { 124, 128 } },
        { "C", { 172, 128 } },
        { "1", { 28, 174 } },
        { "2", { 76, 174 } },
        { "3", { 124, 174 } },
        { "Enter", { 172, 197 } },
        { "0", { 52, 220 } },
        { ".", { 124, 220 } },
    };
    return centres.value(key, QPoint(-1, -1));
}

const QRgb AccentBlue = qRgb(66, 170, 249) & 0xffffff;
const QRgb PressedAway = qRgb(150, 150, 150) & 0xffffff;

QRgb keyFace(MCalculator *keypad, const QString &key)
{
    // Away from the caption, inside the rounded corner.
    const QPoint at = keyCentre(key) - QPoint(14, 14);
    return keypad->grab().toImage().pixel(at) & 0xffffff;
}
} // namespace

// The spin box's buttons, its repeat step and its keypad, as a user drives
// them with the mouse.
class TestNumericInput : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void heldButtonSteps_data();
    void heldButtonSteps();
    void heldButtonRepeatsOnItsOwn();
    void enableBoxGatesButtons();
    void valueSetAlwaysSignals();
    void valuePressOpensKeypad_data();
    void valuePressOpensKeypad();
    void keypadEntry_data();
    void keypadEntry();
    void keyboardEntry_data();
    void keyboardEntry();
    void pressedKeyFollowsPointer();
    void dimmedKeyRefusesPress();
    void focusLossClosesWithoutValue();

private:
    MSpinBox *showSpin(QSize size, QPoint at = QPoint(50, 50));
    MCalculator *openKeypad();

    std::unique_ptr<MSpinBox> m_spin;
};

void TestNumericInput::initTestCase()
{
    AppPaths::setAppDir(QStringLiteral(QM_APP_DIR));
}

void TestNumericInput::init()
{
    m_spin.reset(new MSpinBox);
    // The repeat step is driven by calling the slot: the tests process no
    // events while a button is held, so the timer a press starts never fires
    // in between. Untouched, the timer rests.
    auto *timer = m_spin->findChild<QTimer *>();
    QVERIFY(timer);
    QVERIFY(!timer->isActive());
}

void TestNumericInput::cleanup()
{
    m_spin.reset();
}

MSpinBox *TestNumericInput::showSpin(QSize size, QPoint at)
{
    m_spin->setGeometry(QRect(at, size));
    m_spin->show();
    if (!QTest::qWaitForWindowExposed(m_spin.get()))
        return nullptr;
    return m_spin.get();
}

MCalculator *TestNumericInput::openKeypad()
{
    QTest::mouseClick(m_spin.get(), Qt::LeftButton, Qt::NoModifier, PlainValue);
    return m_spin->findChild<MCalculator *>();
}

void TestNumericInput::heldButtonSteps_data()
{
    QTest::addColumn<int>("decimals");
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("start");
    QTest::addColumn<bool>("plus");
    QTest::addColumn<int>("ticks");
    QTest::addColumn<double>("expected");

    QTest::newRow("plus, whole steps") << 0 << 0.0 << 0.0 << true << 3 << 3.0;
    QTest::newRow("plus stops at the upper bound") << 0 << 0.0 << 148.0 << true << 5 << 150.0;
    QTest::newRow("minus, tenths") << 1 << 0.0 << 1.0 << false << 3 << 0.7;
    QTest::newRow("plus, hundredths") << 2 << 0.0 << 0.0 << true << 4 << 0.04;
    QTest::newRow("minus stops at the lower bound") << 2 << -0.02 << 0.0 << false << 5 << -0.02;
    QTest::newRow("one second held at 0 decimals") << 0 << 0.0 << 10.0 << true << 20 << 30.0;
}

void TestNumericInput::heldButtonSteps()
{
    QFETCH(int, decimals);
    QFETCH(double, minimum);
    QFETCH(double, start);
    QFETCH(bool, plus);
    QFETCH(int, ticks);
    QFETCH(double, expected);

    MSpinBox *spin = showSpin(PlainSize);
    QVERIFY(spin);
    spin->setM_decimal(decimals);
    spin->setM_minValue(minimum);
    spin->setM_currentValue(start);
    QSignalSpy changed(spin, &MSpinBox::currentValueChanged);

    const QPoint button = plus ? PlainPlus : PlainMinus;
    QTest::mousePress(spin, Qt::LeftButton, Qt::NoModifier, button);
    QCOMPARE(spin->currentValue(), start); // the first step comes with the next tick
    for (int i = 0; i < ticks; ++i)
        spin->slot_timeout();
    QVERIFY2(qAbs(spin->currentValue() - expected) < 1e-9, qPrintable(QString::number(spin->currentValue())));
    QCOMPARE(changed.count(), ticks);

    QTest::mouseRelease(spin, Qt::LeftButton, Qt::NoModifier, button);
    spin->slot_timeout();
    QCOMPARE(changed.count(), ticks);
    QVERIFY(qAbs(spin->currentValue() - expected) < 1e-9);
}

// The repeat timer itself steps a held button, and stops stepping at release.
void TestNumericInput::heldButtonRepeatsOnItsOwn()
{
    MSpinBox *spin = showSpin(PlainSize);
    QVERIFY(spin);
    spin->setM_currentValue(0);
    QTest::mousePress(spin, Qt::LeftButton, Qt::NoModifier, PlainPlus);
    QTRY_VERIFY_WITH_TIMEOUT(spin->currentValue() >= 3.0, 2000);
    QTest::mouseRelease(spin, Qt::LeftButton, Qt::NoModifier, PlainPlus);
    const double released = spin->currentValue();
    QTest::qWait(200);
    QCOMPARE(spin->currentValue(), released);

    QTest::mousePress(spin, Qt::LeftButton, Qt::NoModifier, PlainPlus);
    QTRY_VERIFY_WITH_TIMEOUT(spin->currentValue() > released, 2000);
    QTest::mouseRelease(spin, Qt::LeftButton, Qt::NoModifier, PlainPlus);
}

// With the enable box shown, its state decides whether the buttons step.
void TestNumericInput::enableBoxGatesButtons()
{
    m_spin->setM_checkEnable(true);
    MSpinBox *spin = showSpin(BoxedSize);
    QVERIFY(spin);
    QTRY_COMPARE_WITH_TIMEOUT(spin->buttonState(), false, 1000);

    QTest::mousePress(spin, Qt::LeftButton, Qt::NoModifier, BoxedPlus);
    spin->slot_timeout();
    QTest::mouseRelease(spin, Qt::LeftButton, Qt::NoModifier, BoxedPlus);
    QCOMPARE(spin->currentValue(), 0.0);

    QTest::mouseClick(spin, Qt::LeftButton, Qt::NoModifier, BoxedBox);
    QCOMPARE(spin->checked(), true);
    QTRY_COMPARE_WITH_TIMEOUT(spin->buttonState(), true, 1000);
    QTest::mousePress(spin, Qt::LeftButton, Qt::NoModifier, BoxedPlus);
    spin->slot_timeout();
    QTest::mouseRelease(spin, Qt::LeftButton, Qt::NoModifier, BoxedPlus);
    QCOMPARE(spin->currentValue(), 1.0);

    QTest::mouseClick(spin, Qt::LeftButton, Qt::NoModifier, BoxedBox);
    QCOMPARE(spin->checked(), false);
    QTRY_COMPARE_WITH_TIMEOUT(spin->buttonState(), false, 1000);
    QTest::mousePress(spin, Qt::LeftButton, Qt::NoModifier, BoxedPlus);
    spin->slot_timeout();
    QCOMPARE(spin->currentValue(), 1.0);
}

// Pages re-read the value on every signal, also when a set repeats it.
void TestNumericInput::valueSetAlwaysSignals()
{
    QSignalSpy changed(m_spin.get(), &MSpinBox::currentValueChanged);
    m_spin->setM_currentValue(5);
    m_spin->setM_currentValue(5);
    m_spin->setM_currentValue(500);
    QCOMPARE(changed.count(), 3);
    QCOMPARE(m_spin->currentValue(), 150.0);
}

void TestNumericInput::valuePressOpensKeypad_data()
{
    QTest::addColumn<bool>("nearBottom");
    QTest::addColumn<double>("minimum");
    QTest::addColumn<int>("decimals");

    QTest::newRow("below the value") << false << 0.0 << 0;
    QTest::newRow("above the value near the bottom") << true << -100.0 << 2;
}

void TestNumericInput::valuePressOpensKeypad()
{
    QFETCH(bool, nearBottom);
    QFETCH(double, minimum);
    QFETCH(int, decimals);

    const int screenHeight = QGuiApplication::screens().first()->geometry().height();
    const QPoint at(100, nearBottom ? screenHeight - 60 : 100);
    MSpinBox *spin = showSpin(PlainSize, at);
    QVERIFY(spin);
    spin->setM_minValue(minimum);
    spin->setM_decimal(decimals);

    QTest::mouseClick(spin, Qt::LeftButton, Qt::NoModifier, PlainPlus);
    QVERIFY(!spin->findChild<MCalculator *>());

    MCalculator *keypad = openKeypad();
    QVERIFY(keypad);
    QVERIFY(keypad->isVisible());
    QCOMPARE(keypad->size(), QSize(200, 250));
    QVERIFY(keypad->windowFlags() & Qt::FramelessWindowHint);
    QCOMPARE(keypad->minusAllowed(), minimum < 0);
    QCOMPARE(keypad->pointAllowed(), decimals != 0);
    QCOMPARE(keypad->font().pointSizeF(), spin->font().pointSizeF() + 2);
    // The value box runs from (33, 2) to (125, 27).
    const QPoint expected = nearBottom ? spin->mapToGlobal(QPoint(33, 2)) + QPoint(20, -220)
                                       : spin->mapToGlobal(QPoint(33, 27)) + QPoint(20, 20);
    QCOMPARE(keypad->pos(), expected);
}

void TestNumericInput::keypadEntry_data()
{
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QString>("display");
    QTest::addColumn<double>("value");

    QTest::newRow("negative with two decimals")
        << -100.0 << 100.0 << 2 << QStringList { "-", "1", "2", ".", "5" } << "-12.5" << -12.5;
    QTest::newRow("entry clamped to the upper bound")
        << 0.0 << 150.0 << 0 << QStringList { "9", "9", "9", "9" } << "9999" << 150.0;
    QTest::newRow("second point ignored")
        << 0.0 << 150.0 << 2 << QStringList { "1", ".", "2", ".", "3" } << "1.23" << 1.23;
    QTest::newRow("clear allows a new point")
        << 0.0 << 150.0 << 2 << QStringList { "1", ".", "5", "C", ".", "7" } << "0.7" << 0.7;
    QTest::newRow("minus in front") << -100.0 << 100.0 << 0 << QStringList { "5", "-" } << "-5" << -5.0;
    QTest::newRow("minus again removes it")
        << -100.0 << 100.0 << 0 << QStringList { "5", "-", "-" } << "5" << 5.0;
    QTest::newRow("minus dimmed for a bound of 0")
        << 0.0 << 150.0 << 0 << QStringList { "-", "5" } << "5" << 5.0;
    QTest::newRow("point dimmed with no decimals")
        << 0.0 << 150.0 << 0 << QStringList { "5", ".", "3" } << "53" << 53.0;
    QTest::newRow("empty entry gives 0, clamped") << 10.0 << 150.0 << 0 << QStringList {} << "" << 10.0;
    QTest::newRow("minus alone gives 0") << -100.0 << 100.0 << 0 << QStringList { "-" } << "-" << 0.0;
    QTest::newRow("digits 0 to 8") << -1000.0 << 1e9 << 0
                                   << QStringList { "1", "2", "3", "4", "5", "6", "7", "8", "0" }
                                   << "123456780" << 123456780.0;
}

void TestNumericInput::keypadEntry()
{
    QFETCH(double, minimum);
    QFETCH(double, maximum);
    QFETCH(int, decimals);
    QFETCH(QStringList, keys);
    QFETCH(QString, display);
    QFETCH(double, value);

    MSpinBox *spin = showSpin(PlainSize);
    QVERIFY(spin);
    spin->setM_minValue(minimum);
    spin->setM_maxValue(maximum);
    spin->setM_decimal(decimals);
    spin->setM_currentValue(minimum < 0 && maximum > 0 ? 0.0 : minimum);

    QPointer<MCalculator> keypad = openKeypad();
    QVERIFY(keypad);
    auto *line = keypad->findChild<QLineEdit *>();
    QVERIFY(line);
    QCOMPARE(line->focusPolicy(), Qt::NoFocus);
    for (const QString &key : keys)
        QTest::mouseClick(keypad, Qt::LeftButton, Qt::NoModifier, keyCentre(key));
    QCOMPARE(line->text(), display);

    QSignalSpy entered(keypad.data(), &MCalculator::signal_calculatorMsg);
    QSignalSpy changed(spin, &MSpinBox::currentValueChanged);
    QTest::mouseClick(keypad, Qt::LeftButton, Qt::NoModifier, keyCentre(QStringLiteral("Enter")));
    QCOMPARE(entered.count(), 1);
    QCOMPARE(changed.count(), 1);
    QVERIFY2(qAbs(spin->currentValue() - value) < 1e-9, qPrintable(QString::number(spin->currentValue())));

    // A second Enter before the keypad is gone hands nothing over.
    if (keypad)
        QTest::mouseClick(keypad, Qt::LeftButton, Qt::NoModifier, keyCentre(QStringLiteral("Enter")));
    QCOMPARE(entered.count(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(keypad.isNull(), 1000);
}

// The keypad typed on with the keyboard: the same rules as its keys, Enter
// and Return hand the number over, Escape closes without one.
void TestNumericInput::keyboardEntry_data()
{
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<double>("start");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QString>("display");
    QTest::addColumn<bool>("entered");
    QTest::addColumn<double>("value");

    QTest::newRow("sign, digits, point and Enter")
        << -100.0 << 100.0 << 2 << 0.0 << QStringList { "-", "1", "2", ".", "5", "Enter" } << "-12.5" << true
        << -12.5;
    QTest::newRow("Return acts as Enter")
        << 0.0 << 150.0 << 0 << 3.0 << QStringList { "4", "2", "Return" } << "42" << true << 42.0;
    QTest::newRow("Backspace removes the last digit")
        << 0.0 << 150.0 << 0 << 3.0 << QStringList { "1", "2", "3", "Backspace", "Enter" } << "12" << true
        << 12.0;
    QTest::newRow("Backspace over the point allows a new one")
        << 0.0 << 100.0 << 2 << 3.0 << QStringList { "1", ".", "Backspace", "5", ".", "2", "5", "Enter" }
        << "15.25" << true << 15.25;
    QTest::newRow("Backspace on an empty display does nothing")
        << 0.0 << 150.0 << 0 << 3.0 << QStringList { "Backspace", "7", "Enter" } << "7" << true << 7.0;
    QTest::newRow("minus dimmed for a bound of 0 takes no key")
        << 0.0 << 150.0 << 0 << 3.0 << QStringList { "-", "7", "Enter" } << "7" << true << 7.0;
    QTest::newRow("point dimmed with no decimals takes no key")
        << 0.0 << 150.0 << 0 << 3.0 << QStringList { "5", ".", "3", "Enter" } << "53" << true << 53.0;
    QTest::newRow("Escape closes without a value")
        << 0.0 << 150.0 << 0 << 42.0 << QStringList { "9", "Escape" } << "9" << false << 42.0;
}

void TestNumericInput::keyboardEntry()
{
    QFETCH(double, minimum);
    QFETCH(double, maximum);
    QFETCH(int, decimals);
    QFETCH(double, start);
    QFETCH(QStringList, keys);
    QFETCH(QString, display);
    QFETCH(bool, entered);
    QFETCH(double, value);

    static const QHash<QString, Qt::Key> named = {
        { "-", Qt::Key_Minus },
        { ".", Qt::Key_Period },
        { "Backspace", Qt::Key_Backspace },
        { "Enter", Qt::Key_Enter },
        { "Return", Qt::Key_Return },
        { "Escape", Qt::Key_Escape },
    };

    MSpinBox *spin = showSpin(PlainSize);
    QVERIFY(spin);
    spin->setM_minValue(minimum);
    spin->setM_maxValue(maximum);
    spin->setM_decimal(decimals);
    spin->setM_currentValue(start);

    QPointer<MCalculator> keypad = openKeypad();
    QVERIFY(keypad);
    auto *line = keypad->findChild<QLineEdit *>();
    QVERIFY(line);
    QSignalSpy handed(keypad.data(), &MCalculator::signal_calculatorMsg);
    QString shown;
    for (const QString &key : keys) {
        if (key == QLatin1String("Enter") || key == QLatin1String("Return") || key == QLatin1String("Escape"))
            shown = line->text();
        const Qt::Key code = named.contains(key) ? named.value(key) : Qt::Key(Qt::Key_0 + key.toInt());
        QTest::keyClick(keypad, code);
    }
    QCOMPARE(shown, display);
    QCOMPARE(handed.count(), entered ? 1 : 0);
    QVERIFY2(qAbs(spin->currentValue() - value) < 1e-9, qPrintable(QString::number(spin->currentValue())));
    QTRY_VERIFY_WITH_TIMEOUT(keypad.isNull(), 1000);
}

void TestNumericInput::pressedKeyFollowsPointer()
{
    QVERIFY(showSpin(PlainSize));
    QPointer<MCalculator> keypad = openKeypad();
    QVERIFY(keypad);
    auto *line = keypad->findChild<QLineEdit *>();

    QTest::mousePress(keypad, Qt::LeftButton, Qt::NoModifier, keyCentre(QStringLiteral("7")));
    QCOMPARE(keyFace(keypad, QStringLiteral("7")), AccentBlue);

    QMouseEvent away(QEvent::MouseMove, QPoint(3, 3), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(keypad, &away);
    QCOMPARE(keyFace(keypad, QStringLiteral("7")), PressedAway);

    QMouseEvent back(
        QEvent::MouseMove, keyCentre(QStringLiteral("7")), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(keypad, &back);
    QCOMPARE(keyFace(keypad, QStringLiteral("7")), AccentBlue);

    // Released over another key: nothing typed.
    QTest::mouseRelease(keypad, Qt::LeftButton, Qt::NoModifier, keyCentre(QStringLiteral("8")));
    QCOMPARE(line->text(), QString());
    QVERIFY(keyFace(keypad, QStringLiteral("7")) != AccentBlue);

    QTest::mouseClick(keypad, Qt::LeftButton, Qt::NoModifier, keyCentre(QStringLiteral("7")));
    QCOMPARE(line->text(), QStringLiteral("7"));
}

void TestNumericInput::dimmedKeyRefusesPress()
{
    MSpinBox *spin = showSpin(PlainSize);
    QVERIFY(spin);
    QPointer<MCalculator> keypad = openKeypad();
    QVERIFY(keypad);
    QVERIFY(!keypad->minusAllowed());
    QVERIFY(!keypad->pointAllowed());

    for (const QString &key : { QStringLiteral("-"), QStringLiteral(".") }) {
        QTest::mousePress(keypad, Qt::LeftButton, Qt::NoModifier, keyCentre(key));
        QVERIFY(keyFace(keypad, key) != AccentBlue);
        QTest::mouseRelease(keypad, Qt::LeftButton, Qt::NoModifier, keyCentre(key));
    }
    QCOMPARE(keypad->findChild<QLineEdit *>()->text(), QString());
}

// A click anywhere else takes the focus away and closes the keypad with the
// value untouched.
void TestNumericInput::focusLossClosesWithoutValue()
{
    MSpinBox *spin = showSpin(PlainSize);
    QVERIFY(spin);
    spin->setM_currentValue(42);
    QPointer<MCalculator> keypad = openKeypad();
    QVERIFY(keypad);
    QTRY_VERIFY_WITH_TIMEOUT(keypad->hasFocus(), 1000);
    QTest::mouseClick(keypad, Qt::LeftButton, Qt::NoModifier, keyCentre(QStringLiteral("5")));
    QSignalSpy entered(keypad.data(), &MCalculator::signal_calculatorMsg);

    QWidget elsewhere;
    elsewhere.setGeometry(500, 50, 100, 100);
    elsewhere.show();
    elsewhere.activateWindow();
    QTRY_VERIFY_WITH_TIMEOUT(keypad.isNull(), 1000);
    QCOMPARE(entered.count(), 0);
    QCOMPARE(spin->currentValue(), 42.0);
}

QTEST_MAIN(TestNumericInput)
#include "tst_numericinput.moc"
