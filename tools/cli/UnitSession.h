#pragma once

#include "DeviceData.h"
#include "FileParts.h"
#include "FrameCutter.h"
#include "Sequences.h"

#include <QObject>
#include <QSerialPort>
#include <QSet>
#include <QStringList>

#include <functional>

// The unit on its serial port, for the command-line tool: the window's
// identification, read groups and write-all, with the window's frames and
// pacing (a 100 ms busy wait after every request). Unlike the window it
// notices what did not answer.
class UnitSession : public QObject
{
    Q_OBJECT
public:
    using Progress = std::function<void(const QString &what)>;

    explicit UnitSession(QObject *parent = nullptr);

    // Opens the port at 115200 8N1; false with a message for a port that is
    // not there, is in use or cannot be opened.
    bool open(const QString &portName, QString *error);

    // Module kind and identity as the window asks at start. False when no
    // known identifier arrives within timeoutMs after the requests.
    bool identify(int timeoutMs, QString *error);
    QString identifier() const { return m_identifier; }
    int model() const { return m_model; }
    int moduleKind() const { return m_moduleKind; }

    // Sends the read group of every section the unit has (and, with the
    // output module, its CAN frames) and takes the answers into data. False
    // when a group did not answer within waitMs after the last request; the
    // missing requests are named in *error. With `only`, just the reads of
    // those parts go out.
    bool readAll(DeviceData &data, int waitMs, const Progress &progress, QString *error,
        const FileParts::Parts *only = nullptr);

    // Sends the frames of the plan with their waits, then waits a little for
    // the write answers. Returns the failure texts of refused writes.
    QStringList write(const RequestPlan &plan, const Progress &progress);

    int requestsSent() const { return m_sent; }

    // A short name of a read request for messages ("0xC2 super keys").
    static QString requestName(quint8 code);

private:
    void onReadyRead();
    void handle(quint8 code, const QByteArray &payload);
    void send(const Request &request);
    bool waitFor(const std::function<bool()> &done, int ms);

    QSerialPort m_port;
    FrameCutter m_cutter;
    QString m_identifier;
    int m_model = -1;
    int m_moduleKind = 0;
    bool m_identified = false;
    DeviceData *m_target = nullptr;
    QSet<quint8> m_answered;
    QStringList m_refusals;
    int m_sent = 0;
};
