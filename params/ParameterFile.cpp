#include "ParameterFile.h"

#include "AppPaths.h"
#include "CustomOutputCodec.h"
#include "DeviceData.h"
#include "FormattedScan.h"
#include "ParamsLog.h"
#include "XmlContainers.h"

#include <QBuffer>
#include <QFile>
#include <QHash>
#include <QTextCodec>
#include <QXmlStreamReader>

using FormattedScan::intListPattern;
using FormattedScan::scanInts;
using FormattedScan::wholeInt;

namespace
{

constexpr int kCanFrameItems = 1 + 7 + 8 * 8 * 2 + 8 * 3; // 160
constexpr int kTtlStreamItems = 4 + 2 + 2 * kTtlTableSize; // 86

const QString &channelPattern()
{
    static const QString p = intListPattern(kChannels, QStringLiteral(";"));
    return p;
}

const QString &pairPattern()
{
    static const QString p = intListPattern(2, QStringLiteral(";"));
    return p;
}

const QString &quadPattern()
{
    static const QString p = intListPattern(4, QStringLiteral(";"));
    return p;
}

template <int Port, int Position> void applyHeld(DeviceData &d, const QString &t)
{
    scanInts(t, channelPattern(), d.sbusHold[Port][Position], kChannels);
}

template <int Set> void applySbusControl(DeviceData &d, const QString &t)
{
    scanInts(t, quadPattern(), d.sbusControl[Set], 4);
}

void applyCkeyMap(DeviceData &d, const QString &t)
{
    static const QString p = intListPattern(3, QStringLiteral(";")).repeated(kKeyCombinations);
    scanInts(t, p, &d.ckeyMap[0][0], kKeyCombinations * 3);
}

void applySckeyMap(DeviceData &d, const QString &t)
{
    static const QString p = intListPattern(12, QStringLiteral(";")).repeated(kSuperKeys);
    scanInts(t, p, &d.sckeyMap[0][0], kSuperKeys * 12);
}

void applyKeyGear(DeviceData &d, const QString &t)
{
    static const QString p = intListPattern(kKeyGears, QStringLiteral(";"));
    scanInts(t, p, d.keyGear, kKeyGears);
}

void applyHidMap(DeviceData &d, const QString &t)
{
    static const QString p = intListPattern(kHidAxes, QStringLiteral(";"));
    scanInts(t, p, d.hidMap, kHidAxes);
}

void applyThrottleHoldSwitch(DeviceData &d, const QString &t)
{
    d.throttleIndex = wholeInt(t);
    qCDebug(lcParams).noquote() << QStringLiteral("throttle : ") + t;
    qCDebug(lcParams).noquote() << QStringLiteral("m_data.throttleIndex : ")
            + QString::number(d.throttleIndex);
}

void applyThrottleData(DeviceData &d, const QString &t)
{
    FormattedScan::scan(t, QStringLiteral("%d,%lg,%lg,%lg;"),
        { &d.throttleData, &d.throttleDataValues[0], &d.throttleDataValues[1], &d.throttleDataValues[2] });
}

void applyCanFrequency(DeviceData &d, const QString &t)
{
    bool ok = false;
    const ushort value = t.trimmed().toUShort(&ok);
    d.CANFrequency = quint8((ok ? value : 0) & 0xFF);
}

// A count from 1 to 10 grows the frame list with zeroed frames or shrinks it
// from its end; any other count leaves the list as it is.
void applyCanFrameCount(DeviceData &d, const QString &t)
{
    const int count = wholeInt(t);
    if (count < 1 || count > kMaxCanFrames) {
        qCDebug(lcParams) << "parameter file: CANFrameCnt" << count << "ignored";
        return;
    }
    CanFrameList::resize(d, count);
}

// Index, seven header values, 64 (channel, value) pairs, 8 triples; the frame
// is the one at that index of the list. A shorter element is refused whole.
void applyCanFrame(DeviceData &d, const QString &t)
{
    const QStringList items = t.split(QLatin1Char(','));
    if (items.size() < kCanFrameItems) {
        qCDebug(lcParams) << "parameter file: CANFrame with" << items.size() << "items refused";
        return;
    }
    const int index = wholeInt(items.at(0));
    if (index < 0 || index >= kMaxCanFrames || index >= d.canFrames.size()) {
        qCDebug(lcParams) << "parameter file: CANFrame index" << index << "ignored";
        return;
    }
    int i = 0;
    auto next = [&]() { return wholeInt(items.at(++i)); };
    CanFrameRecord &f = d.canFrames[index];
    f.index = index;
    f.standardId = quint16(next());
    // The extended identifier takes all 32 bits (up to 8 hex digits, no
    // check against the 29 bits of CAN), beyond what an int holds.
    f.extendedId = quint32(items.at(++i).trimmed().toLongLong());
    f.ide = quint8(next());
    f.rtr = quint8(next());
    f.dlc = quint8(next());
    f.dataMask = quint8(next());
    f.nonlinearMask = quint8(next());
    for (auto &byte : f.bitMap)
        for (auto &bit : byte)
            for (quint8 &value : bit)
                value = quint8(next());
    for (auto &triple : f.byteMap)
        for (quint8 &value : triple)
            value = quint8(next());
}

// Four header bytes, two 16-bit values, two tables of 40 bytes.
void applyTtlStream(DeviceData &d, const QString &t)
{
    const QStringList items = t.split(QLatin1Char(','));
    if (items.size() < kTtlStreamItems) {
        qCDebug(lcParams) << "parameter file: TTLStream with" << items.size() << "items refused";
        return;
    }
    int i = 0;
    auto next = [&]() { return wholeInt(items.at(i++)); };
    TtlStream &s = d.TTLStream;
    for (quint8 &v : s.header)
        v = quint8(next());
    for (quint16 &v : s.range)
        v = quint16(next());
    for (quint8 &v : s.table1)
        v = quint8(next());
    for (quint8 &v : s.table2)
        v = quint8(next());
}

using Apply = void (*)(DeviceData &, const QString &);

const QHash<QString, Apply> &simpleElements()
{
    static const QHash<QString, Apply> elements {
        { "sbusHoldSwitch",
            [](DeviceData &d, const QString &t) { scanInts(t, pairPattern(), d.sbusHoldSwitch, 2); } },
        { "sbus1-0", applyHeld<0, 0> },
        { "sbus1-1", applyHeld<0, 1> },
        { "sbus1-2", applyHeld<0, 2> },
        { "sbus2-0", applyHeld<1, 0> },
        { "sbus2-1", applyHeld<1, 1> },
        { "sbus2-2", applyHeld<1, 2> },
        { "ckeyMap", applyCkeyMap },
        { "sckeyMap", applySckeyMap },
        { "keyGear", applyKeyGear },
        { "hidMap", applyHidMap },
        { "hidOutput", [](DeviceData &d, const QString &t) { d.hidOutput = wholeInt(t); } },
        { "throttleHoldSwitch", applyThrottleHoldSwitch },
        { "throttleData", applyThrottleData },
        // Written as a real, read as an integer: a value with a fraction reads
        // back as 0. Keep it so.
        { "freeWarning", [](DeviceData &d, const QString &t) { d.freeWarning = wholeInt(t); } },
        { "lowVoltage", [](DeviceData &d, const QString &t) { d.lowVoltage = FormattedScan::wholeReal(t); } },
        // Written as the selector's text, read as the number it spells.
        { "baud", [](DeviceData &d, const QString &t) { d.baud = wholeInt(t); } },
        { "externalInput", [](DeviceData &d, const QString &t) { d.externalInput = wholeInt(t); } },
        { "sbusOutput",
            [](DeviceData &d, const QString &t) { scanInts(t, pairPattern(), d.sbusOutput, 2); } },
        { "sbusPriority",
            [](DeviceData &d, const QString &t) { d.sbusPriority = quint8(wholeInt(t) & 0xFF); } },
        { "sbusVersion",
            [](DeviceData &d, const QString &t) { d.sbusVersion = quint8(wholeInt(t) & 0xFF); } },
        { "sbusControlSwitch", [](DeviceData &d, const QString &t) { d.sbusControlSwitch = wholeInt(t); } },
        { "sbusControl-0", applySbusControl<0> },
        { "sbusControl-1", applySbusControl<1> },
        { "sbusControl-2", applySbusControl<2> },
        { "modulePowerState",
            [](DeviceData &d, const QString &t) {
                scanInts(t, intListPattern(2, QString()), d.modulePowerState, 2);
            } },
        { "modulePhysicalCtl",
            [](DeviceData &d, const QString &t) {
                scanInts(t, intListPattern(2, QString()), d.modulePhysicalCtl, 2);
            } },
        { "PyxGOutputMode", [](DeviceData &d, const QString &t) { d.PyxGOutputMode = wholeInt(t); } },
        { "TTLEnable", [](DeviceData &d, const QString &t) { d.TTLEnable = wholeInt(t) == 1; } },
        { "CANEnable", [](DeviceData &d, const QString &t) { d.CANEnable = wholeInt(t) == 1; } },
        { "CANFrequency", applyCanFrequency },
        { "CANBaud", [](DeviceData &d, const QString &t) { d.CANBaud = t; } },
        { "CANFrameCnt", applyCanFrameCount },
        { "CANFrame", applyCanFrame },
        { "TTLStream", applyTtlStream },
    };
    return elements;
}

// The eight texts of a default container, by position. Each is a formatted
// scan; the fixed values then get the port's conversion, entry by entry.
void applyChannelGroups(int port, const QStringList &texts, DeviceData &data)
{
    int(*groups[])[kChannels] = { data.phase, data.fineTuning, data.leftTrip, data.rightTrip,
        data.safeProtectionState, data.safeProtectionValue, data.channelMap, data.noneValue };
    for (int g = 0; g < texts.size(); ++g) {
        scanInts(texts.at(g), channelPattern(), groups[g][port], kChannels);
        if (groups[g] != data.noneValue)
            continue;
        // All sixteen entries go through the conversion, also those a scan
        // stopped before: they are converted again as the record held them.
        // The unit's files have always been read so; keep it.
        for (int c = 0; c < kChannels; ++c) {
            int &value = data.noneValue[port][c];
            if (!(value & 0x80))
                continue;
            if (port == 0) {
                value = ParameterFile::convertPort1NoneValue(value);
                qCDebug(lcParams).noquote() << QStringLiteral("noneValue: ") + QString::number(value);
            } else {
                value = ParameterFile::convertPort2NoneValue(value);
            }
        }
    }
}

// The eight texts of a default container, by position, every number as it
// is written: the fixed values keep their sign, whatever the port.
void applyChannelGroupsAsWritten(int port, const QStringList &texts, DeviceData &data)
{
    int(*groups[])[kChannels] = { data.phase, data.fineTuning, data.leftTrip, data.rightTrip,
        data.safeProtectionState, data.safeProtectionValue, data.channelMap, data.noneValue };
    for (int g = 0; g < texts.size(); ++g)
        scanInts(texts.at(g), channelPattern(), groups[g][port], kChannels);
}

} // namespace

