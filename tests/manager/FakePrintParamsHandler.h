#pragma once

#include <IUIPrintParamsHandler.h>

#include <QString>
#include <QStringList>

#include <memory>
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
};
