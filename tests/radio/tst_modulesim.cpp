// The simulated module's answers, without the network: the exact reply texts
// the module windows match on, the request cutting and the link reports.
#include "HttpRequestCutter.h"
#include "ModuleSite.h"

#include <QtTest>

#include <cstdio>

using namespace ModuleSim;

namespace
{

HttpRequest post(const QByteArray &path, const QByteArray &body)
{
    HttpRequest r;
    r.method = "POST";
    r.path = path;
    r.body = body;
    return r;
}

QByteArray bodyOf(const QByteArray &response)
{
    return response.mid(response.indexOf("\r\n\r\n") + 4);
}

QByteArray at(ModuleSite &site, const QByteArray &command)
{
    return bodyOf(
        site.respond(post("/boafrm/formAtcmdProcess", "FormAtcmd_Param_Atcmd=" + command + "\r\n")));
}

// One report record read the way the link monitor reads it.
struct Record {
    int fields = 0;
    int distance = 0, power = 0;
    int rssi[2] = {}, rsrp[2] = {}, snr[2] = {};
};

Record scan(const QByteArray &kind, const QByteArray &text)
{
    short v[22] = {};
    int d[2] = {};
    unsigned hex = 0;
    Record r;
    const char *t = text.constData();
    auto take = [&r, &v](int dist, int rssi, int rsrp, int snr, int power) {
        r.distance = dist;
        r.rssi[0] = v[rssi], r.rssi[1] = v[rssi + 1], r.rsrp[0] = v[rsrp], r.rsrp[1] = v[rsrp + 1];
        r.snr[0] = v[snr], r.snr[1] = v[snr + 1], r.power = v[power];
    };
    if (kind == "access kite") {
        r.fields = std::sscanf(t,
            "^DRPR: "
            "%hd,%hd,%hd,\"%hd\",%hd,\"%hd\",\"%hd\",\"%hd\",%hd,\"%hd\",%d,%d,%hd,%hd,%hd,%hd,\"%hd\",\"%"
            "hd\",%hd",
            &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7], &v[8], &v[9], &d[0], &d[1], &v[12],
            &v[13], &v[14], &v[15], &v[16], &v[17], &v[18]);
        take(d[0], 12, 14, 16, 18);
    } else if (kind == "access falcon") {
        r.fields = std::sscanf(t,
            "^DRPR: "
            "%hd,%hd,%hd,%hd,\"%hd\",%hd,\"%hd\",%hd,\"%hd\",%hd,\"%hd\",%d,%d,%hd,%hd,%hd,%hd,%hd,\"%hd\","
            "\"%hd\",%hd",
            &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7], &v[8], &v[9], &v[10], &d[0], &d[1],
            &v[13], &v[14], &v[15], &v[16], &v[17], &v[18], &v[19], &v[20]);
        take(d[0], 13, 15, 18, 20);
    } else if (kind == "mesh") {
        r.fields = std::sscanf(t,
            "^DRPR: "
            "%hd,%hd,%hd,%x,%hd,\"%hd\",%hd,\"%hd\",\"%hd\",%hd,\"%hd\",%d,%hd,%hd,%hd,%hd,%hd,%hd,%hd,%hd,"
            "\"%hd\",\"%hd\"",
            &v[0], &v[1], &v[2], &hex, &v[4], &v[5], &v[6], &v[7], &v[8], &v[9], &v[10], &d[0], &v[12],
            &v[13], &v[14], &v[15], &v[16], &v[17], &v[18], &v[19], &v[20], &v[21]);
        take(d[0], 12, 14, 20, 16);
    } else {
        // Centre: the quoted node name first, then the numbers.
        if (!text.startsWith("^DAPR: \"") || text.indexOf("\",", 8) < 0)
            return r;
        t += text.indexOf("\",", 8) + 2;
        if (kind == "centre kite") {
            r.fields = std::sscanf(t,
                "%hd,\"%hd\",%hd,\"%hd\",\"%hd\",\"%hd\",%hd,\"%hd\",%d,%d,%hd,%hd,%hd,%hd,%hd,\"%hd\",\"%"
                "hd\",%hd",
                &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7], &d[0], &d[1], &v[10], &v[11], &v[12],
                &v[13], &v[14], &v[15], &v[16], &v[17]);
            take(d[0], 10, 12, 15, 17);
        } else {
            r.fields = std::sscanf(t,
                "%hd,%hd,\"%hd\",%hd,\"%hd\",%hd,\"%hd\",%hd,\"%hd\",%d,%d,%hd,%hd,%hd,%hd,%hd,\"%hd\",\"%"
                "hd\",%hd",
                &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7], &v[8], &d[0], &d[1], &v[11], &v[12],
                &v[13], &v[14], &v[15], &v[16], &v[17], &v[18]);
            take(d[0], 11, 13, 16, 18);
        }
    }
    return r;
}

} // namespace

