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
#include "PhaseSwitch.h"
#include "SbusChannel.h"
#include "SectionColumn.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
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
    void keySelectorsShowAndSendNoneAs255();
    void throttleHoldAnswers_data();
    void throttleHoldAnswers();
    void clicksEndUpInThePayloads();
    void baudChangeIsConfirmed_data();
    void baudChangeIsConfirmed();
    void deviceView();

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
    QTest::newRow("SC, third position, -37") << hex("00020201250f15") << "SC" << 3 << -37 << true;
    QTest::newRow("no switch clears marker and positions")
        << hex("00ff0101250f15") << "NONE" << 0 << 0 << false;
    QTest::newRow("byte 0 not 0 is ignored") << hex("01020201250f15") << "SA" << 1 << 10 << true;
}

void TestSectionPages::throttleHoldAnswers()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, switchText);
    QFETCH(int, gear);
    QFETCH(int, hold);
    QFETCH(bool, marker);
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

QTEST_MAIN(TestSectionPages)
#include "tst_sectionpages.moc"
