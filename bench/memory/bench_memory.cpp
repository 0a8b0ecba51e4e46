// Memory over time: opens and closes every dialog (and every sub-widget of
// the property dialog) many times, offscreen, and prints the process's
// resident memory before and after, so that growth per cycle shows.
//
//   bench_memory                     1,000 cycles of each, one line each
//   bench_memory --cycles N          N cycles of each
//   bench_memory --only NAME         only that one
//   bench_memory --list              the names
//
// Under valgrind (bench/memory/valgrind-check) one cycle of each is enough
// to see a definite leak.
//
// A new dialog is one more line in cycles() below.

#include "ResidentMemory.h"

#include "Config/PrinterDriverConfig.h"
#include "FramelessWidget/Common/CommonFramelessMessageBox.h"
#include "UI/InstallPrinterDriverDlg.h"
#include "UI/ModifyPrinterDriverNameDlg.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverManagerDlg.h"
#include "UI/PrinterDriverPropertyDlg.h"
#include "UI/SubWidget/DoubleSlider.h"
#include "UI/SubWidget/ExtraOptionWidget.h"
#include "UI/SubWidget/InkOrderWidget.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QTextStream>
#include <QTimer>

#include <functional>
#include <utility>
#include <vector>

namespace {

// Deletions queued with deleteLater() happen as they would in the host's
// event loop between two uses of a dialog.
void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::sendPostedEvents();
}

// A modal dialog run with exec() and closed by the user at once.
template <typename Dialog, typename... Args>
void execAndClose(Args &&...args)
{
    Dialog dialog(std::forward<Args>(args)...);
    QTimer::singleShot(0, &dialog, [&dialog]() { dialog.reject(); });
    dialog.exec();
}

// A message box through its static function, answered by its first button.
void messageBoxAndAnswer()
{
    QTimer::singleShot(0, []() {
        if (auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
            box->done(0);
    });
    CommonFramelessMessageBox::question(nullptr, QStringLiteral("温馨提示"),
                                        QStringLiteral("是否删除所选驱动？\n删除后不能恢复。"),
                                        QStringLiteral("是"), QStringLiteral("否"), 1,
                                        QStringLiteral("下次不再询问"), nullptr, Qt::AlignHCenter);
}

// A widget shown with data and destroyed.
template <typename Widget, typename Fill>
void showAndDestroy(Fill fill)
{
    Widget widget;
    fill(widget);
    widget.show();
}

QVector<InkOrderWidget::InkInfo> inks()
{
    const QStringList names = {QStringLiteral("C"), QStringLiteral("M"),     QStringLiteral("Y"),
                               QStringLiteral("K"), QStringLiteral("White"), QStringLiteral("Varnish")};
    QVector<InkOrderWidget::InkInfo> result;
    for (int i = 0; i < names.size(); ++i) {
        InkOrderWidget::InkInfo info;
        info.inkId = i;
        info.order = i;
        info.isOn = i != 5;
        info.inkName = names.at(i);
        info.color = QColor::fromHsv(i * 50, 200, 220);
        result << info;
    }
    return result;
}

// The property dialog shows one installed driver: the first one the manager
// lists, or else the first sample driver, installed here. Looked up once, so
// that neither the listing nor the installation is measured.
QString propertyDriverId()
{
    static const QString id = []() {
        PrinterDriverManager *manager = PrinterDriverManager::instance();
        const auto drivers = manager->obtainInstalledDrivers();
        if (!drivers.isEmpty())
            return drivers.first()->id;
        const QDir dir(PrinterDriverConfig::instance()->driverDir());
        const QStringList samples = dir.entryList({QStringLiteral("*.prs")}, QDir::Files, QDir::Name);
        const auto installed =
            samples.isEmpty() ? nullptr : manager->installDriver(dir.filePath(samples.first()));
        return installed ? installed->id : QString();
    }();
    return id;
}

using Cycle = std::pair<QString, std::function<void()>>;

std::vector<Cycle> cycles()
{
    return {
        {QStringLiteral("CommonFramelessMessageBox"), messageBoxAndAnswer},
        {QStringLiteral("ModifyPrinterDriverNameDlg"),
         []() {
             execAndClose<ModifyPrinterDriverNameDlg>(QStringLiteral("UV 平板 2513 (白墨 + 光油)"), nullptr);
         }},
        {QStringLiteral("PrinterDriverManagerDlg"), []() { execAndClose<PrinterDriverManagerDlg>(nullptr); }},
        {QStringLiteral("InstallPrinterDriverDlg"), []() { execAndClose<InstallPrinterDriverDlg>(nullptr); }},
        {QStringLiteral("PrinterDriverPropertyDlg"),
         []() { execAndClose<PrinterDriverPropertyDlg>(propertyDriverId(), nullptr); }},
        {QStringLiteral("InkOrderWidget"),
         []() { showAndDestroy<InkOrderWidget>([](InkOrderWidget &w) { w.setInkInfos(inks()); }); }},
        {QStringLiteral("ExtraOptionWidget"),
         []() { showAndDestroy<ExtraOptionWidget>([](ExtraOptionWidget &w) { w.setExtraOption({}); }); }},
        {QStringLiteral("DoubleSlider"),
         []() {
             showAndDestroy<QWidget>([](QWidget &w) {
                 auto *slider = new DoubleSlider(Qt::Horizontal, &w);
                 slider->setDecimals(1);
                 slider->setRange(0.0, 100.0);
                 slider->setValue(42.5);
             });
         }},
    };
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList args = application.arguments();
    int count = 1000;
    QString only;
    for (int i = 1; i < args.size(); ++i) {
        if (args.at(i) == QLatin1String("--cycles") && i + 1 < args.size())
            count = args.at(++i).toInt();
        else if (args.at(i) == QLatin1String("--only") && i + 1 < args.size())
            only = args.at(++i);
    }

    QTextStream out(stdout);
    if (args.contains(QStringLiteral("--list"))) {
        for (const Cycle &cycle : cycles())
            out << cycle.first << '\n';
        return 0;
    }
    out << "cycles\tRSS start KiB\tRSS end KiB\tgrowth per cycle B\tname\n";
    for (const Cycle &cycle : cycles()) {
        if (!only.isEmpty() && cycle.first != only)
            continue;
        // One cycle first: fonts, style and caches that live for the
        // process are loaded once and are not growth.
        cycle.second();
        settle();
        const long start = residentKiB();
        for (int i = 0; i < count; ++i) {
            cycle.second();
            settle();
        }
        const long end = residentKiB();
        const double perCycle = count > 0 ? double(end - start) * 1024.0 / count : 0.0;
        out << count << '\t' << start << '\t' << end << '\t' << QString::number(perCycle, 'f', 1) << '\t'
            << cycle.first << '\n';
        out.flush();
    }
    return 0;
}
