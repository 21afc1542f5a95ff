// quillmark-cli gives back what it saved: for every model and radio module
// kind, a file restored onto one virtual unit backs up byte for byte as that
// file, and that backup restored onto a second unit (still at its factory
// values) backs up byte for byte again. Negative fixed values and trims of
// both ports travel, which the window's own file rules would change.
#include "CustomOutputCodec.h"
#include "DeviceData.h"
#include "RecordFile.h"
#include "VunitProcess.h"

#include <QHash>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <vector>

namespace
{

const QStringList kModels { "ALDER", "BIRCH", "CEDAR", "LARCH", "MAPLE", "ROWAN", "WILLO" };
constexpr int kLarch = 3;

struct Run {
    int exitCode = -1;
    QString err;
};

// Runs the tool once per argument list, all at the same time (each talks to
// its own unit), and waits for every one.
QVector<Run> cliAll(const QVector<QStringList> &argLists)
{
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const QStringList &args : argLists) {
        auto p = std::make_unique<QProcess>();
        p->start(QStringLiteral(QM_CLI_BIN), args);
        p->closeWriteChannel();
        processes.push_back(std::move(p));
    }
    QVector<Run> runs;
    for (auto &p : processes) {
        Run r;
        if (p->waitForFinished(120000) && p->exitStatus() == QProcess::NormalExit)
            r.exitCode = p->exitCode();
        r.err = QString::fromUtf8(p->readAllStandardError());
        runs.append(r);
    }
    return runs;
}

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

// A unit state unlike the virtual unit's factory setup in every group, in
// the form a backup writes it (failsafes as magnitude and sign bit, the
// unit's 4 and 2 for an extended and a remote CAN frame). Values differ from
// channel to channel and from port to port, so a swapped or dropped field
// shows.
DeviceData changedUnit(int model, int kind)
{
    DeviceData d;
    d.m_module = kind;
    for (int p = 0; p < kSbusPorts; ++p) {
        for (int c = 0; c < kChannels; ++c) {
            d.phase[p][c] = (c + p) % 3 == 0;
            d.fineTuning[p][c] = (c % 2 ? -1 : 1) * (7 * c + 3 * p + 1); // up to -109
            d.leftTrip[p][c] = 150 - 4 * c - p;
            d.rightTrip[p][c] = 60 + 5 * c + p;
            const bool failsafe = (c + p) % 4 != 1;
            d.safeProtectionValue[p][c] = failsafe ? 9 * c + p : kFailsafeOff;
            d.safeProtectionState[p][c] = failsafe && c % 3 == 1;
            d.channelMap[p][c] = c % 5 == 4 ? kChannelMapNone : (c + 3 * p) % 12;
            // Both signs on both ports, the ends of the byte included.
            d.noneValue[p][c] = (c % 2 ? -1 : 1) * ((11 * c + 5 * p + 2) % 128);
        }
        d.noneValue[p][15] = p == 0 ? -127 : 127;
        d.noneValue[p][13] = p == 0 ? -1 : -100;
        d.sbusHoldSwitch[p] = p == 0 ? 3 : kNoSelection;
        for (int pos = 0; pos < kHoldPositions; ++pos)
            for (int c = 0; c < kChannels; ++c)
                d.sbusHold[p][pos][c] = (c + pos + p) % 4 == 0;
    }
    for (int k = 0; k < kKeyCombinations; ++k) {
        d.ckeyMap[k][0] = k == 4 ? kNoSelection : k + 1;
        d.ckeyMap[k][1] = k == 4 ? kNoSelection : 11 - k;
        d.ckeyMap[k][2] = 20 + k;
    }
    for (int s = 0; s < kSuperKeys; ++s) {
        for (int j = 0; j < 6; ++j) {
            d.sckeyMap[s][j] = (s + j) % 3 == 2 ? kNoSelection : 2 * j + s;
            d.sckeyMap[s][6 + j] = (j % 2 ? -1 : 1) * (17 * j + 5 * s + 3);
        }
    }
    const int keys = model == kLarch ? 24 : 12;
    for (int k = 0; k < keys; ++k)
        d.keyGear[k] = (k + 2) % 3;
    for (int i = 0; i < kHidAxes; ++i)
        d.hidMap[i] = 7 - i;
    d.hidOutput = 1;
    d.throttleIndex = 4;
    d.throttleData = 2;
    d.throttleDataValues[0] = -72;
    d.throttleDataValues[1] = 0.7;
    d.throttleDataValues[2] = 5;
    d.freeWarning = 12;
    d.lowVoltage = 6.4;
    d.baud = 57600;
    d.externalInput = 1;
    d.sbusOutput[0] = 0;
    d.sbusOutput[1] = 1;
    d.sbusPriority = 0x13;
    d.sbusVersion = 0x60;
    d.sbusControlSwitch = 2;
    // As the unit reads them back: low-nibble flags 1, high-nibble flags 16.
    const int control[3][4] = { { 1, 0, 0, 16 }, { 0, 16, 1, 0 }, { 1, 16, 1, 16 } };
    std::copy(&control[0][0], &control[0][0] + 12, &d.sbusControl[0][0]);
    d.modulePowerState[0] = 0;
    d.modulePowerState[1] = 1;
    d.modulePhysicalCtl[0] = 3;
    d.modulePhysicalCtl[1] = 9;
    if (kind == 2) {
        d.PyxGOutputMode = CustomOutputCodec::kModeRs232;
        d.TTLEnable = true;
        d.CANEnable = false;
        d.CANFrequency = 125;
        d.CANBaud = QStringLiteral("250K");
        CanFrameList::resize(d, 2);
        for (int i = 0; i < 2; ++i) {
            CanFrameRecord &f = d.canFrames[i];
            f.standardId = quint16(0x300 + 0x11 * i);
            f.extendedId = 0x12345678u + quint32(i);
            f.ide = i == 0 ? 4 : 0;
            f.rtr = i == 1 ? 2 : 0;
            f.dlc = quint8(6 + i);
            f.dataMask = quint8(0x3F + i);
            f.nonlinearMask = quint8(0x05 << i);
            for (int j = 0; j < 8; ++j) {
                for (int b = 0; b < 8; ++b) {
                    f.bitMap[j][b][0] = quint8((j + b + i) % 5 == 0 ? kCanChannelNone : (j * 8 + b) % 30);
                    f.bitMap[j][b][1] = quint8((j * b + i) % 3);
                }
                f.byteMap[j][0] = quint8(7 - j);
                f.byteMap[j][1] = quint8(j == 3 ? kCanChannelNone : j + 10 * i);
                f.byteMap[j][2] = quint8(j * 3 + i);
            }
        }
        TtlStream &s = d.TTLStream;
        s.header[CustomOutputCodec::kTtlFrequency] = 100;
        s.header[CustomOutputCodec::kTtlFrameHead] = 0xA5;
        s.header[CustomOutputCodec::kTtlFrameEnd] = 0x5A;
        s.header[CustomOutputCodec::kTtlFormat] = CustomOutputCodec::ttlFormatByte({ 2, 3, true });
        s.range[0] = quint16(qint16(-500));
        s.range[1] = 2500;
        for (int i = 0; i < kTtlTableSize; ++i) {
            s.table1[i] = i % 3 == 0;
            s.table2[i] = quint8((5 * i + 1) % 40);
        }
    }
    return d;
}

