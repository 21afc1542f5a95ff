#pragma once

#include "LinkHistory.h"
#include "LinkReport.h"

#include <QFile>
#include <QVector>
#include <QWidget>

class LinkPlot;
class QTcpSocket;
class QTimer;

namespace Ui
{
class logWidget;
}

// The link-quality log monitor ("DRPR Log"): while polling it asks the radio
// module for its link report every 1500 ms on a plain TCP connection,
// appends each report to a log file and shows one row per remote node.
// Several monitors may be open, each with its own connection and timer.
class logWidget : public QWidget
{
    Q_OBJECT
public:
    // Always a top-level window, deleted when closed.
    explicit logWidget(QWidget *parent = nullptr);
    ~logWidget() override;

    // The figures of every report so far, per node and antenna; the plot
    // under the table draws them and exports them.
    LinkHistory &history();

private Q_SLOTS:
    void on_link_clicked();
    void on_timeout();
    void ReadData();
    void slot_btn1Toggled(int id, bool checked);
    void slot_btn2Toggled(int id, bool checked);

private:
    void startPolling();
    void stopPolling();
    void setInputsEnabled(bool enabled);
    void writePendingRequest();
    void giveUpConnecting();
    void resetRows();
    void showRecords(const QVector<LinkReport::LinkRecord> &records);

    Ui::logWidget *ui;
    QTcpSocket *m_socket;
    QTimer *m_timer;
    QTimer *m_connectWait;
    LinkReport::ModuleKind m_kind = LinkReport::ModuleKind::None;
    QVector<LinkReport::LinkRecord> m_accessRecords;
    QVector<LinkReport::LinkRecord> m_centreRecords;
    QVector<LinkReport::LinkRecord> m_meshRecords;
    QFile m_accessLog;
    QFile m_centreLog;
    QFile m_meshLog;
    // The request of a tick that had to connect first, written once the
    // connection is up.
    QByteArray m_pendingRequest;
    // Bytes the module sent since the last poll went out.
    qint64 m_received = 0;
    LinkHistory m_history;
    LinkPlot *m_plot;
    // A poll went out (or was due) and no report with records came back
    // yet: the next tick or the stop marks a gap in the history.
    bool m_pollDue = false;
    bool m_answered = false;
};
