#pragma once

// How the path of an installed driver's .prs file is kept and compared.
//
// The module's driver manager and the print-parameter library both use these
// two functions, so that a path the library stores and a path the manager
// looks up name the same file in the same way. Header only: the library
// shares it without linking the module, and the module without knowing the
// library's insides.

#include <QDir>
#include <QFileInfo>
#include <QString>

namespace bex {

// The path made absolute (against the working folder) and cleaned: "." and
// ".." components and repeated separators removed, '/' as the separator.
// Links are not resolved, so a path whose file has gone keeps its form.
// Empty stays empty.
inline QString absoluteCleanPath(const QString &path)
{
    if (path.isEmpty())
        return QString();
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

// The key under which paths of the same file meet: the absolute clean path,
// compared ignoring case, as Windows, where the drivers come from, compares
// file names.
inline QString prsPathKey(const QString &path)
{
    return absoluteCleanPath(path).toCaseFolded();
}

} // namespace bex
