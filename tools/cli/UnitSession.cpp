#include "UnitSession.h"

#include "AnswerRules.h"
#include "BusyWait.h"
#include "ModelDefaults.h"
#include "RecordAnswers.h"
#include "RecordTransfer.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QHash>

UnitSession::UnitSession(QObject *parent)
    : QObject(parent)
{
    connect(&m_port, &QSerialPort::readyRead, this, &UnitSession::onReadyRead);
}

bool UnitSession::open(const QString &portName, QString *error)
{
    // A path (a symbolic link to a pseudo-terminal included) is opened as it
    // is named; QSerialPort would take a bare name below /dev.
    const bool path = portName.contains(QLatin1Char('/')) || QFileInfo::exists(portName);
    m_port.setPortName(path ? QFileInfo(portName).absoluteFilePath() : portName);
    m_port.setBaudRate(QSerialPort::Baud115200, QSerialPort::AllDirections);
    m_port.setDataBits(QSerialPort::Data8);
    m_port.setStopBits(QSerialPort::OneStop);
    m_port.setParity(QSerialPort::NoParity);
    m_port.setFlowControl(QSerialPort::NoFlowControl);
    if (m_port.open(QIODevice::ReadWrite))
        return true;
    switch (m_port.error()) {
    case QSerialPort::DeviceNotFoundError:
        *error = QStringLiteral("no serial port %1").arg(portName);
        break;
    case QSerialPort::PermissionError:
        *error = QStringLiteral("serial port %1 is in use or not accessible (%2)").arg(portName, m_port.errorString());
        break;
    default:
        *error = QStringLiteral("cannot open serial port %1: %2").arg(portName, m_port.errorString());
        break;
    }
    return false;
}

QString UnitSession::requestName(quint8 code)
{
    static const QHash<quint8, QString> names {
        { 0xA3, QStringLiteral("SBUS channel settings") }, { 0xA7, QStringLiteral("SBUS fixed values") },
        { 0xB4, QStringLiteral("channel hold") }, { 0xC0, QStringLiteral("key combinations") },
        { 0xC2, QStringLiteral("super keys") }, { 0xCA, QStringLiteral("key kinds") },
        { 0xC6, QStringLiteral("HID mapping") }, { 0x17, QStringLiteral("HID mode") },
        { 0xB6, QStringLiteral("throttle hold") }, { 0xE9, QStringLiteral("idle warning") },
        { 0xEB, QStringLiteral("low-voltage alarm") }, { 0x13, QStringLiteral("baud rate") },
        { 0x19, QStringLiteral("external SBUS input") }, { 0xC4, QStringLiteral("SBUS outputs") },
        { 0x30, QStringLiteral("SBUS priorities") }, { 0x32, QStringLiteral("SBUS protocols") },
        { 0x34, QStringLiteral("SBUS control") }, { 0x36, QStringLiteral("module power") },
        { 0x38, QStringLiteral("module power switch") }, { 0x15, QStringLiteral("output mode") },
        { 0xD1, QStringLiteral("output enables") }, { 0xD3, QStringLiteral("CAN frequency") },
        { 0xD5, QStringLiteral("CAN frames") }, { 0xD7, QStringLiteral("TTL stream header") },
        { 0xD9, QStringLiteral("TTL stream table") }, { 0xDB, QStringLiteral("CAN frame masks") },
        { 0xDD, QStringLiteral("CAN frame bit channels") }, { 0x20, QStringLiteral("CAN frame bit values") },
        { 0x22, QStringLiteral("CAN frame byte channels") }, { 0x24, QStringLiteral("CAN baud rate") },
    };
    const QString hex = QStringLiteral("0x") + QStringLiteral("%1").arg(code, 2, 16, QLatin1Char('0')).toUpper();
    const QString name = names.value(code);
    return name.isEmpty() ? hex : hex + QLatin1Char(' ') + name;
}

void UnitSession::onReadyRead()
{
    m_cutter.feed(m_port.readAll(), [this](quint8 code, const QByteArray &payload) { handle(code, payload); });
}

void UnitSession::handle(quint8 code, const QByteArray &payload)
{
    const Answer answer = interpretAnswer(code, payload);
    if (answer.moduleAnswer && answer.moduleKind >= 0)
        m_moduleKind = answer.moduleKind;
    if (answer.identify) {
        m_identifier = answer.identifier;
        m_model = modelIdentifiers().indexOf(answer.identifier);
        m_identified = m_model >= 0;
    }
    if (!answer.failureText.isEmpty())
        m_refusals.append(QStringLiteral("%1: %2").arg(requestName(code), answer.failureText));
    if (answer.emits && m_target && RecordAnswers::decode(code, answer.data, m_model, *m_target))
        m_answered.insert(code);
}

