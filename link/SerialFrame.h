#pragma once

#include <QByteArray>

// One message on the serial link, both directions:
//   0xFA, code, payload length (16-bit little-endian), payload, 0x5F
// No checksum, no escaping: only the length decides where the trailer stands.
namespace SerialFrame {

constexpr quint8 Header = 0xFA;
constexpr quint8 Trailer = 0x5F;
constexpr int Overhead = 5;

// Any request: bare when the payload is empty (5 bytes), otherwise N + 5 bytes.
QByteArray encode(quint8 code, const QByteArray &payload = QByteArray());

// A one-byte request (6 bytes). The one-byte senders send the first byte of
// the payload a page hands them; an empty payload sends 0.
QByteArray shortFrame(quint8 code, quint8 byte);
QByteArray shortFrame(quint8 code, const QByteArray &payload);

// 0xE5 with the mode byte followed by 0x32 (7 bytes).
QByteArray startUpload(quint8 mode);

// The SBUS control write 0x35 always goes out as 12 bytes with the length
// field set to 7, zero-padded; the trailer stands directly behind the given
// payload bytes, so a shorter payload leaves the padding after the trailer.
// The unit expects exactly this frame.
QByteArray fixedControlFrame(const QByteArray &payload);

} // namespace SerialFrame
