// What each setting page would write, collected into a scratch record, and
// which of its controls show which record field: the unwritten-edit markers
// compare the two with what the unit holds.

#include "ButtonConfig.h"
#include "ComprehensiveConfig.h"
#include "CustomConfig.h"
#include "CustomOutputCodec.h"
#include "DeviceData.h"
#include "MCheckBox.h"
#include "MSpinBox.h"
#include "PhaseSwitch.h"
#include "SbusConfig.h"
#include "SbusHold.h"
#include "SectionWidgets.h"
#include "UnwrittenEdits.h"

#include <QComboBox>
#include <QLineEdit>

using UnwrittenEdits::key;

// ---------------------------------------------------------------- SBUS channels

void SbusConfig::collectInto(DeviceData &scratch) const
{
    collect(m_port, scratch);
}

QVector<SettingPage::FieldControl> SbusConfig::fieldControls() const
{
    QVector<FieldControl> out;
    const int p = m_port;
    for (int c = 0; c < kChannels; ++c) {
        const Row &row = m_rows[size_t(c)];
        out << FieldControl { row.phase, { key("phase", p, c) } }
            << FieldControl { row.trim, { key("fineTuning", p, c) } }
            << FieldControl { row.left, { key("leftTrip", p, c) } }
            << FieldControl { row.right, { key("rightTrip", p, c) } }
            << FieldControl { row.failsafe, { key("failsafe", p, c) } }
            << FieldControl { row.map, { key("channelMap", p, c) } }
            << FieldControl { row.fixed, { key("noneValue", p, c) } };
    }
    return out;
}

// ---------------------------------------------------------------- channel hold

void SbusHold::collectInto(DeviceData &scratch) const
{
    collect(0, scratch);
    collect(1, scratch);
}

QVector<SettingPage::FieldControl> SbusHold::fieldControls() const
{
    QVector<FieldControl> out;
    for (int p = 0; p < kSbusPorts; ++p) {
        const Block &b = m_blocks[size_t(p)];
        out << FieldControl { b.selector, { key("sbusHoldSwitch", p) } };
        // A position is marked when any of its channels is.
        for (int k = 0; k < kHoldPositions; ++k) {
            QStringList keys;
            for (int c = 0; c < kChannels; ++c)
                keys << key("sbusHold", p, k, c);
            out << FieldControl { b.positions[size_t(k)], keys };
        }
        for (int c = 0; c < kChannels; ++c)
            out << FieldControl { b.channels[size_t(c)], { key("sbusHold", p, b.shownPosition, c) } };
    }
    return out;
}

// ---------------------------------------------------------------- keys

void ButtonConfig::collectInto(DeviceData &scratch) const
{
    shownSettings().storeInto(scratch);
}

QVector<SettingPage::FieldControl> ButtonConfig::fieldControls() const
{
    QVector<FieldControl> out;
    for (int i = 0; i < kKeyCombinations; ++i) {
        for (int k = 0; k < 2; ++k)
            out << FieldControl { m_comboKeys[size_t(i)][size_t(k)], { key("ckeyMap", i, k) } };
        out << FieldControl { m_comboSteps[size_t(i)], { key("ckeyMap", i, 2) } };
    }
    for (int s = 0; s < kSuperKeys; ++s) {
        for (int j = 0; j < 6; ++j) {
            out << FieldControl { m_superKeys[size_t(s)][size_t(j)], { key("sckeyMap", s, j) } }
                << FieldControl { m_superValues[size_t(s)][size_t(j)], { key("sckeyMap", s, 6 + j) } };
        }
    }
    for (int k = 0; k < kKeyGears; ++k)
        out << FieldControl { m_keyKinds[size_t(k)], { key("keyGear", k) } };
    return out;
}

// ---------------------------------------------------------------- comprehensive

void ComprehensiveConfig::collectInto(DeviceData &scratch) const
{
    const ComprehensiveCodec::Settings s = shownSettings();
    s.storeWritten(scratch);
    std::copy(s.hidMap, s.hidMap + kHidAxes, scratch.hidMap);
    scratch.hidOutput = s.hidOutput;
    scratch.throttleDataValues[0] = s.holdValue;
    scratch.throttleDataValues[1] = s.recoverySpeed;
    scratch.throttleDataValues[2] = s.holdSpeed;
    scratch.freeWarning = int(s.freeWarning); // the write truncates it
    scratch.lowVoltage = s.lowVoltage;
    bool number = false;
    const int baud = s.baudText.toInt(&number);
    if (number)
        scratch.baud = baud;
    scratch.externalInput = s.externalInput;
    std::copy(s.sbusOutput, s.sbusOutput + 2, scratch.sbusOutput);
}

