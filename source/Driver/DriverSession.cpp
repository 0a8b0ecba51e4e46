#include "Driver/DriverSession.h"

#include "Common/Logging.h"
#include "Driver/HandlerRecords.h"
#include "Driver/HandlerText.h"
#include "Driver/InkNames.h"

#include <IUIPrintParamsHandler.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <list>

namespace {

// A walk selects every combination once. A driver whose counts multiply
// beyond this is not a driver a printer can have, and walking it would
// freeze the host.
constexpr qint64 maxCombinations = 1 << 20;

// A fraction (1.0 = 100 %) as a whole percent, truncated. The nudge keeps
// binary fractions from falling below the percent they stand for
// (0.29 x 100 is 28.999...96 in a double).
int percentFromFraction(double fraction)
{
    if (!std::isfinite(fraction))
        return 0;
    const double scaled = fraction * 100.0;
    const double nudge = scaled >= 0.0 ? 1e-7 : -1e-7;
    return int(std::clamp(std::trunc(scaled + nudge), -1.0e9, 1.0e9));
}

// The value texts of an enum item; none when the item lists none or claims
// more than it can hold.
QStringList enumValues(const printerEnumItem &item, DriverSession::LogCategory category)
{
    QStringList values;
    if (!item.values || item.valueSize <= 0)
        return values;
    if (item.valueSize > bex::maxEnumValueCount) {
        BEX_CRITICAL(category) << "printerEnumItem is damaged - key:" << bex::fieldText(item.key)
                               << "valueSize:" << item.valueSize;
        return values;
    }
    values.reserve(item.valueSize);
    for (int i = 0; i < item.valueSize; ++i)
        values << bex::fieldText(item.values[i]);
    return values;
}

// Whether a record's arrays can be read as far as its counts say; a damaged
// record is logged.
bool usable(const printerChannelColorInfo &info, DriverSession::LogCategory category)
{
    if (bex::recordUsable(info))
        return true;
    BEX_CRITICAL(category) << "printerChannelColorInfo is damaged - pcciChanneNum:" << info.pcciChanneNum
                           << "channels:" << static_cast<const void *>(info.channels);
    return false;
}

bool usable(const printerInkOrderInfo &info, DriverSession::LogCategory category)
{
    if (bex::recordUsable(info))
        return true;
    BEX_CRITICAL(category) << "printerInkOrderInfo is damaged - pioiInkNum:" << info.pioiInkNum;
    return false;
}

// Why a record cannot be written back: there is none (nothing to write,
// logged at `level`) or it is damaged (a damaged record is not handed back:
// the library would read it as far as it claims). Nothing when it can.
template <typename Record>
std::optional<DriverSession::StepResult> unwritable(const Record *info, const char *name, QtMsgType level,
                                                    DriverSession::LogCategory category)
{
    if (!info) {
        if (level == QtWarningMsg)
            BEX_WARNING(category).noquote() << QLatin1String(name) + QLatin1String(" is nullptr");
        else
            BEX_DEBUG(category).noquote() << QLatin1String(name) + QLatin1String(" is nullptr");
        return DriverSession::StepResult::NoRecord;
    }
    if (!usable(*info, category))
        return DriverSession::StepResult::Failed;
    return std::nullopt;
}

// Whether the three choices can be walked: three distinct properties, each
// listed, and not more combinations than a driver can have. The reason why
// not, or an empty text.
QString walkProblem(const DriverChoices &choices)
{
    const std::array<const EnumChoice *, 3> levels = {&choices.dpi, &choices.paper, &choices.ink};
    if (choices.dpi.key == choices.paper.key || choices.dpi.key == choices.ink.key ||
        choices.paper.key == choices.ink.key)
        return QStringLiteral("resolution, paper and ink do not have three keys");
    for (const EnumChoice *level : levels) {
        if (level->enumId < 0)
            return QStringLiteral("enum not listed - ") + level->key;
    }
    const qint64 combinations =
        qint64(choices.dpi.values.size()) * choices.paper.values.size() * choices.ink.values.size();
    if (combinations > maxCombinations)
        return QStringLiteral("too many enum combinations - ") + QString::number(combinations);
    return QString();
}

} // namespace

DriverSession::DriverSession(IUIPrintParamsHandler *handler, LogCategory category)
    : handler_(handler)
    , category_(category)
{}

