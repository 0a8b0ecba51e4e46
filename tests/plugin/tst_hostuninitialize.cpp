// UnInitialize as the first call of a host session.

#include "HostLibraries.h"

#include <QtTest>

class HostUnInitializeTest : public QObject
{
    Q_OBJECT

private slots:
    void unInitialize_withoutInitialize_makesAndFreesOneHandler();
};

void HostUnInitializeTest::unInitialize_withoutInitialize_makesAndFreesOneHandler()
{
    RefusingPrintParams printParams;
    QVERIFY2(printParams.load(), qPrintable(printParams.library.errorString()));
    HostModule module;
    QVERIFY2(module.load(), qPrintable(module.library.errorString()));

    module.unInitialize();
    QCOMPARE(printParams.created(), 1);
    QCOMPARE(printParams.destroyed(), 1);

    // A later Initialize makes a new handler.
    QVERIFY(module.initialize());
    QCOMPARE(printParams.created(), 2);
    module.unInitialize();
    QCOMPARE(printParams.destroyed(), 2);
}

QTEST_GUILESS_MAIN(HostUnInitializeTest)
#include "tst_hostuninitialize.moc"
