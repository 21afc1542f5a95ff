#include "ModuleSite.h"

namespace ModuleSim
{

namespace
{

const QByteArray kAtField = QByteArrayLiteral("FormAtcmd_Param_Atcmd=");

QByteArray head(const char *status, int contentLength)
{
    return QByteArray("HTTP/1.1 ") + status
        + "\r\nServer: quillmark-modulesim\r\nContent-Type: text/plain\r\nContent-Length: "
        + QByteArray::number(contentLength) + "\r\nConnection: keep-alive\r\n";
}

} // namespace

ModuleSite::ModuleSite(ModuleKind kind, quint32 seed)
    : m_kind(kind)
    , m_state(seed, kind == ModuleKind::Falcon)
    , m_reports(kind, seed)
{
}

QByteArray ModuleSite::response(const QByteArray &body)
{
    return head("200 OK", body.size()) + "\r\n" + body;
}

QByteArray ModuleSite::reportResponse(const QByteArray &report)
{
    QByteArray h = head("200 OK", report.size());
    const QByteArray filler = "X-Fill: ";
    const int room = kReportHeadSize - h.size() - filler.size() - 4; // its line end and the blank line
    h += filler + QByteArray(qMax(0, room), 'x') + "\r\n\r\n";
    return h + report;
}

QByteArray ModuleSite::notFound()
{
    return head("404 Not Found", 0) + "\r\n";
}

QByteArray ModuleSite::respond(const HttpRequest &request)
{
    const QByteArray &path = request.path;
    const QByteArray &body = request.body;
    if (path == "/boafrm/formAtcmdProcess") {
        if (!body.startsWith(kAtField))
            return response(QByteArrayLiteral("\r\nERROR\r\n"));
        const QByteArray command = body.mid(kAtField.size()).trimmed();
        // The link monitor's polls: the report comes back after a head of
        // fixed size. Without a module kind chosen the monitor polls with
        // an empty command and gets an empty report.
        if (command.isEmpty())
            return reportResponse(QByteArray());
        const QByteArray upper = command.toUpper();
        if (upper == "AT^DAPR=2" || upper == "AT^DRPR=2") {
            if (m_hasFixedReport)
                return reportResponse(m_fixedReport);
            ReportRecords records = ReportRecords::Centre;
            if (upper == "AT^DRPR=2")
                records = m_kind == ModuleKind::Kestrel ? ReportRecords::Mesh : ReportRecords::Access;
            return reportResponse(m_reports.report(records));
        }
        return response(m_state.atReply(command));
    }
    if (path == "/boafrm/formCfunProcess")
        return response(m_state.restartForm(body));
    if (path == "/boafrm/formDapiProcess")
        return response(m_state.keyForm(body));
    if (path == "/boafrm/formDdtcProcess")
        return response(m_state.nodeTypeForm(body));
    if (path == "/boafrm/formNetifcfgProcess")
        return response(m_state.ipForm(body));
    if (path == "/boafrm/formShellCmdProcess")
        return response(m_state.shellForm(body));
    return notFound();
}

} // namespace ModuleSim
