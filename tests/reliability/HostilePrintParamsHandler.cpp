// This file defines the library's two factories: see PrintParamsFactories.h.
#define BEXUIPRINTPARAMSPROCESSING_LIBRARY
#include "HostilePrintParamsHandler.h"
#include "PrintParamsFactories.h"

#include <climits>
#include <cstring>

namespace {

HostilePrintParamsHandler *nextHandler = nullptr;

// Far more channels than any printer has.
constexpr std::int32_t beyondChannelCount = 1000;

template <std::size_t N>
void setField(char (&field)[N], const QByteArray &text)
{
    std::memset(field, 0, N);
    std::memcpy(field, text.constData(), std::min<std::size_t>(std::size_t(text.size()), N - 1));
}

// The whole field, last byte included, without a terminating zero.
template <std::size_t N>
void fillField(char (&field)[N], char first)
{
    std::memset(field, HostilePrintParamsHandler::fill, N);
    field[0] = first;
}

} // namespace

extern "C" {
IUIPrintParamsHandler *CreateUIPrintParamsHandler()
{
    HostilePrintParamsHandler *handler = nextHandler;
    nextHandler = nullptr;
    return handler;
}

void DestroyUIPrintParamsHandler(IUIPrintParamsHandler *handler)
{
    delete handler;
}
}
BEX_PRINT_PARAMS_FACTORIES_REPLACE_IMPORTS()

QList<HostilePrintParamsHandler::Case> HostilePrintParamsHandler::allCases()
{
    return {Case::NullRecords,       Case::NegativeCounts, Case::HugeCounts,     Case::CountsBeyondRecord,
            Case::UnterminatedTexts, Case::SharedRecord,   Case::ChangingRecords};
}

QString HostilePrintParamsHandler::caseName(Case c)
{
    switch (c) {
    case Case::NullRecords:
        return QStringLiteral("null records");
    case Case::NegativeCounts:
        return QStringLiteral("negative counts");
    case Case::HugeCounts:
        return QStringLiteral("huge counts");
    case Case::CountsBeyondRecord:
        return QStringLiteral("counts beyond the record");
    case Case::UnterminatedTexts:
        return QStringLiteral("texts without terminating zero");
    case Case::SharedRecord:
        return QStringLiteral("one record for two kinds");
    case Case::ChangingRecords:
        return QStringLiteral("records changing between calls");
    }
    return QString();
}

HostilePrintParamsHandler::HostilePrintParamsHandler(Case c)
    : case_(c)
{}

HostilePrintParamsHandler::~HostilePrintParamsHandler() = default;

void HostilePrintParamsHandler::setNextHandler(HostilePrintParamsHandler *handler)
{
    nextHandler = handler;
}

int HostilePrintParamsHandler::round(const QString &name)
{
    calls << name;
    return ++rounds_[name];
}

std::int32_t HostilePrintParamsHandler::claimedCount(int held, int round) const
{
    switch (case_) {
    case Case::NegativeCounts:
        return round % 2 ? -1 : INT_MIN;
    case Case::HugeCounts:
        return INT_MAX;
    case Case::CountsBeyondRecord:
        return beyondChannelCount;
    default:
        return held;
    }
}

std::unique_ptr<printerInfoItem> HostilePrintParamsHandler::makeDriverItem(int index, int round) const
{
    auto item = std::make_unique<printerInfoItem>();
    if (case_ == Case::UnterminatedTexts) {
        const char first = char('A' + index % 26);
        fillField(item->piiId, first);
        fillField(item->piiName, first);
        fillField(item->piiShowName, first);
        fillField(item->piiPrs, '/');
        return item;
    }
    const QByteArray suffix =
        case_ == Case::ChangingRecords ? "-r" + QByteArray::number(round) : QByteArray();
    setField(item->piiId, "hostile-" + QByteArray::number(index) + suffix);
    setField(item->piiName, "Hostile " + QByteArray::number(index) + suffix);
    setField(item->piiShowName, QStringLiteral("恶意驱动 %1").arg(index).toLocal8Bit() + suffix);
    setField(item->piiPrs, existingPrs.toLocal8Bit());
    return item;
}

