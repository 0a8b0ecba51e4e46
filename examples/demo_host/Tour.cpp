#include "Tour.h"

#include "DemoWindow.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QTextStream>
#include <QTimer>

#include <chrono>
#include <cstdio>

namespace {

// The tour looks for its windows every 20 ms: a window has 10 s to come,
// and 2 s to go after the last expectation.
constexpr std::chrono::milliseconds pollInterval(20);
constexpr int roundsToAppear = int(std::chrono::seconds(10) / pollInterval);
constexpr int roundsToClose = int(std::chrono::seconds(2) / pollInterval);

// The sample drivers the tour works with (their files in dtp/driver).
const QString tourDriver = QStringLiteral("BexUV2513_CMYKWV");
const QString otherDriver = QStringLiteral("BexUV3220_8C");
// Part of the tour driver's shown name in the manager's list.
const QString tourDriverMark = QStringLiteral("2513");

QTextStream &out()
{
    static QTextStream stream(stdout);
    return stream;
}

bool isMessageBox(QWidget *window)
{
    return window->property("framelessMessageBox").toBool();
}

void sendClick(QWidget *target, const QPoint &pos)
{
    QMouseEvent press(QEvent::MouseButtonPress, pos, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, pos, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(target, &release);
}

} // namespace

Tour::Tour(DemoWindow &window, const QString &screenshotDir)
    : window_(window)
    , dir_(screenshotDir)
{}

int Tour::run()
{
    if (!dir_.mkpath(QStringLiteral("."))) {
        out() << "cannot make the folder " << dir_.absolutePath() << '\n';
        return 1;
    }
    window_.show();
    bool ok = report(QStringLiteral("offer the sample drivers in dtp/bin"), offerSampleDrivers(), {});
    // Chinese first: after English the module keeps showing English.
    for (const QString &tag : {QStringLiteral("zh"), QStringLiteral("en")})
        ok = tourLanguage(tag) && ok;

    out() << (ok ? "tour passed" : "tour FAILED") << '\n';
    out() << "screenshots in " << dir_.absolutePath() << ":\n";
    for (const QString &name : qAsConst(screenshots_))
        out() << "  " << name << '\n';
    out().flush();
    return ok ? 0 : 1;
}

bool Tour::offerSampleDrivers()
{
    // The install dialog offers the .prs files of dtp/bin, where a vendor's
    // driver files are put; the samples come with their .pdv files.
    const QString appDir = QCoreApplication::applicationDirPath();
    bool ok = true;
    for (const QString &driver : {tourDriver, otherDriver}) {
        for (const QString &suffix : {QStringLiteral(".prs"), QStringLiteral(".pdv")}) {
            const QString target = appDir + QStringLiteral("/dtp/bin/") + driver + suffix;
            if (!QFile::exists(target))
                ok = QFile::copy(appDir + QStringLiteral("/dtp/driver/") + driver + suffix, target) && ok;
        }
    }
    return ok;
}

bool Tour::tourLanguage(const QString &tag)
{
    tag_ = tag;
    pictures_ = 0;
    window_.useLanguage(tag == QLatin1String("zh") ? QLocale::Chinese : QLocale::English);
    out() << "[" << tag << "] language " << (tag == QLatin1String("zh") ? "Chinese" : "English") << '\n';
    const bool manager = managerStep(tag);
    const bool job = manager && jobStep(tag);
    // The demo's own window with what the steps returned and the log.
    const bool shown = report(QStringLiteral("[%1] demo window").arg(tag),
                              screenshot(&window_, QStringLiteral("demo-host")), {});
    return manager && job && shown;
}

bool Tour::managerStep(const QString &tag)
{
    // Open the install dialog, ask to delete a file it offers and close the
    // question with the title bar's close button (which answers "no"), install the tour's driver unless
    // it is installed, make it the default, and leave.
    expect(QStringLiteral("PrinterDriverManagerDlg"), [this](QWidget *dialog) {
        screenshot(dialog, QStringLiteral("driver-manager"));
        clickButton(dialog, "btn_installPrinterDriver_");
    });
    expect(QStringLiteral("InstallPrinterDriverDlg"), [this](QWidget *dialog) {
        screenshot(dialog, QStringLiteral("install-driver"));
        clickRow(dialog, "listWidget_printerDriverList_", otherDriver + QStringLiteral(".prs"));
        clickButton(dialog, "btn_del_");
    });
    expectMessageBox([this](QWidget *box) {
        screenshot(box, QStringLiteral("delete-question"));
        clickButton(box, "framelessTitleBar_btnClose");
    });
    expect(QStringLiteral("InstallPrinterDriverDlg"), [this](QWidget *dialog) {
        clickRow(dialog, "listWidget_printerDriverList_", tourDriver + QStringLiteral(".prs"));
        auto *install = dialog->findChild<QPushButton *>(QStringLiteral("btn_install_"));
        clickButton(dialog, install && install->isEnabled() ? "btn_install_" : "btn_cancel_");
    });
    expect(QStringLiteral("PrinterDriverManagerDlg"), [this](QWidget *dialog) {
        clickRow(dialog, "listWidget_", tourDriverMark);
        clickButton(dialog, "btn_setDefaultPrinterDriver_");
        screenshot(dialog, QStringLiteral("driver-manager-default"));
        clickButton(dialog, "btn_quit_");
    });
    ManagerReport result;
    const bool played = play([&]() { result = window_.runDriverManager(); });
    const bool ok = played && result.ok() && result.showName.contains(tourDriverMark) &&
                    !result.spotColorSampleNameList.isEmpty();
    return report(QStringLiteral("[%1] driver manager").arg(tag), ok, result.lines());
}

bool Tour::jobStep(const QString &tag)
{
    const RipExtraOption option{2, true};
    window_.setJobOption(option);
    expect(QStringLiteral("PrinterDriverPropertyDlg"), [this](QWidget *dialog) {
        screenshot(dialog, QStringLiteral("driver-properties"));
        clickButton(dialog, "btn_ok_");
    });
    JobReport result;
    const bool played = play([&]() { result = window_.runJob(); });
    const bool ok = played && result.ok() && result.option.printMode == option.printMode &&
                    result.option.horizontalMirror == option.horizontalMirror;
    return report(QStringLiteral("[%1] rip a job").arg(tag), ok, result.lines());
}

bool Tour::play(const std::function<void()> &call)
{
    problems_.clear();
    next_ = 0;
    rounds_ = 0;
    playing_ = true;
    QTimer::singleShot(pollInterval, this, &Tour::poll);
    call();
    playing_ = false;
    if (next_ < expectations_.size())
        problem(QStringLiteral("the call returned before: ") + expectations_.at(next_).what);
    expectations_.clear();
    return problems_.isEmpty();
}

void Tour::expect(const QString &windowClass, const std::function<void(QWidget *)> &act)
{
    expectations_.append({windowClass,
                          [windowClass](QWidget *window) {
                              return QLatin1String(window->metaObject()->className()) == windowClass;
                          },
                          act});
}

void Tour::expectMessageBox(const std::function<void(QWidget *)> &act)
{
    expectations_.append({QStringLiteral("a message box"), &isMessageBox, act});
}

void Tour::poll()
{
    if (!playing_)
        return;
    QWidget *window = QApplication::activeModalWidget();
    const bool expecting = next_ < expectations_.size();
    if (expecting && window && expectations_.at(next_).matches(window)) {
        const std::function<void(QWidget *)> act = expectations_.at(next_).act;
        ++next_;
        rounds_ = 0;
        // Polling goes on inside the window this action may open.
        QTimer::singleShot(pollInterval, this, &Tour::poll);
        act(window);
        return;
    }
    const bool waitedLong = ++rounds_ >= (expecting ? roundsToAppear : roundsToClose);
    if (waitedLong && (expecting || window)) {
        problem(expecting ? QStringLiteral("never came: ") + expectations_.at(next_).what
                          : QStringLiteral("left open: ") + QLatin1String(window->metaObject()->className()));
        closeModalWindows();
        return;
    }
    QTimer::singleShot(pollInterval, this, &Tour::poll);
}

void Tour::closeModalWindows()
{
    playing_ = false;
    // A message box answers "no" (-1) as when closed by its title bar.
    for (int guard = 0; guard < 16; ++guard) {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        dialog->done(isMessageBox(dialog) ? -1 : QDialog::Rejected);
    }
}

bool Tour::screenshot(QWidget *window, const QString &name)
{
    const QString file =
        QStringLiteral("tour-%1-%2-%3.png").arg(tag_).arg(++pictures_, 2, 10, QLatin1Char('0')).arg(name);
    if (!window->grab().save(dir_.filePath(file))) {
        problem(QStringLiteral("could not save ") + dir_.filePath(file));
        return false;
    }
    screenshots_ << file;
    return true;
}

void Tour::clickButton(QWidget *window, const char *objectName)
{
    auto *button = window->findChild<QPushButton *>(QLatin1String(objectName));
    if (!button || !button->isVisible() || !button->isEnabled()) {
        problem(QStringLiteral("cannot click %1").arg(QLatin1String(objectName)));
        return;
    }
    button->click();
}

void Tour::clickRow(QWidget *window, const char *listName, const QString &text)
{
    auto *list = window->findChild<QListWidget *>(QLatin1String(listName));
    for (int row = 0; list && row < list->count(); ++row) {
        QListWidgetItem *item = list->item(row);
        if (!item->text().contains(text))
            continue;
        list->scrollToItem(item);
        sendClick(list->viewport(), list->visualItemRect(item).center());
        return;
    }
    problem(QStringLiteral("no row \"%1\" in %2").arg(text, QLatin1String(listName)));
}

void Tour::problem(const QString &text)
{
    problems_ << text;
}

bool Tour::report(const QString &step, bool ok, const QStringList &lines)
{
    out() << step << ": " << (ok ? "ok" : "FAILED") << '\n';
    for (const QString &line : lines)
        out() << "    " << line << '\n';
    for (const QString &line : qAsConst(problems_))
        out() << "    problem: " << line << '\n';
    problems_.clear();
    out().flush();
    return ok;
}
