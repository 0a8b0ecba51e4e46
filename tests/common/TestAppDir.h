#pragma once

#include <QString>

// The test executable's own application directory (see BexTesting.cmake).
// The module finds its settings file, cache/ and dtp/ there.
namespace TestAppDir {

QString path();
// Absolute path of a file or folder below the application directory.
QString filePath(const QString &relative);
// Removes a file or a whole folder below the application directory; true
// when it is gone afterwards.
bool remove(const QString &relative);
// Writes a file below the application directory, creating its folders.
bool writeFile(const QString &relative, const QByteArray &content);
QByteArray readFile(const QString &relative);

} // namespace TestAppDir
