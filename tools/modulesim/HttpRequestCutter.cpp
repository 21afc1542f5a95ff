#include "HttpRequestCutter.h"

#include <QList>

namespace ModuleSim
{

namespace
{

const QByteArray kBlankLine = QByteArrayLiteral("\r\n\r\n");

// Digits only: a signed or padded length is not something a client sends.
int parseLength(const QByteArray &text)
{
    if (text.isEmpty() || text.size() > 9)
        return -1;
    int v = 0;
    for (char c : text) {
        if (c < '0' || c > '9')
            return -1;
        v = v * 10 + (c - '0');
    }
    return v;
}

} // namespace

bool HttpRequestCutter::feed(const QByteArray &bytes, QVector<HttpRequest> *out)
{
    m_pending += bytes;
    for (;;) {
        if (m_headEnd == 0) {
            const int blank = m_pending.indexOf(kBlankLine);
            if (blank < 0)
                return m_pending.size() <= kMaxRequest;
            m_headEnd = blank + kBlankLine.size();
            if (!parseHead())
                return false;
        }
        if (m_pending.size() - m_headEnd < m_contentLength)
            return true;
        out->append(take(m_contentLength));
    }
}

HttpRequest HttpRequestCutter::takeShort()
{
    if (m_headEnd == 0)
        return HttpRequest();
    HttpRequest r = take(m_pending.size() - m_headEnd);
    r.shortBody = true;
    return r;
}

bool HttpRequestCutter::parseHead()
{
    const QList<QByteArray> lines = m_pending.left(m_headEnd - kBlankLine.size()).split('\n');
    const QList<QByteArray> start = lines.first().trimmed().split(' ');
    if (start.size() != 3 || start.at(0).isEmpty() || !start.at(1).startsWith('/')
        || !start.at(2).startsWith("HTTP/1."))
        return false;
    m_head = HttpRequest();
    m_head.method = start.at(0);
    m_head.path = start.at(1);
    m_head.keepAlive = start.at(2) != "HTTP/1.0";
    m_contentLength = 0;
    for (int i = 1; i < lines.size(); ++i) {
        const QByteArray &line = lines.at(i);
        const int colon = line.indexOf(':');
        if (colon <= 0)
            return false;
        const QByteArray name = line.left(colon).trimmed().toLower();
        const QByteArray value = line.mid(colon + 1).trimmed().toLower();
        if (name == "content-length") {
            m_contentLength = parseLength(value);
            if (m_contentLength < 0)
                return false;
        } else if (name == "connection") {
            if (value == "close")
                m_head.keepAlive = false;
            else if (value == "keep-alive")
                m_head.keepAlive = true;
        }
    }
    return m_headEnd + qint64(m_contentLength) <= kMaxRequest;
}

HttpRequest HttpRequestCutter::take(int bodyBytes)
{
    HttpRequest r = m_head;
    r.raw = m_pending.left(m_headEnd + bodyBytes);
    r.body = r.raw.mid(m_headEnd);
    m_pending.remove(0, r.raw.size());
    m_headEnd = 0;
    m_contentLength = 0;
    return r;
}

} // namespace ModuleSim
