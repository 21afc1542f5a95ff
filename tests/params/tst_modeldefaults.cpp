#include "AppPaths.h"
#include "DeviceData.h"
#include "ModelDefaults.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

using Ints = QVector<int>;

namespace
{

template <int N> Ints flat(const int (&a)[N])
{
    return Ints(a, a + N);
}

template <int R, int C> Ints flat(const int (&a)[R][C])
{
    Ints out;
    for (int r = 0; r < R; ++r)
        out += flat(a[r]);
    return out;
}

// Every int field a model file can reach, by a short name; channel groups
// carry their port number.
Ints field(const DeviceData &d, const QString &name)
{
    const QStringList groups { "phase", "fineTuning", "leftTrip", "rightTrip", "safeProtectionState",
        "safeProtectionValue", "channelMap", "noneValue" };
    const int(*arrays[])[kChannels] = { d.phase, d.fineTuning, d.leftTrip, d.rightTrip, d.safeProtectionState,
        d.safeProtectionValue, d.channelMap, d.noneValue };
    for (int g = 0; g < groups.size(); ++g) {
        for (int port = 0; port < kSbusPorts; ++port) {
            if (name == groups.at(g) + QString::number(port + 1))
                return flat(arrays[g][port]);
        }
    }
    if (name == "sbusHoldSwitch")
        return flat(d.sbusHoldSwitch);
    if (name == "throttleIndex")
        return { d.throttleIndex };
    if (name == "baud")
        return { d.baud };
    if (name == "ckeyMap")
        return flat(d.ckeyMap);
    if (name == "sckeyMap")
        return flat(d.sckeyMap);
    if (name == "keyGear")
        return flat(d.keyGear);
    if (name == "hidMap")
        return flat(d.hidMap);
    qFatal("unknown field %s", qPrintable(name));
    return {};
}

const QStringList &allFields()
{
    static const QStringList names = [] {
        QStringList n;
        for (const char *g : { "phase", "fineTuning", "leftTrip", "rightTrip", "safeProtectionState",
                 "safeProtectionValue", "channelMap", "noneValue" })
            n << QString(g) + "1" << QString(g) + "2";
        n << "sbusHoldSwitch"
          << "throttleIndex"
          << "baud"
          << "ckeyMap"
          << "sckeyMap"
          << "keyGear"
          << "hidMap";
        return n;
    }();
    return names;
}

// A record whose every reachable value is 7, so that "unchanged" reads as 7.
DeviceData marked()
{
    DeviceData d;
    for (auto *a : { &d.phase, &d.fineTuning, &d.leftTrip, &d.rightTrip, &d.safeProtectionState,
             &d.safeProtectionValue, &d.channelMap, &d.noneValue })
        std::fill(&(*a)[0][0], &(*a)[0][0] + kSbusPorts * kChannels, 7);
    std::fill(std::begin(d.sbusHoldSwitch), std::end(d.sbusHoldSwitch), 7);
    d.throttleIndex = d.baud = 7;
    std::fill(&d.ckeyMap[0][0], &d.ckeyMap[0][0] + kKeyCombinations * 3, 7);
    std::fill(&d.sckeyMap[0][0], &d.sckeyMap[0][0] + kSuperKeys * 12, 7);
    std::fill(std::begin(d.keyGear), std::end(d.keyGear), 7);
    std::fill(std::begin(d.hidMap), std::end(d.hidMap), 7);
    d.minVolt = 1.5;
    d.maxVolt = 2.5;
    d.channelMapNames = d.holdSwitchNames = d.keyMapNames = d.hidMapNames = d.sbusControlNames
        = QStringList { "old" };
    return d;
}

QString list(const Ints &values)
{
    QStringList items;
    for (int v : values)
        items << QString::number(v);
    return items.join(',') + ';';
}

Ints seq(int from, int count)
{
    Ints out;
    for (int i = 0; i < count; ++i)
        out << from + i;
    return out;
}

QString element(const QString &tag, const QString &text)
{
    return QString("<%1>%2</%1>").arg(tag, text);
}

// A default container with the given children (each a complete element).
QString container(const QString &tag, const QStringList &children)
{
    return QString("<%1>\n%2\n</%1>").arg(tag, children.join('\n'));
}

// The eight channel groups of a port, group g holding 16 values 10 * (g + 1).
QStringList eightGroups()
{
    QStringList children;
    const QStringList tags { "phase", "fineTuning", "leftTrip", "rightTrip", "safeProtectionState",
        "safeProtectionValue", "channelMap", "noneValue" };
    for (int g = 0; g < tags.size(); ++g)
        children << element(tags.at(g), list(Ints(16, 10 * (g + 1))));
    return children;
}

QByteArray document(const QString &body)
{
    return ("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<body>\n" + body + "\n</body>\n").toUtf8();
}

QString annotation(const QStringList &texts,
    const QStringList &tags = { "channelMap", "HoldSwitch", "KeyMap", "HidMap", "SbusControl" })
{
    QStringList children;
    for (int i = 0; i < texts.size(); ++i)
        children << element(tags.at(i), texts.at(i));
    return container("annotation", children);
}

// The controls of each model's channel report, in report order.
const QStringList kModelInputs[] = {
    { "T1", "T2", "T3", "T4", "T5", "T6", "T7", "T8", "LD", "RD", "SA", "SB", "SC", "SD" },
    { "T1", "T2", "T3", "T4", "T5", "T6" },
    { "T1", "T2", "T3", "T4", "LW", "LD", "RD", "RW", "SA", "SB", "SC", "SD", "SE", "SF" },
    { "T1", "T2", "T3", "T4", "LW", "RW", "LD", "A1", "A2", "A3" },
    { "T1", "T2", "T3", "T4", "T5", "T6", "T7", "T8" },
    { "T1", "T2", "T5", "T3", "T4", "T6", "LD", "RD", "SA", "SB", "SC", "SD", "SE", "SF" },
    { "T1", "T2", "T3", "T4", "T5", "T6", "T7", "T8", "LD", "RD", "SA", "SB", "SC", "SD" },
};
const int kModelKeys[] = { 8, 10, 8, 24, 12, 12, 10 };
const int kModelSwitches[] = { 4, 0, 6, 0, 0, 6, 4 };

} // namespace

