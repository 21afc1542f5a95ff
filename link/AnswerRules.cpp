#include "AnswerRules.h"

#include "Command.h"

#include <array>

namespace {

using Table = std::array<CodeInfo, 256>;

void set(Table &t, quint8 code, AnswerKind kind, int codeId, const char *failure = nullptr)
{
    t[code] = CodeInfo { kind, codeId, failure ? QString::fromUtf8(failure) : QString() };
}

QString groupFailureText(quint8 code)
{
    return QStringLiteral("code_") + QString::number(code, 16).rightJustified(2, QLatin1Char('0')).toUpper()
        + QString::fromUtf8("错误");
}

Table buildTable()
{
    Table t;
    // Everything in -93..57 as a signed byte is a code the unit may send.
    for (int c = 0; c < 256; ++c) {
        const int asSigned = static_cast<qint8>(c);
        if (asSigned >= -93 && asSigned <= 57)
            t[c].kind = AnswerKind::Unknown;
    }

    using K = AnswerKind;
    set(t, 0xFE, K::Read, SearchDevicesData, "读取调参数据失败");
    set(t, 0xA3, K::Read, SbusTuningData, "读取调参数据失败");
    set(t, 0xA4, K::Write, -1, "写入调参数据失败");
    set(t, 0xA5, K::ChannelReport, ChannelDataReport);
    set(t, 0xAD, K::Read, BatteryData, "读取电池电量错误");
    set(t, 0xC0, K::Read, KeyCombinationData, "读取组合键及单步增量错误");
    set(t, 0xC1, K::Write, -1, "写入组合键及单步增量错误");
    set(t, 0xC2, K::Read, SuperKeyData, "读取超级组合键错误");
    set(t, 0xC3, K::Write, -1, "写入超级组合键错误");
    set(t, 0xC4, K::Read, SbusOutputData, "读取SBUS输出状态错误");
    set(t, 0xC5, K::Write, -1, "写入SBUS输出状态错误");
    set(t, 0xC6, K::Read, HidMappingData, "读取HID映射值错误");
    set(t, 0xC7, K::Write, -1, "写入HID映射值错误");
    set(t, 0xCA, K::Read, KeyAttributeData, "读取按键属性错误");
    set(t, 0xCB, K::Write, -1, "写入按键属性错误");
    set(t, 0xA7, K::Read, SbusNoneData, "读取调参数据None错误");
    set(t, 0xA8, K::Write, -1, "写入调参数据None错误");
    set(t, 0xB4, K::Read, ChannelHoldData, "通道保持读取错误");
    set(t, 0xB5, K::Write, -1, "通道保持写入错误");
    set(t, 0xB6, K::Read, ThrottleHoldData, "油门保持读取错误");
    set(t, 0xB7, K::Write, -1, "油门保持写入错误");
    set(t, 0xE4, K::Write, -1, "停止通道数据上传失败");
    set(t, 0xE5, K::Write, -1, "开始通道数据上传失败");
    set(t, 0xE6, K::CalibrationStart, CalibrationStarted, "请求通道校准失败");
    set(t, 0xE7, K::CalibrationFinish, CalibrationFinished, "请求完成校准失败");
    set(t, 0xE8, K::Write, -1, "空闲报警写入失败");
    set(t, 0xE9, K::Read, IdleWarningData, "空闲报警读取失败");
    set(t, 0xEA, K::Write, -1, "恢复出厂设置错误");
    set(t, 0xEB, K::Read, LowVoltageData, "读取低压报警电压错误");
    set(t, 0xEC, K::Write, -1, "低压报警电压写入错误");
    set(t, 0xED, K::Write, -1, "对外充电控制指令写入错误");
    set(t, 0xEE, K::Read, ExternalChargingData, "对外充电控制指令读取错误");
    set(t, 0x11, K::ModuleReset, ModuleGroundResetResult);
    set(t, 0x12, K::ModuleReset, ModuleAirResetResult);
    set(t, 0x13, K::Read, BaudData, "读取波特率错误");
    set(t, 0x14, K::Write, -1, "写入波特率错误");
    set(t, 0x17, K::Read, HidOutputData, "读取HID输出状态错误");
    set(t, 0x18, K::Write, -1, "写入HID输出状态错误");
    set(t, 0x19, K::Read, ExternalSbusInputData, "读取外部sbus输入状态错误");
    set(t, 0x1A, K::Write, -1, "写入外部sbus输入状态错误");
    set(t, 0xDF, K::ModuleKind, -1);
    set(t, 0xFF, K::Identify, -1);

    auto group = [&t](quint8 code, int codeId) {
        t[code] = CodeInfo { AnswerKind::Group, codeId, groupFailureText(code) };
    };
    group(0x15, OutputModuleRead);
    group(0x16, OutputModuleWrite);
    for (int c = Command::CustomOutputFirst; c <= Command::CustomOutputLast; ++c)
        group(quint8(c), CustomOutputD1 + (c - Command::CustomOutputFirst));
    for (int c = Command::CanMappingFirst; c <= Command::CanMappingLast; ++c)
        group(quint8(c), CanMapping20 + (c - Command::CanMappingFirst));
    for (int c = Command::GroupFirst; c <= Command::GroupLast; ++c)
        group(quint8(c), Group30 + (c - Command::GroupFirst));

    // CAN data is not handed to the pages but to the receive window; its
    // failure text really has a blank before 错误.
    set(t, 0x26, K::CanData, -1, "code_26 错误");
    return t;
}

const Table &table()
{
    static const Table t = buildTable();
    return t;
}

} // namespace

