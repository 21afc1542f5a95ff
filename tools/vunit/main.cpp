#include "QuitOnSignal.h"
#include "VirtualUnit.h"
#include "VunitOptions.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    app.setApplicationName(QStringLiteral("quillmark-vunit"));

    Vunit::VunitOptions options;
    QString text;
    switch (Vunit::parseOptions(app.arguments(), &options, &text)) {
    case Vunit::ParseResult::Help:
        std::fputs(text.toLocal8Bit().constData(), stdout);
        return 0;
    case Vunit::ParseResult::Error:
        std::fprintf(stderr, "quillmark-vunit: %s\n", text.toLocal8Bit().constData());
        return 2;
    case Vunit::ParseResult::Run:
        break;
    }

    // SIGINT and SIGTERM end the event loop, so the link is removed on the way out.
    if (!quitOnSignal())
        return 1;

    VirtualUnit unit(options);
    if (!unit.start(&text)) {
        std::fprintf(stderr, "quillmark-vunit: %s\n", text.toLocal8Bit().constData());
        unit.stop();
        return 1;
    }
    QObject::connect(&unit, &VirtualUnit::finished, &app, &QCoreApplication::quit, Qt::QueuedConnection);
    if (options.printPath) {
        std::printf("%s\n", unit.slavePath().toLocal8Bit().constData());
        std::fflush(stdout);
    }
    std::fprintf(stderr, "quillmark-vunit: %s on %s\n",
        Vunit::modelSpec(options.unit.model).identifier.constData(),
        unit.slavePath().toLocal8Bit().constData());

    const int rc = app.exec();
    unit.stop();
    return rc;
}
