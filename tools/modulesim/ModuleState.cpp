#include "ModuleState.h"

#include <QList>

namespace ModuleSim
{

namespace
{

const QByteArray kOk = QByteArrayLiteral("\r\nOK\r\n");
const QByteArray kRefused = QByteArrayLiteral("\r\n+CME ERROR: 100\r\n");
const QByteArray kError = QByteArrayLiteral("\r\nERROR\r\n");
const QByteArray kFormOk = QByteArrayLiteral("OK");
const QByteArray kShellBody
    = QByteArrayLiteral("FormShellcmd_Param_Shellcmd=dmesg | busybox grep \"temperature\"");

// A plain decimal, optionally negative; nothing else around it.
bool parseNumber(const QByteArray &text, int *out)
{
    const bool negative = text.startsWith('-');
    const QByteArray digits = negative ? text.mid(1) : text;
    if (digits.isEmpty() || digits.size() > 6)
        return false;
    int v = 0;
    for (char c : digits) {
        if (c < '0' || c > '9')
            return false;
        v = v * 10 + (c - '0');
    }
    *out = negative ? -v : v;
    return true;
}

bool parseInRange(const QByteArray &text, int lo, int hi, int *out)
{
    int v = 0;
    if (!parseNumber(text, &v) || v < lo || v > hi)
        return false;
    *out = v;
    return true;
}

bool unquote(const QByteArray &text, QByteArray *out)
{
    if (text.size() < 2 || !text.startsWith('"') || !text.endsWith('"'))
        return false;
    *out = text.mid(1, text.size() - 2);
    return true;
}

// The three frequency ranges the module's bands offer.
bool validFrequency(int f)
{
    return (f >= 24015 && f <= 24814) || (f >= 8060 && f <= 8259) || (f >= 14279 && f <= 14678);
}

QByteArray answer(const QByteArray &line)
{
    return "\r\n" + line + "\r\n\r\nOK\r\n";
}

QByteArray formValue(const QByteArray &body, const char *field, bool *ok)
{
    const QByteArray prefix = QByteArray(field) + '=';
    *ok = body.startsWith(prefix);
    return *ok ? body.mid(prefix.size()) : QByteArray();
}

} // namespace

ModuleState::ModuleState(quint32 seed, bool falcon)
    : m_falcon(falcon)
    , m_rng(seed)
{
}

QByteArray ModuleState::atReply(const QByteArray &command)
{
    const QByteArray c = command.trimmed();
    if (c.endsWith('?'))
        return query(c.left(c.size() - 1).toUpper());
    const int eq = c.indexOf('=');
    if (eq < 0)
        return kError;
    const QByteArray name = c.left(eq).toUpper();
    static const QList<QByteArray> settable
        = { "AT+CFUN", "AT^DAOCNDI", "AT^DFHC", "AT^DSTC", "AT^DSSMTP", "AT^DRPS", "AT^DSONSCAP" };
    if (!settable.contains(name))
        return kError;
    return set(name, c.mid(eq + 1)) ? kOk : kRefused;
}

QByteArray ModuleState::query(const QByteArray &name) const
{
    const ModuleSettings &s = m_settings;
    if (name == "AT+CFUN")
        return answer("+CFUN: " + QByteArray::number(s.cfun));
    if (name == "AT^DAOCNDI")
        return answer("^DAOCNDI: " + QByteArray::number(s.band, 16).rightJustified(2, '0').toUpper());
    if (name == "AT^DAPI")
        return answer("^DAPI: \"" + s.key + '"');
    if (name == "AT^DDTC")
        return answer(
            "^DDTC: " + QByteArray::number(currentNodeType()) + ',' + QByteArray::number(s.nodeType));
    if (name == "AT^NETIFCFG")
        return answer("^NETIFCFG: 2,\"" + s.ip + '"');
    if (name == "AT^DFHC")
        return answer("^DFHC: " + QByteArray::number(s.hopping));
    if (name == "AT^DSTC")
        return answer("^DSTC: " + QByteArray::number(s.slotRatio));
    if (name == "AT^DSSMTP")
        return answer("^DSSMTP: \"" + QByteArray::number(s.maxPower) + '"');
    if (name == "AT^DRPS") {
        const QByteArray group = QByteArray::number(s.frequency) + ',' + QByteArray::number(s.bandwidth)
            + ",\"" + QByteArray::number(s.power) + '"';
        // The Falcon series' firmware brackets the link group.
        return answer("^DRPS: " + (m_falcon ? '(' + group + ')' : group));
    }
    if (name == "AT^DSONSCAP")
        return answer("^DSONSCAP: " + QByteArray::number(s.caMimo));
    return kError;
}

bool ModuleState::set(const QByteArray &name, const QByteArray &value)
{
    ModuleSettings &s = m_settings;
    if (name == "AT+CFUN")
        return parseInRange(value, 0, 1, &s.cfun);
    if (name == "AT^DAOCNDI") {
        static const QList<QByteArray> bands = { "01", "02", "04", "08" };
        if (!bands.contains(value))
            return false;
        s.band = value.toInt(nullptr, 16);
        return true;
    }
    if (name == "AT^DFHC")
        return parseInRange(value, 0, 1, &s.hopping);
    if (name == "AT^DSTC")
        return parseInRange(value, 0, 3, &s.slotRatio);
    if (name == "AT^DSONSCAP")
        return parseInRange(value, 0, 3, &s.caMimo);
    if (name == "AT^DSSMTP") {
        QByteArray inner;
        return unquote(value, &inner) && parseInRange(inner, -40, 40, &s.maxPower);
    }
    if (name == "AT^DRPS") {
        // frequency,bandwidth,"power"; the page sends an empty bandwidth or
        // power when nothing was chosen, which the module refuses.
        const QList<QByteArray> parts = value.split(',');
        int f = 0, bw = 0, p = 0;
        QByteArray power;
        if (parts.size() != 3 || !parseNumber(parts.at(0), &f) || !validFrequency(f)
            || !parseNumber(parts.at(1), &bw) || !(bw == 0 || bw == 1 || bw == 2 || bw == 3 || bw == 5)
            || !unquote(parts.at(2), &power) || !parseInRange(power, -40, 40, &p))
            return false;
        s.frequency = f;
        s.bandwidth = bw;
        s.power = p;
        return true;
    }
    return false;
}

QByteArray ModuleState::restartForm(const QByteArray &body)
{
    if (body != "FormCfun_Param_DebugSwitch=3")
        return kRefused;
    m_settings.cfun = 1; // the modem comes back switched on
    return kFormOk;
}

QByteArray ModuleState::keyForm(const QByteArray &body)
{
    bool ok = false;
    const QByteArray key = formValue(body, "FormDapi_Param_Key", &ok);
    if (!ok || key.isEmpty() || key.size() > 64 || key.size() % 2 != 0)
        return kRefused;
    for (char c : key) {
        if (!((c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')))
            return kRefused;
    }
    m_settings.key = key;
    return kFormOk;
}

QByteArray ModuleState::nodeTypeForm(const QByteArray &body)
{
    bool ok = false;
    const QByteArray type = formValue(body, "FormDdtc_Param_Type", &ok);
    return ok && parseInRange(type, 0, 2, &m_settings.nodeType) ? kFormOk : kRefused;
}

QByteArray ModuleState::ipForm(const QByteArray &body)
{
    bool ok = false;
    const QByteArray ip = formValue(body, "FormNetifcfg_Param_Ip", &ok);
    const QList<QByteArray> parts = ip.split('.');
    if (!ok || parts.size() != 4)
        return kRefused;
    for (const QByteArray &part : parts) {
        int v = 0;
        if (part.startsWith('-') || !parseInRange(part, 0, 255, &v))
            return kRefused;
    }
    // Only remembered: the simulated module keeps listening where it was started.
    m_settings.ip = ip;
    return kFormOk;
}

QByteArray ModuleState::shellForm(const QByteArray &body)
{
    if (body != kShellBody)
        return QByteArray();
    m_temperature = qBound(40, m_temperature + m_rng.bounded(-2, 3), 60);
    QByteArray out;
    int t = qBound(40, m_temperature - 2, 60);
    for (int i = 0; i < 3; ++i) {
        m_uptimeUs += 1000000 + m_rng.bounded(0, 999999);
        const QByteArray stamp = QByteArray::number(m_uptimeUs / 1000000).rightJustified(5, ' ') + '.'
            + QByteArray::number(m_uptimeUs % 1000000).rightJustified(6, '0');
        if (i == 2)
            t = m_temperature; // the last line is the current reading
        out += '[' + stamp + "] thermal: temperature is " + QByteArray::number(t) + " C\n";
        t = qBound(40, t + 1, 60);
    }
    return out;
}

} // namespace ModuleSim
