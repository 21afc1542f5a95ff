#include "SbusHold.h"

#include "DeviceData.h"
#include "HoldCodec.h"
#include "MCheckBox.h"
#include "SectionWidgets.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

namespace
{
const char kNone[] = "NONE";
constexpr int kToggleColumns = 8;
} // namespace

SbusHold::SbusHold(QWidget *parent)
    : SettingPage(parent)
{
    setObjectName(QStringLiteral("SbusHold"));
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(6, 6, 6, 6);
    // A window too small for both blocks scrolls rather than squeezing them.
    auto *scroll = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("holdScroll"));
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setStyleSheet(QStringLiteral("QScrollArea, QWidget#holdBlocks { background: transparent; }"));
    auto *blocks = new QWidget(scroll);
    blocks->setObjectName(QStringLiteral("holdBlocks"));
    auto *layout = new QVBoxLayout(blocks);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(18);
    layout->addWidget(buildBlock(0, blocks));
    layout->addWidget(buildBlock(1, blocks));
    layout->addStretch(1);
    scroll->setWidget(blocks);
    outer->addWidget(scroll);
}

QWidget *SbusHold::buildBlock(int port, QWidget *parent)
{
    Block &b = m_blocks[size_t(port)];
    const QString prefix = QStringLiteral("sbus%1").arg(port + 1);
    // A dark panel, on which the drawn check boxes' white captions read well.
    QWidget *block = SectionWidgets::panel(prefix + QStringLiteral("Block"));
    block->setParent(parent);
    auto *grid = new QGridLayout(block);
    grid->setContentsMargins(16, 12, 16, 12);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);

    auto *title = new QLabel(QStringLiteral("SBUS-%1").arg(port + 1), block);
    QFont bold = title->font();
    bold.setBold(true);
    bold.setPointSize(bold.pointSize() + 2);
    title->setFont(bold);
    grid->addWidget(title, 0, 0, 1, 2);

    grid->addWidget(new QLabel(tr("控制开关："), block), 1, 0);
    b.selector = new QComboBox(block);
    b.selector->setObjectName(prefix);
    b.selector->setMinimumWidth(120);
    grid->addWidget(b.selector, 1, 1, 1, 2, Qt::AlignLeft);

    grid->addWidget(new QLabel(tr("保持档位："), block), 2, 0);
    auto *positions = new QHBoxLayout;
    positions->setSpacing(24);
    for (int k = 0; k < 3; ++k) {
        MCheckBox *item
            = SectionWidgets::radioItem(block, prefix + QStringLiteral("gear_%1").arg(k), QString::number(k));
        positions->addWidget(item);
        b.positions[size_t(k)] = item;
        connect(item, &MCheckBox::checkedChange, this,
            port == 0 ? &SbusHold::slot_sbus1CheckedChange : &SbusHold::slot_sbus2CheckedChange);
    }
    positions->addStretch(1);
    grid->addLayout(positions, 2, 1, 1, kToggleColumns);

    for (int c = 0; c < kChannels; ++c) {
        MCheckBox *toggle = SectionWidgets::checkItem(
            block, prefix + QStringLiteral("Channel_%1").arg(c + 1), QStringLiteral("CH%1").arg(c + 1));
        toggle->setMinimumWidth(toggle->sizeHint().width() + 8);
        b.channels[size_t(c)] = toggle;
        grid->addWidget(toggle, 3 + c / kToggleColumns, 1 + c % kToggleColumns);
    }
    grid->setColumnStretch(kToggleColumns + 1, 1);

    connect(b.selector, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        port == 0 ? &SbusHold::on_sbus1_currentIndexChanged : &SbusHold::on_sbus2_currentIndexChanged);
    return block;
}

void SbusHold::showSection(int)
{
    refreshFromRecord();
}

