// The parts of a parameter file: which a file holds whole, which the unit
// has answered, a file of some parts only, and one record's parts laid over
// another's.
#include "AnsweredParts.h"
#include "CustomOutputCodec.h"
#include "DeviceData.h"
#include "FileParts.h"
#include "RecordFile.h"

#include <QtTest>

namespace
{

QByteArray file(const QByteArray &body)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n" + body + "</body>\r\n";
}

QByteArray container(const char *tag, int children)
{
    static const char *names[] = { "phase", "fineTuning", "leftTrip", "rightTrip", "safeProtectionState",
        "safeProtectionValue", "channelMap", "noneValue" };
    QByteArray text = QByteArray("<") + tag + ">\r\n";
    for (int i = 0; i < children; ++i)
        text += QByteArray("<") + names[i] + ">0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</" + names[i] + ">\r\n";
    return text + "</" + tag + ">\r\n";
}

QByteArray canFrame(int index)
{
    QByteArray f = QByteArray::number(index);
    for (int i = 1; i < 160; ++i)
        f += ",0";
    return "<CANFrame>" + f + "</CANFrame>\r\n";
}

// A record unlike a zeroed one in every field the tests look at.
DeviceData sample()
{
    DeviceData d;
    d.m_module = 2;
    for (int c = 0; c < kChannels; ++c) {
        d.fineTuning[0][c] = c - 8;
        d.fineTuning[1][c] = 8 - c;
        d.noneValue[0][c] = -c;
        d.noneValue[1][c] = c * 3;
        d.channelMap[1][c] = 15 - c;
        d.sbusHold[0][1][c] = c % 2;
    }
    d.sbusHoldSwitch[0] = 2;
    d.sbusHoldSwitch[1] = 255;
    d.hidOutput = 1;
    d.throttleIndex = 3;
    d.throttleData = 2;
    d.throttleDataValues[0] = -40;
    d.throttleDataValues[1] = 0.5;
    d.throttleDataValues[2] = 4;
    d.baud = 38400;
    d.PyxGOutputMode = 2;
    d.CANFrequency = 60;
    d.CANBaud = QStringLiteral("125K");
    CanFrameList::resize(d, 1);
    d.canFrames[0].standardId = 0x101;
    d.TTLStream.header[0] = 40;
    return d;
}

FileParts::Parts partsOf(std::initializer_list<FileParts::Part> list)
{
    FileParts::Parts parts;
    for (FileParts::Part p : list)
        parts.set(p);
    return parts;
}

struct Answer {
    quint8 code;
    QByteArray payload;
};

} // namespace

Q_DECLARE_METATYPE(QVector<Answer>)

class TestFileParts : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void fileHoldsOnlyWholeParts_data();
    void fileHoldsOnlyWholeParts();
    void answeredPartsNeedAllTheirAnswers_data();
    void answeredPartsNeedAllTheirAnswers();
    void backupOfSomePartsLeavesTheOthersOut();
    void partsLaidOverAnotherRecordKeepItsOthers();
};

void TestFileParts::fileHoldsOnlyWholeParts_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("parts");

    QTest::newRow("a whole file of a unit with the module power page")
        << RecordFile::text([] {
               DeviceData d = sample();
               d.m_module = 1;
               return d;
           }())
               .toUtf8()
        << FileParts::names(FileParts::ofModuleKind(1));
    QTest::newRow("a whole file of a unit with the output module")
        << RecordFile::text(sample()).toUtf8() << FileParts::names(FileParts::ofModuleKind(2));
    // The reader ignores a container without its eight children.
    QTest::newRow("seven children") << file(container("sbus1Default", 7) + container("sbus2Default", 8))
                                    << "SBUS 2 channel settings";
    QTest::newRow("throttle hold needs both elements")
        << file("<throttleHoldSwitch>1</throttleHoldSwitch>\r\n<hidOutput>1</hidOutput>\r\n") << "HID mode";
    QTest::newRow("channel hold needs all seven")
        << file("<sbusHoldSwitch>1,2;</sbusHoldSwitch>\r\n<sbus1-0>0;</sbus1-0>\r\n<sbus2-0>0;</sbus2-0>\r\n"
                "<sbus1-1>0;</sbus1-1>\r\n<sbus2-1>0;</sbus2-1>\r\n<sbus1-2>0;</sbus1-2>\r\n")
        << "";
    QTest::newRow("a frame count without all its frames")
        << file("<CANFrameCnt>2</CANFrameCnt>\r\n" + canFrame(0)) << "";
    QTest::newRow("a frame count with its frames")
        << file("<CANFrameCnt>2</CANFrameCnt>\r\n" + canFrame(1) + canFrame(0)) << "CAN frames";
    QTest::newRow("no frames") << file("<CANFrameCnt>0</CANFrameCnt>\r\n") << "CAN frames";
    QTest::newRow("the serial stream before the body's end")
        << QByteArray("<body><TTLStream>1,2</TTLStream></body>") << "TTL stream";
    QTest::newRow("known elements inside unknown ones")
        << file("<more><baud>9600</baud>\r\n<keyGear>1;</keyGear></more>\r\n") << "key kinds, baud rate";
    QTest::newRow("an element right behind another on its line is not loaded, so not held")
        << file("<hidOutput>1</hidOutput><baud>9600</baud>\r\n<freeWarning>3</freeWarning>\r\n")
        << "HID mode, idle warning";
    QTest::newRow("an element cut off by the file's end") << QByteArray("<body><hidOutput>1</hidOut") << "";
}

