#include "FramelessWidget/Common/CommonFramelessTitleBar.h"

#include "LogCapture.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QtTest>

namespace {

// Height of the inner bar: 30 pixels. Under the module's style sheet (the
// styled run) those are 30 pixels of content, under a 1-pixel bottom border.
int barHeight()
{
    return qApp->styleSheet().isEmpty() ? 30 : 30 + 1;
}

// A top-level window with the title bar at its top.
struct Window
{
    Window()
    {
        auto *layout = new QVBoxLayout(&window);
        layout->setContentsMargins(0, 0, 0, 0);
        titleBar = new CommonFramelessTitleBar(&window);
        layout->addWidget(titleBar);
        layout->addStretch();
        window.resize(320, 200);
    }

    QPushButton *button(const char *name) const
    {
        return titleBar->findChild<QPushButton *>(QString::fromLatin1(name));
    }

    QWidget window;
    CommonFramelessTitleBar *titleBar = nullptr;
};

QPixmap filledPixmap(const QColor &colour)
{
    QPixmap pixmap(32, 32);
    pixmap.fill(colour);
    return pixmap;
}

} // namespace

class CommonFramelessTitleBarTest : public QObject
{
    Q_OBJECT

private slots:
    void construction_namesChildrenForTheStyleSheet_data();
    void construction_namesChildrenForTheStyleSheet();
    void construction_barIsThirtyPixelsHigh();
    void construction_setsToolTips();
    void construction_withoutTopLevelAncestor_logsCritical();
    void title_followsWindowTitle();
    void icon_followsWindowIcon();
    void icon_windowWithoutIcon_showsAnEmptyLabel();
    void maximizingByOtherMeans_checksButtonWithoutEmitting();
    void restoringByOtherMeans_unchecksButtonWithoutEmitting();
    void minimizing_leavesButtonAsItWas();
    void maximizeButton_onNormalWindow_emitsWindowMaximized();
    void maximizeButton_onMaximizedWindow_emitsWindowNormal();
    void minimizeAndCloseButtons_emitTheirSignals();
    void iconClick_reportsBottomLeftCornerAndIsConsumed();
    void paint_drawsStyleSheetBackground();
    void menuBar_raisesHeightOnlyWhenAllowed();
    void buttons_neverTakeKeyboardFocus();
};

void CommonFramelessTitleBarTest::construction_namesChildrenForTheStyleSheet_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("className");
    QTest::newRow("bar") << "framelessTitleBar"
                         << "QWidget";
    QTest::newRow("icon") << "framelessTitleBar_labelIcon"
                          << "QLabel";
    QTest::newRow("text") << "framelessTitleBar_labelText"
                          << "QLabel";
    QTest::newRow("minimize") << "framelessTitleBar_btnMin"
                              << "QPushButton";
    QTest::newRow("maximize") << "framelessTitleBar_btnRestore"
                              << "QPushButton";
    QTest::newRow("close") << "framelessTitleBar_btnClose"
                           << "QPushButton";
}

void CommonFramelessTitleBarTest::construction_namesChildrenForTheStyleSheet()
{
    QFETCH(QString, name);
    QFETCH(QString, className);
    Window w;
    auto *child = w.titleBar->findChild<QWidget *>(name);
    QVERIFY2(child, qPrintable(name));
    QCOMPARE(QString::fromLatin1(child->metaObject()->className()), className);
    QCOMPARE(child->property(name.toLatin1().constData()), QVariant(true));
}

void CommonFramelessTitleBarTest::construction_barIsThirtyPixelsHigh()
{
    Window w;
    w.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w.window));
    QWidget *bar = w.titleBar->realTitleBar();
    QCOMPARE(bar->objectName(), QStringLiteral("framelessTitleBar"));
    QCOMPARE(bar->minimumHeight(), barHeight());
    QCOMPARE(bar->maximumHeight(), barHeight());
    QCOMPARE(bar->height(), barHeight());
    QCOMPARE(w.titleBar->iconSize(), QSize(16, 16));
    QCOMPARE(w.titleBar->followedWindow(), &w.window);
}

void CommonFramelessTitleBarTest::construction_setsToolTips()
{
    Window w;
    QCOMPARE(w.button("framelessTitleBar_btnMin")->toolTip(), QStringLiteral("最小化"));
    QCOMPARE(w.button("framelessTitleBar_btnRestore")->toolTip(), QStringLiteral("最大化"));
    QCOMPARE(w.button("framelessTitleBar_btnClose")->toolTip(), QStringLiteral("关闭"));
    QVERIFY(w.button("framelessTitleBar_btnRestore")->isCheckable());
    QVERIFY(!w.button("framelessTitleBar_btnRestore")->isChecked());
}

void CommonFramelessTitleBarTest::construction_withoutTopLevelAncestor_logsCritical()
{
    LogCapture log;
    CommonFramelessTitleBar titleBar(nullptr);
    const auto lines = log.find(QtCriticalMsg, QStringLiteral("is not child of QMainWindow or QDialog"));
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().file,
             QStringLiteral(
                 "QtCustomModule/FramelessModule/Frameless/FramelessWidget/Common/CommonFramelessTitleBar"));
    QCOMPARE(titleBar.followedWindow(), nullptr);
}