QVector<SettingPage::FieldControl> ComprehensiveConfig::fieldControls() const
{
    QVector<FieldControl> out;
    for (int i = 0; i < kHidAxes; ++i)
        out << FieldControl { m_hidMap[size_t(i)], { key("hidMap", i) } };
    out << FieldControl { m_hidOutput, { key("hidOutput") } }
        << FieldControl { m_throttle, { key("throttleIndex") } };
    for (MCheckBox *gear : m_throttleGears)
        out << FieldControl { gear, { key("throttleData") } };
    out << FieldControl { m_holdValue, { key("throttleValue", 0) } }
        << FieldControl { m_recoverySpeed, { key("throttleValue", 1) } }
        << FieldControl { m_holdSpeed, { key("throttleValue", 2) } }
        << FieldControl { m_freeWarning, { key("freeWarning") } }
        << FieldControl { m_lowVoltage, { key("lowVoltage") } } << FieldControl { m_baud, { key("baud") } }
        << FieldControl { m_externalInput, { key("externalInput") } };
    for (int p = 0; p < 2; ++p) {
        out << FieldControl { m_sbusOutput[size_t(p)], { key("sbusOutput", p) } }
            << FieldControl { m_priority[size_t(p)], { key("sbusPriority", p) } };
        for (MCheckBox *version : m_versions[size_t(p)])
            out << FieldControl { version, { key("sbusVersion", p) } };
    }
    out << FieldControl { m_sbusControl, { key("sbusControlSwitch") } };
    for (int g = 0; g < m_controlGears.size(); ++g)
        out << FieldControl { m_controlGears.at(g), { key("sbusControl", g) } };
    for (MCheckBox *option : m_controlOptions)
        out << FieldControl { option, { key("sbusControl", m_shownSet) } };
    return out;
}

// ---------------------------------------------------------------- custom output

void CustomConfig::collectInto(DeviceData &scratch) const
{
    using namespace CustomOutputCodec;
    for (int k = 0; k < 3; ++k) {
        if (m_modes[size_t(k)]->checked())
            scratch.PyxGOutputMode = k + 1;
    }
    scratch.TTLEnable = m_ttlEnable->checked();
    scratch.CANEnable = m_canEnable->checked();
    scratch.CANFrequency = quint8(m_canFre->text().toUInt() & 0xFF);
    scratch.CANBaud = m_canBaud->currentText();
    // The serial stream's fields as a write clamps them, without writing the
    // clamped text back.
    TtlStream &s = scratch.TTLStream;
    s.header[kTtlFrequency] = quint8(qBound(kMinFrequency, m_ttlFre->text().toInt(), kMaxFrequency));
    s.header[kTtlFrameHead] = quint8(m_ttlHead->text().toUInt(nullptr, 16) & 0xFF);
    s.header[kTtlFrameEnd] = quint8(m_ttlEnd->text().toUInt(nullptr, 16) & 0xFF);
    s.range[0] = quint16(qint16(qBound(-kDataLimit, m_ttlMin->text().toInt(), kDataLimit)));
    s.range[1] = quint16(qint16(qBound(-kDataLimit, m_ttlMax->text().toInt(), kDataLimit)));
    TtlFormat format;
    format.baud = qMax(0, m_ttlBaud->currentIndex());
    format.checksum = qMax(0, m_ttlCheck->currentIndex());
    format.bigEndian = m_ttlOrder->currentIndex() == 1;
    s.header[kTtlFormat] = ttlFormatByte(format);
}

QVector<SettingPage::FieldControl> CustomConfig::fieldControls() const
{
    QVector<FieldControl> out;
    for (MCheckBox *mode : m_modes)
        out << FieldControl { mode, { key("PyxGOutputMode") } };
    out << FieldControl { m_canEnable, { key("CANEnable") } }
        << FieldControl { m_ttlEnable, { key("TTLEnable") } }
        << FieldControl { m_canFre, { key("CANFrequency") } }
        << FieldControl { m_canBaud, { key("CANBaud") } };
    for (QWidget *field : std::initializer_list<QWidget *> {
             m_ttlBaud, m_ttlFre, m_ttlHead, m_ttlEnd, m_ttlOrder, m_ttlMin, m_ttlMax, m_ttlCheck })
        out << FieldControl { field, { key("TTLStream") } };
    return out;
}
