#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

struct DeviceData;

// Everything of the unit that is neither channels nor keys, on the wire and
// in the parameter file: HID output, throttle hold, idle and low-voltage
// warnings, the data port's baud rate, the SBUS outputs and their control
// switch, and the read-only device view (battery, signal, devices found).
//
// Answers, each of one exact length (another length is ignored):
//   0xC6  8  HID mapping, one input index per HID axis
//   0x17  1  HID mode: 0 game controller, 1 communication mode
//   0xB6  7  throttle hold: 0, switch (255 none), mode 0..2, sign (1 = negative),
//            magnitude, recovery speed, hold speed
//   0xE9  1  idle warning
//   0xEB  2  low-voltage threshold: whole volts, hundredths
//   0x13  4  baud rate, 32 bits little-endian
//   0x19  1  external SBUS input: 0 = external SBUS 2, otherwise SBUS 1
//   0xC4  1  SBUS outputs: 0 only SBUS 1, 1 only SBUS 2, 2 both, 3 none
//   0x30  1  priorities: SBUS 1 in the low nibble, SBUS 2 in the high one
//   0x32  1  protocols: bit 4 SBUS 1 V1.0, bit 5 SBUS 1 V2.0, bit 6 SBUS 2
//            V1.0, bit 7 SBUS 2 V2.0
//   0x34  7  SBUS control: switch (255 none), then two bytes per control set
// The writes send the same layouts (the HID mode, SBUS outputs, priorities
// and protocols as one-byte frames, the SBUS control in the fixed frame).
namespace ComprehensiveCodec
{

constexpr int kHidMappingBytes = 8;
constexpr int kThrottleHoldBytes = 7;
constexpr int kLowVoltageBytes = 2;
constexpr int kBaudBytes = 4;
constexpr int kSbusControlBytes = 7;
constexpr int kChannelReportBytes = 64;
constexpr int kShortBatteryBytes = 3;
constexpr int kLongBatteryBytes = 6;

// Protocol bits of the 0x32/0x33 byte.
constexpr quint8 kSbus1V1 = 0x10;
constexpr quint8 kSbus1V2 = 0x20;
constexpr quint8 kSbus2V1 = 0x40;
constexpr quint8 kSbus2V2 = 0x80;

// The rates the unit's data port offers, as the page lists them.
const QStringList &baudTexts();

// The page's values as its controls show them, or as the record holds them.
// The page builds one from its controls (a switch selector showing "NONE"
// gives 255, the baud rate is the selector's text, the reals are those of
// the spin boxes); a tool without pages takes the record's.
struct Settings {
    int hidMap[8] = {};
    int hidOutput = 0;
    int throttleSwitch = 255; // throttleIndex
    int throttleMode = 0; // 0..2
    double holdValue = 0.0; // -150..150
    double recoverySpeed = 0.0; // seconds
    double holdSpeed = 0.0;
    double freeWarning = 0.0;
    double lowVoltage = 0.0; // volts
    QString baudText;
    int externalInput = 0; // the unit's byte: non-zero = external SBUS 1
    int sbusOutput[2] = {}; // SBUS 1 on, SBUS 2 on
    int sbusPriority[2] = {}; // per port, 0..15
    int sbusVersion = 0; // protocol bits
    int sbusControlSwitch = 255;
    int sbusControl[3][4] = {};

    static Settings fromRecord(const DeviceData &data);
    // A write of the page keeps these in the record: the throttle switch
    // and mode, the SBUS priorities, protocols, control switch and control
    // sets. The other values reach the record only from the unit's answers
    // and from a parameter file.
    void storeWritten(DeviceData &data) const;
};

// Decoders of the answers; each fills the record and returns true, or
// returns false and leaves the record untouched.
bool decodeHidMapping(const QByteArray &payload, DeviceData &data);
bool decodeHidOutput(const QByteArray &payload, DeviceData &data);
// Also refused when byte 0 is not 0.
bool decodeThrottleHold(const QByteArray &payload, DeviceData &data);
bool decodeIdleWarning(const QByteArray &payload, DeviceData &data);
bool decodeLowVoltage(const QByteArray &payload, DeviceData &data);
// Only a rate the page lists is taken.
bool decodeBaud(const QByteArray &payload, DeviceData &data);
bool decodeExternalInput(const QByteArray &payload, DeviceData &data);
// Only the states 0..3.
bool decodeSbusOutput(const QByteArray &payload, DeviceData &data);
bool decodeSbusPriority(const QByteArray &payload, DeviceData &data);
bool decodeSbusProtocol(const QByteArray &payload, DeviceData &data);
bool decodeSbusControl(const QByteArray &payload, DeviceData &data);

// The throttle bar's value from a settings-mode channel report (SBUS 1 then
// SBUS 2, 64 bytes): SBUS 1 channel 3 on the -150..150 scale.
bool throttleFromReport(const QByteArray &payload, int *value);

// The battery answer: 3 bytes (volts, hundredths, percent) or 6 bytes
// (the same, then the signal level, its sign byte and the signal percent).
struct DeviceStatus {
    QString battery;
    int batteryPercent = 0;
    bool hasSignal = false;
    QString signal;
    int signalPercent = 0;
};
bool decodeBattery(const QByteArray &payload, DeviceStatus *status);

// One device found by a search: after two leading bytes, its name up to the
// first "\r\n", then its detail. False when no name is left.
bool decodeSearchAnswer(const QByteArray &payload, QString *name, QString *detail);

// Recovery and hold speeds travel as one byte in two ranges: 0..20 are
// tenths of a second (0.0 to 2.0 s), 21 and up whole seconds from 3 s.
double speedFromByte(int byte);
int speedByte(double seconds);
// The longest speed a byte holds (255: 237 s).
double maxSpeed();
// What the unit keeps of a speed: its byte read back (2.5 s keeps 2.0 s).
double storedSpeed(double seconds);
// The speed the unit can keep that an editor moving from `from` to `to`
// lands on: upwards the next one at or above `to`, downwards the next one at
// or below it (a step up from 2.0 s is 3 s, a step down from 3 s is 2.0 s).
double speedToward(double from, double to);

// The eleven write payloads in the order of the write: 0xC7, 0x18, 0xB7,
// 0xE8, 0xEC, 0x14, 0x1A, 0xC5, 0x31, 0x33, 0x35.
QList<QByteArray> payloads(const Settings &s);

// The fifteen lines <hidMap> .. <sbusControl-2>.
QString fileFragment(const Settings &s);

} // namespace ComprehensiveCodec
