#include "LinkHistory.h"

#include <QtTest>

using LinkReport::LinkRecord;

namespace
{

// "node rssiM rsrpM snrM rssiS rsrpS snrS power distance"
LinkRecord record(const QString &text)
{
    const QStringList f = text.split(QLatin1Char(' '));
    LinkRecord r;
    r.node = f.at(0);
    r.main = { f.at(1).toInt(), f.at(2).toInt(), f.at(3).toInt() };
    r.second = { f.at(4).toInt(), f.at(5).toInt(), f.at(6).toInt() };
    r.power = f.at(7).toInt();
    r.distance = f.at(8).toInt();
    return r;
}

// Each step "time|record|record..." is a report, "time|gap" a poll without one.
void feed(LinkHistory &history, const QStringList &steps)
{
    for (const QString &step : steps) {
        QStringList parts = step.split(QLatin1Char('|'));
        const qint64 time = parts.takeFirst().toLongLong();
        if (parts == QStringList(QStringLiteral("gap"))) {
            history.addGap(time);
            continue;
        }
        QVector<LinkRecord> records;
        for (const QString &r : parts)
            records.append(record(r));
        history.addReport(time, records);
    }
}

// "node antenna: time rssi/rsrp/snr/power/distance, time gap, ..." per series.
QStringList dump(const LinkHistory &history)
{
    QStringList out;
    for (int s = 0; s < history.seriesCount(); ++s) {
        QStringList samples;
        for (int i = 0; i < history.sampleCount(s); ++i) {
            const LinkHistory::Sample &x = history.sample(s, i);
            samples.append(x.gap ? QStringLiteral("%1 gap").arg(x.msecs)
                                 : QStringLiteral("%1 %2/%3/%4/%5/%6")
                                       .arg(x.msecs)
                                       .arg(x.rssi)
                                       .arg(x.rsrp)
                                       .arg(x.snr)
                                       .arg(x.power)
                                       .arg(x.distance));
        }
        out.append(QStringLiteral("%1 %2: %3")
                       .arg(history.node(s),
                           history.antenna(s) == 0 ? QStringLiteral("Main") : QStringLiteral("Second"),
                           samples.join(QStringLiteral(", "))));
    }
    return out;
}

} // namespace

class TestLinkHistory : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void samplesInSeriesOut_data();
    void samplesInSeriesOut();
    void ringKeepsNewest_data();
    void ringKeepsNewest();
    void nodesAreBounded();
    void csvText();
};

void TestLinkHistory::samplesInSeriesOut_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("series");

    QTest::newRow("two nodes, two reports")
        << QStringList { "1000|5 -61 -88 18 -64 -91 12 23 1520|9 -70 -95 6 -72 -97 19 17 830",
               "2500|5 -60 -87 17 -63 -90 11 22 1510|9 -71 -96 5 -73 -98 20 16 840" }
        << QStringList { "5 Main: 1000 -61/-88/18/23/1520, 2500 -60/-87/17/22/1510",
               "5 Second: 1000 -64/-91/12/23/1520, 2500 -63/-90/11/22/1510",
               "9 Main: 1000 -70/-95/6/17/830, 2500 -71/-96/5/16/840",
               "9 Second: 1000 -72/-97/19/17/830, 2500 -73/-98/20/16/840" };
    // A node out of reach is missing from the report: its lines break there.
    QTest::newRow("node left out, then back")
        << QStringList { "1000|5 -61 -88 18 -64 -91 12 23 1520|9 -70 -95 6 -72 -97 19 17 830",
               "2500|5 -60 -87 17 -63 -90 11 22 1510", "4000|5 -59 -86 16 -62 -89 10 21 1500",
               "5500|5 -58 -85 15 -61 -88 9 20 1490|9 -69 -94 7 -71 -96 21 18 820" }
        << QStringList { "5 Main: 1000 -61/-88/18/23/1520, 2500 -60/-87/17/22/1510, 4000 -59/-86/16/21/1500, "
                         "5500 -58/-85/15/20/1490",
               "5 Second: 1000 -64/-91/12/23/1520, 2500 -63/-90/11/22/1510, 4000 -62/-89/10/21/1500, "
               "5500 -61/-88/9/20/1490",
               "9 Main: 1000 -70/-95/6/17/830, 2500 gap, 5500 -69/-94/7/18/820",
               "9 Second: 1000 -72/-97/19/17/830, 2500 gap, 5500 -71/-96/21/18/820" };
    // Polls without an answer: one gap however long the outage; none before
    // the first report.
    QTest::newRow("dropped polls")
        << QStringList { "500|gap", "1000|5 -61 -88 18 -64 -91 12 23 1520", "2500|gap", "4000|gap",
               "5500|gap", "7000|5 -60 -87 -3 -63 -90 30 22 1510" }
        << QStringList { "5 Main: 1000 -61/-88/18/23/1520, 2500 gap, 7000 -60/-87/-3/22/1510",
               "5 Second: 1000 -64/-91/12/23/1520, 2500 gap, 7000 -63/-90/30/22/1510" };
    QTest::newRow("a node twice in one report counts once")
        << QStringList { "1000|5 -61 -88 18 -64 -91 12 23 1520|5 -1 -2 3 -4 -5 6 7 8" }
        << QStringList { "5 Main: 1000 -61/-88/18/23/1520", "5 Second: 1000 -64/-91/12/23/1520" };
    QTest::newRow("a report without records is an outage")
        << QStringList { "1000|5 -61 -88 18 -64 -91 12 23 1520", "2500" }
        << QStringList { "5 Main: 1000 -61/-88/18/23/1520, 2500 gap",
               "5 Second: 1000 -64/-91/12/23/1520, 2500 gap" };
}