unsigned int DriverSession::languageFlag(bool english)
{
    return english ? 4 : 0;
}

bool DriverSession::select(const QString &driverId, unsigned int languageFlag)
{
    return handler_->SelectPrinterDriverPrs(bex::toLocal(driverId).c_str(), languageFlag);
}

QString DriverSession::driverName() const
{
    return bex::fromLocal(handler_->GetCurDriverName());
}

QString DriverSession::pdvName() const
{
    return bex::fromLocal(handler_->GetCurDriverPdvName());
}

// ---------------------------------------------------------------------------
// Choices

DriverChoices DriverSession::readChoices(QString *problem) const
{
    DriverChoices choices;
    QString refusal;
    const std::array<EnumChoice *, 3> levels = {&choices.dpi, &choices.paper, &choices.ink};
    const std::array<std::int32_t, 3> kinds = {kEnumKindResolution, kEnumKindPaper, kEnumKindInk};
    for (std::size_t k = 0; k < kinds.size(); ++k) {
        const printerEnumItem *item = handler_->GetSelectEnumItem(kinds[k]);
        if (item)
            levels[k]->key = bex::fieldText(item->key);
        else if (refusal.isEmpty())
            refusal = QStringLiteral("GetSelectEnumItem failed - ") + QString::number(kinds[k]);
    }
    BEX_DEBUG(category_) << "dpiKey:" << choices.dpi.key;
    BEX_DEBUG(category_) << "paperKey:" << choices.paper.key;
    BEX_DEBUG(category_) << "inkKey:" << choices.ink.key;
    readEnumItems(choices);
    if (refusal.isEmpty())
        refusal = walkProblem(choices);
    if (problem)
        *problem = refusal;
    return choices;
}

// Sorts the listed properties into resolution, paper, ink (by the keys read
// before) and the common ones.
void DriverSession::readEnumItems(DriverChoices &choices) const
{
    BEX_DEBUG(category_) << "GetAllEnumItemList begin ***************";
    std::list<printerEnumItem *> items;
    handler_->GetAllEnumItemList(items);
    BEX_DEBUG(category_) << "size:" << items.size();
    const std::array<EnumChoice *, 3> levels = {&choices.dpi, &choices.paper, &choices.ink};
    for (const printerEnumItem *item : items) {
        if (!item)
            continue;
        EnumChoice choice{int(item->enumId), bex::fieldText(item->key), item->index,
                          enumValues(*item, category_)};
        BEX_DEBUG(category_) << "-----------------------------------------";
        BEX_DEBUG(category_) << "key:" << choice.key;
        BEX_DEBUG(category_) << "index:" << item->index;
        BEX_DEBUG(category_) << "enumId:" << choice.enumId;
        BEX_DEBUG(category_) << "valuesize:" << item->valueSize;
        const auto level = std::find_if(levels.begin(), levels.end(),
                                        [&choice](const EnumChoice *l) { return l->key == choice.key; });
        if (level == levels.end()) {
            choices.common << choice;
        } else if ((*level)->enumId < 0) {
            BEX_DEBUG(category_) << "enumId:" << choice.enumId << "is common property";
            **level = choice;
        }
    }
    BEX_DEBUG(category_) << "GetAllEnumItemList end ***************";
}

// ---------------------------------------------------------------------------
// Combinations

template <typename Visit>
bool DriverSession::walk(const DriverChoices &choices, Visit visit)
{
    bool selected = true;
    const auto set = [this, &selected](const EnumChoice &choice, int index) {
        selected = handler_->SetEnumItem(std::uint32_t(choice.enumId), index) && selected;
    };
    for (int i = 0; i < choices.ink.values.size(); ++i) {
        set(choices.ink, i);
        for (int j = 0; j < choices.paper.values.size(); ++j) {
            set(choices.paper, j);
            for (int k = 0; k < choices.dpi.values.size(); ++k) {
                set(choices.dpi, k);
                visit(Combination{k, j, i});
            }
        }
    }
    return selected;
}

bool DriverSession::forEachCombination(const DriverChoices &choices,
                                       const std::function<void(const Combination &)> &visit)
{
    const bool walked = walk(choices, visit);
    return selectCombination(choices, choices.combination()) && walked;
}

