#pragma once

#include "DriverRegistry.h"
#include "PrsDocument.h"

#include <IUIPrintParamsHandler.h>

#include <QByteArray>

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace bex::printparams {

// The open implementation of the print-parameter handler.
//
// The installed drivers live in a DriverRegistry. SelectPrinterDriverPrs
// reads the chosen driver's .prs file into a working document; setters
// change that document only, and CommitPrinterDriverPrs writes it back.
// Channel settings, ink order and ICC settings belong to the combination of
// resolution, paper and ink selected at the time of the change.
// Selecting again (or another driver) drops uncommitted changes.
//
// Records handed out are kept in members and replaced on the next request
// of the same kind; a new selection drops them all.
class UIPrintParamsHandler final : public IUIPrintParamsHandler
{
public:
    explicit UIPrintParamsHandler(const QString &registryFile);
    ~UIPrintParamsHandler() override;

    void GetAllPrinterDriverList(std::list<printerInfoItem *> &drivers) override;
    printerInfoItem *AddPrinterDriverPrs(const char *prsPath, int reserved) override;
    bool DeletePrinterDriverPrs(const char *driverId) override;
    bool SelectPrinterDriverPrs(const char *driverId, unsigned int languageFlag) override;
    const char *GetCurDriverName() override;
    const char *GetCurDriverPdvName() override;
    bool RechristenDriverShowName(const char *driverId, const char *showName) override;
    void GetAllEnumItemList(std::list<printerEnumItem *> &items) override;
    printerEnumItem *GetEnumItem(std::uint32_t enumId) override;
    bool SetEnumItem(std::uint32_t enumId, std::int32_t index) override;
    bool CommitPrinterDriverPrs(int reserved) override;
    std::int32_t GetCurModeId() override;
    printerEnumItem *GetSelectEnumItem(std::int32_t kind) override;
    printerChannelColorInfo *GetChannelColorInfo() override;
    bool SetChannelColorInfo(const printerChannelColorInfo *info) override;
    printerIccColorInfo *GetIccSettingInfo() override;
    bool SetIccSettingInfo(const printerIccColorInfo *info) override;
    bool GetSelectEnumItemDpi(std::int32_t index, std::uint32_t &xDpi, std::uint32_t &yDpi) override;
    printerInkOrderInfo *GetInkOrderInfo() override;
    bool SetInkOrderInfo(const printerInkOrderInfo *info) override;

    // The language flag that selects the drivers' English texts.
    static constexpr unsigned int kLanguageEnglish = 4;

private:
    struct Selection
    {
        QString id;
        QString prsPath;
        PrsDocument document;
        bool english = false;
    };

    struct EnumRecord
    {
        printerEnumItem item{};
        std::unique_ptr<printerEnumValue[]> values;
    };

    struct ChannelRecord
    {
        printerChannelColorInfo info{};
        std::vector<inkChannelInfo> channels;
    };

    struct InkOrderRecord
    {
        printerInkOrderInfo info{};
        std::vector<std::int32_t> order;
        std::vector<std::int32_t> off;
    };

    std::unique_ptr<printerInfoItem> makeInfoItem(const InstalledDriver &driver) const;
    std::unique_ptr<EnumRecord> makeEnumRecord(const PrsEnum &item) const;
    void dropRecords();
    // Stores the edited channels of the current combination (see
    // PrsDocument::setCurrentChannels); needs a selection.
    bool setChannels(const QVector<PrsChannel> &edited);
    // Whether a Set call can take its record: a driver is selected and the
    // record is there. A refusal is logged.
    bool canTakeRecord(const void *record) const;
    // Drops the record of a kind handed out last and, with a driver
    // selected, puts a new empty one in its place; null without a selection.
    template <typename Record>
    Record *renewRecord(std::unique_ptr<Record> &slot)
    {
        slot.reset();
        if (!selection_)
            return nullptr;
        slot = std::make_unique<Record>();
        return slot.get();
    }

    DriverRegistry registry_;
    std::optional<Selection> selection_;

    std::vector<std::unique_ptr<printerInfoItem>> listedDrivers_;
    std::unique_ptr<printerInfoItem> addedDriver_;
    QByteArray driverName_;
    QByteArray pdvName_;
    std::vector<std::unique_ptr<EnumRecord>> enumList_;
    std::unique_ptr<EnumRecord> enumById_;
    std::array<std::unique_ptr<EnumRecord>, 3> selectedEnums_;
    std::unique_ptr<ChannelRecord> channelRecord_;
    std::unique_ptr<printerIccColorInfo> iccRecord_;
    std::unique_ptr<InkOrderRecord> inkOrderRecord_;
};

} // namespace bex::printparams
