#include "Sequences.h"

#include "Command.h"
#include "SerialFrame.h"

namespace {

using namespace Command;

enum class Shape { Long, Short, Fixed };

struct WriteCode {
    quint8 code;
    Shape shape;
};

Request bare(quint8 code, int waitMs = kRequestSpacingMs)
{
    return Request { SerialFrame::encode(code), waitMs };
}

Request withByte(quint8 code, quint8 byte)
{
    return Request { SerialFrame::shortFrame(code, byte), kRequestSpacingMs };
}

Request write(const WriteCode &w, const QByteArray &payload)
{
    switch (w.shape) {
    case Shape::Short:
        return Request { SerialFrame::shortFrame(w.code, payload), kRequestSpacingMs };
    case Shape::Fixed:
        return Request { SerialFrame::fixedControlFrame(payload), kRequestSpacingMs };
    case Shape::Long:
        break;
    }
    return Request { SerialFrame::encode(w.code, payload), kRequestSpacingMs };
}

const QVector<WriteCode> &sbusCodes()
{
    static const QVector<WriteCode> codes { { WriteSbusTuning, Shape::Long }, { WriteSbusNone, Shape::Long } };
    return codes;
}

const QVector<WriteCode> &channelHoldCodes()
{
    static const QVector<WriteCode> codes { { WriteChannelHold, Shape::Long } };
    return codes;
}

const QVector<WriteCode> &buttonCodes()
{
    static const QVector<WriteCode> codes { { WriteKeyCombinations, Shape::Long },
                                            { WriteSuperKeys, Shape::Long },
                                            { WriteKeyAttributes, Shape::Long } };
    return codes;
}

const QVector<WriteCode> &comprehensiveCodes()
{
    static const QVector<WriteCode> codes {
        { WriteHidMapping, Shape::Long },  { WriteHidOutput, Shape::Short },  { WriteThrottleHold, Shape::Long },
        { WriteIdleWarning, Shape::Long }, { WriteLowVoltage, Shape::Long },  { WriteBaud, Shape::Long },
        { WriteExternalSbusInput, Shape::Long }, { WriteSbusOutput, Shape::Short }, { 0x31, Shape::Short },
        { 0x33, Shape::Short },            { 0x35, Shape::Fixed },
    };
    return codes;
}

const QVector<WriteCode> &radioModuleCodes()
{
    static const QVector<WriteCode> codes { { 0x37, Shape::Long }, { 0x39, Shape::Long } };
    return codes;
}

// Output mode, enables and CAN frequency, one 0xD6 per CAN frame (a single
// one without frames), the serial stream, the per-frame data mapping in CAN
// frame mode, and the closing one-byte 0x25.
QVector<WriteCode> customOutputCodes(int canFrames)
{
    QVector<WriteCode> codes { { WriteOutputModule, Shape::Short }, { 0xD2, Shape::Short }, { 0xD4, Shape::Short } };
    const int perFrame = qMax(1, canFrames);
    for (int i = 0; i < perFrame; ++i)
        codes.append({ 0xD6, Shape::Long });
    codes.append({ 0xD8, Shape::Long });
    codes.append({ 0xDA, Shape::Long });
    if (canFrames > 0) {
        for (quint8 code : { quint8(0xDC), quint8(0xDE), quint8(0x21), quint8(0x23) })
            for (int i = 0; i < canFrames; ++i)
                codes.append({ code, Shape::Long });
    }
    codes.append({ 0x25, Shape::Short });
    return codes;
}

void appendWrites(RequestPlan &plan, const QVector<WriteCode> &codes, const QList<QByteArray> &payloads)
{
    for (int i = 0; i < codes.size(); ++i)
        plan.append(write(codes.at(i), payloads.at(i)));
}

// Appends the group when the page handed over the right number of payloads.
bool appendGroup(RequestPlan &plan, const QVector<WriteCode> &codes, const QList<QByteArray> &payloads)
{
    if (payloads.size() != codes.size())
        return false;
    appendWrites(plan, codes, payloads);
    return true;
}

} // namespace

int customOutputPayloadCount(int canFrames)
{
    return canFrames > 0 ? 5 * canFrames + 6 : 7;
}

