#include "FramelessCore/FramelessHelper/QtFramelessHelper.h"
#include "FramelessWidget/Common/CommonFramelessDialog.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QWindow>
#include <QtTest>

namespace {

// A shown dialog, 300 x 200 within 200 x 150 .. 400 x 300.
struct Dialog
{
    Dialog()
    {
        auto *layout = new QVBoxLayout(&dialog);
        auto *titleBarLayout = new QHBoxLayout;
        layout->addLayout(titleBarLayout);
        layout->addWidget(new QLabel(QStringLiteral("content")), 1);
        dialog.setupFramelessTitleBar(titleBarLayout);
        dialog.setWindowTitle(QStringLiteral("打印机属性"));
        dialog.setMinimumSize(200, 150);
        dialog.setMaximumSize(400, 300);
        dialog.setGeometry(100, 100, 300, 200);
    }

    bool show()
    {
        dialog.show();
        return QTest::qWaitForWindowExposed(&dialog) && dialog.windowHandle();
    }

    QWindow *handle() const { return dialog.windowHandle(); }

    // A point on the empty part of the title bar, in window coordinates.
    QPoint caption() const
    {
        const QWidget *text = dialog.framelessTitleBar()->labelText();
        return text->mapTo(&dialog, QPoint(text->width() + 10, text->height() / 2));
    }

    QPoint local(const QPoint &global) const { return handle()->mapFromGlobal(global); }

    CommonFramelessDialog dialog;
};

// Counts the button releases a window receives.
class ReleaseCounter : public QObject
{
public:
    int releases = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::MouseButtonRelease &&
            static_cast<QMouseEvent *>(event)->buttons() == Qt::NoButton)
            ++releases;
        return QObject::eventFilter(watched, event);
    }
};

// A window system that accepts every move and resize request.
class AcceptingHelper : public QtFramelessHelper
{
public:
    using QtFramelessHelper::QtFramelessHelper;
    int moves = 0;
    Qt::Edges resizeEdges;

protected:
    bool startSystemMove() override
    {
        ++moves;
        return true;
    }
    bool startSystemResize(Qt::Edges edges) override
    {
        resizeEdges = edges;
        return true;
    }
};

} // namespace

class FramelessWindowInteractionTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void draggingCaption_movesWindow();
    void draggingTitleText_movesWindow();
    void clickingCaptionWithoutDragging_keepsWindowInPlace();
    void draggingRightBorder_resizesWithinLimits();
    void draggingLeftBorder_keepsRightEdgeWithinLimits();
    void draggingBottomRightCorner_resizesBothWays();
    void fixedSizeWindow_isNotResizedFromBorder();
    void doubleClickOnCaption_maximisesAndRestores();
    void doubleClickOnCaption_notResizable_isIgnored();
    void maximizeButton_followsStateWithoutEmitting();
    void maximizeButton_restoresMaximisedWindow();
    void borderHover_setsResizeCursor();
    void systemMove_leavesNoButtonPressed();
    void systemResize_isHandedOverAtPress();

private:
    void drag(Dialog &d, const QPoint &from, const QPoint &by);
};

void FramelessWindowInteractionTest::init()
{
    // Every test starts without a button held from an earlier one.
    QCOMPARE(QGuiApplication::mouseButtons(), Qt::NoButton);
}

void FramelessWindowInteractionTest::drag(Dialog &d, const QPoint &from, const QPoint &by)
{
    const QPoint globalFrom = d.handle()->mapToGlobal(from);
    QTest::mousePress(d.handle(), Qt::LeftButton, Qt::NoModifier, from);
    // In two steps, the second one relative to wherever the window went.
    QTest::mouseMove(d.handle(), d.local(globalFrom + by / 2));
    QTest::mouseMove(d.handle(), d.local(globalFrom + by));
    QTest::mouseRelease(d.handle(), Qt::LeftButton, Qt::NoModifier, d.local(globalFrom + by));
}

void FramelessWindowInteractionTest::draggingCaption_movesWindow()
{
    Dialog d;
    QVERIFY(d.show());
    const QPoint start = d.dialog.pos();
    const QSize size = d.dialog.size();
    drag(d, d.caption(), QPoint(60, 40));
    QTRY_COMPARE(d.dialog.pos(), start + QPoint(60, 40));
    QCOMPARE(d.dialog.size(), size);
}

