#include "SerialFrame.h"

#include "Command.h"

namespace SerialFrame {

QByteArray encode(quint8 code, const QByteArray &payload)
{
    const int n = payload.size();
    QByteArray frame;
    frame.reserve(n + Overhead);
    frame.append(char(Header));
    frame.append(char(code));
    frame.append(char(n & 0xFF));
    frame.append(char((n >> 8) & 0xFF));
    frame.append(payload);
    frame.append(char(Trailer));
    return frame;
}

QByteArray shortFrame(quint8 code, quint8 byte)
{
    return encode(code, QByteArray(1, char(byte)));
}

QByteArray shortFrame(quint8 code, const QByteArray &payload)
{
    return shortFrame(code, payload.isEmpty() ? quint8(0) : quint8(payload.at(0)));
}

QByteArray startUpload(quint8 mode)
{
    QByteArray payload;
    payload.append(char(mode));
    payload.append(char(Command::UploadRate));
    return encode(Command::StartUpload, payload);
}

QByteArray fixedControlFrame(const QByteArray &payload)
{
    constexpr int kPayload = 7;
    const QByteArray given = payload.left(kPayload);
    QByteArray frame(kPayload + Overhead, '\0');
    frame[0] = char(Header);
    frame[1] = char(0x35);
    frame[2] = char(kPayload);
    frame[3] = 0;
    for (int i = 0; i < given.size(); ++i)
        frame[4 + i] = given.at(i);
    frame[4 + given.size()] = char(Trailer);
    return frame;
}

} // namespace SerialFrame
