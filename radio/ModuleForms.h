#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

// What the module management window posts to the module's web server. Every
// setting travels as an HTML form; most forms carry one AT command for the
// module's modem, a few settings have forms of their own.
namespace ModuleForms
{

struct Form {
    QString endpoint; // path on the module's web server
    QString body; // form text, sent as it is (not URL-encoded)
};

Form atCommand(const QString &command);
// Restarts the module.
Form restart();
Form linkKey(const QString &key);
// Node type: 0 automatic, 1 centre node, 2 access node.
Form nodeType(int index);
Form moduleIp(const QString &address);
// Asks the module's shell for its kernel messages about the temperature.
Form temperature();

// "http://" + the address as typed + the endpoint; a typed "host:port"
// reaches a module on another port.
QUrl url(const QString &typedAddress, const QString &endpoint);
// The body as it goes on the wire: the local 8-bit code page, so that the
// modem's "^", "=", "\"" and "," arrive as they are.
QByteArray bodyBytes(const Form &form);

// The modem's queries.
extern const char kQueryModem[];
extern const char kQueryBands[];
extern const char kQueryLinkKey[];
extern const char kQueryNodeType[];
extern const char kQueryIp[];
extern const char kQueryHopping[];
extern const char kQuerySlotRatio[];
extern const char kQueryMaxPower[];
extern const char kQueryLinkGroup[];
extern const char kQueryCarrier[];

// The modem's sets chosen from a list: the prefix ("AT+CFUN=") and the
// selected index; nothing without a selection.
extern const char kSetModem[];
extern const char kSetHopping[];
extern const char kSetSlotRatio[];
extern const char kSetCarrier[];
std::optional<QString> selectionCommand(const char *prefix, int index);

// The band command for the checked band buttons; nothing unless exactly one
// is checked. The 800M button means the 500/600M band on Falcon modules.
std::optional<QString> bandCommand(bool band800, bool band1400, bool band2400, bool falconSeries);

// Bandwidth code of the link group for the selected bandwidth item; empty
// without a selection.
QString bandwidthCode(int index, int itemCount);
// "AT^DRPS=" + frequency + "," + bandwidth code + "," + quoted power.
QString linkGroupCommand(const QString &frequency, int bandwidthIndex, int itemCount, const QString &power);
QString maxPowerCommand(const QString &power);

// The link key goes out only when it is not empty and of even length (whole
// bytes in hexadecimal).
bool keyAcceptable(const QString &key);
// The four parts of a dotted address, joined; nothing when one is empty.
std::optional<QString> joinIp(const QStringList &parts);

} // namespace ModuleForms
