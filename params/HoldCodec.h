#pragma once

#include <QByteArray>
#include <QString>

struct DeviceData;

// Channel hold of both SBUS ports on the wire and in the parameter file.
//
// Per port a block of 8 bytes, port 1's block first (write 0xB5 and answer
// 0xB4 alike, 16 bytes in all):
//   0      port, 0 or 1
//   1      hold switch: the low byte of sbusHoldSwitch, 255 = no switch
//   2, 3   held channels of position 0 as a 16-bit mask, low byte first
//   4, 5   position 1
//   6, 7   position 2
// Bit c of a mask is channel c+1.
namespace HoldCodec
{

constexpr int kPortBytes = 8;
constexpr int kPayloadBytes = 2 * kPortBytes;

// Fills sbusHoldSwitch and the held channels of both ports; false (and the
// record untouched) for an answer of another length or with port bytes
// other than 0 and 1 in that order.
bool decode(const QByteArray &payload, DeviceData &data);

// The write payload of both ports from the record.
QByteArray payload(const DeviceData &data);

// <sbusHoldSwitch>, then sbus1-0, sbus2-0, sbus1-1, sbus2-1, sbus1-2, sbus2-2.
QString fileFragment(const DeviceData &data);

} // namespace HoldCodec
