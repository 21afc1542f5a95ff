#include "ModuleLabels.h"

#include <QCoreApplication>

// The texts are the module window's and are translated in its context.

namespace
{

QString typeName(int type)
{
    switch (type) {
    case 0:
        return QCoreApplication::translate("RFParaConfig", "自动");
    case 1:
        return QCoreApplication::translate("RFParaConfig", "中心节点");
    case 2:
        return QCoreApplication::translate("RFParaConfig", "接入节点");
    default:
        return QString();
    }
}

} // namespace

namespace ModuleLabels
{

QString bracketed(const QString &prefix, const QString &value)
{
    return prefix + QStringLiteral("[ ") + value + QStringLiteral(" ]");
}

QString currentValue(const QString &value)
{
    return bracketed(QCoreApplication::translate("RFParaConfig", "当前值 : "), value);
}

QString onOff(int value)
{
    return value == 1 ? QCoreApplication::translate("RFParaConfig", "打开")
                      : QCoreApplication::translate("RFParaConfig", "关闭");
}

QString bands(quint16 bits)
{
    QString text = QCoreApplication::translate("RFParaConfig", "当前值 : ") + QLatin1Char('[');
    if (bits & 0x01)
        text += QStringLiteral(" 800M ");
    if (bits & 0x02)
        text += QStringLiteral(" 500/600M ");
    if (bits & 0x04)
        text += QStringLiteral(" 1.4G ");
    if (bits & 0x08)
        text += QStringLiteral(" 2.4G ");
    return text + QLatin1Char(']');
}

BandButtons bandButtons(quint16 bits)
{
    BandButtons buttons;
    buttons.band800 = bits & 0x03;
    buttons.band1400 = bits & 0x04;
    buttons.band2400 = bits & 0x08;
    return buttons;
}

QString currentType(int type)
{
    const QString name = typeName(type);
    return name.isEmpty() ? QString()
                          : bracketed(QCoreApplication::translate("RFParaConfig", "当前类型 : "), name);
}

QString configuredType(int type)
{
    const QString name = typeName(type);
    return name.isEmpty() ? QString()
                          : bracketed(QCoreApplication::translate("RFParaConfig", "工作类型 : "), name);
}

QString ip(const QString &address)
{
    return bracketed(QCoreApplication::translate("RFParaConfig", "当前IP: "), address);
}

QString maxPower(int value)
{
    return bracketed(
        QCoreApplication::translate("RFParaConfig", "当前值(- 40 ~ 40) : "), QString::number(value));
}

QString carrier(const QString &item)
{
    return bracketed(QCoreApplication::translate("RFParaConfig", "当前状态: "), item);
}

int bandwidthItem(int code)
{
    if (code == 5)
        return 4;
    return code >= 0 && code <= 4 ? code : -1;
}

QString temperature(const QString &value)
{
    return QStringLiteral("Temperature: ") + value + QStringLiteral(" \u00B0C");
}

QString consoleText(const QByteArray &reply)
{
    return QString::fromLocal8Bit(reply.constData(), reply.size());
}

} // namespace ModuleLabels
