#pragma once

#include <QtGlobal>

// The module's link reports are read the way a C formatted scan reads them,
// but without handing untrusted bytes to sscanf: a number too large for its
// field would be undefined behaviour there. Here it is held at the field's
// nearest bound instead.
//
// Patterns know "%hd" (16-bit signed), "%d" (32-bit signed), "%x"
// (hexadecimal, 32-bit unsigned, an optional "0x" in front), whitespace (any
// run of blanks in the text, also none) and literal characters, double
// quotes included, that must match exactly. Conversions skip leading blanks
// and take an optional sign. Text after the last directive is not looked at.
namespace ReportScan
{

// Scans text[0..size) and stores up to maxValues values; returns how many
// conversions were filled before the first mismatch or the end of the text.
int scan(const char *text, int size, const char *pattern, qint64 *values, int maxValues);

// How many conversions a pattern holds.
int conversionCount(const char *pattern);

} // namespace ReportScan
