// The window against the virtual unit: what it saves after reading every
// section is byte for byte what quillmark-cli backs up, a write first saves
// that record to backup/ (only the groups the unit answered), and a unit that
// hangs up is found again when a new one appears on the same port.
#include "AppPaths.h"
#include "ChannelListenInterface.h"
#include "DeviceData.h"
#include "MainWindow.h"
#include "Messages.h"
#include "ModelDefaults.h"
#include "ModelInterface.h"
#include "SettingPage.h"
#include "VunitProcess.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

class TestWindowBackupE2e : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup();
    void windowSavesWhatTheCliBacksUpAndBacksUpBeforeWriting();
    void backupHoldsOnlyTheGroupsTheUnitAnswered();
    void reconnectsToTheUnitThatAppearsOnThePort_data();
    void reconnectsToTheUnitThatAppearsOnThePort();
};

void TestWindowBackupE2e::cleanup()
{
    Messages::setResponder({});
    Messages::setFileResponder({});
}

static QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void TestWindowBackupE2e::windowSavesWhatTheCliBacksUpAndBacksUpBeforeWriting()
{
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.startWithApp({ "--model", "LARCH", "--module", "1" }));
    const QString cliFile = dir.filePath("cli.cfg");
    QCOMPARE(QProcess::execute(QStringLiteral(QM_CLI_BIN), { "backup", "--port", unit.linkPath(), cliFile }), 0);
    const QString windowFile = dir.filePath("window.cfg");
    Messages::setResponder([](const Messages::Shown &) { return true; });
    Messages::setFileResponder([&](const QString &, const QString &, const QString &) { return windowFile; });

    MainWindow window;
    window.show();
    QTRY_VERIFY_WITH_TIMEOUT(window.hub(), 10000);
    window.showHub();
    ChannelListenInterface *hub = window.hub();
    QSignalSpy spy(&window, &MainWindow::signal_information);
    for (int section : { SectionSbus1, SectionSbus2, SectionChannelHold, SectionButtons, SectionComprehensive,
             SectionRadioModule })
        hub->menuButton(section)->click();
    // The last group's second answer (the module power switch, 76) is in.
    QTRY_VERIFY(std::any_of(spy.cbegin(), spy.cend(),
        [](const QList<QVariant> &a) { return a.at(0).value<CodeID>() == Group38; }));

    using Action = ChannelListenInterface::Action;
    hub->actionButton(Action::SaveFile)->click();
    QCOMPARE(readFile(windowFile).split('\n'), readFile(cliFile).split('\n'));

    // Writing the section saves the record as read before anything goes out.
    hub->actionButton(Action::WriteData)->click();
    const QDir backups(AppPaths::writableFile("/backup"));
    const QStringList names = backups.entryList({ "LARCH-*.cfg" }, QDir::Files);
    QCOMPARE(names.size(), 1);
    QVERIFY(QRegularExpression("^LARCH-\\d{8}-\\d{6}\\.cfg$").match(names.first()).hasMatch());
    QCOMPARE(readFile(backups.filePath(names.first())), readFile(cliFile));
}

