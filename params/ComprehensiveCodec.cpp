#include "ComprehensiveCodec.h"

#include "DeviceData.h"
#include "FileFragments.h"
#include "WireBytes.h"

#include <algorithm>
#include <cmath>

using namespace WireBytes;

namespace
{

constexpr int kSpeedTenthsTop = 20; // byte 20 = 2.0 s, the last tenth
constexpr int kSpeedSecondsBase = 18; // byte = whole seconds + 18 from 3 s on
constexpr int kThrottleWordAt = 4; // SBUS 1 channel 3 in the channel report
constexpr int kRawCentre = 600;
constexpr int kBarSpan = 150;
// Values of the spin boxes are doubles; 7.05 is a little below 7.05, and
// truncating 100 times it would send 7.04. The unit's truncation is meant
// on the value shown, so the product gets this much room first.
constexpr double kShownValueRoom = 1e-6;

bool oneByte(const QByteArray &payload)
{
    return payload.size() == 1;
}

int truncated(double value)
{
    return int(value + (value < 0 ? -kShownValueRoom : kShownValueRoom));
}

QByteArray single(int value)
{
    return QByteArray(1, byteOf(value));
}

QByteArray throttleHoldPayload(const ComprehensiveCodec::Settings &s)
{
    QByteArray out(1, '\0');
    out.append(byteOf(s.throttleSwitch));
    out.append(byteOf(s.throttleMode));
    out.append(char(s.holdValue < 0 ? 1 : 0));
    out.append(byteOf(truncated(qAbs(s.holdValue))));
    out.append(byteOf(ComprehensiveCodec::speedByte(s.recoverySpeed)));
    out.append(byteOf(ComprehensiveCodec::speedByte(s.holdSpeed)));
    return out;
}

QByteArray lowVoltagePayload(double volts)
{
    const int hundredths = qBound(0, truncated(volts * 100.0), 255 * 100 + 99);
    QByteArray out;
    out.append(byteOf(hundredths / 100));
    out.append(byteOf(hundredths % 100));
    return out;
}

QByteArray baudPayload(const QString &text)
{
    bool ok = false;
    const quint32 rate = text.trimmed().toUInt(&ok);
    const quint32 value = ok ? rate : 0;
    QByteArray out;
    for (int shift = 0; shift < 32; shift += 8)
        out.append(char((value >> shift) & 0xFF));
    return out;
}

int sbusOutputByte(const int (&on)[2])
{
    if (on[0] && on[1])
        return 2;
    if (on[0])
        return 0;
    return on[1] ? 1 : 3;
}

// SBUS 1's priority in the low nibble, SBUS 2's in the high one.
quint8 priorityByte(const int (&priority)[2])
{
    return quint8((priority[0] & 0x0F) | (priority[1] & 0x0F) << 4);
}

QByteArray sbusControlPayload(const ComprehensiveCodec::Settings &s)
{
    QByteArray out(1, byteOf(s.sbusControlSwitch));
    for (const auto &set : s.sbusControl) {
        out.append(char((set[0] != 0 ? 0x01 : 0) + (set[1] != 0 ? 0x10 : 0)));
        out.append(char((set[2] != 0 ? 0x01 : 0) + (set[3] != 0 ? 0x10 : 0)));
    }
    return out;
}

} // namespace

