#include "SoakSeries.h"

namespace SoakSeries
{

QString csvHeader()
{
    return QStringLiteral("minute,elapsed_s,rss_mb,heap_mb,cpu_percent,frames_cut,frames_refused,reconnects,"
                          "reconnects_failed,ops_done,ops_failed");
}

QString csvLine(const SoakSample &s)
{
    return QStringLiteral("%1,%2,%3,%4,%5,")
               .arg(s.elapsedS / 60.0, 0, 'f', 2)
               .arg(s.elapsedS, 0, 'f', 1)
               .arg(s.rssMb, 0, 'f', 2)
               .arg(s.heapMb, 0, 'f', 2)
               .arg(s.cpuPercent, 0, 'f', 2)
        + QStringLiteral("%1,%2,%3,%4,%5,%6")
              .arg(s.framesCut)
              .arg(s.framesRefused)
              .arg(s.reconnects)
              .arg(s.reconnectsFailed)
              .arg(s.opsDone)
              .arg(s.opsFailed);
}

bool growthMbPerHour(const QVector<SoakSample> &samples, double warmupS, double *slope)
{
    double n = 0, sx = 0, sy = 0, sxx = 0, sxy = 0;
    for (const SoakSample &s : samples) {
        if (s.elapsedS <= warmupS)
            continue;
        const double x = s.elapsedS / 3600.0;
        n += 1;
        sx += x;
        sy += s.rssMb;
        sxx += x * x;
        sxy += x * s.rssMb;
    }
    const double d = n * sxx - sx * sx;
    if (n < 2 || d <= 0)
        return false;
    *slope = (n * sxy - sx * sy) / d;
    return true;
}

Verdict verdict(const QVector<SoakSample> &samples, double warmupS, int crashes, double maxGrowthMbPerHour)
{
    double slope = 0;
    const bool fitted = growthMbPerHour(samples, warmupS, &slope);
    const SoakSample last = samples.isEmpty() ? SoakSample() : samples.constLast();
    Verdict v;
    v.pass = crashes == 0 && last.reconnectsFailed == 0 && fitted && slope < maxGrowthMbPerHour;
    const QString growth = fitted ? QStringLiteral("%1%2 MB/h").arg(slope >= 0 ? QStringLiteral("+") : QString()).arg(slope, 0, 'f', 2)
                                  : QStringLiteral("not measured (too few samples)");
    v.line = QStringLiteral("soak verdict: %1 after %2 min; crashes %3; memory growth %4 (limit %5); "
                            "reconnects %6 done, %7 failed; operations %8 done, %9 failed")
                 .arg(v.pass ? QStringLiteral("PASS") : QStringLiteral("FAIL"))
                 .arg(last.elapsedS / 60.0, 0, 'f', 1)
                 .arg(crashes)
                 .arg(growth)
                 .arg(maxGrowthMbPerHour, 0, 'f', 1)
                 .arg(last.reconnects)
                 .arg(last.reconnectsFailed)
                 .arg(last.opsDone)
                 .arg(last.opsFailed);
    return v;
}

} // namespace SoakSeries
