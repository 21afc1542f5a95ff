#include "ParameterStore.h"

#include "Command.h"
#include "CustomOutputCodec.h"
#include "DeviceData.h"
#include "GroupCodes.h"

#include <QtEndian>

namespace Vunit
{

namespace
{

constexpr int kChannels = 16;
// Offsets inside the 85-byte SBUS tuning payload.
constexpr int kTrimAt = 1;
constexpr int kLeftAt = 17;
constexpr int kRightAt = 33;
constexpr int kFailsafeAt = 49;
constexpr int kStateAt = 65;
constexpr int kPhaseAt = 67;
constexpr int kMapAt = 69;

constexpr quint8 kFailsafeOff = 255;
constexpr quint8 kNoSwitch = 255;
constexpr quint8 kNoKey = 255;

QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray out;
    for (int v : values)
        out.append(char(quint8(v)));
    return out;
}

QByteArray le32(quint32 v)
{
    QByteArray out(4, '\0');
    qToLittleEndian(v, reinterpret_cast<uchar *>(out.data()));
    return out;
}

} // namespace

int fromSignMagnitude(quint8 byte)
{
    const int magnitude = byte & 0x7F;
    return (byte & 0x80) ? -magnitude : magnitude;
}

quint8 toSignMagnitude(int value)
{
    const int magnitude = qMin(127, qAbs(value));
    return quint8(value < 0 ? (0x80 | magnitude) : magnitude);
}

ParameterStore::ParameterStore(const ModelSpec &layout)
    : m_spec(layout)
{
    restoreFactory();
}

void ParameterStore::restoreFactory()
{
    m_values.clear();
    seedSbus();
    seedSimpleGroups();
    seedCustomOutput();
}

void ParameterStore::seedSbus()
{
    // The first channels follow the controls in report order, the rest are
    // "NONE" at a fixed value. The factory setup is not neutral, so that a
    // read visibly changes the setting pages: a few trims, reversed channels
    // and travels, a failsafe on channels 1 and 3 only, fixed values of both
    // signs, and channel hold armed on port 1.
    struct Port {
        int trims[4];       // channels 1..4, signed
        quint16 reversed;   // phase mask
        int failsafe3;      // channel 3 failsafe, signed
        int fixed15, fixed16;
    };
    const Port ports[2] = { { { 5, -5, 0, 12 }, 0x0012, -100, -20, 30 }, { { 0, 3, -8, 0 }, 0x0004, -60, -50, 45 } };
    for (int port = 0; port < 2; ++port) {
        const Port &p = ports[port];
        QByteArray t(kSbusTuningBytes, '\0');
        t[0] = char(port);
        for (int c = 0; c < kChannels; ++c) {
            t[kTrimAt + c] = char(toSignMagnitude(c < 4 ? p.trims[c] : 0));
            t[kLeftAt + c] = char(c == 2 ? 80 : 100);
            t[kRightAt + c] = char(c == 2 ? 120 : 100);
            t[kFailsafeAt + c] = char(kFailsafeOff);
            t[kMapAt + c] = char(c < qMin(14, m_spec.controls.size()) ? c : kMapNone);
        }
        // Failsafe: channel 1 at the centre, channel 3 (throttle) low; the
        // sign of channel 3 travels in the state mask at bytes 65 and 66.
        t[kFailsafeAt + 0] = char(0);
        t[kFailsafeAt + 2] = char(qAbs(p.failsafe3));
        t[kStateAt] = char(p.failsafe3 < 0 ? 0x04 : 0x00);
        t[kPhaseAt] = char(p.reversed & 0xFF);
        t[kPhaseAt + 1] = char(p.reversed >> 8);
        m_sbusTuning[port] = t;

        QByteArray n(kSbusNoneBytes, '\0');
        n[0] = char(port);
        n[1 + 14] = char(toSignMagnitude(p.fixed15));
        n[1 + 15] = char(toSignMagnitude(p.fixed16));
        m_sbusNone[port] = n;
    }
    // Port 1 holds on its second switch: throttle (channel 3) in position 0,
    // channels 1 and 16 in position 2. Port 2 has no hold switch.
    m_hold[0] = bytes({ 0, 1, 0x04, 0x00, 0x00, 0x00, 0x01, 0x80 });
    m_hold[1] = bytes({ 1, kNoSwitch, 0, 0, 0, 0, 0, 0 });
}

