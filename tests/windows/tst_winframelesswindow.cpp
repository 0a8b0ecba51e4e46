// Real frameless windows under the native Windows platform plugin: the
// messages Windows sends to their window handles are answered by
// WinFramelessHelper the way the shared geometry decides, and the title bar's
// buttons change the native window state.

#include "FramelessCore/FramelessHelper/FramelessGeometry.h"
#include "FramelessCore/FramelessHelper/WinFramelessHelper.h"
#include "FramelessWidget/Common/CommonFramelessDialog.h"
#include "FramelessWidget/Common/CommonFramelessMessageBox.h"
#include "MessageBoxDriver.h"
#include "MessageBoxScrollBarWatcher.h"

#include <QApplication>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

#include <qt_windows.h>

namespace {

// A resizable frameless dialog with its title bar and a body below it.
std::unique_ptr<CommonFramelessDialog> newDialog()
{
    auto dialog = std::make_unique<CommonFramelessDialog>();
    auto *layout = new QVBoxLayout(dialog.get());
    auto *titleRow = new QHBoxLayout;
    layout->addLayout(titleRow);
    auto *body = new QLabel(QStringLiteral("打印机驱动"), dialog.get());
    body->setObjectName(QStringLiteral("body"));
    layout->addWidget(body, 1);
    dialog->setupFramelessTitleBar(titleRow);
    dialog->setWindowTitle(QStringLiteral("安装打印机"));
    dialog->setWindowFlag(Qt::WindowMaximizeButtonHint, true);
    dialog->setMinimumSize(300, 200);
    dialog->resize(480, 320);
    dialog->move(120, 100);
    return dialog;
}

HWND hwndOf(QWidget *window)
{
    return reinterpret_cast<HWND>(window->winId());
}

QSize clientSize(HWND hwnd)
{
    RECT client;
    ::GetClientRect(hwnd, &client);
    return QSize(client.right - client.left, client.bottom - client.top);
}

QRect windowRect(HWND hwnd)
{
    RECT r;
    ::GetWindowRect(hwnd, &r);
    return QRect(QPoint(r.left, r.top), QPoint(r.right - 1, r.bottom - 1));
}

// WM_NCHITTEST at a point of the client area, in physical pixels.
LRESULT hitTestAt(HWND hwnd, const QPoint &physicalClientPos)
{
    POINT point;
    point.x = physicalClientPos.x();
    point.y = physicalClientPos.y();
    ::ClientToScreen(hwnd, &point);
    return ::SendMessageW(hwnd, WM_NCHITTEST, 0, MAKELPARAM(LOWORD(point.x), LOWORD(point.y)));
}

// The physical client position of a widget's centre.
QPoint physicalCentre(QWidget *window, QWidget *widget)
{
    const QPoint logical = widget->mapTo(window, widget->rect().center());
    const qreal ratio = window->devicePixelRatioF();
    return QPoint(qRound(logical.x() * ratio), qRound(logical.y() * ratio));
}

QRect workAreaOf(HWND hwnd)
{
    MONITORINFO info;
    info.cbSize = sizeof(info);
    ::GetMonitorInfoW(::MonitorFromWindow(hwnd, MONITOR_DEFAULTTONEAREST), &info);
    return QRect(QPoint(info.rcWork.left, info.rcWork.top),
                 QPoint(info.rcWork.right - 1, info.rcWork.bottom - 1));
}

QRect fromRECT(const RECT &r)
{
    return QRect(QPoint(r.left, r.top), QPoint(r.right - 1, r.bottom - 1));
}

RECT toRECT(const QRect &r)
{
    RECT out;
    out.left = r.left();
    out.top = r.top();
    out.right = r.right() + 1;
    out.bottom = r.bottom() + 1;
    return out;
}

// WM_NCCALCSIZE with wParam TRUE for a proposed window rectangle; the client
// rectangle the window answers.
QRect calcClientRect(HWND hwnd, const QRect &proposed, const QRect &previous)
{
    NCCALCSIZE_PARAMS params;
    ZeroMemory(&params, sizeof(params));
    params.rgrc[0] = toRECT(proposed);
    params.rgrc[1] = toRECT(previous);
    params.rgrc[2] = toRECT(previous);
    WINDOWPOS position;
    ZeroMemory(&position, sizeof(position));
    position.hwnd = hwnd;
    position.x = proposed.x();
    position.y = proposed.y();
    position.cx = proposed.width();
    position.cy = proposed.height();
    params.lppos = &position;
    ::SendMessageW(hwnd, WM_NCCALCSIZE, TRUE, reinterpret_cast<LPARAM>(&params));
    return fromRECT(params.rgrc[0]);
}

// The native hit code of a border region.
int nativeHitCode(FramelessGeometry::HitRegion region)
{
    using FramelessGeometry::HitRegion;
    switch (region) {
    case HitRegion::Left:
        return HTLEFT;
    case HitRegion::Right:
        return HTRIGHT;
    case HitRegion::Top:
        return HTTOP;
    case HitRegion::Bottom:
        return HTBOTTOM;
    case HitRegion::TopLeft:
        return HTTOPLEFT;
    case HitRegion::TopRight:
        return HTTOPRIGHT;
    case HitRegion::BottomLeft:
        return HTBOTTOMLEFT;
    case HitRegion::BottomRight:
        return HTBOTTOMRIGHT;
    case HitRegion::Caption:
        return HTCAPTION;
    case HitRegion::Client:
        break;
    }
    return HTCLIENT;
}

// Ends whatever modal window is still open when the deadline passes, so that
// a box that never reached the test's own closer fails the test instead of
// hanging it.
class ModalDeadline
{
public:
    explicit ModalDeadline(int milliseconds = 20000)
    {
        timer_.setSingleShot(true);
        QObject::connect(&timer_, &QTimer::timeout, [this]() {
            if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
                passed = true;
                dialog->done(-1);
            }
        });
        timer_.start(milliseconds);
    }

