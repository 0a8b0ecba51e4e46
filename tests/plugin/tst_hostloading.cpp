// Loads the built module the way a RIP host does: QLibrary by file name and
// resolve() of the six exports, with nothing of the module linked in.

#include "IRipEngineDriverUI.h"

#include "LogCapture.h"

#include <QDir>
#include <QLibrary>
#include <QProcess>
#include <QtTest>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

namespace {

// The names the loaded module exports: its PE export table on Windows, the
// dynamic symbol table (nm -D) elsewhere.
QStringList exportedNames(const QLibrary &library)
{
    QStringList names;
#ifdef Q_OS_WIN
    const HMODULE module =
        ::GetModuleHandleW(reinterpret_cast<LPCWSTR>(QDir::toNativeSeparators(library.fileName()).utf16()));
    if (!module)
        return names;
    const auto *base = reinterpret_cast<const unsigned char *>(module);
    const auto *dos = reinterpret_cast<const IMAGE_DOS_HEADER *>(base);
    const auto *nt = reinterpret_cast<const IMAGE_NT_HEADERS *>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY &table = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    if (table.VirtualAddress == 0)
        return names;
    const auto *exports = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY *>(base + table.VirtualAddress);
    const auto *nameAddresses = reinterpret_cast<const DWORD *>(base + exports->AddressOfNames);
    for (DWORD i = 0; i < exports->NumberOfNames; ++i)
        names << QString::fromLatin1(reinterpret_cast<const char *>(base + nameAddresses[i]));
#else
    QProcess nm;
    nm.start(QStringLiteral("nm"),
             {QStringLiteral("-D"), QStringLiteral("--defined-only"), library.fileName()});
    if (!nm.waitForFinished() || nm.exitCode() != 0)
        return {QStringLiteral("(nm failed: %1)").arg(nm.errorString())};
    const QList<QByteArray> lines = nm.readAllStandardOutput().split('\n');
    for (const QByteArray &line : lines) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        // Functions and data; the version nodes (type A) name no symbol.
        if (fields.size() == 3 && fields.at(1) != "A")
            names << QString::fromLatin1(fields.at(2));
    }
#endif
    names.sort();
    return names;
}

} // namespace

class HostLoadingTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void module_exportsOnlyTheSixHostFunctions();
    void kind_isTheSamePointerEverywhere();
    void version_isOneZeroZero();
    void version_skipsNullPointers();
    void destroy_ofNull_doesNothing();
    void initialize_withTheOpenLibrary_succeedsAndAgainAfterUnInitialize();
    void moduleObjects_keepDriversThroughSerialization();
    void setLanguage_installsTheEnglishTexts();

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

void HostLoadingTest::module_exportsOnlyTheSixHostFunctions()
{
    QVERIFY(library_.isLoaded());
    const QStringList exported = exportedNames(library_);
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

void HostLoadingTest::kind_isTheSamePointerEverywhere()
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

void HostLoadingTest::version_isOneZeroZero()
{
    unsigned major = 7, minor = 7, patch = 7;
    version_(&major, &minor, &patch);
    QCOMPARE(major, 1u);
    QCOMPARE(minor, 0u);
    QCOMPARE(patch, 0u);
}

void HostLoadingTest::version_skipsNullPointers()
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

void HostLoadingTest::destroy_ofNull_doesNothing()
{
    LogCapture log;
    destroy_(nullptr);
    QVERIFY(log.entries().isEmpty());
}

void HostLoadingTest::initialize_withTheOpenLibrary_succeedsAndAgainAfterUnInitialize()
{
    QVERIFY(initialize_());
    QVERIFY(initialize_());
    unInitialize_();
    unInitialize_();
    QVERIFY(initialize_());
}

void HostLoadingTest::moduleObjects_keepDriversThroughSerialization()
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

void HostLoadingTest::setLanguage_installsTheEnglishTexts()
{
    IRipEngineDriverUI *ui = create_();
    ui->setLanguage(QLocale::English);
    QCOMPARE(QCoreApplication::translate("QObject", "请选择默认打印机"),
             QStringLiteral("Select default printer"));
    destroy_(ui);
}

QTEST_GUILESS_MAIN(HostLoadingTest)
#include "tst_hostloading.moc"
