#include "BusyWait.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTime>
#include <QTimer>

namespace {
qint64 g_waitedMs = 0;
int g_depth = 0;
}

qint64 busyWaitTotalMs()
{
    return g_waitedMs;
}

void busyWait(int ms)
{
    QElapsedTimer waited;
    waited.start();
    ++g_depth;
    // The deadline is a time of day, as the unit's sequences always were: a
    // wait that crosses midnight ends at once.
    const QTime target = QTime::currentTime().addMSecs(ms);
    for (QTime now = QTime::currentTime(); now < target; now = QTime::currentTime()) {
        const int slice = qMin(100, now.msecsTo(target));
        QEventLoop loop;
        QTimer::singleShot(slice, &loop, &QEventLoop::quit);
        loop.exec();
    }
    // Waits nested in a wait (a slot run by the event loop) count once.
    if (--g_depth == 0)
        g_waitedMs += waited.elapsed();
}
