#pragma once

#include "Rng.h"

#include <QByteArray>
#include <QList>
#include <QVector>

namespace Vunit
{

struct FaultOptions {
    bool noise = false; // random bytes between frames
    bool split = false; // frames written in pieces, a few ms apart
    int answerDelayMs = 0;
    quint64 seed = 1;
};

// One write to the line, made gapMs after the write before it.
struct Chunk {
    QByteArray bytes;
    int gapMs = 0;
};

// Turns a frame into what a poor line delivers. The noise never contains a
// complete frame of a code the configurator takes: a 0xFA in it is followed by
// a code outside the configurator's range and by a short, wrongly ended body,
// so the configurator's resynchronisation is exercised without being fed
// answers that were never sent.
class LineFaults
{
public:
    explicit LineFaults(const FaultOptions &options);

    QVector<Chunk> shape(const QByteArray &frame);
    QByteArray noise();

private:
    quint8 fillerByte();

    FaultOptions m_options;
    Rng m_rng;
};

// Frames waiting for the line. A frame is written as a whole (its chunks in
// order, nothing in between); among the frames not yet begun the earliest due
// goes first, so a delayed answer does not hold up the channel reports.
class OutputQueue
{
public:
    void push(const QVector<Chunk> &chunks, qint64 dueMs);
    // The bytes to write at nowMs; the queue moves past them.
    QByteArray takeDue(qint64 nowMs);
    // When takeDue has something next; -1 when the queue is empty.
    qint64 nextDue() const;
    void clear() { m_items.clear(); }
    bool isEmpty() const { return m_items.isEmpty(); }

private:
    struct Item {
        QVector<Chunk> chunks;
        qint64 due = 0;
        int next = 0; // next chunk to write
        qint64 nextAt = 0; // when it may be written (once begun)
    };
    int pickNext() const;

    QList<Item> m_items;
};

} // namespace Vunit
