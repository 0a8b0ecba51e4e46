// Saves a picture of the extra option form with a job's options loaded, for
// the documentation.
//   xvfb-run -a ./extraoption_screenshot docs/screenshots/extra-option-widget.png

#include "UI/SubWidget/ExtraOptionWidget.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: extraoption_screenshot <output.png>\n");
        return 2;
    }

    ExtraOptionWidget widget(nullptr);
    RipExtraOption option;
    option.printMode = 1;
    option.horizontalMirror = true;
    widget.setExtraOption(option);
    widget.show();

    int result = 1;
    QTimer::singleShot(0, &widget, [&]() {
        result = widget.grab().save(args.at(1)) ? 0 : 1;
        if (result != 0)
            std::fprintf(stderr, "cannot write %s\n", qPrintable(args.at(1)));
        QApplication::quit();
    });
    QApplication::exec();
    return result;
}
