#include "AppPaths.h"
#include "LinkReport.h"

#include <QDir>
#include <QDirIterator>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

using namespace LinkReport;

Q_DECLARE_METATYPE(LinkReport::ModuleKind)
Q_DECLARE_METATYPE(LinkReport::ReportKind)

class TestLinkReport : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void requestBytes();
    void commandTable_data();
    void commandTable();
    void headDrop();
    void cutting_data();
    void cutting();
    void records_data();
    void records();
    void snrColours_data();
    void snrColours();
    void logNames_data();
    void logNames();
    void logAppendsUnchanged();
    void hostileReports_data();
    void hostileReports();

private:
    QTemporaryDir m_appDir;
};

void TestLinkReport::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_appDir.isValid());
    // A writable application directory (with its config/) takes the log files.
    QVERIFY(QDir(m_appDir.path()).mkpath(QStringLiteral("config")));
    AppPaths::setAppDir(m_appDir.path());
}

// The whole request is checked as the module receives it (tst_logwidget).
void TestLinkReport::requestBytes()
{
    // The length stays 31 with no command at all, and the address goes out
    // as typed, in Latin-1.
    const QByteArray empty = request(QString::fromUtf8("h\xC3\xA9:1"), QString());
    QVERIFY(empty.startsWith(
        "POST /boafrm/formAtcmdProcess HTTP/1.1\r\nAccept:*/*\r\nReferer: http://h\xE9:1/index"));
    QVERIFY(empty.contains("\r\nHost: h\xE9:1\r\nContent-Length: 31\r\n"));
    QVERIFY(empty.endsWith("\r\n\r\nFormAtcmd_Param_Atcmd="));
}

void TestLinkReport::commandTable_data()
{
    QTest::addColumn<ModuleKind>("module");
    QTest::addColumn<bool>("centre");
    QTest::addColumn<QString>("command");
    QTest::addColumn<ReportKind>("kind");
    // clang-format off
    QTest::newRow("Kite centre") << ModuleKind::Kite << true << "AT^DAPR=2" << ReportKind::Centre;
    QTest::newRow("Kite access") << ModuleKind::Kite << false << "AT^DRPR=2" << ReportKind::Access;
    // A Kestrel mesh has no centre view: centre mode still asks for ^DRPR
    // and reads a mesh report.
    QTest::newRow("Kestrel centre") << ModuleKind::Kestrel << true << "AT^DRPR=2" << ReportKind::Mesh;
    QTest::newRow("Kestrel access") << ModuleKind::Kestrel << false << "AT^DRPR=2" << ReportKind::Mesh;
    QTest::newRow("Falcon centre") << ModuleKind::Falcon << true << "AT^DAPR=2" << ReportKind::Centre;
    QTest::newRow("Falcon access") << ModuleKind::Falcon << false << "AT^DRPR=2" << ReportKind::Access;
    QTest::newRow("none centre") << ModuleKind::None << true << "" << ReportKind::Centre;
    QTest::newRow("none access") << ModuleKind::None << false << "" << ReportKind::Access;
    // clang-format on
}

void TestLinkReport::commandTable()
{
    QFETCH(ModuleKind, module);
    QFETCH(bool, centre);
    QFETCH(QString, command);
    QFETCH(ReportKind, kind);
    QCOMPARE(LinkReport::command(module, centre), command);
    QCOMPARE(reportKind(module, centre), kind);
}

// The first 280 bytes are the head, whatever they hold.
void TestLinkReport::headDrop()
{
    QByteArray report;
    QVERIFY(!reportText(QByteArray(), &report));
    QVERIFY(!reportText(QByteArray(280, 'h'), &report));
    QVERIFY(report.isNull());
    QVERIFY(reportText(QByteArray(280, 'h') + 'R', &report));
    QCOMPARE(report, QByteArray("R"));
    QVERIFY(reportText(QByteArray(280, '\n') + "^DRPR\r\n", &report));
    QCOMPARE(report, QByteArray("^DRPR\r\n"));
}

