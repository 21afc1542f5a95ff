// What saving and loading a parameter file costs the user: a full file (both
// SBUS ports, channel hold and every other element) read into the record from
// disk, the pages filled from it, and the file written from the hub's pages.
// The goal is well under a millisecond for either.
#include "AppPaths.h"
#include "ChannelListenInterface.h"
#include "DeviceData.h"
#include "RecordHost.h"
#include "ParameterFile.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

namespace
{

RecordHost &host()
{
    static RecordHost h;
    return h;
}

// The hub of a unit with the output module, so that every page exists.
ChannelListenInterface &hub()
{
    static std::unique_ptr<ChannelListenInterface> h = [] {
        host().data.m_module = 2;
        auto made = std::make_unique<ChannelListenInterface>(0);
        made->resize(1280, 760);
        ParameterFile::load(QStringLiteral(QM_FULL_FILE), host().data);
        made->refreshPages();
        return made;
    }();
    return *h;
}

void BM_LoadIntoRecord(benchmark::State &state)
{
    for (auto _ : state) {
        DeviceData record;
        benchmark::DoNotOptimize(ParameterFile::load(QStringLiteral(QM_FULL_FILE), record));
    }
}
BENCHMARK(BM_LoadIntoRecord)->Unit(benchmark::kMicrosecond);

// What the user waits for on "加载配置" before the question: the reader and
// every page filled from the record.
void BM_LoadAndFillPages(benchmark::State &state)
{
    ChannelListenInterface &h = hub();
    for (auto _ : state) {
        ParameterFile::load(QStringLiteral(QM_FULL_FILE), host().data);
        h.refreshPages();
    }
}
BENCHMARK(BM_LoadAndFillPages)->Unit(benchmark::kMicrosecond);

// "保存配置": every page's fragment, written to disk.
void BM_SaveFromPages(benchmark::State &state)
{
    ChannelListenInterface &h = hub();
    QTemporaryDir dir;
    const QString path = dir.path() + QStringLiteral("/bench.cfg");
    qint64 bytes = 0;
    for (auto _ : state) {
        QFile file(path);
        file.open(QIODevice::WriteOnly | QIODevice::Truncate);
        bytes = file.write(h.parameterFileText().toLocal8Bit());
    }
    state.counters["file_bytes"] = double(bytes);
}
BENCHMARK(BM_SaveFromPages)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*.debug=false");
    QApplication app(argc, argv);
    if (qEnvironmentVariableIsEmpty("QUILLMARK_APP_DIR"))
        AppPaths::setAppDir(QStringLiteral(QM_APP_DIR));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
