#include "Logging.h"

Q_LOGGING_CATEGORY(lcPlugin, "bex.driverui.plugin")
Q_LOGGING_CATEGORY(lcConfig, "bex.driverui.config")
Q_LOGGING_CATEGORY(lcManager, "bex.driverui.manager")
Q_LOGGING_CATEGORY(lcDialog, "bex.driverui.dialog")
Q_LOGGING_CATEGORY(lcWidget, "bex.driverui.widget")
