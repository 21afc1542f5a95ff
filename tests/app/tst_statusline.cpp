// The main window's status line: its words in both languages, how it follows
// a read, a write, a refusal and a write-all, and the port problems it and
// the port chooser name.
#include "PortChooser.h"
#include "PortProblem.h"
#include "Sequences.h"
#include "StatusLine.h"
#include "StatusText.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTranslator>
#include <QtTest>

namespace
{

// The outcome without its time ("21:07:45  ").
QString withoutTime(const QString &text)
{
    return text.mid(10);
}

// Plays "event argument..." lines into a status line.
void play(StatusLine &line, const QStringList &events)
{
    for (const QString &event : events) {
        const QStringList p = event.split(QLatin1Char('|'));
        const QString &e = p.at(0);
        auto n = [&](int i) { return p.at(i).toInt(); };
        if (e == "read")
            line.readStarted(n(1));
        else if (e == "reset")
            line.factoryResetStarted(n(1));
        else if (e == "answer")
            line.answerArrived();
        else if (e == "refused")
            line.refused(p.at(1));
        else if (e == "writeStarted")
            line.writeStarted(n(1));
        else if (e == "wrote")
            line.wrote(n(1));
        else if (e == "notWritten")
            line.notWritten(n(1));
        else if (e == "writeAllStarted")
            line.writeAllStarted();
        else if (e == "progress")
            line.writeAllProgress(n(1), n(2));
        else if (e == "writeAllFinished")
            line.writeAllFinished(n(1), n(2), n(3) != 0);
        else if (e == "backup")
            line.backupSaved(p.at(1));
        else if (e == "backupFailed")
            line.backupFailed(p.at(1));
        else if (e == "loaded")
            line.loaded(p.at(1), n(2), n(3));
        else
            QFAIL(qPrintable("unknown event " + e));
    }
}

} // namespace

class TestStatusLine : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void outcomesAfterEvents_data();
    void outcomesAfterEvents();
    void wordingInEnglish();
    void labelsCarryPortUnitAndConnection();
    void openFailuresAreClassified_data();
    void openFailuresAreClassified();
    void problemTextsSayWhatToDo();
    void portEntriesShowPathDescriptionAndIds_data();
    void portEntriesShowPathDescriptionAndIds();
    void chooserConnectsToTheTypedPath();
};

void TestStatusLine::outcomesAfterEvents_data()
{
    QTest::addColumn<QStringList>("events");
    QTest::addColumn<QString>("expected");

    QTest::newRow("read counts its answers")
        << QStringList { "read|1", "answer", "answer" } << QString("读取SBUS 2 — 2 个应答");
    QTest::newRow("one answer") << QStringList { "read|2", "answer" } << QString("读取通道保持 — 1 个应答");
    QTest::newRow("answers after a write are not counted") << QStringList { "read|0", "answer",
        "writeStarted|3", "wrote|3", "answer" } << QString("已写入按钮设置");
    QTest::newRow("refusal during a write stays in view") << QStringList { "writeStarted|2",
        "refused|通道保持写入失败", "wrote|2" } << QString("设备拒绝：通道保持写入失败");
    QTest::newRow("refusal after the write replaces it") << QStringList { "writeStarted|4", "wrote|4",
        "refused|综合设置失败" } << QString("设备拒绝：综合设置失败");
    QTest::newRow("refusal during a read stays before later answers")
        << QStringList { "read|0", "refused|SBUS读取失败", "answer" } << QString("设备拒绝：SBUS读取失败");
    QTest::newRow("backup goes with its write")
        << QStringList { "writeStarted|6", "backup|backup/ROWAN-20261123-215501.cfg", "wrote|6" }
        << QString("已写入自定义设置 · 已备份：backup/ROWAN-20261123-215501.cfg");
    QTest::newRow("failed backup goes with its write") << QStringList { "writeStarted|1",
        "backupFailed|disk full", "wrote|1" } << QString("已写入SBUS 2 · 备份失败：disk full");
    QTest::newRow("wrong payload count")
        << QStringList { "notWritten|4" } << QString("未写入综合设置：页面给出的参数个数不对");
    QTest::newRow("write-all progress") << QStringList { "writeAllStarted", "progress|1|30",
        "progress|12|30" } << QString("全部写入：第 12 帧，共 30 帧…");
    QTest::newRow("write-all done") << QStringList { "writeAllStarted", "progress|31|31",
        "writeAllFinished|31|31|1" } << QString("全部写入完成：31 帧");
    QTest::newRow("write-all counts refusals") << QStringList { "writeAllStarted", "progress|5|27",
        "refused|a", "refused|b", "progress|27|27", "writeAllFinished|27|27|1" }
                                               << QString("全部写入完成：27 帧，其中 2 帧被设备拒绝");
    QTest::newRow("write-all with the port gone") << QStringList { "writeAllStarted", "progress|9|30",
        "writeAllFinished|9|30|0" } << QString("全部写入中断：9 帧（共 30 帧）后端口已关闭");
    QTest::newRow("refusals before a write-all are not its own") << QStringList { "read|0", "refused|x",
        "writeAllStarted", "writeAllFinished|30|30|1" } << QString("全部写入完成：30 帧");
    QTest::newRow("factory reset reads back")
        << QStringList { "reset|2", "answer" } << QString("已恢复出厂设置，重新读取通道保持 — 1 个应答");
    QTest::newRow("loaded whole") << QStringList { "loaded|unit.cfg|14|0" }
                                  << QString("已加载 unit.cfg：14 组");
    QTest::newRow("loaded up to damage") << QStringList { "loaded|unit.cfg|6|40" }
                                         << QString("已加载 unit.cfg，到第 40 行为止（此后文件已损坏）");
}