void TestLinkReport::cutting_data()
{
    QTest::addColumn<ReportKind>("kind");
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<QList<QByteArray>>("records");
    QTest::newRow("three, noise around")
        << ReportKind::Access << QByteArray("OK\r\n^DRPR: a\r\n\r\n^DRPR: b\r\n\r\nx^DRPR: c")
        << QList<QByteArray> { "^DRPR: a", "^DRPR: b", "^DRPR: c" };
    QTest::newRow("marker at the very end")
        << ReportKind::Mesh << QByteArray("\r\n\r\n^DRPR") << QList<QByteArray> { "^DRPR" };
    QTest::newRow("marker inside a record") << ReportKind::Access << QByteArray("^DRPR 1 ^DRPR 2\r\n\r\n")
                                            << QList<QByteArray> { "^DRPR 1 ^DRPR 2", "^DRPR 2" };
    QTest::newRow("half a terminator") << ReportKind::Access << QByteArray("^DRPR: a\r\n\r^DRPR: b\r\n")
                                       << QList<QByteArray> { "^DRPR: a\r\n\r^DRPR: b\r\n", "^DRPR: b\r\n" };
}

void TestLinkReport::cutting()
{
    QFETCH(ReportKind, kind);
    QFETCH(QByteArray, report);
    QFETCH(QList<QByteArray>, records);
    QList<QByteArray> got;
    for (const RecordSpan &span : cutRecords(report, kind))
        got.append(report.mid(span.from, span.length));
    QCOMPARE(got, records);
}

// Figures in the order rssi main, rssi second, rsrp main, rsrp second, snr
// main, snr second, power, distance.
using Figures = QVector<int>;

void TestLinkReport::records_data()
{
    QTest::addColumn<ReportKind>("kind");
    QTest::addColumn<ModuleKind>("module");
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<bool>("parsed");
    QTest::addColumn<QString>("node");
    QTest::addColumn<Figures>("figures");

    const QByteArray accessKite
        = "^DRPR: 7,1,0,\"3\",2,\"4\",\"5\",\"6\",1,\"9\",1520,33,-61,-64,-88,-91,\"22\",\"17\",23";
    const QByteArray accessFalcon
        = "^DRPR: 12,0,1,2,\"3\",4,\"5\",6,\"7\",8,\"9\",830,10,-55,-58,-80,-83,0,\"15\",\"8\",-3";
    const QByteArray centreKite
        = "^DAPR: \"node-A\",1,\"2\",3,\"4\",\"5\",\"6\",7,\"8\",2400,11,-70,-72,-99,-101,5,\"12\",\"6\",18";
    const QByteArray centreFalcon
        = "^DAPR: \"N2\",1,2,\"3\",4,\"5\",6,\"7\",8,\"9\",15000,12,-45,-47,-62,-65,1,\"30\",\"19\",-40";
    const QByteArray mesh
        = "^DRPR: 1,2,3,1a2b,4,\"5\",6,\"7\",\"8\",9,\"10\",640,-50,-52,-75,-77,20,0,0,0,\"25\",\"-5\"";

    QTest::newRow("access Kite") << ReportKind::Access << ModuleKind::Kite << accessKite << true << "7"
                                 << Figures { -61, -64, -88, -91, 22, 17, 23, 1520 };
    QTest::newRow("access Falcon") << ReportKind::Access << ModuleKind::Falcon << accessFalcon << true << "12"
                                   << Figures { -55, -58, -80, -83, 15, 8, -3, 830 };
    QTest::newRow("centre Kite") << ReportKind::Centre << ModuleKind::Kite << centreKite << true << "node-A"
                                 << Figures { -70, -72, -99, -101, 12, 6, 18, 2400 };
    QTest::newRow("centre Falcon") << ReportKind::Centre << ModuleKind::Falcon << centreFalcon << true << "N2"
                                   << Figures { -45, -47, -62, -65, 30, 19, -40, 15000 };
    // The mesh node id is hexadecimal on the wire and shown in decimal.
    QTest::newRow("mesh") << ReportKind::Mesh << ModuleKind::Kestrel << mesh << true << "6699"
                          << Figures { -50, -52, -75, -77, 25, -5, 20, 640 };
    // A figure too large for its field keeps its low bits, as the module's
    // own C scan stores it (glibc: 99999999999999999999999 as %hd is -1,
    // -40000 as %hd is 25536, -99999999999 as %d is -1215752191).
    QTest::newRow("numbers out of range")
        << ReportKind::Access << ModuleKind::Kite
        << QByteArray("^DRPR: 99999999999999999999999,1,0,\"3\",2,\"4\",\"5\",\"6\",1,\"9\",-99999999999,33,"
                      "-40000,-64,-88,-91,\"22\",\"17\",23")
        << true << "-1" << Figures { 25536, -64, -88, -91, 22, 17, 23, -1215752191 };

    QTest::newRow("access with no module kind")
        << ReportKind::Access << ModuleKind::None << accessKite << false << QString() << Figures();
    QTest::newRow("Falcon record read as Kite")
        << ReportKind::Access << ModuleKind::Kite << accessFalcon << false << QString() << Figures();
    QTest::newRow("truncated") << ReportKind::Access << ModuleKind::Kite
                               << accessKite.left(accessKite.size() - 8) << false << QString() << Figures();
    QTest::newRow("number cut to a sign")
        << ReportKind::Access << ModuleKind::Kite << QByteArray(accessKite).replace("-88", "-") << false
        << QString() << Figures();
    QTest::newRow("quotes missing") << ReportKind::Access << ModuleKind::Kite
                                    << QByteArray(accessKite).replace("\"22\"", "22") << false << QString()
                                    << Figures();
    QTest::newRow("centre without node quotes")
        << ReportKind::Centre << ModuleKind::Kite << QByteArray(centreKite).replace("\"node-A\",", "")
        << false << QString() << Figures();
    QTest::newRow("centre with one quote") << ReportKind::Centre << ModuleKind::Kite
                                           << QByteArray("^DAPR: \"node") << false << QString() << Figures();
}

