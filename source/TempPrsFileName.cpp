#include "TempPrsFileName.h"

#include <QCoreApplication>
#include <QDateTime>

#include <atomic>
#include <cstdint>
#include <mutex>

qint64 cachedProcessId()
{
    static std::once_flag once;
    static qint64 pid = 0;
    std::call_once(once, [] { pid = QCoreApplication::applicationPid(); });
    return pid;
}

namespace {

std::atomic<std::uint32_t> sequence{0};

} // namespace

QString makeTempPrsFilePath(const QString &dtpBinDir)
{
    const qint64 now = QDateTime::currentDateTimeUtc().toMSecsSinceEpoch();
    const std::uint32_t number = sequence.fetch_add(1);
    const QString name =
        QStringLiteral("%1_%2_%3").arg(now, 0, 10).arg(cachedProcessId(), 0, 10).arg(number, 0, 10);
    QString path = dtpBinDir + name + QStringLiteral(".temp.prs");
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return path;
}
