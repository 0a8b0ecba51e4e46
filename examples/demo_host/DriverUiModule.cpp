#include "DriverUiModule.h"

#include <QDir>

DriverUiModule::DriverUiModule() = default;

DriverUiModule::~DriverUiModule()
{
    close();
}

QString DriverUiModule::fileName()
{
#if defined(Q_OS_WIN)
    return QStringLiteral("BexRipEngineDriverUI_RipServer.dll");
#elif defined(Q_OS_MACOS)
    return QStringLiteral("libBexRipEngineDriverUI_RipServer.dylib");
#else
    return QStringLiteral("libBexRipEngineDriverUI_RipServer.so");
#endif
}

bool DriverUiModule::open(const QString &dir)
{
    library_.setFileName(QDir(dir).filePath(fileName()));
    if (!library_.load()) {
        error_ = library_.errorString();
        return false;
    }
    if (!exports_.resolve(library_)) {
        error_ = QStringLiteral("%1 lacks the driver UI exports").arg(library_.fileName());
        return false;
    }
    initialized_ = exports_.initialize();
    if (!initialized_) {
        error_ = QStringLiteral("Initialize() failed: the print-parameter library made no handler");
        return false;
    }
    ui_ = exports_.create();
    return ui_ != nullptr;
}

void DriverUiModule::close()
{
    if (ui_)
        exports_.destroy(ui_);
    ui_ = nullptr;
    if (initialized_)
        exports_.unInitialize();
    initialized_ = false;
    // The library stays loaded: objects it handed out may still be around,
    // and their code lives in it.
}

QString DriverUiModule::version() const
{
    unsigned major = 0, minor = 0, patch = 0;
    if (exports_.version)
        exports_.version(&major, &minor, &patch);
    return QStringLiteral("%1.%2.%3").arg(major).arg(minor).arg(patch);
}

QString DriverUiModule::kind() const
{
    return exports_.kind ? QString::fromWCharArray(exports_.kind()) : QString();
}
