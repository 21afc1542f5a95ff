#include "RequestCutter.h"

#include "SerialFrame.h"

namespace Vunit
{

void RequestCutter::feed(const QByteArray &bytes, const Sink &sink, QStringList *notes)
{
    const QByteArray buf = m_pending + bytes;
    m_pending.clear();
    const auto *d = reinterpret_cast<const uchar *>(buf.constData());
    const int n = buf.size();

    int consumed = 0; // bytes before this were handed on or reported
    int pendingFrom = -1; // first header still waiting for its bytes
    auto skipped = [&](int upTo) {
        if (upTo > consumed && notes)
            notes->append(QStringLiteral("skipped %1 bytes that are no request frame").arg(upTo - consumed));
    };

    int i = 0;
    while (i < n) {
        if (d[i] != SerialFrame::Header) {
            ++i;
            continue;
        }
        if (n <= i + 3) {
            if (pendingFrom < 0)
                pendingFrom = i;
            ++i;
            continue;
        }
        const int length = d[i + 2] | (d[i + 3] << 8);
        if (length > kMaxPayload) {
            ++i;
            continue;
        }
        const int trailer = i + 4 + length;
        if (trailer >= n) {
            if (pendingFrom < 0)
                pendingFrom = i;
            ++i;
            continue;
        }
        if (d[trailer] != SerialFrame::Trailer) {
            ++i;
            continue;
        }
        skipped(i);
        sink(d[i + 1], buf.mid(i + 4, length));
        consumed = trailer + 1;
        pendingFrom = -1;
        i = consumed;
    }

    if (pendingFrom >= 0) {
        skipped(pendingFrom);
        m_pending = buf.mid(pendingFrom);
    } else {
        skipped(n);
    }
}

} // namespace Vunit
