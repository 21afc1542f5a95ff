// The button and comprehensive pages driven like a user and like the unit:
// sections open and close, the column scrolls by dragging, answers reach the
// controls, and clicks end up in the payloads.
#define QTEST_QPA_MOUSE_HANDLING // mouse events travel as from the window system
#include "AppPaths.h"
#include "ButtonConfig.h"
#include "ComprehensiveConfig.h"
#include "DeviceData.h"
#include "MCheckBox.h"
#include "MSpinBox.h"
#include "Messages.h"
#include "PageHost.h"
#include "ParameterFile.h"
#include "PhaseSwitch.h"
#include "SbusChannel.h"
#include "SectionColumn.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeWidget>
#include <QtTest>

namespace
{

struct TestHost : PageHost {
    DeviceData data;
    DeviceData &deviceData() override { return data; }
    int currentModel() const override { return 0; }
    QString dialogStyleSheet() const override { return QString(); }
    void showHub() override { }
    void showModelPage() override { }
};

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

template <typename T> T *child(QWidget *page, const QString &name)
{
    T *found = page->findChild<T *>(name);
    if (!found)
        qFatal("no child %s", qPrintable(name));
    return found;
}

// Drags the column's content up (by > 0) or down, pressing in the margin
// beside the sections at the bottom-most (top-most) point no header covers.
int drag(SectionColumn *column, int by)
{
    const int x = 10;
    int from = by > 0 ? column->height() - 5 : 5;
    while (column->childAt(x, from) && from > 0 && from < column->height())
        from += by > 0 ? -1 : 1;
    const int to = from - by;
    QTest::mousePress(column, Qt::LeftButton, {}, QPoint(x, from));
    QTest::mouseMove(column, QPoint(x, (from + to) / 2));
    QTest::mouseMove(column, QPoint(x, to));
    QTest::mouseRelease(column, Qt::LeftButton, {}, QPoint(x, to));
    return by;
}

// A press in the box of a drawn check box or radio item.
void clickItem(QWidget *page, const QString &name)
{
    auto *item = child<MCheckBox>(page, name);
    QTest::mouseClick(item, Qt::LeftButton, {}, QPoint(item->height() / 2, item->height() / 2));
}

// Every control of the button page set to a value of its own.
void editEveryButtonControl(ButtonConfig &page)
{
    const int keys[5][2] = { { 0, 1 }, { 2, 6 }, { 6, 3 }, { 4, 5 }, { 5, 0 } }; // 6: "NONE"
    for (int i = 0; i < 5; ++i) {
        for (int k = 0; k < 2; ++k)
            child<QComboBox>(&page, QStringLiteral("ckey%1_key%2").arg(i + 1).arg(k + 1))
                ->setCurrentIndex(keys[i][k]);
        child<MSpinBox>(&page, QStringLiteral("ckey%1_step").arg(i + 1))->setM_currentValue(11 * (i + 1));
    }
    const int superKeys[2][6] = { { 1, 2, 3, 4, 5, 6 }, { 6, 0, 5, 4, 3, 2 } };
    const int values[2][6] = { { -150, -99, -1, 0, 1, 150 }, { 12, -34, 56, -78, 90, -120 } };
    for (int key = 0; key < 2; ++key) {
        for (int j = 0; j < 6; ++j) {
            const QString n = QStringLiteral("sckey%1_").arg(key + 1);
            child<QComboBox>(&page, n + QStringLiteral("key%1").arg(j + 1))
                ->setCurrentIndex(superKeys[key][j]);
            child<MSpinBox>(&page, n + QStringLiteral("value%1").arg(j + 1))
                ->setM_currentValue(values[key][j]);
        }
    }
    const int kinds[24] = { 2, 0, 1, 1, 2, 0, 0, 1, 2, 2, 1, 0, 1, 2, 0, 0, 2, 1, 2, 1, 0, 0, 1, 2 };
    for (int k = 0; k < 24; ++k)
        child<QComboBox>(&page, QStringLiteral("keyGear_%1").arg(k + 1))->setCurrentIndex(kinds[k]);
}

const char *const kEditedButtons[3] = {
    "00010b02ff16ff0321"
    "04052c050037",
    "0102030405ff"
    "010101000000"
    "966301000196" // super key 1: keys, signs, magnitudes
    "ff0005040302"
    "000100010001"
    "0c22384e5a78", // super key 2
    "020001010200000102020100",
};

// Every control of the comprehensive page set to a value of its own; the
// page is shown with every section open.
void editEveryComprehensiveControl(ComprehensiveConfig &page)
{
    const int hid[8] = { 3, 8, 0, 7, 1, 6, 2, 5 };
    for (int i = 0; i < 8; ++i)
        child<QComboBox>(&page, QStringLiteral("hidMap_%1").arg(i + 1))->setCurrentIndex(hid[i]);
    child<QComboBox>(&page, "hidOutput")->setCurrentIndex(1);
    child<QComboBox>(&page, "throttle")->setCurrentIndex(3); // SC
    clickItem(&page, "throttleGear_2");
    child<MSpinBox>(&page, "throttleHoldValue")->setM_currentValue(-123);
    child<MSpinBox>(&page, "recoverySpeed")->setM_currentValue(1.7);
    child<MSpinBox>(&page, "holdSpeed")->setM_currentValue(9);
    child<MSpinBox>(&page, "freeWarning")->setM_currentValue(42);
    child<MSpinBox>(&page, "lowVoltage")->setM_currentValue(7.35);
    child<QComboBox>(&page, "baud")->setCurrentIndex(3); // 38400
    child<PhaseSwitch>(&page, "externalInput")->setM_index(0);
    child<MCheckBox>(&page, "sbus1Output")->setM_checked(false);
    child<MCheckBox>(&page, "sbus2Output")->setM_checked(true);
    child<MSpinBox>(&page, "sbus1Priority")->setM_currentValue(9);
    child<MSpinBox>(&page, "sbus2Priority")->setM_currentValue(4);
    clickItem(&page, "sbus1Version_2");
    clickItem(&page, "sbus2Version_1");
    child<QComboBox>(&page, "sbusControl")->setCurrentIndex(2); // SB
    const QVector<QVector<int>> options { { 1, 3 }, { 2, 3, 4 }, { 1, 2 } };
    for (int set = 0; set < 3; ++set) {
        clickItem(&page, QStringLiteral("sbusControlGear_%1").arg(set + 1));
        for (int o : options.at(set))
            clickItem(&page, QStringLiteral("sbusControlOption_%1").arg(o));
    }
    clickItem(&page, "sbusControlOption_4"); // the third set: (1, 1, 0, 1) ...
    clickItem(&page, "sbusControlOption_4"); // ... and back to (1, 1, 0, 0)
}

const char *const kEditedComprehensive[11] = { "0308000701060205", "01", "000201017b111b", "2a", "0723",
    "00960000", "01", "01", "49", "60", "01010110111100" };

} // namespace

