#pragma once

// The interfaces that a RIP host and the BexRipEngineDriverUI_RipServer module
// share. Hosts build against this header and load the module at run time,
// either by linking it or through QLibrary with the function pointer types
// below. Both sides must be built against the same header: the order of the
// virtual functions and of the data members is the binary contract. The
// header needs nothing but Qt Core: compile with "-I include" and Qt's
// include path.
//
// What a host must know:
//   - Calling order: BexRipEngineDriverUI_RipServer_Initialize() first, and go
//     on only when it returned true; then module objects, freed with
//     DestroyBexRipEngineDriverUI_RipServer(); UnInitialize() last. A refused
//     Initialize() may simply be called again later: every call tries to get
//     the print-parameter library's handler anew, and Initialize() after
//     UnInitialize() makes a new handler. Everything runs on the GUI thread.
//   - Lifetime: the DriverInfo and IDriver objects handed out are shared
//     pointers that may outlive the module object, but never the library:
//     release them before unloading the module, since their code lives there.
//   - unserialize() trusts its input: it rebuilds a driver from bytes the host
//     saved with serialize(), refuses malformed documents, and the rebuilt
//     driver's removePrsFile() deletes whatever path the document names. Hand
//     it only bytes the host itself stored.
//   - Language: without a call the dialogs show their Chinese source texts;
//     setLanguage(QLocale::English) shows English in the dialogs opened
//     afterwards. Every switch installs one more translator and none is
//     removed, and the Chinese translation holds no text of its own: choosing
//     Chinese after English therefore still shows the English texts (and logs
//     that the empty Chinese file was not installed). A host that offers
//     both languages chooses one before the first dialog, or restarts to go
//     back to Chinese. Setting the language already set does nothing.

#if defined(_WIN32) || defined(__CYGWIN__)
#if defined(BexRipEngineDriverUI_RipServer_EXPORTS)
#define BEXRIPENGINEDRIVERUI_EXPORT __declspec(dllexport)
#else
#define BEXRIPENGINEDRIVERUI_EXPORT __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define BEXRIPENGINEDRIVERUI_EXPORT __attribute__((visibility("default")))
#else
#define BEXRIPENGINEDRIVERUI_EXPORT
#endif

#include <QByteArray>
#include <QLocale>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>

class QWidget;

// The job's extra options. Passed by const reference, copied whole.
struct RipExtraOption
{
    // Print mode id: 0 manual print after RIP, 1 automatic print after RIP,
    // 2 print while ripping.
    std::int32_t printMode = 0;
    // Mirror the page horizontally on output.
    bool horizontalMirror = false;
};

static_assert(offsetof(RipExtraOption, printMode) == 0 && offsetof(RipExtraOption, horizontalMirror) == 4 &&
                  sizeof(RipExtraOption) == 8,
              "RipExtraOption's layout is shared with the host");

namespace IRipEngine {

// The driver object that the RIP engine keeps with a job. Opaque to the host
// apart from its kind and removePrsFile(); stored and restored through
// IRipEngineDriverUI::serialize() and unserialize().
struct IDriver
{
    virtual ~IDriver() = default;
    // The kind string of the module that made this driver.
    virtual const wchar_t *kind() const = 0;
    // Deletes the job's temporary .prs copy. Non-zero on success.
    virtual std::int32_t removePrsFile() = 0;
};

} // namespace IRipEngine

// The module object. Create it with CreateBexRipEngineDriverUI_RipServer()
// after BexRipEngineDriverUI_RipServer_Initialize() returned true, and free it
// with DestroyBexRipEngineDriverUI_RipServer(). All calls on the GUI thread.
class IRipEngineDriverUI
{
public:
    // Description of the driver chosen for a job, handed to the host by the
    // property step. The host reads the data members directly.
    class DriverInfo
    {
    public:
        virtual ~DriverInfo() = default;
        virtual const wchar_t *kind() const = 0;

