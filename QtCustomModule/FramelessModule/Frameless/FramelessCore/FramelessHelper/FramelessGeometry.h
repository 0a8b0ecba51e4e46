#pragma once

// The arithmetic of frameless windows, kept free of any window system so
// that every platform shares it: which part of the window the cursor is
// over, how a window is resized by hand, and the rectangle sums that the
// Windows back end needs for its native messages.

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QVector>
#include <Qt>

namespace FramelessGeometry {

// The part of a frameless window under the cursor.
enum class HitRegion
{
    Client,
    Caption,
    Left,
    Right,
    Top,
    Bottom,
    TopLeft,
    TopRight,
    BottomLeft,
    BottomRight
};

// What the deepest child widget under the cursor is, inside a drag area.
enum class ChildUnderCursor
{
    None,     // no child: the drag area itself
    DragArea, // a child that counts as drag area too
    Other     // an ordinary child (a button, an icon ...)
};

// A widget outside the title bar that acts as drag area, in window coordinates.
struct DummyTitleBar
{
    QRect rect;
    bool childOfTitleBar = false;
    ChildUnderCursor child = ChildUnderCursor::None;
};

struct HitTestInput
{
    QSize windowSize;
    // Cursor in window coordinates for the resize border.
    QPoint borderPos;
    // Cursor in window coordinates for the drag areas.
    QPoint pos;
    int borderWidth = 4;
    bool resizable = true;
    bool movable = true;
    bool maximized = false;
    bool fullScreen = false;
    QSize minimumSize;
    QSize maximumSize;
    bool hasTitleBar = false;
    QRect titleBarRect;
    ChildUnderCursor titleBarChild = ChildUnderCursor::None;
    QVector<DummyTitleBar> dummyTitleBars;
};

// Decides border (corners before edges), caption or client.
HitRegion hitTest(const HitTestInput &in);

// A window whose minimum size is not below its maximum size cannot be resized.
bool isFixedSize(const QSize &minimumSize, const QSize &maximumSize);

// The window edges a border region drags; none for caption and client.
Qt::Edges edgesOf(HitRegion region);

// The extent clamped between the smaller and the larger of the two bounds.
int clampExtent(int value, int bound1, int bound2);
QSize clampSize(const QSize &size, const QSize &minimumSize, const QSize &maximumSize);

// The geometry of a window resized by hand: the dragged edges follow the
// cursor's displacement, the opposite edges stay where they were, and the
// size stays within the limits.
QRect resizedGeometry(const QRect &start, Qt::Edges edges, const QPoint &delta, const QSize &minimumSize,
                      const QSize &maximumSize);

// A rectangle the way Windows keeps it: right and bottom are exclusive.
struct Rect
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int width() const { return right - left; }
    int height() const { return bottom - top; }
    QPoint center() const { return QPoint(left + width() / 2, top + height() / 2); }
    friend bool operator==(const Rect &a, const Rect &b)
    {
        return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
    }
    friend bool operator!=(const Rect &a, const Rect &b) { return !(a == b); }
};

Rect toRect(const QRect &rect);

// How the client area follows a native resize of a window that is not
// maximised: which edges moved, and the new rectangle nudged by one pixel
// where the window grew to the left or upwards.
struct EdgeComparison
{
    Rect rect;
    bool horizontalRedraw = false;
    bool verticalRedraw = false;
    bool alignLeft = false;
    bool alignRight = false;
    bool alignTop = false;
    bool alignBottom = false;
};

EdgeComparison compareEdges(const Rect &newRect, const Rect &oldRect);

// The monitor rectangles of the monitor a window is maximised on.
struct MonitorAreas
{
    Rect monitor;
    Rect work;
};

// The area a maximised window fills: the monitor for a full-screen window,
// its work area otherwise; without monitor information the screen's virtual
// or available geometry.
Rect maximizedArea(bool fullScreen, const MonitorAreas *monitor, const QRect &screenVirtualGeometry,
                   const QRect &screenAvailableGeometry);

// The rectangle of a maximised window: the area when the window may grow
// that large, else the proposed rectangle unchanged.
Rect maximizedRect(const Rect &proposed, const Rect &area, const QSize &minimumSize,
                   const QSize &maximumSize);

} // namespace FramelessGeometry
