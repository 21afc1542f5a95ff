#pragma once

#include <QStringList>

#include <optional>

// config/port.xml names the serial port of the unit: every start element
// "port" carries a port name as its text; other elements are ignored.
// Returns nothing when the file cannot be opened; the names in document order
// otherwise (a later name replaces an earlier one when the port is opened).
std::optional<QStringList> readPortNames(const QString &path);
