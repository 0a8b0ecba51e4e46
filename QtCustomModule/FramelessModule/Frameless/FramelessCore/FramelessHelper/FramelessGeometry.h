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
    // The window's client area and the cursor in it, tested against the
    // resize border, in one unit: physical pixels for a native hit test,
    // device-independent ones otherwise.
    QSize clientSize;
    QPoint borderPos;
    // Cursor in the window's device-independent coordinates, tested against
    // the widgets' geometry (title bar, its children, drag areas).
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

// The screen point a native mouse message carries in its lParam: x in the
// low, y in the high 16-bit word, both signed, since monitors left of or
// above the primary one have negative coordinates.
QPoint pointFromLParam(qint64 lParam);

// The cursor of a native hit test, once mapped into the window's client area.
struct ClientCursor
{
    // Physical pixels from the client area's top-left corner, and the client
    // area's physical size: the resize border is tested in these.
    QPoint physicalPos;
    QSize physicalClientSize;
    // The same point in device-independent pixels, the unit of widget
    // geometry: the title bar and the drag areas are tested with it.
    QPoint logicalPos;
};

// The cursor from its client-area position and the client size, both in
// physical pixels (as ScreenToClient and GetClientRect give them), for a
// window drawn at the given device pixel ratio.
ClientCursor clientCursor(const QPoint &physicalPos, const QSize &physicalClientSize, qreal devicePixelRatio);

// A widget's size limit in physical pixels; an unbounded extent
// (QWIDGETSIZE_MAX) stays unbounded.
QSize toPhysical(const QSize &logicalSize, qreal devicePixelRatio);

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

// A screen area in physical pixels from Qt's device-independent one. Qt keeps
// a screen's top-left corner at its native position and scales the distances
// from it, so the area is scaled about that corner.
Rect toPhysical(const QRect &logicalArea, const QPoint &screenOrigin, qreal devicePixelRatio);

// The other way round for a point: a screen position in physical pixels, as
// the window system reports it, in device-independent ones.
QPoint toLogical(const QPoint &physicalPos, const QPoint &screenOrigin, qreal devicePixelRatio);

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

// A screen as Qt describes it, in device-independent pixels, and its ratio
// to physical ones.
struct ScreenGeometry
{
    QRect geometry;
    QRect availableGeometry;
    QRect virtualGeometry;
    qreal devicePixelRatio = 1.0;
};

// The area a maximised window fills, in physical pixels: the monitor for a
// full-screen window, its work area otherwise. Without monitor information
// the window's screen stands in, its virtual geometry for a full-screen
// window and its available geometry otherwise, brought into physical pixels;
// without a screen either, the proposed rectangle stays.
Rect maximizedArea(bool fullScreen, const MonitorAreas *monitor, const ScreenGeometry *screen,
                   const Rect &proposed);

// The rectangle of a maximised window: the area when the window may grow
// that large, else the proposed rectangle unchanged.
Rect maximizedRect(const Rect &proposed, const Rect &area, const QSize &minimumSize,
                   const QSize &maximumSize);

} // namespace FramelessGeometry
