#include "UnitModel.h"

#include "Command.h"
#include "CustomOutputCodec.h"
#include "GroupCodes.h"
#include "SerialFrame.h"

#include <QtEndian>

#include <cmath>

namespace Vunit
{

namespace
{

using namespace Command;

constexpr int kMaxPayload = 95; // the configurator's frame buffer holds no more
constexpr int kChannels = 16;
constexpr int kSbusBlockBytes = 64;

// Groups stored once: the read answers with what the write stored.
// Length -1: the layout belongs to the page that writes it; any well-formed
// payload (1..95 bytes) is stored and mirrored.
struct SimpleGroup {
    quint8 read;
    quint8 write;
    int length;
};

const SimpleGroup kSimpleGroups[] = {
    { ReadKeyCombinations, WriteKeyCombinations, 15 },
    { ReadSuperKeys, WriteSuperKeys, 36 },
    { ReadKeyAttributes, WriteKeyAttributes, 0 }, // per model, see keyAttributeBytes
    { ReadSbusOutput, WriteSbusOutput, 1 },
    { ReadHidMapping, WriteHidMapping, 8 },
    { ReadHidOutput, WriteHidOutput, 1 },
    { ReadThrottleHold, WriteThrottleHold, 7 },
    { ReadIdleWarning, WriteIdleWarning, 1 },
    { ReadLowVoltage, WriteLowVoltage, 2 },
    { ReadBaud, WriteBaud, 4 },
    { ReadExternalSbusInput, WriteExternalSbusInput, 1 },
    { ReadExternalCharging, WriteExternalCharging, 1 },
    { Code::ReadSbusPriority, Code::WriteSbusPriority, 1 },
    { Code::ReadSbusProtocol, Code::WriteSbusProtocol, 1 },
    { Code::ReadSbusControl, Code::WriteSbusControl, 7 },
    { Code::ReadModulePower, Code::WriteModulePower, 2 },
    { Code::ReadModuleSwitch, Code::WriteModuleSwitch, 2 },
    { ReadOutputModule, WriteOutputModule, 1 },
    { Code::ReadEnableFlags, Code::WriteEnableFlags, 1 },
    { Code::ReadCanFrequency, Code::WriteCanFrequency, 1 },
    { Code::ReadStreamHeader, Code::WriteStreamHeader, CustomOutputCodec::kStreamHeadBytes },
    { Code::ReadStreamTable, Code::WriteStreamTable, CustomOutputCodec::kStreamTableBytes },
    { Code::ReadCanBaud, Code::WriteCanBaud, 1 },
};

// Per CAN frame: read with the frame index, written with it in byte 0.
struct FrameGroup {
    quint8 read;
    quint8 write;
    int length;
};
const FrameGroup kFrameGroups[] = {
    { Code::ReadFrameMasks, Code::WriteFrameMasks, CustomOutputCodec::kFrameMasksBytes },
    { Code::ReadFrameBitChannels, Code::WriteFrameBitChannels, CustomOutputCodec::kFrameBitsBytes },
    { Code::ReadFrameBitValues, Code::WriteFrameBitValues, CustomOutputCodec::kFrameBitsBytes },
    { Code::ReadFrameByteChannels, Code::WriteFrameByteChannels, CustomOutputCodec::kFrameChannelsBytes },
};

QByteArray status(quint8 s)
{
    return QByteArray(1, char(s));
}

QString lengthProblem(int expected, int got)
{
    return QStringLiteral("expected %1 bytes, got %2").arg(expected).arg(got);
}

void putWord(QByteArray &out, int at, quint16 v)
{
    qToLittleEndian(v, reinterpret_cast<uchar *>(out.data() + at));
}

} // namespace

QString hexCode(quint8 code)
{
    return QStringLiteral("0x") + QString::number(code, 16).rightJustified(2, QLatin1Char('0')).toUpper();
}

UnitModel::UnitModel(const UnitConfig &config)
    : m_config(config)
    , m_spec(modelSpec(config.model))
    , m_motion(m_spec, config.seed)
    , m_store(m_spec)
{
    if (m_config.identifier.isEmpty())
        m_config.identifier = m_spec.identifier;
    if (m_config.reportRateHz > 0)
        m_rateHz = m_config.reportRateHz;
}

QVector<QByteArray> UnitModel::handle(
    quint8 code, const QByteArray &payload, qint64 nowMs, QStringList *notes)
{
    auto ignore = [&](const QString &why) {
        if (notes)
            notes->append(QStringLiteral("ignored %1 with %2 bytes: %3")
                              .arg(hexCode(code))
                              .arg(payload.size())
                              .arg(why));
        return QVector<QByteArray>();
    };
    auto answer
        = [code](const QByteArray &p) { return QVector<QByteArray> { SerialFrame::encode(code, p) }; };

    if (m_config.refused.contains(code))
        return answer(status(StatusFailed));
    if (code == ReadOutputModule)
        m_outputWatched = true;

    switch (code) {
    case ModuleKind:
        return answer(status(quint8(m_config.moduleKind)));
    case Identify:
        return answer(m_config.identifier);
    case StartUpload: {
        if (payload.size() < 2)
            return ignore(QStringLiteral("needs the mode and the rate"));
        m_uploadMode = quint8(payload.at(0));
        const int asked = quint8(payload.at(1));
        if (m_config.reportRateHz > 0)
            m_rateHz = m_config.reportRateHz;
        else
            m_rateHz = (asked > 0 && asked <= 200) ? asked : kDefaultRateHz;
        m_uploading = true;
        return answer(status(StatusOk));
    }
    case StopUpload:
        m_uploading = false;
        return answer(status(StatusOk));
    case StartCalibration:
        m_calibrating = true;
        return answer(status(StatusOk));
    case FinishCalibration:
        // One status byte: the model page ends its calibration display only on
        // an answer of exactly one byte.
        m_calibrating = false;
        return answer(status(StatusOk));
    case FactoryReset:
        m_store.restoreFactory();
        return answer(status(StatusOk));
    case ReadBattery:
        if (payload.isEmpty())
            return ignore(QStringLiteral("needs the detail byte"));
        if (quint8(payload.at(0)) > 1)
            return ignore(QStringLiteral("detail byte must be 0 or 1"));
        return answer(battery(quint8(payload.at(0)), nowMs));
    case SearchDevices: {
        // One answer per device found.
        QVector<QByteArray> frames;
        for (const QByteArray &device : searchAnswers())
            frames.append(SerialFrame::encode(code, device));
        return frames;
    }
    case ModuleGroundReset:
    case ModuleAirReset:
        return answer(status(1)); // exactly one byte: 1 = success
    case CanData:
        return answer(canData(nowMs));
    case Code::WriteCanData:
        if (payload.isEmpty() || payload.size() > kMaxPayload)
            return ignore(lengthProblem(1, payload.size()));
        return answer(status(StatusOk));
    default:
        break;
    }

    QByteArray reply;
    QString problem;
    if (handleSbus(code, payload, &reply, &problem) || handleSimpleGroup(code, payload, &reply, &problem)
        || handleCustomOutput(code, payload, &reply, &problem)) {
        if (!problem.isEmpty())
            return ignore(problem);
        return answer(reply);
    }
    return ignore(QStringLiteral("not a request this unit knows"));
}

bool UnitModel::handleSbus(quint8 code, const QByteArray &payload, QByteArray *answer, QString *problem)
{
    auto portByte = [&]() -> int {
        if (payload.isEmpty()) {
            *problem = QStringLiteral("needs the port byte");
            return -1;
        }
        const int port = quint8(payload.at(0));
        if (port > 1) {
            *problem = QStringLiteral("port %1 does not exist").arg(port);
            return -1;
        }
        return port;
    };
    switch (code) {
    case ReadSbusTuning:
    case ReadSbusNone: {
        const int port = portByte();
        if (port >= 0)
            *answer = code == ReadSbusTuning ? m_store.sbusTuning(port) : m_store.sbusNone(port);
        return true;
    }
    case WriteSbusTuning:
    case WriteSbusNone: {
        const int expected
            = code == WriteSbusTuning ? ParameterStore::kSbusTuningBytes : ParameterStore::kSbusNoneBytes;
        if (payload.size() != expected) {
            *problem = lengthProblem(expected, payload.size());
            return true;
        }
        if (portByte() < 0)
            return true;
        if (code == WriteSbusTuning)
            m_store.setSbusTuning(payload);
        else
            m_store.setSbusNone(payload);
        *answer = status(StatusOk);
        return true;
    }
    case ReadChannelHold:
        if (payload.isEmpty())
            *problem = QStringLiteral("needs the index byte");
        else
            *answer = m_store.channelHold();
        return true;
    case WriteChannelHold: {
        // One block of 8 bytes per port, both ports in one write.
        const int block = ParameterStore::kHoldPortBytes;
        if (payload.isEmpty() || payload.size() % block != 0 || payload.size() > 2 * block) {
            *problem = lengthProblem(2 * block, payload.size());
            return true;
        }
        for (int at = 0; at < payload.size(); at += block) {
            if (quint8(payload.at(at)) > 1) {
                *problem = QStringLiteral("port %1 does not exist").arg(quint8(payload.at(at)));
                return true;
            }
        }
        for (int at = 0; at < payload.size(); at += block)
            m_store.setChannelHoldBlock(payload.mid(at, block));
        *answer = status(StatusOk);
        return true;
    }
    default:
        return false;
    }
}

bool UnitModel::handleSimpleGroup(
    quint8 code, const QByteArray &payload, QByteArray *answer, QString *problem)
{
    for (const SimpleGroup &g : kSimpleGroups) {
        if (code == g.read) {
            *answer = m_store.value(g.read);
            return true;
        }
        if (code != g.write)
            continue;
        const int expected = g.read == ReadKeyAttributes ? m_spec.keyAttributeBytes : g.length;
        if (expected < 0 ? (payload.isEmpty() || payload.size() > kMaxPayload) : payload.size() != expected) {
            *problem = lengthProblem(expected < 0 ? 1 : expected, payload.size());
            return true;
        }
        if (g.read == ReadThrottleHold && payload.at(0) != 0) {
            *problem = QStringLiteral("byte 0 must be 0");
            return true;
        }
        m_store.setValue(g.read, payload);
        *answer = status(StatusOk);
        return true;
    }
    return false;
}

bool UnitModel::handleCustomOutput(
    quint8 code, const QByteArray &payload, QByteArray *answer, QString *problem)
{
    if (code == Code::ReadCanFrame) {
        if (payload.isEmpty()) {
            *problem = QStringLiteral("needs the frame index");
            return true;
        }
        const int index = quint8(payload.at(0));
        // An index past the frames in use (0x0A asks for the count) is answered
        // with the frame count alone.
        *answer = index < m_store.canFrameCount() ? m_store.canFrame(index)
                                                  : status(quint8(m_store.canFrameCount()));
        return true;
    }
    if (code == Code::WriteCanFrame) {
        const bool noFrames = payload.size() == 1 && payload.at(0) == 0;
        if (!noFrames && payload.size() != CustomOutputCodec::kFrameHeaderBytes) {
            *problem = lengthProblem(CustomOutputCodec::kFrameHeaderBytes, payload.size());
            return true;
        }
        if (quint8(payload.at(0)) > ParameterStore::kMaxCanFrames
            || (!noFrames && quint8(payload.at(1)) >= quint8(payload.at(0)))) {
            *problem = QStringLiteral("frame %1 of %2 does not fit")
                           .arg(payload.size() > 1 ? quint8(payload.at(1)) : 0)
                           .arg(quint8(payload.at(0)));
            return true;
        }
        m_store.setCanFrame(payload);
        *answer = status(StatusOk);
        return true;
    }
    for (const FrameGroup &g : kFrameGroups) {
        if (code != g.read && code != g.write)
            continue;
        const int expected = code == g.read ? 1 : g.length;
        if (payload.size() != expected) {
            *problem = lengthProblem(expected, payload.size());
            return true;
        }
        const int index = quint8(payload.at(0));
        if (index >= ParameterStore::kMaxCanFrames) {
            *problem = QStringLiteral("frame %1 does not exist").arg(index);
            return true;
        }
        if (code == g.read) {
            *answer = m_store.frameValue(g.read, index);
        } else {
            m_store.setFrameValue(g.read, index, payload);
            *answer = status(StatusOk);
        }
        return true;
    }
    return false;
}

QByteArray UnitModel::battery(quint8 detail, qint64 nowMs) const
{
    // A two-cell pack that starts nearly full and loses 0.04 V a minute.
    constexpr int kFullCentivolts = 840;
    constexpr int kEmptyCentivolts = 660;
    constexpr int kStartCentivolts = 830;
    const qint64 drained = qMax<qint64>(0, nowMs) * 4 / 60000;
    const int centivolts
        = int(qBound<qint64>(kEmptyCentivolts, kStartCentivolts - drained, kStartCentivolts));
    const int percent = (centivolts - kEmptyCentivolts) * 100 / (kFullCentivolts - kEmptyCentivolts);
    QByteArray out;
    out.append(char(centivolts / 100));
    out.append(char(centivolts % 100));
    out.append(char(percent));
    if (detail == 1) {
        // Signal level in dBm, wandering between about -44 and -72.
        const int dbm = -(58 + int(std::lround(14 * std::sin(nowMs / 3183.0))));
        out.append(char(qAbs(dbm)));
        out.append(char(dbm < 0 ? 0x80 : 0x00));
        out.append(char(qBound(0, 2 * (dbm + 100), 100)));
    }
    return out;
}

QVector<QByteArray> UnitModel::searchAnswers() const
{
    // Two or three receivers in reach. Each answer: status, the device's
    // number, then "name\r\ndetail".
    const int count = 2 + int(m_config.seed % 2);
    QVector<QByteArray> answers;
    for (int i = 0; i < count; ++i) {
        QByteArray out;
        out.append(char(StatusOk));
        out.append(char(i + 1));
        out.append(QStringLiteral("RX-%1")
                       .arg((m_config.seed + quint64(i) * 0x1111) & 0xFFFF, 4, 16, QLatin1Char('0'))
                       .toUpper()
                       .toLatin1());
        out.append("\r\n");
        out.append(QStringLiteral("Pyx receiver, firmware 2.3.%1, channel %2").arg(i + 1).arg(11 + 5 * i).toLatin1());
        answers.append(out);
    }
    return answers;
}

bool UnitModel::reportsCanFrames() const
{
    const QByteArray mode = m_store.value(ReadOutputModule);
    const QByteArray enables = m_store.value(Code::ReadEnableFlags);
    const bool sbusMode = mode.size() == 1 && quint8(mode.at(0)) == CustomOutputCodec::kModeSbus;
    const bool canOn = enables.size() == 1 && (quint8(enables.at(0)) & 0x10);
    return m_config.moduleKind == 2 && m_outputWatched && !sbusMode && canOn && m_store.canFrameCount() > 0;
}

QByteArray UnitModel::canReportFrame(qint64 nowMs) const
{
    return SerialFrame::encode(CanData, canData(nowMs));
}

QByteArray UnitModel::canData(qint64 nowMs) const
{
    // A frame seen on the CAN bus: standard identifier, extended identifier,
    // IDE, RTR, data length, data (the first SBUS 1 channels as bytes). The
    // unit's own frames take turns; without any, a fixed data frame 0x123.
    QByteArray out(9, '\0');
    putWord(out, 0, 0x0123);
    out[8] = char(8);
    const int count = m_store.canFrameCount();
    if (count > 0) {
        const QByteArray header = m_store.canFrame(int(qMax<qint64>(0, nowMs) / kCanReportMs % count));
        out = header.mid(2, 6);
        out.append(char(header.at(8) ? 1 : 0));
        out.append(char(header.at(9) ? 1 : 0));
        out.append(char(qMin(8, int(quint8(header.at(10))))));
    }
    const QVector<quint16> sbus = sbusOutputs(0, m_motion.controls(nowMs));
    for (int i = 0; i < quint8(out.at(8)); ++i)
        out.append(char(sbus.at(i) * 255 / 1200));
    return out;
}

QVector<quint16> UnitModel::sbusOutputs(int port, const QVector<quint16> &controls) const
{
    QVector<quint16> out;
    out.reserve(kChannels);
    for (int c = 0; c < kChannels; ++c)
        out.append(quint16(mixChannel(m_store.channelSetting(port, c), controls)));
    return out;
}

QByteArray UnitModel::reportPayload(qint64 nowMs) const
{
    const QVector<quint16> controls = m_motion.controls(nowMs);
    // The settings pages start the upload in mode 1 and read the outputs
    // alone (the throttle bar takes SBUS 1 channel 3 at bytes 4-5).
    const int block = m_uploadMode == UploadModeSettings ? 0 : m_spec.block;
    QByteArray out(1 + block + kSbusBlockBytes, '\0');
    out[0] = char(StatusOk);
    if (block > 0) {
        for (int i = 0; i < controls.size(); ++i)
            putWord(out, 1 + 2 * i, controls.at(i));
        const QVector<quint16> keys = m_motion.keyWords(nowMs);
        for (int w = 0; w < keys.size(); ++w)
            putWord(out, 1 + m_spec.keyWordOffsets.at(w), keys.at(w));
    }
    for (int port = 0; port < 2; ++port) {
        const QVector<quint16> sbus = sbusOutputs(port, controls);
        for (int c = 0; c < kChannels; ++c)
            putWord(out, 1 + block + 32 * port + 2 * c, sbus.at(c));
    }
    return out;
}

QByteArray UnitModel::reportFrame(qint64 nowMs) const
{
    return SerialFrame::encode(ChannelReport, reportPayload(nowMs));
}

} // namespace Vunit