QVector<Combination> DriverSession::calibratedCombinations(const DriverChoices &choices)
{
    QVector<Combination> calibrated;
    walk(choices, [this, &calibrated](const Combination &combination) {
        if (handler_->GetIccSettingInfo())
            calibrated << combination;
    });
    if (calibrated.isEmpty()) {
        BEX_DEBUG(category_) << "该驱动所有组合都没有校色";
        return calibrated;
    }
    const Combination stored = choices.combination();
    const bool storedCalibrated = calibrated.contains(stored);
    selectCombination(choices, storedCalibrated ? stored : calibrated.first());
    return calibrated;
}

bool DriverSession::selectCombination(const DriverChoices &choices, const Combination &combination)
{
    const bool dpi = handler_->SetEnumItem(std::uint32_t(choices.dpi.enumId), combination.dpi);
    const bool paper = handler_->SetEnumItem(std::uint32_t(choices.paper.enumId), combination.paper);
    const bool ink = handler_->SetEnumItem(std::uint32_t(choices.ink.enumId), combination.ink);
    return dpi && paper && ink;
}

// ---------------------------------------------------------------------------
// Reading the records of a combination

CombinationSettings DriverSession::readCombination() const
{
    CombinationSettings settings;
    settings.icc = readIcc();
    settings.channels = readChannels();
    settings.inks = readInks();
    return settings;
}

std::optional<IccSettings> DriverSession::iccSettings() const
{
    const printerIccColorInfo *info = handler_->GetIccSettingInfo();
    if (!info)
        return std::nullopt;
    return IccSettings{bex::fieldText(info->iccFilePath_RGB), bex::fieldText(info->iccFilePath_CMYK),
                       bex::fieldText(info->iccFilePath_OUTPUT), int(info->iccIntentType)};
}

std::optional<IccSettings> DriverSession::readIcc() const
{
    const std::optional<IccSettings> icc = iccSettings();
    if (!icc) {
        BEX_DEBUG(category_) << "printerIccColorInfo is nullptr";
        return icc;
    }
    BEX_DEBUG(category_) << "printerIccColorInfo is valid";
    BEX_DEBUG(category_) << "iccFilePath_RGB:" << icc->rgb;
    BEX_DEBUG(category_) << "iccFilePath_CMYK:" << icc->cmyk;
    BEX_DEBUG(category_) << "iccFilePath_Curve:" << icc->output;
    BEX_DEBUG(category_) << "ICCINTENTTYPE:" << icc->intent.value_or(-1);
    return icc;
}

std::optional<QVector<ChannelSetting>> DriverSession::readChannels() const
{
    const printerChannelColorInfo *info = handler_->GetChannelColorInfo();
    if (!info) {
        BEX_DEBUG(category_) << "printerChannelColorInfo is nullptr";
        return std::nullopt;
    }
    QVector<ChannelSetting> channels;
    if (!usable(*info, category_))
        return channels;
    BEX_DEBUG(category_) << "printerChannelColorInfo is valid";
    for (int c = 0; c < info->pcciChanneNum; ++c) {
        const inkChannelInfo &channel = info->channels[c];
        const QString name = bex::fieldText(channel.iciName);
        BEX_DEBUG(category_) << "iciDepth:" << channel.iciDepth;
        BEX_DEBUG(category_) << "iciMaxInk:" << channel.iciMaxInk;
        BEX_DEBUG(category_) << "iciName:" << name;
        if (bex::isSpotInk(name))
            BEX_DEBUG(category_) << "专色通道名:" << name;
        channels << ChannelSetting{name, channel.iciDepth, percentFromFraction(channel.iciMaxInk)};
    }
    return channels;
}

