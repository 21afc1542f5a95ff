// The parameter file's reader: its rules, hostile files, how far a load got
// (the elements taken, the line where damage stopped it), and the remembered
// path.
#include "AppPaths.h"
#include "DeviceData.h"
#include "HoldCodec.h"
#include "ParameterFile.h"
#include "SbusCodec.h"

#include <QBuffer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

template <int N> QString list(const int (&a)[N])
{
    QStringList parts;
    for (int v : a)
        parts << QString::number(v);
    return parts.join(',');
}

// A field of the record as "a,b,c" (reals in their shortest form).
QString field(const DeviceData &d, const QString &name)
{
    if (name == "phase1")
        return list(d.phase[0]);
    if (name == "fineTuning1")
        return list(d.fineTuning[0]);
    if (name == "channelMap1")
        return list(d.channelMap[0]);
    if (name == "noneValue1")
        return list(d.noneValue[0]);
    if (name == "noneValue2")
        return list(d.noneValue[1]);
    if (name == "sbusHoldSwitch")
        return list(d.sbusHoldSwitch);
    if (name == "sbus2-1")
        return list(d.sbusHold[1][1]);
    if (name == "ckeyMap")
        return list(d.ckeyMap[0]) + ';' + list(d.ckeyMap[4]);
    if (name == "hidOutput")
        return QString::number(d.hidOutput);
    if (name == "externalInput")
        return QString::number(d.externalInput);
    if (name == "freeWarning")
        return QString::number(d.freeWarning);
    if (name == "lowVoltage")
        return QString::number(d.lowVoltage);
    if (name == "baud")
        return QString::number(d.baud);
    if (name == "throttleData")
        return QStringLiteral("%1,%2,%3,%4")
            .arg(d.throttleData)
            .arg(d.throttleDataValues[0])
            .arg(d.throttleDataValues[1])
            .arg(d.throttleDataValues[2]);
    if (name == "sbusPriority")
        return QString::number(d.sbusPriority);
    if (name == "modulePowerState")
        return list(d.modulePowerState);
    if (name == "TTLEnable")
        return QString::number(d.TTLEnable);
    if (name == "CANFrequency")
        return QString::number(d.CANFrequency);
    if (name == "frames")
        return QStringLiteral("%1 of %2").arg(d.canFrames.size()).arg(d.CANFrameCnt);
    if (name == "frame1")
        return d.canFrames.size() > 1 ? QStringLiteral("%1,%2,%3,%4")
                                            .arg(d.canFrames[1].index)
                                            .arg(d.canFrames[1].standardId)
                                            .arg(d.canFrames[1].byteMap[7][2])
                                            .arg(d.canFrames[1].bitMap[0][0][0])
                                      : QStringLiteral("none");
    if (name == "ttl")
        return QStringLiteral("%1,%2,%3")
            .arg(d.TTLStream.header[0])
            .arg(d.TTLStream.range[1])
            .arg(d.TTLStream.table2[39]);
    qFatal("unknown field %s", qPrintable(name));
    return {};
}

// Every integer the tests look at starts at 7, so that "unchanged" reads 7.
DeviceData marked()
{
    DeviceData d;
    for (int p = 0; p < 2; ++p) {
        for (int c = 0; c < 16; ++c) {
            d.phase[p][c] = d.fineTuning[p][c] = d.channelMap[p][c] = d.noneValue[p][c] = 7;
            for (int k = 0; k < 3; ++k)
                d.sbusHold[p][k][c] = 7;
        }
        d.sbusHoldSwitch[p] = d.modulePowerState[p] = 7;
    }
    for (auto &row : d.ckeyMap)
        for (int &v : row)
            v = 7;
    d.hidOutput = d.externalInput = d.freeWarning = d.baud = d.throttleData = 7;
    d.throttleDataValues[0] = d.throttleDataValues[1] = d.throttleDataValues[2] = 7;
    d.lowVoltage = 7;
    d.sbusPriority = 7;
    d.CANFrequency = 7;
    return d;
}