class TestModuleSim : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void refusedSets_data();
    void refusedSets();
    void temperatureShell();
    void cutsRequests_data();
    void cutsRequests();
    void shortBodyIsHandedOnWhenAsked();
    void junkIsGivenUp_data();
    void junkIsGivenUp();
    void reports_data();
    void reports();
    void emptyCommandGetsEmptyReport();
};

void TestModuleSim::refusedSets_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("reply");
    const QByteArray atPath = "/boafrm/formAtcmdProcess";
    const QByteArray cme = "\r\n+CME ERROR: 100\r\n";
    QTest::newRow("cfun 2") << atPath << QByteArray("FormAtcmd_Param_Atcmd=AT+CFUN=2\r\n") << cme;
    QTest::newRow("two bands") << atPath << QByteArray("FormAtcmd_Param_Atcmd=AT^DAOCNDI=0C\r\n") << cme;
    QTest::newRow("slot ratio 4") << atPath << QByteArray("FormAtcmd_Param_Atcmd=AT^DSTC=4\r\n") << cme;
    QTest::newRow("max power 41") << atPath << QByteArray("FormAtcmd_Param_Atcmd=AT^DSSMTP=\"41\"\r\n")
                                  << cme;
    QTest::newRow("max power unquoted")
        << atPath << QByteArray("FormAtcmd_Param_Atcmd=AT^DSSMTP=20\r\n") << cme;
    QTest::newRow("bandwidth 4") << atPath << QByteArray("FormAtcmd_Param_Atcmd=AT^DRPS=24100,4,\"20\"\r\n")
                                 << cme;
    QTest::newRow("no bandwidth") << atPath << QByteArray("FormAtcmd_Param_Atcmd=AT^DRPS=24100,,\"20\"\r\n")
                                  << cme;
    QTest::newRow("no power") << atPath << QByteArray("FormAtcmd_Param_Atcmd=AT^DRPS=24100,3,\r\n") << cme;
    QTest::newRow("frequency between bands")
        << atPath << QByteArray("FormAtcmd_Param_Atcmd=AT^DRPS=9000,3,\"20\"\r\n") << cme;
    QTest::newRow("unknown set") << atPath << QByteArray("FormAtcmd_Param_Atcmd=AT^DDTC=1\r\n")
                                 << QByteArray("\r\nERROR\r\n");
    QTest::newRow("odd key") << QByteArray("/boafrm/formDapiProcess") << QByteArray("FormDapi_Param_Key=abc")
                             << cme;
    QTest::newRow("key not hex") << QByteArray("/boafrm/formDapiProcess")
                                 << QByteArray("FormDapi_Param_Key=zz") << cme;
    QTest::newRow("key of 66") << QByteArray("/boafrm/formDapiProcess")
                               << QByteArray("FormDapi_Param_Key=" + QByteArray(66, 'A')) << cme;
    QTest::newRow("node type 3") << QByteArray("/boafrm/formDdtcProcess")
                                 << QByteArray("FormDdtc_Param_Type=3") << cme;
    QTest::newRow("ip of three") << QByteArray("/boafrm/formNetifcfgProcess")
                                 << QByteArray("FormNetifcfg_Param_Ip=10.0.0") << cme;
    QTest::newRow("ip part 256") << QByteArray("/boafrm/formNetifcfgProcess")
                                 << QByteArray("FormNetifcfg_Param_Ip=10.0.0.256") << cme;
    QTest::newRow("restart with other switch")
        << QByteArray("/boafrm/formCfunProcess") << QByteArray("FormCfun_Param_DebugSwitch=2") << cme;
}

// A refusal must leave the setting as it was.
void TestModuleSim::refusedSets()
{
    QFETCH(QByteArray, path);
    QFETCH(QByteArray, body);
    QFETCH(QByteArray, reply);
    ModuleSite site;
    const QByteArray before = at(site, "AT^DRPS?") + at(site, "AT^DAPI?") + at(site, "AT^NETIFCFG?")
        + at(site, "AT^DSSMTP?") + at(site, "AT^DDTC?");
    QCOMPARE(bodyOf(site.respond(post(path, body))), reply);
    QCOMPARE(at(site, "AT^DRPS?") + at(site, "AT^DAPI?") + at(site, "AT^NETIFCFG?") + at(site, "AT^DSSMTP?")
            + at(site, "AT^DDTC?"),
        before);
}