void TestLinkHistory::samplesInSeriesOut()
{
    QFETCH(QStringList, steps);
    QFETCH(QStringList, series);
    LinkHistory history;
    feed(history, steps);
    QCOMPARE(dump(history), series);
}

void TestLinkHistory::ringKeepsNewest_data()
{
    QTest::addColumn<int>("capacity");
    QTest::addColumn<int>("reports");
    QTest::addColumn<qint64>("oldest");
    QTest::addColumn<qint64>("newest");

    // Reports every 1500 ms from t = 0.
    QTest::newRow("under capacity") << 4 << 3 << qint64(0) << qint64(3000);
    QTest::newRow("exactly full") << 4 << 4 << qint64(0) << qint64(4500);
    QTest::newRow("two past capacity") << 4 << 6 << qint64(3000) << qint64(7500);
    QTest::newRow("many turns") << 3 << 100 << qint64(97 * 1500) << qint64(99 * 1500);
    QTest::newRow("a day at the poll rate, and one more")
        << LinkHistory::kCapacity << LinkHistory::kCapacity + 1 << qint64(1500)
        << qint64(LinkHistory::kCapacity) * 1500;
}

void TestLinkHistory::ringKeepsNewest()
{
    QFETCH(int, capacity);
    QFETCH(int, reports);
    QFETCH(qint64, oldest);
    QFETCH(qint64, newest);

    LinkHistory history(capacity);
    LinkRecord r = record(QStringLiteral("7 -61 -88 18 -64 -91 12 23 1520"));
    qint64 heldWhenFull = -1;
    for (int i = 0; i < reports; ++i) {
        r.main.snr = i % 1000; // tells the samples apart
        history.addReport(qint64(i) * 1500, { r });
        if (i + 1 == capacity)
            heldWhenFull = history.bytesHeld();
    }
    const int expected = qMin(capacity, reports);
    QCOMPARE(history.seriesCount(), 2);
    QCOMPARE(history.sampleCount(0), expected);
    QCOMPARE(history.sampleCount(1), expected);
    QCOMPARE(history.sample(0, 0).msecs, oldest);
    QCOMPARE(history.sample(0, expected - 1).msecs, newest);
    QCOMPARE(int(history.sample(0, 0).snr), int((oldest / 1500) % 1000));
    // Oldest first all the way round the ring.
    for (int i = 1; i < expected; ++i)
        QCOMPARE(history.sample(1, i).msecs - history.sample(1, i - 1).msecs, qint64(1500));
    QCOMPARE(history.firstAtOrAfter(0, newest), expected - 1);
    QCOMPARE(history.firstAtOrAfter(0, newest + 1), expected);
    QCOMPARE(history.firstAtOrAfter(0, oldest - 1), 0);
    if (heldWhenFull >= 0)
        QCOMPARE(history.bytesHeld(), heldWhenFull); // a full ring grows no more
}

// Reports naming ever new nodes keep only the first kMaxNodes.
void TestLinkHistory::nodesAreBounded()
{
    LinkHistory history;
    for (int i = 0; i < LinkHistory::kMaxNodes + 5; ++i)
        history.addReport(1000 + i, { record(QStringLiteral("N%1 -61 -88 18 -64 -91 12 23 1520").arg(i)) });
    QCOMPARE(history.seriesCount(), 2 * LinkHistory::kMaxNodes);
    QCOMPARE(
        history.node(2 * LinkHistory::kMaxNodes - 1), QStringLiteral("N%1").arg(LinkHistory::kMaxNodes - 1));
}

void TestLinkHistory::csvText()
{
    LinkHistory history;
    // 2026-11-24 00:31:59.007 UTC
    const qint64 t0 = Q_INT64_C(1795480319007);
    feed(history,
        { QStringLiteral("%1|12 -61 -88 18 -64 -91 12 23 1520|N\"3,b -70 -95 6 -72 -97 19 17 830").arg(t0),
            QStringLiteral("%1|12 -60 -87 -2 -63 -90 11 -5 1510").arg(t0 + 1500),
            QStringLiteral("%1|gap").arg(t0 + 3000) });
    QCOMPARE(history.csv(),
        QStringLiteral("time,node,antenna,rssi,rsrp,snr,power,distance\r\n"
                       "2026-11-24T00:31:59.007Z,12,Main,-61,-88,18,23,1520\r\n"
                       "2026-11-24T00:31:59.007Z,12,Second,-64,-91,12,23,1520\r\n"
                       "2026-11-24T00:31:59.007Z,\"N\"\"3,b\",Main,-70,-95,6,17,830\r\n"
                       "2026-11-24T00:31:59.007Z,\"N\"\"3,b\",Second,-72,-97,19,17,830\r\n"
                       "2026-11-24T00:32:00.507Z,12,Main,-60,-87,-2,-5,1510\r\n"
                       "2026-11-24T00:32:00.507Z,12,Second,-63,-90,11,-5,1510\r\n"
                       "2026-11-24T00:32:00.507Z,\"N\"\"3,b\",Main,,,,,\r\n"
                       "2026-11-24T00:32:00.507Z,\"N\"\"3,b\",Second,,,,,\r\n"
                       "2026-11-24T00:32:02.007Z,12,Main,,,,,\r\n"
                       "2026-11-24T00:32:02.007Z,12,Second,,,,,\r\n"));
    QCOMPARE(LinkHistory().csv(), QStringLiteral("time,node,antenna,rssi,rsrp,snr,power,distance\r\n"));
}

QTEST_GUILESS_MAIN(TestLinkHistory)
#include "tst_linkhistory.moc"
