// Linked into the test executables registered with STYLED (see
// cmake/BexTesting.cmake). When BEX_TEST_STYLE_SHEET is set, the application
// gets the module's style sheet and the host's rules as soon as it exists,
// before the first widget, exactly as a host applies them; the same tests
// then run against widgets styled as the operator sees them.

#include "HostStyle.h"

#include <QApplication>
#include <QStyle>

#include <cstdio>
#include <cstdlib>

static void applyHostStyleSheetForStyledRun()
{
    if (qEnvironmentVariableIsEmpty("BEX_TEST_STYLE_SHEET"))
        return;
    auto *app = qobject_cast<QApplication *>(QCoreApplication::instance());
    if (!app) {
        std::fprintf(stderr, "BEX_TEST_STYLE_SHEET is set, but this test has no QApplication to style\n");
        std::exit(EXIT_FAILURE);
    }
    // Startup functions run while the application is still being built,
    // before its style exists; setStyleSheet() wraps the application style,
    // so that style is made first.
    QApplication::style();
    if (!HostStyle::apply(*app)) {
        std::fprintf(stderr, "BEX_TEST_STYLE_SHEET is set, but %s cannot be read\n",
                     qPrintable(HostStyle::moduleStyleSheetPath()));
        std::exit(EXIT_FAILURE);
    }
}
Q_COREAPP_STARTUP_FUNCTION(applyHostStyleSheetForStyledRun)
