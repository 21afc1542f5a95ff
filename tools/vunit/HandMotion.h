#pragma once

#include "UnitSpec.h"

#include <QVector>

namespace Vunit
{

// The inputs of a handset in somebody's hands, as a function of time: sticks
// sweep smoothly, each axis at its own pace, switches click through their
// three positions, knobs and dials turn slowly, keys are pressed now and then.
// Raw values 0..1200, centre 600.
class HandMotion
{
public:
    HandMotion(const ModelSpec &layout, quint64 seed);

    QVector<quint16> controls(qint64 tMs) const;
    // One word per key word of the model; a clear bit is a pressed key.
    QVector<quint16> keyWords(qint64 tMs) const;

private:
    struct Track {
        InputKind kind;
        double period1 = 1; // ms
        double period2 = 1;
        double phase1 = 0;
        double phase2 = 0;
        double amplitude = 1;
        qint64 offset = 0;
    };
    struct Key {
        qint64 period = 1;
        qint64 held = 0;
        qint64 offset = 0;
    };

    static quint16 value(const Track &track, qint64 tMs);

    QVector<Track> m_tracks;
    QVector<QVector<Key>> m_keys; // per key word
};

} // namespace Vunit
