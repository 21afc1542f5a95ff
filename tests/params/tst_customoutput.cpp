// The output module's group on the wire and in the parameter file: payloads
// byte for byte, answers of every shape the unit (or a broken line) can send,
// and the file reader's rules for the frame list and the serial stream.
#include "CustomOutputCodec.h"
#include "DeviceData.h"
#include "ParameterFile.h"
#include "PyxModuleFile.h"

#include <QtTest>

using namespace CustomOutputCodec;

namespace
{

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(QByteArray(text).replace(' ', ""));
}

QByteArray zeros(int n)
{
    return QByteArray(n, '\0');
}

QByteArray counting(int n)
{
    QByteArray out;
    for (int i = 0; i < n; ++i)
        out.append(char(i));
    return out;
}

// Two frames: a standard data frame with byte 1 linear (channel 5, third
// value 7), byte 8 bit by bit, and an extended remote frame.
DeviceData twoFrames()
{
    DeviceData d;
    d.PyxGOutputMode = 2;
    d.TTLEnable = true;
    d.CANEnable = true;
    d.CANFrequency = 20;
    d.CANBaud = QStringLiteral("250K");
    CanFrameList::resize(d, 2);
    CanFrameRecord &a = d.canFrames[0];
    a.standardId = 0x123;
    a.dlc = 2;
    a.dataMask = 0x81;
    a.nonlinearMask = 0x80;
    a.byteMap[0][1] = 5;
    a.byteMap[0][2] = 7;
    a.byteMap[7][1] = 254;
    for (int b = 0; b < 8; ++b) {
        a.bitMap[7][b][0] = quint8(b + 1);
        a.bitMap[7][b][1] = quint8(0x10 + b);
    }
    CanFrameRecord &r = d.canFrames[1];
    r.standardId = 0x7FF;
    r.extendedId = 0x18FF50E5;
    r.ide = 1;
    r.rtr = 1;
    TtlStream &s = d.TTLStream;
    s.header[0] = 50;
    s.header[1] = 0x0F;
    s.header[2] = 0xF0;
    s.header[3] = 0x94; // 115200, XOR check, big-endian
    s.range[0] = 0xFC18; // -1000
    s.range[1] = 1000;
    s.table1[0] = s.table1[9] = s.table1[39] = 1;
    for (int i = 0; i < kTtlTableSize; ++i)
        s.table2[i] = quint8(i);
    return d;
}

QList<QByteArray> twoFramePayloads()
{
    return {
        hex("02"), hex("11"), hex("14"), // mode, TTL + CAN, 20 Hz
        hex("02 00 2301 00000000 00 00 02"), hex("02 01 ff07 e550ff18 04 02 00"), // 0xD6
        hex("32 0f f0 94 18fc e803"), // 0xD8
        hex("28 01 02 00 00 80") + counting(40), // 0xDA
        hex("00 81 80") + zeros(8) + hex("07") + zeros(7), hex("01 00 00") + zeros(16), // 0xDC
        hex("00") + zeros(56) + hex("0102030405060708"), hex("01") + zeros(64), // 0xDE
        hex("00") + zeros(56) + hex("1011121314151617"), hex("01") + zeros(64), // 0x21
        hex("00 05 00 00 00 00 00 00 fe"), hex("01") + zeros(8), // 0x23
        hex("04"), // 250K
    };
}

using Decoder = bool (*)(const QByteArray &, DeviceData &);

} // namespace

Q_DECLARE_METATYPE(Decoder)

class TestCustomOutput : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void payloadsOfTheRecord_data();
    void payloadsOfTheRecord();
    void answersReadBackWhatWasWritten();
    void frameCountNeverGrowsThePagesList_data();
    void frameCountNeverGrowsThePagesList();
    void unfitAnswersLeaveTheRecord_data();
    void unfitAnswersLeaveTheRecord();
    void fileFragmentByteForByte();
    void fileReaderFrameRules_data();
    void fileReaderFrameRules();
    void pyxModuleLists();
};

void TestCustomOutput::payloadsOfTheRecord_data()
{
    QTest::addColumn<int>("frames");
    QTest::addColumn<QList<QByteArray>>("expected");
    QTest::newRow("two frames: 5 x 2 + 6") << 2 << twoFramePayloads();
    // Without frames the list is the plain 7: "no frames" is the single byte 0.
    QList<QByteArray> plain = twoFramePayloads();
    plain = { plain.at(0), plain.at(1), plain.at(2), hex("00"), plain.at(5), plain.at(6), plain.at(15) };
    QTest::newRow("no frames: 7") << 0 << plain;
}