    bool passed = false;

private:
    QTimer timer_;
};

int screenDpi()
{
    HDC dc = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(dc, LOGPIXELSX);
    ::ReleaseDC(nullptr, dc);
    return dpi;
}

} // namespace

class WinFramelessWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void dialog_usesTheNativeBackEnd();
    void hitTest_findsEdgesAndCorners_data();
    void hitTest_findsEdgesAndCorners();
    void hitTest_findsTitleBarAndClient();
    void hitTest_fixedSizeWindow_hasNoBorder();
    void ncCalcSize_clientIsWholeWindow();
    void ncCalcSize_maximisedFillsWorkAreaUnlessMaximumIsSmaller();
    void minMaxInfo_matchesSizeLimits();
    void dpiChanged_takesSuggestedRectangle_data();
    void dpiChanged_takesSuggestedRectangle();
    void maximiseAndRestore_changeNativeState();
    void titleBarButtons_changeNativeState();
    void messageBox_usesTheNativeBackEndAndHitTest();
    void messageBox_wrappedTextHasNoHorizontalScrollBar_data();
    void messageBox_wrappedTextHasNoHorizontalScrollBar();
};

void WinFramelessWindowTest::initTestCase()
{
    QCOMPARE(QGuiApplication::platformName(), QStringLiteral("windows"));
    // A scaled run really draws at its ratio, so physical and device-independent pixels differ.
    if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR")) {
        QWidget window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.devicePixelRatioF(), qEnvironmentVariable("QT_SCALE_FACTOR").toDouble());
    }
}

void WinFramelessWindowTest::dialog_usesTheNativeBackEnd()
{
    auto dialog = newDialog();
    QVERIFY(qobject_cast<WinFramelessHelper *>(dialog->framelessHelper()));
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    const HWND hwnd = hwndOf(dialog.get());
    const LONG style = ::GetWindowLongW(hwnd, GWL_STYLE);
    // The native frame styles are kept (snap, animations), the system menu is not.
    QVERIFY(style & WS_THICKFRAME);
    QVERIFY((style & WS_CAPTION) == WS_CAPTION);
    QVERIFY(style & WS_MAXIMIZEBOX);
    QVERIFY(style & WS_MINIMIZEBOX);
    QVERIFY(!(style & WS_SYSMENU));
    // Only the native back end answers HTCAPTION: to Windows the whole
    // window is client area.
    QCOMPARE(hitTestAt(hwnd, physicalCentre(dialog.get(), dialog->framelessTitleBar()->labelText())),
             LRESULT(HTCAPTION));
}

