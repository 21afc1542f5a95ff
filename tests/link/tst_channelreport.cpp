#include "ChannelReport.h"

#include <QtTest>

// Builds a report of K + 64 bytes from words: control block, key word(s), SBUS 1, SBUS 2.
static QByteArray report(int k, const QVector<quint16> &control, quint16 key0, quint16 key1, quint16 sbus)
{
    QByteArray r(k + 64, '\0');
    auto put = [&r](int at, quint16 v) {
        r[at] = char(v & 0xFF);
        r[at + 1] = char(v >> 8);
    };
    for (int i = 0; i < control.size(); ++i)
        put(2 * i, control[i]);
    put(k - 2, key0);
    if (key1 != 0xFFFF)
        put(k - 4, key1);
    for (int ch = 0; ch < 32; ++ch)
        put(k + 2 * ch, quint16(sbus + ch));
    return r;
}

class TestChannelReport : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void scaling_data();
    void scaling();
    void decodeNeedsExactLength_data();
    void decodeNeedsExactLength();
    void larchHasTwoKeyWords();
};

void TestChannelReport::scaling_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<int>("bar");
    QTest::addColumn<int>("knob");
    QTest::addColumn<int>("leftDial");
    QTest::addColumn<int>("rightDial");
    QTest::addColumn<int>("switchIndex");
    QTest::addColumn<int>("stickAxis");

    QTest::newRow("0") << 0 << -150 << 0 << 0 << 0 << 0 << -30;
    QTest::newRow("599") << 599 << 0 << 49 << -44 << 44 << 0 << 0;
    QTest::newRow("600") << 600 << 0 << 50 << -45 << 45 << 1 << 0;
    QTest::newRow("601 truncates to 0") << 601 << 0 << 50 << -45 << 45 << 2 << 0;
    QTest::newRow("604") << 604 << 1 << 50 << -45 << 45 << 2 << 0;
    QTest::newRow("1200") << 1200 << 150 << 100 << -90 << 90 << 2 << 30;
    QTest::newRow("65535 out of range") << 65535 << 16233 << 5461 << -4915 << 4915 << 2 << 3246;
}

void TestChannelReport::scaling()
{
    QFETCH(int, raw);
    QFETCH(int, bar);
    QFETCH(int, knob);
    QFETCH(int, leftDial);
    QFETCH(int, rightDial);
    QFETCH(int, switchIndex);
    QFETCH(int, stickAxis);
    QCOMPARE(ReportScale::bar(raw), bar);
    QCOMPARE(ReportScale::knob(raw), knob);
    QCOMPARE(ReportScale::leftDial(raw), leftDial);
    QCOMPARE(ReportScale::rightDial(raw), rightDial);
    QCOMPARE(ReportScale::switchIndex(raw), switchIndex);
    // The first word of a pair moves the stick up and down, the second sideways.
    QCOMPARE(ReportScale::stick(raw, 600), QPoint(0, stickAxis));
    QCOMPARE(ReportScale::stick(600, raw), QPoint(stickAxis, 0));
}

void TestChannelReport::decodeNeedsExactLength_data()
{
    QTest::addColumn<int>("k");
    QTest::addColumn<int>("extra");
    QTest::addColumn<bool>("accepted");
    for (int k : { 14, 18, 24, 30 }) {
        QTest::addRow("K=%d exact", k) << k << 0 << true;
        QTest::addRow("K=%d one short", k) << k << -1 << false;
        QTest::addRow("K=%d one long", k) << k << 1 << false;
    }
}

void TestChannelReport::decodeNeedsExactLength()
{
    QFETCH(int, k);
    QFETCH(int, extra);
    QFETCH(bool, accepted);
    QByteArray r = report(k, { 0, 600, 1200 }, 0xFFFE, 0xFFFF, 100);
    r.resize(r.size() + extra);
    ChannelReport out;
    QCOMPARE(ChannelReport::decode(r, k, 1, out), accepted);
    if (!accepted)
        return;
    QCOMPARE(out.controlWords.size(), (k - 2) / 2);
    QCOMPARE(int(out.controlWords[1]), 600);
    QCOMPARE(int(out.controlWords[2]), 1200);
    QCOMPARE(int(out.keyWords[0]), 0xFFFE);
    QCOMPARE(ReportScale::lamp(out.keyWords[0], 0), 1); // clear bit: pressed, lit
    QCOMPARE(ReportScale::lamp(out.keyWords[0], 1), 0);
    QCOMPARE(int(out.sbus[0][0]), 100);
    QCOMPARE(int(out.sbus[0][15]), 115);
    QCOMPARE(int(out.sbus[1][0]), 116);
    QCOMPARE(int(out.sbus[1][15]), 131);
}

void TestChannelReport::larchHasTwoKeyWords()
{
    const QByteArray r = report(24, { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10 }, 0x0000, 0xFFF0, 600);
    ChannelReport out;
    QVERIFY(ChannelReport::decode(r, 24, 2, out));
    QCOMPARE(out.controlWords.size(), 10);
    QCOMPARE(int(out.controlWords[9]), 10);
    QCOMPARE(int(out.keyWords[0]), 0x0000);
    QCOMPARE(int(out.keyWords[1]), 0xFFF0);
}

QTEST_APPLESS_MAIN(TestChannelReport)
#include "tst_channelreport.moc"
