// What installing, renaming and deleting one driver costs with few and with
// many drivers installed, and how much of it is the one atomic write of the
// installed list.
//
//   bench_driverinstall [installed counts...]   (default: 10 10000)
//
// For each count N, the application directory's "dtp/" gets a list of N - 1
// installed drivers, and a handler made on it installs the N-th driver (a
// copy of a sample), renames it and deletes it again, many times over. Each
// round times the operation between two writes alone of a twin list of N
// drivers (DriverRegistry::save(): serialising the list and writing it
// atomically, as every change does). Printed are the medians of the
// operation, of the write (the mean of the round's two) and of the
// per-round difference: the cost of everything but the write, which must
// not grow with N.
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

// One clock's medians, microseconds.
struct Medians
{
    double op = 0;
    double write = 0;
    double beyondWrite = 0; // of the per-round differences op - write
};

struct Timing
{
    Medians cpu;  // thread CPU time
    Medians wall; // wall clock
};

struct Sample
{
    double cpu = 0;
    double wall = 0;
};

Sample timeOnce(const std::function<bool()> &op, bool &ok)
{
    QElapsedTimer timer;
    const double cpuStart = threadCpuMicroseconds();
    timer.start();
    ok = op();
    const double wall = double(timer.nsecsElapsed()) / 1000.0;
    return {threadCpuMicroseconds() - cpuStart, wall};
}

Medians medians(const std::vector<double> &op, const std::vector<double> &write)
{
    std::vector<double> beyond;
    for (std::size_t i = 0; i < op.size(); ++i)
        beyond.push_back(op.at(i) - write.at(i));
    return {median(op), median(write), median(beyond)};
}

// write, op and write again, each timed, in kRounds rounds; the write of a
// round is the mean of its two, so that neither side has the warmer caches.
// Between rounds, reset runs untimed.
Timing timeRounds(const std::function<bool()> &op, const std::function<bool()> &write,
                  const std::function<bool()> &reset)
{
    std::vector<double> opCpu, opWall, writeCpu, writeWall;
    for (int round = 0; round < kRounds; ++round) {
        bool opOk = false;
        bool writeOk = false;
        bool writeAgainOk = false;
        const Sample before = timeOnce(write, writeOk);
        const Sample a = timeOnce(op, opOk);
        const Sample after = timeOnce(write, writeAgainOk);
        opCpu.push_back(a.cpu);
        opWall.push_back(a.wall);
        writeCpu.push_back((before.cpu + after.cpu) / 2);
        writeWall.push_back((before.wall + after.wall) / 2);
        if (!opOk || !writeOk || !writeAgainOk || !reset()) {
            std::fprintf(stderr, "an operation failed in round %d\n", round);
            std::exit(1);
        }
    }
    return {medians(opCpu, writeCpu), medians(opWall, writeWall)};
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
    const QString twinFile = dtp.filePath(QStringLiteral("twin.json"));
    const QString prs = dtp.filePath(QStringLiteral("driver/new.prs"));
    if (!writeInstalledList(listFile, dtp.filePath(QStringLiteral("driver")), installed - 1) ||
        !writeInstalledList(twinFile, dtp.filePath(QStringLiteral("driver")), installed) ||
        !QFile::copy(QStringLiteral(BEX_SAMPLE_DRIVERS_DIR "/driver/BexUV3220_8C.prs"), prs))
        return false;
    bex::printparams::DriverRegistry twin(twinFile);
    if (!twin.load() || twin.size() != installed)
        return false;
    const auto write = [&] { return twin.save(); };

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
    figures.install = timeRounds(install, write, remove);
    if (!install())
        return false;
    figures.rename = timeRounds(rename, write, nothing);
    figures.remove = timeRounds(remove, write, install);
    figures.listBytes = QFileInfo(listFile).size();
    DestroyUIPrintParamsHandler(handler);
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
    const auto table = [&](const char *title, Medians Timing::*clock) {
        std::printf("%s: medians of %d rounds, microseconds; \"beyond\" is the median of op - write\n", title,
                    kRounds);
        std::printf("%9s %11s | %8s %8s %8s | %8s %8s %8s | %8s %8s %8s\n", "installed", "list bytes",
                    "install", "write", "beyond", "rename", "write", "beyond", "delete", "write", "beyond");
        for (const Figures &f : all) {
            const Medians &i = f.install.*clock;
            const Medians &r = f.rename.*clock;
            const Medians &d = f.remove.*clock;
            std::printf("%9d %11lld | %8.0f %8.0f %8.0f | %8.0f %8.0f %8.0f | %8.0f %8.0f %8.0f\n",
                        f.installed, static_cast<long long>(f.listBytes), i.op, i.write, i.beyondWrite, r.op,
                        r.write, r.beyondWrite, d.op, d.write, d.beyondWrite);
        }
    };
    table("thread CPU time", &Timing::cpu);
    table("wall clock", &Timing::wall);
    return 0;
}
