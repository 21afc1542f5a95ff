#pragma once

#include "ChannelMixer.h"
#include "UnitSpec.h"

#include <QByteArray>
#include <QHash>
#include <QVector>

namespace Vunit
{

// The unit's parameters, kept as the payloads that travel on the wire: a
// write stores what the configurator sent, a read answers with it. Seeded
// with the factory values of the model; a factory reset seeds them again.
class ParameterStore
{
public:
    static constexpr int kSbusTuningBytes = 85;
    static constexpr int kSbusNoneBytes = 17;
    static constexpr int kHoldPortBytes = 8;
    static constexpr int kMaxCanFrames = 10;

    explicit ParameterStore(const ModelSpec &layout);

    void restoreFactory();

    // Groups held once, keyed by their read code.
    QByteArray value(quint8 readCode) const { return m_values.value(readCode); }
    void setValue(quint8 readCode, const QByteArray &payload) { m_values.insert(readCode, payload); }

    // Per SBUS port (0 or 1); byte 0 of each payload is the port.
    QByteArray sbusTuning(int port) const { return m_sbusTuning[port]; }
    QByteArray sbusNone(int port) const { return m_sbusNone[port]; }
    void setSbusTuning(const QByteArray &payload);
    void setSbusNone(const QByteArray &payload);

    // Channel hold: one block of 8 bytes per port, both in one answer.
    QByteArray channelHold() const { return m_hold[0] + m_hold[1]; }
    void setChannelHoldBlock(const QByteArray &block);

    // CAN frames of the output module: the header payload of each frame (frame
    // count, index, identifiers, types, data length) and, per frame, the
    // mapping payloads keyed by their read code; layouts in CustomOutputCodec.h.
    int canFrameCount() const { return m_canFrameCount; }
    QByteArray canFrame(int index) const; // empty past the frames in use
    void setCanFrame(const QByteArray &header); // 11 bytes, or the single byte 0 for "no frames"
    // Stored, or the factory mapping of that frame; empty for an index of 10 or more.
    QByteArray frameValue(quint8 readCode, int index) const;
    void setFrameValue(quint8 readCode, int index, const QByteArray &payload);

    ChannelSetting channelSetting(int port, int channel) const;

private:
    void seedSbus();
    void seedSimpleGroups();
    void seedCustomOutput();

    const ModelSpec &m_spec;
    QByteArray m_sbusTuning[2];
    QByteArray m_sbusNone[2];
    QByteArray m_hold[2];
    QHash<quint8, QByteArray> m_values;
    int m_canFrameCount = 0;
    QVector<QByteArray> m_canFrames;
    QHash<quint8, QVector<QByteArray>> m_frameValues;
};

// Signed values travel as sign and magnitude: bit 7 set means negative.
int fromSignMagnitude(quint8 byte);
quint8 toSignMagnitude(int value);

} // namespace Vunit
