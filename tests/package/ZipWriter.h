#pragma once

#include <QByteArray>
#include <QVector>

// Writes zip archives byte by byte, so that tests can make the packages a
// careful archiver never makes: names with "..", absolute names, names that
// are not valid UTF-8, the same name twice, links and special files.
// Every entry is stored (no compression).
class ZipWriter
{
public:
    enum class Kind
    {
        File,
        Folder,
        SymbolicLink,
        Fifo
    };

    // name: the raw bytes stored as the entry's name; data: the file's
    // bytes, or the link's target. utf8Flag marks the name as UTF-8.
    // centralExtra: extra fields of the entry's central directory record.
    void add(const QByteArray &name, const QByteArray &data, Kind kind = Kind::File, bool utf8Flag = true,
             const QByteArray &centralExtra = QByteArray());
    // An Info-ZIP Unicode Path field (0x7075) giving utf8Name as the UTF-8
    // form of storedName; crcOf is the name its CRC-32 is taken of.
    static QByteArray unicodePathField(const QByteArray &crcOf, const QByteArray &utf8Name);
    QByteArray archive() const;
    bool write(const QString &filePath) const;

private:
    struct Entry
    {
        QByteArray name;
        QByteArray data;
        Kind kind;
        bool utf8Flag;
        QByteArray centralExtra;
    };
    QVector<Entry> entries_;
};