void TestCustomOutput::payloadsOfTheRecord()
{
    QFETCH(int, frames);
    QFETCH(QList<QByteArray>, expected);
    DeviceData d = twoFrames();
    CanFrameList::resize(d, frames);
    const QList<QByteArray> payloads = payloadsFromRecord(d);
    QCOMPARE(payloads.size(), expected.size());
    for (int i = 0; i < payloads.size(); ++i)
        QCOMPARE(payloads.at(i).toHex(' '), expected.at(i).toHex(' '));
}

// Every write, answered back by a unit that stored it, rebuilds the same
// write: each layout is decoded where it was encoded.
void TestCustomOutput::answersReadBackWhatWasWritten()
{
    const QList<QByteArray> w = twoFramePayloads();
    DeviceData d;
    // The page's list already holds the two frames; the answers fill them.
    CanFrameList::resize(d, 2);
    QVERIFY(decodeOutputMode(w.at(0), d));
    QVERIFY(decodeEnables(w.at(1), d));
    QVERIFY(decodeCanFrequency(w.at(2), d));
    QVERIFY(decodeFrameCount(w.at(3), d));
    QVERIFY(decodeFrameCount(w.at(4), d));
    QVERIFY(decodeStreamHead(w.at(5), d));
    QVERIFY(decodeStreamTable(w.at(6), d));
    const Decoder perFrame[]
        = { decodeFrameMasks, decodeFrameBitChannels, decodeFrameBitValues, decodeFrameByteChannels };
    for (int g = 0; g < 4; ++g) {
        QVERIFY(perFrame[g](w.at(7 + 2 * g), d));
        QVERIFY(perFrame[g](w.at(8 + 2 * g), d));
    }
    QVERIFY(decodeCanBaud(w.at(15), d));
    // The unit's 4 and 2 stand in the record as they came.
    QCOMPARE(int(d.canFrames.at(1).ide), 4);
    QCOMPARE(int(d.canFrames.at(1).rtr), 2);
    QCOMPARE(payloadsFromRecord(d), w);
}

void TestCustomOutput::frameCountNeverGrowsThePagesList_data()
{
    QTest::addColumn<bool>("unitRecord");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("standardIds"); // of the frames after the answer
    QTest::addColumn<int>("count");
    // The list holds 17 and 34 before each answer.
    QTest::newRow("count 3 keeps two") << false << hex("03") << "17,34" << 3;
    QTest::newRow("count 10 keeps two") << false << hex("0a") << "17,34" << 10;
    QTest::newRow("count 1 drops the last") << false << hex("01") << "17" << 1;
    QTest::newRow("count 0 empties") << false << hex("00") << "" << 0;
    QTest::newRow("frame 1 of 3 filled") << false << hex("03 01 3412 00000000 00 00 08") << "17,4660" << 3;
    QTest::newRow("frame 2 of 3 not added") << false << hex("03 02 3412 00000000 00 00 08") << "17,34" << 3;
    QTest::newRow("count 11 refused") << false << hex("0b") << "17,34" << 2;
    // A record that mirrors the unit follows its count both ways.
    QTest::newRow("unit: count 3 adds one") << true << hex("03") << "17,34,0" << 3;
    QTest::newRow("unit: frame 2 of 3 filled")
        << true << hex("03 02 3412 00000000 00 00 08") << "17,34,4660" << 3;
    QTest::newRow("unit: count 1 drops the last") << true << hex("01") << "17" << 1;
}

// Answer 48 right after the page opened must not grow the page's list: a
// write would then send empty identifiers and mappings over the unit's frames.
void TestCustomOutput::frameCountNeverGrowsThePagesList()
{
    QFETCH(bool, unitRecord);
    QFETCH(QByteArray, payload);
    QFETCH(QString, standardIds);
    QFETCH(int, count);
    DeviceData d;
    CanFrameList::resize(d, 2);
    d.canFrames[0].standardId = 17;
    d.canFrames[1].standardId = 34;
    (unitRecord ? decodeUnitFrameCount : decodeFrameCount)(payload, d);
    QStringList ids;
    for (int i = 0; i < d.canFrames.size(); ++i) {
        ids << QString::number(d.canFrames.at(i).standardId);
        QCOMPARE(d.canFrames.at(i).index, i);
    }
    QCOMPARE(ids.join(QLatin1Char(',')), standardIds);
    QCOMPARE(int(d.CANFrameCnt), count);
}

