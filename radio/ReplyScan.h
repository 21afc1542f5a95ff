#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <initializer_list>

// The module's modem answers ("\r\n+CFUN: 1\r\n\r\nOK\r\n") and its link
// reports come in fixed text layouts. Its firmware documents them as C scan
// patterns, and a reply counts as read exactly when such a scan would have
// filled every field. This reader follows the C library's rules on the
// reply's bytes, without trusting them to be text: a blank in the pattern takes any run of blanks (also none), numbers
// skip leading blanks and take an optional sign, other pattern characters
// must match one byte each. Numbers too large for their field keep their low
// bits, as the C library stores them.
//
// Conversions: "%d" (int), "%hd" (qint16), "%x" (quint32), "%hx" (quint16),
// "%%" (a percent sign). Hexadecimal numbers may start with "0x".
namespace ReplyScan
{

class Target
{
public:
    enum class Kind { Int, Short, Hex, ShortHex };

    Target(int *target)
        : m_kind(Kind::Int)
        , m_target(target)
    {
    }
    Target(qint16 *target)
        : m_kind(Kind::Short)
        , m_target(target)
    {
    }
    Target(quint32 *target)
        : m_kind(Kind::Hex)
        , m_target(target)
    {
    }
    Target(quint16 *target)
        : m_kind(Kind::ShortHex)
        , m_target(target)
    {
    }

    Kind kind() const { return m_kind; }
    void *target() const { return m_target; }

private:
    Kind m_kind;
    void *m_target;
};

// Scans text from byte offset from (an offset outside the text reads
// nothing). Returns how many
// targets were stored, in order; a field after the first mismatch keeps its
// value. A conversion whose target is missing or of another kind stops the
// scan like a mismatch.
int scan(const QByteArray &text, int from, const char *pattern, std::initializer_list<Target> targets);

// The same scan when the conversions are many and of mixed kinds (the link
// reports): each value goes to values[0..maxValues) in order, as its
// conversion would have stored it, widened. Returns how many were filled.
int scanValues(const QByteArray &text, int from, const char *pattern, qint64 *values, int maxValues);

// How many conversions a pattern holds ("%%" is none).
int conversionCount(const char *pattern);

} // namespace ReplyScan
