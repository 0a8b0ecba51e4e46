#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

#include <vector>

class QLayout;
class QWidget;

// Checks of a form as it was designed, driven by a table per form: its
// window, its widgets with their classes and texts, and the tree of its
// layouts. Each check reports every row or line that differs.
namespace FormTable {

// One widget of a form: the object name of exactly one of its children, the
// child's class and its "text" property (empty for a widget without one).
// The row names the widget in messages.
struct Widget
{
    const char *row;
    QString objectName;
    QString className;
    QString text;
};

// A frameless dialog as designed: its size and title, its widgets and its
// layouts (see verifyLayout()).
struct Form
{
    QSize size;
    QString title;
    std::vector<Widget> widgets;
    QStringList layout;
};

// The dialog is the form: its size and title, the same title in its
// frameless title bar, whose only button shown is close (no context help,
// no minimize or maximize), every widget and the whole layout.
void verifyForm(QWidget *dialog, const Form &designed);

// Every widget of the table is in form as its row describes it.
void verifyWidgets(const QWidget *form, const std::vector<Widget> &widgets);

// The layout's tree is the one designed: one line an item, in the order of
// a walk through the tree, indented two spaces a level below the layout
// that holds it. A line names the item:
//   a layout  "QVBoxLayout verticalLayout_3", followed by the properties
//             the design sets, if any: " spacing 6", " margins 6,6,6,6"
//             (left, top, right, bottom), in that order
//   a widget  "QPushButton btn_ok_" (class and object name)
//   a spacer  "QSpacerItem 40x20 Expanding/Minimum" (size hint, horizontal
//             and vertical policy)
// Every item of every layout has its line.
void verifyLayout(QLayout *layout, const QStringList &expected);

} // namespace FormTable
