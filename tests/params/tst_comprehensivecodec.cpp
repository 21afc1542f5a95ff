// The comprehensive settings on the wire and in the parameter file, and the
// read-only answers of the device view.
#include "ComprehensiveCodec.h"
#include "DeviceData.h"
#include "ParameterFile.h"
#include "RecordDiff.h"

#include <QtTest>

using ComprehensiveCodec::Settings;

namespace
{

using Decoder = bool (*)(const QByteArray &, DeviceData &);

Decoder decoder(const QString &name)
{
    using namespace ComprehensiveCodec;
    static const QHash<QString, Decoder> decoders { { "hid", decodeHidMapping },
        { "hidOutput", decodeHidOutput }, { "throttle", decodeThrottleHold }, { "idle", decodeIdleWarning },
        { "lowVoltage", decodeLowVoltage }, { "baud", decodeBaud }, { "external", decodeExternalInput },
        { "output", decodeSbusOutput }, { "priority", decodeSbusPriority },
        { "protocol", decodeSbusProtocol }, { "control", decodeSbusControl } };
    return decoders.value(name);
}

// The fragment of a sample page, as the file holds it.
const char kSample[] = "<hidMap>0,1,2,3,4,5,6,7;</hidMap>\r\n"
                       "<hidOutput>1</hidOutput>\r\n"
                       "<throttleHoldSwitch>2</throttleHoldSwitch>\r\n"
                       "<throttleData>1,-30,1.5,3;</throttleData>\r\n"
                       "<freeWarning>5</freeWarning>\r\n"
                       "<lowVoltage>7.05</lowVoltage>\r\n"
                       "<baud>115200</baud>\r\n"
                       "<externalInput>1</externalInput>\r\n"
                       "<sbusOutput>1,0;</sbusOutput>\r\n"
                       "<sbusPriority>33</sbusPriority>\r\n"
                       "<sbusVersion>144</sbusVersion>\r\n"
                       "<sbusControlSwitch>255</sbusControlSwitch>\r\n"
                       "<sbusControl-0>1,1,0,0;</sbusControl-0>\r\n"
                       "<sbusControl-1>0,0,0,1;</sbusControl-1>\r\n"
                       "<sbusControl-2>1,1,1,1;</sbusControl-2>\r\n";

// A record none of whose values an answer below gives by chance.
const char kBaseline[] = "<hidMap>9,9,9,9,9,9,9,9;</hidMap>\r\n<throttleHoldSwitch>3</throttleHoldSwitch>\r\n"
                         "<throttleData>2,-5,0.5,4;</throttleData>\r\n<baud>9600</baud>\r\n"
                         "<sbusOutput>0,1;</sbusOutput>\r\n<sbusControlSwitch>2</sbusControlSwitch>\r\n";

DeviceData loaded(const char *fragment)
{
    DeviceData d;
    ParameterFile::loadBytes(QByteArray("<body>") + fragment + "</body>", d);
    return d;
}

Settings sample()
{
    return Settings::fromRecord(loaded(kSample));
}

} // namespace

class TestComprehensiveCodec : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void answersFillTheRecord_data();
    void answersFillTheRecord();
    void payloadsAreByteExact();
    void valuesTravelAsTheUnitReadsThem_data();
    void valuesTravelAsTheUnitReadsThem();
    void fragmentIsByteExact();
    void controlFlagsAreOnOrOff();
    void speedsLandOnWhatTheUnitKeeps_data();
    void speedsLandOnWhatTheUnitKeeps();
    void batteryTexts_data();
    void batteryTexts();
};

