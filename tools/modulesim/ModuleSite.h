#pragma once

#include "HttpRequestCutter.h"
#include "ModuleState.h"
#include "ReportGenerator.h"

#include <QByteArray>

namespace ModuleSim
{

// The module's web server without the network: one request in, the whole
// response (status line, head and body) out.
class ModuleSite
{
public:
    // The link monitor drops this many bytes of every report reply as the
    // response head, without reading it; the module's server happens to send
    // exactly that much, so report replies keep their head at this size.
    static constexpr int kReportHeadSize = 280;

    explicit ModuleSite(ModuleKind kind = ModuleKind::Kite, quint32 seed = 1);

    // Report replies carry this text instead of generated records when set.
    void setFixedReport(const QByteArray &text)
    {
        m_fixedReport = text;
        m_hasFixedReport = true;
    }

    QByteArray respond(const HttpRequest &request);

    ModuleState &state() { return m_state; }

    static QByteArray response(const QByteArray &body);
    static QByteArray reportResponse(const QByteArray &report);
    static QByteArray notFound();

private:
    ModuleKind m_kind;
    ModuleState m_state;
    ReportGenerator m_reports;
    QByteArray m_fixedReport;
    bool m_hasFixedReport = false;
};

} // namespace ModuleSim
