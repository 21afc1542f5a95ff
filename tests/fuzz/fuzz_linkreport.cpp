// Feeds arbitrary bytes to the log monitor as a link report of every kind
// and for every module kind, and as the typed address its log file names are
// made of. Any crash or sanitizer report is a finding; so is a record span
// outside the report or not at a marker, more rows than the monitor shows,
// or a log file name that could leave log/.
#include "LinkReport.h"

#include <cstdint>
#include <cstdlib>

using namespace LinkReport;

namespace
{

void check(bool ok)
{
    if (!ok)
        std::abort();
}

void checkLogName(const QString &typed)
{
    const QString part = safeAddressPart(typed);
    check(!part.isEmpty() && part.size() <= 64 && !part.contains(QLatin1String("..")));
    for (const QChar c : part) {
        const ushort u = c.unicode();
        check((u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') || u == '.'
            || u == '-' || u == '_');
    }
    check(logFileName(ReportKind::Mesh, typed)
        == QLatin1String("/log/log_mesh_") + part + QLatin1String(".txt"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray report(reinterpret_cast<const char *>(data), int(size));
    for (ReportKind kind : { ReportKind::Access, ReportKind::Centre, ReportKind::Mesh }) {
        const QByteArray mark = marker(kind);
        int last = -1;
        for (const RecordSpan &span : cutRecords(report, kind)) {
            check(span.from > last && span.length >= mark.size() && span.from + span.length <= report.size());
            check(report.mid(span.from, mark.size()) == mark);
            last = span.from;
        }
        for (ModuleKind module :
            { ModuleKind::None, ModuleKind::Kite, ModuleKind::Kestrel, ModuleKind::Falcon }) {
            const QVector<LinkRecord> records = parseReport(report, kind, module);
            check(records.size() <= kMaxRecords);
            for (const LinkRecord &r : records)
                check(r.node.size() <= kMaxNodeIdLength);
            LinkRecord one;
            parseRecord(report, kind, module, &one);
        }
    }
    checkLogName(QString::fromUtf8(report));
    checkLogName(QString::fromLatin1(report));
    return 0;
}
