#pragma once

#include "ComprehensiveCodec.h"
#include "SettingPage.h"

#include <QVector>

#include <array>

class MCheckBox;
class MSpinBox;
class PhaseSwitch;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTreeWidget;
class SbusChannel;
class SectionColumn;

// Everything that is neither channels nor keys, in six collapsible
// sections: HID output, throttle hold (with the live throttle bar), the idle
// and low-voltage warnings, the data port's baud rate, the SBUS outputs and
// their control switch, and what the unit tells about itself (battery,
// signal, devices found by a search).
class ComprehensiveConfig : public SettingPage
{
    Q_OBJECT
public:
    explicit ComprehensiveConfig(QWidget *parent = nullptr);

    SectionColumn *column() const { return m_column; }
    // The device search button; the main window sends the search.
    QPushButton *searchButton() const { return m_search; }

    // The page's values as the controls show them. A selector with nothing
    // selected keeps the record's value, so that a page never filled writes
    // what the record holds.
    ComprehensiveCodec::Settings shownSettings() const;

    void refreshFromRecord() override;
    QList<QByteArray> collectPayloads() override;
    // The write-all takes the page's controls, as collectPayloads().
    QList<QByteArray> payloadsFromRecord() override;
    QString fileFragment() override;
    void collectInto(DeviceData &scratch) const override;
    QVector<FieldControl> fieldControls() const override;

public Q_SLOTS:
    void slot_information(CodeID code, QByteArray data) override;
    void slot_throttleCheckedChange(QString name);
    void slot_sbusControlCheckedChange(QString name);
    void slot_sbus1VersionCheckedChange(QString name);
    void slot_sbus2VersionCheckedChange(QString name);
    void slot_throttleHoldValueChanged();
    // The answer to the confirmation of a new baud rate.
    void slot_dialog(bool state);
    void on_dropDownButton_0_clicked();
    void on_dropDownButton_1_clicked();
    void on_dropDownButton_2_clicked();
    void on_dropDownButton_3_clicked();
    void on_dropDownButton_4_clicked();
    void on_dropDownButton_5_clicked();
    void on_throttle_currentIndexChanged(int index);
    void on_sbusControl_currentIndexChanged(int index);

private:
    QWidget *buildHid();
    QWidget *buildThrottleHold();
    QWidget *buildBuzzer();
    QWidget *buildBaud();
    QWidget *buildSbus();
    QWidget *buildAbout();

    void showHidMapping();
    void showHidOutput();
    void showThrottleHold();
    void armThrottleHold(bool armed);
    void keepSpeedStorable(MSpinBox *box, double &shown);
    void showSpeed(MSpinBox *box, double &shown, double seconds);
    void showWarnings();
    void showBaud();
    void showExternalInput();
    void showSbusOutputs();
    void showSbusPriorities();
    void showSbusProtocols();
    void showSbusControl();
    void showControlSet(int set);
    void keepControlSet();
    int shownOption(int option) const;
    int shownControlSet() const;
    void showDeviceStatus(const QByteArray &payload);
    void addDevice(const QByteArray &payload);
    void confirmBaud(int index);

    SectionColumn *m_column = nullptr;

    std::array<QComboBox *, 8> m_hidMap {};
    QComboBox *m_hidOutput = nullptr;

    QComboBox *m_throttle = nullptr;
    QVector<MCheckBox *> m_throttleGears;
    MSpinBox *m_holdValue = nullptr;
    MSpinBox *m_recoverySpeed = nullptr;
    MSpinBox *m_holdSpeed = nullptr;
    double m_shownSpeeds[2] = {}; // recovery and hold speed, as last shown
    SbusChannel *m_throttleBar = nullptr;

    MSpinBox *m_freeWarning = nullptr;
    MSpinBox *m_lowVoltage = nullptr;
    QLabel *m_batteryVoltage = nullptr;

    QComboBox *m_baud = nullptr;
    int m_baudIndex = -1; // the rate last shown or confirmed
    bool m_confirmed = false;

    std::array<MCheckBox *, 2> m_sbusOutput {};
    std::array<MSpinBox *, 2> m_priority {};
    std::array<QVector<MCheckBox *>, 2> m_versions;
    PhaseSwitch *m_externalInput = nullptr;
    QComboBox *m_sbusControl = nullptr;
    QVector<MCheckBox *> m_controlGears;
    std::array<MCheckBox *, 4> m_controlOptions {};
    int m_controlSets[3][4] = {}; // the three sets as edited, the shown one in the options
    int m_shownSet = 0;

    QLabel *m_battery = nullptr;
    QProgressBar *m_batteryLevel = nullptr;
    QLabel *m_signal = nullptr;
    QProgressBar *m_signalLevel = nullptr;
    QPushButton *m_search = nullptr;
    QTreeWidget *m_devices = nullptr;
};
