#pragma once

#include <QString>

// The two contents the atomic-file writer flips between, shared by the
// writer and the test that kills it.
namespace AtomicFileVersions {

// A shown name that fills most of its field, so the list file is long.
inline QString showName(int version)
{
    return (version == 0 ? QStringLiteral("旧名字 ") : QStringLiteral("新名字 ")) +
           QString(180, QLatin1Char('x'));
}

// A folder text of 256 KiB, so every write of the settings file takes time.
inline QString saveRootDir(int version)
{
    return QStringLiteral("/operator/%1/").arg(version) +
           QString(256 * 1024, QLatin1Char(version ? 'b' : 'a'));
}

} // namespace AtomicFileVersions
