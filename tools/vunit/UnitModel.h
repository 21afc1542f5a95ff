#pragma once

#include "HandMotion.h"
#include "UnitSpec.h"
#include "ParameterStore.h"

#include <QByteArray>
#include <QSet>
#include <QStringList>
#include <QVector>

namespace Vunit
{

struct UnitConfig {
    Model model = Model::Alder;
    int moduleKind = 0; // answered to 0xDF
    QSet<quint8> refused; // codes answered with the status 0xEE
    quint64 seed = 1; // motion of the inputs
    int reportRateHz = 0; // 0: the rate the upload request asks for
    QByteArray identifier; // empty: the model's own five characters
};

// The unit's side of the serial protocol, without any I/O: a request goes in,
// the answer frames come out; the channel report is a function of time.
class UnitModel
{
public:
    static constexpr int kDefaultRateHz = 50;

    explicit UnitModel(const UnitConfig &config);

    // Answers one request frame (code and payload) received at nowMs. Returns
    // complete frames; anything the unit ignores adds one line to notes.
    QVector<QByteArray> handle(quint8 code, const QByteArray &payload, qint64 nowMs, QStringList *notes);

    bool uploading() const { return m_uploading; }
    int reportRateHz() const { return m_rateHz; }
    bool calibrating() const { return m_calibrating; }

    // The channel report 0xA5 at time nowMs: a status byte, then the control
    // block and both SBUS outputs (the model page's upload), or the SBUS
    // outputs alone (the settings pages' upload).
    QByteArray reportPayload(qint64 nowMs) const;
    QByteArray reportFrame(qint64 nowMs) const;

    // With the output module, once the configurator has read its group and
    // while CAN output is on, the unit hands back the CAN frames it sends
    // (answer 0x26), one every kCanReportMs, its frames taking turns.
    static constexpr int kCanReportMs = 1000;
    bool reportsCanFrames() const;
    QByteArray canReportFrame(qint64 nowMs) const;

    const ModelSpec &layout() const { return m_spec; }
    const ParameterStore &store() const { return m_store; }

private:
    QByteArray battery(quint8 detail, qint64 nowMs) const;
    QVector<QByteArray> searchAnswers() const;
    QByteArray canData(qint64 nowMs) const;
    QVector<quint16> sbusOutputs(int port, const QVector<quint16> &controls) const;

    bool handleSimpleGroup(quint8 code, const QByteArray &payload, QByteArray *answer, QString *problem);
    bool handleSbus(quint8 code, const QByteArray &payload, QByteArray *answer, QString *problem);
    bool handleCustomOutput(quint8 code, const QByteArray &payload, QByteArray *answer, QString *problem);

    UnitConfig m_config;
    const ModelSpec &m_spec;
    HandMotion m_motion;
    ParameterStore m_store;
    bool m_uploading = false;
    quint8 m_uploadMode = 2;
    int m_rateHz = kDefaultRateHz;
    bool m_calibrating = false;
    bool m_outputWatched = false;
};

QString hexCode(quint8 code);

} // namespace Vunit
