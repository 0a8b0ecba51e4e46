#include "ConfigTestSupport.h"
#include "LogCapture.h"
#include "TestAppDir.h"

#include "Config/PrinterDriverConfig.h"

#include <QFileInfo>
#include <QtTest>

#include <memory>

namespace {
const QString iniName = QStringLiteral("PrinterDriverConfig.ini");
}

// The settings as they are created when no settings file exists yet.
// initTestCase() removes the file and the cache folder before the single
// instance is first asked for; no test here calls a setter.
class PrinterDriverConfigDefaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void settings_withoutFile_everySettingHasItsDefault();
    void windowRecord_withoutFile_isOriginAndInvalidSize();
    void creation_logsEveryFlagRead();
    void creation_makesTheCacheDirectoryAndLogsNoFailure();
    void creation_doesNotWriteTheFile();

private:
    std::unique_ptr<LogCapture> creationLog_;
    std::shared_ptr<PrinterDriverConfig> config_;
};

void PrinterDriverConfigDefaultsTest::initTestCase()
{
    QVERIFY(TestAppDir::remove(iniName));
    QVERIFY(TestAppDir::remove(QStringLiteral("cache")));
    creationLog_ = std::make_unique<LogCapture>();
    config_ = PrinterDriverConfig::instance();
    QVERIFY(config_);
}

void PrinterDriverConfigDefaultsTest::settings_withoutFile_everySettingHasItsDefault()
{
    QCOMPARE(config_->saveRootDir(), QStringLiteral("D:"));
    QCOMPARE(config_->openRootDir(), QStringLiteral("D:"));
    QCOMPARE(config_->iccSaveRootDir(), QStringLiteral("D:"));
    QCOMPARE(config_->iccOpenRootDir(), QStringLiteral("D:"));
    QVERIFY(config_->defaultDriverId().isEmpty());
    QCOMPARE(config_->bShowIccDetail(), true);
    QCOMPARE(config_->bShowInkDetail(), false);
    QCOMPARE(config_->bShowOtherPropertyDetail(), true);
    QCOMPARE(config_->bShowExtraOptionDetail(), true);
    QCOMPARE(config_->bPromptDriverPropertyDlg(), true);
}

void PrinterDriverConfigDefaultsTest::windowRecord_withoutFile_isOriginAndInvalidSize()
{
    QCOMPARE(config_->windowPos(), QPoint(0, 0));
    QCOMPARE(config_->windowSize(), QSize(-1, -1));
    QVERIFY(!config_->windowSize().isValid());
}

void PrinterDriverConfigDefaultsTest::creation_logsEveryFlagRead()
{
    const QStringList expected{
        QStringLiteral("bShowIccDetail: true"),           QStringLiteral("bShowInkDetail: false"),
        QStringLiteral("bShowOtherPropertyDetail: true"), QStringLiteral("bShowExtraOptionDetail: true"),
        QStringLiteral("bPromptDriverPropertyDlg: true"),
    };
    QStringList messages;
    const QList<LogCapture::Entry> entries = creationLog_->entries();
    for (const LogCapture::Entry &entry : entries) {
        if (entry.type != QtDebugMsg || entry.file != ConfigFiles::printerDriverConfig())
            continue;
        QCOMPARE(entry.function, ConfigSignatures::readConfig());
        QCOMPARE(entry.category, ConfigFiles::category());
        messages << entry.message;
    }
    QCOMPARE(messages, expected);
}

void PrinterDriverConfigDefaultsTest::creation_makesTheCacheDirectoryAndLogsNoFailure()
{
    QVERIFY(QFileInfo(TestAppDir::filePath(QStringLiteral("cache"))).isDir());
    QCOMPARE(config_->tempDir(), TestAppDir::filePath(QStringLiteral("cache/")));
    QVERIFY2(!creationLog_->contains(QtCriticalMsg, QStringLiteral("创建失败")),
             qPrintable(creationLog_->dump()));
}

void PrinterDriverConfigDefaultsTest::creation_doesNotWriteTheFile()
{
    QVERIFY(!QFileInfo::exists(TestAppDir::filePath(iniName)));
}

QTEST_GUILESS_MAIN(PrinterDriverConfigDefaultsTest)
#include "PrinterDriverConfigDefaultsTest.moc"
