#pragma once

class QWidget;

// Keyboard focus order for dialogs whose rows are made at run time.
namespace TabOrder {

// Chains the controls inside `root` that take focus by Tab in the order of
// its layouts: box layouts item by item, grid layouts row by row and left to
// right, a scroll area's content where the scroll area stands. A widget
// without a layout keeps its children in the order they were made. Hidden
// controls keep their place, so the order holds when they show again.
void followLayout(QWidget *root);

} // namespace TabOrder
