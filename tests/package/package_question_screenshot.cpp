// Saves a picture of the question an import asks before it replaces files,
// as an operator sees it, for the documentation. It exports a sample driver
// of its own application directory and imports it again, so the question
// lists the files that would be replaced; the picture is taken while the box
// is open and the box is then answered "否" (No), so nothing is replaced.
// Like a host, it applies the frameless style sheet that the module carries,
// followed by its own rules for what that sheet leaves open.
//   xvfb-run -a ./package_question_screenshot <output.png> [--english]

#include "Config/UIModuleConfig.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverPackageHelper.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QTimer>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() < 2 || args.size() > 3 ||
        (args.size() == 3 && args.at(2) != QLatin1String("--english"))) {
        std::fprintf(stderr, "usage: package_question_screenshot <output.png> [--english]\n");
        return 2;
    }
    if (args.size() == 3)
        UIModuleConfig::instance()->setLanguage(QLocale::English);

    QFile styleSheet(QStringLiteral(":/frameless/qss/frameless_style.qss"));
    if (!styleSheet.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read the frameless style sheet\n");
        return 1;
    }
    // What the module's sheet leaves to the host: the size of the box's
    // buttons and the colour of their text.
    app.setStyleSheet(
        QString::fromUtf8(styleSheet.readAll()) +
        QStringLiteral("\nQPushButton#framelessMessageBox_btn { min-width: 72px; min-height: 28px; "
                       "color: white; }\n"));

    PrinterDriverManager *manager = PrinterDriverManager::instance();
    const QString prs =
        QApplication::applicationDirPath() + QStringLiteral("/dtp/driver/BexUV2513_CMYKWV.prs");
    PrinterDriverManager::DriverInfoPtr driver = manager->findDriverInfoByPrsPath(prs);
    if (!driver)
        driver = manager->installDriver(prs);
    const QString package = QDir::tempPath() + QStringLiteral("/BexUV2513_CMYKWV.bex_driver");
    PrinterDriverPackageHelper helper(nullptr);
    if (!driver || !helper.exportPackage(package, prs, driver->id)) {
        std::fprintf(stderr, "cannot export the sample driver\n");
        manager->unload();
        return 1;
    }

    int result = 1;
    QTimer poll;
    poll.setInterval(20);
    QObject::connect(&poll, &QTimer::timeout, [&]() {
        auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        poll.stop();
        result = box->grab().save(args.at(1)) ? 0 : 1;
        if (result != 0)
            std::fprintf(stderr, "cannot write %s\n", qPrintable(args.at(1)));
        const QList<QAbstractButton *> buttons = box->findChildren<QAbstractButton *>();
        for (QAbstractButton *button : buttons) {
            if (button->text() == QObject::tr("否")) {
                button->click();
                return;
            }
        }
        box->done(-1);
    });
    poll.start();
    QStringList imported;
    helper.importPackage(package, imported);
    QFile::remove(package);
    manager->unload();
    if (!imported.isEmpty()) {
        std::fprintf(stderr, "the question was answered yes\n");
        return 1;
    }
    return result;
}
