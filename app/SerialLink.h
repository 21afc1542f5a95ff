#pragma once

#include "FrameCutter.h"
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

    QSerialPort *port() const { return m_port; }
    bool isOpen() const;

    // Writes one frame. Without a port the frame goes nowhere.
    void send(const QByteArray &frame);
    // Writes the frames of a plan, each followed by its busy wait.
    void run(const RequestPlan &plan);

    using FrameHandler = std::function<void(quint8 code, const QByteArray &payload)>;
    // Reads all available bytes, cuts frames and hands each to the handler.
    // A call made while an earlier call is still handing on frames (a handler
    // that waits lets the event loop run) only queues its frames: the outer
    // call hands them on afterwards, so frames keep their order and the
    // cutter is never entered twice.
    void receive(const FrameHandler &handler);

    const QByteArray &pendingBytes() const { return m_cutter.pending(); }

Q_SIGNALS:
    // Bytes arrived on the port.
    void readyRead();
    // The device behind the port is gone (unplugged, or its line hung up).
    void lost();

private:
    void configure(const QString &name);

    struct Frame {
        quint8 code;
        QByteArray payload;
    };

    QSerialPort *m_port = nullptr;
    FrameCutter m_cutter;
    QQueue<Frame> m_inbox;
    bool m_handingOn = false;
};
