#include "ChannelReport.h"

#include <QtEndian>

bool ChannelReport::decode(const QByteArray &payload, int k, int keyWordCount, ChannelReport &out)
{
    constexpr int kSbusBytes = 64;
    if (k < 2 * keyWordCount || payload.size() != k + kSbusBytes)
        return false;
    const auto *d = reinterpret_cast<const uchar *>(payload.constData());
    auto word = [d](int offset) { return qFromLittleEndian<quint16>(d + offset); };

    const int controlBytes = k - 2 * keyWordCount;
    out.controlWords.resize(controlBytes / 2);
    for (int i = 0; i < out.controlWords.size(); ++i)
        out.controlWords[i] = word(2 * i);
    out.keyWords[0] = word(k - 2);
    out.keyWords[1] = keyWordCount > 1 ? word(k - 4) : quint16(0xFFFF);
    for (int port = 0; port < 2; ++port)
        for (int ch = 0; ch < 16; ++ch)
            out.sbus[port][ch] = word(k + 32 * port + 2 * ch);
    return true;
}