class TestSectionPages : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void dropDownOpensAndClosesItsSection_data();
    void dropDownOpensAndClosesItsSection();
    void draggingScrollsToTheEndAndNoFurther();
    void scrollBarShowsThatTheColumnContinues();
    void keySelectorsShowAndSendNoneAs255();
    void throttleHoldAnswers_data();
    void throttleHoldAnswers();
    void clicksEndUpInThePayloads();
    void baudChangeIsConfirmed_data();
    void baudChangeIsConfirmed();
    void deviceView();
    void writeAllSendsWhatThePagesShow();
    void controlFlagsAreOneOrZeroAfterAWrite();
    void speedsShowAndStepInWhatTheUnitKeeps();
    void keysBeyondTheListShowTheirNumber();
    void buttonAnswerLeavesTheEditsOfOtherFields_data();
    void buttonAnswerLeavesTheEditsOfOtherFields();
    void comprehensiveAnswerLeavesTheEditsOfOtherFields_data();
    void comprehensiveAnswerLeavesTheEditsOfOtherFields();

private:
    TestHost m_host;
    bool m_answer = true;
    int m_asked = 0;
};

void TestSectionPages::initTestCase()
{
    AppPaths::setAppDir(QStringLiteral(QM_APP_DIR)); // the pictures beside the program
    Messages::setResponder([this](const Messages::Shown &) {
        ++m_asked;
        return m_answer;
    });
}