namespace Sequences {

QVector<int> sections(int moduleKind)
{
    QVector<int> list { SectionSbus1, SectionSbus2, SectionChannelHold, SectionButtons, SectionComprehensive };
    if (moduleKind == 1)
        list.append(SectionRadioModule);
    else if (moduleKind == 2)
        list.append(SectionCustomOutput);
    return list;
}

RequestPlan identifyUnit()
{
    return { bare(ModuleKind), bare(Identify) };
}

RequestPlan startModelPageUpload()
{
    return { Request { SerialFrame::startUpload(UploadModeModelPage), kRequestSpacingMs } };
}

RequestPlan showHub()
{
    return { bare(StopUpload, 2 * kRequestSpacingMs), withByte(ReadSbusTuning, 0), withByte(ReadSbusNone, 0) };
}

RequestPlan closing()
{
    return { bare(StopUpload), withByte(ReadBattery, 0) };
}

RequestPlan readGroup(int section)
{
    switch (section) {
    case SectionSbus1:
    case SectionSbus2:
        return { withByte(ReadSbusTuning, quint8(section)), withByte(ReadSbusNone, quint8(section)) };
    case SectionChannelHold:
        return { withByte(ReadChannelHold, 0) };
    case SectionButtons:
        return { bare(ReadKeyCombinations), bare(ReadSuperKeys), bare(ReadKeyAttributes) };
    case SectionComprehensive:
        return { bare(ReadHidMapping), bare(ReadHidOutput), withByte(ReadThrottleHold, 0),
                 bare(ReadIdleWarning), bare(ReadLowVoltage), bare(ReadBaud),
                 bare(ReadExternalSbusInput), bare(ReadSbusOutput), bare(SearchDevices),
                 bare(0x30), bare(0x32), bare(0x34) };
    case SectionRadioModule:
        return { bare(0x36), bare(0x38) };
    case SectionCustomOutput:
        return { bare(ReadOutputModule), bare(0xD1), bare(0xD3), withByte(0xD5, 0x0A), bare(0xD7), bare(0xD9),
                 bare(0x24) };
    default:
        return {};
    }
}

RequestPlan menu(int section)
{
    RequestPlan plan;
    switch (section) {
    case SectionChannelHold:
        // The channel hold page shows live channels: the upload keeps running.
        plan = { Request { SerialFrame::startUpload(UploadModeSettings), kRequestSpacingMs },
                 withByte(ReadBattery, 0) };
        break;
    case SectionComprehensive:
        // So does the comprehensive page (its throttle bar); its battery read asks for more.
        plan = { bare(StopUpload), withByte(ReadBattery, 1),
                 Request { SerialFrame::startUpload(UploadModeSettings), kRequestSpacingMs } };
        break;
    case SectionSbus1:
    case SectionSbus2:
    case SectionButtons:
    case SectionRadioModule:
    case SectionCustomOutput:
        plan = { bare(StopUpload), withByte(ReadBattery, 0) };
        break;
    default:
        return {};
    }
    plan += readGroup(section);
    return plan;
}

std::optional<RequestPlan> writeSection(int section, const QList<QByteArray> &payloads, int canFrameCount,
                                        int canFrameListSize)
{
    RequestPlan plan;
    bool ok = false;
    switch (section) {
    case SectionSbus1:
    case SectionSbus2:
        ok = appendGroup(plan, sbusCodes(), payloads);
        break;
    case SectionChannelHold:
        ok = appendGroup(plan, channelHoldCodes(), payloads);
        break;
    case SectionButtons:
        ok = appendGroup(plan, buttonCodes(), payloads);
        break;
    case SectionComprehensive:
        ok = appendGroup(plan, comprehensiveCodes(), payloads);
        break;
    case SectionRadioModule:
        ok = appendGroup(plan, radioModuleCodes(), payloads);
        break;
    case SectionCustomOutput: {
        // The mode follows the CAN frame count; the expected size follows the
        // frame list. Both are kept up to date by the custom output pages.
        if (payloads.size() != customOutputPayloadCount(canFrameListSize))
            break;
        const QVector<WriteCode> codes = customOutputCodes(canFrameCount > 0 ? canFrameListSize : 0);
        ok = appendGroup(plan, codes, payloads);
        break;
    }
    default:
        break;
    }
    if (!ok)
        return std::nullopt;
    return plan;
}

RequestPlan writeAll(const AllPayloads &all)
{
    RequestPlan plan;
    appendGroup(plan, sbusCodes(), all.sbus[0]);
    appendGroup(plan, sbusCodes(), all.sbus[1]);
    appendGroup(plan, channelHoldCodes(), all.channelHold);
    appendGroup(plan, buttonCodes(), all.buttons);
    appendGroup(plan, comprehensiveCodes(), all.comprehensive);
    if (all.moduleKind == 2)
        appendGroup(plan, customOutputCodes(all.canFrames), all.customOutput);
    else
        appendGroup(plan, radioModuleCodes(), all.radioModule);
    return plan;
}

RequestPlan factoryReset(int section)
{
    RequestPlan plan { bare(Command::FactoryReset, kFactoryResetSettleMs) };
    plan += readGroup(section);
    return plan;
}

RequestPlan startCalibration()
{
    return { bare(StartCalibration, 0) };
}

RequestPlan finishCalibration()
{
    return { bare(FinishCalibration, 0) };
}

RequestPlan moduleGroundReset()
{
    return { bare(ModuleGroundReset, 0) };
}

RequestPlan moduleAirReset()
{
    return { bare(ModuleAirReset, 0) };
}

RequestPlan searchDevices()
{
    return { bare(SearchDevices, 0) };
}

RequestPlan canFrameRefresh(int count)
{
    RequestPlan plan;
    for (int k = 0; k < count; ++k)
        for (quint8 code : { quint8(0xD5), quint8(0xDB), quint8(0x20), quint8(0xDD), quint8(0x22) })
            plan.append(withByte(code, quint8(k)));
    return plan;
}

} // namespace Sequences
