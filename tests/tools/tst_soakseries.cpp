// What the soak concludes from its samples: the growth fitted after the
// warm-up, and the verdict's limits.
#include "SoakSeries.h"

#include <QtTest>

class TestSoakSeries : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void growthAndVerdict_data();
    void growthAndVerdict();
    void csvLineHoldsEveryColumn();
};

Q_DECLARE_METATYPE(SoakSample)

using Points = QVector<QPair<double, double>>; // elapsed s, RSS MB

static QVector<SoakSample> samples(const Points &points, int reconnectsFailed = 0)
{
    QVector<SoakSample> out;
    for (const auto &p : points) {
        SoakSample s;
        s.elapsedS = p.first;
        s.rssMb = p.second;
        s.reconnectsFailed = reconnectsFailed;
        out.append(s);
    }
    return out;
}

void TestSoakSeries::growthAndVerdict_data()
{
    QTest::addColumn<QVector<SoakSample>>("series");
    QTest::addColumn<double>("warmup");
    QTest::addColumn<int>("crashes");
    QTest::addColumn<bool>("fitted");
    QTest::addColumn<double>("slope");
    QTest::addColumn<bool>("pass");

    // The start-up's 100 MB in the first minute is left out: 0.5 MB a minute after it.
    QTest::newRow("warm-up left out") << samples({ { 60, 100 }, { 120, 50 }, { 180, 50.5 }, { 240, 51 } })
                                      << 60.0 << 0 << true << 30.0 << false;
    QTest::newRow("flat after a noisy middle")
        << samples({ { 60, 40 }, { 120, 52 }, { 180, 51 }, { 240, 51 }, { 300, 52 } }) << 60.0 << 0 << true
        << 0.0 << true;
    QTest::newRow("falling") << samples({ { 3600, 52 }, { 7200, 51.5 } }) << 0.0 << 0 << true << -0.5 << true;
    QTest::newRow("exactly the limit fails") << samples({ { 3600, 50 }, { 7200, 51 } }) << 0.0 << 0 << true
                                             << 1.0 << false;
    QTest::newRow("just under the limit") << samples({ { 3600, 50 }, { 7200, 50.9 } }) << 0.0 << 0 << true
                                          << 0.9 << true;
    QTest::newRow("a crash fails") << samples({ { 120, 50 }, { 180, 50 } }) << 60.0 << 1 << true << 0.0 << false;
    QTest::newRow("a failed reconnect fails") << samples({ { 120, 50 }, { 180, 50 } }, 1) << 60.0 << 0 << true
                                              << 0.0 << false;
    QTest::newRow("one sample after the warm-up") << samples({ { 60, 50 }, { 120, 50 } }) << 60.0 << 0 << false
                                                  << 0.0 << false;
}

void TestSoakSeries::growthAndVerdict()
{
    QFETCH(QVector<SoakSample>, series);
    QFETCH(double, warmup);
    QFETCH(int, crashes);
    QFETCH(bool, fitted);
    QFETCH(double, slope);
    QFETCH(bool, pass);
    double got = -99;
    QCOMPARE(SoakSeries::growthMbPerHour(series, warmup, &got), fitted);
    if (fitted)
        QVERIFY2(qAbs(got - slope) < 1e-9, qPrintable(QString::number(got, 'g', 12)));
    const SoakSeries::Verdict v = SoakSeries::verdict(series, warmup, crashes, 1.0);
    QCOMPARE(v.pass, pass);
    QVERIFY(v.line.startsWith(pass ? QStringLiteral("soak verdict: PASS") : QStringLiteral("soak verdict: FAIL")));
    QVERIFY(v.line.contains(QStringLiteral("crashes %1;").arg(crashes)));
}

void TestSoakSeries::csvLineHoldsEveryColumn()
{
    SoakSample s;
    s.elapsedS = 125.04;
    s.rssMb = 51.456;
    s.heapMb = 20.004;
    s.cpuPercent = 4.2;
    s.framesCut = 170321;
    s.framesRefused = 3;
    s.reconnects = 6;
    s.reconnectsFailed = 1;
    s.opsDone = 241;
    s.opsFailed = 2;
    QCOMPARE(SoakSeries::csvHeader().count(QLatin1Char(',')), 10);
    QCOMPARE(SoakSeries::csvLine(s), QStringLiteral("2.08,125.0,51.46,20.00,4.20,170321,3,6,1,241,2"));
}

QTEST_MAIN(TestSoakSeries)
#include "tst_soakseries.moc"
