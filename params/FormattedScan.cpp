#include "FormattedScan.h"

#include <QVector>

#include <cmath>
#include <limits>

namespace
{

// The blanks a C scan skips: space, \t, \n, \v, \f, \r.
bool isBlank(QChar c)
{
    const ushort u = c.unicode();
    return u == ' ' || (u >= '\t' && u <= '\r');
}

bool isDigit(QChar c)
{
    return c.unicode() >= '0' && c.unicode() <= '9';
}

class Cursor
{
public:
    explicit Cursor(const QString &text)
        : m_text(text)
    {
    }

    bool atEnd() const { return m_pos >= m_text.size(); }
    QChar peek() const { return atEnd() ? QChar() : m_text.at(m_pos); }
    void skipBlanks()
    {
        while (!atEnd() && isBlank(peek()))
            ++m_pos;
    }
    bool take(QChar c)
    {
        if (atEnd() || peek() != c)
            return false;
        ++m_pos;
        return true;
    }
    int skipDigits()
    {
        const int start = m_pos;
        while (!atEnd() && isDigit(peek()))
            ++m_pos;
        return m_pos - start;
    }
    int pos() const { return m_pos; }
    void setPos(int pos) { m_pos = pos; }
    QStringRef span(int from) const { return m_text.midRef(from, m_pos - from); }

private:
    const QString &m_text;
    int m_pos = 0;
};

// Optional sign and at least one digit. A number beyond the int range is held
// at the nearest bound, so a hostile file cannot produce a wrapped value.
bool readInt(Cursor &in, int *out)
{
    in.skipBlanks();
    const int start = in.pos();
    const bool negative = in.take('-');
    if (!negative)
        in.take('+');
    if (in.atEnd() || !isDigit(in.peek())) {
        in.setPos(start);
        return false;
    }
    const qint64 limit
        = negative ? -qint64(std::numeric_limits<int>::min()) : std::numeric_limits<int>::max();
    qint64 value = 0;
    while (!in.atEnd() && isDigit(in.peek())) {
        value = qMin(limit, value * 10 + (in.peek().unicode() - '0'));
        in.setPos(in.pos() + 1);
    }
    *out = int(negative ? -value : value);
    return true;
}

// Decimal reals: [sign] digits [. digits] [e [sign] digits], at least one
// digit in the mantissa. "inf", "nan" and hexadecimal reals are not taken,
// nor is a value too large for a double: no setting of the unit is meant to
// hold them.
bool readReal(Cursor &in, double *out)
{
    in.skipBlanks();
    const int start = in.pos();
    if (!in.take('-'))
        in.take('+');
    int digits = in.skipDigits();
    if (in.take('.'))
        digits += in.skipDigits();
    if (digits == 0) {
        in.setPos(start);
        return false;
    }
    const int beforeExponent = in.pos();
    if (in.take('e') || in.take('E')) {
        if (!in.take('-'))
            in.take('+');
        if (in.skipDigits() == 0)
            in.setPos(beforeExponent);
    }
    bool ok = false;
    const double value = in.span(start).toDouble(&ok);
    if (!ok || !std::isfinite(value)) {
        in.setPos(start);
        return false;
    }
    *out = value;
    return true;
}

} // namespace

namespace FormattedScan
{

int scan(const QString &text, const QString &pattern, const Field *fields, int fieldCount)
{
    Cursor in(text);
    int filled = 0;
    for (int p = 0; p < pattern.size(); ++p) {
        const QChar c = pattern.at(p);
        if (isBlank(c)) {
            in.skipBlanks();
            continue;
        }
        if (c != '%') {
            if (!in.take(c))
                return filled;
            continue;
        }
        const QStringRef rest = pattern.midRef(p + 1);
        if (rest.startsWith(QLatin1Char('%'))) {
            in.skipBlanks();
            if (!in.take('%'))
                return filled;
            p += 1;
            continue;
        }
        const bool isInt = rest.startsWith(QLatin1Char('d'));
        const bool isReal = rest.startsWith(QLatin1String("lg"));
        if (!isInt && !isReal)
            return filled; // a conversion this reader does not know
        p += isInt ? 1 : 2;
        if (filled >= fieldCount)
            return filled;
        const Field &field = fields[filled];
        if (isInt) {
            if (!field.intTarget() || !readInt(in, field.intTarget()))
                return filled;
        } else {
            if (!field.realTarget() || !readReal(in, field.realTarget()))
                return filled;
        }
        ++filled;
    }
    return filled;
}

int scan(const QString &text, const QString &pattern, std::initializer_list<Field> fields)
{
    return scan(text, pattern, fields.begin(), int(fields.size()));
}

int scanInts(const QString &text, const QString &pattern, int *values, int count)
{
    QVector<Field> fields;
    fields.reserve(count);
    for (int i = 0; i < count; ++i)
        fields.append(Field(values + i));
    return scan(text, pattern, fields.constData(), fields.size());
}

QString intListPattern(int count, const QString &end)
{
    QString pattern;
    for (int i = 0; i < count; ++i)
        pattern += i == 0 ? QStringLiteral("%d") : QStringLiteral(",%d");
    return pattern + end;
}

int wholeInt(const QString &text)
{
    return text.toInt(); // 0 when the text is not a decimal int
}

double wholeReal(const QString &text)
{
    bool ok = false;
    const double value = text.toDouble(&ok);
    return ok && std::isfinite(value) ? value : 0.0;
}

} // namespace FormattedScan