class TestModelDefaults : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void valuesLandWhereTheyBelong_data();
    void valuesLandWhereTheyBelong();
    void nameLists_data();
    void nameLists();
    void loadingTwiceRepeatsOnlySbusControlNames();
    void hostileFilesLeaveTheRecordSane_data();
    void hostileFilesLeaveTheRecordSane();
    void shippedFilesFitTheirModels_data();
    void shippedFilesFitTheirModels();

private:
    QString write(const QByteArray &content);

    QTemporaryDir m_dir;
    int m_files = 0;
};

QString TestModelDefaults::write(const QByteArray &content)
{
    const QString path = m_dir.filePath(QString("model%1.xml").arg(++m_files));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

void TestModelDefaults::valuesLandWhereTheyBelong_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("field");
    QTest::addColumn<Ints>("expected");

    const Ints unchanged16(16, 7);
    QTest::newRow("keyGear sets only the first twelve of 24")
        << element("keyGear", list(seq(1, 12))) << "keyGear" << seq(1, 12) + Ints(12, 7);
    QTest::newRow("keyGear without ; is ignored") << element("keyGear", "1,2,3") << "keyGear" << Ints(24, 7);
    QTest::newRow("sbusHoldSwitch sets both ports")
        << element("sbusHoldSwitch", "3") << "sbusHoldSwitch" << Ints { 3, 3 };
    QTest::newRow("throttleHoldSwitch")
        << element("throttleHoldSwitch", "255") << "throttleIndex" << Ints { 255 };
    QTest::newRow("baud") << element("baud", " 115200 ") << "baud" << Ints { 115200 };
    QTest::newRow("hidMap") << element("hidMap", list(seq(0, 8))) << "hidMap" << seq(0, 8);
    QTest::newRow("ckeyMap six rows take five")
        << element("ckeyMap", list(seq(1, 3)).repeated(6)) << "ckeyMap"
        << seq(1, 3) + seq(1, 3) + seq(1, 3) + seq(1, 3) + seq(1, 3);
    QTest::newRow("ckeyMap short row keeps the rest")
        << element("ckeyMap", "1;2,3,4,5;") << "ckeyMap" << Ints { 1, 7, 7, 2, 3, 4 } + Ints(9, 7);
    QTest::newRow("ckeyMap unterminated row is no row")
        << element("ckeyMap", "1,2,3;4,5,6") << "ckeyMap" << seq(1, 3) + Ints(12, 7);
    QTest::newRow("sckeyMap three rows take two")
        << element("sckeyMap", list(seq(1, 12)).repeated(3)) << "sckeyMap" << seq(1, 12) + seq(1, 12);
    QTest::newRow("port 1 defaults") << container("sbus1Default", eightGroups()) << "leftTrip1"
                                     << Ints(16, 30);
    QTest::newRow("port 1 defaults leave port 2")
        << container("sbus1Default", eightGroups()) << "leftTrip2" << unchanged16;
    QTest::newRow("eighth group is noneValue")
        << container("sbus2Default", eightGroups()) << "noneValue2" << Ints(16, 80);
    QTest::newRow("seven groups: container ignored")
        << container("sbus1Default", eightGroups().mid(0, 7)) << "phase1" << unchanged16;
    // The groups are taken by position, whatever their names say.
    QStringList swapped = eightGroups();
    swapped.swapItemsAt(0, 7);
    QTest::newRow("swapped children land by position: last")
        << container("sbus1Default", swapped) << "noneValue1" << Ints(16, 10);
    QStringList unknownChild = eightGroups();
    unknownChild.insert(3, element("colour", "1,2,3;"));
    QTest::newRow("unknown child does not count")
        << container("sbus1Default", unknownChild) << "rightTrip1" << Ints(16, 40);
    QStringList wrapped = eightGroups();
    wrapped[2] = "<wrap>" + wrapped[2] + "</wrap>";
    QTest::newRow("group inside a wrapper still counts")
        << container("sbus1Default", wrapped) << "leftTrip1" << Ints(16, 30);
    QStringList noSemicolon = eightGroups();
    noSemicolon[0] = element("phase", "1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1");
    QTest::newRow("group without ; skipped")
        << container("sbus1Default", noSemicolon) << "phase1" << unchanged16;
    QTest::newRow("group without ; skips only itself")
        << container("sbus1Default", noSemicolon) << "fineTuning1" << Ints(16, 20);
    QStringList shortGroup = eightGroups();
    shortGroup[0] = element("phase", "1,2,3;");
    QTest::newRow("short group fills its head")
        << container("sbus1Default", shortGroup) << "phase1" << Ints { 1, 2, 3 } + Ints(13, 7);
    QStringList longGroup = eightGroups();
    longGroup[6] = element("channelMap", list(seq(0, 40)));
    QTest::newRow("long group takes sixteen")
        << container("sbus1Default", longGroup) << "channelMap1" << seq(0, 16);
    QStringList signedNone = eightGroups();
    signedNone[7] = element("noneValue", list(Ints { -5, 133, 255, -128 } + Ints(12, 0)));
    QTest::newRow("noneValue taken as written")
        << container("sbus1Default", signedNone) << "noneValue1" << Ints { -5, 133, 255, -128 } + Ints(12, 0);
    QTest::newRow("element inside unknown elements") << "<a><b>" + element("baud", "9600") + "</b></a>"
                                                     << "baud" << Ints { 9600 };
    QTest::newRow("group tag outside a container is unknown")
        << element("phase", list(Ints(16, 1))) << "phase1" << unchanged16;
    QTest::newRow("document breaks after an element: it stays")
        << "<body>" + element("sbusHoldSwitch", "3") + "<a></b>" + element("throttleHoldSwitch", "4")
        << "sbusHoldSwitch" << Ints { 3, 3 };
    QTest::newRow("document breaks: nothing after it")
        << "<body>" + element("sbusHoldSwitch", "3") + "<a></b>" + element("throttleHoldSwitch", "4")
        << "throttleIndex" << Ints { 7 };
    QTest::newRow("container cut by the end of the document")
        << "<body>" + container("sbus1Default", eightGroups()).chopped(16) << "phase1" << unchanged16;
}

