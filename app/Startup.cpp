#include "Startup.h"

#include "AppLog.h"
#include "BusyWait.h"
#include "AppPaths.h"
#include "MainWindow.h"
#include "Messages.h"
#include "RunGuard.h"
#include "StartupRules.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLocale>
#include <QTextCodec>
#include <QTimer>
#include <QTranslator>

#include <cstdio>

namespace {
const char kProductName[] = "Quillmark";

// With QUILLMARK_STARTUP_TRACE set, the program reports how long it took to
// reach its event loop (apart from the unit's fixed waits) and exits; the
// start-up benchmark reads this line.
void traceStartup(const QElapsedTimer &sinceMain, qint64 waitsMs)
{
    QTimer::singleShot(0, [sinceMain, waitsMs] {
        const qint64 total = sinceMain.elapsed();
        qInfo("startup: event loop running %lld ms after main, %lld ms of it the unit's waits, %lld ms of work",
              total, waitsMs, total - waitsMs);
        QApplication::exit(0);
    });
}
} // namespace

void prepareProcessEnvironment()
{
    if (qEnvironmentVariableIsEmpty("QT_XCB_GL_INTEGRATION"))
        qputenv("QT_XCB_GL_INTEGRATION", "none");
    // On a high-DPI screen (a 192-dpi X server, or QT_SCALE_FACTOR) the
    // window keeps its layout at the screen's scale, and icons are drawn
    // at the screen's resolution instead of being stretched.
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}

int runQuillmark(int argc, char **argv)
{
    QElapsedTimer sinceMain;
    sinceMain.start();
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const QString answer = StartupRules::commandLineAnswer(arguments, QStringLiteral(QM_VERSION));
    if (!answer.isEmpty()) {
        fputs(answer.toLocal8Bit().constData(), stdout);
        return 0;
    }
    prepareProcessEnvironment();

    RunGuard guard(StartupRules::guardKey(qEnvironmentVariable("QUILLMARK_INSTANCE")));
    if (!guard.tryToRun()) {
        QApplication app(argc, argv);
        const QString text
            = QStringLiteral("A second instance of %1 is already running. Please close the other "
                             "instance and try again.")
                  .arg(QLatin1String(kProductName));
        // Without a screen nobody can close the box: say it and go.
        if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
            qCritical("%s", qPrintable(text));
            return -1;
        }
        Messages::critical(nullptr, QStringLiteral("Error"), text);
        return -1;
    }

    QApplication app(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("utf-8"));

    QTranslator translator;
    if (translator.load(AppPaths::file(StartupRules::translationFile(QLocale::system().name()))))
        QApplication::installTranslator(&translator);

    auto *window = new MainWindow;
    // Without reconnecting, an unplugged unit stays gone until a restart.
    window->setReconnecting(!QCoreApplication::arguments().contains(QStringLiteral("--no-reconnect")));
    window->show();
    if (qEnvironmentVariableIsSet("QUILLMARK_STARTUP_TRACE"))
        traceStartup(sinceMain, busyWaitTotalMs());
    const int code = QApplication::exec();
    delete window;
    guard.release();
    return code;
}