void TestStatusLine::outcomesAfterEvents()
{
    QFETCH(QStringList, events);
    QFETCH(QString, expected);
    QStatusBar bar;
    StatusLine line(&bar);
    play(line, events);
    QCOMPARE(withoutTime(line.operationText()), expected);
    auto *label = bar.findChild<QLabel *>("statusOperation");
    QVERIFY(label);
    QCOMPARE(label->text(), line.operationText());
    QVERIFY(QRegularExpression("^\\d\\d:\\d\\d:\\d\\d  ").match(label->text()).hasMatch());
}

// The English texts with their arguments in place: counts, plurals and
// paths land where the translation puts them. That every text has an English
// translation at all is the startup test's concern.
void TestStatusLine::wordingInEnglish()
{
    QTranslator english; // leaves the application when it goes out of scope
    QVERIFY(english.load(QStringLiteral(QM_APP_DIR "/translations/english.qm")));
    QCoreApplication::installTranslator(&english);
    QCOMPARE(StatusText::read(SectionSbus1, 2), QString("Read SBUS 1 — 2 answers"));
    QCOMPARE(StatusText::writeAllProgress(12, 30), QString("Write-all: 12 of 30 frames…"));
    QCOMPARE(StatusText::loaded("unit.cfg", 14, 40), QString("Loaded unit.cfg up to line 40 (damaged from there)"));
    QCOMPARE(StatusText::unit("WILLO", 2), QString("Willow, output module"));
    QCOMPARE(PortProblems::text(PortProblem::Busy, "/dev/ttyUSB1"),
        QString("/dev/ttyUSB1: busy, in use by another program. Close that program first."));
}

void TestStatusLine::labelsCarryPortUnitAndConnection()
{
    QStatusBar bar;
    StatusLine line(&bar);
    line.setPort("/dev/ttyACM3");
    line.setUnit("CEDAR", 1);
    line.setConnection(StatusText::Connection::Reconnecting);
    QCOMPARE(bar.findChild<QLabel *>("statusPort")->text(), QString("端口：/dev/ttyACM3"));
    QCOMPARE(bar.findChild<QLabel *>("statusUnit")->text(), QString("Cedar，无线模块"));
    QCOMPARE(bar.findChild<QLabel *>("statusConnection")->text(), QString("正在重新连接…"));
    // Before identification there is no unit to name.
    line.setUnit("XXXXX", 1);
    QCOMPARE(bar.findChild<QLabel *>("statusUnit")->text(), QString());
    line.setPort(QString());
    QCOMPARE(bar.findChild<QLabel *>("statusPort")->text(), QString("端口：未设置"));
}

