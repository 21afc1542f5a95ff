#include "CustomOutputCodec.h"

#include "DeviceData.h"
#include "FileFragments.h"
#include "WireBytes.h"

using namespace WireBytes;

namespace
{

constexpr int kDataBytes = 8;
constexpr int kBits = 8;
constexpr quint8 kTtlEnableBit = 0x01;
constexpr quint8 kCanEnableBit = 0x10;
// How a write tells the unit the identifier and frame types.
constexpr quint8 kExtendedOnWire = 4;
constexpr quint8 kRemoteOnWire = 2;

// The frame a per-frame answer names, or nullptr when the list has no such
// frame.
CanFrameRecord *frameOf(const QByteArray &payload, int length, DeviceData &data)
{
    if (payload.size() != length)
        return nullptr;
    const int index = at(payload, 0);
    return index < data.canFrames.size() ? &data.canFrames[index] : nullptr;
}

void appendWord(QByteArray &out, quint16 value)
{
    out.append(char(value & 0xFF));
    out.append(char(value >> 8));
}

void appendLong(QByteArray &out, quint32 value)
{
    for (int shift = 0; shift < 32; shift += 8)
        out.append(char((value >> shift) & 0xFF));
}

quint32 long32(const QByteArray &bytes, int index)
{
    return quint32(word16(bytes, index)) | (quint32(word16(bytes, index + 2)) << 16);
}

template <typename T, int N> QString listOf(const T (&values)[N])
{
    int copy[N];
    for (int i = 0; i < N; ++i)
        copy[i] = int(values[i]);
    return FileFragments::intList(copy, N);
}

} // namespace

