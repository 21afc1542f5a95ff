#include "VirtualUnit.h"

#include "PtyPort.h"

#include <QTimer>

#include <cstdio>

using namespace Vunit;

VirtualUnit::VirtualUnit(const VunitOptions &options, QObject *parent)
    : QObject(parent)
    , m_options(options)
    , m_unit(options.unit)
    , m_faults(options.faults)
{
    m_clock.start();
    m_zero = options.timeOrigin >= 0 ? options.timeOrigin : m_clock.msecsSinceReference();

    m_port = new PtyPort(this);
    connect(m_port, &PtyPort::received, this, &VirtualUnit::onReceived);
    connect(m_port, &PtyPort::connectedChanged, this, &VirtualUnit::onConnectedChanged);
    connect(m_port, &PtyPort::note, this, &VirtualUnit::note);

    m_reportTimer = new QTimer(this);
    m_reportTimer->setTimerType(Qt::PreciseTimer);
    connect(m_reportTimer, &QTimer::timeout, this, &VirtualUnit::onReportTick);

    m_canTimer = new QTimer(this);
    connect(m_canTimer, &QTimer::timeout, this, [this]() {
        if (m_unit.reportsCanFrames())
            send(m_unit.canReportFrame(now()), 0);
    });

    m_pumpTimer = new QTimer(this);
    m_pumpTimer->setSingleShot(true);
    m_pumpTimer->setTimerType(Qt::PreciseTimer);
    connect(m_pumpTimer, &QTimer::timeout, this, &VirtualUnit::pump);
}

bool VirtualUnit::start(QString *error)
{
    if (!m_options.recordPath.isEmpty()) {
        m_record.setFileName(m_options.recordPath);
        if (!m_record.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
            *error = QStringLiteral("cannot write %1").arg(m_options.recordPath);
            return false;
        }
    }
    if (!m_port->open(error))
        return false;
    if (!m_options.linkPath.isEmpty() && !m_port->createLink(m_options.linkPath, error))
        return false;
    return true;
}

QString VirtualUnit::slavePath() const
{
    return m_port->slavePath();
}

void VirtualUnit::stop()
{
    m_reportTimer->stop();
    m_canTimer->stop();
    m_pumpTimer->stop();
    m_port->removeLink();
    m_port->hangUp();
}

qint64 VirtualUnit::now() const
{
    return m_clock.msecsSinceReference() + m_clock.elapsed() - m_zero;
}

void VirtualUnit::onReceived(const QByteArray &bytes)
{
    QStringList notes;
    m_cutter.feed(
        bytes, [this](quint8 code, const QByteArray &payload) { onRequest(code, payload); }, &notes);
    for (const QString &n : notes)
        note(n);
}

void VirtualUnit::onRequest(quint8 code, const QByteArray &payload)
{
    record(code, payload);
    const bool wasUploading = m_unit.uploading();
    QStringList notes;
    const QVector<QByteArray> answers = m_unit.handle(code, payload, now(), &notes);
    for (const QString &n : notes)
        note(n);
    for (const QByteArray &frame : answers)
        send(frame, m_options.faults.answerDelayMs);
    updateUpload();

    if (!wasUploading && m_unit.uploading() && m_options.hangupAfterMs >= 0 && !m_hangupArmed) {
        m_hangupArmed = true;
        QTimer::singleShot(m_options.hangupAfterMs, this, [this]() {
            note(QStringLiteral("hanging up the line"));
            stop();
            Q_EMIT finished();
        });
    }
}

void VirtualUnit::updateUpload()
{
    const int interval = qMax(1, 1000 / m_unit.reportRateHz());
    if (m_unit.uploading() && m_port->isConnected()) {
        if (!m_reportTimer->isActive() || m_reportTimer->interval() != interval)
            m_reportTimer->start(interval);
    } else {
        m_reportTimer->stop();
    }
    if (m_unit.reportsCanFrames() && m_port->isConnected()) {
        if (!m_canTimer->isActive())
            m_canTimer->start(UnitModel::kCanReportMs);
    } else {
        m_canTimer->stop();
    }
}

void VirtualUnit::onReportTick()
{
    send(m_unit.reportFrame(now()), 0);
}

void VirtualUnit::onConnectedChanged(bool connected)
{
    note(connected ? QStringLiteral("configurator connected") : QStringLiteral("configurator disconnected"));
    if (!connected) {
        m_queue.clear();
        m_cutter.clear();
    }
    updateUpload();
}

void VirtualUnit::send(const QByteArray &frame, int delayMs)
{
    m_queue.push(m_faults.shape(frame), now() + delayMs);
    pump();
}

void VirtualUnit::pump()
{
    const qint64 t = now();
    const QByteArray out = m_queue.takeDue(t);
    if (!out.isEmpty())
        m_port->write(out);
    const qint64 next = m_queue.nextDue();
    if (next >= 0)
        m_pumpTimer->start(int(qMax<qint64>(0, next - t)));
}

void VirtualUnit::record(quint8 code, const QByteArray &payload)
{
    if (!m_record.isOpen())
        return;
    const QByteArray hex = payload.isEmpty() ? QByteArray("-") : payload.toHex();
    const QByteArray line = QByteArray::number(now()) + ' '
        + QByteArray::number(code, 16).rightJustified(2, '0').toUpper() + ' ' + hex + '\n';
    m_record.write(line);
    m_record.flush();
}

void VirtualUnit::note(const QString &text)
{
    std::fprintf(stderr, "quillmark-vunit: %s\n", text.toLocal8Bit().constData());
    std::fflush(stderr);
}
