#pragma once

// Text fields of the print-parameter library's records: fixed character
// arrays in the local 8-bit encoding, zero-terminated when they are shorter
// than the array.

#include <QString>

#include <cstddef>

// The field's text up to its zero, never read past the end of the array.
template <std::size_t N>
QString fieldText(const char (&field)[N])
{
    std::size_t length = 0;
    while (length < N && field[length] != '\0')
        ++length;
    return QString::fromLocal8Bit(field, int(length));
}
