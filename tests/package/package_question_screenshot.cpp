// Saves pictures of the question an import asks before it replaces files, as
// an operator sees it, in Chinese and English, for the documentation. It
// exports a sample driver of its own application directory and imports it
// again, so the question lists the files that would be replaced; the picture
// is taken while the box is open and the box is then answered "否" (No), so
// nothing is replaced.
//   xvfb-run -a ./package_question_screenshot docs/screenshots/package-overwrite-question.png

#include "ScreenshotSupport.h"

#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverPackageHelper.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QTimer>

#include <cstdio>

namespace {

// Imports the package while a timer saves the question and answers it "否".
bool saveQuestion(PrinterDriverPackageHelper &helper, const QString &package, const QString &path)
{
    bool saved = false;
    QTimer poll;
    poll.setInterval(20);
    QObject::connect(&poll, &QTimer::timeout, [&]() {
        auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        poll.stop();
        saved = ScreenshotSupport::save(box, path);
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
    if (!imported.isEmpty()) {
        std::fprintf(stderr, "the question was answered yes\n");
        return false;
    }
    return saved;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: package_question_screenshot <output.png>\n");
        return 2;
    }
    if (!ScreenshotSupport::applyHostLook(app))
        return 1;

    PrinterDriverManager *manager = PrinterDriverManager::instance();
    const QString prs =
        QApplication::applicationDirPath() + QStringLiteral("/dtp/driver/BexUV2513_CMYKWV.prs");
    PrinterDriverManager::DriverInfoPtr driver = manager->findDriverInfoByPrsPath(prs);
    if (!driver)
        driver = manager->installDriver(prs);
    const QString package = QDir::tempPath() + QStringLiteral("/BexUV2513_CMYKWV.bex_driver");
    PrinterDriverPackageHelper helper(nullptr);
    bool ok = driver && helper.exportPackage(package, prs, driver->id);
    if (!ok)
        std::fprintf(stderr, "cannot export the sample driver\n");
    for (const ScreenshotSupport::Language &language : ScreenshotSupport::languages()) {
        if (ok)
            ok = saveQuestion(helper, package, ScreenshotSupport::useLanguage(language, args.at(1)));
    }
    QFile::remove(package);
    manager->unload();
    return ok ? 0 : 1;
}