QString sixteen(const QString &head)
{
    QStringList parts = head.split(',');
    while (parts.size() < 16)
        parts << QStringLiteral("7");
    return parts.join(',');
}

QByteArray file(const QByteArray &body)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n" + body + "</body>\r\n";
}

QByteArray defaults(const char *tag, const QByteArray &children)
{
    return QByteArray("<") + tag + ">\r\n" + children + "</" + tag + ">\r\n";
}

const QByteArray kZeros = "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;";

QByteArray child(const char *tag, const QByteArray &values)
{
    return QByteArray("<") + tag + ">" + values + "</" + tag + ">\r\n";
}

// The eight children of a default container with fixed values and the given
// noneValue text.
QByteArray eightChildren(const QByteArray &noneValues)
{
    return child("phase", "1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1;") + child("fineTuning", kZeros)
        + child("leftTrip", kZeros) + child("rightTrip", kZeros) + child("safeProtectionState", kZeros)
        + child("safeProtectionValue", kZeros) + child("channelMap", "3,254,0,0,0,0,0,0,0,0,0,0,0,0,0,0;")
        + child("noneValue", noneValues);
}

} // namespace

class TestParameterFile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void readerKeepsTheUnitsRules_data();
    void readerKeepsTheUnitsRules();
    void fixedValuesTheScanDoesNotReachAreConvertedToo_data();
    void fixedValuesTheScanDoesNotReachAreConvertedToo();
    void hostileFilesLeaveTheRecordWithinItsTypes_data();
    void hostileFilesLeaveTheRecordWithinItsTypes();
    void ourToolsReadFixedValuesAsWritten_data();
    void ourToolsReadFixedValuesAsWritten();
    void reportsElementsTakenAndWhereDamageStopped_data();
    void reportsElementsTakenAndWhereDamageStopped();
    void missingFileIsNotLoaded();
    void lastPathIsRememberedBesideTheProgram();
    void lastPathKeepsWhatItStarts_data();
    void lastPathKeepsWhatItStarts();
};

