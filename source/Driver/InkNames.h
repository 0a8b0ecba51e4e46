#pragma once

// What the module knows of an ink by its channel name: whether it is a
// process, light or spot ink, how the ink section labels it and which colour
// its tab shows. One table serves the driver manager's spot colours and the
// property dialog, so that both class every ink alike.

#include <QColor>
#include <QString>

namespace bex {

enum class InkKind
{
    Process, // cyan, magenta, yellow, black
    Light,   // light cyan, light magenta: process inks at lower strength
    Spot,    // every other ink (white, varnish, red, orange ...)
};

struct InkName
{
    InkKind kind = InkKind::Spot;
    // The ink section's label of a process ink, untranslated (translation
    // context "PrinterDriverPropertyDlg"); null for other inks, which are
    // labelled by their name.
    const char *label = nullptr;
    // The dynamic property its sliders carry for the style sheet.
    const char *styleWord = "White";
    // The colour of its tab in the ink order panel.
    QColor colour = Qt::white;
};

// The ink whose channel is called `channelName`, compared ignoring case.
InkName inkName(const QString &channelName);

// Whether the host lists the channel as a spot colour.
inline bool isSpotInk(const QString &channelName)
{
    return inkName(channelName).kind == InkKind::Spot;
}

// Whether the channel's density follows its full-strength ink and cannot be
// set on its own: light inks, by the driver's convention every channel
// whose name begins with "L".
bool densityFollowsFullInk(const QString &channelName);

} // namespace bex
