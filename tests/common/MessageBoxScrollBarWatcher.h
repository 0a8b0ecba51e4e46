#pragma once

// Counts every time a horizontal scroll bar of a message box's text is shown
// or painted, from the watcher's construction until it is gone: a bar that
// flashes up for one frame counts as much as one that stays.

#include "FramelessWidget/Common/CommonFramelessMessageBox.h"

#include <QApplication>
#include <QEvent>
#include <QScrollBar>

class HorizontalScrollBarWatcher : public QObject
{
public:
    HorizontalScrollBarWatcher() { qApp->installEventFilter(this); }
    ~HorizontalScrollBarWatcher() override { qApp->removeEventFilter(this); }

    int shown = 0;
    int painted = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Show && event->type() != QEvent::Paint)
            return false;
        auto *bar = qobject_cast<QScrollBar *>(watched);
        if (!bar || bar->orientation() != Qt::Horizontal)
            return false;
        for (QWidget *w = bar->parentWidget(); w; w = w->parentWidget()) {
            if (qobject_cast<MessageBoxTextEdit *>(w)) {
                ++(event->type() == QEvent::Show ? shown : painted);
                break;
            }
        }
        return false;
    }
};
