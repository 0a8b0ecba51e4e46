#include "ZipWriter.h"

#include <QFile>
#include <QString>

#include <array>
#include <cstdint>

namespace {

std::uint32_t crc32(const QByteArray &data)
{
    static const std::array<std::uint32_t, 256> table = [] {
        std::array<std::uint32_t, 256> t{};
        for (std::uint32_t i = 0; i < 256; ++i) {
            std::uint32_t c = i;
            for (int k = 0; k < 8; ++k)
                c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            t[i] = c;
        }
        return t;
    }();
    std::uint32_t crc = 0xFFFFFFFFu;
    for (const char byte : data)
        crc = table[(crc ^ std::uint8_t(byte)) & 0xFF] ^ (crc >> 8);
    return crc ^ 0xFFFFFFFFu;
}

void put16(QByteArray &out, std::uint32_t value)
{
    out.append(char(value & 0xFF));
    out.append(char((value >> 8) & 0xFF));
}

void put32(QByteArray &out, std::uint32_t value)
{
    put16(out, value & 0xFFFF);
    put16(out, value >> 16);
}

// Unix file type and permission bits, kept in the high half of the
// external attributes of an entry "made by" Unix.
std::uint32_t unixMode(ZipWriter::Kind kind)
{
    switch (kind) {
    case ZipWriter::Kind::Folder:
        return 0040755;
    case ZipWriter::Kind::SymbolicLink:
        return 0120777;
    case ZipWriter::Kind::Fifo:
        return 0010644;
    case ZipWriter::Kind::File:
        break;
    }
    return 0100644;
}

} // namespace

void ZipWriter::add(const QByteArray &name, const QByteArray &data, Kind kind, bool utf8Flag,
                    const QByteArray &centralExtra)
{
    entries_.append(Entry{name, data, kind, utf8Flag, centralExtra});
}

QByteArray ZipWriter::unicodePathField(const QByteArray &crcOf, const QByteArray &utf8Name)
{
    QByteArray field;
    put16(field, 0x7075);
    put16(field, std::uint32_t(5 + utf8Name.size()));
    field.append(char(1));
    put32(field, crc32(crcOf));
    field.append(utf8Name);
    return field;
}

QByteArray ZipWriter::archive() const
{
    QByteArray out;
    QByteArray central;
    for (const Entry &entry : entries_) {
        const std::uint32_t offset = std::uint32_t(out.size());
        const std::uint32_t crc = crc32(entry.data);
        const std::uint32_t flags = entry.utf8Flag ? 0x0800 : 0;
        const std::uint32_t dosTime = 0;
        const std::uint32_t dosDate = (2024 - 1980) << 9 | 1 << 5 | 1;
        put32(out, 0x04034b50);
        put16(out, 10);
        put16(out, flags);
        put16(out, 0);
        put16(out, dosTime);
        put16(out, dosDate);
        put32(out, crc);
        put32(out, std::uint32_t(entry.data.size()));
        put32(out, std::uint32_t(entry.data.size()));
        put16(out, std::uint32_t(entry.name.size()));
        put16(out, 0);
        out.append(entry.name);
        out.append(entry.data);

        put32(central, 0x02014b50);
        put16(central, 3 << 8 | 20); // made by Unix
        put16(central, 10);
        put16(central, flags);
        put16(central, 0);
        put16(central, dosTime);
        put16(central, dosDate);
        put32(central, crc);
        put32(central, std::uint32_t(entry.data.size()));
        put32(central, std::uint32_t(entry.data.size()));
        put16(central, std::uint32_t(entry.name.size()));
        put16(central, std::uint32_t(entry.centralExtra.size()));
        put16(central, 0);
        put16(central, 0);
        put16(central, 0);
        put32(central, unixMode(entry.kind) << 16 | (entry.kind == Kind::Folder ? 0x10 : 0));
        put32(central, offset);
        central.append(entry.name);
        central.append(entry.centralExtra);
    }
    const std::uint32_t centralOffset = std::uint32_t(out.size());
    out.append(central);
    put32(out, 0x06054b50);
    put16(out, 0);
    put16(out, 0);
    put16(out, std::uint32_t(entries_.size()));
    put16(out, std::uint32_t(entries_.size()));
    put32(out, std::uint32_t(central.size()));
    put32(out, centralOffset);
    put16(out, 0);
    return out;
}

bool ZipWriter::write(const QString &filePath) const
{
    QFile file(filePath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    const QByteArray bytes = archive();
    return file.write(bytes) == bytes.size();
}
