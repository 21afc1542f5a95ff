#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

// Automatic backups: before the program writes to the unit, the record as it
// was last read from the unit goes to backup/<MODEL>-<yyyyMMdd>-<HHmmss>.cfg
// in the parameter file format; the newest kKept files are kept.
namespace Backups
{

constexpr int kKept = 30;

// "CEDAR-20240131-235959.cfg"
QString fileName(const QString &model, const QDateTime &when);

// Of the backup file names given, those beyond the newest `keep` (by the time
// in their names, whatever the model), oldest first.
QStringList surplus(const QStringList &names, int keep = kKept);

// Writes the text to the backup folder (made when missing) and removes the
// surplus. Returns the path written, or an empty string when the file could
// not be written (the reason in *error).
QString save(const QString &model, const QString &text, const QDateTime &when, QString *error);

} // namespace Backups
