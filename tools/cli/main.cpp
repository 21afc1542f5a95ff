// quillmark-cli: the unit without a window. Lists ports, identifies the unit,
// backs it up to a parameter file, restores one, and compares files with
// each other or with the unit.
#include "AppPaths.h"
#include "BusyWait.h"
#include "DeviceData.h"
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

// Exit codes: diff's 1 for "different"; 2 for every error.
constexpr int kOk = 0;
constexpr int kDifferent = 1;
constexpr int kError = 2;

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
                      "  quillmark-cli restore [--port P] FILE.cfg [--yes]\n"
                      "  quillmark-cli diff A.cfg B.cfg\n"
                      "  quillmark-cli diff [--port P] FILE.cfg\n"
                      "The port is config/port.xml's when --port is not given; any device path works,\n"
                      "symbolic links to a pseudo-terminal included.\n"
                      "Exit status: 0 done (diff: equal), 1 diff: different, 2 error.\n";

struct Context {
    QString port;
    bool yes = false;
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

int readUnit(UnitSession &unit, DeviceData &data)
{
    QString error;
    if (!unit.readAll(data, kAnswerWaitMs, progress, &error))
        return fail(error + QStringLiteral("; nothing written"));
    return kOk;
}

bool loadFile(const QString &path, DeviceData &data, QString *error)
{
    return RecordTransfer::checkFile(path, error) && ParameterFile::load(path, data);
}

// The file's output module settings decide its module kind: the window
// writes them only for a unit that carries the module.
int fileModuleKind(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) && f.readAll().contains("<PyxGOutputMode>") ? 2 : 1;
}

// A loaded file as the unit would hold it after a restore.
DeviceData restored(const DeviceData &file, int model, int moduleKind)
{
    return RecordTransfer::afterWriting(
        Sequences::writeAll(RecordTransfer::allPayloads(file, model, moduleKind)), model, moduleKind);
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
    DeviceData file;
    QString error;
    if (!loadFile(c.args.first(), file, &error))
        return fail(error);
    UnitSession unit;
    if (const int rc = connectUnit(c, unit))
        return rc;
    const RequestPlan plan
        = Sequences::writeAll(RecordTransfer::allPayloads(file, unit.model(), unit.moduleKind()));
    if (!c.yes) {
        DeviceData current;
        if (const int rc = readUnit(unit, current))
            return rc;
        const QStringList changes = RecordDiff::differences(
            current, RecordTransfer::afterWriting(plan, unit.model(), unit.moduleKind()));
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
                 .arg(c.args.first(), unit.identifier())
                 .arg(plan.size())
                 .arg(timer.elapsed()));
    return refused.isEmpty() ? kOk : kError;
}

int diff(const Context &c)
{
    QString error;
    if (c.args.size() == 2 && c.port.isEmpty()) {
        DeviceData a;
        DeviceData b;
        if (!loadFile(c.args.at(0), a, &error) || !loadFile(c.args.at(1), b, &error))
            return fail(error);
        // Compared as a unit would hold them; Larch's layout carries all 24 key kinds.
        constexpr int kAllKeys = 3;
        return printDifferences(RecordDiff::differences(restored(a, kAllKeys, fileModuleKind(c.args.at(0))),
            restored(b, kAllKeys, fileModuleKind(c.args.at(1)))));
    }
    if (c.args.size() != 1)
        return fail(QStringLiteral("diff takes A.cfg B.cfg, or [--port P] FILE.cfg"));
    DeviceData file;
    if (!loadFile(c.args.first(), file, &error))
        return fail(error);
    UnitSession unit;
    if (const int rc = connectUnit(c, unit))
        return rc;
    DeviceData current;
    if (const int rc = readUnit(unit, current))
        return rc;
    return printDifferences(
        RecordDiff::differences(current, restored(file, unit.model(), unit.moduleKind())));
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
    p.addOptions({ help, port, yes });
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
