// Saves screenshots of a message box and of an empty frameless dialog, with
// the module's style sheet applied, into the folder given as argument.
// Run under a display, e.g.:
//   xvfb-run -a build/tests-apps/frameless_screenshots/frameless_screenshots docs/screenshots

#include "FramelessWidget/Common/CommonFramelessDialog.h"
#include "FramelessWidget/Common/CommonFramelessMessageBox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTimer>
#include <QVBoxLayout>

#include <cstdio>

namespace {

bool save(QWidget *widget, const QString &path)
{
    const bool ok = widget->grab().save(path);
    std::fprintf(ok ? stdout : stderr, "%s %s\n", ok ? "saved" : "could not save", qPrintable(path));
    return ok;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QString dir = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QDir::currentPath();
    QDir().mkpath(dir);

    QFile style(QStringLiteral(":/frameless/qss/frameless_style.qss"));
    if (style.open(QIODevice::ReadOnly))
        app.setStyleSheet(QString::fromUtf8(style.readAll()));

    bool ok = true;
    CommonFramelessDialog dialog;
    auto *layout = new QVBoxLayout(&dialog);
    auto *titleBarLayout = new QHBoxLayout;
    layout->addLayout(titleBarLayout);
    layout->addStretch();
    dialog.setupFramelessTitleBar(titleBarLayout);
    dialog.setWindowTitle(QStringLiteral("打印机属性"));
    dialog.resize(480, 320);
    dialog.show();
    QTimer::singleShot(300, &dialog, [&]() {
        ok = save(&dialog, dir + QStringLiteral("/frameless-dialog.png")) && ok;
        dialog.close();
    });
    dialog.exec();

    QTimer::singleShot(300, &app, [&]() {
        QWidget *box = QApplication::activeModalWidget();
        if (!box) {
            ok = false;
            return;
        }
        ok = save(box, dir + QStringLiteral("/frameless-messagebox.png")) && ok;
        if (auto *button = box->findChild<QAbstractButton *>(QStringLiteral("framelessMessageBox_btn")))
            button->click();
    });
    CommonFramelessMessageBox::question(
        nullptr, QStringLiteral("温馨提示"),
        QStringLiteral("如果继续安装，将会覆盖以下文件:\nICC Profile/RGB/sRGB.icc\n"
                       "是否继续？"),
        QStringLiteral("是"), QStringLiteral("否"), 0, QStringLiteral("下次不再询问"), nullptr,
        Qt::AlignHCenter);
    return ok ? 0 : 1;
}
