#include "AppPaths.h"
#include "ChannelListenInterface.h"
#include "DeviceData.h"
#include "HelpWidget.h"
#include "Messages.h"
#include "PageHost.h"
#include "ParameterFile.h"
#include "SettingPage.h"

#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

struct TestHost : PageHost {
    DeviceData data;
    int modelPageShown = 0;
    DeviceData &deviceData() override { return data; }
    int currentModel() const override { return 0; }
    QString dialogStyleSheet() const override { return QString(); }
    void showHub() override { }
    void showModelPage() override { ++modelPageShown; }
};

// A setting page that remembers which port the hub told it to show.
class RecordingPage : public SettingPage
{
public:
    QVector<int> shownSections;
    void showSection(int section) override { shownSections.append(section); }
    void refreshFromRecord() override { }
    QList<QByteArray> collectPayloads() override { return {}; }
    QList<QByteArray> payloadsFromRecord() override { return {}; }
    QString fileFragment() override { return QString(); }
    void slot_information(CodeID, QByteArray) override { }
};

const char *const kMenuNames[] = { "sbus1Config", "sbus2Config", "holdConfig", "buttonConfig",
    "comprehensiveConfig", "rfradioConfig", "customConfig", "HelpInformation" };

QPushButton *button(QWidget *hub, const char *name)
{
    return hub->findChild<QPushButton *>(QLatin1String(name));
}

// Clicks the real button as a user would (it must have been laid out).
void click(QWidget *hub, const char *name)
{
    QPushButton *b = button(hub, name);
    QVERIFY2(b, name);
    QTest::mouseClick(b, Qt::LeftButton, Qt::NoModifier, b->rect().center());
}

// The menu buttons left visible after a paint, in order of their x.
QStringList visibleMenu(QWidget *hub)
{
    QList<QPushButton *> shown;
    for (const char *name : kMenuNames) {
        QPushButton *b = button(hub, name);
        if (b && !b->isHidden())
            shown << b;
    }
    std::sort(shown.begin(), shown.end(),
        [](QPushButton *a, QPushButton *b) { return a->geometry().x() < b->geometry().x(); });
    QStringList names;
    for (QPushButton *b : shown)
        names << b->objectName();
    return names;
}

