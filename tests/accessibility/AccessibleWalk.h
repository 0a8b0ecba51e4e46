#pragma once

#include <QAccessible>
#include <QList>
#include <QString>
#include <QStringList>

class QWidget;

// What a screen reader finds in a window: its accessible tree, walked from
// the window's own interface through every child, the way an assistive
// tool walks it.
namespace AccessibleWalk {

// One control the operator can act on.
struct Control
{
    QAccessible::Role role = QAccessible::NoRole;
    QString name;
    // Where it sits: "PrinterDriverManagerDlg > listWidget_ (QListWidget, List)".
    QString path;
    bool hidden = false;
};

// Roles of the controls a user acts on: buttons, boxes, fields, lists, tabs.
bool isInteractive(QAccessible::Role role);

QString roleName(QAccessible::Role role);

// Every interactive control under window, shown or hidden, in tree order.
QList<Control> interactiveControls(QWidget *window);

// The paths of the interactive controls whose accessible name is empty.
QStringList namelessControls(QWidget *window);

// The accessible name a screen reader speaks for widget.
QString accessibleNameOf(QWidget *widget);

} // namespace AccessibleWalk
