#include "DataWidget.h"

#include "CanFrame.h"
#include "MCheckBox.h"
#include "MDlg.h"
#include "Messages.h"
#include "PageHost.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr int kDataBytes = 8;
constexpr int kBits = 8;
const char kNone[] = "NONE";

bool bit(quint8 mask, int i)
{
    return (mask >> i) & 1;
}

void setBit(quint8 &mask, int i, bool on)
{
    mask = quint8(on ? (mask | (1 << i)) : (mask & ~(1 << i)));
}

// The channel a combo shows: its index, the last item ("NONE") as 254.
int channelOf(const QComboBox *combo)
{
    const int index = combo->currentIndex();
    return index == combo->count() - 1 ? kCanChannelNone : index;
}

// Wide enough for its longest item beside the style sheet's arrow, so that
// "NONE" is never cut.
void fitToItems(QComboBox *combo)
{
    int widest = 0;
    for (int i = 0; i < combo->count(); ++i)
        widest = qMax(widest, combo->fontMetrics().horizontalAdvance(combo->itemText(i)));
    combo->setMinimumWidth(widest + 40);
}

void showChannel(QComboBox *combo, int channel)
{
    const QSignalBlocker block(combo);
    // A stored channel the list does not have shows nothing and stays stored.
    combo->setCurrentIndex(channel == kCanChannelNone ? combo->count() - 1 : channel);
}
} // namespace

DataWidget::DataWidget(CanFrame *editor)
    : QDialog(editor)
    , m_editor(editor)
{
    setObjectName(QStringLiteral("DataWidget"));
    // Dark, as the setting pages' panels: the drawn toggles' white captions read well on it.
    setStyleSheet(QStringLiteral("QDialog#DataWidget { background-color: rgb(70, 70, 70); }"
                                 " QGroupBox, QLabel, QCheckBox { color: rgb(235, 235, 235); }"));
    auto *layout = new QVBoxLayout(this);
    auto *body = new QHBoxLayout;
    body->setSpacing(16);
    body->addWidget(buildRows());
    body->addWidget(buildSettings(), 1);
    layout->addLayout(body);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    auto *save = new QPushButton(tr("保存"), this);
    save->setObjectName(QStringLiteral("canRestore"));
    auto *back = new QPushButton(tr("返回"), this);
    back->setObjectName(QStringLiteral("canReturn"));
    buttons->addWidget(save);
    buttons->addWidget(back);
    layout->addLayout(buttons);
    connect(save, &QPushButton::clicked, this, &DataWidget::on_buttonClicked_save);
    connect(back, &QPushButton::clicked, this, &DataWidget::on_buttonClicked_return);
    updateTitle();
}

QWidget *DataWidget::buildRows()
{
    auto *box = new QGroupBox(this);
    auto *grid = new QGridLayout(box);
    grid->setHorizontalSpacing(14);
    m_inUse = new QButtonGroup(this);
    m_inUse->setExclusive(false);
    for (int i = 0; i < kDataBytes; ++i) {
        Row &r = m_rows[size_t(i)];
        const int n = i + 1;
        r.inUse = new QCheckBox(tr("数据 %1").arg(n), box);
        r.inUse->setObjectName(QStringLiteral("dataConfig_%1").arg(n));
        m_inUse->addButton(r.inUse, n);
        r.linear = new MCheckBox(box);
        r.linear->setObjectName(QStringLiteral("dataLinear_%1").arg(n));
        r.linear->setM_text(tr("线性"));
        r.linear->setM_radio(true);
        r.nonlinear = new MCheckBox(box);
        r.nonlinear->setObjectName(QStringLiteral("dataNonlinear_%1").arg(n));
        r.nonlinear->setM_text(tr("非线性"));
        r.nonlinear->setM_radio(true);
        for (MCheckBox *toggle : { r.linear, r.nonlinear }) {
            toggle->setMinimumWidth(toggle->sizeHint().width() + 8);
            connect(toggle, &MCheckBox::checkedChange, this, &DataWidget::slot_checkedChange);
        }
        grid->addWidget(r.inUse, i, 0);
        grid->addWidget(r.linear, i, 1);
        grid->addWidget(r.nonlinear, i, 2);
    }
    connect(m_inUse, &QButtonGroup::idClicked, this, &DataWidget::on_buttonClicked);
    return box;
}

