#include "SbusConfig.h"

#include "DeviceData.h"
#include "MSpinBox.h"
#include "PhaseSwitch.h"
#include "SbusCodec.h"
#include "SectionWidgets.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QtMath>

namespace
{
const char kNone[] = "NONE";

enum Column {
    ChannelColumn,
    PhaseColumn,
    TrimColumn,
    LeftColumn,
    RightColumn,
    FailsafeColumn,
    MapColumn,
    FixedColumn
};

QLabel *title(QWidget *parent, const QString &text)
{
    auto *label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignCenter);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}
} // namespace

SbusConfig::SbusConfig(QWidget *parent)
    : SettingPage(parent)
{
    setObjectName(QStringLiteral("SbusConfig"));
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(6, 6, 6, 6);
    m_scroll = new QScrollArea(this);
    m_scroll->setObjectName(QStringLiteral("sbusScroll"));
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setStyleSheet(QStringLiteral("QScrollArea { background: transparent; }"));
    QWidget *grid = SectionWidgets::panel(QStringLiteral("sbusChannels"));
    buildRows(grid);
    m_scroll->setWidget(grid);
    outer->addWidget(m_scroll);
}

void SbusConfig::buildRows(QWidget *grid)
{
    auto *layout = new QGridLayout(grid);
    layout->setHorizontalSpacing(10);
    layout->setVerticalSpacing(4);
    layout->addWidget(title(grid, tr("舵机相位")), 0, PhaseColumn);
    layout->addWidget(title(grid, tr("中点微调")), 0, TrimColumn);
    // Both travels share one title.
    layout->addWidget(title(grid, tr("舵机行程量")), 0, LeftColumn, 1, 2);
    layout->addWidget(title(grid, tr("失控保护")), 0, FailsafeColumn);
    layout->addWidget(title(grid, tr(" To :")), 0, MapColumn);

    for (int c = 0; c < kChannels; ++c) {
        const QString n = QString::number(c + 1);
        Row &row = m_rows[size_t(c)];
        auto *label = new QLabel(QStringLiteral("CH%1:").arg(c + 1), grid);
        label->setObjectName(QStringLiteral("channel_") + n);
        row.phase = new PhaseSwitch(grid);
        row.phase->setObjectName(QStringLiteral("phase_") + n);
        row.trim = SectionWidgets::spinBox(grid, QStringLiteral("fineTuning_") + n, -125.0, 125.0);
        row.left = SectionWidgets::spinBox(grid, QStringLiteral("leftTrip_") + n, 0.0, 150.0);
        row.right = SectionWidgets::spinBox(grid, QStringLiteral("rightTrip_") + n, 0.0, 150.0);
        row.failsafe = SectionWidgets::spinBox(grid, QStringLiteral("safeProtection_") + n, -150.0, 150.0);
        row.failsafe->setM_checkEnable(true);
        row.failsafe->setMinimumWidth(128);
        row.map = new QComboBox(grid);
        row.map->setObjectName(QStringLiteral("channelMap_") + n);
        row.map->setMinimumWidth(80);
        row.fixed = SectionWidgets::spinBox(grid, QStringLiteral("noneValue_") + n, -100.0, 100.0);
        row.fixed->hide();

        const int r = c + 1;
        layout->addWidget(label, r, ChannelColumn);
        layout->addWidget(row.phase, r, PhaseColumn);
        layout->addWidget(row.trim, r, TrimColumn);
        layout->addWidget(row.left, r, LeftColumn);
        layout->addWidget(row.right, r, RightColumn);
        layout->addWidget(row.failsafe, r, FailsafeColumn);
        layout->addWidget(row.map, r, MapColumn);
        layout->addWidget(row.fixed, r, FixedColumn);
        // The fixed value only means something while nothing drives the channel.
        connect(row.map, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this, c](int) { updateFixedValue(c); });
    }
    // The fixed-value column keeps its room, so rows do not jump when it shows.
    layout->setColumnMinimumWidth(FixedColumn, 96);
    layout->setRowStretch(kChannels + 1, 1);
    layout->setColumnStretch(FixedColumn + 1, 1);
}

void SbusConfig::showSection(int section)
{
    showPort(section == 1 ? 1 : 0);
}

void SbusConfig::showPort(int port)
{
    m_port = port == 1 ? 1 : 0;
    refresh(m_port);
    update();
}

