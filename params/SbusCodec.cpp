#include "SbusCodec.h"

#include "DeviceData.h"
#include "FileFragments.h"
#include "WireBytes.h"
#include "XmlContainers.h"

using namespace WireBytes;

namespace
{

constexpr int kTrimAt = 1;
constexpr int kLeftAt = 17;
constexpr int kRightAt = 33;
constexpr int kFailsafeAt = 49;
constexpr int kStateMaskAt = 65;
constexpr int kPhaseMaskAt = 67;
constexpr int kMapAt = 69;

int portOf(const QByteArray &payload, int length)
{
    if (payload.size() != length)
        return -1;
    const int port = at(payload, 0);
    return port <= 1 ? port : -1;
}

bool bitOf(const QByteArray &payload, int maskAt, int channel)
{
    const quint16 mask = word16(payload, maskAt);
    return (mask >> channel) & 1;
}

// The failsafe byte: the sentinel stays 255; any other value goes as its
// magnitude, held below the sentinel.
char failsafeByte(int value)
{
    if (value == kFailsafeOff)
        return char(kFailsafeOff);
    return byteOf(qAbs(qBound(-(kFailsafeOff - 1), value, kFailsafeOff - 1)));
}

QByteArray fixedValues(const DeviceData &data, int port, quint8 (*encode)(int))
{
    QByteArray out;
    out.reserve(SbusCodec::kNoneBytes);
    out.append(char(port));
    for (int c = 0; c < kChannels; ++c)
        out.append(char(encode(data.noneValue[port][c])));
    return out;
}

} // namespace

namespace SbusCodec
{

int decodeTuning(const QByteArray &payload, DeviceData &data)
{
    const int port = portOf(payload, kTuningBytes);
    if (port < 0)
        return -1;
    for (int c = 0; c < kChannels; ++c) {
        data.fineTuning[port][c] = fromSignMagnitude(at(payload, kTrimAt + c));
        data.leftTrip[port][c] = at(payload, kLeftAt + c);
        data.rightTrip[port][c] = at(payload, kRightAt + c);
        data.safeProtectionValue[port][c] = at(payload, kFailsafeAt + c);
        data.safeProtectionState[port][c] = bitOf(payload, kStateMaskAt, c) ? 1 : 0;
        data.phase[port][c] = bitOf(payload, kPhaseMaskAt, c) ? 1 : 0;
        data.channelMap[port][c] = at(payload, kMapAt + c);
    }
    return port;
}

int decodeNone(const QByteArray &payload, DeviceData &data)
{
    const int port = portOf(payload, kNoneBytes);
    if (port < 0)
        return -1;
    for (int c = 0; c < kChannels; ++c)
        data.noneValue[port][c] = fromSignMagnitude(at(payload, 1 + c));
    return port;
}

QByteArray tuningPayload(const DeviceData &data, int port)
{
    QByteArray out;
    out.reserve(kTuningBytes);
    out.append(char(port));
    for (int c = 0; c < kChannels; ++c)
        out.append(char(toSignMagnitude(data.fineTuning[port][c])));
    for (int c = 0; c < kChannels; ++c)
        out.append(byteOf(data.leftTrip[port][c]));
    for (int c = 0; c < kChannels; ++c)
        out.append(byteOf(data.rightTrip[port][c]));
    for (int c = 0; c < kChannels; ++c)
        out.append(failsafeByte(data.safeProtectionValue[port][c]));
    appendMask16(out, data.safeProtectionState[port], kChannels);
    appendMask16(out, data.phase[port], kChannels);
    for (int c = 0; c < kChannels; ++c)
        out.append(byteOf(data.channelMap[port][c]));
    return out;
}

QByteArray nonePayload(const DeviceData &data, int port)
{
    return fixedValues(data, port, [](int value) { return toSignMagnitude(value); });
}

QByteArray nonePayloadFromRecord(const DeviceData &data, int port)
{
    return fixedValues(data, port, [](int value) { return quint8(value & 0xFF); });
}

QList<QByteArray> payloadsFromRecord(const DeviceData &data)
{
    QList<QByteArray> payloads;
    for (int port = 0; port < kSbusPorts; ++port)
        payloads << tuningPayload(data, port) << nonePayloadFromRecord(data, port);
    return payloads;
}

QString fileFragment(const DeviceData &data)
{
    const int(*groups[])[kChannels] = { data.phase, data.fineTuning, data.leftTrip, data.rightTrip,
        data.safeProtectionState, data.safeProtectionValue, data.channelMap, data.noneValue };
    const QStringList &tags = XmlContainers::channelGroupTags();
    QString text;
    for (int port = 0; port < kSbusPorts; ++port) {
        const QString container = port == 0 ? QStringLiteral("sbus1Default") : QStringLiteral("sbus2Default");
        text += QLatin1Char('<') + container + QLatin1String(">\r\n");
        for (int g = 0; g < tags.size(); ++g)
            text += FileFragments::line(tags.at(g), FileFragments::intList(groups[g][port], kChannels) + ';');
        text += QLatin1String("</") + container + QLatin1String(">\r\n");
    }
    return text;
}

} // namespace SbusCodec
