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
    void add(const QByteArray &name, const QByteArray &data, Kind kind = Kind::File, bool utf8Flag = true);
    QByteArray archive() const;
    bool write(const QString &filePath) const;

private:
    struct Entry
    {
        QByteArray name;
        QByteArray data;
        Kind kind;
        bool utf8Flag;
    };
    QVector<Entry> entries_;
};