QWidget *DataWidget::buildSettings()
{
    auto *column = new QWidget(this);
    auto *layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);

    m_linearBox = new QGroupBox(tr("线性设置"), column);
    auto *linear = new QGridLayout(m_linearBox);
    m_dataIndex = new QComboBox(m_linearBox);
    m_dataIndex->setObjectName(QStringLiteral("dataIndex"));
    for (int i = 1; i <= kDataBytes; ++i)
        m_dataIndex->addItem(QString::number(i));
    fitToItems(m_dataIndex);
    m_channel = new QComboBox(m_linearBox);
    m_channel->setObjectName(QStringLiteral("channelMap"));
    linear->addWidget(new QLabel(tr("数据下标"), m_linearBox), 0, 0);
    linear->addWidget(m_dataIndex, 0, 1);
    linear->addWidget(new QLabel(tr("通道映射"), m_linearBox), 1, 0);
    linear->addWidget(m_channel, 1, 1);
    linear->setColumnStretch(2, 1);
    layout->addWidget(m_linearBox);

    m_nonlinearBox = new QGroupBox(tr("非线性设置"), column);
    auto *bits = new QGridLayout(m_nonlinearBox);
    for (int b = 0; b < kBits; ++b) {
        QComboBox *combo = new QComboBox(m_nonlinearBox);
        combo->setObjectName(QStringLiteral("bitChannel_%1").arg(b));
        m_bits[size_t(b)] = combo;
        bits->addWidget(new QLabel(QStringLiteral("Bit %1").arg(b), m_nonlinearBox), b % 4, 2 * (b / 4));
        bits->addWidget(combo, b % 4, 2 * (b / 4) + 1);
        connect(combo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &DataWidget::slot_checkNoChannel);
    }
    layout->addWidget(m_nonlinearBox);
    layout->addStretch(1);

    connect(m_dataIndex, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &DataWidget::choose);
    connect(m_channel, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &DataWidget::slot_checkNoChannel);
    return column;
}

void DataWidget::updateTitle()
{
    setWindowTitle(tr("数据解析 - %1").arg(m_editor->index()));
}

void DataWidget::fillChannels(QComboBox *combo, const QStringList &names)
{
    const QSignalBlocker block(combo);
    combo->clear();
    combo->addItems(names);
    combo->addItem(QLatin1String(kNone));
    fitToItems(combo);
}

void DataWidget::load()
{
    const CanFrameRecord *frame = m_editor->frame();
    if (!frame)
        return;
    m_edit = *frame;
    const DeviceData &data = m_editor->data();
    fillChannels(m_channel, data.pyxChannelNames);
    for (QComboBox *combo : m_bits)
        fillChannels(combo, data.pyxBitNames);
    for (int i = 0; i < kDataBytes; ++i) {
        Row &r = m_rows[size_t(i)];
        r.inUse->setChecked(bit(m_edit.dataMask, i));
        r.nonlinear->setM_checked(bit(m_edit.nonlinearMask, i));
        r.linear->setM_checked(!bit(m_edit.nonlinearMask, i));
    }
    int first = 0;
    while (first < kDataBytes - 1 && !bit(m_edit.dataMask, first))
        ++first;
    choose(first);
}

void DataWidget::choose(int byte)
{
    m_current = qBound(0, byte, kDataBytes - 1);
    const QSignalBlocker block(m_dataIndex);
    m_dataIndex->setCurrentIndex(m_current);
    showCurrent();
}