void TestLinkReport::records()
{
    QFETCH(ReportKind, kind);
    QFETCH(ModuleKind, module);
    QFETCH(QByteArray, record);
    QFETCH(bool, parsed);
    LinkRecord r;
    QCOMPARE(parseRecord(record, kind, module, &r), parsed);
    if (!parsed)
        return;
    QFETCH(QString, node);
    QFETCH(Figures, figures);
    QCOMPARE(r.node, node);
    QCOMPARE(Figures({ r.main.rssi, r.second.rssi, r.main.rsrp, r.second.rsrp, r.main.snr, r.second.snr,
                 r.power, r.distance }),
        figures);
}

void TestLinkReport::snrColours_data()
{
    QTest::addColumn<int>("snr");
    QTest::addColumn<QString>("style");
    QTest::newRow("19") << 19 << "background-color:#F0F0F0;";
    QTest::newRow("18") << 18 << "background-color:#FFF68F;";
    QTest::newRow("13") << 13 << "background-color:#FFF68F;";
    QTest::newRow("12") << 12 << "background-color:#FFA500;";
    QTest::newRow("7") << 7 << "background-color:#FFA500;";
    QTest::newRow("6") << 6 << "background-color:#FF3400;";
}

void TestLinkReport::snrColours()
{
    QFETCH(int, snr);
    QFETCH(QString, style);
    QCOMPARE(snrStyle(snr), style);
}

void TestLinkReport::logNames_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("name");
    QTest::newRow("address") << "192.168.168.11"
                             << "/log/log_access_192.168.168.11.txt";
    QTest::newRow("address with port") << "127.0.0.1:8080"
                                       << "/log/log_access_127.0.0.1_8080.txt";
    QTest::newRow("parent folders") << "../../etc/passwd"
                                    << "/log/log_access_._._etc_passwd.txt";
    QTest::newRow("only dots") << ".."
                               << "/log/log_access_..txt";
    QTest::newRow("NUL and controls") << QString::fromUtf8("a\0b\n\tc", 6) << "/log/log_access_a_b__c.txt";
    QTest::newRow("empty") << ""
                           << "/log/log_access_unnamed.txt";
    QTest::newRow("10 kB") << QString(10240, QLatin1Char('9'))
                           << "/log/log_access_" + QString(64, '9') + ".txt";
    QTest::newRow("v6 and unicode") << QString::fromUtf8("[::1]\xE2\x80\xA8") << "/log/log_access____1__.txt";
}