std::unique_ptr<HostilePrintParamsHandler::EnumStorage> HostilePrintParamsHandler::makeEnum(std::int32_t kind,
                                                                                            int round) const
{
    auto storage = std::make_unique<EnumStorage>();
    const int held = case_ == Case::ChangingRecords ? round + 1 : 3;
    storage->values = std::make_unique<printerEnumValue[]>(std::size_t(held));
    for (int i = 0; i < held; ++i) {
        if (case_ == Case::UnterminatedTexts)
            std::memset(storage->values[i], fill, kEnumValueSize);
        else
            setField(storage->values[i], QByteArray::number(360 * (i + 1)) + "x720");
    }
    storage->item = std::make_unique<printerEnumItem>();
    printerEnumItem &item = *storage->item;
    if (case_ == Case::UnterminatedTexts)
        fillField(item.key, 'K');
    else
        setField(item.key, "Kind" + QByteArray::number(kind));
    item.values = case_ == Case::NullRecords ? nullptr : storage->values.get();
    item.valueSize = claimedCount(held, round);
    switch (case_) {
    case Case::NegativeCounts:
        item.index = -1;
        break;
    case Case::HugeCounts:
        item.index = INT_MAX;
        break;
    case Case::CountsBeyondRecord:
        item.index = held;
        break;
    case Case::ChangingRecords:
        item.index = round % held;
        break;
    default:
        item.index = 1;
        break;
    }
    item.enumId = std::uint32_t(kind + 1);
    return storage;
}

void HostilePrintParamsHandler::GetAllPrinterDriverList(std::list<printerInfoItem *> &list)
{
    const int r = round(QStringLiteral("GetAllPrinterDriverList"));
    if (case_ == Case::ChangingRecords || driverItems_.empty()) {
        driverItems_.clear();
        const int count = case_ == Case::ChangingRecords ? 1 + r % 3 : 2;
        for (int i = 0; i < count; ++i)
            driverItems_.push_back(makeDriverItem(i, r));
    }
    switch (case_) {
    case Case::NullRecords:
        list.push_back(nullptr);
        list.push_back(driverItems_.front().get());
        list.push_back(nullptr);
        break;
    case Case::SharedRecord:
        list.push_back(driverItems_.front().get());
        list.push_back(driverItems_.front().get());
        list.push_back(driverItems_.back().get());
        break;
    default:
        for (const auto &item : driverItems_)
            list.push_back(item.get());
        break;
    }
}

printerInfoItem *HostilePrintParamsHandler::AddPrinterDriverPrs(const char *, int)
{
    const int r = round(QStringLiteral("AddPrinterDriverPrs"));
    if (case_ == Case::NullRecords)
        return nullptr;
    if (case_ == Case::SharedRecord && !driverItems_.empty())
        return driverItems_.front().get();
    addedItem_ = makeDriverItem(7, r);
    return addedItem_.get();
}

bool HostilePrintParamsHandler::DeletePrinterDriverPrs(const char *)
{
    round(QStringLiteral("DeletePrinterDriverPrs"));
    return case_ != Case::NullRecords;
}

bool HostilePrintParamsHandler::SelectPrinterDriverPrs(const char *, unsigned int)
{
    round(QStringLiteral("SelectPrinterDriverPrs"));
    return true;
}

const char *HostilePrintParamsHandler::GetCurDriverName()
{
    round(QStringLiteral("GetCurDriverName"));
    if (case_ == Case::NullRecords)
        return nullptr;
    // A C string has no capacity to fill: the longest honest answer.
    driverName_ = case_ == Case::UnterminatedTexts ? QByteArray(4096, fill) : QByteArray("Hostile");
    return driverName_.constData();
}

