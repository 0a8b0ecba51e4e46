#pragma once

// Binary interface of the print-parameter library BexUIPrintParamsProcessing.
//
// The library is loaded as a separate shared object and is not rebuilt with
// its callers, so everything in this header is fixed: the order of the
// virtual functions of IUIPrintParamsHandler, their argument lists, and the
// byte layout of the records. The layouts are checked below for 64-bit
// builds.
//
// Text crossing this interface is zero-terminated 8-bit text in the local
// code page. Records returned by the handler belong to the library; callers
// may edit them in place and hand the same pointer back to the matching
// setter. A returned record stays valid until the next request of the same
// kind or the next SelectPrinterDriverPrs.

#include <cstddef>
#include <cstdint>
#include <list>

#if defined(_WIN32) || defined(__CYGWIN__)
#if defined(BEXUIPRINTPARAMSPROCESSING_LIBRARY)
#define BEX_PRINTPARAMS_API __declspec(dllexport)
#else
#define BEX_PRINTPARAMS_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define BEX_PRINTPARAMS_API __attribute__((visibility("default")))
#else
#define BEX_PRINTPARAMS_API
#endif

// Capacities of the fixed text fields, terminating zero included.
constexpr std::size_t kPrinterIdSize = 80;
constexpr std::size_t kPrinterNameSize = 200;
constexpr std::size_t kPrinterShowNameSize = 200;
constexpr std::size_t kPrinterPrsPathSize = 1024;
constexpr std::size_t kEnumKeySize = 80;
constexpr std::size_t kEnumValueSize = 150;
constexpr std::size_t kIccPathSize = 260;
constexpr std::size_t kInkChannelNameSize = 56;

// One installed driver.
struct printerInfoItem
{
    char piiId[kPrinterIdSize];             // unique among installed drivers
    char piiName[kPrinterNameSize];         // the driver's own name, from its .prs file
    char piiShowName[kPrinterShowNameSize]; // the name shown to the user
    char piiPrs[kPrinterPrsPathSize];       // the installed .prs file
};

// One value of an enumerated setting.
typedef char printerEnumValue[kEnumValueSize];

// One enumerated setting (resolution, paper, ink or a common property).
struct printerEnumItem
{
    char key[kEnumKeySize];
    printerEnumValue *values; // valueSize texts
    std::int32_t index;       // the value selected now
    std::int32_t valueSize;
    std::uint32_t enumId; // what SetEnumItem takes
};

// Enum kinds of GetSelectEnumItem.
enum printerEnumKind : std::int32_t
{
    kEnumKindResolution = 0,
    kEnumKindPaper = 1,
    kEnumKindInk = 2,
};

// Rendering intents of printerIccColorInfo.
enum printerIccIntent : std::int32_t
{
    kIccIntentPerceptual = 0,
    kIccIntentRelativeColorimetric = 1,
    kIccIntentSaturation = 2,
    kIccIntentAbsoluteColorimetric = 3,
};

// Colour management of the selected resolution, paper and ink. The three
// texts are file names inside the "ICC Profile/RGB", "CMYK" and "OUTPUT"
// folders.
struct printerIccColorInfo
{
    char iccFilePath_RGB[kIccPathSize];
    char iccFilePath_CMYK[kIccPathSize];
    char iccFilePath_OUTPUT[kIccPathSize];
    std::int32_t iccIntentType; // printerIccIntent
};

// One ink channel.
struct inkChannelInfo
{
    double iciDepth;  // colour density
    double iciMaxInk; // ink limit, 1.0 = 100 %
    char iciName[kInkChannelNameSize];
};

struct printerChannelColorInfo
{
    inkChannelInfo *channels; // pcciChanneNum entries
    std::int32_t pcciChanneNum;
};

// Ink i is channel i of printerChannelColorInfo.
struct printerInkOrderInfo
{
    std::int32_t pioiInkNum;
    std::int32_t *pioiInkOrder; // place of each ink in the print order, 0 first
    std::int32_t *PioiInkOFFON; // 0 = ink on, non-zero = ink off
};

// The print-parameter handler. Getters and setters act on the driver chosen
// last with SelectPrinterDriverPrs. The order of the virtual functions is
// the binary interface: new functions may only be appended.
//
// The destructor holds the first place (MSVC gives it one slot, the Itanium
// C++ ABI two); callers never delete a handler themselves but hand it to
// DestroyUIPrintParamsHandler.
class IUIPrintParamsHandler
{
public:
    virtual ~IUIPrintParamsHandler() = default;

