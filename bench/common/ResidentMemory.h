#pragma once

// The resident memory of this process in KiB, or -1 when it cannot be read:
// the working set on Windows, the resident set from /proc/self/statm
// elsewhere.

#include <QtGlobal>

#ifdef Q_OS_WIN
#include <qt_windows.h>

#include <psapi.h>
#else
#include <QFile>
#include <QList>

#include <unistd.h>
#endif

inline long residentKiB()
{
#ifdef Q_OS_WIN
    PROCESS_MEMORY_COUNTERS counters = {};
    if (!::GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof(counters)))
        return -1;
    return long(counters.WorkingSetSize / 1024);
#else
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return -1;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields.at(1).toLong() * (::sysconf(_SC_PAGESIZE) / 1024) : -1;
#endif
}