// A file as the window saves it for the Alder handset, every value away from
// the model's defaults and from its neighbours. On port 1 the file held -5 as
// the fixed value of channel 15 and on port 2 133 for channel 15: the reader
// turns them into -235 and -5, and the window saves what the record holds.
// A failsafe is saved signed (-40), as the page leaves it after a write.
const char kSavedHead[]
    = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n"
      "<sbus1Default>\r\n"
      "<phase>1,0,0,1,0,0,0,0,0,0,0,0,0,0,0,1;</phase>\r\n"
      "<fineTuning>-5,3,0,0,0,0,0,0,0,0,0,0,0,0,0,12;</fineTuning>\r\n"
      "<leftTrip>100,90,100,100,100,100,100,100,100,100,100,100,100,100,100,150;</leftTrip>\r\n"
      "<rightTrip>100,100,80,100,100,100,100,100,100,100,100,100,100,100,100,120;</rightTrip>\r\n"
      "<safeProtectionState>0,1,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</safeProtectionState>\r\n"
      "<safeProtectionValue>255,-40,30,255,255,255,255,255,255,255,255,255,255,255,255,255;"
      "</safeProtectionValue>\r\n"
      "<channelMap>1,0,2,3,4,5,6,7,8,9,10,11,12,13,254,254;</channelMap>\r\n"
      "<noneValue>0,0,0,0,0,0,0,0,0,0,0,0,0,0,-235,64;</noneValue>\r\n"
      "</sbus1Default>\r\n"
      "<sbus2Default>\r\n"
      "<phase>0,1,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</phase>\r\n"
      "<fineTuning>0,0,-20,0,0,0,0,0,0,0,0,0,0,0,0,7;</fineTuning>\r\n"
      "<leftTrip>110,100,100,100,100,100,100,100,100,100,100,100,100,100,100,0;</leftTrip>\r\n"
      "<rightTrip>100,100,100,130,100,100,100,100,100,100,100,100,100,100,100,0;</rightTrip>\r\n"
      "<safeProtectionState>0,0,0,0,1,0,0,0,0,0,0,0,0,0,0,0;</safeProtectionState>\r\n"
      "<safeProtectionValue>255,255,255,255,60,0,255,255,255,255,255,255,255,255,255,255;"
      "</safeProtectionValue>\r\n"
      "<channelMap>13,12,11,10,9,8,7,6,5,4,3,2,1,0,254,254;</channelMap>\r\n"
      "<noneValue>0,0,0,0,0,0,0,0,0,0,0,0,0,0,-5,100;</noneValue>\r\n"
      "</sbus2Default>\r\n"
      "<sbusHoldSwitch>1,3;</sbusHoldSwitch>\r\n"
      "<sbus1-0>1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus1-0>\r\n"
      "<sbus2-0>0,1,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus2-0>\r\n"
      "<sbus1-1>0,0,1,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus1-1>\r\n"
      "<sbus2-1>0,0,0,1,0,0,0,0,0,0,0,0,0,0,0,0;</sbus2-1>\r\n"
      "<sbus1-2>0,0,0,0,1,0,0,0,0,0,0,0,0,0,0,0;</sbus1-2>\r\n"
      "<sbus2-2>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1;</sbus2-2>\r\n"
      "<ckeyMap>0,1,10;2,3,5;255,255,1;1,0,7;4,5,50;</ckeyMap>\r\n"
      "<sckeyMap>1,2,3,4,5,6,-100,-50,37,0,100,-1;255,0,6,7,255,255,10,20,30,40,50,60;"
      "</sckeyMap>\r\n"
      "<keyGear>1,2,0,0,2,1,1,0,2,2,1,0,2,1,0,0,0,0,0,0,0,0,0,0;</keyGear>\r\n"
      "<hidMap>7,6,5,4,3,2,1,0;</hidMap>\r\n"
      "<hidOutput>1</hidOutput>\r\n"
      "<throttleHoldSwitch>2</throttleHoldSwitch>\r\n"
      "<throttleData>1,-37,1.5,0.7;</throttleData>\r\n"
      "<freeWarning>12</freeWarning>\r\n"
      "<lowVoltage>7.35</lowVoltage>\r\n"
      "<baud>57600</baud>\r\n"
      "<externalInput>1</externalInput>\r\n"
      "<sbusOutput>1,0;</sbusOutput>\r\n"
      "<sbusPriority>1</sbusPriority>\r\n"
      "<sbusVersion>96</sbusVersion>\r\n"
      "<sbusControlSwitch>2</sbusControlSwitch>\r\n"
      "<sbusControl-0>1,0,0,1;</sbusControl-0>\r\n"
      "<sbusControl-1>0,1,0,0;</sbusControl-1>\r\n"
      "<sbusControl-2>0,0,1,1;</sbusControl-2>\r\n";

} // namespace

class TestHub : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void menuFollowsModuleKind_data();
    void menuFollowsModuleKind();
    void scrollButtonsStopAtBothEnds_data();
    void scrollButtonsStopAtBothEnds();
    void chosenSectionIsBoldAndWhite_data();
    void chosenSectionIsBoldAndWhite();
    void sectionPagesFollowTheMenu();
    void returnHidesHubAndShowsModelPage();
    void missingModelFileWarnsOnceAndKeepsRecord();
    void helpWindowIsCreatedOnceAndReused();
    void closingEmitsCloseEventAndDeletes();
    void savedFileIsTheWholeRecordByteForByte_data();
    void savedFileIsTheWholeRecordByteForByte();

private:
    TestHost m_host;
    QList<Messages::Shown> m_shown;
};

void TestHub::initTestCase()
{
    registerCodeIdMetaType();
    Messages::setResponder([this](const Messages::Shown &shown) {
        m_shown.append(shown);
        return true;
    });
}

void TestHub::init()
{
    AppPaths::setAppDir(QStringLiteral(QM_APP_DIR));
    m_host.data = DeviceData();
    m_host.modelPageShown = 0;
    m_shown.clear();
}

void TestHub::cleanupTestCase()
{
    Messages::setResponder({});
}

void TestHub::menuFollowsModuleKind_data()
{
    QTest::addColumn<int>("module");
    QTest::addColumn<QVector<int>>("entries");
    QTest::addColumn<QStringList>("visible");
    const QStringList common { "sbus1Config", "sbus2Config", "holdConfig", "buttonConfig",
        "comprehensiveConfig" };
    QTest::newRow("no module") << 0 << QVector<int> { 0, 1, 2, 3, 4, 7 }
                               << common + QStringList { "HelpInformation" };
    QTest::newRow("radio module") << 1 << QVector<int> { 0, 1, 2, 3, 4, 5, 7 }
                                  << common + QStringList { "rfradioConfig", "HelpInformation" };
    QTest::newRow("output module") << 2 << QVector<int> { 0, 1, 2, 3, 4, 6, 7 }
                                   << common + QStringList { "customConfig", "HelpInformation" };
    // A kind the unit should never report offers neither optional section.
    QTest::newRow("unknown kind") << 3 << QVector<int> { 0, 1, 2, 3, 4, 7 }
                                  << common + QStringList { "HelpInformation" };
}