    // Appends the installed drivers.
    virtual void GetAllPrinterDriverList(std::list<printerInfoItem *> &drivers) = 0;
    // Installs the .prs file; reserved must be 0. Null on failure.
    virtual printerInfoItem *AddPrinterDriverPrs(const char *prsPath, int reserved) = 0;
    virtual bool DeletePrinterDriverPrs(const char *driverId) = 0;
    // languageFlag 4 selects the drivers' English texts, other values their own.
    virtual bool SelectPrinterDriverPrs(const char *driverId, unsigned int languageFlag) = 0;
    virtual const char *GetCurDriverName() = 0;
    // File name of the selected driver's .pdv file, null when it has none.
    virtual const char *GetCurDriverPdvName() = 0;
    virtual bool RechristenDriverShowName(const char *driverId, const char *showName) = 0;
    // Appends every enumerated setting of the selected driver.
    virtual void GetAllEnumItemList(std::list<printerEnumItem *> &items) = 0;
    // The enumerated setting with the given id, null when there is none.
    virtual printerEnumItem *GetEnumItem(std::uint32_t enumId) = 0;
    virtual bool SetEnumItem(std::uint32_t enumId, std::int32_t index) = 0;
    // Writes the working state of the selected driver into its .prs file;
    // reserved must be 0.
    virtual bool CommitPrinterDriverPrs(int reserved) = 0;
    virtual std::int32_t GetCurModeId() = 0;
    virtual printerEnumItem *GetSelectEnumItem(std::int32_t kind) = 0;
    virtual printerChannelColorInfo *GetChannelColorInfo() = 0;
    virtual bool SetChannelColorInfo(const printerChannelColorInfo *info) = 0;
    virtual printerIccColorInfo *GetIccSettingInfo() = 0;
    virtual bool SetIccSettingInfo(const printerIccColorInfo *info) = 0;
    // Resolution of value index of the selected resolution setting.
    virtual bool GetSelectEnumItemDpi(std::int32_t index, std::uint32_t &xDpi, std::uint32_t &yDpi) = 0;
    virtual printerInkOrderInfo *GetInkOrderInfo() = 0;
    virtual bool SetInkOrderInfo(const printerInkOrderInfo *info) = 0;
};

extern "C" {
// A new handler, or null when none can be made.
BEX_PRINTPARAMS_API IUIPrintParamsHandler *CreateUIPrintParamsHandler();
// Frees a handler returned by CreateUIPrintParamsHandler; null is ignored.
BEX_PRINTPARAMS_API void DestroyUIPrintParamsHandler(IUIPrintParamsHandler *handler);
}

#if INTPTR_MAX == INT64_MAX
static_assert(offsetof(printerInfoItem, piiId) == 0, "printerInfoItem layout");
static_assert(offsetof(printerInfoItem, piiName) == 80, "printerInfoItem layout");
static_assert(offsetof(printerInfoItem, piiShowName) == 280, "printerInfoItem layout");
static_assert(offsetof(printerInfoItem, piiPrs) == 480, "printerInfoItem layout");
static_assert(sizeof(printerInfoItem) == 480 + kPrinterPrsPathSize, "printerInfoItem layout");

static_assert(sizeof(printerEnumValue) == 150, "printerEnumItem value layout");
static_assert(offsetof(printerEnumItem, key) == 0, "printerEnumItem layout");
static_assert(offsetof(printerEnumItem, values) == 80, "printerEnumItem layout");
static_assert(offsetof(printerEnumItem, index) == 88, "printerEnumItem layout");
static_assert(offsetof(printerEnumItem, valueSize) == 92, "printerEnumItem layout");
static_assert(offsetof(printerEnumItem, enumId) == 96, "printerEnumItem layout");
static_assert(sizeof(printerEnumItem) == 104, "printerEnumItem layout");

static_assert(offsetof(printerIccColorInfo, iccFilePath_RGB) == 0, "printerIccColorInfo layout");
static_assert(offsetof(printerIccColorInfo, iccFilePath_CMYK) == 260, "printerIccColorInfo layout");
static_assert(offsetof(printerIccColorInfo, iccFilePath_OUTPUT) == 520, "printerIccColorInfo layout");
static_assert(offsetof(printerIccColorInfo, iccIntentType) == 780, "printerIccColorInfo layout");
static_assert(sizeof(printerIccColorInfo) == 784, "printerIccColorInfo layout");

static_assert(offsetof(inkChannelInfo, iciDepth) == 0, "inkChannelInfo layout");
static_assert(offsetof(inkChannelInfo, iciMaxInk) == 8, "inkChannelInfo layout");
static_assert(offsetof(inkChannelInfo, iciName) == 16, "inkChannelInfo layout");
static_assert(sizeof(inkChannelInfo) == 72, "inkChannelInfo layout");

static_assert(offsetof(printerChannelColorInfo, channels) == 0, "printerChannelColorInfo layout");
static_assert(offsetof(printerChannelColorInfo, pcciChanneNum) == 8, "printerChannelColorInfo layout");
static_assert(sizeof(printerChannelColorInfo) == 16, "printerChannelColorInfo layout");

static_assert(offsetof(printerInkOrderInfo, pioiInkNum) == 0, "printerInkOrderInfo layout");
static_assert(offsetof(printerInkOrderInfo, pioiInkOrder) == 8, "printerInkOrderInfo layout");
static_assert(offsetof(printerInkOrderInfo, PioiInkOFFON) == 16, "printerInkOrderInfo layout");
static_assert(sizeof(printerInkOrderInfo) == 24, "printerInkOrderInfo layout");
#endif
