// The module's dialogs under a real X11 window manager: openbox on its own
// Xvfb, with the pointer driven through xdotool and the window's place read
// back from the X server with xwininfo.
//
// Run without a display of its own, the program starts Xvfb (on a free
// display number) and openbox, runs itself again on that display with the
// xcb platform plugin and ends both afterwards. Without Xvfb, openbox,
// xdotool or xwininfo and xprop (x11-utils) it skips with a message.

#include "DialogTestSupport.h"

#include "FramelessWidget/Common/CommonFramelessDialog.h"
#include "FramelessWidget/Common/CommonFramelessMessageBox.h"
#include "UI/InstallPrinterDriverDlg.h"
#include "UI/ModifyPrinterDriverNameDlg.h"
#include "UI/PrinterDriverManagerDlg.h"
#include "UI/PrinterDriverPropertyDlg.h"

#include "Config/PrinterDriverConfig.h"

#include <QElapsedTimer>
#include <QFile>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QtTest>

#include <cstdio>
#include <functional>
#include <memory>
#include <utility>

namespace {

// The variable that tells the program it runs on the display it started.
const char displayVariable[] = "BEX_WM_TEST_DISPLAY";
// The exit code ctest reads as "skipped".
constexpr int skipExitCode = 77;
constexpr int toolTimeoutMs = 10000;

// Runs a tool to its end and keeps its standard output in `output`; false
// when it could not run, ran too long or failed.
bool runTool(const QString &program, const QStringList &arguments, QString *output = nullptr)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(toolTimeoutMs)) {
        process.kill();
        process.waitForFinished(1000);
        qWarning().noquote() << program << arguments.join(QLatin1Char(' ')) << "did not end in time";
        return false;
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        qWarning().noquote() << program << arguments.join(QLatin1Char(' '))
                             << "failed:" << QString::fromLocal8Bit(process.readAllStandardError());
        return false;
    }
    if (output)
        *output = QString::fromLocal8Bit(process.readAllStandardOutput());
    return true;
}

// What the X server says about a window.
struct XWindow
{
    bool known = false;
    bool viewable = false;
    QRect geometry; // absolute position and size of the window itself
};

XWindow xWindow(WId id)
{
    XWindow window;
    QString info;
    if (!runTool(QStringLiteral("xwininfo"), {QStringLiteral("-id"), QString::number(id)}, &info))
        return window;
    const auto number = [&info](const QString &label, bool *ok) {
        const QRegularExpression re(QRegularExpression::escape(label) + QStringLiteral(":\\s+(-?\\d+)"));
        const QRegularExpressionMatch match = re.match(info);
        *ok = *ok && match.hasMatch();
        return match.captured(1).toInt();
    };
    bool ok = !info.isEmpty();
    const int x = number(QStringLiteral("Absolute upper-left X"), &ok);
    const int y = number(QStringLiteral("Absolute upper-left Y"), &ok);
    const int width = number(QStringLiteral("Width"), &ok);
    const int height = number(QStringLiteral("Height"), &ok);
    window.known = ok;
    window.viewable = info.contains(QStringLiteral("IsViewable"));
    window.geometry = QRect(x, y, width, height);
    return window;
}