void CommonFramelessTitleBarTest::title_followsWindowTitle()
{
    QWidget window;
    window.setWindowTitle(QStringLiteral("打印机管理"));
    auto *titleBar = new CommonFramelessTitleBar(&window);
    QCOMPARE(titleBar->labelText()->text(), QStringLiteral("打印机管理"));
    window.setWindowTitle(QStringLiteral("温馨提示"));
    QCOMPARE(titleBar->labelText()->text(), QStringLiteral("温馨提示"));
}

void CommonFramelessTitleBarTest::icon_followsWindowIcon()
{
    QWidget window;
    window.setWindowIcon(QIcon(filledPixmap(Qt::red)));
    auto *titleBar = new CommonFramelessTitleBar(&window);
    QPixmap shown = titleBar->labelIcon()->pixmap(Qt::ReturnByValue);
    QVERIFY(!shown.isNull());
    QCOMPARE(shown.size(), QSize(16, 16));
    QCOMPARE(shown.toImage().pixelColor(8, 8), QColor(Qt::red));

    window.setWindowIcon(QIcon(filledPixmap(Qt::blue)));
    shown = titleBar->labelIcon()->pixmap(Qt::ReturnByValue);
    QCOMPARE(shown.toImage().pixelColor(8, 8), QColor(Qt::blue));
}

void CommonFramelessTitleBarTest::icon_windowWithoutIcon_showsAnEmptyLabel()
{
    Window w;
    QVERIFY(w.titleBar->labelIcon()->pixmap(Qt::ReturnByValue).isNull());
    QVERIFY(w.titleBar->labelIcon()->text().isEmpty());
}

void CommonFramelessTitleBarTest::maximizingByOtherMeans_checksButtonWithoutEmitting()
{
    Window w;
    QSignalSpy maximized(w.titleBar, &CommonFramelessTitleBar::windowMaximized);
    QSignalSpy normal(w.titleBar, &CommonFramelessTitleBar::windowNormal);
    w.window.setWindowState(Qt::WindowMaximized);
    QPushButton *button = w.button("framelessTitleBar_btnRestore");
    QVERIFY(button->isChecked());
    QCOMPARE(button->toolTip(), QStringLiteral("向下还原"));
    QCOMPARE(maximized.count(), 0);
    QCOMPARE(normal.count(), 0);

    w.window.setWindowState(Qt::WindowFullScreen);
    QVERIFY(button->isChecked());
    QCOMPARE(maximized.count(), 0);
}

void CommonFramelessTitleBarTest::restoringByOtherMeans_unchecksButtonWithoutEmitting()
{
    Window w;
    w.window.setWindowState(Qt::WindowMaximized);
    QSignalSpy maximized(w.titleBar, &CommonFramelessTitleBar::windowMaximized);
    QSignalSpy normal(w.titleBar, &CommonFramelessTitleBar::windowNormal);
    w.window.setWindowState(Qt::WindowNoState);
    QPushButton *button = w.button("framelessTitleBar_btnRestore");
    QVERIFY(!button->isChecked());
    QCOMPARE(button->toolTip(), QStringLiteral("最大化"));
    QCOMPARE(maximized.count(), 0);
    QCOMPARE(normal.count(), 0);
}

void CommonFramelessTitleBarTest::minimizing_leavesButtonAsItWas()
{
    Window w;
    w.window.setWindowState(Qt::WindowMaximized);
    QPushButton *button = w.button("framelessTitleBar_btnRestore");
    w.window.setWindowState(Qt::WindowMinimized);
    QVERIFY(button->isChecked());
    QCOMPARE(button->toolTip(), QStringLiteral("向下还原"));

    Window other;
    other.window.setWindowState(Qt::WindowMinimized);
    QVERIFY(!other.button("framelessTitleBar_btnRestore")->isChecked());
    QCOMPARE(other.button("framelessTitleBar_btnRestore")->toolTip(), QStringLiteral("最大化"));
}

void CommonFramelessTitleBarTest::maximizeButton_onNormalWindow_emitsWindowMaximized()
{
    Window w;
    w.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w.window));
    QSignalSpy maximized(w.titleBar, &CommonFramelessTitleBar::windowMaximized);
    QSignalSpy normal(w.titleBar, &CommonFramelessTitleBar::windowNormal);
    QTest::mouseClick(w.button("framelessTitleBar_btnRestore"), Qt::LeftButton);
    QCOMPARE(maximized.count(), 1);
    QCOMPARE(normal.count(), 0);
}