std::optional<QVector<InkSlot>> DriverSession::readInks() const
{
    const printerChannelColorInfo *channels = handler_->GetChannelColorInfo();
    const printerInkOrderInfo *inks = handler_->GetInkOrderInfo();
    if (!channels) {
        BEX_DEBUG(category_) << "printerChannelColorInfo is nullptr";
        return std::nullopt;
    }
    if (!inks) {
        BEX_DEBUG(category_) << "printerInkOrderInfo is nullptr";
        return std::nullopt;
    }
    if (!usable(*channels, category_) || !usable(*inks, category_))
        return std::nullopt;
    if (channels->pcciChanneNum != inks->pioiInkNum) {
        BEX_DEBUG(category_) << "pcciChanneNum:" << channels->pcciChanneNum
                             << " - pioiInkNum:" << inks->pioiInkNum << " is not same";
        return std::nullopt;
    }
    QVector<InkSlot> inkSlots;
    inkSlots.reserve(inks->pioiInkNum);
    for (int i = 0; i < inks->pioiInkNum; ++i) {
        const InkSlot slot{i, inks->pioiInkOrder[i], inks->PioiInkOFFON[i] == 0,
                           bex::fieldText(channels->channels[i].iciName)};
        BEX_DEBUG(category_) << "inkName:" << slot.name;
        BEX_DEBUG(category_) << "pioiInkOrder:" << inks->pioiInkOrder[i];
        BEX_DEBUG(category_) << "PioiInkOFFON:" << inks->PioiInkOFFON[i];
        inkSlots << slot;
    }
    return inkSlots;
}

// ---------------------------------------------------------------------------
// Writing

DriverSession::StepResult DriverSession::writeChoice(const DriverChoices &choices, Level level)
{
    const EnumChoice &choice = level == Level::Dpi     ? choices.dpi
                               : level == Level::Paper ? choices.paper
                                                       : choices.ink;
    const char *what = level == Level::Dpi ? "dpi" : level == Level::Paper ? "paper" : "ink";
    if (level == Level::Ink)
        BEX_DEBUG(category_) << "ink index:" << choice.index;
    if (handler_->SetEnumItem(std::uint32_t(choice.enumId), choice.index))
        return StepResult::Written;
    BEX_CRITICAL(category_).noquote()
        << QStringLiteral("SetEnumItem failed [%1]. enumId:").arg(QLatin1String(what)) << choice.enumId
        << "index:" << choice.index;
    return StepResult::Failed;
}

void DriverSession::writeCombination(const CombinationSettings &settings)
{
    writeIcc(settings.icc.value_or(IccSettings()));
    writeChannels(settings.channels.value_or(QVector<ChannelSetting>()));
    writeInks(settings.inks.value_or(QVector<InkSlot>()));
}

// The result of handing a record back through the setter `call`; a refusal
// is logged.
DriverSession::StepResult DriverSession::handedBack(bool accepted, const char *call) const
{
    if (accepted)
        return StepResult::Written;
    BEX_CRITICAL(category_).noquote() << QLatin1String(call) + QLatin1String(" failed");
    return StepResult::Failed;
}

DriverSession::StepResult DriverSession::writeIcc(const IccSettings &icc)
{
    printerIccColorInfo *info = handler_->GetIccSettingInfo();
    if (!info) {
        BEX_DEBUG(category_) << "printerIccColorInfo is nullptr";
        return StepResult::NoRecord;
    }
    BEX_DEBUG(category_) << "printerIccColorInfo is valid";
    // Checked before the record is touched, so that a refused name leaves
    // the whole record as it was.
    const auto fits = [this](const auto &field, const QString &name) {
        if (bex::fitsField(field, name))
            return true;
        BEX_CRITICAL(category_) << "icc file name too long:" << name;
        return false;
    };
    if (!fits(info->iccFilePath_RGB, icc.rgb) || !fits(info->iccFilePath_CMYK, icc.cmyk) ||
        !fits(info->iccFilePath_OUTPUT, icc.output))
        return StepResult::Failed;
    bex::setFieldText(info->iccFilePath_RGB, icc.rgb);
    bex::setFieldText(info->iccFilePath_CMYK, icc.cmyk);
    bex::setFieldText(info->iccFilePath_OUTPUT, icc.output);
    if (icc.intent)
        info->iccIntentType = *icc.intent;
    return handedBack(handler_->SetIccSettingInfo(info), "SetIccSettingInfo");
}

