#pragma once

#include "LinkHistory.h"

#include <QVector>
#include <QWidget>
#include <QtCharts/QChartGlobal>

class LinkBandView;
class QComboBox;
class QPushButton;

QT_CHARTS_BEGIN_NAMESPACE
class QChart;
class QDateTimeAxis;
class QLineSeries;
class QValueAxis;
QT_CHARTS_END_NAMESPACE

// The log monitor's history plot: one line per node and antenna of the
// chosen figure over the last 1, 5 or 30 minutes, on the signal-to-noise
// quality bands in the table's colours when the figure is SNR. A gap in the
// history breaks the line. "Export CSV…" writes the whole history, "Save
// plot…" the chart as a PNG picture.
//
// The plot redraws only when the history has new samples (refresh()) or a
// selector changes; it reuses its line series and hands Qt Charts only the
// points of the visible window.
class LinkPlot : public QWidget
{
    Q_OBJECT
public:
    // The history must outlive the plot.
    explicit LinkPlot(const LinkHistory *history, QWidget *parent = nullptr);

    // Draws what the history gained since the last drawing.
    void refresh();

    QtCharts::QChart *chart() const;

    // The time windows offered, in minutes.
    static constexpr int kRanges[3] = { 1, 5, 30 };
    // A line shows at most this many points (one every 3 s over 30 minutes,
    // about one per pixel of the plot); a denser window is thinned evenly.
    static constexpr int kMaxPointsPerLine = 600;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Line {
        QVector<QtCharts::QLineSeries *> segments; // [0] carries the legend entry
    };

    void redraw();
    QtCharts::QLineSeries *segment(int line, int index);
    void exportCsv();
    void savePlot();

    const LinkHistory *m_history;
    QComboBox *m_figure;
    QComboBox *m_range;
    QPushButton *m_export;
    QPushButton *m_save;
    LinkBandView *m_view;
    QtCharts::QChart *m_chart;
    QtCharts::QDateTimeAxis *m_time;
    QtCharts::QValueAxis *m_values;
    QVector<Line> m_lines;
    quint64 m_drawn = ~quint64(0);
};
