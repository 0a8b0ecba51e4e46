// Saves pictures of the printer management dialog, with the sample drivers
// installed and one of them the default, and of the install dialog, in
// Chinese and in English, for the documentation. Like a host, it applies the
// frameless style sheet that the module carries.
//   xvfb-run -a build/tests-apps/managementdialogs_screenshots/managementdialogs_screenshots docs/screenshots
//
// It works in its own application directory, where the build staged the
// sample drivers: the list of installed drivers and the settings file there
// are made afresh on every run.

#include "Config/PrinterDriverConfig.h"
#include "Config/UIModuleConfig.h"
#include "UI/InstallPrinterDriverDlg.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverManagerDlg.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTimer>

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

bool save(QWidget *dialog, const QString &path)
{
    dialog->show();
    bool ok = false;
    QTimer::singleShot(0, dialog, [&]() {
        ok = dialog->grab().save(path);
        QApplication::quit();
    });
    QApplication::exec();
    dialog->hide();
    std::fprintf(ok ? stdout : stderr, "%s %s\n", ok ? "saved" : "could not save", qPrintable(path));
    return ok;
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

    QFile styleSheet(QStringLiteral(":/frameless/qss/frameless_style.qss"));
    if (!styleSheet.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read the frameless style sheet\n");
        return 1;
    }
    app.setStyleSheet(QString::fromUtf8(styleSheet.readAll()));

    // A fresh start: no installed drivers, no settings.
    const QString appDir = QCoreApplication::applicationDirPath();
    QFile::remove(appDir + QStringLiteral("/dtp/BexUIPrintParamsProcessing.json"));
    QFile::remove(appDir + QStringLiteral("/PrinterDriverConfig.ini"));
    if (!PrinterDriverManager::instance()->getHandler() || !installSamples()) {
        std::fprintf(stderr, "cannot install the sample drivers in %s\n", qPrintable(appDir));
        return 1;
    }

    bool ok = true;
    for (const auto &[language, suffix] :
         {std::make_pair(QLocale::Chinese, "zh"), std::make_pair(QLocale::English, "en")}) {
        UIModuleConfig::instance()->setLanguage(language);
        {
            PrinterDriverManagerDlg manager(nullptr);
            ok = save(&manager,
                      out.filePath(QStringLiteral("manager-dialog-%1.png").arg(QLatin1String(suffix)))) &&
                 ok;
        }
        {
            InstallPrinterDriverDlg install(nullptr);
            ok = save(&install,
                      out.filePath(QStringLiteral("install-dialog-%1.png").arg(QLatin1String(suffix)))) &&
                 ok;
        }
    }
    PrinterDriverManager::instance()->unload();
    return ok ? 0 : 1;
}