void TestParameterFile::readerKeepsTheUnitsRules_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");

    QTest::newRow("eight children by position")
        << defaults("sbus1Default", eightChildren(kZeros)) << "channelMap1"
        << "3,254,0,0,0,0,0,0,0,0,0,0,0,0,0,0";
    // The container is read by position, not by name.
    QTest::newRow("children in another order land in the wrong fields") << defaults("sbus1Default",
        child("fineTuning", "9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9;") + child("phase", kZeros)
            + child("leftTrip", kZeros) + child("rightTrip", kZeros) + child("safeProtectionState", kZeros)
            + child("safeProtectionValue", kZeros) + child("channelMap", kZeros) + child("noneValue", kZeros))
                                                                        << "phase1"
                                                                        << "9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9";
    QTest::newRow("seven children leave the port unchanged")
        << defaults("sbus1Default", eightChildren(kZeros).mid(eightChildren(kZeros).indexOf("<fineTuning>")))
            + child("hidOutput", "1")
        << "phase1" << sixteen("7");
    QTest::newRow("elements after seven children still load")
        << defaults("sbus1Default", eightChildren(kZeros).mid(eightChildren(kZeros).indexOf("<fineTuning>")))
            + child("hidOutput", "1")
        << "hidOutput"
        << "1";
    QTest::newRow("unknown wrapper inside the container is searched")
        << defaults("sbus1Default", "<extra>\r\n" + eightChildren(kZeros) + "</extra>\r\n") << "channelMap1"
        << "3,254,0,0,0,0,0,0,0,0,0,0,0,0,0,0";

    // Fixed values with bit 7 of the low byte set are converted on reading,
    // differently on each port.
    const QByteArray none = "-5,133,0,127,128,255,-1,-128,0,0,0,0,0,0,0,0;";
    QTest::newRow("port 1 fixed values") << defaults("sbus1Default", eightChildren(none)) << "noneValue1"
                                         << "-235,-133,0,127,-128,-239,-239,-128,0,0,0,0,0,0,0,0";
    QTest::newRow("port 2 fixed values") << defaults("sbus2Default", eightChildren(none)) << "noneValue2"
                                         << "133,-5,0,127,-128,-127,129,128,0,0,0,0,0,0,0,0";
    QTest::newRow("fixed values not in the file keep theirs while bit 7 is clear")
        << defaults("sbus1Default", eightChildren("-5,133,x;")) << "noneValue1" << sixteen("-235,-133");

    QTest::newRow("scan stops at the first mismatch")
        << child("sbus2-1", "1,0,x,1,1,1,1,1,1,1,1,1,1,1,1,1;") << "sbus2-1" << sixteen("1,0");
    QTest::newRow("pair without its semicolon") << child("sbusHoldSwitch", "2,3") << "sbusHoldSwitch"
                                                << "2,3";
    QTest::newRow("hold switch of one value") << child("sbusHoldSwitch", "2") << "sbusHoldSwitch"
                                              << "2,7";
    QTest::newRow("key combinations")
        << child("ckeyMap", "1,2,3;4,5,6;7,8,9;10,11,12;255,255,100;") << "ckeyMap"
        << "1,2,3;255,255,100";
    QTest::newRow("throttle data with reals") << child("throttleData", "2,-37.5,1.5,3;") << "throttleData"
                                              << "2,-37.5,1.5,3";
    QTest::newRow("free warning with a fraction reads 0") << child("freeWarning", "3.5") << "freeWarning"
                                                          << "0";
    QTest::newRow("free warning as an integer") << child("freeWarning", "12") << "freeWarning"
                                                << "12";
    QTest::newRow("low voltage") << child("lowVoltage", "6.85") << "lowVoltage"
                                 << "6.85";
    QTest::newRow("baud text") << child("baud", "115200") << "baud"
                               << "115200";
    QTest::newRow("priority keeps its low byte") << child("sbusPriority", "289") << "sbusPriority"
                                                 << "33";
    QTest::newRow("module power without semicolon") << child("modulePowerState", "1,0") << "modulePowerState"
                                                    << "1,0";
    QTest::newRow("TTL on only for 1") << child("TTLEnable", "2") << "TTLEnable"
                                       << "0";
    QTest::newRow("TTL on") << child("TTLEnable", "1") << "TTLEnable"
                            << "1";
    QTest::newRow("CAN frequency kept in 8 bits") << child("CANFrequency", "300") << "CANFrequency"
                                                  << "44";
    QTest::newRow("CAN frequency beyond 16 bits") << child("CANFrequency", "70000") << "CANFrequency"
                                                  << "0";
    QTest::newRow("frame count 3") << child("CANFrameCnt", "3") << "frames"
                                   << "3 of 3";

    QByteArray frame = "1,4660,0,0,0,8,255,0";
    for (int i = 0; i < 128; ++i)
        frame += i == 0 ? ",9" : ",0";
    for (int i = 0; i < 24; ++i)
        frame += i == 23 ? ",254" : ",0";
    QTest::newRow("CAN frame fills its index")
        << child("CANFrameCnt", "2") + child("CANFrame", frame) << "frame1"
        << "1,4660,254,9";
    QByteArray stream = "15,0,50,0,55536,10000";
    for (int i = 0; i < 80; ++i)
        stream += i == 79 ? ",9" : ",1";
    QTest::newRow("TTL stream of 86 items") << child("TTLStream", stream) << "ttl"
                                            << "15,10000,9";

    QTest::newRow("a repeated element: the last one counts")
        << child("hidOutput", "1") + child("hidOutput", "2") << "hidOutput"
        << "2";
    QTest::newRow("numbers beyond int are held at its ends")
        << child("sbusHoldSwitch", "99999999999,-99999999999;") << "sbusHoldSwitch"
        << "2147483647,-2147483648";
    QTest::newRow("a known element inside unknown ones is found")
        << QByteArray("<settings><more>") + child("hidOutput", "3") + "</more></settings>\r\n"
        << "hidOutput"
        << "3";
    // The reader steps one token on after each element; in the program's
    // own files that token is the line end.
    QTest::newRow("an element right after another on its line is stepped over")
        << QByteArray("<hidOutput>1</hidOutput><externalInput>1</externalInput>\r\n") << "externalInput"
        << "7";
    QTest::newRow("a child inside a simple element stops the reading")
        << QByteArray("<hidOutput>1<b/></hidOutput>\r\n") + child("externalInput", "1") << "externalInput"
        << "7";
    QTest::newRow("values before a broken end stay")
        << child("hidOutput", "4") + "<externalInput>1</other>\r\n"
        << "hidOutput"
        << "4";
}

