// Initialize against a print-parameter library that refuses to make a
// handler, then lets it. The module's manager is made once per process, so
// this executable walks one host session from its start.

#include "HostLibraries.h"
#include "LogCapture.h"

#include <QtTest>

class HostInitializeTest : public QObject
{
    Q_OBJECT

private slots:
    void initialize_whileRefused_failsAndSucceedsOnALaterTry();
};

void HostInitializeTest::initialize_whileRefused_failsAndSucceedsOnALaterTry()
{
    RefusingPrintParams printParams;
    QVERIFY2(printParams.load(), qPrintable(printParams.library.errorString()));
    HostModule module;
    QVERIFY2(module.load(), qPrintable(module.library.errorString()));

    printParams.setRefuse(true);
    const QString refusal = QStringLiteral("CreateUIPrintParamsHandler failed");
    {
        // The manager's construction tries once, then Initialize tries again;
        // the host reads about its refused call once.
        LogCapture log;
        QVERIFY(!module.initialize());
        QCOMPARE(printParams.refused(), 2);
        QVERIFY2(log.count(QtCriticalMsg, refusal) == 1, qPrintable(log.dump()));
    }
    {
        LogCapture log;
        QVERIFY(!module.initialize());
        QCOMPARE(printParams.refused(), 3);
        QVERIFY2(log.count(QtCriticalMsg, refusal) == 1, qPrintable(log.dump()));
        const LogCapture::Entry line = log.find(QtCriticalMsg, refusal).first();
        QCOMPARE(line.file, QStringLiteral("source/UI/PrinterDriverManager"));
        QCOMPARE(line.category, QStringLiteral("bex.driverui.manager"));
    }
    QCOMPARE(printParams.created(), 0);

    printParams.setRefuse(false);
    QVERIFY(module.initialize());
    QCOMPARE(printParams.created(), 1);
    // Ready: further calls keep the handler it has.
    QVERIFY(module.initialize());
    QCOMPARE(printParams.created(), 1);

    module.unInitialize();
    QCOMPARE(printParams.destroyed(), 1);
    // UnInitialize without a handler frees nothing more.
    module.unInitialize();
    QCOMPARE(printParams.destroyed(), 1);
}

QTEST_GUILESS_MAIN(HostInitializeTest)
#include "tst_hostinitialize.moc"
