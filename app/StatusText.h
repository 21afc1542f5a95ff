#pragma once

#include <QString>
#include <QTime>

// The words of the main window's status line, built without a window so that
// a test can read them. Every text goes through the translator (context
// "StatusLine").
namespace StatusText
{

enum class Connection { NotOpen, Connecting, Connected, Lost, Reconnecting };

QString port(const QString &portName);
// "Rowan, radio module"; empty before the unit said who it is.
QString unit(const QString &modelIdentifier, int moduleKind);
// The connection state; for NotOpen the reason follows.
QString connection(Connection state, const QString &reason = QString());

// The hub section's name as the status line says it ("SBUS 1", "channel hold").
QString section(int section);

QString read(int section, int answers);
QString factoryReset(int section, int answers);
QString wrote(int section);
QString notWritten(int section);
QString refused(const QString &refusalText);
QString writeAllProgress(int sent, int total);
// sent of total frames went out; refusals counted while they did; portOpen
// false when the port was gone at the end.
QString writeAllDone(int sent, int total, int refusals, bool portOpen);
QString loaded(const QString &fileName, int elements, qint64 stoppedAtLine);
QString notLoaded(const QString &fileName);
QString saved(const QString &fileName);
QString notSaved(const QString &fileName);
QString backupSaved(const QString &relativePath);
QString backupFailed(const QString &error);

// "21:07:45  Wrote channel hold": the outcome with the time it happened.
QString stamped(const QTime &when, const QString &outcome);

} // namespace StatusText
