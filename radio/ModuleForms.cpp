#include "ModuleForms.h"

namespace ModuleForms
{

const char kQueryModem[] = "AT+CFUN?";
const char kQueryBands[] = "AT^DAOCNDI?";
const char kQueryLinkKey[] = "AT^DAPI?";
const char kQueryNodeType[] = "AT^DDTC?";
const char kQueryIp[] = "AT^NETIFCFG?";
const char kQueryHopping[] = "AT^DFHC?";
const char kQuerySlotRatio[] = "AT^DSTC?";
const char kQueryMaxPower[] = "AT^DSSMTP?";
const char kQueryLinkGroup[] = "AT^DRPS?";
const char kQueryCarrier[] = "AT^DSONSCAP?";

const char kSetModem[] = "AT+CFUN=";
const char kSetHopping[] = "AT^DFHC=";
const char kSetSlotRatio[] = "AT^DSTC=";
const char kSetCarrier[] = "AT^DSONSCAP=";

Form atCommand(const QString &command)
{
    return { QStringLiteral("/boafrm/formAtcmdProcess"),
        QStringLiteral("FormAtcmd_Param_Atcmd=%1\r\n").arg(command) };
}

Form restart()
{
    return { QStringLiteral("/boafrm/formCfunProcess"), QStringLiteral("FormCfun_Param_DebugSwitch=3") };
}

Form linkKey(const QString &key)
{
    return { QStringLiteral("/boafrm/formDapiProcess"), QStringLiteral("FormDapi_Param_Key=") + key };
}

Form nodeType(int index)
{
    return { QStringLiteral("/boafrm/formDdtcProcess"), QStringLiteral("FormDdtc_Param_Type=%1").arg(index) };
}

Form moduleIp(const QString &address)
{
    return { QStringLiteral("/boafrm/formNetifcfgProcess"),
        QStringLiteral("FormNetifcfg_Param_Ip=") + address };
}

Form temperature()
{
    return { QStringLiteral("/boafrm/formShellCmdProcess"),
        QStringLiteral("FormShellcmd_Param_Shellcmd=dmesg | busybox grep \"temperature\"") };
}

QUrl url(const QString &typedAddress, const QString &endpoint)
{
    return QUrl(QStringLiteral("http://") + typedAddress + endpoint);
}

QByteArray bodyBytes(const Form &form)
{
    return form.body.toLocal8Bit();
}

std::optional<QString> selectionCommand(const char *prefix, int index)
{
    if (index < 0)
        return std::nullopt;
    return QLatin1String(prefix) + QString::number(index);
}

std::optional<QString> bandCommand(bool band800, bool band1400, bool band2400, bool falconSeries)
{
    if (int(band800) + int(band1400) + int(band2400) != 1)
        return std::nullopt;
    if (band800)
        return QStringLiteral("AT^DAOCNDI=%1").arg(falconSeries ? QLatin1String("02") : QLatin1String("01"));
    return QStringLiteral("AT^DAOCNDI=%1").arg(band1400 ? QLatin1String("04") : QLatin1String("08"));
}

QString bandwidthCode(int index, int itemCount)
{
    if (index < 0)
        return QString();
    // The module numbers 20 MHz, the last item, as 5: code 4 is never sent.
    return index == itemCount - 1 ? QStringLiteral("5") : QString::number(index);
}

QString linkGroupCommand(const QString &frequency, int bandwidthIndex, int itemCount, const QString &power)
{
    const QString quotedPower = power.isEmpty() ? QString() : QLatin1Char('"') + power + QLatin1Char('"');
    return QStringLiteral("AT^DRPS=") + frequency + QLatin1Char(',')
        + bandwidthCode(bandwidthIndex, itemCount) + QLatin1Char(',') + quotedPower;
}

QString maxPowerCommand(const QString &power)
{
    return QStringLiteral("AT^DSSMTP=\"") + power + QLatin1Char('"');
}

bool keyAcceptable(const QString &key)
{
    return !key.isEmpty() && key.size() % 2 == 0;
}

std::optional<QString> joinIp(const QStringList &parts)
{
    if (parts.size() != 4)
        return std::nullopt;
    for (const QString &part : parts) {
        if (part.isEmpty())
            return std::nullopt;
    }
    return parts.join(QLatin1Char('.'));
}

} // namespace ModuleForms
