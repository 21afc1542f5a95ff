#pragma once

#include "SettingPage.h"

#include <array>

class MCheckBox;
class QComboBox;

// Channel hold: per SBUS port the switch that holds channels and, for each
// of the switch's three positions, the channels it holds.
class SbusHold : public SettingPage
{
    Q_OBJECT
public:
    explicit SbusHold(QWidget *parent = nullptr);

    // Shows the port's selector state at hold position 0..2.
    void showPort(int port, int position);

    // Shown from the hub's menu: the record as it stands.
    void showSection(int section) override;
    void refreshFromRecord() override;
    QList<QByteArray> collectPayloads() override;
    QList<QByteArray> payloadsFromRecord() override;
    QString fileFragment() override;
    void collectInto(DeviceData &scratch) const override;
    QVector<FieldControl> fieldControls() const override;

public Q_SLOTS:
    void slot_information(CodeID code, QByteArray data) override;
    void on_sbus1_currentIndexChanged(int index);
    void on_sbus2_currentIndexChanged(int index);
    void slot_sbus1CheckedChange(QString name);
    void slot_sbus2CheckedChange(QString name);

private:
    struct Block {
        QComboBox *selector = nullptr;
        std::array<MCheckBox *, 3> positions {};
        std::array<MCheckBox *, 16> channels {};
        int shownPosition = 0;
    };

    QWidget *buildBlock(int port, QWidget *parent);
    int checkedPosition(int port) const;
    bool showsStoredSwitch(int port) const;
    void keepEdits(int port);
    void collect(int port, DeviceData &d) const;
    void positionChosen(int port, const QString &name);

    std::array<Block, 2> m_blocks;
};
