#pragma once

#include <QString>

// Names the temporary copy of a driver's .prs file made for one job:
//   <dtpBinDir><UTC ms since epoch>_<process id>_<sequence>.temp.prs
// with every backslash turned into a slash. The process id is read once and
// cached; the sequence number is a process-wide counter taken atomically, so
// two names made in the same millisecond, from any thread, differ.
QString makeTempPrsFilePath(const QString &dtpBinDir);

// The process id, read once per process.
qint64 cachedProcessId();
