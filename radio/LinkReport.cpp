#include "LinkReport.h"

#include "AppPaths.h"
#include "ReplyScan.h"

#include <QDir>
#include <QFile>

#include <climits>
#include <cstring>

namespace
{

// Where the figures of a row sit among a layout's conversions.
struct RecordLayout {
    const char *pattern;
    int node; // -1: the node id is the quoted text ahead of the numbers
    int distance;
    int rssiMain, rssiSecond;
    int rsrpMain, rsrpSecond;
    int snrMain, snrSecond;
    int power;
};

// The report layouts of the module firmware. The quoted figures carry their
// double quotes on the wire.
// clang-format off
const RecordLayout kAccessKite = {
    "^DRPR: %hd,%hd,%hd,\"%hd\",%hd,\"%hd\",\"%hd\",\"%hd\",%hd,\"%hd\",%d,%d,%hd,%hd,%hd,%hd,\"%hd\",\"%hd\",%hd",
    0, 10, 12, 13, 14, 15, 16, 17, 18
};
const RecordLayout kAccessFalcon = {
    "^DRPR: %hd,%hd,%hd,%hd,\"%hd\",%hd,\"%hd\",%hd,\"%hd\",%hd,\"%hd\",%d,%d,%hd,%hd,%hd,%hd,%hd,\"%hd\",\"%hd\",%hd",
    0, 11, 13, 14, 15, 16, 18, 19, 20
};
const RecordLayout kCentreKite = {
    "%hd,\"%hd\",%hd,\"%hd\",\"%hd\",\"%hd\",%hd,\"%hd\",%d,%d,%hd,%hd,%hd,%hd,%hd,\"%hd\",\"%hd\",%hd",
    -1, 8, 10, 11, 12, 13, 15, 16, 17
};
const RecordLayout kCentreFalcon = {
    "%hd,%hd,\"%hd\",%hd,\"%hd\",%hd,\"%hd\",%hd,\"%hd\",%d,%d,%hd,%hd,%hd,%hd,%hd,\"%hd\",\"%hd\",%hd",
    -1, 9, 11, 12, 13, 14, 16, 17, 18
};
const RecordLayout kMesh = {
    "^DRPR: %hd,%hd,%hd,%x,%hd,\"%hd\",%hd,\"%hd\",\"%hd\",%hd,\"%hd\",%d,%hd,%hd,%hd,%hd,%hd,%hd,%hd,%hd,\"%hd\",\"%hd\"",
    3, 11, 12, 13, 14, 15, 20, 21, 16
};
// clang-format on

constexpr int kMaxConversions = 24;

const RecordLayout *layoutFor(LinkReport::ReportKind kind, LinkReport::ModuleKind module)
{
    using LinkReport::ModuleKind;
    switch (kind) {
    case LinkReport::ReportKind::Mesh:
        return &kMesh;
    case LinkReport::ReportKind::Access:
        return module == ModuleKind::Kite  ? &kAccessKite
            : module == ModuleKind::Falcon ? &kAccessFalcon
                                           : nullptr;
    case LinkReport::ReportKind::Centre:
        return module == ModuleKind::Kite  ? &kCentreKite
            : module == ModuleKind::Falcon ? &kCentreFalcon
                                           : nullptr;
    }
    return nullptr;
}

const char kCentreMarker[] = "^DAPR";
const char kAccessMarker[] = "^DRPR";
const char kRecordEnd[] = "\r\n\r\n";

} // namespace

