#include "LogRows.h"

#include <QGridLayout>
#include <QLabel>

namespace
{

enum Column { NodeColumn, AntennaColumn, RssiColumn, RsrpColumn, SnrColumn, PowerColumn, DistanceColumn, ColumnCount };

// Wide enough for the header words and for figures such as "-120" or "20000"
// in the rows' font.
constexpr int kColumnWidth[ColumnCount] = { 96, 64, 60, 60, 48, 60, 84 };
constexpr int kSpacing = 4;
constexpr int kMargin = 4;
constexpr int kFontPoints = 10;

QFont rowFont(bool bold)
{
    QFont font(QStringLiteral("Calibri"));
    font.setPointSize(kFontPoints);
    font.setBold(bold);
    return font;
}

QGridLayout *tableGrid(QFrame *frame)
{
    frame->setFrameShape(QFrame::Box);
    frame->setFrameShadow(QFrame::Plain);
    frame->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto *grid = new QGridLayout(frame);
    grid->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    grid->setHorizontalSpacing(kSpacing);
    grid->setVerticalSpacing(2);
    // Everything right of the last column is slack, so the columns keep
    // their places however wide the window is.
    grid->setColumnStretch(ColumnCount, 1);
    return grid;
}

QLabel *cell(QWidget *parent, const QString &name, const QString &text, int firstColumn, int columns = 1)
{
    auto *label = new QLabel(parent);
    label->setObjectName(name);
    // Report texts come from the network: never read as rich text.
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setAlignment(Qt::AlignCenter);
    int width = (columns - 1) * kSpacing;
    for (int c = firstColumn; c < firstColumn + columns; ++c)
        width += kColumnWidth[c];
    label->setFixedWidth(width);
    return label;
}

} // namespace

LOG_TITLE::LOG_TITLE(QWidget *parent)
    : QFrame(parent)
{
    setObjectName(QStringLiteral("logTitle"));
    setFont(rowFont(true));
    QGridLayout *grid = tableGrid(this);
    grid->addWidget(cell(this, QStringLiteral("title_antenne"), QStringLiteral("ANTENNE"), NodeColumn, 2), 0,
        NodeColumn, 1, 2);
    grid->addWidget(cell(this, QStringLiteral("title_rssi"), QStringLiteral("RSSI"), RssiColumn), 0, RssiColumn);
    grid->addWidget(cell(this, QStringLiteral("title_rsrp"), QStringLiteral("RSRP"), RsrpColumn), 0, RsrpColumn);
    // The SNR column is headed by nothing: the coloured legend above the
    // table names it.
    grid->addWidget(cell(this, QStringLiteral("title_snr"), QString(), SnrColumn), 0, SnrColumn);
    grid->addWidget(cell(this, QStringLiteral("title_power"), QStringLiteral("POWER"), PowerColumn), 0, PowerColumn);
    grid->addWidget(
        cell(this, QStringLiteral("title_distance"), QStringLiteral("DISTANCE"), DistanceColumn), 0, DistanceColumn);
}

LOG_ITEM::LOG_ITEM(const LinkReport::LinkRecord &record, QWidget *parent)
    : QFrame(parent)
    , m_grid(tableGrid(this))
{
    setObjectName(QStringLiteral("logItem"));
    setFont(rowFont(false));
    QLabel *node = cell(this, QStringLiteral("node"), record.node, NodeColumn);
    node->setFont(rowFont(true));
    m_grid->addWidget(node, 0, NodeColumn, 2, 1);
    addAntennaLine(0, QStringLiteral("main"), QStringLiteral("Main"), record.main, record);
    addAntennaLine(1, QStringLiteral("second"), QStringLiteral("Second"), record.second, record);
}

void LOG_ITEM::addAntennaLine(int row, const QString &name, const QString &label,
    const LinkReport::AntennaFigures &figures, const LinkReport::LinkRecord &record)
{
    const auto add = [&](const char *what, int value, int column) {
        QLabel *c = cell(this, name + QLatin1Char('_') + QLatin1String(what), QString::number(value), column);
        m_grid->addWidget(c, row, column);
        return c;
    };
    m_grid->addWidget(cell(this, name + QStringLiteral("_antenna"), label, AntennaColumn), row, AntennaColumn);
    add("rssi", figures.rssi, RssiColumn);
    add("rsrp", figures.rsrp, RsrpColumn);
    QLabel *snr = add("snr", figures.snr, SnrColumn);
    snr->setStyleSheet(LinkReport::snrStyle(snr->text().toInt()));
    // Power and distance are the node's, not the antenna's: both lines show them.
    add("power", record.power, PowerColumn);
    add("distance", record.distance, DistanceColumn);
}
