#pragma once

#include <QSerialPort>
#include <QString>

// Why the unit's serial port did not open, in the terms a user acts on.
enum class PortProblem {
    None,
    NotConfigured, // no port.xml, or no port named in it
    NoSuchDevice, // nothing at that path: unplugged, or a typo
    PermissionDenied, // the user may not open it (not in the dialout group)
    Busy, // another program holds it
    Other,
};

namespace PortProblems
{

// The error QSerialPort reported on open, whether the device path exists and
// whether this user may read and write it. Qt reports a device that another
// program holds (its lock file, or the exclusive flag on the line) as a
// permission error too; when the user's own access is fine that is the case.
PortProblem classify(QSerialPort::SerialPortError error, bool pathExists, bool readWriteAllowed);

// classify() with the path and access looked up for the port name (a bare
// name such as "ttyUSB0" lives under /dev).
PortProblem classifyOpenFailure(const QString &portName, QSerialPort::SerialPortError error);

// One sentence for the connecting screen and the status line; detail is
// Qt's own error text, used for the problems without words of their own.
QString text(PortProblem problem, const QString &portName, const QString &detail = QString());

// A few words for the status line: "no such device", "busy".
QString shortText(PortProblem problem);

} // namespace PortProblems
