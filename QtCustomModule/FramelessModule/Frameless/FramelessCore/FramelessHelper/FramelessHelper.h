#pragma once

#include "FramelessGeometry.h"

#include <QList>
#include <QObject>
#include <QSet>

class QWidget;

// The platform-neutral part of a frameless window: which widgets act as the
// title bar (drag areas), the width of the resize border and whether the
// window may be moved and resized. The back ends turn the shared hit-test
// decision into native hit codes (Windows) or into system moves and resizes
// (every other platform).
class FramelessHelper : public QObject
{
    Q_OBJECT

public:
    static constexpr int DefaultBorderWidth = 4;

    explicit FramelessHelper(QWidget *window);
    ~FramelessHelper() override;

    QWidget *window() const { return window_; }
    QWidget *titleBar() const { return titleBar_; }
    int borderWidth() const { return borderWidth_; }
    bool isMovable() const { return movable_; }
    bool isResizable() const { return resizable_; }
    bool isIgnoredTitleBarSubWidget(const QWidget *widget) const;
    bool isDummyTitleBar(const QWidget *widget) const;
    QList<QWidget *> dummyTitleBars() const { return dummyTitleBars_; }

    virtual void setMovable(bool movable);
    virtual void setResizable(bool resizable);
    virtual void setTitleBar(QWidget *titleBar);
    virtual void addDummyTitleBar(QWidget *widget);
    virtual void removeDummyTitleBar(QWidget *widget);
    virtual void setWindowFlags(Qt::WindowFlags flags);
    virtual bool handleNativeEvent(const QByteArray &eventType, void *message, long *result,
                                   bool *handled) = 0;

    // Gathers the window's state and asks the shared decision for a cursor
    // at pos, in the window's device-independent coordinates.
    FramelessGeometry::HitRegion hitTest(const QPoint &pos) const;
    // The same for the cursor of a native hit test: the resize border is
    // tested in physical pixels against the physical client size, the
    // widgets with the cursor's device-independent position.
    FramelessGeometry::HitRegion hitTest(const FramelessGeometry::ClientCursor &cursor) const;

    // The flags every frameless window gets; a dialog has no maximize button.
    static Qt::WindowFlags framelessWindowFlags(Qt::WindowFlags flags, bool isDialog);

private slots:
    void on_titleBarDestroyed();
    void on_ignoredTitleBarSubWidgetDestroyed();
    void on_dummyTitleBarDestroyed();

private:
    FramelessGeometry::HitRegion hitTestAt(const QPoint &borderPos, const QSize &clientSize,
                                           const QPoint &pos) const;
    // A widget's rectangle in the window's coordinates.
    QRect rectInWindow(const QWidget *widget) const;
    // What lies under pos (window coordinates) inside area: nothing, one of
    // its children that isDragArea accepts, or another child.
    FramelessGeometry::ChildUnderCursor childUnder(const QWidget *area, const QPoint &pos,
                                                   bool (FramelessHelper::*isDragArea)(const QWidget *)
                                                       const) const;

    QWidget *window_ = nullptr;
    QWidget *titleBar_ = nullptr;
    QSet<QWidget *> ignoredTitleBarSubWidgets_;
    // Kept in the order they were added: the first one under the cursor counts.
    QList<QWidget *> dummyTitleBars_;
    int borderWidth_ = DefaultBorderWidth;
    bool movable_ = true;
    bool resizable_ = true;
};
