// Loads the installed module the way a RIP host does and walks one short
// session: version and kind, Initialize, a module object, a driver kept
// through unserialize() and serialize(), UnInitialize. Exits non-zero at the
// first thing that does not hold.

#include <IRipEngineDriverUI.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <QTextStream>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

namespace {

QTextStream &out()
{
    static QTextStream stream(stdout);
    return stream;
}

int fail(const QString &what)
{
    QTextStream(stderr) << "FAIL: " << what << '\n';
    return 1;
}

template <typename Fn>
Fn resolve(QLibrary &library, const char *name)
{
    return reinterpret_cast<Fn>(library.resolve(name));
}

// The file the process mapped for a library whose name starts with prefix,
// from the Linux memory map; empty elsewhere or when it is not loaded.
// The file of the loaded library whose name begins with prefix: from the
// process's mappings on Linux, from the loader's list on Windows.
QString mappedFile(const QString &prefix)
{
#ifdef Q_OS_WIN
    const HMODULE library = ::GetModuleHandleW(reinterpret_cast<LPCWSTR>(prefix.utf16()));
    wchar_t path[MAX_PATH];
    const DWORD length = library ? ::GetModuleFileNameW(library, path, MAX_PATH) : 0;
    if (length == 0 || length >= MAX_PATH)
        return {};
    return QFileInfo(QString::fromWCharArray(path, int(length))).canonicalFilePath();
#else
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        return {};
    const QList<QByteArray> lines = maps.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const int slash = line.indexOf('/');
        if (slash < 0)
            continue;
        const QString path = QString::fromLocal8Bit(line.mid(slash));
        if (QFileInfo(path).fileName().startsWith(prefix))
            return QFileInfo(path).canonicalFilePath();
    }
    return {};
#endif
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QString moduleFile = QStringLiteral(BEX_MODULE_FILE);
    QLibrary module(moduleFile);
    if (!module.load())
        return fail(module.errorString());

    const auto initialize = resolve<BexRipEngineDriverUI_RipServer_InitializeFn>(
        module, "BexRipEngineDriverUI_RipServer_Initialize");
    const auto unInitialize = resolve<BexRipEngineDriverUI_RipServer_UnInitializeFn>(
        module, "BexRipEngineDriverUI_RipServer_UnInitialize");
    const auto kind =
        resolve<BexRipEngineDriverUI_RipServer_KindFn>(module, "BexRipEngineDriverUI_RipServer_Kind");
    const auto version =
        resolve<BexRipEngineDriverUI_RipServer_VersionFn>(module, "BexRipEngineDriverUI_RipServer_Version");
    const auto create =
        resolve<CreateBexRipEngineDriverUI_RipServerFn>(module, "CreateBexRipEngineDriverUI_RipServer");
    const auto destroy =
        resolve<DestroyBexRipEngineDriverUI_RipServerFn>(module, "DestroyBexRipEngineDriverUI_RipServer");
    if (!initialize || !unInitialize || !kind || !version || !create || !destroy)
        return fail(QStringLiteral("an export is missing"));

    unsigned major = 0, minor = 0, patch = 0;
    version(&major, &minor, &patch);
    out() << "version " << major << '.' << minor << '.' << patch << '\n';
    if (major != 1 || minor != 0 || patch != 0)
        return fail(QStringLiteral("unexpected version"));
    if (QString::fromWCharArray(kind()) != QStringLiteral("BexRipEngine_RipServer"))
        return fail(QStringLiteral("unexpected kind"));

    // The print-parameter library must come from beside the module, not from
    // wherever the module was built.
    const QString moduleDir = QFileInfo(moduleFile).canonicalPath();
#ifdef Q_OS_WIN
    const QString printParams = mappedFile(QStringLiteral("BexUIPrintParamsProcessing.dll"));
#else
    const QString printParams = mappedFile(QStringLiteral("libBexUIPrintParamsProcessing.so"));
#endif
    out() << "print-parameter library " << printParams << '\n';
    if (QFileInfo(printParams).path() != moduleDir)
        return fail(QStringLiteral("the print-parameter library was not taken from ") + moduleDir);

    if (!initialize())
        return fail(QStringLiteral("Initialize refused"));

    IRipEngineDriverUI *ui = create();
    if (!ui || ui->kind() != kind())
        return fail(QStringLiteral("no module object"));
    const QByteArray saved = R"({"info":{"modeId":2,"prsFilePath":"dtp/bin/1_2_3.temp.prs"},)"
                             R"("meta":{"mainVersion":1,"subVersion":0,"type":"BexRipEngine_RipServer"}})";
    QSharedPointer<IRipEngine::IDriver> driver = ui->unserialize(saved);
    if (driver.isNull())
        return fail(QStringLiteral("the saved driver was refused"));
    const QByteArray again = ui->serialize(driver);
    out() << "serialized again: " << QString::fromUtf8(again) << '\n';
    if (again != saved)
        return fail(QStringLiteral("the driver changed on its way"));
    // Objects handed out do not outlive the library: let go before unloading.
    driver.reset();
    destroy(ui);
    unInitialize();
    out() << "installed module works\n";
    return 0;
}
