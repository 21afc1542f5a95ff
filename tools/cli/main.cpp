// quillmark-cli: the unit without a window. Lists ports, identifies the unit,
// backs it up to a parameter file, restores one, and compares files with
// each other or with the unit.
#include "AppPaths.h"
#include "BusyWait.h"
#include "DeviceData.h"
#include "FileParts.h"
#include "ModelDefaults.h"
#include "ParameterFile.h"
#include "PortFile.h"
#include "RecordDiff.h"
#include "RecordFile.h"
#include "RecordTransfer.h"
#include "UnitSession.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLoggingCategory>
#include <QSaveFile>
#include <QSerialPortInfo>
#include <QTextStream>

#include <cstdio>

namespace
{

// Exit codes: diff's 1 for "different"; 2 for every error; 3 for a restore
// whose read-back differs from the file.
constexpr int kOk = 0;
constexpr int kDifferent = 1;
constexpr int kError = 2;
constexpr int kNotVerified = 3;

constexpr int kAnswerWaitMs = 3000;

QTextStream &out()
{
    static QTextStream s(stdout);
    return s;
}

QTextStream &err()
{
    static QTextStream s(stderr);
    return s;
}

int fail(const QString &message)
{
    err() << "quillmark-cli: " << message << Qt::endl;
    return kError;
}

void progress(const QString &what)
{
    err() << "quillmark-cli: " << what << Qt::endl;
}

const char kUsage[] = "Usage:\n"
                      "  quillmark-cli ports\n"
                      "  quillmark-cli identify [--port P]\n"
                      "  quillmark-cli backup [--port P] FILE.cfg\n"
                      "  quillmark-cli restore [--port P] FILE.cfg [--yes] [--no-verify]\n"
                      "  quillmark-cli diff A.cfg B.cfg\n"
                      "  quillmark-cli diff [--port P] FILE.cfg\n"
                      "The port is config/port.xml's when --port is not given; any device path works,\n"
                      "symbolic links to a pseudo-terminal included.\n"
                      "Files are read with every number as written; restore writes the groups the file\n"
                      "holds (and names those it lacks), then reads them back and compares them with the\n"
                      "file (--no-verify: no read-back).\n"
                      "Exit status: 0 done (diff: equal), 1 diff: different (restore: declined), 2 error,\n"
                      "3 restore: the unit's read-back differs from the file (the fields are listed).\n";

struct Context {
    QString port;
    bool yes = false;
    bool verify = true;
    QStringList args; // after the command
};

bool portName(const Context &c, QString *name, QString *error)
{
    if (!c.port.isEmpty()) {
        *name = c.port;
        return true;
    }
    const QString file = AppPaths::userFile(QStringLiteral("/config/port.xml"));
    const std::optional<QStringList> names = readPortNames(file);
    if (!names || names->isEmpty()) {
        *error = QStringLiteral("no --port given and no port in %1").arg(file);
        return false;
    }
    *name = names->constLast(); // a later port element replaces an earlier one
    return true;
}

// Opens and identifies the unit.
int connectUnit(const Context &c, UnitSession &unit)
{
    QString name;
    QString error;
    if (!portName(c, &name, &error) || !unit.open(name, &error))
        return fail(error);
    // The unit needs a moment after the port opens before it answers.
    busyWait(kStartupDelayMs);
    if (!unit.identify(kAnswerWaitMs, &error))
        return fail(error);
    return kOk;
}

int readUnit(UnitSession &unit, DeviceData &data, const FileParts::Parts *only = nullptr)
{
    QString error;
    if (!unit.readAll(data, kAnswerWaitMs, progress, &error, only))
        return fail(error + QStringLiteral("; nothing written"));
    return kOk;
}

// A parameter file as the tool reads it: every number as written (the
// window's Load Config converts some fixed values; a notice says when), and
// the parts it holds completely.
struct File {
    QString path;
    QByteArray bytes;
    DeviceData data;
    FileParts::Parts parts;
};

bool loadFile(const QString &path, File *file, QString *error)
{
    if (!RecordTransfer::checkFile(path, error))
        return false;
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: %2").arg(path, f.errorString());
        return false;
    }
    file->path = path;
    file->bytes = f.readAll();
    ParameterFile::loadBytes(file->bytes, file->data, ParameterFile::FixedValues::AsWritten);
    file->parts = FileParts::inFile(file->bytes);
    const QString notice = RecordTransfer::windowReadsFixedValuesOtherwise(file->bytes);
    if (!notice.isEmpty())
        progress(path + QStringLiteral(": ") + notice);
    return true;
}

// The file's output module settings decide its module kind: the window
// writes them only for a unit that carries the module.
int fileModuleKind(const File &file)
{
    return file.bytes.contains("<PyxGOutputMode>") ? 2 : 1;
}

