#pragma once

#include "LineFaults.h"
#include "RequestCutter.h"
#include "UnitModel.h"
#include "VunitOptions.h"

#include <QElapsedTimer>
#include <QFile>
#include <QObject>

class PtyPort;
class QTimer;

// Joins the pure unit to the pseudo-terminal: requests read from the line go
// through the cutter into the unit, answers and channel reports go out through
// the line faults, and every request is written to the record file.
class VirtualUnit : public QObject
{
    Q_OBJECT
public:
    explicit VirtualUnit(const Vunit::VunitOptions &options, QObject *parent = nullptr);

    // Opens the pty (and the link and the record file); false with a reason.
    bool start(QString *error);
    QString slavePath() const;
    // Removes the link and closes the line.
    void stop();

Q_SIGNALS:
    void finished();

private:
    qint64 now() const;
    void onReceived(const QByteArray &bytes);
    void onRequest(quint8 code, const QByteArray &payload);
    void onReportTick();
    void onConnectedChanged(bool connected);
    void send(const QByteArray &frame, int delayMs);
    void pump();
    void updateUpload();
    void record(quint8 code, const QByteArray &payload);
    void note(const QString &text);

    Vunit::VunitOptions m_options;
    Vunit::UnitModel m_unit;
    Vunit::RequestCutter m_cutter;
    Vunit::LineFaults m_faults;
    Vunit::OutputQueue m_queue;
    PtyPort *m_port = nullptr;
    QTimer *m_reportTimer = nullptr;
    QTimer *m_canTimer = nullptr;
    QTimer *m_pumpTimer = nullptr;
    QElapsedTimer m_clock;
    qint64 m_zero = 0;
    QFile m_record;
    bool m_hangupArmed = false;
};