void TestFileParts::fileHoldsOnlyWholeParts()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, parts);
    QCOMPARE(FileParts::names(FileParts::inFile(bytes)), parts);
}

void TestFileParts::answeredPartsNeedAllTheirAnswers_data()
{
    QTest::addColumn<QVector<Answer>>("answers");
    QTest::addColumn<int>("frames"); // the record's CAN frame list
    QTest::addColumn<QString>("parts");

    const QByteArray tuning0 = QByteArray(1, 0) + QByteArray(84, 1);
    const QByteArray none0 = QByteArray(1, 0) + QByteArray(16, 1);
    const QByteArray none1 = QByteArray(1, 1) + QByteArray(16, 1);
    QTest::newRow("nothing") << QVector<Answer> {} << 0 << "";
    QTest::newRow("SBUS 1 tuning alone") << QVector<Answer> { { 0xA3, tuning0 } } << 0 << "";
    QTest::newRow("SBUS 1 tuning and port 2's fixed values")
        << QVector<Answer> { { 0xA3, tuning0 }, { 0xA7, none1 } } << 0 << "";
    QTest::newRow("SBUS 1 both") << QVector<Answer> { { 0xA7, none0 }, { 0xA3, tuning0 } } << 0
                                 << "SBUS 1 channel settings";
    QTest::newRow("single answers") << QVector<Answer> { { 0xB6, "x" }, { 0xC0, "x" }, { 0x38, "x" } } << 0
                                    << "key combinations, throttle hold, module power switch";
    QTest::newRow("battery and identity are no parts")
        << QVector<Answer> { { 0xAD, "x" }, { 0xFF, "ALDER" }, { 0xDF, "x" } } << 0 << "";
    QTest::newRow("stream header alone") << QVector<Answer> { { 0xD7, "x" } } << 0 << "";
    QTest::newRow("stream header and table")
        << QVector<Answer> { { 0xD9, "x" }, { 0xD7, "x" } } << 0 << "TTL stream";
    const QByteArray count2(1, 2);
    auto frame = [](int k) {
        return QVector<Answer> { { 0xD5, QByteArray(1, 2) + QByteArray(1, char(k)) + QByteArray(9, 0) },
            { 0xDB, QByteArray(1, char(k)) }, { 0xDD, QByteArray(1, char(k)) },
            { 0x20, QByteArray(1, char(k)) }, { 0x22, QByteArray(1, char(k)) } };
    };
    QTest::newRow("frame count without frames in the list")
        << QVector<Answer> { { 0xD5, count2 } } << 0 << "CAN frames";
    QTest::newRow("one frame of two") << QVector<Answer> { { 0xD5, count2 } } + frame(0) << 2 << "";
    QVector<Answer> missingOne = frame(1);
    missingOne.removeAt(3);
    QTest::newRow("a frame without its bit values") << frame(0) + missingOne << 2 << "";
    QTest::newRow("both frames") << frame(1) + frame(0) << 2 << "CAN frames";
}