void TestModuleSim::temperatureShell()
{
    ModuleSite site;
    at(site, "AT+CFUN=0");
    QCOMPARE(bodyOf(site.respond(post("/boafrm/formCfunProcess", "FormCfun_Param_DebugSwitch=3"))),
        QByteArray("OK"));
    QCOMPARE(at(site, "AT+CFUN?"), QByteArray("\r\n+CFUN: 1\r\n\r\nOK\r\n"));

    const QByteArray shell = "FormShellcmd_Param_Shellcmd=dmesg | busybox grep \"temperature\"";
    for (int i = 0; i < 20; ++i) {
        const QByteArray lines = bodyOf(site.respond(post("/boafrm/formShellCmdProcess", shell)));
        QVERIFY2(
            QRegularExpression(QStringLiteral("^(\\[ *\\d+\\.\\d{6}\\] thermal: temperature is \\d+ C\\n)+$"))
                .match(QString::fromLatin1(lines))
                .hasMatch(),
            lines.constData());
        const QByteArray key = "thermal: temperature is ";
        const QByteArray last = lines.mid(lines.lastIndexOf(key) + key.size());
        const int degrees = last.left(last.indexOf(' ')).toInt();
        QVERIFY(degrees >= 40 && degrees <= 60);
    }
    QCOMPARE(bodyOf(site.respond(post("/boafrm/formShellCmdProcess", "FormShellcmd_Param_Shellcmd=ls"))),
        QByteArray());
    QVERIFY(site.respond(post("/boafrm/nothing", "x")).startsWith("HTTP/1.1 404 Not Found\r\n"));
}

void TestModuleSim::cutsRequests_data()
{
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<int>("piece");
    const QByteArray one = "POST /a HTTP/1.1\r\nContent-Length: 3\r\n\r\nabc";
    const QByteArray two = "POST /b HTTP/1.1\r\ncontent-length:0\r\nConnection: close\r\n\r\n";
    QTest::newRow("two in one read") << one + two << 1000;
    QTest::newRow("byte by byte") << one + two << 1;
    QTest::newRow("split inside the blank line") << one + two << 39;
}

void TestModuleSim::cutsRequests()
{
    QFETCH(QByteArray, stream);
    QFETCH(int, piece);
    HttpRequestCutter cutter;
    QVector<HttpRequest> out;
    for (int i = 0; i < stream.size(); i += piece)
        QVERIFY(cutter.feed(stream.mid(i, piece), &out));
    QCOMPARE(out.size(), 2);
    QCOMPARE(out.at(0).path, QByteArray("/a"));
    QCOMPARE(out.at(0).body, QByteArray("abc"));
    QVERIFY(out.at(0).keepAlive);
    QCOMPARE(out.at(1).path, QByteArray("/b"));
    QVERIFY(!out.at(1).keepAlive);
    QCOMPARE(out.at(0).raw + out.at(1).raw, stream);
    QCOMPARE(cutter.pendingSize(), 0);
}

// The link monitor's empty command: it announces 31 body bytes and sends 22.
void TestModuleSim::shortBodyIsHandedOnWhenAsked()
{
    const QByteArray head = "POST /boafrm/formAtcmdProcess HTTP/1.1\r\nContent-Length: 31\r\n\r\n";
    HttpRequestCutter cutter;
    QVector<HttpRequest> out;
    QVERIFY(cutter.feed(head + "FormAtcmd_Param_Atcmd=", &out));
    QVERIFY(out.isEmpty());
    QVERIFY(cutter.waitingForBody());
    const HttpRequest r = cutter.takeShort();
    QVERIFY(r.shortBody);
    QCOMPARE(r.body, QByteArray("FormAtcmd_Param_Atcmd="));
    QCOMPARE(r.raw, head + "FormAtcmd_Param_Atcmd=");
    QVERIFY(!cutter.waitingForBody());
    QCOMPARE(cutter.pendingSize(), 0);
}

void TestModuleSim::junkIsGivenUp_data()
{
    QTest::addColumn<QByteArray>("junk");
    QTest::newRow("megabyte without a blank line") << QByteArray(1 << 20, 'j');
    QTest::newRow("endless body") << QByteArray("POST /a HTTP/1.1\r\nContent-Length: 99999999\r\n\r\n");
    QTest::newRow("not a request line") << QByteArray("\x16\x03\x01 junk\r\n\r\n");
    QTest::newRow("negative length") << QByteArray("POST /a HTTP/1.1\r\nContent-Length: -5\r\n\r\n");
}

