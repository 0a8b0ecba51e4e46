#include "ConfigTestSupport.h"
#include "LogCapture.h"

#include "Common/Logging.h"
#include "Config/PrinterDriverConfig.h"
#include "Config/UIModuleConfig.h"
#include "FramelessCore/FramelessLogging.h"

#include <QtTest>

// The logging helper: what every line of the module carries. Switching lines
// off through QT_LOGGING_RULES is LoggingRulesTest's.
class LoggingTest : public QObject
{
    Q_OBJECT

private slots:
    void sourcePath_isTrimmedToTheProject_data();
    void sourcePath_isTrimmedToTheProject();
    void logLine_carriesFileLineFunctionAndCategory();
    void macros_writeEachAtItsLevel();
    void moduleLines_nameTheirSourceFileWithoutExtension();
    void categories_areNamedUnderBexDriverui_data();
    void categories_areNamedUnderBexDriverui();
};

void LoggingTest::sourcePath_isTrimmedToTheProject_data()
{
    using bex::logging::trimSourcePath;
    QTest::addColumn<QString>("trimmed");
    QTest::addColumn<QString>("expected");

    constexpr auto unix =
        trimSourcePath("/home/build/bex/source/Config/UIModuleConfig.cpp", "/home/build/bex/");
    constexpr auto windows = trimSourcePath("C:\\bex\\source\\UI\\PrinterDriverManager.cpp", "C:/bex/");
    constexpr auto header = trimSourcePath("/bex/source/Common/Logging.h", "/bex/");
    constexpr auto dottedFolder = trimSourcePath("/bex/source/v1.2/Makefile", "/bex/");
    constexpr auto outside = trimSourcePath("/elsewhere/source/File.cpp", "/bex/");
    constexpr auto relative = trimSourcePath("../../source/UI/InstallPrinterDriverDlg.cpp", "/bex/");
    constexpr auto relativeWindows = trimSourcePath("..\\..\\.\\tests\\config\\LoggingTest.cpp", "C:/bex/");
    QTest::newRow("unix") << QString::fromUtf8(unix.text) << QStringLiteral("source/Config/UIModuleConfig");
    QTest::newRow("windows") << QString::fromUtf8(windows.text)
                             << QStringLiteral("source/UI/PrinterDriverManager");
    QTest::newRow("header") << QString::fromUtf8(header.text) << QStringLiteral("source/Common/Logging");
    QTest::newRow("dotted folder") << QString::fromUtf8(dottedFolder.text)
                                   << QStringLiteral("source/v1.2/Makefile");
    QTest::newRow("relative to the build folder")
        << QString::fromUtf8(relative.text) << QStringLiteral("source/UI/InstallPrinterDriverDlg");
    QTest::newRow("relative, Windows separators")
        << QString::fromUtf8(relativeWindows.text) << QStringLiteral("tests/config/LoggingTest");
    QTest::newRow("outside the project")
        << QString::fromUtf8(outside.text) << QStringLiteral("/elsewhere/source/File");
}

void LoggingTest::sourcePath_isTrimmedToTheProject()
{
    QFETCH(QString, trimmed);
    QFETCH(QString, expected);
    QCOMPARE(trimmed, expected);
}

void LoggingTest::logLine_carriesFileLineFunctionAndCategory()
{
    LogCapture log;
    BEX_DEBUG(lcConfig) << "probe" << 42;
    const int line = __LINE__ - 1;

    const QList<LogCapture::Entry> entries = log.find(QtDebugMsg, QStringLiteral("probe"));
    QCOMPARE(entries.size(), 1);
    const LogCapture::Entry &entry = entries.first();
    QCOMPARE(entry.message, QStringLiteral("probe 42"));
    QCOMPARE(entry.file, QStringLiteral("tests/config/LoggingTest"));
    QCOMPARE(entry.line, line);
    QCOMPARE(entry.function, QString::fromUtf8(Q_FUNC_INFO));
    QCOMPARE(entry.category, QStringLiteral("bex.driverui.config"));
}

void LoggingTest::macros_writeEachAtItsLevel()
{
    LogCapture log;
    BEX_DEBUG(lcManager) << "debug line";
    BEX_INFO(lcManager) << "info line";
    BEX_WARNING(lcManager) << "warning line";
    BEX_CRITICAL(lcManager) << "critical line";

    QCOMPARE(log.count(QtDebugMsg, QStringLiteral("debug line")), 1);
    QCOMPARE(log.count(QtInfoMsg, QStringLiteral("info line")), 1);
    QCOMPARE(log.count(QtWarningMsg, QStringLiteral("warning line")), 1);
    QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("critical line")), 1);
    const QList<LogCapture::Entry> entries = log.entries();
    QCOMPARE(entries.size(), 4);
    for (const LogCapture::Entry &entry : entries)
        QCOMPARE(entry.category, QStringLiteral("bex.driverui.manager"));
}

void LoggingTest::moduleLines_nameTheirSourceFileWithoutExtension()
{
    const std::shared_ptr<PrinterDriverConfig> config = PrinterDriverConfig::instance();
    LogCapture log;
    config->readConfig();
    UIModuleConfig::instance()->setLanguage(
        UIModuleConfig::instance()->language() == QLocale::German ? QLocale::French : QLocale::German);

    const QList<LogCapture::Entry> reads = log.find(QtDebugMsg, QStringLiteral("bShowIccDetail:"));
    QCOMPARE(reads.size(), 1);
    QCOMPARE(reads.first().file, ConfigFiles::printerDriverConfig());
    QCOMPARE(reads.first().function, ConfigSignatures::readConfig());
    QVERIFY(reads.first().line > 0);

    const QList<LogCapture::Entry> failures = log.find(QtWarningMsg, QStringLiteral("语言文件加载失败"));
    QCOMPARE(failures.size(), 1);
    QCOMPARE(failures.first().file, ConfigFiles::uiModuleConfig());
    QCOMPARE(failures.first().function, ConfigSignatures::setLanguage());
    QVERIFY(failures.first().line > 0);
}

void LoggingTest::categories_areNamedUnderBexDriverui_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plugin") << QString::fromUtf8(lcPlugin().categoryName())
                            << QStringLiteral("bex.driverui.plugin");
    QTest::newRow("config") << QString::fromUtf8(lcConfig().categoryName())
                            << QStringLiteral("bex.driverui.config");
    QTest::newRow("manager") << QString::fromUtf8(lcManager().categoryName())
                             << QStringLiteral("bex.driverui.manager");
    QTest::newRow("dialog") << QString::fromUtf8(lcDialog().categoryName())
                            << QStringLiteral("bex.driverui.dialog");
    QTest::newRow("widget") << QString::fromUtf8(lcWidget().categoryName())
                            << QStringLiteral("bex.driverui.widget");
    QTest::newRow("frameless") << QString::fromUtf8(lcFrameless().categoryName())
                               << QStringLiteral("bex.driverui.frameless");
}

void LoggingTest::categories_areNamedUnderBexDriverui()
{
    QFETCH(QString, name);
    QFETCH(QString, expected);
    QCOMPARE(name, expected);
}

QTEST_GUILESS_MAIN(LoggingTest)
#include "LoggingTest.moc"
