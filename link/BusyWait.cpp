#include "BusyWait.h"

#include <QEventLoop>
#include <QTime>
#include <QTimer>

void busyWait(int ms)
{
    // The deadline is a time of day, as the unit's sequences always were: a
    // wait that crosses midnight ends at once.
    const QTime target = QTime::currentTime().addMSecs(ms);
    for (QTime now = QTime::currentTime(); now < target; now = QTime::currentTime()) {
        const int slice = qMin(100, now.msecsTo(target));
        QEventLoop loop;
        QTimer::singleShot(slice, &loop, &QEventLoop::quit);
        loop.exec();
    }
}
