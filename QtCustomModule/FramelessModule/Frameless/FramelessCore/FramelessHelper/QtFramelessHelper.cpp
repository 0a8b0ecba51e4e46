#include "QtFramelessHelper.h"

#include "FramelessCore/FramelessLogging.h"
#include "FramelessCore/Repoint.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#ifdef BEX_FRAMELESS_X11
#include "X11WindowPosition.h"
#endif

using FramelessGeometry::HitRegion;

namespace {

// The pointer's shape over each part of the resize border; over the caption
// and the client area the window's own cursor applies.
struct BorderCursor
{
    HitRegion region;
    Qt::CursorShape shape;
};

constexpr BorderCursor borderCursors[] = {
    {HitRegion::Left, Qt::SizeHorCursor},       {HitRegion::Right, Qt::SizeHorCursor},
    {HitRegion::Top, Qt::SizeVerCursor},        {HitRegion::Bottom, Qt::SizeVerCursor},
    {HitRegion::TopLeft, Qt::SizeFDiagCursor},  {HitRegion::BottomRight, Qt::SizeFDiagCursor},
    {HitRegion::TopRight, Qt::SizeBDiagCursor}, {HitRegion::BottomLeft, Qt::SizeBDiagCursor},
};

} // namespace

QtFramelessHelper::QtFramelessHelper(QWidget *window)
    : FramelessHelper(window)
{
    window->setWindowFlags(framelessWindowFlags(window->windowFlags(), window->inherits("QDialog")));
    window->installEventFilter(this);
    trackWindowHandle();
}

QtFramelessHelper::~QtFramelessHelper()
{
    if (handle_)
        handle_->removeEventFilter(this);
}

bool QtFramelessHelper::handleNativeEvent(const QByteArray &, void *, long *, bool *handled)
{
    // Nothing native to answer here: everything runs through Qt's events.
    *handled = false;
    return false;
}

bool QtFramelessHelper::startSystemMove()
{
    return handle_ && handle_->startSystemMove();
}

bool QtFramelessHelper::startSystemResize(Qt::Edges edges)
{
    return handle_ && handle_->startSystemResize(edges);
}

void QtFramelessHelper::trackWindowHandle()
{
    Frameless::repoint(
        handle_, window()->windowHandle(), [this](QWindow *old) { old->removeEventFilter(this); },
        [this](QWindow *handle) { handle->installEventFilter(this); });
}

bool QtFramelessHelper::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == window()) {
        switch (event->type()) {
        case QEvent::WinIdChange:
        case QEvent::Show:
        case QEvent::PlatformSurface:
            trackWindowHandle();
            break;
        default:
            break;
        }
    } else if (handle_ && watched == handle_) {
        switch (event->type()) {
        case QEvent::Expose:
            if (handle_->isExposed())
                followWindowSystemPosition();
            break;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
            if (handleMouseEvent(static_cast<QMouseEvent *>(event)))
                return true;
            break;
        case QEvent::Leave:
            if (drag_ == Drag::None)
                updateCursor(HitRegion::Client);
            break;
        default:
            break;
        }
    }
    return FramelessHelper::eventFilter(watched, event);
}

bool QtFramelessHelper::windowSystemPosition(QPoint *pos) const
{
#ifdef BEX_FRAMELESS_X11
    if (!handle_)
        return false;
    const std::optional<QPoint> physical = X11WindowPosition::rootPosition(handle_->winId());
    if (!physical)
        return false;
    const QScreen *screen = handle_->screen();
    *pos = FramelessGeometry::toLogical(*physical, screen ? screen->geometry().topLeft() : QPoint(),
                                        handle_->devicePixelRatio());
    return true;
#else
    Q_UNUSED(pos)
    return false;
#endif
}

bool QtFramelessHelper::moveBehindQt(const QPoint &pos)
{
#ifdef BEX_FRAMELESS_X11
    if (!handle_)
        return false;
    const QScreen *screen = handle_->screen();
    const FramelessGeometry::Rect physical = FramelessGeometry::toPhysical(
        QRect(pos, window()->size()), screen ? screen->geometry().topLeft() : QPoint(),
        handle_->devicePixelRatio());
    return X11WindowPosition::requestMove(handle_->winId(), QPoint(physical.left, physical.top));
#else
    Q_UNUSED(pos)
    return false;
#endif
}

