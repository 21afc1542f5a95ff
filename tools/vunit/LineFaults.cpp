#include "LineFaults.h"

#include "SerialFrame.h"

namespace Vunit
{

namespace
{
// Codes the configurator skips like noise: as signed bytes outside -93..57.
constexpr int kFirstForeignCode = 0x3A;
constexpr int kLastForeignCode = 0xA2;
} // namespace

LineFaults::LineFaults(const FaultOptions &options)
    : m_options(options)
    , m_rng(options.seed ^ 0xFA17u)
{
}

quint8 LineFaults::fillerByte()
{
    for (;;) {
        const quint8 b = quint8(m_rng.range(0, 255));
        if (b != SerialFrame::Header && b != SerialFrame::Trailer)
            return b;
    }
}

QByteArray LineFaults::noise()
{
    QByteArray out;
    const int count = m_rng.range(1, 10);
    for (int i = 0; i < count; ++i) {
        if (m_rng.range(0, 3) == 0) {
            // A false header: foreign code, short length, wrong trailer.
            const int length = m_rng.range(0, 3);
            out.append(char(SerialFrame::Header));
            out.append(char(m_rng.range(kFirstForeignCode, kLastForeignCode)));
            out.append(char(length));
            out.append(char(0));
            for (int k = 0; k <= length; ++k)
                out.append(char(fillerByte()));
        } else {
            out.append(char(fillerByte()));
        }
    }
    return out;
}

QVector<Chunk> LineFaults::shape(const QByteArray &frame)
{
    QByteArray bytes = frame;
    if (m_options.noise && m_rng.range(0, 1) == 0)
        bytes.prepend(noise());
    if (!m_options.split || bytes.size() < 2)
        return { Chunk { bytes, 0 } };

    QVector<Chunk> chunks;
    int from = 0;
    const int cuts = m_rng.range(1, 2);
    for (int c = 0; c < cuts && bytes.size() - from > 1; ++c) {
        const int at = m_rng.range(from + 1, bytes.size() - 1);
        chunks.append(Chunk { bytes.mid(from, at - from), chunks.isEmpty() ? 0 : m_rng.range(1, 6) });
        from = at;
    }
    chunks.append(Chunk { bytes.mid(from), m_rng.range(1, 6) });
    return chunks;
}

void OutputQueue::push(const QVector<Chunk> &chunks, qint64 dueMs)
{
    if (chunks.isEmpty())
        return;
    Item item;
    item.chunks = chunks;
    item.due = dueMs;
    m_items.append(item);
}

int OutputQueue::pickNext() const
{
    if (m_items.isEmpty())
        return -1;
    if (m_items.first().next > 0)
        return 0; // a frame in progress is finished first
    int best = 0;
    for (int i = 1; i < m_items.size(); ++i) {
        if (m_items.at(i).due < m_items.at(best).due)
            best = i;
    }
    return best;
}

QByteArray OutputQueue::takeDue(qint64 nowMs)
{
    QByteArray out;
    for (;;) {
        const int i = pickNext();
        if (i < 0)
            break;
        Item &item = m_items[i];
        const qint64 at = item.next == 0 ? item.due : item.nextAt;
        if (at > nowMs)
            break;
        if (item.next == 0 && i != 0)
            m_items.move(i, 0); // begun: it stays in front until written
        Item &front = m_items.first();
        out += front.chunks.at(front.next).bytes;
        ++front.next;
        if (front.next >= front.chunks.size()) {
            m_items.removeFirst();
        } else {
            front.nextAt = nowMs + front.chunks.at(front.next).gapMs;
            if (front.chunks.at(front.next).gapMs > 0)
                break;
        }
    }
    return out;
}

qint64 OutputQueue::nextDue() const
{
    const int i = pickNext();
    if (i < 0)
        return -1;
    const Item &item = m_items.at(i);
    return item.next == 0 ? item.due : item.nextAt;
}

} // namespace Vunit
