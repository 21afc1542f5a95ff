#include "LinkPlot.h"

#include "AppPaths.h"
#include "Messages.h"

#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSaveFile>
#include <QVBoxLayout>
#include <QtCharts/QChart>
#include <QtCharts/QChartView>
#include <QtCharts/QDateTimeAxis>
#include <QtCharts/QLegendMarker>
#include <QtCharts/QLineSeries>
#include <QtCharts/QValueAxis>

#include <climits>
#include <cmath>
#include <iterator>

using namespace QtCharts;
using Figure = LinkHistory::Figure;

// The chart on the quality bands: they are painted as the view's
// background, under the plot area, so they cost no series and no legend
// entries. The table's legend above explains the colours.
class LinkBandView : public QChartView
{
public:
    using QChartView::QChartView;
    bool bands = true;

protected:
    void drawBackground(QPainter *painter, const QRectF &rect) override
    {
        painter->fillRect(rect, Qt::white);
        auto *axis = qobject_cast<QValueAxis *>(chart()->axes(Qt::Vertical).value(0));
        if (!bands || !axis || axis->max() <= axis->min())
            return;
        const QRectF plot = chart()->plotArea();
        const auto y = [&](double v) {
            return plot.bottom() - (v - axis->min()) / (axis->max() - axis->min()) * plot.height();
        };
        // Integer figures sit in the middle of a band, not on its edge.
        double top = plot.top();
        for (int b = 0; b < LinkReport::kSnrBandCount; ++b) {
            const double bottom = b == LinkReport::kSnrBandCount - 1
                ? plot.bottom()
                : qBound(plot.top(), y(LinkReport::kSnrBands[b].lowest - 0.5), plot.bottom());
            if (bottom > top)
                painter->fillRect(QRectF(plot.left(), top, plot.width(), bottom - top),
                    QColor(QLatin1String(LinkReport::kSnrBands[b].colour)));
            top = qMax(top, bottom);
        }
    }
};

namespace
{

// Node colours that stand out on every band colour; the second antenna
// draws in a lighter tint of its node's colour. (Not dashed: Qt's dashed
// stroking of long antialiased paths costs several times the whole plot.)
const char *const kLineColours[]
    = { "#1f4e9c", "#2a7f3e", "#7a2a99", "#000000", "#007c80", "#8b4513", "#c2185b", "#4a6b8a" };

struct FigureInfo {
    const char *name; // as the table heads its column
    const char *title; // with the unit
};
const FigureInfo kFigures[LinkHistory::kFigureCount] = {
    { "RSSI", "RSSI (dBm)" },
    { "RSRP", "RSRP (dBm)" },
    { "SNR", "SNR (dB)" },
    { "POWER", "POWER (dBm)" },
    { "DISTANCE", "DISTANCE (m)" },
};
constexpr int kSnrFigure = int(Figure::Snr);
// The SNR axis always spans the four bands.
constexpr int kSnrAxisLow = -5;
constexpr int kSnrAxisHigh = 30;
constexpr int kSnrStep = 5;
// Value labels closer than this many pixels are elided by Qt Charts.
constexpr int kMinLabelGap = 28;

} // namespace

constexpr int LinkPlot::kRanges[3];

