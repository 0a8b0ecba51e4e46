#pragma once

#include <QString>

// Function names as the compiler spells them in log lines (Q_FUNC_INFO).
namespace ConfigSignatures {

#ifdef _MSC_VER
inline QString setLanguage()
{
    return QStringLiteral("void __cdecl UIModuleConfig::setLanguage(enum QLocale::Language)");
}
inline QString printerDriverConfigConstructor()
{
    return QStringLiteral("__cdecl PrinterDriverConfig::PrinterDriverConfig(void)");
}
inline QString readConfig()
{
    return QStringLiteral("void __cdecl PrinterDriverConfig::readConfig(void)");
}
#else
inline QString setLanguage()
{
    return QStringLiteral("void UIModuleConfig::setLanguage(QLocale::Language)");
}
inline QString printerDriverConfigConstructor()
{
    return QStringLiteral("PrinterDriverConfig::PrinterDriverConfig()");
}
inline QString readConfig()
{
    return QStringLiteral("void PrinterDriverConfig::readConfig()");
}
#endif

} // namespace ConfigSignatures

namespace ConfigFiles {
inline QString uiModuleConfig()
{
    return QStringLiteral("source/Config/UIModuleConfig");
}
inline QString printerDriverConfig()
{
    return QStringLiteral("source/Config/PrinterDriverConfig");
}
inline QString category()
{
    return QStringLiteral("bex.driverui.config");
}
} // namespace ConfigFiles
