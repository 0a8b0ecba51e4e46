// Loads the built module the way a RIP host does: QLibrary by file name and
// resolve() of the six exports, with nothing of the module linked in.

#include "IRipEngineDriverUI.h"

#include "LogCapture.h"

#include <QLibrary>
#include <QProcess>
#include <QtTest>

class HostLoadingTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void exportsOnlyTheSixHostFunctions();
    void kindIsTheSamePointerEverywhere();
    void versionIsOneZeroZero();
    void versionSkipsNullPointers();
    void destroyOfNullDoesNothing();
    void initializeSucceedsWithTheOpenLibraryAndAgainAfterUnInitialize();
    void moduleObjectsKeepDriversThroughSerialization();
    void setLanguageInstallsTheEnglishTexts();

private:
    QLibrary library_{QStringLiteral(BEX_MODULE_PATH)};
    CreateBexRipEngineDriverUI_RipServerFn create_ = nullptr;
    DestroyBexRipEngineDriverUI_RipServerFn destroy_ = nullptr;
    BexRipEngineDriverUI_RipServer_InitializeFn initialize_ = nullptr;
    BexRipEngineDriverUI_RipServer_KindFn kind_ = nullptr;
    BexRipEngineDriverUI_RipServer_UnInitializeFn unInitialize_ = nullptr;
    BexRipEngineDriverUI_RipServer_VersionFn version_ = nullptr;
};

void HostLoadingTest::initTestCase()
{
    QVERIFY2(library_.load(), qPrintable(library_.errorString()));
    create_ = reinterpret_cast<CreateBexRipEngineDriverUI_RipServerFn>(
        library_.resolve("CreateBexRipEngineDriverUI_RipServer"));
    destroy_ = reinterpret_cast<DestroyBexRipEngineDriverUI_RipServerFn>(
        library_.resolve("DestroyBexRipEngineDriverUI_RipServer"));
    initialize_ = reinterpret_cast<BexRipEngineDriverUI_RipServer_InitializeFn>(
        library_.resolve("BexRipEngineDriverUI_RipServer_Initialize"));
    kind_ = reinterpret_cast<BexRipEngineDriverUI_RipServer_KindFn>(
        library_.resolve("BexRipEngineDriverUI_RipServer_Kind"));
    unInitialize_ = reinterpret_cast<BexRipEngineDriverUI_RipServer_UnInitializeFn>(
        library_.resolve("BexRipEngineDriverUI_RipServer_UnInitialize"));
    version_ = reinterpret_cast<BexRipEngineDriverUI_RipServer_VersionFn>(
        library_.resolve("BexRipEngineDriverUI_RipServer_Version"));
    QVERIFY(create_ && destroy_ && initialize_ && kind_ && unInitialize_ && version_);
}

void HostLoadingTest::cleanupTestCase()
{
    if (unInitialize_)
        unInitialize_();
}

void HostLoadingTest::exportsOnlyTheSixHostFunctions()
{
    QProcess nm;
    nm.start(QStringLiteral("nm"),
             {QStringLiteral("-D"), QStringLiteral("--defined-only"), library_.fileName()});
    QVERIFY(nm.waitForFinished());
    QCOMPARE(nm.exitCode(), 0);
    QStringList exported;
    const QList<QByteArray> lines = nm.readAllStandardOutput().split('\n');
    for (const QByteArray &line : lines) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        // Functions and data; the version nodes (type A) name no symbol.
        if (fields.size() == 3 && fields.at(1) != "A")
            exported << QString::fromLatin1(fields.at(2));
    }
    exported.sort();
    const QStringList expected{
        QStringLiteral("BexRipEngineDriverUI_RipServer_Initialize"),
        QStringLiteral("BexRipEngineDriverUI_RipServer_Kind"),
        QStringLiteral("BexRipEngineDriverUI_RipServer_UnInitialize"),
        QStringLiteral("BexRipEngineDriverUI_RipServer_Version"),
        QStringLiteral("CreateBexRipEngineDriverUI_RipServer"),
        QStringLiteral("DestroyBexRipEngineDriverUI_RipServer"),
    };
    QCOMPARE(exported, expected);
}

void HostLoadingTest::kindIsTheSamePointerEverywhere()
{
    const wchar_t *kind = kind_();
    QVERIFY(kind);
    QCOMPARE(QString::fromWCharArray(kind), QStringLiteral("BexRipEngine_RipServer"));
    QCOMPARE(kind_(), kind);

    IRipEngineDriverUI *first = create_();
    IRipEngineDriverUI *second = create_();
    QCOMPARE(first->kind(), kind);
    QCOMPARE(second->kind(), kind);

    const QSharedPointer<IRipEngine::IDriver> driver = first->unserialize(
        R"({"info":{"modeId":1,"prsFilePath":"a.prs"},"meta":{"mainVersion":1,"subVersion":0,"type":"BexRipEngine_RipServer"}})");
    QVERIFY(driver);
    QCOMPARE(driver->kind(), kind);
    destroy_(first);
    destroy_(second);
    // Objects handed out may outlive the module object that made them.
    QCOMPARE(driver->kind(), kind);
}

void HostLoadingTest::versionIsOneZeroZero()
{
    unsigned major = 7, minor = 7, patch = 7;
    version_(&major, &minor, &patch);
    QCOMPARE(major, 1u);
    QCOMPARE(minor, 0u);
    QCOMPARE(patch, 0u);
}

void HostLoadingTest::versionSkipsNullPointers()
{
    version_(nullptr, nullptr, nullptr);
    unsigned minor = 9;
    version_(nullptr, &minor, nullptr);
    QCOMPARE(minor, 0u);
    unsigned patch = 9;
    unsigned major = 9;
    version_(&major, nullptr, &patch);
    QCOMPARE(major, 1u);
    QCOMPARE(patch, 0u);
}

void HostLoadingTest::destroyOfNullDoesNothing()
{
    LogCapture log;
    destroy_(nullptr);
    QVERIFY(log.entries().isEmpty());
}

void HostLoadingTest::initializeSucceedsWithTheOpenLibraryAndAgainAfterUnInitialize()
{
    QVERIFY(initialize_());
    QVERIFY(initialize_());
    unInitialize_();
    unInitialize_();
    QVERIFY(initialize_());
}

void HostLoadingTest::moduleObjectsKeepDriversThroughSerialization()
{
    IRipEngineDriverUI *ui = create_();
    const QByteArray document =
        R"({"info":{"modeId":3,"prsFilePath":"D:/app/dtp/bin/1700000000000_4242_0.temp.prs"},)"
        R"("meta":{"mainVersion":1,"subVersion":0,"type":"BexRipEngine_RipServer"}})";
    const QSharedPointer<IRipEngine::IDriver> driver = ui->unserialize(document);
    QVERIFY(driver);
    QCOMPARE(ui->serialize(driver), document);
    destroy_(ui);
}

void HostLoadingTest::setLanguageInstallsTheEnglishTexts()
{
    IRipEngineDriverUI *ui = create_();
    ui->setLanguage(QLocale::English);
    QCOMPARE(QCoreApplication::translate("QObject", "请选择默认打印机"),
             QStringLiteral("Select default printer"));
    destroy_(ui);
}

QTEST_GUILESS_MAIN(HostLoadingTest)
#include "tst_hostloading.moc"
