#include "FramelessLogging.h"

Q_LOGGING_CATEGORY(lcFrameless, "bex.driverui.frameless")
