#pragma once

#include "FrameCutter.h"
#include "PortProblem.h"
#include "Sequences.h"

#include <QObject>
#include <QQueue>

#include <functional>

class QSerialPort;
class QWidget;

// The serial port of the unit: opened once from config/port.xml at 115200
// 8N1, never reopened. Requests are written as they come, one write call
// each; answers are cut from the byte stream and handed on in order.
class SerialLink : public QObject
{
    Q_OBJECT
public:
    explicit SerialLink(QObject *parent = nullptr);

    // Opens the port named in the port file; the warnings go to messageParent.
    void openFromFile(const QString &path, QWidget *messageParent);
    // After the unit went away: opens the port named in the port file again,
    // without any message (it is tried once a second). True once it is open.
    bool reopenFromFile(const QString &path);

    // Opens the port of that name (no message) in place of the current one;
    // what port.xml names is not read. True once it is open.
    bool openNamed(const QString &name);
    // Why the last open failed (None after a successful one), in words.
    PortProblem problem() const { return m_problem; }
    QString problemText() const;
    QString portName() const;

    QSerialPort *port() const { return m_port; }
    bool isOpen() const;

    // Writes one frame. Without a port the frame goes nowhere.
    void send(const QByteArray &frame);
    // Writes the frames of a plan, each followed by its busy wait.
    void run(const RequestPlan &plan);
    // The same, telling after each frame went out how many of how many did
    // (before that frame's wait).
    using Progress = std::function<void(int sent, int total)>;
    void run(const RequestPlan &plan, const Progress &progress);

    using FrameHandler = std::function<void(quint8 code, const QByteArray &payload)>;
    // Reads all available bytes, cuts frames and hands each to the handler.
    // A call made while an earlier call is still handing on frames (a handler
    // that waits lets the event loop run) only queues its frames: the outer
    // call hands them on afterwards, so frames keep their order and the
    // cutter is never entered twice.
    void receive(const FrameHandler &handler);

    const QByteArray &pendingBytes() const { return m_cutter.pending(); }
    // Frames cut from the line since the link was made, across reopens.
    quint64 framesCut() const { return m_framesCut; }

Q_SIGNALS:
    // Bytes arrived on the port.
    void readyRead();
    // The device behind the port is gone (unplugged, or its line hung up).
    void lost();

private:
    void configure(const QString &name);
    bool openConfigured();

    struct Frame {
        quint8 code;
        QByteArray payload;
    };

    QSerialPort *m_port = nullptr;
    FrameCutter m_cutter;
    QQueue<Frame> m_inbox;
    bool m_handingOn = false;
    QString m_portName; // as port.xml or the user gave it
    PortProblem m_problem = PortProblem::None;
    QString m_problemDetail;
    quint64 m_framesCut = 0;
};