void WinFramelessWindowTest::hitTest_findsEdgesAndCorners_data()
{
    // Where the points lie: at an edge or half-way across, on each axis.
    QTest::addColumn<int>("xAnchor"); // 0 left, 1 middle, 2 right
    QTest::addColumn<int>("yAnchor");
    QTest::addColumn<int>("expected");
    QTest::newRow("left") << 0 << 1 << int(HTLEFT);
    QTest::newRow("right") << 2 << 1 << int(HTRIGHT);
    QTest::newRow("top") << 1 << 0 << int(HTTOP);
    QTest::newRow("bottom") << 1 << 2 << int(HTBOTTOM);
    QTest::newRow("top left") << 0 << 0 << int(HTTOPLEFT);
    QTest::newRow("top right") << 2 << 0 << int(HTTOPRIGHT);
    QTest::newRow("bottom left") << 0 << 2 << int(HTBOTTOMLEFT);
    QTest::newRow("bottom right") << 2 << 2 << int(HTBOTTOMRIGHT);
}

void WinFramelessWindowTest::hitTest_findsEdgesAndCorners()
{
    QFETCH(int, xAnchor);
    QFETCH(int, yAnchor);
    QFETCH(int, expected);
    auto dialog = newDialog();
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    const HWND hwnd = hwndOf(dialog.get());
    const QSize size = clientSize(hwnd);
    const int border = dialog->framelessHelper()->borderWidth();
    // A point inset physical pixels inside the edges the anchors name.
    const auto at = [&](int anchor, int extent, int inset) {
        return anchor == 0 ? inset : anchor == 1 ? extent / 2 : extent - 1 - inset;
    };
    const QPoint inside(at(xAnchor, size.width(), 1), at(yAnchor, size.height(), 1));
    QCOMPARE(int(hitTestAt(hwnd, inside)), expected);
    // Across the border's inner boundary the window answers what the shared
    // decision promises: the border region up to its last pixel, something
    // else past it.
    const qreal ratio = dialog->devicePixelRatioF();
    int borderPixels = 0;
    for (int inset = 0; inset <= border + 1; ++inset) {
        const QPoint pos(at(xAnchor, size.width(), inset), at(yAnchor, size.height(), inset));
        FramelessGeometry::HitTestInput in;
        in.clientSize = size;
        in.borderPos = pos;
        in.pos = FramelessGeometry::clientCursor(pos, size, ratio).logicalPos;
        in.borderWidth = border;
        in.movable = false; // the border alone
        in.minimumSize = dialog->minimumSize();
        in.maximumSize = dialog->maximumSize();
        const FramelessGeometry::HitRegion region = FramelessGeometry::hitTest(in);
        const int answer = int(hitTestAt(hwnd, pos));
        if (region == FramelessGeometry::HitRegion::Client) {
            QVERIFY2(answer != expected, qPrintable(QStringLiteral("inset %1").arg(inset)));
        } else {
            if (answer == expected)
                ++borderPixels;
            QVERIFY2(answer == nativeHitCode(region),
                     qPrintable(QStringLiteral("inset %1: %2").arg(inset).arg(answer)));
        }
    }
    // The border is as wide as the helper says, give or take the pixel the
    // exclusive right and bottom edges take.
    QVERIFY(borderPixels >= border - 1 && borderPixels <= border);
}

