#pragma once

#include <QByteArray>
#include <QPoint>
#include <QVector>

// The channel data report the unit streams while the upload is on (answer
// 0xA5 without its status byte): K bytes of the model's control block, then
// the 16 channels of SBUS 1 and the 16 of SBUS 2. Every value is an unsigned
// 16-bit little-endian word; raw values run 0..1200 with 600 as the centre.
struct ChannelReport {
    QVector<quint16> controlWords; // bytes 0 .. K - 3 (Larch: K - 5), in report order
    quint16 keyWords[2] = { 0xFFFF, 0xFFFF }; // [0] at K - 2; [1] at K - 4 on units with two
    quint16 sbus[2][16] = {};

    // Nothing when the payload is not exactly K + 64 bytes long.
    static bool decode(const QByteArray &payload, int k, int keyWordCount, ChannelReport &out);
};

// Scaling of the raw values onto the drawn controls (integer arithmetic,
// truncating toward zero).
namespace ReportScale {
constexpr int kCentre = 600;

// SBUS bar: -150..150.
constexpr int bar(int raw) { return (raw - kCentre) * 300 / 1200; }
// Stick: the first word of a pair drives the vertical axis, the second the
// horizontal one; -30..30 each.
inline QPoint stick(int first, int second)
{
    return QPoint((second - kCentre) * 60 / 1200, (first - kCentre) * 60 / 1200);
}
constexpr int knob(int raw) { return raw * 100 / 1200; }
constexpr int leftDial(int raw) { return raw * (-90) / 1200; }
constexpr int rightDial(int raw) { return raw * 90 / 1200; }
// A three-way switch reports exactly 600 in its middle position.
constexpr int switchIndex(int raw) { return raw < kCentre ? 0 : (raw == kCentre ? 1 : 2); }
// A clear key bit means the key is pressed: the lamp is lit.
constexpr int lamp(quint16 keyWord, int bit) { return (keyWord >> bit) & 1 ? 0 : 1; }
inline double twist(int raw) { return (raw - kCentre) / 600.0; }
} // namespace ReportScale
