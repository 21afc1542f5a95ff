#include "StatusText.h"

#include "Sequences.h"

#include <QCoreApplication>

namespace
{
QString tr(const char *source)
{
    return QCoreApplication::translate("StatusLine", source);
}
} // namespace

namespace StatusText
{

QString port(const QString &portName)
{
    return portName.isEmpty() ? QCoreApplication::translate("StatusLine", "端口：未设置")
                              : QCoreApplication::translate("StatusLine", "端口：%1").arg(portName);
}

QString unit(const QString &modelIdentifier, int moduleKind)
{
    static const char *const kModels[][2] = {
        { "ALDER", QT_TRANSLATE_NOOP("StatusLine", "Alder") },
        { "BIRCH", QT_TRANSLATE_NOOP("StatusLine", "Birch") },
        { "CEDAR", QT_TRANSLATE_NOOP("StatusLine", "Cedar") },
        { "LARCH", QT_TRANSLATE_NOOP("StatusLine", "Larch") },
        { "MAPLE", QT_TRANSLATE_NOOP("StatusLine", "Maple") },
        { "ROWAN", QT_TRANSLATE_NOOP("StatusLine", "Rowan") },
        { "WILLO", QT_TRANSLATE_NOOP("StatusLine", "Willow") },
    };
    QString model;
    for (const auto &entry : kModels) {
        if (modelIdentifier == QLatin1String(entry[0]))
            model = tr(entry[1]);
    }
    if (model.isEmpty())
        return QString();
    static const char *const kModules[] = {
        QT_TRANSLATE_NOOP("StatusLine", "无无线模块"),
        QT_TRANSLATE_NOOP("StatusLine", "无线模块"),
        QT_TRANSLATE_NOOP("StatusLine", "输出模块"),
    };
    if (moduleKind < 0 || moduleKind > 2)
        return model;
    return QCoreApplication::translate("StatusLine", "%1，%2").arg(model, tr(kModules[moduleKind]));
}

QString connection(Connection state, const QString &reason)
{
    switch (state) {
    case Connection::NotOpen:
        return reason.isEmpty() ? QCoreApplication::translate("StatusLine", "未连接")
                                : QCoreApplication::translate("StatusLine", "未连接：%1").arg(reason);
    case Connection::Connecting:
        return QCoreApplication::translate("StatusLine", "连接中…");
    case Connection::Connected:
        return QCoreApplication::translate("StatusLine", "已连接");
    case Connection::Lost:
        return QCoreApplication::translate("StatusLine", "连接已断开");
    case Connection::Reconnecting:
        return QCoreApplication::translate("StatusLine", "正在重新连接…");
    }
    return QString();
}

QString section(int section)
{
    static const char *const kSections[SectionCount] = {
        QT_TRANSLATE_NOOP("StatusLine", "SBUS 1"),
        QT_TRANSLATE_NOOP("StatusLine", "SBUS 2"),
        QT_TRANSLATE_NOOP("StatusLine", "通道保持"),
        QT_TRANSLATE_NOOP("StatusLine", "按钮设置"),
        QT_TRANSLATE_NOOP("StatusLine", "综合设置"),
        QT_TRANSLATE_NOOP("StatusLine", "图传设置"),
        QT_TRANSLATE_NOOP("StatusLine", "自定义设置"),
    };
    return section >= 0 && section < SectionCount ? tr(kSections[section]) : QString();
}

QString read(int sectionNumber, int answers)
{
    return answers == 1
        ? QCoreApplication::translate("StatusLine", "读取%1 — 1 个应答").arg(section(sectionNumber))
        : QCoreApplication::translate("StatusLine", "读取%1 — %2 个应答")
              .arg(section(sectionNumber))
              .arg(answers);
}

QString factoryReset(int sectionNumber, int answers)
{
    return QCoreApplication::translate("StatusLine", "已恢复出厂设置，重新读取%1 — %2 个应答")
        .arg(section(sectionNumber))
        .arg(answers);
}

QString wrote(int sectionNumber)
{
    return QCoreApplication::translate("StatusLine", "已写入%1").arg(section(sectionNumber));
}

QString notWritten(int sectionNumber)
{
    return QCoreApplication::translate("StatusLine", "未写入%1：页面给出的参数个数不对")
        .arg(section(sectionNumber));
}

QString refused(const QString &refusalText)
{
    return QCoreApplication::translate("StatusLine", "设备拒绝：%1").arg(refusalText);
}

QString writeAllProgress(int sent, int total)
{
    return QCoreApplication::translate("StatusLine", "全部写入：第 %1 帧，共 %2 帧…").arg(sent).arg(total);
}

QString writeAllDone(int sent, int total, int refusals, bool portOpen)
{
    if (!portOpen)
        return QCoreApplication::translate("StatusLine", "全部写入中断：%1 帧（共 %2 帧）后端口已关闭")
            .arg(sent)
            .arg(total);
    if (refusals > 0)
        return QCoreApplication::translate("StatusLine", "全部写入完成：%1 帧，其中 %2 帧被设备拒绝")
            .arg(total)
            .arg(refusals);
    return QCoreApplication::translate("StatusLine", "全部写入完成：%1 帧").arg(total);
}

QString loaded(const QString &fileName, int elements, qint64 stoppedAtLine)
{
    if (stoppedAtLine > 0)
        return QCoreApplication::translate("StatusLine", "已加载 %1，到第 %2 行为止（此后文件已损坏）")
            .arg(fileName)
            .arg(stoppedAtLine);
    return QCoreApplication::translate("StatusLine", "已加载 %1：%2 组").arg(fileName).arg(elements);
}

QString notLoaded(const QString &fileName)
{
    return QCoreApplication::translate("StatusLine", "无法打开 %1").arg(fileName);
}

QString saved(const QString &fileName)
{
    return QCoreApplication::translate("StatusLine", "已保存 %1").arg(fileName);
}

QString notSaved(const QString &fileName)
{
    return QCoreApplication::translate("StatusLine", "无法保存 %1").arg(fileName);
}

QString backupSaved(const QString &relativePath)
{
    return QCoreApplication::translate("StatusLine", "已备份：%1").arg(relativePath);
}

QString backupFailed(const QString &error)
{
    return QCoreApplication::translate("StatusLine", "备份失败：%1").arg(error);
}

QString stamped(const QTime &when, const QString &outcome)
{
    return when.toString(QStringLiteral("HH:mm:ss")) + QStringLiteral("  ") + outcome;
}

} // namespace StatusText