// The restore of a record's parts: its write frames, in the write-all's order.
RequestPlan restorePlan(const DeviceData &data, const FileParts::Parts &parts, int model, int moduleKind)
{
    return RecordTransfer::onlyParts(
        Sequences::writeAll(RecordTransfer::allPayloads(data, model, moduleKind)), parts,
        RecordTransfer::partOfWrite);
}

// A record's parts as the unit would hold them after a restore.
DeviceData restored(const DeviceData &data, const FileParts::Parts &parts, int model, int moduleKind)
{
    return RecordTransfer::afterWriting(restorePlan(data, parts, model, moduleKind), model, moduleKind);
}

int printDifferences(const QStringList &lines)
{
    for (const QString &l : lines)
        out() << l << Qt::endl;
    return lines.isEmpty() ? kOk : kDifferent;
}

int ports(const Context &)
{
    for (const QSerialPortInfo &info : QSerialPortInfo::availablePorts()) {
        out() << info.systemLocation();
        if (!info.description().isEmpty())
            out() << "\t" << info.description();
        if (!info.manufacturer().isEmpty())
            out() << " (" << info.manufacturer() << ")";
        out() << Qt::endl;
    }
    return kOk;
}

int identify(const Context &c)
{
    UnitSession unit;
    if (const int rc = connectUnit(c, unit))
        return rc;
    out() << unit.identifier() << Qt::endl;
    out() << "radio module kind " << unit.moduleKind() << Qt::endl;
    return kOk;
}

int backup(const Context &c)
{
    if (c.args.size() != 1)
        return fail(QStringLiteral("backup takes one FILE.cfg"));
    UnitSession unit;
    if (const int rc = connectUnit(c, unit))
        return rc;
    // Identification is not part of the backup's count or time.
    const int identifyRequests = unit.requestsSent();
    QElapsedTimer timer;
    timer.start();
    DeviceData data;
    if (const int rc = readUnit(unit, data))
        return rc;
    // Written whole or not at all: a broken read never leaves a file behind
    // that looks complete.
    QSaveFile file(c.args.first());
    if (!file.open(QIODevice::WriteOnly))
        return fail(QStringLiteral("%1: %2").arg(c.args.first(), file.errorString()));
    file.write(RecordFile::text(data).toLocal8Bit());
    if (!file.commit())
        return fail(QStringLiteral("%1: %2").arg(c.args.first(), file.errorString()));
    progress(QStringLiteral("%1 backed up to %2: %3 requests in %4 ms")
                 .arg(unit.identifier(), c.args.first())
                 .arg(unit.requestsSent() - identifyRequests)
                 .arg(timer.elapsed()));
    return kOk;
}

bool askYes(const QString &question)
{
    err() << question << " [y/N] " << Qt::flush;
    QTextStream in(stdin);
    const QString answer = in.readLine().trimmed().toLower();
    return answer == QLatin1String("y") || answer == QLatin1String("yes");
}

int restore(const Context &c)
{
    if (c.args.size() != 1)
        return fail(QStringLiteral("restore takes one FILE.cfg"));
    File file;
    QString error;
    if (!loadFile(c.args.first(), &file, &error))
        return fail(error);
    UnitSession unit;
    if (const int rc = connectUnit(c, unit))
        return rc;
    const int model = unit.model();
    const int kind = unit.moduleKind();
    const FileParts::Parts unitParts = FileParts::ofModuleKind(kind);
    const FileParts::Parts written = file.parts & unitParts;
    if (written.none())
        return fail(QStringLiteral("%1 holds none of the settings of %2; nothing written")
                        .arg(file.path, unit.identifier()));
    if ((unitParts & ~file.parts).any())
        progress(QStringLiteral("not in %1, not written: %2")
                     .arg(file.path, FileParts::names(unitParts & ~file.parts)));
    const RequestPlan plan = restorePlan(file.data, written, model, kind);
    if (!c.yes) {
        DeviceData current;
        if (const int rc = readUnit(unit, current, &written))
            return rc;
        const QStringList changes = RecordDiff::differences(
            restored(current, written, model, kind), RecordTransfer::afterWriting(plan, model, kind));
        if (changes.isEmpty()) {
            out() << "The unit already holds these values; nothing written." << Qt::endl;
            return kOk;
        }
        printDifferences(changes);
        if (!askYes(QStringLiteral("Write %1 change(s) to %2?").arg(changes.size()).arg(unit.identifier()))) {
            out() << "Nothing written." << Qt::endl;
            return kDifferent;
        }
    }
    QElapsedTimer timer;
    timer.start();
    const QStringList refused = unit.write(plan, progress);
    for (const QString &r : refused)
        err() << "quillmark-cli: the unit refused " << r << Qt::endl;
    progress(QStringLiteral("%1 written to %2: %3 frames in %4 ms")
                 .arg(file.path, unit.identifier())
                 .arg(plan.size())
                 .arg(timer.elapsed()));
    const int writeStatus = refused.isEmpty() ? kOk : kError;
    if (!c.verify)
        return writeStatus;
    // What the unit holds now, group by group, against the file.
    DeviceData readBack;
    if (!unit.readAll(readBack, kAnswerWaitMs, progress, &error, &written))
        return fail(error + QStringLiteral("; the restore is not verified"));
    const QStringList differing = RecordTransfer::verify(file.data, readBack, written, model);
    if (differing.isEmpty()) {
        progress(QStringLiteral("verified: %1 holds what %2 says").arg(unit.identifier(), file.path));
        return writeStatus;
    }
    for (const QString &l : differing)
        out() << l << Qt::endl;
    progress(QStringLiteral("verify: %1 field(s) of %2 differ from %3 (file \u2192 unit)")
                 .arg(differing.size())
                 .arg(unit.identifier(), file.path));
    return writeStatus == kOk ? kNotVerified : writeStatus;
}