void TestComprehensiveCodec::answersFillTheRecord_data()
{
    QTest::addColumn<QString>("decoder");
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<bool>("taken");
    QTest::addColumn<QString>("lines");
    QTest::newRow("HID mapping") << "hid" << QByteArray("0001020304050607") << true
                                 << "<hidMap>0,1,2,3,4,5,6,7;</hidMap>\r\n";
    QTest::newRow("HID mapping of 9 bytes")
        << "hid" << QByteArray("000102030405060708") << false << "<hidMap>9,9,9,9,9,9,9,9;</hidMap>\r\n";
    // Speed bytes up to 20 are tenths, from 21 on whole seconds from 3 s.
    QTest::newRow("throttle hold, speeds 15 and 21") << "throttle" << QByteArray("00020101250f15") << true
                                                     << "<throttleHoldSwitch>2</throttleHoldSwitch>\r\n"
                                                        "<throttleData>1,-37,1.5,3;</throttleData>\r\n";
    QTest::newRow("throttle hold, speeds 20 and 0")
        << "throttle" << QByteArray("00000000051400") << true << "<throttleData>0,5,2,0;</throttleData>\r\n";
    QTest::newRow("throttle hold without switch") << "throttle" << QByteArray("00ff0001320a0a") << true
                                                  << "<throttleHoldSwitch>255</throttleHoldSwitch>\r\n"
                                                     "<throttleData>0,-50,1,1;</throttleData>\r\n";
    QTest::newRow("throttle hold whose byte 0 is not 0")
        << "throttle" << QByteArray("01020101250f15") << false
        << "<throttleHoldSwitch>3</throttleHoldSwitch>\r\n"
           "<throttleData>2,-5,0.5,4;</throttleData>\r\n";
    QTest::newRow("throttle hold of 6 bytes") << "throttle" << QByteArray("00020101250f") << false
                                              << "<throttleData>2,-5,0.5,4;</throttleData>\r\n";
    QTest::newRow("low voltage 7.05")
        << "lowVoltage" << QByteArray("0705") << true << "<lowVoltage>7.05</lowVoltage>\r\n";
    QTest::newRow("baud 115200") << "baud" << QByteArray("00c20100") << true << "<baud>115200</baud>\r\n";
    QTest::newRow("baud 12345 is no rate of the page")
        << "baud" << QByteArray("39300000") << false << "<baud>9600</baud>\r\n";
    QTest::newRow("baud of 3 bytes") << "baud" << QByteArray("00c201") << false << "<baud>9600</baud>\r\n";
    QTest::newRow("SBUS output 3: none")
        << "output" << QByteArray("03") << true << "<sbusOutput>0,0;</sbusOutput>\r\n";
    QTest::newRow("SBUS output 4 changes nothing")
        << "output" << QByteArray("04") << false << "<sbusOutput>0,1;</sbusOutput>\r\n";
    QTest::newRow("priorities") << "priority" << QByteArray("21") << true
                                << "<sbusPriority>33</sbusPriority>\r\n";
    QTest::newRow("protocols keep the high bits")
        << "protocol" << QByteArray("9f") << true << "<sbusVersion>144</sbusVersion>\r\n";
    // The file holds each flag as its check box does, 1 or 0 (the record
    // holds a high-nibble flag as 16).
    QTest::newRow("SBUS control") << "control" << QByteArray("00110001101011") << true
                                  << "<sbusControlSwitch>0</sbusControlSwitch>\r\n"
                                     "<sbusControl-0>1,1,0,0;</sbusControl-0>\r\n"
                                     "<sbusControl-1>1,0,0,1;</sbusControl-1>\r\n"
                                     "<sbusControl-2>0,1,1,1;</sbusControl-2>\r\n";
    QTest::newRow("SBUS control of 6 bytes")
        << "control" << QByteArray("001100011010") << false << "<sbusControlSwitch>2</sbusControlSwitch>\r\n";
}

void TestComprehensiveCodec::answersFillTheRecord()
{
    QFETCH(QString, decoder);
    QFETCH(QByteArray, hex);
    QFETCH(bool, taken);
    QFETCH(QString, lines);
    DeviceData d = loaded(kBaseline);
    QCOMPARE(::decoder(decoder)(QByteArray::fromHex(hex), d), taken);
    const QString fragment = ComprehensiveCodec::fileFragment(Settings::fromRecord(d));
    QVERIFY2(fragment.contains(lines), qPrintable(fragment));
}

void TestComprehensiveCodec::payloadsAreByteExact()
{
    const QList<QByteArray> payloads = ComprehensiveCodec::payloads(sample());
    QList<QByteArray> hex;
    for (const QByteArray &p : payloads)
        hex << p.toHex();
    QCOMPARE(hex,
        QList<QByteArray>({ "0001020304050607", "01", "000201011e0f15", "05", "0705", "00c20100", "01", "00",
            "21", "90", "ff110000101111" }));
}

void TestComprehensiveCodec::valuesTravelAsTheUnitReadsThem_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("hex");
    // 1.15 * 100 is 114.99999999999999 in doubles; the unit must get 15.
    QTest::newRow("1.15 V") << "lowVoltage" << 1.15 << 4 << QByteArray("010f");
    QTest::newRow("recovery 0.7 s") << "recovery" << 0.7 << 2 << QByteArray("000201011e0715");
    QTest::newRow("recovery 3 s") << "recovery" << 3.0 << 2 << QByteArray("000201011e1515");
    // Above 2 s only whole seconds travel: 2.5 s goes as 20 and reads back as 2.0 s.
    QTest::newRow("recovery 2.5 s") << "recovery" << 2.5 << 2 << QByteArray("000201011e1415");
    QTest::newRow("hold value -37") << "hold" << -37.0 << 2 << QByteArray("00020101250f15");
    QTest::newRow("SBUS outputs: both") << "outputs" << 3.0 << 7 << QByteArray("02");
    QTest::newRow("SBUS outputs: none") << "outputs" << 0.0 << 7 << QByteArray("03");
}

void TestComprehensiveCodec::valuesTravelAsTheUnitReadsThem()
{
    QFETCH(QString, field);
    QFETCH(double, value);
    QFETCH(int, index);
    QFETCH(QByteArray, hex);
    Settings s = sample();
    if (field == "lowVoltage")
        s.lowVoltage = value;
    else if (field == "recovery")
        s.recoverySpeed = value;
    else if (field == "hold")
        s.holdValue = value;
    else if (field == "outputs") {
        s.sbusOutput[0] = int(value) & 1;
        s.sbusOutput[1] = int(value) >> 1;
    }
    QCOMPARE(ComprehensiveCodec::payloads(s).at(index).toHex(), hex);
}

