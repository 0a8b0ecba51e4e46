#include "ScriptedPrintParamsHandler.h"

#include "RecordText.h"

namespace {

ScriptedPrintParamsHandler *nextHandler = nullptr;

QString text(const char *value)
{
    return value ? QString::fromLocal8Bit(value) : QStringLiteral("<null>");
}

// The text in the local code page, held in bytes until the next call; null
// for an empty text.
const char *localText(const QString &text, QByteArray &bytes)
{
    if (text.isEmpty())
        return nullptr;
    bytes = text.toLocal8Bit();
    return bytes.constData();
}

template <typename Record>
QString recordText(const Record *record)
{
    return record ? RecordText::describe(*record) : QStringLiteral("<null>");
}

} // namespace

ScriptedPrintParamsHandler::ScriptedPrintParamsHandler(CallLog log)
    : log_(log)
{}

ScriptedPrintParamsHandler::~ScriptedPrintParamsHandler() = default;

void ScriptedPrintParamsHandler::setNextHandler(ScriptedPrintParamsHandler *handler)
{
    nextHandler = handler;
}

ScriptedPrintParamsHandler *ScriptedPrintParamsHandler::takeNextHandler()
{
    ScriptedPrintParamsHandler *handler = nextHandler;
    nextHandler = nullptr;
    return handler;
}

int ScriptedPrintParamsHandler::called(const char *operation, const std::function<QString()> &arguments)
{
    const QString name = QString::fromLatin1(operation);
    if (recordCalls) {
        if (log_ == CallLog::NamesAndArguments && arguments)
            calls << name + QLatin1Char('(') + arguments() + QLatin1Char(')');
        else
            calls << name;
    }
    return ++rounds_[name];
}

printerEnumItem *ScriptedPrintParamsHandler::addEnumItem(const QString &key, std::uint32_t enumId,
                                                         const QStringList &values, std::int32_t index)
{
    auto entry = std::make_unique<EnumEntry>();
    setText(entry->item.key, key.toLocal8Bit());
    if (!values.isEmpty())
        entry->values.reset(new printerEnumValue[std::size_t(values.size())]());
    for (int i = 0; i < values.size(); ++i)
        setText(entry->values[std::size_t(i)], values.at(i).toLocal8Bit());
    entry->item.values = entry->values.get();
    entry->item.valueSize = values.size();
    entry->item.index = index;
    entry->item.enumId = enumId;
    enums_.push_back(std::move(entry));
    return &enums_.back()->item;
}

void ScriptedPrintParamsHandler::setSelectKind(std::int32_t kind, std::uint32_t enumId)
{
    selectKinds_[kind] = enumId;
}

const ScriptedPrintParamsHandler::EnumEntry *ScriptedPrintParamsHandler::findEnum(std::uint32_t enumId) const
{
    for (const auto &entry : enums_) {
        if (entry->item.enumId == enumId)
            return entry.get();
    }
    return nullptr;
}

std::int32_t ScriptedPrintParamsHandler::currentIndex(std::uint32_t enumId) const
{
    const EnumEntry *entry = findEnum(enumId);
    return entry ? entry->item.index : -1;
}

std::int32_t ScriptedPrintParamsHandler::selectedIndex(std::int32_t kind) const
{
    const auto found = selectKinds_.find(kind);
    return found == selectKinds_.end() ? -1 : currentIndex(found->second);
}

// The installed drivers.

void ScriptedPrintParamsHandler::GetAllPrinterDriverList(std::list<printerInfoItem *> &list)
{
    answerDriverList(list, called("GetAllPrinterDriverList"));
}

printerInfoItem *ScriptedPrintParamsHandler::AddPrinterDriverPrs(const char *prsPath, int reserved)
{
    return answerAddedDriver(called(
        "AddPrinterDriverPrs", [&] { return QStringLiteral("%1,%2").arg(text(prsPath)).arg(reserved); }));
}

bool ScriptedPrintParamsHandler::RechristenDriverShowName(const char *driverId, const char *showName)
{
    called("RechristenDriverShowName",
           [&] { return QStringLiteral("%1,%2").arg(text(driverId), text(showName)); });
    return renameResult;
}

bool ScriptedPrintParamsHandler::DeletePrinterDriverPrs(const char *driverId)
{
    called("DeletePrinterDriverPrs", [&] { return text(driverId); });
    return deleteResult;
}

bool ScriptedPrintParamsHandler::SelectPrinterDriverPrs(const char *driverId, unsigned int languageFlag)
{
    called("SelectPrinterDriverPrs",
           [&] { return QStringLiteral("%1,%2").arg(text(driverId)).arg(languageFlag); });
    return selectResult;
}

// The selected driver.

const char *ScriptedPrintParamsHandler::GetCurDriverName()
{
    called("GetCurDriverName");
    return localText(curDriverName, curDriverNameBytes_);
}

