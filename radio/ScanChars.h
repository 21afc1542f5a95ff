#pragma once

// Character classes of the C library's formatted scan, shared by the readers
// of the module's replies and of its link reports.
namespace ScanChars
{

// The blanks a C scan skips: space, \t, \n, \v, \f, \r.
inline bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// The digit's value in base 10 or 16, or -1.
inline int digitValue(char c, int base)
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

} // namespace ScanChars
