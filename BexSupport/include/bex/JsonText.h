#pragma once

// Writes text as a JSON string exactly as QJsonDocument does, without building
// a document: the serialized driver and the installed-driver list write their
// JSON directly, for speed, and must stay readable by QJsonDocument.
// Header only: the print-parameter library shares it without linking the
// module.

#include <QByteArray>
#include <QChar>
#include <QString>

namespace bex {

// Appends text as a JSON string the way QJsonDocument writes one: UTF-8, the
// quote and the backslash escaped, control characters as short escapes or
// \u00XX, and a surrogate without its partner as \uXXXX.
inline void appendJsonString(QByteArray &out, const QString &text)
{
    static const char hexDigits[] = "0123456789abcdef";
    const auto appendEscaped = [&out](ushort unit) {
        out += "\\u";
        for (int shift = 12; shift >= 0; shift -= 4)
            out += hexDigits[(unit >> shift) & 0xf];
    };
    out += '"';
    const int size = text.size();
    for (int i = 0; i < size; ++i) {
        const ushort unit = text.at(i).unicode();
        if (unit < 0x80) {
            switch (unit) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\b':
                out += "\\b";
                break;
            case '\f':
                out += "\\f";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\t':
                out += "\\t";
                break;
            default:
                if (unit < 0x20)
                    appendEscaped(unit);
                else
                    out += char(unit);
            }
        } else if (unit < 0x800) {
            out += char(0xc0 | (unit >> 6));
            out += char(0x80 | (unit & 0x3f));
        } else if (QChar::isHighSurrogate(unit) && i + 1 < size && text.at(i + 1).isLowSurrogate()) {
            const uint code = QChar::surrogateToUcs4(unit, text.at(++i).unicode());
            out += char(0xf0 | (code >> 18));
            out += char(0x80 | ((code >> 12) & 0x3f));
            out += char(0x80 | ((code >> 6) & 0x3f));
            out += char(0x80 | (code & 0x3f));
        } else if (QChar::isSurrogate(unit)) {
            appendEscaped(unit);
        } else {
            out += char(0xe0 | (unit >> 12));
            out += char(0x80 | ((unit >> 6) & 0x3f));
            out += char(0x80 | (unit & 0x3f));
        }
    }
    out += '"';
}

} // namespace bex
