#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// Reading the module's replies. Each query reply is found by its marker
// ("+CFUN:", "^DRPS:", ...) and read from there with the layout the modem
// firmware documents; a reply without the marker, or one that does not fill
// every field, is no answer and changes nothing. Replies arrive from the
// network and are read as bytes of any content and size.
namespace ModuleReplies
{

// "AT+CFUN?": 1 when the modem is on.
std::optional<int> modemSwitch(const QByteArray &reply);
// "AT^DAOCNDI?": the bit set of the bands (0x01 800M, 0x02 500/600M,
// 0x04 1.4G, 0x08 2.4G).
std::optional<quint16> bands(const QByteArray &reply);
// "AT^DAPI?": the link key, the text between the double quotes.
std::optional<QString> linkKey(const QByteArray &reply);

struct NodeTypes {
    int current = 0; // the type the module runs as
    int configured = 0; // the type it will run as after a restart
};
// "AT^DDTC?": 0 automatic, 1 centre node, 2 access node.
std::optional<NodeTypes> nodeTypes(const QByteArray &reply);
// "AT^NETIFCFG?": the module's address as "a.b.c.d".
std::optional<QString> moduleIp(const QByteArray &reply);
// "AT^DFHC?": 1 when frequency hopping is on.
std::optional<int> hopping(const QByteArray &reply);
// "AT^DSTC?": the index of the down/up-link slot ratio.
std::optional<int> slotRatio(const QByteArray &reply);
// "AT^DSSMTP?": the maximum transmit power.
std::optional<int> maxPower(const QByteArray &reply);
// "AT^DSONSCAP?": the carrier aggregation / MIMO index.
std::optional<int> carrierAggregation(const QByteArray &reply);

struct LinkGroup {
    int frequency = 0;
    int bandwidth = 0; // code: 0..3 as the list, 5 for 20 MHz
    int power = 0;
};
// "AT^DRPS?": Falcon modules put the three values in brackets, the others
// do not; the layout is chosen by the user's "Falcon Series" box, and a
// reply in the other layout is no answer.
std::optional<LinkGroup> linkGroup(const QByteArray &reply, bool falconSeries);

// The temperature out of the module's kernel messages: the text after the
// last "thermal: temperature is " up to the next blank. Nothing when it is
// empty or longer than a temperature can be.
std::optional<QString> temperature(const QByteArray &reply);

// What a set reply means for the user.
enum class SetResult {
    Failed, // network error or the modem's "+CME ERROR: 100"
    Succeeded, // "OK": the setting's value is read again
    Ignored, // anything else: nothing is shown
};
SetResult setResult(bool networkError, const QByteArray &body);

} // namespace ModuleReplies
