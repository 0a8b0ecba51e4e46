// Saves screenshots of a message box and of an empty frameless dialog, with
// the look a host gives them, in Chinese and in English, into the folder
// given as argument. Run under a display, e.g.:
//   xvfb-run -a build/tests-apps/frameless_screenshots/frameless_screenshots docs/screenshots
// writes frameless-dialog.png, frameless-messagebox.png and their "-en" twins.
// A Windows build takes them with the native platform plugin under Wine
// (docs/screenshots/windows/), from its own folder under tests-apps/:
//   DISPLAY=:N QT_QPA_PLATFORM=windows ../../wine-run ./frameless_screenshots.exe Z:/path/to/folder

#include "FramelessWidget/Common/CommonFramelessDialog.h"
#include "FramelessWidget/Common/CommonFramelessMessageBox.h"

#include "ScreenshotSupport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QTimer>
#include <QVBoxLayout>

namespace {

bool saveDialog(const QString &path)
{
    CommonFramelessDialog dialog;
    auto *layout = new QVBoxLayout(&dialog);
    auto *titleBarLayout = new QHBoxLayout;
    layout->addLayout(titleBarLayout);
    layout->addStretch();
    dialog.setupFramelessTitleBar(titleBarLayout);
    dialog.setWindowTitle(QCoreApplication::translate("PrinterDriverPropertyDlg", "打印机属性"));
    dialog.resize(480, 320);
    return ScreenshotSupport::saveWhenShown(&dialog, path);
}

// The question the install step asks before it replaces files, as the module
// words it.
bool saveMessageBox(const QString &path)
{
    bool ok = false;
    // Taken once the box has settled: laid out, shown and painted.
    QTimer::singleShot(300, qApp, [&]() {
        QWidget *box = QApplication::activeModalWidget();
        if (!box)
            return;
        ok = ScreenshotSupport::save(box, path);
        if (auto *button = box->findChild<QAbstractButton *>(QStringLiteral("framelessMessageBox_btn")))
            button->click();
    });
    const auto tr = [](const char *text) { return QCoreApplication::translate("QObject", text); };
    CommonFramelessMessageBox::question(
        nullptr, tr("温馨提示"),
        tr("如果继续安装，将会覆盖以下文件:") + QStringLiteral("\nICC Profile/RGB/sRGB.icc\n") +
            tr("是否继续？"),
        tr("是"), tr("否"), 0, QCoreApplication::translate("PrinterDriverPropertyDlg", "下次不再询问"),
        nullptr, Qt::AlignHCenter);
    return ok;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QString dir = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QDir::currentPath();
    QDir().mkpath(dir);
    if (!ScreenshotSupport::applyHostLook(app))
        return 1;

    bool ok = true;
    for (const ScreenshotSupport::Language &language : ScreenshotSupport::languages()) {
        ok = saveDialog(
                 ScreenshotSupport::useLanguage(language, dir + QStringLiteral("/frameless-dialog.png"))) &&
             ok;
        ok = saveMessageBox(ScreenshotSupport::useLanguage(
                 language, dir + QStringLiteral("/frameless-messagebox.png"))) &&
             ok;
    }
    return ok ? 0 : 1;
}
