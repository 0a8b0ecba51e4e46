#pragma once

// The log line format shared by the module, its frameless window framework
// and the print-parameter library.
//
// Each line goes through Qt's message logger with
//   - the source path relative to the project, without extension
//     ("source/Config/UIModuleConfig"),
//   - the line number,
//   - the compiler's full function signature (Q_FUNC_INFO),
//   - a logging category of the caller's own, so that a host can silence
//     areas with QT_LOGGING_RULES (for example "bex.driverui.*.debug=false").
//
// Usage, with a category declared by Q_DECLARE_LOGGING_CATEGORY:
//   BEX_DEBUG(lcConfig) << "bShowIccDetail:" << value;
//   BEX_WARNING(lcConfig) << "语言文件加载失败";
//   BEX_CRITICAL(lcManager) << "writeDPI failed";
//
// BEX_SOURCE_ROOT, the project folder with a trailing slash, is defined by
// the build for every target; without it paths are kept as the compiler
// names them, less any leading "../" and "./" steps.

#include <QLoggingCategory>
#include <QMessageLogger>

#include <cstddef>

namespace bex::logging {

// A source file name trimmed at compile time: the project root removed, the
// extension dropped and backslashes turned into slashes. Kept in a static
// constexpr object per call site, so the pointer handed to QMessageLogger
// lives as long as the program.
template <std::size_t N>
struct SourceName
{
    char text[N] = {};
};

constexpr std::size_t commonPrefixLength(const char *path, const char *root)
{
    std::size_t i = 0;
    while (root[i] != '\0' && path[i] != '\0' && (path[i] == root[i] || (path[i] == '\\' && root[i] == '/')))
        ++i;
    return root[i] == '\0' ? i : 0;
}

// The leading "../" and "./" steps of a relative path. A compiler handed
// paths relative to the build folder (ccache with a base folder does that,
// for a build folder inside the project) names the project's files so.
constexpr std::size_t relativeStepsLength(const char *path)
{
    std::size_t i = 0;
    for (;;) {
        if (path[i] == '.' && path[i + 1] == '.' && (path[i + 2] == '/' || path[i + 2] == '\\'))
            i += 3;
        else if (path[i] == '.' && (path[i + 1] == '/' || path[i + 1] == '\\'))
            i += 2;
        else
            return i;
    }
}

template <std::size_t N>
constexpr SourceName<N> trimSourcePath(const char (&path)[N], const char *root)
{
    SourceName<N> out;
    std::size_t begin = commonPrefixLength(path, root);
    if (begin == 0)
        begin = relativeStepsLength(path);
    std::size_t end = N - 1;
    for (std::size_t i = N - 1; i > begin; --i) {
        const char c = path[i - 1];
        if (c == '/' || c == '\\')
            break;
        if (c == '.') {
            end = i - 1;
            break;
        }
    }
    std::size_t o = 0;
    for (std::size_t i = begin; i < end; ++i)
        out.text[o++] = path[i] == '\\' ? '/' : path[i];
    out.text[o] = '\0';
    return out;
}

} // namespace bex::logging

#ifndef BEX_SOURCE_ROOT
#define BEX_SOURCE_ROOT ""
#endif

// The calling file's project-relative path without extension.
#define BEX_SOURCE_NAME                                                                                      \
    ([]() -> const char * {                                                                                  \
        static constexpr auto name = ::bex::logging::trimSourcePath(__FILE__, BEX_SOURCE_ROOT);              \
        return name.text;                                                                                    \
    }())

#define BEX_LOG_IMPL(category, enabledCheck, level)                                                          \
    for (bool bexLogEnabled = category().enabledCheck(); bexLogEnabled; bexLogEnabled = false)               \
    QMessageLogger(BEX_SOURCE_NAME, __LINE__, Q_FUNC_INFO, category().categoryName()).level()

#define BEX_DEBUG(category) BEX_LOG_IMPL(category, isDebugEnabled, debug)
#define BEX_INFO(category) BEX_LOG_IMPL(category, isInfoEnabled, info)
#define BEX_WARNING(category) BEX_LOG_IMPL(category, isWarningEnabled, warning)
#define BEX_CRITICAL(category) BEX_LOG_IMPL(category, isCriticalEnabled, critical)
