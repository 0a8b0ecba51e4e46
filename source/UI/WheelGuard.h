#pragma once

#include <QObject>

class QWidget;

// Keeps the mouse wheel from editing a value by accident. Over a combo box,
// slider or spin box that has no keyboard focus, the wheel scrolls the page
// that holds it instead of changing the value; once the operator has clicked
// or tabbed into the control, the wheel edits it as usual.
class WheelGuard : public QObject
{
public:
    using QObject::QObject;

    // Guards every combo box, slider and spin box inside `root` (root
    // included); they take focus by click or Tab only, never by the wheel.
    // Call it again after more controls were added.
    void guardChildren(QWidget *root);

    // True for the kinds of control whose value the wheel changes.
    static bool isWheelEditable(const QWidget *widget);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
