#include "UI/IccProfileFiles.h"

namespace IccProfileFiles {

QString targetDirectory(const QString &dstDir)
{
    const QFileInfo info(dstDir);
    QString dir = info.completeSuffix().isEmpty() ? info.absoluteFilePath() : info.absolutePath();
    if (!dir.endsWith(QLatin1Char('/')) && !dir.endsWith(QLatin1Char('\\')))
        dir += QLatin1Char('/');
    return dir;
}

QString freeAlternativeName(const QString &dir, const QFileInfo &source)
{
    const QString stem = dir + source.baseName() + QLatin1Char('_');
    const QString suffix = QLatin1Char('.') + source.suffix();
    for (int n = 1;; ++n) {
        const QString candidate = stem + QString::number(n) + suffix;
        if (!QFileInfo::exists(candidate))
            return candidate;
    }
}

} // namespace IccProfileFiles
