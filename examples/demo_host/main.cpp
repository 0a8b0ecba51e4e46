// The demo host: a small RIP host that loads the driver UI module at run
// time, exactly as a RIP host does, and lets a person try it.
//
//   demo_host               the demo window (the headless tour when there is
//                           no display)
//   demo_host --tour DIR    the headless tour, its screenshots saved in DIR
//
// It runs from the application directory that the build stages: the module,
// the print-parameter library, dtp/ with the sample drivers and the 7z link.

#include "DemoWindow.h"
#include "DriverUiModule.h"
#include "HostStyle.h"
#include "ModuleLog.h"
#include "Tour.h"

#include <QApplication>
#include <QDir>
#include <QPlainTextEdit>
#include <QTextStream>

namespace {

// No display to show windows on: no X11 or Wayland display, and no Qt
// platform chosen by hand.
bool haveDisplay()
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
#else
    return true;
#endif
}

} // namespace

int main(int argc, char *argv[])
{
    QString tourDir;
    for (int i = 1; i < argc; ++i) {
        if (QByteArray(argv[i]) == "--tour" && i + 1 < argc)
            tourDir = QString::fromLocal8Bit(argv[++i]);
    }
    const bool tour = !tourDir.isEmpty() || !haveDisplay();
    if (!haveDisplay())
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication app(argc, argv);
    QTextStream err(stderr);
    if (tour && tourDir.isEmpty())
        tourDir = QDir::current().filePath(QStringLiteral("demo-tour"));

    ModuleLog log;
    DriverUiModule module;
    if (!module.open(QCoreApplication::applicationDirPath())) {
        err << "demo_host: " << module.error() << '\n';
        return 1;
    }
    // The module's style sheet and the host's rules, as a host applies them.
    if (!HostStyle::apply(app))
        err << "demo_host: cannot read the module's style sheet " << HostStyle::moduleStyleSheetPath()
            << '\n';

    DemoWindow window(module);
    QObject::connect(&log, &ModuleLog::lineLogged, window.logPanel(), &QPlainTextEdit::appendPlainText);
    if (tour) {
        Tour walk(window, tourDir);
        return walk.run();
    }
    window.show();
    return app.exec();
}