namespace ParameterFile
{

QString opening()
{
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n");
}

QString closing()
{
    return QStringLiteral("</body>\r\n");
}

QString join(const QStringList &fragments)
{
    return opening() + fragments.join(QString()) + closing();
}

// Port 1: the negation of the entry masked with 0xEF (-5 becomes -235,
// 133 becomes -133). Port 2: the negation with bit 7 set (-5 becomes 133,
// 133 becomes -5). The unit's files have always been read so on the two
// ports; keep both rules exactly.
int convertPort1NoneValue(int value)
{
    return -(value & 0xEF);
}

int convertPort2NoneValue(int value)
{
    // In unsigned arithmetic, so that no entry can overflow on negation.
    return int((0u - unsigned(value)) | 0x80u);
}

void load(QIODevice *device, DeviceData &data, FixedValues fixed, LoadReport *report)
{
    LoadReport counted;
    QXmlStreamReader xml(device);
    const QHash<QString, Apply> &elements = simpleElements();
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        const QString name = xml.name().toString();
        if (name == QLatin1String("sbus1Default") || name == QLatin1String("sbus2Default")) {
            const int port = name == QLatin1String("sbus1Default") ? 0 : 1;
            QStringList texts;
            if (!XmlContainers::collectChildTexts(xml, XmlContainers::channelGroupTags(), texts))
                break;
            if (texts.size() == XmlContainers::channelGroupTags().size()) {
                if (fixed == FixedValues::AsWritten)
                    applyChannelGroupsAsWritten(port, texts, data);
                else
                    applyChannelGroups(port, texts, data);
                ++counted.elements;
            } else
                qCDebug(lcParams) << "parameter file: port" << port + 1 << "defaults with" << texts.size()
                                  << "children ignored";
            continue;
        }
        const Apply apply = elements.value(name);
        if (!apply)
            continue; // body and unknown elements: their content is still searched
        const QString text = xml.readElementText();
        if (xml.hasError())
            break; // a child element or a broken document: the element is not taken
        // The reader then steps one token further before it looks again: in
        // the program's own files that token is the line end. Keep it so.
        xml.readNext();
        apply(data, text);
        ++counted.elements;
    }
    if (xml.hasError()) {
        counted.stoppedAtLine = xml.lineNumber();
        qCDebug(lcParams) << "parameter file: reading stopped at line" << xml.lineNumber() << ":"
                          << xml.errorString();
    }
    if (report)
        *report = counted;
}

