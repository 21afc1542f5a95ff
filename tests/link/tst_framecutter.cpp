#include "AnswerRules.h"
#include "FrameCutter.h"
#include "ReferenceCutter.h"
#include "SerialFrame.h"

#include <QRandomGenerator>
#include <QtTest>

namespace {

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

QVector<Frame> feedAll(FrameCutter &cutter, const QList<QByteArray> &reads)
{
    QVector<Frame> out;
    for (const QByteArray &r : reads)
        cutter.feed(r, [&out](quint8 code, const QByteArray &payload) { out.append({ code, payload }); });
    return out;
}

} // namespace

Q_DECLARE_METATYPE(QVector<Frame>)

class TestFrameCutter : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cutsStreams_data();
    void cutsStreams();
    void splitFrameCompletesOnNextRead();
    void hugeLengthNeverCrashes();
    void matchesPlainRulesOnRandomStreams();
};

void TestFrameCutter::cutsStreams_data()
{
    QTest::addColumn<QList<QByteArray>>("reads");
    QTest::addColumn<QVector<Frame>>("frames");
    QTest::addColumn<QByteArray>("pending");

    QTest::newRow("two frames in one read, in order")
        << QList<QByteArray> { hex("faa30100015f fae400005f") }
        << QVector<Frame> { { 0xA3, hex("01") }, { 0xE4, QByteArray() } } << QByteArray();
    QTest::newRow("empty payload: trailer at offset 4")
        << QList<QByteArray> { hex("fae600005f") } << QVector<Frame> { { 0xE6, QByteArray() } } << QByteArray();
    QTest::newRow("payload holding header and trailer bytes needs no escaping")
        << QList<QByteArray> { hex("fab40400fa5ffa5f5f") } << QVector<Frame> { { 0xB4, hex("fa5ffa5f") } }
        << QByteArray();
    QTest::newRow("noise before, between and after frames is dropped")
        << QList<QByteArray> { hex("0011 faad0100075f 5f5f00 fae400005f 42") }
        << QVector<Frame> { { 0xAD, hex("07") }, { 0xE4, QByteArray() } } << QByteArray();
    QTest::newRow("read ending in a lone header byte keeps it pending")
        << QList<QByteArray> { hex("fae400005ffa") } << QVector<Frame> { { 0xE4, QByteArray() } } << hex("fa");
    QTest::newRow("incomplete frame keeps all its bytes pending")
        << QList<QByteArray> { hex("faa30500010203") } << QVector<Frame> {} << hex("faa30500010203");
    QTest::newRow("wrong trailer: resynchronise inside the payload")
        << QList<QByteArray> { hex("fab40700 fae400005f 000000") } << QVector<Frame> { { 0xE4, QByteArray() } }
        << QByteArray();
    QTest::newRow("module kind: its payload is searched again")
        << QList<QByteArray> { hex("fadf0600 fae400005f 01 5f") }
        << QVector<Frame> { { 0xDF, hex("fae400005f01") }, { 0xE4, QByteArray() } } << QByteArray();
    QTest::newRow("unused code: its payload is searched again")
        << QList<QByteArray> { hex("fa050500 fae400005f 5f") }
        << QVector<Frame> { { 0x05, hex("fae400005f") }, { 0xE4, QByteArray() } } << QByteArray();
    QTest::newRow("known code: its payload is not searched again")
        << QList<QByteArray> { hex("faa30500 fae400005f 5f") } << QVector<Frame> { { 0xA3, hex("fae400005f") } }
        << QByteArray();
    QTest::newRow("code out of range is skipped like a bad frame")
        << QList<QByteArray> { hex("fa500500 fae400005f 5f") } << QVector<Frame> { { 0xE4, QByteArray() } }
        << QByteArray();
    QTest::newRow("lowest and highest accepted codes")
        << QList<QByteArray> { hex("fa3900005f faa300005f fa3a00005f faa200005f") }
        << QVector<Frame> { { 0x39, QByteArray() }, { 0xA3, QByteArray() } } << QByteArray();
    // The last incomplete header decides where the pending bytes start.
    QTest::newRow("last incomplete header wins")
        << QList<QByteArray> { hex("fa00ffff 0102 fa0009") } << QVector<Frame> {} << hex("fa0009");
    QTest::newRow("a frame inside a pending tail is handed on now and again later")
        << QList<QByteArray> { hex("faa3ff00 fae400005f"), hex("00") }
        << QVector<Frame> { { 0xE4, QByteArray() }, { 0xE4, QByteArray() } } << hex("faa3ff00fae400005f00");
    QTest::newRow("frame split over three reads")
        << QList<QByteArray> { hex("fa"), hex("c0 0f00 0102"), hex("030405060708090a0b0c0d0e0f 5f") }
        << QVector<Frame> { { 0xC0, hex("0102030405060708090a0b0c0d0e0f") } } << QByteArray();
    QTest::newRow("refusal is a frame like any other")
        << QList<QByteArray> { hex("faa40100ee5f") } << QVector<Frame> { { 0xA4, hex("ee") } } << QByteArray();
}

