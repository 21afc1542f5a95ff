#include "FrameCutter.h"

#include "AnswerRules.h"
#include "SerialFrame.h"

#include <cstring>

void FrameCutter::feed(const QByteArray &bytes, const Sink &sink)
{
    if (bytes.isEmpty())
        return;

    QByteArray buf;
    // Positions 1 .. searchedEnd - 1 of the buffer were searched by the last
    // read with no effect; a second search would find exactly the same.
    int searchedEnd = 0;
    if (m_pending.isEmpty()) {
        buf = bytes;
    } else {
        if (m_tailQuiet)
            searchedEnd = m_pending.size();
        // Appending in place keeps a long pending tail from being copied at
        // every read.
        buf = std::move(m_pending);
        m_pending = QByteArray();
        buf.append(bytes);
    }

    const auto *d = reinterpret_cast<const uchar *>(buf.constData());
    const int n = buf.size();
    int lastIncomplete = -1;
    bool quietSinceIncomplete = true;

    int i = 0;
    while (i < n) {
        if (d[i] != SerialFrame::Header) {
            const void *next = std::memchr(d + i, SerialFrame::Header, size_t(n - i));
            if (!next)
                break;
            i = int(static_cast<const uchar *>(next) - d);
        }

        if (n <= i + 3) {
            // Header incomplete. The scan goes on: a later 0xFA in the tail
            // replaces this one as the start of the pending bytes.
            lastIncomplete = i;
            quietSinceIncomplete = true;
        } else {
            const int length = d[i + 2] | (d[i + 3] << 8);
            const int trailer = i + 4 + length;
            if (trailer >= n) {
                lastIncomplete = i;
                quietSinceIncomplete = true;
            } else if (d[trailer] == SerialFrame::Trailer) {
                const quint8 code = d[i + 1];
                if (codeInfo(code).kind != AnswerKind::OutOfRange) {
                    quietSinceIncomplete = false;
                    sink(code, buf.mid(i + 4, length));
                    if (resumesBehindFrame(code)) {
                        i = trailer + 1;
                        continue;
                    }
                }
            }
        }

        if (i == 0 && searchedEnd > 0) {
            i = searchedEnd;
            continue;
        }
        ++i;
    }

    if (lastIncomplete >= 0) {
        m_pending = lastIncomplete == 0 ? buf : buf.mid(lastIncomplete);
        m_tailQuiet = quietSinceIncomplete;
    } else {
        m_tailQuiet = false;
    }
}
