// This file defines the library's two factories: see PrintParamsFactories.h.
#define BEXUIPRINTPARAMSPROCESSING_LIBRARY
#include "HostilePrintParamsHandler.h"

#include <climits>
#include <cstring>

BEX_SCRIPTED_PRINT_PARAMS_FACTORIES()

namespace {

// Far more channels than any printer has.
constexpr std::int32_t beyondChannelCount = 1000;

// The whole field, last byte included, without a terminating zero.
template <std::size_t N>
void fillField(char (&field)[N], char first)
{
    std::memset(field, HostilePrintParamsHandler::fill, N);
    field[0] = first;
}

} // namespace

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
    : ScriptedPrintParamsHandler(CallLog::NamesOnly)
    , case_(c)
{
    // Every setter but SelectPrinterDriverPrs fails on null records.
    const bool agrees = c != Case::NullRecords;
    deleteResult = agrees;
    renameResult = agrees;
    setEnumResult = agrees;
    commitResult = agrees;
    setChannelResult = agrees;
    setIccResult = agrees;
    setInkOrderResult = agrees;
    // A C string has no capacity to fill: the longest honest answer.
    if (c == Case::UnterminatedTexts)
        curDriverName = QString(4096, QLatin1Char(fill));
    else if (c != Case::NullRecords)
        curDriverName = QStringLiteral("Hostile");
    if (c != Case::NullRecords)
        curDriverPdvName = QStringLiteral("hostile.pdv");
}

HostilePrintParamsHandler::~HostilePrintParamsHandler() = default;

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
    setText(item->piiId, "hostile-" + QByteArray::number(index) + suffix);
    setText(item->piiName, "Hostile " + QByteArray::number(index) + suffix);
    setText(item->piiShowName, QStringLiteral("恶意驱动 %1").arg(index).toLocal8Bit() + suffix);
    setText(item->piiPrs, existingPrs.toLocal8Bit());
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
            setText(storage->values[i], QByteArray::number(360 * (i + 1)) + "x720");
    }
    storage->item = std::make_unique<printerEnumItem>();
    printerEnumItem &item = *storage->item;
    if (case_ == Case::UnterminatedTexts)
        fillField(item.key, 'K');
    else
        setText(item.key, "Kind" + QByteArray::number(kind));
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

void HostilePrintParamsHandler::answerDriverList(std::list<printerInfoItem *> &list, int round)
{
    if (case_ == Case::ChangingRecords || driverItems_.empty()) {
        driverItems_.clear();
        const int count = case_ == Case::ChangingRecords ? 1 + round % 3 : 2;
        for (int i = 0; i < count; ++i)
            driverItems_.push_back(makeDriverItem(i, round));
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

printerInfoItem *HostilePrintParamsHandler::answerAddedDriver(int round)
{
    if (case_ == Case::NullRecords)
        return nullptr;
    if (case_ == Case::SharedRecord && !driverItems_.empty())
        return driverItems_.front().get();
    addedItem_ = makeDriverItem(7, round);
    return addedItem_.get();
}

void HostilePrintParamsHandler::answerEnumItemList(std::list<printerEnumItem *> &items, int round)
{
    if (case_ == Case::SharedRecord) {
        printerEnumItem *shared = GetSelectEnumItem(kEnumKindResolution);
        items.push_back(shared);
        items.push_back(shared);
        return;
    }
    enumItems_.clear();
    for (std::int32_t kind = kEnumKindResolution; kind <= kEnumKindInk; ++kind)
        enumItems_.push_back(makeEnum(kind, round));
    if (case_ == Case::NullRecords)
        items.push_back(nullptr);
    for (const auto &storage : enumItems_)
        items.push_back(storage->item.get());
}

printerEnumItem *HostilePrintParamsHandler::answerEnumItem(std::uint32_t enumId, int)
{
    if (case_ == Case::NullRecords)
        return nullptr;
    return GetSelectEnumItem(std::int32_t(enumId) - 1);
}

std::int32_t HostilePrintParamsHandler::answerModeId(int round)
{
    switch (case_) {
    case Case::NegativeCounts:
        return -1;
    case Case::HugeCounts:
        return INT_MAX;
    case Case::ChangingRecords:
        return round;
    default:
        return 7;
    }
}

printerEnumItem *HostilePrintParamsHandler::answerSelectEnumItem(std::int32_t kind, int round)
{
    if (case_ == Case::NullRecords)
        return nullptr;
    // SharedRecord: one record, made once, for every kind.
    if (case_ != Case::SharedRecord || !selectedEnum_)
        selectedEnum_ = makeEnum(kind, round);
    return selectedEnum_->item.get();
}

printerChannelColorInfo *HostilePrintParamsHandler::answerChannelColorInfo(int round)
{
    const int held = case_ == Case::ChangingRecords ? 1 + round % heldChannels : heldChannels;
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
            setText(channel.iciName, names[i % heldChannels]);
    }
    storage->info = std::make_unique<printerChannelColorInfo>();
    storage->info->channels = case_ == Case::NullRecords ? nullptr : storage->channels.data();
    storage->info->pcciChanneNum = claimedCount(held, round);
    channels_ = std::move(storage);
    return channels_->info.get();
}

printerIccColorInfo *HostilePrintParamsHandler::answerIccSettingInfo(int round)
{
    if (case_ == Case::NullRecords)
        return nullptr;
    auto record = std::make_unique<printerIccColorInfo>();
    if (case_ == Case::UnterminatedTexts) {
        fillField(record->iccFilePath_RGB, 'R');
        fillField(record->iccFilePath_CMYK, 'C');
        fillField(record->iccFilePath_OUTPUT, 'O');
    } else {
        const QByteArray suffix = case_ == Case::ChangingRecords ? QByteArray::number(round) : QByteArray();
        setText(record->iccFilePath_RGB, "rgb" + suffix + ".icc");
        setText(record->iccFilePath_CMYK, "cmyk" + suffix + ".icc");
        setText(record->iccFilePath_OUTPUT, "output" + suffix + ".icc");
    }
    record->iccIntentType = case_ == Case::NegativeCounts ? -1 : case_ == Case::HugeCounts ? INT_MAX : 0;
    icc_ = std::move(record);
    return icc_.get();
}

bool HostilePrintParamsHandler::answerDpi(std::int32_t, std::uint32_t &x, std::uint32_t &y, int round)
{
    switch (case_) {
    case Case::NullRecords:
    case Case::NegativeCounts:
        return false;
    case Case::HugeCounts:
        x = UINT32_MAX;
        y = UINT32_MAX;
        return true;
    case Case::ChangingRecords:
        x = std::uint32_t(100 * round);
        y = std::uint32_t(200 * round);
        return true;
    default:
        x = 720;
        y = 600;
        return true;
    }
}

printerInkOrderInfo *HostilePrintParamsHandler::answerInkOrderInfo(int round)
{
    // CountsBeyondRecord: one ink more than there are channels, and the
    // arrays hold it.
    int held = case_ == Case::ChangingRecords ? 1 + round % heldChannels : heldChannels;
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
    storage->info->pioiInkNum = case_ == Case::CountsBeyondRecord ? held : claimedCount(held, round);
    inkOrder_ = std::move(storage);
    return inkOrder_->info.get();
}
