#include "LogWindowFactory.h"

#include <QWidget>

// Stands in for the log monitor until its window is part of the library: an
// empty window under the monitor's title.
QWidget *createLogWindow()
{
    auto *window = new QWidget;
    window->setWindowTitle(QStringLiteral("DRPR Log"));
    window->resize(640, 480);
    return window;
}
