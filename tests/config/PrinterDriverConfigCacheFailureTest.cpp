#include "ConfigTestSupport.h"
#include "LogCapture.h"
#include "TestAppDir.h"

#include "Config/PrinterDriverConfig.h"

#include <QFileInfo>
#include <QSettings>
#include <QtTest>

#include <memory>

namespace {
const QString iniName = QStringLiteral("PrinterDriverConfig.ini");
const QString cacheName = QStringLiteral("cache");
} // namespace

// The settings created where the cache folder cannot be made: initTestCase()
// puts a plain file named "cache" in the application directory before the
// single instance is first asked for.
class PrinterDriverConfigCacheFailureTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void cacheDirectory_unmakeable_isLoggedAsCritical();
    void settings_withoutCacheDirectory_stillWork();

private:
    std::unique_ptr<LogCapture> creationLog_;
    std::shared_ptr<PrinterDriverConfig> config_;
};

void PrinterDriverConfigCacheFailureTest::initTestCase()
{
    QVERIFY(TestAppDir::remove(cacheName));
    QVERIFY(TestAppDir::writeFile(cacheName, "not a folder"));
    creationLog_ = std::make_unique<LogCapture>();
    config_ = PrinterDriverConfig::instance();
    QVERIFY(config_);
}

void PrinterDriverConfigCacheFailureTest::cleanupTestCase()
{
    TestAppDir::remove(cacheName);
}

void PrinterDriverConfigCacheFailureTest::cacheDirectory_unmakeable_isLoggedAsCritical()
{
    const QList<LogCapture::Entry> failures = creationLog_->find(QtCriticalMsg, QStringLiteral("创建失败"));
    QVERIFY2(failures.size() == 1, qPrintable(creationLog_->dump()));
    const LogCapture::Entry &failure = failures.first();
    const QString tempDir = TestAppDir::filePath(QStringLiteral("cache/"));
    QCOMPARE(config_->tempDir(), tempDir);
    QCOMPARE(failure.message, QStringLiteral("目录 - \"%1\" 创建失败").arg(tempDir));
    QCOMPARE(failure.file, ConfigFiles::printerDriverConfig());
    QCOMPARE(failure.function, ConfigSignatures::printerDriverConfigConstructor());
    QCOMPARE(failure.category, ConfigFiles::category());
    QVERIFY(QFileInfo(TestAppDir::filePath(cacheName)).isFile());
}

void PrinterDriverConfigCacheFailureTest::settings_withoutCacheDirectory_stillWork()
{
    QCOMPARE(config_->saveRootDir().isEmpty(), false);
    const bool prompt = !config_->bPromptDriverPropertyDlg();

    config_->setPromptDriverPropertyDlg(prompt);

    QCOMPARE(config_->bPromptDriverPropertyDlg(), prompt);
    QSettings ini(TestAppDir::filePath(iniName), QSettings::IniFormat);
    QCOMPARE(ini.value(QStringLiteral("bPromptDriverPropertyDlg")).toBool(), prompt);
}

QTEST_GUILESS_MAIN(PrinterDriverConfigCacheFailureTest)
#include "PrinterDriverConfigCacheFailureTest.moc"
