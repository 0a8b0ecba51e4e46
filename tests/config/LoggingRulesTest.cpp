#include "ConfigTestSupport.h"
#include "LogCapture.h"

#include "Common/Logging.h"
#include "Config/PrinterDriverConfig.h"

#include <QCoreApplication>
#include <QtTest>

namespace {
// What a host puts into its environment to silence the settings' traces.
const QByteArray hostRules("bex.driverui.config.debug=false");

int evaluations = 0;

QString countedText()
{
    ++evaluations;
    return QStringLiteral("evaluated");
}
} // namespace

// A host switches the module's debug lines off with QT_LOGGING_RULES; main()
// sets the variable before the application object exists, as a host's
// environment would.
class LoggingRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void environmentRules_silenceDebugLinesOfTheirCategory();
    void environmentRules_leaveOtherLevelsAndCategories();
    void silencedDebugLines_areNotEvaluated();
};

void LoggingRulesTest::environmentRules_silenceDebugLinesOfTheirCategory()
{
    LogCapture log;
    BEX_DEBUG(lcConfig) << "config trace";
    PrinterDriverConfig::instance()->readConfig();

    QVERIFY2(!log.contains(QtDebugMsg, QStringLiteral("config trace")), qPrintable(log.dump()));
    QVERIFY2(!log.contains(QtDebugMsg, QStringLiteral("bShowIccDetail:")), qPrintable(log.dump()));
}

void LoggingRulesTest::environmentRules_leaveOtherLevelsAndCategories()
{
    LogCapture log;
    BEX_WARNING(lcConfig) << "config warning";
    BEX_DEBUG(lcManager) << "manager trace";

    QCOMPARE(log.count(QtWarningMsg, QStringLiteral("config warning")), 1);
    QCOMPARE(log.count(QtDebugMsg, QStringLiteral("manager trace")), 1);
}

void LoggingRulesTest::silencedDebugLines_areNotEvaluated()
{
    evaluations = 0;
    LogCapture log;

    BEX_DEBUG(lcConfig) << countedText();
    QCOMPARE(evaluations, 0);
    BEX_DEBUG(lcManager) << countedText();
    QCOMPARE(evaluations, 1);
    QCOMPARE(log.count(QtDebugMsg, QStringLiteral("evaluated")), 1);
}

int main(int argc, char *argv[])
{
    qputenv("QT_LOGGING_RULES", hostRules);
    QCoreApplication app(argc, argv);
    LoggingRulesTest test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "LoggingRulesTest.moc"