namespace LinkReport
{

QString command(ModuleKind module, bool centreMode)
{
    switch (module) {
    case ModuleKind::Kestrel:
        return QStringLiteral("AT^DRPR=2"); // a mesh has no centre view
    case ModuleKind::Kite:
    case ModuleKind::Falcon:
        return centreMode ? QStringLiteral("AT^DAPR=2") : QStringLiteral("AT^DRPR=2");
    case ModuleKind::None:
        break;
    }
    return QString();
}

QByteArray request(const QString &typedAddress, const QString &command)
{
    // The content length stays 31, the length of the form field name and a
    // nine-character command, whatever the command is: the module's web
    // server has always been sent this request.
    const QString text = QStringLiteral("POST /boafrm/formAtcmdProcess HTTP/1.1\r\n"
                                        "Accept:*/*\r\n"
                                        "Referer: http://")
        + typedAddress
        + QStringLiteral(
            "/index/chn/modem_at_debug.htm\r\n"
            "Accept-Language: zh-Hans-CN,zh-Hans;q=0.8,en-US;q=0.5,en;q=0.2\r\n"
            "Content-Type:text/plain;charset=UTF-8\r\n"
            "UA-CPU: AMD64\r\n"
            "Accept-Encoding:gzip, deflate\r\n"
            "User-Agent: Mozilla/5.0 (Windows NT 10.0; Win64; x64; Trident/7.0; rv:11.0) like Gecko\r\n"
            "Host: ")
        + typedAddress
        + QStringLiteral("\r\n"
                         "Content-Length: 31\r\n"
                         "Connection: Keep-Alive\r\n"
                         "Cache-Control: no-cache\r\n"
                         "Cookie: user_choose=block\r\n"
                         "\r\n"
                         "FormAtcmd_Param_Atcmd=")
        + command;
    return text.toLatin1();
}

ReportKind reportKind(ModuleKind module, bool centreMode)
{
    if (module == ModuleKind::Kestrel)
        return ReportKind::Mesh;
    return centreMode ? ReportKind::Centre : ReportKind::Access;
}

bool reportText(const QByteArray &reply, QByteArray *report)
{
    // The head is always taken as exactly this many bytes: the module's web
    // server sends a head of fixed length, and the monitor has relied on it.
    if (reply.size() <= kReplyHeadBytes)
        return false;
    *report = reply.mid(kReplyHeadBytes);
    return true;
}

QByteArray marker(ReportKind kind)
{
    return QByteArray(kind == ReportKind::Centre ? kCentreMarker : kAccessMarker);
}

QVector<RecordSpan> cutRecords(const QByteArray &report, ReportKind kind)
{
    const QByteArray mark = marker(kind);
    QVector<RecordSpan> spans;
    // The end found for one record serves every later marker before it, so
    // a report full of markers and no terminator is still read in one pass.
    int end = -1;
    for (int at = report.indexOf(mark); at >= 0; at = report.indexOf(mark, at + 1)) {
        if (end != report.size() && end < at) {
            end = report.indexOf(kRecordEnd, at);
            if (end < 0)
                end = report.size();
        }
        spans.append({ at, end - at });
    }
    return spans;
}

bool parseRecord(const char *data, int size, ReportKind kind, ModuleKind module, LinkRecord *record)
{
    const RecordLayout *layout = layoutFor(kind, module);
    if (!layout)
        return false;
    QString node;
    if (layout->node < 0) {
        // ^DAPR: "<node id>",<numbers>: the id is cut out first.
        const char *open = static_cast<const char *>(memchr(data, '"', size_t(size)));
        if (!open)
            return false;
        const int idFrom = int(open - data) + 1;
        const char *close = static_cast<const char *>(memchr(open + 1, '"', size_t(size - idFrom)));
        if (!close)
            return false;
        const int idLength = int(close - data) - idFrom;
        node = QString::fromLatin1(data + idFrom, qMin(idLength, kMaxNodeIdLength));
        int rest = int(close - data) + 1;
        if (rest < size && data[rest] == ',')
            ++rest;
        data += rest;
        size -= rest;
    }
    qint64 v[kMaxConversions] = {};
    const int wanted = ReplyScan::conversionCount(layout->pattern);
    // A record that does not fill every figure is not shown.
    if (ReplyScan::scanValues(QByteArray::fromRawData(data, size), 0, layout->pattern, v, kMaxConversions)
        != wanted)
        return false;
    record->node = layout->node < 0 ? node : QString::number(v[layout->node]);
    record->main = { int(v[layout->rssiMain]), int(v[layout->rsrpMain]), int(v[layout->snrMain]) };
    record->second = { int(v[layout->rssiSecond]), int(v[layout->rsrpSecond]), int(v[layout->snrSecond]) };
    record->power = int(v[layout->power]);
    record->distance = int(v[layout->distance]);
    return true;
}

bool parseRecord(const QByteArray &record, ReportKind kind, ModuleKind module, LinkRecord *out)
{
    return parseRecord(record.constData(), record.size(), kind, module, out);
}

QVector<LinkRecord> parseReport(const QByteArray &report, ReportKind kind, ModuleKind module)
{
    QVector<LinkRecord> records;
    if (!layoutFor(kind, module))
        return records;
    for (const RecordSpan &span : cutRecords(report, kind)) {
        LinkRecord record;
        if (parseRecord(report.constData() + span.from, span.length, kind, module, &record))
            records.append(record);
        if (records.size() == kMaxRecords)
            break;
    }
    return records;
}

const SnrBand kSnrBands[kSnrBandCount]
    = { { 19, "#F0F0F0" }, { 13, "#FFF68F" }, { 7, "#FFA500" }, { INT_MIN, "#FF3400" } };

int snrBand(int snr)
{
    int band = 0;
    while (band < kSnrBandCount - 1 && snr < kSnrBands[band].lowest)
        ++band;
    return band;
}

QString snrStyle(int snr)
{
    return QStringLiteral("background-color:%1;").arg(QLatin1String(kSnrBands[snrBand(snr)].colour));
}

QString safeAddressPart(const QString &typedAddress)
{
    // The address becomes part of a file name under log/. Only ASCII
    // letters, digits, '-' and single dots are kept; everything else (the
    // port's ':', '/', '\', NUL, control characters, blanks, brackets,
    // anything outside ASCII) becomes '_', and a run of dots is one dot, so
    // neither a separator nor ".." can appear. At most 64 characters are
    // kept; nothing left gives "unnamed".
    constexpr int kMaxLength = 64;
    QString safe;
    safe.reserve(qMin(typedAddress.size(), kMaxLength));
    for (const QChar c : typedAddress) {
        if (safe.size() == kMaxLength)
            break;
        const ushort u = c.unicode();
        const bool kept
            = (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') || u == '-';
        if (kept)
            safe += c;
        else if (u == '.' && !safe.endsWith(QLatin1Char('.')))
            safe += c;
        else if (u != '.')
            safe += QLatin1Char('_');
    }
    return safe.isEmpty() ? QStringLiteral("unnamed") : safe;
}

QString logFileName(ReportKind kind, const QString &typedAddress)
{
    const QString part = safeAddressPart(typedAddress);
    switch (kind) {
    case ReportKind::Access:
        return QStringLiteral("/log/log_access_%1.txt").arg(part);
    case ReportKind::Centre:
        return QStringLiteral("/log/log_center_%1.txt").arg(part);
    case ReportKind::Mesh:
        break;
    }
    return QStringLiteral("/log/log_mesh_%1.txt").arg(part);
}

bool appendToLog(QFile &file, ReportKind kind, const QString &typedAddress, const QByteArray &report)
{
    QDir().mkpath(AppPaths::writableFile(QStringLiteral("/log")));
    file.setFileName(AppPaths::writableFile(logFileName(kind, typedAddress)));
    if (!file.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Text))
        return false;
    file.write(report);
    file.close();
    return true;
}

} // namespace LinkReport
