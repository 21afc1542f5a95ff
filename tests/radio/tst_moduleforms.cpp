#include "ModuleForms.h"
#include "ModuleLabels.h"

#include <QtTest>

using namespace ModuleForms;

Q_DECLARE_METATYPE(ModuleForms::Form)

namespace
{
QString orNone(const std::optional<QString> &text)
{
    return text ? *text : QStringLiteral("none");
}
} // namespace

class TestModuleForms : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void formsOnTheWire_data();
    void formsOnTheWire();
    void urlKeepsTheTypedPort();
    void commands_data();
    void commands();
    void labels_data();
    void labels();
};

void TestModuleForms::formsOnTheWire_data()
{
    QTest::addColumn<Form>("form");
    QTest::addColumn<QString>("endpoint");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("AT command, nothing escaped")
        << atCommand("AT^DRPS=24100,3,\"20\"") << "/boafrm/formAtcmdProcess"
        << QByteArray("FormAtcmd_Param_Atcmd=AT^DRPS=24100,3,\"20\"\r\n");
    QTest::newRow("restart") << restart() << "/boafrm/formCfunProcess"
                             << QByteArray("FormCfun_Param_DebugSwitch=3");
    QTest::newRow("link key") << linkKey("00112233") << "/boafrm/formDapiProcess"
                              << QByteArray("FormDapi_Param_Key=00112233");
    QTest::newRow("access node") << nodeType(2) << "/boafrm/formDdtcProcess"
                                 << QByteArray("FormDdtc_Param_Type=2");
    QTest::newRow("address") << moduleIp("10.0.0.7") << "/boafrm/formNetifcfgProcess"
                             << QByteArray("FormNetifcfg_Param_Ip=10.0.0.7");
    QTest::newRow("temperature") << temperature() << "/boafrm/formShellCmdProcess"
                                 << QByteArray(
                                        "FormShellcmd_Param_Shellcmd=dmesg | busybox grep \"temperature\"");
    // The tests run with a UTF-8 locale: the local code page is UTF-8.
    QTest::newRow("console text in the local code page")
        << atCommand(QString::fromUtf8("AT 中&%")) << "/boafrm/formAtcmdProcess"
        << QByteArray("FormAtcmd_Param_Atcmd=AT \xe4\xb8\xad&%\r\n");
}

void TestModuleForms::formsOnTheWire()
{
    QFETCH(Form, form);
    QFETCH(QString, endpoint);
    QFETCH(QByteArray, body);
    QCOMPARE(form.endpoint, endpoint);
    QCOMPARE(bodyBytes(form), body);
}

void TestModuleForms::urlKeepsTheTypedPort()
{
    QCOMPARE(url("127.0.0.1:8080", "/boafrm/formDapiProcess"),
        QUrl("http://127.0.0.1:8080/boafrm/formDapiProcess"));
    const QUrl shipped = url("192.168.168.11", "/boafrm/formAtcmdProcess");
    QCOMPARE(shipped.host(), QStringLiteral("192.168.168.11"));
    QCOMPARE(shipped.port(80), 80);
    QCOMPARE(bodyBytes(temperature()).size(), 62);
}

