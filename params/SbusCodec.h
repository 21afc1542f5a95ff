#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

struct DeviceData;

// The SBUS channel settings of one port on the wire and in the parameter file.
//
// Tuning payload (answer 0xA3 and write 0xA4), 85 bytes:
//   0        port, 0 or 1
//   1..16    fineTuning of channels 1..16, sign and magnitude
//   17..32   leftTrip
//   33..48   rightTrip
//   49..64   safeProtectionValue as a magnitude, 255 = failsafe off
//   65, 66   safeProtectionState: bit k of 65 is channel k+1, of 66 channel k+9
//   67, 68   phase, the same way (bit set = reversed)
//   69..84   channelMap, 254 = "NONE"
// Fixed-value payload (answer 0xA7 and write 0xA8), 17 bytes: the port, then
// noneValue of channels 1..16.
namespace SbusCodec
{

constexpr int kTuningBytes = 85;
constexpr int kNoneBytes = 17;

// Fill the record's fields of the port named in byte 0 and return that port;
// -1 (and the record untouched) when the payload has another length or names
// no port.
int decodeTuning(const QByteArray &payload, DeviceData &data);
int decodeNone(const QByteArray &payload, DeviceData &data);

// The tuning payload of a port from the record. The failsafe byte is the
// magnitude whether the record holds it signed (after the page collected its
// controls) or as a magnitude (after an answer); the sign travels in the
// state bits either way.
QByteArray tuningPayload(const DeviceData &data, int port);

// The fixed values as the page sends them: sign and magnitude.
QByteArray nonePayload(const DeviceData &data, int port);

// The fixed values as the write-all sends them: the low byte of each value as
// it stands in the record, without conversion. A value loaded from a
// parameter file has been converted on reading already; keep this asymmetry
// between the two builders.
QByteArray nonePayloadFromRecord(const DeviceData &data, int port);

// The write-all's four payloads: tuning and fixed values of port 1, then of
// port 2.
QList<QByteArray> payloadsFromRecord(const DeviceData &data);

// <sbus1Default> and <sbus2Default> with their eight children each.
QString fileFragment(const DeviceData &data);

} // namespace SbusCodec
