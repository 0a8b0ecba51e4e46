// Saves a picture of the rename dialog as a user sees it, for the
// documentation. Like a host, it applies the frameless style sheet that the
// module carries, which draws the title bar and its close button.
//   xvfb-run -a ./renamedialog_screenshot docs/screenshots/rename-dialog.png

#include "UI/ModifyPrinterDriverNameDlg.h"

#include "ScreenshotSetup.h"

#include <QApplication>
#include <QLineEdit>
#include <QTimer>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QString output = ScreenshotSetup::outputArgument("renamedialog_screenshot <output.png>");
    if (output.isEmpty())
        return 2;
    if (!ScreenshotSetup::applyModuleStyleSheet(app))
        return 1;

    ModifyPrinterDriverNameDlg dialog(QStringLiteral("UV-2513 平板打印机 (白墨+光油)"), nullptr);
    dialog.show();
    if (auto *edit = dialog.findChild<QLineEdit *>(QStringLiteral("lineEdit_driverShowName_"))) {
        edit->setFocus();
        edit->end(false);
    }

    int result = 1;
    QTimer::singleShot(0, &dialog, [&]() {
        result = dialog.grab().save(output) ? 0 : 1;
        if (result != 0)
            std::fprintf(stderr, "cannot write %s\n", qPrintable(output));
        QApplication::quit();
    });
    QApplication::exec();
    return result;
}
