#include "AccessibleWalk.h"

#include <QMetaEnum>
#include <QWidget>

namespace AccessibleWalk {

namespace {

// A tree deeper or wider than this is a loop in the interfaces, not a form.
constexpr int maximumDepth = 64;
constexpr int maximumNodes = 20000;

// "listWidget_ (QListWidget, List)"; an object without a name by its class.
QString describe(QAccessibleInterface *iface)
{
    const QObject *object = iface->object();
    const QString role = roleName(iface->role());
    if (!object)
        return QStringLiteral("(%1)").arg(role);
    const QString className = QString::fromLatin1(object->metaObject()->className());
    const QString objectName =
        object->objectName().isEmpty() ? QStringLiteral("<unnamed>") : object->objectName();
    return QStringLiteral("%1 (%2, %3)").arg(objectName, className, role);
}

// The step an ancestor adds to a path: its object name, or its class when
// it has none.
QString pathStep(QAccessibleInterface *iface)
{
    const QObject *object = iface->object();
    if (!object)
        return roleName(iface->role());
    return object->objectName().isEmpty() ? QString::fromLatin1(object->metaObject()->className())
                                          : object->objectName();
}

void walk(QAccessibleInterface *iface, const QString &parentPath, int depth, int &nodes,
          QList<Control> &found)
{
    if (!iface || !iface->isValid() || depth > maximumDepth || ++nodes > maximumNodes)
        return;
    if (depth > 0 && isInteractive(iface->role())) {
        Control control;
        control.role = iface->role();
        control.name = iface->text(QAccessible::Name);
        control.path = parentPath + QStringLiteral(" > ") + describe(iface);
        control.hidden = iface->state().invisible;
        found.append(control);
    }
    const QString path =
        parentPath.isEmpty() ? pathStep(iface) : parentPath + QLatin1Char('/') + pathStep(iface);
    const int count = iface->childCount();
    for (int i = 0; i < count; ++i)
        walk(iface->child(i), path, depth + 1, nodes, found);
}

} // namespace

bool isInteractive(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::PushButton:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::Slider:
    case QAccessible::SpinBox:
    case QAccessible::Dial:
    case QAccessible::List:
    case QAccessible::Table:
    case QAccessible::Tree:
    case QAccessible::PageTab:
    case QAccessible::PageTabList:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
    case QAccessible::ButtonDropGrid:
    case QAccessible::HotkeyField:
    case QAccessible::Link:
        return true;
    default:
        return false;
    }
}

QString roleName(QAccessible::Role role)
{
    const char *key = QMetaEnum::fromType<QAccessible::Role>().valueToKey(role);
    return key ? QString::fromLatin1(key) : QString::number(role);
}

QList<Control> interactiveControls(QWidget *window)
{
    QList<Control> found;
    int nodes = 0;
    walk(QAccessible::queryAccessibleInterface(window), QString(), 0, nodes, found);
    return found;
}

QStringList namelessControls(QWidget *window)
{
    QStringList paths;
    for (const Control &control : interactiveControls(window)) {
        if (control.name.isEmpty())
            paths << control.path + (control.hidden ? QStringLiteral(" [hidden]") : QString());
    }
    return paths;
}

QString accessibleNameOf(QWidget *widget)
{
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(widget);
    return iface ? iface->text(QAccessible::Name) : QString();
}

} // namespace AccessibleWalk
