#include "FramelessCore/FramelessHelper/QtFramelessHelper.h"
#include "FramelessCore/FramelessWidget.h"
#include "FramelessWidget/Common/CommonFramelessDialog.h"

#include "LogCapture.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>

using FramelessGeometry::HitRegion;

Q_DECLARE_METATYPE(FramelessGeometry::HitRegion)

namespace {

const QString helperFile =
    QStringLiteral("QtCustomModule/FramelessModule/Frameless/FramelessCore/FramelessHelper/FramelessHelper");
const QString widgetFile =
    QStringLiteral("QtCustomModule/FramelessModule/Frameless/FramelessCore/FramelessWidget");

// A dialog with its title bar set up and a content area below it.
struct Dialog
{
    explicit Dialog(Qt::WindowFlags flags = Qt::WindowFlags())
        : dialog(nullptr, flags)
    {
        auto *layout = new QVBoxLayout(&dialog);
        auto *titleBarLayout = new QHBoxLayout;
        layout->addLayout(titleBarLayout);
        layout->addWidget(new QLabel(QStringLiteral("content")), 1);
        dialog.setupFramelessTitleBar(titleBarLayout);
        dialog.resize(300, 200);
    }

    QPoint inWindow(const QWidget *widget, const QPoint &pos) const { return widget->mapTo(&dialog, pos); }

    CommonFramelessDialog dialog;
};

// A point of the shown dialog, in its device-independent coordinates: in the
// title bar beside the text ("caption"), on the title text, the close button
// or the icon, or else in the content.
QPoint pointIn(const Dialog &d, const QString &where)
{
    CommonFramelessTitleBar *titleBar = d.dialog.framelessTitleBar();
    if (where == QLatin1String("caption")) {
        const QWidget *text = titleBar->labelText();
        return d.inWindow(text, QPoint(text->width() + 10, text->height() / 2));
    }
    if (where == QLatin1String("close"))
        return d.inWindow(titleBar->closeButton(), titleBar->closeButton()->rect().center());
    if (where == QLatin1String("text"))
        return d.inWindow(titleBar->labelText(), titleBar->labelText()->rect().center());
    if (where == QLatin1String("icon"))
        return d.inWindow(titleBar->labelIcon(), titleBar->labelIcon()->rect().center());
    return QPoint(d.dialog.width() / 2, d.dialog.height() - 20);
}

} // namespace

class FramelessHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void construction_marksWindowFrameless();
    void dialog_getsNoMaximizeButtonFromConstructorFlags();
    void plainWindow_keepsMaximizeButton();
    void dialog_hasObjectNameAndProperty();
    void setTitleBar_secondOne_deletesTheFirstLaterAndWarns();
    void setTitleBar_null_isIgnored();
    void addDummyTitleBar_beforeTitleBar_warnsButAdds();
    void addDummyTitleBar_sortsTitleBarDescendantsAsIgnored();
    void removeDummyTitleBar_removesFromEitherSet();
    void destroyedWidgets_areForgotten();
    void hitTest_onRealDialog_findsTheRegion_data();
    void hitTest_nativeCursorOnRealDialog_findsTheRegionAtEveryScale_data();
    void hitTest_nativeCursorOnRealDialog_findsTheRegionAtEveryScale();
    void hitTest_onRealDialog_findsTheRegion();
    void hitTest_fixedSizeDialog_hasNoBorder();
    void hitTest_notMovableDialog_hasNoCaption();
    void setupTitleBar_putsBarIntoLayoutWithoutMargins();
    void setupTitleBar_buttonsFollowFlagsAndResizing();
    void showMaximized_doesNothingWhenNotResizable();
    void showOperations_logTheirNames();
};

void FramelessHelperTest::construction_marksWindowFrameless()
{
    QWidget window;
    new QtFramelessHelper(&window);
    QCOMPARE(window.property("framelessWidget"), QVariant(true));
    QVERIFY(window.windowFlags().testFlag(Qt::FramelessWindowHint));
    QVERIFY(window.windowFlags().testFlag(Qt::Window));
}

