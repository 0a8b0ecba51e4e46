// Saves a picture of the ink order widget with an eight-ink flatbed set, as
// the property dialog shows it in a host, for the documentation. Ink names
// are not translated: one picture serves both languages.
//   xvfb-run -a ./inkorder_screenshot docs/screenshots/ink-order-widget.png

#include "UI/SubWidget/InkOrderWidget.h"

#include "ScreenshotSupport.h"

#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>

#include <cstdio>

namespace {

InkOrderWidget::InkInfo ink(int inkId, int order, bool isOn, const char *name, const QColor &color)
{
    InkOrderWidget::InkInfo info;
    info.inkId = inkId;
    info.order = order;
    info.isOn = isOn;
    info.inkName = QString::fromUtf8(name);
    info.color = color;
    return info;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: inkorder_screenshot <output.png>\n");
        return 2;
    }
    if (!ScreenshotSupport::applyHostLook(app))
        return 1;

    QWidget window;
    window.setWindowTitle(QStringLiteral("InkOrderWidget"));
    auto *layout = new QVBoxLayout(&window);
    layout->addWidget(new QLabel(QStringLiteral("墨水顺序 (拖动标签改变顺序, 双击开关墨水)"), &window));
    auto *widget = new InkOrderWidget(&window);
    layout->addWidget(widget);

    // The colours the property dialog uses; Lm and Varnish are switched off.
    widget->setOffBackgroundColor(QColor(153, 153, 153));
    widget->setOffTextColor(QColor(205, 205, 205));
    widget->setInkSwitchEnabled(true);
    // Given in channel order, shown in print order: White under the colours,
    // Varnish on top.
    widget->setInkInfos({ink(0, 2, true, "C", Qt::cyan), ink(1, 3, true, "M", Qt::magenta),
                         ink(2, 4, true, "Y", Qt::yellow), ink(3, 1, true, "K", Qt::black),
                         ink(4, 5, true, "Lc", QColor(224, 255, 255)),
                         ink(5, 6, false, "Lm", QColor(255, 224, 255)), ink(6, 0, true, "White", Qt::white),
                         ink(7, 7, false, "Varnish", Qt::white)});
    window.resize(520, window.sizeHint().height());
    return ScreenshotSupport::saveWhenShown(&window, args.at(1)) ? 0 : 1;
}
