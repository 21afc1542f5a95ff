#include "ReplyScan.h"

#include <limits>

namespace
{

// The blanks of the C library: space, \t, \n, \v, \f, \r.
bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

int digitValue(char c, int base)
{
    int v = -1;
    if (c >= '0' && c <= '9')
        v = c - '0';
    else if (c >= 'a' && c <= 'f')
        v = c - 'a' + 10;
    else if (c >= 'A' && c <= 'F')
        v = c - 'A' + 10;
    return v < base ? v : -1;
}

class Input
{
public:
    Input(const QByteArray &text, int from)
        : m_data(text.constData())
        , m_size(text.size())
        , m_pos(qBound(0, from, text.size()))
    {
    }

    bool atEnd() const { return m_pos >= m_size; }
    char peek() const { return atEnd() ? '\0' : m_data[m_pos]; }
    char peekAt(int ahead) const { return m_pos + ahead < m_size ? m_data[m_pos + ahead] : '\0'; }
    void advance(int n = 1) { m_pos += n; }
    bool takeLiteral(char c)
    {
        if (atEnd() || m_data[m_pos] != c)
            return false;
        ++m_pos;
        return true;
    }
    void skipBlanks()
    {
        while (!atEnd() && isBlank(m_data[m_pos]))
            ++m_pos;
    }

private:
    const char *m_data;
    int m_size;
    int m_pos;
};

// What the C library's string-to-number conversion yields, as a 64-bit
// word: digits that do not fit hold the value at the type's bound (for an
// unsigned conversion the largest word, whatever the sign).
bool readNumber(Input &in, int base, bool isSigned, quint64 *out)
{
    in.skipBlanks();
    bool negative = false;
    if (in.peek() == '-' || in.peek() == '+') {
        if (digitValue(in.peekAt(1), base) < 0)
            return false;
        negative = in.peek() == '-';
        in.advance();
    }
    if (digitValue(in.peek(), base) < 0)
        return false;
    if (base == 16 && in.peek() == '0' && (in.peekAt(1) == 'x' || in.peekAt(1) == 'X'))
        in.advance(2); // "0x" is taken even without a digit after it; the value is then 0
    constexpr quint64 kSignedMax = quint64(std::numeric_limits<qint64>::max());
    const quint64 limit
        = isSigned ? (negative ? kSignedMax + 1 : kSignedMax) : std::numeric_limits<quint64>::max();
    quint64 magnitude = 0;
    bool overflow = false;
    for (int d; (d = digitValue(in.peek(), base)) >= 0; in.advance()) {
        if (!overflow && magnitude > (limit - quint64(d)) / quint64(base))
            overflow = true;
        if (!overflow)
            magnitude = magnitude * quint64(base) + quint64(d);
    }
    if (overflow)
        *out = isSigned && negative ? quint64(0) - limit : limit;
    else
        *out = negative ? quint64(0) - magnitude : magnitude;
    return true;
}

// Which conversion a pattern asks for at p (just after its '%'), and how many
// pattern characters it takes; kUnknown for one this reader does not know.
using Kind = ReplyScan::Target::Kind;
constexpr int kUnknown = -1;

int conversionAt(const char *p, Kind *kind)
{
    const bool isShort = *p == 'h';
    const char letter = isShort ? p[1] : p[0];
    if (letter == 'd')
        *kind = isShort ? Kind::Short : Kind::Int;
    else if (letter == 'x')
        *kind = isShort ? Kind::ShortHex : Kind::Hex;
    else
        return kUnknown;
    return isShort ? 2 : 1;
}

// The scan itself; store(kind, value) takes each converted number (as the
// 64-bit word the C library's string-to-number conversion yields) and
// returns false to stop.
template<typename Store>
int scanWith(const QByteArray &text, int from, const char *pattern, Store store)
{
    if (from < 0 || from > text.size())
        return 0;
    Input in(text, from);
    int stored = 0;
    for (const char *p = pattern; *p; ++p) {
        if (isBlank(*p)) {
            in.skipBlanks();
            continue;
        }
        if (*p != '%') {
            if (!in.takeLiteral(*p))
                return stored;
            continue;
        }
        ++p;
        if (*p == '%') {
            in.skipBlanks();
            if (!in.takeLiteral('%'))
                return stored;
            continue;
        }
        Kind kind;
        const int length = conversionAt(p, &kind);
        if (length == kUnknown)
            return stored;
        p += length - 1;
        const bool isSigned = kind == Kind::Int || kind == Kind::Short;
        quint64 value = 0;
        if (!readNumber(in, isSigned ? 10 : 16, isSigned, &value) || !store(kind, value))
            return stored;
        ++stored;
    }
    return stored;
}

// Stored as the C library stores them: the low bits of the word.
qint64 lowBits(Kind kind, quint64 value)
{
    switch (kind) {
    case Kind::Int:
        return int(quint32(value));
    case Kind::Short:
        return qint16(quint16(value));
    case Kind::Hex:
        return quint32(value);
    case Kind::ShortHex:
        return quint16(value);
    }
    return 0;
}

} // namespace

namespace ReplyScan
{

int scan(const QByteArray &text, int from, const char *pattern, std::initializer_list<Target> targets)
{
    const Target *next = targets.begin();
    return scanWith(text, from, pattern, [&](Kind kind, quint64 value) {
        if (next == targets.end() || next->kind() != kind || !next->target())
            return false;
        const qint64 v = lowBits(kind, value);
        switch (kind) {
        case Kind::Int:
            *static_cast<int *>(next->target()) = int(v);
            break;
        case Kind::Short:
            *static_cast<qint16 *>(next->target()) = qint16(v);
            break;
        case Kind::Hex:
            *static_cast<quint32 *>(next->target()) = quint32(v);
            break;
        case Kind::ShortHex:
            *static_cast<quint16 *>(next->target()) = quint16(v);
            break;
        }
        ++next;
        return true;
    });
}

int scanValues(const QByteArray &text, int from, const char *pattern, qint64 *values, int maxValues)
{
    int filled = 0;
    return scanWith(text, from, pattern, [&](Kind kind, quint64 value) {
        if (filled >= maxValues)
            return false;
        values[filled++] = lowBits(kind, value);
        return true;
    });
}

int conversionCount(const char *pattern)
{
    int count = 0;
    for (const char *p = pattern; *p; ++p) {
        if (*p != '%')
            continue;
        ++p;
        Kind kind;
        const int length = conversionAt(p, &kind);
        if (length != kUnknown) {
            ++count;
            p += length - 1;
        } else if (*p == '\0') {
            break;
        }
    }
    return count;
}

} // namespace ReplyScan