void TestParameterFile::readerKeepsTheUnitsRules()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, name);
    QFETCH(QString, expected);
    DeviceData d = marked();
    ParameterFile::loadBytes(file(body), d);
    QCOMPARE(field(d, name), expected);
}

// The conversion goes over all sixteen entries of the port, also those a
// scan stopped before: they still hold what the record held.
void TestParameterFile::fixedValuesTheScanDoesNotReachAreConvertedToo_data()
{
    QTest::addColumn<int>("port");
    QTest::addColumn<QByteArray>("values");
    QTest::addColumn<QString>("expected");
    QTest::newRow("port 1, two read")
        << 0 << QByteArray("1,-2,x;") << "1,-238,20,-235,-133,20,-235,-133,20,-235,-133,20,-235,-133,20,-235";
    QTest::newRow("port 2, two read")
        << 1 << QByteArray("1,-2,x;") << "1,130,20,133,-5,20,133,-5,20,133,-5,20,133,-5,20,133";
    QTest::newRow("port 1, none read")
        << 0 << QByteArray("x;") << "-235,-133,20,-235,-133,20,-235,-133,20,-235,-133,20,-235,-133,20,-235";
}

void TestParameterFile::fixedValuesTheScanDoesNotReachAreConvertedToo()
{
    QFETCH(int, port);
    QFETCH(QByteArray, values);
    QFETCH(QString, expected);
    DeviceData d = marked();
    const int held[3] = { -5, 133, 20 };
    for (int c = 0; c < 16; ++c)
        d.noneValue[port][c] = held[c % 3];
    ParameterFile::loadBytes(
        file(defaults(port == 0 ? "sbus1Default" : "sbus2Default", eightChildren(values))), d);
    QCOMPARE(field(d, port == 0 ? "noneValue1" : "noneValue2"), expected);
    QCOMPARE(field(d, port == 0 ? "noneValue2" : "noneValue1"), sixteen("7"));
}

void TestParameterFile::hostileFilesLeaveTheRecordWithinItsTypes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("hidOutput"); // what a hidOutput element before the damage left

    QRandomGenerator random(8);
    QByteArray junk(50 * 1024 * 1024, '\0');
    random.fillRange(reinterpret_cast<quint32 *>(junk.data()), junk.size() / 4);
    QTest::newRow("50 MB of junk") << junk << "7";
    QTest::newRow("not XML") << QByteArray("sbusHoldSwitch=1,2") << "7";
    QTest::newRow("empty") << QByteArray() << "7";
    QTest::newRow("cut off in an element") << file(child("hidOutput", "5")).left(80) << "5";
    QTest::newRow("cut off in a container")
        << file(child("hidOutput", "5") + defaults("sbus1Default", eightChildren(kZeros))).left(200) << "5";
    QByteArray deep = file(child("hidOutput", "5"));
    deep.chop(9);
    deep += QByteArray("<a>").repeated(100000) + child("CANFrameCnt", "4")
        + QByteArray("</a>").repeated(100000);
    QTest::newRow("nested a hundred thousand deep") << deep << "5";
    QByteArray many = "<body>";
    for (int i = 0; i < 200000; ++i)
        many += "<CANFrameCnt>" + QByteArray::number(i % 13) + "</CANFrameCnt>\n<hidOutput>5</hidOutput>\n";
    QTest::newRow("every element repeated") << many + "</body>"
                                            << "5";
    QTest::newRow("container inside a container") << file(
        defaults("sbus1Default", defaults("sbus2Default", eightChildren(kZeros))) + child("hidOutput", "5"))
                                                  << "5";
}

