#pragma once

// Text between the module and the print-parameter library. The library's
// records keep text in fixed character arrays in the local 8-bit encoding,
// zero-terminated when shorter than the array; its functions take and
// return zero-terminated local 8-bit strings.

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstring>
#include <string>

namespace bex {

// Text handed to the library, through a standard string so that it lives for
// the whole call: toLocal(id).c_str().
inline std::string toLocal(const QString &text)
{
    return text.toLocal8Bit().toStdString();
}

// A string the library returns; a null pointer reads as empty.
inline QString fromLocal(const char *text)
{
    return text ? QString::fromLocal8Bit(text) : QString();
}

// The field's text up to its zero, never read past the end of the array.
template <std::size_t N>
QString fieldText(const char (&field)[N])
{
    std::size_t length = 0;
    while (length < N && field[length] != '\0')
        ++length;
    return QString::fromLocal8Bit(field, int(length));
}

// Whether text fits a field of N characters with its terminating zero.
template <std::size_t N>
bool fitsField(const char (&)[N], const QString &text)
{
    return std::size_t(text.toLocal8Bit().size()) < N;
}

// Copies text into a field, the rest of the field zeroed. Text that does not
// fit with its terminating zero is refused and the field kept, since a cut
// file name would name another file.
template <std::size_t N>
bool setFieldText(char (&field)[N], const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit();
    if (std::size_t(bytes.size()) >= N)
        return false;
    std::memset(field, 0, N);
    std::memcpy(field, bytes.constData(), std::size_t(bytes.size()));
    return true;
}

} // namespace bex
