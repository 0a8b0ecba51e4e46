#include "WinFramelessHelper.h"

#ifdef Q_OS_WIN

#include "Common/Logging.h"

#include <QEvent>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <dwmapi.h>
#include <windowsx.h>

#include <cmath>

using FramelessGeometry::HitRegion;

namespace {

LONG_PTR hitCode(HitRegion region)
{
    switch (region) {
    case HitRegion::Caption:
        return HTCAPTION;
    case HitRegion::Left:
        return HTLEFT;
    case HitRegion::Right:
        return HTRIGHT;
    case HitRegion::Top:
        return HTTOP;
    case HitRegion::Bottom:
        return HTBOTTOM;
    case HitRegion::TopLeft:
        return HTTOPLEFT;
    case HitRegion::TopRight:
        return HTTOPRIGHT;
    case HitRegion::BottomLeft:
        return HTBOTTOMLEFT;
    case HitRegion::BottomRight:
        return HTBOTTOMRIGHT;
    case HitRegion::Client:
        break;
    }
    return HTCLIENT;
}

FramelessGeometry::Rect fromRECT(const RECT &r)
{
    return FramelessGeometry::Rect{r.left, r.top, r.right, r.bottom};
}

RECT toRECT(const FramelessGeometry::Rect &r)
{
    RECT out;
    out.left = r.left;
    out.top = r.top;
    out.right = r.right;
    out.bottom = r.bottom;
    return out;
}

} // namespace

WinFramelessHelper::WinFramelessHelper(QWidget *window)
    : FramelessHelper(window)
{
    window->setAttribute(Qt::WA_DontCreateNativeAncestors);
    window->installEventFilter(this);
    window->setWindowFlags(framelessWindowFlags(window->windowFlags(), window->inherits("QDialog")));
}

WinFramelessHelper::~WinFramelessHelper() = default;

void WinFramelessHelper::setResizable(bool resizable)
{
    if (resizable == isResizable())
        return;
    FramelessHelper::setResizable(resizable);
    updateNativeStyle();
}

void WinFramelessHelper::setWindowFlags(Qt::WindowFlags flags)
{
    FramelessHelper::setWindowFlags(flags);
    if (!hwnd_ || !isResizable())
        return;
    const LONG oldStyle = ::GetWindowLongW(hwnd_, GWL_STYLE);
    LONG style = oldStyle;
    if (flags & (Qt::WindowMaximizeButtonHint | Qt::WindowFullscreenButtonHint))
        style |= WS_MAXIMIZEBOX;
    else
        style &= ~WS_MAXIMIZEBOX;
    if (flags & Qt::WindowMinimizeButtonHint)
        style |= WS_MINIMIZEBOX;
    else
        style &= ~WS_MINIMIZEBOX;
    style &= ~WS_SYSMENU;
    style |= WS_CAPTION | WS_THICKFRAME;
    if (style != oldStyle)
        ::SetWindowLongW(hwnd_, GWL_STYLE, style);
}

void WinFramelessHelper::updateNativeStyle()
{
    if (!hwnd_)
        return;
    LONG style = ::GetWindowLongW(hwnd_, GWL_STYLE);
    style &= ~WS_SYSMENU;
    if (isResizable())
        style |= WS_CAPTION | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
    else
        style = (style & ~WS_MAXIMIZEBOX) | WS_CAPTION | WS_THICKFRAME | WS_MINIMIZEBOX;
    ::SetWindowLongW(hwnd_, GWL_STYLE, style);

    // A one-pixel frame keeps the desktop window manager's shadow.
    const MARGINS margins = {1, 1, 1, 1};
    ::DwmExtendFrameIntoClientArea(hwnd_, &margins);

    // Let the new style take effect.
    window()->setVisible(window()->isVisible());
}

bool WinFramelessHelper::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == window() && event->type() == QEvent::WinIdChange) {
        hwnd_ = reinterpret_cast<HWND>(window()->winId());
        BEX_DEBUG(lcFrameless) << "native window handle changed";
        updateNativeStyle();
        setWindowFlags(window()->windowFlags());
    }
    return FramelessHelper::eventFilter(watched, event);
}