void DataWidget::showCurrent()
{
    const int i = m_current;
    for (int k = 0; k < kDataBytes; ++k) {
        const bool inUse = bit(m_edit.dataMask, k);
        m_rows[size_t(k)].linear->setM_checkEnable(inUse);
        m_rows[size_t(k)].nonlinear->setM_checkEnable(inUse);
    }
    const bool inUse = bit(m_edit.dataMask, i);
    const bool nonlinear = bit(m_edit.nonlinearMask, i);
    m_channel->setEnabled(inUse && !nonlinear);
    m_nonlinearBox->setEnabled(inUse && nonlinear);
    showChannel(m_channel, m_edit.byteMap[i][1]);
    for (int b = 0; b < kBits; ++b)
        showChannel(m_bits[size_t(b)], m_edit.bitMap[i][b][0]);
}

// A data byte switched on counts one more byte in use, switched off one less:
// the data length counts the bytes in use, not the highest one.
void DataWidget::on_buttonClicked(int id)
{
    const int i = id - 1;
    if (i < 0 || i >= kDataBytes)
        return;
    const bool on = m_rows[size_t(i)].inUse->isChecked();
    if (on != bit(m_edit.dataMask, i)) {
        setBit(m_edit.dataMask, i, on);
        m_edit.dlc = quint8(qBound(0, m_edit.dlc + (on ? 1 : -1), kDataBytes));
    }
    choose(i);
}

void DataWidget::slot_checkedChange(QString name)
{
    const bool nonlinear = name.startsWith(QLatin1String("dataNonlinear_"));
    const int i = name.section(QLatin1Char('_'), 1).toInt() - 1;
    if (i < 0 || i >= kDataBytes)
        return;
    Row &r = m_rows[size_t(i)];
    (nonlinear ? r.linear : r.nonlinear)->setM_checked(false);
    setBit(m_edit.nonlinearMask, i, nonlinear);
    choose(i);
}

// A channel combo changed: the shown byte takes what its combos show, "NONE"
// as 254. A combo that shows nothing (a stored channel beyond the list)
// leaves its channel as it was.
void DataWidget::slot_checkNoChannel(int)
{
    const int i = m_current;
    if (m_channel->currentIndex() >= 0)
        m_edit.byteMap[i][1] = quint8(channelOf(m_channel));
    for (int b = 0; b < kBits; ++b) {
        if (m_bits[size_t(b)]->currentIndex() >= 0)
            m_edit.bitMap[i][b][0] = quint8(channelOf(m_bits[size_t(b)]));
    }
}

void DataWidget::slot_dialog(bool state)
{
    m_answer = state;
}

void DataWidget::on_buttonClicked_save()
{
    MDlg *dialog = Messages::newDialog(this, true);
    dialog->setWindowTitle(tr("保存数据解析"));
    if (PageHost *host = PageHost::instance())
        dialog->setStyleSheet(host->dialogStyleSheet());
    dialog->setText(tr("确认要保存数据解析吗！"));
    connect(dialog, &MDlg::signal_dialog, this, &DataWidget::slot_dialog);
    m_answer = false;
    // The frame may go while the question is open (a delete, a file load, an
    // answer of the unit, a reconnect that rebuilds the pages), and this
    // window with it.
    if (!Messages::exec(dialog, this))
        return;
    const bool confirmed = m_answer;
    m_answer = false;
    CanFrameRecord *frame = m_editor->frame();
    if (!confirmed || !frame)
        return;
    frame->dlc = m_edit.dlc;
    frame->dataMask = m_edit.dataMask;
    frame->nonlinearMask = m_edit.nonlinearMask;
    for (int i = 0; i < kDataBytes; ++i) {
        if (!bit(m_edit.dataMask, i))
            continue;
        if (bit(m_edit.nonlinearMask, i)) {
            for (int b = 0; b < kBits; ++b)
                frame->bitMap[i][b][0] = m_edit.bitMap[i][b][0];
        } else {
            frame->byteMap[i][0] = quint8(i);
            frame->byteMap[i][1] = m_edit.byteMap[i][1];
        }
    }
    m_editor->refresh();
}

void DataWidget::on_buttonClicked_return()
{
    close();
}
