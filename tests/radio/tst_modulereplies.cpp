#include "ModuleReplies.h"
#include "ReplyScan.h"

#include <QtTest>

using namespace ModuleReplies;

namespace
{

// One reply read as a given kind, written the way a row below expects it;
// "none" when the reply is no answer.
template <typename T, typename F> QString shown(const std::optional<T> &value, F format)
{
    return value ? format(*value) : QStringLiteral("none");
}

QString readAs(const QString &kind, const QByteArray &reply, bool falcon)
{
    const auto number = [](int v) { return QString::number(v); };
    if (kind == "CFUN")
        return shown(modemSwitch(reply), number);
    if (kind == "DAOCNDI")
        return shown(bands(reply), [](quint16 v) { return QStringLiteral("0x%1").arg(v, 0, 16); });
    if (kind == "DAPI")
        return shown(linkKey(reply), [](const QString &k) { return '<' + k + '>'; });
    if (kind == "DDTC")
        return shown(nodeTypes(reply),
            [](NodeTypes t) { return QStringLiteral("%1,%2").arg(t.current).arg(t.configured); });
    if (kind == "NETIFCFG")
        return shown(moduleIp(reply), [](const QString &ip) { return ip; });
    if (kind == "DFHC")
        return shown(hopping(reply), number);
    if (kind == "DSTC")
        return shown(slotRatio(reply), number);
    if (kind == "DSSMTP")
        return shown(maxPower(reply), number);
    if (kind == "DSONSCAP")
        return shown(carrierAggregation(reply), number);
    if (kind == "DRPS")
        return shown(linkGroup(reply, falcon), [](LinkGroup g) {
            return QStringLiteral("%1,%2,%3").arg(g.frequency).arg(g.bandwidth).arg(g.power);
        });
    return shown(temperature(reply), [](const QString &t) { return t; });
}

const QStringList kKinds { "CFUN", "DAOCNDI", "DAPI", "DDTC", "NETIFCFG", "DFHC", "DSTC", "DSSMTP",
    "DSONSCAP", "DRPS", "temperature" };

} // namespace

class TestModuleReplies : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void scanFollowsTheCLibrary_data();
    void scanFollowsTheCLibrary();
    void queryReplies_data();
    void queryReplies();
    void hostileRepliesAreNoAnswer_data();
    void hostileRepliesAreNoAnswer();
    void setReplies_data();
    void setReplies();
};

void TestModuleReplies::scanFollowsTheCLibrary_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("from");
    QTest::addColumn<QByteArray>("pattern");
    QTest::addColumn<int>("stored");
    QTest::addColumn<QString>("values"); // int, qint16 (h) and quint16 hex (x) fields

    QTest::newRow("blank in pattern takes a run")
        << QByteArray("\r\n \t+C: 7") << 0 << QByteArray("\r\n+C: %d") << 1 << "7";
    QTest::newRow("blank in pattern takes none")
        << QByteArray("+C:7") << 0 << QByteArray("\r\n+C: %d") << 1 << "7";
    QTest::newRow("blank in text before a literal")
        << QByteArray("1 ,2") << 0 << QByteArray("%d,%d") << 1 << "1";
    QTest::newRow("starts at the offset") << QByteArray("xx9,-3") << 2 << QByteArray("%d,%d") << 2 << "9,-3";
    QTest::newRow("offset past the end") << QByteArray("12") << 3 << QByteArray("%d") << 0 << "";
    QTest::newRow("lone sign") << QByteArray("-,5") << 0 << QByteArray("%d,%d") << 0 << "";
    QTest::newRow("sign then blank") << QByteArray("- 5") << 0 << QByteArray("%d") << 0 << "";
    QTest::newRow("plus sign") << QByteArray("+5") << 0 << QByteArray("%d") << 1 << "5";
    QTest::newRow("int keeps the low 32 bits")
        << QByteArray("4294967297") << 0 << QByteArray("%d") << 1 << "1";
    QTest::newRow("beyond 64 bits is held at the bound")
        << QByteArray("99999999999999999999") << 0 << QByteArray("%d") << 1 << "-1";
    QTest::newRow("short keeps the low 16 bits")
        << QByteArray("40000") << 0 << QByteArray("%hd") << 1 << "h-25536";
    QTest::newRow("hex") << QByteArray("0F") << 0 << QByteArray("%hx") << 1 << "xf";
    QTest::newRow("hex with 0x") << QByteArray("0x1A") << 0 << QByteArray("%hx") << 1 << "x1a";
    QTest::newRow("hex 0x without digits") << QByteArray("0x,") << 0 << QByteArray("%hx,") << 1 << "x0";
    QTest::newRow("negative hex wraps") << QByteArray("-1") << 0 << QByteArray("%hx") << 1 << "xffff";
    QTest::newRow("percent") << QByteArray("50%") << 0 << QByteArray("%d%%") << 1 << "50";
    QTest::newRow("NUL is no blank") << QByteArray("\0 5", 3) << 0 << QByteArray(" %d") << 0 << "";
    QTest::newRow("truncated after literal") << QByteArray("\"") << 0 << QByteArray("\"%d\"") << 0 << "";
}