void FramelessHelperTest::dialog_getsNoMaximizeButtonFromConstructorFlags()
{
    Dialog d(Qt::WindowMaximizeButtonHint | Qt::WindowMinimizeButtonHint);
    const Qt::WindowFlags flags = d.dialog.windowFlags();
    QVERIFY(!flags.testFlag(Qt::WindowMaximizeButtonHint));
    QVERIFY(flags.testFlag(Qt::FramelessWindowHint));
    QVERIFY(flags.testFlag(Qt::WindowMinimizeButtonHint));
    QVERIFY(flags.testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(flags.testFlag(Qt::WindowSystemMenuHint));
    QVERIFY(!d.dialog.framelessTitleBar()->maximizeButton()->isVisibleTo(&d.dialog));
    QVERIFY(d.dialog.framelessTitleBar()->minimizeButton()->isVisibleTo(&d.dialog));
    QVERIFY(d.dialog.framelessTitleBar()->closeButton()->isVisibleTo(&d.dialog));
}

void FramelessHelperTest::plainWindow_keepsMaximizeButton()
{
    QWidget window;
    new QtFramelessHelper(&window);
    QVERIFY(window.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
}

void FramelessHelperTest::dialog_hasObjectNameAndProperty()
{
    CommonFramelessDialog dialog;
    QCOMPARE(dialog.objectName(), QStringLiteral("FramelessDialog"));
    QCOMPARE(dialog.property("FramelessDialog"), QVariant(true));
    QCOMPARE(dialog.property("framelessWidget"), QVariant(true));
    QVERIFY(dialog.framelessHelper());
    QCOMPARE(dialog.framelessHelper()->borderWidth(), 4);
    QVERIFY(dialog.framelessHelper()->isMovable());
    QVERIFY(dialog.framelessHelper()->isResizable());
    QCOMPARE(dialog.framelessTitleBar(), nullptr);
}

void FramelessHelperTest::setTitleBar_secondOne_deletesTheFirstLaterAndWarns()
{
    QWidget window;
    auto *helper = new QtFramelessHelper(&window);
    QPointer<QWidget> first = new QWidget(&window);
    auto *second = new QWidget(&window);
    helper->setTitleBar(first);

    LogCapture log;
    helper->setTitleBar(second);
    const auto lines = log.find(QtWarningMsg, QStringLiteral("titleBar is not nullptr,check your code!"));
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().file, helperFile);
    QCOMPARE(helper->titleBar(), second);
    QVERIFY(!first.isNull());
    QVERIFY(first->isHidden());
    QCOMPARE(first->parent(), nullptr);
    QTRY_VERIFY(first.isNull());
    QCOMPARE(helper->titleBar(), second);
}

void FramelessHelperTest::setTitleBar_null_isIgnored()
{
    QWidget window;
    auto *helper = new QtFramelessHelper(&window);
    auto *bar = new QWidget(&window);
    helper->setTitleBar(bar);
    LogCapture log;
    helper->setTitleBar(nullptr);
    QCOMPARE(helper->titleBar(), bar);
    QCOMPARE(log.count(QtWarningMsg, QStringLiteral("check your code")), 0);
}

void FramelessHelperTest::addDummyTitleBar_beforeTitleBar_warnsButAdds()
{
    QWidget window;
    auto *helper = new QtFramelessHelper(&window);
    auto *area = new QWidget(&window);
    LogCapture log;
    helper->addDummyTitleBar(area);
    const auto lines = log.find(QtWarningMsg, QStringLiteral("please first invoke setTitleBar"));
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().file, helperFile);
    QVERIFY(helper->isDummyTitleBar(area));
}

void FramelessHelperTest::addDummyTitleBar_sortsTitleBarDescendantsAsIgnored()
{
    QWidget window;
    auto *helper = new QtFramelessHelper(&window);
    auto *bar = new QWidget(&window);
    auto *text = new QLabel(bar);
    auto *outside = new QWidget(&window);
    helper->setTitleBar(bar);
    helper->addDummyTitleBar(text);
    helper->addDummyTitleBar(outside);
    helper->addDummyTitleBar(bar);
    helper->addDummyTitleBar(nullptr);
    QVERIFY(helper->isIgnoredTitleBarSubWidget(text));
    QVERIFY(!helper->isDummyTitleBar(text));
    QVERIFY(helper->isDummyTitleBar(outside));
    QVERIFY(!helper->isIgnoredTitleBarSubWidget(outside));
    QVERIFY(!helper->isDummyTitleBar(bar));
    QVERIFY(!helper->isIgnoredTitleBarSubWidget(bar));
    QCOMPARE(helper->dummyTitleBars().size(), 1);
}

void FramelessHelperTest::removeDummyTitleBar_removesFromEitherSet()
{
    QWidget window;
    auto *helper = new QtFramelessHelper(&window);
    auto *bar = new QWidget(&window);
    auto *text = new QLabel(bar);
    auto *outside = new QWidget(&window);
    helper->setTitleBar(bar);
    helper->addDummyTitleBar(text);
    helper->addDummyTitleBar(outside);
    helper->removeDummyTitleBar(text);
    QVERIFY(!helper->isIgnoredTitleBarSubWidget(text));
    QVERIFY(helper->isDummyTitleBar(outside));
    helper->removeDummyTitleBar(outside);
    QVERIFY(!helper->isDummyTitleBar(outside));
    helper->removeDummyTitleBar(nullptr);
}

