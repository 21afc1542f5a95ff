#include "FileParts.h"

#include "FormattedScan.h"
#include "XmlContainers.h"

#include <QHash>
#include <QSet>
#include <QXmlStreamReader>

namespace FileParts
{

namespace
{

struct PartInfo {
    const char *name;
    QStringList tags;
};

const QVector<PartInfo> &table()
{
    static const QVector<PartInfo> parts {
        { "SBUS 1 channel settings", { "sbus1Default" } },
        { "SBUS 2 channel settings", { "sbus2Default" } },
        { "channel hold",
            { "sbusHoldSwitch", "sbus1-0", "sbus2-0", "sbus1-1", "sbus2-1", "sbus1-2", "sbus2-2" } },
        { "key combinations", { "ckeyMap" } },
        { "super keys", { "sckeyMap" } },
        { "key kinds", { "keyGear" } },
        { "HID mapping", { "hidMap" } },
        { "HID mode", { "hidOutput" } },
        { "throttle hold", { "throttleHoldSwitch", "throttleData" } },
        { "idle warning", { "freeWarning" } },
        { "low-voltage alarm", { "lowVoltage" } },
        { "baud rate", { "baud" } },
        { "external SBUS input", { "externalInput" } },
        { "SBUS outputs", { "sbusOutput" } },
        { "SBUS priorities", { "sbusPriority" } },
        { "SBUS protocols", { "sbusVersion" } },
        { "SBUS control", { "sbusControlSwitch", "sbusControl-0", "sbusControl-1", "sbusControl-2" } },
        { "module power", { "modulePowerState" } },
        { "module power switch", { "modulePhysicalCtl" } },
        { "output mode", { "PyxGOutputMode" } },
        { "output enables", { "TTLEnable", "CANEnable" } },
        { "CAN frequency", { "CANFrequency" } },
        { "CAN baud rate", { "CANBaud" } },
        { "CAN frames", { "CANFrameCnt", "CANFrame" } },
        { "TTL stream", { "TTLStream" } },
    };
    return parts;
}

// Element name -> part, for every element of every part.
const QHash<QString, Part> &partOfTag()
{
    static const QHash<QString, Part> map = [] {
        QHash<QString, Part> m;
        for (int p = 0; p < PartCount; ++p)
            for (const QString &tag : table().at(p).tags)
                m.insert(tag, Part(p));
        return m;
    }();
    return map;
}

// The tag a line of the program's files begins with ("<baud>115200..." ->
// "baud"); empty for a closing tag or a line that is no element.
QString leadingTag(const QString &line)
{
    if (!line.startsWith(QLatin1Char('<')) || line.startsWith(QLatin1String("</"))
        || line.startsWith(QLatin1String("<?")))
        return QString();
    for (int i = 1; i < line.size(); ++i) {
        const QChar c = line.at(i);
        if (c == QLatin1Char('>') || c == QLatin1Char('/') || c == QLatin1Char(' '))
            return line.mid(1, i - 1);
    }
    return QString();
}

} // namespace

QString name(Part part)
{
    return QString::fromLatin1(table().at(part).name);
}

QString names(const Parts &parts)
{
    QStringList list;
    for (int p = 0; p < PartCount; ++p) {
        if (parts.test(size_t(p)))
            list << name(Part(p));
    }
    return list.join(QStringLiteral(", "));
}

const QStringList &tags(Part part)
{
    return table().at(part).tags;
}

Parts ofModuleKind(int moduleKind)
{
    Parts parts;
    for (int p = Sbus1; p <= SbusControl; ++p)
        parts.set(size_t(p));
    if (moduleKind == 1) {
        parts.set(ModulePower);
        parts.set(ModuleSwitch);
    } else if (moduleKind == 2) {
        for (int p = OutputMode; p <= SerialStream; ++p)
            parts.set(size_t(p));
    }
    return parts;
}

int ofRead(quint8 readCode, const QByteArray &payload)
{
    static const QHash<quint8, Part> parts {
        { 0xB4, ChannelHold },
        { 0xC0, KeyCombinations },
        { 0xC2, SuperKeys },
        { 0xCA, KeyKinds },
        { 0xC6, HidMapping },
        { 0x17, HidMode },
        { 0xB6, ThrottleHold },
        { 0xE9, IdleWarning },
        { 0xEB, LowVoltage },
        { 0x13, Baud },
        { 0x19, ExternalInput },
        { 0xC4, SbusOutputs },
        { 0x30, SbusPriorities },
        { 0x32, SbusProtocols },
        { 0x34, SbusControl },
        { 0x36, ModulePower },
        { 0x38, ModuleSwitch },
        { 0x15, OutputMode },
        { 0xD1, OutputEnables },
        { 0xD3, CanFrequency },
        { 0x24, CanBaud },
        { 0xD5, CanFrames },
        { 0xDB, CanFrames },
        { 0xDD, CanFrames },
        { 0x20, CanFrames },
        { 0x22, CanFrames },
        { 0xD7, SerialStream },
        { 0xD9, SerialStream },
    };
    if (readCode == 0xA3 || readCode == 0xA7) {
        if (payload.isEmpty() || quint8(payload.at(0)) > 1)
            return -1;
        return payload.at(0) == 0 ? Sbus1 : Sbus2;
    }
    return parts.contains(readCode) ? int(parts.value(readCode)) : -1;
}

Parts inFile(const QByteArray &bytes)
{
    QSet<QString> seen;
    QSet<int> frames;
    int frameCount = -1;
    QXmlStreamReader xml(bytes);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        const QString tag = xml.name().toString();
        if (tag == QLatin1String("sbus1Default") || tag == QLatin1String("sbus2Default")) {
            QStringList texts;
            if (!XmlContainers::collectChildTexts(xml, XmlContainers::channelGroupTags(), texts))
                break;
            if (texts.size() == XmlContainers::channelGroupTags().size())
                seen.insert(tag);
            continue;
        }
        if (!partOfTag().contains(tag))
            continue;
        const QString text = xml.readElementText();
        if (xml.hasError())
            break;
        // As the reader does: one token further, so that an element standing
        // right behind another on its line counts as little as it loads.
        xml.readNext();
        seen.insert(tag);
        if (tag == QLatin1String("CANFrameCnt"))
            frameCount = FormattedScan::wholeInt(text);
        else if (tag == QLatin1String("CANFrame"))
            frames.insert(FormattedScan::wholeInt(text.section(QLatin1Char(','), 0, 0)));
    }
    Parts parts;
    for (int p = 0; p < PartCount; ++p) {
        bool whole = true;
        for (const QString &tag : tags(Part(p)))
            whole = whole && (seen.contains(tag) || (tag == QLatin1String("CANFrame") && frameCount == 0));
        parts.set(size_t(p), whole);
    }
    if (parts.test(CanFrames)) {
        bool all = frameCount >= 0 && frameCount <= 10;
        for (int i = 0; all && i < frameCount; ++i)
            all = frames.contains(i);
        parts.set(CanFrames, all);
    }
    return parts;
}

QString keepOnly(const QString &text, const Parts &parts)
{
    const QString lineEnd = QStringLiteral("\r\n");
    QString out;
    QString dropUntil; // the closing tag of a container being left out
    int from = 0;
    while (from < text.size()) {
        const int end = text.indexOf(lineEnd, from);
        const int next = end < 0 ? text.size() : end + lineEnd.size();
        const QString line = text.mid(from, next - from);
        from = next;
        if (!dropUntil.isEmpty()) {
            if (line.startsWith(dropUntil))
                dropUntil.clear();
            continue;
        }
        const QString tag = leadingTag(line);
        const auto part = partOfTag().constFind(tag);
        if (part == partOfTag().constEnd() || parts.test(size_t(*part))) {
            out += line;
            continue;
        }
        if (*part == Sbus1 || *part == Sbus2)
            dropUntil = QStringLiteral("</") + tag + QLatin1Char('>');
        // The serial stream's line carries the body's closing tag after it.
        const int close = line.indexOf(QLatin1String("</body>"));
        if (close > 0)
            out += line.mid(close);
    }
    return out;
}

} // namespace FileParts
