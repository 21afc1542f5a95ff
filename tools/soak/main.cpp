// quillmark-soak: the program's own main window, built as main() builds it,
// worked for a long time against the virtual unit on a poor line; see
// SoakDriver for what it does and scripts/soak.sh for running it under an X
// server without a screen.
#include "AppPaths.h"
#include "MainWindow.h"
#include "Messages.h"
#include "SoakChart.h"
#include "SoakDriver.h"
#include "Startup.h"
#include "StartupRules.h"
#include "UnitRunner.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTextCodec>
#include <QTranslator>

#include <cstdio>

namespace
{
// A fresh application directory: the delivered data of the build linked in,
// the config files copied (the program writes beside them), and port.xml
// naming the unit's link.
bool makeAppDir(const QString &delivered, const QString &app, const QString &port)
{
    QDir(app).removeRecursively();
    if (!QDir().mkpath(app + QStringLiteral("/config")))
        return false;
    const QDir from(delivered);
    for (const QFileInfo &entry : from.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        const QString name = entry.fileName();
        if (name == QLatin1String("config") || name == QLatin1String("temp") || name == QLatin1String("log")
            || name == QLatin1String("backup") || (entry.isFile() && entry.isExecutable()))
            continue;
        QFile::link(entry.absoluteFilePath(), app + QLatin1Char('/') + name);
    }
    for (const QString &name : QDir(from.filePath(QStringLiteral("config"))).entryList(QDir::Files)) {
        if (name != QLatin1String("port.xml") && name != QLatin1String("lastAddr.tmp"))
            QFile::copy(from.filePath(QStringLiteral("config/") + name), app + QStringLiteral("/config/") + name);
    }
    QFile file(app + QStringLiteral("/config/port.xml"));
    return file.open(QIODevice::WriteOnly)
        && file.write("<?xml version=\"1.0\"?>\n<config><port>" + port.toUtf8() + "</port></config>\n") > 0;
}

QVector<SoakSample> readCsv(const QString &path)
{
    QVector<SoakSample> samples;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return samples;
    file.readLine(); // the header
    while (!file.atEnd()) {
        const QList<QByteArray> f = file.readLine().trimmed().split(',');
        if (f.size() != 11)
            continue;
        SoakSample s;
        s.elapsedS = f[1].toDouble();
        s.rssMb = f[2].toDouble();
        s.heapMb = f[3].toDouble();
        s.cpuPercent = f[4].toDouble();
        s.framesCut = f[5].toULongLong();
        s.framesRefused = f[6].toULongLong();
        s.reconnects = f[7].toInt();
        s.reconnectsFailed = f[8].toInt();
        s.opsDone = f[9].toInt();
        s.opsFailed = f[10].toInt();
        samples.append(s);
    }
    return samples;
}

// The verdict and the chart of what the CSV holds.
int conclude(const QVector<SoakSample> &samples, const QString &outDir, double warmupS, int crashes, double limit)
{
    const SoakSeries::Verdict v = SoakSeries::verdict(samples, warmupS, crashes, limit);
    const QString png = QDir(outDir).filePath(QStringLiteral("soak.png"));
    if (!drawSoakChart(samples, warmupS, v.line).save(png))
        std::fprintf(stderr, "quillmark-soak: cannot write %s\n", qPrintable(png));
    std::printf("%s\n", v.line.toLocal8Bit().constData());
    return v.pass ? 0 : 1;
}
} // namespace

