#include "UI/ListItems.h"

#include <QListWidget>

namespace ListItems {

QListWidgetItem *create(const QString &text, const QString &toolTip)
{
    auto *item = new QListWidgetItem(text);
    item->setToolTip(toolTip);
    item->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return item;
}

void select(QListWidget *list, QListWidgetItem *item)
{
    list->setCurrentItem(item);
    emit list->itemClicked(item);
}

} // namespace ListItems