void UnitSession::send(const Request &request)
{
    m_port.write(request.frame);
    ++m_sent;
    if (request.waitMs > 0)
        busyWait(request.waitMs);
}

bool UnitSession::waitFor(const std::function<bool()> &done, int ms)
{
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < ms)
        busyWait(20);
    return done();
}

bool UnitSession::identify(int timeoutMs, QString *error)
{
    for (const Request &r : Sequences::identifyUnit())
        send(r);
    if (waitFor([this]() { return m_identified; }, timeoutMs))
        return true;
    *error = m_identifier.isEmpty()
        ? QStringLiteral("the unit on %1 did not answer within %2 s").arg(m_port.portName()).arg(timeoutMs / 1000.0)
        : QStringLiteral("the unit on %1 answered an unknown model \"%2\"").arg(m_port.portName(), m_identifier);
    return false;
}

bool UnitSession::readAll(
    DeviceData &data, int waitMs, const Progress &progress, QString *error, const FileParts::Parts *only)
{
    static const QStringList sectionNames { QStringLiteral("SBUS 1"), QStringLiteral("SBUS 2"),
        QStringLiteral("channel hold"), QStringLiteral("keys"), QStringLiteral("comprehensive settings"),
        QStringLiteral("module power"), QStringLiteral("custom output") };
    data.m_module = m_moduleKind;
    m_target = &data;
    m_answered.clear();
    QVector<quint8> expected;
    auto runPlan = [&](const RequestPlan &all) {
        const RequestPlan plan
            = only ? RecordTransfer::onlyParts(all, *only, RecordTransfer::partOfRead) : all;
        for (const Request &r : plan) {
            const quint8 code = quint8(r.frame.at(1));
            // The device search is no setting: sent as the window does, not awaited.
            if (code != 0xFE && !expected.contains(code))
                expected.append(code);
            send(r);
        }
    };
    for (int section : Sequences::sections(m_moduleKind)) {
        // With `only`, a section none of whose parts are wanted is passed by.
        if (only
            && RecordTransfer::onlyParts(Sequences::readGroup(section), *only, RecordTransfer::partOfRead)
                   .isEmpty())
            continue;
        if (progress)
            progress(QStringLiteral("reading %1").arg(sectionNames.at(section)));
        runPlan(Sequences::readGroup(section));
    }
    if (m_moduleKind == 2 && (!only || only->test(FileParts::CanFrames))) {
        // The CAN frames themselves, once the unit has said how many it has.
        waitFor([this]() { return m_answered.contains(0xD5); }, waitMs);
        if (data.CANFrameCnt > 0) {
            if (progress)
                progress(QStringLiteral("reading %1 CAN frame(s)").arg(data.CANFrameCnt));
            runPlan(Sequences::canFrameRefresh(data.CANFrameCnt));
        }
    }
    auto complete = [&]() {
        for (quint8 code : expected) {
            if (!m_answered.contains(code))
                return false;
        }
        return true;
    };
    const bool ok = waitFor(complete, waitMs);
    m_target = nullptr;
    if (!ok) {
        QStringList missing;
        for (quint8 code : expected) {
            if (!m_answered.contains(code))
                missing.append(requestName(code));
        }
        *error = QStringLiteral("no answer to %1").arg(missing.join(QStringLiteral(", ")));
        if (!m_refusals.isEmpty())
            *error += QStringLiteral(" (refused: %1)").arg(m_refusals.join(QStringLiteral("; ")));
    }
    return ok;
}

QStringList UnitSession::write(const RequestPlan &plan, const Progress &progress)
{
    m_refusals.clear();
    QElapsedTimer sinceReport;
    sinceReport.start();
    for (int i = 0; i < plan.size(); ++i) {
        if (progress && (i == 0 || sinceReport.elapsed() >= 1000)) {
            progress(QStringLiteral("writing %1 of %2 frames").arg(i + 1).arg(plan.size()));
            sinceReport.restart();
        }
        send(plan.at(i));
    }
    // The answer to the last write may still be on its way.
    busyWait(kRequestSpacingMs);
    return m_refusals;
}
