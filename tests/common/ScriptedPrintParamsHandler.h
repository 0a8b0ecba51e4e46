#pragma once

#include "PrintParamsFactories.h"

#include <IUIPrintParamsHandler.h>

#include <QHash>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <vector>

// A print-parameter handler for tests. Every call is written into a log and
// answered from the records and results scripted in its public members. A
// subclass whose records change from call to call, or are damaged on
// purpose, gives its own answers by replacing the answer functions below;
// the log is the same for every handler.
//
// A test executable serves the module with these handlers by defining the
// library's two factories with BEX_SCRIPTED_PRINT_PARAMS_FACTORIES() in one
// of its sources (see the end of this file).
class ScriptedPrintParamsHandler : public IUIPrintParamsHandler
{
public:
    ~ScriptedPrintParamsHandler() override;

    // The handler the next CreateUIPrintParamsHandler() hands out, once: it
    // answers null afterwards, which is how a library that cannot make a
    // handler answers. DestroyUIPrintParamsHandler() deletes it.
    static void setNextHandler(ScriptedPrintParamsHandler *handler);
    static ScriptedPrintParamsHandler *takeNextHandler();

    // The log of calls, oldest first: with their arguments
    // ("SelectPrinterDriverPrs(A,0)") or, for a handler made with
    // CallLog::NamesOnly, the operation's name alone.
    QStringList calls;
    // When false, calls are not written into `calls` (benchmarks replay
    // thousands of them).
    bool recordCalls = true;

    // Scripted answers.
    std::vector<printerInfoItem> drivers;
    bool addSucceeds = false;
    printerInfoItem added{};
    bool deleteResult = true;
    bool selectResult = true;
    bool renameResult = true;
    bool hasResolution = false;
    printerEnumItem resolution{};
    bool dpiResult = true;
    std::uint32_t xDpi = 0;
    std::uint32_t yDpi = 0;
    bool hasChannels = false;
    std::vector<inkChannelInfo> channels;
    printerChannelColorInfo channelInfo{};
    // GetCurDriverName() and GetCurDriverPdvName() answer null while empty.
    QString curDriverName;
    QString curDriverPdvName;
    bool setEnumResult = true;
    // Ids whose SetEnumItem fails whatever setEnumResult says.
    std::set<std::uint32_t> failingEnumIds;
    bool commitResult = true;
    bool setChannelResult = true;
    bool hasIcc = false;
    printerIccColorInfo icc{};
    // When set, decides per (dpi, paper, ink) index whether GetIccSettingInfo
    // answers, as a driver with colour calibration on some media only.
    std::function<bool(int dpi, int paper, int ink)> iccFor;
    bool setIccResult = true;
    bool hasInkOrder = false;
    std::vector<std::int32_t> inkOrder;
    std::vector<std::int32_t> inkOff;
    printerInkOrderInfo inkOrderInfo{};
    bool setInkOrderResult = true;

    // An enumerated setting listed by GetAllEnumItemList, in the order added.
    printerEnumItem *addEnumItem(const QString &key, std::uint32_t enumId, const QStringList &values,
                                 std::int32_t index);
    // Makes GetSelectEnumItem(kind) answer the setting with this id.
    void setSelectKind(std::int32_t kind, std::uint32_t enumId);
    // The selected value of a setting added with addEnumItem; -1 if none.
    std::int32_t currentIndex(std::uint32_t enumId) const;
    // The selected value of the setting GetSelectEnumItem(kind) answers.
    std::int32_t selectedIndex(std::int32_t kind) const;

    // The interface. Each operation is logged, then answered: setters with
    // their scripted result, getters through the answer functions.

    // The installed drivers.
    void GetAllPrinterDriverList(std::list<printerInfoItem *> &list) final;
    printerInfoItem *AddPrinterDriverPrs(const char *prsPath, int reserved) final;
    bool RechristenDriverShowName(const char *driverId, const char *showName) final;
    bool DeletePrinterDriverPrs(const char *driverId) final;
    bool SelectPrinterDriverPrs(const char *driverId, unsigned int languageFlag) final;

    // The selected driver.
    const char *GetCurDriverName() final;
    const char *GetCurDriverPdvName() final;
    std::int32_t GetCurModeId() final;
    bool CommitPrinterDriverPrs(int reserved) final;