void TestHub::menuFollowsModuleKind()
{
    QFETCH(int, module);
    QFETCH(QVector<int>, entries);
    QFETCH(QStringList, visible);
    m_host.data.m_module = module;
    ChannelListenInterface hub(0);
    QCOMPARE(hub.menuEntries(), entries);
    hub.resize(1280, 760);
    hub.grab();
    QCOMPARE(visibleMenu(&hub), visible);
    QVERIFY(m_shown.isEmpty());
}

void TestHub::scrollButtonsStopAtBothEnds_data()
{
    QTest::addColumn<int>("module");
    QTest::newRow("six entries") << 0;
    QTest::newRow("seven entries") << 2;
}

void TestHub::scrollButtonsStopAtBothEnds()
{
    QFETCH(int, module);
    m_host.data.m_module = module;
    ChannelListenInterface hub(0);
    hub.resize(1280, 760);
    hub.show();
    QVERIFY(QTest::qWaitForWindowExposed(&hub));
    const QVector<int> entries = hub.menuEntries();
    const int u = 760 / 20;
    const int firstX = 5 + u + 5; // after the left scroll button

    // Rightwards one entry per click, until the last entry is the first shown.
    for (int clicks = 1; clicks <= entries.size() + 2; ++clicks) {
        hub.grab();
        click(&hub, "rightScaleButton");
        const int expected = qMin(clicks, int(entries.size()) - 1);
        QCOMPARE(hub.scrollPosition(), expected);
        hub.grab();
        for (int i = 0; i < entries.size(); ++i) {
            QPushButton *b = hub.menuButton(entries[i]);
            QCOMPARE(b->isHidden(), i < expected);
        }
        QCOMPARE(hub.menuButton(entries[expected])->geometry().x(), firstX);
    }
    QCOMPARE(visibleMenu(&hub), QStringList { "HelpInformation" });

    // And back to the start, where the left button stops.
    for (int clicks = 1; clicks <= entries.size() + 2; ++clicks) {
        click(&hub, "leftScaleButton");
        QCOMPARE(hub.scrollPosition(), qMax(0, int(entries.size()) - 1 - clicks));
        hub.grab();
    }
    QCOMPARE(hub.menuButton(entries[0])->geometry().x(), firstX);
    QCOMPARE(visibleMenu(&hub).size(), entries.size());
}

void TestHub::chosenSectionIsBoldAndWhite_data()
{
    QTest::addColumn<int>("module");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("section");
    QTest::newRow("start") << 0 << QByteArray() << 0;
    QTest::newRow("sbus 2") << 0 << QByteArray("sbus2Config") << 1;
    QTest::newRow("comprehensive") << 0 << QByteArray("comprehensiveConfig") << 4;
    QTest::newRow("radio module") << 1 << QByteArray("rfradioConfig") << 5;
    QTest::newRow("custom output") << 2 << QByteArray("customConfig") << 6;
}

void TestHub::chosenSectionIsBoldAndWhite()
{
    QFETCH(int, module);
    QFETCH(QByteArray, name);
    QFETCH(int, section);
    m_host.data.m_module = module;
    ChannelListenInterface hub(0);
    hub.resize(1280, 760);
    hub.show();
    QVERIFY(QTest::qWaitForWindowExposed(&hub));
    hub.grab();
    if (!name.isEmpty())
        click(&hub, name.constData());
    QCOMPARE(hub.currentSection(), section);
    // Under the program's style sheet (blue buttons) the text comes out white
    // on the current section's button and black on the others.
    QFile sheet(QStringLiteral(QM_APP_DIR "/config/StyleSheets.qss"));
    QVERIFY(sheet.open(QIODevice::ReadOnly));
    hub.setStyleSheet(QString::fromUtf8(sheet.readAll()));
    const QImage shot = hub.grab().toImage();
    for (const char *menuName : kMenuNames) {
        QPushButton *b = button(&hub, menuName);
        if (b->isHidden() || b->text().isEmpty())
            continue;
        int white = 0;
        int black = 0;
        const QRect r = b->geometry().adjusted(3, 3, -3, -3);
        for (int y = r.top(); y <= r.bottom(); ++y) {
            for (int x = r.left(); x <= r.right(); ++x) {
                const QColor c = shot.pixelColor(x, y);
                white += c.red() > 240 && c.green() > 240 && c.blue() > 240;
                black += c.red() < 30 && c.green() < 30 && c.blue() < 30;
            }
        }
        const bool current = b == hub.menuButton(section);
        QVERIFY2(current ? white > 10 && black == 0 : black > 10 && white == 0, menuName);
    }
}

