#pragma once

#include <QHash>
#include <QSharedPointer>
#include <QString>
#include <QStringList>
#include <QVector>

class IUIPrintParamsHandler;

// The module's single gate to the installed printer drivers.
//
// It holds the print-parameter handler, a table of the installed drivers
// and the default driver id, which it keeps in step with the settings file
// ("defaultDriverId"). One instance per process (instance()); load() and
// unload() are called by the exported initialise and uninitialise functions.
class PrinterDriverManager
{
public:
    // One installed driver, as the print-parameter library reports it.
    struct DriverInfo
    {
        QString id;
        QString name;
        QString showName;
        QString prsPath;
    };
    using DriverInfoPtr = QSharedPointer<DriverInfo>;

    static PrinterDriverManager *instance();

    PrinterDriverManager(const PrinterDriverManager &) = delete;
    PrinterDriverManager &operator=(const PrinterDriverManager &) = delete;

    // True when a handler is held, creating one first if needed. Does not
    // list the drivers.
    bool load();
    // Frees the handler through DestroyUIPrintParamsHandler.
    void unload();

    // The installed drivers in the library's order. Drivers whose .prs file
    // has gone are uninstalled on the way; the default driver is settled
    // against the settings file.
    QVector<DriverInfoPtr> obtainInstalledDrivers();
    DriverInfoPtr installDriver(const QString &prsPath);
    bool deleteInstalledDriver(const QString &driverId);
    // Selects the driver in the library and makes it the default.
    bool setDefaultDriverId(const QString &driverId);
    bool setDriverShowName(const QString &driverId, const QString &showName);
    // Resolution of the driver selected in the library; 0 x 0 when the
    // library cannot tell it.
    bool getDefaultDriverDpi(quint32 &xDpi, quint32 &yDpi);
    // Names of the spot colour channels of the selected driver; always true.
    bool getDefaultSpotColorSampleNameList(QStringList &names) const;

    DriverInfoPtr findDriverInfo(const QString &driverId) const;
    // The driver whose .prs path names the same file as prsPath: both made
    // absolute and clean, and compared ignoring case (bex::prsPathKey, as
    // the print-parameter library compares them).
    DriverInfoPtr findDriverInfoByPrsPath(const QString &prsPath) const;

    QString defaultDriverId() const { return defaultDriverId_; }

    IUIPrintParamsHandler *getHandler() const { return handler_; }

private:
    PrinterDriverManager();
    ~PrinterDriverManager();

    // Keep the table and its index by .prs path in step; removeDriver is
    // false when the id was not in the table.
    void insertDriver(const DriverInfoPtr &info);
    bool removeDriver(const QString &driverId);

    IUIPrintParamsHandler *handler_ = nullptr;
    // Set when the constructor's attempt to make a handler failed and was
    // logged; the next load() retries without logging the same refusal again.
    bool refusalLogged_ = false;
    QHash<QString, DriverInfoPtr> drivers_;
    QHash<QString, DriverInfoPtr> driversByPrs_; // by bex::prsPathKey of prsPath
    QString defaultDriverId_;
};