void SbusConfig::refreshFromRecord()
{
    refresh(m_port);
}

void SbusConfig::fillSelector(QComboBox *selector, int mapped)
{
    const QSignalBlocker block(selector);
    selector->clear();
    selector->addItems(record().channelMapNames);
    selector->addItem(QString::fromLatin1(kNone));
    // A map beyond the names (a file or a unit with more inputs) selects
    // nothing; the record keeps its value until the user picks one.
    selector->setCurrentIndex(mapped == kChannelMapNone
            ? selector->count() - 1
            : (mapped >= 0 && mapped < selector->count() - 1 ? mapped : -1));
}

void SbusConfig::refresh(int port)
{
    showTuning(port);
    showFixedValues(port);
}

void SbusConfig::showFixedValues(int port)
{
    const DeviceData &d = record();
    for (int c = 0; c < kChannels; ++c)
        m_rows[size_t(c)].fixed->setM_currentValue(d.noneValue[port][c]);
}

void SbusConfig::showTuning(int port)
{
    const DeviceData &d = record();
    for (int c = 0; c < kChannels; ++c) {
        Row &row = m_rows[size_t(c)];
        row.phase->setM_index(d.phase[port][c] != 0 ? 1 : 0);
        row.trim->setM_currentValue(d.fineTuning[port][c]);
        row.left->setM_currentValue(d.leftTrip[port][c]);
        row.right->setM_currentValue(d.rightTrip[port][c]);
        const int failsafe = d.safeProtectionValue[port][c];
        if (failsafe == kFailsafeOff) {
            row.failsafe->setM_checked(false);
            row.failsafe->setM_currentValue(0.0);
        } else {
            // The record holds the magnitude after an answer and the signed
            // value after the page collected its controls; the state says
            // the sign in both cases.
            const int magnitude = qAbs(qBound(-1000, failsafe, 1000));
            row.failsafe->setM_checked(true);
            row.failsafe->setM_currentValue(d.safeProtectionState[port][c] == 1 ? -magnitude : magnitude);
        }
        fillSelector(row.map, d.channelMap[port][c]);
        updateFixedValue(c);
    }
}

void SbusConfig::updateFixedValue(int channel)
{
    Row &row = m_rows[size_t(channel)];
    row.fixed->setVisible(row.map->currentText() == QLatin1String(kNone));
}

void SbusConfig::collect(int port, DeviceData &d) const
{
    for (int c = 0; c < kChannels; ++c) {
        const Row &row = m_rows[size_t(c)];
        d.fineTuning[port][c] = qRound(row.trim->currentValue());
        d.leftTrip[port][c] = qRound(row.left->currentValue());
        d.rightTrip[port][c] = qRound(row.right->currentValue());
        if (row.failsafe->checked()) {
            const int value = qRound(row.failsafe->currentValue());
            d.safeProtectionValue[port][c] = value;
            d.safeProtectionState[port][c] = value < 0 ? 1 : 0;
        } else {
            d.safeProtectionValue[port][c] = kFailsafeOff;
            d.safeProtectionState[port][c] = 0;
        }
        d.phase[port][c] = row.phase->index() != 0 ? 1 : 0;
        const int index = row.map->currentIndex();
        if (index == row.map->count() - 1)
            d.channelMap[port][c] = kChannelMapNone;
        else if (index >= 0)
            d.channelMap[port][c] = index;
        d.noneValue[port][c] = qRound(row.fixed->currentValue());
    }
}

QList<QByteArray> SbusConfig::collectPayloads()
{
    collect(m_port, record());
    const DeviceData &d = record();
    return { SbusCodec::tuningPayload(d, m_port), SbusCodec::nonePayload(d, m_port) };
}

QList<QByteArray> SbusConfig::payloadsFromRecord()
{
    return SbusCodec::payloadsFromRecord(record());
}

QString SbusConfig::fileFragment()
{
    return SbusCodec::fileFragment(record());
}

void SbusConfig::slot_information(CodeID code, QByteArray data)
{
    // An answer shows only what it carries, and only on its own port: the
    // user's edits of the other fields stay. One for the other port only
    // changes the record.
    if (code == SbusTuningData) {
        if (SbusCodec::decodeTuning(data, record()) == m_port)
            showTuning(m_port);
    } else if (code == SbusNoneData) {
        if (SbusCodec::decodeNone(data, record()) == m_port)
            showFixedValues(m_port);
    }
}