// Sections 0 and 1 share the SBUS page, which is told the port; every other
// section shows its own page in the area between the bars.
void TestHub::sectionPagesFollowTheMenu()
{
    m_host.data.m_module = 2;
    ChannelListenInterface hub(0);
    auto *sbus = new RecordingPage;
    auto *hold = new RecordingPage;
    auto *keys = new RecordingPage;
    auto *general = new RecordingPage;
    auto *custom = new RecordingPage;
    hub.setSectionPage(0, sbus);
    hub.setSectionPage(1, sbus);
    hub.setSectionPage(2, hold);
    hub.setSectionPage(3, keys);
    hub.setSectionPage(4, general);
    hub.setSectionPage(6, custom);
    const QList<RecordingPage *> pages { sbus, sbus, hold, keys, general, nullptr, custom };
    hub.resize(1000, 600);
    hub.show();
    QVERIFY(QTest::qWaitForWindowExposed(&hub));
    hub.grab();
    QVERIFY(sbus->isVisible());
    QCOMPARE(sbus->geometry(), QRect(0, 45, 1000, 600 - 90));

    const QList<int> order { 1, 0, 2, 6, 3, 4, 1 };
    for (int section : order) {
        sbus->shownSections.clear();
        click(&hub, kMenuNames[section]);
        hub.grab();
        for (RecordingPage *p : { sbus, hold, keys, general, custom })
            QCOMPARE(p->isVisible(), p == pages[section]);
        QCOMPARE(pages[section]->geometry(), QRect(0, 45, 1000, 600 - 90));
        if (section <= 1)
            QCOMPARE(sbus->shownSections.value(0, -1), section);
        else
            QVERIFY(sbus->shownSections.isEmpty());
    }
}

void TestHub::returnHidesHubAndShowsModelPage()
{
    m_host.data.m_module = 1;
    ChannelListenInterface hub(0);
    hub.resize(1280, 760);
    hub.show();
    QVERIFY(QTest::qWaitForWindowExposed(&hub));
    hub.grab();
    click(&hub, "rightScaleButton");
    click(&hub, "rightScaleButton");
    QCOMPARE(hub.scrollPosition(), 2);

    click(&hub, "returnButton");
    QVERIFY(hub.isHidden());
    QCOMPARE(hub.scrollPosition(), 0);
    QCOMPARE(m_host.modelPageShown, 1);

    // Shown again, the menu starts at its first entry.
    hub.show();
    hub.grab();
    QVERIFY(!hub.menuButton(0)->isHidden());
    QCOMPARE(hub.menuButton(0)->geometry().x(), 5 + 38 + 5);
}

void TestHub::missingModelFileWarnsOnceAndKeepsRecord()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    AppPaths::setAppDir(dir.path());
    DeviceData &d = m_host.data;
    d.channelMapNames = QStringList { "a" };
    d.holdSwitchNames = QStringList { "b" };
    d.keyMapNames = QStringList { "c" };
    d.hidMapNames = QStringList { "d" };
    d.sbusControlNames = QStringList { "e" };
    d.minVolt = 6.6;
    d.maxVolt = 8.4;
    d.baud = 3;
    d.sbusHoldSwitch[0] = 1;
    d.m_module = 2;
    ChannelListenInterface hub(0);

    QCOMPARE(m_shown.size(), 1);
    QCOMPARE(m_shown[0].kind, Messages::Kind::Warning);
    QCOMPARE(m_shown[0].title, QStringLiteral("AlderConfig.xml"));
    QCOMPARE(m_shown[0].text, QStringLiteral("open file failed!"));
    QVERIFY(d.channelMapNames.isEmpty());
    QVERIFY(d.holdSwitchNames.isEmpty());
    QVERIFY(d.keyMapNames.isEmpty());
    QVERIFY(d.hidMapNames.isEmpty());
    QCOMPARE(d.sbusControlNames, QStringList { "e" });
    QCOMPARE(d.minVolt, 6.6);
    QCOMPARE(d.maxVolt, 8.4);
    QCOMPARE(d.baud, 3);
    QCOMPARE(d.sbusHoldSwitch[0], 1);
    QCOMPARE(d.m_module, 2);
    // The hub itself is complete without its model file.
    QCOMPARE(hub.menuEntries(), (QVector<int> { 0, 1, 2, 3, 4, 6, 7 }));
}