void FramelessHelperTest::destroyedWidgets_areForgotten()
{
    QWidget window;
    auto *helper = new QtFramelessHelper(&window);
    auto *bar = new QWidget(&window);
    auto *text = new QLabel(bar);
    auto *outside = new QWidget(&window);
    helper->setTitleBar(bar);
    helper->addDummyTitleBar(text);
    helper->addDummyTitleBar(outside);

    delete outside;
    QVERIFY(helper->dummyTitleBars().isEmpty());
    delete text;
    QVERIFY(!helper->isIgnoredTitleBarSubWidget(text));
    delete bar;
    QCOMPARE(helper->titleBar(), nullptr);
}

void FramelessHelperTest::hitTest_onRealDialog_findsTheRegion_data()
{
    QTest::addColumn<QString>("where");
    QTest::addColumn<HitRegion>("expected");
    QTest::newRow("empty part of the title bar") << "caption" << HitRegion::Caption;
    QTest::newRow("close button") << "close" << HitRegion::Client;
    QTest::newRow("title text") << "text" << HitRegion::Caption;
    QTest::newRow("icon") << "icon" << HitRegion::Client;
    QTest::newRow("3 px inside the left edge") << "left3" << HitRegion::Left;
    QTest::newRow("4 px inside the left edge") << "left4" << HitRegion::Client;
    QTest::newRow("3 px inside the top-left corner") << "topleft3" << HitRegion::TopLeft;
    QTest::newRow("content") << "content" << HitRegion::Client;
}

void FramelessHelperTest::hitTest_onRealDialog_findsTheRegion()
{
    QFETCH(QString, where);
    QFETCH(HitRegion, expected);
    Dialog d;
    d.dialog.setWindowTitle(QStringLiteral("打印机属性"));
    d.dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d.dialog));

    QPoint pos;
    if (where == QLatin1String("left3"))
        pos = QPoint(3, d.dialog.height() / 2);
    else if (where == QLatin1String("left4"))
        pos = QPoint(4, d.dialog.height() / 2);
    else if (where == QLatin1String("topleft3"))
        pos = QPoint(3, 3);
    else
        pos = pointIn(d, where);
    QCOMPARE(d.dialog.framelessHelper()->hitTest(pos), expected);
}

void FramelessHelperTest::hitTest_nativeCursorOnRealDialog_findsTheRegionAtEveryScale_data()
{
    QTest::addColumn<qreal>("scale");
    QTest::addColumn<QString>("where");
    QTest::addColumn<HitRegion>("expected");
    for (const qreal scale : {1.0, 1.25, 1.5, 2.0}) {
        const QByteArray row = QByteArray::number(scale * 100) + " %: ";
        QTest::newRow(row + "caption") << scale << "caption" << HitRegion::Caption;
        QTest::newRow(row + "title text") << scale << "text" << HitRegion::Caption;
        QTest::newRow(row + "close button") << scale << "close" << HitRegion::Client;
        QTest::newRow(row + "3 physical px inside the left edge") << scale << "left3" << HitRegion::Left;
        QTest::newRow(row + "5 physical px inside the left edge") << scale << "left5" << HitRegion::Client;
        QTest::newRow(row + "3 physical px inside the bottom-right corner")
            << scale << "bottomright3" << HitRegion::BottomRight;
        QTest::newRow(row + "content") << scale << "content" << HitRegion::Client;
    }
}

// The cursor of a native hit test: the border in physical pixels against the
// physical client size, the widgets at the device-independent position.
void FramelessHelperTest::hitTest_nativeCursorOnRealDialog_findsTheRegionAtEveryScale()
{
    QFETCH(qreal, scale);
    QFETCH(QString, where);
    QFETCH(HitRegion, expected);
    Dialog d;
    d.dialog.setWindowTitle(QStringLiteral("打印机属性"));
    d.dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d.dialog));
    const QSize physicalSize(qRound(d.dialog.width() * scale), qRound(d.dialog.height() * scale));

    QPoint pos;
    if (where == QLatin1String("left3")) {
        pos = QPoint(3, physicalSize.height() / 2);
    } else if (where == QLatin1String("left5")) {
        pos = QPoint(5, physicalSize.height() / 2);
    } else if (where == QLatin1String("bottomright3")) {
        pos = QPoint(physicalSize.width() - 3, physicalSize.height() - 3);
    } else {
        const QPoint logical = pointIn(d, where);
        pos = QPoint(qRound(logical.x() * scale), qRound(logical.y() * scale));
    }
    const FramelessGeometry::ClientCursor cursor = FramelessGeometry::clientCursor(pos, physicalSize, scale);
    QCOMPARE(d.dialog.framelessHelper()->hitTest(cursor), expected);
}

