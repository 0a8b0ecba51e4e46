#pragma once

// For test executables that serve the module with a handler of their own by
// defining the print-parameter library's two factories themselves.
//
// On ELF platforms the executable's definitions take the place of the
// library's when the program is loaded. On Windows the module's objects call
// the factories through the import table, that is through the pointers
// "__imp_CreateUIPrintParamsHandler" and "__imp_DestroyUIPrintParamsHandler"
// that the library's import library would supply; defining those pointers in
// the executable makes the linker take them, and with them the executable's
// own factories, before it looks into the import library.
//
// A source that defines the factories defines BEXUIPRINTPARAMSPROCESSING_LIBRARY
// before its first include, so that its definitions match the declarations
// of IUIPrintParamsHandler.h, and uses the macro once, after the
// definitions, outside any namespace.

#include <IUIPrintParamsHandler.h>

#if defined(_WIN32)
#define BEX_PRINT_PARAMS_FACTORIES_REPLACE_IMPORTS()                                                         \
    extern "C" {                                                                                             \
    IUIPrintParamsHandler *(*__imp_CreateUIPrintParamsHandler)() = &CreateUIPrintParamsHandler;              \
    void (*__imp_DestroyUIPrintParamsHandler)(IUIPrintParamsHandler *) = &DestroyUIPrintParamsHandler;       \
    }
#else
#define BEX_PRINT_PARAMS_FACTORIES_REPLACE_IMPORTS()
#endif