// A write right after entering the hub: only SBUS 1 has been read (the hub
// reads it on entry). Unread groups written as zeros would, once loaded,
// wipe the unit's SBUS 2 travels, its channel maps and its baud rate.
void TestWindowBackupE2e::backupHoldsOnlyTheGroupsTheUnitAnswered()
{
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.startWithApp({ "--model", "MAPLE", "--module", "1" }));
    Messages::setResponder([](const Messages::Shown &) { return true; });

    MainWindow window;
    window.show();
    QTRY_VERIFY_WITH_TIMEOUT(window.hub(), 10000);
    QSignalSpy spy(&window, &MainWindow::signal_information);
    window.showHub();
    QTRY_VERIFY_WITH_TIMEOUT(
        std::any_of(spy.cbegin(), spy.cend(),
            [](const QList<QVariant> &a) { return a.at(0).value<CodeID>() == SbusNoneData; }),
        5000);

    window.hub()->actionButton(ChannelListenInterface::Action::WriteData)->click();
    const QDir backups(AppPaths::writableFile("/backup"));
    const QStringList names = backups.entryList({ "MAPLE-*.cfg" }, QDir::Files);
    QCOMPARE(names.size(), 1);
    // The virtual MAPLE's port 1 at its factory values: eight inputs mapped,
    // the rest "NONE"; channels 2 and 5 reversed; failsafe on channels 1
    // (centre) and 3 (-100); fixed values -20 and 30 on channels 15 and 16.
    const QByteArray expected
        = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n"
          "<sbus1Default>\r\n"
          "<phase>0,1,0,0,1,0,0,0,0,0,0,0,0,0,0,0;</phase>\r\n"
          "<fineTuning>5,-5,0,12,0,0,0,0,0,0,0,0,0,0,0,0;</fineTuning>\r\n"
          "<leftTrip>100,100,80,100,100,100,100,100,100,100,100,100,100,100,100,100;</leftTrip>\r\n"
          "<rightTrip>100,100,120,100,100,100,100,100,100,100,100,100,100,100,100,100;</rightTrip>\r\n"
          "<safeProtectionState>0,0,1,0,0,0,0,0,0,0,0,0,0,0,0,0;</safeProtectionState>\r\n"
          "<safeProtectionValue>0,255,100,255,255,255,255,255,255,255,255,255,255,255,255,255;"
          "</safeProtectionValue>\r\n"
          "<channelMap>0,1,2,3,4,5,6,7,254,254,254,254,254,254,254,254;</channelMap>\r\n"
          "<noneValue>0,0,0,0,0,0,0,0,0,0,0,0,0,0,-20,30;</noneValue>\r\n"
          "</sbus1Default>\r\n"
          "</body>\r\n";
    QCOMPARE(readFile(backups.filePath(names.first())).split('\n'), expected.split('\n'));
}

void TestWindowBackupE2e::reconnectsToTheUnitThatAppearsOnThePort_data()
{
    QTest::addColumn<QString>("second");
    QTest::addColumn<int>("model");
    QTest::newRow("another model") << "MAPLE" << 4;
    QTest::newRow("the same model") << "CEDAR" << 2;
}

void TestWindowBackupE2e::reconnectsToTheUnitThatAppearsOnThePort()
{
    QFETCH(QString, second);
    QFETCH(int, model);
    QTemporaryDir dir;
    VunitProcess first(dir.path());
    QVERIFY(first.startWithApp({ "--model", "CEDAR", "--hangup-after", "1000" }));

    MainWindow window;
    window.show();
    QTRY_COMPARE_WITH_TIMEOUT(window.modelIndex(), 2, 10000);
    auto *label = window.findChild<QLabel *>("label_state");
    QVERIFY(label);
    QCOMPARE(label->text(), QStringLiteral("Remote control unit is connecting..."));
    QTRY_VERIFY_WITH_TIMEOUT(first.process().state() == QProcess::NotRunning, 10000);
    // The connecting screen is back while nothing answers.
    QTRY_VERIFY_WITH_TIMEOUT(window.currentPage()->isAncestorOf(label), 5000);
    QVERIFY(label->isVisible());
    // Nothing was edited: the pages go while the unit is away, and the fresh
    // ones are built in their memory instead of beside them.
    QVERIFY(!window.hub());
    QVERIFY(!window.modelPage(2));

    VunitProcess unit(dir.path());
    QVERIFY(unit.start({ "--model", second }));
    QTRY_VERIFY_WITH_TIMEOUT(
        window.modelIndex() == model && window.currentPage() == window.modelPage(model), 15000);
    // The new unit's channel reports reach the page: its upload was started again.
    QSignalSpy spy(&window, &MainWindow::signal_information);
    QTRY_VERIFY_WITH_TIMEOUT(std::any_of(spy.cbegin(), spy.cend(),
        [](const QList<QVariant> &a) { return a.at(0).value<CodeID>() == ChannelDataReport; }), 5000);
    QVERIFY(unit.find(0xE5, QByteArray::fromHex("0232")) > unit.find(0xFF));

    // The SBUS control switch lists the model's names once: a reconnect
    // starts from fresh lists.
    DeviceData fresh;
    QVERIFY(loadModelDefaults(modelDefaultsPath(model), fresh));
    QTRY_VERIFY(window.hub());
    auto *control = window.hub()->page(SectionComprehensive)->findChild<QComboBox *>("sbusControl");
    QVERIFY(control);
    QCOMPARE(control->count(), fresh.sbusControlNames.size());
    QCOMPARE(control->itemText(control->count() - 1), fresh.sbusControlNames.last());
}

QTEST_MAIN(TestWindowBackupE2e)
#include "tst_window_backup_e2e.moc"