void TestParameterFile::hostileFilesLeaveTheRecordWithinItsTypes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, hidOutput);
    DeviceData d = marked();
    ParameterFile::loadBytes(bytes, d);
    QCOMPARE(QString::number(d.hidOutput), hidOutput);
    QVERIFY(d.canFrames.size() <= 10);
    QCOMPARE(d.canFrames.size(), int(d.CANFrameCnt));
    // Whatever the record holds now goes out as well-formed payloads.
    const QList<QByteArray> sbus = SbusCodec::payloadsFromRecord(d);
    QCOMPARE(sbus.size(), 4);
    QCOMPARE(sbus.at(0).size(), 85);
    QCOMPARE(sbus.at(3).size(), 17);
    QCOMPARE(HoldCodec::payload(d).size(), 16);
}

// The tools' reading: the same file, the fixed values as they stand on both
// ports; everything else by the window's rules.
void TestParameterFile::ourToolsReadFixedValuesAsWritten_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    const QByteArray none = "-5,133,0,127,128,255,-1,-128,0,0,0,0,0,0,0,0;";
    QTest::newRow("port 1") << defaults("sbus1Default", eightChildren(none)) << "noneValue1"
                            << "-5,133,0,127,128,255,-1,-128,0,0,0,0,0,0,0,0";
    QTest::newRow("port 2") << defaults("sbus2Default", eightChildren(none)) << "noneValue2"
                            << "-5,133,0,127,128,255,-1,-128,0,0,0,0,0,0,0,0";
    QTest::newRow("fixed values not in the file keep theirs")
        << defaults("sbus1Default", eightChildren("-5,133,x;")) << "noneValue1" << sixteen("-5,133");
    QTest::newRow("seven children still leave the port unchanged")
        << defaults("sbus1Default", eightChildren(none).mid(eightChildren(none).indexOf("<fineTuning>")))
        << "noneValue1" << sixteen("7");
    QTest::newRow("the other groups of the container")
        << defaults("sbus2Default", eightChildren(none)) + defaults("sbus1Default", eightChildren(kZeros))
        << "channelMap1"
        << "3,254,0,0,0,0,0,0,0,0,0,0,0,0,0,0";
}

void TestParameterFile::ourToolsReadFixedValuesAsWritten()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, name);
    QFETCH(QString, expected);
    DeviceData d = marked();
    ParameterFile::loadBytes(file(body), d, ParameterFile::FixedValues::AsWritten);
    QCOMPARE(field(d, name), expected);
}

