#pragma once

#include <QHash>
#include <QString>
#include <QVector>

#include <map>

namespace bex::printparams {

struct InstalledDriver
{
    QString id;
    QString name;
    QString showName;
    QString prsPath; // absolute and clean (bex::absoluteCleanPath)
};

// The list of installed drivers, kept in a JSON file of the library's own.
//
// Every change is written at once and atomically; a change whose file write
// fails is undone, so the list in memory always matches the file. Drivers
// are indexed by id and by .prs path (bex::prsPathKey), so that looking up,
// adding, removing and renaming one driver costs the same with ten drivers
// or ten thousand; only the one write of the whole file grows with the list.
//
// A list file that cannot be read or is damaged is never overwritten: load()
// reports the loss once and leaves the file in place, and the first change
// after it moves the file aside (to "<file>.bad", or "<file>.bad.1" and so
// on when that name is taken) before anything new is written, so that its
// entries stay recoverable.
class DriverRegistry
{
public:
    explicit DriverRegistry(const QString &filePath);

    // Reads the file. A missing file is an empty list; an unreadable or
    // damaged one is an empty list too, and false.
    bool load();

    QString filePath() const { return filePath_; }
    // Where a damaged list file was moved to; empty when none was.
    QString keptAsidePath() const { return keptAsidePath_; }

    int size() const { return int(byId_.size()); }
    // The drivers in the order they were installed.
    QVector<InstalledDriver> drivers() const;
    // The driver with this id, or null. Valid until the next change.
    const InstalledDriver *find(const QString &id) const;
    // The driver whose .prs path names the same file as prsPath, or null.
    const InstalledDriver *findByPrs(const QString &prsPath) const;

    // A new id, unique among the drivers listed now and those listed before.
    QString newId() const;

    // Adds a driver; its .prs path is stored absolute and clean. Refused
    // when its id or its .prs file is listed already.
    bool add(InstalledDriver driver);
    bool remove(const QString &id);
    bool rename(const QString &id, const QString &showName);

    // Writes the whole list as it is now, atomically: the one write each
    // change ends with. A damaged file found by load() is moved aside first.
    bool save();

private:
    void clear();
    void insert(quint64 sequence, const InstalledDriver &driver);
    void erase(quint64 sequence);
    QByteArray serialize() const;
    bool keepDamagedFileAside();

    QString filePath_;
    bool damaged_ = false;
    QString keptAsidePath_;
    // Install order: a sequence number per driver, growing, never reused.
    std::map<quint64, InstalledDriver> bySequence_;
    QHash<QString, quint64> byId_;
    QHash<QString, quint64> byPrsKey_;
    quint64 nextSequence_ = 0;
};

} // namespace bex::printparams