namespace CustomOutputCodec
{

const QStringList &canBaudTexts()
{
    static const QStringList texts { "50K", "100K", "125K", "200K", "250K", "500K", "800K", "1M" };
    return texts;
}

const QStringList &ttlBaudTexts()
{
    static const QStringList texts { "9600", "19200", "38400", "57600", "115200", "230400", "460800",
        "921600" };
    return texts;
}

int canBaudIndex(const QString &text)
{
    return qMax(0, canBaudTexts().indexOf(text));
}

TtlFormat ttlFormat(quint8 byte)
{
    TtlFormat f;
    f.baud = byte & 0x0F;
    f.checksum = (byte >> 4) & 0x03;
    f.bigEndian = (byte & 0x80) != 0;
    return f;
}

quint8 ttlFormatByte(const TtlFormat &format)
{
    return quint8((format.baud & 0x0F) | ((format.checksum & 0x03) << 4) | (format.bigEndian ? 0x80 : 0));
}

bool decodeOutputMode(const QByteArray &payload, DeviceData &data)
{
    if (payload.size() != 1)
        return false;
    const int mode = at(payload, 0);
    if (mode < kModeSbus || mode > kModeRs232)
        return false;
    data.PyxGOutputMode = mode;
    // With SBUS the output module cannot take CAN or the serial stream.
    if (mode == kModeSbus) {
        data.TTLEnable = false;
        data.CANEnable = false;
    }
    return true;
}

bool decodeEnables(const QByteArray &payload, DeviceData &data)
{
    if (payload.size() != 1)
        return false;
    data.TTLEnable = (at(payload, 0) & kTtlEnableBit) != 0;
    data.CANEnable = (at(payload, 0) & kCanEnableBit) != 0;
    return true;
}

bool decodeCanFrequency(const QByteArray &payload, DeviceData &data)
{
    if (payload.size() != 1 || at(payload, 0) < kMinFrequency || at(payload, 0) > kMaxFrequency)
        return false;
    data.CANFrequency = at(payload, 0);
    return true;
}

namespace
{
// The frame count, and with 11 bytes the header of the frame it names.
bool decodeCountAndHeader(const QByteArray &payload, DeviceData &data, bool grow)
{
    if (payload.isEmpty() || at(payload, 0) > kMaxCanFrames)
        return false;
    const int count = at(payload, 0);
    if (grow || count < data.canFrames.size())
        CanFrameList::resize(data, count);
    data.CANFrameCnt = quint8(count);
    if (payload.size() != kFrameHeaderBytes)
        return true;
    const int index = at(payload, 1);
    if (index >= data.canFrames.size())
        return true;
    CanFrameRecord &f = data.canFrames[index];
    f.standardId = word16(payload, 2);
    f.extendedId = long32(payload, 4);
    f.ide = at(payload, 8);
    f.rtr = at(payload, 9);
    f.dlc = quint8(qMin<int>(at(payload, 10), kDataBytes));
    return true;
}
} // namespace

// The page's list holds the frames the user works on: a count from the unit
// takes surplus ones away but never adds empty ones, which a write would
// then send over the unit's own frames.
bool decodeFrameCount(const QByteArray &payload, DeviceData &data)
{
    return decodeCountAndHeader(payload, data, false);
}

bool decodeUnitFrameCount(const QByteArray &payload, DeviceData &data)
{
    return decodeCountAndHeader(payload, data, true);
}

bool decodeStreamHead(const QByteArray &payload, DeviceData &data)
{
    if (payload.size() != kStreamHeadBytes)
        return false;
    TtlStream &s = data.TTLStream;
    for (int i = 0; i < 4; ++i)
        s.header[i] = at(payload, i);
    s.range[0] = word16(payload, 4);
    s.range[1] = word16(payload, 6);
    return true;
}

bool decodeStreamTable(const QByteArray &payload, DeviceData &data)
{
    if (payload.size() != kStreamTableBytes || at(payload, 0) != kTtlTableSize)
        return false;
    TtlStream &s = data.TTLStream;
    for (int k = 0; k < kTtlTableSize; ++k)
        s.table1[k] = (at(payload, 1 + k / 8) >> (k % 8)) & 1;
    for (int k = 0; k < kTtlTableSize; ++k)
        s.table2[k] = at(payload, 6 + k);
    return true;
}

bool decodeFrameMasks(const QByteArray &payload, DeviceData &data)
{
    CanFrameRecord *f = frameOf(payload, kFrameMasksBytes, data);
    if (!f)
        return false;
    f->dataMask = at(payload, 1);
    f->nonlinearMask = at(payload, 2);
    for (int j = 0; j < kDataBytes; ++j) {
        f->byteMap[j][0] = at(payload, 3 + j);
        f->byteMap[j][2] = at(payload, 11 + j);
    }
    return true;
}

bool decodeFrameBitChannels(const QByteArray &payload, DeviceData &data)
{
    CanFrameRecord *f = frameOf(payload, kFrameBitsBytes, data);
    if (!f)
        return false;
    for (int j = 0; j < kDataBytes; ++j)
        for (int b = 0; b < kBits; ++b)
            f->bitMap[j][b][0] = at(payload, 1 + kBits * j + b);
    return true;
}

bool decodeFrameBitValues(const QByteArray &payload, DeviceData &data)
{
    CanFrameRecord *f = frameOf(payload, kFrameBitsBytes, data);
    if (!f)
        return false;
    for (int j = 0; j < kDataBytes; ++j)
        for (int b = 0; b < kBits; ++b)
            f->bitMap[j][b][1] = at(payload, 1 + kBits * j + b);
    return true;
}

bool decodeFrameByteChannels(const QByteArray &payload, DeviceData &data)
{
    CanFrameRecord *f = frameOf(payload, kFrameChannelsBytes, data);
    if (!f)
        return false;
    for (int j = 0; j < kDataBytes; ++j)
        f->byteMap[j][1] = at(payload, 1 + j);
    return true;
}

bool decodeCanBaud(const QByteArray &payload, DeviceData &data)
{
    if (payload.size() != 1 || at(payload, 0) >= canBaudTexts().size())
        return false;
    data.CANBaud = canBaudTexts().at(at(payload, 0));
    return true;
}

QByteArray enablesPayload(const DeviceData &data)
{
    return QByteArray(1, char((data.TTLEnable ? kTtlEnableBit : 0) | (data.CANEnable ? kCanEnableBit : 0)));
}

QByteArray frameHeaderPayload(const CanFrameRecord &frame, int frameCount, int index)
{
    QByteArray out;
    out.reserve(kFrameHeaderBytes);
    out.append(byteOf(frameCount));
    out.append(byteOf(index));
    appendWord(out, frame.standardId);
    appendLong(out, frame.extendedId);
    out.append(char(frame.ide ? kExtendedOnWire : 0));
    out.append(char(frame.rtr ? kRemoteOnWire : 0));
    out.append(char(qMin<int>(frame.dlc, kDataBytes)));
    return out;
}

QByteArray streamHeadPayload(const TtlStream &stream)
{
    QByteArray out;
    out.reserve(kStreamHeadBytes);
    for (quint8 h : stream.header)
        out.append(char(h));
    appendWord(out, stream.range[0]);
    appendWord(out, stream.range[1]);
    return out;
}

QByteArray streamTablePayload(const TtlStream &stream)
{
    QByteArray out(kStreamTableBytes - kTtlTableSize, '\0');
    out[0] = char(kTtlTableSize);
    for (int k = 0; k < kTtlTableSize; ++k) {
        if (stream.table1[k] != 0)
            out[1 + k / 8] = char(at(out, 1 + k / 8) | (1 << (k % 8)));
    }
    for (quint8 selector : stream.table2)
        out.append(char(selector));
    return out;
}

QByteArray frameMasksPayload(const CanFrameRecord &frame, int index)
{
    QByteArray out;
    out.reserve(kFrameMasksBytes);
    out.append(byteOf(index));
    out.append(char(frame.dataMask));
    out.append(char(frame.nonlinearMask));
    for (const auto &triple : frame.byteMap)
        out.append(char(triple[0]));
    for (const auto &triple : frame.byteMap)
        out.append(char(triple[2]));
    return out;
}

QByteArray frameBitChannelsPayload(const CanFrameRecord &frame, int index)
{
    QByteArray out;
    out.reserve(kFrameBitsBytes);
    out.append(byteOf(index));
    for (const auto &byte : frame.bitMap)
        for (const auto &pair : byte)
            out.append(char(pair[0]));
    return out;
}

QByteArray frameBitValuesPayload(const CanFrameRecord &frame, int index)
{
    QByteArray out;
    out.reserve(kFrameBitsBytes);
    out.append(byteOf(index));
    for (const auto &byte : frame.bitMap)
        for (const auto &pair : byte)
            out.append(char(pair[1]));
    return out;
}

QByteArray frameByteChannelsPayload(const CanFrameRecord &frame, int index)
{
    QByteArray out;
    out.reserve(kFrameChannelsBytes);
    out.append(byteOf(index));
    for (const auto &triple : frame.byteMap)
        out.append(char(triple[1]));
    return out;
}

QList<QByteArray> payloadsFromRecord(const DeviceData &data)
{
    const QVector<CanFrameRecord> &frames = data.canFrames;
    const int count = frames.size();
    QList<QByteArray> out;
    out << QByteArray(1, byteOf(data.PyxGOutputMode)) << enablesPayload(data)
        << QByteArray(1, char(data.CANFrequency));
    if (count == 0)
        out << QByteArray(1, '\0');
    for (int i = 0; i < count; ++i)
        out << frameHeaderPayload(frames.at(i), count, i);
    out << streamHeadPayload(data.TTLStream) << streamTablePayload(data.TTLStream);
    using Builder = QByteArray (*)(const CanFrameRecord &, int);
    for (Builder build :
        { frameMasksPayload, frameBitChannelsPayload, frameBitValuesPayload, frameByteChannelsPayload }) {
        for (int i = 0; i < count; ++i)
            out << build(frames.at(i), i);
    }
    out << QByteArray(1, char(canBaudIndex(data.CANBaud)));
    return out;
}

QString fileFragment(const DeviceData &data)
{
    using FileFragments::line;
    QString text = line(QStringLiteral("PyxGOutputMode"), QString::number(data.PyxGOutputMode))
        + line(QStringLiteral("TTLEnable"), QString::number(data.TTLEnable ? 1 : 0))
        + line(QStringLiteral("CANEnable"), QString::number(data.CANEnable ? 1 : 0))
        + line(QStringLiteral("CANFrequency"), QString::number(data.CANFrequency))
        + line(QStringLiteral("CANBaud"), data.CANBaud.toHtmlEscaped())
        + line(QStringLiteral("CANFrameCnt"), QString::number(data.CANFrameCnt));
    for (int i = 0; i < data.canFrames.size(); ++i) {
        const CanFrameRecord &f = data.canFrames.at(i);
        // The position in the list is the frame's number on reading.
        const int types[] = { f.ide, f.rtr, f.dlc, f.dataMask, f.nonlinearMask };
        QString items = QString::number(i) + QLatin1Char(',') + QString::number(f.standardId)
            + QLatin1Char(',') + QString::number(f.extendedId) + QLatin1Char(',')
            + FileFragments::intList(types, 5);
        for (const auto &byte : f.bitMap)
            for (const auto &pair : byte)
                items += QLatin1Char(',') + listOf(pair);
        for (const auto &triple : f.byteMap)
            items += QLatin1Char(',') + listOf(triple);
        text += line(QStringLiteral("CANFrame"), items);
    }
    const TtlStream &s = data.TTLStream;
    const QString stream = listOf(s.header) + QLatin1Char(',') + listOf(s.range) + QLatin1Char(',')
        + listOf(s.table1) + QLatin1Char(',') + listOf(s.table2);
    // The stream's element ends the fragment without a line end; the body's
    // closing tag follows on the same line.
    text += QStringLiteral("<TTLStream>") + stream + QStringLiteral("</TTLStream>");
    return text;
}

} // namespace CustomOutputCodec

namespace CanFrameList
{

void resize(DeviceData &data, int count)
{
    const int bounded = qBound(0, count, kMaxCanFrames);
    const int old = data.canFrames.size();
    data.canFrames.resize(bounded); // new frames are zeroed
    for (int i = old; i < bounded; ++i)
        data.canFrames[i].index = i;
    data.CANFrameCnt = quint8(bounded);
}

bool append(DeviceData &data)
{
    if (data.canFrames.size() >= kMaxCanFrames)
        return false;
    resize(data, data.canFrames.size() + 1);
    return true;
}

bool remove(DeviceData &data, int index)
{
    if (index < 0 || index >= data.canFrames.size())
        return false;
    data.canFrames.remove(index);
    for (int i = index; i < data.canFrames.size(); ++i)
        data.canFrames[i].index = i;
    data.CANFrameCnt = quint8(data.canFrames.size());
    return true;
}

} // namespace CanFrameList
