// The whole program against the virtual unit: start-up identification over
// a real pty, on a clean line and on a poor one, and a unit that goes away.
// The program under test runs under an instance name of its own, so that a
// Quillmark the user has open does not turn it away; the tests hold the
// user's guard themselves to make sure of that.
#include "RunGuard.h"
#include "StartupRules.h"
#include "VunitProcess.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

const QString kAppBin = QStringLiteral(QM_APP_BIN);
constexpr int kGenerousMs = 30000;

QString instanceName()
{
    return QStringLiteral("e2e-%1").arg(QCoreApplication::applicationPid());
}

class App
{
public:
    ~App()
    {
        if (process.state() != QProcess::NotRunning) {
            process.terminate();
            if (!process.waitForFinished(10000))
                process.kill();
            process.waitForFinished(5000);
        }
    }

    bool start(const QString &appDir)
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        env.insert(QStringLiteral("QUILLMARK_APP_DIR"), appDir);
        env.insert(QStringLiteral("QUILLMARK_INSTANCE"), instanceName());
        process.setProcessEnvironment(env);
        process.setProcessChannelMode(channels);
        process.setProgram(kAppBin);
        process.start();
        return process.waitForStarted(10000);
    }

    // Waits for the unit to hear the request, or for the program to end
    // (turned away, crashed), whichever comes first.
    bool reaches(const VunitProcess &unit, quint8 code, const QByteArray &payload = QByteArray())
    {
        QDeadlineTimer deadline(kGenerousMs);
        while (
            unit.find(code, payload) < 0 && process.state() != QProcess::NotRunning && !deadline.hasExpired())
            QTest::qWait(50);
        return unit.find(code, payload) >= 0 && process.state() == QProcess::Running;
    }

    QProcess process;
    QProcess::ProcessChannelMode channels = QProcess::ForwardedErrorChannel;
};

} // namespace

class TestAppE2e : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void startupIdentifiesAndStartsUpload_data();
    void startupIdentifiesAndStartsUpload();
    void unitHangingUpDoesNotCrashTheProgram();
    void refusedStartEndsAtOnce();
    void helpAndVersionPrintWithoutAWindow_data();
    void helpAndVersionPrintWithoutAWindow();

private:
    QScopedPointer<RunGuard> m_usersQuillmark;
};

void TestAppE2e::initTestCase()
{
    // As if the user had Quillmark open (or is it really open: then that
    // one holds the guard).
    m_usersQuillmark.reset(new RunGuard(StartupRules::guardKey(QString())));
    m_usersQuillmark->tryToRun();
}

void TestAppE2e::init()
{
    if (!QFile::exists(kAppBin))
        QSKIP("the quillmark binary is not built yet");
}

void TestAppE2e::startupIdentifiesAndStartsUpload_data()
{
    QTest::addColumn<QStringList>("faults");
    QTest::newRow("clean line") << QStringList();
    QTest::newRow("noise and split frames") << QStringList { "--noise", "--split", "--seed", "3" };
}

void TestAppE2e::startupIdentifiesAndStartsUpload()
{
    QFETCH(QStringList, faults);
    QTemporaryDir dir;
    const qint64 origin = VunitProcess::monotonicMs();
    VunitProcess unit(dir.path());
    QVERIFY(
        unit.start(QStringList { "--model", "ROWAN", "--time-origin", QString::number(origin) } + faults));
    QVERIFY(VunitProcess::writeAppDir(dir.path() + "/app", unit.linkPath()));

    App app;
    const qint64 started = VunitProcess::monotonicMs() - origin;
    QVERIFY(app.start(dir.path() + "/app"));
    const QByteArray modelPageUpload = QByteArray::fromHex("0232");
    QVERIFY(app.reaches(unit, 0xE5, modelPageUpload));

    const QVector<VunitProcess::RecordLine> record = unit.record();
    QVERIFY(record.size() >= 3);
    // Module kind first, no earlier than a second after the start, then the
    // identity a request spacing later, then the model page's upload.
    QCOMPARE(record.at(0).code, quint8(0xDF));
    QVERIFY2(record.at(0).ms - started >= 1000, qPrintable(QString::number(record.at(0).ms - started)));
    QCOMPARE(record.at(1).code, quint8(0xFF));
    QVERIFY2(record.at(1).ms - record.at(0).ms >= 90,
        qPrintable(QString::number(record.at(1).ms - record.at(0).ms)));
    QCOMPARE(unit.find(0xE5, modelPageUpload), 2);
}

void TestAppE2e::unitHangingUpDoesNotCrashTheProgram()
{
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.start({ "--hangup-after", "500" }));
    QVERIFY(VunitProcess::writeAppDir(dir.path() + "/app", unit.linkPath()));
    App app;
    QVERIFY(app.start(dir.path() + "/app"));
    QVERIFY(app.reaches(unit, 0xE5));
    QVERIFY(unit.process().waitForFinished(kGenerousMs));
    // The program lives on without its unit.
    QTest::qWait(1500);
    QCOMPARE(app.process.state(), QProcess::Running);
}

// A second program under the same instance name is turned away; without a
// screen to show the message on, it says so on stderr and ends with -1
// instead of waiting for a click that never comes.
void TestAppE2e::refusedStartEndsAtOnce()
{
    RunGuard running(StartupRules::guardKey(instanceName()));
    QVERIFY(running.tryToRun());
    QTemporaryDir dir;
    QVERIFY(VunitProcess::writeAppDir(dir.path() + "/app", QStringLiteral("/nonexistent/ttyQM0")));
    App app;
    app.channels = QProcess::SeparateChannels;
    QVERIFY(app.start(dir.path() + "/app"));
    QVERIFY(app.process.waitForFinished(kGenerousMs));
    QCOMPARE(app.process.exitCode(), 255);
    QVERIFY(app.process.readAllStandardError().contains("already running"));
}

void TestAppE2e::helpAndVersionPrintWithoutAWindow_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("expected");
    QTest::newRow("--version") << "--version"
                               << "quillmark 1.5.0\n";
    QTest::newRow("--help") << "--help"
                            << "  --no-reconnect  leave the port closed when the unit goes away\n";
    QTest::newRow("-h") << "-h"
                        << "  --version       print the version and exit\n";
}

// No display at all: a program that tried to open its window would fail
// to connect to one instead of printing.
void TestAppE2e::helpAndVersionPrintWithoutAWindow()
{
    QFETCH(QString, option);
    QFETCH(QString, expected);
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("DISPLAY"));
    env.remove(QStringLiteral("WAYLAND_DISPLAY"));
    env.remove(QStringLiteral("QT_QPA_PLATFORM"));
    env.insert(QStringLiteral("QUILLMARK_INSTANCE"), instanceName());
    process.setProcessEnvironment(env);
    process.start(kAppBin, { option });
    QVERIFY(process.waitForFinished(kGenerousMs));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    const QString out = QString::fromLocal8Bit(process.readAllStandardOutput());
    QVERIFY2(out.contains(expected), qPrintable(out));
}

QTEST_GUILESS_MAIN(TestAppE2e)
#include "tst_app_e2e.moc"
