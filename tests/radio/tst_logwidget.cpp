#include "AppPaths.h"
#include "LinkPlot.h"
#include "LogRows.h"
#include "LogWidget.h"
#include "Messages.h"
#include "ModuleSimProcess.h"
#include "RadioLog.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <QtCharts/QChart>
#include <QtCharts/QLineSeries>
#include <QtTest>

namespace
{

QByteArray kiteAccessRecord(const char *node, const char *snrMain, const char *snrSecond)
{
    return "^DRPR: " + QByteArray(node) + ",1,0,\"3\",2,\"4\",\"5\",\"6\",1,\"9\",1520,33,-61,-64,-88,-91,\""
        + snrMain + "\",\"" + snrSecond + "\",23\r\n\r\n";
}

// "node main-snr-style second-snr-style" per row, in order.
QStringList shown(QWidget *w)
{
    QStringList lines;
    auto *layout = w->findChild<QVBoxLayout *>(QStringLiteral("verticalLayout_log"));
    for (int i = 0; i < layout->count(); ++i) {
        if (auto *item = qobject_cast<LOG_ITEM *>(layout->itemAt(i)->widget()))
            lines.append(item->findChild<QLabel *>(QStringLiteral("node"))->text() + QLatin1Char(' ')
                + item->findChild<QLabel *>(QStringLiteral("main_snr"))->styleSheet() + QLatin1Char(' ')
                + item->findChild<QLabel *>(QStringLiteral("second_snr"))->styleSheet());
    }
    return lines;
}

template <typename T> T *child(QWidget *w, const char *name)
{
    T *found = w->findChild<T *>(QLatin1String(name));
    if (!found)
        qFatal("no child %s", name);
    return found;
}

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QStringList g_messages;

void collect(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtDebugMsg && qstrcmp(context.category, "quillmark.radio") == 0)
        g_messages.append(text);
}

} // namespace

class TestLogWidget : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void defaults();
    void choicesAreLogged();
    void polling_data();
    void polling();
    void stoppingUnlocksAndDisconnects();
    void reconnectsAfterHalfReply();
    void unparsableAddressSendsNothing();
    void floodIsCutOff();
    void reportReachesPlotAndExport();
    void plotBreaksAtGapsAndShowsItsWindow();

private:
    // Types the address, picks the radios and presses the connect button;
    // returns once the button's pause is over.
    void start(QWidget *w, const QString &address, const char *module, const char *mode);

    QTemporaryDir m_appDir;
    QString m_logDir;
};

void TestLogWidget::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_appDir.isValid());
    QVERIFY(QDir(m_appDir.path()).mkpath(QStringLiteral("config")));
    AppPaths::setAppDir(m_appDir.path());
    m_logDir = m_appDir.path() + QStringLiteral("/log");
    // Never the module's factory address, should anything connect early.
    qputenv("QUILLMARK_MODULE_ADDRESS", "127.0.0.1:1");
    const_cast<QLoggingCategory &>(lcRadio()).setEnabled(QtDebugMsg, true);
}

void TestLogWidget::init()
{
    QDir(m_logDir).removeRecursively();
}

void TestLogWidget::start(QWidget *w, const QString &address, const char *module, const char *mode)
{
    auto *ip = child<QLineEdit>(w, "lineEdit_ip");
    ip->clear();
    QTest::keyClicks(ip, address);
    QTest::mouseClick(child<QRadioButton>(w, module), Qt::LeftButton);
    QTest::mouseClick(child<QRadioButton>(w, mode), Qt::LeftButton);
    auto *link = child<QPushButton>(w, "link");
    // Seen while the button pauses: the window keeps running its events.
    bool linkDisabled = false;
    bool inputsLocked = false;
    QTimer::singleShot(0, w, [&] {
        linkDisabled = !link->isEnabled();
        inputsLocked = !ip->isEnabled() && !child<QRadioButton>(w, "module_falcon")->isEnabled()
            && !child<QRadioButton>(w, "mode_access")->isEnabled();
    });
    QTest::mouseClick(link, Qt::LeftButton);
    QVERIFY(linkDisabled);
    QVERIFY(inputsLocked);
    QVERIFY(link->isEnabled());
    QCOMPARE(link->property("urgent"), QVariant(true));
    QCOMPARE(link->styleSheet(), QStringLiteral("image: url(:/button/image/disconnect.svg);"));
}