QString describe(const QRect &rect)
{
    return QStringLiteral("(%1, %2) %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

bool xdotool(const QStringList &arguments)
{
    return runTool(QStringLiteral("xdotool"), arguments);
}

bool pointerTo(const QPoint &global)
{
    return xdotool({QStringLiteral("mousemove"), QString::number(global.x()), QString::number(global.y())});
}

// Waits on the event loop until `done` holds or the time is up.
bool waitFor(const std::function<bool()> &done, int timeoutMs = 5000)
{
    QElapsedTimer waited;
    waited.start();
    while (!done()) {
        if (waited.hasExpired(timeoutMs))
            return false;
        QTest::qWait(50);
    }
    return true;
}

// Presses the left button at `from`, moves the pointer by `step` `steps`
// times, letting the application see every motion, and releases it.
bool dragPointer(const QPoint &from, const QPoint &step, int steps)
{
    if (!pointerTo(from))
        return false;
    QTest::qWait(100);
    if (!xdotool({QStringLiteral("mousedown"), QStringLiteral("1")}))
        return false;
    QTest::qWait(100);
    for (int i = 1; i <= steps; ++i) {
        if (!pointerTo(from + step * i))
            return false;
        QTest::qWait(60);
    }
    QTest::qWait(100);
    const bool released = xdotool({QStringLiteral("mouseup"), QStringLiteral("1")});
    QTest::qWait(150);
    return released;
}

constexpr int resizeTravel = 30;
constexpr int resizeSteps = 3;

bool doubleClick()
{
    // Well within the double-click interval, and slow enough for the
    // application to see two presses.
    return xdotool({QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
                    QStringLiteral("--delay"), QStringLiteral("80"), QStringLiteral("1")});
}

// How far each side of a window moved from `from` to `to`.
QString describeTravel(const QRect &from, const QRect &to)
{
    return QStringLiteral("left %1, top %2, right %3, bottom %4")
        .arg(to.left() - from.left())
        .arg(to.top() - from.top())
        .arg(to.right() - from.right())
        .arg(to.bottom() - from.bottom());
}

QString edgeName(Qt::Edges edges)
{
    QStringList parts;
    if (edges & Qt::TopEdge)
        parts << QStringLiteral("top");
    if (edges & Qt::BottomEdge)
        parts << QStringLiteral("bottom");
    if (edges & Qt::LeftEdge)
        parts << QStringLiteral("left");
    if (edges & Qt::RightEdge)
        parts << QStringLiteral("right");
    return parts.join(QLatin1Char('-'));
}

FramelessGeometry::HitRegion regionOf(Qt::Edges edges)
{
    using FramelessGeometry::HitRegion;
    const bool top = edges & Qt::TopEdge;
    const bool bottom = edges & Qt::BottomEdge;
    if (edges & Qt::LeftEdge)
        return top ? HitRegion::TopLeft : bottom ? HitRegion::BottomLeft : HitRegion::Left;
    if (edges & Qt::RightEdge)
        return top ? HitRegion::TopRight : bottom ? HitRegion::BottomRight : HitRegion::Right;
    return top ? HitRegion::Top : bottom ? HitRegion::Bottom : HitRegion::Client;
}

// A point just inside the resize border at the given edges, in window
// coordinates, halfway along an edge.
QPoint borderPoint(CommonFramelessDialog *dialog, Qt::Edges edges)
{
    const int inset = dialog->framelessHelper()->borderWidth() / 2;
    const int x = (edges & Qt::LeftEdge)    ? inset
                  : (edges & Qt::RightEdge) ? dialog->width() - 1 - inset
                                            : dialog->width() / 2;
    const int y = (edges & Qt::TopEdge)      ? inset
                  : (edges & Qt::BottomEdge) ? dialog->height() - 1 - inset
                                             : dialog->height() / 2;
    return QPoint(x, y);
}

// A point of the title bar that drags the window, in window coordinates:
// the one nearest to the middle of the bar.
QPoint captionPoint(CommonFramelessDialog *dialog)
{
    const QWidget *bar = dialog->framelessHelper()->titleBar();
    if (!bar)
        return QPoint(-1, -1);
    const int y = bar->mapTo(dialog, QPoint(0, bar->height() / 2)).y();
    QPoint best(-1, -1);
    for (int x = 0; x < dialog->width(); ++x) {
        if (dialog->framelessHelper()->hitTest(QPoint(x, y)) != FramelessGeometry::HitRegion::Caption)
            continue;
        if (best.x() < 0 || qAbs(x - dialog->width() / 2) < qAbs(best.x() - dialog->width() / 2))
            best = QPoint(x, y);
    }
    return best;
}

// Opens a modal window through `open` (which returns when it closes) and
// hands it to `user` once it is shown. Whatever `user` leaves open is
// rejected, and when no modal window comes up in time every dialog shown is
// rejected, so that `open` always returns.
void driveModal(const std::function<void()> &open, const std::function<void(QDialog *)> &user)
{
    QElapsedTimer waited;
    waited.start();
    QTimer timer;
    timer.setInterval(20);
    QObject::connect(&timer, &QTimer::timeout, &timer, [&]() {
        QPointer<QDialog> modal = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!modal) {
            if (waited.hasExpired(20000)) {
                timer.stop();
                const auto windows = QApplication::topLevelWidgets();
                for (QWidget *window : windows) {
                    if (auto *dialog = qobject_cast<QDialog *>(window))
                        dialog->reject();
                }
                QFAIL("no modal dialog came up");
            }
            return;
        }
        timer.stop();
        user(modal);
        if (modal && modal->isVisible())
            modal->reject();
    });
    timer.start();
    open();
}

} // namespace

class FramelessWindowManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void managerDialog_followsPointerUnderWindowManager_data() { parentData(); }
    void managerDialog_followsPointerUnderWindowManager();
    void installDialog_followsPointerUnderWindowManager_data() { parentData(); }
    void installDialog_followsPointerUnderWindowManager();
    void renameDialog_followsPointerUnderWindowManager_data() { parentData(); }
    void renameDialog_followsPointerUnderWindowManager();
    void propertyDialog_followsPointerUnderWindowManager_data() { parentData(); }
    void propertyDialog_followsPointerUnderWindowManager();
    void messageBox_followsPointerUnderWindowManager_data() { parentData(); }
    void messageBox_followsPointerUnderWindowManager();

private:
    void parentData();
    QWidget *parentWindow();
    // Moves the shown dialog through the window manager, resizes it at each
    // edge and corner, maximises and restores it with double clicks on the
    // title bar (where it may be resized) and finally closes it, checking
    // after each step where the X server and Qt see it.
    void exercise(QDialog *shown);
    void checkPlace(QDialog *dialog, const QString &when);
    void checkDrag(CommonFramelessDialog *dialog, const QPoint &step, int steps);
    void checkEdgeResize(CommonFramelessDialog *dialog, Qt::Edges edges, int travel);
    void checkMaximizeAndRestore(CommonFramelessDialog *dialog);
    void checkCloseAfterDrag(CommonFramelessDialog *dialog);

    std::unique_ptr<QWidget> parent_;
    QString driverId_;
};

void FramelessWindowManagerTest::initTestCase()
{
    QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
    QVERIFY(DialogTestSupport::startWithNothingInstalled());
    driverId_ = DialogTestSupport::installSample(QStringLiteral("BexUV2513_CMYKWV"));
    QVERIFY(!driverId_.isEmpty());
    QVERIFY(!DialogTestSupport::offerSample(QStringLiteral("BexUV3220_8C")).isEmpty());
}

void FramelessWindowManagerTest::cleanupTestCase()
{
    parent_.reset();
}

void FramelessWindowManagerTest::init()
{
    // Every dialog opens where it would on a first run.
    PrinterDriverConfig::instance()->setWindowRecord(QPoint(0, 0), QSize());
}

void FramelessWindowManagerTest::cleanup()
{
    // Leave the button up whatever happened.
    xdotool({QStringLiteral("mouseup"), QStringLiteral("1")});
}

void FramelessWindowManagerTest::parentData()
{
    QTest::addColumn<bool>("withParent");
    QTest::newRow("without parent") << false;
    QTest::newRow("with parent") << true;
}

QWidget *FramelessWindowManagerTest::parentWindow()
{
    QFETCH(bool, withParent);
    if (!withParent)
        return nullptr;
    if (!parent_) {
        parent_ = std::make_unique<QWidget>();
        parent_->setWindowTitle(QStringLiteral("host"));
        parent_->setGeometry(150, 120, 1000, 700);
        parent_->show();
        if (!QTest::qWaitForWindowExposed(parent_.get())) {
            QTest::qFail("the parent window did not come up", __FILE__, __LINE__);
            return nullptr;
        }
    }
    return parent_.get();
}

