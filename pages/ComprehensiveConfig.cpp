#include "ComprehensiveConfig.h"

#include "DeviceData.h"
#include "MCheckBox.h"
#include "MDlg.h"
#include "MSpinBox.h"
#include "Messages.h"
#include "PageHost.h"
#include "PhaseSwitch.h"
#include "SbusChannel.h"
#include "SectionColumn.h"
#include "SectionWidgets.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

using ComprehensiveCodec::Settings;
using SectionWidgets::caption;

namespace
{
const char kNone[] = "NONE";
constexpr int kHidColumns = 4;
constexpr int kControlOptions = 4;
constexpr double kFallbackMaxVolts = 25.5;

enum Section { Hid, ThrottleHold, Buzzer, Baud, Sbus, About };

QGridLayout *panelGrid(QWidget *body)
{
    auto *grid = new QGridLayout(body);
    grid->setContentsMargins(16, 12, 16, 12);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);
    return grid;
}

QHBoxLayout *row()
{
    auto *layout = new QHBoxLayout;
    layout->setSpacing(16);
    return layout;
}

// A switch selector lists "NONE" first: the unit's 255 is item 0, switch n
// is item n + 1. A switch beyond the list selects nothing.
void selectSwitch(QComboBox *selector, int value)
{
    const QSignalBlocker block(selector);
    if (value == kNoSelection)
        selector->setCurrentIndex(selector->count() > 0 ? 0 : -1);
    else
        selector->setCurrentIndex(value >= 0 && value + 1 < selector->count() ? value + 1 : -1);
}

void refill(QComboBox *selector, const QStringList &items)
{
    const QSignalBlocker block(selector);
    selector->clear();
    selector->addItems(items);
}

QProgressBar *levelBar(QWidget *parent, const QString &name)
{
    auto *bar = new QProgressBar(parent);
    bar->setObjectName(name);
    bar->setRange(0, 100);
    bar->setValue(0);
    bar->setTextVisible(false);
    bar->setFixedSize(160, 12);
    return bar;
}
} // namespace