void TestLogWidget::defaults()
{
    QScopedPointer<QWidget> w(new logWidget);
    QVERIFY(w->isWindow());
    QVERIFY(w->testAttribute(Qt::WA_DeleteOnClose));
    QCOMPARE(w->windowTitle(), QStringLiteral("DRPR Log"));
    QCOMPARE(child<QLineEdit>(w.data(), "lineEdit_ip")->text(), QStringLiteral("127.0.0.1:1"));
    QVERIFY(child<QRadioButton>(w.data(), "module_kite")->isChecked());
    QVERIFY(!child<QRadioButton>(w.data(), "module_kestrel")->isChecked());
    QVERIFY(!child<QRadioButton>(w.data(), "module_falcon")->isChecked());
    QVERIFY(child<QRadioButton>(w.data(), "mode_center")->isChecked());
    QVERIFY(!child<QRadioButton>(w.data(), "mode_access")->isChecked());
    auto *link = child<QPushButton>(w.data(), "link");
    QCOMPARE(link->property("urgent"), QVariant(false));
    QCOMPARE(link->styleSheet(), QStringLiteral("image: url(:/button/image/connect.svg);"));
    // The icons the style sheets name are compiled in.
    for (const char *icon : { "connect.svg", "disconnect.svg", "flush.svg", "flush_gray.svg", "config.svg",
             "config_gray.svg", "add_gray.svg", "SNR.png" })
        QVERIFY2(!QImage(QStringLiteral(":/button/image/") + QLatin1String(icon)).isNull(), icon);
}

void TestLogWidget::choicesAreLogged()
{
    QScopedPointer<QWidget> w(new logWidget);
    g_messages.clear();
    const QtMessageHandler previous = qInstallMessageHandler(collect);
    for (const char *name :
        { "module_kestrel", "module_falcon", "module_kite", "mode_access", "mode_center" })
        QTest::mouseClick(child<QRadioButton>(w.data(), name), Qt::LeftButton);
    qInstallMessageHandler(previous);
    QCOMPARE(g_messages,
        QStringList({ "module_kestrel is checked.", "module_falcon is checked.", "module_kite is checked.",
            "mode_access is checked.", "mode_center is checked." }));
}

void TestLogWidget::polling_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<QByteArray>("report"); // null: the simulated module's own
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QString>("log");
    QTest::addColumn<QStringList>("shown");

    const QString grey = QStringLiteral("background-color:#F0F0F0;");
    const QString yellow = QStringLiteral("background-color:#FFF68F;");
    const QString orange = QStringLiteral("background-color:#FFA500;");
    const QString red = QStringLiteral("background-color:#FF3400;");
    QTest::newRow("Kite access, three nodes")
        << QByteArray("kite") << QByteArray("mode_access")
        << QByteArray("\r\n" + kiteAccessRecord("5", "18", "12") + kiteAccessRecord("9", "6", "19")
               + kiteAccessRecord("2", "25", "7") + "OK\r\n")
        << QByteArray("AT^DRPR=2") << "log_access"
        << QStringList({ "5 " + yellow + " " + orange, "9 " + red + " " + grey, "2 " + grey + " " + orange });
    QTest::newRow("Kestrel in centre mode reads a mesh")
        << QByteArray("kestrel") << QByteArray("mode_center")
        << QByteArray(
               "^DRPR: 1,2,3,ff,4,\"5\",6,\"7\",\"8\",9,\"10\",640,-50,-52,-75,-77,20,0,0,0,\"13\",\"-5\""
               "\r\n\r\n")
        << QByteArray("AT^DRPR=2") << "log_mesh" << QStringList({ "255 " + yellow + " " + red });
    QTest::newRow("Falcon centre")
        << QByteArray("falcon") << QByteArray("mode_center")
        << QByteArray("^DAPR: \"N2\",1,2,\"3\",4,\"5\",6,\"7\",8,\"9\",15000,12,-45,-47,-62,-65,1,\"30\","
                      "\"19\",-40\r\n\r\n")
        << QByteArray("AT^DAPR=2") << "log_center" << QStringList({ "N2 " + grey + " " + grey });
    // The simulated module's own reports: two or three nodes in each layout.
    QTest::newRow("generated Kite centre") << QByteArray("kite") << QByteArray("mode_center") << QByteArray()
                                           << QByteArray("AT^DAPR=2") << "log_center" << QStringList();
    QTest::newRow("generated Falcon access")
        << QByteArray("falcon") << QByteArray("mode_access") << QByteArray() << QByteArray("AT^DRPR=2")
        << "log_access" << QStringList();
}

