// What installing, renaming and deleting one driver costs with few and with
// many drivers installed, and how much of it is the one atomic write of the
// installed list.
//
//   bench_driverinstall [installed counts...]   (default: 10 10000)
//
// For each count N, the application directory's "dtp/" gets a list of N - 1
// installed drivers, and a handler made on it installs the N-th driver (a
// copy of a sample), renames it and deletes it again, many times over. The
// median of each operation is printed beside the median of the list's write
// alone (DriverRegistry::save() on the same list: serialising the list and
// writing it atomically), and the difference: the cost of everything but
// the write, which must not grow with N.
//
// Two clocks: the thread's CPU time, which a busy machine hardly disturbs,
// and the wall clock, which includes waiting for the disk (the atomic write
// syncs the file) and for a processor. With BEX_BENCH_DTP set to a folder
// (for example one on a tmpfs), "dtp/" is a link to it, taking the disk out
// of the wall-clock figures.

#include "DriverRegistry.h"

#include <IUIPrintParamsHandler.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QSaveFile>
#include <QUuid>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr int kRounds = 41;

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

// CPU time of the calling thread in microseconds.
double threadCpuMicroseconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e6 + double(now.tv_nsec) / 1e3;
}

struct Timing
{
    double cpu = 0;  // median thread CPU time, microseconds
    double wall = 0; // median wall-clock time, microseconds
};

// Medians of op over kRounds rounds; between rounds, reset runs untimed.
Timing timeMedian(const std::function<bool()> &op, const std::function<bool()> &reset)
{
    std::vector<double> cpu;
    std::vector<double> wall;
    for (int round = 0; round < kRounds; ++round) {
        QElapsedTimer timer;
        const double cpuStart = threadCpuMicroseconds();
        timer.start();
        const bool ok = op();
        wall.push_back(double(timer.nsecsElapsed()) / 1000.0);
        cpu.push_back(threadCpuMicroseconds() - cpuStart);
        if (!ok || !reset()) {
            std::fprintf(stderr, "an operation failed in round %d\n", round);
            std::exit(1);
        }
    }
    return {median(cpu), median(wall)};
}

// A list of count installed drivers in the library's list format, written
// at once rather than by count installs (each of which writes the list).
bool writeInstalledList(const QString &file, const QString &prsFolder, int count)
{
    QJsonArray drivers;
    for (int i = 0; i < count; ++i) {
        const QString name = QStringLiteral("Bex UV3220 %1").arg(i);
        drivers.append(
            QJsonObject{{QStringLiteral("id"), QUuid::createUuid().toString(QUuid::WithoutBraces)},
                        {QStringLiteral("name"), name},
                        {QStringLiteral("showName"), name},
                        {QStringLiteral("prs"), prsFolder + QStringLiteral("/installed_%1.prs").arg(i)}});
    }
    const QJsonObject root{{QStringLiteral("format"), QStringLiteral("BexInstalledPrinterDrivers")},
                           {QStringLiteral("drivers"), drivers}};
    QSaveFile out(file);
    const QByteArray data = QJsonDocument(root).toJson(QJsonDocument::Indented);
    return out.open(QIODevice::WriteOnly) && out.write(data) == data.size() && out.commit();
}

struct Figures
{
    int installed = 0;
    qint64 listBytes = 0;
    Timing write;
    Timing install;
    Timing rename;
    Timing remove;
};

// Makes "dtp/" of the application directory empty, or a link to an empty
// folder elsewhere; its path.
QString prepareDtp()
{
    const QString dtp = QCoreApplication::applicationDirPath() + QStringLiteral("/dtp");
    const QString elsewhere = qEnvironmentVariable("BEX_BENCH_DTP");
    QFile::remove(dtp);
    QDir(dtp).removeRecursively();
    if (elsewhere.isEmpty())
        return QDir().mkpath(dtp) ? dtp : QString();
    QDir(elsewhere).removeRecursively();
    if (!QDir().mkpath(elsewhere) || !QFile::link(elsewhere, dtp))
        return QString();
    return dtp;
}

bool measure(int installed, Figures &figures)
{
    const QString dtpPath = prepareDtp();
    QDir dtp(dtpPath);
    if (dtpPath.isEmpty() || !dtp.mkpath(QStringLiteral("driver")))
        return false;
    const QString listFile = dtp.filePath(QStringLiteral("BexUIPrintParamsProcessing.json"));
    const QString prs = dtp.filePath(QStringLiteral("driver/new.prs"));
    if (!writeInstalledList(listFile, dtp.filePath(QStringLiteral("driver")), installed - 1) ||
        !QFile::copy(QStringLiteral(BEX_SAMPLE_DRIVERS_DIR "/driver/BexUV3220_8C.prs"), prs))
        return false;

    IUIPrintParamsHandler *handler = CreateUIPrintParamsHandler();
    if (!handler)
        return false;
    const std::string path = prs.toLocal8Bit().toStdString();
    std::string id;
    const auto install = [&] {
        const printerInfoItem *item = handler->AddPrinterDriverPrs(path.c_str(), 0);
        if (item)
            id = item->piiId;
        return item != nullptr;
    };
    const auto remove = [&] { return handler->DeletePrinterDriverPrs(id.c_str()); };
    const auto rename = [&] { return handler->RechristenDriverShowName(id.c_str(), "UV3220 车间二号"); };
    const auto nothing = [] { return true; };

    figures.installed = installed;
    figures.install = timeMedian(install, remove);
    if (!install())
        return false;
    figures.rename = timeMedian(rename, nothing);
    figures.remove = timeMedian(remove, install);
    figures.listBytes = QFileInfo(listFile).size();
    DestroyUIPrintParamsHandler(handler);

    // The write alone: the same list, written as every change writes it.
    bex::printparams::DriverRegistry registry(listFile);
    if (!registry.load() || registry.size() != installed)
        return false;
    figures.write = timeMedian([&] { return registry.save(); }, nothing);
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("bex.*.debug=false"));
    std::vector<int> counts;
    for (int i = 1; i < argc; ++i)
        counts.push_back(std::max(1, QByteArray(argv[i]).toInt()));
    if (counts.empty())
        counts = {10, 10000};

    std::vector<Figures> all;
    for (const int count : counts) {
        Figures f;
        if (!measure(count, f)) {
            std::fprintf(stderr, "could not measure with %d drivers\n", count);
            return 1;
        }
        all.push_back(f);
    }
    const auto table = [&](const char *title, double Timing::*clock) {
        std::printf("%s: median of %d rounds, microseconds\n", title, kRounds);
        std::printf("%9s %11s %9s | %9s %9s | %9s %9s | %9s %9s\n", "installed", "list bytes", "write",
                    "install", "- write", "rename", "- write", "delete", "- write");
        for (const Figures &f : all) {
            const double write = f.write.*clock;
            std::printf("%9d %11lld %9.0f | %9.0f %9.0f | %9.0f %9.0f | %9.0f %9.0f\n", f.installed,
                        static_cast<long long>(f.listBytes), write, f.install.*clock,
                        f.install.*clock - write, f.rename.*clock, f.rename.*clock - write, f.remove.*clock,
                        f.remove.*clock - write);
        }
    };
    table("thread CPU time", &Timing::cpu);
    table("wall clock", &Timing::wall);
    return 0;
}
