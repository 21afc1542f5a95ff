#pragma once

#include "CommandHistory.h"
#include "ModuleForms.h"
#include "RefreshSequence.h"

#include <QByteArray>
#include <QList>
#include <QWidget>

#include <functional>

namespace Ui
{
class RFParaConfig;
}
class QNetworkAccessManager;
class QListWidgetItem;
class QNetworkReply;
class QPushButton;
class QTcpSocket;
class QTimer;

// Management of the unit's radio link module over the local network. Every
// setting is one row: a current-value label, an input, a refresh button that
// asks the module and a set button that writes to it, all through forms
// posted to the module's web server. A plain TCP connection to the server's
// port tells whether the module is still there; while it is, a timer asks
// for the module's temperature.
class RFParaConfig : public QWidget
{
    Q_OBJECT
public:
    explicit RFParaConfig(QWidget *parent = nullptr);
    ~RFParaConfig() override;

public Q_SLOTS:
    void on_timeout();

private Q_SLOTS:
    void on_link_clicked();
    void on_falcon_series_toggled(bool checked);
    void on_device_switch_flush_clicked();
    void on_device_switch_config_clicked();
    void on_device_restart_flush_clicked();
    void on_device_restart_config_clicked();
    void on_band_flush_clicked();
    void on_band_config_clicked();
    void on_passwd_flush_clicked();
    void on_passwd_config_clicked();
    void on_mode_flush_clicked();
    void on_mode_config_clicked();
    void on_ip_flush_clicked();
    void on_ip_config_clicked();
    void on_hopping_flush_clicked();
    void on_hopping_config_clicked();
    void on_dstc_flush_clicked();
    void on_dstc_config_clicked();
    void on_dssmtp_flush_clicked();
    void on_dssmtp_config_clicked();
    void on_group_flush_clicked();
    void on_group_config_clicked();
    void on_dsonscap_flush_clicked();
    void on_dsonscap_config_clicked();
    void on_drpr_log_create_clicked();
    void on_atCmd_config_clicked();
    void on_refresh_all_clicked();
    void on_atCmd_history_itemDoubleClicked(QListWidgetItem *item);

private:
    using ReplyHandler = std::function<void(bool failed, const QByteArray &body)>;
    using AnswerHandler = std::function<void(const QByteArray &body)>;

    // Posts a form to the module at the typed address; the handler gets the
    // reply once it is complete, or failed when it is not there in time, too
    // long or aborted. The reply under way, nullptr when nothing was posted.
    QNetworkReply *post(const ModuleForms::Form &form, ReplyHandler handler);
    void abortReplies();
    // An AT query; the handler only hears a reply that arrived.
    void query(const char *command, AnswerHandler handler);
    // A set whose reply says "OK", "+CME ERROR: 100" or nothing useful; after
    // "OK" the row's refresh button reads the new value.
    void postSet(const ModuleForms::Form &form, QPushButton *refresh);
    // The user's message after a set; a success reads the value again.
    void setDone(bool succeeded, QPushButton *refresh);
    void selectionSet(const char *prefix, int index, QPushButton *refresh);

    // The reachability probe: a TCP connection to the module's web server.
    enum class Probe { None, Connect, Reconnect };
    void startProbe(Probe kind, int waitMs);
    void finishProbe(bool reached);
    void connectionFailed();
    void setConnected(bool connected);

    // Row buttons: active ones show their icon, greyed ones the "_gray" one.
    void updateRowButtons();
    bool rowAllowed(const QPushButton *button) const;
    void setDsonscapRowVisible(bool visible);
    void showMessage(const QString &title, const QString &text);

    // Opens on the screen under the pointer, no larger than its free area.
    void fitToScreen();
    void applyStyleSheet();

    // "Refresh all": each row's refresh button is clicked in turn, the next
    // once the previous one's reply is in or has run out of time.
    QVector<RefreshSequence::Step> refreshSteps() const;
    void refreshNext();
    void endRefreshAll();

    void addToHistory(const QString &command);

    Ui::RFParaConfig *ui;
    QNetworkAccessManager *m_network;
    QTcpSocket *m_socket;
    QTimer *m_timer;
    Probe m_probe = Probe::None;
    int m_probeAttempt = 0; // numbers the probes, so a late deadline finds its own
    // The node type the module last reported (0 automatic, 1 centre, 2
    // access); -1 before the first answer on this connection.
    int m_nodeType = -1;
    QList<QPushButton *> m_refreshButtons;
    QList<QPushButton *> m_setButtons;
    RefreshSequence m_refreshAll;
    int m_refreshRun = 0; // numbers the runs, so a reply of a stopped run starts nothing
    QNetworkReply *m_lastPost = nullptr; // what the last click posted, for refresh all
    CommandHistory m_history;
};
