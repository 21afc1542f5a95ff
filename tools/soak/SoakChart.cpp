#include "SoakChart.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <functional>

namespace
{
constexpr int kWidth = 1200;
constexpr int kPanelHeight = 300;
constexpr int kLeft = 80;
constexpr int kRight = 30;
constexpr int kTop = 60;
constexpr int kGap = 70;

// A round step for about five grid lines over span.
double niceStep(double span)
{
    const double raw = std::max(span, 1e-6) / 5.0;
    const double mag = std::pow(10.0, std::floor(std::log10(raw)));
    for (double m : { 1.0, 2.0, 5.0, 10.0 }) {
        if (raw <= m * mag)
            return m * mag;
    }
    return 10 * mag;
}

struct Panel {
    QRect area;
    double x0, x1, y0, y1;
    QPointF at(double x, double y) const
    {
        return { area.left() + (x - x0) / (x1 - x0) * area.width(),
            area.bottom() - (y - y0) / (y1 - y0) * area.height() };
    }
};

Panel drawPanel(QPainter &p, const QRect &area, double minutes, double lo, double hi, const QString &unit)
{
    const double yStep = niceStep(hi - lo);
    Panel panel { area, 0, std::max(minutes, 1.0), std::floor(lo / yStep) * yStep, std::ceil(hi / yStep) * yStep };
    if (panel.y1 <= panel.y0)
        panel.y1 = panel.y0 + yStep;
    p.setPen(QColor(225, 225, 225));
    for (double y = panel.y0; y <= panel.y1 + yStep / 2; y += yStep) {
        const QPointF a = panel.at(panel.x0, y);
        p.drawLine(a, panel.at(panel.x1, y));
        p.setPen(Qt::black);
        p.drawText(QRectF(0, a.y() - 9, kLeft - 8, 18), Qt::AlignRight | Qt::AlignVCenter, QString::number(y));
        p.setPen(QColor(225, 225, 225));
    }
    const double xStep = niceStep(panel.x1);
    for (double x = 0; x <= panel.x1 + xStep / 2; x += xStep) {
        const QPointF a = panel.at(x, panel.y0);
        p.drawLine(a, panel.at(x, panel.y1));
        p.setPen(Qt::black);
        p.drawText(QRectF(a.x() - 30, a.y() + 4, 60, 18), Qt::AlignCenter, QString::number(x));
        p.setPen(QColor(225, 225, 225));
    }
    p.setPen(Qt::black);
    p.drawRect(area);
    p.drawText(QRectF(area.left(), area.top() - 22, area.width(), 20), Qt::AlignLeft | Qt::AlignVCenter, unit);
    p.drawText(QRectF(area.left(), area.bottom() + 20, area.width(), 18), Qt::AlignCenter,
        QStringLiteral("minutes"));
    return panel;
}

void drawSeries(QPainter &p, const Panel &panel, const QVector<SoakSample> &samples,
    const std::function<double(const SoakSample &)> &value, const QColor &color)
{
    QPolygonF line;
    for (const SoakSample &s : samples)
        line << panel.at(s.elapsedS / 60.0, value(s));
    p.setPen(QPen(color, 2));
    p.drawPolyline(line);
    p.setBrush(color);
    for (const QPointF &pt : line)
        p.drawEllipse(pt, 2.5, 2.5);
    p.setBrush(Qt::NoBrush);
}
} // namespace

QImage drawSoakChart(const QVector<SoakSample> &samples, double warmupS, const QString &title)
{
    QImage image(kWidth, kTop + 3 * kPanelHeight + 2 * kGap + 50, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    QFont font = p.font();
    font.setPixelSize(13);
    p.setFont(font);
    p.drawText(QRect(10, 8, kWidth - 20, 40), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, title);
    if (samples.isEmpty())
        return image;

    const double minutes = samples.constLast().elapsedS / 60.0;
    // The span of a series, at least 2 MB (or 2 %): a flat line stays a flat
    // line, not a magnified wobble.
    auto range = [&](const std::function<double(const SoakSample &)> &value, double *lo, double *hi) {
        *lo = *hi = value(samples.constFirst());
        for (const SoakSample &s : samples) {
            *lo = std::min(*lo, value(s));
            *hi = std::max(*hi, value(s));
        }
        const double mid = (*lo + *hi) / 2;
        *lo = std::min(*lo, mid - 1);
        *hi = std::max(*hi, mid + 1);
    };
    auto rss = [](const SoakSample &s) { return s.rssMb; };
    auto heap = [](const SoakSample &s) { return s.heapMb; };
    auto cpu = [](const SoakSample &s) { return s.cpuPercent; };
    auto panelRect = [](int index) {
        return QRect(kLeft, kTop + 24 + index * (kPanelHeight + kGap), kWidth - kLeft - kRight, kPanelHeight - 24);
    };

    double lo = 0, hi = 0;
    range(rss, &lo, &hi);
    const QRect top = panelRect(0);
    const Panel memory = drawPanel(p, top, minutes, lo, hi, QStringLiteral("resident memory (MB)"));
    drawSeries(p, memory, samples, rss, QColor(30, 90, 200));
    double slope = 0;
    if (SoakSeries::growthMbPerHour(samples, warmupS, &slope)) {
        // The fitted line through the mean of the fitted samples.
        double sx = 0, sy = 0, n = 0;
        for (const SoakSample &s : samples) {
            if (s.elapsedS > warmupS) {
                sx += s.elapsedS / 60.0;
                sy += s.rssMb;
                n += 1;
            }
        }
        const double mx = sx / n, my = sy / n, perMinute = slope / 60.0;
        const double from = warmupS / 60.0;
        p.setPen(QPen(QColor(220, 60, 40), 1.5, Qt::DashLine));
        p.drawLine(memory.at(from, my + (from - mx) * perMinute), memory.at(minutes, my + (minutes - mx) * perMinute));
        p.drawText(QRectF(top.right() - 320, top.top() - 22, 320, 20), Qt::AlignRight | Qt::AlignVCenter,
            QStringLiteral("fit after the warm-up: %1 MB/h").arg(slope, 0, 'f', 2));
    }

    range(heap, &lo, &hi);
    const Panel held = drawPanel(p, panelRect(1), minutes, lo, hi, QStringLiteral("heap in use (MB)"));
    drawSeries(p, held, samples, heap, QColor(230, 130, 20));

    range(cpu, &lo, &hi);
    const Panel share
        = drawPanel(p, panelRect(2), minutes, 0, std::max(hi, 1.0), QStringLiteral("CPU (% of one core)"));
    drawSeries(p, share, samples, cpu, QColor(20, 140, 60));
    return image;
}
