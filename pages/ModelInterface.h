#pragma once

#include "ChannelReport.h"
#include "CodeId.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <memory>

class QPushButton;
struct ModelSpec;

// The live picture of the connected unit: its sticks, switches, knobs, dials
// and keys, both SBUS outputs as channel bars, the button to the
// configuration hub and the hidden stick calibration button. One design for
// all models; what differs lives in the model's ModelSpec.
class ModelInterface : public QWidget
{
    Q_OBJECT
public:
    ModelInterface(const ModelSpec &layout, QWidget *parent = nullptr);
    ~ModelInterface() override;

    const ModelSpec &layout() const { return m_spec; }
    bool isCalibrating() const { return m_calibrating; }
    bool hasPendingReport() const { return m_pendingTimer.isActive(); }
    // Shortest time between two frames of live values, in ms (0: every report).
    void setFrameInterval(int ms) { m_frameInterval = ms; }

Q_SIGNALS:
    void signal_startupCalibration();
    void signal_finishCalibration();
    void signal_closeEvent();

public Q_SLOTS:
    void slot_information(CodeID code, QByteArray data);
    void on_channelCalibration_clicked();
    void on_channelConfig_clicked();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    struct LayoutKey;
    void showReport(const ChannelReport &report);
    void applyReport(const ChannelReport &report);
    void layOut();
    void drawPage(QPainter &painter);
    void drawBody(QPainter &painter, const QRect &area);

    const ModelSpec &m_spec;
    QPushButton *channelCalibration;
    QPushButton *channelListen;
    bool m_calibrating = false;
    QRect m_calibrationRect;
    struct Controls;
    Controls *m_controls;
    std::unique_ptr<LayoutKey> m_laidOut; // what the current layout and backdrop were made for
    // The window shows at most one frame per m_frameInterval; a report that
    // comes sooner waits as m_pending and is shown by the next report's frame
    // or, when the stream stops, by m_pendingTimer.
    int m_frameInterval;
    QElapsedTimer m_sinceFrame;
    QTimer m_pendingTimer;
    ChannelReport m_pending;
};

// The page of model 0..6 (ALDER .. WILLO).
ModelInterface *createModelPage(int model, QWidget *parent);
