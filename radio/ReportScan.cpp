#include "ReportScan.h"

#include "ScanChars.h"

#include <limits>

namespace
{

using ScanChars::digitValue;
using ScanChars::isBlank;

class Cursor
{
public:
    Cursor(const char *text, int size)
        : m_text(text)
        , m_size(size)
    {
    }

    bool atEnd() const { return m_pos >= m_size; }
    char peek(int ahead = 0) const { return m_pos + ahead < m_size ? m_text[m_pos + ahead] : '\0'; }
    void skipBlanks()
    {
        while (!atEnd() && isBlank(peek()))
            ++m_pos;
    }
    bool take(char c)
    {
        if (atEnd() || peek() != c)
            return false;
        ++m_pos;
        return true;
    }
    void advance(int n) { m_pos += n; }

private:
    const char *m_text;
    int m_size;
    int m_pos = 0;
};

// [blanks] [sign] digits. The magnitude stops growing just past the limit,
// so any number of digits is read without overflow.
bool readNumber(Cursor &in, int base, quint64 limit, bool *negative, quint64 *magnitude)
{
    in.skipBlanks();
    *negative = false;
    int lookahead = 0;
    if (in.peek() == '-' || in.peek() == '+') {
        *negative = in.peek() == '-';
        lookahead = 1;
    }
    // "0x" belongs to a hexadecimal number only when a hex digit follows it.
    if (base == 16 && in.peek(lookahead) == '0' && (in.peek(lookahead + 1) | 0x20) == 'x'
        && digitValue(in.peek(lookahead + 2), 16) >= 0)
        lookahead += 2;
    if (digitValue(in.peek(lookahead), base) < 0)
        return false;
    in.advance(lookahead);
    quint64 value = 0;
    for (int d = digitValue(in.peek(), base); !in.atEnd() && d >= 0; d = digitValue(in.peek(), base)) {
        if (value <= limit)
            value = value * quint64(base) + quint64(d);
        in.advance(1);
    }
    *magnitude = value;
    return true;
}

qint64 signedValue(bool negative, quint64 magnitude, qint64 min, qint64 max)
{
    if (negative)
        return magnitude > quint64(-min) ? min : -qint64(magnitude);
    return magnitude > quint64(max) ? max : qint64(magnitude);
}

enum class Conversion { None, Short, Int, Hex };

// The conversion at pattern[p] ('%' already seen at p - 1) and its length.
Conversion conversionAt(const char *pattern, int p, int *length)
{
    if (pattern[p] == 'd') {
        *length = 1;
        return Conversion::Int;
    }
    if (pattern[p] == 'x') {
        *length = 1;
        return Conversion::Hex;
    }
    if (pattern[p] == 'h' && pattern[p + 1] == 'd') {
        *length = 2;
        return Conversion::Short;
    }
    return Conversion::None;
}

} // namespace

namespace ReportScan
{

int scan(const char *text, int size, const char *pattern, qint64 *values, int maxValues)
{
    Cursor in(text, qMax(0, size));
    int filled = 0;
    for (int p = 0; pattern[p] != '\0'; ++p) {
        const char c = pattern[p];
        if (isBlank(c)) {
            in.skipBlanks();
            continue;
        }
        if (c != '%') {
            if (!in.take(c))
                return filled;
            continue;
        }
        int length = 0;
        const Conversion conversion = conversionAt(pattern, p + 1, &length);
        if (conversion == Conversion::None || filled >= maxValues)
            return filled;
        p += length;
        bool negative = false;
        quint64 magnitude = 0;
        switch (conversion) {
        case Conversion::Short:
            if (!readNumber(in, 10, 1u << 16, &negative, &magnitude))
                return filled;
            values[filled] = signedValue(
                negative, magnitude, std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max());
            break;
        case Conversion::Int:
            if (!readNumber(in, 10, 1ull << 32, &negative, &magnitude))
                return filled;
            values[filled] = signedValue(
                negative, magnitude, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
            break;
        case Conversion::Hex: {
            if (!readNumber(in, 16, 1ull << 32, &negative, &magnitude))
                return filled;
            // Like strtoul: too large is the largest value, otherwise a minus
            // sign negates modulo 2^32.
            if (magnitude > 0xFFFFFFFFull)
                values[filled] = 0xFFFFFFFFll;
            else
                values[filled] = qint64(negative ? quint32(0u - quint32(magnitude)) : quint32(magnitude));
            break;
        }
        case Conversion::None:
            return filled;
        }
        ++filled;
    }
    return filled;
}

int conversionCount(const char *pattern)
{
    int count = 0;
    for (int p = 0; pattern[p] != '\0'; ++p) {
        int length = 0;
        if (pattern[p] == '%' && conversionAt(pattern, p + 1, &length) != Conversion::None) {
            ++count;
            p += length;
        }
    }
    return count;
}

} // namespace ReportScan