void TestSectionPages::init()
{
    m_host.data = DeviceData();
    DeviceData &d = m_host.data;
    d.keyMapNames = QStringList { "F1", "F2", "F3", "F4", "F5", "F6", "NONE" };
    d.hidMapNames = QStringList { "T1", "T2", "T3", "T4", "T5", "T6", "T7", "T8", "NONE" };
    d.holdSwitchNames = QStringList { "NONE", "SA", "SB", "SC" };
    d.sbusControlNames = d.holdSwitchNames;
    d.minVolt = 6.6;
    d.maxVolt = 8.4;
    m_answer = true;
}

void TestSectionPages::dropDownOpensAndClosesItsSection_data()
{
    QTest::addColumn<bool>("buttons");
    QTest::addColumn<int>("section");
    for (int s = 0; s < 3; ++s)
        QTest::addRow("buttons %d", s) << true << s;
    for (int s = 0; s < 6; ++s)
        QTest::addRow("comprehensive %d", s) << false << s;
}

void TestSectionPages::dropDownOpensAndClosesItsSection()
{
    QFETCH(bool, buttons);
    QFETCH(int, section);
    QScopedPointer<SettingPage> page(
        buttons ? static_cast<SettingPage *>(new ButtonConfig) : new ComprehensiveConfig);
    page->resize(1000, 3000);
    page->show();
    QVERIFY(QTest::qWaitForWindowExposed(page.data()));
    auto *column = page->findChild<SectionColumn *>();
    auto *button = child<QPushButton>(page.data(), QStringLiteral("dropDownButton_%1").arg(section));
    const auto icon = [](const char *path) { return QIcon(QLatin1String(path)).pixmap(16).toImage(); };
    QWidget *next
        = column->dropDownButton(section + 1) ? column->dropDownButton(section + 1)->parentWidget() : nullptr;
    const int nextY = next ? next->y() : 0;

    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(button->property("urgent").toBool(), true);
    QCOMPARE(button->icon().pixmap(16).toImage(), icon(":/button/image/takeBack.png"));
    QTRY_VERIFY(column->body(section)->isVisible());
    // The open section pushes the ones under it down by its body.
    QVERIFY(column->body(section)->y() > button->parentWidget()->geometry().bottom());
    if (next)
        QVERIFY(next->y() > column->body(section)->geometry().bottom() && next->y() > nextY);

    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(button->property("urgent").toBool(), false);
    QCOMPARE(button->icon().pixmap(16).toImage(), icon(":/button/image/dropDown.png"));
    QVERIFY(!column->body(section)->isVisible());
    if (next)
        QCOMPARE(next->y(), nextY);
}

void TestSectionPages::draggingScrollsToTheEndAndNoFurther()
{
    ComprehensiveConfig page;
    page.resize(900, 400);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    SectionColumn *column = page.column();
    for (int s = 0; s < column->sectionCount(); ++s)
        column->toggle(s);
    const int end = column->contentHeight() - column->height();
    QVERIFY(end > 300);

    drag(column, 150);
    QCOMPARE(column->scrollOffset(), 150);
    drag(column, -100); // down again
    QCOMPARE(column->scrollOffset(), 50);
    for (int dragged = 0; dragged < end + 300;)
        dragged += drag(column, 150);
    QCOMPARE(column->scrollOffset(), end);
    QVERIFY(column->body(5)->geometry().bottom() < column->height());
    QVERIFY(column->body(5)->isVisible());

    // A column that fits does not scroll.
    for (int s = 0; s < column->sectionCount(); ++s)
        column->toggle(s);
    drag(column, 150);
    QCOMPARE(column->scrollOffset(), 0);
}

// At 1024 x 600 an opened section may lie wholly below the page: a scroll
// bar at the side says that the column goes on, and moves it.
void TestSectionPages::scrollBarShowsThatTheColumnContinues()
{
    ButtonConfig page;
    page.resize(1024, 420);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    SectionColumn *column = page.column();
    auto *bar = column->findChild<QScrollBar *>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(bar);
    QVERIFY(!bar->isVisible()); // three headers fit

    column->toggle(0);
    column->toggle(2);
    const int end = column->contentHeight() - column->height();
    QVERIFY(end > 100);
    QTRY_VERIFY(bar->isVisible());
    QCOMPARE(bar->maximum(), end);
    QCOMPARE(bar->value(), 0);
    QVERIFY(bar->geometry().right() == column->width() - 1);
    // No section lies under the bar.
    QVERIFY(column->body(0)->geometry().right() < bar->x());

    drag(column, 80);
    QCOMPARE(bar->value(), 80);
    bar->setValue(end);
    QCOMPARE(column->scrollOffset(), end);
    QVERIFY(column->body(2)->geometry().bottom() < column->height());

    column->toggle(0);
    column->toggle(2);
    QVERIFY(!bar->isVisible());
    QCOMPARE(column->scrollOffset(), 0);
}

