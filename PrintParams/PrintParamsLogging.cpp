#include "PrintParamsLogging.h"

Q_LOGGING_CATEGORY(lcPrintParams, "bex.printparams")
