#pragma once

#include "SettingPage.h"

#include <array>

class MSpinBox;
class PhaseSwitch;
class QComboBox;
class QLabel;
class QScrollArea;

// SBUS channel settings of one port: per channel the servo phase, centre
// trim, travel to either side, failsafe (switchable off), the input that
// drives the channel, and the fixed value used while it is driven by
// "NONE". One page serves both ports; the hub tells it which one it shows.
class SbusConfig : public SettingPage
{
    Q_OBJECT
public:
    explicit SbusConfig(QWidget *parent = nullptr);

    int port() const { return m_port; }
    // Shows port 0 or 1: stores it and refreshes from the record.
    void showPort(int port);
    // Fills the controls from the record's fields of a port.
    void refresh(int port);

    void showSection(int section) override;
    void refreshFromRecord() override;
    // Copies the shown port's controls into the record; its tuning payload
    // and its fixed values in sign and magnitude.
    QList<QByteArray> collectPayloads() override;
    // Both ports from the record, the fixed values as their low bytes.
    QList<QByteArray> payloadsFromRecord() override;
    QString fileFragment() override;
    void collectInto(DeviceData &scratch) const override;
    QVector<FieldControl> fieldControls() const override;

public Q_SLOTS:
    void slot_information(CodeID code, QByteArray data) override;

private:
    struct Row {
        PhaseSwitch *phase = nullptr;
        MSpinBox *trim = nullptr;
        MSpinBox *left = nullptr;
        MSpinBox *right = nullptr;
        MSpinBox *failsafe = nullptr;
        QComboBox *map = nullptr;
        MSpinBox *fixed = nullptr;
    };

    void buildRows(QWidget *grid);
    // The fields of the tuning answer (all but the fixed values), and the
    // fixed values.
    void showTuning(int port);
    void showFixedValues(int port);
    void collect(int port, DeviceData &d) const;
    void fillSelector(QComboBox *selector, int mapped);
    void updateFixedValue(int channel);

    std::array<Row, 16> m_rows;
    QScrollArea *m_scroll = nullptr;
    int m_port = 0;
};
