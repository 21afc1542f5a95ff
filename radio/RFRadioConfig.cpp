#include "RFRadioConfig.h"

#include "DeviceData.h"
#include "MCheckBox.h"
#include "MDlg.h"
#include "MSpinBox.h"
#include "Messages.h"
#include "ModulePowerCodec.h"
#include "PageHost.h"
#include "PhaseSwitch.h"
#include "RFParaConfig.h"
#include "SectionWidgets.h"
#include "UnwrittenEdits.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace
{
constexpr int kResetSucceeded = 1;
constexpr int kResetFailed = 2;
constexpr double kPhysicalMin = 1;
constexpr double kPhysicalMax = 10;
constexpr double kPhysicalStart = 3;

QPushButton *rowButton(QWidget *parent, const QString &name, const QString &text)
{
    auto *button = new QPushButton(text, parent);
    button->setObjectName(name);
    button->setProperty("urgent", false);
    button->setMinimumWidth(button->fontMetrics().horizontalAdvance(text) + 40);
    return button;
}
} // namespace

RFRadioConfig::RFRadioConfig(QWidget *parent)
    : SettingPage(parent)
{
    setObjectName(QStringLiteral("RFRadioConfig"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(buildRows());
    layout->addStretch(1);

    connect(m_groundReset, &QPushButton::clicked, this, &RFRadioConfig::on_button_moduleGroundReset_clicked);
    connect(m_airReset, &QPushButton::clicked, this, &RFRadioConfig::on_button_moduleAriReset_clicked);
    connect(m_paramSet, &QPushButton::clicked, this, &RFRadioConfig::on_button_moduleParamSet_clicked);
}

QWidget *RFRadioConfig::buildRows()
{
    QWidget *body = SectionWidgets::panel(QStringLiteral("rfRadioPanel"));
    auto *grid = new QGridLayout(body);
    grid->setContentsMargins(16, 12, 16, 12);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(12);

    m_power = new PhaseSwitch(body);
    m_power->setObjectName(QStringLiteral("modulePower"));
    m_power->setM_positive(QStringLiteral("OFF"));
    m_power->setM_negative(QStringLiteral("ON"));
    m_power->setMinimumSize(m_power->sizeHint());
    m_rom = SectionWidgets::checkItem(body, QStringLiteral("moduleRom"), QStringLiteral("ROM"));
    auto *power = new QHBoxLayout;
    power->setSpacing(24);
    power->addWidget(m_power);
    power->addWidget(m_rom);
    power->addStretch(1);
    grid->addWidget(SectionWidgets::caption(tr("电源控制 : "), body), 0, 0);
    grid->addLayout(power, 0, 1);

    m_physicalSwitch = SectionWidgets::selector(body, QStringLiteral("modulePhysicalSwitch"), 100);
    m_physicalValue = SectionWidgets::spinBox(
        body, QStringLiteral("modulePhysicalValue"), kPhysicalMin, kPhysicalMax);
    m_physicalValue->setM_currentValue(kPhysicalStart);
    auto *physical = new QHBoxLayout;
    physical->setSpacing(24);
    physical->addWidget(m_physicalSwitch);
    physical->addWidget(m_physicalValue);
    physical->addStretch(1);
    grid->addWidget(SectionWidgets::caption(tr("电源物理开关控制 : "), body), 1, 0);
    grid->addLayout(physical, 1, 1);

    m_groundReset = rowButton(body, QStringLiteral("groundReset"), tr("重置"));
    m_airReset = rowButton(body, QStringLiteral("airReset"), tr("重置"));
    m_paramSet = rowButton(body, QStringLiteral("rfRadioSet"), tr("配置"));
    grid->addWidget(SectionWidgets::caption(tr("重置地面端模块 : "), body), 2, 0);
    grid->addWidget(m_groundReset, 2, 1, Qt::AlignLeft);
    grid->addWidget(SectionWidgets::caption(tr("重置天空端模块 : "), body), 3, 0);
    grid->addWidget(m_airReset, 3, 1, Qt::AlignLeft);
    grid->addWidget(SectionWidgets::caption(tr("模块参数配置 : "), body), 4, 0);
    grid->addWidget(m_paramSet, 4, 1, Qt::AlignLeft);
    grid->setColumnStretch(1, 1);
    return body;
}

// ---------------------------------------------------------------- record

void RFRadioConfig::showSection(int)
{
    refreshFromRecord();
}

void RFRadioConfig::refreshFromRecord()
{
    showPower();
    showPhysical();
}

void RFRadioConfig::showPower()
{
    const DeviceData &d = record();
    m_power->setM_index(d.modulePowerState[0] != 0 ? 1 : 0);
    m_rom->setM_checked(d.modulePowerState[1] != 0);
    update();
}

void RFRadioConfig::showPhysical()
{
    const DeviceData &d = record();
    // The module can be powered from one of the unit's switches: without a
    // list of its own the selector offers the hold switches ("NONE" first).
    const QStringList &names = d.modulePhysicalNames.isEmpty() ? d.holdSwitchNames : d.modulePhysicalNames;
    {
        const QSignalBlocker block(m_physicalSwitch);
        m_physicalSwitch->clear();
        m_physicalSwitch->addItems(names);
    }
    SectionWidgets::selectIfValid(m_physicalSwitch, ModulePowerCodec::selectorIndex(d.modulePhysicalCtl[0]));
    m_physicalValue->setM_currentValue(d.modulePhysicalCtl[1]);
}

void RFRadioConfig::collect(DeviceData &d) const
{
    d.modulePowerState[0] = m_power->index();
    d.modulePowerState[1] = m_rom->checked() ? 1 : 0;
    // An empty selector has nothing to say: the record keeps its switch.
    if (m_physicalSwitch->currentIndex() >= 0)
        d.modulePhysicalCtl[0] = ModulePowerCodec::storedSwitch(m_physicalSwitch->currentIndex());
    d.modulePhysicalCtl[1] = qRound(SectionWidgets::shownValue(m_physicalValue));
}

QList<QByteArray> RFRadioConfig::collectPayloads()
{
    collect(record());
    return ModulePowerCodec::payloads(record());
}

QList<QByteArray> RFRadioConfig::payloadsFromRecord()
{
    return ModulePowerCodec::payloads(record());
}

QString RFRadioConfig::fileFragment()
{
    collect(record());
    return ModulePowerCodec::fileFragment(record());
}

// ---------------------------------------------------------------- answers

void RFRadioConfig::slot_information(CodeID code, QByteArray data)
{
    // Each answer shows only its own pair: the other pair's controls keep
    // what the user set.
    switch (code) {
    case Group36: // power switch and "ROM"
        if (ModulePowerCodec::decodePower(data, record()))
            showPower();
        break;
    case Group38: // the switch that powers the module
        if (ModulePowerCodec::decodePhysical(data, record()))
            showPhysical();
        break;
    case ModuleGroundResetResult:
        resetAnswered(m_groundReset, data, tr("地面端模组恢复出厂设置成功"), tr("地面端模组恢复出厂设置失败"));
        break;
    case ModuleAirResetResult:
        resetAnswered(m_airReset, data, tr("天空端模块恢复出厂设置成功"), tr("天空端模块恢复出厂设置失败"));
        break;
    default:
        break;
    }
}

void RFRadioConfig::resetAnswered(
    QPushButton *button, const QByteArray &data, const QString &success, const QString &failure)
{
    if (data.size() != 1)
        return;
    setWaiting(button, false);
    const int result = quint8(data.at(0));
    if (result != kResetSucceeded && result != kResetFailed)
        return;
    MDlg *dialog = Messages::newDialog(this, false);
    if (PageHost *host = PageHost::instance())
        dialog->setStyleSheet(host->dialogStyleSheet());
    dialog->setText(result == kResetSucceeded ? success : failure);
    Messages::exec(dialog, this);
}

// ---------------------------------------------------------------- buttons

bool RFRadioConfig::askReset(const QString &question)
{
    m_dialogAnswer = false;
    MDlg *dialog = Messages::newDialog(this, true);
    dialog->setWindowTitle(tr("重置图传模块"));
    if (PageHost *host = PageHost::instance())
        dialog->setStyleSheet(host->dialogStyleSheet());
    dialog->setText(question);
    connect(dialog, &MDlg::signal_dialog, this, &RFRadioConfig::slot_dialog);
    if (!Messages::exec(dialog, this))
        return false; // a reconnect rebuilt the pages meanwhile: nothing is reset
    const bool answer = m_dialogAnswer;
    m_dialogAnswer = false;
    return answer;
}

void RFRadioConfig::slot_dialog(bool state)
{
    m_dialogAnswer = state;
}

void RFRadioConfig::setWaiting(QPushButton *button, bool waiting)
{
    // The button stays disabled until the unit answers the reset; there is no
    // time-out, as the module may take its time to come back.
    button->setEnabled(!waiting);
    button->setProperty("urgent", waiting);
    button->style()->unpolish(button);
    button->style()->polish(button);
}

void RFRadioConfig::on_button_moduleGroundReset_clicked()
{
    if (!askReset(tr("确认要重置地面端模块吗！")))
        return;
    setWaiting(m_groundReset, true);
    Q_EMIT signal_resetModule_ground();
}

void RFRadioConfig::on_button_moduleAriReset_clicked()
{
    if (!askReset(tr("确认要重置天空端模块吗！")))
        return;
    setWaiting(m_airReset, true);
    Q_EMIT signal_resetModule_air();
}

void RFRadioConfig::on_button_moduleParamSet_clicked()
{
    // Each press opens another module window; it lives until it is closed.
    auto *window = new RFParaConfig;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
}

// ---------------------------------------------------------------- unwritten edits

void RFRadioConfig::collectInto(DeviceData &scratch) const
{
    collect(scratch);
}

QVector<SettingPage::FieldControl> RFRadioConfig::fieldControls() const
{
    using UnwrittenEdits::key;
    return { { m_power, { key("modulePowerState", 0) } }, { m_rom, { key("modulePowerState", 1) } },
        { m_physicalSwitch, { key("modulePhysicalCtl", 0) } },
        { m_physicalValue, { key("modulePhysicalCtl", 1) } } };
}
