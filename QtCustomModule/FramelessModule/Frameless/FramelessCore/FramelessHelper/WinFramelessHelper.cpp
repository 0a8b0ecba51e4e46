#include "WinFramelessHelper.h"

#ifdef Q_OS_WIN

#include "FramelessCore/FramelessLogging.h"

#include <QEvent>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <dwmapi.h>

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

// Makes Windows re-read a window's styles: a change of GWL_STYLE takes
// effect only once the frame is recalculated.
void applyChangedStyle(HWND hwnd)
{
    ::SetWindowPos(hwnd, nullptr, 0, 0, 0, 0,
                   SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOOWNERZORDER |
                       SWP_NOACTIVATE);
}

// A window's size limits in physical pixels, the unit of the native
// messages; Qt keeps them in device-independent ones.
struct PhysicalLimits
{
    QSize minimum;
    QSize maximum;
};

PhysicalLimits physicalLimits(const QWidget *window)
{
    const qreal ratio = window->devicePixelRatioF();
    return PhysicalLimits{FramelessGeometry::toPhysical(window->minimumSize(), ratio),
                          FramelessGeometry::toPhysical(window->maximumSize(), ratio)};
}

// The answer to WM_NCCALCSIZE for each flag of the edge comparison.
struct ValidRegionFlag
{
    bool FramelessGeometry::EdgeComparison::*set;
    long flag;
};

using Edges = FramelessGeometry::EdgeComparison;
constexpr ValidRegionFlag validRegionFlags[] = {
    {&Edges::horizontalRedraw, WVR_HREDRAW}, {&Edges::verticalRedraw, WVR_VREDRAW},
    {&Edges::alignLeft, WVR_ALIGNLEFT},      {&Edges::alignRight, WVR_ALIGNRIGHT},
    {&Edges::alignTop, WVR_ALIGNTOP},        {&Edges::alignBottom, WVR_ALIGNBOTTOM},
};

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
    if (style != oldStyle) {
        ::SetWindowLongW(hwnd_, GWL_STYLE, style);
        applyChangedStyle(hwnd_);
    }
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

    applyChangedStyle(hwnd_);
}

bool WinFramelessHelper::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == window() && event->type() == QEvent::WinIdChange) {
        // internalWinId(): the handle may be going away, and winId() would
        // create a new one.
        hwnd_ = reinterpret_cast<HWND>(window()->internalWinId());
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
    // The message's client size is in physical pixels.
    const PhysicalLimits limits = physicalLimits(window());
    const QSize size = FramelessGeometry::clampSize(QSize(LOWORD(msg->lParam), HIWORD(msg->lParam)),
                                                    limits.minimum, limits.maximum);
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
        for (const ValidRegionFlag &valid : validRegionFlags) {
            if (edges.*valid.set)
                flags |= valid.flag;
        }
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
    // Everything in the message is in physical pixels; the screen's areas
    // and the window's limits are brought into them.
    FramelessGeometry::ScreenGeometry screenGeometry;
    QScreen *screen = window()->screen();
    if (screen) {
        screenGeometry.geometry = screen->geometry();
        screenGeometry.availableGeometry = screen->availableGeometry();
        screenGeometry.virtualGeometry = screen->virtualGeometry();
        screenGeometry.devicePixelRatio = screen->devicePixelRatio();
    }
    const FramelessGeometry::Rect area =
        FramelessGeometry::maximizedArea(window()->isFullScreen(), haveMonitor ? &areas : nullptr,
                                         screen ? &screenGeometry : nullptr, proposed);
    const PhysicalLimits limits = physicalLimits(window());
    params->rgrc[0] =
        toRECT(FramelessGeometry::maximizedRect(proposed, area, limits.minimum, limits.maximum));
    *result = WVR_REDRAW;
    return true;
}

bool WinFramelessHelper::handleNcHitTest(MSG *msg, long *result)
{
    *result = HTCLIENT;
    // The message's screen point, in physical pixels on any monitor, is
    // taken into the client area by Windows itself; the border is tested
    // there against the physical client size, and only the widgets'
    // geometry is asked in device-independent pixels.
    const QPoint screenPos = FramelessGeometry::pointFromLParam(static_cast<qint64>(msg->lParam));
    POINT point;
    point.x = screenPos.x();
    point.y = screenPos.y();
    RECT client;
    if (!::ScreenToClient(msg->hwnd, &point) || !::GetClientRect(msg->hwnd, &client))
        return false;
    const HitRegion region = hitTest(FramelessGeometry::clientCursor(
        QPoint(point.x, point.y), QSize(client.right - client.left, client.bottom - client.top),
        window()->devicePixelRatioF()));
    *result = static_cast<long>(hitCode(region));
    return region != HitRegion::Client;
}

#endif // Q_OS_WIN
