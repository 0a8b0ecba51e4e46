// Saves pictures of the driver property dialog as an operator sees it, one
// per sample driver, in Chinese and in English, with the look a host gives
// it. The sample drivers are installed into the program's own application
// directory. The window is made tall enough to need no scrolling, so the
// display must be tall:
//   xvfb-run -a -s "-screen 0 1600x2400x24" ./propertydlg_screenshot docs/screenshots
// writes property-dialog-<driver>.png (Chinese) and property-dialog-<driver>-en.png.

#include "Config/PrinterDriverConfig.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverPropertyDlg.h"

#include "ScreenshotSupport.h"

#include <QApplication>
#include <QDir>
#include <QScrollArea>

#include <cstdio>

namespace {

const char *const samples[] = {"BexUV2513_CMYKWV", "BexUV1610_CMYKLcLm", "BexUV3220_8C"};

// Opens the dialog on the driver with every section shown, tall enough that
// nothing needs scrolling, and saves it.
bool shoot(const QString &driverId, const QString &path)
{
    PrinterDriverPropertyDlg dialog(driverId, nullptr);
    dialog.setExtraOption(RipExtraOption{1, false});
    dialog.show();
    QApplication::processEvents();
    auto *scroll = dialog.findChild<QScrollArea *>(QStringLiteral("scrollArea_main_"));
    for (int attempt = 0; attempt < 3; ++attempt) {
        const int hidden = scroll->widget()->sizeHint().height() - scroll->viewport()->height();
        if (hidden <= 0)
            break;
        // Mapped again at the new size: the window system applies a resize
        // of a shown window only later.
        dialog.hide();
        dialog.resize(dialog.width(), dialog.height() + hidden);
        dialog.show();
        for (int round = 0; round < 20; ++round)
            QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return ScreenshotSupport::saveWhenShown(&dialog, path);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: propertydlg_screenshot <output folder>\n");
        return 2;
    }
    if (!ScreenshotSupport::applyHostLook(app))
        return 1;

    const auto config = PrinterDriverConfig::instance();
    config->setShowIccDetail(true);
    config->setShowInkDetail(true);
    config->setShowOtherPropertyDetail(true);
    config->setShowExtraOptionDetail(true);
    config->setWindowRecord(QPoint(0, 0), QSize());

    PrinterDriverManager *manager = PrinterDriverManager::instance();
    QStringList ids;
    for (const char *sample : samples) {
        const QString prs = config->driverDir() + QLatin1String(sample) + QStringLiteral(".prs");
        PrinterDriverManager::DriverInfoPtr info = manager->findDriverInfoByPrsPath(prs);
        if (!info)
            info = manager->installDriver(prs);
        if (!info) {
            std::fprintf(stderr, "cannot install %s\n", qPrintable(prs));
            return 1;
        }
        ids << info->id;
    }

    const QDir out(args.at(1));
    bool ok = true;
    for (const ScreenshotSupport::Language &language : ScreenshotSupport::languages()) {
        for (int i = 0; i < ids.size(); ++i) {
            const QString name = QStringLiteral("property-dialog-%1.png").arg(QLatin1String(samples[i]));
            ok = shoot(ids.at(i), ScreenshotSupport::useLanguage(language, out.filePath(name))) && ok;
        }
    }
    manager->unload();
    return ok ? 0 : 1;
}
