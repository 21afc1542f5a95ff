#pragma once

#include "AnswerRules.h"

#include <QByteArray>
#include <QVector>

struct Frame {
    quint8 code;
    QByteArray payload;
    bool operator==(const Frame &o) const { return code == o.code && payload == o.payload; }
};

// The cutting rules written out the plain way: the tail is copied at every
// incomplete header. The real cutter must behave exactly like this.
struct ReferenceCutter {
    QByteArray pending;

    QVector<Frame> feed(const QByteArray &bytes)
    {
        QVector<Frame> out;
        if (bytes.isEmpty())
            return out;
        const QByteArray buf = pending.isEmpty() ? bytes : pending + bytes;
        pending.clear();
        const int n = buf.size();
        int i = 0;
        while (i < n) {
            if (quint8(buf[i]) != 0xFA) {
                ++i;
                continue;
            }
            if (n <= i + 3) {
                pending = buf.mid(i);
                ++i;
                continue;
            }
            const int length = quint8(buf[i + 2]) + 256 * quint8(buf[i + 3]);
            if (i + 4 + length >= n) {
                pending = buf.mid(i);
                ++i;
                continue;
            }
            if (quint8(buf[i + 4 + length]) != 0x5F) {
                ++i;
                continue;
            }
            const quint8 code = quint8(buf[i + 1]);
            const int asSigned = qint8(code);
            if (asSigned < -93 || asSigned > 57) {
                ++i;
                continue;
            }
            out.append({ code, buf.mid(i + 4, length) });
            const bool rescan = code == 0xDF || codeInfo(code).kind == AnswerKind::Unknown;
            i = rescan ? i + 1 : i + 5 + length;
        }
        return out;
    }
};
