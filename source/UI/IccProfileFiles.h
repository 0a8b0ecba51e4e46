#pragma once

#include <QFileInfo>
#include <QString>

// Where a chosen ICC profile is copied to.
namespace IccProfileFiles {

// The folder a profile is copied into, ending in a separator: a path with a
// file suffix stands for the folder that holds it; a folder path ending in
// neither "/" nor "\" gets "/".
QString targetDirectory(const QString &dstDir);

// The first "<base>_<n>.<suffix>" (n = 1, 2, ...) that does not exist in
// `dir`, for a profile whose name is already taken there. The base name is
// the source name up to its first dot, the suffix what follows its last dot.
QString freeAlternativeName(const QString &dir, const QFileInfo &source);

} // namespace IccProfileFiles
