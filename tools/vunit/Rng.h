#pragma once

#include <QtGlobal>

namespace Vunit
{

// A small deterministic generator (splitmix64): the same seed gives the same
// motion and the same fault pattern on every machine.
class Rng
{
public:
    explicit Rng(quint64 seed = 0)
        : m_state(seed)
    {
    }

    quint64 next()
    {
        quint64 z = (m_state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }

    // Uniform in lo..hi, both included.
    int range(int lo, int hi) { return lo + int(next() % quint64(hi - lo + 1)); }

    // Uniform in [0, 1).
    double unit() { return double(next() >> 11) * (1.0 / 9007199254740992.0); }

private:
    quint64 m_state;
};

} // namespace Vunit
