#pragma once

#include <QString>

// The pieces every page's part of the parameter file is made of. The file is
// plain text with lines ended by "\r\n", one element per line and no
// indentation; integers are plain decimals and reals take the shortest form
// that gives the value back ("3.7", "12").
namespace FileFragments
{

// "<tag>content</tag>\r\n"
QString line(const QString &tag, const QString &content);

// "x1,x2,...,xn" (no terminator).
QString intList(const int *values, int count);

// The shortest text that reads back as the same double.
QString real(double value);

} // namespace FileFragments
