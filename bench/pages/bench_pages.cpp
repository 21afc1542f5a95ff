// What the live view of the unit costs: a model page at the main window's
// size receives the channel report the unit streams at 50 Hz and repaints.
// For each of the seven models this measures
//   - decoding and applying one report (slot_information with the report),
//   - one full repaint of the page with all its children into an image,
//   - both together, as every report does on screen,
// and gives the cost per report and the share of one core that 50 reports a
// second take. The reports come from the virtual unit's motion model at
// advancing times, 20 ms apart.

#include "AppPaths.h"
#include "CodeId.h"
#include "ModelInterface.h"
#include "ModelSpec.h"
#include "UnitModel.h"

#include <QApplication>
#include <QFile>
#include <QImage>

#include <benchmark/benchmark.h>

#include <array>
#include <ctime>
#include <memory>

namespace
{

constexpr int kReportHz = 50;
constexpr int kReportMs = 1000 / kReportHz;
constexpr int kReportCount = 3000; // a minute of streaming, then it repeats
const QSize kPageSize(1280, 760);

struct LivePage {
    std::unique_ptr<ModelInterface> page;
    QVector<QByteArray> reports;
    int next = 0;

    const QByteArray &nextReport()
    {
        const QByteArray &r = reports.at(next);
        next = (next + 1) % reports.size();
        return r;
    }
};

QString styleSheet()
{
    QFile file(AppPaths::file(QStringLiteral("/config/StyleSheets.qss")));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The program's main window carries the style sheet, so its pages are drawn
// with it; `styled` false draws with the plain style for comparison.
LivePage &livePage(int model, bool styled)
{
    static std::array<std::array<std::unique_ptr<LivePage>, kModelCount>, 2> pages;
    std::unique_ptr<LivePage> &slot = pages[styled ? 1 : 0][size_t(model)];
    if (slot)
        return *slot;

    slot = std::make_unique<LivePage>();
    Vunit::UnitConfig config;
    config.model = Vunit::Model(model);
    Vunit::UnitModel unit(config);
    QStringList notes;
    unit.handle(0xE5, QByteArray::fromHex("0232"), 0, &notes); // the model page's upload
    slot->reports.reserve(kReportCount);
    for (int i = 0; i < kReportCount; ++i)
        slot->reports.append(unit.reportPayload(qint64(i) * kReportMs).mid(1)); // without the status byte

    slot->page.reset(createModelPage(model, nullptr));
    if (styled)
        slot->page->setStyleSheet(styleSheet());
    slot->page->resize(kPageSize);
    return *slot;
}

QImage &target()
{
    static QImage image(kPageSize, QImage::Format_ARGB32_Premultiplied);
    return image;
}

void repaint(ModelInterface *page)
{
    page->render(&target());
    benchmark::DoNotOptimize(target().constBits());
}

// CPU time of this thread, for the counters below.
double cpuMs()
{
    timespec t {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

// ms of CPU per report, and per cent of one core at 50 reports a second.
void addCounters(benchmark::State &state, double totalMs)
{
    const double perReport = totalMs / double(qMax<qint64>(1, state.iterations()));
    state.counters["ms"] = perReport;
    state.counters["core%@50Hz"] = perReport * kReportHz / 10.0;
}

// A report the page would ignore (wrong length) would measure nothing.
bool reportsFit(int model, benchmark::State &state)
{
    const int expected = modelSpec(model).k + 64;
    const int got = livePage(model, true).reports.first().size();
    if (got == expected)
        return true;
    state.SkipWithError(
        qPrintable(QStringLiteral("report of %1 bytes, the page takes %2").arg(got).arg(expected)));
    return false;
}

void setLabel(benchmark::State &state, int model)
{
    state.SetLabel(modelSpec(model).identifier.toStdString());
}

void BM_DecodeReport(benchmark::State &state)
{
    const int model = int(state.range(0));
    if (!reportsFit(model, state))
        return;
    LivePage &live = livePage(model, true);
    live.next = 0; // every benchmark sees the same stretch of the unit's motion
    repaint(live.page.get());
    const double start = cpuMs();
    for (auto _ : state)
        live.page->slot_information(ChannelDataReport, live.nextReport());
    const double total = cpuMs() - start;
    setLabel(state, model);
    addCounters(state, total);
}

void BM_Repaint(benchmark::State &state)
{
    const int model = int(state.range(0));
    if (!reportsFit(model, state))
        return;
    LivePage &live = livePage(model, state.range(1) != 0);
    live.next = 0; // every benchmark sees the same stretch of the unit's motion
    repaint(live.page.get());
    double total = 0;
    for (auto _ : state) {
        state.PauseTiming();
        live.page->slot_information(ChannelDataReport, live.nextReport());
        state.ResumeTiming();
        const double start = cpuMs();
        repaint(live.page.get());
        total += cpuMs() - start;
    }
    setLabel(state, model);
    addCounters(state, total);
}

void BM_ReportAndRepaint(benchmark::State &state)
{
    const int model = int(state.range(0));
    if (!reportsFit(model, state))
        return;
    LivePage &live = livePage(model, state.range(1) != 0);
    live.next = 0; // every benchmark sees the same stretch of the unit's motion
    repaint(live.page.get());
    const double start = cpuMs();
    for (auto _ : state) {
        live.page->slot_information(ChannelDataReport, live.nextReport());
        repaint(live.page.get());
    }
    const double total = cpuMs() - start;
    setLabel(state, model);
    addCounters(state, total);
}

void models(benchmark::internal::Benchmark *b, bool withPlain)
{
    b->ArgNames({ "model", "styled" })->Unit(benchmark::kMicrosecond);
    for (int model = 0; model < kModelCount; ++model)
        b->Args({ model, 1 });
    if (withPlain) {
        for (int model = 0; model < kModelCount; ++model)
            b->Args({ model, 0 });
    }
}

BENCHMARK(BM_DecodeReport)->Apply([](benchmark::internal::Benchmark *b) { models(b, false); });
BENCHMARK(BM_Repaint)->Apply([](benchmark::internal::Benchmark *b) { models(b, true); });
BENCHMARK(BM_ReportAndRepaint)->Apply([](benchmark::internal::Benchmark *b) { models(b, true); });

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // The pictures and the style sheet staged beside the program.
    if (qEnvironmentVariableIsEmpty("QUILLMARK_APP_DIR"))
        AppPaths::setAppDir(QStringLiteral(QM_APP_DIR));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
