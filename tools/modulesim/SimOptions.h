#pragma once

#include "ReportGenerator.h"

#include <QString>
#include <QStringList>

namespace ModuleSim
{

struct SimOptions {
    QString host = QStringLiteral("127.0.0.1");
    quint16 port = 0; // 0: any free port
    ModuleKind kind = ModuleKind::Kite;
    bool refuse = false;
    int slowMs = 0;
    bool closeMidReply = false;
    int floodBytes = 0; // > 0: every reply is this much filler
    QString recordPath;
    QString reportPath;
    quint32 seed = 1;
};

enum class ParseResult { Run, Help, Error };

// Reads the command line (args[0] is the program). Help: text holds the help
// text; Error: text holds the complaint.
ParseResult parseOptions(const QStringList &args, SimOptions *options, QString *text);

} // namespace ModuleSim
