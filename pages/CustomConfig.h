#pragma once

#include "SettingPage.h"

#include <QVector>

#include <array>

class CanFrame;
class MCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QVBoxLayout;
class SectionColumn;

// The external output module (Pyx): how the unit feeds it (SBUS, TTL or
// RS232) and the two streams it sends on, CAN frames and a custom serial
// stream. A column of three collapsible sections; the CAN section holds one
// frame editor per frame of the record's frame list.
class CustomConfig : public SettingPage
{
    Q_OBJECT
public:
    explicit CustomConfig(QWidget *parent = nullptr);

    void refreshFromRecord() override;
    // Copies the controls into the record (the identifier and frame types as
    // the unit's 0/4 and 0/2), then the payloads of the record.
    QList<QByteArray> collectPayloads() override;
    QList<QByteArray> payloadsFromRecord() override;
    QString fileFragment() override;
    void collectInto(DeviceData &scratch) const override;
    QVector<FieldControl> fieldControls() const override;

    const QVector<CanFrame *> &frameEditors() const { return m_editors; }

public Q_SLOTS:
    void slot_information(CodeID code, QByteArray data) override;
    void on_dropDownButton_0_clicked();
    void on_dropDownButton_1_clicked();
    void on_dropDownButton_2_clicked();
    void slot_canModeCheckedChange(QString name);
    void on_canFre_editingFinished();
    void on_ttlFre_editingFinished();
    void on_editFinished_ttlFrameHead();
    void on_editFinished_ttlFrameEnd();
    void on_ttlMin_editingFinished();
    void on_ttlMax_editingFinished();
    void on_addFrameButton_clicked();
    void slot_dialog(bool state);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *buildOutputSection();
    QWidget *buildCanSection();
    QWidget *buildTtlSection();
    void showOutputMode(int mode);
    void refreshCan();
    void refreshTtl();
    void collect();
    // The editors follow the record's frame list: surplus ones go from the
    // end, missing ones are added, all are renumbered. New editors are filled
    // from the record, and of the others all or only the one named.
    static constexpr int kAllFrames = -2;
    void syncFrameEditors(int refreshOnly = kAllFrames);
    void showSwitches();
    void takeSwitches();
    void showCanBaud();
    void dropEditor(int position);
    void removeFrame(int index);
    void takeFrequency(QLineEdit *field, quint8 &target);
    void takeRange(QLineEdit *field, int which);
    void takeFrameByte(QLineEdit *field, int header);
    void takeTtlFormat();

    SectionColumn *m_column = nullptr;
    std::array<MCheckBox *, 3> m_modes {};
    MCheckBox *m_canEnable = nullptr;
    QComboBox *m_canBaud = nullptr;
    QLineEdit *m_canFre = nullptr;
    QPushButton *m_addFrame = nullptr;
    QPushButton *m_flushFrame = nullptr;
    QWidget *m_frameList = nullptr;
    QVBoxLayout *m_frameLayout = nullptr;
    QVector<CanFrame *> m_editors;
    MCheckBox *m_ttlEnable = nullptr;
    QComboBox *m_ttlBaud = nullptr;
    QLineEdit *m_ttlFre = nullptr;
    QLineEdit *m_ttlHead = nullptr;
    QLineEdit *m_ttlEnd = nullptr;
    QComboBox *m_ttlOrder = nullptr;
    QLineEdit *m_ttlMin = nullptr;
    QLineEdit *m_ttlMax = nullptr;
    QComboBox *m_ttlCheck = nullptr;
    bool m_dialogAnswer = false;
};