void TestLogWidget::polling()
{
    QFETCH(QByteArray, kind);
    QFETCH(QByteArray, mode);
    QFETCH(QByteArray, report);
    QFETCH(QByteArray, command);
    QFETCH(QString, log);
    QFETCH(QStringList, shown);

    QTemporaryDir dir;
    const QString record = dir.filePath(QStringLiteral("requests"));
    QStringList args { QStringLiteral("--kind"), QString::fromLatin1(kind), QStringLiteral("--record"),
        record };
    if (!report.isNull()) {
        QFile file(dir.filePath(QStringLiteral("report")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(report);
        args << QStringLiteral("--report") << file.fileName();
    }
    ModuleSimProcess sim;
    QVERIFY(sim.start(args));

    QPointer<QWidget> w(new logWidget);
    w->resize(640, 420);
    w->show();
    start(w, sim.address(), QByteArray("module_" + kind).constData(), mode.constData());

    QByteArray expected
        = "POST /boafrm/formAtcmdProcess HTTP/1.1\r\n"
          "Accept:*/*\r\n"
          "Referer: http://ADDRESS/index/chn/modem_at_debug.htm\r\n"
          "Accept-Language: zh-Hans-CN,zh-Hans;q=0.8,en-US;q=0.5,en;q=0.2\r\n"
          "Content-Type:text/plain;charset=UTF-8\r\n"
          "UA-CPU: AMD64\r\n"
          "Accept-Encoding:gzip, deflate\r\n"
          "User-Agent: Mozilla/5.0 (Windows NT 10.0; Win64; x64; Trident/7.0; rv:11.0) like Gecko\r\n"
          "Host: ADDRESS\r\n"
          "Content-Length: 31\r\n"
          "Connection: Keep-Alive\r\n"
          "Cache-Control: no-cache\r\n"
          "Cookie: user_choose=block\r\n"
          "\r\n"
          "FormAtcmd_Param_Atcmd=COMMAND";
    expected.replace("ADDRESS", sim.address().toLatin1()).replace("COMMAND", command);
    // Every tick sends the same request, as the module recorded it.
    QTRY_VERIFY_WITH_TIMEOUT(readFile(record).size() >= 2 * expected.size(), 10000);
    QCOMPARE(readFile(record).left(2 * expected.size()), expected + expected);

    if (!shown.isEmpty()) {
        QTRY_COMPARE(::shown(w), shown);
    } else {
        QTRY_VERIFY(::shown(w).size() >= 2);
        const QRegularExpression row(
            QStringLiteral("^\\S+( background-color:#(F0F0F0|FFF68F|FFA500|FF3400);){2}$"));
        for (const QString &line : ::shown(w))
            QVERIFY2(row.match(line).hasMatch(), qPrintable(line));
    }

    const QStringList logs = QDir(m_logDir).entryList(QDir::Files);
    QCOMPARE(logs, QStringList(log + "_" + sim.address().replace(':', '_') + ".txt"));
    // The reports as they came, one after the other, nothing added.
    const QByteArray written = readFile(m_logDir + QLatin1Char('/') + logs.first());
    QVERIFY(!written.isEmpty());
    if (!report.isNull())
        QCOMPARE(written, report.repeated(written.size() / report.size()));

    w->close();
    QTRY_VERIFY(w.isNull());
}

void TestLogWidget::stoppingUnlocksAndDisconnects()
{
    QTemporaryDir dir;
    const QString record = dir.filePath(QStringLiteral("requests"));
    ModuleSimProcess sim;
    QVERIFY(sim.start({ QStringLiteral("--record"), record }));
    QScopedPointer<QWidget> w(new logWidget);
    start(w.data(), sim.address(), "module_kite", "mode_access");
    QTRY_VERIFY_WITH_TIMEOUT(!readFile(record).isEmpty(), 10000);
    auto *link = child<QPushButton>(w.data(), "link");
    QTest::mouseClick(link, Qt::LeftButton);
    QCOMPARE(link->property("urgent"), QVariant(false));
    QCOMPARE(link->styleSheet(), QStringLiteral("image: url(:/button/image/connect.svg);"));
    for (const char *name :
        { "lineEdit_ip", "module_kite", "module_kestrel", "module_falcon", "mode_center", "mode_access" })
        QVERIFY2(child<QWidget>(w.data(), name)->isEnabled(), name);
    QCOMPARE(w->findChild<QTcpSocket *>()->state(), QAbstractSocket::UnconnectedState);
}

// A module that drops the connection halfway through each reply: the half
// report does no harm and the next tick connects again.
void TestLogWidget::reconnectsAfterHalfReply()
{
    QTemporaryDir dir;
    const QString record = dir.filePath(QStringLiteral("requests"));
    QFile report(dir.filePath(QStringLiteral("report")));
    QVERIFY(report.open(QIODevice::WriteOnly));
    report.write(kiteAccessRecord("1", "20", "20").repeated(8));
    report.close();
    ModuleSimProcess sim;
    QVERIFY(sim.start({ QStringLiteral("--close-mid-reply"), QStringLiteral("--record"), record,
        QStringLiteral("--report"), report.fileName() }));
    QScopedPointer<QWidget> w(new logWidget);
    start(w.data(), sim.address(), "module_kite", "mode_access");
    QTRY_VERIFY_WITH_TIMEOUT(readFile(record).count("POST ") >= 2, 10000);
}

void TestLogWidget::unparsableAddressSendsNothing()
{
    QTemporaryDir dir;
    const QString record = dir.filePath(QStringLiteral("requests"));
    ModuleSimProcess sim;
    QVERIFY(sim.start({ QStringLiteral("--record"), record }));
    QScopedPointer<QWidget> w(new logWidget);
    start(w.data(), sim.address() + QLatin1Char('x'), "module_kite", "mode_center");
    // Wait for one more tick: each one puts up a new header row.
    const QPointer<LOG_TITLE> title = w->findChild<LOG_TITLE *>();
    QTRY_VERIFY_WITH_TIMEOUT(title.isNull(), 5000);
    QVERIFY(readFile(record).isEmpty());
    QCOMPARE(w->findChild<QTcpSocket *>()->state(), QAbstractSocket::UnconnectedState);
}

// A module that answers each poll with 40 MB: the monitor drops the
// connection once a reply passes its bound, so neither the log file nor the
// memory takes the flood; the next tick connects again.
void TestLogWidget::floodIsCutOff()
{
    QTemporaryDir dir;
    const QString record = dir.filePath(QStringLiteral("requests"));
    ModuleSimProcess sim;
    QVERIFY(sim.start(
        { QStringLiteral("--flood"), QStringLiteral("40000000"), QStringLiteral("--record"), record }));
    QScopedPointer<QWidget> w(new logWidget);
    start(w.data(), sim.address(), "module_kite", "mode_access");
    QTRY_VERIFY_WITH_TIMEOUT(readFile(record).count("POST ") >= 3, 20000);
    const QStringList logs = QDir(m_logDir).entryList(QDir::Files);
    QCOMPARE(logs.size(), 1);
    const qint64 logged = QFileInfo(m_logDir + QLatin1Char('/') + logs.first()).size();
    qInfo("%lld bytes logged", logged);
    QVERIFY2(logged <= 3 * 1024 * 1024, qPrintable(QString::number(logged)));
    QVERIFY(shown(w.data()).isEmpty());
}

// "name: y y y | y y" per visible line series of the plot, segments apart.
QStringList plotted(LinkPlot *plot)
{
    QMap<QString, QStringList> lines;
    for (QtCharts::QAbstractSeries *series : plot->chart()->series()) {
        const auto *line = static_cast<QtCharts::QLineSeries *>(series);
        if (line->count() == 0)
            continue;
        QStringList ys;
        for (const QPointF &p : line->points())
            ys.append(QString::number(p.y()));
        lines[line->name()].append(ys.join(QLatin1Char(' ')));
    }
    QStringList out;
    for (auto it = lines.cbegin(); it != lines.cend(); ++it)
        out.append(it.key() + QStringLiteral(": ") + it.value().join(QStringLiteral(" | ")));
    return out;
}

// Each parsed report reaches the plot's lines; the figure selector switches
// what they show; a module that stops answering breaks the lines; the
// export writes the samples and the plot a picture.
void TestLogWidget::reportReachesPlotAndExport()
{
    QTemporaryDir dir;
    QFile report(dir.filePath(QStringLiteral("report")));
    QVERIFY(report.open(QIODevice::WriteOnly));
    report.write(kiteAccessRecord("5", "18", "12") + kiteAccessRecord("9", "6", "19"));
    report.close();
    ModuleSimProcess sim;
    QVERIFY(sim.start({ QStringLiteral("--report"), report.fileName() }));
    QScopedPointer<QWidget> w(new logWidget);
    w->show();
    auto *plot = child<LinkPlot>(w.data(), "linkPlot");
    start(w.data(), sim.address(), "module_kite", "mode_access");
    QTRY_VERIFY_WITH_TIMEOUT(plotted(plot).size() == 4, 10000);
    QCOMPARE(plotted(plot).at(0).section(QLatin1Char(' '), 0, 2), QStringLiteral("5 Main: 18"));
    QVERIFY(plotted(plot).at(1).startsWith(QStringLiteral("5 Second: 12")));
    QVERIFY(plotted(plot).at(2).startsWith(QStringLiteral("9 Main: 6")));
    QVERIFY(plotted(plot).at(3).startsWith(QStringLiteral("9 Second: 19")));
    child<QComboBox>(w.data(), "plotFigure")->setCurrentIndex(int(LinkHistory::Figure::Rsrp));
    QVERIFY(plotted(plot).at(1).startsWith(QStringLiteral("5 Second: -91")));
    child<QComboBox>(w.data(), "plotFigure")->setCurrentIndex(int(LinkHistory::Figure::Distance));
    QVERIFY(plotted(plot).at(2).startsWith(QStringLiteral("9 Main: 1520")));

    // The module goes silent: the next tick without a report breaks the lines.
    sim.terminate();
    LinkHistory &history = static_cast<logWidget *>(w.data())->history();
    QTRY_VERIFY_WITH_TIMEOUT(history.sample(0, history.sampleCount(0) - 1).gap, 10000);

    QStringList asked;
    QString target = dir.filePath(QStringLiteral("history.csv"));
    Messages::setFileResponder([&](const QString &caption, const QString &, const QString &filter) {
        asked.append(caption + QLatin1Char(' ') + filter);
        return target;
    });
    QTest::mouseClick(child<QPushButton>(w.data(), "exportCsv"), Qt::LeftButton);
    const QStringList lines = QString::fromUtf8(readFile(target)).split(QStringLiteral("\r\n"));
    QCOMPARE(lines.first(), QStringLiteral("time,node,antenna,rssi,rsrp,snr,power,distance"));
    const QRegularExpression first(
        QStringLiteral("^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z,5,Main,-61,-88,18,23,1520$"));
    QVERIFY2(first.match(lines.at(1)).hasMatch(), qPrintable(lines.at(1)));
    QVERIFY2(lines.at(4).endsWith(QStringLiteral(",9,Second,-64,-91,19,23,1520")), qPrintable(lines.at(4)));
    QVERIFY2(lines.at(lines.size() - 2).endsWith(QStringLiteral(",9,Second,,,,,")),
        qPrintable(lines.at(lines.size() - 2)));
    QCOMPARE(lines.last(), QString());

    target = dir.filePath(QStringLiteral("plot.png"));
    QTest::mouseClick(child<QPushButton>(w.data(), "savePlot"), Qt::LeftButton);
    Messages::setFileResponder({});
    QVERIFY(!QImage(target).isNull());
    QCOMPARE(asked,
        QStringList(
            { QStringLiteral("导出 CSV… CSV 文件 (*.csv)"), QStringLiteral("保存图表… PNG 图片 (*.png)") }));
}

// The plot's lines break where the history has a gap (a line to zero or
// across the outage would read as a link that was there), and show only the
// chosen window, entering it from the sample just before.
void TestLogWidget::plotBreaksAtGapsAndShowsItsWindow()
{
    LinkHistory history;
    LinkPlot plot(&history);
    const auto report = [&](qint64 at, int snr) {
        LinkReport::LinkRecord r;
        r.node = QStringLiteral("7");
        r.main = { -61, -88, snr };
        r.second = { -64, -91, snr - 4 };
        history.addReport(at, { r });
    };
    // Five minutes of history: 4 minutes back, then an outage, then the
    // last 45 seconds.
    const qint64 t = Q_INT64_C(1795480319000);
    report(t - 240000, 25);
    report(t - 70000, 21);
    report(t - 50000, 20);
    history.addGap(t - 48500);
    history.addGap(t - 47000);
    report(t - 45000, 9);
    report(t - 1500, 8);
    report(t, 7);
    plot.refresh();
    QCOMPARE(plotted(&plot), QStringList({ "7 Main: 25 21 20 | 9 8 7", "7 Second: 21 17 16 | 5 4 3" }));
    plot.findChild<QComboBox *>(QStringLiteral("plotRange"))->setCurrentIndex(0); // 1 minute
    QCOMPARE(plotted(&plot), QStringList({ "7 Main: 21 20 | 9 8 7", "7 Second: 17 16 | 5 4 3" }));
    // A new report draws without any other prompting.
    report(t + 1500, 14);
    plot.refresh();
    QCOMPARE(plotted(&plot), QStringList({ "7 Main: 21 20 | 9 8 7 14", "7 Second: 17 16 | 5 4 3 10" }));
}

QTEST_MAIN(TestLogWidget)
#include "tst_logwidget.moc"