void TestModuleReplies::scanFollowsTheCLibrary()
{
    QFETCH(QByteArray, text);
    QFETCH(int, from);
    QFETCH(QByteArray, pattern);
    QFETCH(int, stored);
    QFETCH(QString, values);
    int a = 111, b = 111;
    qint16 h = 111;
    quint16 x = 111;
    int got = 0;
    QStringList read;
    if (pattern.contains("%h")) {
        const bool hex = pattern.contains("%hx");
        got = hex ? ReplyScan::scan(text, from, pattern.constData(), { &x })
                  : ReplyScan::scan(text, from, pattern.constData(), { &h });
        if (got)
            read << (hex ? QStringLiteral("x%1").arg(x, 0, 16) : QStringLiteral("h%1").arg(h));
    } else {
        got = ReplyScan::scan(text, from, pattern.constData(), { &a, &b });
        for (int i = 0; i < got; ++i)
            read << QString::number(i == 0 ? a : b);
    }
    QCOMPARE(got, stored);
    QCOMPARE(read.join(','), values);
    if (got < 2 && !pattern.contains("%h"))
        QCOMPARE(b, 111); // fields after a mismatch keep their value
}

void TestModuleReplies::queryReplies_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<bool>("falcon");
    QTest::addColumn<QString>("read");

    const auto row = [](const char *name, const char *kind, const QByteArray &reply, const char *read,
                         bool falcon = false) { QTest::newRow(name) << kind << reply << falcon << read; };
    row("modem on", "CFUN", "\r\n+CFUN: 1\r\n\r\nOK\r\n", "1");
    row("modem off", "CFUN", "\r\n+CFUN: 0\r\n\r\nOK\r\n", "0");
    row("echo ahead of the marker", "CFUN", "AT+CFUN?\r\r\n+CFUN: 1\r\n\r\nOK\r\n", "1");
    row("value without the final OK", "CFUN", "\r\n+CFUN: 1", "1");
    row("marker without value", "CFUN", "\r\n+CFUN: \r\n\r\nOK\r\n", "none");
    row("marker at the very end", "CFUN", "junk+CFUN:", "none");
    row("only OK", "CFUN", "\r\nOK\r\n", "none");
    row("lower-case marker", "CFUN", "\r\n+cfun: 1\r\n", "none");
    row("2.4G band", "DAOCNDI", "\r\n^DAOCNDI: 08\r\n\r\nOK\r\n", "0x8");
    row("all bands", "DAOCNDI", "\r\n^DAOCNDI: 0F\r\n\r\nOK\r\n", "0xf");
    row("band with 0x", "DAOCNDI", "\r\n^DAOCNDI: 0x04\r\n", "0x4");
    row("band not hexadecimal", "DAOCNDI", "\r\n^DAOCNDI: zz\r\n", "none");
    row("key", "DAPI", "\r\n^DAPI: \"00112233445566778899AABBCCDDEEFF\"\r\n\r\nOK\r\n",
        "<00112233445566778899AABBCCDDEEFF>");
    row("empty key", "DAPI", "\r\n^DAPI: \"\"\r\n\r\nOK\r\n", "<>");
    row("quotes before the marker do not count", "DAPI", "\"x\"\r\n^DAPI: \"AB\"\r\n", "<AB>");
    row("key without closing quote", "DAPI", "\r\n^DAPI: \"0011\r\n\r\nOK\r\n", "none");
    row("key without quotes", "DAPI", "\r\n^DAPI: 0011\r\n\r\nOK\r\n", "none");
    row("key longer than any key", "DAPI", "^DAPI: \"" + QByteArray(300, 'A') + "\"", "none");
    row("centre node", "DDTC", "\r\n^DDTC: 1,1\r\n\r\nOK\r\n", "1,1");
    row("access node set to automatic", "DDTC", "\r\n^DDTC: 2,0\r\n\r\nOK\r\n", "2,0");
    row("one node type only", "DDTC", "\r\n^DDTC: 1\r\n\r\nOK\r\n", "none");
    row("address", "NETIFCFG", "\r\n^NETIFCFG: 2,\"192.168.168.11\"\r\n\r\nOK\r\n", "192.168.168.11");
    row("address of another interface", "NETIFCFG", "\r\n^NETIFCFG: 1,\"10.0.0.1\"\r\n\r\nOK\r\n", "none");
    row("address of three parts", "NETIFCFG", "\r\n^NETIFCFG: 2,\"10.0.0\"\r\n\r\nOK\r\n", "none");
    row("address unquoted", "NETIFCFG", "\r\n^NETIFCFG: 2,10.0.0.1\r\n\r\nOK\r\n", "none");
    row("hopping off", "DFHC", "\r\n^DFHC: 0\r\n\r\nOK\r\n", "0");
    row("slot ratio", "DSTC", "\r\n^DSTC: 3\r\n\r\nOK\r\n", "3");
    row("max power", "DSSMTP", "\r\n^DSSMTP: \"23\"\r\n\r\nOK\r\n", "23");
    row("negative max power", "DSSMTP", "\r\n^DSSMTP: \"-40\"\r\n\r\nOK\r\n", "-40");
    row("max power unquoted", "DSSMTP", "\r\n^DSSMTP: 23\r\n\r\nOK\r\n", "none");
    row("CA and MIMO", "DSONSCAP", "\r\n^DSONSCAP: 3\r\n\r\nOK\r\n", "3");
    row("link group", "DRPS", "\r\n^DRPS: 24100,3,\"20\"\r\n\r\nOK\r\n", "24100,3,20");
    row("Falcon link group", "DRPS", "\r\n^DRPS: (8100,5,\"-10\")\r\n\r\nOK\r\n", "8100,5,-10", true);
    row("bracketed without Falcon Series", "DRPS", "\r\n^DRPS: (8100,5,\"-10\")\r\n\r\nOK\r\n", "none");
    row("plain with Falcon Series", "DRPS", "\r\n^DRPS: 24100,3,\"20\"\r\n\r\nOK\r\n", "none", true);
    row("power unquoted", "DRPS", "\r\n^DRPS: 24100,3,20\r\n\r\nOK\r\n", "none");
    row("link group cut short", "DRPS", "\r\n^DRPS: 24100,3", "none");
    row("temperature", "temperature", "[   12.5] thermal: temperature is 45\n", "45");
    row("last temperature counts", "temperature",
        "thermal: temperature is 40\nthermal: temperature is 47 C\n", "47");
    row("temperature at the end", "temperature", "thermal: temperature is 52", "52");
    row("temperature up to a tab", "temperature", "thermal: temperature is 38\tx", "38");
    row("key at the very end", "temperature", "x thermal: temperature is ", "none");
    row("blank right after the key", "temperature", "thermal: temperature is  45", "none");
    row("no temperature", "temperature", "thermal zone 0 ok\n", "none");
    row("temperature too long", "temperature", "thermal: temperature is " + QByteArray(40, '9'), "none");
}

