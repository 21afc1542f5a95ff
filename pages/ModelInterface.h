#pragma once

#include "ChannelReport.h"
#include "CodeId.h"

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
};

// The page of model 0..6 (ALDER .. WILLO).
ModelInterface *createModelPage(int model, QWidget *parent);