void TestSectionPages::keySelectorsShowAndSendNoneAs255()
{
    ButtonConfig page;
    page.refreshFromRecord();
    // Super key 1: F6 sets -37, "NONE" sets 100; an increment of 200 shows as 100.
    page.slot_information(SuperKeyData,
        hex("05ffffffffff"
            "010000000000"
            "256400000000"
            "ffffffffffff"
            "000000000000"
            "000000000000"));
    page.slot_information(KeyCombinationData, hex("0001c8ffff00ffff00ffff00ffff00"));
    QCOMPARE(child<QComboBox>(&page, "sckey1_key1")->currentText(), QStringLiteral("F6"));
    QCOMPARE(child<QComboBox>(&page, "sckey1_key2")->currentText(), QStringLiteral("NONE"));
    QCOMPARE(child<MSpinBox>(&page, "ckey1_step")->currentValue(), 100.0);

    child<QComboBox>(&page, "ckey1_key1")->setCurrentIndex(6); // the user picks "NONE"
    QVERIFY(page.fileFragment().startsWith("<ckeyMap>255,1,100;255,255,0;"));
    QVERIFY(page.fileFragment().contains("<sckeyMap>5,255,255,255,255,255,-37,100,0,0,0,0;"));
    const QList<QByteArray> payloads = page.collectPayloads();
    QCOMPARE(payloads.at(0).left(3).toHex(), QByteArray("ff0164"));
    QCOMPARE(payloads.at(1).left(18).toHex(),
        QByteArray("05ffffffffff"
                   "010000000000"
                   "256400000000"));
    QCOMPARE(m_host.data.ckeyMap[0][0], 255);
}

void TestSectionPages::throttleHoldAnswers_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("switchText");
    QTest::addColumn<int>("gear"); // 1..3, 0 for none checked
    QTest::addColumn<int>("hold");
    QTest::addColumn<bool>("marker");
    QTest::addColumn<QByteArray>("written"); // the page's write right after
    QTest::newRow("SC, third position, -37")
        << hex("00020201250f15") << "SC" << 3 << -37 << true << QByteArray("00020201250f15");
    // No position checked is written as mode 2.
    QTest::newRow("no switch clears marker and positions")
        << hex("00ff0101250f15") << "NONE" << 0 << 0 << false << QByteArray("00ff0200000f15");
    QTest::newRow("byte 0 not 0 is ignored")
        << hex("01020201250f15") << "SA" << 1 << 10 << true << QByteArray("000000000a0505");
    QTest::newRow("mode 3 checks no position")
        << hex("00010300140000") << "SB" << 0 << 20 << true << QByteArray("00010200140000");
}

void TestSectionPages::throttleHoldAnswers()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, switchText);
    QFETCH(int, gear);
    QFETCH(int, hold);
    QFETCH(bool, marker);
    QFETCH(QByteArray, written);
    ComprehensiveConfig page;
    page.refreshFromRecord();
    page.slot_information(ThrottleHoldData, hex("000000000a0505")); // SA, first position, hold 10
    page.slot_information(ThrottleHoldData, answer);
    QCOMPARE(child<QComboBox>(&page, "throttle")->currentText(), switchText);
    for (int k = 1; k <= 3; ++k)
        QCOMPARE(child<MCheckBox>(&page, QStringLiteral("throttleGear_%1").arg(k))->checked(), k == gear);
    QCOMPARE(child<MSpinBox>(&page, "throttleHoldValue")->currentValue(), double(hold));
    auto *bar = child<SbusChannel>(&page, "throttleBar");
    QCOMPARE(bar->throttleEnable(), marker);
    QCOMPARE(bar->hold(), hold);
    QCOMPARE(page.collectPayloads().at(2).toHex(), written);
}

