#pragma once

#include "Sequences.h"

#include <QVector>
#include <QWidget>

#include <array>
#include <functional>

class HelpWidget;
class QPushButton;
class SettingPage;

// The configuration hub: a menu of sections at the top, the page of the
// current section in the middle and the action buttons at the bottom. It
// creates the setting pages, tells the main window which section is current
// and loads the model's default file when it is set up.
class ChannelListenInterface : public QWidget
{
    Q_OBJECT
public:
    enum class Action { WriteData, ReadData, SaveFile, LoadFile, FactoryReset };
    static constexpr int kHelpEntry = 7;

    ChannelListenInterface(int model, QWidget *parent = nullptr);

    int currentSection() const { return m_section; }
    // The page of a section, or nullptr when the section has no page.
    SettingPage *page(int section) const;
    QPushButton *menuButton(int section) const;
    QPushButton *actionButton(Action action) const;
    // The section numbers the menu offers, the help entry (7) last.
    const QVector<int> &menuEntries() const { return m_entries; }
    int scrollPosition() const { return m_scroll; }
    HelpWidget *helpWindow() const { return m_help; }

    // Puts a page into a section (the SBUS page goes into sections 0 and 1).
    void setSectionPage(int section, SettingPage *page);

    // Every page once (the SBUS page serves two sections).
    QVector<SettingPage *> pages() const;
    // Fills every page from the record (after a parameter file was loaded).
    void refreshPages();
    // The parameter file of the pages as they stand: their fragments in the
    // file's order between its opening and its closing.
    QString parameterFileText() const;

    // Asked before Return leaves the hub: false keeps the hub shown.
    void setLeaveCheck(std::function<bool()> check) { m_leaveCheck = std::move(check); }

    // Disabled while a read or write of the current section runs.
    void setPageAreaEnabled(bool enabled);

Q_SIGNALS:
    void signal_closeEvent();

public Q_SLOTS:
    void on_sbus1Config_clicked();
    void on_sbus2Config_clicked();
    void on_holdConfig_clicked();
    void on_buttonConfig_clicked();
    void on_comprehensiveConfig_clicked();
    void on_rfRadioConfig_clicked();
    void on_customConfig_clicked();
    void on_helpInformation_clicked();
    void on_channelListen_return_clicked();
    void on_leftScaleButton_clicked();
    void on_rightScaleButton_clicked();
    void slot_helpWidget();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void chooseSection(int section);
    void layoutHub();
    QPushButton *makeButton(const char *objectName, const QString &text);

    int m_model;
    int m_section = SectionSbus1;
    int m_scroll = 0;
    QVector<int> m_entries;
    std::array<QPushButton *, 8> m_menu {}; // sections 0..6, help
    std::array<QPushButton *, 5> m_actions {};
    std::array<SettingPage *, SectionCount> m_pages {};
    QPushButton *m_return = nullptr;
    QPushButton *m_left = nullptr;
    QPushButton *m_right = nullptr;
    HelpWidget *m_help = nullptr;
    std::function<bool()> m_leaveCheck;
};
