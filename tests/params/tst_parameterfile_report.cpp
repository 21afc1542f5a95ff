// How far a parameter file load got: the elements taken and the line where a
// damaged file stopped the reading, which the window tells the user.
#include "DeviceData.h"
#include "ParameterFile.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

const QByteArray kHead = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n";

QByteArray channelGroup(const char *name, const char *values)
{
    return QByteArray("<") + name + ">" + values + "</" + name + ">\r\n";
}

QByteArray defaults(const char *container, int children)
{
    static const char *const names[] = { "phase", "fineTuning", "leftTrip", "rightTrip",
        "safeProtectionState", "safeProtectionValue", "channelMap", "noneValue" };
    QByteArray text = QByteArray("<") + container + ">\r\n";
    for (int i = 8 - children; i < 8; ++i)
        text += channelGroup(names[i], "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16;");
    return text + "</" + container + ">\r\n";
}

} // namespace

class TestParameterFileReport : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void reportsElementsTakenAndWhereDamageStopped_data();
    void reportsElementsTakenAndWhereDamageStopped();
    void missingFileIsNotLoaded();
};

void TestParameterFileReport::reportsElementsTakenAndWhereDamageStopped_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("elements");
    QTest::addColumn<qint64>("stoppedAtLine");

    QTest::newRow("whole file") << kHead + "<hidOutput>1</hidOutput>\r\n<baud>9600</baud>\r\n"
            + defaults("sbus2Default", 8) + "<sbusVersion>2</sbusVersion>\r\n</body>\r\n"
                                << 4 << qint64(0);
    // A container without its eight children is not taken.
    QTest::newRow("seven children are not counted")
        << kHead + defaults("sbus1Default", 7) + "<lowVoltage>3.6</lowVoltage>\r\n</body>\r\n"
        << 1 << qint64(0);
    QTest::newRow("unknown elements only")
        << kHead + "<colour>7</colour>\r\n<hidMapX>1;</hidMapX>\r\n</body>\r\n"
        << 0 << qint64(0);
    QTest::newRow("wrong closing tag on line 5") << kHead
            + "<hidOutput>1</hidOutput>\r\n<baud>9600</baud>\r\n<keyGear>1,2;</hidMap>\r\n<externalInput>1</"
              "externalInput>\r\n</body>\r\n" << 2
                                                 << qint64(5);
    QTest::newRow("cut off after line 4") << kHead + "<hidOutput>1</hidOutput>\r\n<baud>96" << 1 << qint64(4);
    QTest::newRow("not XML at all") << QByteArray("\x01\x02 binary \xff junk") << 0 << qint64(1);
}

void TestParameterFileReport::reportsElementsTakenAndWhereDamageStopped()
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

void TestParameterFileReport::missingFileIsNotLoaded()
{
    QTemporaryDir dir;
    DeviceData data;
    ParameterFile::LoadReport report;
    report.elements = 9;
    QVERIFY(!ParameterFile::load(dir.path() + "/none.cfg", data, ParameterFile::FixedValues::Converted, &report));
    QCOMPARE(report.elements, 9); // untouched: there was no load
}

QTEST_GUILESS_MAIN(TestParameterFileReport)
#include "tst_parameterfile_report.moc"