LinkPlot::LinkPlot(const LinkHistory *history, QWidget *parent)
    : QWidget(parent)
    , m_history(history)
    , m_figure(new QComboBox(this))
    , m_range(new QComboBox(this))
    , m_export(new QPushButton(tr("导出 CSV…"), this))
    , m_save(new QPushButton(tr("保存图表…"), this))
    , m_chart(new QChart)
    , m_time(new QDateTimeAxis(m_chart))
    , m_values(new QValueAxis(m_chart))
{
    setObjectName(QStringLiteral("linkPlot"));
    m_figure->setObjectName(QStringLiteral("plotFigure"));
    m_range->setObjectName(QStringLiteral("plotRange"));
    m_export->setObjectName(QStringLiteral("exportCsv"));
    m_save->setObjectName(QStringLiteral("savePlot"));
    m_figure->setToolTip(tr("绘制的数值"));
    m_range->setToolTip(tr("时间范围"));
    for (const FigureInfo &f : kFigures)
        m_figure->addItem(QLatin1String(f.name));
    m_figure->setCurrentIndex(kSnrFigure);
    m_range->addItem(tr("1 分钟"), kRanges[0]);
    m_range->addItem(tr("5 分钟"), kRanges[1]);
    m_range->addItem(tr("30 分钟"), kRanges[2]);
    m_range->setCurrentIndex(1);

    m_chart->setBackgroundVisible(false);
    m_chart->setPlotAreaBackgroundVisible(false);
    m_chart->setMargins(QMargins(4, 4, 4, 4));
    m_chart->legend()->setAlignment(Qt::AlignRight);
    m_time->setTitleText(tr("时间"));
    m_time->setTickCount(7);
    m_chart->addAxis(m_time, Qt::AlignBottom);
    m_chart->addAxis(m_values, Qt::AlignLeft);
    m_view = new LinkBandView(m_chart, this);
    m_view->setObjectName(QStringLiteral("plotView"));
    m_view->setRenderHint(QPainter::Antialiasing);
    m_view->setMinimumHeight(160);

    auto *tools = new QHBoxLayout;
    tools->addWidget(m_figure);
    tools->addWidget(m_range);
    tools->addStretch(1);
    tools->addWidget(m_export);
    tools->addWidget(m_save);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(tools);
    layout->addWidget(m_view, 1);

    const auto changed = [this] { redraw(); };
    connect(m_figure, QOverload<int>::of(&QComboBox::currentIndexChanged), this, changed);
    connect(m_range, QOverload<int>::of(&QComboBox::currentIndexChanged), this, changed);
    connect(m_export, &QPushButton::clicked, this, &LinkPlot::exportCsv);
    connect(m_save, &QPushButton::clicked, this, &LinkPlot::savePlot);
    redraw();
}

void LinkPlot::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    redraw(); // the value labels' spacing follows the height
}

QChart *LinkPlot::chart() const
{
    return m_chart;
}

void LinkPlot::refresh()
{
    if (m_history->revision() != m_drawn)
        redraw();
}

QLineSeries *LinkPlot::segment(int line, int index)
{
    while (m_lines.size() <= line)
        m_lines.append(Line());
    QVector<QLineSeries *> &segments = m_lines[line].segments;
    while (segments.size() <= index) {
        auto *series = new QLineSeries(m_chart);
        QColor colour(QLatin1String(kLineColours[(line / 2) % int(std::size(kLineColours))]));
        if (line % 2 == 1) {
            // The second antenna: its node's colour mixed with white.
            colour = QColor((colour.red() + 255) / 2, (colour.green() + 255) / 2, (colour.blue() + 255) / 2);
        }
        QPen pen(colour);
        pen.setWidthF(line % 2 == 1 ? 1.5 : 2);
        series->setPen(pen);
        series->setName(m_history->node(line)
            + (m_history->antenna(line) == 0 ? QLatin1String(" Main") : QLatin1String(" Second")));
        m_chart->addSeries(series);
        series->attachAxis(m_time);
        series->attachAxis(m_values);
        // One legend entry per line: its later segments stay out of it.
        if (!segments.isEmpty()) {
            for (QLegendMarker *marker : m_chart->legend()->markers(series))
                marker->setVisible(false);
        }
        segments.append(series);
    }
    return segments.at(index);
}

