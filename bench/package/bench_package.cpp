// Export and import of a driver whose ICC profiles total 200 MB, beside the
// archiver alone packing and unpacking the same files in the same run.
//
//   bench_package
// BEX_BENCH_PROFILE_MB sets the profiles' total (default 200),
// BEX_BENCH_ROUNDS the number of rounds (default 3, the order of the
// two packs alternating); the median of the
// rounds is reported for each of the four operations, and the ratios
// (export / bare pack, import / bare unpack, both together).

#include "Config/PrinterDriverConfig.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverPackageHelper.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>

namespace {

const QString kDriver = QStringLiteral("BexUV2513_CMYKWV");

QString appPath(const QString &relative)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + relative;
}

// Writes size bytes that do not compress, as measured profiles of a real
// device barely do.
bool writeNoise(const QString &path, qint64 size, quint32 seed)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    QRandomGenerator generator(seed);
    QVector<quint32> block(1 << 18);
    for (qint64 written = 0; written < size;) {
        generator.fillRange(block.data(), block.size());
        const qint64 chunk = qMin<qint64>(size - written, qint64(block.size()) * 4);
        if (file.write(reinterpret_cast<const char *>(block.constData()), chunk) != chunk)
            return false;
        written += chunk;
    }
    return true;
}

qint64 runArchiver(const QStringList &arguments)
{
    QElapsedTimer timer;
    timer.start();
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(PrinterDriverPackageHelper::archiverPath(), arguments);
    process.waitForFinished(-1);
    return process.exitCode() == 0 ? timer.elapsed() : -1;
}

qint64 median(QVector<qint64> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

} // namespace

class BenchPackage : public QObject
{
    Q_OBJECT

private slots:
    void exportAndImportBesideBareArchiver()
    {
        const int totalMb = qEnvironmentVariableIntValue("BEX_BENCH_PROFILE_MB") > 0
                                ? qEnvironmentVariableIntValue("BEX_BENCH_PROFILE_MB")
                                : 200;
        const int rounds = qEnvironmentVariableIntValue("BEX_BENCH_ROUNDS") > 0
                               ? qEnvironmentVariableIntValue("BEX_BENCH_ROUNDS")
                               : 3;
        PrinterDriverManager *manager = PrinterDriverManager::instance();
        QVERIFY(manager->getHandler());
        const QString prs = appPath(QStringLiteral("dtp/driver/") + kDriver + QStringLiteral(".prs"));
        PrinterDriverManager::DriverInfoPtr driver = manager->findDriverInfoByPrsPath(prs);
        if (!driver)
            driver = manager->installDriver(prs);
        QVERIFY(driver);

        // The driver's profiles, made large.
        PrinterDriverPackageHelper helper(nullptr);
        const auto read = helper.readDriverInfo(driver->id);
        QVERIFY(read);
        const PrinterDriverPackageHelper::Package files = *read;
        QStringList profiles = files.rgbIccFilePaths + files.cmykIccFilePaths + files.outputIccFilePaths;
        profiles.removeDuplicates();
        QVERIFY(!profiles.isEmpty());
        const qint64 each = qint64(totalMb) * 1024 * 1024 / profiles.size();
        for (int i = 0; i < profiles.size(); ++i)
            QVERIFY(writeNoise(profiles.at(i), each, quint32(i + 1)));
        qInfo("profiles: %d files, %lld bytes in all", int(profiles.size()), each * profiles.size());

        // The same files as a package holds them, for the archiver alone.
        const QString bare = appPath(QStringLiteral("bench-bare/"));
        QDir(bare).removeRecursively();
        const QString dtp = PrinterDriverConfig::instance()->dtpDir();
        QStringList all = {prs, files.pdvFilePath};
        all << profiles;
        for (const QString &file : qAsConst(all)) {
            const QString target = bare + kDriver + QLatin1Char('/') + file.mid(dtp.size());
            QVERIFY(QDir().mkpath(QFileInfo(target).absolutePath()));
            QVERIFY(QFile::copy(file, target));
        }

        QVector<qint64> exportTimes;
        QVector<qint64> importTimes;
        QVector<qint64> packTimes;
        QVector<qint64> unpackTimes;
        const QString package = appPath(QStringLiteral("bench.bex_driver"));
        const QString barePackage = appPath(QStringLiteral("bench-bare.zip"));
        const QString bareOut = appPath(QStringLiteral("bench-bare-out/"));
        for (int round = 0; round < rounds; ++round) {
            QFile::remove(package);
            QFile::remove(barePackage);
            QDir(bareOut).removeRecursively();

            // Which of the two packs first alternates, so that neither
            // always meets a cold cache or a busier machine.
            const auto exportOnce = [&]() {
                QElapsedTimer timer;
                timer.start();
                const bool exported = helper.exportPackage(package, prs, driver->id);
                exportTimes.append(timer.elapsed());
                return exported && QFileInfo(package).isFile();
            };
            const auto packOnce = [&]() {
                const qint64 pack = runArchiver({QStringLiteral("a"), QStringLiteral("-tzip"), barePackage,
                                                 bare + kDriver + QLatin1Char('/')});
                packTimes.append(pack);
                return pack >= 0;
            };
            if (round % 2 == 0) {
                QVERIFY(exportOnce());
                QVERIFY(packOnce());
            } else {
                QVERIFY(packOnce());
                QVERIFY(exportOnce());
            }

            // The import replaces every file but the .prs, which it adds under
            // a new name; the overwrite question has no one to answer it here,
            // so the installed files are moved out of the way first.
            for (const QString &file : qAsConst(all))
                QFile::remove(file);
            QStringList imported;
            QElapsedTimer timer;
            timer.start();
            QVERIFY(helper.importPackage(package, imported));
            importTimes.append(timer.elapsed());
            QCOMPARE(imported, QStringList{prs});

            const qint64 unpack =
                runArchiver({QStringLiteral("x"), barePackage, QStringLiteral("-o") + bareOut});
            QVERIFY(unpack >= 0);
            unpackTimes.append(unpack);
        }
        const qint64 exportMs = median(exportTimes);
        const qint64 importMs = median(importTimes);
        const qint64 packMs = median(packTimes);
        const qint64 unpackMs = median(unpackTimes);
        qInfo("export %lld ms, bare pack %lld ms, ratio %.3f", exportMs, packMs, double(exportMs) / packMs);
        qInfo("import %lld ms, bare unpack %lld ms, ratio %.3f", importMs, unpackMs,
              double(importMs) / unpackMs);
        qInfo("export + import %lld ms, bare pack + unpack %lld ms, ratio %.3f", exportMs + importMs,
              packMs + unpackMs, double(exportMs + importMs) / (packMs + unpackMs));
        QFile::remove(package);
        QFile::remove(barePackage);
        QDir(bareOut).removeRecursively();
        QDir(bare).removeRecursively();
        manager->unload();
    }
};

QTEST_GUILESS_MAIN(BenchPackage)
#include "bench_package.moc"
