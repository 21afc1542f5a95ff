#include "VirtualUnit.h"
#include "VunitOptions.h"

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