void TestFrameCutter::cutsStreams()
{
    QFETCH(QList<QByteArray>, reads);
    QFETCH(QVector<Frame>, frames);
    QFETCH(QByteArray, pending);

    FrameCutter cutter;
    const QVector<Frame> got = feedAll(cutter, reads);
    QCOMPARE(got.size(), frames.size());
    for (int i = 0; i < frames.size(); ++i) {
        QCOMPARE(got[i].code, frames[i].code);
        QCOMPARE(got[i].payload.toHex(), frames[i].payload.toHex());
    }
    QCOMPARE(cutter.pending().toHex(), pending.toHex());
}

void TestFrameCutter::splitFrameCompletesOnNextRead()
{
    const QByteArray frame = SerialFrame::encode(0xA5, QByteArray(95, '\x22'));
    for (int split = 1; split < frame.size(); ++split) {
        FrameCutter cutter;
        const QVector<Frame> got = feedAll(cutter, { frame.left(split), frame.mid(split) });
        QCOMPARE(got.size(), 1);
        QCOMPARE(got[0].payload, QByteArray(95, '\x22'));
        QVERIFY(cutter.pending().isEmpty());
    }
}

// A header announcing 65535 bytes followed by noise stays pending until its
// trailer position has arrived; then it is dropped as noise, so the pending
// bytes never grow past one frame, and a frame after it is still found.
void TestFrameCutter::hugeLengthNeverCrashes()
{
    FrameCutter cutter;
    QVector<Frame> got = feedAll(cutter, { hex("faa3ffff") });
    for (int i = 0; i < 1000; ++i)
        got += feedAll(cutter, { QByteArray(64, '\x01') });
    QVERIFY(got.isEmpty());
    QCOMPARE(cutter.pending().size(), 4 + 1000 * 64);
    for (int i = 0; i < 30; ++i)
        got += feedAll(cutter, { QByteArray(64, '\x01') });
    QVERIFY(cutter.pending().isEmpty());
    got += feedAll(cutter, { hex("fae400005f") });
    QCOMPARE(got.size(), 1);
    QCOMPARE(got[0].code, quint8(0xE4));
    QVERIFY(cutter.pending().isEmpty());
}

void TestFrameCutter::matchesPlainRulesOnRandomStreams()
{
    QRandomGenerator rng(20261121);
    const quint8 codes[] = { 0xA3, 0xA5, 0xDF, 0xFF, 0xE7, 0x05, 0x50, 0x26, 0x11, 0xEE, 0xFA, 0x5F };
    for (int round = 0; round < 3000; ++round) {
        QByteArray stream;
        const int pieces = 1 + int(rng.bounded(12));
        for (int p = 0; p < pieces; ++p) {
            switch (rng.bounded(5)) {
            case 0: { // noise, rich in header and trailer bytes
                const int n = int(rng.bounded(8));
                for (int k = 0; k < n; ++k)
                    stream.append(char(QList<int> { 0xFA, 0x5F, 0x00, 0x01, 0xFF }[int(rng.bounded(5))]));
                break;
            }
            case 1: { // a header announcing more than will come
                stream.append(hex("fa"));
                stream.append(char(codes[rng.bounded(int(sizeof codes))]));
                stream.append(char(rng.bounded(256)));
                stream.append(char(rng.bounded(3)));
                break;
            }
            default: { // a valid frame, maybe carrying another frame
                QByteArray payload;
                const int n = int(rng.bounded(10));
                for (int k = 0; k < n; ++k)
                    payload.append(char(rng.bounded(256)));
                if (rng.bounded(3) == 0)
                    payload.insert(int(rng.bounded(payload.size() + 1)), SerialFrame::encode(0xE4));
                stream.append(SerialFrame::encode(codes[rng.bounded(int(sizeof codes))], payload));
            }
            }
        }
        QList<QByteArray> reads;
        for (int at = 0; at < stream.size();) {
            const int n = 1 + int(rng.bounded(9));
            reads.append(stream.mid(at, n));
            at += n;
        }

        ReferenceCutter reference;
        QVector<Frame> expected;
        for (const QByteArray &r : reads)
            expected += reference.feed(r);
        FrameCutter cutter;
        const QVector<Frame> got = feedAll(cutter, reads);
        if (!(got == expected) || cutter.pending() != reference.pending) {
            QString reads_;
            for (const QByteArray &r : reads)
                reads_ += QString::fromLatin1(r.toHex()) + QLatin1Char('|');
            QFAIL(qPrintable(QStringLiteral("round %1 differs for reads %2").arg(round).arg(reads_)));
        }
    }
}

QTEST_APPLESS_MAIN(TestFrameCutter)
#include "tst_framecutter.moc"
