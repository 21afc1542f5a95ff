#include "SimOptions.h"

#include <QCommandLineParser>

namespace ModuleSim
{

ParseResult parseOptions(const QStringList &args, SimOptions *options, QString *text)
{
    QCommandLineParser p;
    p.setApplicationDescription(QStringLiteral(
        "A simulated radio link module: the module's web server on this machine, answering the\n"
        "configurator's AT command forms, its other forms and the link monitor's report polls.\n"
        "Prints \"listening on HOST:PORT\" once it accepts connections; runs until killed."));
    const QCommandLineOption help(
        { QStringLiteral("h"), QStringLiteral("help") }, QStringLiteral("Show this help."));
    const QCommandLineOption listen(QStringLiteral("listen"),
        QStringLiteral("Address to listen on (default 127.0.0.1:0; port 0 picks a free port)."),
        QStringLiteral("HOST:PORT"), QStringLiteral("127.0.0.1:0"));
    const QCommandLineOption kind(QStringLiteral("kind"),
        QStringLiteral("Module kind: kite, kestrel or falcon (default kite). Chooses the report layout; "
                       "falcon brackets the link group."),
        QStringLiteral("KIND"), QStringLiteral("kite"));
    const QCommandLineOption refuse(
        QStringLiteral("refuse"), QStringLiteral("Close every connection at once, without reading."));
    const QCommandLineOption slow(QStringLiteral("slow"),
        QStringLiteral("Send each reply MS milliseconds after its request."), QStringLiteral("MS"),
        QStringLiteral("0"));
    const QCommandLineOption closeMid(QStringLiteral("close-mid-reply"),
        QStringLiteral("Send the first half of each reply, then close the connection."));
    const QCommandLineOption flood(QStringLiteral("flood"),
        QStringLiteral("Answer every request with BYTES bytes of filler (a head announcing them, then the "
                       "filler), written at once, as fast as the connection takes it."),
        QStringLiteral("BYTES"), QStringLiteral("0"));
    const QCommandLineOption record(QStringLiteral("record"),
        QStringLiteral("Append every request received to FILE, byte for byte."), QStringLiteral("FILE"));
    const QCommandLineOption report(QStringLiteral("report"),
        QStringLiteral("Answer the report commands with FILE's content instead of generated records."),
        QStringLiteral("FILE"));
    const QCommandLineOption seed(QStringLiteral("seed"),
        QStringLiteral("Seed of the signal and temperature drift (default 1)."), QStringLiteral("N"),
        QStringLiteral("1"));
    p.addOptions({ help, listen, kind, refuse, slow, closeMid, flood, record, report, seed });

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

    const QString where = p.value(listen);
    const int colon = where.lastIndexOf(QLatin1Char(':'));
    bool ok = false;
    const uint port = colon > 0 ? where.mid(colon + 1).toUInt(&ok) : 0;
    if (!ok || port > 65535) {
        *text = QStringLiteral("--listen: %1 is not HOST:PORT").arg(where);
        return ParseResult::Error;
    }
    options->host = where.left(colon);
    if (options->host.startsWith(QLatin1Char('[')) && options->host.endsWith(QLatin1Char(']')))
        options->host = options->host.mid(1, options->host.size() - 2);
    options->port = quint16(port);

    const QString k = p.value(kind).toLower();
    if (k == QLatin1String("kite")) {
        options->kind = ModuleKind::Kite;
    } else if (k == QLatin1String("kestrel")) {
        options->kind = ModuleKind::Kestrel;
    } else if (k == QLatin1String("falcon")) {
        options->kind = ModuleKind::Falcon;
    } else {
        *text = QStringLiteral("--kind: %1 is not kite, kestrel or falcon").arg(p.value(kind));
        return ParseResult::Error;
    }

    const int ms = p.value(slow).toInt(&ok);
    if (!ok || ms < 0 || ms > 600000) {
        *text = QStringLiteral("--slow: %1 is not a number from 0 to 600000").arg(p.value(slow));
        return ParseResult::Error;
    }
    options->slowMs = ms;
    const int bytes = p.value(flood).toInt(&ok);
    if (!ok || bytes < 0 || bytes > 1000000000) {
        *text = QStringLiteral("--flood: %1 is not a number from 0 to 1000000000").arg(p.value(flood));
        return ParseResult::Error;
    }
    options->floodBytes = bytes;
    const uint s = p.value(seed).toUInt(&ok);
    if (!ok) {
        *text = QStringLiteral("--seed: %1 is not a number from 0 to 4294967295").arg(p.value(seed));
        return ParseResult::Error;
    }
    options->seed = s;
    options->refuse = p.isSet(refuse);
    options->closeMidReply = p.isSet(closeMid);
    options->recordPath = p.value(record);
    options->reportPath = p.value(report);
    return ParseResult::Run;
}

} // namespace ModuleSim