void TestModuleReplies::queryReplies()
{
    QFETCH(QString, kind);
    QFETCH(QByteArray, reply);
    QFETCH(bool, falcon);
    QFETCH(QString, read);
    QCOMPARE(readAs(kind, reply, falcon), read);
}

// Replies come from the network: whatever arrives, every reader must stay in
// the reply and answer without crashing.
void TestModuleReplies::hostileRepliesAreNoAnswer_data()
{
    QTest::addColumn<QByteArray>("reply");
    QByteArray noise(1 << 20, '\0');
    for (int i = 0; i < noise.size(); ++i)
        noise[i] = char(i * 7 + (i >> 8));
    QTest::newRow("binary") << noise;
    QTest::newRow("10 MB of blanks") << QByteArray(10 << 20, ' ');
    QTest::newRow("every marker at the end")
        << QByteArray("+CFUN:^DAOCNDI:^DAPI:^DDTC:^NETIFCFG:^DFHC:^DSTC:^DSSMTP:^DSONSCAP:^DRPS:"
                      "thermal: temperature is ");
    QTest::newRow("every marker cut after its quote")
        << QByteArray("^NETIFCFG: 2,\"\n^DSSMTP: \"\n^DRPS: 1,2,\"");
}

void TestModuleReplies::hostileRepliesAreNoAnswer()
{
    QFETCH(QByteArray, reply);
    for (const QString &kind : kKinds) {
        QCOMPARE(readAs(kind, reply, false), QStringLiteral("none"));
        QCOMPARE(readAs(kind, reply, true), QStringLiteral("none"));
    }
    // 10 MB of digits after a marker: read to the end and held at the bound.
    QCOMPARE(readAs("CFUN", "+CFUN: " + QByteArray(10 << 20, '7'), false), QStringLiteral("-1"));
}

void TestModuleReplies::setReplies_data()
{
    QTest::addColumn<bool>("networkError");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("result");
    const int failed = int(SetResult::Failed), succeeded = int(SetResult::Succeeded),
              ignored = int(SetResult::Ignored);
    QTest::newRow("OK") << false << QByteArray("\r\nOK\r\n") << succeeded;
    QTest::newRow("bare OK") << false << QByteArray("OK") << succeeded;
    QTest::newRow("modem error 100") << false << QByteArray("\r\n+CME ERROR: 100\r\n") << failed;
    QTest::newRow("network error with an OK body") << true << QByteArray("\r\nOK\r\n") << failed;
    QTest::newRow("OK with one line end") << false << QByteArray("OK\r\n") << ignored;
    QTest::newRow("another modem error") << false << QByteArray("\r\n+CME ERROR: 3\r\n") << ignored;
    QTest::newRow("lower-case ok") << false << QByteArray("\r\nok\r\n") << ignored;
    QTest::newRow("empty") << false << QByteArray() << ignored;
}

void TestModuleReplies::setReplies()
{
    QFETCH(bool, networkError);
    QFETCH(QByteArray, body);
    QFETCH(int, result);
    QCOMPARE(int(setResult(networkError, body)), result);
}

QTEST_GUILESS_MAIN(TestModuleReplies)
#include "tst_modulereplies.moc"
