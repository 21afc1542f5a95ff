#pragma once

#include "LineFaults.h"
#include "UnitModel.h"

#include <QString>
#include <QStringList>

namespace Vunit
{

struct VunitOptions {
    UnitConfig unit;
    FaultOptions faults;
    QString linkPath;
    bool printPath = false;
    QString recordPath;
    int hangupAfterMs = -1; // after the first upload start; -1: never
    qint64 timeOrigin = -1; // monotonic ms that the record counts from; -1: start
};

enum class ParseResult { Run, Help, Error };

// Reads the command line (args[0] is the program). Help: text holds the help
// text; Error: text holds the complaint.
ParseResult parseOptions(const QStringList &args, VunitOptions *options, QString *text);

// A command code as given on the command line: "0xA3", "A3" (hex).
int parseCode(const QString &text);

} // namespace Vunit