void TestFileParts::answeredPartsNeedAllTheirAnswers()
{
    QFETCH(QVector<Answer>, answers);
    QFETCH(int, frames);
    QFETCH(QString, parts);
    AnsweredParts answered;
    answered.note(0xC2, "x");
    answered.clear(); // a new connection forgets the last one's answers
    for (const Answer &a : answers)
        answered.note(a.code, a.payload);
    DeviceData record;
    CanFrameList::resize(record, frames);
    QCOMPARE(FileParts::names(answered.complete(record)), parts);
}

// The elements of the parts left out are gone, containers whole, and the
// serial stream's line keeps the body's closing tag.
void TestFileParts::backupOfSomePartsLeavesTheOthersOut()
{
    const DeviceData d = sample();
    using namespace FileParts;
    QCOMPARE(
        RecordFile::text(d, partsOf({ ChannelHold, HidMode, ThrottleHold, Baud, CanBaud, SerialStream })),
        QStringLiteral(
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n"
            "<sbusHoldSwitch>2,255;</sbusHoldSwitch>\r\n"
            "<sbus1-0>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus1-0>\r\n"
            "<sbus2-0>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus2-0>\r\n"
            "<sbus1-1>0,1,0,1,0,1,0,1,0,1,0,1,0,1,0,1;</sbus1-1>\r\n"
            "<sbus2-1>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus2-1>\r\n"
            "<sbus1-2>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus1-2>\r\n"
            "<sbus2-2>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus2-2>\r\n"
            "<hidOutput>1</hidOutput>\r\n"
            "<throttleHoldSwitch>3</throttleHoldSwitch>\r\n"
            "<throttleData>2,-40,0.5,4;</throttleData>\r\n"
            "<baud>38400</baud>\r\n"
            "<CANBaud>125K</CANBaud>\r\n"
            "<TTLStream>40,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,"
            "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,"
            "0</TTLStream></body>\r\n"));
    QCOMPARE(RecordFile::text(d, partsOf({ Sbus2, CanFrequency })),
        QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n"
                       "<sbus2Default>\r\n"
                       "<phase>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</phase>\r\n"
                       "<fineTuning>8,7,6,5,4,3,2,1,0,-1,-2,-3,-4,-5,-6,-7;</fineTuning>\r\n"
                       "<leftTrip>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</leftTrip>\r\n"
                       "<rightTrip>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</rightTrip>\r\n"
                       "<safeProtectionState>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</safeProtectionState>\r\n"
                       "<safeProtectionValue>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</safeProtectionValue>\r\n"
                       "<channelMap>15,14,13,12,11,10,9,8,7,6,5,4,3,2,1,0;</channelMap>\r\n"
                       "<noneValue>0,3,6,9,12,15,18,21,24,27,30,33,36,39,42,45;</noneValue>\r\n"
                       "</sbus2Default>\r\n"
                       "<CANFrequency>60</CANFrequency>\r\n"
                       "</body>\r\n"));
    // Every part is the whole file.
    QCOMPARE(RecordFile::text(d, ofModuleKind(2)), RecordFile::text(d));
}

void TestFileParts::partsLaidOverAnotherRecordKeepItsOthers()
{
    DeviceData base;
    base.m_module = 2;
    for (int c = 0; c < kChannels; ++c) {
        base.fineTuning[0][c] = 50;
        base.noneValue[1][c] = -60;
    }
    base.hidOutput = 0;
    base.baud = 9600;
    base.CANFrequency = 33;
    using namespace FileParts;
    const DeviceData over = RecordFile::withParts(base, sample(), partsOf({ Sbus1, Baud, CanFrames }));
    // Port 1's values from the sample, its negative fixed values as they are.
    QCOMPARE(over.fineTuning[0][0], -8);
    QCOMPARE(over.noneValue[0][15], -15);
    QCOMPARE(over.baud, 38400);
    QCOMPARE(over.canFrames.size(), 1);
    QCOMPARE(int(over.canFrames[0].standardId), 0x101);
    // The rest as the base had it.
    QCOMPARE(over.noneValue[1][3], -60);
    QCOMPARE(over.hidOutput, 0);
    QCOMPARE(int(over.CANFrequency), 33);
    QCOMPARE(over.m_module, 2);
}

QTEST_GUILESS_MAIN(TestFileParts)
#include "tst_fileparts.moc"
