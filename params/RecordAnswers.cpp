#include "RecordAnswers.h"

#include "ButtonCodec.h"
#include "ComprehensiveCodec.h"
#include "CustomOutputCodec.h"
#include "DeviceData.h"
#include "HoldCodec.h"
#include "ModulePowerCodec.h"
#include "SbusCodec.h"

#include <QHash>

namespace RecordAnswers
{

namespace
{

using Decoder = bool (*)(const QByteArray &, DeviceData &);

bool tuning(const QByteArray &p, DeviceData &d)
{
    return SbusCodec::decodeTuning(p, d) >= 0;
}

bool none(const QByteArray &p, DeviceData &d)
{
    return SbusCodec::decodeNone(p, d) >= 0;
}

// Read code -> decoder, for every group but the key kinds (which need the model).
const QHash<quint8, Decoder> &decoders()
{
    using namespace ComprehensiveCodec;
    using namespace CustomOutputCodec;
    static const QHash<quint8, Decoder> table {
        { 0xA3, tuning },
        { 0xA7, none },
        { 0xB4, HoldCodec::decode },
        { 0xC0, ButtonCodec::decodeCombinations },
        { 0xC2, ButtonCodec::decodeSuperKeys },
        { 0xC6, decodeHidMapping },
        { 0x17, decodeHidOutput },
        { 0xB6, decodeThrottleHold },
        { 0xE9, decodeIdleWarning },
        { 0xEB, decodeLowVoltage },
        { 0x13, decodeBaud },
        { 0x19, decodeExternalInput },
        { 0xC4, decodeSbusOutput },
        { 0x30, decodeSbusPriority },
        { 0x32, decodeSbusProtocol },
        { 0x34, decodeSbusControl },
        { 0x36, ModulePowerCodec::decodePower },
        { 0x38, ModulePowerCodec::decodePhysical },
        { 0x15, decodeOutputMode },
        { 0xD1, decodeEnables },
        { 0xD3, decodeCanFrequency },
        { 0xD5, decodeUnitFrameCount },
        { 0xD7, decodeStreamHead },
        { 0xD9, decodeStreamTable },
        { 0xDB, decodeFrameMasks },
        { 0xDD, decodeFrameBitChannels },
        { 0x20, decodeFrameBitValues },
        { 0x22, decodeFrameByteChannels },
        { 0x24, decodeCanBaud },
    };
    return table;
}

} // namespace

bool decode(quint8 code, const QByteArray &payload, int model, DeviceData &data)
{
    if (code == 0xCA)
        return ButtonCodec::decodeKeyKinds(payload, model, data);
    const Decoder decoder = decoders().value(code, nullptr);
    return decoder && decoder(payload, data);
}

quint8 readCodeOfWrite(quint8 code)
{
    // The idle and low-voltage warnings are the two groups whose write code
    // lies below their read code.
    if (code == 0xE8)
        return 0xE9;
    if (code == 0xEC)
        return 0xEB;
    if (code == 0xEA) // factory reset, right above the idle warning read
        return 0;
    const quint8 read = quint8(code - 1);
    return read == 0xCA || decoders().contains(read) ? read : 0;
}

} // namespace RecordAnswers
