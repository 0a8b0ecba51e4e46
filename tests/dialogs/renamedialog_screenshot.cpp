// Saves pictures of the rename dialog as a user sees it, in Chinese and in
// English, for the documentation, with the look a host gives it.
//   xvfb-run -a ./renamedialog_screenshot docs/screenshots/rename-dialog.png
// writes rename-dialog.png (Chinese) and rename-dialog-en.png (English).

#include "UI/ModifyPrinterDriverNameDlg.h"

#include "ScreenshotSupport.h"

#include <QApplication>
#include <QLineEdit>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: renamedialog_screenshot <output.png>\n");
        return 2;
    }
    if (!ScreenshotSupport::applyHostLook(app))
        return 1;

    bool ok = true;
    for (const ScreenshotSupport::Language &language : ScreenshotSupport::languages()) {
        const QString path = ScreenshotSupport::useLanguage(language, args.at(1));
        ModifyPrinterDriverNameDlg dialog(QStringLiteral("UV-2513 平板打印机 (白墨+光油)"), nullptr);
        dialog.show();
        // The name from its start, with nothing selected, as the operator
        // finds it before typing.
        if (auto *edit = dialog.findChild<QLineEdit *>(QStringLiteral("lineEdit_driverShowName_"))) {
            edit->setFocus();
            edit->home(false);
        }
        ok = ScreenshotSupport::saveWhenShown(&dialog, path) && ok;
    }
    return ok ? 0 : 1;
}