bool WinFramelessHelper::handleNativeEvent(const QByteArray &, void *message, long *result, bool *handled)
{
    *handled = true;
    MSG *msg = static_cast<MSG *>(message);
    switch (msg->message) {
    case WM_SIZE:
        return handleSize(msg, handled);
    case WM_NCCALCSIZE:
        return handleNcCalcSize(msg, result, handled);
    case WM_NCHITTEST:
        return handleNcHitTest(msg, result);
    default:
        *handled = false;
        return false;
    }
}

bool WinFramelessHelper::handleSize(MSG *msg, bool *handled)
{
    const QSize size = FramelessGeometry::clampSize(QSize(LOWORD(msg->lParam), HIWORD(msg->lParam)),
                                                    window()->minimumSize(), window()->maximumSize());
    msg->lParam = MAKELPARAM(size.width(), size.height());
    // Qt goes on with the corrected size.
    *handled = false;
    return false;
}

bool WinFramelessHelper::handleNcCalcSize(MSG *msg, long *result, bool *handled)
{
    if (!msg->wParam) {
        *handled = false;
        return false;
    }
    auto *params = reinterpret_cast<NCCALCSIZE_PARAMS *>(msg->lParam);

    WINDOWPLACEMENT placement;
    placement.length = sizeof(WINDOWPLACEMENT);
    if (!::GetWindowPlacement(msg->hwnd, &placement))
        return false;

    if (placement.showCmd != SW_MAXIMIZE) {
        if (window()->isFullScreen()) {
            *result = WVR_HREDRAW;
            return true;
        }
        const FramelessGeometry::EdgeComparison edges =
            FramelessGeometry::compareEdges(fromRECT(params->rgrc[0]), fromRECT(params->rgrc[1]));
        long flags = 0;
        if (edges.horizontalRedraw)
            flags |= WVR_HREDRAW;
        if (edges.verticalRedraw)
            flags |= WVR_VREDRAW;
        if (edges.alignLeft)
            flags |= WVR_ALIGNLEFT;
        if (edges.alignRight)
            flags |= WVR_ALIGNRIGHT;
        if (edges.alignTop)
            flags |= WVR_ALIGNTOP;
        if (edges.alignBottom)
            flags |= WVR_ALIGNBOTTOM;
        params->rgrc[0] = toRECT(edges.rect);
        *result = flags;
        return true;
    }

    // Maximised: fill the monitor's work area (the whole monitor when full screen).
    const FramelessGeometry::Rect proposed = fromRECT(params->rgrc[0]);
    const QPoint centre = proposed.center();
    POINT point;
    point.x = centre.x();
    point.y = centre.y();
    HMONITOR monitor = ::MonitorFromPoint(point, MONITOR_DEFAULTTONEAREST);
    MONITORINFO info;
    info.cbSize = sizeof(MONITORINFO);
    FramelessGeometry::MonitorAreas areas;
    const bool haveMonitor = monitor && ::GetMonitorInfoW(monitor, &info);
    if (haveMonitor) {
        areas.monitor = fromRECT(info.rcMonitor);
        areas.work = fromRECT(info.rcWork);
    }
    QScreen *screen = window()->screen();
    const QRect virtualGeometry = screen ? screen->virtualGeometry() : QRect();
    const QRect availableGeometry = screen ? screen->availableGeometry() : QRect();
    const FramelessGeometry::Rect area = FramelessGeometry::maximizedArea(
        window()->isFullScreen(), haveMonitor ? &areas : nullptr, virtualGeometry, availableGeometry);
    params->rgrc[0] = toRECT(
        FramelessGeometry::maximizedRect(proposed, area, window()->minimumSize(), window()->maximumSize()));
    *result = WVR_REDRAW;
    return true;
}

bool WinFramelessHelper::handleNcHitTest(MSG *msg, long *result)
{
    *result = HTCLIENT;
    // The border is tested in the message's own physical pixels, the drag
    // areas in device-independent ones.
    const QPoint physical(GET_X_LPARAM(msg->lParam), GET_Y_LPARAM(msg->lParam));
    const qreal ratio = window()->devicePixelRatioF();
    const QPoint logical(qRound(physical.x() / ratio), qRound(physical.y() / ratio));
    const HitRegion region = hitTest(window()->mapFromGlobal(physical), window()->mapFromGlobal(logical));
    *result = static_cast<long>(hitCode(region));
    return region != HitRegion::Client;
}

#endif // Q_OS_WIN
