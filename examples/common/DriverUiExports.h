#pragma once

#include "IRipEngineDriverUI.h"

#include <QLibrary>

// The six exports of the driver UI module, resolved from a library loaded at
// run time, for the project's own hosts (demo, benchmarks).
struct DriverUiExports
{
    BexRipEngineDriverUI_RipServer_InitializeFn initialize = nullptr;
    BexRipEngineDriverUI_RipServer_UnInitializeFn unInitialize = nullptr;
    CreateBexRipEngineDriverUI_RipServerFn create = nullptr;
    DestroyBexRipEngineDriverUI_RipServerFn destroy = nullptr;
    BexRipEngineDriverUI_RipServer_KindFn kind = nullptr;
    BexRipEngineDriverUI_RipServer_VersionFn version = nullptr;

    // True when library holds all six.
    bool resolve(QLibrary &library)
    {
        initialize = reinterpret_cast<BexRipEngineDriverUI_RipServer_InitializeFn>(
            library.resolve("BexRipEngineDriverUI_RipServer_Initialize"));
        unInitialize = reinterpret_cast<BexRipEngineDriverUI_RipServer_UnInitializeFn>(
            library.resolve("BexRipEngineDriverUI_RipServer_UnInitialize"));
        create = reinterpret_cast<CreateBexRipEngineDriverUI_RipServerFn>(
            library.resolve("CreateBexRipEngineDriverUI_RipServer"));
        destroy = reinterpret_cast<DestroyBexRipEngineDriverUI_RipServerFn>(
            library.resolve("DestroyBexRipEngineDriverUI_RipServer"));
        kind = reinterpret_cast<BexRipEngineDriverUI_RipServer_KindFn>(
            library.resolve("BexRipEngineDriverUI_RipServer_Kind"));
        version = reinterpret_cast<BexRipEngineDriverUI_RipServer_VersionFn>(
            library.resolve("BexRipEngineDriverUI_RipServer_Version"));
        return initialize && unInitialize && create && destroy && kind && version;
    }
};
