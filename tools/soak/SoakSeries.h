#pragma once

#include <QString>
#include <QVector>

// What the soak records once a minute, and what it concludes from it. Plain
// values: the driver fills them, the chart draws them.
struct SoakSample {
    double elapsedS = 0;
    double rssMb = 0;
    double heapMb = 0; // allocated and not freed: grows with a leak, not with memory kept for reuse
    double cpuPercent = 0; // of one core, over the interval before the sample
    quint64 framesCut = 0; // counters from here on: totals since the start
    quint64 framesRefused = 0;
    int reconnects = 0;
    int reconnectsFailed = 0;
    int opsDone = 0;
    int opsFailed = 0;
};

namespace SoakSeries
{

QString csvHeader();
QString csvLine(const SoakSample &s);

// Least-squares slope of the resident memory in MB per hour over the samples
// taken after warmupS; false when fewer than two are left.
bool growthMbPerHour(const QVector<SoakSample> &samples, double warmupS, double *slope);

struct Verdict {
    bool pass = false;
    QString line;
};

// The closing line: crashes, memory growth per hour after the warm-up and the
// reconnects that failed. Fails on a crash, a failed reconnect or growth of
// maxGrowthMbPerHour or more.
Verdict verdict(const QVector<SoakSample> &samples, double warmupS, int crashes, double maxGrowthMbPerHour);

} // namespace SoakSeries
