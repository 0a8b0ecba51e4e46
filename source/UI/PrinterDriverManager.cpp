#include "UI/PrinterDriverManager.h"

#include "Common/Logging.h"
#include "Config/PrinterDriverConfig.h"
#include "Driver/HandlerRecords.h"
#include "Driver/HandlerText.h"
#include "Driver/InkNames.h"
#include "bex/PrsPath.h"

#include <IUIPrintParamsHandler.h>

#include <QFileInfo>
#include <QSet>

#include <list>
#include <string>
#include <utility>

namespace {

using bex::fieldText;
using bex::toLocal;

PrinterDriverManager::DriverInfoPtr makeDriverInfo(const printerInfoItem &item)
{
    auto info = PrinterDriverManager::DriverInfoPtr::create();
    info->id = fieldText(item.piiId);
    info->name = fieldText(item.piiName);
    info->showName = fieldText(item.piiShowName);
    info->prsPath = fieldText(item.piiPrs);
    return info;
}

} // namespace

PrinterDriverManager *PrinterDriverManager::instance()
{
    static PrinterDriverManager manager;
    return &manager;
}

PrinterDriverManager::PrinterDriverManager()
    : handler_(CreateUIPrintParamsHandler())
{
    if (!handler_) {
        BEX_CRITICAL(lcManager) << "CreateUIPrintParamsHandler failed";
        // The host's first Initialize() constructs the manager and then calls
        // load(), which tries once more: one refused call, one line.
        refusalLogged_ = true;
        return;
    }
    obtainInstalledDrivers();
}

PrinterDriverManager::~PrinterDriverManager()
{
    BEX_DEBUG(lcManager) << "~PrinterDriverManager";
    if (handler_)
        BEX_CRITICAL(lcManager) << "please invoke unload";
}

bool PrinterDriverManager::load()
{
    const bool refusalLogged = std::exchange(refusalLogged_, false);
    if (handler_)
        return true;
    handler_ = CreateUIPrintParamsHandler();
    if (!handler_) {
        if (!refusalLogged)
            BEX_CRITICAL(lcManager) << "CreateUIPrintParamsHandler failed";
        return false;
    }
    BEX_DEBUG(lcManager) << "CreateUIPrintParamsHandler success";
    return true;
}

void PrinterDriverManager::unload()
{
    refusalLogged_ = false;
    if (!handler_)
        return;
    DestroyUIPrintParamsHandler(handler_);
    handler_ = nullptr;
    BEX_DEBUG(lcManager) << "DestroyUIPrintParamsHandler done";
}

QVector<PrinterDriverManager::DriverInfoPtr> PrinterDriverManager::obtainInstalledDrivers()
{
    QVector<DriverInfoPtr> result;
    if (!handler_) {
        BEX_CRITICAL(lcManager) << "handler is nullptr";
        return result;
    }
    BEX_DEBUG(lcManager) << "GetAllPrinterDriverList begin ***************";
    std::list<printerInfoItem *> items;
    handler_->GetAllPrinterDriverList(items);
    if (items.empty()) {
        BEX_DEBUG(lcManager) << "打印机列表为空";
    } else {
        const std::shared_ptr<PrinterDriverConfig> config = PrinterDriverConfig::instance();
        const QString configuredDefault = config->defaultDriverId();
        defaultDriverId_.clear();
        QSet<QString> listed;
        for (const printerInfoItem *item : items) {
            if (!item) {
                BEX_WARNING(lcManager) << "printerInfoItem is nullptr, skipped";
                continue;
            }
            const DriverInfoPtr info = makeDriverInfo(*item);
            if (listed.contains(info->id)) {
                BEX_WARNING(lcManager) << "driverId - " << info->id << "listed twice, skipped";
                continue;
            }
            listed.insert(info->id);
            BEX_DEBUG(lcManager) << "piiId:" << info->id;
            BEX_DEBUG(lcManager) << "piiName:" << info->name;
            BEX_DEBUG(lcManager) << "piiShowName:" << info->showName;
            BEX_DEBUG(lcManager) << "piiPrs:" << info->prsPath;
            insertDriver(info);
            if (!QFileInfo::exists(info->prsPath)) {
                BEX_DEBUG(lcManager) << "prs文件不存在 -" << info->prsPath;
                deleteInstalledDriver(info->id);
                continue;
            }
            if (info->id == configuredDefault)
                defaultDriverId_ = info->id;
            result.append(info);
        }
        if (defaultDriverId_.isEmpty())
            config->setDefaultDriverId(QString());
        else
            setDefaultDriverId(defaultDriverId_);
    }
    BEX_DEBUG(lcManager) << "GetAllPrinterDriverList end ***************";
    return result;
}

PrinterDriverManager::DriverInfoPtr PrinterDriverManager::installDriver(const QString &prsPath)
{
    if (!handler_) {
        BEX_CRITICAL(lcManager) << "handler is nullptr";
        return {};
    }
    const std::string path = toLocal(prsPath);
    const printerInfoItem *item = handler_->AddPrinterDriverPrs(path.c_str(), 0);
    if (!item) {
        BEX_CRITICAL(lcManager) << "AddPrinterDriverPrs - driverFilePath:" << prsPath << " failed!";
        return {};
    }
    const DriverInfoPtr info = makeDriverInfo(*item);
    BEX_DEBUG(lcManager) << "piiId:" << info->id;
    BEX_DEBUG(lcManager) << "piiName:" << info->name;
    BEX_DEBUG(lcManager) << "piiShowName:" << info->showName;
    BEX_DEBUG(lcManager) << "piiPrs:" << info->prsPath;
    insertDriver(info);
    return info;
}