void FramelessWindowInteractionTest::draggingTitleText_movesWindow()
{
    Dialog d;
    QVERIFY(d.show());
    const QPoint start = d.dialog.pos();
    const QWidget *text = d.dialog.framelessTitleBar()->labelText();
    drag(d, text->mapTo(&d.dialog, text->rect().center()), QPoint(-30, 25));
    QTRY_COMPARE(d.dialog.pos(), start + QPoint(-30, 25));
}

void FramelessWindowInteractionTest::clickingCaptionWithoutDragging_keepsWindowInPlace()
{
    Dialog d;
    QVERIFY(d.show());
    const QPoint start = d.dialog.pos();
    QTest::mouseClick(d.handle(), Qt::LeftButton, Qt::NoModifier, d.caption());
    QCOMPARE(d.dialog.pos(), start);
    QVERIFY(!d.dialog.isMaximized());
}

void FramelessWindowInteractionTest::draggingRightBorder_resizesWithinLimits()
{
    Dialog d;
    QVERIFY(d.show());
    const QRect start = d.dialog.geometry();
    drag(d, QPoint(start.width() - 2, start.height() / 2), QPoint(50, 30));
    QTRY_COMPARE(d.dialog.geometry(), QRect(start.topLeft(), QSize(350, 200)));

    drag(d, QPoint(d.dialog.width() - 2, d.dialog.height() / 2), QPoint(500, 0));
    QTRY_COMPARE(d.dialog.geometry(), QRect(start.topLeft(), QSize(400, 200)));
}

void FramelessWindowInteractionTest::draggingLeftBorder_keepsRightEdgeWithinLimits()
{
    Dialog d;
    QVERIFY(d.show());
    const QRect start = d.dialog.geometry();
    drag(d, QPoint(2, start.height() / 2), QPoint(250, 0));
    QTRY_COMPARE(d.dialog.width(), 200);
    QCOMPARE(d.dialog.geometry().right(), start.right());
    QCOMPARE(d.dialog.y(), start.y());
}

void FramelessWindowInteractionTest::draggingBottomRightCorner_resizesBothWays()
{
    Dialog d;
    QVERIFY(d.show());
    const QRect start = d.dialog.geometry();
    drag(d, QPoint(start.width() - 2, start.height() - 2), QPoint(40, 300));
    QTRY_COMPARE(d.dialog.geometry(), QRect(start.topLeft(), QSize(340, 300)));
}

void FramelessWindowInteractionTest::fixedSizeWindow_isNotResizedFromBorder()
{
    Dialog d;
    d.dialog.setFixedSize(300, 200);
    QVERIFY(d.show());
    const QPoint start = d.dialog.pos();
    drag(d, QPoint(d.dialog.width() - 2, d.dialog.height() / 2), QPoint(50, 0));
    QCOMPARE(d.dialog.size(), QSize(300, 200));
    QCOMPARE(d.dialog.pos(), start);
}

void FramelessWindowInteractionTest::doubleClickOnCaption_maximisesAndRestores()
{
    Dialog d;
    d.dialog.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QVERIFY(d.show());
    const QRect normal = d.dialog.geometry();
    QPushButton *button = d.dialog.framelessTitleBar()->maximizeButton();
    QSignalSpy maximized(d.dialog.framelessTitleBar(), &CommonFramelessTitleBar::windowMaximized);
    QSignalSpy restored(d.dialog.framelessTitleBar(), &CommonFramelessTitleBar::windowNormal);

    QTest::mouseDClick(d.handle(), Qt::LeftButton, Qt::NoModifier, d.caption());
    QTRY_VERIFY(d.dialog.isMaximized());
    QVERIFY(button->isChecked());
    QCOMPARE(button->toolTip(), QStringLiteral("向下还原"));

    QTest::mouseDClick(d.handle(), Qt::LeftButton, Qt::NoModifier, d.caption());
    QTRY_VERIFY(!d.dialog.isMaximized());
    QTRY_COMPARE(d.dialog.geometry(), normal);
    QVERIFY(!button->isChecked());
    QCOMPARE(button->toolTip(), QStringLiteral("最大化"));
    QCOMPARE(maximized.count(), 0);
    QCOMPARE(restored.count(), 0);
}

void FramelessWindowInteractionTest::doubleClickOnCaption_notResizable_isIgnored()
{
    Dialog d;
    d.dialog.setResizable(false);
    QVERIFY(d.show());
    QTest::mouseDClick(d.handle(), Qt::LeftButton, Qt::NoModifier, d.caption());
    QVERIFY(!d.dialog.isMaximized());
}

