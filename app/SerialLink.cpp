#include "SerialLink.h"

#include "AppLog.h"
#include "BusyWait.h"
#include "Messages.h"
#include "PortFile.h"

#include <QDeadlineTimer>
#include <QSerialPort>

namespace
{
// A frame of at most 100 bytes takes under 10 ms at 115200 baud, and the
// driver takes it at once; a port that holds it this long is stuck.
constexpr int kFrameWriteTimeoutMs = 500;
} // namespace

SerialLink::SerialLink(QObject *parent)
    : QObject(parent)
{
}

void SerialLink::openFromFile(const QString &path, QWidget *messageParent)
{
    const std::optional<QStringList> names = readPortNames(path);
    m_problem = PortProblem::NotConfigured;
    if (!names) {
        Messages::warning(messageParent, QStringLiteral("port.xml"), QStringLiteral("open file failed!"));
        return;
    }
    for (const QString &name : *names) {
        // A later port element replaces an earlier one.
        configure(name);
        if (!openConfigured()) {
            qCDebug(lcApp) << name;
            Messages::warning(messageParent, QStringLiteral("Open serial"),
                              QStringLiteral("%1 open failed!").arg(name));
        }
    }
}

void SerialLink::configure(const QString &name)
{
    if (m_port)
        m_port->deleteLater(); // it may be the sender of the signal being handled
    m_port = new QSerialPort(this);
    m_portName = name;
    m_port->setPortName(name);
    m_port->setBaudRate(QSerialPort::Baud115200, QSerialPort::AllDirections);
    m_port->setDataBits(QSerialPort::Data8);
    m_port->setStopBits(QSerialPort::OneStop);
    m_port->setParity(QSerialPort::NoParity);
    m_port->setFlowControl(QSerialPort::NoFlowControl);
    connect(m_port, &QSerialPort::readyRead, this, &SerialLink::readyRead);
    QSerialPort *port = m_port;
    connect(m_port, &QSerialPort::errorOccurred, this, [this, port](QSerialPort::SerialPortError error) {
        // An unplugged adapter reports a resource error; a line that hung up
        // (the far end of a pseudo-terminal closed) fails every read instead.
        const bool gone = error == QSerialPort::ResourceError || error == QSerialPort::ReadError;
        if (!gone || port != m_port || !port->isOpen())
            return;
        qCDebug(lcApp) << "serial port lost:" << port->portName() << port->errorString();
        port->close();
        Q_EMIT lost();
    });
}

bool SerialLink::openConfigured()
{
    if (m_port->open(QIODevice::ReadWrite)) {
        m_problem = PortProblem::None;
        m_problemDetail.clear();
        return true;
    }
    m_problem = PortProblems::classifyOpenFailure(m_portName, m_port->error());
    m_problemDetail = m_port->errorString();
    return false;
}

QString SerialLink::problemText() const
{
    return PortProblems::text(m_problem, portName(), m_problemDetail);
}

QString SerialLink::portName() const
{
    return m_portName;
}

bool SerialLink::openNamed(const QString &name)
{
    configure(name);
    if (!openConfigured())
        return false;
    m_cutter = FrameCutter();
    m_inbox.clear();
    return true;
}

bool SerialLink::reopenFromFile(const QString &path)
{
    const std::optional<QStringList> names = readPortNames(path);
    if (!names || names->isEmpty())
        return false;
    configure(names->constLast());
    if (!openConfigured())
        return false;
    // Half a frame from the unit that went away must not join the new one's.
    m_cutter = FrameCutter();
    m_inbox.clear();
    return true;
}

bool SerialLink::isOpen() const
{
    return m_port && m_port->isOpen();
}

void SerialLink::send(const QByteArray &frame)
{
    if (!m_port) {
        qCDebug(lcApp) << "no serial port, not sent:" << frame.toHex(' ');
        return;
    }
    m_port->write(frame);
    // The unit needs its pause between two frames as they arrive. A frame
    // left in the port's buffer goes out whenever the event loop gets to it,
    // late under load, and then shortens the pause before the next frame; so
    // each frame leaves before its wait starts.
    const QDeadlineTimer deadline(kFrameWriteTimeoutMs);
    while (m_port->isOpen() && m_port->bytesToWrite() > 0) {
        if (!m_port->waitForBytesWritten(int(deadline.remainingTime()))) {
            qCWarning(lcApp).noquote() << QStringLiteral("frame not written within %1 ms (%2): %3")
                                              .arg(kFrameWriteTimeoutMs)
                                              .arg(m_port->errorString(), QString::fromLatin1(frame.toHex(' ')));
            break;
        }
    }
}

void SerialLink::run(const RequestPlan &plan)
{
    run(plan, Progress());
}

void SerialLink::run(const RequestPlan &plan, const Progress &progress)
{
    int sent = 0;
    for (const Request &request : plan) {
        send(request.frame);
        if (progress)
            progress(++sent, plan.size());
        if (request.waitMs > 0)
            busyWait(request.waitMs);
    }
}

void SerialLink::receive(const FrameHandler &handler)
{
    if (!m_port)
        return;
    const QByteArray bytes = m_port->readAll();
    if (bytes.isEmpty())
        return;
    m_cutter.feed(bytes, [this](quint8 code, const QByteArray &payload) {
        ++m_framesCut;
        m_inbox.enqueue({ code, payload });
    });
    if (m_handingOn)
        return;
    m_handingOn = true;
    while (!m_inbox.isEmpty()) {
        const Frame frame = m_inbox.dequeue();
        handler(frame.code, frame.payload);
    }
    m_handingOn = false;
}
