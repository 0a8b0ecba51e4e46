// The overwrite question of an import after the host has chosen English.
// The language is process-wide, so these checks have an executable of their
// own.

#include "PackageTestSupport.h"
#include "SampleDriverFiles.h"
#include "TestAppDir.h"

#include "Config/UIModuleConfig.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverPackageHelper.h"

#include <QtTest>

class TestPrinterDriverPackageHelperEnglish : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        UIModuleConfig::instance()->setLanguage(QLocale::English);
        QVERIFY(SampleDriverFiles::restage());
        TestAppDir::remove(QStringLiteral("cache"));
    }

    void cleanupTestCase() { PrinterDriverManager::instance()->unload(); }

    void overwriteQuestion_isInEnglish()
    {
        PrinterDriverManager *manager = PrinterDriverManager::instance();
        const auto driver =
            manager->installDriver(SampleDriverFiles::prsPath(QStringLiteral("BexUV1610_CMYKLcLm")));
        QVERIFY(driver);
        const QString package = TestAppDir::filePath(QStringLiteral("BexUV1610_CMYKLcLm.bex_driver"));
        PrinterDriverPackageHelper helper(nullptr);
        QVERIFY(helper.exportPackage(package, driver->prsPath, driver->id));

        MessageBoxAnswerer answerer(QStringLiteral("No"));
        QStringList prsFiles;

        QVERIFY(!helper.importPackage(package, prsFiles));

        QCOMPARE(answerer.texts().size(), 1);
        const QString text = answerer.texts().first();
        QVERIFY2(text.startsWith(QStringLiteral("Continue to install, files will be covered:\n  ")),
                 qPrintable(text));
        QVERIFY2(text.endsWith(QStringLiteral("\n\nContinue or not?")), qPrintable(text));
        QVERIFY(!answerer.buttonMissing());
        QCOMPARE(answerer.titles(), QStringList{QStringLiteral("Reminder")});
        QCOMPARE(answerer.buttonRows(), QStringList{QStringLiteral("Yes|No")});
        QCOMPARE(prsFiles, QStringList());
    }
};

QTEST_MAIN(TestPrinterDriverPackageHelperEnglish)
#include "tst_printerdriverpackagehelper_english.moc"