DriverSession::StepResult DriverSession::writeChannels(const QVector<ChannelSetting> &channels)
{
    printerChannelColorInfo *info = handler_->GetChannelColorInfo();
    if (const auto refused = unwritable(info, "printerChannelColorInfo", QtDebugMsg, category_))
        return *refused;
    BEX_DEBUG(category_) << "printerChannelColorInfo is valid";
    BEX_DEBUG(category_) << "pcciChanneNum:" << info->pcciChanneNum;
    for (int c = 0; c < info->pcciChanneNum; ++c) {
        inkChannelInfo &channel = info->channels[c];
        const QString name = bex::fieldText(channel.iciName);
        BEX_DEBUG(category_) << "strChannelName:" << name;
        const auto setting = std::find_if(channels.cbegin(), channels.cend(),
                                          [&name](const ChannelSetting &s) { return s.name == name; });
        if (setting == channels.cend())
            continue;
        channel.iciDepth = setting->density;
        // Whole percents back to the record's fraction: an untouched 29 %
        // goes back as 0.29, so repeated confirmations never drift.
        channel.iciMaxInk = setting->maxInkPercent / 100.0;
    }
    BEX_DEBUG(category_) << "SetChannelColorInfo begin";
    const StepResult result = handedBack(handler_->SetChannelColorInfo(info), "SetChannelColorInfo");
    if (result == StepResult::Written)
        BEX_DEBUG(category_) << "SetChannelColorInfo end";
    return result;
}

DriverSession::StepResult DriverSession::writeInks(const QVector<InkSlot> &inks)
{
    printerInkOrderInfo *info = handler_->GetInkOrderInfo();
    if (const auto refused = unwritable(info, "printerInkOrderInfo", QtWarningMsg, category_))
        return *refused;
    // Every ink of the record exactly once, or the order is not sent.
    const int count = info->pioiInkNum;
    QVector<bool> seen(count, false);
    bool matches = inks.size() == count;
    for (const InkSlot &ink : inks) {
        matches = matches && ink.inkId >= 0 && ink.inkId < count && !seen.at(ink.inkId);
        if (matches)
            seen[ink.inkId] = true;
    }
    if (!matches) {
        // The critical line's text is fixed; the line before it says what
        // did not match.
        BEX_DEBUG(category_) << "ink order not sent: the panel's" << inks.size()
                             << "inks are not the record's" << count << "inks, each once";
        BEX_CRITICAL(category_) << "check your code!";
        return StepResult::NotSent;
    }
    for (const InkSlot &ink : inks) {
        info->pioiInkOrder[ink.inkId] = ink.order;
        info->PioiInkOFFON[ink.inkId] = ink.isOn ? 0 : 1;
        BEX_DEBUG(category_) << "pioiInkOrder:" << ink.order;
        BEX_DEBUG(category_) << "PioiInkOFFON:" << info->PioiInkOFFON[ink.inkId];
    }
    return handedBack(handler_->SetInkOrderInfo(info), "SetInkOrderInfo");
}

bool DriverSession::write(const DriverSettings &settings)
{
    const DriverChoices &choices = settings.choices;
    const CombinationSettings &combination = settings.combination;
    const struct
    {
        const char *name;
        std::function<StepResult()> run;
    } steps[] = {
        {"writeDPI", [&] { return writeChoice(choices, Level::Dpi); }},
        {"writePaper", [&] { return writeChoice(choices, Level::Paper); }},
        {"writeInk", [&] { return writeChoice(choices, Level::Ink); }},
        {"writeICC", [&] { return writeIcc(combination.icc.value_or(IccSettings())); }},
        {"writeChannelColorInfo",
         [&] { return writeChannels(combination.channels.value_or(QVector<ChannelSetting>())); }},
        {"writeInkOrderInfo", [&] { return writeInks(combination.inks.value_or(QVector<InkSlot>())); }},
    };
    for (const auto &step : steps) {
        BEX_DEBUG(category_).noquote() << QLatin1String(step.name) + QLatin1String(" begin");
        if (step.run() == StepResult::Failed)
            return false;
        BEX_DEBUG(category_).noquote() << QLatin1String(step.name) + QLatin1String(" end");
    }
    if (!writeCommonChoices(choices.common))
        return false;
    handler_->CommitPrinterDriverPrs(0);
    return true;
}

bool DriverSession::writeCommonChoices(const QVector<EnumChoice> &common)
{
    for (const EnumChoice &choice : common) {
        if (!handler_->SetEnumItem(std::uint32_t(choice.enumId), choice.index)) {
            BEX_CRITICAL(category_) << "SetEnumItem failed. enumId:" << choice.enumId
                                    << "index:" << choice.index;
            return false;
        }
    }
    return true;
}
