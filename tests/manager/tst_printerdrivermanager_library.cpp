// PrinterDriverManager with the open print-parameter library and the sample
// drivers: the default driver survives a restart through the settings file,
// and listing uninstalls drivers whose .prs file has gone.

#include "LogCapture.h"
#include "SampleDriverFiles.h"
#include "TestAppDir.h"

#include "Config/PrinterDriverConfig.h"
#include "UI/PrinterDriverManager.h"

#include <IUIPrintParamsHandler.h>

#include <QFile>
#include <QSettings>
#include <QtTest>

#include <list>

class TestPrinterDriverManagerWithLibrary : public QObject
{
    Q_OBJECT

private:
    PrinterDriverManager *manager() const { return PrinterDriverManager::instance(); }

    // Simulates a restart of the host: the handler is destroyed, the settings
    // are read from the file again, a new handler is made and the drivers
    // are listed.
    QVector<PrinterDriverManager::DriverInfoPtr> restart()
    {
        manager()->unload();
        PrinterDriverConfig::instance()->readConfig();
        if (!manager()->load())
            return {};
        return manager()->obtainInstalledDrivers();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(SampleDriverFiles::restage());
        TestAppDir::remove(QStringLiteral("PrinterDriverConfig.ini"));
        // First use: the manager makes its handler and lists no drivers.
        QVERIFY(manager()->getHandler());
        QVERIFY(manager()->obtainInstalledDrivers().isEmpty());
    }

    void cleanupTestCase() { manager()->unload(); }

    void defaultDriver_survivesARestart()
    {
        const QString prs = SampleDriverFiles::prsPath(QStringLiteral("BexUV2513_CMYKWV"));
        const auto installed = manager()->installDriver(prs);
        QVERIFY(installed);
        QCOMPARE(installed->name, QStringLiteral("Bex UV2513 CMYK+W+V"));
        QCOMPARE(installed->showName, installed->name);
        QCOMPARE(installed->prsPath, prs);
        QCOMPARE(manager()->findDriverInfoByPrsPath(prs), installed);

        QVERIFY(manager()->setDefaultDriverId(installed->id));
        QSettings settings(PrinterDriverConfig::instance()->configFilePath(), QSettings::IniFormat);
        QCOMPARE(settings.value(QStringLiteral("defaultDriverId")).toString(), installed->id);

        const auto listed = restart();

        QVERIFY(manager()->getHandler());
        QCOMPARE(listed.size(), 1);
        QCOMPARE(listed.first()->id, installed->id);
        QCOMPARE(manager()->defaultDriverId(), installed->id);
        quint32 x = 0;
        quint32 y = 0;
        QVERIFY(manager()->getDefaultDriverDpi(x, y));
        QCOMPARE(x, 720u);
        QCOMPARE(y, 900u);
        QStringList spots;
        QVERIFY(manager()->getDefaultSpotColorSampleNameList(spots));
        QCOMPARE(spots, (QStringList{QStringLiteral("White"), QStringLiteral("Varnish")}));

        QVERIFY(manager()->setDriverShowName(installed->id, QStringLiteral("平板机 A")));
        const auto renamed = restart();
        QCOMPARE(renamed.size(), 1);
        QCOMPARE(renamed.first()->showName, QStringLiteral("平板机 A"));

        QVERIFY(manager()->deleteInstalledDriver(installed->id));
        QVERIFY(manager()->defaultDriverId().isEmpty());
        QVERIFY(restart().isEmpty());
    }

    void listing_prsFileVanished_uninstallsTheDriverFromTheLibrary()
    {
        const QString copy = TestAppDir::filePath(QStringLiteral("dtp/driver/vanishing.prs"));
        QVERIFY(QFile::copy(SampleDriverFiles::prsPath(QStringLiteral("BexUV1610_CMYKLcLm")), copy));
        const auto kept =
            manager()->installDriver(SampleDriverFiles::prsPath(QStringLiteral("BexUV3220_8C")));
        const auto vanishing = manager()->installDriver(copy);
        QVERIFY(kept);
        QVERIFY(vanishing);
        QVERIFY(QFile::remove(copy));
        LogCapture log;

        const auto listed = manager()->obtainInstalledDrivers();

        QCOMPARE(listed.size(), 1);
        QCOMPARE(listed.first()->id, kept->id);
        QVERIFY(log.contains(QtDebugMsg, QStringLiteral("DeletePrinterDriverPrs: true")));
        std::list<printerInfoItem *> items;
        manager()->getHandler()->GetAllPrinterDriverList(items);
        QCOMPARE(int(items.size()), 1);
        QCOMPARE(QString::fromLocal8Bit(items.front()->piiId), kept->id);
        QVERIFY(manager()->deleteInstalledDriver(kept->id));
    }

    void prsPaths_areStoredAbsoluteAndFoundByAnySpelling()
    {
        const QString clean = SampleDriverFiles::prsPath(QStringLiteral("BexUV1610_CMYKLcLm"));
        const QString winding =
            TestAppDir::filePath(QStringLiteral("dtp/bin/..//driver/./BexUV1610_CMYKLcLm.prs"));

        const auto installed = manager()->installDriver(winding);

        // The library stores the path absolute and clean; the manager finds
        // the driver under any spelling the library takes for the same file,
        // and the library refuses that file a second time.
        QVERIFY(installed);
        QCOMPARE(installed->prsPath, clean);
        for (const QString &spelling : {clean, winding, clean.toUpper()})
            QCOMPARE(manager()->findDriverInfoByPrsPath(spelling), installed);
        QVERIFY(!manager()->installDriver(clean.toUpper()));
        QVERIFY(!manager()->installDriver(winding));
        const auto listed = restart();
        QCOMPARE(listed.size(), 1);
        QCOMPARE(listed.first()->prsPath, clean);
        QCOMPARE(manager()->findDriverInfoByPrsPath(winding)->id, installed->id);
        QVERIFY(manager()->deleteInstalledDriver(installed->id));
        QVERIFY(!manager()->findDriverInfoByPrsPath(clean));
    }
};

QTEST_GUILESS_MAIN(TestPrinterDriverManagerWithLibrary)
#include "tst_printerdrivermanager_library.moc"
