#pragma once

#include <QString>

#include <initializer_list>

// The program's XML files keep their lists as short texts such as
// "0,0,100,...;" or "1,0.5,2,3;". They are read the way a C formatted scan
// reads them: fields are filled from the left, the first mismatch stops the
// scan, and the fields after it keep what they held before. A file written by
// an older tool with fewer entries therefore only updates the leading ones.
//
// Patterns know "%d" (an int), "%lg" (a double), "%%" (a percent sign),
// whitespace (any run of blanks in the text, also none) and literal
// characters that must match exactly. "%d" and "%lg" skip leading blanks.
namespace FormattedScan
{

// One place a conversion stores into.
class Field
{
public:
    Field(int *target)
        : m_int(target)
    {
    }
    Field(double *target)
        : m_real(target)
    {
    }

    int *intTarget() const { return m_int; }
    double *realTarget() const { return m_real; }

private:
    int *m_int = nullptr;
    double *m_real = nullptr;
};

// Returns how many fields were filled. A conversion whose field is missing or
// of the other type ends the scan like a mismatch.
int scan(const QString &text, const QString &pattern, std::initializer_list<Field> fields);
int scan(const QString &text, const QString &pattern, const Field *fields, int fieldCount);

// The common case of a list of ints: values[0..count) are the fields in order.
int scanInts(const QString &text, const QString &pattern, int *values, int count);

// "%d,%d,...%d" + end, with count conversions: intListPattern(3, ";") gives
// "%d,%d,%d;".
QString intListPattern(int count, const QString &end);

// The whole text (surrounding blanks allowed) as a decimal int; 0 when it is
// not one, also when it does not fit into an int.
int wholeInt(const QString &text);

// The whole text as a finite real; 0 when it is not one.
double wholeReal(const QString &text);

} // namespace FormattedScan