void TestModuleForms::commands_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("expected");
    QTest::newRow("800M") << orNone(bandCommand(true, false, false, false)) << "AT^DAOCNDI=01";
    QTest::newRow("500/600M on Falcon") << orNone(bandCommand(true, false, false, true)) << "AT^DAOCNDI=02";
    QTest::newRow("1.4G") << orNone(bandCommand(false, true, false, true)) << "AT^DAOCNDI=04";
    QTest::newRow("2.4G") << orNone(bandCommand(false, false, true, false)) << "AT^DAOCNDI=08";
    QTest::newRow("no band") << orNone(bandCommand(false, false, false, false)) << "none";
    QTest::newRow("two bands") << orNone(bandCommand(true, false, true, false)) << "none";
    QTest::newRow("10M link group") << linkGroupCommand("24100", 3, 5, "20") << "AT^DRPS=24100,3,\"20\"";
    QTest::newRow("20M goes as code 5") << linkGroupCommand("24100", 4, 5, "-5") << "AT^DRPS=24100,5,\"-5\"";
    QTest::newRow("1.4M") << linkGroupCommand("8100", 0, 5, "0") << "AT^DRPS=8100,0,\"0\"";
    QTest::newRow("no bandwidth chosen") << linkGroupCommand("24100", -1, 5, "20") << "AT^DRPS=24100,,\"20\"";
    QTest::newRow("no power") << linkGroupCommand("", 1, 5, "") << "AT^DRPS=,1,";
    QTest::newRow("modem on") << orNone(selectionCommand(kSetModem, 1)) << "AT+CFUN=1";
    QTest::newRow("slot ratio") << orNone(selectionCommand(kSetSlotRatio, 3)) << "AT^DSTC=3";
    QTest::newRow("nothing selected") << orNone(selectionCommand(kSetHopping, -1)) << "none";
    QTest::newRow("max power") << maxPowerCommand("23") << "AT^DSSMTP=\"23\"";
    QTest::newRow("address") << orNone(joinIp({ "10", "0", "0", "7" })) << "10.0.0.7";
    QTest::newRow("address part missing") << orNone(joinIp({ "10", "", "0", "7" })) << "none";
    const auto key = [](const QString &k) {
        return keyAcceptable(k) ? QStringLiteral("sent") : QStringLiteral("refused");
    };
    QTest::newRow("key of 2") << key("AB") << "sent";
    QTest::newRow("key of 64") << key(QString(64, 'f')) << "sent";
    QTest::newRow("key of 3") << key("ABC") << "refused";
    QTest::newRow("empty key") << key("") << "refused";
}

void TestModuleForms::commands()
{
    QFETCH(QString, command);
    QFETCH(QString, expected);
    QCOMPARE(command, expected);
}

void TestModuleForms::labels_data()
{
    using namespace ModuleLabels;
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("2.4G band") << bands(0x08) << QString::fromUtf8("当前值 : [ 2.4G ]");
    QTest::newRow("every band") << bands(0x0F)
                                << QString::fromUtf8("当前值 : [ 800M  500/600M  1.4G  2.4G ]");
    QTest::newRow("no band") << bands(0) << QString::fromUtf8("当前值 : []");
    const auto buttons = [](quint16 bits) {
        const BandButtons b = bandButtons(bits);
        return QStringLiteral("%1%2%3").arg(int(b.band800)).arg(int(b.band1400)).arg(int(b.band2400));
    };
    QTest::newRow("500/600M checks the 800M button") << buttons(0x02) << "100";
    QTest::newRow("1.4G and 2.4G") << buttons(0x0C) << "011";
    QTest::newRow("centre node") << currentType(1) << QString::fromUtf8("当前类型 : [ 中心节点 ]");
    QTest::newRow("configured access node")
        << configuredType(2) << QString::fromUtf8("工作类型 : [ 接入节点 ]");
    QTest::newRow("unknown node type") << currentType(3) << "";
    QTest::newRow("modem on") << currentValue(onOff(1)) << QString::fromUtf8("当前值 : [ 打开 ]");
    QTest::newRow("modem state 2 is off") << currentValue(onOff(2)) << QString::fromUtf8("当前值 : [ 关闭 ]");
    QTest::newRow("ip") << ip("10.0.0.7") << QString::fromUtf8("当前IP: [ 10.0.0.7 ]");
    QTest::newRow("max power") << maxPower(-40) << QString::fromUtf8("当前值(- 40 ~ 40) : [ -40 ]");
    QTest::newRow("carrier") << carrier(QString::fromUtf8("支持CA"))
                             << QString::fromUtf8("当前状态: [ 支持CA ]");
    QTest::newRow("temperature") << temperature("45") << QString::fromUtf8("Temperature: 45 °C");
    QTest::newRow("bandwidth 5 is the fifth item") << QString::number(bandwidthItem(5)) << "4";
    QTest::newRow("bandwidth 4 too") << QString::number(bandwidthItem(4)) << "4";
    QTest::newRow("console reply as it came")
        << consoleText("\r\n^DSTC: 1\r\n\r\nOK\r\n") << "\r\n^DSTC: 1\r\n\r\nOK\r\n";
    QTest::newRow("long console line as it came")
        << consoleText(QByteArray(2500, 'A') + "\nB") << QString(2500, 'A') + "\nB";
    QTest::newRow("bandwidth 6 is none") << QString::number(bandwidthItem(6)) << "-1";
}

void TestModuleForms::labels()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(text, expected);
}

QTEST_GUILESS_MAIN(TestModuleForms)
#include "tst_moduleforms.moc"