// Read from the file and written again, the fragment comes back byte for byte.
void TestComprehensiveCodec::fragmentIsByteExact()
{
    QCOMPARE(ComprehensiveCodec::fileFragment(sample()), QString::fromLatin1(kSample));
}

// The unit's high-nibble flags read as 16 into the record; the file and the
// diff take every flag as on or off, as the unit does.
void TestComprehensiveCodec::controlFlagsAreOnOrOff()
{
    DeviceData read = loaded(kBaseline);
    QVERIFY(ComprehensiveCodec::decodeSbusControl(QByteArray::fromHex("01100101101011"), read));
    QCOMPARE(read.sbusControl[0][1], 16);
    QCOMPARE(read.sbusControl[2][3], 16);
    const QString fragment = ComprehensiveCodec::fileFragment(Settings::fromRecord(read));
    QVERIFY2(fragment.endsWith("<sbusControl-0>0,1,1,0;</sbusControl-0>\r\n"
                               "<sbusControl-1>1,0,0,1;</sbusControl-1>\r\n"
                               "<sbusControl-2>0,1,1,1;</sbusControl-2>\r\n"),
        qPrintable(fragment));

    DeviceData written = read;
    written.sbusControl[0][1] = 1;
    written.sbusControl[2][3] = 1;
    QCOMPARE(RecordDiff::differences(read, written), QStringList());
    written.sbusControl[2][1] = 0;
    QCOMPARE(
        RecordDiff::differences(read, written), QStringList { "SBUS control set 3 value 2: on \u2192 off" });
}

void TestComprehensiveCodec::speedsLandOnWhatTheUnitKeeps_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<double>("landed");
    QTest::addColumn<int>("byte");
    QTest::newRow("tenth up") << 1.5 << 1.6 << 1.6 << 16;
    QTest::newRow("tenth down") << 0.7 << 0.6 << 0.6 << 6;
    QTest::newRow("up from 2 s to 3 s") << 2.0 << 2.1 << 3.0 << 21;
    QTest::newRow("down from 3 s to 2 s") << 3.0 << 2.9 << 2.0 << 20;
    QTest::newRow("up from 3 s to 4 s") << 3.0 << 3.1 << 4.0 << 22;
    QTest::newRow("down from 82 s") << 82.0 << 81.9 << 81.0 << 99;
    QTest::newRow("typed 2.5 from below") << 1.0 << 2.5 << 3.0 << 21;
    QTest::newRow("typed 2.5 from above") << 9.0 << 2.5 << 2.0 << 20;
    QTest::newRow("typed 1.25 from below") << 0.0 << 1.25 << 1.3 << 13;
    QTest::newRow("typed 7.5 unchanged from itself") << 7.5 << 7.5 << 7.0 << 25;
    QTest::newRow("the longest") << 200.0 << 999.0 << 237.0 << 255;
    QTest::newRow("below zero") << 1.0 << -4.0 << 0.0 << 0;
}

void TestComprehensiveCodec::speedsLandOnWhatTheUnitKeeps()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(double, landed);
    QFETCH(int, byte);
    const double speed = ComprehensiveCodec::speedToward(from, to);
    QCOMPARE(speed, landed);
    QCOMPARE(ComprehensiveCodec::speedByte(speed), byte);
    QCOMPARE(ComprehensiveCodec::storedSpeed(speed), landed);
}

void TestComprehensiveCodec::batteryTexts_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<bool>("taken");
    QTest::addColumn<QString>("battery");
    QTest::addColumn<QString>("signal");
    // The short answer counts the hundredths only from 100 up.
    QTest::newRow("short") << QByteArray("070550") << true << "7 V     80%" << QString();
    QTest::newRow("short, hundredths 150") << QByteArray("079650") << true << "8 V     80%" << QString();
    QTest::newRow("long, 7.05 V, -60 dbm") << QByteArray("0705503c805a") << true << "7.05 V     80%"
                                           << "-60 dbm     90%";
    QTest::newRow("long, 7.45 V, +12 dbm") << QByteArray("072d500c005a") << true << "7.45 V     80%"
                                           << "12 dbm     90%";
    QTest::newRow("4 bytes") << QByteArray("0705503c") << false << QString() << QString();
    QTest::newRow("empty") << QByteArray() << false << QString() << QString();
}

void TestComprehensiveCodec::batteryTexts()
{
    QFETCH(QByteArray, hex);
    QFETCH(bool, taken);
    QFETCH(QString, battery);
    QFETCH(QString, signal);
    ComprehensiveCodec::DeviceStatus status;
    QCOMPARE(ComprehensiveCodec::decodeBattery(QByteArray::fromHex(hex), &status), taken);
    QCOMPARE(status.battery, battery);
    QCOMPARE(status.signal, signal);
}

QTEST_APPLESS_MAIN(TestComprehensiveCodec)
#include "tst_comprehensivecodec.moc"