void TestModelDefaults::valuesLandWhereTheyBelong()
{
    QFETCH(QString, body);
    QFETCH(QString, field);
    QFETCH(Ints, expected);

    // A broken document brings its own start and is taken as it stands.
    const QByteArray content = body.startsWith("<body>") ? body.toUtf8() : document(body);
    DeviceData data = marked();
    QVERIFY(loadModelDefaults(write(content), data));
    QCOMPARE(::field(data, field), expected);
}

void TestModelDefaults::nameLists_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QList<QStringList>>("lists");

    using Lists = QList<QStringList>;
    const QStringList five { "0,T1;1,T2;", "255,NONE;0,SA;", "0,F1;255,NONE;", "0,T1;", "255,NONE;0,SA;" };
    QTest::newRow("five lists by position")
        << annotation(five)
        << Lists { { "T1", "T2" }, { "NONE", "SA" }, { "F1", "NONE" }, { "T1" }, { "old", "NONE", "SA" } };
    QTest::newRow("four lists: all ignored, four cleared")
        << annotation(five.mid(0, 4)) << Lists { {}, {}, {}, {}, { "old" } };
    QTest::newRow("six lists: all ignored") << annotation(five + QStringList { "0,X;" },
        { "channelMap", "HoldSwitch", "KeyMap", "HidMap", "SbusControl", "KeyMap" })
                                            << Lists { {}, {}, {}, {}, { "old" } };
    QTest::newRow("another order lands by position")
        << annotation(five, { "KeyMap", "channelMap", "SbusControl", "HoldSwitch", "HidMap" })
        << Lists { { "T1", "T2" }, { "NONE", "SA" }, { "F1", "NONE" }, { "T1" }, { "old", "NONE", "SA" } };
    QTest::newRow("unknown child does not count")
        << container("annotation",
               { element("channelMap", "0,A;"), element("note", "0,Z;"), element("HoldSwitch", "0,B;"),
                   element("KeyMap", "0,C;"), element("HidMap", "0,D;"), element("SbusControl", "0,E;") })
        << Lists { { "A" }, { "B" }, { "C" }, { "D" }, { "old", "E" } };
    QTest::newRow("name cutting") << annotation(
        { "7,A;NAKED;0,;x,y,z;tail", "1,a b;", ";", "", "12,SA;junk;" })
                                  << Lists { { "A", "NAKED", "", "y,z" }, { "a b" }, { "" }, {},
                                         { "old", "SA", "junk" } };
    QTest::newRow("no annotation: four lists cleared")
        << element("baud", "9600") << Lists { {}, {}, {}, {}, { "old" } };
}

