// Saves pictures of the extra option form with a job's options loaded, in
// Chinese and in English, for the documentation, with the look a host gives it.
//   xvfb-run -a ./extraoption_screenshot docs/screenshots/extra-option-widget.png
// writes extra-option-widget.png (Chinese) and extra-option-widget-en.png.

#include "UI/SubWidget/ExtraOptionWidget.h"

#include "ScreenshotSupport.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: extraoption_screenshot <output.png>\n");
        return 2;
    }
    if (!ScreenshotSupport::applyHostLook(app))
        return 1;

    bool ok = true;
    for (const ScreenshotSupport::Language &language : ScreenshotSupport::languages()) {
        const QString path = ScreenshotSupport::useLanguage(language, args.at(1));
        ExtraOptionWidget widget(nullptr);
        RipExtraOption option;
        option.printMode = 1;
        option.horizontalMirror = true;
        widget.setExtraOption(option);
        ok = ScreenshotSupport::saveWhenShown(&widget, path) && ok;
    }
    return ok ? 0 : 1;
}
