#pragma once

#include "FileParts.h"

#include <QByteArray>
#include <QSet>

struct DeviceData;

// Which parts of the parameter file the unit has answered in this
// connection, so that a backup holds only what the unit said: a part that
// was never read stays out of the file instead of going in as zeros.
class AnsweredParts
{
public:
    // A new connection: nothing answered yet.
    void clear();

    // An answer the record took (RecordAnswers::decode returned true).
    void note(quint8 code, const QByteArray &payload);

    // The parts whose answers are all in. The CAN frames count once the unit
    // said how many it has and every frame of the record's list answered all
    // five of its reads.
    FileParts::Parts complete(const DeviceData &record) const;

private:
    QSet<quint8> m_codes; // single-answer parts and the serial stream
    bool m_sbus[2][2] = {}; // [port][tuning, fixed values]
    bool m_frameCount = false;
    QSet<int> m_frameAnswers[5]; // frame indices of the header and the four mappings
};
