#include "X11WindowPosition.h"

#include <QX11Info>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace {

// A reply of libxcb, which the caller frees with free().
template <typename Reply>
using ReplyPtr = std::unique_ptr<Reply, decltype(&std::free)>;

template <typename Reply>
ReplyPtr<Reply> own(Reply *reply)
{
    return ReplyPtr<Reply>(reply, &std::free);
}

} // namespace

bool X11WindowPosition::available()
{
    return QX11Info::isPlatformX11() && QX11Info::connection();
}

std::optional<QPoint> X11WindowPosition::rootPosition(WId window)
{
    if (!available() || !window)
        return std::nullopt;
    xcb_connection_t *connection = QX11Info::connection();
    const auto id = static_cast<xcb_window_t>(window);
    const auto translated = own(xcb_translate_coordinates_reply(
        connection,
        xcb_translate_coordinates(connection, id, static_cast<xcb_window_t>(QX11Info::appRootWindow()), 0, 0),
        nullptr));
    if (!translated)
        return std::nullopt;
    return QPoint(translated->dst_x, translated->dst_y);
}

bool X11WindowPosition::requestMove(WId window, const QPoint &pos)
{
    if (!available() || !window)
        return false;
    xcb_connection_t *connection = QX11Info::connection();
    const uint32_t values[] = {static_cast<uint32_t>(pos.x()), static_cast<uint32_t>(pos.y())};
    xcb_configure_window(connection, static_cast<xcb_window_t>(window),
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values);
    // Requests of one connection reach the server in order: whatever Qt
    // sends next (a system move) comes after this one.
    return xcb_flush(connection) > 0;
}
