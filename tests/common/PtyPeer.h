#pragma once

#include "FrameCutter.h"

#include <QElapsedTimer>
#include <QObject>
#include <QVector>

class QSocketNotifier;

// The unit's end of a real pseudo-terminal, for tests of the program's serial
// code: the program opens slavePath() with its QSerialPort, the test reads the
// request frames it sends (with their arrival times) and writes answers.
class PtyPeer : public QObject
{
    Q_OBJECT
public:
    struct Received {
        qint64 atMs; // since the peer was opened
        quint8 code;
        QByteArray payload;
    };

    PtyPeer();
    ~PtyPeer() override;

    bool open();
    QString slavePath() const { return m_slavePath; }
    void write(const QByteArray &bytes);
    void answer(quint8 code, const QByteArray &payload);

    // Takes what the master holds now, without waiting for the event loop.
    void readNow() { readMaster(); }
    const QVector<Received> &received() const { return m_received; }
    void clear() { m_received.clear(); }
    qint64 elapsedMs() const { return m_clock.elapsed(); }
    // The frames received so far as "code:payload" hex strings.
    QStringList frames() const;

private:
    void readMaster();

    int m_master = -1;
    int m_slave = -1; // kept open so the master never sees a hang-up
    QString m_slavePath;
    QSocketNotifier *m_notifier = nullptr;
    FrameCutter m_cutter;
    QVector<Received> m_received;
    QElapsedTimer m_clock;
};
