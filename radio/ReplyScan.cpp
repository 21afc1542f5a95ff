#include "ReplyScan.h"

#include "ScanChars.h"

#include <limits>

namespace
{

using ScanChars::digitValue;
using ScanChars::isBlank;

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

} // namespace

namespace ReplyScan
{

int scan(const QByteArray &text, int from, const char *pattern, std::initializer_list<Target> targets)
{
    if (from < 0 || from > text.size())
        return 0;
    Input in(text, from);
    const Target *next = targets.begin();
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
        const bool isShort = *p == 'h';
        if (isShort)
            ++p;
        Target::Kind kind;
        if (*p == 'd')
            kind = isShort ? Target::Kind::Short : Target::Kind::Int;
        else if (*p == 'x')
            kind = isShort ? Target::Kind::ShortHex : Target::Kind::Hex;
        else
            return stored; // a conversion this reader does not know
        if (next == targets.end() || next->kind() != kind || !next->target())
            return stored;
        const bool isSigned = kind == Target::Kind::Int || kind == Target::Kind::Short;
        quint64 value = 0;
        if (!readNumber(in, isSigned ? 10 : 16, isSigned, &value))
            return stored;
        // Stored as the C library stores them: the low bits of the word.
        switch (kind) {
        case Target::Kind::Int:
            *static_cast<int *>(next->target()) = int(quint32(value));
            break;
        case Target::Kind::Short:
            *static_cast<qint16 *>(next->target()) = qint16(quint16(value));
            break;
        case Target::Kind::Hex:
            *static_cast<quint32 *>(next->target()) = quint32(value);
            break;
        case Target::Kind::ShortHex:
            *static_cast<quint16 *>(next->target()) = quint16(value);
            break;
        }
        ++next;
        ++stored;
    }
    return stored;
}

} // namespace ReplyScan
