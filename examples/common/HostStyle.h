#pragma once

#include <QString>

class QApplication;

// The look a host gives the module's windows: the module's style sheet, which
// the module carries as a resource but does not apply, followed by the few
// rules the host adds for what that sheet leaves open (button sizes, text
// colours). The demo host and the screenshot programs use it, so that what
// they show is what a well set-up host shows.
namespace HostStyle {

// Where the module keeps its style sheet; readable once the module is loaded.
QString moduleStyleSheetPath();

// The host's own rules, exactly as the README lists them.
QString hostRules();

// The module's sheet followed by the host's rules; empty when the module's
// sheet cannot be read (the module is not loaded).
QString applicationStyleSheet();

// Applies applicationStyleSheet() to the application. Returns false, leaving
// the application as it was, when the module's sheet cannot be read.
bool apply(QApplication &app);

} // namespace HostStyle