void ParameterStore::seedSimpleGroups()
{
    // Key combinations: F1+F2 step 10, F3+F4 step 5, the rest unused.
    QByteArray combos = bytes({ 0, 1, 10, 2, 3, 5 });
    for (int i = 2; i < 5; ++i)
        combos += bytes({ kNoKey, kNoKey, 1 });
    m_values.insert(Command::ReadKeyCombinations, combos);
    // Super keys: six keys, six signs, six magnitudes each. The first sets
    // -37 with F5 and 100 with F6; the second is unused.
    const QByteArray firstSuperKey = bytes({ 4, 5, kNoKey, kNoKey, kNoKey, kNoKey, 1, 0, 0, 0, 0, 0, 37, 100, 0, 0, 0, 0 });
    const QByteArray unusedSuperKey = QByteArray(6, char(kNoKey)) + QByteArray(12, '\0');
    m_values.insert(Command::ReadSuperKeys, firstSuperKey + unusedSuperKey);
    // Key kinds: the second key two-state, the third three-state.
    QByteArray kinds(m_spec.keyAttributeBytes, '\0');
    kinds[1] = char(1);
    kinds[2] = char(2);
    m_values.insert(Command::ReadKeyAttributes, kinds);
    m_values.insert(Command::ReadSbusOutput, bytes({ 2 })); // both SBUS outputs on
    m_values.insert(
        Command::ReadHidMapping, bytes({ 0, 1, 2, 3, 4, 5, 6, 7 })); // HID axes follow the controls
    m_values.insert(Command::ReadHidOutput, bytes({ 0 })); // HID game controller
    // Throttle hold: byte 0 = 0, the second switch, its middle position,
    // hold at -30, back in 1.5 s, down to the hold value in 3 s.
    m_values.insert(Command::ReadThrottleHold, bytes({ 0, 1, 1, 1, 30, 15, 21 }));
    m_values.insert(Command::ReadIdleWarning, bytes({ 5 })); // idle warning
    m_values.insert(Command::ReadLowVoltage, bytes({ 7, 5 })); // low voltage alarm at 7.05 V (two cells)
    m_values.insert(Command::ReadBaud, le32(115200));
    m_values.insert(Command::ReadExternalSbusInput, bytes({ 0 }));
    m_values.insert(Code::ReadSbusPriority, bytes({ 0x21 })); // SBUS 1 priority 1, SBUS 2 priority 2
    m_values.insert(Code::ReadSbusProtocol, bytes({ 0x90 })); // SBUS 1 V1.0, SBUS 2 V2.0
    // SBUS control by the first switch: per position two bytes of two flags.
    m_values.insert(Code::ReadSbusControl, bytes({ 0, 0x11, 0x00, 0x01, 0x10, 0x10, 0x11 }));
    m_values.insert(Code::ReadModulePower, bytes({ 1, 1 })); // module power on, ROM on
    m_values.insert(Code::ReadModuleSwitch, bytes({ 1, 6 })); // powered from switch SB, 6
    m_values.insert(Command::ReadExternalCharging, bytes({ 0 })); // external charging off
}

namespace
{

// The factory frame at a position: standard identifier 0x123 onwards, a data
// frame of eight bytes, every byte linear from the inputs in order, no bit
// sources.
CanFrameRecord factoryFrame(int index)
{
    CanFrameRecord f;
    f.index = index;
    f.standardId = quint16(0x123 + index);
    f.dlc = 8;
    f.dataMask = 0xFF;
    for (int j = 0; j < 8; ++j) {
        f.byteMap[j][0] = quint8(j);
        f.byteMap[j][1] = quint8(j);
        for (int b = 0; b < 8; ++b)
            f.bitMap[j][b][0] = kCanChannelNone;
    }
    return f;
}

} // namespace

