#include "TestAppDir.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace TestAppDir {

QString path()
{
    return QCoreApplication::applicationDirPath();
}

QString filePath(const QString &relative)
{
    return path() + QLatin1Char('/') + relative;
}

bool remove(const QString &relative)
{
    const QString target = filePath(relative);
    const QFileInfo info(target);
    if (info.isDir())
        QDir(target).removeRecursively();
    else if (info.exists() || info.isSymLink())
        QFile::remove(target);
    return !QFileInfo::exists(target);
}

bool writeFile(const QString &relative, const QByteArray &content)
{
    const QString target = filePath(relative);
    if (!QDir().mkpath(QFileInfo(target).absolutePath()))
        return false;
    QFile file(target);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return file.write(content) == content.size();
}

QByteArray readFile(const QString &relative)
{
    QFile file(filePath(relative));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

} // namespace TestAppDir
