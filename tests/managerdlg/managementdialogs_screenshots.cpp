// Saves pictures of the printer management dialog, with the sample drivers
// installed and one of them the default, and of the install dialog, in
// Chinese and in English, for the documentation, with the look a host gives
// them.
//   xvfb-run -a build/tests-apps/managementdialogs_screenshots/managementdialogs_screenshots docs/screenshots
// writes manager-dialog.png, install-dialog.png (Chinese) and their "-en"
// twins (English).
//
// It works in its own application directory, where the build staged the
// sample drivers: the list of installed drivers and the settings file there
// are made afresh on every run.

#include "Config/PrinterDriverConfig.h"
#include "UI/InstallPrinterDriverDlg.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverManagerDlg.h"

#include "ScreenshotSupport.h"

#include <QApplication>
#include <QDir>
#include <QFile>

#include <cstdio>

namespace {

const QStringList samples = {QStringLiteral("BexUV2513_CMYKWV"), QStringLiteral("BexUV3220_8C"),
                             QStringLiteral("BexUV1610_CMYKLcLm")};

// Offers every sample in "dtp/bin/" and installs all but the last of those
// copies, plus the last one from "dtp/driver/": the manager then lists three
// drivers and the install dialog marks two of its rows as installed.
bool installSamples()
{
    const auto config = PrinterDriverConfig::instance();
    QDir().mkpath(config->dtpBinDir());
    PrinterDriverManager *manager = PrinterDriverManager::instance();
    QString defaultId;
    for (const QString &sample : samples) {
        const QString source = config->driverDir() + sample + QStringLiteral(".prs");
        const QString offered = config->dtpBinDir() + sample + QStringLiteral(".prs");
        QFile::remove(offered);
        if (!QFile::copy(source, offered))
            return false;
        const auto driver = manager->installDriver(sample == samples.last() ? source : offered);
        if (!driver)
            return false;
        if (defaultId.isEmpty())
            defaultId = driver->id;
    }
    return manager->setDefaultDriverId(defaultId);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: managementdialogs_screenshots <folder>\n");
        return 2;
    }
    const QDir out(QString::fromLocal8Bit(argv[1]));
    QDir().mkpath(out.path());

    if (!ScreenshotSupport::applyHostLook(app))
        return 1;

    // A fresh start: no installed drivers, no settings.
    const QString appDir = QCoreApplication::applicationDirPath();
    QFile::remove(appDir + QStringLiteral("/dtp/BexUIPrintParamsProcessing.json"));
    QFile::remove(appDir + QStringLiteral("/PrinterDriverConfig.ini"));
    if (!PrinterDriverManager::instance()->getHandler() || !installSamples()) {
        std::fprintf(stderr, "cannot install the sample drivers in %s\n", qPrintable(appDir));
        return 1;
    }

    bool ok = true;
    for (const ScreenshotSupport::Language &language : ScreenshotSupport::languages()) {
        {
            const QString path =
                ScreenshotSupport::useLanguage(language, out.filePath(QStringLiteral("manager-dialog.png")));
            PrinterDriverManagerDlg manager(nullptr);
            ok = ScreenshotSupport::saveWhenShown(&manager, path) && ok;
        }
        {
            const QString path =
                ScreenshotSupport::useLanguage(language, out.filePath(QStringLiteral("install-dialog.png")));
            InstallPrinterDriverDlg install(nullptr);
            ok = ScreenshotSupport::saveWhenShown(&install, path) && ok;
        }
    }
    PrinterDriverManager::instance()->unload();
    return ok ? 0 : 1;
}