void WinFramelessWindowTest::hitTest_findsTitleBarAndClient()
{
    auto dialog = newDialog();
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    const HWND hwnd = hwndOf(dialog.get());
    CommonFramelessTitleBar *titleBar = dialog->framelessTitleBar();
    QWidget *bar = titleBar->realTitleBar();

    // The empty part of the title bar: a point of it with no child widget.
    QPoint empty(-1, -1);
    for (int x = bar->width() / 2; x < bar->width(); ++x) {
        if (!bar->childAt(x, bar->height() / 2)) {
            empty = QPoint(x, bar->height() / 2);
            break;
        }
    }
    QVERIFY2(empty.x() >= 0, "the title bar has no empty part");
    const QPoint emptyLogical = bar->mapTo(dialog.get(), empty);
    const qreal ratio = dialog->devicePixelRatioF();
    const QPoint emptyPhysical(qRound(emptyLogical.x() * ratio), qRound(emptyLogical.y() * ratio));
    QCOMPARE(hitTestAt(hwnd, emptyPhysical), LRESULT(HTCAPTION));

    QCOMPARE(hitTestAt(hwnd, physicalCentre(dialog.get(), titleBar->labelText())), LRESULT(HTCAPTION));
    QCOMPARE(hitTestAt(hwnd, physicalCentre(dialog.get(), titleBar->closeButton())), LRESULT(HTCLIENT));
    QCOMPARE(hitTestAt(hwnd, physicalCentre(dialog.get(), titleBar->minimizeButton())), LRESULT(HTCLIENT));
    QCOMPARE(hitTestAt(hwnd, physicalCentre(dialog.get(), titleBar->maximizeButton())), LRESULT(HTCLIENT));
    auto *body = dialog->findChild<QLabel *>(QStringLiteral("body"));
    QCOMPARE(hitTestAt(hwnd, physicalCentre(dialog.get(), body)), LRESULT(HTCLIENT));
}

void WinFramelessWindowTest::hitTest_fixedSizeWindow_hasNoBorder()
{
    auto dialog = newDialog();
    dialog->setFixedSize(400, 260);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    const HWND hwnd = hwndOf(dialog.get());
    const QSize size = clientSize(hwnd);
    QCOMPARE(int(hitTestAt(hwnd, QPoint(1, size.height() / 2))), int(HTCLIENT));
    QCOMPARE(int(hitTestAt(hwnd, QPoint(size.width() - 2, size.height() / 2))), int(HTCLIENT));
    QCOMPARE(int(hitTestAt(hwnd, QPoint(size.width() / 2, size.height() - 2))), int(HTCLIENT));
    QCOMPARE(int(hitTestAt(hwnd, QPoint(1, size.height() - 2))), int(HTCLIENT));
    // The top edge lies in the title bar: it moves the window.
    QCOMPARE(int(hitTestAt(hwnd, QPoint(size.width() / 2, 1))), int(HTCAPTION));
    QCOMPARE(int(hitTestAt(hwnd, QPoint(1, 1))), int(HTCAPTION));
}

void WinFramelessWindowTest::ncCalcSize_clientIsWholeWindow()
{
    auto dialog = newDialog();
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    const HWND hwnd = hwndOf(dialog.get());
    const QRect window = windowRect(hwnd);
    QCOMPARE(clientSize(hwnd), window.size());
    const qreal ratio = dialog->devicePixelRatioF();
    QCOMPARE(window.size(), QSize(qRound(dialog->width() * ratio), qRound(dialog->height() * ratio)));

    // A proposed rectangle becomes the client rectangle as it is.
    const QRect proposed = window.adjusted(0, 0, 40, 30);
    QCOMPARE(calcClientRect(hwnd, proposed, window), proposed);
    QCOMPARE(calcClientRect(hwnd, window, window), window);
}

void WinFramelessWindowTest::ncCalcSize_maximisedFillsWorkAreaUnlessMaximumIsSmaller()
{
    auto dialog = newDialog();
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    const HWND hwnd = hwndOf(dialog.get());
    dialog->showMaximized();
    QTRY_VERIFY(::IsZoomed(hwnd));
    const QRect work = workAreaOf(hwnd);
    QTRY_COMPARE(windowRect(hwnd), work);
    QCOMPARE(clientSize(hwnd), work.size());

    const QRect proposed(work.topLeft() + QPoint(20, 20), QSize(420, 300));
    QCOMPARE(calcClientRect(hwnd, proposed, proposed), work);

    // A window that may not grow to the work area keeps the proposed rectangle.
    dialog->setMaximumSize(500, 400);
    QVERIFY(::IsZoomed(hwnd));
    QCOMPARE(calcClientRect(hwnd, proposed, proposed), proposed);
}

