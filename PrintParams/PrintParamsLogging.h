#pragma once

// Logging of the print-parameter library: the module's line format (source
// path, line, function) under a category of the library's own, so that a
// host can switch it on and off apart from the module.

#include "bex/Logging.h"

Q_DECLARE_LOGGING_CATEGORY(lcPrintParams) // bex.printparams
