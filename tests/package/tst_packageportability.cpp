// Driver packages move between machines of both platforms: a package that
// the other platform's 7-Zip made is imported here, and a package exported
// here is left for the other platform's 7-Zip to list and unpack.
//
// CTest runs this executable between two scripts (PortablePackage.cmake):
// the first packs a sample driver with the build machine's Linux 7-Zip the
// way the module does on Linux and names the package in
// BEX_FOREIGN_PACKAGE; the executable exports packages into the folder
// BEX_EXPORT_DIR; the second script lists and unpacks them with the Linux
// 7-Zip and compares every file with the samples.

#include "LogCapture.h"
#include "PackageTestSupport.h"
#include "SampleDriverFiles.h"
#include "TestAppDir.h"

#include "Config/PrinterDriverConfig.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverPackageHelper.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

using namespace PackageTestSupport;

namespace {

const QString kSample = QStringLiteral("BexUV2513_CMYKWV");
// A driver file name in Chinese: the package must carry it as UTF-8 for the
// other platform, whatever the code page of this one.
// The library's list of installed drivers, which the snapshots leave out.
const QString kRegistry = QStringLiteral("BexUIPrintParamsProcessing.json");
const QString kChineseName = QStringLiteral("平板机 UV2513");

PrinterDriverManager *manager()
{
    return PrinterDriverManager::instance();
}

QString environmentPath(const char *name)
{
    return QDir::fromNativeSeparators(qEnvironmentVariable(name));
}

} // namespace

class TestPackagePortability : public QObject
{
    Q_OBJECT

private:
    bool resetAppDir()
    {
        manager()->unload();
        if (!SampleDriverFiles::restage())
            return false;
        TestAppDir::remove(QStringLiteral("PrinterDriverConfig.ini"));
        TestAppDir::remove(QStringLiteral("cache"));
        PrinterDriverConfig::instance()->readConfig();
        if (!manager()->load())
            return false;
        manager()->obtainInstalledDrivers();
        return true;
    }

private slots:
    void init() { QVERIFY(resetAppDir()); }

    void cleanupTestCase() { manager()->unload(); }

    void import_acceptsAPackageOfTheOtherPlatform()
    {
        const QString package = environmentPath("BEX_FOREIGN_PACKAGE");
        QVERIFY2(QFileInfo(package).isFile(),
                 qPrintable(QStringLiteral("BEX_FOREIGN_PACKAGE names no package: \"%1\" (run through CTest)")
                                .arg(package)));
        const QMap<QString, QByteArray> samples =
            snapshot(TestAppDir::filePath(QStringLiteral("dtp")), {kRegistry});
        // A machine that has never seen the driver.
        manager()->unload();
        QVERIFY(TestAppDir::remove(QStringLiteral("dtp")));
        QVERIFY(QDir().mkpath(TestAppDir::filePath(QStringLiteral("dtp"))));
        QVERIFY(manager()->load());
        QVERIFY(manager()->obtainInstalledDrivers().isEmpty());
        LogCapture log;
        MessageBoxAnswerer answerer(QStringLiteral("否"));

        QStringList prsFiles;
        QVERIFY2(PrinterDriverPackageHelper(nullptr).importPackage(package, prsFiles),
                 qPrintable(log.dump()));

        QCOMPARE(answerer.texts(), QStringList());
        QCOMPARE(log.count(QtCriticalMsg, QString()), 0);
        QCOMPARE(prsFiles, QStringList{SampleDriverFiles::prsPath(kSample)});
        const QMap<QString, QByteArray> imported =
            snapshot(TestAppDir::filePath(QStringLiteral("dtp")), {kRegistry});
        QVERIFY(imported.size() > 3);
        for (auto it = imported.cbegin(); it != imported.cend(); ++it)
            QVERIFY2(samples.value(it.key()) == it.value(), qPrintable(it.key()));
        QVERIFY(imported.contains(QStringLiteral("driver/BexUV2513_CMYKWV.pdv")));
        QVERIFY(imported.contains(QStringLiteral("bin/ICC Profile/RGB/Bex sRGB v4.icc")));
        const auto driver = manager()->installDriver(prsFiles.first());
        QVERIFY(driver);
        QCOMPARE(driver->prsPath, SampleDriverFiles::prsPath(kSample));
    }

    void export_writesPackagesForTheOtherPlatform()
    {
        const QString folder = environmentPath("BEX_EXPORT_DIR");
        QVERIFY2(!folder.isEmpty(), "BEX_EXPORT_DIR names no folder (run through CTest)");
        QVERIFY(QDir(folder).removeRecursively());
        QVERIFY(QDir().mkpath(folder));
        const auto driver = manager()->installDriver(SampleDriverFiles::prsPath(kSample));
        QVERIFY(driver);
        LogCapture log;
        PrinterDriverPackageHelper helper(nullptr);

        QVERIFY(
            helper.exportPackage(folder + QStringLiteral("/sample.bex_driver"), driver->prsPath, driver->id));

        // The same driver under a Chinese file name.
        const auto read = helper.readDriverInfo(driver->id);
        QVERIFY(read);
        PrinterDriverPackageHelper::Package package = *read;
        package.prsFilePath =
            TestAppDir::filePath(QStringLiteral("dtp/driver/") + kChineseName + QStringLiteral(".prs"));
        QVERIFY(QFile::copy(driver->prsPath, package.prsFilePath));
        QVERIFY(helper.encode(folder + QStringLiteral("/chinese.bex_driver"),
                              TestAppDir::filePath(QStringLiteral("cache/export/chinese/")), package));
        QCOMPARE(log.count(QtCriticalMsg, QString()), 0);
        QVERIFY(QFileInfo(folder + QStringLiteral("/sample.bex_driver")).size() > 0);
        QVERIFY(QFileInfo(folder + QStringLiteral("/chinese.bex_driver")).size() > 0);
        // Every name reads as the UTF-8 text it was written as, whatever
        // code page the archive stores it in: as UTF-8 (7-Zip elsewhere), or
        // in 936 with its UTF-8 form beside it (7-Zip for Windows).
        QFile chinese(folder + QStringLiteral("/chinese.bex_driver"));
        QVERIFY(chinese.open(QIODevice::ReadOnly));
        const QByteArray bytes = chinese.readAll();
        QVERIFY(bytes.contains(QString(kChineseName + QStringLiteral("/driver/") + kChineseName).toUtf8()));
        QCOMPARE(PrinterDriverPackageHelper::storedNamesRefusalReason(chinese.fileName()), QString());
        // This platform's 7-Zip lists the Chinese name as it was written.
        const QStringList entries = archiveEntries(folder + QStringLiteral("/chinese.bex_driver"));
        QVERIFY2(entries.contains(kChineseName + QStringLiteral("/driver/") + kChineseName +
                                  QStringLiteral(".prs")),
                 qPrintable(entries.join(QLatin1Char('\n'))));
    }
};

QTEST_MAIN(TestPackagePortability)
#include "tst_packageportability.moc"