bool PrinterDriverManager::deleteInstalledDriver(const QString &driverId)
{
    if (!handler_) {
        BEX_CRITICAL(lcManager) << "handler is nullptr";
        return false;
    }
    if (!removeDriver(driverId))
        BEX_DEBUG(lcManager) << "driverId - " << driverId << "没有被安装";
    const std::string id = toLocal(driverId);
    const bool deleted = handler_->DeletePrinterDriverPrs(id.c_str());
    BEX_DEBUG(lcManager) << "DeletePrinterDriverPrs:" << deleted;
    if (driverId == defaultDriverId_) {
        BEX_DEBUG(lcManager) << "默认的驱动被删除了";
        defaultDriverId_.clear();
        PrinterDriverConfig::instance()->setDefaultDriverId(QString());
    }
    return deleted;
}

bool PrinterDriverManager::setDefaultDriverId(const QString &driverId)
{
    if (!handler_) {
        BEX_CRITICAL(lcManager) << "handler is nullptr";
        return false;
    }
    const std::string id = toLocal(driverId);
    if (!handler_->SelectPrinterDriverPrs(id.c_str(), 0)) {
        BEX_CRITICAL(lcManager) << "SelectPrinterDriverPrs failed - " << driverId;
        return false;
    }
    defaultDriverId_ = driverId;
    PrinterDriverConfig::instance()->setDefaultDriverId(driverId);
    BEX_DEBUG(lcManager) << "SelectPrinterDriverPrs success - " << driverId;
    return true;
}

bool PrinterDriverManager::setDriverShowName(const QString &driverId, const QString &showName)
{
    if (!handler_) {
        BEX_CRITICAL(lcManager) << "handler is nullptr";
        return false;
    }
    const std::string id = toLocal(driverId);
    const std::string name = toLocal(showName);
    const bool renamed = handler_->RechristenDriverShowName(id.c_str(), name.c_str());
    if (!renamed) {
        BEX_CRITICAL(lcManager) << "RechristenDriverShowName failed - " << driverId;
        return false;
    }
    const DriverInfoPtr info = drivers_.value(driverId);
    if (info)
        info->showName = showName;
    else
        BEX_CRITICAL(lcManager) << "driverId - " << driverId << "not in the table, check your code";
    return true;
}

bool PrinterDriverManager::getDefaultDriverDpi(quint32 &xDpi, quint32 &yDpi)
{
    if (!handler_) {
        BEX_CRITICAL(lcManager) << "handler is nullptr";
        return false;
    }
    const printerEnumItem *item = handler_->GetSelectEnumItem(kEnumKindResolution);
    if (!item) {
        BEX_CRITICAL(lcManager) << "GetSelectEnumItem failed";
        return false;
    }
    BEX_DEBUG(lcManager) << "index:" << item->index;
    if (!handler_->GetSelectEnumItemDpi(item->index, xDpi, yDpi)) {
        BEX_CRITICAL(lcManager) << "GetSelectEnumItemDpi failed";
        xDpi = 0;
        yDpi = 0;
        return false;
    }
    return true;
}

bool PrinterDriverManager::getDefaultSpotColorSampleNameList(QStringList &names) const
{
    names.clear();
    if (!handler_) {
        BEX_CRITICAL(lcManager) << "handler is nullptr";
        return true;
    }
    const printerChannelColorInfo *info = handler_->GetChannelColorInfo();
    if (!info) {
        BEX_DEBUG(lcManager) << "printerChannelColorInfo is nullptr";
        return true;
    }
    if (!bex::recordUsable(*info)) {
        BEX_CRITICAL(lcManager) << "printerChannelColorInfo is damaged - pcciChanneNum:"
                                << info->pcciChanneNum
                                << "channels:" << static_cast<const void *>(info->channels);
        return true;
    }
    BEX_DEBUG(lcManager) << "printerChannelColorInfo is valid";
    for (int i = 0; i < info->pcciChanneNum; ++i) {
        const QString name = fieldText(info->channels[i].iciName);
        BEX_DEBUG(lcManager) << "strChannelName:" << name;
        if (!bex::isSpotInk(name))
            continue;
        names.append(name);
        BEX_DEBUG(lcManager) << "专色通道名:" << name;
    }
    return true;
}

PrinterDriverManager::DriverInfoPtr PrinterDriverManager::findDriverInfo(const QString &driverId) const
{
    return drivers_.value(driverId);
}

PrinterDriverManager::DriverInfoPtr
PrinterDriverManager::findDriverInfoByPrsPath(const QString &prsPath) const
{
    return driversByPrs_.value(bex::prsPathKey(prsPath));
}

void PrinterDriverManager::insertDriver(const DriverInfoPtr &info)
{
    removeDriver(info->id);
    drivers_.insert(info->id, info);
    driversByPrs_.insert(bex::prsPathKey(info->prsPath), info);
}

bool PrinterDriverManager::removeDriver(const QString &driverId)
{
    const DriverInfoPtr info = drivers_.take(driverId);
    if (!info)
        return false;
    const auto it = driversByPrs_.constFind(bex::prsPathKey(info->prsPath));
    if (it != driversByPrs_.cend() && it.value() == info)
        driversByPrs_.erase(it);
    return true;
}
