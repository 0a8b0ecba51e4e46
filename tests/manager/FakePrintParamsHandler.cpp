// This file defines the library's two factories: see PrintParamsFactories.h.
#define BEXUIPRINTPARAMSPROCESSING_LIBRARY
#include "FakePrintParamsHandler.h"
#include "PrintParamsFactories.h"

#include <algorithm>
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
BEX_PRINT_PARAMS_FACTORIES_REPLACE_IMPORTS()

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

void FakePrintParamsHandler::record(const QString &call)
{
    if (recordCalls)
        calls << call;
}

printerEnumItem *FakePrintParamsHandler::addEnumItem(const QString &key, std::uint32_t enumId,
                                                     const QStringList &values, std::int32_t index)
{
    auto entry = std::make_unique<EnumEntry>();
    copyField(entry->item.key, key);
    if (!values.isEmpty())
        entry->values.reset(new printerEnumValue[std::size_t(values.size())]());
    for (int i = 0; i < values.size(); ++i)
        copyField(entry->values[std::size_t(i)], values.at(i));
    entry->item.values = entry->values.get();
    entry->item.valueSize = values.size();
    entry->item.index = index;
    entry->item.enumId = enumId;
    enums_.push_back(std::move(entry));
    return &enums_.back()->item;
}

void FakePrintParamsHandler::setSelectKind(std::int32_t kind, std::uint32_t enumId)
{
    selectKinds_[kind] = enumId;
}

const FakePrintParamsHandler::EnumEntry *FakePrintParamsHandler::findEnum(std::uint32_t enumId) const
{
    for (const auto &entry : enums_) {
        if (entry->item.enumId == enumId)
            return entry.get();
    }
    return nullptr;
}

std::int32_t FakePrintParamsHandler::currentIndex(std::uint32_t enumId) const
{
    const EnumEntry *entry = findEnum(enumId);
    return entry ? entry->item.index : -1;
}

std::int32_t FakePrintParamsHandler::selectedIndex(std::int32_t kind) const
{
    const auto found = selectKinds_.find(kind);
    return found == selectKinds_.end() ? -1 : currentIndex(found->second);
}

void FakePrintParamsHandler::setChannels(const std::vector<inkChannelInfo> &list)
{
    hasChannels = true;
    channels = list;
    channelInfo.channels = channels.data();
    channelInfo.pcciChanneNum = std::int32_t(channels.size());
}

inkChannelInfo FakePrintParamsHandler::channel(const QString &name, double depth, double maxInk)
{
    inkChannelInfo info{};
    info.iciDepth = depth;
    info.iciMaxInk = maxInk;
    copyField(info.iciName, name);
    return info;
}

void FakePrintParamsHandler::setIcc(const QString &rgb, const QString &cmyk, const QString &output,
                                    std::int32_t intent)
{
    hasIcc = true;
    icc = printerIccColorInfo{};
    copyField(icc.iccFilePath_RGB, rgb);
    copyField(icc.iccFilePath_CMYK, cmyk);
    copyField(icc.iccFilePath_OUTPUT, output);
    icc.iccIntentType = intent;
}

void FakePrintParamsHandler::setInkOrder(const std::vector<std::int32_t> &order,
                                         const std::vector<std::int32_t> &off)
{
    hasInkOrder = true;
    inkOrder = order;
    inkOff = off;
    inkOrderInfo.pioiInkNum = std::int32_t(order.size());
    inkOrderInfo.pioiInkOrder = inkOrder.data();
    inkOrderInfo.PioiInkOFFON = inkOff.data();
}

void FakePrintParamsHandler::GetAllPrinterDriverList(std::list<printerInfoItem *> &list)
{
    record(QStringLiteral("GetAllPrinterDriverList"));
    for (printerInfoItem &item : drivers)
        list.push_back(&item);
}

printerInfoItem *FakePrintParamsHandler::AddPrinterDriverPrs(const char *prsPath, int reserved)
{
    record(QStringLiteral("AddPrinterDriverPrs(%1,%2)").arg(text(prsPath)).arg(reserved));
    return addSucceeds ? &added : nullptr;
}

bool FakePrintParamsHandler::DeletePrinterDriverPrs(const char *driverId)
{
    record(QStringLiteral("DeletePrinterDriverPrs(%1)").arg(text(driverId)));
    return deleteResult;
}

bool FakePrintParamsHandler::SelectPrinterDriverPrs(const char *driverId, unsigned int languageFlag)
{
    record(QStringLiteral("SelectPrinterDriverPrs(%1,%2)").arg(text(driverId)).arg(languageFlag));
    return selectResult;
}

