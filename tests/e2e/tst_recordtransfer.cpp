// The command-line tool's record moves without a unit: fixed values in sign
// and magnitude, a plan cut down to a file's parts, the check of a read-back
// against the file, and the notice of the window's other reading.
#include "DeviceData.h"
#include "FrameCutter.h"
#include "RecordTransfer.h"

#include <QtTest>

namespace
{

FileParts::Parts partsOf(std::initializer_list<FileParts::Part> list)
{
    FileParts::Parts parts;
    for (FileParts::Part p : list)
        parts.set(p);
    return parts;
}

// Code and payload of each frame of a plan.
QVector<QPair<quint8, QByteArray>> frames(const RequestPlan &plan)
{
    QVector<QPair<quint8, QByteArray>> out;
    FrameCutter cutter;
    for (const Request &r : plan)
        cutter.feed(r.frame, [&](quint8 code, const QByteArray &payload) { out.append({ code, payload }); });
    return out;
}

QByteArray fixedValuesFile(const QByteArray &port1, const QByteArray &port2)
{
    QByteArray body;
    for (int port = 0; port < 2; ++port) {
        const QByteArray tag = port == 0 ? "sbus1Default" : "sbus2Default";
        body += "<" + tag + ">\r\n";
        for (const char *child : { "phase", "fineTuning", "leftTrip", "rightTrip", "safeProtectionState",
                 "safeProtectionValue", "channelMap" })
            body += QByteArray("<") + child + ">0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</" + child + ">\r\n";
        body += "<noneValue>" + (port == 0 ? port1 : port2) + "</noneValue>\r\n</" + tag + ">\r\n";
    }
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n" + body + "</body>\r\n";
}

} // namespace

class TestRecordTransfer : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void fixedValuesTravelInSignAndMagnitude();
    void planKeepsOnlyTheFilesParts();
    void verifyNamesOnlyWrittenFieldsTheUnitHolds();
    void windowsOtherReadingIsNoticed_data();
    void windowsOtherReadingIsNoticed();
};

void TestRecordTransfer::fixedValuesTravelInSignAndMagnitude()
{
    DeviceData d;
    d.noneValue[0][14] = -20;
    d.noneValue[0][15] = 30;
    d.noneValue[1][0] = -127;
    d.noneValue[1][14] = -50;
    d.fineTuning[1][2] = -8;
    const AllPayloads all = RecordTransfer::allPayloads(d, 0, 0);
    QCOMPARE(all.sbus[0].at(1), QByteArray(15, '\0') + "\x94\x1e");
    QCOMPARE(
        all.sbus[1].at(1), QByteArray("\x01\xff", 2) + QByteArray(13, '\0') + "\xb2" + QByteArray(1, '\0'));
    QCOMPARE(quint8(all.sbus[1].at(0).at(3)), quint8(0x88));
    // What the unit holds after taking them: the record's own numbers.
    const DeviceData held = RecordTransfer::afterWriting(Sequences::writeAll(all), 0, 0);
    QCOMPARE(held.noneValue[0][14], -20);
    QCOMPARE(held.noneValue[1][0], -127);
    QCOMPARE(held.noneValue[1][14], -50);
}

void TestRecordTransfer::planKeepsOnlyTheFilesParts()
{
    DeviceData d;
    d.m_module = 1;
    d.hidOutput = 1;
    const RequestPlan all = Sequences::writeAll(RecordTransfer::allPayloads(d, 0, 1));
    using namespace FileParts;
    const RequestPlan some = RecordTransfer::onlyParts(
        all, partsOf({ Sbus2, HidMode, ModuleSwitch }), RecordTransfer::partOfWrite);
    QVector<QPair<quint8, QByteArray>> expected { { 0xA4, QByteArray() }, { 0xA8, QByteArray() },
        { 0x18, QByteArray(1, 1) }, { 0x39, QByteArray(2, 0) } };
    const auto got = frames(some);
    QCOMPARE(got.size(), 4);
    for (int i = 0; i < 4; ++i)
        QCOMPARE(got.at(i).first, expected.at(i).first);
    // Port 2's groups, not port 1's.
    QCOMPARE(int(got.at(0).second.at(0)), 1);
    QCOMPARE(int(got.at(1).second.at(0)), 1);
    QCOMPARE(got.at(2).second, expected.at(2).second);

    // The read of a part: port 2 only, no device search.
    RequestPlan reads;
    for (int section = 0; section < SectionCount; ++section)
        reads += Sequences::readGroup(section);
    QVector<quint8> readCodes;
    for (const auto &f : frames(
             RecordTransfer::onlyParts(reads, partsOf({ Sbus2, SerialStream }), RecordTransfer::partOfRead)))
        readCodes << f.first;
    QCOMPARE(readCodes, (QVector<quint8> { 0xA3, 0xA7, 0xD7, 0xD9 }));
}