// Two of the files written out by hand: ALDER without a radio module, and
// LARCH (24 key kinds, keys 16..24 first on the wire) with the output module.
const QByteArray kAlderKind0
    = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n"
      "<sbus1Default>\r\n"
      "<phase>0,1,1,0,0,0,0,0,0,0,0,0,0,0,0,1;</phase>\r\n"
      "<fineTuning>-12,7,0,-125,1,0,0,0,0,0,0,0,0,0,0,-3;</fineTuning>\r\n"
      "<leftTrip>100,120,90,150,100,100,100,100,100,100,100,100,100,100,0,100;</leftTrip>\r\n"
      "<rightTrip>110,100,60,150,100,100,100,100,100,100,100,100,100,100,100,0;</rightTrip>\r\n"
      "<safeProtectionState>1,0,1,0,0,0,0,0,0,0,0,0,0,0,0,0;</safeProtectionState>\r\n"
      "<safeProtectionValue>40,255,150,0,255,255,255,255,255,255,255,255,255,255,255,120;</"
      "safeProtectionValue>\r\n"
      "<channelMap>3,2,1,0,254,5,6,7,8,9,254,254,254,254,254,254;</channelMap>\r\n"
      "<noneValue>0,0,0,0,-20,0,0,0,0,0,127,-127,-1,100,-100,55;</noneValue>\r\n"
      "</sbus1Default>\r\n"
      "<sbus2Default>\r\n"
      "<phase>1,0,0,0,0,0,0,0,0,0,0,0,0,0,1,0;</phase>\r\n"
      "<fineTuning>0,-8,64,0,0,0,0,0,0,0,0,0,0,0,-127,127;</fineTuning>\r\n"
      "<leftTrip>100,100,80,100,100,100,100,100,100,100,100,100,100,100,100,100;</leftTrip>\r\n"
      "<rightTrip>100,100,120,100,100,100,100,100,100,100,100,100,100,100,100,100;</rightTrip>\r\n"
      "<safeProtectionState>0,1,0,0,0,0,0,0,0,0,0,0,0,0,0,1;</safeProtectionState>\r\n"
      "<safeProtectionValue>255,75,255,255,255,255,255,255,255,255,255,255,255,255,255,5;</"
      "safeProtectionValue>\r\n"
      "<channelMap>0,1,2,3,4,5,6,7,8,9,10,11,12,13,254,254;</channelMap>\r\n"
      "<noneValue>0,0,0,0,0,0,0,0,0,0,0,0,0,0,-50,-126;</noneValue>\r\n"
      "</sbus2Default>\r\n"
      "<sbusHoldSwitch>255,2;</sbusHoldSwitch>\r\n"
      "<sbus1-0>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus1-0>\r\n"
      "<sbus2-0>1,1,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus2-0>\r\n"
      "<sbus1-1>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus1-1>\r\n"
      "<sbus2-1>0,0,1,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus2-1>\r\n"
      "<sbus1-2>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus1-2>\r\n"
      "<sbus2-2>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1;</sbus2-2>\r\n"
      "<ckeyMap>2,3,7;0,5,15;255,255,1;255,255,1;1,0,2;</ckeyMap>\r\n"
      "<sckeyMap>6,7,255,255,255,255,-45,90,0,0,0,0;0,1,2,255,255,255,10,-10,-100,0,0,0;</sckeyMap>\r\n"
      "<keyGear>2,0,1,1,0,2,0,0,0,0,1,2,0,0,0,0,0,0,0,0,0,0,0,0;</keyGear>\r\n"
      "<hidMap>4,5,6,7,0,1,2,3;</hidMap>\r\n"
      "<hidOutput>1</hidOutput>\r\n"
      "<throttleHoldSwitch>255</throttleHoldSwitch>\r\n"
      "<throttleData>1,45,2,10;</throttleData>\r\n"
      "<freeWarning>30</freeWarning>\r\n"
      "<lowVoltage>10.95</lowVoltage>\r\n"
      "<baud>9600</baud>\r\n"
      "<externalInput>1</externalInput>\r\n"
      "<sbusOutput>1,0;</sbusOutput>\r\n"
      "<sbusPriority>18</sbusPriority>\r\n"
      "<sbusVersion>160</sbusVersion>\r\n"
      "<sbusControlSwitch>3</sbusControlSwitch>\r\n"
      "<sbusControl-0>0,1,1,0;</sbusControl-0>\r\n"
      "<sbusControl-1>1,0,0,0;</sbusControl-1>\r\n"
      "<sbusControl-2>0,0,0,1;</sbusControl-2>\r\n"
      "</body>\r\n";

