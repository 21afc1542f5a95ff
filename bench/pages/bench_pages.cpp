// What the live view of the unit costs a user. The unit streams its channel
// report at 50 Hz; for each report the program cuts the frame from the serial
// bytes, the page's setters mark their controls dirty, and at the next turn
// of the event loop Qt repaints the dirty region of the window into its
// backing store and hands that to the window system.
//
// BM_RunningProgram runs that whole path: a virtual unit (quillmark-vunit)
// on a pseudo-terminal and the program's own MainWindow in this process,
// 1280 x 800 as on a user's screen, with the delivered style sheet and
// translation. After the model page is up it lets the event loop run for a
// few seconds and takes the process's CPU time (the window system's event
// reader is a thread of its own on X11) and its resident memory.
//
// The page draws a frame at most every 30 ms, so at the unit's rate every
// other report. BM_WindowUpdate is the same page in a main window fed back to
// back, every report a frame: the work per frame with warm caches, quick to
// profile. BM_DecodeReport is the decoding and the setters alone;
// BM_FullRepaint one complete rendering of the window, as a resize or an
// exposure costs.
//
// Counters: ms of CPU per report (per frame for BM_WindowUpdate and
// BM_FullRepaint), per cent of one core (`core%`) at 50 reports or 25 frames a
// second, paint events per report (`paints`), the pixels they covered (`kpx`)
// and the part of those painted for the page or the window underneath the
// controls (`under`), resident memory (`rss_mb`).
//
// The platform is the one Qt picks (offscreen unless QT_QPA_PLATFORM says
// otherwise). Under an X server (`xvfb-run`, QT_QPA_PLATFORM=xcb) the flush
// to the window system is measured as well, as on a user's desktop.

#include "AppPaths.h"
#include "CodeId.h"
#include "MainWindow.h"
#include "Messages.h"
#include "ModelInterface.h"
#include "ModelSpec.h"
#include "ProcessFigures.h"
#include "Startup.h"
#include "StartupRules.h"
#include "UnitModel.h"
#include "VunitProcess.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QLocale>
#include <QLoggingCategory>
#include <QMainWindow>
#include <QPaintEvent>
#include <QTemporaryDir>
#include <QTimer>
#include <QTranslator>
#include <QWindow>

#include <benchmark/benchmark.h>

#include <memory>

namespace
{

constexpr int kReportHz = 50;
constexpr int kReportMs = 1000 / kReportHz;
constexpr int kFrameHz = kReportHz / 2; // the page draws every other report
constexpr int kReportCount = 3000; // a minute of streaming, then it repeats
const QSize kWindowSize(StartupRules::kWindowWidth, StartupRules::kWindowHeight);

QString styleSheet()
{
    QFile file(AppPaths::file(QStringLiteral("/config/StyleSheets.qss")));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// Counts the paint events Qt delivers and the area they cover.
class PaintCounter : public QObject
{
public:
    PaintCounter() { qApp->installEventFilter(this); }
    ~PaintCounter() override { qApp->removeEventFilter(this); }

    qint64 paints = 0;
    qint64 pixels = 0;
    qint64 pixelsUnder = 0; // painted for the page or the window beneath the controls

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            qint64 area = 0;
            for (const QRect &r : static_cast<QPaintEvent *>(event)->region())
                area += qint64(r.width()) * r.height();
            ++paints;
            pixels += area;
            if (qobject_cast<ModelInterface *>(watched) || qobject_cast<QMainWindow *>(watched))
                pixelsUnder += area;
        }
        return false;
    }
};

// Per event (a report, or a frame of the page), and per cent of one core at
// `perSecond` such events.
void addCounters(benchmark::State &state, int model, double cpu, double reports, const PaintCounter *paints,
                 int perSecond)
{
    reports = qMax(1.0, reports);
    state.counters["ms"] = cpu / reports;
    state.counters["core%"] = cpu / reports * perSecond / 10.0;
    if (paints) {
        state.counters["paints"] = double(paints->paints) / reports;
        state.counters["kpx"] = double(paints->pixels) / reports / 1000.0;
        state.counters["under"] = double(paints->pixelsUnder) / reports / 1000.0;
    }
    state.SetLabel(modelSpec(model).identifier.toStdString());
}

