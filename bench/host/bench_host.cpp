// What a host pays for the driver UI module, measured the way a host meets
// it: the module loaded at run time from the application directory.
//
//   bench_host [runs]
//
// 1. Loading the module and Initialize() with the sample drivers installed:
//    every run is a fresh process (a library loads once per process), which
//    times QLibrary::load() of the module, with the print-parameter library
//    it pulls in, plus Initialize(), which makes the handler and lists the
//    installed drivers. Target: under 20 ms.
// 2. serialize() plus unserialize() of a driver against bare QJsonDocument
//    work on the same bytes (parse them, write them back compact). Target:
//    within 1.2 times.
// Prints the figures and whether each target is met; exits non-zero when one
// is missed.

#include "DriverUiExports.h"
#include "IUIPrintParamsHandler.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibrary>
#include <QLoggingCategory>
#include <QProcess>
#include <QTextStream>

#include <algorithm>
#include <vector>

namespace {

QTextStream &out()
{
    static QTextStream stream(stdout);
    return stream;
}

QString appDir()
{
    return QCoreApplication::applicationDirPath();
}

QString moduleFile()
{
    return QStringLiteral(BEX_MODULE_FILE);
}

// Installs the sample drivers with the print-parameter library itself, as an
// earlier session would have left them, and unloads it again.
bool installSamples()
{
    QFile::remove(appDir() + QStringLiteral("/dtp/BexUIPrintParamsProcessing.json"));
    QFile::remove(appDir() + QStringLiteral("/PrinterDriverConfig.ini"));
    // Resolved at run time: linked, the library would stay loaded in the
    // timed runs below.
    QLibrary library(QStringLiteral(BEX_PRINTPARAMS_FILE));
    using Create = IUIPrintParamsHandler *(*)();
    using Destroy = void (*)(IUIPrintParamsHandler *);
    const auto create = reinterpret_cast<Create>(library.resolve("CreateUIPrintParamsHandler"));
    const auto destroy = reinterpret_cast<Destroy>(library.resolve("DestroyUIPrintParamsHandler"));
    IUIPrintParamsHandler *handler = create && destroy ? create() : nullptr;
    if (!handler)
        return false;
    int installed = 0;
    const QStringList samples =
        QDir(appDir() + QStringLiteral("/dtp/driver")).entryList({QStringLiteral("*.prs")});
    for (const QString &name : samples) {
        const QString path = appDir() + QStringLiteral("/dtp/driver/") + name;
        if (handler->AddPrinterDriverPrs(path.toLocal8Bit().constData(), 0))
            ++installed;
    }
    destroy(handler);
    library.unload();
    out() << "installed " << installed << " sample drivers\n";
    return installed > 0;
}

// One fresh process: load the module and initialise it; prints nanoseconds.
int timeLoadOnce()
{
    QElapsedTimer timer;
    timer.start();
    QLibrary module(moduleFile());
    DriverUiExports exports;
    if (!module.load() || !exports.resolve(module) || !exports.initialize())
        return 1;
    const qint64 elapsed = timer.nsecsElapsed();
    exports.unInitialize();
    out() << elapsed << '\n';
    return 0;
}

bool benchLoad(int runs)
{
    std::vector<double> ms;
    for (int i = 0; i < runs; ++i) {
        QProcess child;
        child.setProcessChannelMode(QProcess::SeparateChannels);
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--time-load-once")});
        if (!child.waitForFinished(30000) || child.exitCode() != 0) {
            out() << "a run failed: " << child.readAllStandardError() << '\n';
            return false;
        }
        const QList<QByteArray> lines = child.readAllStandardOutput().trimmed().split('\n');
        ms.push_back(lines.last().toLongLong() / 1e6);
    }
    std::sort(ms.begin(), ms.end());
    const double median = ms[ms.size() / 2];
    const bool met = median < 20.0;
    out() << QStringLiteral("load + Initialize (%1 fresh processes): min %2 ms, median %3 ms, max %4 ms; "
                            "target < 20 ms: %5\n")
                 .arg(runs)
                 .arg(ms.front(), 0, 'f', 2)
                 .arg(median, 0, 'f', 2)
                 .arg(ms.back(), 0, 'f', 2)
                 .arg(met ? QStringLiteral("met") : QStringLiteral("MISSED"));
    return met;
}

// Nanoseconds per call of n calls of work.
template <typename Work>
double perCall(int n, Work work)
{
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < n; ++i)
        work();
    return double(timer.nsecsElapsed()) / n;
}

bool benchSerialization()
{
    QLibrary module(moduleFile());
    DriverUiExports exports;
    if (!module.load() || !exports.resolve(module) || !exports.initialize())
        return false;
    IRipEngineDriverUI *ui = exports.create();

    const QByteArray saved =
        R"({"info":{"modeId":3,"prsFilePath":"D:/app/dtp/bin/1700000000000_4242_0.temp.prs"},)"
        R"("meta":{"mainVersion":1,"subVersion":0,"type":"BexRipEngine_RipServer"}})";
    const QSharedPointer<IRipEngine::IDriver> driver = ui->unserialize(saved);
    const QByteArray bytes = ui->serialize(driver);
    if (bytes != saved)
        return false;

    // The module logs a trace line per unserialize(); as in a host that has
    // switched its debug lines off.
    QLoggingCategory::setFilterRules(QStringLiteral("bex.*.debug=false"));
    constexpr int calls = 20000;
    volatile qsizetype sink = 0;
    // The two alternate round by round, so that both meet the same load of
    // the machine; the best round of each counts.
    double module_ns = 1e300;
    double bare_ns = 1e300;
    for (int round = 0; round < 15; ++round) {
        module_ns = std::min(module_ns, perCall(calls, [&]() {
                                 const QSharedPointer<IRipEngine::IDriver> restored = ui->unserialize(bytes);
                                 sink = sink + ui->serialize(restored).size();
                             }));
        bare_ns = std::min(bare_ns, perCall(calls, [&]() {
                               const QJsonDocument document = QJsonDocument::fromJson(bytes);
                               sink = sink + document.toJson(QJsonDocument::Compact).size();
                           }));
    }
    const double ratio = module_ns / bare_ns;
    const bool met = ratio <= 1.2;
    out() << QStringLiteral(
                 "serialize + unserialize: %1 us per driver; bare QJsonDocument parse + write: %2 us; "
                 "ratio %3, target <= 1.2: %4\n")
                 .arg(module_ns / 1000, 0, 'f', 3)
                 .arg(bare_ns / 1000, 0, 'f', 3)
                 .arg(ratio, 0, 'f', 3)
                 .arg(met ? QStringLiteral("met") : QStringLiteral("MISSED"));
    exports.destroy(ui);
    exports.unInitialize();
    return met;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.contains(QStringLiteral("--time-load-once")))
        return timeLoadOnce();

    const int runs = args.size() > 1 ? std::max(1, args.at(1).toInt()) : 25;
    if (!installSamples()) {
        out() << "cannot install the sample drivers\n";
        return 1;
    }
    const bool load = benchLoad(runs);
    const bool serialization = benchSerialization();
    return load && serialization ? 0 : 1;
}