void LinkPlot::redraw()
{
    m_drawn = m_history->revision();
    const Figure figure = Figure(m_figure->currentIndex());
    const qint64 span = qint64(m_range->currentData().toInt()) * 60 * 1000;
    const qint64 end
        = m_history->latestMsecs() ? m_history->latestMsecs() : QDateTime::currentMSecsSinceEpoch();
    const qint64 start = end - span;

    // A history cleared for a new run starts the lines afresh.
    if (m_lines.size() > m_history->seriesCount()) {
        for (const Line &line : qAsConst(m_lines)) {
            for (QLineSeries *series : line.segments) {
                m_chart->removeSeries(series);
                delete series;
            }
        }
        m_lines.clear();
    }

    int low = INT_MAX;
    int high = INT_MIN;
    QVector<QPointF> points;
    for (int line = 0; line < m_history->seriesCount(); ++line) {
        const int count = m_history->sampleCount(line);
        int from = m_history->firstAtOrAfter(line, start);
        // The sample before the window lets the line enter at the left edge.
        if (from > 0 && !m_history->sample(line, from - 1).gap)
            --from;
        const int stride = (count - from + kMaxPointsPerLine - 1) / kMaxPointsPerLine;
        int used = 0;
        points.clear();
        for (int i = from; i < count; ++i) {
            const LinkHistory::Sample &s = m_history->sample(line, i);
            if (s.gap) {
                if (!points.isEmpty())
                    segment(line, used++)->replace(points);
                points.clear();
                continue;
            }
            const bool last = i + 1 == count || m_history->sample(line, i + 1).gap;
            if (stride > 1 && (i - from) % stride != 0 && !last)
                continue;
            const int v = s.value(figure);
            points.append(QPointF(qreal(s.msecs), v));
            if (s.msecs >= start) {
                low = qMin(low, v);
                high = qMax(high, v);
            }
        }
        if (!points.isEmpty())
            segment(line, used++)->replace(points);
        segment(line, 0); // the legend entry exists even with nothing to show
        QVector<QLineSeries *> &segments = m_lines[line].segments;
        for (int i = used; i < segments.size(); ++i) {
            if (segments.at(i)->count() > 0)
                segments.at(i)->clear();
        }
    }

    m_time->setFormat(span > 5 * 60 * 1000 ? QStringLiteral("hh:mm") : QStringLiteral("hh:mm:ss"));
    m_time->setRange(QDateTime::fromMSecsSinceEpoch(start), QDateTime::fromMSecsSinceEpoch(end));
    const bool snr = figure == Figure::Snr;
    m_values->setTitleText(QLatin1String(kFigures[int(figure)].title));
    if (snr) {
        const int lo = low == INT_MAX
            ? kSnrAxisLow
            : qMin(kSnrAxisLow, int(std::floor((low - 1) / double(kSnrStep))) * kSnrStep);
        const int hi = high == INT_MIN
            ? kSnrAxisHigh
            : qMax(kSnrAxisHigh, int(std::ceil((high + 1) / double(kSnrStep))) * kSnrStep);
        m_values->setRange(lo, hi);
        // A label every 5 dB while they fit, else every 10 dB.
        m_values->setTickType(QValueAxis::TicksDynamic);
        m_values->setTickAnchor(0);
        m_values->setTickInterval(
            m_chart->plotArea().height() / ((hi - lo) / kSnrStep) >= kMinLabelGap ? kSnrStep : 2 * kSnrStep);
    } else {
        m_values->setTickType(QValueAxis::TicksFixed);
        m_values->setTickCount(qBound(3, int(m_chart->plotArea().height()) / kMinLabelGap, 6));
        if (low <= high) {
            const double pad = qMax(1.0, (high - low) * 0.1);
            m_values->setRange(low - pad, high + pad);
            m_values->applyNiceNumbers();
        } else {
            m_values->setRange(0, 1);
        }
    }
    m_values->setLabelFormat(QStringLiteral("%d"));
    m_view->bands = snr;
    m_view->viewport()->update();
}

void LinkPlot::exportCsv()
{
    const QString start = AppPaths::writableFile(
        QStringLiteral("/log/link_history_%1.csv")
            .arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd_HHmmss"))));
    const QString path = Messages::saveFileName(this, tr("导出 CSV…"), start, tr("CSV 文件 (*.csv)"));
    if (path.isEmpty())
        return;
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(m_history->csv().toUtf8());
        if (file.commit())
            return;
    }
    Messages::warning(this, window()->windowTitle(), tr("无法写入 %1").arg(QDir::toNativeSeparators(path)));
}

void LinkPlot::savePlot()
{
    const QString start = AppPaths::writableFile(
        QStringLiteral("/log/link_plot_%1.png")
            .arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd_HHmmss"))));
    const QString path = Messages::saveFileName(this, tr("保存图表…"), start, tr("PNG 图片 (*.png)"));
    if (path.isEmpty())
        return;
    if (!m_view->grab().save(path, "PNG"))
        Messages::warning(
            this, window()->windowTitle(), tr("无法写入 %1").arg(QDir::toNativeSeparators(path)));
}
