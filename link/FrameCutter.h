#pragma once

#include <QByteArray>

#include <functional>

// Cuts SerialFrames out of the byte stream of the serial port, across reads.
//
// Bytes that are not 0xFA are skipped; a 0xFA whose trailer (at 4 + N behind
// it) is not 0x5F was noise and the scan moves one byte on. A 0xFA whose
// frame does not fit into the bytes received so far marks an incomplete tail:
// the scan still goes on behind it, and the last incomplete header found
// decides where the pending tail starts; the next read is appended to it.
//
// Each read costs time linear in its bytes: the pending tail is copied once
// at the end, and when nothing was handed on behind the pending header the
// part of the tail already searched is not searched again.
class FrameCutter
{
public:
    using Sink = std::function<void(quint8 code, const QByteArray &payload)>;

    void feed(const QByteArray &bytes, const Sink &sink);

    const QByteArray &pending() const { return m_pending; }

private:
    QByteArray m_pending;
    // True when no frame was handed on behind the pending header during the
    // last scan; the tail then holds nothing a new scan could find again.
    bool m_tailQuiet = false;
};
