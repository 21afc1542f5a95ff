#include "ModuleReplies.h"

#include "ReplyScan.h"

namespace
{

// The longest link key the module keeps is 64 characters; a reply with far
// more between the quotes is not a key, and would only flood the label.
constexpr int kMaxKeyLength = 256;
// A temperature in degrees is a few characters.
constexpr int kMaxTemperatureLength = 16;

// Reads the reply from its marker on with the pattern; true when every
// target was filled.
bool scanAfter(const QByteArray &reply, const char *marker, const char *pattern,
    std::initializer_list<ReplyScan::Target> targets)
{
    const int at = reply.indexOf(marker);
    return at >= 0 && ReplyScan::scan(reply, at, pattern, targets) == int(targets.size());
}

// One number after the marker, read with the pattern.
std::optional<int> single(const QByteArray &reply, const char *marker, const char *pattern)
{
    int value = 0;
    if (!scanAfter(reply, marker, pattern, { &value }))
        return std::nullopt;
    return value;
}

} // namespace

namespace ModuleReplies
{

std::optional<int> modemSwitch(const QByteArray &reply)
{
    return single(reply, "+CFUN:", "\r\n+CFUN: %d\r\n\r\nOK\r\n");
}

std::optional<quint16> bands(const QByteArray &reply)
{
    quint16 bits = 0;
    if (!scanAfter(reply, "^DAOCNDI:", "\r\n^DAOCNDI: %hx", { &bits }))
        return std::nullopt;
    return bits;
}

std::optional<QString> linkKey(const QByteArray &reply)
{
    const int at = reply.indexOf("^DAPI:");
    if (at < 0)
        return std::nullopt;
    const int open = reply.indexOf('"', at);
    const int close = open < 0 ? -1 : reply.indexOf('"', open + 1);
    if (close < 0 || close - open - 1 > kMaxKeyLength)
        return std::nullopt;
    return QString::fromLocal8Bit(reply.constData() + open + 1, close - open - 1);
}

std::optional<NodeTypes> nodeTypes(const QByteArray &reply)
{
    NodeTypes types;
    if (!scanAfter(reply, "^DDTC:", "\r\n^DDTC: %d,%d\r\n\r\nOK\r\n", { &types.current, &types.configured }))
        return std::nullopt;
    return types;
}

std::optional<QString> moduleIp(const QByteArray &reply)
{
    int a = 0, b = 0, c = 0, d = 0;
    if (!scanAfter(reply, "^NETIFCFG:", "\r\n^NETIFCFG: 2,\"%d.%d.%d.%d\"\r\n\r\nOK\r\n", { &a, &b, &c, &d }))
        return std::nullopt;
    return QStringLiteral("%1.%2.%3.%4").arg(a).arg(b).arg(c).arg(d);
}

std::optional<int> hopping(const QByteArray &reply)
{
    return single(reply, "^DFHC:", "\r\n^DFHC: %d\r\n\r\nOK\r\n");
}

std::optional<int> slotRatio(const QByteArray &reply)
{
    return single(reply, "^DSTC:", "\r\n^DSTC: %d\r\n\r\nOK\r\n");
}

std::optional<int> maxPower(const QByteArray &reply)
{
    return single(reply, "^DSSMTP:", "\r\n^DSSMTP: \"%d\"\r\n\r\nOK\r\n");
}

std::optional<int> carrierAggregation(const QByteArray &reply)
{
    return single(reply, "^DSONSCAP:", "\r\n^DSONSCAP: %d\r\n\r\nOK\r\n");
}

std::optional<LinkGroup> linkGroup(const QByteArray &reply, bool falconSeries)
{
    LinkGroup group;
    const char *pattern
        = falconSeries ? "\r\n^DRPS: (%d,%d,\"%d\")\r\n\r\nOK\r\n" : "\r\n^DRPS: %d,%d,\"%d\"\r\n\r\nOK\r\n";
    if (!scanAfter(reply, "^DRPS:", pattern, { &group.frequency, &group.bandwidth, &group.power }))
        return std::nullopt;
    return group;
}

std::optional<QString> temperature(const QByteArray &reply)
{
    static const QByteArray key("thermal: temperature is ");
    const int at = reply.lastIndexOf(key);
    if (at < 0)
        return std::nullopt;
    const int start = at + key.size();
    int end = start;
    while (end < reply.size() && end - start <= kMaxTemperatureLength) {
        const char c = reply.at(end);
        if (c == ' ' || (c >= '\t' && c <= '\r'))
            break;
        ++end;
    }
    if (end == start || end - start > kMaxTemperatureLength)
        return std::nullopt;
    return QString::fromLocal8Bit(reply.constData() + start, end - start);
}

SetResult setResult(bool networkError, const QByteArray &body)
{
    if (networkError || body == "\r\n+CME ERROR: 100\r\n")
        return SetResult::Failed;
    if (body == "\r\nOK\r\n" || body == "OK")
        return SetResult::Succeeded;
    return SetResult::Ignored;
}

} // namespace ModuleReplies
