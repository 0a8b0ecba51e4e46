#pragma once

// What the documentation's screenshot programs share: the look of a well
// set-up host, one picture per interface language, and saving a window once
// it has been laid out and painted. The programs run under a display, e.g.
//   xvfb-run -a build/tests-apps/<program>/<program> docs/screenshots/<name>.png

#include "Config/PrinterDriverConfig.h"
#include "Config/UIModuleConfig.h"
#include "HostStyle.h"
#include "UI/PrinterDriverManager.h"

#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <QWidget>

#include <cstdio>

namespace ScreenshotSupport {

// The module's style sheet and the host's rules, as a host applies them.
inline bool applyHostLook(QApplication &app)
{
    if (HostStyle::apply(app))
        return true;
    std::fprintf(stderr, "cannot read %s\n", qPrintable(HostStyle::moduleStyleSheetPath()));
    return false;
}

struct Language
{
    QLocale::Language language;
    // Added before ".png": the Chinese picture keeps the name it is given.
    const char *suffix;
};

// Chinese, the module's source language, then English.
inline QList<Language> languages()
{
    return {{QLocale::Chinese, ""}, {QLocale::English, "-en"}};
}

// Switches the module's language and names the picture for it.
inline QString useLanguage(const Language &language, const QString &path)
{
    UIModuleConfig::instance()->setLanguage(language.language);
    QString named = path;
    if (named.endsWith(QLatin1String(".png")))
        named.chop(4);
    return named + QString::fromLatin1(language.suffix) + QStringLiteral(".png");
}

inline bool save(QWidget *widget, const QString &path)
{
    const bool ok = widget->grab().save(path);
    std::fprintf(ok ? stdout : stderr, "%s %s\n", ok ? "saved" : "could not save", qPrintable(path));
    return ok;
}

// The id of the sample driver `sample` (a .prs file of the staged driver
// folder), installed first where it is not yet; empty, with a line on
// stderr, when it cannot be.
inline QString sampleDriverId(const QString &sample)
{
    const QString prs = PrinterDriverConfig::instance()->driverDir() + sample + QStringLiteral(".prs");
    PrinterDriverManager *manager = PrinterDriverManager::instance();
    PrinterDriverManager::DriverInfoPtr info = manager->findDriverInfoByPrsPath(prs);
    if (!info)
        info = manager->installDriver(prs);
    if (!info) {
        std::fprintf(stderr, "cannot install %s\n", qPrintable(prs));
        return QString();
    }
    return info->id;
}

// Shows the window, lets it be laid out and painted, and saves it.
inline bool saveWhenShown(QWidget *window, const QString &path)
{
    window->show();
    QEventLoop loop;
    QTimer::singleShot(0, &loop, &QEventLoop::quit);
    loop.exec();
    return save(window, path);
}

} // namespace ScreenshotSupport