QByteArray larchFrame()
{
    // Frame 0: standard id 0x2A0, extended id 0x1ABCDEF0, extended and data,
    // 5 bytes, bytes 0..4 in use, bytes 1 and 3 bit by bit.
    QByteArray f = "0,672,448585456,4,0,5,31,10";
    for (int j = 0; j < 8; ++j)
        for (int b = 0; b < 8; ++b)
            f += j == 1 && b < 3 ? QByteArray(",") + QByteArray::number(20 + b) + ",1" : QByteArray(",254,0");
    f += ",0,2,9,1,254,0,2,4,3,3,254,0,4,6,1,5,254,0,6,254,0,7,254,0";
    return f;
}

QByteArray larchKind2()
{
    QByteArray stream = "80,2,3,33,65436,1000";
    for (int i = 0; i < 40; ++i)
        stream += i < 8 || i == 39 ? ",1" : ",0";
    for (int i = 0; i < 40; ++i)
        stream += "," + QByteArray::number(i < 8 ? 8 - i : 0);
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n"
           "<sbus1Default>\r\n"
           "<phase>0,0,0,1,0,0,0,0,0,0,0,0,0,0,0,0;</phase>\r\n"
           "<fineTuning>9,-9,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</fineTuning>\r\n"
           "<leftTrip>100,100,100,100,100,100,100,100,100,100,100,100,100,100,100,100;</leftTrip>\r\n"
           "<rightTrip>100,100,100,100,100,100,100,100,100,100,100,100,100,100,100,140;</rightTrip>\r\n"
           "<safeProtectionState>0,0,1,0,0,0,0,0,0,0,0,0,0,0,0,0;</safeProtectionState>\r\n"
           "<safeProtectionValue>0,255,35,255,255,255,255,255,255,255,255,255,255,255,255,255;</"
           "safeProtectionValue>\r\n"
           "<channelMap>0,1,2,3,4,5,6,7,8,9,254,254,254,254,254,254;</channelMap>\r\n"
           "<noneValue>0,0,0,0,0,0,0,0,0,0,-90,90,0,0,-20,30;</noneValue>\r\n"
           "</sbus1Default>\r\n"
           "<sbus2Default>\r\n"
           "<phase>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</phase>\r\n"
           "<fineTuning>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,-66;</fineTuning>\r\n"
           "<leftTrip>100,100,100,100,100,100,100,100,100,100,100,100,100,100,100,100;</leftTrip>\r\n"
           "<rightTrip>100,100,100,100,100,100,100,100,100,100,100,100,100,100,100,100;</rightTrip>\r\n"
           "<safeProtectionState>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</safeProtectionState>\r\n"
           "<safeProtectionValue>255,255,255,255,255,255,255,255,255,255,255,255,255,255,255,255;</"
           "safeProtectionValue>\r\n"
           "<channelMap>9,8,7,6,5,4,3,2,1,0,254,254,254,254,254,254;</channelMap>\r\n"
           "<noneValue>0,0,0,0,0,0,0,0,0,0,-7,0,0,0,-127,126;</noneValue>\r\n"
           "</sbus2Default>\r\n"
           "<sbusHoldSwitch>0,1;</sbusHoldSwitch>\r\n"
           "<sbus1-0>0,0,1,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus1-0>\r\n"
           "<sbus2-0>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus2-0>\r\n"
           "<sbus1-1>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus1-1>\r\n"
           "<sbus2-1>0,0,0,1,1,0,0,0,0,0,0,0,0,0,0,0;</sbus2-1>\r\n"
           "<sbus1-2>1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1;</sbus1-2>\r\n"
           "<sbus2-2>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</sbus2-2>\r\n"
           "<ckeyMap>0,1,10;2,3,5;255,255,1;255,255,1;255,255,1;</ckeyMap>\r\n"
           "<sckeyMap>4,5,255,255,255,255,-37,100,0,0,0,0;255,255,255,255,255,255,0,0,0,0,0,0;</sckeyMap>\r\n"
           "<keyGear>0,1,2,0,0,0,0,0,0,0,0,0,0,0,1,2,2,0,0,0,0,0,0,1;</keyGear>\r\n"
           "<hidMap>0,1,2,3,4,5,6,7;</hidMap>\r\n"
           "<hidOutput>0</hidOutput>\r\n"
           "<throttleHoldSwitch>1</throttleHoldSwitch>\r\n"
           "<throttleData>1,-30,1.5,3;</throttleData>\r\n"
           "<freeWarning>5</freeWarning>\r\n"
           "<lowVoltage>7.05</lowVoltage>\r\n"
           "<baud>230400</baud>\r\n"
           "<externalInput>0</externalInput>\r\n"
           "<sbusOutput>1,1;</sbusOutput>\r\n"
           "<sbusPriority>33</sbusPriority>\r\n"
           "<sbusVersion>144</sbusVersion>\r\n"
           "<sbusControlSwitch>0</sbusControlSwitch>\r\n"
           "<sbusControl-0>1,1,0,0;</sbusControl-0>\r\n"
           "<sbusControl-1>1,0,0,1;</sbusControl-1>\r\n"
           "<sbusControl-2>0,1,1,1;</sbusControl-2>\r\n"
           "<PyxGOutputMode>2</PyxGOutputMode>\r\n"
           "<TTLEnable>0</TTLEnable>\r\n"
           "<CANEnable>1</CANEnable>\r\n"
           "<CANFrequency>50</CANFrequency>\r\n"
           "<CANBaud>1M</CANBaud>\r\n"
           "<CANFrameCnt>1</CANFrameCnt>\r\n"
           "<CANFrame>"
        + larchFrame()
        + "</CANFrame>\r\n"
          "<TTLStream>"
        + stream + "</TTLStream></body>\r\n";
}

