#include "DriverRegistry.h"

#include "PrintParamsLogging.h"
#include "PrsDocument.h"

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

namespace bex::printparams {

namespace {
const QString keyFormat = QStringLiteral("format");
const QString formatName = QStringLiteral("BexInstalledPrinterDrivers");
const QString keyDrivers = QStringLiteral("drivers");
const QString keyId = QStringLiteral("id");
const QString keyName = QStringLiteral("name");
const QString keyShowName = QStringLiteral("showName");
const QString keyPrs = QStringLiteral("prs");
constexpr qint64 maxRegistrySize = 16 * 1024 * 1024;

// The same file, as far as paths tell: Windows file names ignore case.
bool samePath(const QString &a, const QString &b)
{
#ifdef Q_OS_WIN
    const Qt::CaseSensitivity cs = Qt::CaseInsensitive;
#else
    const Qt::CaseSensitivity cs = Qt::CaseSensitive;
#endif
    return QDir::cleanPath(QFileInfo(a).absoluteFilePath())
               .compare(QDir::cleanPath(QFileInfo(b).absoluteFilePath()), cs) == 0;
}
} // namespace

DriverRegistry::DriverRegistry(const QString &filePath)
    : filePath_(filePath)
{}

bool DriverRegistry::load()
{
    drivers_.clear();
    QFile file(filePath_);
    if (!file.exists())
        return true;
    if (!file.open(QIODevice::ReadOnly) || file.size() > maxRegistrySize) {
        BEX_CRITICAL(lcPrintParams) << "cannot read the installed driver list" << filePath_;
        return false;
    }
    QJsonParseError parseError;
    const QJsonDocument json = QJsonDocument::fromJson(file.readAll(), &parseError);
    const QJsonObject root = json.object();
    if (parseError.error != QJsonParseError::NoError || !json.isObject() ||
        root.value(keyFormat).toString() != formatName || !root.value(keyDrivers).isArray()) {
        BEX_CRITICAL(lcPrintParams) << "installed driver list damaged, ignored:" << filePath_;
        return false;
    }
    QVector<InstalledDriver> drivers;
    QSet<QString> ids;
    const QJsonArray array = root.value(keyDrivers).toArray();
    for (const QJsonValue &value : array) {
        const QJsonObject object = value.toObject();
        InstalledDriver driver;
        driver.id = object.value(keyId).toString();
        driver.name = object.value(keyName).toString();
        driver.showName = object.value(keyShowName).toString();
        driver.prsPath = object.value(keyPrs).toString();
        if (driver.id.isEmpty() || ids.contains(driver.id) || !fitsField(driver.id, int(kPrinterIdSize)) ||
            !fitsField(driver.name, int(kPrinterNameSize)) ||
            !fitsField(driver.showName, int(kPrinterShowNameSize)) || driver.prsPath.isEmpty() ||
            !fitsField(driver.prsPath, int(kPrinterPrsPathSize))) {
            BEX_CRITICAL(lcPrintParams) << "installed driver list damaged, ignored:" << filePath_;
            return false;
        }
        ids.insert(driver.id);
        drivers.append(driver);
    }
    drivers_ = drivers;
    return true;
}

int DriverRegistry::indexOf(const QString &id) const
{
    for (int i = 0; i < drivers_.size(); ++i) {
        if (drivers_.at(i).id == id)
            return i;
    }
    return -1;
}

int DriverRegistry::indexOfPrs(const QString &prsPath) const
{
    for (int i = 0; i < drivers_.size(); ++i) {
        if (samePath(drivers_.at(i).prsPath, prsPath))
            return i;
    }
    return -1;
}

QString DriverRegistry::newId() const
{
    // Random ids never come back after a deletion, so an id kept elsewhere
    // (the module's default driver) cannot come to name another driver.
    QString id;
    do {
        id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    } while (indexOf(id) >= 0);
    return id;
}

bool DriverRegistry::add(const InstalledDriver &driver)
{
    QVector<InstalledDriver> drivers = drivers_;
    drivers.append(driver);
    return save(drivers);
}

bool DriverRegistry::remove(const QString &id)
{
    const int index = indexOf(id);
    if (index < 0)
        return false;
    QVector<InstalledDriver> drivers = drivers_;
    drivers.remove(index);
    return save(drivers);
}

bool DriverRegistry::rename(const QString &id, const QString &showName)
{
    const int index = indexOf(id);
    if (index < 0)
        return false;
    QVector<InstalledDriver> drivers = drivers_;
    drivers[index].showName = showName;
    return save(drivers);
}

bool DriverRegistry::save(const QVector<InstalledDriver> &drivers)
{
    QJsonArray array;
    for (const InstalledDriver &driver : drivers) {
        QJsonObject object;
        object.insert(keyId, driver.id);
        object.insert(keyName, driver.name);
        object.insert(keyShowName, driver.showName);
        object.insert(keyPrs, driver.prsPath);
        array.append(object);
    }
    QJsonObject root;
    root.insert(keyFormat, formatName);
    root.insert(keyDrivers, array);
    const QByteArray data = QJsonDocument(root).toJson(QJsonDocument::Indented);

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
    drivers_ = drivers;
    return true;
}

} // namespace bex::printparams
