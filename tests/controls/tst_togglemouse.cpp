#include "AppPaths.h"
#include "MCheckBox.h"
#include "PhaseSwitch.h"

#include <QtTest>

// What a click on the two clickable indicator controls does.
class TestToggleMouse : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void checkBoxPress_data();
    void checkBoxPress();
    void phasePress_data();
    void phasePress();
    void phasePressReachesParent();
};

void TestToggleMouse::initTestCase()
{
    AppPaths::setAppDir(QStringLiteral(QM_APP_DIR));
}

void TestToggleMouse::checkBoxPress_data()
{
    QTest::addColumn<bool>("radio");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("initially");
    QTest::addColumn<QPoint>("where");
    QTest::addColumn<int>("presses");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<int>("emitted");

    // 150 x 24: the box is (0, 0, 24, 24), the caption starts at x = 29.
    const QPoint box(12, 12);
    const QPoint caption(80, 12);
    QTest::newRow("check box flips") << false << true << false << box << 1 << true << 0;
    QTest::newRow("check box flips back") << false << true << false << box << 2 << false << 0;
    QTest::newRow("radio checks and signals once") << true << true << false << box << 2 << true << 1;
    QTest::newRow("checked radio stays checked") << true << true << true << box << 1 << true << 0;
    QTest::newRow("caption press does nothing") << false << true << false << caption << 1 << false << 0;
    QTest::newRow("radio caption press does nothing") << true << true << false << caption << 1 << false << 0;
    QTest::newRow("disabled box ignores presses") << false << false << false << box << 1 << false << 0;
    QTest::newRow("disabled radio ignores presses") << true << false << false << box << 1 << false << 0;
    QTest::newRow("disabled checked box stays checked") << false << false << true << box << 1 << true << 0;
}

void TestToggleMouse::checkBoxPress()
{
    QFETCH(bool, radio);
    QFETCH(bool, enabled);
    QFETCH(bool, initially);
    QFETCH(QPoint, where);
    QFETCH(int, presses);
    QFETCH(bool, checked);
    QFETCH(int, emitted);

    MCheckBox item;
    item.setObjectName(QStringLiteral("throttleGear_2"));
    item.resize(150, 24);
    item.setM_radio(radio);
    item.setM_checkEnable(enabled);
    item.setM_checked(initially);
    item.show();
    QVERIFY(QTest::qWaitForWindowExposed(&item));

    QSignalSpy spy(&item, &MCheckBox::checkedChange);
    for (int i = 0; i < presses; ++i)
        QTest::mouseClick(&item, Qt::LeftButton, Qt::NoModifier, where);
    QCOMPARE(item.checked(), checked);
    QCOMPARE(spy.count(), emitted);
    if (emitted > 0)
        QCOMPARE(spy.first().first().toString(), QStringLiteral("throttleGear_2"));
}

void TestToggleMouse::phasePress_data()
{
    QTest::addColumn<int>("initially");
    QTest::addColumn<QPoint>("where");
    QTest::addColumn<int>("index");

    // 120 x 30: left half (4, 4, 56, 22), right half (60, 4, 56, 22).
    const QPoint left(30, 15);
    const QPoint right(90, 15);
    QTest::newRow("lit left pressed: light moves right") << 0 << left << 1;
    QTest::newRow("dark right pressed: nothing changes") << 0 << right << 0;
    QTest::newRow("lit right pressed: light moves left") << 1 << right << 0;
    QTest::newRow("dark left pressed: nothing changes") << 1 << left << 1;
    QTest::newRow("negative index, right pressed") << -5 << right << 0;
    QTest::newRow("negative index, left pressed") << -5 << left << 1;
    QTest::newRow("frame margin is neither half") << 0 << QPoint(2, 15) << 0;
}

void TestToggleMouse::phasePress()
{
    QFETCH(int, initially);
    QFETCH(QPoint, where);
    QFETCH(int, index);

    PhaseSwitch phase;
    phase.resize(120, 30);
    phase.setM_index(initially);
    phase.show();
    QVERIFY(QTest::qWaitForWindowExposed(&phase));

    QTest::mouseClick(&phase, Qt::LeftButton, Qt::NoModifier, where);
    QCOMPARE(phase.index(), index);
}

// The press is handed on after the switch has acted, so a page still sees it.
void TestToggleMouse::phasePressReachesParent()
{
    class Page : public QWidget
    {
    public:
        int presses = 0;

    protected:
        void mousePressEvent(QMouseEvent *) override { ++presses; }
    };
    Page page;
    page.resize(200, 60);
    auto *phase = new PhaseSwitch(&page);
    phase->setGeometry(10, 10, 120, 30);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));

    QTest::mouseClick(phase, Qt::LeftButton, Qt::NoModifier, QPoint(30, 15));
    QCOMPARE(phase->index(), 1);
    QCOMPARE(page.presses, 1);
}

QTEST_MAIN(TestToggleMouse)
#include "tst_togglemouse.moc"