void TestHub::helpWindowIsCreatedOnceAndReused()
{
    ChannelListenInterface hub(0);
    hub.resize(1280, 760);
    hub.show();
    QVERIFY(QTest::qWaitForWindowExposed(&hub));
    hub.grab();
    QVERIFY(!hub.helpWindow());
    QVERIFY(button(&hub, "HelpInformation")->text().isEmpty());

    click(&hub, "HelpInformation");
    HelpWidget *help = hub.helpWindow();
    QVERIFY(help);
    QTRY_VERIFY_WITH_TIMEOUT(help->isVisible(), 1000);
    QCOMPARE(help->windowTitle(), QStringLiteral("帮助说明"));

    click(&hub, "HelpInformation");
    QCOMPARE(hub.helpWindow(), help);
    QVERIFY(help->isVisible());
    QCOMPARE(hub.findChildren<HelpWidget *>().size(), 1);

    // Closed and asked for again: the same window comes back.
    help->close();
    QVERIFY(!help->isVisible());
    click(&hub, "HelpInformation");
    QCOMPARE(hub.helpWindow(), help);
    QVERIFY(help->isVisible());
    QVERIFY(!help->isMinimized());
    QCOMPARE(hub.findChildren<HelpWidget *>().size(), 1);
}

void TestHub::closingEmitsCloseEventAndDeletes()
{
    QPointer<ChannelListenInterface> hub = new ChannelListenInterface(0);
    QSignalSpy spy(hub.data(), &ChannelListenInterface::signal_closeEvent);
    hub->show();
    QVERIFY(hub->close());
    QCOMPARE(spy.count(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(hub.isNull(), 1000);
}

void TestHub::savedFileIsTheWholeRecordByteForByte_data()
{
    QTest::addColumn<int>("module");
    QTest::addColumn<QByteArray>("tail");
    // No module: neither the power page nor the custom page exists, and
    // nothing follows the comprehensive settings.
    QTest::newRow("no module") << 0 << QByteArray("</body>\r\n");
    QTest::newRow("radio module") << 1
                                  << QByteArray("<modulePowerState>1,0</modulePowerState>\r\n"
                                                "<modulePhysicalCtl>0,1</modulePhysicalCtl>\r\n"
                                                "</body>\r\n");
    QByteArray frame = "<CANFrame>0,1,2,3,4,5,6,7";
    for (int pair = 0; pair < 64; ++pair)
        frame += pair == 3 ? ",1,9" : ",0,0";
    for (int triple = 0; triple < 8; ++triple)
        frame += triple == 2 ? ",1,4,6" : ",0,0,0";
    QTest::newRow("output module") << 2
                                   << QByteArray("<PyxGOutputMode>2</PyxGOutputMode>\r\n"
                                                 "<TTLEnable>1</TTLEnable>\r\n"
                                                 "<CANEnable>0</CANEnable>\r\n"
                                                 "<CANFrequency>50</CANFrequency>\r\n"
                                                 "<CANBaud>500K</CANBaud>\r\n"
                                                 "<CANFrameCnt>1</CANFrameCnt>\r\n")
            + frame + "</CANFrame>\r\n"
            + "<TTLStream>170,85,3,16,1000,2000,"
              "1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1,"
              "0,2,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,3,0"
              "</TTLStream></body>\r\n";
}

// The record filled as the window fills it from a file (loaded, then the
// pages refreshed), then composed as the window's save does.
void TestHub::savedFileIsTheWholeRecordByteForByte()
{
    QFETCH(int, module);
    QFETCH(QByteArray, tail);
    m_host.data.m_module = module;
    ChannelListenInterface hub(0);
    const QByteArray expected = kSavedHead + tail;
    QByteArray file = expected;
    file.replace("-235,64;</noneValue>", "-5,64;</noneValue>")
        .replace("-5,100;</noneValue>", "133,100;</noneValue>");
    ParameterFile::loadBytes(file, m_host.data);
    hub.refreshPages();
    const QByteArray saved = hub.parameterFileText().toLocal8Bit();
    // Line by line first, for a readable difference.
    QCOMPARE(saved.split('\n'), expected.split('\n'));
    QCOMPARE(saved, expected);
}

QTEST_MAIN(TestHub)
#include "tst_hub.moc"
