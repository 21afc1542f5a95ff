#include "ModelDefaults.h"

#include "AppPaths.h"
#include "DeviceData.h"
#include "FormattedScan.h"
#include "ParamsLog.h"
#include "XmlContainers.h"

#include <QFile>
#include <QStringList>
#include <QXmlStreamReader>

using FormattedScan::wholeInt;
using FormattedScan::wholeReal;
using XmlContainers::channelGroupTags;
using XmlContainers::collectChildTexts;

namespace
{

const char *const kModelFiles[] = {
    "AlderConfig.xml",
    "BirchConfig.xml",
    "CedarConfig.xml",
    "LarchConfig.xml",
    "MapleConfig.xml",
    "RowanConfig.xml",
    "WillowConfig.xml",
};
constexpr int kModelCount = int(sizeof(kModelFiles) / sizeof(kModelFiles[0]));

// Children of <annotation>, in the order the name lists take them.
const QStringList &nameListTags()
{
    static const QStringList tags { "channelMap", "HoldSwitch", "KeyMap", "HidMap", "SbusControl" };
    return tags;
}

// "0,T1;1,T2;" -> T1, T2: each entry is "number,name;" and only the name is
// kept, its position in the list being the index the record uses.
void appendNames(QString text, QStringList &names)
{
    int end;
    while ((end = text.indexOf(QLatin1Char(';'))) >= 0) {
        const int comma = text.indexOf(QLatin1Char(','));
        // An entry without its number (no comma before the ";") keeps the
        // whole text as its name.
        const int start = comma >= 0 && comma < end ? comma + 1 : 0;
        names << text.mid(start, end - start);
        text.remove(0, end + 1);
    }
}

// "a,b,c" -> up to max integers into out, by position; an item that is no
// integer gives 0. Returns the number of entries written.
int fillInts(const QString &row, int *out, int max)
{
    const QStringList items = row.split(QLatin1Char(','));
    const int n = qMin(max, items.size());
    for (int i = 0; i < n; ++i)
        out[i] = wholeInt(items.at(i));
    return n;
}

// The rows of a text whose rows each end with ";" ("1,2,3;4,5,6;"); a
// trailing part without its ";" is no row.
QStringList terminatedRows(const QString &text)
{
    QStringList rows = text.split(QLatin1Char(';'));
    rows.removeLast(); // split() always yields at least one part
    return rows;
}

// A list that ends with ";" ("x1,...,xn;"): the text before the first ";",
// or a null string when the text holds no ";".
QString listBeforeSemicolon(const QString &text)
{
    const int end = text.indexOf(QLatin1Char(';'));
    return end < 0 ? QString() : text.left(end);
}

void applyNameLists(const QStringList &texts, DeviceData &data)
{
    QStringList *lists[] = { &data.channelMapNames, &data.holdSwitchNames, &data.keyMapNames,
        &data.hidMapNames, &data.sbusControlNames };
    for (int i = 0; i < texts.size(); ++i)
        appendNames(texts.at(i), *lists[i]);
}

void applyChannelGroups(int port, const QStringList &texts, DeviceData &data)
{
    int(*groups[])[kChannels] = { data.phase, data.fineTuning, data.leftTrip, data.rightTrip,
        data.safeProtectionState, data.safeProtectionValue, data.channelMap, data.noneValue };
    for (int g = 0; g < texts.size(); ++g) {
        const QString list = listBeforeSemicolon(texts.at(g));
        if (list.isNull()) {
            qCDebug(lcParams) << "model defaults: group" << channelGroupTags().at(g) << "of port" << port + 1
                              << "has no ';', skipped";
            continue;
        }
        // noneValue is taken as written: the factory value is the signed
        // value itself, no conversion as a parameter file gets on reading.
        fillInts(list, groups[g][port], kChannels);
    }
}

// Rows each ended by ";" ("255,255,1;255,255,1;"): row r fills rows[r]; rows
// beyond the record's count are not read.
template <int Rows, int Cols> void applyRows(const QString &text, int (&rows)[Rows][Cols])
{
    const QStringList parts = terminatedRows(text);
    for (int r = 0; r < qMin(Rows, parts.size()); ++r)
        fillInts(parts.at(r), rows[r], Cols);
}

void applyList(const QString &text, int *values, int max)
{
    const QString list = listBeforeSemicolon(text);
    if (!list.isNull())
        fillInts(list, values, max);
}

// The elements that hold a single text.
struct SimpleElement {
    const char *tag;
    void (*apply)(DeviceData &data, const QString &text);
};

const SimpleElement kSimpleElements[] = {
    { "minVolt", [](DeviceData &d, const QString &t) { d.minVolt = wholeReal(t); } },
    { "maxVolt", [](DeviceData &d, const QString &t) { d.maxVolt = wholeReal(t); } },
    { "baud", [](DeviceData &d, const QString &t) { d.baud = wholeInt(t); } },
    // One switch for both ports.
    { "sbusHoldSwitch",
        [](DeviceData &d, const QString &t) { d.sbusHoldSwitch[0] = d.sbusHoldSwitch[1] = wholeInt(t); } },
    { "throttleHoldSwitch", [](DeviceData &d, const QString &t) { d.throttleIndex = wholeInt(t); } },
    { "ckeyMap", [](DeviceData &d, const QString &t) { applyRows(t, d.ckeyMap); } },
    { "sckeyMap", [](DeviceData &d, const QString &t) { applyRows(t, d.sckeyMap); } },
    // A model file gives the kinds of the first twelve keys only; the other
    // twelve entries keep their values.
    { "keyGear", [](DeviceData &d, const QString &t) { applyList(t, d.keyGear, 12); } },
    { "hidMap", [](DeviceData &d, const QString &t) { applyList(t, d.hidMap, kHidAxes); } },
};

const SimpleElement *findSimple(const QStringRef &name)
{
    for (const SimpleElement &element : kSimpleElements) {
        if (name == QLatin1String(element.tag))
            return &element;
    }
    return nullptr;
}

} // namespace