void TestModuleSim::junkIsGivenUp()
{
    QFETCH(QByteArray, junk);
    HttpRequestCutter cutter;
    QVector<HttpRequest> out;
    bool fine = true;
    for (int i = 0; i < junk.size() && fine; i += 4096)
        fine = cutter.feed(junk.mid(i, 4096), &out);
    QVERIFY(!fine);
    QVERIFY(cutter.pendingSize() <= HttpRequestCutter::kMaxRequest + 4096);
    QVERIFY(out.isEmpty());
}

void TestModuleSim::reports_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("marker");
    QTest::addColumn<QByteArray>("layout");
    QTest::addColumn<int>("fieldCount");
    QTest::newRow("kite centre") << int(ModuleKind::Kite) << QByteArray("AT^DAPR=2") << QByteArray("^DAPR")
                                 << QByteArray("centre kite") << 18;
    QTest::newRow("kite access") << int(ModuleKind::Kite) << QByteArray("AT^DRPR=2") << QByteArray("^DRPR")
                                 << QByteArray("access kite") << 19;
    QTest::newRow("falcon centre") << int(ModuleKind::Falcon) << QByteArray("AT^DAPR=2")
                                   << QByteArray("^DAPR") << QByteArray("centre falcon") << 19;
    QTest::newRow("falcon access") << int(ModuleKind::Falcon) << QByteArray("AT^DRPR=2")
                                   << QByteArray("^DRPR") << QByteArray("access falcon") << 21;
    QTest::newRow("kestrel mesh") << int(ModuleKind::Kestrel) << QByteArray("AT^DRPR=2")
                                  << QByteArray("^DRPR") << QByteArray("mesh") << 22;
}

// Every record must read whole with the monitor's pattern, with figures a
// link can have, and a few polls must show all four quality colours.
void TestModuleSim::reports()
{
    QFETCH(int, kind);
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, marker);
    QFETCH(QByteArray, layout);
    QFETCH(int, fieldCount);
    ModuleSite site(ModuleKind(kind), 7);
    QSet<int> bands;
    for (int poll = 0; poll < 4; ++poll) {
        // Sent as the monitor sends it: no line end after the command.
        const QByteArray response
            = site.respond(post("/boafrm/formAtcmdProcess", "FormAtcmd_Param_Atcmd=" + command));
        QCOMPARE(response.indexOf("\r\n\r\n"), 276);
        const QByteArray report = response.mid(280);
        QVERIFY(
            response.left(280).contains("\r\nContent-Length: " + QByteArray::number(report.size()) + "\r\n"));
        QVERIFY(report.endsWith("\r\n\r\n"));
        QVERIFY(report.count(marker) >= 2 && report.count(marker) <= 3);
        for (int from = report.indexOf(marker); from >= 0; from = report.indexOf(marker, from + 1)) {
            const QByteArray text = report.mid(from, report.indexOf("\r\n\r\n", from) - from);
            const Record r = scan(layout, text);
            QVERIFY2(r.fields == fieldCount, text.constData());
            QVERIFY(r.distance >= 0 && r.distance <= 20000);
            QVERIFY(r.power >= -40 && r.power <= 33);
            for (int a = 0; a < 2; ++a) {
                QVERIFY(r.rssi[a] >= -90 && r.rssi[a] <= -40);
                QVERIFY(r.rsrp[a] >= -120 && r.rsrp[a] <= -60);
                QVERIFY(r.snr[a] >= -5 && r.snr[a] <= 30);
                bands.insert(r.snr[a] >= 19 ? 0 : r.snr[a] >= 13 ? 1 : r.snr[a] >= 7 ? 2 : 3);
            }
        }
    }
    QCOMPARE(bands.size(), 4);
}

// The monitor's poll without a module kind: a head alone, which it ignores.
void TestModuleSim::emptyCommandGetsEmptyReport()
{
    ModuleSite site;
    const QByteArray response = site.respond(post("/boafrm/formAtcmdProcess", "FormAtcmd_Param_Atcmd="));
    QCOMPARE(response.size(), 280);
    QCOMPARE(response.indexOf("\r\n\r\n"), 276);
    QVERIFY(response.contains("\r\nContent-Length: 0\r\n"));
}

QTEST_GUILESS_MAIN(TestModuleSim)
#include "tst_modulesim.moc"
