#pragma once

#include <QByteArray>
#include <QRandomGenerator>

namespace ModuleSim
{

// What the module's modem and web forms keep, as a module fresh from the
// factory has it.
struct ModuleSettings {
    int cfun = 1; // modem on
    int band = 0x08; // one bit: 0x01 800M, 0x02 500/600M, 0x04 1.4G, 0x08 2.4G
    QByteArray key = QByteArrayLiteral("00112233445566778899AABBCCDDEEFF");
    int nodeType = 1; // configured: 0 auto, 1 centre, 2 access
    QByteArray ip = QByteArrayLiteral("192.168.168.11");
    int hopping = 0;
    int slotRatio = 0; // DSTC
    int maxPower = 23; // DSSMTP, dBm
    int frequency = 24100; // DRPS frequency point
    int bandwidth = 3; // DRPS code; 5 is 20 MHz
    int power = 20; // DRPS power
    int caMimo = 0; // DSONSCAP
};

// The module's settings and its answers: AT commands to the modem and the
// other forms of its web server. Replies are the bodies the web server sends.
class ModuleState
{
public:
    explicit ModuleState(quint32 seed = 1, bool falcon = false);

    // The modem's reply to one AT command (without line end).
    QByteArray atReply(const QByteArray &command);

    // The other forms; each takes the whole posted body.
    QByteArray restartForm(const QByteArray &body);
    QByteArray keyForm(const QByteArray &body);
    QByteArray nodeTypeForm(const QByteArray &body);
    QByteArray ipForm(const QByteArray &body);
    QByteArray shellForm(const QByteArray &body);

    const ModuleSettings &settings() const { return m_settings; }
    // The node type the modem runs as: an automatic one comes up as centre.
    int currentNodeType() const { return m_settings.nodeType == 0 ? 1 : m_settings.nodeType; }

private:
    QByteArray query(const QByteArray &name) const;
    bool set(const QByteArray &name, const QByteArray &value);

    ModuleSettings m_settings;
    bool m_falcon;
    QRandomGenerator m_rng;
    int m_temperature = 47;
    qint64 m_uptimeUs = 812345678; // the kernel log's clock
};

} // namespace ModuleSim
