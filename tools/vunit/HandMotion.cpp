#include "HandMotion.h"

#include "Rng.h"

#include <cmath>

namespace Vunit
{

namespace
{

constexpr double kTwoPi = 6.283185307179586;
constexpr int kCentre = 600;
constexpr int kFull = 1200;
// A three-way switch goes down, to the middle, up and back to the middle.
constexpr quint16 kSwitchSteps[] = { 0, 600, 1200, 600 };

quint16 clampRaw(double v)
{
    const long r = std::lround(v);
    return quint16(r < 0 ? 0 : (r > kFull ? kFull : r));
}

} // namespace

HandMotion::HandMotion(const ModelSpec &layout, quint64 seed)
{
    Rng rng(seed ^ 0x51A7C0DEull);
    for (InputKind kind : layout.controls) {
        Track t;
        t.kind = kind;
        t.phase1 = rng.unit() * kTwoPi;
        t.phase2 = rng.unit() * kTwoPi;
        switch (kind) {
        case InputKind::StickAxis:
            t.period1 = rng.range(2600, 6400);
            t.period2 = rng.range(900, 1900);
            t.amplitude = 0.85 + 0.15 * rng.unit();
            break;
        case InputKind::Twist:
            t.period1 = rng.range(4000, 7000);
            t.period2 = rng.range(1500, 2500);
            t.amplitude = 0.6;
            break;
        case InputKind::Knob:
            t.period1 = rng.range(9000, 15000);
            break;
        case InputKind::Dial:
            t.period1 = rng.range(5000, 9000);
            break;
        case InputKind::Switch:
            t.period1 = rng.range(1500, 4000);
            t.offset = rng.range(0, 4000);
            break;
        }
        m_tracks.append(t);
    }
    for (int w = 0; w < layout.keyWordOffsets.size(); ++w) {
        QVector<Key> keys;
        for (int k = 0; k < layout.keysPerWord; ++k) {
            Key key;
            key.period = rng.range(2500, 9000);
            key.held = rng.range(200, 600);
            key.offset = rng.range(0, 9000);
            keys.append(key);
        }
        m_keys.append(keys);
    }
}

quint16 HandMotion::value(const Track &t, qint64 tMs)
{
    const double x = double(tMs);
    switch (t.kind) {
    case InputKind::StickAxis:
    case InputKind::Twist: {
        // A slow sweep with a quicker wobble on top, never quite in step.
        const double s = 0.8 * std::sin(kTwoPi * x / t.period1 + t.phase1)
            + 0.2 * std::sin(kTwoPi * x / t.period2 + t.phase2);
        return clampRaw(kCentre + kCentre * t.amplitude * s);
    }
    case InputKind::Knob:
    case InputKind::Dial:
        return clampRaw(kCentre - kCentre * std::cos(kTwoPi * x / t.period1 + t.phase1));
    case InputKind::Switch: {
        const qint64 step = (tMs + t.offset) / qint64(t.period1);
        return kSwitchSteps[step % 4];
    }
    }
    return kCentre;
}

QVector<quint16> HandMotion::controls(qint64 tMs) const
{
    if (tMs < 0)
        tMs = 0;
    QVector<quint16> values;
    values.reserve(m_tracks.size());
    for (const Track &t : m_tracks)
        values.append(value(t, tMs));
    return values;
}

QVector<quint16> HandMotion::keyWords(qint64 tMs) const
{
    if (tMs < 0)
        tMs = 0;
    QVector<quint16> words;
    for (const QVector<Key> &keys : m_keys) {
        quint16 word = 0xFFFF; // all released
        for (int k = 0; k < keys.size(); ++k) {
            const Key &key = keys.at(k);
            if ((tMs + key.offset) % key.period < key.held)
                word &= quint16(~(1u << k));
        }
        words.append(word);
    }
    return words;
}

} // namespace Vunit
