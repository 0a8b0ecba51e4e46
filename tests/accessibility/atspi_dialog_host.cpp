// Opens one of the module's dialogs for the screen-reader test
// (atspi_walk.py), which reads it through AT-SPI:
//   atspi_dialog_host manager|install|rename|property|question zh|en
// The sample drivers are installed first (two of them, one the default),
// and offered in "dtp/bin/" for the install dialog. It writes "READY" on
// its standard output once the dialog is shown and stays until its standard
// input closes, at most a minute.

#include "DialogTestSupport.h"

#include "Config/UIModuleConfig.h"
#include "FramelessWidget/Common/CommonFramelessMessageBox.h"
#include "UI/InstallPrinterDriverDlg.h"
#include "UI/ModifyPrinterDriverNameDlg.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverManagerDlg.h"
#include "UI/PrinterDriverPropertyDlg.h"

#include <QApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdio>
#include <memory>

#include <unistd.h>

namespace {

constexpr int lifetimeMs = 60000;

// The id of the second driver installed, the default one.
QString defaultDriver;

bool prepareDrivers()
{
    using namespace DialogTestSupport;
    if (!startWithNothingInstalled())
        return false;
    const QString first = installSample(QStringLiteral("BexUV2513_CMYKWV"));
    defaultDriver = installSample(QStringLiteral("BexUV3220_8C"));
    return !first.isEmpty() && !defaultDriver.isEmpty() &&
           PrinterDriverManager::instance()->setDefaultDriverId(defaultDriver) &&
           !offerSample(QStringLiteral("BexUV1610_CMYKLcLm")).isEmpty();
}

std::unique_ptr<QDialog> makeDialog(const QString &kind)
{
    if (kind == QLatin1String("property")) {
        auto dialog = std::make_unique<PrinterDriverPropertyDlg>(defaultDriver, nullptr);
        dialog->setExtraOption(RipExtraOption{1, false});
        return dialog;
    }
    if (kind == QLatin1String("manager"))
        return std::make_unique<PrinterDriverManagerDlg>(nullptr);
    if (kind == QLatin1String("install"))
        return std::make_unique<InstallPrinterDriverDlg>(nullptr);
    if (kind == QLatin1String("rename"))
        return std::make_unique<ModifyPrinterDriverNameDlg>(QStringLiteral("Bex UV2513 CMYK+W+V"), nullptr);
    return nullptr;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3 ||
        (arguments.at(2) != QLatin1String("zh") && arguments.at(2) != QLatin1String("en"))) {
        std::fprintf(stderr, "usage: atspi_dialog_host manager|install|rename|property|question zh|en\n");
        return 2;
    }
    UIModuleConfig::instance()->setLanguage(arguments.at(2) == QLatin1String("en") ? QLocale::English
                                                                                   : QLocale::Chinese);
    if (!prepareDrivers()) {
        std::fprintf(stderr, "the sample drivers could not be installed\n");
        return 1;
    }
    const QString kind = arguments.at(1);
    const bool english = arguments.at(2) == QLatin1String("en");
    std::unique_ptr<QDialog> dialog;
    if (kind != QLatin1String("question")) {
        dialog = makeDialog(kind);
        if (!dialog) {
            std::fprintf(stderr, "no dialog called %s\n", qPrintable(kind));
            return 2;
        }
    }

    // The reader closes the pipe when it is done; the timer ends a run it
    // forgot.
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &app, [&input]() {
        char buffer[256];
        if (::read(STDIN_FILENO, buffer, sizeof buffer) <= 0) {
            input.setEnabled(false);
            QApplication::quit();
        }
    });
    QTimer::singleShot(lifetimeMs, &app, &QApplication::quit);

    if (dialog) {
        dialog->show();
        std::printf("READY\n");
        std::fflush(stdout);
    } else {
        // A message box is modal: asked once the loop runs, and READY once
        // it is on screen.
        QTimer::singleShot(0, &app, [english]() {
            CommonFramelessMessageBox::question(
                nullptr, english ? QStringLiteral("Reminder") : QStringLiteral("温馨提示"),
                english ? QStringLiteral("Delete the driver?") : QStringLiteral("是否删除驱动？"),
                english ? QStringLiteral("Yes") : QStringLiteral("是"),
                english ? QStringLiteral("No") : QStringLiteral("否"));
        });
        QTimer::singleShot(500, &app, []() {
            std::printf("READY\n");
            std::fflush(stdout);
        });
    }
    const int result = app.exec();
    dialog.reset();
    PrinterDriverManager::instance()->unload();
    return result;
}
