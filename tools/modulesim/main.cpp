#include "ModuleServer.h"
#include "QuitOnSignal.h"
#include "SimOptions.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    app.setApplicationName(QStringLiteral("quillmark-modulesim"));

    ModuleSim::SimOptions options;
    QString text;
    switch (ModuleSim::parseOptions(app.arguments(), &options, &text)) {
    case ModuleSim::ParseResult::Help:
        std::fputs(text.toLocal8Bit().constData(), stdout);
        return 0;
    case ModuleSim::ParseResult::Error:
        std::fprintf(stderr, "quillmark-modulesim: %s\n", text.toLocal8Bit().constData());
        return 2;
    case ModuleSim::ParseResult::Run:
        break;
    }

    // SIGINT and SIGTERM end the event loop, so the program leaves cleanly.
    if (!quitOnSignal())
        return 1;
    ::signal(SIGPIPE, SIG_IGN); // a client gone mid-reply is no reason to stop

    ModuleServer server(options);
    if (!server.start(&text)) {
        std::fprintf(stderr, "quillmark-modulesim: %s\n", text.toLocal8Bit().constData());
        return 1;
    }
    std::printf("listening on %s\n", server.address().toLocal8Bit().constData());
    std::fflush(stdout);
    return app.exec();
}
