#pragma once

// Logging used by every file of the module: the line format of
// "bex/Logging.h" (BEX_DEBUG, BEX_INFO, BEX_WARNING, BEX_CRITICAL) under the
// module's categories, all named under "bex.driverui".

#include "bex/Logging.h"

Q_DECLARE_LOGGING_CATEGORY(lcPlugin)  // bex.driverui.plugin: exports and the module object
Q_DECLARE_LOGGING_CATEGORY(lcConfig)  // bex.driverui.config: settings file and language
Q_DECLARE_LOGGING_CATEGORY(lcManager) // bex.driverui.manager: driver manager and packages
Q_DECLARE_LOGGING_CATEGORY(lcDialog)  // bex.driverui.dialog: dialogs and property editing
Q_DECLARE_LOGGING_CATEGORY(lcWidget)  // bex.driverui.widget: property sub-widgets