namespace ComprehensiveCodec
{

const QStringList &baudTexts()
{
    static const QStringList texts { QStringLiteral("9600"), QStringLiteral("14400"), QStringLiteral("19200"),
        QStringLiteral("38400"), QStringLiteral("56000"), QStringLiteral("57600"), QStringLiteral("115200"),
        QStringLiteral("230400") };
    return texts;
}

Settings Settings::fromRecord(const DeviceData &data)
{
    Settings s;
    std::copy(data.hidMap, data.hidMap + kHidAxes, s.hidMap);
    s.hidOutput = data.hidOutput;
    s.throttleSwitch = data.throttleIndex;
    s.throttleMode = data.throttleData;
    s.holdValue = data.throttleDataValues[0];
    s.recoverySpeed = data.throttleDataValues[1];
    s.holdSpeed = data.throttleDataValues[2];
    s.freeWarning = data.freeWarning;
    s.lowVoltage = data.lowVoltage;
    s.baudText = QString::number(data.baud);
    s.externalInput = data.externalInput;
    std::copy(data.sbusOutput, data.sbusOutput + 2, s.sbusOutput);
    s.sbusPriority[0] = data.sbusPriority & 0x0F;
    s.sbusPriority[1] = data.sbusPriority >> 4;
    s.sbusVersion = data.sbusVersion;
    s.sbusControlSwitch = data.sbusControlSwitch;
    std::copy(&data.sbusControl[0][0], &data.sbusControl[0][0] + kSbusControlSets * 4, &s.sbusControl[0][0]);
    return s;
}

void Settings::storeWritten(DeviceData &data) const
{
    data.throttleIndex = throttleSwitch;
    data.throttleData = throttleMode;
    data.sbusPriority = priorityByte(sbusPriority);
    data.sbusVersion = quint8(sbusVersion & 0xFF);
    data.sbusControlSwitch = sbusControlSwitch;
    std::copy(&sbusControl[0][0], &sbusControl[0][0] + kSbusControlSets * 4, &data.sbusControl[0][0]);
}

bool decodeHidMapping(const QByteArray &payload, DeviceData &data)
{
    if (payload.size() != kHidMappingBytes)
        return false;
    for (int i = 0; i < kHidAxes; ++i)
        data.hidMap[i] = at(payload, i);
    return true;
}

bool decodeHidOutput(const QByteArray &payload, DeviceData &data)
{
    if (!oneByte(payload))
        return false;
    data.hidOutput = at(payload, 0);
    return true;
}

bool decodeThrottleHold(const QByteArray &payload, DeviceData &data)
{
    if (payload.size() != kThrottleHoldBytes || at(payload, 0) != 0)
        return false;
    data.throttleIndex = at(payload, 1);
    data.throttleData = at(payload, 2);
    const int magnitude = at(payload, 4);
    data.throttleDataValues[0] = at(payload, 3) == 1 ? -magnitude : magnitude;
    data.throttleDataValues[1] = speedFromByte(at(payload, 5));
    data.throttleDataValues[2] = speedFromByte(at(payload, 6));
    return true;
}

bool decodeIdleWarning(const QByteArray &payload, DeviceData &data)
{
    if (!oneByte(payload))
        return false;
    data.freeWarning = at(payload, 0);
    return true;
}

bool decodeLowVoltage(const QByteArray &payload, DeviceData &data)
{
    if (payload.size() != kLowVoltageBytes)
        return false;
    data.lowVoltage = at(payload, 0) + at(payload, 1) / 100.0;
    return true;
}

bool decodeBaud(const QByteArray &payload, DeviceData &data)
{
    if (payload.size() != kBaudBytes)
        return false;
    const quint32 rate = quint32(at(payload, 0)) | quint32(at(payload, 1)) << 8
        | quint32(at(payload, 2)) << 16 | quint32(at(payload, 3)) << 24;
    if (!baudTexts().contains(QString::number(rate)))
        return false;
    data.baud = int(rate);
    return true;
}

bool decodeExternalInput(const QByteArray &payload, DeviceData &data)
{
    if (!oneByte(payload))
        return false;
    data.externalInput = at(payload, 0);
    return true;
}

bool decodeSbusOutput(const QByteArray &payload, DeviceData &data)
{
    if (!oneByte(payload))
        return false;
    static const int states[4][2] = { { 1, 0 }, { 0, 1 }, { 1, 1 }, { 0, 0 } };
    const int state = at(payload, 0);
    if (state > 3)
        return false;
    data.sbusOutput[0] = states[state][0];
    data.sbusOutput[1] = states[state][1];
    return true;
}

bool decodeSbusPriority(const QByteArray &payload, DeviceData &data)
{
    if (!oneByte(payload))
        return false;
    data.sbusPriority = at(payload, 0);
    return true;
}

bool decodeSbusProtocol(const QByteArray &payload, DeviceData &data)
{
    if (!oneByte(payload))
        return false;
    data.sbusVersion = at(payload, 0) & 0xF0;
    return true;
}

bool decodeSbusControl(const QByteArray &payload, DeviceData &data)
{
    if (payload.size() != kSbusControlBytes)
        return false;
    data.sbusControlSwitch = at(payload, 0);
    for (int g = 0; g < kSbusControlSets; ++g) {
        for (int half = 0; half < 2; ++half) {
            const quint8 byte = at(payload, 2 * g + 1 + half);
            // The unit's own reading: the high nibble times 16, so a set
            // flag there reads as 16, not 1. Only zero or not counts.
            data.sbusControl[g][2 * half] = byte & 0x0F;
            data.sbusControl[g][2 * half + 1] = (byte >> 4) * 16;
        }
    }
    return true;
}

bool throttleFromReport(const QByteArray &payload, int *value)
{
    if (payload.size() != kChannelReportBytes)
        return false;
    *value = (int(word16(payload, kThrottleWordAt)) - kRawCentre) * kBarSpan / kRawCentre;
    return true;
}

bool decodeBattery(const QByteArray &payload, DeviceStatus *status)
{
    if (payload.size() != kShortBatteryBytes && payload.size() != kLongBatteryBytes)
        return false;
    const int volts = at(payload, 0);
    const int hundredths = at(payload, 1);
    status->batteryPercent = at(payload, 2);
    if (payload.size() == kShortBatteryBytes) {
        // Integer arithmetic: the hundredths only count from 100 up, so the
        // short answer shows whole volts.
        status->battery
            = QStringLiteral("%1 V     %2%").arg(volts + hundredths / 100).arg(status->batteryPercent);
        status->hasSignal = false;
        return true;
    }
    status->battery
        = (hundredths < 10 ? QStringLiteral("%1.0%2 V     %3%") : QStringLiteral("%1.%2 V     %3%"))
              .arg(volts)
              .arg(hundredths)
              .arg(status->batteryPercent);
    const int level = at(payload, 4) == 0x80 ? -int(at(payload, 3)) : int(at(payload, 3));
    status->hasSignal = true;
    status->signalPercent = at(payload, 5);
    status->signal = QStringLiteral("%1 dbm     %2%").arg(level).arg(status->signalPercent);
    return true;
}

bool decodeSearchAnswer(const QByteArray &payload, QString *name, QString *detail)
{
    const QString text = QString::fromUtf8(payload.mid(2));
    const int end = text.indexOf(QLatin1String("\r\n"));
    *name = end < 0 ? text : text.left(end);
    *detail = end < 0 ? QString() : text.mid(end + 2);
    return !name->isEmpty();
}

double speedFromByte(int byte)
{
    return byte <= kSpeedTenthsTop ? byte / 10.0 : double(byte - kSpeedSecondsBase);
}

int speedByte(double seconds)
{
    if (seconds < 2.0)
        return truncated(seconds * 10.0);
    return truncated(seconds) + kSpeedSecondsBase;
}

double maxSpeed()
{
    return speedFromByte(255);
}

double storedSpeed(double seconds)
{
    return speedFromByte(qBound(0, speedByte(qBound(0.0, seconds, maxSpeed())), 255));
}

double speedToward(double from, double to)
{
    const double value = qBound(0.0, to, maxSpeed());
    const double kept = storedSpeed(value);
    if (qAbs(kept - value) < kShownValueRoom || value == from)
        return kept;
    const double tenths = value * 10.0;
    if (value > from) {
        if (value <= 2.0)
            return std::ceil(tenths - kShownValueRoom) / 10.0;
        return qMax(3.0, std::ceil(value - kShownValueRoom));
    }
    if (value < 3.0)
        return qMin(2.0, std::floor(tenths + kShownValueRoom) / 10.0);
    return std::floor(value + kShownValueRoom);
}

QList<QByteArray> payloads(const Settings &s)
{
    QByteArray hid;
    for (int index : s.hidMap)
        hid.append(byteOf(index));
    return {
        hid,
        single(s.hidOutput),
        throttleHoldPayload(s),
        single(truncated(s.freeWarning)),
        lowVoltagePayload(s.lowVoltage),
        baudPayload(s.baudText),
        single(s.externalInput != 0 ? 1 : 0),
        single(sbusOutputByte(s.sbusOutput)),
        single(priorityByte(s.sbusPriority)),
        single(s.sbusVersion & 0xF0),
        sbusControlPayload(s),
    };
}

QString fileFragment(const Settings &s)
{
    using FileFragments::line;
    using FileFragments::real;
    QString text
        = line(QStringLiteral("hidMap"), FileFragments::intList(s.hidMap, kHidAxes) + QLatin1Char(';'))
        + line(QStringLiteral("hidOutput"), QString::number(s.hidOutput))
        + line(QStringLiteral("throttleHoldSwitch"), QString::number(s.throttleSwitch))
        + line(QStringLiteral("throttleData"),
            QStringLiteral("%1,%2,%3,%4;")
                .arg(s.throttleMode)
                .arg(real(s.holdValue), real(s.recoverySpeed), real(s.holdSpeed)))
        + line(QStringLiteral("freeWarning"), real(s.freeWarning))
        + line(QStringLiteral("lowVoltage"), real(s.lowVoltage)) + line(QStringLiteral("baud"), s.baudText)
        + line(QStringLiteral("externalInput"), QString::number(s.externalInput))
        + line(QStringLiteral("sbusOutput"), FileFragments::intList(s.sbusOutput, 2) + QLatin1Char(';'))
        + line(QStringLiteral("sbusPriority"), QString::number(priorityByte(s.sbusPriority)))
        + line(QStringLiteral("sbusVersion"), QString::number(s.sbusVersion))
        + line(QStringLiteral("sbusControlSwitch"), QString::number(s.sbusControlSwitch));
    // Each flag as its check box holds it, 1 or 0: the unit's high-nibble
    // flags read as 16, and the window writes the shown set as 1 or 0.
    for (int g = 0; g < kSbusControlSets; ++g) {
        int flags[4];
        for (int o = 0; o < 4; ++o)
            flags[o] = s.sbusControl[g][o] != 0 ? 1 : 0;
        text += line(
            QStringLiteral("sbusControl-%1").arg(g), FileFragments::intList(flags, 4) + QLatin1Char(';'));
    }
    return text;
}

} // namespace ComprehensiveCodec