void registerCodeIdMetaType()
{
    qRegisterMetaType<CodeID>("CodeID");
}

const CodeInfo &codeInfo(quint8 code)
{
    return table()[code];
}

bool resumesBehindFrame(quint8 code)
{
    const AnswerKind kind = codeInfo(code).kind;
    return kind != AnswerKind::ModuleKind && kind != AnswerKind::Unknown;
}

Answer interpretAnswer(quint8 code, const QByteArray &payload)
{
    const CodeInfo &info = codeInfo(code);
    const bool hasStatus = !payload.isEmpty();
    const quint8 status = hasStatus ? quint8(payload.at(0)) : 0;
    const bool refused = hasStatus && status == Command::StatusFailed;

    Answer a;
    auto emitAs = [&a](int codeId, const QByteArray &data) {
        a.emits = true;
        a.codeId = CodeID(codeId);
        a.data = data;
    };

    switch (info.kind) {
    case AnswerKind::OutOfRange:
    case AnswerKind::Unknown:
        break;
    case AnswerKind::Read:
    case AnswerKind::Group:
        if (refused)
            a.failureText = info.failureText;
        else
            emitAs(info.codeId, payload);
        break;
    case AnswerKind::Write:
        if (refused)
            a.failureText = info.failureText;
        break;
    case AnswerKind::ChannelReport:
        emitAs(info.codeId, payload.mid(1));
        break;
    case AnswerKind::CalibrationStart:
        if (hasStatus && status == Command::StatusOk)
            emitAs(info.codeId, QByteArray());
        else if (refused)
            a.failureText = info.failureText;
        break;
    case AnswerKind::CalibrationFinish:
        // A failed finish still ends the model page's calibration display.
        if (hasStatus && status == Command::StatusOk) {
            emitAs(info.codeId, payload);
        } else if (refused) {
            emitAs(info.codeId, QByteArray(1, char(Command::StatusFailed)));
            a.failureText = info.failureText;
        }
        break;
    case AnswerKind::ModuleReset:
        if (payload.size() == 1)
            emitAs(info.codeId, payload);
        break;
    case AnswerKind::CanData:
        // The window opens even for a refused answer; it then stays empty.
        a.showCanWindow = true;
        if (refused)
            a.failureText = info.failureText;
        else
            a.canWindowGetsData = true;
        a.data = payload;
        break;
    case AnswerKind::ModuleKind:
        a.moduleAnswer = true;
        if (hasStatus && status <= 2)
            a.moduleKind = status;
        break;
    case AnswerKind::Identify:
        a.identify = true;
        a.identifier = QString::fromLatin1(payload.left(5));
        break;
    }
    return a;
}
