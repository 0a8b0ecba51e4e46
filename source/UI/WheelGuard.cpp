#include "UI/WheelGuard.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QWidget>

bool WheelGuard::isWheelEditable(const QWidget *widget)
{
    return qobject_cast<const QComboBox *>(widget) || qobject_cast<const QAbstractSlider *>(widget) ||
           qobject_cast<const QAbstractSpinBox *>(widget);
}

void WheelGuard::guardChildren(QWidget *root)
{
    QList<QWidget *> widgets = root->findChildren<QWidget *>();
    widgets.prepend(root);
    for (QWidget *widget : qAsConst(widgets)) {
        if (!isWheelEditable(widget))
            continue;
        if (widget->focusPolicy() == Qt::WheelFocus)
            widget->setFocusPolicy(Qt::StrongFocus);
        // Installing the same filter again only moves it to the front.
        widget->installEventFilter(this);
    }
}

bool WheelGuard::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Wheel) {
        auto *widget = qobject_cast<QWidget *>(watched);
        if (widget && !widget->hasFocus()) {
            // Ignored and filtered: the control never sees the wheel, and
            // the application offers it to the parents, up to the scroll
            // area's viewport.
            event->ignore();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}
