// The SBUS channel settings and channel hold payloads, byte for byte, in both
// directions. Offsets are those of the unit's payloads: tuning 85 bytes
// (port, trims 1..16, left 17..32, right 33..48, failsafe 49..64, failsafe
// sign mask 65/66, phase mask 67/68, map 69..84), fixed values 17 bytes,
// channel hold 2 x 8 bytes (port, switch, three 16-bit masks).
#include "DeviceData.h"
#include "HoldCodec.h"
#include "SbusCodec.h"

#include <QtTest>

namespace
{

QByteArray tuning(int port)
{
    QByteArray t(85, '\0');
    t[0] = char(port);
    return t;
}

} // namespace

class TestSettingCodecs : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void sbusAnswersFillTheNamedPort_data();
    void sbusAnswersFillTheNamedPort();
    void sbusAnswersOfAnotherShapeAreIgnored_data();
    void sbusAnswersOfAnotherShapeAreIgnored();
    void holdAnswersOfAnotherShapeAreIgnored_data();
    void holdAnswersOfAnotherShapeAreIgnored();
};

void TestSettingCodecs::sbusAnswersFillTheNamedPort_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("what");
    QTest::addColumn<int>("expected");

    QByteArray t = tuning(1);
    t[1] = char(0x85);
    QTest::newRow("trim 0x85 is -5") << t << "trim1" << -5;
    t = tuning(1);
    t[16] = char(0x7D);
    QTest::newRow("trim 0x7D is 125") << t << "trim16" << 125;
    t = tuning(1);
    t[49 + 2] = char(40);
    t[65] = char(0x04);
    QTest::newRow("failsafe kept as its magnitude") << t << "failsafe3" << 40;
    QTest::newRow("failsafe sign from bit 2 of byte 65") << t << "state3" << 1;
    t = tuning(1);
    t[49 + 15] = char(255);
    QTest::newRow("failsafe off") << t << "failsafe16" << 255;
    t = tuning(1);
    t[68] = char(0x80);
    QTest::newRow("phase of channel 16 from bit 7 of byte 68") << t << "phase16" << 1;
    QTest::newRow("phase of channel 1 unset") << t << "phase1" << 0;
    t = tuning(1);
    t[66] = char(0x01);
    QTest::newRow("failsafe sign of channel 9 from byte 66") << t << "state9" << 1;
    t = tuning(1);
    t[69 + 15] = char(254);
    QTest::newRow("map NONE") << t << "map16" << 254;
    t = tuning(1);
    t[17] = char(150);
    t[33 + 15] = char(200);
    QTest::newRow("left travel") << t << "left1" << 150;
    QTest::newRow("right travel as the unit sent it") << t << "right16" << 200;
    QByteArray n(17, '\0');
    n[0] = 1;
    n[15] = char(0x94);
    QTest::newRow("fixed value 0x94 is -20") << n << "none15" << -20;
}

void TestSettingCodecs::sbusAnswersFillTheNamedPort()
{
    QFETCH(QByteArray, payload);
    QFETCH(QString, what);
    QFETCH(int, expected);
    DeviceData d;
    const int port
        = payload.size() == 85 ? SbusCodec::decodeTuning(payload, d) : SbusCodec::decodeNone(payload, d);
    QCOMPARE(port, 1);
    const int channel = what.mid(what.indexOf(QRegularExpression("\\d"))).toInt() - 1;
    const QString name = what.left(what.indexOf(QRegularExpression("\\d")));
    const QHash<QString, int(*)[16]> fields { { "trim", d.fineTuning }, { "failsafe", d.safeProtectionValue },
        { "state", d.safeProtectionState }, { "phase", d.phase }, { "map", d.channelMap },
        { "left", d.leftTrip }, { "right", d.rightTrip }, { "none", d.noneValue } };
    QCOMPARE(fields.value(name)[1][channel], expected);
    QCOMPARE(fields.value(name)[0][channel], 0); // port 1 untouched
}

void TestSettingCodecs::sbusAnswersOfAnotherShapeAreIgnored_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("84 bytes") << tuning(0).left(84);
    QTest::newRow("86 bytes") << tuning(0) + '\x05';
    QTest::newRow("port 2") << tuning(2);
    QTest::newRow("port 0xEE") << tuning(0xEE);
    QTest::newRow("fixed values of 16 bytes") << QByteArray(16, '\x05');
    QTest::newRow("fixed values of 18 bytes") << QByteArray(18, '\0');
    QTest::newRow("empty") << QByteArray();
}

void TestSettingCodecs::sbusAnswersOfAnotherShapeAreIgnored()
{
    QFETCH(QByteArray, payload);
    DeviceData d;
    d.fineTuning[0][0] = 9;
    d.noneValue[0][0] = 9;
    QByteArray filled = payload;
    for (int i = 1; i < filled.size(); ++i)
        filled[i] = char(0x05);
    QCOMPARE(SbusCodec::decodeTuning(filled, d), -1);
    QCOMPARE(SbusCodec::decodeNone(filled, d), -1);
    QCOMPARE(d.fineTuning[0][0], 9);
    QCOMPARE(d.noneValue[0][0], 9);
}




void TestSettingCodecs::holdAnswersOfAnotherShapeAreIgnored_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("one port") << QByteArray::fromHex("0001ffffffffffff");
    QTest::newRow("15 bytes") << QByteArray::fromHex("0001ffffffffffff01ffffffffffff");
    QTest::newRow("17 bytes") << QByteArray::fromHex("0001ffffffffffff01ffffffffffffff00");
    QTest::newRow("ports swapped") << QByteArray::fromHex("0101ffffffffffff0001ffffffffffff");
    QTest::newRow("port 2") << QByteArray::fromHex("0001ffffffffffff0201ffffffffffff");
}

void TestSettingCodecs::holdAnswersOfAnotherShapeAreIgnored()
{
    QFETCH(QByteArray, payload);
    DeviceData d;
    d.sbusHoldSwitch[0] = 3;
    QVERIFY(!HoldCodec::decode(payload, d));
    QCOMPARE(d.sbusHoldSwitch[0], 3);
    QCOMPARE(d.sbusHold[0][0][0], 0);
}

QTEST_GUILESS_MAIN(TestSettingCodecs)
#include "tst_settingcodecs.moc"