void FramelessWindowManagerTest::checkPlace(QDialog *dialog, const QString &when)
{
    XWindow x;
    const bool same = waitFor([&]() {
        x = xWindow(dialog->winId());
        return x.known && x.viewable && x.geometry == dialog->geometry();
    });
    if (!same) {
        QFAIL(qPrintable(
            QStringLiteral("%1: the dialog shows at %2 but believes it is at %3 (its native window at %4): "
                           "its popups, tool tips and drags go astray")
                .arg(when, describe(x.geometry), describe(dialog->geometry()),
                     describe(dialog->windowHandle()->geometry()))));
    }
}

void FramelessWindowManagerTest::checkDrag(CommonFramelessDialog *dialog, const QPoint &step, int steps)
{
    const QRect before = xWindow(dialog->winId()).geometry;
    const QPoint grab = captionPoint(dialog);
    QVERIFY2(grab.x() >= 0, "no free place on the title bar");
    QVERIFY(dragPointer(before.topLeft() + grab, step, steps));

    const QRect expected = before.translated(step * steps);
    XWindow x;
    const bool followed = waitFor([&]() {
        x = xWindow(dialog->winId());
        return x.geometry == expected;
    });
    if (!followed) {
        QFAIL(qPrintable(
            QStringLiteral("the dialog did not follow the pointer: dragged by (%1, %2) from %3, it "
                           "shows at %4, expected %5 (it believes it is at %6)")
                .arg(step.x() * steps)
                .arg(step.y() * steps)
                .arg(describe(before), describe(x.geometry), describe(expected),
                     describe(dialog->geometry()))));
    }
    checkPlace(dialog, QStringLiteral("after a drag"));
}

void FramelessWindowManagerTest::checkEdgeResize(CommonFramelessDialog *dialog, Qt::Edges edges, int travel)
{
    const QString name = edgeName(edges);
    const QRect before = xWindow(dialog->winId()).geometry;
    const QPoint grab = borderPoint(dialog, edges);
    QCOMPARE(dialog->framelessHelper()->hitTest(grab), regionOf(edges));
    if (edges & Qt::TopEdge) {
        // The title bar runs along the top: the press lands on it and still
        // has to resize rather than move the window.
        const QWidget *bar = dialog->framelessHelper()->titleBar();
        QVERIFY(bar);
        QVERIFY2(QRect(bar->mapTo(dialog, QPoint(0, 0)), bar->size()).contains(grab),
                 qPrintable(QStringLiteral("the %1 press is not on the title bar").arg(name)));
    }

    // The pointer travels `travel` pixels outwards from each dragged edge (or
    // inwards where `travel` is negative); the other edges stay.
    const QPoint outwards((edges & Qt::LeftEdge)    ? -1
                          : (edges & Qt::RightEdge) ? 1
                                                    : 0,
                          (edges & Qt::TopEdge)      ? -1
                          : (edges & Qt::BottomEdge) ? 1
                                                     : 0);
    const QPoint step = outwards * (travel / resizeSteps);
    const QPoint moved = step * resizeSteps;
    const QRect expected =
        before.adjusted((edges & Qt::LeftEdge) ? moved.x() : 0, (edges & Qt::TopEdge) ? moved.y() : 0,
                        (edges & Qt::RightEdge) ? moved.x() : 0, (edges & Qt::BottomEdge) ? moved.y() : 0);
    QVERIFY2(
        expected.width() >= dialog->minimumWidth() && expected.width() <= dialog->maximumWidth() &&
            expected.height() >= dialog->minimumHeight() && expected.height() <= dialog->maximumHeight(),
        qPrintable(QStringLiteral("%1: %2 is outside the dialog's limits").arg(name, describe(expected))));
    QVERIFY(dragPointer(before.topLeft() + grab, step, resizeSteps));

    // The comparison is exact. Qt gives these dialogs no resize increments
    // (WM_NORMAL_HINTS carry a minimum size only), the travel keeps them
    // within their limits, the device pixel ratio is 1 and openbox runs
    // without edge resistance: nothing rounds or snaps the dragged sides, so
    // they follow the pointer pixel for pixel, and the window manager has no
    // reason to touch the others. An offset of even one pixel is a fault.
    XWindow x;
    const bool resized = waitFor([&]() {
        x = xWindow(dialog->winId());
        return x.geometry == expected;
    });
    if (!resized) {
        QFAIL(qPrintable(
            QStringLiteral("dragging the %1 edge by (%2, %3) from %4: it shows at %5, expected %6; "
                           "its sides moved by %7")
                .arg(name)
                .arg(moved.x())
                .arg(moved.y())
                .arg(describe(before), describe(x.geometry), describe(expected),
                     describeTravel(before, x.geometry))));
    }
    checkPlace(dialog, QStringLiteral("after a resize at the %1 edge").arg(name));
}

