#include "HoldCodec.h"

#include "DeviceData.h"
#include "FileFragments.h"
#include "WireBytes.h"

using namespace WireBytes;

namespace HoldCodec
{

bool decode(const QByteArray &payload, DeviceData &data)
{
    if (payload.size() != kPayloadBytes || at(payload, 0) != 0 || at(payload, kPortBytes) != 1)
        return false;
    for (int port = 0; port < kSbusPorts; ++port) {
        const int block = port * kPortBytes;
        data.sbusHoldSwitch[port] = at(payload, block + 1);
        for (int position = 0; position < kHoldPositions; ++position) {
            const quint16 mask = word16(payload, block + 2 + 2 * position);
            for (int c = 0; c < kChannels; ++c)
                data.sbusHold[port][position][c] = (mask >> c) & 1;
        }
    }
    return true;
}

QByteArray payload(const DeviceData &data)
{
    QByteArray out;
    out.reserve(kPayloadBytes);
    for (int port = 0; port < kSbusPorts; ++port) {
        out.append(char(port));
        out.append(char(data.sbusHoldSwitch[port] & 0xFF));
        for (int position = 0; position < kHoldPositions; ++position)
            appendMask16(out, data.sbusHold[port][position], kChannels);
    }
    return out;
}

QString fileFragment(const DeviceData &data)
{
    QString text = FileFragments::line(
        QStringLiteral("sbusHoldSwitch"), FileFragments::intList(data.sbusHoldSwitch, kSbusPorts) + ';');
    // Positions outer, ports inner: sbus1-0, sbus2-0, sbus1-1, ...
    for (int position = 0; position < kHoldPositions; ++position) {
        for (int port = 0; port < kSbusPorts; ++port) {
            const QString tag = QStringLiteral("sbus%1-%2").arg(port + 1).arg(position);
            text += FileFragments::line(
                tag, FileFragments::intList(data.sbusHold[port][position], kChannels) + ';');
        }
    }
    return text;
}

} // namespace HoldCodec
