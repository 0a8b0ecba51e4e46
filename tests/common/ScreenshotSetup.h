#pragma once

// Set-up shared by the programs that make the documentation's screenshots.

#include <QApplication>
#include <QFile>
#include <QString>

#include <cstdio>

namespace ScreenshotSetup {

// The one argument of a screenshot program (its output path), or an empty
// text after printing the usage line.
inline QString outputArgument(const char *usage)
{
    const QStringList args = QApplication::arguments();
    if (args.size() == 2)
        return args.at(1);
    std::fprintf(stderr, "usage: %s\n", usage);
    return QString();
}

// Applies the frameless style sheet the module carries, as a host does.
inline bool applyModuleStyleSheet(QApplication &app)
{
    QFile styleSheet(QStringLiteral(":/frameless/qss/frameless_style.qss"));
    if (!styleSheet.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read the frameless style sheet\n");
        return false;
    }
    app.setStyleSheet(QString::fromUtf8(styleSheet.readAll()));
    return true;
}

} // namespace ScreenshotSetup
