#pragma once

#include "SoakSeries.h"

#include <QImage>
#include <QString>

// The soak's series as a picture, over the minutes run: resident memory (with
// the fitted growth line over the samples after the warm-up), heap in use and
// CPU share, one panel each; the verdict as the title.
QImage drawSoakChart(const QVector<SoakSample> &samples, double warmupS, const QString &title);