const QStringList &modelIdentifiers()
{
    static const QStringList ids { QStringLiteral("ALDER"), QStringLiteral("BIRCH"), QStringLiteral("CEDAR"),
        QStringLiteral("LARCH"), QStringLiteral("MAPLE"), QStringLiteral("ROWAN"), QStringLiteral("WILLO") };
    return ids;
}

QString modelDefaultsFileName(int model)
{
    if (model < 0 || model >= kModelCount)
        return QString();
    return QString::fromLatin1(kModelFiles[model]);
}

QString modelDefaultsPath(int model)
{
    const QString name = modelDefaultsFileName(model);
    return name.isEmpty() ? QString() : AppPaths::file(QStringLiteral("/config/") + name);
}

namespace
{

void clearNameLists(DeviceData &data)
{
    data.channelMapNames.clear();
    data.holdSwitchNames.clear();
    data.keyMapNames.clear();
    data.hidMapNames.clear();
    // sbusControlNames is deliberately left as it is: loading a model file a
    // second time appends its SBUS control names once more. Keep it so.
}

} // namespace

bool loadModelDefaults(const QString &path, DeviceData &data)
{
    clearNameLists(data);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qCDebug(lcParams) << "model defaults: cannot open" << path;
        return false;
    }
    loadModelDefaults(&file, data);
    return true;
}

void loadModelDefaults(QIODevice *device, DeviceData &data)
{
    clearNameLists(data);
    QXmlStreamReader xml(device);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        const QStringRef name = xml.name();
        if (name == QLatin1String("annotation")) {
            QStringList texts;
            if (!collectChildTexts(xml, nameListTags(), texts))
                break;
            if (texts.size() == nameListTags().size())
                applyNameLists(texts, data);
            else
                qCDebug(lcParams) << "model defaults: annotation with" << texts.size()
                                  << "name lists ignored";
        } else if (name == QLatin1String("sbus1Default") || name == QLatin1String("sbus2Default")) {
            const int port = name == QLatin1String("sbus1Default") ? 0 : 1;
            QStringList texts;
            if (!collectChildTexts(xml, channelGroupTags(), texts))
                break;
            if (texts.size() == channelGroupTags().size())
                applyChannelGroups(port, texts, data);
            else
                qCDebug(lcParams) << "model defaults: port" << port + 1 << "defaults with" << texts.size()
                                  << "groups ignored";
        } else if (const SimpleElement *element = findSimple(name)) {
            const QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
            if (xml.hasError())
                break;
            element->apply(data, text);
        }
        // Any other element is stepped through; its children are still searched.
    }
    if (xml.hasError()) {
        const auto *file = qobject_cast<QFile *>(device);
        qCDebug(lcParams) << "model defaults: reading" << (file ? file->fileName() : QString())
                          << "stopped at line" << xml.lineNumber() << ":" << xml.errorString();
    }
}
