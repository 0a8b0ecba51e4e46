#pragma once

#include <QPoint>
#include <QWindow>

#include <optional>

// What the X server knows of a top-level window's place, asked over Qt's own
// connection to it. Everything here answers "not available" where the
// application does not run on an X server.
namespace X11WindowPosition {

// True where the application talks to an X server (the xcb platform).
bool available();

// The window's top-left corner on its root window, in physical pixels.
std::optional<QPoint> rootPosition(WId window);

// Asks for the window at `pos` (physical pixels, root window) without going
// through Qt: the window manager answers with the place it gives the window,
// which Qt then takes on like any other move by the window manager.
bool requestMove(WId window, const QPoint &pos);

} // namespace X11WindowPosition
