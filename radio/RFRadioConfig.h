#pragma once

#include "SettingPage.h"

class MCheckBox;
class MSpinBox;
class PhaseSwitch;
class QComboBox;
class QPushButton;

// The radio module as far as the handset itself controls it over the serial
// link: the module's power, the unit's switch that powers it, factory resets
// of the ground-side and air-side module units, and the way into the
// module's own web management.
class RFRadioConfig : public SettingPage
{
    Q_OBJECT
public:
    explicit RFRadioConfig(QWidget *parent = nullptr);

    void showSection(int section) override;
    void refreshFromRecord() override;
    QList<QByteArray> collectPayloads() override;
    QList<QByteArray> payloadsFromRecord() override;
    QString fileFragment() override;
    void collectInto(DeviceData &scratch) const override;
    QVector<FieldControl> fieldControls() const override;

Q_SIGNALS:
    void signal_resetModule_ground();
    void signal_resetModule_air();

public Q_SLOTS:
    void slot_information(CodeID code, QByteArray data) override;
    void on_button_moduleGroundReset_clicked();
    // Spelled so: the air-side reset's slot has always been named this way.
    void on_button_moduleAriReset_clicked();
    void on_button_moduleParamSet_clicked();
    void slot_dialog(bool state);

private:
    QWidget *buildRows();
    void showPower();
    void showPhysical();
    void collect(DeviceData &d) const;
    bool askReset(const QString &question);
    void setWaiting(QPushButton *button, bool waiting);
    void resetAnswered(QPushButton *button, const QByteArray &data, const QString &success,
        const QString &failure);

    PhaseSwitch *m_power = nullptr;
    MCheckBox *m_rom = nullptr;
    QComboBox *m_physicalSwitch = nullptr;
    MSpinBox *m_physicalValue = nullptr;
    QPushButton *m_groundReset = nullptr;
    QPushButton *m_airReset = nullptr;
    QPushButton *m_paramSet = nullptr;
    bool m_dialogAnswer = false;
};
