#include "HostStyle.h"

#include <QApplication>
#include <QFile>

namespace {

QString readText(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

} // namespace

// Q_INIT_RESOURCE declares the bundle's function where it is used, and that
// function is global: the bundle is registered from global scope.
static void registerHostStyleResource()
{
    Q_INIT_RESOURCE(host_style);
}

namespace HostStyle {

QString moduleStyleSheetPath()
{
    return QStringLiteral(":/frameless/qss/frameless_style.qss");
}

QString hostRules()
{
    static const bool registered = (registerHostStyleResource(), true);
    Q_UNUSED(registered)
    return readText(QStringLiteral(":/host/host_rules.qss"));
}

QString applicationStyleSheet()
{
    const QString moduleSheet = readText(moduleStyleSheetPath());
    if (moduleSheet.isEmpty())
        return QString();
    // Later rules win where both sheets style the same property, so the
    // host's rules come second.
    return moduleSheet + QLatin1Char('\n') + hostRules();
}

bool apply(QApplication &app)
{
    const QString sheet = applicationStyleSheet();
    if (sheet.isEmpty())
        return false;
    app.setStyleSheet(sheet);
    return true;
}

} // namespace HostStyle
