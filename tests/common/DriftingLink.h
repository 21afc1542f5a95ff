#pragma once

#include "LinkHistory.h"
#include "LinkReport.h"

#include <QtMath>

// A radio link as an installer walking a site sees it, poll by poll: each
// node's signal-to-noise ratio swings slowly through the quality bands (its
// own period, 12 to 30 minutes), the strengths follow it, the distance wanders;
// now and then a node drops out for a few polls, and every 300 polls the
// module does not answer four polls at all. Deterministic in the poll number.
namespace DriftingLink
{

// True when the module answers poll `poll`.
inline bool answers(int poll)
{
    return poll % 300 < 296;
}

inline QVector<LinkReport::LinkRecord> report(int nodes, int poll)
{
    QVector<LinkReport::LinkRecord> records;
    for (int i = 0; i < nodes; ++i) {
        if ((poll / 40 + 3 * i) % 11 == 0 && poll % 40 < 5)
            continue; // out of reach
        const double period = 500.0 + 230.0 * (i % 4);
        const double phase = 1.9 * i;
        // A little scatter, changing every few polls: -1, 0 or 1.
        const int noise = int(((quint32(poll / 3) * 2654435761u + quint32(i) * 40503u) >> 16) % 3) - 1;
        const int snr = qRound(12.5 + 11.5 * qSin(2 * M_PI * poll / period + phase)) + noise;
        const int second = snr - 3 + noise / 2;
        LinkReport::LinkRecord r;
        r.node = QString::number(2 + i);
        const auto figures = [](int s) {
            const int rssi = qBound(-90, -88 + (s + 5) * 46 / 35, -40);
            return LinkReport::AntennaFigures { rssi, rssi - 22, s };
        };
        r.main = figures(snr);
        r.second = figures(second);
        r.power = 18 + i % 5;
        r.distance = 600 + 250 * i + qRound(200 * qSin(2 * M_PI * poll / 900.0 + i));
        records.append(r);
    }
    return records;
}

// Polls 0..count-1 into the history, one every 1.5 s, the last at endMsecs.
inline void feed(LinkHistory &history, int nodes, int count, qint64 endMsecs)
{
    for (int poll = 0; poll < count; ++poll) {
        const qint64 at = endMsecs - qint64(count - 1 - poll) * LinkHistory::kPollMs;
        if (answers(poll))
            history.addReport(at, report(nodes, poll));
        else
            history.addGap(at);
    }
}

} // namespace DriftingLink