bool load(const QString &path, DeviceData &data, FixedValues fixed, LoadReport *report)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qCDebug(lcParams) << "parameter file: cannot open" << path;
        return false;
    }
    load(&file, data, fixed, report);
    return true;
}

void loadBytes(const QByteArray &bytes, DeviceData &data, FixedValues fixed)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    load(&buffer, data, fixed);
}

} // namespace ParameterFile

namespace LastPath
{

QString filePath()
{
    return AppPaths::writableFile(QStringLiteral("/config/lastAddr.tmp"));
}

QString remember(const QString &current)
{
    QFile file(filePath());
    if (file.exists()) {
        if (file.open(QIODevice::ReadOnly))
            return fromFileBytes(file.readAll());
        return current;
    }
    if (file.open(QIODevice::WriteOnly))
        file.write(toFileBytes(current));
    return current;
}

void store(const QString &path)
{
    QFile file(filePath());
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(toFileBytes(path));
}

QString fromFileBytes(const QByteArray &bytes)
{
    // The text ends at a NUL, as a path does. The locale's codec would take
    // a leading byte order mark for a header and drop it; here it belongs to
    // the path that was stored, so it is kept.
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return QTextCodec::codecForLocale()->toUnicode(
        bytes.constData(), int(qstrnlen(bytes.constData(), uint(bytes.size()))), &state);
}

QByteArray toFileBytes(const QString &path)
{
    return path.toLocal8Bit();
}

} // namespace LastPath
