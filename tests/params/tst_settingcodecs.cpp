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
    void sbusPayloadsCarryTheRecord_data();
    void sbusPayloadsCarryTheRecord();
    void holdRoundTrip();
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

void TestSettingCodecs::sbusPayloadsCarryTheRecord_data()
{
    QTest::addColumn<int>("channel");
    QTest::addColumn<int>("failsafe");
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("fixed");
    QTest::addColumn<int>("failsafeByte");
    QTest::addColumn<int>("signMask"); // bytes 65, 66 as one little-endian word
    QTest::addColumn<int>("pageFixedByte");
    QTest::addColumn<int>("recordFixedByte");

    // A failsafe of -40 set in the page: the record holds it signed.
    QTest::newRow("failsafe -40 from the page") << 3 << -40 << 1 << 0 << 40 << 0x0004 << 0x00 << 0x00;
    // The same failsafe from an answer: the record holds the magnitude.
    QTest::newRow("failsafe 40 from an answer") << 3 << 40 << 1 << 0 << 40 << 0x0004 << 0x00 << 0x00;
    QTest::newRow("failsafe off") << 9 << 255 << 0 << 0 << 255 << 0x0000 << 0x00 << 0x00;
    QTest::newRow("failsafe of channel 16 negative") << 16 << -150 << 1 << 0 << 150 << 0x8000 << 0x00 << 0x00;
    // The page sends fixed values in sign and magnitude, the write-all the
    // low byte of what the record holds.
    QTest::newRow("fixed -5") << 1 << 255 << 0 << -5 << 255 << 0 << 0x85 << 0xFB;
    QTest::newRow("fixed 100") << 1 << 255 << 0 << 100 << 255 << 0 << 0x64 << 0x64;
    QTest::newRow("fixed -235 loaded from a file") << 1 << 255 << 0 << -235 << 255 << 0 << 0xFF << 0x15;
    QTest::newRow("fixed 133 loaded from a file") << 1 << 255 << 0 << 133 << 255 << 0 << 0x7F << 0x85;
}

void TestSettingCodecs::sbusPayloadsCarryTheRecord()
{
    QFETCH(int, channel);
    QFETCH(int, failsafe);
    QFETCH(int, state);
    QFETCH(int, fixed);
    QFETCH(int, failsafeByte);
    QFETCH(int, signMask);
    QFETCH(int, pageFixedByte);
    QFETCH(int, recordFixedByte);

    DeviceData d;
    for (int c = 0; c < 16; ++c)
        d.safeProtectionValue[1][c] = 255;
    const int c = channel - 1;
    d.safeProtectionValue[1][c] = failsafe;
    d.safeProtectionState[1][c] = state;
    d.noneValue[1][c] = fixed;
    d.fineTuning[1][0] = -5;
    d.phase[1][15] = 3; // any non-zero phase is reversed
    d.channelMap[1][1] = 254;

    const QByteArray t = SbusCodec::tuningPayload(d, 1);
    QCOMPARE(t.size(), 85);
    QCOMPARE(quint8(t.at(0)), quint8(1));
    QCOMPARE(quint8(t.at(1)), quint8(0x85));
    QCOMPARE(quint8(t.at(49 + c)), quint8(failsafeByte));
    QCOMPARE(quint8(t.at(65)) | (quint8(t.at(66)) << 8), signMask);
    QCOMPARE(quint8(t.at(67)), quint8(0x00));
    QCOMPARE(quint8(t.at(68)), quint8(0x80));
    QCOMPARE(quint8(t.at(70)), quint8(254));

    const QByteArray page = SbusCodec::nonePayload(d, 1);
    const QByteArray all = SbusCodec::nonePayloadFromRecord(d, 1);
    QCOMPARE(page.size(), 17);
    QCOMPARE(all.size(), 17);
    QCOMPARE(quint8(page.at(1 + c)), quint8(pageFixedByte));
    QCOMPARE(quint8(all.at(1 + c)), quint8(recordFixedByte));
    QCOMPARE(SbusCodec::payloadsFromRecord(d).at(3), all);
}

void TestSettingCodecs::holdRoundTrip()
{
    DeviceData d;
    d.sbusHoldSwitch[0] = 1;
    d.sbusHoldSwitch[1] = 255;
    d.sbusHold[0][0][2] = 1;
    d.sbusHold[0][2][0] = 1;
    d.sbusHold[0][2][15] = 1;
    d.sbusHold[1][1][8] = 5; // any non-zero entry is held
    const QByteArray expected = QByteArray::fromHex("00 01 0400 0000 0180"
                                                    "01 ff 0000 0001 0000");
    QCOMPARE(HoldCodec::payload(d), expected);

    DeviceData back;
    QVERIFY(HoldCodec::decode(expected, back));
    QCOMPARE(back.sbusHoldSwitch[0], 1);
    QCOMPARE(back.sbusHoldSwitch[1], 255);
    QCOMPARE(back.sbusHold[0][2][15], 1);
    QCOMPARE(back.sbusHold[1][1][8], 1);
    QCOMPARE(HoldCodec::payload(back), expected);

    // No switch stored as -1 (the first selector entry) still goes out as 255.
    d.sbusHoldSwitch[0] = -1;
    QCOMPARE(quint8(HoldCodec::payload(d).at(1)), quint8(0xFF));
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
