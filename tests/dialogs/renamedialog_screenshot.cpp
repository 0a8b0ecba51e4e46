// Saves a picture of the rename dialog as a user sees it, for the
// documentation. Like a host, it applies the frameless style sheet that the
// module carries, which draws the title bar and its close button.
//   xvfb-run -a ./renamedialog_screenshot docs/screenshots/rename-dialog.png

#include "UI/ModifyPrinterDriverNameDlg.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QTimer>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: renamedialog_screenshot <output.png>\n");
        return 2;
    }

    QFile styleSheet(QStringLiteral(":/frameless/qss/frameless_style.qss"));
    if (!styleSheet.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read the frameless style sheet\n");
        return 1;
    }
    app.setStyleSheet(QString::fromUtf8(styleSheet.readAll()));

    ModifyPrinterDriverNameDlg dialog(QStringLiteral("UV-2513 平板打印机 (白墨+光油)"), nullptr);
    dialog.show();
    if (auto *edit = dialog.findChild<QLineEdit *>(QStringLiteral("lineEdit_driverShowName_"))) {
        edit->setFocus();
        edit->end(false);
    }

    int result = 1;
    QTimer::singleShot(0, &dialog, [&]() {
        result = dialog.grab().save(args.at(1)) ? 0 : 1;
        if (result != 0)
            std::fprintf(stderr, "cannot write %s\n", qPrintable(args.at(1)));
        QApplication::quit();
    });
    QApplication::exec();
    return result;
}
