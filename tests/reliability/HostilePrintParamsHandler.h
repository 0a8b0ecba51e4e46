#pragma once

#include "ScriptedPrintParamsHandler.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <list>
#include <memory>
#include <vector>

// A print-parameter handler that answers the way a broken or hostile vendor
// library might. The module must refuse such answers, log them and go on:
// never crash, read out of bounds or hang.
//
// One handler plays one case for every operation; its call log holds the
// operations' names ("GetChannelColorInfo"), oldest first. A test executable
// that links HostilePrintParamsHandler.cpp gets the library's two exports
// from it, so the manager (and every dialog reaching the manager) is served
// by the handler given to setNextHandler():
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
class HostilePrintParamsHandler : public ScriptedPrintParamsHandler
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

    // The byte the text fields are filled with in UnterminatedTexts.
    static constexpr char fill = 'Z';
    // The number of channels the record arrays really hold.
    static constexpr int heldChannels = 4;

protected:
    void answerDriverList(std::list<printerInfoItem *> &list, int round) override;
    printerInfoItem *answerAddedDriver(int round) override;
    std::int32_t answerModeId(int round) override;
    void answerEnumItemList(std::list<printerEnumItem *> &items, int round) override;
    printerEnumItem *answerSelectEnumItem(std::int32_t kind, int round) override;
    printerEnumItem *answerEnumItem(std::uint32_t enumId, int round) override;
    bool answerDpi(std::int32_t index, std::uint32_t &x, std::uint32_t &y, int round) override;
    printerChannelColorInfo *answerChannelColorInfo(int round) override;
    printerIccColorInfo *answerIccSettingInfo(int round) override;
    printerInkOrderInfo *answerInkOrderInfo(int round) override;

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

    std::unique_ptr<printerInfoItem> makeDriverItem(int index, int round) const;
    std::unique_ptr<EnumStorage> makeEnum(std::int32_t kind, int round) const;
    std::int32_t claimedCount(int held, int round) const;

    Case case_;
    std::vector<std::unique_ptr<printerInfoItem>> driverItems_;
    std::unique_ptr<printerInfoItem> addedItem_;
    std::vector<std::unique_ptr<EnumStorage>> enumItems_;
    std::unique_ptr<EnumStorage> selectedEnum_;
    std::unique_ptr<ChannelStorage> channels_;
    std::unique_ptr<printerIccColorInfo> icc_;
    std::unique_ptr<InkOrderStorage> inkOrder_;
};
