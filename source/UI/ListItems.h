#pragma once

#include <QString>

class QListWidget;
class QListWidgetItem;

// Rows of the driver lists in the management dialogs.
namespace ListItems {

// A new row with its text, the tool tip and the text aligned left and
// centred vertically. The caller adds its data roles and appends it.
QListWidgetItem *create(const QString &text, const QString &toolTip);

// Makes item the list's current row and reports it through the list's
// itemClicked signal, as a click by the user would, so the dialog sets its
// buttons for that row.
void select(QListWidget *list, QListWidgetItem *item);

} // namespace ListItems
