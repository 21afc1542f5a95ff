// What an hour of link monitoring costs. The monitor polls the radio module
// every 1.5 s; each report is parsed, added to the link history and the
// plot redrawn. These harnesses feed an hour of reports (2400) back to back
// through that path with the plot shown offscreen (760 x 420): parse, add,
// refresh, then the event loop's turn in which Qt Charts lays out its items
// and the plot repaints.
//
// BM_GeneratedHour: the simulated module's own reports (Kite access, two or
// three nodes, parsed from text). BM_DriftingHour/nodes/minutes: a drifting
// link of that many nodes with drop-outs and unanswered polls, the plot
// showing that many minutes.
//
// Counters: CPU per report over the hour (`us_report`), in minute 31 (after
// the widest window has filled) and in the last minute (`us_min31`,
// `us_last_min`: equal when the cost does not grow with the history), the
// share of one core at one report per 1.5 s (`core%`), the bytes the history
// holds after the hour (`history_kb`), and the process's resident memory at
// minute 31 and after the hour (`rss_min31_mb`, `rss_mb`: apart by the
// history's growth only, once the plot's window has filled).

#include "DriftingLink.h"
#include "LinkHistory.h"
#include "LinkPlot.h"
#include "ProcessFigures.h"
#include "LinkReport.h"
#include "ReportGenerator.h"

#include <QApplication>
#include <QComboBox>

#include <benchmark/benchmark.h>

#include <functional>

namespace
{

constexpr int kReportsPerMinute = 60 * 1000 / LinkHistory::kPollMs;
// QM_BENCH_MINUTES shortens the hour for a quick look.
const int kReportsPerHour = [] {
    const int minutes = qEnvironmentVariableIntValue("QM_BENCH_MINUTES");
    return kReportsPerMinute * (minutes > 0 ? minutes : 60);
}();
constexpr qint64 kStart = Q_INT64_C(1795480319000);

// poll(history, n) adds what poll n brought.
void runHour(benchmark::State &state, int rangeIndex, const std::function<void(LinkHistory &, int)> &poll)
{
    for (auto _ : state) {
        LinkHistory history;
        LinkPlot plot(&history);
        plot.findChild<QComboBox *>(QStringLiteral("plotRange"))->setCurrentIndex(rangeIndex);
        plot.resize(760, 420);
        plot.show();
        QCoreApplication::processEvents();
        // The minute after the widest window has filled, and the last one.
        const int fullFrom = qMin(31, kReportsPerHour / kReportsPerMinute - 1) * kReportsPerMinute;
        double fullMinute = 0;
        double lastMinute = 0;
        double rssFull = 0;
        const double begin = ProcessFigures::cpuMs();
        for (int n = 0; n < kReportsPerHour; ++n) {
            if (n == fullFrom)
                rssFull = ProcessFigures::residentMb();
            const double before = ProcessFigures::cpuMs();
            poll(history, n);
            plot.refresh();
            QCoreApplication::processEvents();
            const double spent = ProcessFigures::cpuMs() - before;
            if (n >= fullFrom && n < fullFrom + kReportsPerMinute)
                fullMinute += spent;
            if (n >= kReportsPerHour - kReportsPerMinute)
                lastMinute += spent;
        }
        const double perReport = (ProcessFigures::cpuMs() - begin) / kReportsPerHour;
        state.counters["us_report"] = perReport * 1000;
        state.counters["us_min31"] = fullMinute * 1000 / kReportsPerMinute;
        state.counters["us_last_min"] = lastMinute * 1000 / kReportsPerMinute;
        state.counters["core%"] = perReport / LinkHistory::kPollMs * 100;
        state.counters["history_kb"] = double(history.bytesHeld()) / 1024;
        state.counters["rss_mb"] = ProcessFigures::residentMb();
        state.counters["rss_min31_mb"] = rssFull;
    }
}

void BM_GeneratedHour(benchmark::State &state)
{
    ModuleSim::ReportGenerator generator(ModuleSim::ModuleKind::Kite, 7);
    runHour(state, 1, [&](LinkHistory &history, int n) {
        const QByteArray report = generator.report(ModuleSim::ReportRecords::Access);
        history.addReport(kStart + qint64(n) * LinkHistory::kPollMs,
            LinkReport::parseReport(report, LinkReport::ReportKind::Access, LinkReport::ModuleKind::Kite));
    });
}

void BM_DriftingHour(benchmark::State &state)
{
    const int nodes = int(state.range(0));
    const int minutes = int(state.range(1));
    int rangeIndex = 0;
    while (LinkPlot::kRanges[rangeIndex] != minutes)
        ++rangeIndex;
    runHour(state, rangeIndex, [&](LinkHistory &history, int n) {
        const qint64 at = kStart + qint64(n) * LinkHistory::kPollMs;
        if (DriftingLink::answers(n))
            history.addReport(at, DriftingLink::report(nodes, n));
        else
            history.addGap(at);
    });
}

BENCHMARK(BM_GeneratedHour)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DriftingHour)
    ->Args({ 3, 5 })
    ->Args({ 3, 30 })
    ->Args({ 12, 5 })
    ->Args({ 12, 30 })
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
