#include "ModulePowerCodec.h"

#include "DeviceData.h"
#include "FileFragments.h"

namespace ModulePowerCodec
{
namespace
{
bool decodePair(const QByteArray &payload, int (&pair)[2])
{
    if (payload.size() != kPairBytes)
        return false;
    pair[0] = quint8(payload.at(0));
    pair[1] = quint8(payload.at(1));
    return true;
}

QByteArray pairBytes(const int (&pair)[2])
{
    QByteArray bytes(kPairBytes, '\0');
    bytes[0] = char(quint8(pair[0]));
    bytes[1] = char(quint8(pair[1]));
    return bytes;
}
} // namespace

bool decodePower(const QByteArray &payload, DeviceData &data)
{
    return decodePair(payload, data.modulePowerState);
}

bool decodePhysical(const QByteArray &payload, DeviceData &data)
{
    return decodePair(payload, data.modulePhysicalCtl);
}

QList<QByteArray> payloads(const DeviceData &data)
{
    return { pairBytes(data.modulePowerState), pairBytes(data.modulePhysicalCtl) };
}

int selectorIndex(int stored)
{
    return stored == kNoSwitch ? 0 : stored + 1;
}

int storedSwitch(int selectorIndex)
{
    return selectorIndex <= 0 ? kNoSwitch : selectorIndex - 1;
}

QString fileFragment(const DeviceData &data)
{
    return FileFragments::line(QStringLiteral("modulePowerState"), FileFragments::intList(data.modulePowerState, 2))
        + FileFragments::line(
            QStringLiteral("modulePhysicalCtl"), FileFragments::intList(data.modulePhysicalCtl, 2));
}

} // namespace ModulePowerCodec
