#pragma once

// Logging of the frameless window framework: the project's line format
// (source path, line, function) under a category of the framework's own, so
// that a host can switch it on and off apart from the rest.

#include "bex/Logging.h"

Q_DECLARE_LOGGING_CATEGORY(lcFrameless) // bex.driverui.frameless