const char *FakePrintParamsHandler::GetCurDriverName()
{
    record(QStringLiteral("GetCurDriverName"));
    if (curDriverName.isEmpty())
        return nullptr;
    curDriverNameBytes_ = curDriverName.toLocal8Bit();
    return curDriverNameBytes_.constData();
}

const char *FakePrintParamsHandler::GetCurDriverPdvName()
{
    record(QStringLiteral("GetCurDriverPdvName"));
    return nullptr;
}

bool FakePrintParamsHandler::RechristenDriverShowName(const char *driverId, const char *showName)
{
    record(QStringLiteral("RechristenDriverShowName(%1,%2)").arg(text(driverId), text(showName)));
    return renameResult;
}

void FakePrintParamsHandler::GetAllEnumItemList(std::list<printerEnumItem *> &items)
{
    record(QStringLiteral("GetAllEnumItemList"));
    for (auto &entry : enums_)
        items.push_back(&entry->item);
}

printerEnumItem *FakePrintParamsHandler::GetEnumItem(std::uint32_t enumId)
{
    record(QStringLiteral("GetEnumItem(%1)").arg(enumId));
    return nullptr;
}

bool FakePrintParamsHandler::SetEnumItem(std::uint32_t enumId, std::int32_t index)
{
    record(QStringLiteral("SetEnumItem(%1,%2)").arg(enumId).arg(index));
    if (!setEnumResult || failingEnumIds.count(enumId) != 0)
        return false;
    for (auto &entry : enums_) {
        if (entry->item.enumId == enumId)
            entry->item.index = index;
    }
    return true;
}

bool FakePrintParamsHandler::CommitPrinterDriverPrs(int reserved)
{
    record(QStringLiteral("CommitPrinterDriverPrs(%1)").arg(reserved));
    return commitResult;
}

std::int32_t FakePrintParamsHandler::GetCurModeId()
{
    record(QStringLiteral("GetCurModeId"));
    return -1;
}

printerEnumItem *FakePrintParamsHandler::GetSelectEnumItem(std::int32_t kind)
{
    record(QStringLiteral("GetSelectEnumItem(%1)").arg(kind));
    if (kind == kEnumKindResolution && hasResolution)
        return &resolution;
    const auto found = selectKinds_.find(kind);
    if (found == selectKinds_.end())
        return nullptr;
    for (auto &entry : enums_) {
        if (entry->item.enumId == found->second)
            return &entry->item;
    }
    return nullptr;
}

printerChannelColorInfo *FakePrintParamsHandler::GetChannelColorInfo()
{
    record(QStringLiteral("GetChannelColorInfo"));
    return hasChannels ? &channelInfo : nullptr;
}

bool FakePrintParamsHandler::SetChannelColorInfo(const printerChannelColorInfo *info)
{
    record(QStringLiteral("SetChannelColorInfo(%1)")
               .arg(info ? RecordText::describe(*info) : QStringLiteral("<null>")));
    return setChannelResult;
}

printerIccColorInfo *FakePrintParamsHandler::GetIccSettingInfo()
{
    record(QStringLiteral("GetIccSettingInfo"));
    if (!hasIcc)
        return nullptr;
    if (iccFor && !iccFor(selectedIndex(kEnumKindResolution), selectedIndex(kEnumKindPaper),
                          selectedIndex(kEnumKindInk)))
        return nullptr;
    return &icc;
}

bool FakePrintParamsHandler::SetIccSettingInfo(const printerIccColorInfo *info)
{
    record(QStringLiteral("SetIccSettingInfo(%1)")
               .arg(info ? RecordText::describe(*info) : QStringLiteral("<null>")));
    return setIccResult;
}

bool FakePrintParamsHandler::GetSelectEnumItemDpi(std::int32_t index, std::uint32_t &x, std::uint32_t &y)
{
    record(QStringLiteral("GetSelectEnumItemDpi(%1)").arg(index));
    if (dpiResult) {
        x = xDpi;
        y = yDpi;
    }
    return dpiResult;
}

printerInkOrderInfo *FakePrintParamsHandler::GetInkOrderInfo()
{
    record(QStringLiteral("GetInkOrderInfo"));
    return hasInkOrder ? &inkOrderInfo : nullptr;
}

bool FakePrintParamsHandler::SetInkOrderInfo(const printerInkOrderInfo *info)
{
    record(QStringLiteral("SetInkOrderInfo(%1)")
               .arg(info ? RecordText::describe(*info) : QStringLiteral("<null>")));
    return setInkOrderResult;
}