struct Combo {
    QString model;
    int kind = 0;
    QByteArray restored; // the file restored onto the first unit
    bool handWritten = false;
    QString folder;
    std::unique_ptr<VunitProcess> first;
    std::unique_ptr<VunitProcess> second;
    QVector<Run> runs;
    QByteArray firstBackup;
    QByteArray secondBackup;
};

QString rowName(const QString &model, int kind)
{
    return QStringLiteral("%1 module %2").arg(model).arg(kind);
}

} // namespace

class TestCliRoundTrip : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void backupRestoreBackupIsByteIdentical_data();
    void backupRestoreBackupIsByteIdentical();
    void cleanupTestCase();

private:
    QTemporaryDir m_dir;
    QHash<QString, std::shared_ptr<Combo>> m_combos;
};

// Every combination runs here, seven at a time (one module kind, every
// model), each step of the seven at once: the steps wait on the unit's
// pacing, not on the processor.
void TestCliRoundTrip::initTestCase()
{
    QVERIFY(m_dir.isValid());
    for (int kind = 0; kind < 3; ++kind) {
        QVector<std::shared_ptr<Combo>> batch;
        for (int m = 0; m < kModels.size(); ++m) {
            auto c = std::make_shared<Combo>();
            c->model = kModels.at(m);
            c->kind = kind;
            c->folder = m_dir.filePath(QStringLiteral("%1-%2").arg(c->model).arg(kind));
            QVERIFY(QDir().mkpath(c->folder + "/first") && QDir().mkpath(c->folder + "/second"));
            if (c->model == "ALDER" && kind == 0) {
                c->restored = kAlderKind0;
                c->handWritten = true;
            } else if (c->model == "LARCH" && kind == 2) {
                c->restored = larchKind2();
                c->handWritten = true;
            } else {
                c->restored = RecordFile::text(changedUnit(m, kind)).toLatin1();
            }
            QVERIFY(writeFile(c->folder + "/restored.cfg", c->restored));
            const QStringList unitArgs { "--model", c->model, "--module", QString::number(kind) };
            c->first = std::make_unique<VunitProcess>(c->folder + "/first");
            c->second = std::make_unique<VunitProcess>(c->folder + "/second");
            QVERIFY(c->first->start(unitArgs));
            QVERIFY(c->second->start(unitArgs));
            batch.append(c);
            m_combos.insert(rowName(c->model, kind), c);
        }
        auto step = [&](const std::function<QStringList(const Combo &)> &args) {
            QVector<QStringList> lists;
            for (const auto &c : batch)
                lists.append(args(*c));
            const QVector<Run> runs = cliAll(lists);
            for (int i = 0; i < batch.size(); ++i)
                batch[i]->runs.append(runs.at(i));
        };
        step([](const Combo &c) {
            return QStringList { "restore", "--yes", "--port", c.first->linkPath(),
                c.folder + "/restored.cfg" };
        });
        step([](const Combo &c) {
            return QStringList { "backup", "--port", c.first->linkPath(), c.folder + "/first.cfg" };
        });
        step([](const Combo &c) {
            return QStringList { "restore", "--yes", "--port", c.second->linkPath(),
                c.folder + "/first.cfg" };
        });
        step([](const Combo &c) {
            return QStringList { "backup", "--port", c.second->linkPath(), c.folder + "/second.cfg" };
        });
        for (const auto &c : batch) {
            c->firstBackup = readFile(c->folder + "/first.cfg");
            c->secondBackup = readFile(c->folder + "/second.cfg");
            c->first->terminate();
            c->second->terminate();
        }
    }
}

