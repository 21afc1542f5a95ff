#include "PortProblem.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

namespace PortProblems
{

PortProblem classify(QSerialPort::SerialPortError error, bool pathExists, bool readWriteAllowed)
{
    if (error == QSerialPort::NoError)
        return PortProblem::None;
    if (error == QSerialPort::DeviceNotFoundError || !pathExists)
        return PortProblem::NoSuchDevice;
    if (!readWriteAllowed)
        return PortProblem::PermissionDenied;
    if (error == QSerialPort::PermissionError || error == QSerialPort::OpenError)
        return PortProblem::Busy;
    return PortProblem::Other;
}

PortProblem classifyOpenFailure(const QString &portName, QSerialPort::SerialPortError error)
{
    // As QSerialPort takes it: a bare name is a device under /dev.
    const QString path
        = portName.startsWith(QLatin1Char('/')) ? portName : QStringLiteral("/dev/") + portName;
    const QByteArray local = QFile::encodeName(path);
    const bool exists = QFileInfo::exists(path);
    const bool allowed = exists && ::access(local.constData(), R_OK | W_OK) == 0;
    return classify(error, exists, allowed);
}

QString text(PortProblem problem, const QString &portName, const QString &detail)
{
    switch (problem) {
    case PortProblem::None:
        return QString();
    case PortProblem::NotConfigured:
        return QCoreApplication::translate("PortProblem", "未设置串口：请在下面选择遥控器的串口。");
    case PortProblem::NoSuchDevice:
        return QCoreApplication::translate("PortProblem", "%1：没有这个设备（未连接，或路径有误）。")
            .arg(portName);
    case PortProblem::PermissionDenied:
        return QCoreApplication::translate("PortProblem",
            "%1：没有权限打开。请把用户加入 dialout 组（sudo usermod -aG dialout $USER），然后重新登录。")
            .arg(portName);
    case PortProblem::Busy:
        return QCoreApplication::translate("PortProblem", "%1：正被另一个程序使用，请先关闭那个程序。")
            .arg(portName);
    case PortProblem::Other:
        break;
    }
    return QCoreApplication::translate("PortProblem", "%1：无法打开（%2）。").arg(portName, detail);
}

QString shortText(PortProblem problem)
{
    switch (problem) {
    case PortProblem::None:
        return QString();
    case PortProblem::NotConfigured:
        return QCoreApplication::translate("PortProblem", "未设置串口");
    case PortProblem::NoSuchDevice:
        return QCoreApplication::translate("PortProblem", "没有这个设备");
    case PortProblem::PermissionDenied:
        return QCoreApplication::translate("PortProblem", "没有权限");
    case PortProblem::Busy:
        return QCoreApplication::translate("PortProblem", "被另一个程序占用");
    case PortProblem::Other:
        break;
    }
    return QCoreApplication::translate("PortProblem", "无法打开");
}

} // namespace PortProblems