void TestParameterFile::reportsElementsTakenAndWhereDamageStopped_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("elements");
    QTest::addColumn<qint64>("stoppedAtLine");
    const QByteArray head = file(QByteArray()).chopped(9); // without "</body>\r\n"
    const QByteArray two = child("hidOutput", "1") + child("baud", "9600");
    QTest::newRow("whole file") << file(
        two + defaults("sbus2Default", eightChildren(kZeros)) + child("sbusVersion", "2"))
                                << 4 << qint64(0);
    // A container without its eight children is not taken.
    const QByteArray eight = eightChildren(kZeros);
    QTest::newRow("seven children are not counted") << file(
        defaults("sbus1Default", eight.mid(eight.indexOf("<fineTuning>"))) + child("lowVoltage", "3.6"))
                                                    << 1 << qint64(0);
    QTest::newRow("unknown elements only")
        << file(child("colour", "7") + child("hidMapX", "1;")) << 0 << qint64(0);
    QTest::newRow("wrong closing tag on line 5")
        << file(two + "<keyGear>1,2;</hidMap>\r\n" + child("externalInput", "1")) << 2 << qint64(5);
    QTest::newRow("cut off after line 4") << head + "<hidOutput>1</hidOutput>\r\n<baud>96" << 1 << qint64(4);
    QTest::newRow("not XML at all") << QByteArray("\x01\x02 binary \xff junk") << 0 << qint64(1);
}

void TestParameterFile::reportsElementsTakenAndWhereDamageStopped()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, elements);
    QFETCH(qint64, stoppedAtLine);
    QBuffer buffer(&bytes);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    DeviceData data;
    ParameterFile::LoadReport report;
    ParameterFile::load(&buffer, data, ParameterFile::FixedValues::Converted, &report);
    QCOMPARE(report.elements, elements);
    QCOMPARE(report.stoppedAtLine, stoppedAtLine);
}

void TestParameterFile::missingFileIsNotLoaded()
{
    QTemporaryDir dir;
    DeviceData data;
    ParameterFile::LoadReport report;
    report.elements = 9;
    QVERIFY(
        !ParameterFile::load(dir.path() + "/none.cfg", data, ParameterFile::FixedValues::Converted, &report));
    QCOMPARE(report.elements, 9); // untouched: there was no load
}

void TestParameterFile::lastPathIsRememberedBesideTheProgram()
{
    QTemporaryDir dir;
    QVERIFY(QDir().mkpath(dir.path() + "/config"));
    AppPaths::setAppDir(dir.path());
    const QString tmp = dir.path() + "/config/lastAddr.tmp";

    // At first start the file is made with what the program had.
    QCOMPARE(LastPath::remember(QString()), QString());
    QVERIFY(QFile::exists(tmp));
    LastPath::store("/home/pilot/Alder-bench.cfg");
    QFile f(tmp);
    QVERIFY(f.open(QIODevice::ReadOnly));
    QCOMPARE(f.readAll(), QByteArray("/home/pilot/Alder-bench.cfg")); // no line end
    f.close();
    QCOMPARE(LastPath::remember("/elsewhere.cfg"), QStringLiteral("/home/pilot/Alder-bench.cfg"));
    LastPath::store("/a.cfg");
    QCOMPARE(LastPath::remember(QString()), QStringLiteral("/a.cfg")); // truncated, not appended
    AppPaths::setAppDir(QString());
}

// Found by fuzz_configfiles: the codec dropped a leading byte order mark
// as a header, so a stored path that began with U+FEFF came back without it.
void TestParameterFile::lastPathKeepsWhatItStarts_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("path");
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf/m\xc3\xa9t.cfg")
                                     << QChar(0xFEFF) + QString::fromUtf8("/m\xc3\xa9t.cfg");
    QTest::newRow("ends at NUL") << QByteArray("/a.cfg\0/b.cfg", 13) << QStringLiteral("/a.cfg");
}

void TestParameterFile::lastPathKeepsWhatItStarts()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, path);
    QTemporaryDir dir;
    QVERIFY(QDir().mkpath(dir.path() + "/config"));
    AppPaths::setAppDir(dir.path());
    QFile f(dir.path() + "/config/lastAddr.tmp");
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(bytes);
    f.close();

    QCOMPARE(LastPath::remember(QString()), path);
    LastPath::store(path);
    QCOMPARE(LastPath::remember(QString()), path);
    AppPaths::setAppDir(QString());
}

QTEST_GUILESS_MAIN(TestParameterFile)
#include "tst_parameterfile.moc"