void TestSectionPages::clicksEndUpInThePayloads()
{
    ComprehensiveConfig page;
    page.resize(1000, 2400);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    page.refreshFromRecord();
    page.slot_information(SbusOutputData, hex("02")); // both on
    page.slot_information(Group32, hex("90")); // SBUS 1 V1.0, SBUS 2 V2.0
    page.slot_information(Group34, hex("00110001101011")); // by SA; position 1 shows (1, 16, 0, 0)
    for (int s = 0; s < 6; ++s)
        page.column()->toggle(s);
    auto click = [&page](const QString &name) {
        QWidget *w = child<QWidget>(&page, name);
        QTest::mouseClick(w, Qt::LeftButton, {}, QPoint(w->height() / 2, w->height() / 2));
    };
    click("sbus1Version_2");
    click("sbus2Output");
    auto *external = child<PhaseSwitch>(&page, "externalInput");
    QTest::mouseClick(external, Qt::LeftButton, {}, QPoint(external->width() - 10, external->height() / 2));
    click("sbusControlOption_3");
    click("sbusControlGear_2"); // the second position shows its own options: (1, 0, 0, 16)
    QVERIFY(!child<MCheckBox>(&page, "sbusControlOption_3")->checked());
    QVERIFY(child<MCheckBox>(&page, "sbusControlOption_4")->checked());
    click("sbusControlOption_4");
    click("sbusControlGear_1");
    QVERIFY(child<MCheckBox>(&page, "sbusControlOption_3")->checked());

    const QList<QByteArray> payloads = page.collectPayloads();
    QCOMPARE(payloads.at(6).toHex(), QByteArray("01")); // the right half pressed: the left one lights
    QCOMPARE(payloads.at(7).toHex(), QByteArray("00")); // SBUS 1 only
    QCOMPARE(payloads.at(9).toHex(), QByteArray("a0")); // SBUS 1 V2.0, SBUS 2 V2.0
    QCOMPARE(payloads.at(10).toHex(),
        QByteArray("00"
                   "1101"
                   "0100"
                   "1011"));
    // The write keeps the protocols and control sets in the record.
    QCOMPARE(m_host.data.sbusVersion, quint8(0xA0));
    QCOMPARE(m_host.data.sbusControl[0][2], 1);
    QCOMPARE(m_host.data.sbusControl[1][3], 0);
}

