#include "DriverRegistry.h"

#include "PrintParamsLogging.h"
#include "PrsDocument.h"

#include "bex/JsonText.h"
#include "bex/PrsPath.h"

#include <IUIPrintParamsHandler.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QSet>
#include <QUuid>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

namespace bex::printparams {

namespace {
const QString keyFormat = QStringLiteral("format");
const QString formatName = QStringLiteral("BexInstalledPrinterDrivers");
const QString keyDrivers = QStringLiteral("drivers");
constexpr qint64 maxRegistrySize = 64 * 1024 * 1024;

// The members of a driver's entry, in the alphabetical order in which
// QJsonDocument writes them and serialize() writes them too: each one's
// key, where it goes, the capacity of its field in the handler's records,
// and whether it may be empty.
struct DriverField
{
    const char *key;
    QString InstalledDriver::*member;
    std::size_t capacity;
    bool required;
};

constexpr DriverField driverFields[] = {
    {"id", &InstalledDriver::id, kPrinterIdSize, true},
    {"name", &InstalledDriver::name, kPrinterNameSize, false},
    {"prs", &InstalledDriver::prsPath, kPrinterPrsPathSize, true},
    {"showName", &InstalledDriver::showName, kPrinterShowNameSize, false},
};

// The reason a list file cannot be used, or nothing when it holds a list.
std::optional<QString> readDrivers(QFile &file, QVector<InstalledDriver> &drivers)
{
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("cannot be read: ") + file.errorString();
    if (file.size() > maxRegistrySize)
        return QStringLiteral("too large");
    QJsonParseError parseError;
    const QJsonDocument json = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (parseError.error != QJsonParseError::NoError)
        return QStringLiteral("not JSON: ") + parseError.errorString();
    const QJsonObject root = json.object();
    if (!json.isObject() || root.value(keyFormat).toString() != formatName ||
        !root.value(keyDrivers).isArray())
        return QStringLiteral("not a list of installed drivers");
    QSet<QString> ids;
    const QJsonArray array = root.value(keyDrivers).toArray();
    drivers.reserve(array.size());
    for (const QJsonValue &value : array) {
        const QJsonObject object = value.toObject();
        InstalledDriver driver;
        bool usable = true;
        for (const DriverField &field : driverFields) {
            QString &text = driver.*field.member;
            text = object.value(QLatin1String(field.key)).toString();
            usable = usable && !(field.required && text.isEmpty()) && fitsField(text, int(field.capacity));
        }
        if (!usable || ids.contains(driver.id))
            return QStringLiteral("entry ") + QString::number(drivers.size()) +
                   QStringLiteral(" is not a driver");
        ids.insert(driver.id);
        drivers.append(driver);
    }
    return std::nullopt;
}
} // namespace

DriverRegistry::DriverRegistry(const QString &filePath)
    : filePath_(filePath)
{}

void DriverRegistry::clear()
{
    bySequence_.clear();
    byId_.clear();
    byPrsKey_.clear();
    nextSequence_ = 0;
}

void DriverRegistry::insert(quint64 sequence, const InstalledDriver &driver)
{
    bySequence_.emplace(sequence, driver);
    byId_.insert(driver.id, sequence);
    // Lists written by other builds may name one file twice: the first
    // entry answers for it.
    const QString key = prsPathKey(driver.prsPath);
    if (!byPrsKey_.contains(key))
        byPrsKey_.insert(key, sequence);
    nextSequence_ = std::max(nextSequence_, sequence + 1);
}

void DriverRegistry::erase(quint64 sequence)
{
    const auto it = bySequence_.find(sequence);
    if (it == bySequence_.end())
        return;
    byId_.remove(it->second.id);
    const QString key = prsPathKey(it->second.prsPath);
    if (byPrsKey_.value(key, sequence + 1) == sequence)
        byPrsKey_.remove(key);
    bySequence_.erase(it);
}

bool DriverRegistry::load()
{
    clear();
    damaged_ = false;
    QFile file(filePath_);
    if (!file.exists())
        return true;
    QVector<InstalledDriver> drivers;
    if (const std::optional<QString> reason = readDrivers(file, drivers)) {
        // Reported here, once; the file is moved aside by the next change.
        BEX_CRITICAL(lcPrintParams) << "installed driver list damaged, ignored:" << filePath_ << "-"
                                    << *reason;
        damaged_ = true;
        return false;
    }
    for (const InstalledDriver &driver : qAsConst(drivers))
        insert(nextSequence_, driver);
    return true;
}

QVector<InstalledDriver> DriverRegistry::drivers() const
{
    QVector<InstalledDriver> result;
    result.reserve(int(bySequence_.size()));
    for (const auto &entry : bySequence_)
        result.append(entry.second);
    return result;
}

const InstalledDriver *DriverRegistry::find(const QString &id) const
{
    const auto it = byId_.constFind(id);
    return it == byId_.cend() ? nullptr : &bySequence_.at(it.value());
}

const InstalledDriver *DriverRegistry::findByPrs(const QString &prsPath) const
{
    const auto it = byPrsKey_.constFind(prsPathKey(prsPath));
    return it == byPrsKey_.cend() ? nullptr : &bySequence_.at(it.value());
}

QString DriverRegistry::newId() const
{
    // Random ids never come back after a deletion, so an id kept elsewhere
    // (the module's default driver) cannot come to name another driver.
    QString id;
    do {
        id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    } while (byId_.contains(id));
    return id;
}

bool DriverRegistry::add(InstalledDriver driver)
{
    driver.prsPath = absoluteCleanPath(driver.prsPath);
    if (driver.id.isEmpty() || byId_.contains(driver.id) || findByPrs(driver.prsPath))
        return false;
    const quint64 sequence = nextSequence_;
    insert(sequence, driver);
    if (save())
        return true;
    erase(sequence);
    return false;
}

bool DriverRegistry::remove(const QString &id)
{
    const auto it = byId_.constFind(id);
    if (it == byId_.cend())
        return false;
    const quint64 sequence = it.value();
    const InstalledDriver removed = bySequence_.at(sequence);
    erase(sequence);
    if (save())
        return true;
    insert(sequence, removed);
    return false;
}

bool DriverRegistry::rename(const QString &id, const QString &showName)
{
    const auto it = byId_.constFind(id);
    if (it == byId_.cend())
        return false;
    InstalledDriver &driver = bySequence_.at(it.value());
    const QString previous = driver.showName;
    driver.showName = showName;
    if (save())
        return true;
    driver.showName = previous;
    return false;
}

QByteArray DriverRegistry::serialize() const
{
    // Written directly rather than through QJsonDocument: one buffer instead
    // of an object per driver, so that writing a long list neither takes
    // long nor leaves thousands of freed blocks behind for the next
    // allocations to sort through. Indented as QJsonDocument indents, keys
    // in alphabetical order.
    QByteArray out;
    out.reserve(int(bySequence_.size()) * 256 + 64);
    // What comes before each member's value: the end of the member before it
    // (or the entry's brace) and the member's key.
    std::array<QByteArray, std::size(driverFields)> memberStarts;
    for (std::size_t i = 0; i < memberStarts.size(); ++i) {
        memberStarts[i] = i == 0 ? "        {\n" : ",\n";
        memberStarts[i] += QByteArray("            \"") + driverFields[i].key + "\": ";
    }
    out += "{\n    \"drivers\": [";
    bool first = true;
    for (const auto &entry : bySequence_) {
        const InstalledDriver &driver = entry.second;
        out += first ? "\n" : ",\n";
        first = false;
        for (std::size_t i = 0; i < std::size(driverFields); ++i) {
            out += memberStarts[i];
            bex::appendJsonString(out, driver.*driverFields[i].member);
        }
        out += "\n        }";
    }
    out += first ? "]" : "\n    ]";
    out += ",\n    \"format\": ";
    bex::appendJsonString(out, formatName);
    out += "\n}\n";
    return out;
}

bool DriverRegistry::keepDamagedFileAside()
{
    if (!QFileInfo::exists(filePath_) && !QFileInfo(filePath_).isSymLink()) {
        damaged_ = false;
        return true;
    }
    // An earlier kept file is never replaced.
    QString target = filePath_ + QStringLiteral(".bad");
    for (int n = 1; QFileInfo::exists(target) || QFileInfo(target).isSymLink(); ++n)
        target = filePath_ + QStringLiteral(".bad.") + QString::number(n);
    if (!QFile::rename(filePath_, target)) {
        BEX_CRITICAL(lcPrintParams) << "cannot move the unusable installed driver list aside to" << target
                                    << "- nothing written";
        return false;
    }
    BEX_CRITICAL(lcPrintParams) << "unusable installed driver list kept aside as" << target;
    keptAsidePath_ = target;
    damaged_ = false;
    return true;
}

bool DriverRegistry::save()
{
    if (damaged_ && !keepDamagedFileAside())
        return false;
    const QByteArray data = serialize();
    if (!QDir().mkpath(QFileInfo(filePath_).absolutePath())) {
        BEX_CRITICAL(lcPrintParams) << "cannot create the folder of" << filePath_;
        return false;
    }
    QSaveFile file(filePath_);
    if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size() || !file.commit()) {
        BEX_CRITICAL(lcPrintParams) << "cannot write the installed driver list" << filePath_
                                    << file.errorString();
        file.cancelWriting();
        return false;
    }
    return true;
}

} // namespace bex::printparams
