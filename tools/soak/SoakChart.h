#pragma once

#include "SoakSeries.h"

#include <QImage>
#include <QString>

// The soak's memory and CPU series as a picture: resident memory above (with
// the fitted growth line over the samples after the warm-up), CPU share below,
// both over the minutes run; the verdict as the title.
QImage drawSoakChart(const QVector<SoakSample> &samples, double warmupS, const QString &title);
