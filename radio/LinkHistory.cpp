#include "LinkHistory.h"

#include <QDateTime>

#include <algorithm>

namespace
{

qint16 clamp16(int v)
{
    return qint16(qBound(-32768, v, 32767));
}

QString csvField(const QString &text)
{
    if (!text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"'))
        && !text.contains(QLatin1Char('\r')) && !text.contains(QLatin1Char('\n')))
        return text;
    QString quoted = text;
    quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

} // namespace

int LinkHistory::Sample::value(Figure figure) const
{
    switch (figure) {
    case Figure::Rssi:
        return rssi;
    case Figure::Rsrp:
        return rsrp;
    case Figure::Snr:
        return snr;
    case Figure::Power:
        return power;
    case Figure::Distance:
        break;
    }
    return distance;
}

LinkHistory::LinkHistory(int capacity)
    : m_capacity(qMax(1, capacity))
{
}

void LinkHistory::append(Series &series, const Sample &sample)
{
    if (series.ring.size() < m_capacity) {
        series.ring.append(sample);
        return;
    }
    series.ring[series.first] = sample;
    series.first = (series.first + 1) % m_capacity;
}

void LinkHistory::appendGap(Series &series, qint64 msecs)
{
    const int count = series.ring.size();
    if (count == 0 || series.ring.at((series.first + count - 1) % count).gap)
        return;
    Sample gap;
    gap.msecs = msecs;
    gap.gap = true;
    append(series, gap);
}

void LinkHistory::addReport(qint64 msecs, const QVector<LinkReport::LinkRecord> &records)
{
    QVector<bool> seen(m_series.size(), false);
    for (const LinkReport::LinkRecord &record : records) {
        int at = 0;
        while (at < m_series.size() && m_series.at(at).node != record.node)
            at += 2;
        if (at == m_series.size()) {
            if (m_nodes == kMaxNodes)
                continue;
            ++m_nodes;
            m_series.append({ record.node, 0, {}, 0 });
            m_series.append({ record.node, 1, {}, 0 });
            seen.append(false);
            seen.append(false);
        }
        if (seen.at(at))
            continue;
        for (int a = 0; a < 2; ++a) {
            const LinkReport::AntennaFigures &f = a == 0 ? record.main : record.second;
            Sample s;
            s.msecs = msecs;
            s.distance = record.distance;
            s.rssi = clamp16(f.rssi);
            s.rsrp = clamp16(f.rsrp);
            s.snr = clamp16(f.snr);
            s.power = clamp16(record.power);
            append(m_series[at + a], s);
            seen[at + a] = true;
        }
    }
    // A node the report leaves out is out of reach at this time.
    for (int i = 0; i < m_series.size(); ++i) {
        if (!seen.at(i))
            appendGap(m_series[i], msecs);
    }
    m_latest = msecs;
    ++m_revision;
}

void LinkHistory::addGap(qint64 msecs)
{
    for (Series &series : m_series)
        appendGap(series, msecs);
    m_latest = qMax(m_latest, msecs);
    ++m_revision;
}

void LinkHistory::clear()
{
    m_series.clear();
    m_nodes = 0;
    m_latest = 0;
    ++m_revision;
}

int LinkHistory::seriesCount() const
{
    return m_series.size();
}

QString LinkHistory::node(int series) const
{
    return m_series.at(series).node;
}

int LinkHistory::antenna(int series) const
{
    return m_series.at(series).antenna;
}

int LinkHistory::sampleCount(int series) const
{
    return m_series.at(series).ring.size();
}

const LinkHistory::Sample &LinkHistory::sample(int series, int index) const
{
    const Series &s = m_series.at(series);
    return s.ring.at((s.first + index) % s.ring.size());
}

int LinkHistory::firstAtOrAfter(int series, qint64 msecs) const
{
    int low = 0;
    int high = sampleCount(series);
    while (low < high) {
        const int mid = low + (high - low) / 2;
        if (sample(series, mid).msecs < msecs)
            low = mid + 1;
        else
            high = mid;
    }
    return low;
}

quint64 LinkHistory::revision() const
{
    return m_revision;
}

qint64 LinkHistory::latestMsecs() const
{
    return m_latest;
}

qint64 LinkHistory::bytesHeld() const
{
    qint64 bytes = qint64(m_series.capacity()) * qint64(sizeof(Series));
    for (const Series &s : m_series)
        bytes += qint64(s.ring.capacity()) * qint64(sizeof(Sample)) + s.node.capacity() * 2;
    return bytes;
}

QString LinkHistory::csv() const
{
    QString out = QStringLiteral("time,node,antenna,rssi,rsrp,snr,power,distance\r\n");
    // Every series is in time order: merge them, the lower series first on
    // equal times, so that one report's lines stay together.
    QVector<int> next(m_series.size(), 0);
    QVector<QString> names;
    for (const Series &s : m_series)
        names.append(
            csvField(s.node) + (s.antenna == 0 ? QLatin1String(",Main,") : QLatin1String(",Second,")));
    for (;;) {
        int pick = -1;
        for (int i = 0; i < m_series.size(); ++i) {
            if (next.at(i) < sampleCount(i)
                && (pick < 0 || sample(i, next.at(i)).msecs < sample(pick, next.at(pick)).msecs))
                pick = i;
        }
        if (pick < 0)
            break;
        const Sample &s = sample(pick, next[pick]++);
        out += QDateTime::fromMSecsSinceEpoch(s.msecs, Qt::UTC).toString(Qt::ISODateWithMs);
        out += QLatin1Char(',') + names.at(pick);
        if (s.gap)
            out += QLatin1String(",,,,\r\n");
        else
            out += QStringLiteral("%1,%2,%3,%4,%5\r\n")
                       .arg(s.rssi)
                       .arg(s.rsrp)
                       .arg(s.snr)
                       .arg(s.power)
                       .arg(s.distance);
    }
    return out;
}
