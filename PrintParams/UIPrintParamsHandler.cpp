#include "UIPrintParamsHandler.h"

#include "PrintParamsLogging.h"

#include "bex/PrsPath.h"

#include <QCoreApplication>

#include <cmath>
#include <cstring>
#include <new>

namespace bex::printparams {

namespace {

// Copies text into a fixed field, always zero-terminated. Documents and the
// registry only hold texts that fit, so nothing is cut here in practice.
template <std::size_t N>
void copyField(char (&field)[N], const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit();
    const std::size_t size = std::min<std::size_t>(std::size_t(bytes.size()), N - 1);
    std::memset(field, 0, N);
    std::memcpy(field, bytes.constData(), size);
}

// Decodes bytes that came in from a caller, or nothing when the local 8-bit
// encoding does not give the same bytes back: such text would be changed
// by storing it, and could no longer be told from other text.
std::optional<QString> decoded(const QByteArray &bytes)
{
    QString text = QString::fromLocal8Bit(bytes);
    if (text.toLocal8Bit() != bytes)
        return std::nullopt;
    return text;
}

// The bytes of a fixed field of a record handed in by a caller, up to its
// zero; nothing when the field holds no zero at all.
template <std::size_t N>
std::optional<QByteArray> fieldBytes(const char (&field)[N])
{
    const void *end = std::memchr(field, '\0', N);
    if (!end)
        return std::nullopt;
    return QByteArray(field, int(static_cast<const char *>(end) - field));
}

template <std::size_t N>
std::optional<QString> readField(const char (&field)[N])
{
    const std::optional<QByteArray> bytes = fieldBytes(field);
    return bytes ? decoded(*bytes) : std::nullopt;
}

// A C string argument, or nothing when it is null, does not end within
// limit bytes (its terminating zero included) or is not local 8-bit text.
std::optional<QString> argument(const char *text, std::size_t limit)
{
    if (!text)
        return std::nullopt;
    std::size_t length = 0;
    while (length < limit && text[length] != '\0')
        ++length;
    if (length >= limit)
        return std::nullopt;
    return decoded(QByteArray(text, int(length)));
}

QString shown(const QString &text, const QString &english, bool useEnglish)
{
    return useEnglish && !english.isEmpty() ? english : text;
}

} // namespace

UIPrintParamsHandler::UIPrintParamsHandler(const QString &registryFile)
    : registry_(registryFile)
{
    registry_.load();
    BEX_DEBUG(lcPrintParams) << "installed drivers:" << registry_.size() << "in" << registryFile;
}

UIPrintParamsHandler::~UIPrintParamsHandler() = default;

std::unique_ptr<printerInfoItem> UIPrintParamsHandler::makeInfoItem(const InstalledDriver &driver) const
{
    auto item = std::make_unique<printerInfoItem>();
    copyField(item->piiId, driver.id);
    copyField(item->piiName, driver.name);
    copyField(item->piiShowName, driver.showName);
    copyField(item->piiPrs, driver.prsPath);
    return item;
}

void UIPrintParamsHandler::GetAllPrinterDriverList(std::list<printerInfoItem *> &drivers)
{
    listedDrivers_.clear();
    for (const InstalledDriver &driver : registry_.drivers()) {
        listedDrivers_.push_back(makeInfoItem(driver));
        drivers.push_back(listedDrivers_.back().get());
    }
}

printerInfoItem *UIPrintParamsHandler::AddPrinterDriverPrs(const char *prsPath, int reserved)
{
    const std::optional<QString> path = argument(prsPath, kPrinterPrsPathSize);
    if (!path || path->isEmpty() || reserved != 0) {
        BEX_WARNING(lcPrintParams) << "refused: no usable path or reserved argument not 0";
        return nullptr;
    }
    // Kept absolute, so that the path names the same file whatever the
    // working folder of a later caller.
    const QString absolute = absoluteCleanPath(*path);
    if (!fitsField(absolute, int(kPrinterPrsPathSize))) {
        BEX_WARNING(lcPrintParams) << "refused: the absolute path does not fit its field:" << absolute;
        return nullptr;
    }
    if (registry_.findByPrs(absolute)) {
        BEX_WARNING(lcPrintParams) << "already installed:" << absolute;
        return nullptr;
    }
    QString error;
    const std::optional<PrsDocument> document = PrsDocument::load(absolute, &error);
    if (!document) {
        BEX_WARNING(lcPrintParams) << "refused" << absolute << "-" << error;
        return nullptr;
    }
    InstalledDriver driver;
    driver.id = registry_.newId();
    driver.name = document->driverName;
    driver.showName = document->driverName;
    driver.prsPath = absolute;
    if (!registry_.add(driver))
        return nullptr;
    addedDriver_ = makeInfoItem(driver);
    BEX_DEBUG(lcPrintParams) << "installed" << driver.id << driver.name << absolute;
    return addedDriver_.get();
}

bool UIPrintParamsHandler::DeletePrinterDriverPrs(const char *driverId)
{
    const std::optional<QString> id = argument(driverId, kPrinterIdSize);
    if (!id || !registry_.find(*id)) {
        BEX_WARNING(lcPrintParams) << "not installed:" << (id ? *id : QString());
        return false;
    }
    if (!registry_.remove(*id))
        return false;
    if (selection_ && selection_->id == *id) {
        selection_.reset();
        dropRecords();
    }
    BEX_DEBUG(lcPrintParams) << "uninstalled" << *id;
    return true;
}

bool UIPrintParamsHandler::SelectPrinterDriverPrs(const char *driverId, unsigned int languageFlag)
{
    selection_.reset();
    dropRecords();
    const std::optional<QString> id = argument(driverId, kPrinterIdSize);
    const InstalledDriver *found = id ? registry_.find(*id) : nullptr;
    if (!found) {
        BEX_WARNING(lcPrintParams) << "not installed:" << (id ? *id : QString());
        return false;
    }
    const InstalledDriver driver = *found;
    QString error;
    std::optional<PrsDocument> document = PrsDocument::load(driver.prsPath, &error);
    if (!document) {
        BEX_CRITICAL(lcPrintParams) << "cannot read" << driver.prsPath << "-" << error;
        return false;
    }
    selection_ = Selection{driver.id, driver.prsPath, std::move(*document), languageFlag == kLanguageEnglish};
    return true;
}

const char *UIPrintParamsHandler::GetCurDriverName()
{
    if (!selection_)
        return nullptr;
    driverName_ = selection_->document.driverName.toLocal8Bit();
    return driverName_.constData();
}

const char *UIPrintParamsHandler::GetCurDriverPdvName()
{
    if (!selection_ || selection_->document.pdvFile.isEmpty())
        return nullptr;
    pdvName_ = selection_->document.pdvFile.toLocal8Bit();
    return pdvName_.constData();
}

bool UIPrintParamsHandler::RechristenDriverShowName(const char *driverId, const char *showName)
{
    const std::optional<QString> id = argument(driverId, kPrinterIdSize);
    const std::optional<QString> name = argument(showName, kPrinterShowNameSize);
    if (!id || !registry_.find(*id) || !name || name->trimmed().isEmpty()) {
        BEX_WARNING(lcPrintParams) << "refused: unknown driver or unusable name";
        return false;
    }
    return registry_.rename(*id, *name);
}

std::unique_ptr<UIPrintParamsHandler::EnumRecord>
UIPrintParamsHandler::makeEnumRecord(const PrsEnum &item) const
{
    const bool english = selection_ && selection_->english;
    auto record = std::make_unique<EnumRecord>();
    copyField(record->item.key, shown(item.key, item.keyEn, english));
    record->values.reset(new printerEnumValue[std::size_t(item.values.size())]);
    for (int i = 0; i < item.values.size(); ++i)
        copyField(record->values[std::size_t(i)],
                  shown(item.values.at(i).text, item.values.at(i).textEn, english));
    record->item.values = record->values.get();
    record->item.index = item.selected;
    record->item.valueSize = item.values.size();
    record->item.enumId = item.enumId;
    return record;
}

void UIPrintParamsHandler::GetAllEnumItemList(std::list<printerEnumItem *> &items)
{
    enumList_.clear();
    if (!selection_)
        return;
    for (const PrsEnum &item : selection_->document.enums) {
        enumList_.push_back(makeEnumRecord(item));
        items.push_back(&enumList_.back()->item);
    }
}

printerEnumItem *UIPrintParamsHandler::GetEnumItem(std::uint32_t enumId)
{
    enumById_.reset();
    const int index = selection_ ? selection_->document.indexOfEnum(enumId) : -1;
    if (index < 0)
        return nullptr;
    enumById_ = makeEnumRecord(selection_->document.enums.at(index));
    return &enumById_->item;
}

bool UIPrintParamsHandler::SetEnumItem(std::uint32_t enumId, std::int32_t index)
{
    const int position = selection_ ? selection_->document.indexOfEnum(enumId) : -1;
    if (position < 0) {
        BEX_WARNING(lcPrintParams) << "no enum" << enumId;
        return false;
    }
    PrsEnum &item = selection_->document.enums[position];
    if (index < 0 || index >= item.values.size()) {
        BEX_WARNING(lcPrintParams) << "index" << index << "out of range for enum" << enumId;
        return false;
    }
    item.selected = index;
    return true;
}

bool UIPrintParamsHandler::CommitPrinterDriverPrs(int reserved)
{
    if (!selection_ || reserved != 0)
        return false;
    QString error;
    if (!selection_->document.save(selection_->prsPath, &error)) {
        BEX_CRITICAL(lcPrintParams) << "cannot write" << selection_->prsPath << "-" << error;
        return false;
    }
    return true;
}

std::int32_t UIPrintParamsHandler::GetCurModeId()
{
    return selection_ ? selection_->document.modeId : -1;
}

printerEnumItem *UIPrintParamsHandler::GetSelectEnumItem(std::int32_t kind)
{
    if (kind < kEnumKindResolution || kind > kEnumKindInk)
        return nullptr;
    std::unique_ptr<EnumRecord> &slot = selectedEnums_[std::size_t(kind)];
    slot.reset();
    const int index = selection_ ? selection_->document.indexOfKind(EnumKind(kind)) : -1;
    if (index < 0)
        return nullptr;
    slot = makeEnumRecord(selection_->document.enums.at(index));
    return &slot->item;
}

printerChannelColorInfo *UIPrintParamsHandler::GetChannelColorInfo()
{
    ChannelRecord *record = renewRecord(channelRecord_);
    if (!record)
        return nullptr;
    const QVector<PrsChannel> &channels = selection_->document.currentChannels();
    record->channels.resize(std::size_t(channels.size()));
    for (int i = 0; i < channels.size(); ++i) {
        inkChannelInfo &entry = record->channels[std::size_t(i)];
        entry.iciDepth = channels.at(i).density;
        entry.iciMaxInk = channels.at(i).maxInk;
        copyField(entry.iciName, channels.at(i).name);
    }
    record->info.channels = record->channels.data();
    record->info.pcciChanneNum = channels.size();
    return &record->info;
}

bool UIPrintParamsHandler::SetChannelColorInfo(const printerChannelColorInfo *info)
{
    if (!canTakeRecord(info))
        return false;
    QVector<PrsChannel> edited = selection_->document.currentChannels();
    if (info->pcciChanneNum != edited.size() || !info->channels) {
        BEX_WARNING(lcPrintParams) << "refused: channel count" << info->pcciChanneNum << "expected"
                                   << edited.size();
        return false;
    }
    for (int i = 0; i < edited.size(); ++i) {
        const inkChannelInfo &entry = info->channels[i];
        // Names are compared as the bytes handed out, not as decoded text.
        const std::optional<QByteArray> name = fieldBytes(entry.iciName);
        if (!name || *name != edited.at(i).name.toLocal8Bit() || !std::isfinite(entry.iciDepth) ||
            entry.iciDepth < kMinDensity || entry.iciDepth > kMaxDensity || !std::isfinite(entry.iciMaxInk) ||
            entry.iciMaxInk < kMinMaxInk || entry.iciMaxInk > kMaxMaxInk) {
            BEX_WARNING(lcPrintParams) << "refused: channel" << i << "renamed or out of range";
            return false;
        }
        edited[i].density = entry.iciDepth;
        edited[i].maxInk = entry.iciMaxInk;
    }
    return setChannels(edited);
}

bool UIPrintParamsHandler::canTakeRecord(const void *record) const
{
    if (selection_ && record)
        return true;
    BEX_WARNING(lcPrintParams) << "refused: no driver selected or no record";
    return false;
}

bool UIPrintParamsHandler::setChannels(const QVector<PrsChannel> &edited)
{
    if (!selection_->document.setCurrentChannels(edited)) {
        BEX_WARNING(lcPrintParams) << "refused: the driver already holds" << kMaxCombinations
                                   << "combinations";
        return false;
    }
    return true;
}

printerIccColorInfo *UIPrintParamsHandler::GetIccSettingInfo()
{
    iccRecord_.reset();
    const PrsCombination *combination = selection_ ? selection_->document.currentCombination() : nullptr;
    if (!combination || !combination->icc)
        return nullptr;
    iccRecord_ = std::make_unique<printerIccColorInfo>();
    copyField(iccRecord_->iccFilePath_RGB, combination->icc->rgb);
    copyField(iccRecord_->iccFilePath_CMYK, combination->icc->cmyk);
    copyField(iccRecord_->iccFilePath_OUTPUT, combination->icc->output);
    iccRecord_->iccIntentType = combination->icc->intent;
    return iccRecord_.get();
}

bool UIPrintParamsHandler::SetIccSettingInfo(const printerIccColorInfo *info)
{
    if (!canTakeRecord(info))
        return false;
    const std::optional<QString> rgb = readField(info->iccFilePath_RGB);
    const std::optional<QString> cmyk = readField(info->iccFilePath_CMYK);
    const std::optional<QString> output = readField(info->iccFilePath_OUTPUT);
    if (!rgb || !cmyk || !output || info->iccIntentType < kIccIntentPerceptual ||
        info->iccIntentType > kIccIntentAbsoluteColorimetric) {
        BEX_WARNING(lcPrintParams) << "refused: unterminated or undecodable profile name, or intent"
                                   << info->iccIntentType;
        return false;
    }
    for (const QString *name : {&*rgb, &*cmyk, &*output}) {
        if (!isIccProfileName(*name)) {
            BEX_WARNING(lcPrintParams) << "refused: profile name leaves its ICC folder:" << *name;
            return false;
        }
    }
    // A combination the file does not hold yet is added to it; the file
    // must stay within what a later load accepts.
    PrsCombination *combination = selection_->document.ensureCurrentCombination();
    if (!combination) {
        BEX_WARNING(lcPrintParams) << "refused: the driver already holds" << kMaxCombinations
                                   << "combinations";
        return false;
    }
    PrsIcc icc;
    icc.rgb = *rgb;
    icc.cmyk = *cmyk;
    icc.output = *output;
    icc.intent = info->iccIntentType;
    combination->icc = icc;
    return true;
}

bool UIPrintParamsHandler::GetSelectEnumItemDpi(std::int32_t index, std::uint32_t &xDpi, std::uint32_t &yDpi)
{
    const int position = selection_ ? selection_->document.indexOfKind(EnumKind::Resolution) : -1;
    if (position < 0)
        return false;
    const PrsEnum &item = selection_->document.enums.at(position);
    if (index < 0 || index >= item.values.size()) {
        BEX_WARNING(lcPrintParams) << "resolution index" << index << "out of range";
        return false;
    }
    xDpi = item.values.at(index).xDpi;
    yDpi = item.values.at(index).yDpi;
    return true;
}

printerInkOrderInfo *UIPrintParamsHandler::GetInkOrderInfo()
{
    InkOrderRecord *record = renewRecord(inkOrderRecord_);
    if (!record)
        return nullptr;
    for (const PrsChannel &channel : selection_->document.currentChannels()) {
        record->order.push_back(channel.order);
        record->off.push_back(channel.on ? 0 : 1);
    }
    record->info.pioiInkNum = int(record->order.size());
    record->info.pioiInkOrder = record->order.data();
    record->info.PioiInkOFFON = record->off.data();
    return &record->info;
}

bool UIPrintParamsHandler::SetInkOrderInfo(const printerInkOrderInfo *info)
{
    if (!canTakeRecord(info))
        return false;
    QVector<PrsChannel> channels = selection_->document.currentChannels();
    if (info->pioiInkNum != channels.size() || !info->pioiInkOrder || !info->PioiInkOFFON) {
        BEX_WARNING(lcPrintParams) << "refused: ink count" << info->pioiInkNum << "expected"
                                   << channels.size();
        return false;
    }
    // The order must be a permutation of 0 .. count - 1.
    std::vector<bool> used(std::size_t(channels.size()), false);
    for (int i = 0; i < channels.size(); ++i) {
        const std::int32_t order = info->pioiInkOrder[i];
        if (order < 0 || order >= channels.size() || used[std::size_t(order)]) {
            BEX_WARNING(lcPrintParams) << "refused: ink order is not a permutation";
            return false;
        }
        used[std::size_t(order)] = true;
    }
    for (int i = 0; i < channels.size(); ++i) {
        channels[i].order = info->pioiInkOrder[i];
        channels[i].on = info->PioiInkOFFON[i] == 0;
    }
    return setChannels(channels);
}

void UIPrintParamsHandler::dropRecords()
{
    driverName_.clear();
    pdvName_.clear();
    enumList_.clear();
    enumById_.reset();
    for (std::unique_ptr<EnumRecord> &record : selectedEnums_)
        record.reset();
    channelRecord_.reset();
    iccRecord_.reset();
    inkOrderRecord_.reset();
}

} // namespace bex::printparams

extern "C" {

IUIPrintParamsHandler *CreateUIPrintParamsHandler()
{
    if (!QCoreApplication::instance()) {
        BEX_CRITICAL(lcPrintParams) << "no application object: cannot locate the application directory";
        return nullptr;
    }
    const QString registryFile =
        QCoreApplication::applicationDirPath() + QStringLiteral("/dtp/BexUIPrintParamsProcessing.json");
    return new (std::nothrow) bex::printparams::UIPrintParamsHandler(registryFile);
}

void DestroyUIPrintParamsHandler(IUIPrintParamsHandler *handler)
{
    delete handler;
}
}
