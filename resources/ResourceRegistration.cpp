// Registers the module's three resource bundles with Qt's resource system
// while the library is loaded: images, style and language, in that order,
// and unregisters them in reverse order when the library is unloaded.
//
// The files rcc generates for the bundles have their own self-registering
// static objects removed at build time (StripRccInitializer.cmake): the
// order of initializers across files is the linker's, not ours. This file is
// therefore the only place that registers them, and does it once.

#include <QtGlobal>

// Kept at global scope: Q_INIT_RESOURCE declares the generated functions where
// it is used, and they are global functions.
class BexRipEngineDriverUIResourceBundles
{
public:
    BexRipEngineDriverUIResourceBundles()
    {
        Q_INIT_RESOURCE(images);
        Q_INIT_RESOURCE(style);
        Q_INIT_RESOURCE(language);
    }

    ~BexRipEngineDriverUIResourceBundles()
    {
        Q_CLEANUP_RESOURCE(language);
        Q_CLEANUP_RESOURCE(style);
        Q_CLEANUP_RESOURCE(images);
    }

    BexRipEngineDriverUIResourceBundles(const BexRipEngineDriverUIResourceBundles &) = delete;
    BexRipEngineDriverUIResourceBundles &operator=(const BexRipEngineDriverUIResourceBundles &) = delete;
};

static const BexRipEngineDriverUIResourceBundles resourceBundles;
