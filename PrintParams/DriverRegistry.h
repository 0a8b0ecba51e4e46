#pragma once

#include <QString>
#include <QVector>

namespace bex::printparams {

struct InstalledDriver
{
    QString id;
    QString name;
    QString showName;
    QString prsPath; // as given when the driver was installed
};

// The list of installed drivers, kept in a JSON file of the library's own.
// Every change is written at once and atomically; a change whose file write
// fails is not kept, so the list in memory always matches the file.
class DriverRegistry
{
public:
    explicit DriverRegistry(const QString &filePath);

    // Reads the file. A missing file is an empty list; an unreadable or
    // damaged one is an empty list too, and false, and is left on disk
    // untouched until the next change.
    bool load();

    QString filePath() const { return filePath_; }
    const QVector<InstalledDriver> &drivers() const { return drivers_; }
    int indexOf(const QString &id) const;
    int indexOfPrs(const QString &prsPath) const;

    // A new id, unique among the drivers listed now and those listed before.
    QString newId() const;

    bool add(const InstalledDriver &driver);
    bool remove(const QString &id);
    bool rename(const QString &id, const QString &showName);

private:
    bool save(const QVector<InstalledDriver> &drivers);

    QString filePath_;
    QVector<InstalledDriver> drivers_;
};

} // namespace bex::printparams
