#include "SampleDriverFiles.h"

#include "TestAppDir.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace SampleDriverFiles {

bool restage()
{
    if (!TestAppDir::remove(QStringLiteral("dtp")))
        return false;
    const QDir source(QStringLiteral(BEX_SAMPLE_DRIVERS_DIR));
    const QString target = TestAppDir::filePath(QStringLiteral("dtp"));
    QDirIterator it(source.path(), QDir::Files, QDirIterator::Subdirectories);
    int copied = 0;
    while (it.hasNext()) {
        const QString from = it.next();
        const QString to = target + QLatin1Char('/') + source.relativeFilePath(from);
        if (!QDir().mkpath(QFileInfo(to).absolutePath()) || !QFile::copy(from, to))
            return false;
        ++copied;
    }
    return copied > 0;
}

QString prsPath(const QString &baseName)
{
    return TestAppDir::filePath(QStringLiteral("dtp/driver/") + baseName + QStringLiteral(".prs"));
}

QString registryPath()
{
    return TestAppDir::filePath(QStringLiteral("dtp/BexUIPrintParamsProcessing.json"));
}

} // namespace SampleDriverFiles