void TestSectionPages::baudChangeIsConfirmed_data()
{
    QTest::addColumn<bool>("confirmed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("confirmed") << true << "230400";
    QTest::newRow("declined") << false << "115200";
}

void TestSectionPages::baudChangeIsConfirmed()
{
    QFETCH(bool, confirmed);
    QFETCH(QString, shown);
    ComprehensiveConfig page;
    page.refreshFromRecord();
    page.slot_information(BaudData, hex("00c20100"));
    m_answer = confirmed;
    auto *baud = child<QComboBox>(&page, "baud");
    m_asked = 0;
    QTest::keyClick(baud, Qt::Key_Down); // the user picks the next rate
    // Asked once the selector is done with the pick.
    QTRY_COMPARE(m_asked, 1);
    QCOMPARE(baud->currentText(), shown);
    QCOMPARE(page.collectPayloads().at(5).toHex(), QByteArray(confirmed ? "00840300" : "00c20100"));
}

void TestSectionPages::deviceView()
{
    ComprehensiveConfig page;
    page.slot_information(BatteryData, hex("0705503c805a"));
    QCOMPARE(child<QLabel>(&page, "batteryVoltage")->text(), QStringLiteral("7.05 V     80%"));
    QCOMPARE(child<QLabel>(&page, "signal")->text(), QStringLiteral("-60 dbm     90%"));

    page.slot_information(SearchDevicesData, QByteArray("\x00\x01RX-1\r\nfirst", 13));
    page.slot_information(SearchDevicesData, QByteArray("\x00\x01RX-1\r\nagain", 13));
    page.slot_information(SearchDevicesData, QByteArray("\x00\x02RX-2\r\nsecond", 14));
    auto *list = child<QTreeWidget>(&page, "deviceList");
    QCOMPARE(list->topLevelItemCount(), 2);
    QCOMPARE(list->topLevelItem(0)->text(1), QStringLiteral("first"));

    QByteArray report(64, '\0');
    report[4] = char(0xB0); // 1200: full throttle
    report[5] = char(0x04);
    page.slot_information(ChannelDataReport, report);
    QCOMPARE(child<SbusChannel>(&page, "throttleBar")->val(), 150);
}

// A parameter file with values beyond what the controls take: the write-all
// sends what the pages show, not what the file said.
void TestSectionPages::writeAllSendsWhatThePagesShow()
{
    ParameterFile::loadBytes("<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n"
                             "<ckeyMap>0,1,200;2,3,5;255,255,0;1,0,7;4,5,100;</ckeyMap>\r\n"
                             "<sckeyMap>1,2,1,3,2,3,-200,-150,37,0,200,-1;"
                             "255,0,1,2,3,4,5,6,7,8,9,10;</sckeyMap>\r\n"
                             "<keyGear>1,2,0,0,2,1,1,0,2,2,1,0,2,2,2,2,2,2,2,2,2,2,2,2;</keyGear>\r\n"
                             "<hidMap>7,6,5,4,3,2,1,0;</hidMap>\r\n"
                             "<hidOutput>1</hidOutput>\r\n"
                             "<throttleHoldSwitch>1</throttleHoldSwitch>\r\n"
                             "<throttleData>2,-200,1.5,5;</throttleData>\r\n"
                             "<freeWarning>300</freeWarning>\r\n"
                             "<lowVoltage>9</lowVoltage>\r\n"
                             "<baud>57600</baud>\r\n"
                             "<externalInput>0</externalInput>\r\n"
                             "<sbusOutput>0,1;</sbusOutput>\r\n"
                             "<sbusPriority>35</sbusPriority>\r\n"
                             "<sbusVersion>144</sbusVersion>\r\n"
                             "<sbusControlSwitch>2</sbusControlSwitch>\r\n"
                             "<sbusControl-0>1,16,0,0;</sbusControl-0>\r\n"
                             "<sbusControl-1>0,0,1,16;</sbusControl-1>\r\n"
                             "<sbusControl-2>1,0,0,16;</sbusControl-2>\r\n"
                             "</body>\r\n",
        m_host.data);
    ButtonConfig buttons;
    ComprehensiveConfig comprehensive;
    buttons.refreshFromRecord();
    comprehensive.refreshFromRecord();

    QList<QByteArray> sent;
    for (const QByteArray &payload : buttons.payloadsFromRecord())
        sent << payload.toHex(' ');
    QCOMPARE(sent,
        QList<QByteArray>({ "00 01 64 02 03 05 ff ff 00 01 00 07 04 05 64",
            "01 02 01 03 02 03 01 01 00 00 00 01 96 96 25 00 96 01 "
            "ff 00 01 02 03 04 00 00 00 00 00 00 05 06 07 08 09 0a",
            "01 02 00 00 02 01 01 00 02 02 01 00" }));
    sent.clear();
    for (const QByteArray &payload : comprehensive.payloadsFromRecord())
        sent << payload.toHex(' ');
    QCOMPARE(sent,
        QList<QByteArray>({ "07 06 05 04 03 02 01 00", "01", "00 01 02 01 96 0f 17", "ff", "08 28",
            "00 e1 00 00", "00", "01", "23", "90", "02 11 00 00 11 01 10" }));
}

// The unit's high-nibble flags read as 16; the write keeps the shown set as
// its check boxes say, 1 or 0, and the file says 1 or 0 before and after.
void TestSectionPages::controlFlagsAreOneOrZeroAfterAWrite()
{
    ComprehensiveConfig page;
    page.resize(1000, 2400);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    page.refreshFromRecord();
    page.slot_information(Group34, hex("00110001101011")); // set 3: (0, 16, 1, 16)
    QCOMPARE(m_host.data.sbusControl[2][1], 16);
    page.column()->toggle(4);
    auto *third = child<MCheckBox>(&page, "sbusControlGear_3");
    QTest::mouseClick(third, Qt::LeftButton, {}, QPoint(third->height() / 2, third->height() / 2));
    QVERIFY(page.fileFragment().endsWith("<sbusControl-0>1,1,0,0;</sbusControl-0>\r\n"
                                         "<sbusControl-1>1,0,0,1;</sbusControl-1>\r\n"
                                         "<sbusControl-2>0,1,1,1;</sbusControl-2>\r\n"));

    QCOMPARE(page.collectPayloads().at(10).toHex(), QByteArray("00110001101011"));
    QCOMPARE(QVector<int>(m_host.data.sbusControl[2], m_host.data.sbusControl[2] + 4),
        QVector<int>({ 0, 1, 1, 1 }));
    QVERIFY(page.fileFragment().endsWith("<sbusControl-2>0,1,1,1;</sbusControl-2>\r\n"));
}

// One repeat step of a spin box's plus (or minus) button, held by the mouse.
static void step(MSpinBox *box, bool up)
{
    const QPoint at(up ? box->width() - 6 : 6, box->height() / 2);
    QTest::mousePress(box, Qt::LeftButton, {}, at);
    box->slot_timeout();
    QTest::mouseRelease(box, Qt::LeftButton, {}, at);
}

void TestSectionPages::speedsShowAndStepInWhatTheUnitKeeps()
{
    ComprehensiveConfig page;
    page.resize(1000, 1200);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    page.refreshFromRecord();
    page.column()->toggle(1);
    auto *recovery = child<MSpinBox>(&page, "recoverySpeed");
    auto *hold = child<MSpinBox>(&page, "holdSpeed");
    QTRY_VERIFY(recovery->isVisible());

    // Bytes 100 and 255: 82 s and 237 s, shown and written back as they are.
    page.slot_information(ThrottleHoldData, hex("000000000a64ff"));
    QCOMPARE(recovery->currentValue(), 82.0);
    QCOMPARE(hold->currentValue(), 237.0);
    QCOMPARE(page.collectPayloads().at(2).toHex(), QByteArray("000000000a64ff"));

    // From 2.0 s the next step up is 3 s, from 3 s the next step down 2.0 s;
    // below 2 s the steps are tenths.
    page.slot_information(ThrottleHoldData, hex("000000000a1415"));
    step(recovery, true);
    QCOMPARE(recovery->currentValue(), 3.0);
    step(hold, false);
    QCOMPARE(hold->currentValue(), 2.0);
    step(hold, false);
    QCOMPARE(hold->currentValue(), 1.9);
    QCOMPARE(page.collectPayloads().at(2).toHex(), QByteArray("000000000a1513"));
    recovery->slot_calculatorMsg(4.5); // typed: the whole second above
    QCOMPARE(recovery->currentValue(), 5.0);
    QCOMPARE(page.collectPayloads().at(2).toHex(), QByteArray("000000000a1713"));
}

// The model's list has six keys; a unit or file naming key 31 or 40 shows
// the number and sends it back unchanged until the user picks another.
void TestSectionPages::keysBeyondTheListShowTheirNumber()
{
    ButtonConfig page;
    page.refreshFromRecord();
    page.slot_information(KeyCombinationData, hex("1f0105ffff00ffff00ffff00ffff00"));
    page.slot_information(SuperKeyData,
        hex("28ffffffffff"
            "000000000000"
            "0a0000000000"
            "ffffffffffff"
            "000000000000"
            "000000000000"));
    auto *first = child<QComboBox>(&page, "ckey1_key1");
    QCOMPARE(first->currentText(), QStringLiteral("#31"));
    QCOMPARE(child<QComboBox>(&page, "sckey1_key1")->currentText(), QStringLiteral("#40"));
    QVERIFY(page.fileFragment().startsWith("<ckeyMap>31,1,5;255,255,0;"));
    QList<QByteArray> payloads = page.collectPayloads();
    QCOMPARE(payloads.at(0).left(3).toHex(), QByteArray("1f0105"));
    QCOMPARE(payloads.at(1).left(1).toHex(), QByteArray("28"));

    first->setCurrentIndex(1); // F2
    payloads = page.collectPayloads();
    QCOMPARE(payloads.at(0).left(3).toHex(), QByteArray("010105"));
    QCOMPARE(m_host.data.ckeyMap[0][0], 1);
}

static QList<QByteArray> hexList(const char *const *texts, int count)
{
    QList<QByteArray> list;
    for (int i = 0; i < count; ++i)
        list << QByteArray(texts[i]);
    return list;
}

static QList<QByteArray> toHex(const QList<QByteArray> &payloads)
{
    QList<QByteArray> list;
    for (const QByteArray &p : payloads)
        list << p.toHex();
    return list;
}


// An answer carries its own group only; the user's edits of the others stay.
void TestSectionPages::buttonAnswerLeavesTheEditsOfOtherFields_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("answered"); // the payload the answer replaces, -1 none
    QTest::newRow("combination keys")
        << int(KeyCombinationData) << hex("01000f030214ff051e040528000132") << 0;
    QTest::newRow("super keys") << int(SuperKeyData)
                                << hex("000102030405"
                                       "000000010101"
                                       "010203040506"
                                       "050403020100"
                                       "010000000000"
                                       "0a141e28323c")
                                << 1;
    QTest::newRow("key kinds") << int(KeyAttributeData) << hex("000102000102000102000102") << 2;
    QTest::newRow("channel report") << int(ChannelDataReport) << QByteArray(64, '\x10') << -1;
    QTest::newRow("combination keys of 16 bytes")
        << int(KeyCombinationData) << hex("01000f030214ff051e04052800013200") << -1;
}

