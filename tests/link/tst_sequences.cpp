#include "Sequences.h"

#include <QtTest>

namespace {
// A plan written as "frame/wait frame/wait ..." in hex, for readable rows.
QString describe(const RequestPlan &plan)
{
    QStringList parts;
    for (const Request &r : plan)
        parts << QString::fromLatin1(r.frame.toHex()) + QLatin1Char('/') + QString::number(r.waitMs);
    return parts.join(QLatin1Char(' '));
}

QList<QByteArray> payloads(int count, int size = 3)
{
    QList<QByteArray> list;
    for (int i = 0; i < count; ++i)
        list << QByteArray(size, char(0x10 + i));
    return list;
}

// The code byte of each frame of a plan.
QString codes(const RequestPlan &plan)
{
    QStringList list;
    for (const Request &r : plan)
        list << QString::fromLatin1(r.frame.mid(1, 1).toHex());
    return list.join(QLatin1Char(' '));
}
} // namespace

Q_DECLARE_METATYPE(RequestPlan)

class TestSequences : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void fixedSequences_data();
    void fixedSequences();
    void writeSection_data();
    void writeSection();
    void writeAllSkipsMalformedGroups();
};

void TestSequences::fixedSequences_data()
{
    QTest::addColumn<RequestPlan>("plan");
    QTest::addColumn<QString>("expected");

    QTest::newRow("identify") << Sequences::identifyUnit() << "fadf00005f/100 faff00005f/100";
    QTest::newRow("model page upload") << Sequences::startModelPageUpload() << "fae5020002325f/100";
    QTest::newRow("show hub") << Sequences::showHub() << "fae400005f/200 faa30100005f/100 faa70100005f/100";
    QTest::newRow("closing") << Sequences::closing() << "fae400005f/100 faad0100005f/100";
    QTest::newRow("menu sbus 1") << Sequences::menu(SectionSbus1)
                                 << "fae400005f/100 faad0100005f/100 faa30100005f/100 faa70100005f/100";
    QTest::newRow("menu sbus 2") << Sequences::menu(SectionSbus2)
                                 << "fae400005f/100 faad0100005f/100 faa30100015f/100 faa70100015f/100";
    QTest::newRow("menu channel hold keeps the upload running")
        << Sequences::menu(SectionChannelHold) << "fae5020001325f/100 faad0100005f/100 fab40100005f/100";
    QTest::newRow("menu buttons") << Sequences::menu(SectionButtons)
                                  << "fae400005f/100 faad0100005f/100 fac000005f/100 fac200005f/100 "
                                     "faca00005f/100";
    QTest::newRow("menu comprehensive")
        << Sequences::menu(SectionComprehensive)
        << "fae400005f/100 faad0100015f/100 fae5020001325f/100 fac600005f/100 fa1700005f/100 "
           "fab60100005f/100 fae900005f/100 faeb00005f/100 fa1300005f/100 fa1900005f/100 fac400005f/100 "
           "fafe00005f/100 fa3000005f/100 fa3200005f/100 fa3400005f/100";
    QTest::newRow("menu radio module") << Sequences::menu(SectionRadioModule)
                                       << "fae400005f/100 faad0100005f/100 fa3600005f/100 fa3800005f/100";
    QTest::newRow("menu custom output")
        << Sequences::menu(SectionCustomOutput)
        << "fae400005f/100 faad0100005f/100 fa1500005f/100 fad100005f/100 fad300005f/100 "
           "fad501000a5f/100 fad700005f/100 fad900005f/100 fa2400005f/100";
    QTest::newRow("read group of no section") << Sequences::readGroup(7) << "";
    QTest::newRow("read group of a negative section") << Sequences::readGroup(-1) << "";
    QTest::newRow("factory reset re-reads the page after 500 ms")
        << Sequences::factoryReset(SectionChannelHold) << "faea00005f/500 fab40100005f/100";
    QTest::newRow("calibration start") << Sequences::startCalibration() << "fae600005f/0";
    QTest::newRow("calibration finish") << Sequences::finishCalibration() << "fae700005f/0";
    QTest::newRow("ground module reset") << Sequences::moduleGroundReset() << "fa1100005f/0";
    QTest::newRow("air module reset") << Sequences::moduleAirReset() << "fa1200005f/0";
    QTest::newRow("search devices") << Sequences::searchDevices() << "fafe00005f/0";
    QTest::newRow("CAN refresh of no frames sends nothing") << Sequences::canFrameRefresh(0) << "";
    QTest::newRow("CAN refresh of two frames")
        << Sequences::canFrameRefresh(2)
        << "fad50100005f/100 fadb0100005f/100 fa200100005f/100 fadd0100005f/100 fa220100005f/100 "
           "fad50100015f/100 fadb0100015f/100 fa200100015f/100 fadd0100015f/100 fa220100015f/100";
}