void FramelessWindowManagerTest::checkMaximizeAndRestore(CommonFramelessDialog *dialog)
{
    const QRect before = xWindow(dialog->winId()).geometry;
    const QRect area = dialog->screen()->availableGeometry();
    QVERIFY2(before != area, "the dialog already fills the screen");
    QPoint grab = captionPoint(dialog);
    QVERIFY2(grab.x() >= 0, "no free place on the title bar");
    QVERIFY(pointerTo(before.topLeft() + grab));
    QVERIFY(doubleClick());

    XWindow x;
    bool filled = waitFor([&]() {
        x = xWindow(dialog->winId());
        return dialog->isMaximized() && x.geometry == area;
    });
    if (!filled) {
        QFAIL(
            qPrintable(QStringLiteral("a double click on the title bar at %1 did not maximise the dialog: it "
                                      "shows at %2, expected %3 (Qt calls it maximised: %4)")
                           .arg(describe(before), describe(x.geometry), describe(area))
                           .arg(dialog->isMaximized() ? QStringLiteral("yes") : QStringLiteral("no"))));
    }
    checkPlace(dialog, QStringLiteral("maximised"));
    if (QTest::currentTestFailed())
        return;

    grab = captionPoint(dialog);
    QVERIFY2(grab.x() >= 0, "no free place on the title bar of the maximised dialog");
    QVERIFY(pointerTo(area.topLeft() + grab));
    QVERIFY(doubleClick());
    const bool restored = waitFor([&]() {
        x = xWindow(dialog->winId());
        return !dialog->isMaximized() && x.geometry == before;
    });
    if (!restored) {
        QFAIL(qPrintable(QStringLiteral("a second double click did not restore the dialog: it shows at %1, "
                                        "expected %2 (Qt calls it maximised: %3)")
                             .arg(describe(x.geometry), describe(before))
                             .arg(dialog->isMaximized() ? QStringLiteral("yes") : QStringLiteral("no"))));
    }
    checkPlace(dialog, QStringLiteral("restored"));
}

void FramelessWindowManagerTest::checkCloseAfterDrag(CommonFramelessDialog *dialog)
{
    QPointer<QDialog> guard(dialog);
    const QRect before = xWindow(dialog->winId()).geometry;
    const QPoint grab = captionPoint(dialog);
    QVERIFY2(grab.x() >= 0, "no free place on the title bar");
    QVERIFY(dragPointer(before.topLeft() + grab, QPoint(-10, -5), 3));
    // Straight on to the close button, as a user does.
    const QWidget *button = dialog->framelessTitleBar()->closeButton();
    const QPoint at = button->mapTo(dialog, button->rect().center());
    const QRect now = xWindow(dialog->winId()).geometry;
    QVERIFY(pointerTo(now.topLeft() + at));
    QVERIFY(xdotool({QStringLiteral("click"), QStringLiteral("1")}));
    const bool closed = waitFor([&]() { return !guard || !guard->isVisible(); });
    QVERIFY2(closed, "the close button did not close the dialog after a drag");
}