void TestCustomOutput::unfitAnswersLeaveTheRecord_data()
{
    QTest::addColumn<Decoder>("decode");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("mode 0") << Decoder(decodeOutputMode) << hex("00");
    QTest::newRow("mode 4") << Decoder(decodeOutputMode) << hex("04");
    QTest::newRow("mode, two bytes") << Decoder(decodeOutputMode) << hex("0200");
    QTest::newRow("enables, empty") << Decoder(decodeEnables) << QByteArray();
    QTest::newRow("frequency 9") << Decoder(decodeCanFrequency) << hex("09");
    QTest::newRow("frequency 201") << Decoder(decodeCanFrequency) << hex("c9");
    QTest::newRow("frame count 11") << Decoder(decodeFrameCount) << hex("0b 00 2301 00000000 00 00 08");
    QTest::newRow("frame count, empty") << Decoder(decodeFrameCount) << QByteArray();
    QTest::newRow("stream head, 7 bytes") << Decoder(decodeStreamHead) << hex("32 0f f0 94 18fc e8");
    QTest::newRow("stream table sized 39") << Decoder(decodeStreamTable) << hex("27") + zeros(45);
    QTest::newRow("stream table, 45 bytes") << Decoder(decodeStreamTable) << hex("28") + zeros(44);
    QTest::newRow("masks, 18 bytes") << Decoder(decodeFrameMasks) << hex("00 ff") + zeros(16);
    QTest::newRow("masks of frame 2 of 2") << Decoder(decodeFrameMasks) << hex("02 ff") + zeros(17);
    QTest::newRow("bit channels, 64 bytes") << Decoder(decodeFrameBitChannels) << zeros(64);
    QTest::newRow("bit values of frame 9") << Decoder(decodeFrameBitValues) << hex("09") + zeros(64);
    QTest::newRow("byte channels, 10 bytes") << Decoder(decodeFrameByteChannels) << zeros(10);
    QTest::newRow("baud index 8") << Decoder(decodeCanBaud) << hex("08");
    QTest::newRow("baud, two bytes") << Decoder(decodeCanBaud) << hex("0100");
}

void TestCustomOutput::unfitAnswersLeaveTheRecord()
{
    QFETCH(Decoder, decode);
    QFETCH(QByteArray, payload);
    DeviceData d = twoFrames();
    const QString before = fileFragment(d);
    QVERIFY(!decode(payload, d));
    QCOMPARE(fileFragment(d), before);
}

void TestCustomOutput::fileFragmentByteForByte()
{
    DeviceData d;
    d.PyxGOutputMode = 3;
    d.TTLEnable = true;
    d.CANFrequency = 200;
    d.CANBaud = QStringLiteral("1M");
    CanFrameList::resize(d, 1);
    CanFrameRecord &f = d.canFrames[0];
    f.standardId = 0x123;
    f.extendedId = 0xFFFFFFFF;
    f.ide = 4;
    f.rtr = 2;
    f.dlc = 1;
    f.dataMask = 1;
    f.bitMap[0][0][0] = 3;
    f.bitMap[0][0][1] = 9;
    f.byteMap[0][1] = 254;
    d.TTLStream.header[0] = 50;
    d.TTLStream.header[1] = 15;
    d.TTLStream.range[0] = 64536;
    d.TTLStream.range[1] = 1000;
    d.TTLStream.table1[1] = 1;
    d.TTLStream.table2[39] = 7;

    const QString frame = QStringLiteral("0,291,4294967295,4,2,1,1,0,3,9")
        + QStringLiteral(",0,0").repeated(63) + QStringLiteral(",0,254,0")
        + QStringLiteral(",0,0,0").repeated(7);
    const QString stream = QStringLiteral("50,15,0,0,64536,1000,0,1") + QStringLiteral(",0").repeated(38)
        + QStringLiteral(",0").repeated(39) + QStringLiteral(",7");
    const QString expected = QStringLiteral("<PyxGOutputMode>3</PyxGOutputMode>\r\n"
                                            "<TTLEnable>1</TTLEnable>\r\n"
                                            "<CANEnable>0</CANEnable>\r\n"
                                            "<CANFrequency>200</CANFrequency>\r\n"
                                            "<CANBaud>1M</CANBaud>\r\n"
                                            "<CANFrameCnt>1</CANFrameCnt>\r\n")
        + QStringLiteral("<CANFrame>") + frame + QStringLiteral("</CANFrame>\r\n")
        + QStringLiteral("<TTLStream>") + stream + QStringLiteral("</TTLStream>");
    QCOMPARE(fileFragment(d), expected);

    // Read into a fresh record, the file gives the same fragment again.
    DeviceData again;
    ParameterFile::loadBytes(ParameterFile::join({ expected }).toUtf8(), again);
    QCOMPARE(fileFragment(again), expected);
}