const char *ScriptedPrintParamsHandler::GetCurDriverPdvName()
{
    called("GetCurDriverPdvName");
    return localText(curDriverPdvName, curDriverPdvNameBytes_);
}

std::int32_t ScriptedPrintParamsHandler::GetCurModeId()
{
    return answerModeId(called("GetCurModeId"));
}

bool ScriptedPrintParamsHandler::CommitPrinterDriverPrs(int reserved)
{
    called("CommitPrinterDriverPrs", [&] { return QString::number(reserved); });
    return commitResult;
}

// Its enumerated settings.

void ScriptedPrintParamsHandler::GetAllEnumItemList(std::list<printerEnumItem *> &items)
{
    answerEnumItemList(items, called("GetAllEnumItemList"));
}

printerEnumItem *ScriptedPrintParamsHandler::GetSelectEnumItem(std::int32_t kind)
{
    return answerSelectEnumItem(kind, called("GetSelectEnumItem", [&] { return QString::number(kind); }));
}

printerEnumItem *ScriptedPrintParamsHandler::GetEnumItem(std::uint32_t enumId)
{
    return answerEnumItem(enumId, called("GetEnumItem", [&] { return QString::number(enumId); }));
}

bool ScriptedPrintParamsHandler::SetEnumItem(std::uint32_t enumId, std::int32_t index)
{
    called("SetEnumItem", [&] { return QStringLiteral("%1,%2").arg(enumId).arg(index); });
    if (!setEnumResult || failingEnumIds.count(enumId) != 0)
        return false;
    for (auto &entry : enums_) {
        if (entry->item.enumId == enumId)
            entry->item.index = index;
    }
    return true;
}

bool ScriptedPrintParamsHandler::GetSelectEnumItemDpi(std::int32_t index, std::uint32_t &x, std::uint32_t &y)
{
    return answerDpi(index, x, y, called("GetSelectEnumItemDpi", [&] { return QString::number(index); }));
}

// Its colour records.

printerChannelColorInfo *ScriptedPrintParamsHandler::GetChannelColorInfo()
{
    return answerChannelColorInfo(called("GetChannelColorInfo"));
}

printerIccColorInfo *ScriptedPrintParamsHandler::GetIccSettingInfo()
{
    return answerIccSettingInfo(called("GetIccSettingInfo"));
}

printerInkOrderInfo *ScriptedPrintParamsHandler::GetInkOrderInfo()
{
    return answerInkOrderInfo(called("GetInkOrderInfo"));
}

bool ScriptedPrintParamsHandler::SetChannelColorInfo(const printerChannelColorInfo *info)
{
    called("SetChannelColorInfo", [&] { return recordText(info); });
    return setChannelResult;
}

bool ScriptedPrintParamsHandler::SetIccSettingInfo(const printerIccColorInfo *info)
{
    called("SetIccSettingInfo", [&] { return recordText(info); });
    return setIccResult;
}

bool ScriptedPrintParamsHandler::SetInkOrderInfo(const printerInkOrderInfo *info)
{
    called("SetInkOrderInfo", [&] { return recordText(info); });
    return setInkOrderResult;
}

// The scripted answers.

void ScriptedPrintParamsHandler::answerDriverList(std::list<printerInfoItem *> &list, int)
{
    for (printerInfoItem &item : drivers)
        list.push_back(&item);
}

printerInfoItem *ScriptedPrintParamsHandler::answerAddedDriver(int)
{
    return addSucceeds ? &added : nullptr;
}

std::int32_t ScriptedPrintParamsHandler::answerModeId(int)
{
    return -1;
}

void ScriptedPrintParamsHandler::answerEnumItemList(std::list<printerEnumItem *> &items, int)
{
    for (auto &entry : enums_)
        items.push_back(&entry->item);
}

printerEnumItem *ScriptedPrintParamsHandler::answerSelectEnumItem(std::int32_t kind, int)
{
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

printerEnumItem *ScriptedPrintParamsHandler::answerEnumItem(std::uint32_t, int)
{
    return nullptr;
}

bool ScriptedPrintParamsHandler::answerDpi(std::int32_t, std::uint32_t &x, std::uint32_t &y, int)
{
    if (dpiResult) {
        x = xDpi;
        y = yDpi;
    }
    return dpiResult;
}

printerChannelColorInfo *ScriptedPrintParamsHandler::answerChannelColorInfo(int)
{
    return hasChannels ? &channelInfo : nullptr;
}

printerIccColorInfo *ScriptedPrintParamsHandler::answerIccSettingInfo(int)
{
    if (!hasIcc)
        return nullptr;
    if (iccFor && !iccFor(selectedIndex(kEnumKindResolution), selectedIndex(kEnumKindPaper),
                          selectedIndex(kEnumKindInk)))
        return nullptr;
    return &icc;
}

printerInkOrderInfo *ScriptedPrintParamsHandler::answerInkOrderInfo(int)
{
    return hasInkOrder ? &inkOrderInfo : nullptr;
}
