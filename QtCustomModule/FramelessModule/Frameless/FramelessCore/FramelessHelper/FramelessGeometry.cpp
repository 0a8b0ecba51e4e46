#include "FramelessGeometry.h"

#include <QWidget>

#include <algorithm>
#include <cmath>

namespace FramelessGeometry {

namespace {

HitRegion borderRegion(const HitTestInput &in)
{
    const int b = in.borderWidth;
    const QPoint &p = in.borderPos;
    const bool left = p.x() < b;
    const bool right = p.x() > in.clientSize.width() - b;
    const bool top = p.y() < b;
    const bool bottom = p.y() > in.clientSize.height() - b;

    // Corners win where they overlap the edges.
    if (top && left)
        return HitRegion::TopLeft;
    if (bottom && left)
        return HitRegion::BottomLeft;
    if (top && right)
        return HitRegion::TopRight;
    if (bottom && right)
        return HitRegion::BottomRight;
    if (left)
        return HitRegion::Left;
    if (right)
        return HitRegion::Right;
    if (top)
        return HitRegion::Top;
    if (bottom)
        return HitRegion::Bottom;
    return HitRegion::Client;
}

} // namespace

HitRegion hitTest(const HitTestInput &in)
{
    if (in.resizable && !in.maximized && !in.fullScreen && !isFixedSize(in.minimumSize, in.maximumSize)) {
        const HitRegion border = borderRegion(in);
        if (border != HitRegion::Client)
            return border;
    }

    if (!in.movable)
        return HitRegion::Client;

    if (in.hasTitleBar && in.titleBarRect.contains(in.pos))
        return in.titleBarChild == ChildUnderCursor::Other ? HitRegion::Client : HitRegion::Caption;

    for (const DummyTitleBar &dummy : in.dummyTitleBars) {
        if (dummy.childOfTitleBar || !dummy.rect.contains(in.pos))
            continue;
        return dummy.child == ChildUnderCursor::Other ? HitRegion::Client : HitRegion::Caption;
    }
    return HitRegion::Client;
}

QPoint pointFromLParam(qint64 lParam)
{
    const auto word = [](qint64 value) { return static_cast<int>(static_cast<qint16>(value & 0xffff)); };
    return QPoint(word(lParam), word(lParam >> 16));
}

ClientCursor clientCursor(const QPoint &physicalPos, const QSize &physicalClientSize, qreal devicePixelRatio)
{
    ClientCursor cursor;
    cursor.physicalPos = physicalPos;
    cursor.physicalClientSize = physicalClientSize;
    cursor.logicalPos =
        QPoint(qRound(physicalPos.x() / devicePixelRatio), qRound(physicalPos.y() / devicePixelRatio));
    return cursor;
}

QSize toPhysical(const QSize &logicalSize, qreal devicePixelRatio)
{
    const auto extent = [devicePixelRatio](int value) {
        if (value >= QWIDGETSIZE_MAX)
            return QWIDGETSIZE_MAX;
        return static_cast<int>(std::min<qreal>(std::round(value * devicePixelRatio), QWIDGETSIZE_MAX));
    };
    return QSize(extent(logicalSize.width()), extent(logicalSize.height()));
}

bool isFixedSize(const QSize &minimumSize, const QSize &maximumSize)
{
    return minimumSize.width() >= maximumSize.width() && minimumSize.height() >= maximumSize.height();
}

Qt::Edges edgesOf(HitRegion region)
{
    switch (region) {
    case HitRegion::Left:
        return Qt::LeftEdge;
    case HitRegion::Right:
        return Qt::RightEdge;
    case HitRegion::Top:
        return Qt::TopEdge;
    case HitRegion::Bottom:
        return Qt::BottomEdge;
    case HitRegion::TopLeft:
        return Qt::TopEdge | Qt::LeftEdge;
    case HitRegion::TopRight:
        return Qt::TopEdge | Qt::RightEdge;
    case HitRegion::BottomLeft:
        return Qt::BottomEdge | Qt::LeftEdge;
    case HitRegion::BottomRight:
        return Qt::BottomEdge | Qt::RightEdge;
    case HitRegion::Client:
    case HitRegion::Caption:
        break;
    }
    return {};
}

int clampExtent(int value, int bound1, int bound2)
{
    return std::clamp(value, std::min(bound1, bound2), std::max(bound1, bound2));
}

QSize clampSize(const QSize &size, const QSize &minimumSize, const QSize &maximumSize)
{
    return QSize(clampExtent(size.width(), minimumSize.width(), maximumSize.width()),
                 clampExtent(size.height(), minimumSize.height(), maximumSize.height()));
}

QRect resizedGeometry(const QRect &start, Qt::Edges edges, const QPoint &delta, const QSize &minimumSize,
                      const QSize &maximumSize)
{
    int width = start.width();
    int height = start.height();
    if (edges & Qt::LeftEdge)
        width -= delta.x();
    else if (edges & Qt::RightEdge)
        width += delta.x();
    if (edges & Qt::TopEdge)
        height -= delta.y();
    else if (edges & Qt::BottomEdge)
        height += delta.y();

    const QSize size = clampSize(QSize(width, height), minimumSize, maximumSize);
    // The edge opposite to the dragged one is the anchor.
    const int x = (edges & Qt::LeftEdge) ? start.x() + start.width() - size.width() : start.x();
    const int y = (edges & Qt::TopEdge) ? start.y() + start.height() - size.height() : start.y();
    return QRect(QPoint(x, y), size);
}

Rect toRect(const QRect &rect)
{
    return Rect{rect.x(), rect.y(), rect.x() + rect.width(), rect.y() + rect.height()};
}

Rect toPhysical(const QRect &logicalArea, const QPoint &screenOrigin, qreal devicePixelRatio)
{
    const auto scaled = [devicePixelRatio](int distance) { return qRound(distance * devicePixelRatio); };
    const int left = screenOrigin.x() + scaled(logicalArea.x() - screenOrigin.x());
    const int top = screenOrigin.y() + scaled(logicalArea.y() - screenOrigin.y());
    return Rect{left, top, left + scaled(logicalArea.width()), top + scaled(logicalArea.height())};
}

QPoint toLogical(const QPoint &physicalPos, const QPoint &screenOrigin, qreal devicePixelRatio)
{
    if (devicePixelRatio <= 0)
        return physicalPos;
    const auto scaled = [devicePixelRatio](int distance) { return qRound(distance / devicePixelRatio); };
    return QPoint(screenOrigin.x() + scaled(physicalPos.x() - screenOrigin.x()),
                  screenOrigin.y() + scaled(physicalPos.y() - screenOrigin.y()));
}

namespace {

// One axis of a native resize, from its near edge (left, top) to its far
// edge (right, bottom). Either edge moving redraws the axis. Where the near
// edge moved the content keeps to the far edge, which moves out one pixel
// more when the window grew that way; where the far edge moved the content
// keeps to the near one.
struct AxisEdges
{
    bool &redraw;
    bool &alignNear;
    bool &alignFar;
    int &far;
};

void compareAxis(int newNear, int oldNear, int newFar, int oldFar, const AxisEdges &out)
{
    if (newNear != oldNear) {
        out.redraw = true;
        out.alignFar = true;
        if (newNear < oldNear)
            out.far += 1;
    }
    if (newFar != oldFar) {
        out.redraw = true;
        out.alignNear = true;
    }
}

} // namespace

EdgeComparison compareEdges(const Rect &newRect, const Rect &oldRect)
{
    EdgeComparison out;
    out.rect = newRect;
    compareAxis(newRect.left, oldRect.left, newRect.right, oldRect.right,
                {out.horizontalRedraw, out.alignLeft, out.alignRight, out.rect.right});
    compareAxis(newRect.top, oldRect.top, newRect.bottom, oldRect.bottom,
                {out.verticalRedraw, out.alignTop, out.alignBottom, out.rect.bottom});
    return out;
}

Rect maximizedArea(bool fullScreen, const MonitorAreas *monitor, const ScreenGeometry *screen,
                   const Rect &proposed)
{
    if (monitor)
        return fullScreen ? monitor->monitor : monitor->work;
    if (!screen)
        return proposed;
    return toPhysical(fullScreen ? screen->virtualGeometry : screen->availableGeometry,
                      screen->geometry.topLeft(), screen->devicePixelRatio);
}

Rect maximizedRect(const Rect &proposed, const Rect &area, const QSize &minimumSize, const QSize &maximumSize)
{
    const int largestWidth = std::max(minimumSize.width(), maximumSize.width());
    const int largestHeight = std::max(minimumSize.height(), maximumSize.height());
    if (largestWidth >= area.width() && largestHeight >= area.height())
        return area;
    return proposed;
}

} // namespace FramelessGeometry