void TestSequences::fixedSequences()
{
    QFETCH(RequestPlan, plan);
    QFETCH(QString, expected);
    QCOMPARE(describe(plan), expected);
}

void TestSequences::writeSection_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<QList<QByteArray>>("payloads");
    QTest::addColumn<int>("canFrameCount");
    QTest::addColumn<int>("canFrameList");
    QTest::addColumn<QString>("codes"); // "-": nothing is sent

    QTest::newRow("sbus 1") << 0 << payloads(2) << 0 << 0 << "a4 a8";
    QTest::newRow("sbus 2") << 1 << payloads(2) << 0 << 0 << "a4 a8";
    QTest::newRow("sbus with three payloads") << 0 << payloads(3) << 0 << 0 << "-";
    QTest::newRow("channel hold") << 2 << payloads(1) << 0 << 0 << "b5";
    QTest::newRow("buttons") << 3 << payloads(3) << 0 << 0 << "c1 c3 cb";
    QTest::newRow("comprehensive") << 4 << payloads(11) << 0 << 0 << "c7 18 b7 e8 ec 14 1a c5 31 33 35";
    QTest::newRow("comprehensive with ten payloads sends nothing") << 4 << payloads(10) << 0 << 0 << "-";
    QTest::newRow("radio module") << 5 << payloads(2) << 0 << 0 << "37 39";
    QTest::newRow("custom output without CAN frames") << 6 << payloads(7) << 0 << 0 << "16 d2 d4 d6 d8 da 25";
    QTest::newRow("custom output with two CAN frames")
        << 6 << payloads(16) << 2 << 2 << "16 d2 d4 d6 d6 d8 da dc dc de de 21 21 23 23 25";
    QTest::newRow("custom output counted from the frame list") << 6 << payloads(7) << 0 << 2 << "-";
    QTest::newRow("no section") << 7 << payloads(2) << 0 << 0 << "-";
}

void TestSequences::writeSection()
{
    QFETCH(int, section);
    QFETCH(QList<QByteArray>, payloads);
    QFETCH(int, canFrameCount);
    QFETCH(int, canFrameList);
    QFETCH(QString, codes);

    const std::optional<RequestPlan> plan = Sequences::writeSection(section, payloads, canFrameCount, canFrameList);
    if (codes == QLatin1String("-")) {
        QVERIFY(!plan);
        return;
    }
    QVERIFY(plan);
    QCOMPARE(::codes(*plan), codes);
    for (const Request &r : *plan)
        QCOMPARE(r.waitMs, 100);
}

// The one-byte writes carry the first byte, 0x35 is the fixed 12-byte frame.
void TestSequences::writeAllSkipsMalformedGroups()
{
    AllPayloads all;
    all.sbus[0] = payloads(2);
    all.sbus[1] = payloads(1); // wrong: left out
    all.channelHold = payloads(1);
    all.buttons = payloads(3);
    all.comprehensive = payloads(11, 2);
    all.radioModule = payloads(2);
    all.customOutput = payloads(7);
    all.moduleKind = 1;
    const RequestPlan plan = Sequences::writeAll(all);
    QCOMPARE(codes(plan), QStringLiteral("a4 a8 b5 c1 c3 cb c7 18 b7 e8 ec 14 1a c5 31 33 35 37 39"));
    QCOMPARE(plan.at(7).frame.toHex(), QByteArray("fa180100115f"));
    QCOMPARE(plan.at(16).frame.toHex(), QByteArray("fa350700 1a1a5f0000000000").replace(' ', ""));

    all.moduleKind = 2;
    QCOMPARE(codes(Sequences::writeAll(all)).right(20), QStringLiteral("16 d2 d4 d6 d8 da 25"));
}

QTEST_APPLESS_MAIN(TestSequences)
#include "tst_sequences.moc"