void FramelessWindowManagerTest::exercise(QDialog *shown)
{
    auto *dialog = qobject_cast<CommonFramelessDialog *>(shown);
    QVERIFY(dialog);
    QVERIFY(QTest::qWaitForWindowExposed(dialog));
    checkPlace(dialog, QStringLiteral("placed by the window manager"));
    if (QTest::currentTestFailed())
        return;

    // Towards the middle of the screen, so that the window stays on it.
    const QPoint centre = dialog->screen()->geometry().center();
    const QRect onScreen = xWindow(dialog->winId()).geometry;
    const QPoint step(onScreen.center().x() < centre.x() ? 20 : -20,
                      onScreen.center().y() < centre.y() ? 10 : -10);
    checkDrag(dialog, step, 8);
    if (QTest::currentTestFailed())
        return;

    if (dialog->isResizable() &&
        !FramelessGeometry::isFixedSize(dialog->minimumSize(), dialog->maximumSize())) {
        // Every edge and corner once, each dimension grown and then shrunk
        // back in turn: the dialog never gets smaller than it opened (so no
        // minimum size stops a drag) and ends with the size it started with.
        const std::pair<Qt::Edges, int> resizes[] = {
            {Qt::LeftEdge, resizeTravel},
            {Qt::TopEdge, resizeTravel},
            {Qt::RightEdge, -resizeTravel},
            {Qt::BottomEdge, -resizeTravel},
            {Qt::TopEdge | Qt::LeftEdge, resizeTravel},
            {Qt::TopEdge | Qt::RightEdge, -resizeTravel},
            {Qt::BottomEdge | Qt::LeftEdge, resizeTravel},
            {Qt::BottomEdge | Qt::RightEdge, -resizeTravel},
        };
        for (const auto &resize : resizes) {
            checkEdgeResize(dialog, resize.first, resize.second);
            if (QTest::currentTestFailed())
                return;
        }
        checkMaximizeAndRestore(dialog);
        if (QTest::currentTestFailed())
            return;
    }
    checkCloseAfterDrag(dialog);
}

void FramelessWindowManagerTest::managerDialog_followsPointerUnderWindowManager()
{
    QWidget *parent = parentWindow();
    if (QTest::currentTestFailed())
        return;
    PrinterDriverManagerDlg dialog(parent);
    driveModal([&]() { dialog.exec(); }, [this](QDialog *shown) { exercise(shown); });
}

void FramelessWindowManagerTest::installDialog_followsPointerUnderWindowManager()
{
    QWidget *parent = parentWindow();
    if (QTest::currentTestFailed())
        return;
    InstallPrinterDriverDlg dialog(parent);
    driveModal([&]() { dialog.exec(); }, [this](QDialog *shown) { exercise(shown); });
}

void FramelessWindowManagerTest::renameDialog_followsPointerUnderWindowManager()
{
    QWidget *parent = parentWindow();
    if (QTest::currentTestFailed())
        return;
    ModifyPrinterDriverNameDlg dialog(QStringLiteral("BexUV2513"), parent);
    driveModal([&]() { dialog.exec(); }, [this](QDialog *shown) { exercise(shown); });
}

void FramelessWindowManagerTest::propertyDialog_followsPointerUnderWindowManager()
{
    QWidget *parent = parentWindow();
    if (QTest::currentTestFailed())
        return;
    PrinterDriverPropertyDlg dialog(driverId_, parent);
    driveModal([&]() { dialog.exec(); }, [this](QDialog *shown) { exercise(shown); });
}

void FramelessWindowManagerTest::messageBox_followsPointerUnderWindowManager()
{
    QWidget *parent = parentWindow();
    if (QTest::currentTestFailed())
        return;
    int answer = 0;
    driveModal(
        [&]() {
            answer = CommonFramelessMessageBox::question(parent, QStringLiteral("删除驱动"),
                                                         QStringLiteral("确定删除该驱动吗？"),
                                                         QStringLiteral("确定"), QStringLiteral("取消"));
        },
        [this](QDialog *shown) { exercise(shown); });
    if (!QTest::currentTestFailed())
        QCOMPARE(answer, -1);
}

namespace {

const char openboxConfig[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <resistance>
    <strength>0</strength>
    <screen_edge_strength>0</screen_edge_strength>
  </resistance>
</openbox_config>
)";

// Ends a started process, gently first.
void stop(QProcess &process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(3000)) {
        process.kill();
        process.waitForFinished(3000);
    }
}

