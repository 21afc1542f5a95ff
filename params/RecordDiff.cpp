#include "RecordDiff.h"

#include "ComprehensiveCodec.h"
#include "CustomOutputCodec.h"
#include "DeviceData.h"
#include "FileFragments.h"

#include <functional>

namespace RecordDiff
{

namespace
{

const QString kArrow = QStringLiteral(" \u2192 ");

class Lines
{
public:
    void add(const QString &what, const QString &before, const QString &after)
    {
        if (before != after)
            m_lines.append(what + QStringLiteral(": ") + before + kArrow + after);
    }
    void add(const QString &what, int before, int after, const std::function<QString(int)> &words = {})
    {
        if (before != after)
            add(what, words ? words(before) : QString::number(before), words ? words(after) : QString::number(after));
    }
    void add(const QString &what, double before, double after)
    {
        add(what, FileFragments::real(before), FileFragments::real(after));
    }
    QStringList take() { return m_lines; }

private:
    QStringList m_lines;
};

QString onOff(int v)
{
    return v != 0 ? QStringLiteral("on") : QStringLiteral("off");
}

QString noneOr(int v, int none)
{
    return v == none ? QStringLiteral("NONE") : QString::number(v);
}

// The failsafe as the page shows it: off, or the value with the sign that
// the state bit carries (the record holds a magnitude after a read and the
// signed value after the page collected it).
QString failsafe(const DeviceData &d, int port, int channel)
{
    const int value = d.safeProtectionValue[port][channel];
    if (value == kFailsafeOff)
        return QStringLiteral("off");
    const bool negative = value < 0 || d.safeProtectionState[port][channel] != 0;
    return QString::number(negative ? -qAbs(value) : qAbs(value));
}

void sbus(Lines &l, const DeviceData &a, const DeviceData &b)
{
    for (int port = 0; port < kSbusPorts; ++port) {
        for (int c = 0; c < kChannels; ++c) {
            const QString ch = QStringLiteral("SBUS %1 CH%2 ").arg(port + 1).arg(c + 1);
            l.add(ch + QStringLiteral("phase"), a.phase[port][c] != 0 ? QStringLiteral("reversed") : QStringLiteral("normal"),
                b.phase[port][c] != 0 ? QStringLiteral("reversed") : QStringLiteral("normal"));
            l.add(ch + QStringLiteral("trim"), a.fineTuning[port][c], b.fineTuning[port][c]);
            l.add(ch + QStringLiteral("left travel"), a.leftTrip[port][c], b.leftTrip[port][c]);
            l.add(ch + QStringLiteral("right travel"), a.rightTrip[port][c], b.rightTrip[port][c]);
            l.add(ch + QStringLiteral("failsafe"), failsafe(a, port, c), failsafe(b, port, c));
            l.add(ch + QStringLiteral("map"), a.channelMap[port][c], b.channelMap[port][c],
                [](int v) { return v == kChannelMapNone ? QStringLiteral("NONE") : QStringLiteral("input %1").arg(v + 1); });
            l.add(ch + QStringLiteral("fixed value"), a.noneValue[port][c], b.noneValue[port][c]);
        }
    }
}

void hold(Lines &l, const DeviceData &a, const DeviceData &b)
{
    for (int port = 0; port < kSbusPorts; ++port) {
        l.add(QStringLiteral("SBUS %1 hold switch").arg(port + 1), a.sbusHoldSwitch[port], b.sbusHoldSwitch[port],
            [](int v) { return v == kNoSelection ? QStringLiteral("none") : QStringLiteral("switch %1").arg(v + 1); });
        for (int pos = 0; pos < kHoldPositions; ++pos) {
            for (int c = 0; c < kChannels; ++c)
                l.add(QStringLiteral("SBUS %1 CH%2 hold in position %3").arg(port + 1).arg(c + 1).arg(pos),
                    a.sbusHold[port][pos][c], b.sbusHold[port][pos][c], onOff);
        }
    }
}

QString keyName(int v)
{
    return v == kNoSelection ? QStringLiteral("NONE") : QStringLiteral("key %1").arg(v + 1);
}

void keys(Lines &l, const DeviceData &a, const DeviceData &b)
{
    for (int k = 0; k < kKeyCombinations; ++k) {
        const QString what = QStringLiteral("combination %1 ").arg(k + 1);
        l.add(what + QStringLiteral("first key"), a.ckeyMap[k][0], b.ckeyMap[k][0], keyName);
        l.add(what + QStringLiteral("second key"), a.ckeyMap[k][1], b.ckeyMap[k][1], keyName);
        l.add(what + QStringLiteral("step"), a.ckeyMap[k][2], b.ckeyMap[k][2]);
    }
    for (int s = 0; s < kSuperKeys; ++s) {
        for (int j = 0; j < 6; ++j) {
            const QString what = QStringLiteral("super key %1 entry %2 ").arg(s + 1).arg(j + 1);
            l.add(what + QStringLiteral("key"), a.sckeyMap[s][j], b.sckeyMap[s][j], keyName);
            l.add(what + QStringLiteral("value"), a.sckeyMap[s][6 + j], b.sckeyMap[s][6 + j]);
        }
    }
    static const QStringList kinds { QStringLiteral("one-state"), QStringLiteral("two-state"),
        QStringLiteral("three-state") };
    for (int k = 0; k < kKeyGears; ++k)
        l.add(QStringLiteral("key %1 kind").arg(k + 1), a.keyGear[k], b.keyGear[k],
            [](int v) { return v >= 0 && v < kinds.size() ? kinds.at(v) : QString::number(v); });
}

void comprehensive(Lines &l, const DeviceData &a, const DeviceData &b)
{
    for (int i = 0; i < kHidAxes; ++i)
        l.add(QStringLiteral("HID axis %1 input").arg(i + 1), a.hidMap[i], b.hidMap[i]);
    l.add(QStringLiteral("HID mode"), a.hidOutput, b.hidOutput,
        [](int v) { return v == 0 ? QStringLiteral("game controller") : QStringLiteral("communication"); });
    l.add(QStringLiteral("throttle hold switch"), a.throttleIndex, b.throttleIndex,
        [](int v) { return noneOr(v, kNoSelection); });
    l.add(QStringLiteral("throttle hold mode"), a.throttleData, b.throttleData);
    l.add(QStringLiteral("throttle hold value"), a.throttleDataValues[0], b.throttleDataValues[0]);
    l.add(QStringLiteral("throttle recovery speed (s)"), a.throttleDataValues[1], b.throttleDataValues[1]);
    l.add(QStringLiteral("throttle hold speed (s)"), a.throttleDataValues[2], b.throttleDataValues[2]);
    l.add(QStringLiteral("idle warning"), a.freeWarning, b.freeWarning);
    l.add(QStringLiteral("low-voltage alarm (V)"), a.lowVoltage, b.lowVoltage);
    l.add(QStringLiteral("data port baud rate"), a.baud, b.baud);
    l.add(QStringLiteral("external SBUS input"), a.externalInput, b.externalInput,
        [](int v) { return v != 0 ? QStringLiteral("SBUS 1") : QStringLiteral("SBUS 2"); });
    for (int port = 0; port < 2; ++port) {
        l.add(QStringLiteral("SBUS %1 output").arg(port + 1), a.sbusOutput[port], b.sbusOutput[port], onOff);
        l.add(QStringLiteral("SBUS %1 priority").arg(port + 1), (a.sbusPriority >> (4 * port)) & 0x0F,
            (b.sbusPriority >> (4 * port)) & 0x0F);
    }
    using namespace ComprehensiveCodec;
    const struct {
        quint8 bit;
        const char *name;
    } versions[] = { { kSbus1V1, "SBUS 1 protocol V1.0" }, { kSbus1V2, "SBUS 1 protocol V2.0" },
        { kSbus2V1, "SBUS 2 protocol V1.0" }, { kSbus2V2, "SBUS 2 protocol V2.0" } };
    for (const auto &v : versions)
        l.add(QLatin1String(v.name), a.sbusVersion & v.bit, b.sbusVersion & v.bit, onOff);
    l.add(QStringLiteral("SBUS control switch"), a.sbusControlSwitch, b.sbusControlSwitch,
        [](int v) { return noneOr(v, kNoSelection); });
    // Flags: a high-nibble flag of the unit reads as 16, the same flag from
    // a file or the page as 1.
    for (int set = 0; set < kSbusControlSets; ++set) {
        for (int i = 0; i < 4; ++i)
            l.add(QStringLiteral("SBUS control set %1 value %2").arg(set + 1).arg(i + 1),
                a.sbusControl[set][i] != 0, b.sbusControl[set][i] != 0, onOff);
    }
}

void modulePower(Lines &l, const DeviceData &a, const DeviceData &b)
{
    l.add(QStringLiteral("module power"), a.modulePowerState[0], b.modulePowerState[0], onOff);
    l.add(QStringLiteral("module power ROM"), a.modulePowerState[1], b.modulePowerState[1], onOff);
    l.add(QStringLiteral("module power switch"), a.modulePhysicalCtl[0], b.modulePhysicalCtl[0],
        [](int v) { return v == kNoSelection ? QStringLiteral("none") : QStringLiteral("switch %1").arg(v + 1); });
    l.add(QStringLiteral("module power switch value"), a.modulePhysicalCtl[1], b.modulePhysicalCtl[1]);
}

void canFrame(Lines &l, int n, const CanFrameRecord &a, const CanFrameRecord &b)
{
    const QString f = QStringLiteral("CAN frame %1 ").arg(n + 1);
    l.add(f + QStringLiteral("standard id"), a.standardId, b.standardId);
    l.add(f + QStringLiteral("extended id"), int(a.extendedId), int(b.extendedId));
    l.add(f + QStringLiteral("extended"), a.ide, b.ide, onOff);
    l.add(f + QStringLiteral("remote"), a.rtr, b.rtr, onOff);
    l.add(f + QStringLiteral("data length"), a.dlc, b.dlc);
    for (int byte = 0; byte < 8; ++byte) {
        const QString db = f + QStringLiteral("byte %1 ").arg(byte + 1);
        l.add(db + QStringLiteral("in use"), a.dataMask >> byte & 1, b.dataMask >> byte & 1, onOff);
        l.add(db + QStringLiteral("bit by bit"), a.nonlinearMask >> byte & 1, b.nonlinearMask >> byte & 1, onOff);
        for (int i = 0; i < 3; ++i)
            l.add(db + QStringLiteral("mapping %1").arg(i + 1), a.byteMap[byte][i], b.byteMap[byte][i]);
        for (int bit = 0; bit < 8; ++bit) {
            for (int i = 0; i < 2; ++i)
                l.add(db + QStringLiteral("bit %1 mapping %2").arg(bit).arg(i + 1), a.bitMap[byte][bit][i],
                    b.bitMap[byte][bit][i]);
        }
    }
}

void customOutput(Lines &l, const DeviceData &a, const DeviceData &b)
{
    l.add(QStringLiteral("output mode"), a.PyxGOutputMode, b.PyxGOutputMode, [](int v) {
        static const QStringList modes { QStringLiteral("SBUS"), QStringLiteral("TTL"), QStringLiteral("RS232") };
        return v >= 1 && v <= 3 ? modes.at(v - 1) : QString::number(v);
    });
    l.add(QStringLiteral("TTL output"), a.TTLEnable, b.TTLEnable, onOff);
    l.add(QStringLiteral("CAN output"), a.CANEnable, b.CANEnable, onOff);
    l.add(QStringLiteral("CAN frequency (Hz)"), a.CANFrequency, b.CANFrequency);
    l.add(QStringLiteral("CAN baud rate"), a.CANBaud, b.CANBaud);
    l.add(QStringLiteral("CAN frames"), a.canFrames.size(), b.canFrames.size());
    for (int n = 0; n < qMin(a.canFrames.size(), b.canFrames.size()); ++n)
        canFrame(l, n, a.canFrames.at(n), b.canFrames.at(n));
    const TtlStream &s = a.TTLStream;
    const TtlStream &t = b.TTLStream;
    l.add(QStringLiteral("TTL frequency (Hz)"), s.header[CustomOutputCodec::kTtlFrequency],
        t.header[CustomOutputCodec::kTtlFrequency]);
    l.add(QStringLiteral("TTL frame head"), s.header[CustomOutputCodec::kTtlFrameHead],
        t.header[CustomOutputCodec::kTtlFrameHead]);
    l.add(QStringLiteral("TTL frame end"), s.header[CustomOutputCodec::kTtlFrameEnd],
        t.header[CustomOutputCodec::kTtlFrameEnd]);
    l.add(QStringLiteral("TTL format"), s.header[CustomOutputCodec::kTtlFormat], t.header[CustomOutputCodec::kTtlFormat]);
    l.add(QStringLiteral("TTL data minimum"), int(qint16(s.range[0])), int(qint16(t.range[0])));
    l.add(QStringLiteral("TTL data maximum"), int(qint16(s.range[1])), int(qint16(t.range[1])));
    for (int i = 0; i < kTtlTableSize; ++i) {
        l.add(QStringLiteral("TTL entry %1").arg(i + 1), s.table1[i], t.table1[i], onOff);
        l.add(QStringLiteral("TTL entry %1 input").arg(i + 1), s.table2[i], t.table2[i]);
    }
}

} // namespace

QStringList differences(const DeviceData &before, const DeviceData &after)
{
    Lines l;
    sbus(l, before, after);
    hold(l, before, after);
    keys(l, before, after);
    comprehensive(l, before, after);
    modulePower(l, before, after);
    customOutput(l, before, after);
    return l.take();
}

} // namespace RecordDiff
