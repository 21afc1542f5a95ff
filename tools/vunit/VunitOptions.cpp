#include "VunitOptions.h"

#include <QCommandLineParser>

#include <limits>

namespace Vunit
{

int parseCode(const QString &text)
{
    QString t = text.trimmed();
    if (t.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        t = t.mid(2);
    bool ok = false;
    const int code = t.toInt(&ok, 16);
    return ok && !t.isEmpty() && t.size() <= 2 && code >= 0 && code <= 0xFF ? code : -1;
}

ParseResult parseOptions(const QStringList &args, VunitOptions *options, QString *text)
{
    QCommandLineParser p;
    p.setApplicationDescription(QStringLiteral(
        "A virtual remote control unit on a pseudo-terminal: it answers the configurator's serial\n"
        "requests like a handset of the chosen model, streams live channel reports and keeps the\n"
        "parameters written to it. Point config/port.xml at the printed path or at --link."));
    const QCommandLineOption help(
        { QStringLiteral("h"), QStringLiteral("help") }, QStringLiteral("Show this help."));
    const QCommandLineOption model(QStringLiteral("model"),
        QStringLiteral("Model: %1 (default ALDER).").arg(modelNames().join(QLatin1Char('|'))),
        QStringLiteral("NAME"), QStringLiteral("ALDER"));
    const QCommandLineOption module(QStringLiteral("module"),
        QStringLiteral("Radio module kind answered to 0xDF: 0, 1 or 2 (default 0)."), QStringLiteral("KIND"),
        QStringLiteral("0"));
    const QCommandLineOption link(QStringLiteral("link"),
        QStringLiteral("Create a symlink at PATH to the pty (removed on exit)."), QStringLiteral("PATH"));
    const QCommandLineOption printPath(
        QStringLiteral("print-path"), QStringLiteral("Print the pty path on stdout, one line."));
    const QCommandLineOption record(QStringLiteral("record"),
        QStringLiteral(
            "Write every frame received to FILE: ms since start, code, payload in hex ('-' if empty)."),
        QStringLiteral("FILE"));
    const QCommandLineOption refuse(QStringLiteral("refuse"),
        QStringLiteral("Answer CODE (hex, e.g. 0xA3) with the refusal status 0xEE. "
                       "Repeatable."),
        QStringLiteral("CODE"));
    const QCommandLineOption noise(
        QStringLiteral("noise"), QStringLiteral("Put random noise bytes between frames."));
    const QCommandLineOption split(QStringLiteral("split"),
        QStringLiteral("Write frames in pieces split at random points, a few ms apart."));
    const QCommandLineOption delay(QStringLiteral("delay"),
        QStringLiteral("Delay every answer by MS milliseconds."), QStringLiteral("MS"), QStringLiteral("0"));
    const QCommandLineOption seed(QStringLiteral("seed"),
        QStringLiteral("Seed of the input motion and the faults (default 1)."), QStringLiteral("N"),
        QStringLiteral("1"));
    const QCommandLineOption rate(QStringLiteral("rate"),
        QStringLiteral("Channel reports per second, instead of the rate the upload "
                       "request asks for (50)."),
        QStringLiteral("HZ"));
    const QCommandLineOption identity(QStringLiteral("identity"),
        QStringLiteral("Answer 0xFF with TEXT instead of the model's identifier."), QStringLiteral("TEXT"));
    const QCommandLineOption hangup(QStringLiteral("hangup-after"),
        QStringLiteral("Close the pty MS milliseconds after the first upload start "
                       "(0xE5), as if the cable were pulled, and exit."),
        QStringLiteral("MS"));
    const QCommandLineOption origin(QStringLiteral("time-origin"),
        QStringLiteral("Count the record's times from this reading of the monotonic "
                       "clock (ms) instead of from the start."),
        QStringLiteral("MS"));
    p.addOptions({ help, model, module, link, printPath, record, refuse, noise, split, delay, seed, rate,
        identity, hangup, origin });

    if (!p.parse(args)) {
        *text = p.errorText();
        return ParseResult::Error;
    }
    if (p.isSet(help)) {
        *text = p.helpText();
        return ParseResult::Help;
    }
    if (!p.positionalArguments().isEmpty()) {
        *text = QStringLiteral("unexpected argument: %1").arg(p.positionalArguments().first());
        return ParseResult::Error;
    }

    auto number = [&](const QCommandLineOption &o, qint64 lo, qint64 hi, qint64 *out) {
        bool ok = false;
        const qint64 v = p.value(o).toLongLong(&ok);
        if (!ok || v < lo || v > hi) {
            *text = QStringLiteral("--%1: %2 is not a number from %3 to %4")
                        .arg(o.names().constFirst(), p.value(o))
                        .arg(lo)
                        .arg(hi);
            return false;
        }
        *out = v;
        return true;
    };

    const auto chosen = modelFromName(p.value(model));
    if (!chosen) {
        *text = QStringLiteral("--model: unknown model %1").arg(p.value(model));
        return ParseResult::Error;
    }
    options->unit.model = *chosen;
    qint64 v = 0;
    if (!number(module, 0, 2, &v))
        return ParseResult::Error;
    options->unit.moduleKind = int(v);
    for (const QString &c : p.values(refuse)) {
        const int code = parseCode(c);
        if (code < 0) {
            *text = QStringLiteral("--refuse: %1 is not a code byte").arg(c);
            return ParseResult::Error;
        }
        options->unit.refused.insert(quint8(code));
    }
    if (!number(seed, 0, std::numeric_limits<qint64>::max(), &v))
        return ParseResult::Error;
    options->unit.seed = quint64(v);
    options->faults.seed = quint64(v);
    if (p.isSet(rate)) {
        if (!number(rate, 1, 200, &v))
            return ParseResult::Error;
        options->unit.reportRateHz = int(v);
    }
    if (p.isSet(identity))
        options->unit.identifier = p.value(identity).toLatin1();
    if (!number(delay, 0, 60000, &v))
        return ParseResult::Error;
    options->faults.answerDelayMs = int(v);
    options->faults.noise = p.isSet(noise);
    options->faults.split = p.isSet(split);
    if (p.isSet(hangup)) {
        if (!number(hangup, 0, 24 * 3600 * 1000, &v))
            return ParseResult::Error;
        options->hangupAfterMs = int(v);
    }
    if (p.isSet(origin)) {
        if (!number(origin, 0, std::numeric_limits<qint64>::max(), &v))
            return ParseResult::Error;
        options->timeOrigin = v;
    }
    options->linkPath = p.value(link);
    options->printPath = p.isSet(printPath);
    options->recordPath = p.value(record);
    return ParseResult::Run;
}

} // namespace Vunit
