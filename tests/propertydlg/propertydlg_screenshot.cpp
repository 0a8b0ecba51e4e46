// Saves pictures of the driver property dialog as an operator sees it, one
// per sample driver, in Chinese and in English, with the look a host gives
// it. The sample drivers are installed into the program's own application
// directory. The window is made tall enough to need no scrolling, so the
// display must be tall:
//   xvfb-run -a -s "-screen 0 1600x2400x24" ./propertydlg_screenshot docs/screenshots
// writes property-dialog-<driver>.png (Chinese) and property-dialog-<driver>-en.png.
// With --default-size the dialog keeps the size and the sections of a first
// opening, as the operator sees it then (it may scroll).

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

// Opens the dialog on the driver and saves it: with `defaultSize` at the size
// of a first opening, else tall enough that nothing needs scrolling.
bool shoot(const QString &driverId, const QString &path, bool defaultSize)
{
    PrinterDriverConfig::instance()->setWindowRecord(QPoint(0, 0), QSize());
    PrinterDriverPropertyDlg dialog(driverId, nullptr);
    dialog.setExtraOption(RipExtraOption{1, false});
    dialog.show();
    QApplication::processEvents();
    if (defaultSize) {
        for (int round = 0; round < 20; ++round)
            QApplication::processEvents(QEventLoop::AllEvents, 20);
        return ScreenshotSupport::saveWhenShown(&dialog, path);
    }
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
    QStringList args = QApplication::arguments();
    const bool defaultSize = args.removeAll(QStringLiteral("--default-size")) > 0;
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: propertydlg_screenshot [--default-size] <output folder>\n");
        return 2;
    }
    if (!ScreenshotSupport::applyHostLook(app))
        return 1;

    const auto config = PrinterDriverConfig::instance();
    config->setShowIccDetail(true);
    config->setShowInkDetail(!defaultSize);
    config->setShowOtherPropertyDetail(true);
    config->setShowExtraOptionDetail(true);

    QStringList ids;
    for (const char *sample : samples) {
        const QString id = ScreenshotSupport::sampleDriverId(QLatin1String(sample));
        if (id.isEmpty())
            return 1;
        ids << id;
    }

    const QDir out(args.at(1));
    bool ok = true;
    for (const ScreenshotSupport::Language &language : ScreenshotSupport::languages()) {
        for (int i = 0; i < ids.size(); ++i) {
            const QString name = QStringLiteral("property-dialog-%1.png").arg(QLatin1String(samples[i]));
            ok =
                shoot(ids.at(i), ScreenshotSupport::useLanguage(language, out.filePath(name)), defaultSize) &&
                ok;
        }
    }
    PrinterDriverManager::instance()->unload();
    return ok ? 0 : 1;
}