// Starts Xvfb and openbox, runs this program again on their display and
// returns its exit code.
int runOnOwnDisplay(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList tools = {QStringLiteral("Xvfb"), QStringLiteral("openbox"), QStringLiteral("xdotool"),
                               QStringLiteral("xwininfo"), QStringLiteral("xprop")};
    for (const QString &tool : tools) {
        if (QStandardPaths::findExecutable(tool).isEmpty()) {
            std::printf("SKIP: %s not found; install xvfb, openbox, xdotool and x11-utils\n",
                        qPrintable(tool));
            return skipExitCode;
        }
    }

    // Xvfb writes the display number it picked to the given descriptor.
    QProcess server;
    server.start(QStringLiteral("Xvfb"),
                 {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                  QStringLiteral("0"), QStringLiteral("1600x1000x24"), QStringLiteral("-nolisten"),
                  QStringLiteral("tcp")});
    QByteArray number;
    QElapsedTimer waited;
    waited.start();
    while (!number.contains('\n') && !waited.hasExpired(20000) && server.state() != QProcess::NotRunning) {
        server.waitForReadyRead(500);
        number += server.readAllStandardOutput();
    }
    if (!number.contains('\n')) {
        std::fprintf(stderr, "FAIL: Xvfb did not start: %s\n", server.readAllStandardError().constData());
        stop(server);
        return 1;
    }
    const QString display = QStringLiteral(":") + QString::fromLatin1(number.trimmed());

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), display);
    QProcess windowManager;
    windowManager.setProcessEnvironment(environment);
    windowManager.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // openbox reads a configuration of the test's own, not the user's or the
    // system's: with edge resistance off, a dragged window side follows the
    // pointer instead of stopping at the edges of other windows and of the
    // screen, so where a window ends up depends on nothing but the drag.
    QTemporaryDir configDir;
    const QString config = configDir.filePath(QStringLiteral("rc.xml"));
    QFile configFile(config);
    if (!configDir.isValid() || !configFile.open(QIODevice::WriteOnly) ||
        configFile.write(openboxConfig) != qint64(sizeof(openboxConfig) - 1)) {
        std::fprintf(stderr, "FAIL: cannot write the openbox configuration %s\n", qPrintable(config));
        stop(server);
        return 1;
    }
    configFile.close();
    windowManager.start(QStringLiteral("openbox"),
                        {QStringLiteral("--sm-disable"), QStringLiteral("--config-file"), config});

    // openbox announces itself on the root window once it manages windows.
    bool managing = false;
    waited.restart();
    while (!managing && !waited.hasExpired(20000) && windowManager.state() != QProcess::NotRunning) {
        QProcess probe;
        probe.setProcessEnvironment(environment);
        probe.start(QStringLiteral("xprop"),
                    {QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")});
        if (probe.waitForFinished(toolTimeoutMs))
            managing = probe.readAllStandardOutput().contains("window id");
        if (!managing)
            QThread::msleep(100);
    }
    int result = 1;
    if (managing) {
        environment.insert(QString::fromLatin1(displayVariable), display);
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        environment.remove(QStringLiteral("QT_SCALE_FACTOR"));
        QProcess test;
        test.setProcessEnvironment(environment);
        test.setProcessChannelMode(QProcess::ForwardedChannels);
        test.start(QCoreApplication::applicationFilePath(), QCoreApplication::arguments().mid(1));
        if (test.waitForFinished(240000))
            result = test.exitStatus() == QProcess::NormalExit ? test.exitCode() : 1;
        else
            std::fprintf(stderr, "FAIL: the test did not end in time\n");
        stop(test);
    } else {
        std::fprintf(stderr, "FAIL: openbox did not start on %s\n", qPrintable(display));
    }
    stop(windowManager);
    stop(server);
    return result;
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty(displayVariable))
        return runOnOwnDisplay(argc, argv);
    QApplication app(argc, argv);
    FramelessWindowManagerTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_framelesswindowmanager.moc"