void ParameterStore::seedCustomOutput()
{
    using namespace CustomOutputCodec;
    // The output module in TTL mode with CAN on at 20 Hz and 500K, one frame;
    // the serial stream off, 50 Hz, head 0x0F, 115200 with a sum check,
    // channels within -1000..1000, the first 16 stream entries on.
    DeviceData d;
    d.PyxGOutputMode = kModeTtl;
    d.CANEnable = true;
    d.CANFrequency = 20;
    d.CANBaud = QStringLiteral("500K");
    TtlStream &s = d.TTLStream;
    s.header[kTtlFrequency] = 50;
    s.header[kTtlFrameHead] = 0x0F;
    s.header[kTtlFormat] = ttlFormatByte(TtlFormat { 4, 0, false });
    s.range[0] = quint16(qint16(-1000));
    s.range[1] = 1000;
    for (int i = 0; i < kTtlTableSize; ++i) {
        s.table1[i] = i < 16 ? 1 : 0;
        s.table2[i] = quint8(i % 16);
    }
    m_values.insert(Command::ReadOutputModule, bytes({ d.PyxGOutputMode }));
    m_values.insert(Code::ReadEnableFlags, enablesPayload(d));
    m_values.insert(Code::ReadCanFrequency, bytes({ d.CANFrequency }));
    m_values.insert(Code::ReadStreamHeader, streamHeadPayload(s));
    m_values.insert(Code::ReadStreamTable, streamTablePayload(s));
    m_values.insert(Code::ReadCanBaud, bytes({ canBaudIndex(d.CANBaud) }));

    m_canFrameCount = 1;
    m_canFrames = { frameHeaderPayload(factoryFrame(0), 1, 0) };
    m_frameValues.clear();
}

void ParameterStore::setSbusTuning(const QByteArray &payload)
{
    m_sbusTuning[quint8(payload.at(0)) ? 1 : 0] = payload;
}

void ParameterStore::setSbusNone(const QByteArray &payload)
{
    m_sbusNone[quint8(payload.at(0)) ? 1 : 0] = payload;
}

void ParameterStore::setChannelHoldBlock(const QByteArray &block)
{
    m_hold[quint8(block.at(0)) ? 1 : 0] = block;
}

QByteArray ParameterStore::canFrame(int index) const
{
    if (index < 0 || index >= m_canFrameCount)
        return QByteArray();
    QByteArray frame = index < m_canFrames.size() && !m_canFrames.at(index).isEmpty()
        ? m_canFrames.at(index)
        : CustomOutputCodec::frameHeaderPayload(CanFrameRecord(), m_canFrameCount, index);
    frame[0] = char(m_canFrameCount);
    return frame;
}

void ParameterStore::setCanFrame(const QByteArray &header)
{
    m_canFrameCount = qMin(int(quint8(header.at(0))), kMaxCanFrames);
    if (header.size() < CustomOutputCodec::kFrameHeaderBytes) {
        m_canFrames.clear();
        return;
    }
    const int index = quint8(header.at(1));
    if (m_canFrames.size() < m_canFrameCount)
        m_canFrames.resize(m_canFrameCount);
    if (index < m_canFrames.size())
        m_canFrames[index] = header;
}

QByteArray ParameterStore::frameValue(quint8 readCode, int index) const
{
    if (index < 0 || index >= kMaxCanFrames)
        return QByteArray();
    const QVector<QByteArray> stored = m_frameValues.value(readCode);
    if (index < stored.size() && !stored.at(index).isEmpty())
        return stored.at(index);
    using namespace CustomOutputCodec;
    const CanFrameRecord f = factoryFrame(index);
    switch (readCode) {
    case Code::ReadFrameMasks:
        return frameMasksPayload(f, index);
    case Code::ReadFrameBitChannels:
        return frameBitChannelsPayload(f, index);
    case Code::ReadFrameBitValues:
        return frameBitValuesPayload(f, index);
    case Code::ReadFrameByteChannels:
        return frameByteChannelsPayload(f, index);
    default:
        return QByteArray();
    }
}

void ParameterStore::setFrameValue(quint8 readCode, int index, const QByteArray &payload)
{
    if (index < 0 || index >= kMaxCanFrames)
        return;
    QVector<QByteArray> &stored = m_frameValues[readCode];
    if (stored.size() <= index)
        stored.resize(index + 1);
    stored[index] = payload;
}

ChannelSetting ParameterStore::channelSetting(int port, int channel) const
{
    const QByteArray &t = m_sbusTuning[port];
    const QByteArray &n = m_sbusNone[port];
    auto at = [](const QByteArray &a, int i) { return quint8(a.at(i)); };
    ChannelSetting s;
    s.trim = fromSignMagnitude(at(t, kTrimAt + channel));
    s.leftTravel = at(t, kLeftAt + channel);
    s.rightTravel = at(t, kRightAt + channel);
    const int phaseMask = at(t, kPhaseAt) | (at(t, kPhaseAt + 1) << 8);
    s.reversed = (phaseMask >> channel) & 1;
    s.map = at(t, kMapAt + channel);
    s.noneValue = fromSignMagnitude(at(n, 1 + channel));
    return s;
}

} // namespace Vunit
