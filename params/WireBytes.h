#pragma once

#include <QByteArray>
#include <QtGlobal>

// How values of the record travel in the unit's payloads.
namespace WireBytes
{

// Signed per-channel values (trims, fixed values) travel as one byte of sign
// and magnitude: bit 7 set means negative, bits 0..6 hold the magnitude, so
// -5 is 0x85. A magnitude beyond 127 cannot travel and is held at 127.
inline quint8 toSignMagnitude(int value)
{
    const int bounded = qBound(-127, value, 127);
    return quint8(bounded < 0 ? (0x80 | -bounded) : bounded);
}

inline int fromSignMagnitude(quint8 byte)
{
    const int magnitude = byte & 0x7F;
    return (byte & 0x80) ? -magnitude : magnitude;
}

// An unsigned one-byte field: values outside 0..255 never reach the wire
// wrapped; they are held at the nearest end.
inline char byteOf(int value)
{
    return char(quint8(qBound(0, value, 255)));
}

inline quint8 at(const QByteArray &bytes, int index)
{
    return quint8(bytes.at(index));
}

// Bit k of the 16-bit mask is set when flags[k] is non-zero; the mask goes
// out low byte first.
inline void appendMask16(QByteArray &out, const int *flags, int count)
{
    quint16 mask = 0;
    for (int k = 0; k < count && k < 16; ++k) {
        if (flags[k] != 0)
            mask |= quint16(1u << k);
    }
    out.append(char(mask & 0xFF));
    out.append(char(mask >> 8));
}

inline quint16 word16(const QByteArray &bytes, int index)
{
    return quint16(at(bytes, index) | (at(bytes, index + 1) << 8));
}

} // namespace WireBytes
