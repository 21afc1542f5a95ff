#pragma once

#include "StatusText.h"

#include <QObject>
#include <QString>

class QLabel;
class QStatusBar;

// The bottom line of the main window: the port, the unit once identified,
// the connection state and the last operation with its outcome and time.
// Fed by plain events from the window; it only sets label texts, so nothing
// it does can hold up a request sequence.
class StatusLine : public QObject
{
    Q_OBJECT
public:
    // Puts its labels on the bar (object names statusPort, statusUnit,
    // statusConnection, statusOperation).
    explicit StatusLine(QStatusBar *bar);

    void setPort(const QString &portName);
    void setUnit(const QString &modelIdentifier, int moduleKind);
    void setConnection(StatusText::Connection state, const QString &reason = QString());

    // A read of a section (menu button, read button, showing the hub): the
    // answers that follow are counted until the next operation.
    void readStarted(int section);
    void factoryResetStarted(int section);
    // A group answer of the unit (channel reports are not counted).
    void answerArrived();
    void refused(const QString &refusalText);

    // A write of one section or of everything; a refusal that comes in while
    // its frames go out stays in view after it.
    void writeStarted(int section);
    void writeAllStarted();
    void wrote(int section);
    void notWritten(int section);
    void writeAllProgress(int sent, int total);
    void writeAllFinished(int sent, int total, bool portOpen);

    void loaded(const QString &fileName, int elements, qint64 stoppedAtLine);
    void notLoaded(const QString &fileName);
    void saved(const QString &fileName);
    void notSaved(const QString &fileName);
    void backupSaved(const QString &relativePath);
    void backupFailed(const QString &error);

    QString operationText() const;

private:
    enum class Open { None, Read, FactoryReset, Write, WriteAll };
    void begin(Open open, int section);
    void show(const QString &outcome);
    // The backup made before a write goes with that write's outcome.
    QString withBackupNote(const QString &outcome);

    QLabel *m_port;
    QLabel *m_unit;
    QLabel *m_connection;
    QLabel *m_operation;
    Open m_open = Open::None;
    int m_section = -1;
    int m_answers = 0;
    int m_refusals = 0;
    QString m_backupNote;
};
