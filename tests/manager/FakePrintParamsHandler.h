#pragma once

#include "RecordText.h"

#include <IUIPrintParamsHandler.h>

#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <vector>

// A print-parameter handler for tests: records every call with its
// arguments ("SelectPrinterDriverPrs(A,0)") and answers with scripted
// records and results.
class FakePrintParamsHandler : public IUIPrintParamsHandler
{
public:
    FakePrintParamsHandler() = default;
    ~FakePrintParamsHandler() override;

    static printerInfoItem makeItem(const QString &id, const QString &name, const QString &showName,
                                    const QString &prsPath);
    void setChannelNames(const QStringList &names);
    void setResolution(std::int32_t index);

    // An enumerated setting listed by GetAllEnumItemList, in the order added.
    printerEnumItem *addEnumItem(const QString &key, std::uint32_t enumId, const QStringList &values,
                                 std::int32_t index);
    // Makes GetSelectEnumItem(kind) answer the setting with this id.
    void setSelectKind(std::int32_t kind, std::uint32_t enumId);
    // The selected value of a setting added with addEnumItem; -1 if none.
    std::int32_t currentIndex(std::uint32_t enumId) const;
    // The selected value of the setting GetSelectEnumItem(kind) answers.
    std::int32_t selectedIndex(std::int32_t kind) const;

    // Channels with density, maximum ink (fraction) and name.
    void setChannels(const std::vector<inkChannelInfo> &list);
    static inkChannelInfo channel(const QString &name, double depth, double maxInk);
    void setIcc(const QString &rgb, const QString &cmyk, const QString &output, std::int32_t intent);
    void setInkOrder(const std::vector<std::int32_t> &order, const std::vector<std::int32_t> &off);

    // The log of calls, oldest first.
    QStringList calls;

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
    QString curDriverName;
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
    // When false, getters and setters are not written into `calls`
    // (benchmarks replay thousands of them).
    bool recordCalls = true;
    // Set to true by the destructor.
    bool *destroyed = nullptr;

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

    // The test executable defines the library's two exports itself, so the
    // manager gets its handlers from here: CreateUIPrintParamsHandler hands
    // out the handler given last (null once it has been handed out, which
    // is how a library that cannot make a handler answers), and
    // DestroyUIPrintParamsHandler deletes it.
    static void setNextHandler(FakePrintParamsHandler *handler);

private:
    struct EnumEntry
    {
        printerEnumItem item{};
        std::unique_ptr<printerEnumValue[]> values;
    };
    void record(const QString &call);
    const EnumEntry *findEnum(std::uint32_t enumId) const;

    std::vector<std::unique_ptr<EnumEntry>> enums_;
    std::map<std::int32_t, std::uint32_t> selectKinds_;
    QByteArray curDriverNameBytes_;
};