void TestSectionPages::buttonAnswerLeavesTheEditsOfOtherFields()
{
    QFETCH(int, code);
    QFETCH(QByteArray, answer);
    QFETCH(int, answered);
    ButtonConfig page;
    page.refreshFromRecord();
    editEveryButtonControl(page);
    page.slot_information(CodeID(code), answer);
    QList<QByteArray> expected = hexList(kEditedButtons, 3);
    if (answered >= 0)
        expected[answered] = answer.toHex();
    QCOMPARE(toHex(page.collectPayloads()), expected);
}


void TestSectionPages::comprehensiveAnswerLeavesTheEditsOfOtherFields_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("answered"); // the payload the answer replaces, -1 none
    QTest::newRow("HID mapping") << int(HidMappingData) << hex("0001020304050607") << 0;
    QTest::newRow("HID mode") << int(HidOutputData) << hex("00") << 1;
    QTest::newRow("throttle hold") << int(ThrottleHoldData) << hex("00000000050519") << 2;
    QTest::newRow("idle warning") << int(IdleWarningData) << hex("07") << 3;
    QTest::newRow("low voltage") << int(LowVoltageData) << hex("0705") << 4;
    QTest::newRow("baud") << int(BaudData) << hex("00c20100") << 5;
    QTest::newRow("external input") << int(ExternalSbusInputData) << hex("00") << 6;
    QTest::newRow("SBUS outputs") << int(SbusOutputData) << hex("02") << 7;
    QTest::newRow("priorities") << int(Group30) << hex("21") << 8;
    QTest::newRow("protocols") << int(Group32) << hex("90") << 9;
    QTest::newRow("SBUS control") << int(Group34) << hex("00110001101011") << 10;
    QTest::newRow("channel report") << int(ChannelDataReport) << QByteArray(64, '\x10') << -1;
    QTest::newRow("battery") << int(BatteryData) << hex("0705503c805a") << -1;
    QTest::newRow("device found") << int(SearchDevicesData) << QByteArray("\x00\x01RX-1\r\nfirst", 13) << -1;
    QTest::newRow("throttle hold of 6 bytes") << int(ThrottleHoldData) << hex("000000000505") << -1;
}

void TestSectionPages::comprehensiveAnswerLeavesTheEditsOfOtherFields()
{
    QFETCH(int, code);
    QFETCH(QByteArray, answer);
    QFETCH(int, answered);
    ComprehensiveConfig page;
    page.resize(1000, 2400);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    page.refreshFromRecord();
    for (int s = 0; s < 6; ++s)
        page.column()->toggle(s);
    editEveryComprehensiveControl(page);
    page.slot_information(CodeID(code), answer);
    QList<QByteArray> expected = hexList(kEditedComprehensive, 11);
    if (answered >= 0)
        expected[answered] = answer.toHex();
    QCOMPARE(toHex(page.collectPayloads()), expected);
}

QTEST_MAIN(TestSectionPages)
#include "tst_sectionpages.moc"