int diff(const Context &c)
{
    QString error;
    if (c.args.size() == 2 && c.port.isEmpty()) {
        File a;
        File b;
        if (!loadFile(c.args.at(0), &a, &error) || !loadFile(c.args.at(1), &b, &error))
            return fail(error);
        QStringList lines;
        for (int p = 0; p < FileParts::PartCount; ++p) {
            if (a.parts.test(size_t(p)) != b.parts.test(size_t(p)))
                lines << QStringLiteral("%1: only in %2")
                             .arg(FileParts::name(FileParts::Part(p)),
                                 a.parts.test(size_t(p)) ? a.path : b.path);
        }
        // Compared as a unit would hold them; Larch's layout carries all 24 key kinds.
        constexpr int kAllKeys = 3;
        const FileParts::Parts both = a.parts & b.parts;
        lines += RecordDiff::differences(restored(a.data, both, kAllKeys, fileModuleKind(a)),
            restored(b.data, both, kAllKeys, fileModuleKind(b)));
        return printDifferences(lines);
    }
    if (c.args.size() != 1)
        return fail(QStringLiteral("diff takes A.cfg B.cfg, or [--port P] FILE.cfg"));
    File file;
    if (!loadFile(c.args.first(), &file, &error))
        return fail(error);
    UnitSession unit;
    if (const int rc = connectUnit(c, unit))
        return rc;
    const FileParts::Parts unitParts = FileParts::ofModuleKind(unit.moduleKind());
    const FileParts::Parts compared = file.parts & unitParts;
    if ((unitParts & ~file.parts).any())
        progress(QStringLiteral("not in %1, not compared: %2")
                     .arg(file.path, FileParts::names(unitParts & ~file.parts)));
    DeviceData current;
    if (const int rc = readUnit(unit, current, &compared))
        return rc;
    return printDifferences(
        RecordDiff::differences(restored(current, compared, unit.model(), unit.moduleKind()),
            restored(file.data, compared, unit.model(), unit.moduleKind())));
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    app.setApplicationName(QStringLiteral("quillmark-cli"));
    // The layers' developer texts stay out of the tool's output unless asked for.
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        QLoggingCategory::setFilterRules(QStringLiteral("quillmark.*.debug=false"));

    QCommandLineParser p;
    p.setApplicationDescription(QString::fromLatin1(kUsage));
    const QCommandLineOption help({ QStringLiteral("h"), QStringLiteral("help") }, QStringLiteral("Show this help."));
    const QCommandLineOption port(QStringLiteral("port"), QStringLiteral("Serial port of the unit."), QStringLiteral("P"));
    const QCommandLineOption yes(QStringLiteral("yes"), QStringLiteral("restore: write without asking."));
    const QCommandLineOption noVerify(
        QStringLiteral("no-verify"), QStringLiteral("restore: do not read the written groups back."));
    p.addOptions({ help, port, yes, noVerify });
    p.addPositionalArgument(QStringLiteral("command"), QStringLiteral("ports, identify, backup, restore or diff"));
    if (!p.parse(app.arguments())) {
        fail(p.errorText());
        err() << kUsage;
        return kError;
    }
    if (p.isSet(help)) {
        out() << p.helpText();
        return kOk;
    }
    QStringList args = p.positionalArguments();
    if (args.isEmpty()) {
        err() << kUsage;
        return kError;
    }
    Context c;
    const QString command = args.takeFirst();
    c.port = p.value(port);
    c.yes = p.isSet(yes);
    c.verify = !p.isSet(noVerify);
    c.args = args;

    const QHash<QString, int (*)(const Context &)> commands { { QStringLiteral("ports"), ports },
        { QStringLiteral("identify"), identify }, { QStringLiteral("backup"), backup },
        { QStringLiteral("restore"), restore }, { QStringLiteral("diff"), diff } };
    const auto run = commands.value(command, nullptr);
    if (!run) {
        fail(QStringLiteral("unknown command %1").arg(command));
        err() << kUsage;
        return kError;
    }
    return run(c);
}
