// quillmark-cli against the virtual unit over a real pty: backups of every
// model and module kind that the window's loader reads back, a restore whose
// backup gives the restored file again, diffs that name exactly the changed
// fields, a restore that checks itself, a file of some groups only, and the
// failures a user meets.
#include "DeviceData.h"
#include "ParameterFile.h"
#include "RecordFile.h"
#include "VunitProcess.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

struct Run {
    int exitCode = -1;
    QString out;
    QString err;
};

Run cli(const QStringList &args, const QByteArray &input = QByteArray())
{
    QProcess p;
    p.start(QStringLiteral(QM_CLI_BIN), args);
    p.write(input);
    p.closeWriteChannel();
    Run r;
    if (!p.waitForFinished(60000))
        return r;
    r.exitCode = p.exitCode();
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    r.err = QString::fromUtf8(p.readAllStandardError());
    return r;
}

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

// One field changed in each group of a factory backup of the virtual unit
// (module kind 1), with what the diff says about it.
struct Edit {
    QByteArray from;
    QByteArray to;
    QString line;
};
const QVector<Edit> &edits()
{
    static const QVector<Edit> e {
        { "<fineTuning>5,-5,", "<fineTuning>5,-9,", "SBUS 1 CH2 trim: -5 → -9" },
        { "<sbusHoldSwitch>1,255;", "<sbusHoldSwitch>1,0;", "SBUS 2 hold switch: none → switch 1" },
        { "<ckeyMap>0,1,10;", "<ckeyMap>0,1,12;", "combination 1 step: 10 → 12" },
        { "<hidOutput>0<", "<hidOutput>1<", "HID mode: game controller → communication" },
        { "<lowVoltage>7.05<", "<lowVoltage>7.4<", "low-voltage alarm (V): 7.05 → 7.4" },
        { "<modulePowerState>1,1<", "<modulePowerState>0,1<", "module power: on → off" },
    };
    return e;
}

} // namespace

class TestCliE2e : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void backupReadsBackIntoTheSameRecord_data();
    void backupReadsBackIntoTheSameRecord();
    void restoreThenBackupGivesTheRestoredFile();
    void restoreReadsBackAndNamesWhatTheUnitDoesNotHold();
    void restoreOfSomeGroupsWritesOnlyThoseAndNamesTheRest();
    void failuresAreNamedAndExitNonZero();
};

void TestCliE2e::backupReadsBackIntoTheSameRecord_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<int>("module");
    const QStringList models { "ALDER", "BIRCH", "CEDAR", "LARCH", "MAPLE", "ROWAN", "WILLO" };
    for (int i = 0; i < models.size(); ++i)
        QTest::addRow("%s module %d", qPrintable(models.at(i)), i % 3) << models.at(i) << i % 3;
}

void TestCliE2e::backupReadsBackIntoTheSameRecord()
{
    QFETCH(QString, model);
    QFETCH(int, module);
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.start({ "--model", model, "--module", QString::number(module) }));

    const Run id = cli({ "identify", "--port", unit.linkPath() });
    QCOMPARE(id.exitCode, 0);
    QCOMPARE(id.out, QStringLiteral("%1\nradio module kind %2\n").arg(model).arg(module));

    const QString file = dir.filePath("unit.cfg");
    const Run backup = cli({ "backup", "--port", unit.linkPath(), file });
    QVERIFY2(backup.exitCode == 0, qPrintable(backup.err));
    const QByteArray text = readFile(file);

    // The virtual unit's factory values, as its pages would show them.
    QVERIFY(text.startsWith("<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n<sbus1Default>\r\n"));
    QVERIFY(text.contains("<fineTuning>5,-5,0,12,0,0,0,0,0,0,0,0,0,0,0,0;</fineTuning>\r\n"));
    QVERIFY(text.contains("<safeProtectionState>0,0,1,0,"));
    QVERIFY(text.contains("<safeProtectionValue>0,255,100,255,"));
    QVERIFY(text.contains("<noneValue>0,0,0,0,0,0,0,0,0,0,0,0,0,0,-20,30;</noneValue>"));
    QVERIFY(text.contains("<sbus1-2>1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1;</sbus1-2>"));
    QCOMPARE(text.contains("<modulePowerState>"), module == 1);
    QCOMPARE(text.contains("<PyxGOutputMode>2</PyxGOutputMode>"), module == 2);
    QCOMPARE(text.contains("<CANFrameCnt>1</CANFrameCnt>\r\n<CANFrame>0,"), module == 2);
    QVERIFY(text.endsWith("</body>\r\n"));

    // The window's loader takes it into a record that saves the same file,
    // apart from the fixed values the loader converts on purpose.
    DeviceData loaded;
    QVERIFY(ParameterFile::load(file, loaded));
    loaded.m_module = module;
    auto withoutFixedValues = [](QByteArray t) {
        QByteArrayList lines = t.split('\n');
        lines.erase(std::remove_if(lines.begin(), lines.end(),
                        [](const QByteArray &l) { return l.startsWith("<noneValue>"); }),
            lines.end());
        return lines.join('\n');
    };
    QCOMPARE(withoutFixedValues(RecordFile::text(loaded).toLatin1()), withoutFixedValues(text));
    // The reader's two conversions of negative fixed values: port 1 -20 becomes
    // -(0xEC & 0xEF) = -236, port 2 -50 becomes 50 + 128.
    QCOMPARE(loaded.noneValue[0][14], -236);
    QCOMPARE(loaded.noneValue[1][14], 178);
}

