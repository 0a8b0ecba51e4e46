// A test build of the print-parameter library: same file name, same exports,
// but its factory refuses while the test says so, and it counts the handlers
// it makes and frees. Loaded by a test before the module, so that the
// module's dependency on the library resolves to this build.

#include "IUIPrintParamsHandler.h"

#include <QtGlobal>

namespace {

bool refuse = false;
int created = 0;
int destroyed = 0;
int refused = 0;

// A handler with no installed drivers.
class EmptyHandler : public IUIPrintParamsHandler
{
public:
    void GetAllPrinterDriverList(std::list<printerInfoItem *> &drivers) override { drivers.clear(); }
    printerInfoItem *AddPrinterDriverPrs(const char *, int) override { return nullptr; }
    bool DeletePrinterDriverPrs(const char *) override { return false; }
    bool SelectPrinterDriverPrs(const char *, unsigned int) override { return false; }
    const char *GetCurDriverName() override { return nullptr; }
    const char *GetCurDriverPdvName() override { return nullptr; }
    bool RechristenDriverShowName(const char *, const char *) override { return false; }
    void GetAllEnumItemList(std::list<printerEnumItem *> &items) override { items.clear(); }
    printerEnumItem *GetEnumItem(std::uint32_t) override { return nullptr; }
    bool SetEnumItem(std::uint32_t, std::int32_t) override { return false; }
    bool CommitPrinterDriverPrs(int) override { return false; }
    std::int32_t GetCurModeId() override { return -1; }
    printerEnumItem *GetSelectEnumItem(std::int32_t) override { return nullptr; }
    printerChannelColorInfo *GetChannelColorInfo() override { return nullptr; }
    bool SetChannelColorInfo(const printerChannelColorInfo *) override { return false; }
    printerIccColorInfo *GetIccSettingInfo() override { return nullptr; }
    bool SetIccSettingInfo(const printerIccColorInfo *) override { return false; }
    bool GetSelectEnumItemDpi(std::int32_t, std::uint32_t &, std::uint32_t &) override { return false; }
    printerInkOrderInfo *GetInkOrderInfo() override { return nullptr; }
    bool SetInkOrderInfo(const printerInkOrderInfo *) override { return false; }
};

} // namespace

extern "C" {

IUIPrintParamsHandler *CreateUIPrintParamsHandler()
{
    if (refuse) {
        ++refused;
        return nullptr;
    }
    ++created;
    return new EmptyHandler;
}

void DestroyUIPrintParamsHandler(IUIPrintParamsHandler *handler)
{
    if (!handler)
        return;
    ++destroyed;
    delete handler;
}

Q_DECL_EXPORT void RefusingPrintParams_setRefuse(bool on)
{
    refuse = on;
}

Q_DECL_EXPORT int RefusingPrintParams_created()
{
    return created;
}

Q_DECL_EXPORT int RefusingPrintParams_destroyed()
{
    return destroyed;
}

Q_DECL_EXPORT int RefusingPrintParams_refused()
{
    return refused;
}

} // extern "C"