void CommonFramelessTitleBarTest::maximizeButton_onMaximizedWindow_emitsWindowNormal()
{
    Window w;
    w.window.showMaximized();
    QVERIFY(QTest::qWaitForWindowExposed(&w.window));
    QTRY_VERIFY(w.window.isMaximized());
    QSignalSpy maximized(w.titleBar, &CommonFramelessTitleBar::windowMaximized);
    QSignalSpy normal(w.titleBar, &CommonFramelessTitleBar::windowNormal);
    QTest::mouseClick(w.button("framelessTitleBar_btnRestore"), Qt::LeftButton);
    QCOMPARE(normal.count(), 1);
    QCOMPARE(maximized.count(), 0);
}

void CommonFramelessTitleBarTest::minimizeAndCloseButtons_emitTheirSignals()
{
    Window w;
    w.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w.window));
    QSignalSpy minimized(w.titleBar, &CommonFramelessTitleBar::windowMinimized);
    QSignalSpy closed(w.titleBar, &CommonFramelessTitleBar::windowClosed);
    QTest::mouseClick(w.button("framelessTitleBar_btnMin"), Qt::LeftButton);
    QCOMPARE(minimized.count(), 1);
    QCOMPARE(closed.count(), 0);
    QTest::mouseClick(w.button("framelessTitleBar_btnClose"), Qt::LeftButton);
    QCOMPARE(closed.count(), 1);
    QCOMPARE(minimized.count(), 1);
}

void CommonFramelessTitleBarTest::iconClick_reportsBottomLeftCornerAndIsConsumed()
{
    Window w;
    w.window.setWindowIcon(QIcon(filledPixmap(Qt::red)));
    w.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w.window));
    QLabel *icon = w.titleBar->labelIcon();
    QSignalSpy clicked(w.titleBar, &CommonFramelessTitleBar::labelIconClicked);

    QMouseEvent press(QEvent::MouseButtonPress, QPointF(4, 4), icon->mapToGlobal(QPoint(4, 4)),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QVERIFY(QCoreApplication::sendEvent(icon, &press));
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.first().first().toPoint(), icon->mapToGlobal(QPoint(0, icon->height())));

    QMouseEvent doubleClick(QEvent::MouseButtonDblClick, QPointF(4, 4), icon->mapToGlobal(QPoint(4, 4)),
                            Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QVERIFY(QCoreApplication::sendEvent(icon, &doubleClick));
    QCOMPARE(clicked.count(), 2);
}

void CommonFramelessTitleBarTest::paint_drawsStyleSheetBackground()
{
    Window w;
    w.titleBar->setStyleSheet(
        QStringLiteral("CommonFramelessTitleBar { background-color: rgb(0, 0, 255); }"));
    w.titleBar->setMenuBar(new QLabel(QStringLiteral("menu")));
    w.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w.window));
    const QImage image = w.titleBar->grab().toImage();
    // Below the bar, where only the title bar itself paints.
    const QPoint below(w.titleBar->width() - 5, w.titleBar->height() - 2);
    QCOMPARE(image.pixelColor(below * image.devicePixelRatio()), QColor(0, 0, 255));
}

void CommonFramelessTitleBarTest::menuBar_raisesHeightOnlyWhenAllowed()
{
    Window kept;
    auto *menu = new QLabel(QStringLiteral("menu"));
    menu->setFixedHeight(20);
    kept.titleBar->setMenuBar(menu);
    kept.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&kept.window));
    QCOMPARE(kept.titleBar->maximumHeight(), QWIDGETSIZE_MAX);

    LogCapture log;
    Window adjusted;
    auto *menu2 = new QLabel(QStringLiteral("menu"));
    adjusted.titleBar->setMenuBar(menu2);
    adjusted.titleBar->setKeepsHeight(false);
    adjusted.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&adjusted.window));
    const int expected = menu2->sizeHint().height() + barHeight();
    QCOMPARE(adjusted.titleBar->minimumHeight(), expected);
    QCOMPARE(adjusted.titleBar->maximumHeight(), expected);
    QVERIFY(log.contains(QtDebugMsg, QStringLiteral("realTitleBar maxSize:")));
    QVERIFY(log.contains(QtDebugMsg, QStringLiteral("menuBar sizeHint")));
}

void CommonFramelessTitleBarTest::buttons_neverTakeKeyboardFocus()
{
    Window w;
    auto *edit = new QLineEdit(&w.window);
    w.window.layout()->addWidget(edit);
    w.window.show();
    QApplication::setActiveWindow(&w.window);
    QVERIFY(QTest::qWaitForWindowActive(&w.window));
    edit->setFocus();
    QCOMPARE(QApplication::focusWidget(), edit);
    // Tab and Backtab go round the window's focus chain: never onto the title bar.
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Backtab}) {
        QTest::keyClick(QApplication::focusWidget(), key);
        QCOMPARE(QApplication::focusWidget(), edit);
    }
    QSignalSpy minimized(w.titleBar, &CommonFramelessTitleBar::windowMinimized);
    QSignalSpy closed(w.titleBar, &CommonFramelessTitleBar::windowClosed);
    QTest::keyClick(edit, Qt::Key_Space);
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(minimized.count(), 0);
    QCOMPARE(closed.count(), 0);
}

QTEST_MAIN(CommonFramelessTitleBarTest)
#include "tst_commonframelesstitlebar.moc"