void QtFramelessHelper::followWindowSystemPosition()
{
    // An X window manager reparents a new window into its frame and places
    // the frame. Qt asks the server where the window is when it handles the
    // window's ConfigureNotify; when it does so while the frame still waits
    // at the corner of the screen, it takes that corner for the window's
    // place, and a manager that placed the window where it asked to be sends
    // no correction. Once the window is on screen, its place is read from
    // the server; where Qt got it wrong, the window asks for the place it has,
    // which the manager answers with the position Qt then takes on.
    // A maximised or full-screen window is left alone: the manager places it
    // and reports where, and while it does, Qt may learn of the new size and
    // expose the window before it learns of the new place. A move then would
    // cost the window its state, since QWidget drops the maximised and
    // full-screen state on any move it is asked for.
    if (window()->isMaximized() || window()->isFullScreen())
        return;
    QPoint actual;
    if (!windowSystemPosition(&actual) || actual == window()->geometry().topLeft())
        return;
    BEX_DEBUG(lcFrameless) << "window is at" << actual << "not at" << window()->geometry().topLeft();
    window()->move(actual);
}

bool QtFramelessHelper::handleMouseEvent(QMouseEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return handlePress(event);
    case QEvent::MouseMove:
        return handleMove(event);
    case QEvent::MouseButtonRelease:
        if (drag_ != Drag::None && event->button() == Qt::LeftButton) {
            endDrag();
            return true;
        }
        return false;
    case QEvent::MouseButtonDblClick: {
        if (event->button() != Qt::LeftButton || hitTest(event->pos()) != HitRegion::Caption)
            return false;
        endDrag();
        if (isResizable()) {
            if (window()->isMaximized() || window()->isFullScreen())
                window()->showNormal();
            else
                window()->showMaximized();
        }
        return true;
    }
    default:
        return false;
    }
}

bool QtFramelessHelper::handlePress(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return false;
    const HitRegion region = hitTest(event->pos());
    if (region == HitRegion::Client)
        return false;

    pressGlobalPos_ = event->globalPos();
    // Where the window is as the pointer sees it, whatever Qt last heard.
    pressGeometry_ = QRect(event->globalPos() - event->pos(), window()->size());
    if (region == HitRegion::Caption) {
        drag_ = Drag::Pending;
        return true;
    }

    edges_ = FramelessGeometry::edgesOf(region);
    if (startSystemResize(edges_)) {
        BEX_DEBUG(lcFrameless) << "system resize started, edges:" << edges_;
        releaseAfterSystemDrag(event);
    } else {
        drag_ = Drag::ManualResize;
    }
    return true;
}

bool QtFramelessHelper::handleMove(QMouseEvent *event)
{
    if (drag_ == Drag::None) {
        if (event->buttons() == Qt::NoButton)
            updateCursor(hitTest(event->pos()));
        return false;
    }
    if (!(event->buttons() & Qt::LeftButton)) {
        // The release went elsewhere; the drag is over.
        endDrag();
        return false;
    }

    const QPoint delta = event->globalPos() - pressGlobalPos_;
    switch (drag_) {
    case Drag::Pending:
        if (delta.manhattanLength() < QApplication::startDragDistance())
            return true;
        // The window system moves the window by the pointer's travel from
        // where it takes over; the travel up to here is made up for first,
        // so that the grab point stays under the pointer.
        if (!window()->isMaximized() && !window()->isFullScreen())
            moveBehindQt(pressGeometry_.topLeft() + delta);
        if (startSystemMove()) {
            BEX_DEBUG(lcFrameless) << "system move started";
            releaseAfterSystemDrag(event);
            return true;
        }
        if (window()->isMaximized() || window()->isFullScreen()) {
            drag_ = Drag::None;
            return true;
        }
        drag_ = Drag::ManualMove;
        Q_FALLTHROUGH();
    case Drag::ManualMove:
        window()->move(pressGeometry_.topLeft() + delta);
        return true;
    case Drag::ManualResize:
        window()->setGeometry(FramelessGeometry::resizedGeometry(
            pressGeometry_, edges_, delta, window()->minimumSize(), window()->maximumSize()));
        return true;
    case Drag::None:
        break;
    }
    return false;
}

void QtFramelessHelper::releaseAfterSystemDrag(QMouseEvent *event)
{
    // Once the window system owns the pointer, the button's release never
    // reaches this window. Deliver one ourselves so that nothing in the
    // window believes the button is still down.
    endDrag();
    QMouseEvent release(QEvent::MouseButtonRelease, event->localPos(), event->windowPos(), event->screenPos(),
                        Qt::LeftButton, event->buttons() & ~Qt::LeftButton, event->modifiers());
    if (handle_)
        QCoreApplication::sendEvent(handle_, &release);
}

void QtFramelessHelper::endDrag()
{
    drag_ = Drag::None;
    edges_ = {};
}

void QtFramelessHelper::updateCursor(HitRegion region)
{
    for (const BorderCursor &border : borderCursors) {
        if (border.region == region) {
            window()->setCursor(border.shape);
            cursorSet_ = true;
            return;
        }
    }
    if (cursorSet_) {
        window()->unsetCursor();
        cursorSet_ = false;
    }
}