ComprehensiveConfig::ComprehensiveConfig(QWidget *parent)
    : SettingPage(parent)
{
    setObjectName(QStringLiteral("ComprehensiveConfig"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    m_column = new SectionColumn(this);
    layout->addWidget(m_column);
    m_column->addSection(QStringLiteral("hidSetting"), tr("  HID设置"), buildHid());
    m_column->addSection(QStringLiteral("throttleHolding"), tr("  油门保持"), buildThrottleHold());
    m_column->addSection(QStringLiteral("buzzerSetting"), tr("  蜂鸣器设置"), buildBuzzer());
    m_column->addSection(QStringLiteral("baudSetting"), tr("  波特率设置"), buildBaud());
    m_column->addSection(QStringLiteral("outputSetting"), tr("  SBUS设置"), buildSbus());
    m_column->addSection(QStringLiteral("aboutDevices"), tr("  关于设备"), buildAbout());

    void (ComprehensiveConfig::*const toggles[])() = { &ComprehensiveConfig::on_dropDownButton_0_clicked,
        &ComprehensiveConfig::on_dropDownButton_1_clicked, &ComprehensiveConfig::on_dropDownButton_2_clicked,
        &ComprehensiveConfig::on_dropDownButton_3_clicked, &ComprehensiveConfig::on_dropDownButton_4_clicked,
        &ComprehensiveConfig::on_dropDownButton_5_clicked };
    for (int section = Hid; section <= About; ++section)
        connect(m_column->dropDownButton(section), &QPushButton::clicked, this, toggles[section]);
}

// ---------------------------------------------------------------- building

QWidget *ComprehensiveConfig::buildHid()
{
    QWidget *body = SectionWidgets::panel(QStringLiteral("hidPanel"));
    QGridLayout *grid = panelGrid(body);
    for (int i = 0; i < kHidAxes; ++i) {
        QComboBox *selector = SectionWidgets::selector(body, QStringLiteral("hidMap_%1").arg(i + 1), 80);
        m_hidMap[size_t(i)] = selector;
        const int r = i / kHidColumns;
        const int c = 2 * (i % kHidColumns);
        grid->addWidget(caption(QStringLiteral("HID%1 :").arg(i + 1), body), r, c);
        grid->addWidget(selector, r, c + 1);
    }
    m_hidOutput = SectionWidgets::selector(body, QStringLiteral("hidOutput"), 150);
    m_hidOutput->addItems({ tr("HID游戏手柄"), tr("HID通讯模式") });
    grid->addWidget(caption(tr("HID输出 :"), body), 2, 0);
    grid->addWidget(m_hidOutput, 2, 1, 1, 3, Qt::AlignLeft);
    grid->setColumnStretch(2 * kHidColumns, 1);
    return body;
}

QWidget *ComprehensiveConfig::buildThrottleHold()
{
    QWidget *body = SectionWidgets::panel(QStringLiteral("throttlePanel"));
    QGridLayout *grid = panelGrid(body);

    m_throttle = SectionWidgets::selector(body, QStringLiteral("throttle"), 100);
    grid->addWidget(caption(tr("控制开关 :"), body), 0, 0);
    grid->addWidget(m_throttle, 0, 1, Qt::AlignLeft);

    QHBoxLayout *gears = row();
    for (int k = 0; k < 3; ++k) {
        MCheckBox *item = SectionWidgets::radioItem(
            body, QStringLiteral("throttleGear_%1").arg(k + 1), QString::number(k + 1));
        connect(item, &MCheckBox::checkedChange, this, &ComprehensiveConfig::slot_throttleCheckedChange);
        m_throttleGears.append(item);
        gears->addWidget(item);
    }
    gears->addStretch(1);
    grid->addWidget(caption(tr("生效档位 :"), body), 1, 0);
    grid->addLayout(gears, 1, 1, 1, 3);

    m_holdValue = SectionWidgets::spinBox(body, QStringLiteral("throttleHoldValue"), -150.0, 150.0);
    grid->addWidget(caption(tr("油门保持值 :"), body), 2, 0);
    grid->addWidget(m_holdValue, 2, 1);
    connect(m_holdValue, &MSpinBox::currentValueChanged, this,
        &ComprehensiveConfig::slot_throttleHoldValueChanged);

    // The speeds reach as far as their byte does, and step only through
    // what it can hold: tenths up to 2.0 s, whole seconds from 3 s.
    m_recoverySpeed = SectionWidgets::spinBox(
        body, QStringLiteral("recoverySpeed"), 0.0, ComprehensiveCodec::maxSpeed(), 1);
    m_holdSpeed
        = SectionWidgets::spinBox(body, QStringLiteral("holdSpeed"), 0.0, ComprehensiveCodec::maxSpeed(), 1);
    connect(m_recoverySpeed, &MSpinBox::currentValueChanged, this,
        [this]() { keepSpeedStorable(m_recoverySpeed, m_shownSpeeds[0]); });
    connect(m_holdSpeed, &MSpinBox::currentValueChanged, this,
        [this]() { keepSpeedStorable(m_holdSpeed, m_shownSpeeds[1]); });
    grid->addWidget(caption(tr("恢复速度(S) :"), body), 3, 0);
    grid->addWidget(m_recoverySpeed, 3, 1);
    grid->addWidget(caption(tr("保持速度(S) :"), body), 3, 2);
    grid->addWidget(m_holdSpeed, 3, 3);

    m_throttleBar = new SbusChannel(body);
    m_throttleBar->setObjectName(QStringLiteral("throttleBar"));
    m_throttleBar->setMinimumSize(300, 36);
    grid->addWidget(caption(tr("油门"), body), 4, 0);
    grid->addWidget(m_throttleBar, 4, 1, 1, 3);
    grid->setColumnStretch(4, 1);

    connect(m_throttle, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &ComprehensiveConfig::on_throttle_currentIndexChanged);
    on_throttle_currentIndexChanged(-1);
    return body;
}

QWidget *ComprehensiveConfig::buildBuzzer()
{
    QWidget *body = SectionWidgets::panel(QStringLiteral("buzzerPanel"));
    QGridLayout *grid = panelGrid(body);
    m_freeWarning = SectionWidgets::spinBox(body, QStringLiteral("freeWarning"), 0.0, 255.0);
    m_lowVoltage = SectionWidgets::spinBox(body, QStringLiteral("lowVoltage"), 0.0, kFallbackMaxVolts, 2);
    m_batteryVoltage = caption(QString(), body);
    m_batteryVoltage->setObjectName(QStringLiteral("batteryVoltage"));
    grid->addWidget(caption(tr("空闲报警 :"), body), 0, 0);
    grid->addWidget(m_freeWarning, 0, 1);
    grid->addWidget(caption(tr("低压报警 :"), body), 1, 0);
    grid->addWidget(m_lowVoltage, 1, 1);
    grid->addWidget(caption(tr("电池电压 :"), body), 2, 0);
    grid->addWidget(m_batteryVoltage, 2, 1);
    grid->setColumnStretch(2, 1);
    return body;
}

QWidget *ComprehensiveConfig::buildBaud()
{
    QWidget *body = SectionWidgets::panel(QStringLiteral("baudPanel"));
    QGridLayout *grid = panelGrid(body);
    m_baud = SectionWidgets::selector(body, QStringLiteral("baud"), 110);
    m_baud->addItems(ComprehensiveCodec::baudTexts());
    m_baudIndex = m_baud->currentIndex();
    // Asked once the selector is done with the choice: a reconnect while the
    // question is open takes the selector away with the page.
    connect(m_baud, QOverload<int>::of(&QComboBox::activated), this, &ComprehensiveConfig::confirmBaud,
        Qt::QueuedConnection);
    grid->addWidget(caption(tr("波特率 :"), body), 0, 0);
    grid->addWidget(m_baud, 0, 1);
    grid->setColumnStretch(2, 1);
    return body;
}

QWidget *ComprehensiveConfig::buildSbus()
{
    QWidget *body = SectionWidgets::panel(QStringLiteral("sbusPanel"));
    QGridLayout *grid = panelGrid(body);

    QHBoxLayout *outputs = row();
    for (int port = 0; port < 2; ++port) {
        m_sbusOutput[size_t(port)] = SectionWidgets::checkItem(body,
            QStringLiteral("sbus%1Output").arg(port + 1), port == 0 ? tr("输出SBUS1") : tr("输出SBUS2"));
        outputs->addWidget(m_sbusOutput[size_t(port)]);
    }
    outputs->addStretch(1);
    grid->addWidget(caption(tr("SBUS 输出 :"), body), 0, 0);
    grid->addLayout(outputs, 0, 1);

    for (int port = 0; port < 2; ++port) {
        const QString prefix = QStringLiteral("sbus%1").arg(port + 1);
        QHBoxLayout *line = row();
        m_priority[size_t(port)]
            = SectionWidgets::spinBox(body, prefix + QStringLiteral("Priority"), 0.0, 15.0);
        line->addWidget(m_priority[size_t(port)]);
        for (int v = 0; v < 2; ++v) {
            MCheckBox *item
                = SectionWidgets::radioItem(body, prefix + QStringLiteral("Version_%1").arg(v + 1),
                    v == 0 ? QStringLiteral("V1.0") : QStringLiteral("V2.0"));
            connect(item, &MCheckBox::checkedChange, this,
                port == 0 ? &ComprehensiveConfig::slot_sbus1VersionCheckedChange
                          : &ComprehensiveConfig::slot_sbus2VersionCheckedChange);
            m_versions[size_t(port)].append(item);
            line->addWidget(item);
        }
        line->addStretch(1);
        grid->addWidget(
            caption(port == 0 ? tr("SBUS1 优先级和协议 :") : tr("SBUS2 优先级和协议 :"), body), 1 + port, 0);
        grid->addLayout(line, 1 + port, 1);
    }

    m_externalInput = new PhaseSwitch(body);
    m_externalInput->setObjectName(QStringLiteral("externalInput"));
    m_externalInput->setM_positive(tr("外部SBUS1 输入"));
    m_externalInput->setM_negative(tr("外部SBUS2 输入"));
    m_externalInput->setMinimumSize(m_externalInput->sizeHint());
    grid->addWidget(caption(tr("外部Sbus输入 :"), body), 3, 0);
    grid->addWidget(m_externalInput, 3, 1, Qt::AlignLeft);

    m_sbusControl = SectionWidgets::selector(body, QStringLiteral("sbusControl"), 100);
    grid->addWidget(caption(tr("SBUS 控制开关 :"), body), 4, 0);
    grid->addWidget(m_sbusControl, 4, 1, Qt::AlignLeft);

    QHBoxLayout *gears = row();
    for (int k = 0; k < 3; ++k) {
        MCheckBox *item = SectionWidgets::radioItem(
            body, QStringLiteral("sbusControlGear_%1").arg(k + 1), QString::number(k + 1));
        connect(item, &MCheckBox::checkedChange, this, &ComprehensiveConfig::slot_sbusControlCheckedChange);
        m_controlGears.append(item);
        gears->addWidget(item);
    }
    m_controlGears.first()->setM_checked(true);
    gears->addStretch(1);
    grid->addWidget(caption(tr("开关档位 :"), body), 5, 0);
    grid->addLayout(gears, 5, 1);

    // What the switch position chosen above turns on.
    const QString options[kControlOptions]
        = { tr("输出SBUS1"), tr("输出SBUS2"), tr("外部SBUS1 输入"), tr("外部SBUS2 输入") };
    auto *optionGrid = new QGridLayout;
    optionGrid->setHorizontalSpacing(16);
    optionGrid->setVerticalSpacing(8);
    for (int o = 0; o < kControlOptions; ++o) {
        m_controlOptions[size_t(o)]
            = SectionWidgets::checkItem(body, QStringLiteral("sbusControlOption_%1").arg(o + 1), options[o]);
        optionGrid->addWidget(m_controlOptions[size_t(o)], o / 2, o % 2);
    }
    optionGrid->setColumnStretch(2, 1);
    grid->addLayout(optionGrid, 6, 1);
    grid->setColumnStretch(2, 1);

    connect(m_sbusControl, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &ComprehensiveConfig::on_sbusControl_currentIndexChanged);
    on_sbusControl_currentIndexChanged(-1);
    return body;
}

QWidget *ComprehensiveConfig::buildAbout()
{
    QWidget *body = SectionWidgets::panel(QStringLiteral("aboutPanel"));
    QGridLayout *grid = panelGrid(body);
    m_battery = caption(QString(), body);
    m_battery->setObjectName(QStringLiteral("battery"));
    m_battery->setMinimumWidth(150);
    m_batteryLevel = levelBar(body, QStringLiteral("batteryLevel"));
    m_signal = caption(QString(), body);
    m_signal->setObjectName(QStringLiteral("signal"));
    m_signalLevel = levelBar(body, QStringLiteral("signalLevel"));
    grid->addWidget(caption(tr("电池电压 :"), body), 0, 0);
    grid->addWidget(m_battery, 0, 1);
    grid->addWidget(m_batteryLevel, 0, 2);
    grid->addWidget(caption(tr("信号强度 :"), body), 1, 0);
    grid->addWidget(m_signal, 1, 1);
    grid->addWidget(m_signalLevel, 1, 2);

    m_search = new QPushButton(tr("搜索设备"), body);
    m_search->setObjectName(QStringLiteral("searchDevices"));
    m_search->setFocusPolicy(Qt::NoFocus);
    grid->addWidget(m_search, 2, 0, Qt::AlignLeft);

    m_devices = new QTreeWidget(body);
    m_devices->setObjectName(QStringLiteral("deviceList"));
    m_devices->setColumnCount(2);
    m_devices->setHeaderLabels({ tr("设备"), tr("详细信息") });
    m_devices->setRootIsDecorated(false);
    m_devices->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_devices->setMinimumHeight(110);
    m_devices->setMaximumHeight(140);
    grid->addWidget(m_devices, 3, 0, 1, 4);
    grid->setColumnStretch(3, 1);
    return body;
}

// ---------------------------------------------------------------- sections

void ComprehensiveConfig::on_dropDownButton_0_clicked()
{
    m_column->toggle(Hid);
}

void ComprehensiveConfig::on_dropDownButton_1_clicked()
{
    m_column->toggle(ThrottleHold);
}

void ComprehensiveConfig::on_dropDownButton_2_clicked()
{
    m_column->toggle(Buzzer);
}

void ComprehensiveConfig::on_dropDownButton_3_clicked()
{
    m_column->toggle(Baud);
}

void ComprehensiveConfig::on_dropDownButton_4_clicked()
{
    m_column->toggle(Sbus);
}

void ComprehensiveConfig::on_dropDownButton_5_clicked()
{
    m_column->toggle(About);
}

// ---------------------------------------------------------------- radio groups and selectors

void ComprehensiveConfig::slot_throttleCheckedChange(QString name)
{
    SectionWidgets::keepOnlyChecked(m_throttleGears, name);
}

void ComprehensiveConfig::slot_sbusControlCheckedChange(QString name)
{
    // The options shown belong to the position being left; the chosen one
    // shows its own.
    keepControlSet();
    SectionWidgets::keepOnlyChecked(m_controlGears, name);
    showControlSet(shownControlSet());
}

void ComprehensiveConfig::slot_sbus1VersionCheckedChange(QString name)
{
    SectionWidgets::keepOnlyChecked(m_versions[0], name);
}

void ComprehensiveConfig::slot_sbus2VersionCheckedChange(QString name)
{
    SectionWidgets::keepOnlyChecked(m_versions[1], name);
}

void ComprehensiveConfig::slot_throttleHoldValueChanged()
{
    m_throttleBar->setM_hold(qRound(m_holdValue->currentValue()));
}

void ComprehensiveConfig::armThrottleHold(bool armed)
{
    // Without a switch there is no hold: the positions take no clicks and
    // the bar shows no marker.
    for (MCheckBox *item : m_throttleGears) {
        item->setM_checkEnable(armed);
        if (!armed)
            item->setM_checked(false);
    }
    m_throttleBar->setM_throttleEnable(armed);
}

void ComprehensiveConfig::on_throttle_currentIndexChanged(int index)
{
    // A switch the user picks starts at the record's position, or the first.
    const bool armed = index > 0;
    armThrottleHold(armed);
    if (armed && SectionWidgets::checkedIndex(m_throttleGears) < 0) {
        const int mode = record().throttleData;
        m_throttleGears.at(mode >= 0 && mode < 3 ? mode : 0)->setM_checked(true);
    }
}

void ComprehensiveConfig::keepSpeedStorable(MSpinBox *box, double &shown)
{
    const double value = box->currentValue();
    shown = ComprehensiveCodec::speedToward(shown, value);
    if (shown != value)
        box->setM_currentValue(shown); // comes back here with a storable value
}

void ComprehensiveConfig::showSpeed(MSpinBox *box, double &shown, double seconds)
{
    // What the unit keeps of the value (a file may hold 2.5 s: 2.0 s).
    shown = ComprehensiveCodec::storedSpeed(seconds);
    box->setM_currentValue(shown);
}

void ComprehensiveConfig::on_sbusControl_currentIndexChanged(int index)
{
    const bool armed = index > 0;
    for (MCheckBox *item : m_controlGears)
        item->setM_checkEnable(armed);
    for (MCheckBox *item : m_controlOptions)
        item->setM_checkEnable(armed);
}

int ComprehensiveConfig::shownControlSet() const
{
    // The third set also when no position is checked.
    const int checked = SectionWidgets::checkedIndex(m_controlGears);
    return checked == 0 || checked == 1 ? checked : 2;
}

int ComprehensiveConfig::shownOption(int option) const
{
    return m_controlOptions[size_t(option)]->checked() ? 1 : 0;
}

void ComprehensiveConfig::keepControlSet()
{
    for (int o = 0; o < kControlOptions; ++o)
        m_controlSets[m_shownSet][o] = shownOption(o);
}

void ComprehensiveConfig::showControlSet(int set)
{
    m_shownSet = set;
    for (int o = 0; o < kControlOptions; ++o)
        m_controlOptions[size_t(o)]->setM_checked(m_controlSets[set][o] != 0);
}

void ComprehensiveConfig::confirmBaud(int index)
{
    if (index == m_baudIndex)
        return;
    // A new rate cuts off whatever listens on the data port at the old one.
    MDlg *dialog = Messages::newDialog(this, true);
    dialog->setWindowTitle(tr("波特率设置"));
    if (PageHost *host = PageHost::instance())
        dialog->setStyleSheet(host->dialogStyleSheet());
    dialog->setText(tr("数据口所接设备须使用相同的波特率，确认修改吗？"));
    connect(dialog, &MDlg::signal_dialog, this, &ComprehensiveConfig::slot_dialog);
    m_confirmed = false;
    if (!Messages::exec(dialog, this))
        return; // a reconnect rebuilt the pages meanwhile
    if (m_confirmed) {
        m_baudIndex = index;
    } else {
        const QSignalBlocker block(m_baud);
        m_baud->setCurrentIndex(m_baudIndex);
    }
    m_confirmed = false;
}

void ComprehensiveConfig::slot_dialog(bool state)
{
    m_confirmed = state;
}

// ---------------------------------------------------------------- record -> controls

void ComprehensiveConfig::showHidMapping()
{
    const DeviceData &d = record();
    for (int i = 0; i < kHidAxes; ++i)
        SectionWidgets::selectIfValid(m_hidMap[size_t(i)], d.hidMap[i]);
}

void ComprehensiveConfig::showHidOutput()
{
    SectionWidgets::selectIfValid(m_hidOutput, record().hidOutput);
}

void ComprehensiveConfig::showThrottleHold()
{
    const DeviceData &d = record();
    selectSwitch(m_throttle, d.throttleIndex);
    if (d.throttleIndex == kNoSelection) {
        // No switch: the positions, the hold value and the bar with its
        // marker are cleared.
        armThrottleHold(false);
        m_holdValue->setM_currentValue(0.0);
        m_throttleBar->setM_val(0);
        m_throttleBar->setM_hold(0);
    } else {
        // A mode the unit does not know (3 or more) checks no position; the
        // write then sends mode 2.
        const bool armed = m_throttle->currentIndex() > 0;
        armThrottleHold(armed);
        for (int k = 0; k < 3; ++k)
            m_throttleGears.at(k)->setM_checked(armed && k == d.throttleData);
        m_holdValue->setM_currentValue(d.throttleDataValues[0]);
    }
    showSpeed(m_recoverySpeed, m_shownSpeeds[0], d.throttleDataValues[1]);
    showSpeed(m_holdSpeed, m_shownSpeeds[1], d.throttleDataValues[2]);
}

void ComprehensiveConfig::showWarnings()
{
    const DeviceData &d = record();
    m_freeWarning->setM_currentValue(d.freeWarning);
    // The model's battery limits bound the threshold.
    const bool limits = d.maxVolt > d.minVolt && d.minVolt >= 0.0;
    m_lowVoltage->setM_minValue(limits ? d.minVolt : 0.0);
    m_lowVoltage->setM_maxValue(limits ? d.maxVolt : kFallbackMaxVolts);
    m_lowVoltage->setM_currentValue(d.lowVoltage);
}

void ComprehensiveConfig::showBaud()
{
    // A rate the page does not list leaves the selection as it is.
    const int index = m_baud->findText(QString::number(record().baud));
    if (index >= 0) {
        const QSignalBlocker block(m_baud);
        m_baud->setCurrentIndex(index);
        m_baudIndex = index;
    }
}

void ComprehensiveConfig::showExternalInput()
{
    // The unit's 0 lights the right half, anything else the left one.
    m_externalInput->setM_index(record().externalInput == 0 ? 1 : 0);
}

void ComprehensiveConfig::showSbusOutputs()
{
    for (int port = 0; port < 2; ++port)
        m_sbusOutput[size_t(port)]->setM_checked(record().sbusOutput[port] != 0);
}

void ComprehensiveConfig::showSbusPriorities()
{
    const quint8 priorities = record().sbusPriority;
    m_priority[0]->setM_currentValue(priorities & 0x0F);
    m_priority[1]->setM_currentValue(priorities >> 4);
}

void ComprehensiveConfig::showSbusProtocols()
{
    using namespace ComprehensiveCodec;
    const quint8 bits = record().sbusVersion;
    const quint8 v1[2] = { kSbus1V1, kSbus2V1 };
    const quint8 v2[2] = { kSbus1V2, kSbus2V2 };
    for (int port = 0; port < 2; ++port) {
        // The later bit wins when the unit sets both.
        const bool second = bits & v2[port];
        m_versions[size_t(port)].at(0)->setM_checked((bits & v1[port]) && !second);
        m_versions[size_t(port)].at(1)->setM_checked(second);
    }
}

void ComprehensiveConfig::showSbusControl()
{
    const DeviceData &d = record();
    selectSwitch(m_sbusControl, d.sbusControlSwitch);
    on_sbusControl_currentIndexChanged(m_sbusControl->currentIndex());
    for (int g = 0; g < kSbusControlSets; ++g)
        for (int o = 0; o < kControlOptions; ++o)
            m_controlSets[g][o] = d.sbusControl[g][o];
    showControlSet(shownControlSet());
}

void ComprehensiveConfig::refreshFromRecord()
{
    const DeviceData &d = record();
    for (QComboBox *selector : m_hidMap)
        refill(selector, d.hidMapNames);
    refill(m_throttle, d.holdSwitchNames);
    refill(m_sbusControl, d.sbusControlNames);
    showHidMapping();
    showHidOutput();
    showThrottleHold();
    showWarnings();
    showBaud();
    showExternalInput();
    showSbusOutputs();
    showSbusPriorities();
    showSbusProtocols();
    showSbusControl();
}

// ---------------------------------------------------------------- controls -> payloads

Settings ComprehensiveConfig::shownSettings() const
{
    using namespace ComprehensiveCodec;
    Settings s = Settings::fromRecord(record());
    for (int i = 0; i < kHidAxes; ++i) {
        if (m_hidMap[size_t(i)]->currentIndex() >= 0)
            s.hidMap[i] = m_hidMap[size_t(i)]->currentIndex();
    }
    if (m_hidOutput->currentIndex() >= 0)
        s.hidOutput = m_hidOutput->currentIndex();

    const int throttle = m_throttle->currentIndex();
    if (m_throttle->currentText() == QLatin1String(kNone))
        s.throttleSwitch = kNoSelection;
    else if (throttle >= 0)
        s.throttleSwitch = throttle > 0 ? throttle - 1 : kNoSelection;
    const int gear = SectionWidgets::checkedIndex(m_throttleGears);
    s.throttleMode = gear == 0 || gear == 1 ? gear : 2; // the first, the second or any other
    s.holdValue = SectionWidgets::shownValue(m_holdValue);
    s.recoverySpeed = SectionWidgets::shownValue(m_recoverySpeed);
    s.holdSpeed = SectionWidgets::shownValue(m_holdSpeed);

    s.freeWarning = SectionWidgets::shownValue(m_freeWarning);
    s.lowVoltage = SectionWidgets::shownValue(m_lowVoltage);
    if (!m_baud->currentText().isEmpty())
        s.baudText = m_baud->currentText();

    s.externalInput = m_externalInput->index() == 0 ? 1 : 0;
    for (int port = 0; port < 2; ++port) {
        s.sbusOutput[port] = m_sbusOutput[size_t(port)]->checked() ? 1 : 0;
        s.sbusPriority[port] = qRound(m_priority[size_t(port)]->currentValue());
    }
    s.sbusVersion = (m_versions[0].at(0)->checked() ? kSbus1V1 : 0)
        | (m_versions[0].at(1)->checked() ? kSbus1V2 : 0) | (m_versions[1].at(0)->checked() ? kSbus2V1 : 0)
        | (m_versions[1].at(1)->checked() ? kSbus2V2 : 0);

    const int control = m_sbusControl->currentIndex();
    if (control >= 0)
        s.sbusControlSwitch = control > 0 ? control - 1 : kNoSelection;
    for (int g = 0; g < kSbusControlSets; ++g)
        for (int o = 0; o < kControlOptions; ++o)
            s.sbusControl[g][o] = m_controlSets[g][o];
    for (int o = 0; o < kControlOptions; ++o)
        s.sbusControl[m_shownSet][o] = shownOption(o);
    return s;
}

QList<QByteArray> ComprehensiveConfig::collectPayloads()
{
    // The shown control set is kept as its check boxes say, 1 or 0 (a
    // high-nibble flag of the unit reads as 16 until then).
    keepControlSet();
    const Settings s = shownSettings();
    s.storeWritten(record());
    return ComprehensiveCodec::payloads(s);
}

QList<QByteArray> ComprehensiveConfig::payloadsFromRecord()
{
    // The write-all sends what the page shows, as a write of the page does:
    // a file's values beyond the controls' bounds (or a rate the unit does
    // not offer) go out as shown.
    return collectPayloads();
}

QString ComprehensiveConfig::fileFragment()
{
    // The file takes what the page shows, also before it was written.
    return ComprehensiveCodec::fileFragment(shownSettings());
}

// ---------------------------------------------------------------- answers

void ComprehensiveConfig::showDeviceStatus(const QByteArray &payload)
{
    ComprehensiveCodec::DeviceStatus status;
    if (!ComprehensiveCodec::decodeBattery(payload, &status))
        return;
    m_battery->setText(status.battery);
    m_batteryVoltage->setText(status.battery);
    m_batteryLevel->setValue(qBound(0, status.batteryPercent, 100));
    if (status.hasSignal) {
        m_signal->setText(status.signal);
        m_signalLevel->setValue(qBound(0, status.signalPercent, 100));
    }
}

void ComprehensiveConfig::addDevice(const QByteArray &payload)
{
    QString name;
    QString detail;
    if (!ComprehensiveCodec::decodeSearchAnswer(payload, &name, &detail))
        return;
    for (int i = 0; i < m_devices->topLevelItemCount(); ++i) {
        if (m_devices->topLevelItem(i)->text(0) == name)
            return;
    }
    m_devices->addTopLevelItem(new QTreeWidgetItem({ name, detail }));
}

void ComprehensiveConfig::slot_information(CodeID code, QByteArray data)
{
    using namespace ComprehensiveCodec;
    DeviceData &d = record();
    switch (code) {
    case SearchDevicesData:
        addDevice(data);
        break;
    case ChannelDataReport: {
        int value = 0;
        if (throttleFromReport(data, &value))
            m_throttleBar->setM_val(value);
        break;
    }
    case BatteryData:
        showDeviceStatus(data);
        break;
    case SbusOutputData:
        if (decodeSbusOutput(data, d))
            showSbusOutputs();
        break;
    case HidMappingData:
        if (decodeHidMapping(data, d))
            showHidMapping();
        break;
    case ThrottleHoldData:
        if (decodeThrottleHold(data, d))
            showThrottleHold();
        break;
    case IdleWarningData:
        if (decodeIdleWarning(data, d))
            m_freeWarning->setM_currentValue(d.freeWarning);
        break;
    case LowVoltageData:
        if (decodeLowVoltage(data, d))
            m_lowVoltage->setM_currentValue(d.lowVoltage);
        break;
    case BaudData:
        if (decodeBaud(data, d))
            showBaud();
        break;
    case HidOutputData:
        if (decodeHidOutput(data, d))
            showHidOutput();
        break;
    case ExternalSbusInputData:
        if (decodeExternalInput(data, d))
            showExternalInput();
        break;
    case Group30:
        if (decodeSbusPriority(data, d))
            showSbusPriorities();
        break;
    case Group32:
        if (decodeSbusProtocol(data, d))
            showSbusProtocols();
        break;
    case Group34:
        if (decodeSbusControl(data, d))
            showSbusControl();
        break;
    default:
        break;
    }
}