void TestCustomOutput::fileReaderFrameRules_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("standardIds"); // of the frames after reading
    QTest::addColumn<int>("streamFrequency");

    const auto row = [](const char *name, const QString &body, const char *ids, int frequency) {
        QTest::newRow(name) << body << QString(ids) << frequency;
    };
    const QString rest = QStringLiteral(",0").repeated(158); // after index and standard id
    const QString count3 = QStringLiteral("<CANFrameCnt>3</CANFrameCnt>");
    row("count 3 grows", count3, "17,34,0", 50);
    row("count 1 shrinks", "<CANFrameCnt>1</CANFrameCnt>", "17", 50);
    row("count 0 is ignored", "<CANFrameCnt>0</CANFrameCnt>", "17,34", 50);
    row("count 11 is ignored", "<CANFrameCnt>11</CANFrameCnt>", "17,34", 50);
    row("frame 1 is filled", "<CANFrame>1,99" + rest + "</CANFrame>", "17,99", 50);
    row("frame index 10 is ignored", "<CANFrame>10,99" + rest + "</CANFrame>", "17,34", 50);
    row("frame of 159 items is refused", "<CANFrame>1,99" + rest.mid(2) + "</CANFrame>", "17,34", 50);
    row("count before frame 3 makes room", count3 + "\r\n<CANFrame>2,77" + rest + "</CANFrame>", "17,34,77",
        50);
    // After a known element the reader steps over one more token, the line
    // end in the program's own files: an element right behind it is missed.
    row("frame right behind the count is missed", count3 + "<CANFrame>2,77" + rest + "</CANFrame>", "17,34,0",
        50);
    row("stream of 86 items", "<TTLStream>120" + QStringLiteral(",0").repeated(85) + "</TTLStream>", "17,34",
        120);
    row("stream of 85 items is refused",
        "<TTLStream>120" + QStringLiteral(",0").repeated(84) + "</TTLStream>", "17,34", 50);
}

void TestCustomOutput::fileReaderFrameRules()
{
    QFETCH(QString, body);
    QFETCH(QString, standardIds);
    QFETCH(int, streamFrequency);
    DeviceData d;
    CanFrameList::resize(d, 2);
    d.canFrames[0].standardId = 17;
    d.canFrames[1].standardId = 34;
    d.TTLStream.header[0] = 50;
    ParameterFile::loadBytes(ParameterFile::join({ body }).toUtf8(), d);
    QStringList ids;
    for (int i = 0; i < d.canFrames.size(); ++i) {
        ids << QString::number(d.canFrames.at(i).standardId);
        QCOMPARE(d.canFrames.at(i).index, i);
    }
    QCOMPARE(ids.join(QLatin1Char(',')), standardIds);
    QCOMPARE(int(d.CANFrameCnt), d.canFrames.size());
    QCOMPARE(int(d.TTLStream.header[0]), streamFrequency);
}

// Every model, the ground station as "WILLO", has its inputs in the
// delivered file; without the file the editors offer nothing but "NONE".
void TestCustomOutput::pyxModuleLists()
{
    DeviceData d;
    for (int model = 0; model < 7; ++model) {
        QVERIFY(PyxModuleFile::load(QStringLiteral(QM_SOURCE_DIR "/config/PyxModule.xml"), model, d));
        QCOMPARE(d.pyxChannelNames.value(0), QStringLiteral("T1"));
        QVERIFY(d.pyxBitNames.size() >= 6);
    }
    QCOMPARE(d.pyxBitNames.last(), QStringLiteral("F10")); // the Willow's last key
    QVERIFY(!PyxModuleFile::load(QStringLiteral(QM_SOURCE_DIR "/config/NoSuchFile.xml"), 0, d));
    QVERIFY(d.pyxChannelNames.isEmpty() && d.pyxBitNames.isEmpty());
}

QTEST_APPLESS_MAIN(TestCustomOutput)
#include "tst_customoutput.moc"
