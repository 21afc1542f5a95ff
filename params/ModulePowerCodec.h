#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

struct DeviceData;

// The radio module's power settings on the wire and in the parameter file.
//
// Two groups of two bytes each, answered and written alike:
//   power     (read 0x36, answer 74, write 0x37): switch state 0 = off,
//             1 = on; then "ROM", non-zero = on
//   physical  (read 0x38, answer 76, write 0x39): the unit's switch that
//             powers the module, 255 = none; then a value 1..10
namespace ModulePowerCodec
{

constexpr int kPairBytes = 2;
constexpr int kNoSwitch = 255;

// Fill modulePowerState / modulePhysicalCtl from an answer of exactly two
// bytes; false (and the record untouched) for any other length.
bool decodePower(const QByteArray &payload, DeviceData &data);
bool decodePhysical(const QByteArray &payload, DeviceData &data);

// The two write payloads, power pair first.
QList<QByteArray> payloads(const DeviceData &data);

// Selector entry 0 is "no switch" (255 on the wire); switch n is entry n + 1.
int selectorIndex(int stored);
int storedSwitch(int selectorIndex);

// <modulePowerState>a,b</modulePowerState> then <modulePhysicalCtl>a,b</modulePhysicalCtl>.
QString fileFragment(const DeviceData &data);

} // namespace ModulePowerCodec
