#pragma once

#include "AnsweredParts.h"
#include "CodeId.h"
#include "DeviceData.h"
#include "PageHost.h"
#include "Sequences.h"

#include <QMainWindow>
#include <QPointer>
#include <QStringList>

#include <array>

namespace Ui
{
class MainWindow;
}
class ChannelListenInterface;
class EditTracker;
class ModelInterface;
class PortChooser;
class SerialLink;
class StatusLine;
class canReceive;
class QStackedWidget;
class QTimer;

// The one window of the program. It owns the serial link, the parameter
// record m_data and every page, identifies the connected unit, switches
// between its model page and the configuration hub and runs the request
// sequences the pages ask for.
class MainWindow : public QMainWindow, public PageHost
{
    Q_OBJECT
public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    // The process-wide window the pages reach the record through.
    static MainWindow *instance();

    DeviceData m_data;

    int modelIndex() const { return m_modelIndex; }
    QString modelIdentifier() const { return m_modelId; }
    const QStringList &modelIdentifiers() const { return m_modelIds; }
    QString appliedStyleSheet() const { return m_styleSheet; }
    SerialLink *serialLink() const { return m_link; }
    ModelInterface *modelPage(int model) const;
    ChannelListenInterface *hub() const;
    // The page on show: the connecting screen, a model page or the hub.
    QWidget *currentPage() const;
    canReceive *canReceiveWindow() const { return m_canReceive; }

    // What the pages need of the window.
    DeviceData &deviceData() override { return m_data; }
    int currentModel() const override { return m_modelIndex; }
    QString dialogStyleSheet() const override { return m_styleSheet; }
    // Page switching, asked for by the model page and the hub.
    void showHub() override;
    void showModelPage() override;

    // Sends every setting page's parameters (after a parameter file was loaded).
    void writeAll();
    // Loads a parameter file into the record and refreshes the pages from it;
    // false when the file cannot be opened.
    bool loadConfigFile(const QString &path);
    // The parameter file of the record and the pages as they stand.
    QString parameterFileText() const;
    QString lastPath() const { return m_lastPath; }

    // The record as the unit last answered the read requests (kept apart
    // from m_data, which the pages also change on edits); what a backup
    // before a write holds.
    const DeviceData &unitRecord() const { return m_unitRecord; }
    // Saves to backup/ the parts of unitRecord() read in this connection
    // (nothing before the first read); a failure is logged and the write
    // goes on. Returns the file written.
    QString backupBeforeWrite();

    // When the port reports that the unit is gone, show the connecting
    // screen and reopen the port from port.xml once a second (on by
    // default; --no-reconnect turns it off).
    void setReconnecting(bool on) { m_reconnect = on; }

    // Answers the unit refused (status 0xEE) and units identified again
    // after the port was lost, since the window opened.
    quint64 refusedAnswers() const { return m_refusedAnswers; }
    int reconnects() const { return m_reconnects; }

Q_SIGNALS:
    void signal_information(CodeID code, QByteArray data);
    void signal_saveAllData();

public Q_SLOTS:
    void slot_dialog(bool state);
    void slot_readyRead();
    void slot_startupCalibration();
    void slot_finishCalibration();
    void slot_sbus1Config();
    void slot_sbus2Config();
    void slot_channelHold();
    void slot_buttonSetting();
    void slot_comprehensiveSetting();
    void slot_rfRadioConfig();
    void slot_customConfig();
    void slot_readData();
    void slot_saveData();
    void slot_saveConfigFile();
    void slot_loadConfigFile();
    void slot_restoreFactory();
    void slot_closeEvent();
    void slot_moduleGroundReset();
    void slot_moduleAirReset();
    void slot_searchDevices();
    void on_label_website_linkActivated(QString link);
    void slot_flushFrameButton_clicked();
    void on_pushButton_clicked();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void applyStyleSheet();
    void placeWindow();
    void handleFrame(quint8 code, const QByteArray &payload);
    void identify(const QString &identifier);
    void unitLost();
    // Lets the pages go while the unit is away, unless they hold unwritten edits.
    void retirePages();
    void tryReconnect();
    // The port chooser's choice: open it, remember it in the user's
    // port.xml and identify the unit behind it.
    void connectToPort(const QString &name);
    // The status line's port and connection, and the port chooser on the
    // connecting screen while the port is not open.
    void showLinkState();
    void createHub();
    void setCentral(QWidget *page);
    void forgetPagePictures();
    int currentSection() const;
    // Writes the page of a hub section, after its confirmation or a question
    // that already asked.
    void writeSection(int section);
    // Shows the confirmation dialog and returns (and clears) the answer.
    bool confirm(const QString &title, const QString &text);

    Ui::MainWindow *ui;
    QString m_configDir;
    QString m_previousStyleSheet;
    QString m_styleSheet;
    SerialLink *m_link = nullptr;
    QStringList m_modelIds;
    QString m_modelId;
    int m_modelIndex = -1;
    std::array<ModelInterface *, 7> m_modelPages {};
    QPointer<ChannelListenInterface> m_hub; // the hub deletes itself when closed
    canReceive *m_canReceive = nullptr;
    QWidget *m_connectingScreen = nullptr;
    QStackedWidget *m_pageStack = nullptr; // the central widget; holds every page
    QString m_lastPath; // of the parameter file, remembered in config/lastAddr.tmp
    bool m_confirmed = false;
    bool m_closing = false;
    DeviceData m_unitRecord;
    AnsweredParts m_unitAnswers; // what of m_unitRecord the unit said since it was identified
    bool m_reconnect = true;
    bool m_reconnected = false; // the next identification follows a reconnect
    int m_reconnects = 0;
    quint64 m_refusedAnswers = 0;
    QTimer *m_reconnectTimer = nullptr;
    StatusLine *m_status = nullptr;
    PortChooser *m_portChooser = nullptr;
    EditTracker *m_edits = nullptr; // unwritten edits: markers and the question
    QString m_heldIdentity; // a reconnect's identification kept back until the hub is left
};