void TestRecordTransfer::verifyNamesOnlyWrittenFieldsTheUnitHolds()
{
    DeviceData file;
    file.noneValue[0][14] = -20;
    file.hidOutput = 1;
    file.keyGear[20] = 2;
    file.sbusControl[0][1] = 1; // a file may say 1 where the unit reads 16
    DeviceData unit;
    unit.noneValue[0][14] = 20;
    unit.hidOutput = 0;
    unit.sbusControl[0][1] = 16;
    using namespace FileParts;
    QCOMPARE(RecordTransfer::verify(file, unit, partsOf({ Sbus1, KeyKinds, SbusControl }), 0),
        QStringList { QStringLiteral("SBUS 1 CH15 fixed value: -20 \u2192 20") });
    // Larch has a 21st key.
    QCOMPARE(RecordTransfer::verify(file, unit, partsOf({ KeyKinds, HidMode }), 3),
        (QStringList { QStringLiteral("key 21 kind: three-state \u2192 one-state"),
            QStringLiteral("HID mode: communication \u2192 game controller") }));
    QCOMPARE(RecordTransfer::verify(file, unit, partsOf({ Sbus2, Baud }), 3), QStringList());
}

void TestRecordTransfer::windowsOtherReadingIsNoticed_data()
{
    QTest::addColumn<QByteArray>("port1");
    QTest::addColumn<QByteArray>("port2");
    QTest::addColumn<QString>("notice");
    const QByteArray zeros = "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;";
    QTest::newRow("0 to 127 on both ports") << QByteArray("0,1,127,5,0,0,0,0,0,0,0,0,0,0,0,0;")
                                            << QByteArray("127,0,0,0,0,0,0,0,0,0,0,0,0,0,0,9;") << QString();
    // -128 is the one negative value port 1's rule leaves as it is.
    QTest::newRow("port 1 -128") << QByteArray("-128,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;") << zeros << QString();
    QTest::newRow("negative on port 1, above 127 on port 2")
        << QByteArray("0,0,0,0,0,0,0,0,0,0,0,0,0,0,-20,30;")
        << QByteArray("200,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;")
        << "(SBUS 1 CH15 -20 as -236, SBUS 2 CH1 200 as -72)";
    QTest::newRow("more than four")
        << QByteArray("-1,-2,-3,0,0,0,0,0,0,0,0,0,0,0,0,0;")
        << QByteArray("-1,-2,0,0,0,0,0,0,0,0,0,0,0,0,0,0;")
        << "(SBUS 1 CH1 -1 as -239, SBUS 1 CH2 -2 as -238, SBUS 1 CH3 -3 as -237, SBUS "
           "2 CH1 -1 as 129, 1 more)";
}

void TestRecordTransfer::windowsOtherReadingIsNoticed()
{
    QFETCH(QByteArray, port1);
    QFETCH(QByteArray, port2);
    QFETCH(QString, notice);
    const QString line = RecordTransfer::windowReadsFixedValuesOtherwise(fixedValuesFile(port1, port2));
    if (notice.isEmpty()) {
        QCOMPARE(line, QString());
        return;
    }
    QCOMPARE(line,
        QStringLiteral("notice: the window's Load Config reads fixed values otherwise than written %1; "
                       "quillmark-cli uses the numbers as written")
            .arg(notice));
}

QTEST_GUILESS_MAIN(TestRecordTransfer)
#include "tst_recordtransfer.moc"
