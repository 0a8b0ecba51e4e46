#include "HostCalls.h"

#include <QFile>

namespace {

struct ManagerCallback : IRipEngineDriverUI::ICallback_DriverManagerDlg
{
    explicit ManagerCallback(ManagerReport &report)
        : report_(report)
    {}
    bool onFinished(const QString &showName, const QStringList &spotColorSampleNameList) override
    {
        ++report_.callbacks;
        report_.showName = showName;
        report_.spotColorSampleNameList = spotColorSampleNameList;
        return true;
    }
    ManagerReport &report_;
};

struct PropertyCallback : IRipEngineDriverUI::ICallback_DriverPropertyDlg
{
    bool onFinished(const RipExtraOption &jobOption,
                    const QSharedPointer<IRipEngineDriverUI::DriverInfo> &driverInfo) override
    {
        ++calls;
        option = jobOption;
        info = driverInfo;
        return true;
    }
    int calls = 0;
    RipExtraOption option;
    QSharedPointer<IRipEngineDriverUI::DriverInfo> info;
};

QString yesNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

QString listText(const QStringList &list)
{
    return list.isEmpty() ? QStringLiteral("(none)") : list.join(QStringLiteral(", "));
}

} // namespace

QStringList ManagerReport::lines() const
{
    return {
        QStringLiteral("showDriverManagerDlg returned %1").arg(returned ? "true" : "false"),
        QStringLiteral("callback called %1 time(s)").arg(callbacks),
        QStringLiteral("default driver: %1").arg(showName.isEmpty() ? QStringLiteral("(none)") : showName),
        QStringLiteral("spot colours: %1").arg(listText(spotColorSampleNameList))};
}

ManagerReport openDriverManager(IRipEngineDriverUI *ui, QWidget *parent)
{
    ManagerReport report;
    ManagerCallback callback(report);
    report.returned = ui->showDriverManagerDlg(parent, &callback);
    return report;
}

bool JobReport::ok() const
{
    return returned && callbacks == 1 && !prsFilePath.isEmpty() && dpiX > 0 && dpiY > 0 &&
           !driverKind.isEmpty() && !serialized.isEmpty() && restored && restoredSerialized == serialized &&
           copyExisted && removed != 0 && copyGone;
}

QStringList JobReport::lines() const
{
    QStringList out{QStringLiteral("showDriverPropertyDlg returned %1").arg(returned ? "true" : "false")};
    if (callbacks == 0)
        return out << QStringLiteral("callback not called: no job");
    out << QStringLiteral("job option: print mode %1, mirror %2")
               .arg(option.printMode)
               .arg(yesNo(option.horizontalMirror))
        << QStringLiteral("DriverInfo.prsFilePath: %1").arg(prsFilePath)
        << QStringLiteral("DriverInfo.showName: %1").arg(showName)
        << QStringLiteral("DriverInfo.dpi: %1 x %2").arg(dpiX).arg(dpiY)
        << QStringLiteral("DriverInfo.modeId: %1").arg(modeId)
        << QStringLiteral("DriverInfo.spotColorSampleNameList: %1").arg(listText(spotColorSampleNameList))
        << QStringLiteral("getRipEngineDriver: driver of kind %1").arg(driverKind)
        << QStringLiteral("serialize: %1").arg(QString::fromUtf8(serialized))
        << QStringLiteral("unserialize: %1, serialized again %2")
               .arg(restored ? QStringLiteral("restored") : QStringLiteral("refused"),
                    restoredSerialized == serialized ? QStringLiteral("identical")
                                                     : QStringLiteral("different"))
        << QStringLiteral("removePrsFile: %1 (copy existed: %2, gone now: %3)")
               .arg(removed)
               .arg(yesNo(copyExisted), yesNo(copyGone));
    return out;
}

JobReport ripJob(IRipEngineDriverUI *ui, QWidget *parent, const RipExtraOption &option)
{
    JobReport report;
    PropertyCallback callback;
    report.returned = ui->showDriverPropertyDlg(parent, option, &callback);
    report.callbacks = callback.calls;
    if (!callback.info)
        return report;

    const IRipEngineDriverUI::DriverInfo &info = *callback.info;
    report.option = callback.option;
    report.prsFilePath = info.prsFilePath;
    report.showName = info.showName;
    report.dpiX = info.dpiX;
    report.dpiY = info.dpiY;
    report.spotColorSampleNameList = info.spotColorSampleNameList;
    report.modeId = info.modeId;

    // The engine keeps the driver with the job, stored as bytes.
    QSharedPointer<IRipEngine::IDriver> driver = ui->getRipEngineDriver(callback.info);
    if (!driver)
        return report;
    report.driverKind = QString::fromWCharArray(driver->kind());
    report.serialized = ui->serialize(driver);
    QSharedPointer<IRipEngine::IDriver> restored = ui->unserialize(report.serialized);
    report.restored = !restored.isNull();
    if (restored)
        report.restoredSerialized = ui->serialize(restored);

    // The job is done: its copy of the driver goes.
    report.copyExisted = QFile::exists(info.prsFilePath);
    report.removed = (restored ? restored : driver)->removePrsFile();
    report.copyGone = !QFile::exists(info.prsFilePath);
    return report;
}
