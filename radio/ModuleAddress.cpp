#include "ModuleAddress.h"

#include <QHostAddress>
#include <QtGlobal>

namespace ModuleAddress
{
QString factoryAddress()
{
    return QStringLiteral("192.168.168.11");
}

QString startAddress()
{
    const QString configured = qEnvironmentVariable("QUILLMARK_MODULE_ADDRESS").trimmed();
    return configured.isEmpty() ? factoryAddress() : configured;
}

Endpoint parse(const QString &typed)
{
    Endpoint endpoint;
    QString text = typed.trimmed();
    QString portText;
    if (text.startsWith(QLatin1Char('['))) {
        const int close = text.indexOf(QLatin1Char(']'));
        if (close < 0)
            return endpoint;
        const QString rest = text.mid(close + 1);
        if (!rest.isEmpty()) {
            if (!rest.startsWith(QLatin1Char(':')))
                return endpoint;
            portText = rest.mid(1);
        }
        text = text.mid(1, close - 1);
    } else if (text.count(QLatin1Char(':')) == 1) {
        // One colon separates a port; more than one is an IPv6 literal.
        const int colon = text.indexOf(QLatin1Char(':'));
        portText = text.mid(colon + 1);
        text = text.left(colon);
    }
    if (text.isEmpty())
        return endpoint;
    if (!portText.isNull()) {
        bool ok = false;
        const uint port = portText.toUInt(&ok);
        if (!ok || port == 0 || port > 65535)
            return endpoint;
        endpoint.port = quint16(port);
    }
    endpoint.host = text;
    endpoint.valid = true;
    return endpoint;
}

bool isLoopback(const QString &host)
{
    if (host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0)
        return true;
    const QHostAddress address(host);
    return !address.isNull() && address.isLoopback();
}

void guard(const Endpoint &endpoint)
{
    if (qEnvironmentVariableIsEmpty("QUILLMARK_LOOPBACK_ONLY") || isLoopback(endpoint.host))
        return;
    qFatal("Refusing to contact the radio module at %s:%u: only loopback addresses may be reached "
           "while QUILLMARK_LOOPBACK_ONLY is set",
        qPrintable(endpoint.host), unsigned(endpoint.port));
}
} // namespace ModuleAddress
