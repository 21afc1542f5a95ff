// Frame cutting and dispatch throughput. The line carries at most 11.5 kB/s;
// these figures say how small a share of a core the cutting takes, also on
// hostile input.
#include "AnswerRules.h"
#include "ChannelReport.h"
#include "FrameCutter.h"
#include "SerialFrame.h"

#include <QList>

#include <benchmark/benchmark.h>

namespace {

// What the main window does with every frame: the answer rules, and for a
// channel report the decoding a model page makes of it.
struct Dispatch {
    int64_t frames = 0;
    void operator()(quint8 code, const QByteArray &payload)
    {
        ++frames;
        const Answer answer = interpretAnswer(code, payload);
        if (answer.emits && answer.codeId == ChannelDataReport) {
            ChannelReport report;
            ChannelReport::decode(answer.data, 30, 1, report);
            benchmark::DoNotOptimize(report.sbus[1][15]);
        }
    }
};

QByteArray channelReport(int i)
{
    QByteArray payload(1 + 30 + 64, '\0');
    for (int k = 1; k < payload.size(); k += 2) {
        const int raw = (i * 7 + k * 13) % 1201;
        payload[k] = char(raw & 0xFF);
        payload[k + 1] = char(raw >> 8);
    }
    return SerialFrame::encode(0xA5, payload);
}

void feedInReads(benchmark::State &state, const QByteArray &stream, int readSize)
{
    QList<QByteArray> reads;
    for (int at = 0; at < stream.size(); at += readSize)
        reads.append(stream.mid(at, readSize));
    int64_t frames = 0;
    for (auto _ : state) {
        FrameCutter cutter;
        Dispatch dispatch;
        for (const QByteArray &read : reads)
            cutter.feed(read, std::ref(dispatch));
        frames += dispatch.frames;
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * stream.size());
    state.counters["frames"] = benchmark::Counter(double(frames), benchmark::Counter::kIsRate);
}

// Valid channel reports of a 30-byte control block, as the serial port
// delivers them: whole reads of arbitrary size.
void BM_ValidReports(benchmark::State &state)
{
    QByteArray stream;
    for (int i = 0; stream.size() < (1 << 20); ++i)
        stream += channelReport(i);
    feedInReads(state, stream, int(state.range(0)));
}
BENCHMARK(BM_ValidReports)->Arg(64)->Arg(4096)->Arg(1 << 20);

// 1 MiB of header bytes in one read: every byte looks like a frame start.
void BM_AllHeaderBytesOneRead(benchmark::State &state)
{
    feedInReads(state, QByteArray(1 << 20, char(0xFA)), 1 << 20);
}
BENCHMARK(BM_AllHeaderBytesOneRead);

// 64 KiB of header bytes delivered in 64-byte reads.
void BM_AllHeaderBytesSmallReads(benchmark::State &state)
{
    feedInReads(state, QByteArray(64 << 10, char(0xFA)), 64);
}
BENCHMARK(BM_AllHeaderBytesSmallReads);

// A header announcing 65535 bytes, then noise, in 64-byte reads: the pending
// tail grows to a whole frame before it can be dropped.
void BM_LongPendingTailSmallReads(benchmark::State &state)
{
    QByteArray stream = QByteArray::fromHex("faa3ffff");
    stream += QByteArray((64 << 10) + 64, '\x01');
    feedInReads(state, stream, 64);
}
BENCHMARK(BM_LongPendingTailSmallReads);

// Random bytes in 64-byte reads.
void BM_NoiseSmallReads(benchmark::State &state)
{
    QByteArray stream(1 << 20, '\0');
    quint32 x = 2463534242u;
    for (char &c : stream) {
        x ^= x << 13;
        x ^= x >> 17;
        x ^= x << 5;
        c = char(x);
    }
    feedInReads(state, stream, 64);
}
BENCHMARK(BM_NoiseSmallReads);

} // namespace

BENCHMARK_MAIN();
