#include "FakePrintParamsHandler.h"

#include <cstring>

namespace {
template <std::size_t N>
void copyField(char (&field)[N], const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit();
    std::memset(field, 0, N);
    std::memcpy(field, bytes.constData(), std::min<std::size_t>(std::size_t(bytes.size()), N - 1));
}

QString text(const char *value)
{
    return value ? QString::fromLocal8Bit(value) : QStringLiteral("<null>");
}

FakePrintParamsHandler *nextHandler = nullptr;
} // namespace

void FakePrintParamsHandler::setNextHandler(FakePrintParamsHandler *handler)
{
    nextHandler = handler;
}

extern "C" {
IUIPrintParamsHandler *CreateUIPrintParamsHandler()
{
    FakePrintParamsHandler *handler = nextHandler;
    nextHandler = nullptr;
    return handler;
}

void DestroyUIPrintParamsHandler(IUIPrintParamsHandler *handler)
{
    delete handler;
}
}

FakePrintParamsHandler::~FakePrintParamsHandler()
{
    if (destroyed)
        *destroyed = true;
}

printerInfoItem FakePrintParamsHandler::makeItem(const QString &id, const QString &name,
                                                 const QString &showName, const QString &prsPath)
{
    printerInfoItem item{};
    copyField(item.piiId, id);
    copyField(item.piiName, name);
    copyField(item.piiShowName, showName);
    copyField(item.piiPrs, prsPath);
    return item;
}

void FakePrintParamsHandler::setChannelNames(const QStringList &names)
{
    hasChannels = true;
    channels.assign(std::size_t(names.size()), inkChannelInfo{});
    for (int i = 0; i < names.size(); ++i)
        copyField(channels[std::size_t(i)].iciName, names.at(i));
    channelInfo.channels = channels.data();
    channelInfo.pcciChanneNum = names.size();
}

void FakePrintParamsHandler::setResolution(std::int32_t index)
{
    hasResolution = true;
    resolution = printerEnumItem{};
    copyField(resolution.key, QStringLiteral("Resolution"));
    resolution.index = index;
}

void FakePrintParamsHandler::GetAllPrinterDriverList(std::list<printerInfoItem *> &list)
{
    calls << QStringLiteral("GetAllPrinterDriverList");
    for (printerInfoItem &item : drivers)
        list.push_back(&item);
}

printerInfoItem *FakePrintParamsHandler::AddPrinterDriverPrs(const char *prsPath, int reserved)
{
    calls << QStringLiteral("AddPrinterDriverPrs(%1,%2)").arg(text(prsPath)).arg(reserved);
    return addSucceeds ? &added : nullptr;
}

bool FakePrintParamsHandler::DeletePrinterDriverPrs(const char *driverId)
{
    calls << QStringLiteral("DeletePrinterDriverPrs(%1)").arg(text(driverId));
    return deleteResult;
}

bool FakePrintParamsHandler::SelectPrinterDriverPrs(const char *driverId, unsigned int languageFlag)
{
    calls << QStringLiteral("SelectPrinterDriverPrs(%1,%2)").arg(text(driverId)).arg(languageFlag);
    return selectResult;
}

const char *FakePrintParamsHandler::GetCurDriverName()
{
    calls << QStringLiteral("GetCurDriverName");
    return nullptr;
}

const char *FakePrintParamsHandler::GetCurDriverPdvName()
{
    calls << QStringLiteral("GetCurDriverPdvName");
    return nullptr;
}

bool FakePrintParamsHandler::RechristenDriverShowName(const char *driverId, const char *showName)
{
    calls << QStringLiteral("RechristenDriverShowName(%1,%2)").arg(text(driverId), text(showName));
    return renameResult;
}

void FakePrintParamsHandler::GetAllEnumItemList(std::list<printerEnumItem *> &)
{
    calls << QStringLiteral("GetAllEnumItemList");
}

printerEnumItem *FakePrintParamsHandler::GetEnumItem(std::uint32_t enumId)
{
    calls << QStringLiteral("GetEnumItem(%1)").arg(enumId);
    return nullptr;
}

bool FakePrintParamsHandler::SetEnumItem(std::uint32_t enumId, std::int32_t index)
{
    calls << QStringLiteral("SetEnumItem(%1,%2)").arg(enumId).arg(index);
    return false;
}

bool FakePrintParamsHandler::CommitPrinterDriverPrs(int reserved)
{
    calls << QStringLiteral("CommitPrinterDriverPrs(%1)").arg(reserved);
    return false;
}

std::int32_t FakePrintParamsHandler::GetCurModeId()
{
    calls << QStringLiteral("GetCurModeId");
    return -1;
}

printerEnumItem *FakePrintParamsHandler::GetSelectEnumItem(std::int32_t kind)
{
    calls << QStringLiteral("GetSelectEnumItem(%1)").arg(kind);
    return kind == kEnumKindResolution && hasResolution ? &resolution : nullptr;
}

printerChannelColorInfo *FakePrintParamsHandler::GetChannelColorInfo()
{
    calls << QStringLiteral("GetChannelColorInfo");
    return hasChannels ? &channelInfo : nullptr;
}

bool FakePrintParamsHandler::SetChannelColorInfo(const printerChannelColorInfo *)
{
    calls << QStringLiteral("SetChannelColorInfo");
    return false;
}

printerIccColorInfo *FakePrintParamsHandler::GetIccSettingInfo()
{
    calls << QStringLiteral("GetIccSettingInfo");
    return nullptr;
}

bool FakePrintParamsHandler::SetIccSettingInfo(const printerIccColorInfo *)
{
    calls << QStringLiteral("SetIccSettingInfo");
    return false;
}

bool FakePrintParamsHandler::GetSelectEnumItemDpi(std::int32_t index, std::uint32_t &x, std::uint32_t &y)
{
    calls << QStringLiteral("GetSelectEnumItemDpi(%1)").arg(index);
    if (dpiResult) {
        x = xDpi;
        y = yDpi;
    }
    return dpiResult;
}

printerInkOrderInfo *FakePrintParamsHandler::GetInkOrderInfo()
{
    calls << QStringLiteral("GetInkOrderInfo");
    return nullptr;
}

bool FakePrintParamsHandler::SetInkOrderInfo(const printerInkOrderInfo *)
{
    calls << QStringLiteral("SetInkOrderInfo");
    return false;
}