void TestCliE2e::restoreThenBackupGivesTheRestoredFile()
{
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.start({ "--model", "CEDAR", "--module", "1" }));
    const QString factory = dir.filePath("factory.cfg");
    QCOMPARE(cli({ "backup", "--port", unit.linkPath(), factory }).exitCode, 0);

    QByteArray edited = readFile(factory);
    QStringList expectedLines;
    for (const Edit &e : edits()) {
        QVERIFY2(edited.contains(e.from), e.from.constData());
        edited.replace(e.from, e.to);
        expectedLines.append(e.line);
    }
    const QString changed = dir.filePath("changed.cfg");
    writeFile(changed, edited);

    // Two files: exactly the fields changed, and equal files are equal.
    const Run diff = cli({ "diff", factory, changed });
    QCOMPARE(diff.exitCode, 1);
    QCOMPARE(diff.out.split('\n', Qt::SkipEmptyParts), expectedLines);
    QCOMPARE(cli({ "diff", factory, factory }).exitCode, 0);

    // A sign is a difference: -20 and 20 are different fixed values.
    QByteArray positive = readFile(factory);
    positive.replace(
        "<noneValue>0,0,0,0,0,0,0,0,0,0,0,0,0,0,-20,30;", "<noneValue>0,0,0,0,0,0,0,0,0,0,0,0,0,0,20,30;");
    const QString positiveFile = dir.filePath("positive.cfg");
    writeFile(positiveFile, positive);
    const Run sign = cli({ "diff", factory, positiveFile });
    QCOMPARE(sign.exitCode, 1);
    QCOMPARE(sign.out, QStringLiteral("SBUS 1 CH15 fixed value: -20 → 20\n"));
    // The factory file's negative fixed values are ones the window's Load
    // Config reads otherwise: one line says so.
    QVERIFY2(
        sign.err.contains("factory.cfg: notice: the window's Load Config reads fixed values otherwise than "
                          "written (SBUS 1 CH15 -20 as -236, SBUS 2 CH15 -50 as 178)"),
        qPrintable(sign.err));

    // Without --yes the tool shows what would change and asks; "n" writes nothing.
    const int before = unit.record().size();
    const Run declined = cli({ "restore", "--port", unit.linkPath(), changed }, "n\n");
    QCOMPARE(declined.exitCode, 1);
    QVERIFY(declined.out.contains("SBUS 2 hold switch: none → switch 1"));
    // The fixed values are the unit's own: nothing to change there.
    QVERIFY2(!declined.out.contains("fixed value"), qPrintable(declined.out));
    QCOMPARE(unit.find(0xA4, QByteArray(), before), -1);

    const Run restored = cli({ "restore", "--port", unit.linkPath(), changed, "--yes" });
    QCOMPARE(restored.exitCode, 0);
    QVERIFY2(restored.err.contains("verified: CEDAR holds what"), qPrintable(restored.err));
    // Port 1's fixed values went out in sign and magnitude: -20 is 0x94.
    QVERIFY(unit.find(0xA8, QByteArray(15, '\0') + "\x94\x1e", before) > 0);
    // The write-all of a unit with the module power page, in its order.
    const QVector<quint8> writes { 0xA4, 0xA8, 0xA4, 0xA8, 0xB5, 0xC1, 0xC3, 0xCB, 0xC7, 0x18, 0xB7, 0xE8, 0xEC,
        0x14, 0x1A, 0xC5, 0x31, 0x33, 0x35, 0x37, 0x39 };
    const QVector<VunitProcess::RecordLine> record = unit.record();
    int at = unit.find(0xA4, QByteArray(), before + 1);
    QVERIFY(at > 0);
    for (quint8 code : writes)
        QCOMPARE(record.at(at++).code, code);

    const QString again = dir.filePath("again.cfg");
    QCOMPARE(cli({ "backup", "--port", unit.linkPath(), again }).exitCode, 0);
    QCOMPARE(readFile(again), edited);
    QCOMPARE(cli({ "diff", "--port", unit.linkPath(), again }).exitCode, 0);
}

