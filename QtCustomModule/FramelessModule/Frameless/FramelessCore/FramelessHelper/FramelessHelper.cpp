#include "FramelessHelper.h"

#include "FramelessCore/FramelessLogging.h"

#include <QWidget>

using FramelessGeometry::ChildUnderCursor;

FramelessHelper::FramelessHelper(QWidget *window)
    : QObject(window)
    , window_(window)
{
    window_->setProperty("framelessWidget", true);
}

FramelessHelper::~FramelessHelper() = default;

bool FramelessHelper::isIgnoredTitleBarSubWidget(const QWidget *widget) const
{
    return ignoredTitleBarSubWidgets_.contains(const_cast<QWidget *>(widget));
}

bool FramelessHelper::isDummyTitleBar(const QWidget *widget) const
{
    return dummyTitleBars_.contains(const_cast<QWidget *>(widget));
}

void FramelessHelper::setMovable(bool movable)
{
    movable_ = movable;
}

void FramelessHelper::setResizable(bool resizable)
{
    resizable_ = resizable;
}

void FramelessHelper::setTitleBar(QWidget *titleBar)
{
    if (!titleBar)
        return;
    if (titleBar_) {
        BEX_WARNING(lcFrameless) << "titleBar is not nullptr,check your code!";
        disconnect(titleBar_, &QObject::destroyed, this, &FramelessHelper::on_titleBarDestroyed);
        titleBar_->hide();
        titleBar_->setParent(nullptr);
        titleBar_->deleteLater();
    }
    titleBar_ = titleBar;
    connect(titleBar_, &QObject::destroyed, this, &FramelessHelper::on_titleBarDestroyed);
}

void FramelessHelper::addDummyTitleBar(QWidget *widget)
{
    if (!titleBar_)
        BEX_WARNING(lcFrameless) << "please first invoke setTitleBar";
    if (!widget || widget == titleBar_)
        return;
    if (titleBar_ && titleBar_->isAncestorOf(widget)) {
        if (!ignoredTitleBarSubWidgets_.contains(widget)) {
            ignoredTitleBarSubWidgets_.insert(widget);
            connect(widget, &QObject::destroyed, this,
                    &FramelessHelper::on_ignoredTitleBarSubWidgetDestroyed);
        }
        return;
    }
    if (!dummyTitleBars_.contains(widget)) {
        dummyTitleBars_.append(widget);
        connect(widget, &QObject::destroyed, this, &FramelessHelper::on_dummyTitleBarDestroyed);
    }
}

void FramelessHelper::removeDummyTitleBar(QWidget *widget)
{
    if (!widget)
        return;
    if (ignoredTitleBarSubWidgets_.remove(widget)) {
        disconnect(widget, &QObject::destroyed, this, &FramelessHelper::on_ignoredTitleBarSubWidgetDestroyed);
        return;
    }
    if (dummyTitleBars_.removeOne(widget))
        disconnect(widget, &QObject::destroyed, this, &FramelessHelper::on_dummyTitleBarDestroyed);
}

void FramelessHelper::setWindowFlags(Qt::WindowFlags flags)
{
    if (window_->windowFlags() == flags)
        return;
    // Changing the flags of a window hides it; keep it on screen.
    const bool visible = window_->isVisible();
    window_->setWindowFlags(flags);
    if (visible && !window_->isVisible())
        window_->show();
}

Qt::WindowFlags FramelessHelper::framelessWindowFlags(Qt::WindowFlags flags, bool isDialog)
{
    flags |= Qt::Window | Qt::FramelessWindowHint | Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
             Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint;
    if (isDialog)
        flags &= ~Qt::WindowMaximizeButtonHint;
    return flags;
}

FramelessGeometry::HitRegion FramelessHelper::hitTest(const QPoint &pos) const
{
    return hitTestAt(pos, window_->size(), pos);
}

FramelessGeometry::HitRegion FramelessHelper::hitTest(const FramelessGeometry::ClientCursor &cursor) const
{
    return hitTestAt(cursor.physicalPos, cursor.physicalClientSize, cursor.logicalPos);
}

FramelessGeometry::HitRegion FramelessHelper::hitTestAt(const QPoint &borderPos, const QSize &clientSize,
                                                        const QPoint &pos) const
{
    FramelessGeometry::HitTestInput in;
    in.clientSize = clientSize;
    in.borderPos = borderPos;
    in.pos = pos;
    in.borderWidth = borderWidth_;
    in.resizable = resizable_;
    in.movable = movable_;
    in.maximized = window_->isMaximized();
    in.fullScreen = window_->isFullScreen();
    in.minimumSize = window_->minimumSize();
    in.maximumSize = window_->maximumSize();
    if (titleBar_) {
        in.hasTitleBar = true;
        in.titleBarRect = rectInWindow(titleBar_);
        // Inside the title bar only its own ignored sub-widgets are drag areas.
        if (in.titleBarRect.contains(pos))
            in.titleBarChild = childUnder(titleBar_, pos, &FramelessHelper::isIgnoredTitleBarSubWidget);
    }
    for (QWidget *dummy : dummyTitleBars_) {
        FramelessGeometry::DummyTitleBar area;
        area.childOfTitleBar = titleBar_ && dummy->parentWidget() == titleBar_;
        area.rect = rectInWindow(dummy);
        if (area.rect.contains(pos))
            area.child = childUnder(dummy, pos, &FramelessHelper::isDummyTitleBar);
        in.dummyTitleBars.append(area);
    }
    return FramelessGeometry::hitTest(in);
}

QRect FramelessHelper::rectInWindow(const QWidget *widget) const
{
    return QRect(widget->mapTo(window_, QPoint(0, 0)), widget->size());
}

ChildUnderCursor FramelessHelper::childUnder(const QWidget *area, const QPoint &pos,
                                             bool (FramelessHelper::*isDragArea)(const QWidget *) const) const
{
    const QWidget *child = area->childAt(area->mapFrom(window_, pos));
    if (!child)
        return ChildUnderCursor::None;
    return (this->*isDragArea)(child) ? ChildUnderCursor::DragArea : ChildUnderCursor::Other;
}

void FramelessHelper::on_titleBarDestroyed()
{
    if (sender() == titleBar_)
        titleBar_ = nullptr;
}

void FramelessHelper::on_ignoredTitleBarSubWidgetDestroyed()
{
    const QObject *gone = sender();
    for (auto it = ignoredTitleBarSubWidgets_.begin(); it != ignoredTitleBarSubWidgets_.end(); ++it) {
        if (static_cast<QObject *>(*it) == gone) {
            ignoredTitleBarSubWidgets_.erase(it);
            return;
        }
    }
}

void FramelessHelper::on_dummyTitleBarDestroyed()
{
    const QObject *gone = sender();
    for (int i = 0; i < dummyTitleBars_.size(); ++i) {
        if (static_cast<QObject *>(dummyTitleBars_.at(i)) == gone) {
            dummyTitleBars_.removeAt(i);
            return;
        }
    }
}
