#include "AnsweredParts.h"

#include "DeviceData.h"

namespace
{

constexpr quint8 kFrameHeader = 0xD5;
// The four mappings of a CAN frame, answered with the frame's index in byte 0.
constexpr quint8 kFrameMappings[] = { 0xDB, 0xDD, 0x20, 0x22 };
constexpr int kFrameHeaderBytes = 11;

} // namespace

void AnsweredParts::clear()
{
    *this = AnsweredParts();
}

void AnsweredParts::note(quint8 code, const QByteArray &payload)
{
    const int part = FileParts::ofRead(code, payload);
    if (part < 0 || payload.isEmpty())
        return;
    if (part == FileParts::Sbus1 || part == FileParts::Sbus2) {
        m_sbus[part == FileParts::Sbus1 ? 0 : 1][code == 0xA3 ? 0 : 1] = true;
        return;
    }
    if (part != FileParts::CanFrames) {
        m_codes.insert(code);
        return;
    }
    if (code == kFrameHeader) {
        // Every answer to it carries the count; the long one also a frame's header.
        m_frameCount = true;
        if (payload.size() == kFrameHeaderBytes)
            m_frameAnswers[0].insert(quint8(payload.at(1)));
        return;
    }
    for (int i = 0; i < 4; ++i) {
        if (code == kFrameMappings[i])
            m_frameAnswers[1 + i].insert(quint8(payload.at(0)));
    }
}

FileParts::Parts AnsweredParts::complete(const DeviceData &record) const
{
    using namespace FileParts;
    Parts parts;
    parts.set(Sbus1, m_sbus[0][0] && m_sbus[0][1]);
    parts.set(Sbus2, m_sbus[1][0] && m_sbus[1][1]);
    for (quint8 code : m_codes) {
        const int part = ofRead(code, QByteArray());
        if (part >= 0 && part != SerialStream)
            parts.set(size_t(part));
    }
    parts.set(SerialStream, m_codes.contains(0xD7) && m_codes.contains(0xD9));
    bool frames = m_frameCount;
    for (int i = 0; frames && i < record.canFrames.size(); ++i) {
        for (const QSet<int> &answered : m_frameAnswers)
            frames = frames && answered.contains(i);
    }
    parts.set(CanFrames, frames);
    return parts;
}
