#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

struct DeviceData;
class QIODevice;

// The parameter file (*.cfg): an XML body whose elements are named like the
// record's fields, one per line, lines ended by "\r\n". Saving joins the
// pages' fragments in a fixed order; loading reads the file straight into the
// record.
namespace ParameterFile
{

// "<?xml ...?>\r\n<body>\r\n" and "</body>\r\n".
QString opening();
QString closing();

// The whole file: the opening, the fragments in the order given, the closing.
QString join(const QStringList &fragments);

// Reads the file into the record. False, with the record unchanged, when it
// cannot be opened. Nothing else is reported: a broken document stops the
// reading at the error, and what was read before it stays in the record.
//
// The reader keeps the unit's rules: lists are formatted scans that stop at
// the first mismatch (the fields after it keep their values); a default
// container counts only with exactly eight children, taken by position;
// noneValue entries with bit 7 set are converted, by a different rule on
// each port; unknown elements are searched through for known ones.
//
// The window reads fixed values with its conversion (Converted). Our own
// tools read every number as it is written (AsWritten), so that what they
// restore is what the file says.
enum class FixedValues { Converted, AsWritten };

// How far a load got, for the window to tell the user: the known elements
// taken (a default container counts once), and the line at which a broken
// document stopped the reading (0 when it was read to its end).
struct LoadReport {
    int elements = 0;
    qint64 stoppedAtLine = 0;
};

bool load(const QString &path, DeviceData &data, FixedValues fixed = FixedValues::Converted,
    LoadReport *report = nullptr);
void load(QIODevice *device, DeviceData &data, FixedValues fixed = FixedValues::Converted,
    LoadReport *report = nullptr);
void loadBytes(const QByteArray &bytes, DeviceData &data, FixedValues fixed = FixedValues::Converted);

// noneValue conversions of the reader, one entry at a time (see load()).
int convertPort1NoneValue(int value);
int convertPort2NoneValue(int value);

} // namespace ParameterFile

// config/lastAddr.tmp beside the program remembers the path of the last
// parameter file saved, in the system's 8-bit encoding, without a line end.
namespace LastPath
{

QString filePath();

// If the file exists its text is the last path; otherwise the file is
// created holding `current`, which stays the last path.
QString remember(const QString &current);

// Rewrites the file (truncating it) with the path.
void store(const QString &path);

// The file's bytes as the path they hold, and back.
QString fromFileBytes(const QByteArray &bytes);
QByteArray toFileBytes(const QString &path);

} // namespace LastPath
