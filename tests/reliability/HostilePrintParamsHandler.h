#pragma once

#include <IUIPrintParamsHandler.h>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <list>
#include <memory>
#include <vector>

// A print-parameter handler that answers the way a broken or hostile vendor
// library might. The module must refuse such answers, log them and go on:
// never crash, read out of bounds or hang.
//
// One handler plays one case for every operation. A test executable that
// links HostilePrintParamsHandler.cpp gets the library's two exports from
// it, so the manager (and every dialog reaching the manager) is served by
// the handler given to setNextHandler():
//
//   for (auto c : HostilePrintParamsHandler::allCases()) {
//       HostilePrintParamsHandler::setNextHandler(new HostilePrintParamsHandler(c));
//       PrinterDriverManager::instance()->load();
//       ... run the code under test ...
//       PrinterDriverManager::instance()->unload();
//   }
//
// Every record it hands out lives until the next call of the same getter
// (ChangingRecords frees it then, so a caller that keeps an old pointer
// reads freed memory and AddressSanitizer reports it).
class HostilePrintParamsHandler : public IUIPrintParamsHandler
{
public:
    enum class Case
    {
        // Null records everywhere: null list entries, null getters' results,
        // null arrays behind non-zero counts.
        NullRecords,
        // Counts and indices below zero.
        NegativeCounts,
        // Counts and indices of INT_MAX in front of small arrays.
        HugeCounts,
        // Counts beyond what the record holds: one channel more than any
        // printer has, an ink count above the channel count, a selected index
        // past the last value.
        CountsBeyondRecord,
        // Fixed text fields filled to their last byte, no terminating zero.
        UnterminatedTexts,
        // One record pointer for two things: the same driver item twice in
        // the list, the same enum item for every kind.
        SharedRecord,
        // Every call answers differently from the one before and frees the
        // previous answer.
        ChangingRecords,
    };

    static QList<Case> allCases();
    static QString caseName(Case c);

    explicit HostilePrintParamsHandler(Case c);
    ~HostilePrintParamsHandler() override;

    Case hostility() const { return case_; }
    // The .prs path the driver items name (an existing file keeps them
    // listed); empty by default.
    QString existingPrs;
    // Every operation called, oldest first ("GetChannelColorInfo").
    QStringList calls;

    // The handler the next CreateUIPrintParamsHandler() hands out (once).
    static void setNextHandler(HostilePrintParamsHandler *handler);

    // The byte the text fields are filled with in UnterminatedTexts.
    static constexpr char fill = 'Z';
    // The number of channels the record arrays really hold.
    static constexpr int heldChannels = 4;

    void GetAllPrinterDriverList(std::list<printerInfoItem *> &list) override;
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
    bool GetSelectEnumItemDpi(std::int32_t index, std::uint32_t &x, std::uint32_t &y) override;
    printerInkOrderInfo *GetInkOrderInfo() override;
    bool SetInkOrderInfo(const printerInkOrderInfo *info) override;

private:
    // Storage of the records handed out. Each getter rebuilds its own
    // storage on every call.
    struct EnumStorage
    {
        std::unique_ptr<printerEnumValue[]> values;
        std::unique_ptr<printerEnumItem> item;
    };
    struct ChannelStorage
    {
        std::vector<inkChannelInfo> channels;
        std::unique_ptr<printerChannelColorInfo> info;
    };
    struct InkOrderStorage
    {
        std::vector<std::int32_t> order;
        std::vector<std::int32_t> onOff;
        std::unique_ptr<printerInkOrderInfo> info;
    };

    // How many times the named getter has been called, this call included.
    int round(const QString &name);
    std::unique_ptr<printerInfoItem> makeDriverItem(int index, int round) const;
    std::unique_ptr<EnumStorage> makeEnum(std::int32_t kind, int round) const;
    std::int32_t claimedCount(int held, int round) const;

    Case case_;
    QHash<QString, int> rounds_;
    std::vector<std::unique_ptr<printerInfoItem>> driverItems_;
    std::unique_ptr<printerInfoItem> addedItem_;
    std::vector<std::unique_ptr<EnumStorage>> enumItems_;
    std::unique_ptr<EnumStorage> selectedEnum_;
    std::unique_ptr<ChannelStorage> channels_;
    std::unique_ptr<printerIccColorInfo> icc_;
    std::unique_ptr<InkOrderStorage> inkOrder_;
    QByteArray driverName_;
};