void TestStatusLine::openFailuresAreClassified_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("exists");
    QTest::addColumn<bool>("allowed");
    QTest::addColumn<int>("problem");
    using P = PortProblem;
    QTest::newRow("opened") << int(QSerialPort::NoError) << true << true << int(P::None);
    QTest::newRow("not found") << int(QSerialPort::DeviceNotFoundError) << false << false
                               << int(P::NoSuchDevice);
    // A dangling symlink of a unplugged adapter: Qt may say anything.
    QTest::newRow("path gone") << int(QSerialPort::PermissionError) << false << false << int(P::NoSuchDevice);
    QTest::newRow("not in dialout") << int(QSerialPort::PermissionError) << true << false
                                    << int(P::PermissionDenied);
    QTest::newRow("locked by another program")
        << int(QSerialPort::PermissionError) << true << true << int(P::Busy);
    QTest::newRow("already open") << int(QSerialPort::OpenError) << true << true << int(P::Busy);
    QTest::newRow("not a serial line")
        << int(QSerialPort::UnsupportedOperationError) << true << true << int(P::Other);
}

void TestStatusLine::openFailuresAreClassified()
{
    QFETCH(int, error);
    QFETCH(bool, exists);
    QFETCH(bool, allowed);
    QFETCH(int, problem);
    QCOMPARE(int(PortProblems::classify(QSerialPort::SerialPortError(error), exists, allowed)), problem);
}

void TestStatusLine::problemTextsSayWhatToDo()
{
    QCOMPARE(PortProblems::text(PortProblem::NoSuchDevice, "/dev/ttyUSB0"),
        QString("/dev/ttyUSB0：没有这个设备（未连接，或路径有误）。"));
    QVERIFY(PortProblems::text(PortProblem::PermissionDenied, "/dev/ttyUSB0").contains("dialout"));
    QCOMPARE(PortProblems::text(PortProblem::Other, "COM9", "Unknown error"),
        QString("COM9：无法打开（Unknown error）。"));
    // A path that is not there, asked of the system.
    QCOMPARE(PortProblems::classifyOpenFailure("/nonexistent/ttyQM7", QSerialPort::PermissionError),
        PortProblem::NoSuchDevice);
    QCOMPARE(PortProblems::classifyOpenFailure("ttyQMnone", QSerialPort::DeviceNotFoundError),
        PortProblem::NoSuchDevice);
}

void TestStatusLine::portEntriesShowPathDescriptionAndIds_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("description");
    QTest::addColumn<bool>("hasIds");
    QTest::addColumn<int>("vendor");
    QTest::addColumn<int>("product");
    QTest::addColumn<QString>("expected");
    QTest::newRow("USB adapter") << "/dev/ttyUSB0"
                                 << "CP2102 USB to UART Bridge" << true << 0x10c4 << 0xea60
                                 << "/dev/ttyUSB0 — CP2102 USB to UART Bridge (10c4:ea60)";
    QTest::newRow("small ids keep their zeros")
        << "/dev/ttyACM1"
        << "" << true << 0x0483 << 0x5740 << "/dev/ttyACM1 (0483:5740)";
    QTest::newRow("built-in port") << "/dev/ttyS0"
                                   << "" << false << 0 << 0 << "/dev/ttyS0";
}

void TestStatusLine::portEntriesShowPathDescriptionAndIds()
{
    QFETCH(QString, path);
    QFETCH(QString, description);
    QFETCH(bool, hasIds);
    QFETCH(int, vendor);
    QFETCH(int, product);
    QFETCH(QString, expected);
    PortChooser::Entry entry;
    entry.path = path;
    entry.description = description;
    entry.hasIds = hasIds;
    entry.vendorId = quint16(vendor);
    entry.productId = quint16(product);
    QCOMPARE(PortChooser::entryText(entry), expected);
}

void TestStatusLine::chooserConnectsToTheTypedPath()
{
    PortChooser chooser;
    QSignalSpy requested(&chooser, &PortChooser::connectRequested);
    auto *list = chooser.findChild<QComboBox *>("portList");
    auto *connectButton = chooser.findChild<QPushButton *>("portConnect");
    QVERIFY(list && connectButton);
    list->setEditText("   ");
    connectButton->click();
    QCOMPARE(requested.count(), 0); // nothing to connect to
    list->setEditText("/tmp/qm-unit-b");
    connectButton->click();
    QCOMPARE(requested.count(), 1);
    QCOMPARE(requested.at(0).at(0).toString(), QString("/tmp/qm-unit-b"));
    // A listed port connects by its path, not by the text shown for it.
    list->addItem("/dev/ttyQM5 — Bench adapter (1234:abcd)", "/dev/ttyQM5");
    list->setCurrentIndex(list->count() - 1);
    connectButton->click();
    QCOMPARE(requested.at(1).at(0).toString(), QString("/dev/ttyQM5"));
}

QTEST_MAIN(TestStatusLine)
#include "tst_statusline.moc"