void TestCliRoundTrip::cleanupTestCase()
{
    m_combos.clear();
}

void TestCliRoundTrip::backupRestoreBackupIsByteIdentical_data()
{
    QTest::addColumn<QString>("row");
    for (int kind = 0; kind < 3; ++kind)
        for (const QString &model : kModels)
            QTest::newRow(qPrintable(rowName(model, kind))) << rowName(model, kind);
}

void TestCliRoundTrip::backupRestoreBackupIsByteIdentical()
{
    QFETCH(QString, row);
    const std::shared_ptr<Combo> c = m_combos.value(row);
    QVERIFY(c);
    QCOMPARE(c->runs.size(), 4);
    for (const Run &r : c->runs)
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
    // The restore verified itself against the file.
    QVERIFY2(c->runs.at(0).err.contains("verified: "), qPrintable(c->runs.at(0).err));
    QVERIFY2(c->runs.at(2).err.contains("verified: "), qPrintable(c->runs.at(2).err));
    // The first unit gives back the file it was given, the second the first's backup.
    QCOMPARE(c->firstBackup.split('\n'), c->restored.split('\n'));
    QCOMPARE(c->secondBackup.split('\n'), c->firstBackup.split('\n'));
}

QTEST_GUILESS_MAIN(TestCliRoundTrip)
#include "tst_cli_roundtrip.moc"