// A value the unit cannot hold: the read-back after the write names it and
// the tool ends with its own status. -236 is what the window's Load Config
// leaves of port 1's -20; a fixed value travels as at most 127.
void TestCliE2e::restoreReadsBackAndNamesWhatTheUnitDoesNotHold()
{
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.start({ "--model", "ROWAN", "--module", "0" }));
    const QString factory = dir.filePath("factory.cfg");
    QCOMPARE(cli({ "backup", "--port", unit.linkPath(), factory }).exitCode, 0);
    QByteArray text = readFile(factory);
    QVERIFY(text.contains("<noneValue>0,0,0,0,0,0,0,0,0,0,0,0,0,0,-20,30;"));
    text.replace(
        "<noneValue>0,0,0,0,0,0,0,0,0,0,0,0,0,0,-20,30;", "<noneValue>0,0,0,0,0,0,0,0,0,0,0,0,0,0,-236,30;");
    const QString windowSaved = dir.filePath("window.cfg");
    writeFile(windowSaved, text);

    const Run checked = cli({ "restore", "--yes", "--port", unit.linkPath(), windowSaved });
    QCOMPARE(checked.exitCode, 3);
    QCOMPARE(checked.out, QStringLiteral("SBUS 1 CH15 fixed value: -236 → -127\n"));
    QVERIFY2(checked.err.contains("verify: 1 field(s) of ROWAN differ from"), qPrintable(checked.err));

    // Without the read-back the same restore ends as done.
    const int before = unit.record().size();
    const Run unchecked = cli({ "restore", "--yes", "--no-verify", "--port", unit.linkPath(), windowSaved });
    QCOMPARE(unchecked.exitCode, 0);
    QVERIFY(!unchecked.err.contains("verif"));
    // Nothing was read after the last write.
    const QVector<VunitProcess::RecordLine> record = unit.record();
    QVERIFY(record.size() > before);
    QCOMPARE(record.constLast().code, quint8(0x35)); // the write-all's last frame for a unit of kind 0
}