void SbusHold::refreshFromRecord()
{
    const DeviceData &d = record();
    for (Block &b : m_blocks) {
        const QSignalBlocker block(b.selector);
        b.selector->clear();
        b.selector->addItems(d.holdSwitchNames);
    }
    // The first entry is "no switch"; a stored switch n is entry n + 1.
    // Both ports are checked against the entry count of port 1's selector,
    // and port 2 stays as filled when its switch does not fit. Keep it so.
    const int switches = m_blocks[0].selector->count() - 1;
    {
        const int stored = d.sbusHoldSwitch[0];
        const QSignalBlocker block(m_blocks[0].selector);
        const bool none = stored == kNoSelection || stored >= switches || stored < 0;
        m_blocks[0].selector->setCurrentIndex(none ? 0 : stored + 1);
    }
    {
        const int stored = d.sbusHoldSwitch[1];
        const QSignalBlocker block(m_blocks[1].selector);
        if (stored != kNoSelection && stored < switches && stored >= 0)
            m_blocks[1].selector->setCurrentIndex(stored + 1);
    }
    showPort(0, 0);
    showPort(1, 0);
}

bool SbusHold::showsStoredSwitch(int port) const
{
    return m_blocks[size_t(port)].selector->currentIndex() - 1 == record().sbusHoldSwitch[port];
}

void SbusHold::showPort(int port, int position)
{
    Block &b = m_blocks[size_t(port)];
    b.shownPosition = position;
    const bool noSwitch = b.selector->currentIndex() <= 0;
    for (int k = 0; k < 3; ++k) {
        b.positions[size_t(k)]->setM_checkEnable(!noSwitch);
        b.positions[size_t(k)]->setM_checked(!noSwitch && k == position);
    }
    // A switch other than the stored one holds nothing until it is written.
    const bool stored = !noSwitch && showsStoredSwitch(port);
    const int(&held)[kChannels] = record().sbusHold[port][position];
    for (int c = 0; c < kChannels; ++c) {
        b.channels[size_t(c)]->setM_checkEnable(!noSwitch);
        b.channels[size_t(c)]->setM_checked(stored && held[c] != 0);
    }
}

int SbusHold::checkedPosition(int port) const
{
    const Block &b = m_blocks[size_t(port)];
    if (b.positions[0]->checked())
        return 0;
    return b.positions[1]->checked() ? 1 : 2;
}

// The toggles of the position being left go into the record, so that several
// positions can be edited before one write; only while they show the
// record's own switch.
void SbusHold::keepEdits(int port)
{
    const Block &b = m_blocks[size_t(port)];
    if (b.selector->currentIndex() <= 0 || !showsStoredSwitch(port))
        return;
    int(&held)[kChannels] = record().sbusHold[port][b.shownPosition];
    for (int c = 0; c < kChannels; ++c)
        held[c] = b.channels[size_t(c)]->checked() ? 1 : 0;
}

void SbusHold::positionChosen(int port, const QString &name)
{
    Block &b = m_blocks[size_t(port)];
    keepEdits(port);
    const QVector<MCheckBox *> group(b.positions.begin(), b.positions.end());
    SectionWidgets::keepOnlyChecked(group, name);
    showPort(port, qMax(0, SectionWidgets::checkedIndex(group)));
}

void SbusHold::on_sbus1_currentIndexChanged(int)
{
    showPort(0, 0);
}

void SbusHold::on_sbus2_currentIndexChanged(int)
{
    showPort(1, 0);
}

void SbusHold::slot_sbus1CheckedChange(QString name)
{
    positionChosen(0, name);
}

void SbusHold::slot_sbus2CheckedChange(QString name)
{
    positionChosen(1, name);
}

void SbusHold::collect(int port, DeviceData &d) const
{
    const Block &b = m_blocks[size_t(port)];
    const bool none = b.selector->currentText() == QLatin1String(kNone) || b.selector->currentIndex() < 0;
    d.sbusHoldSwitch[port] = none ? kNoSelection : b.selector->currentIndex() - 1;
    int(&held)[kChannels] = d.sbusHold[port][checkedPosition(port)];
    for (int c = 0; c < kChannels; ++c)
        held[c] = b.channels[size_t(c)]->checked() ? 1 : 0;
}

QList<QByteArray> SbusHold::collectPayloads()
{
    collect(0, record());
    collect(1, record());
    return { HoldCodec::payload(record()) };
}

QList<QByteArray> SbusHold::payloadsFromRecord()
{
    return { HoldCodec::payload(record()) };
}

QString SbusHold::fileFragment()
{
    return HoldCodec::fileFragment(record());
}

void SbusHold::slot_information(CodeID code, QByteArray data)
{
    if (code == ChannelHoldData && HoldCodec::decode(data, record()))
        refreshFromRecord();
}