void TestModelDefaults::nameLists()
{
    QFETCH(QString, body);
    QFETCH(QList<QStringList>, lists);

    DeviceData data = marked();
    QVERIFY(loadModelDefaults(write(document(body)), data));
    QCOMPARE(data.channelMapNames, lists.at(0));
    QCOMPARE(data.holdSwitchNames, lists.at(1));
    QCOMPARE(data.keyMapNames, lists.at(2));
    QCOMPARE(data.hidMapNames, lists.at(3));
    QCOMPARE(data.sbusControlNames, lists.at(4));
}

// The SBUS control names are never cleared by a load, so every load of the
// same model adds them again; the other lists hold one copy.
void TestModelDefaults::loadingTwiceRepeatsOnlySbusControlNames()
{
    const QString path = write(document(
        annotation({ "0,T1;1,T2;", "255,NONE;0,SA;", "0,F1;255,NONE;", "0,T1;", "255,NONE;0,SA;" })));
    DeviceData data;
    QVERIFY(loadModelDefaults(path, data));
    QVERIFY(loadModelDefaults(path, data));
    QCOMPARE(data.channelMapNames, QStringList({ "T1", "T2" }));
    QCOMPARE(data.holdSwitchNames, QStringList({ "NONE", "SA" }));
    QCOMPARE(data.keyMapNames, QStringList({ "F1", "NONE" }));
    QCOMPARE(data.hidMapNames, QStringList({ "T1" }));
    QCOMPARE(data.sbusControlNames, QStringList({ "NONE", "SA", "NONE", "SA" }));
}

void TestModelDefaults::hostileFilesLeaveTheRecordSane_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("opened");

    QTest::newRow("missing file") << QByteArray() << false;
    QRandomGenerator random(20240611);
    QByteArray junk(4096, '\0');
    for (char &c : junk)
        c = char(random.bounded(256));
    QTest::newRow("binary junk") << junk << true;
    QTest::newRow("junk after a good start")
        << QByteArray("<?xml version=\"1.0\"?><body><keyGear>") + junk << true;
    QTest::newRow("unclosed annotation")
        << document(annotation({ "0,A;", "0,B;", "0,C;", "0,D;", "0,E;" })).left(150) << true;
    QTest::newRow("deep nesting") << QByteArray("<body>") + QByteArray("<a>").repeated(20000) << true;
#if QT_VERSION >= QT_VERSION_CHECK(5, 15, 0)
    // Nested entities that would expand to a billion characters (the XML
    // reader stops expanding them since Qt 5.15).
    QByteArray bomb = "<?xml version=\"1.0\"?><!DOCTYPE b [<!ENTITY e0 \"laughter\">";
    for (int level = 1; level <= 9; ++level)
        bomb += QString("<!ENTITY e%1 \"%2\">")
                    .arg(level)
                    .arg(QString("&e%1;").arg(level - 1).repeated(10))
                    .toUtf8();
    bomb += "]><body><baud>&e9;</baud></body>";
    QTest::newRow("entity bomb") << bomb << true;