void FramelessHelperTest::hitTest_fixedSizeDialog_hasNoBorder()
{
    Dialog d;
    d.dialog.setFixedSize(300, 200);
    d.dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d.dialog));
    const QPoint left(3, 100);
    const QPoint bottomRight(297, 197);
    QCOMPARE(d.dialog.framelessHelper()->hitTest(left), HitRegion::Client);
    QCOMPARE(d.dialog.framelessHelper()->hitTest(bottomRight), HitRegion::Client);
}

void FramelessHelperTest::hitTest_notMovableDialog_hasNoCaption()
{
    Dialog d;
    d.dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d.dialog));
    d.dialog.framelessHelper()->setMovable(false);
    const QWidget *text = d.dialog.framelessTitleBar()->labelText();
    const QPoint pos = d.inWindow(text, text->rect().center());
    QCOMPARE(d.dialog.framelessHelper()->hitTest(pos), HitRegion::Client);
}

void FramelessHelperTest::setupTitleBar_putsBarIntoLayoutWithoutMargins()
{
    Dialog d;
    d.dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d.dialog));
    CommonFramelessTitleBar *titleBar = d.dialog.framelessTitleBar();
    QVERIFY(titleBar);
    QCOMPARE(d.dialog.framelessHelper()->titleBar(), titleBar->realTitleBar());
    QVERIFY(d.dialog.framelessHelper()->isIgnoredTitleBarSubWidget(titleBar->labelText()));
    QCOMPARE(d.dialog.layout()->contentsMargins(), QMargins());
    QCOMPARE(titleBar->geometry().topLeft(), QPoint(0, 0));
    QCOMPARE(titleBar->width(), d.dialog.width());

    d.dialog.setWindowTitle(QStringLiteral("安装打印机"));
    QCOMPARE(titleBar->labelText()->text(), QStringLiteral("安装打印机"));
}

void FramelessHelperTest::setupTitleBar_buttonsFollowFlagsAndResizing()
{
    FramelessWidget<QWidget> window;
    auto *layout = new QVBoxLayout(&window);
    window.setupFramelessTitleBar(layout);
    CommonFramelessTitleBar *titleBar = window.framelessTitleBar();
    QVERIFY(titleBar->maximizeButton()->isVisibleTo(&window));

    window.setResizable(false);
    QVERIFY(!window.isResizable());
    QVERIFY(!titleBar->maximizeButton()->isVisibleTo(&window));
    window.setResizable(true);
    QVERIFY(titleBar->maximizeButton()->isVisibleTo(&window));

    window.setWindowFlag(Qt::WindowMinimizeButtonHint, false);
    QVERIFY(!titleBar->minimizeButton()->isVisibleTo(&window));
    window.setWindowFlag(Qt::WindowCloseButtonHint, false);
    QVERIFY(!titleBar->closeButton()->isVisibleTo(&window));
    window.setWindowFlag(Qt::WindowMaximizeButtonHint, false);
    QVERIFY(!titleBar->maximizeButton()->isVisibleTo(&window));
    QVERIFY(window.windowFlags().testFlag(Qt::FramelessWindowHint));
}

void FramelessHelperTest::showMaximized_doesNothingWhenNotResizable()
{
    Dialog d;
    d.dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d.dialog));
    d.dialog.setResizable(false);
    d.dialog.showMaximized();
    QVERIFY(!d.dialog.isMaximized());
    QVERIFY(!d.dialog.framelessTitleBar()->maximizeButton()->isChecked());
}

void FramelessHelperTest::showOperations_logTheirNames()
{
    Dialog d;
    d.dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d.dialog));
    LogCapture log;
    d.dialog.showMaximized();
    QTRY_VERIFY(d.dialog.isMaximized());
    d.dialog.showNormal();
    QTRY_VERIFY(!d.dialog.isMaximized());
    d.dialog.showMinimized();
    for (const char *name : {"showMaximized", "showNormal", "showMinimized"}) {
        const auto lines = log.find(QtDebugMsg, QString::fromLatin1(name));
        QVERIFY2(!lines.isEmpty(), name);
        QCOMPARE(lines.first().file, widgetFile);
        QCOMPARE(lines.first().category, QStringLiteral("bex.driverui.frameless"));
    }
}

QTEST_MAIN(FramelessHelperTest)
#include "tst_framelesshelper.moc"
