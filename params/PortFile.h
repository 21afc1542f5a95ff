#pragma once

#include <QStringList>

#include <optional>

class QIODevice;

// config/port.xml names the serial port of the unit: every start element
// "port" carries a port name as its text; other elements are ignored.
// Returns nothing when the file cannot be opened; the names in document order
// otherwise (a later name replaces an earlier one when the port is opened).
std::optional<QStringList> readPortNames(const QString &path);
// The names from an open device.
QStringList readPortNames(QIODevice *device);

// Writes a port file naming one port, in the form readPortNames() reads
// (the folder is made when missing). False when it cannot be written.
bool writePortFile(const QString &path, const QString &name);
// The same document into an open device.
bool writePortFile(QIODevice *device, const QString &name);
