#pragma once

#include "IRipEngineDriverUI.h"

#include <QLibrary>

// The six exports of the driver UI module, each as X(member, name): the
// member of DriverUiExports that holds it and its name in the library. The
// header names each one's type <name>Fn, so a function cannot be resolved
// under a wrong type or a wrong name.
#define BEX_DRIVER_UI_EXPORTS(X)                                                                             \
    X(initialize, BexRipEngineDriverUI_RipServer_Initialize)                                                 \
    X(unInitialize, BexRipEngineDriverUI_RipServer_UnInitialize)                                             \
    X(create, CreateBexRipEngineDriverUI_RipServer)                                                          \
    X(destroy, DestroyBexRipEngineDriverUI_RipServer)                                                        \
    X(kind, BexRipEngineDriverUI_RipServer_Kind)                                                             \
    X(version, BexRipEngineDriverUI_RipServer_Version)

// The exports resolved from a library loaded at run time, for the project's
// own hosts (demo, minimal host, benchmarks).
struct DriverUiExports
{
#define BEX_DECLARE_EXPORT(member, name) name##Fn member = nullptr;
    BEX_DRIVER_UI_EXPORTS(BEX_DECLARE_EXPORT)
#undef BEX_DECLARE_EXPORT

    // True when library holds all six.
    bool resolve(QLibrary &library)
    {
        bool all = true;
#define BEX_RESOLVE_EXPORT(member, name)                                                                     \
    member = reinterpret_cast<name##Fn>(library.resolve(#name));                                             \
    all = all && member;
        BEX_DRIVER_UI_EXPORTS(BEX_RESOLVE_EXPORT)
#undef BEX_RESOLVE_EXPORT
        return all;
    }
};