int main(int argc, char **argv)
{
    prepareProcessEnvironment();
    QApplication app(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("utf-8"));

    QCommandLineParser p;
    p.setApplicationDescription(QStringLiteral(
        "Runs Quillmark's main window for a long time against the virtual unit (50 reports a second,\n"
        "noise and split frames): enters and leaves the hub, reads and writes a section, saves and\n"
        "loads a parameter file, hangs the unit up and brings it back. Writes soak.csv (one line per\n"
        "sample), soak.png and a verdict line; exits 1 on a failed reconnect or memory growth."));
    p.addHelpOption();
    auto option = [&](const char *name, const char *text, const char *value, const char *fallback) {
        const QCommandLineOption o { QString::fromLatin1(name), QString::fromLatin1(text), QString::fromLatin1(value),
            QString::fromLatin1(fallback) };
        p.addOption(o);
        return o;
    };
    const auto minutes = option("minutes", "How long to run (default 60).", "N", "60");
    const auto out = option("out", "Folder for soak.csv, soak.png and the work files (default soak-out).", "DIR",
        "soak-out");
    const auto model = option("model", "Model of the virtual unit (default LARCH).", "NAME", "LARCH");
    const auto module = option("module", "Radio module kind of the unit (default 1).", "KIND", "1");
    const auto sample = option("sample", "Seconds between samples (default 60).", "S", "60");
    const auto hub = option("hub", "Seconds between entering and leaving the hub (default 20).", "S", "20");
    const auto section = option("section", "Seconds between section reads and writes (default 60).", "S", "60");
    const auto file = option("file", "Seconds between saving and loading a file (default 300).", "S", "300");
    const auto hangup = option("hangup", "Seconds between hang-ups of the unit (default 600).", "S", "600");
    const auto limit = option("max-growth", "Memory growth per hour that fails (MB, default 1).", "MB", "1");
    const QCommandLineOption fromCsv(QStringLiteral("from-csv"),
        QStringLiteral("Do not run: draw the chart and the verdict from DIR/soak.csv of an earlier run."));
    const QCommandLineOption crashed(QStringLiteral("crashed"),
        QStringLiteral("With --from-csv: the run's process died; count it as a crash (the script's use)."));
    p.addOption(fromCsv);
    p.addOption(crashed);
    p.process(app);

    SoakOptions options;
    options.minutes = p.value(minutes).toDouble();
    options.outDir = QDir(p.value(out)).absolutePath();
    options.sampleS = qMax(1, p.value(sample).toInt());
    options.hubS = qMax(1, p.value(hub).toInt());
    options.sectionS = qMax(1, p.value(section).toInt());
    options.fileS = qMax(1, p.value(file).toInt());
    options.hangupS = qMax(1, p.value(hangup).toInt());
    options.maxGrowthMbPerHour = p.value(limit).toDouble();
    // The first sample covers the start-up; growth is fitted from the second on.
    const double warmupS = qMax(60, options.sampleS);

    if (p.isSet(fromCsv) || p.isSet(crashed))
        return conclude(readCsv(QDir(options.outDir).filePath(QStringLiteral("soak.csv"))), options.outDir,
            warmupS, p.isSet(crashed) ? 1 : 0, options.maxGrowthMbPerHour);

    if (options.minutes <= 0) {
        std::fprintf(stderr, "quillmark-soak: --minutes must be above 0\n");
        return 2;
    }
    const QString work = options.outDir + QStringLiteral("/work");
    QDir(work).removeRecursively();
    if (!QDir().mkpath(work)) {
        std::fprintf(stderr, "quillmark-soak: cannot make %s\n", qPrintable(work));
        return 2;
    }
    // The module windows are never opened here; should one be, it talks to
    // this machine only.
    qputenv("QUILLMARK_MODULE_ADDRESS", "127.0.0.1:9");
    qputenv("QUILLMARK_INSTANCE", "soak");

    const QString bin = QCoreApplication::applicationDirPath();
    options.unitArguments = QStringList { QStringLiteral("--model"), p.value(model), QStringLiteral("--module"),
        p.value(module), QStringLiteral("--noise"), QStringLiteral("--split"), QStringLiteral("--rate"),
        QStringLiteral("50") };
    UnitRunner unit(bin + QStringLiteral("/quillmark-vunit"), work + QStringLiteral("/unit"),
        options.outDir + QStringLiteral("/unit.log"));
    if (!unit.start(options.unitArguments)) {
        std::fprintf(stderr, "quillmark-soak: the virtual unit did not start\n");
        return 2;
    }
    const QString appDir = work + QStringLiteral("/app");
    if (!makeAppDir(bin, appDir, unit.linkPath())) {
        std::fprintf(stderr, "quillmark-soak: cannot make the application directory\n");
        return 2;
    }
    AppPaths::setAppDir(appDir);

    // As the program starts: its translation, its window, reconnecting on.
    QTranslator translator;
    if (translator.load(AppPaths::file(StartupRules::translationFile(QLocale::system().name()))))
        QApplication::installTranslator(&translator);
    auto *window = new MainWindow;
    window->setReconnecting(true);
    window->show();

    SoakDriver driver(window, &unit, options);
    if (!driver.begin())
        return 2;
    QObject::connect(&driver, &SoakDriver::finished, &app, &QCoreApplication::quit);
    QApplication::exec();

    const QVector<SoakSample> samples = driver.samples();
    delete window;
    unit.stop();
    Messages::setResponder({});
    Messages::setChoiceResponder({});
    Messages::setFileResponder({});
    return conclude(samples, options.outDir, warmupS, 0, options.maxGrowthMbPerHour);
}
