#pragma once

#include <QPointer>
#include <QWidget>

struct CanFrameRecord;
struct DeviceData;
class DataWidget;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

// The editor of one CAN frame that the output module sends: its identifiers,
// identifier type, frame type and data length, with the buttons that open
// its data mapping and delete it. The frame itself lives in the record's
// frame list; the editor only knows its position there, which the custom
// output page renumbers when an earlier frame goes.
class CanFrame : public QWidget
{
    Q_OBJECT
public:
    CanFrame(DeviceData &data, int index, QWidget *parent = nullptr);

    // Position in the record's frame list; -1 once the frame has gone.
    int index() const { return m_index; }
    void setIndex(int index);
    // The frame went from the list: the editor and its mapping window close
    // and take nothing into the record any more.
    void detach();

    // The record's frame, or nullptr when the editor has none.
    CanFrameRecord *frame() const;
    DeviceData &data() const { return m_data; }

    // Fills the controls from the frame.
    void refresh();
    // Copies the identifiers and the two types into the frame (0/1).
    void collect();

    // The mapping window, once it was opened.
    DataWidget *dataWidget() const;

Q_SIGNALS:
    // The user asked to delete the frame at this position.
    void signal_delFrame(int index);

public Q_SLOTS:
    void on_editFinished_Std();
    void on_editFinished_Ext();
    void on_buttonClicked_dataPrase();
    void on_delButton_clicked();
    void on_ide_currentIndexChanged(int index);
    void on_rtr_currentIndexChanged(int index);

private:
    void takeIdentifier(QLineEdit *edit, int digits);

    DeviceData &m_data;
    int m_index;
    QLabel *m_title = nullptr;
    QLineEdit *m_std = nullptr;
    QLineEdit *m_ext = nullptr;
    QComboBox *m_ide = nullptr;
    QComboBox *m_rtr = nullptr;
    QLineEdit *m_length = nullptr;
    QPushButton *m_dataPrase = nullptr;
    QPushButton *m_delete = nullptr;
    QPointer<DataWidget> m_dataWidget;
};
