#include "LogRows.h"

#include <QGridLayout>
#include <QLabel>

namespace
{

enum Column {
    NodeColumn,
    AntennaColumn,
    RssiColumn,
    RsrpColumn,
    SnrColumn,
    PowerColumn,
    DistanceColumn,
    ColumnCount
};

// Wide enough for the header words and for figures such as "-120" or "20000"
// in the rows' font.
constexpr int kColumnWidth[ColumnCount] = { 96, 64, 60, 60, 48, 60, 84 };
constexpr int kSpacing = 6;
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
    // On the base colour (white) even the palest quality colour stands out.
    frame->setBackgroundRole(QPalette::Base);
    frame->setAutoFillBackground(true);
    auto *grid = new QGridLayout(frame);
    grid->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    grid->setHorizontalSpacing(kSpacing);
    grid->setVerticalSpacing(2);
    // Everything right of the last column is slack, so the columns keep
    // their places however wide the window is.
    grid->setColumnStretch(ColumnCount, 1);
    return grid;
}

// The font goes on every cell: under the program's style sheet a frame's
// font does not pass on to its children.
QLabel *cell(
    QWidget *parent, const QString &name, const QString &text, bool bold, int firstColumn, int columns = 1)
{
    auto *label = new QLabel(parent);
    label->setObjectName(name);
    label->setFont(rowFont(bold));
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
    QGridLayout *grid = tableGrid(this);
    grid->addWidget(
        cell(this, QStringLiteral("title_antenne"), QStringLiteral("ANTENNE"), true, NodeColumn, 2), 0,
        NodeColumn, 1, 2);
    grid->addWidget(
        cell(this, QStringLiteral("title_rssi"), QStringLiteral("RSSI"), true, RssiColumn), 0, RssiColumn);
    grid->addWidget(
        cell(this, QStringLiteral("title_rsrp"), QStringLiteral("RSRP"), true, RsrpColumn), 0, RsrpColumn);
    // The SNR column is headed by nothing: the coloured legend above the
    // table names it.
    grid->addWidget(cell(this, QStringLiteral("title_snr"), QString(), true, SnrColumn), 0, SnrColumn);
    grid->addWidget(cell(this, QStringLiteral("title_power"), QStringLiteral("POWER"), true, PowerColumn), 0,
        PowerColumn);
    grid->addWidget(
        cell(this, QStringLiteral("title_distance"), QStringLiteral("DISTANCE"), true, DistanceColumn), 0,
        DistanceColumn);
}

LOG_ITEM::LOG_ITEM(const LinkReport::LinkRecord &record, QWidget *parent)
    : QFrame(parent)
    , m_grid(tableGrid(this))
{
    setObjectName(QStringLiteral("logItem"));
    QLabel *node = cell(this, QStringLiteral("node"), record.node, true, NodeColumn);
    // A centre node's name may be longer than its cell: shortened, in full
    // on hovering.
    const QString fitted = node->fontMetrics().elidedText(record.node, Qt::ElideRight, node->width() - 4);
    if (fitted != record.node) {
        node->setText(fitted);
        // Tool tips guess rich text; the name is shown as the plain text it is.
        node->setToolTip(QStringLiteral("<qt>%1</qt>").arg(record.node.toHtmlEscaped()));
    }
    m_grid->addWidget(node, 0, NodeColumn, 2, 1);
    addAntennaLine(0, QStringLiteral("main"), QStringLiteral("Main"), record.main, record);
    addAntennaLine(1, QStringLiteral("second"), QStringLiteral("Second"), record.second, record);
}

void LOG_ITEM::addAntennaLine(int row, const QString &name, const QString &label,
    const LinkReport::AntennaFigures &figures, const LinkReport::LinkRecord &record)
{
    const auto add = [&](const char *what, int value, int column) {
        QLabel *c = cell(
            this, name + QLatin1Char('_') + QLatin1String(what), QString::number(value), false, column);
        m_grid->addWidget(c, row, column);
        return c;
    };
    m_grid->addWidget(
        cell(this, name + QStringLiteral("_antenna"), label, false, AntennaColumn), row, AntennaColumn);
    add("rssi", figures.rssi, RssiColumn);
    add("rsrp", figures.rsrp, RsrpColumn);
    QLabel *snr = add("snr", figures.snr, SnrColumn);
    snr->setStyleSheet(LinkReport::snrStyle(figures.snr));
    // Power and distance are the node's, not the antenna's: both lines show them.
    add("power", record.power, PowerColumn);
    add("distance", record.distance, DistanceColumn);
}
