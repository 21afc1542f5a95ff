#pragma once

#include "DeviceData.h"

#include <QDialog>

#include <array>

class CanFrame;
class MCheckBox;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGroupBox;

// "数据解析 - n": which input fills each data byte of CAN frame n, either the
// whole byte from one input (linear) or bit by bit from several (nonlinear).
// The window edits a copy of the frame's mapping; "保存" takes it into the
// record after a confirmation. It belongs to its frame editor and goes with
// it; it is not modal, the page stays usable beside it.
class DataWidget : public QDialog
{
    Q_OBJECT
public:
    explicit DataWidget(CanFrame *editor);

    // Takes the frame's mapping from the record into the controls.
    void load();
    void updateTitle();
    // The data byte the settings below the list show (0..7).
    int currentByte() const { return m_current; }

public Q_SLOTS:
    void slot_checkedChange(QString name);
    void on_buttonClicked(int id);
    void on_buttonClicked_save();
    void on_buttonClicked_return();
    void slot_checkNoChannel(int index);
    void slot_dialog(bool state);

private:
    struct Row {
        QCheckBox *inUse = nullptr;
        MCheckBox *linear = nullptr;
        MCheckBox *nonlinear = nullptr;
    };

    QWidget *buildRows();
    QWidget *buildSettings();
    void choose(int byte);
    void showCurrent();
    void fillChannels(QComboBox *combo, const QStringList &names);

    CanFrame *m_editor;
    CanFrameRecord m_edit;
    int m_current = 0;
    bool m_answer = false;
    std::array<Row, 8> m_rows;
    QButtonGroup *m_inUse = nullptr;
    QComboBox *m_dataIndex = nullptr;
    QComboBox *m_channel = nullptr;
    std::array<QComboBox *, 8> m_bits {};
    QGroupBox *m_linearBox = nullptr;
    QGroupBox *m_nonlinearBox = nullptr;
};