    // Its enumerated settings.
    void GetAllEnumItemList(std::list<printerEnumItem *> &items) final;
    printerEnumItem *GetSelectEnumItem(std::int32_t kind) final;
    printerEnumItem *GetEnumItem(std::uint32_t enumId) final;
    bool SetEnumItem(std::uint32_t enumId, std::int32_t index) final;
    bool GetSelectEnumItemDpi(std::int32_t index, std::uint32_t &x, std::uint32_t &y) final;

    // Its colour records.
    printerChannelColorInfo *GetChannelColorInfo() final;
    printerIccColorInfo *GetIccSettingInfo() final;
    printerInkOrderInfo *GetInkOrderInfo() final;
    bool SetChannelColorInfo(const printerChannelColorInfo *info) final;
    bool SetIccSettingInfo(const printerIccColorInfo *info) final;
    bool SetInkOrderInfo(const printerInkOrderInfo *info) final;

protected:
    enum class CallLog
    {
        NamesAndArguments,
        NamesOnly,
    };
    explicit ScriptedPrintParamsHandler(CallLog log = CallLog::NamesAndArguments);

    // The getters' answers, from the scripted records by default. `round` is
    // how many times the operation has been called, this call included.
    virtual void answerDriverList(std::list<printerInfoItem *> &list, int round);
    virtual printerInfoItem *answerAddedDriver(int round);
    virtual std::int32_t answerModeId(int round);
    virtual void answerEnumItemList(std::list<printerEnumItem *> &items, int round);
    virtual printerEnumItem *answerSelectEnumItem(std::int32_t kind, int round);
    virtual printerEnumItem *answerEnumItem(std::uint32_t enumId, int round);
    virtual bool answerDpi(std::int32_t index, std::uint32_t &x, std::uint32_t &y, int round);
    virtual printerChannelColorInfo *answerChannelColorInfo(int round);
    virtual printerIccColorInfo *answerIccSettingInfo(int round);
    virtual printerInkOrderInfo *answerInkOrderInfo(int round);

    // Copies bytes into a fixed text field, cut to leave its terminating zero.
    template <std::size_t N>
    static void setText(char (&field)[N], const QByteArray &bytes)
    {
        std::memset(field, 0, N);
        std::memcpy(field, bytes.constData(), std::min<std::size_t>(std::size_t(bytes.size()), N - 1));
    }

private:
    struct EnumEntry
    {
        printerEnumItem item{};
        std::unique_ptr<printerEnumValue[]> values;
    };

    // Logs the call and counts it; the arguments are described only for a
    // log that keeps them. Answers the operation's round.
    int called(const char *operation, const std::function<QString()> &arguments = {});
    const EnumEntry *findEnum(std::uint32_t enumId) const;

    CallLog log_;
    QHash<QString, int> rounds_;
    std::vector<std::unique_ptr<EnumEntry>> enums_;
    std::map<std::int32_t, std::uint32_t> selectKinds_;
    QByteArray curDriverNameBytes_;
    QByteArray curDriverPdvNameBytes_;
};

// Defines CreateUIPrintParamsHandler(), which hands out
// ScriptedPrintParamsHandler::takeNextHandler(), and
// DestroyUIPrintParamsHandler(), which deletes the handler. The source that
// uses it follows the rules of PrintParamsFactories.h: it defines
// BEXUIPRINTPARAMSPROCESSING_LIBRARY before its first include, and uses the
// macro once, outside any namespace.
#define BEX_SCRIPTED_PRINT_PARAMS_FACTORIES()                                                                \
    extern "C" {                                                                                             \
    IUIPrintParamsHandler *CreateUIPrintParamsHandler()                                                      \
    {                                                                                                        \
        return ScriptedPrintParamsHandler::takeNextHandler();                                                \
    }                                                                                                        \
    void DestroyUIPrintParamsHandler(IUIPrintParamsHandler *handler)                                         \
    {                                                                                                        \
        delete handler;                                                                                      \
    }                                                                                                        \
    }                                                                                                        \
    BEX_PRINT_PARAMS_FACTORIES_REPLACE_IMPORTS()