        // Temporary copy of the driver's .prs file made for this job, with
        // forward slashes.
        QString prsFilePath;
        // The driver's name as the user sees it in the driver list.
        QString showName;
        // Resolution of the driver's selected resolution item.
        std::uint32_t dpiX = 0;
        std::uint32_t dpiY = 0;
        // Names of the driver's spot-colour channels.
        QStringList spotColorSampleNameList;
        // Free text; this module leaves it empty.
        QString remark;
        // The driver's mode id as the print-parameter library reports it.
        std::int32_t modeId = -1;
    };

    // Implemented by the host: told once when the driver manager dialog has
    // closed, with the default driver's shown name and spot-colour names
    // (both empty when no default driver is set).
    class ICallback_DriverManagerDlg
    {
    public:
        virtual ~ICallback_DriverManagerDlg() = default;
        virtual bool onFinished(const QString &showName, const QStringList &spotColorSampleNameList) = 0;
    };

    // Implemented by the host: told once when the property step for a job has
    // succeeded, with the job's (possibly edited) extra option and the driver.
    class ICallback_DriverPropertyDlg
    {
    public:
        virtual ~ICallback_DriverPropertyDlg() = default;
        virtual bool onFinished(const RipExtraOption &option, const QSharedPointer<DriverInfo> &info) = 0;
    };

    virtual ~IRipEngineDriverUI() = default;
    virtual const wchar_t *kind() const = 0;
    // Chinese (the source texts) or English.
    virtual void setLanguage(QLocale::Language language) = 0;
    // Lets the user manage the installed drivers; calls back with the default
    // driver when the dialog has closed.
    virtual bool showDriverManagerDlg(QWidget *parent, ICallback_DriverManagerDlg *callback) = 0;
    // The property step before a job: lets the user check and edit the default
    // driver, copies its .prs file for the job and calls back with the result.
    virtual bool showDriverPropertyDlg(QWidget *parent, const RipExtraOption &option,
                                       ICallback_DriverPropertyDlg *callback) = 0;
    // Turns the property step's result into the driver object the engine keeps.
    virtual QSharedPointer<IRipEngine::IDriver>
    getRipEngineDriver(const QSharedPointer<DriverInfo> &info) = 0;
    // Stores a driver object as a small JSON document, and restores it.
    virtual QByteArray serialize(const QSharedPointer<IRipEngine::IDriver> &driver) = 0;
    virtual QSharedPointer<IRipEngine::IDriver> unserialize(const QByteArray &data) = 0;
};

extern "C" {

// A new module object; the caller owns it.
BEXRIPENGINEDRIVERUI_EXPORT IRipEngineDriverUI *CreateBexRipEngineDriverUI_RipServer();
// Frees a module object; null is accepted.
BEXRIPENGINEDRIVERUI_EXPORT void DestroyBexRipEngineDriverUI_RipServer(IRipEngineDriverUI *ui);
// Makes the module ready. Call first; go on only when it returns true.
BEXRIPENGINEDRIVERUI_EXPORT bool BexRipEngineDriverUI_RipServer_Initialize();
// The kind string "BexRipEngine_RipServer" shared by every object of the module.
BEXRIPENGINEDRIVERUI_EXPORT const wchar_t *BexRipEngineDriverUI_RipServer_Kind();
// Releases the print-parameter library's handler. Call last.
BEXRIPENGINEDRIVERUI_EXPORT void BexRipEngineDriverUI_RipServer_UnInitialize();
// Writes the module's version (1.0.0) through every pointer that is not null.
BEXRIPENGINEDRIVERUI_EXPORT void
BexRipEngineDriverUI_RipServer_Version(unsigned int *major, unsigned int *minor, unsigned int *patch);

} // extern "C"

// Function pointer types for hosts that resolve the exports at run time.
using CreateBexRipEngineDriverUI_RipServerFn = IRipEngineDriverUI *(*)();
using DestroyBexRipEngineDriverUI_RipServerFn = void (*)(IRipEngineDriverUI *);
using BexRipEngineDriverUI_RipServer_InitializeFn = bool (*)();
using BexRipEngineDriverUI_RipServer_KindFn = const wchar_t *(*)();
using BexRipEngineDriverUI_RipServer_UnInitializeFn = void (*)();
using BexRipEngineDriverUI_RipServer_VersionFn = void (*)(unsigned int *, unsigned int *, unsigned int *);