const char *HostilePrintParamsHandler::GetCurDriverPdvName()
{
    round(QStringLiteral("GetCurDriverPdvName"));
    return case_ == Case::NullRecords ? nullptr : "hostile.pdv";
}

bool HostilePrintParamsHandler::RechristenDriverShowName(const char *, const char *)
{
    round(QStringLiteral("RechristenDriverShowName"));
    return case_ != Case::NullRecords;
}

void HostilePrintParamsHandler::GetAllEnumItemList(std::list<printerEnumItem *> &items)
{
    const int r = round(QStringLiteral("GetAllEnumItemList"));
    if (case_ == Case::SharedRecord) {
        printerEnumItem *shared = GetSelectEnumItem(kEnumKindResolution);
        items.push_back(shared);
        items.push_back(shared);
        return;
    }
    enumItems_.clear();
    for (std::int32_t kind = kEnumKindResolution; kind <= kEnumKindInk; ++kind)
        enumItems_.push_back(makeEnum(kind, r));
    if (case_ == Case::NullRecords)
        items.push_back(nullptr);
    for (const auto &storage : enumItems_)
        items.push_back(storage->item.get());
}

printerEnumItem *HostilePrintParamsHandler::GetEnumItem(std::uint32_t enumId)
{
    round(QStringLiteral("GetEnumItem"));
    if (case_ == Case::NullRecords)
        return nullptr;
    return GetSelectEnumItem(std::int32_t(enumId) - 1);
}

bool HostilePrintParamsHandler::SetEnumItem(std::uint32_t, std::int32_t)
{
    round(QStringLiteral("SetEnumItem"));
    return case_ != Case::NullRecords;
}

bool HostilePrintParamsHandler::CommitPrinterDriverPrs(int)
{
    round(QStringLiteral("CommitPrinterDriverPrs"));
    return case_ != Case::NullRecords;
}

std::int32_t HostilePrintParamsHandler::GetCurModeId()
{
    const int r = round(QStringLiteral("GetCurModeId"));
    switch (case_) {
    case Case::NegativeCounts:
        return -1;
    case Case::HugeCounts:
        return INT_MAX;
    case Case::ChangingRecords:
        return r;
    default:
        return 7;
    }
}

printerEnumItem *HostilePrintParamsHandler::GetSelectEnumItem(std::int32_t kind)
{
    const int r = round(QStringLiteral("GetSelectEnumItem"));
    if (case_ == Case::NullRecords)
        return nullptr;
    // SharedRecord: one record, made once, for every kind.
    if (case_ != Case::SharedRecord || !selectedEnum_)
        selectedEnum_ = makeEnum(kind, r);
    return selectedEnum_->item.get();
}

printerChannelColorInfo *HostilePrintParamsHandler::GetChannelColorInfo()
{
    const int r = round(QStringLiteral("GetChannelColorInfo"));
    const int held = case_ == Case::ChangingRecords ? 1 + r % heldChannels : heldChannels;
    auto storage = std::make_unique<ChannelStorage>();
    storage->channels.resize(std::size_t(held));
    static const char *const names[] = {"C", "White", "Varnish", "K"};
    for (int i = 0; i < held; ++i) {
        inkChannelInfo &channel = storage->channels[std::size_t(i)];
        channel.iciDepth = case_ == Case::NegativeCounts ? -1e308 : 1.0;
        channel.iciMaxInk = case_ == Case::HugeCounts ? 1e308 : 0.8;
        if (case_ == Case::UnterminatedTexts)
            fillField(channel.iciName, char('a' + i));
        else
            setField(channel.iciName, names[i % heldChannels]);
    }
    storage->info = std::make_unique<printerChannelColorInfo>();
    storage->info->channels = case_ == Case::NullRecords ? nullptr : storage->channels.data();
    storage->info->pcciChanneNum = claimedCount(held, r);
    channels_ = std::move(storage);
    return channels_->info.get();
}

