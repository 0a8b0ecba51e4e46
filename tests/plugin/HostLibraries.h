#pragma once

// Loads the test build of the print-parameter library and then the module,
// the way a host loads the module: QLibrary and resolve(), nothing linked.

#include "IRipEngineDriverUI.h"

#include <QLibrary>

struct RefusingPrintParams
{
    QLibrary library{QStringLiteral(BEX_REFUSING_PRINTPARAMS_PATH)};
    void (*setRefuse)(bool) = nullptr;
    int (*created)() = nullptr;
    int (*destroyed)() = nullptr;
    int (*refused)() = nullptr;

    bool load()
    {
        if (!library.load())
            return false;
        setRefuse = reinterpret_cast<void (*)(bool)>(library.resolve("RefusingPrintParams_setRefuse"));
        created = reinterpret_cast<int (*)()>(library.resolve("RefusingPrintParams_created"));
        destroyed = reinterpret_cast<int (*)()>(library.resolve("RefusingPrintParams_destroyed"));
        refused = reinterpret_cast<int (*)()>(library.resolve("RefusingPrintParams_refused"));
        return setRefuse && created && destroyed && refused;
    }
};

struct HostModule
{
    QLibrary library{QStringLiteral(BEX_MODULE_PATH)};
    BexRipEngineDriverUI_RipServer_InitializeFn initialize = nullptr;
    BexRipEngineDriverUI_RipServer_UnInitializeFn unInitialize = nullptr;

    bool load()
    {
        if (!library.load())
            return false;
        initialize = reinterpret_cast<BexRipEngineDriverUI_RipServer_InitializeFn>(
            library.resolve("BexRipEngineDriverUI_RipServer_Initialize"));
        unInitialize = reinterpret_cast<BexRipEngineDriverUI_RipServer_UnInitializeFn>(
            library.resolve("BexRipEngineDriverUI_RipServer_UnInitialize"));
        return initialize && unInitialize;
    }
};
