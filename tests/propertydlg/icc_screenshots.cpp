// Saves pictures of the property dialog's ICC checks as an operator meets
// them, in Chinese and in English, with the look a host gives the module:
//   icc-refused-pick.png   a Lab profile picked for the RGB row: the box
//                          that refuses it, over the dialog
//   icc-row-warning.png    the sample UV2513 whose printer profile was
//                          deleted: the marked row with its tool tip
// Run under a display with a window manager, e.g.
//   xvfb-run -a -s "-screen 0 1280x1024x24" ./icc_screenshots docs/screenshots
// The pictures are taken of the screen, so that the box and the tool tip,
// windows of their own, are in them.

#include "Config/PrinterDriverConfig.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverPropertyDlg.h"

#include "IccTestProfiles.h"
#include "PropertyDlgTestSupport.h"
#include "ScreenshotSupport.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QTemporaryDir>
#include <QToolTip>

#include <algorithm>
#include <cstdio>

namespace {

const QString kSample = QStringLiteral("BexUV2513_CMYKWV");

void settle(int rounds = 20)
{
    for (int round = 0; round < rounds; ++round)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

// The dialog with a window of its own drawn over it where the operator sees
// it: each is grabbed from its widget, as the other screenshot programs do,
// because a grab of the screen under Xvfb misses a frameless box that is
// still being mapped.
bool saveComposed(QWidget *dialog, QWidget *over, const QPoint &at, const QString &path)
{
    const QPixmap base = dialog->grab();
    const QPixmap top = over->grab();
    QRect area = QRect(QPoint(0, 0), base.size()) | QRect(at, top.size());
    QPixmap shot(area.size());
    shot.fill(Qt::black);
    QPainter painter(&shot);
    painter.drawPixmap(-area.topLeft(), base);
    painter.drawPixmap(at - area.topLeft(), top);
    painter.end();
    const bool ok = shot.save(path);
    std::fprintf(ok ? stdout : stderr, "%s %s\n", ok ? "saved" : "could not save", qPrintable(path));
    return ok;
}

bool shootRefusedPick(const QString &driverId, const QString &path)
{
    QTemporaryDir source;
    const QString chosen = source.filePath(QStringLiteral("lab.icc"));
    if (!QFile::copy(IccTestProfiles::ghostscript(QStringLiteral("lab.icc")), chosen))
        return false;
    PrinterDriverConfig::instance()->setIccOpenRootDir(source.path());
    PrinterDriverConfig::instance()->setWindowRecord(QPoint(0, 0), QSize());
    PrinterDriverPropertyDlg dialog(driverId, nullptr);
    dialog.show();
    settle();
    bool saved = false;
    std::unique_ptr<PropertyDlgTest::ModalAnswer> box;
    PropertyDlgTest::ModalAnswer file(&dialog, [&](QWidget *modal) {
        auto *fileDialog = qobject_cast<QFileDialog *>(modal);
        if (!fileDialog)
            return;
        box = std::make_unique<PropertyDlgTest::ModalAnswer>(modal, [&](QWidget *shown) {
            settle();
            // Centred over the dialog, as the box places itself.
            const QPoint at((dialog.width() - shown->width()) / 2, (dialog.height() - shown->height()) / 2);
            saved = saveComposed(&dialog, shown, at, path);
            if (auto *boxDialog = qobject_cast<QDialog *>(shown))
                boxDialog->reject();
        });
        PropertyDlgTest::chooseFile(fileDialog, chosen);
    });
    PropertyDlgTest::child<QPushButton>(&dialog, QStringLiteral("btn_selectICC_RGB_"))->click();
    return saved;
}

bool shootRowWarning(const QString &driverId, const QString &path)
{
    PrinterDriverConfig::instance()->setWindowRecord(QPoint(0, 0), QSize());
    PrinterDriverPropertyDlg dialog(driverId, nullptr);
    dialog.show();
    settle();
    auto *curve = PropertyDlgTest::child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_Curve_"));
    if (curve->actions().isEmpty()) {
        std::fprintf(stderr, "the printer profile's row is not marked\n");
        return false;
    }
    // The mark's tool tip, where it shows when the pointer rests on the mark.
    QAction *mark = curve->actions().first();
    const QPoint below = curve->mapTo(&dialog, QPoint(4, curve->height() + 4));
    QToolTip::showText(curve->mapToGlobal(QPoint(4, curve->height() + 4)), mark->toolTip(), curve);
    QWidget *tip = nullptr;
    for (QWidget *top : QApplication::topLevelWidgets()) {
        if (top->inherits("QTipLabel"))
            tip = top;
    }
    if (!tip) {
        std::fprintf(stderr, "the mark's tool tip did not show\n");
        return false;
    }
    tip->adjustSize();
    // Moved left as far as needed to stay over the dialog, as a tool tip
    // is kept on its screen: the picture shows no room beside the dialog.
    const QPoint at(std::max(0, std::min(below.x(), dialog.width() - tip->width())), below.y());
    const bool ok = saveComposed(&dialog, tip, at, path);
    QToolTip::hideText();
    return ok;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: icc_screenshots <output folder>\n");
        return 2;
    }
    if (!ScreenshotSupport::applyHostLook(app))
        return 1;
    const auto config = PrinterDriverConfig::instance();
    config->setShowIccDetail(true);
    config->setShowInkDetail(false);
    config->setShowOtherPropertyDetail(false);
    config->setShowExtraOptionDetail(false);

    const QString driverId = ScreenshotSupport::sampleDriverId(kSample);
    if (driverId.isEmpty())
        return 1;

    // The printer profile of the driver's stored combination, taken away
    // for the marked row and put back afterwards.
    QString profile;
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        profile = PropertyDlgTest::child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_Curve_"))->text();
    }
    const QString profilePath = config->iccOutputDir() + profile;
    QFile stored(profilePath);
    const QByteArray bytes = stored.open(QIODevice::ReadOnly) ? stored.readAll() : QByteArray();
    stored.close();
    if (profile.isEmpty() || bytes.isEmpty()) {
        std::fprintf(stderr, "cannot read the printer profile %s\n", qPrintable(profilePath));
        return 1;
    }

    // Chinese first: the module cannot go back to it once English is chosen.
    const QDir out(args.at(1));
    bool ok = true;
    for (const ScreenshotSupport::Language &language : ScreenshotSupport::languages()) {
        ok =
            shootRefusedPick(driverId, ScreenshotSupport::useLanguage(
                                           language, out.filePath(QStringLiteral("icc-refused-pick.png")))) &&
            ok;
        ok = QFile::remove(profilePath) && ok;
        ok = shootRowWarning(driverId, ScreenshotSupport::useLanguage(
                                           language, out.filePath(QStringLiteral("icc-row-warning.png")))) &&
             ok;
        QFile restored(profilePath);
        ok = restored.open(QIODevice::WriteOnly) && restored.write(bytes) == bytes.size() && ok;
    }
    PrinterDriverManager::instance()->unload();
    return ok ? 0 : 1;
}