// A typed address must never place a log file outside log/.
void TestLinkReport::logNames()
{
    QFETCH(QString, typed);
    QFETCH(QString, name);
    QCOMPARE(logFileName(ReportKind::Access, typed), name);
    QCOMPARE(logFileName(ReportKind::Centre, typed), QString(name).replace("access", "center"));
    QCOMPARE(logFileName(ReportKind::Mesh, typed), QString(name).replace("access", "mesh"));

    QFile file;
    QVERIFY(appendToLog(file, ReportKind::Access, typed, "x"));
    const QString logDir = QDir(m_appDir.path()).absoluteFilePath(QStringLiteral("log"));
    QCOMPARE(QFileInfo(file.fileName()).absolutePath(), logDir);
    QDirIterator it(m_appDir.path(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext())
        QCOMPARE(QFileInfo(it.next()).absolutePath(), logDir);
}

void TestLinkReport::logAppendsUnchanged()
{
    QDir(m_appDir.path() + QStringLiteral("/log")).removeRecursively();
    QFile file;
    const QByteArray first("^DRPR: 1\r\n\r\nOK\r\n");
    const QByteArray second("\0\xff\n\r", 4);
    QVERIFY(appendToLog(file, ReportKind::Mesh, QStringLiteral("127.0.0.1"), first));
    QVERIFY(appendToLog(file, ReportKind::Mesh, QStringLiteral("127.0.0.1"), second));
    QFile written(m_appDir.path() + QStringLiteral("/log/log_mesh_127.0.0.1.txt"));
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(written.readAll(), first + second);
    // A log file that cannot be opened (here a folder in its place) is skipped.
    QVERIFY(QDir(m_appDir.path()).mkpath(QStringLiteral("log/log_center_127.0.0.1.txt")));
    QVERIFY(!appendToLog(file, ReportKind::Centre, QStringLiteral("127.0.0.1"), first));
}

void TestLinkReport::hostileReports_data()
{
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<int>("accessKiteRecords");
    const QByteArray record
        = "^DRPR: 7,1,0,\"3\",2,\"4\",\"5\",\"6\",1,\"9\",1520,33,-61,-64,-88,-91,\"22\",\"17\",23\r\n\r\n";
    QByteArray binary(1 << 20, '\0');
    QRandomGenerator random(20240601);
    for (char &c : binary)
        c = char(random.generate());
    for (int at = 0; at + 5 < binary.size(); at += 4099)
        binary.replace(at, 5, at % 2 ? "^DRPR" : "^DAPR");
    QTest::newRow("binary with markers") << binary << 0;
    QTest::newRow("10 MB of markers") << QByteArray("^DRPR^DAPR\"").repeated((10 << 20) / 11) << 0;
    QTest::newRow("10 MB of records, rows capped") << record.repeated((10 << 20) / record.size()) << 256;
    QTest::newRow("record cut at the end") << record + record.left(40) << 1;
    QTest::newRow("marker at the end") << record + "^DRPR" << 1;
    QTest::newRow("long node id") << "^DAPR: \"" + QByteArray(1 << 20, 'n') + "\",1" << 0;
}

// Reports from the network: any bytes, any size, for every kind.
void TestLinkReport::hostileReports()
{
    QFETCH(QByteArray, report);
    QFETCH(int, accessKiteRecords);
    QCOMPARE(parseReport(report, ReportKind::Access, ModuleKind::Kite).size(), accessKiteRecords);
    for (ReportKind kind : { ReportKind::Access, ReportKind::Centre, ReportKind::Mesh }) {
        for (ModuleKind module :
            { ModuleKind::None, ModuleKind::Kite, ModuleKind::Kestrel, ModuleKind::Falcon }) {
            for (const LinkRecord &r : parseReport(report, kind, module))
                QVERIFY(r.node.size() <= 64);
        }
    }
}

QTEST_GUILESS_MAIN(TestLinkReport)
#include "tst_linkreport.moc"
