#pragma once

#include <QByteArray>
#include <QVector>

namespace ModuleSim
{

struct HttpRequest {
    QByteArray raw; // exactly the bytes received, head and body
    QByteArray method;
    QByteArray path;
    QByteArray body;
    bool keepAlive = true;
    bool shortBody = false; // ended by the wait, not by its Content-Length
};

// Cuts HTTP requests out of the bytes of one connection: a head up to the
// blank line, then Content-Length bytes of body. Requests may come in pieces
// or several in one read. The link monitor always announces a 31-byte body
// and sends fewer bytes for shorter commands, so a short body is handed on by
// takeShort() once the caller has waited long enough for the rest.
class HttpRequestCutter
{
public:
    // Beyond this a request is junk: the connection is given up rather than
    // buffering without end.
    static constexpr int kMaxRequest = 64 * 1024;

    // Appends the complete requests to out. False when the stream cannot be a
    // request (oversized, malformed head): the connection should be closed.
    bool feed(const QByteArray &bytes, QVector<HttpRequest> *out);

    // A head has arrived and its body is still short.
    bool waitingForBody() const { return m_headEnd > 0; }
    // The waiting request with the part of the body that arrived.
    HttpRequest takeShort();

    int pendingSize() const { return m_pending.size(); }

private:
    bool parseHead();
    HttpRequest take(int bodyBytes);

    QByteArray m_pending;
    int m_headEnd = 0; // bytes of the parsed head incl. the blank line; 0: none yet
    int m_contentLength = 0;
    HttpRequest m_head;
};

} // namespace ModuleSim