// A file of some groups only (a backup of what the window had read): the
// restore writes those groups and names the ones it leaves alone; the unit's
// other settings stay.
void TestCliE2e::restoreOfSomeGroupsWritesOnlyThoseAndNamesTheRest()
{
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.start({ "--model", "BIRCH", "--module", "1" }));
    const QByteArray part
        = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n"
          "<sbus2Default>\r\n"
          "<phase>1,1,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</phase>\r\n"
          "<fineTuning>-4,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</fineTuning>\r\n"
          "<leftTrip>90,100,100,100,100,100,100,100,100,100,100,100,100,100,100,100;</leftTrip>\r\n"
          "<rightTrip>100,100,100,100,100,100,100,100,100,100,100,100,100,100,100,100;</rightTrip>\r\n"
          "<safeProtectionState>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0;</safeProtectionState>\r\n"
          "<safeProtectionValue>255,255,255,255,255,255,255,255,255,255,255,255,255,255,255,255;"
          "</safeProtectionValue>\r\n"
          "<channelMap>1,0,254,254,254,254,254,254,254,254,254,254,254,254,254,254;</channelMap>\r\n"
          "<noneValue>0,0,-33,0,0,0,0,0,0,0,0,0,0,0,0,0;</noneValue>\r\n"
          "</sbus2Default>\r\n"
          "<hidOutput>1</hidOutput>\r\n"
          "<modulePhysicalCtl>2,4</modulePhysicalCtl>\r\n"
          "</body>\r\n";
    const QString file = dir.filePath("part.cfg");
    writeFile(file, part);
    const int before = unit.record().size();
    const Run r = cli({ "restore", "--yes", "--port", unit.linkPath(), file });
    QVERIFY2(r.exitCode == 0, qPrintable(r.err));
    QVERIFY2(r.err.contains("not in " + file
                 + ", not written: SBUS 1 channel settings, channel hold, key "
                   "combinations, super keys, key kinds, HID mapping, throttle hold, idle "
                   "warning, low-voltage alarm, baud rate, external SBUS input, SBUS "
                   "outputs, SBUS priorities, SBUS protocols, SBUS control, module power\n"),
        qPrintable(r.err));
    QVERIFY2(r.err.contains("verified: BIRCH holds what"), qPrintable(r.err));

    // The writes: port 2's two groups, the HID mode, the module power switch.
    const QVector<quint8> writeAll { 0xA4, 0xA8, 0xB5, 0xC1, 0xC3, 0xCB, 0xC7, 0x18, 0xB7, 0xE8, 0xEC, 0x14,
        0x1A, 0xC5, 0x31, 0x33, 0x35, 0x37, 0x39 };
    QVector<quint8> writes;
    const QVector<VunitProcess::RecordLine> record = unit.record();
    for (int i = before; i < record.size(); ++i) {
        if (writeAll.contains(record.at(i).code))
            writes.append(record.at(i).code);
    }
    QCOMPARE(writes, (QVector<quint8> { 0xA4, 0xA8, 0x18, 0x39 }));
    QVERIFY(unit.find(0xA8, QByteArray("\x01\x00\x00\xa1", 4) + QByteArray(13, '\0'), before) > 0);

    // The unit now: the file's groups, and its factory values elsewhere.
    const QString now = dir.filePath("now.cfg");
    QCOMPARE(cli({ "backup", "--port", unit.linkPath(), now }).exitCode, 0);
    const QByteArray after = readFile(now);
    QVERIFY(after.contains(part.mid(
        part.indexOf("<sbus2Default>"), part.indexOf("<hidOutput>") - part.indexOf("<sbus2Default>"))));
    QVERIFY(after.contains("<hidOutput>1</hidOutput>\r\n"));
    QVERIFY(after.contains("<modulePhysicalCtl>2,4</modulePhysicalCtl>\r\n"));
    QVERIFY(after.contains("<fineTuning>5,-5,0,12,0,0,0,0,0,0,0,0,0,0,0,0;</fineTuning>\r\n"));
    QVERIFY(after.contains("<modulePowerState>1,1</modulePowerState>\r\n"));
}

void TestCliE2e::failuresAreNamedAndExitNonZero()
{
    QTemporaryDir dir;
    const Run missing = cli({ "identify", "--port", dir.filePath("nothing-here") });
    QCOMPARE(missing.exitCode, 2);
    QVERIFY2(missing.err.contains("no serial port"), qPrintable(missing.err));

    VunitProcess unit(dir.path());
    QVERIFY(unit.start({ "--model", "ALDER", "--refuse", "0xC2" }));
    const QString file = dir.filePath("unit.cfg");
    const Run refused = cli({ "backup", "--port", unit.linkPath(), file });
    QCOMPARE(refused.exitCode, 2);
    QVERIFY2(refused.err.contains("no answer to 0xC2 super keys"), qPrintable(refused.err));
    QVERIFY(!QFile::exists(file));

    writeFile(file, "<body><sbus1Default>");
    const Run broken = cli({ "diff", file, file });
    QCOMPARE(broken.exitCode, 2);
    QVERIFY(broken.err.contains("unit.cfg:1:"));
}

QTEST_GUILESS_MAIN(TestCliE2e)
#include "tst_cli_e2e.moc"
