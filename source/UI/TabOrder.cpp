#include "UI/TabOrder.h"

#include <QGridLayout>
#include <QLayout>
#include <QScrollArea>
#include <QWidget>

#include <algorithm>
#include <vector>

namespace {

bool takesTabFocus(const QWidget *widget)
{
    return (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
}

void collectWidget(QWidget *widget, QList<QWidget *> *order);

// The items of a layout in reading order.
std::vector<QLayoutItem *> itemsInReadingOrder(QLayout *layout)
{
    std::vector<QLayoutItem *> items;
    auto *grid = qobject_cast<QGridLayout *>(layout);
    std::vector<std::pair<std::pair<int, int>, QLayoutItem *>> cells;
    for (int index = 0; index < layout->count(); ++index) {
        QLayoutItem *item = layout->itemAt(index);
        if (!grid) {
            items.push_back(item);
            continue;
        }
        int row = 0, column = 0, rowSpan = 0, columnSpan = 0;
        grid->getItemPosition(index, &row, &column, &rowSpan, &columnSpan);
        cells.push_back({{row, column}, item});
    }
    std::stable_sort(cells.begin(), cells.end(),
                     [](const auto &left, const auto &right) { return left.first < right.first; });
    for (const auto &cell : cells)
        items.push_back(cell.second);
    return items;
}

void collectLayout(QLayout *layout, QList<QWidget *> *order)
{
    for (QLayoutItem *item : itemsInReadingOrder(layout)) {
        if (QWidget *widget = item->widget())
            collectWidget(widget, order);
        else if (QLayout *inner = item->layout())
            collectLayout(inner, order);
    }
}

void collectWidget(QWidget *widget, QList<QWidget *> *order)
{
    if (widget->isWindow())
        return;
    if (auto *area = qobject_cast<QScrollArea *>(widget)) {
        // The area itself only scrolls; its content is what the operator
        // tabs through.
        if (area->widget())
            collectWidget(area->widget(), order);
        return;
    }
    if (takesTabFocus(widget)) {
        // A control: its inner parts (a spin box's line edit) follow it.
        order->append(widget);
        return;
    }
    if (QLayout *layout = widget->layout()) {
        collectLayout(layout, order);
        return;
    }
    // No layout to read: the children keep the order they have.
    const QList<QWidget *> children = widget->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *child : children)
        collectWidget(child, order);
}

} // namespace

void TabOrder::followLayout(QWidget *root)
{
    QList<QWidget *> order;
    if (QLayout *layout = root->layout())
        collectLayout(layout, &order);
    for (int index = 1; index < order.size(); ++index)
        QWidget::setTabOrder(order.at(index - 1), order.at(index));
}
