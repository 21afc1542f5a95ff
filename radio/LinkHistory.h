#pragma once

#include "LinkReport.h"

#include <QString>
#include <QVector>

// How each remote node's link behaved over time: every parsed link report
// adds one time-stamped sample per node and antenna (a series) of the
// figures its table row shows. No widgets; the monitor's plot and its CSV
// export read it.
//
// Bounds. Each series is a ring of at most `capacity` samples (kCapacity by
// default: 24 hours at the monitor's poll of one report every 1.5 s); a
// full ring drops its oldest sample for each new one. Rings grow as samples
// come, so an hour costs an hour's worth. At most kMaxNodes nodes are kept
// (the first ones seen; a mesh has a few dozen at most), so the history
// never holds more than kMaxNodes x 2 x capacity samples of
// sizeof(Sample) = 24 bytes: 2.76 MB per node after a day, 88 MB for 32.
//
// Gaps. A poll that brought no report (no answer, a short or unparsable
// one), a report that leaves a node out and the end of polling put a gap
// sample into the series concerned, so that a plot breaks the line there
// instead of drawing it through or down to zero. A gap follows a real
// sample only: an outage of any length is one gap.
class LinkHistory
{
public:
    static constexpr int kPollMs = 1500; // the monitor asks for a report this often
    static constexpr int kCapacity = 24 * 60 * 60 * 1000 / kPollMs; // 57600
    static constexpr int kMaxNodes = 32;

    enum class Figure { Rssi, Rsrp, Snr, Power, Distance };
    static constexpr int kFigureCount = 5;

    struct Sample {
        qint64 msecs = 0; // since the epoch, UTC
        qint32 distance = 0; // metres
        qint16 rssi = 0;
        qint16 rsrp = 0;
        qint16 snr = 0;
        qint16 power = 0;
        bool gap = false;

        int value(Figure figure) const;
    };

    explicit LinkHistory(int capacity = kCapacity);

    // The figures of one report received at msecs. Records of nodes beyond
    // kMaxNodes are left out; a node met twice in one report counts once.
    void addReport(qint64 msecs, const QVector<LinkReport::LinkRecord> &records);
    // A poll that brought no figures, or the end of polling.
    void addGap(qint64 msecs);
    void clear();

    // Series in the order their node first appeared, main antenna first.
    int seriesCount() const;
    QString node(int series) const;
    int antenna(int series) const; // 0 main, 1 second
    int sampleCount(int series) const;
    // Oldest first.
    const Sample &sample(int series, int index) const;
    // The index of the first sample at or after msecs (sampleCount when none).
    int firstAtOrAfter(int series, qint64 msecs) const;

    // Changes with every sample added and on clearing.
    quint64 revision() const;
    // The time of the newest sample, 0 when there is none.
    qint64 latestMsecs() const;
    // Memory the samples take (reserved ring storage and node names).
    qint64 bytesHeld() const;

    // The CSV export, RFC 4180, lines ending in "\r\n":
    //   time,node,antenna,rssi,rsrp,snr,power,distance
    // then every sample in time order (series order within one time). The
    // time is ISO 8601 in UTC with milliseconds, "2026-11-24T00:31:59.123Z";
    // the antenna is "Main" or "Second" as in the table; figures are plain
    // integers (dBm, dB, metres). A gap is a line with its time, node and
    // antenna and the figures left empty. Node names containing a comma or
    // a double quote are quoted.
    QString csv() const;

private:
    struct Series {
        QString node;
        int antenna = 0;
        QVector<Sample> ring;
        int first = 0; // index of the oldest sample once the ring is full
    };

    void append(Series &series, const Sample &sample);
    void appendGap(Series &series, qint64 msecs);

    int m_capacity;
    QVector<Series> m_series;
    int m_nodes = 0;
    quint64 m_revision = 0;
    qint64 m_latest = 0;
};