bool HostilePrintParamsHandler::SetChannelColorInfo(const printerChannelColorInfo *)
{
    round(QStringLiteral("SetChannelColorInfo"));
    return case_ != Case::NullRecords;
}

printerIccColorInfo *HostilePrintParamsHandler::GetIccSettingInfo()
{
    const int r = round(QStringLiteral("GetIccSettingInfo"));
    if (case_ == Case::NullRecords)
        return nullptr;
    auto icc = std::make_unique<printerIccColorInfo>();
    if (case_ == Case::UnterminatedTexts) {
        fillField(icc->iccFilePath_RGB, 'R');
        fillField(icc->iccFilePath_CMYK, 'C');
        fillField(icc->iccFilePath_OUTPUT, 'O');
    } else {
        const QByteArray suffix = case_ == Case::ChangingRecords ? QByteArray::number(r) : QByteArray();
        setField(icc->iccFilePath_RGB, "rgb" + suffix + ".icc");
        setField(icc->iccFilePath_CMYK, "cmyk" + suffix + ".icc");
        setField(icc->iccFilePath_OUTPUT, "output" + suffix + ".icc");
    }
    icc->iccIntentType = case_ == Case::NegativeCounts ? -1 : case_ == Case::HugeCounts ? INT_MAX : 0;
    icc_ = std::move(icc);
    return icc_.get();
}

bool HostilePrintParamsHandler::SetIccSettingInfo(const printerIccColorInfo *)
{
    round(QStringLiteral("SetIccSettingInfo"));
    return case_ != Case::NullRecords;
}

bool HostilePrintParamsHandler::GetSelectEnumItemDpi(std::int32_t, std::uint32_t &x, std::uint32_t &y)
{
    const int r = round(QStringLiteral("GetSelectEnumItemDpi"));
    switch (case_) {
    case Case::NullRecords:
    case Case::NegativeCounts:
        return false;
    case Case::HugeCounts:
        x = UINT32_MAX;
        y = UINT32_MAX;
        return true;
    case Case::ChangingRecords:
        x = std::uint32_t(100 * r);
        y = std::uint32_t(200 * r);
        return true;
    default:
        x = 720;
        y = 600;
        return true;
    }
}

printerInkOrderInfo *HostilePrintParamsHandler::GetInkOrderInfo()
{
    const int r = round(QStringLiteral("GetInkOrderInfo"));
    // CountsBeyondRecord: one ink more than there are channels, and the
    // arrays hold it.
    int held = case_ == Case::ChangingRecords ? 1 + r % heldChannels : heldChannels;
    if (case_ == Case::CountsBeyondRecord)
        held = heldChannels + 1;
    auto storage = std::make_unique<InkOrderStorage>();
    storage->order.resize(std::size_t(held));
    storage->onOff.resize(std::size_t(held));
    for (int i = 0; i < held; ++i) {
        std::int32_t order = held - 1 - i;
        if (case_ == Case::NegativeCounts)
            order = -1 - i;
        else if (case_ == Case::HugeCounts)
            order = INT_MAX - i;
        else if (case_ == Case::SharedRecord)
            order = 0; // every ink in the same place
        storage->order[std::size_t(i)] = order;
        storage->onOff[std::size_t(i)] = i % 2;
    }
    storage->info = std::make_unique<printerInkOrderInfo>();
    const bool nullArrays = case_ == Case::NullRecords;
    storage->info->pioiInkOrder = nullArrays ? nullptr : storage->order.data();
    storage->info->PioiInkOFFON = nullArrays ? nullptr : storage->onOff.data();
    storage->info->pioiInkNum = case_ == Case::CountsBeyondRecord ? held : claimedCount(held, r);
    inkOrder_ = std::move(storage);
    return inkOrder_->info.get();
}

bool HostilePrintParamsHandler::SetInkOrderInfo(const printerInkOrderInfo *)
{
    round(QStringLiteral("SetInkOrderInfo"));
    return case_ != Case::NullRecords;
}
