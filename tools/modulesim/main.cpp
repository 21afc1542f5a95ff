#include "ModuleServer.h"
#include "SimOptions.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

int g_signalPipe[2] = { -1, -1 };

void onSignal(int)
{
    const char b = 1;
    [[maybe_unused]] const ssize_t n = ::write(g_signalPipe[1], &b, 1);
}

} // namespace

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
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, g_signalPipe) != 0)
        return 1;
    QSocketNotifier signalNotifier(g_signalPipe[0], QSocketNotifier::Read);
    QObject::connect(&signalNotifier, &QSocketNotifier::activated, &app, [](int fd) {
        char b;
        [[maybe_unused]] const ssize_t n = ::read(fd, &b, 1);
        QCoreApplication::quit();
    });
    struct sigaction sa = {};
    sa.sa_handler = onSignal;
    sigemptyset(&sa.sa_mask);
    sa.sa_flags = SA_RESTART;
    ::sigaction(SIGINT, &sa, nullptr);
    ::sigaction(SIGTERM, &sa, nullptr);
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