void FramelessWindowInteractionTest::maximizeButton_followsStateWithoutEmitting()
{
    Dialog d;
    d.dialog.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QVERIFY(d.show());
    QPushButton *button = d.dialog.framelessTitleBar()->maximizeButton();
    QSignalSpy maximized(d.dialog.framelessTitleBar(), &CommonFramelessTitleBar::windowMaximized);
    QSignalSpy restored(d.dialog.framelessTitleBar(), &CommonFramelessTitleBar::windowNormal);
    QSignalSpy toggled(button, &QPushButton::toggled);

    d.dialog.showMaximized();
    QTRY_VERIFY(button->isChecked());
    d.dialog.showNormal();
    QTRY_VERIFY(!button->isChecked());
    QCOMPARE(toggled.count(), 2);
    QCOMPARE(maximized.count(), 0);
    QCOMPARE(restored.count(), 0);
}

void FramelessWindowInteractionTest::maximizeButton_restoresMaximisedWindow()
{
    Dialog d;
    d.dialog.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QVERIFY(d.show());
    QPushButton *button = d.dialog.framelessTitleBar()->maximizeButton();
    d.dialog.showMaximized();
    QTRY_VERIFY(d.dialog.isMaximized());
    QSignalSpy restored(d.dialog.framelessTitleBar(), &CommonFramelessTitleBar::windowNormal);
    // Hidden on dialogs, yet clickable for those that show it.
    button->click();
    QCOMPARE(restored.count(), 1);
    QTRY_VERIFY(!d.dialog.isMaximized());
}

void FramelessWindowInteractionTest::borderHover_setsResizeCursor()
{
    Dialog d;
    QVERIFY(d.show());
    QTest::mouseMove(d.handle(), QPoint(d.dialog.width() - 2, d.dialog.height() / 2));
    QTRY_COMPARE(d.dialog.cursor().shape(), Qt::SizeHorCursor);
    QTest::mouseMove(d.handle(), QPoint(2, 2));
    QTRY_COMPARE(d.dialog.cursor().shape(), Qt::SizeFDiagCursor);
    QTest::mouseMove(d.handle(), QPoint(d.dialog.width() / 2, d.dialog.height() - 2));
    QTRY_COMPARE(d.dialog.cursor().shape(), Qt::SizeVerCursor);
    QTest::mouseMove(d.handle(), QPoint(d.dialog.width() / 2, d.dialog.height() / 2));
    QTRY_COMPARE(d.dialog.cursor().shape(), Qt::ArrowCursor);
}

void FramelessWindowInteractionTest::systemMove_leavesNoButtonPressed()
{
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *bar = new QWidget;
    bar->setFixedHeight(30);
    layout->addWidget(bar);
    auto *button = new QPushButton(QStringLiteral("ok"));
    layout->addWidget(button);
    auto *helper = new AcceptingHelper(&window);
    helper->setTitleBar(bar);
    window.setGeometry(100, 100, 300, 200);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    ReleaseCounter counter;
    window.windowHandle()->installEventFilter(&counter);
    const QPoint start = window.pos();

    const QPoint from = bar->mapTo(&window, bar->rect().center());
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(window.windowHandle(), from + QPoint(40, 0));
    QCOMPARE(helper->moves, 1);
    // The window system owns the pointer now; its release never comes, so
    // the window has been given one.
    QCOMPARE(counter.releases, 1);
    QTest::mouseMove(window.windowHandle(), from + QPoint(80, 0));
    QCOMPARE(window.pos(), start);
    QCOMPARE(helper->moves, 1);
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, from + QPoint(80, 0));

    // The next click reaches its button as usual.
    QSignalSpy clicked(button, &QPushButton::clicked);
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      button->mapTo(&window, button->rect().center()));
    QCOMPARE(clicked.count(), 1);
}

void FramelessWindowInteractionTest::systemResize_isHandedOverAtPress()
{
    QWidget window;
    auto *helper = new AcceptingHelper(&window);
    window.setGeometry(100, 100, 300, 200);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    ReleaseCounter counter;
    window.windowHandle()->installEventFilter(&counter);

    QTest::mousePress(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(298, 198));
    QCOMPARE(helper->resizeEdges, Qt::BottomEdge | Qt::RightEdge);
    QCOMPARE(counter.releases, 1);
    QTest::mouseMove(window.windowHandle(), QPoint(250, 150));
    QCOMPARE(window.size(), QSize(300, 200));
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(250, 150));
}

QTEST_MAIN(FramelessWindowInteractionTest)
#include "tst_framelesswindowinteraction.moc"
