#pragma once

#include "ButtonCodec.h"
#include "SettingPage.h"

#include <array>

class MSpinBox;
class QComboBox;
class SectionColumn;

// The handset's keys in three collapsible sections: five combination keys
// (two keys pressed together and a single-step increment), two super keys
// (six keys, each setting a value) and the kind of every key (one-, two- or
// three-state).
class ButtonConfig : public SettingPage
{
    Q_OBJECT
public:
    explicit ButtonConfig(QWidget *parent = nullptr);

    SectionColumn *column() const { return m_column; }

    // The three groups as the controls show them: a key selector showing
    // "NONE" is 255; a selector with nothing selected keeps the record's
    // value, so that a page never filled writes what the record holds.
    ButtonCodec::Settings shownSettings() const;

    void refreshFromRecord() override;
    QList<QByteArray> collectPayloads() override;
    // The write-all takes the page's controls, as collectPayloads().
    QList<QByteArray> payloadsFromRecord() override;
    QString fileFragment() override;
    void collectInto(DeviceData &scratch) const override;
    QVector<FieldControl> fieldControls() const override;

public Q_SLOTS:
    void slot_information(CodeID code, QByteArray data) override;
    void on_dropDownButton_0_clicked();
    void on_dropDownButton_1_clicked();
    void on_dropDownButton_2_clicked();

private:
    QWidget *buildCombinations();
    QWidget *buildSuperKeys();
    QWidget *buildKeyKinds();
    void fillKeySelector(QComboBox *selector, int key) const;
    static int keyOf(const QComboBox *selector, int fallback);
    void showCombinations();
    void showSuperKeys();
    void showKeyKinds();
    int model() const;

    SectionColumn *m_column = nullptr;
    std::array<std::array<QComboBox *, 2>, 5> m_comboKeys {};
    std::array<MSpinBox *, 5> m_comboSteps {};
    std::array<std::array<QComboBox *, 6>, 2> m_superKeys {};
    std::array<std::array<MSpinBox *, 6>, 2> m_superValues {};
    std::array<QComboBox *, 24> m_keyKinds {};
};
