#include "UnwrittenEdits.h"

#include "ButtonCodec.h"
#include "ComprehensiveCodec.h"
#include "CustomOutputCodec.h"
#include "DeviceData.h"
#include "HoldCodec.h"
#include "ModulePowerCodec.h"
#include "RecordAnswers.h"
#include "SbusCodec.h"

#include <functional>

namespace UnwrittenEdits
{

namespace
{

constexpr int kLarch = 3;

using Keys = QSet<QString>;
// The group's payload as a write would send it from a record.
using Build = std::function<QByteArray(const DeviceData &, int model)>;
// The keys of the fields behind the bytes that differ between two payloads.
using Explain = std::function<void(const QByteArray &a, const QByteArray &b, Keys &keys)>;

struct GroupWire {
    Group group;
    quint8 readCode;
    Build build;
    Explain explain;
};

int byteAt(const QByteArray &p, int i)
{
    return i >= 0 && i < p.size() ? quint8(p.at(i)) : -1;
}

bool bitDiffers(const QByteArray &a, const QByteArray &b, int byte, int bit)
{
    return ((byteAt(a, byte) >> bit) & 1) != ((byteAt(b, byte) >> bit) & 1);
}

// A channel's bit in a pair of mask bytes: channels 1..8 in the first.
bool channelBitDiffers(const QByteArray &a, const QByteArray &b, int firstByte, int channel)
{
    return bitDiffers(a, b, firstByte + channel / 8, channel % 8);
}

bool differs(const QByteArray &a, const QByteArray &b, std::initializer_list<int> bytes)
{
    for (int i : bytes) {
        if (byteAt(a, i) != byteAt(b, i))
            return true;
    }
    return false;
}

Explain tuningKeys(int port)
{
    return [port](const QByteArray &a, const QByteArray &b, Keys &keys) {
        for (int c = 0; c < kChannels; ++c) {
            if (differs(a, b, { 1 + c }))
                keys.insert(key("fineTuning", port, c));
            if (differs(a, b, { 17 + c }))
                keys.insert(key("leftTrip", port, c));
            if (differs(a, b, { 33 + c }))
                keys.insert(key("rightTrip", port, c));
            if (differs(a, b, { 49 + c }) || channelBitDiffers(a, b, 65, c))
                keys.insert(key("failsafe", port, c));
            if (channelBitDiffers(a, b, 67, c))
                keys.insert(key("phase", port, c));
            if (differs(a, b, { 69 + c }))
                keys.insert(key("channelMap", port, c));
        }
    };
}

Explain noneKeys(int port)
{
    return [port](const QByteArray &a, const QByteArray &b, Keys &keys) {
        for (int c = 0; c < kChannels; ++c) {
            if (differs(a, b, { 1 + c }))
                keys.insert(key("noneValue", port, c));
        }
    };
}

void holdKeys(const QByteArray &a, const QByteArray &b, Keys &keys)
{
    for (int port = 0; port < kSbusPorts; ++port) {
        const int base = port * HoldCodec::kPortBytes;
        if (differs(a, b, { base + 1 }))
            keys.insert(key("sbusHoldSwitch", port));
        // Without a switch on either side the held channels mean nothing:
        // the page shows them cleared.
        if (byteAt(a, base + 1) == kNoSelection && byteAt(b, base + 1) == kNoSelection)
            continue;
        for (int position = 0; position < kHoldPositions; ++position) {
            for (int c = 0; c < kChannels; ++c) {
                if (channelBitDiffers(a, b, base + 2 + 2 * position, c))
                    keys.insert(key("sbusHold", port, position, c));
            }
        }
    }
}

// One field per byte, named by the byte's position.
Explain perByte(const char *field)
{
    return [field](const QByteArray &a, const QByteArray &b, Keys &keys) {
        for (int i = 0; i < qMax(a.size(), b.size()); ++i) {
            if (differs(a, b, { i }))
                keys.insert(key(field, i));
        }
    };
}

// The whole payload is one field.
Explain whole(const char *field)
{
    return [field](const QByteArray &, const QByteArray &, Keys &keys) { keys.insert(key(field)); };
}

void combinationKeys(const QByteArray &a, const QByteArray &b, Keys &keys)
{
    for (int i = 0; i < kKeyCombinations; ++i) {
        for (int k = 0; k < 3; ++k) {
            if (differs(a, b, { 3 * i + k }))
                keys.insert(key("ckeyMap", i, k));
        }
    }
}

void superKeyKeys(const QByteArray &a, const QByteArray &b, Keys &keys)
{
    for (int s = 0; s < kSuperKeys; ++s) {
        const int base = 18 * s;
        for (int j = 0; j < 6; ++j) {
            if (differs(a, b, { base + j }))
                keys.insert(key("sckeyMap", s, j));
            if (differs(a, b, { base + 6 + j, base + 12 + j }))
                keys.insert(key("sckeyMap", s, 6 + j));
        }
    }
}

Explain keyKindKeys(int model)
{
    return [model](const QByteArray &a, const QByteArray &b, Keys &keys) {
        for (int i = 0; i < qMax(a.size(), b.size()); ++i) {
            if (!differs(a, b, { i }))
                continue;
            // The Larch sends keys 16..24 first, then keys 1..15.
            const int k = model == kLarch ? (i < 9 ? 15 + i : i - 9) : i;
            keys.insert(key("keyGear", k));
        }
    };
}

void throttleKeys(const QByteArray &a, const QByteArray &b, Keys &keys)
{
    if (differs(a, b, { 1 }))
        keys.insert(key("throttleIndex"));
    // Without a switch on either side the mode and the hold value mean
    // nothing: the page shows them cleared.
    const bool unarmed = byteAt(a, 1) == kNoSelection && byteAt(b, 1) == kNoSelection;
    if (!unarmed && differs(a, b, { 2 }))
        keys.insert(key("throttleData"));
    if (!unarmed && differs(a, b, { 3, 4 }))
        keys.insert(key("throttleValue", 0));
    if (differs(a, b, { 5 }))
        keys.insert(key("throttleValue", 1));
    if (differs(a, b, { 6 }))
        keys.insert(key("throttleValue", 2));
}

void sbusOutputKeys(const QByteArray &a, const QByteArray &b, Keys &keys)
{
    // 0 only SBUS 1, 1 only SBUS 2, 2 both, 3 none.
    auto on = [](int state, int port) {
        static const bool table[4][2]
            = { { true, false }, { false, true }, { true, true }, { false, false } };
        return state >= 0 && state < 4 && table[state][port];
    };
    for (int port = 0; port < 2; ++port) {
        if (on(byteAt(a, 0), port) != on(byteAt(b, 0), port))
            keys.insert(key("sbusOutput", port));
    }
}

void priorityKeys(const QByteArray &a, const QByteArray &b, Keys &keys)
{
    for (int port = 0; port < 2; ++port) {
        if (((byteAt(a, 0) >> (4 * port)) & 0x0F) != ((byteAt(b, 0) >> (4 * port)) & 0x0F))
            keys.insert(key("sbusPriority", port));
    }
}

void protocolKeys(const QByteArray &a, const QByteArray &b, Keys &keys)
{
    for (int port = 0; port < 2; ++port) {
        if (bitDiffers(a, b, 0, 4 + 2 * port) || bitDiffers(a, b, 0, 5 + 2 * port))
            keys.insert(key("sbusVersion", port));
    }
}

void controlKeys(const QByteArray &a, const QByteArray &b, Keys &keys)
{
    if (differs(a, b, { 0 }))
        keys.insert(key("sbusControlSwitch"));
    for (int set = 0; set < kSbusControlSets; ++set) {
        if (differs(a, b, { 1 + 2 * set, 2 + 2 * set }))
            keys.insert(key("sbusControl", set));
    }
}

void enableKeys(const QByteArray &a, const QByteArray &b, Keys &keys)
{
    if (bitDiffers(a, b, 0, 0))
        keys.insert(key("TTLEnable"));
    if (bitDiffers(a, b, 0, 4))
        keys.insert(key("CANEnable"));
}

Build comprehensive(int index)
{
    return [index](const DeviceData &d, int) {
        return ComprehensiveCodec::payloads(ComprehensiveCodec::Settings::fromRecord(d)).value(index);
    };
}

const QVector<GroupWire> &wires()
{
    using namespace ComprehensiveCodec;
    static const QVector<GroupWire> table {
        { SbusTuning1, 0xA3, [](const DeviceData &d, int) { return SbusCodec::tuningPayload(d, 0); },
            tuningKeys(0) },
        { SbusTuning2, 0xA3, [](const DeviceData &d, int) { return SbusCodec::tuningPayload(d, 1); },
            tuningKeys(1) },
        { SbusNone1, 0xA7, [](const DeviceData &d, int) { return SbusCodec::nonePayload(d, 0); },
            noneKeys(0) },
        { SbusNone2, 0xA7, [](const DeviceData &d, int) { return SbusCodec::nonePayload(d, 1); },
            noneKeys(1) },
        { ChannelHold, 0xB4, [](const DeviceData &d, int) { return HoldCodec::payload(d); }, holdKeys },
        { KeyCombinations, 0xC0,
            [](const DeviceData &d, int) {
                return ButtonCodec::combinationPayload(ButtonCodec::Settings::fromRecord(d));
            },
            combinationKeys },
        { SuperKeys, 0xC2,
            [](const DeviceData &d, int) {
                return ButtonCodec::superKeyPayload(ButtonCodec::Settings::fromRecord(d));
            },
            superKeyKeys },
        { KeyKinds, 0xCA,
            [](const DeviceData &d, int model) {
                return ButtonCodec::keyKindPayload(ButtonCodec::Settings::fromRecord(d), model);
            },
            nullptr },
        { HidMapping, 0xC6, comprehensive(0), perByte("hidMap") },
        { HidOutput, 0x17, comprehensive(1), whole("hidOutput") },
        { ThrottleHold, 0xB6, comprehensive(2), throttleKeys },
        { IdleWarning, 0xE9, comprehensive(3), whole("freeWarning") },
        { LowVoltage, 0xEB, comprehensive(4), whole("lowVoltage") },
        { Baud, 0x13, comprehensive(5), whole("baud") },
        { ExternalInput, 0x19, comprehensive(6), whole("externalInput") },
        { SbusOutput, 0xC4, comprehensive(7), sbusOutputKeys },
        { SbusPriority, 0x30, comprehensive(8), priorityKeys },
        { SbusProtocol, 0x32, comprehensive(9), protocolKeys },
        { SbusControl, 0x34, comprehensive(10), controlKeys },
        { ModulePower, 0x36, [](const DeviceData &d, int) { return ModulePowerCodec::payloads(d).value(0); },
            perByte("modulePowerState") },
        { ModulePhysical, 0x38,
            [](const DeviceData &d, int) { return ModulePowerCodec::payloads(d).value(1); },
            perByte("modulePhysicalCtl") },
        { OutputMode, 0x15,
            [](const DeviceData &d, int) { return QByteArray(1, char(d.PyxGOutputMode & 0xFF)); },
            whole("PyxGOutputMode") },
        { OutputEnables, 0xD1, [](const DeviceData &d, int) { return CustomOutputCodec::enablesPayload(d); },
            enableKeys },
        { CanFrequency, 0xD3, [](const DeviceData &d, int) { return QByteArray(1, char(d.CANFrequency)); },
            whole("CANFrequency") },
        { StreamHead, 0xD7,
            [](const DeviceData &d, int) { return CustomOutputCodec::streamHeadPayload(d.TTLStream); },
            whole("TTLStream") },
        { CanBaud, 0x24,
            [](const DeviceData &d, int) {
                return QByteArray(1, char(CustomOutputCodec::canBaudIndex(d.CANBaud)));
            },
            whole("CANBaud") },
    };
    return table;
}

} // namespace

QString key(const char *field, int i, int j, int k)
{
    QString text = QLatin1String(field);
    for (int index : { i, j, k }) {
        if (index < 0)
            break;
        text += QLatin1Char('/') + QString::number(index);
    }
    return text;
}

Groups groupOfAnswer(quint8 readCode, const QByteArray &payload)
{
    if (readCode == 0xA3 || readCode == 0xA7) {
        const bool second = !payload.isEmpty() && payload.at(0) == 1;
        if (readCode == 0xA3)
            return second ? SbusTuning2 : SbusTuning1;
        return second ? SbusNone2 : SbusNone1;
    }
    for (const GroupWire &wire : wires()) {
        if (wire.readCode == readCode)
            return wire.group;
    }
    return 0;
}

QSet<QString> differing(const DeviceData &shown, const DeviceData &unit, Groups groups, int model)
{
    Keys keys;
    for (const GroupWire &wire : wires()) {
        if (!(groups & wire.group))
            continue;
        const QByteArray a = wire.build(shown, model);
        const QByteArray b = wire.build(unit, model);
        if (a == b)
            continue;
        if (wire.explain)
            wire.explain(a, b, keys);
        else
            keyKindKeys(model)(a, b, keys);
    }
    return keys;
}

void copyGroups(const DeviceData &from, DeviceData &to, Groups groups, int model)
{
    for (const GroupWire &wire : wires()) {
        if (groups & wire.group)
            RecordAnswers::decode(wire.readCode, wire.build(from, model), model, to);
    }
}

} // namespace UnwrittenEdits