#endif
}

void TestModelDefaults::hostileFilesLeaveTheRecordSane()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, opened);

    const QString path = content.isNull() ? m_dir.filePath("absent.xml") : write(content);
    DeviceData data = marked();
    QCOMPARE(loadModelDefaults(path, data), opened);
    const DeviceData before = marked();
    for (const QString &name : allFields())
        QCOMPARE(field(data, name), field(before, name));
    QCOMPARE(data.minVolt, before.minVolt);
    QCOMPARE(data.maxVolt, before.maxVolt);
    // The four lists are emptied before the file is even opened.
    QVERIFY(data.channelMapNames.isEmpty() && data.holdSwitchNames.isEmpty() && data.keyMapNames.isEmpty()
        && data.hidMapNames.isEmpty());
    QCOMPARE(data.sbusControlNames, QStringList { "old" });
}

void TestModelDefaults::shippedFilesFitTheirModels_data()
{
    QTest::addColumn<int>("model");
    for (int model = 0; model < 7; ++model)
        QTest::newRow(qPrintable(modelDefaultsFileName(model))) << model;
}

void TestModelDefaults::shippedFilesFitTheirModels()
{
    QFETCH(int, model);

    const QStringList &inputs = kModelInputs[model];
    DeviceData data;
    QVERIFY(loadModelDefaults(QM_SOURCE_DIR "/config/" + modelDefaultsFileName(model), data));

    // The unit mixes channel map index i from its i-th report word.
    QCOMPARE(data.channelMapNames, inputs);

    QCOMPARE(data.keyMapNames.size(), kModelKeys[model] + 1);
    QCOMPARE(data.keyMapNames.last(), QString("NONE"));
    QCOMPARE(data.keyMapNames.count("NONE"), 1);

    QCOMPARE(data.holdSwitchNames.first(), QString("NONE"));
    const int switches = kModelSwitches[model] ? kModelSwitches[model] : kModelKeys[model];
    QCOMPARE(data.holdSwitchNames.size(), 1 + switches);
    QCOMPARE(data.sbusControlNames, data.holdSwitchNames);
    if (kModelSwitches[model]) {
        for (const QString &name : data.holdSwitchNames.mid(1))
            QVERIFY2(inputs.contains(name), qPrintable(name));
    }

    QCOMPARE(data.hidMapNames, inputs + QStringList { "NONE" });
    for (int axis = 0; axis < kHidAxes; ++axis)
        QCOMPARE(data.hidMap[axis], qMin(axis, int(inputs.size())));

    // A two-cell Li-ion pack.
    QVERIFY(data.minVolt >= 6.0 && data.minVolt < data.maxVolt && data.maxVolt <= 8.4);

    for (int port = 0; port < kSbusPorts; ++port) {
        for (int ch = 0; ch < kChannels; ++ch) {
            QCOMPARE(data.phase[port][ch], 0);
            QCOMPARE(data.fineTuning[port][ch], 0);
            QCOMPARE(data.leftTrip[port][ch], 100);
            QCOMPARE(data.rightTrip[port][ch], 100);
            QCOMPARE(data.safeProtectionState[port][ch], 0);
            QCOMPARE(data.safeProtectionValue[port][ch], kFailsafeOff);
            QCOMPARE(data.channelMap[port][ch], ch < inputs.size() ? ch : kChannelMapNone);
            QCOMPARE(data.noneValue[port][ch], 0);
        }
        QCOMPARE(data.sbusHoldSwitch[port], kNoSelection);
    }
    QCOMPARE(data.throttleIndex, kNoSelection);
    QCOMPARE(data.baud, 115200);
    for (const auto &combination : data.ckeyMap)
        QCOMPARE(Ints(combination, combination + 3), Ints({ kNoSelection, kNoSelection, 1 }));
    for (const auto &superKey : data.sckeyMap)
        QCOMPARE(Ints(superKey, superKey + 12), Ints(6, kNoSelection) + Ints(6, 0));
    QCOMPARE(flat(data.keyGear), Ints(24, 0));
}

QTEST_APPLESS_MAIN(TestModelDefaults)
#include "tst_modeldefaults.moc"