bool waitFor(const std::function<bool()> &condition, int ms)
{
    QElapsedTimer waited;
    waited.start();
    while (!condition() && waited.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return condition();
}

// ---------------------------------------------------------------- the program

// An application directory like the delivered one, with a port file naming
// the virtual unit's link.
bool writeAppDir(const QString &dir, const QString &port)
{
    const QDir delivered(QStringLiteral(QM_APP_DIR));
    if (!QDir().mkpath(dir + QStringLiteral("/config")))
        return false;
    for (const QString &name : delivered.entryList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        if (name != QLatin1String("config") && name != QLatin1String("temp") && name != QLatin1String("log"))
            QFile::link(delivered.filePath(name), dir + QLatin1Char('/') + name);
    }
    const QDir config(delivered.filePath(QStringLiteral("config")));
    for (const QString &name : config.entryList(QDir::Files)) {
        if (name != QLatin1String("port.xml"))
            QFile::link(config.filePath(name), dir + QStringLiteral("/config/") + name);
    }
    QFile file(dir + QStringLiteral("/config/port.xml"));
    return file.open(QIODevice::WriteOnly)
        && file.write("<?xml version=\"1.0\"?>\n<config><port>" + port.toUtf8() + "</port></config>\n") > 0;
}

void BM_RunningProgram(benchmark::State &state)
{
    const int model = int(state.range(0));
    const int seconds = int(state.range(1));
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    if (!unit.start({ QStringLiteral("--model"), modelSpec(model).identifier })) {
        state.SkipWithError("the virtual unit did not start");
        return;
    }
    const QString appDir = dir.path() + QStringLiteral("/app");
    if (!writeAppDir(appDir, unit.linkPath())) {
        state.SkipWithError("no application directory");
        return;
    }
    AppPaths::setAppDir(appDir);
    QTranslator translator;
    if (translator.load(AppPaths::file(StartupRules::translationFile(QLocale::system().name()))))
        QApplication::installTranslator(&translator);

    double cpu = 0;
    double reports = 0;
    {
        MainWindow window;
        // The offscreen screen is smaller than a desktop's; the window takes
        // the size it has on a screen above 1280 x 800.
        if (window.isMaximized() || window.size() != kWindowSize) {
            window.setWindowState(Qt::WindowNoState);
            window.resize(kWindowSize);
        }
        window.show();
        int received = 0;
        QObject::connect(
            &window, &MainWindow::signal_information, [&received](CodeID code, const QByteArray &) {
                if (code == ChannelDataReport)
                    ++received;
            });
        if (!waitFor([&] { return received >= kReportHz; }, 15000)) {
            state.SkipWithError("the model page received no reports");
            return;
        }
        PaintCounter counted;
        received = 0;
        for (auto _ : state) {
            const double start = ProcessFigures::cpuMs();
            QEventLoop loop;
            QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
            loop.exec();
            cpu += ProcessFigures::cpuMs() - start;
        }
        reports = received;
        addCounters(state, model, cpu, reports, &counted, kReportHz);
        state.counters["rss_mb"] = ProcessFigures::residentMb();
    }
    QApplication::removeTranslator(&translator);
    unit.terminate();
}

// ---------------------------------------------------------------- the page alone

// A model page in a main window as the program builds it (form font, style
// sheet, page as central widget), without a unit: the benchmark feeds it a
// minute of the virtual unit's reports, 20 ms apart in the unit's time.
struct LiveWindow {
    int model = -1;
    std::unique_ptr<QMainWindow> window;
    ModelInterface *page = nullptr;
    QVector<QByteArray> reports;
    int next = 0;

    const QByteArray &nextReport()
    {
        const QByteArray &r = reports.at(next);
        next = (next + 1) % reports.size();
        return r;
    }
};

// One window at a time, so that each model's page is the only one shown;
// model -1 closes it.
LiveWindow &liveWindow(int model)
{
    static LiveWindow live;
    if (live.model == model)
        return live;
    live.window.reset();
    live.model = model;
    live.next = 0;
    live.reports.clear();
    if (model < 0)
        return live;

    Vunit::UnitConfig config;
    config.model = Vunit::Model(model);
    Vunit::UnitModel unit(config);
    QStringList notes;
    unit.handle(0xE5, QByteArray::fromHex("0232"), 0, &notes); // the model page's upload
    live.reports.reserve(kReportCount);
    for (int i = 0; i < kReportCount; ++i)
        live.reports.append(unit.reportPayload(qint64(i) * kReportMs).mid(1)); // without the status byte

    live.window = std::make_unique<QMainWindow>();
    live.window->setFont(QFont(QStringLiteral("Calibri")));
    live.window->setStyleSheet(styleSheet());
    live.page = createModelPage(model, live.window.get());
    live.window->setCentralWidget(live.page);
    live.window->resize(kWindowSize);
    live.window->show();
    QWindow *handle = live.window->windowHandle();
    waitFor([handle] { return handle && handle->isExposed(); }, 5000);
    QCoreApplication::processEvents();
    return live;
}

// A report the page would ignore (wrong length) would measure nothing.
bool reportsFit(LiveWindow &live, benchmark::State &state)
{
    const int expected = modelSpec(live.model).k + 64;
    const int got = live.reports.first().size();
    if (got == expected)
        return true;
    state.SkipWithError(
        qPrintable(QStringLiteral("report of %1 bytes, the page takes %2").arg(got).arg(expected)));
    return false;
}

void BM_WindowUpdate(benchmark::State &state)
{
    const int model = int(state.range(0));
    LiveWindow &live = liveWindow(model);
    if (!reportsFit(live, state))
        return;
    live.next = 0; // every run sees the same stretch of the unit's motion
    live.page->setFrameInterval(0); // every report a frame
    PaintCounter counted;
    const double start = ProcessFigures::cpuMs();
    for (auto _ : state) {
        live.page->slot_information(ChannelDataReport, live.nextReport());
        QCoreApplication::processEvents();
    }
    addCounters(state, model, ProcessFigures::cpuMs() - start, double(state.iterations()), &counted, kFrameHz);
}

void BM_DecodeReport(benchmark::State &state)
{
    const int model = int(state.range(0));
    LiveWindow &live = liveWindow(model);
    if (!reportsFit(live, state))
        return;
    live.next = 0;
    const double start = ProcessFigures::cpuMs();
    live.page->setFrameInterval(0);
    for (auto _ : state)
        live.page->slot_information(ChannelDataReport, live.nextReport());
    addCounters(state, model, ProcessFigures::cpuMs() - start, double(state.iterations()), nullptr, kReportHz);
    QCoreApplication::processEvents(); // the updates the setters asked for
}

void BM_FullRepaint(benchmark::State &state)
{
    const int model = int(state.range(0));
    LiveWindow &live = liveWindow(model);
    if (!reportsFit(live, state))
        return;
    QImage image(live.window->size(), QImage::Format_RGB32);
    const double start = ProcessFigures::cpuMs();
    for (auto _ : state) {
        live.window->render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
    addCounters(state, model, ProcessFigures::cpuMs() - start, double(state.iterations()), nullptr, kFrameHz);
}

void models(benchmark::internal::Benchmark *b)
{
    b->ArgName("model")->Unit(benchmark::kMicrosecond);
    for (int model = 0; model < kModelCount; ++model)
        b->Arg(model);
}

BENCHMARK(BM_RunningProgram)->Apply([](benchmark::internal::Benchmark *b) {
    b->ArgNames({ "model", "seconds" })->Unit(benchmark::kMillisecond)->Iterations(1);
    for (int model = 0; model < kModelCount; ++model)
        b->Args({ model, 10 });
});
BENCHMARK(BM_WindowUpdate)->Apply(models);
BENCHMARK(BM_DecodeReport)->Apply(models);
BENCHMARK(BM_FullRepaint)->Apply(models);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    prepareProcessEnvironment(); // as the program does
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("quillmark.*.debug=false"));
    // Nothing may wait for a user.
    Messages::setResponder([](const Messages::Shown &) { return false; });
    AppPaths::setAppDir(QStringLiteral(QM_APP_DIR));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    liveWindow(-1);
    return 0;
}