void WinFramelessWindowTest::minMaxInfo_matchesSizeLimits()
{
    auto dialog = newDialog();
    dialog->setMinimumSize(320, 210);
    dialog->setMaximumSize(900, 700);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    const HWND hwnd = hwndOf(dialog.get());
    const qreal ratio = dialog->devicePixelRatioF();

    MINMAXINFO info;
    ZeroMemory(&info, sizeof(info));
    info.ptMaxTrackSize.x = 5000;
    info.ptMaxTrackSize.y = 5000;
    info.ptMaxSize.x = 5000;
    info.ptMaxSize.y = 5000;
    ::SendMessageW(hwnd, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    QCOMPARE(QSize(info.ptMinTrackSize.x, info.ptMinTrackSize.y),
             FramelessGeometry::toPhysical(QSize(320, 210), ratio));
    QCOMPARE(QSize(info.ptMaxTrackSize.x, info.ptMaxTrackSize.y),
             FramelessGeometry::toPhysical(QSize(900, 700), ratio));

    // Windows keeps to them when the window is resized natively.
    ::SetWindowPos(hwnd, nullptr, 0, 0, 100, 100, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    QCOMPARE(windowRect(hwnd).size(), FramelessGeometry::toPhysical(QSize(320, 210), ratio));
    ::SetWindowPos(hwnd, nullptr, 0, 0, 3000, 3000, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    QCOMPARE(windowRect(hwnd).size(), FramelessGeometry::toPhysical(QSize(900, 700), ratio));
    QTRY_COMPARE(dialog->size(), QSize(900, 700));
}

void WinFramelessWindowTest::dpiChanged_takesSuggestedRectangle_data()
{
    QTest::addColumn<int>("dpiFactor");
    QTest::newRow("same dpi") << 1;
    QTest::newRow("twice the dpi") << 2;
}

void WinFramelessWindowTest::dpiChanged_takesSuggestedRectangle()
{
    QFETCH(int, dpiFactor);
    auto dialog = newDialog();
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    const HWND hwnd = hwndOf(dialog.get());
    const QRect before = windowRect(hwnd);
    const QRect suggested(before.topLeft() + QPoint(30, 20), before.size() + QSize(60, 40));
    RECT rect = toRECT(suggested);
    const int dpi = screenDpi() * dpiFactor;
    ::SendMessageW(hwnd, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&rect));
    QCOMPARE(windowRect(hwnd), suggested);
    QCOMPARE(clientSize(hwnd), suggested.size());
    const qreal ratio = dialog->devicePixelRatioF();
    QTRY_COMPARE(FramelessGeometry::toPhysical(dialog->size(), ratio), suggested.size());
}

void WinFramelessWindowTest::maximiseAndRestore_changeNativeState()
{
    auto dialog = newDialog();
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    const HWND hwnd = hwndOf(dialog.get());
    const QRect normal = windowRect(hwnd);
    dialog->showMaximized();
    QTRY_VERIFY(::IsZoomed(hwnd));
    QTRY_COMPARE(windowRect(hwnd), workAreaOf(hwnd));
    // The border does not resize a maximised window.
    QCOMPARE(int(hitTestAt(hwnd, QPoint(1, clientSize(hwnd).height() / 2))), int(HTCLIENT));
    dialog->showNormal();
    QTRY_VERIFY(!::IsZoomed(hwnd));
    QTRY_COMPARE(windowRect(hwnd), normal);
}

void WinFramelessWindowTest::titleBarButtons_changeNativeState()
{
    auto dialog = newDialog();
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    const HWND hwnd = hwndOf(dialog.get());
    CommonFramelessTitleBar *titleBar = dialog->framelessTitleBar();
    QVERIFY(titleBar->maximizeButton()->isVisible());

    QTest::mouseClick(titleBar->maximizeButton(), Qt::LeftButton);
    QTRY_VERIFY(::IsZoomed(hwnd));
    QTRY_COMPARE(windowRect(hwnd), workAreaOf(hwnd));
    QTest::mouseClick(titleBar->maximizeButton(), Qt::LeftButton);
    QTRY_VERIFY(!::IsZoomed(hwnd));

    QTest::mouseClick(titleBar->minimizeButton(), Qt::LeftButton);
    QTRY_VERIFY(::IsIconic(hwnd));
    dialog->showNormal();
    QTRY_VERIFY(!::IsIconic(hwnd));
    QTRY_VERIFY(::IsWindowVisible(hwnd));
    QTRY_VERIFY(!dialog->isMinimized());

    QVERIFY(::IsWindowVisible(hwnd));
    QTest::mouseClick(titleBar->closeButton(), Qt::LeftButton);
    QTRY_VERIFY(!::IsWindowVisible(hwnd));
    QVERIFY(!dialog->isVisible());
}

void WinFramelessWindowTest::messageBox_usesTheNativeBackEndAndHitTest()
{
    bool checked = false;
    bool wasVisibleAfterClose = true;
    MessageBoxDriver::whenShown<CommonFramelessMessageBox>([&](CommonFramelessMessageBox *box) {
        QVERIFY(qobject_cast<WinFramelessHelper *>(box->framelessHelper()));
        QVERIFY(QTest::qWaitForWindowExposed(box));
        const HWND hwnd = hwndOf(box);
        QVERIFY(::IsWindowVisible(hwnd));
        const QSize size = clientSize(hwnd);
        // A message box cannot be resized: no border anywhere.
        QCOMPARE(int(hitTestAt(hwnd, QPoint(1, size.height() / 2))), int(HTCLIENT));
        QCOMPARE(int(hitTestAt(hwnd, QPoint(size.width() - 2, size.height() - 2))), int(HTCLIENT));
        CommonFramelessTitleBar *titleBar = box->framelessTitleBar();
        QCOMPARE(hitTestAt(hwnd, physicalCentre(box, titleBar->labelText())), LRESULT(HTCAPTION));
        QCOMPARE(hitTestAt(hwnd, physicalCentre(box, titleBar->closeButton())), LRESULT(HTCLIENT));
        checked = true;
        QTest::mouseClick(titleBar->closeButton(), Qt::LeftButton);
        wasVisibleAfterClose = ::IsWindowVisible(hwnd);
    });
    ModalDeadline deadline;
    const int answer = CommonFramelessMessageBox::question(
        nullptr, QStringLiteral("温馨提示"), QStringLiteral("确认删除驱动\"BexUV3220_8C.prs\"吗?"),
        QStringLiteral("确定"), QStringLiteral("取消"));
    QVERIFY(!deadline.passed);
    QVERIFY(checked);
    QCOMPARE(answer, -1);
    QVERIFY(!wasVisibleAfterClose);
}

void WinFramelessWindowTest::messageBox_wrappedTextHasNoHorizontalScrollBar_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("delete question") << QStringLiteral("确认删除驱动\"BexUV3220_8C.prs\"吗?");
    QTest::newRow("english question") << QStringLiteral("Delete the driver \"BexUV3220_8C.prs\"?");
    QTest::newRow("long wrapped line")
        << QStringLiteral("如果继续安装，将会覆盖以下文件，覆盖后原来的打印机驱动设置将无法恢复，")
               .repeated(4);
    QString lines;
    for (int i = 0; i < 40; ++i)
        lines += QStringLiteral("ICC Profile/RGB/sample_%1.icc\n").arg(i);
    QTest::newRow("many lines") << lines;
}

void WinFramelessWindowTest::messageBox_wrappedTextHasNoHorizontalScrollBar()
{
    QFETCH(QString, text);
    HorizontalScrollBarWatcher watcher;
    int horizontalMaximum = -1;
    bool horizontalVisible = true;
    MessageBoxDriver::whenShown<CommonFramelessMessageBox>([&](CommonFramelessMessageBox *box) {
        QVERIFY(QTest::qWaitForWindowExposed(box));
        auto *edit = box->findChild<MessageBoxTextEdit *>(QStringLiteral("framelessMessageBox_textEdit"));
        QVERIFY(edit);
        QCoreApplication::processEvents();
        horizontalMaximum = edit->horizontalScrollBar()->maximum();
        horizontalVisible = edit->horizontalScrollBar()->isVisible();
        QTest::mouseClick(box->framelessTitleBar()->closeButton(), Qt::LeftButton);
    });
    ModalDeadline deadline;
    CommonFramelessMessageBox::warning(nullptr, QStringLiteral("温馨提示"), text, QStringLiteral("确定"));
    QVERIFY(!deadline.passed);
    QCOMPARE(horizontalMaximum, 0);
    QVERIFY(!horizontalVisible);
    // Not even for a moment while the box settles.
    QCOMPARE(watcher.shown, 0);
    QCOMPARE(watcher.painted, 0);
}

QTEST_MAIN(WinFramelessWindowTest)
#include "tst_winframelesswindow.moc"
