// Mouse events go through the window, as the platform delivers them, so that
// a drag carries its pressed button and a double-click is made of clicks.
#define QTEST_QPA_MOUSE_HANDLING

#include "UI/SubWidget/InkOrderWidget.h"
#include "UI/SubWidget/TabBarStyle.h"

#include "InkTestSupport.h"
#include "LogCapture.h"

#include <QHBoxLayout>
#include <QMetaMethod>
#include <QPainter>
#include <QSignalSpy>
#include <QTabBar>
#include <QtTest>

#include <memory>

using InkTestSupport::countPixels;
using InkTestSupport::ink;
using InkTestSupport::PaintCounter;
using InkInfo = InkOrderWidget::InkInfo;
using InkInfos = QVector<InkOrderWidget::InkInfo>;

namespace {

const QColor kOffBackground(153, 153, 153);
const QColor kOffText(205, 205, 205);

// Four inks with clearly different colours, given out of order.
InkInfos processInks()
{
    return {ink(0, 2, true, QStringLiteral("Y"), QColor(Qt::yellow)),
            ink(1, 0, true, QStringLiteral("C"), QColor(Qt::cyan)),
            ink(2, 3, false, QStringLiteral("K"), QColor(Qt::black)),
            ink(3, 1, true, QStringLiteral("M"), QColor(Qt::magenta))};
}

QStringList tabTexts(const QTabBar *tabBar)
{
    QStringList texts;
    for (int i = 0; i < tabBar->count(); ++i)
        texts << tabBar->tabText(i);
    return texts;
}

QList<int> inkIds(const InkInfos &infos)
{
    QList<int> ids;
    for (const InkInfo &info : infos)
        ids << info.inkId;
    return ids;
}

QList<int> orders(const InkInfos &infos)
{
    QList<int> result;
    for (const InkInfo &info : infos)
        result << info.order;
    return result;
}

InkInfos spyArgument(const QSignalSpy &spy, int index)
{
    return spy.at(index).at(0).value<InkInfos>();
}

// Pixels of text drawn in the colour, anti-aliasing allowed for.
int textPixels(const QImage &image, const QRect &rect, const QColor &color)
{
    return InkTestSupport::countPixelsNear(image, rect, color, 16);
}

// Presses a tab at its centre and drags it to the point, in small steps as a
// hand does, then lets go.
void dragTab(QTabBar *tabBar, int index, const QPoint &to)
{
    const QPoint start = tabBar->tabRect(index).center();
    QTest::mousePress(tabBar, Qt::LeftButton, {}, start);
    const int step = to.x() > start.x() ? 4 : -4;
    for (int x = start.x() + step; step > 0 ? x < to.x() : x > to.x(); x += step)
        QTest::mouseMove(tabBar, QPoint(x, start.y()));
    QTest::mouseMove(tabBar, to);
    QTest::mouseRelease(tabBar, Qt::LeftButton, {}, to);
}

// A shown window holding the widget under test and, beside it, a plain
// widget used as a marker for finished repaints.
struct Window
{
    Window()
    {
        auto *layout = new QHBoxLayout(&top);
        widget = new InkOrderWidget(&top);
        marker = new QWidget(&top);
        marker->setFixedSize(20, 20);
        layout->addWidget(widget, 1);
        layout->addWidget(marker);
        top.resize(600, 60);
    }

    bool show()
    {
        top.show();
        return QTest::qWaitForWindowExposed(&top);
    }

    QTabBar *tabBar() const { return widget->findChild<QTabBar *>(); }
    QImage grab() const { return tabBar()->grab().toImage(); }

    QWidget top;
    InkOrderWidget *widget = nullptr;
    QWidget *marker = nullptr;
};

} // namespace

class InkOrderWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void metaTypes_areRegisteredUnderTheirNames();
    void metaObject_offersOnlyTheOrderChangedSignal();
    void construction_setsUpAMovableTabBarPaintedByItsStyle();
    void construction_startsWithGreyOffColoursAndTheSwitchEnabled();
    void setInkInfos_showsTabsSortedByOrder();
    void inkOrderChanged_carriesTabPositionsAsOrders();
    void setInkInfos_keepsEachInkInItsTabData();
    void tabTexts_areColouredByState();
    void setInkInfos_refusesInksSharingAnOrder();
    void setInkInfos_replacesTheTabsWithoutEmitting();
    void tabMove_emitsOnceWithTheMovedInkAtItsNewPlace();
    void mouseDrag_reordersTheTabs();
    void mouseDrag_emitsOncePerTabPassed();
    void mouseDrag_paintsTheDraggedTabInItsInkColour();
    void doubleClick_switchesTheInk();
    void keyboard_switchesAndMovesTheCurrentInk();
    void switchedInk_isPaintedInOffColoursAndBack();
    void doubleClick_switchDisabled_isIgnored();
    void doubleClick_besideTheTabs_isIgnored();
    void tabs_arePaintedInTheirInkColour();
    void setOffBackgroundColor_newColour_repaintsOffTabs();
    void setOffTextColor_newColour_recoloursOffTexts();
    void offColours_currentOnes_causeNoRepaint();
    void onTab_invalidInkColour_isNotFilled();
    void inkOrderChanged_leavesTabsWithForeignDataOut();
};

void InkOrderWidgetTest::metaTypes_areRegisteredUnderTheirNames()
{
    InkOrderWidget widget(nullptr);
    QCOMPARE(QMetaType::type("QVector<InkInfo>"), qMetaTypeId<InkInfos>());
    const int pointerId = qMetaTypeId<QSharedPointer<TabBarStyle::ITabData>>();
    QCOMPARE(QMetaType::type("QSharedPointer<TabBarStyle::ITabData>"), pointerId);
}

void InkOrderWidgetTest::metaObject_offersOnlyTheOrderChangedSignal()
{
    const QMetaObject &meta = InkOrderWidget::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    const QMetaMethod method = meta.method(meta.methodOffset());
    QCOMPARE(method.methodType(), QMetaMethod::Signal);
    QCOMPARE(method.methodSignature(), QByteArray("inkOrderChanged(QVector<InkInfo>)"));
    QCOMPARE(method.parameterType(0), qMetaTypeId<InkInfos>());
}

void InkOrderWidgetTest::construction_setsUpAMovableTabBarPaintedByItsStyle()
{
    LogCapture log;
    InkOrderWidget widget(nullptr);

    const QList<QTabBar *> bars = widget.findChildren<QTabBar *>();
    QCOMPARE(bars.size(), 1);
    QTabBar *tabBar = bars.first();
    QVERIFY(tabBar->isMovable());
    QVERIFY(!tabBar->drawBase());
    QVERIFY(!tabBar->expanding());
    QCOMPARE(tabBar->sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(tabBar->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);

    // The widget owns one TabBarStyle. Whatever style the tab bar reports (Qt
    // wraps it in a style-sheet style when the application has a style
    // sheet), item texts drawn through it get the tab's ink fill.
    QCOMPARE(widget.findChildren<TabBarStyle *>(QString(), Qt::FindDirectChildrenOnly).size(), 1);
    widget.setInkInfos({ink(0, 0, true, QStringLiteral("C"), Qt::cyan)});
    const QRect tab = tabBar->tabRect(0);
    QImage image(tabBar->size(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        tabBar->style()->drawItemText(&painter, tab, Qt::AlignCenter, tabBar->palette(), true,
                                      QStringLiteral("C"), QPalette::WindowText);
    }
    QVERIFY(countPixels(image, tab, Qt::cyan) > tab.width() * tab.height() / 2);

    auto *layout = qobject_cast<QHBoxLayout *>(widget.layout());
    QVERIFY(layout);
    QCOMPARE(layout->spacing(), 0);
    QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(layout->indexOf(tabBar), 0);
    QCOMPARE(layout->stretch(0), 1);

    const auto lines = log.find(QtDebugMsg, QStringLiteral("tabBar sizePolicy:"));
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().file, QStringLiteral("source/UI/SubWidget/InkOrderWidget"));
    QVERIFY2(lines.first().message.contains(QStringLiteral("QSizePolicy")),
             qPrintable(lines.first().message));
}

void InkOrderWidgetTest::construction_startsWithGreyOffColoursAndTheSwitchEnabled()
{
    InkOrderWidget widget(nullptr);
    QCOMPARE(widget.offBackgroundColor(), QColor(Qt::gray));
    QCOMPARE(widget.offTextColor(), QColor(Qt::lightGray));
    QVERIFY(widget.isInkSwitchEnabled());
    QVERIFY(widget.inkInfos().isEmpty());
}

void InkOrderWidgetTest::setInkInfos_showsTabsSortedByOrder()
{
    InkOrderWidget widget(nullptr);
    QSignalSpy spy(&widget, &InkOrderWidget::inkOrderChanged);

    widget.setInkInfos({ink(10, 5, true, QStringLiteral("five"), Qt::red),
                        ink(11, 1, true, QStringLiteral("one"), Qt::green),
                        ink(12, 3, true, QStringLiteral("three"), Qt::blue)});

    QTabBar *tabBar = widget.findChild<QTabBar *>();
    QCOMPARE(tabTexts(tabBar), (QStringList{"one", "three", "five"}));
    // Kept as given, only sorted.
    const InkInfos infos = widget.inkInfos();
    QCOMPARE(orders(infos), (QList<int>{1, 3, 5}));
    QCOMPARE(inkIds(infos), (QList<int>{11, 12, 10}));
    QCOMPARE(infos.at(2).color, QColor(Qt::red));
    QCOMPARE(spy.count(), 0);
}

void InkOrderWidgetTest::inkOrderChanged_carriesTabPositionsAsOrders()
{
    InkOrderWidget widget(nullptr);
    widget.setInkInfos({ink(10, 5, true, QStringLiteral("five"), Qt::red),
                        ink(11, 1, true, QStringLiteral("one"), Qt::green),
                        ink(12, 3, false, QStringLiteral("three"), Qt::blue)});
    QSignalSpy spy(&widget, &InkOrderWidget::inkOrderChanged);
    QTabBar *tabBar = widget.findChild<QTabBar *>();

    // Any change emits the whole list; a move that leaves the order as it
    // is (the last tab onto itself) is not a change, so swap two and back.
    tabBar->moveTab(0, 1);
    tabBar->moveTab(1, 0);

    QCOMPARE(spy.count(), 2);
    const InkInfos emitted = spyArgument(spy, 1);
    QCOMPARE(orders(emitted), (QList<int>{0, 1, 2}));
    QCOMPARE(inkIds(emitted), (QList<int>{11, 12, 10}));
    QCOMPARE(emitted.at(0).inkName, QStringLiteral("one"));
    QCOMPARE(emitted.at(1).isOn, false);
    QCOMPARE(emitted.at(2).color, QColor(Qt::red));
    QCOMPARE(orders(widget.inkInfos()), (QList<int>{0, 1, 2}));
}

void InkOrderWidgetTest::setInkInfos_keepsEachInkInItsTabData()
{
    InkOrderWidget widget(nullptr);
    widget.setOffBackgroundColor(kOffBackground);
    widget.setInkInfos(processInks());
    QTabBar *tabBar = widget.findChild<QTabBar *>();

    QCOMPARE(tabTexts(tabBar), (QStringList{"C", "M", "Y", "K"}));
    const QList<int> expectedIds{1, 3, 0, 2};
    for (int i = 0; i < tabBar->count(); ++i) {
        const QSharedPointer<TabData> data = getTabData(tabBar, i);
        QVERIFY(data);
        QCOMPARE(data->type(), 1);
        QCOMPARE(data->inkId, expectedIds.at(i));
        QCOMPARE(data->offColor, kOffBackground);
    }
    QCOMPARE(getTabData(tabBar, 0)->color, QColor(Qt::cyan));
    QVERIFY(getTabData(tabBar, 0)->isOn);
    QVERIFY(!getTabData(tabBar, 3)->isOn);
    QCOMPARE(getTabData(tabBar, 3)->backgroundColor(), kOffBackground);
}

void InkOrderWidgetTest::tabTexts_areColouredByState()
{
    InkOrderWidget widget(nullptr);
    widget.setOffTextColor(kOffText);
    widget.setInkInfos(processInks());
    QTabBar *tabBar = widget.findChild<QTabBar *>();

    QCOMPARE(tabBar->tabTextColor(0), QColor(Qt::red)); // complement of cyan
    QCOMPARE(tabBar->tabTextColor(1), QColor(Qt::green));
    QCOMPARE(tabBar->tabTextColor(2), QColor(Qt::blue));
    QCOMPARE(tabBar->tabTextColor(3), kOffText); // K is off

    // The alpha of the ink colour is kept.
    widget.setInkInfos({ink(0, 0, true, QStringLiteral("W"), QColor(200, 100, 50, 128))});
    QCOMPARE(tabBar->tabTextColor(0), QColor(55, 155, 205, 128));
}

void InkOrderWidgetTest::setInkInfos_refusesInksSharingAnOrder()
{
    InkOrderWidget widget(nullptr);
    widget.setInkInfos(processInks());
    QSignalSpy spy(&widget, &InkOrderWidget::inkOrderChanged);
    LogCapture log;

    widget.setInkInfos({ink(0, 0, true, QStringLiteral("C"), Qt::cyan),
                        ink(1, 1, true, QStringLiteral("M"), Qt::magenta),
                        ink(2, 1, true, QStringLiteral("Y"), Qt::yellow)});

    QCOMPARE(widget.findChild<QTabBar *>()->count(), 0);
    QVERIFY(widget.inkInfos().isEmpty());
    QCOMPARE(spy.count(), 0);
    const auto lines = log.find(QtCriticalMsg, QStringLiteral("check your code!"));
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().file, QStringLiteral("source/UI/SubWidget/InkOrderWidget"));
    QVERIFY(lines.first().function.contains(QStringLiteral("InkOrderWidget::setInkInfos")));
}

void InkOrderWidgetTest::setInkInfos_replacesTheTabsWithoutEmitting()
{
    InkOrderWidget widget(nullptr);
    widget.setInkInfos(processInks());
    QTabBar *tabBar = widget.findChild<QTabBar *>();
    QSignalSpy spy(&widget, &InkOrderWidget::inkOrderChanged);

    widget.setInkInfos({ink(7, 0, false, QStringLiteral("White"), Qt::white)});

    QCOMPARE(tabTexts(tabBar), QStringList{"White"});
    QCOMPARE(getTabData(tabBar, 0)->inkId, 7);
    QCOMPARE(widget.inkInfos().size(), 1);
    QCOMPARE(spy.count(), 0);

    widget.setInkInfos({});
    QCOMPARE(tabBar->count(), 0);
    QVERIFY(widget.inkInfos().isEmpty());
    QCOMPARE(spy.count(), 0);
}

void InkOrderWidgetTest::tabMove_emitsOnceWithTheMovedInkAtItsNewPlace()
{
    InkOrderWidget widget(nullptr);
    widget.setInkInfos(processInks()); // C M Y K
    QTabBar *tabBar = widget.findChild<QTabBar *>();
    QSignalSpy spy(&widget, &InkOrderWidget::inkOrderChanged);

    tabBar->moveTab(0, 2); // C after Y

    QCOMPARE(spy.count(), 1);
    const InkInfos emitted = spyArgument(spy, 0);
    QCOMPARE(inkIds(emitted), (QList<int>{3, 0, 1, 2}));
    QCOMPARE(emitted.at(2).inkName, QStringLiteral("C"));
    QCOMPARE(emitted.at(2).order, 2);
    QCOMPARE(orders(emitted), (QList<int>{0, 1, 2, 3}));

    tabBar->moveTab(3, 0); // K to the front
    QCOMPARE(spy.count(), 2);
    QCOMPARE(inkIds(spyArgument(spy, 1)), (QList<int>{2, 3, 0, 1}));
    QCOMPARE(inkIds(widget.inkInfos()), (QList<int>{2, 3, 0, 1}));
}

void InkOrderWidgetTest::mouseDrag_reordersTheTabs()
{
    Window window;
    window.widget->setInkInfos(processInks()); // C M Y K
    QVERIFY(window.show());
    QTabBar *tabBar = window.tabBar();
    QSignalSpy spy(window.widget, &InkOrderWidget::inkOrderChanged);

    // C dropped onto M.
    dragTab(tabBar, 0, tabBar->tabRect(1).center());

    QTRY_COMPARE(tabTexts(tabBar), (QStringList{"M", "C", "Y", "K"}));
    QCOMPARE(spy.count(), 1);
    const InkInfos emitted = spyArgument(spy, 0);
    QCOMPARE(inkIds(emitted), (QList<int>{3, 1, 0, 2}));
    QCOMPARE(orders(emitted), (QList<int>{0, 1, 2, 3}));
    QCOMPARE(emitted.at(1).inkName, QStringLiteral("C"));
    QCOMPARE(emitted.at(1).color, QColor(Qt::cyan));
    QCOMPARE(inkIds(window.widget->inkInfos()), (QList<int>{3, 1, 0, 2}));
}

void InkOrderWidgetTest::mouseDrag_emitsOncePerTabPassed()
{
    Window window;
    window.widget->setInkInfos(processInks()); // C M Y K
    QVERIFY(window.show());
    QTabBar *tabBar = window.tabBar();
    QSignalSpy spy(window.widget, &InkOrderWidget::inkOrderChanged);

    // C dragged past M, Y and K: three moves.
    dragTab(tabBar, 0, tabBar->tabRect(3).center());

    QTRY_COMPARE(tabTexts(tabBar), (QStringList{"M", "Y", "K", "C"}));
    QCOMPARE(spy.count(), 3);
    QCOMPARE(inkIds(spyArgument(spy, 0)), (QList<int>{3, 1, 0, 2}));
    QCOMPARE(inkIds(spyArgument(spy, 1)), (QList<int>{3, 0, 1, 2}));
    QCOMPARE(inkIds(spyArgument(spy, 2)), (QList<int>{3, 0, 2, 1}));
    QCOMPARE(orders(spyArgument(spy, 2)), (QList<int>{0, 1, 2, 3}));
}

void InkOrderWidgetTest::mouseDrag_paintsTheDraggedTabInItsInkColour()
{
    Window window;
    window.widget->setInkInfos(processInks()); // C M Y K
    QVERIFY(window.show());
    QTabBar *tabBar = window.tabBar();
    const QList<QWidget *> before = tabBar->findChildren<QWidget *>();

    // Lift Y a little, not far enough to pass a neighbour.
    const QPoint start = tabBar->tabRect(2).center();
    QTest::mousePress(tabBar, Qt::LeftButton, {}, start);
    const int lift = QApplication::startDragDistance() + 6;
    for (int dx = 2; dx <= lift; dx += 2)
        QTest::mouseMove(tabBar, start + QPoint(dx, 0));

    // The dragged tab is drawn by a widget of its own that follows the mouse.
    QWidget *dragged = nullptr;
    for (QWidget *child : tabBar->findChildren<QWidget *>()) {
        if (!before.contains(child) && child->isVisible())
            dragged = child;
    }
    QVERIFY(dragged);
    const QImage image = dragged->grab().toImage();
    QTest::mouseRelease(tabBar, Qt::LeftButton, {}, start + QPoint(lift, 0));

    QVERIFY(countPixels(image, image.rect(), Qt::yellow) > 50);
    QVERIFY(textPixels(image, image.rect(), Qt::blue) > 0); // its complementary text
    QCOMPARE(countPixels(image, image.rect(), Qt::cyan), 0);
    QCOMPARE(countPixels(image, image.rect(), Qt::magenta), 0);
    QCOMPARE(tabTexts(tabBar), (QStringList{"C", "M", "Y", "K"}));
}

void InkOrderWidgetTest::doubleClick_switchesTheInk()
{
    Window window;
    window.widget->setInkInfos(processInks()); // C M Y K(off)
    QVERIFY(window.show());
    QTabBar *tabBar = window.tabBar();
    QSignalSpy spy(window.widget, &InkOrderWidget::inkOrderChanged);

    QTest::mouseDClick(tabBar, Qt::LeftButton, {}, tabBar->tabRect(1).center());

    QCOMPARE(spy.count(), 1);
    const InkInfos emitted = spyArgument(spy, 0);
    QCOMPARE(inkIds(emitted), (QList<int>{1, 3, 0, 2}));
    QCOMPARE(emitted.at(1).isOn, false);
    QCOMPARE(emitted.at(3).isOn, false);
    QCOMPARE(emitted.at(0).isOn, true);
    QVERIFY(!getTabData(tabBar, 1)->isOn);
    QVERIFY(!window.widget->inkInfos().at(1).isOn);

    QTest::mouseDClick(tabBar, Qt::LeftButton, {}, tabBar->tabRect(3).center());
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spyArgument(spy, 1).at(3).isOn, true);
}

void InkOrderWidgetTest::keyboard_switchesAndMovesTheCurrentInk()
{
    Window window;
    window.widget->setInkInfos(processInks());
    QVERIFY(window.show());
    QTabBar *tabBar = window.tabBar();
    QVERIFY(tabBar->focusPolicy() & Qt::TabFocus);
    QVERIFY(!tabBar->accessibleName().isEmpty());
    tabBar->setFocus();
    QSignalSpy spy(window.widget, &InkOrderWidget::inkOrderChanged);
    QStringList texts;
    for (int i = 0; i < tabBar->count(); ++i)
        texts << tabBar->tabText(i);

    // An arrow chooses the next ink; nothing changes yet.
    tabBar->setCurrentIndex(0);
    QTest::keyClick(tabBar, Qt::Key_Right);
    QCOMPARE(tabBar->currentIndex(), 1);
    QCOMPARE(spy.count(), 0);

    // Space switches it, as a double-click does.
    const bool wasOn = getTabData(tabBar, 1)->isOn;
    QTest::keyClick(tabBar, Qt::Key_Space);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(getTabData(tabBar, 1)->isOn, !wasOn);

    // Ctrl+Right moves it one place later in the order, and it stays chosen.
    QTest::keyClick(tabBar, Qt::Key_Right, Qt::ControlModifier);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(tabBar->currentIndex(), 2);
    QCOMPARE(tabBar->tabText(2), texts.at(1));
    QCOMPARE(tabBar->tabText(1), texts.at(2));
    QCOMPARE(spyArgument(spy, 1).at(2).inkName, texts.at(1));

    // Nothing moves past either end.
    tabBar->setCurrentIndex(0);
    QTest::keyClick(tabBar, Qt::Key_Left, Qt::ControlModifier);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(tabBar->tabText(0), texts.at(0));
}

void InkOrderWidgetTest::switchedInk_isPaintedInOffColoursAndBack()
{
    Window window;
    window.widget->setOffBackgroundColor(kOffBackground);
    window.widget->setOffTextColor(kOffText);
    window.widget->setInkInfos(processInks()); // C M Y K(off)
    QVERIFY(window.show());
    QTabBar *tabBar = window.tabBar();
    const QRect magentaTab = tabBar->tabRect(1);

    // Made current first, as the double-click will, so that only the switch
    // changes the tab's look.
    tabBar->setCurrentIndex(1);
    QImage image = window.grab();
    QVERIFY(countPixels(image, magentaTab, Qt::magenta) > 50);
    QVERIFY(textPixels(image, magentaTab, Qt::green) > 0); // its complementary text
    QCOMPARE(countPixels(image, magentaTab, kOffBackground), 0);
    // The frame has greys of its own near the off text colour.
    const int greyBefore = textPixels(image, magentaTab, kOffText);

    QTest::mouseDClick(tabBar, Qt::LeftButton, {}, magentaTab.center());
    QCOMPARE(tabBar->tabTextColor(1), kOffText);
    image = window.grab();
    QCOMPARE(countPixels(image, magentaTab, Qt::magenta), 0);
    QCOMPARE(countPixels(image, magentaTab, Qt::green), 0);
    QVERIFY(countPixels(image, magentaTab, kOffBackground) > 50);
    QVERIFY(textPixels(image, magentaTab, kOffText) > greyBefore);

    QTest::mouseDClick(tabBar, Qt::LeftButton, {}, magentaTab.center());
    QCOMPARE(tabBar->tabTextColor(1), QColor(Qt::green));
    image = window.grab();
    QVERIFY(countPixels(image, magentaTab, Qt::magenta) > 50);
    QVERIFY(textPixels(image, magentaTab, Qt::green) > 0);
    QCOMPARE(countPixels(image, magentaTab, kOffBackground), 0);
    QCOMPARE(textPixels(image, magentaTab, kOffText), greyBefore);
}

void InkOrderWidgetTest::doubleClick_switchDisabled_isIgnored()
{
    Window window;
    window.widget->setInkInfos(processInks());
    window.widget->setInkSwitchEnabled(false);
    QVERIFY(!window.widget->isInkSwitchEnabled());
    QVERIFY(window.show());
    QTabBar *tabBar = window.tabBar();
    QSignalSpy spy(window.widget, &InkOrderWidget::inkOrderChanged);
    const QImage before = window.grab();

    QTest::mouseDClick(tabBar, Qt::LeftButton, {}, tabBar->tabRect(0).center());
    QTest::mouseDClick(tabBar, Qt::LeftButton, {}, tabBar->tabRect(3).center());

    QCOMPARE(spy.count(), 0);
    QVERIFY(getTabData(tabBar, 0)->isOn);
    QVERIFY(!getTabData(tabBar, 3)->isOn);
    QCOMPARE(tabBar->tabTextColor(0), QColor(Qt::red));
    QVERIFY(window.widget->inkInfos().at(0).isOn);
    // The last tab clicked became current, which changes its frame only.
    const QImage after = window.grab();
    QCOMPARE(countPixels(after, tabBar->tabRect(0), Qt::cyan),
             countPixels(before, tabBar->tabRect(0), Qt::cyan));
}

void InkOrderWidgetTest::doubleClick_besideTheTabs_isIgnored()
{
    Window window;
    window.widget->setInkInfos({ink(0, 0, true, QStringLiteral("C"), Qt::cyan)});
    QVERIFY(window.show());
    QTabBar *tabBar = window.tabBar();
    QVERIFY(tabBar->width() > tabBar->tabRect(0).right() + 20);
    QSignalSpy spy(window.widget, &InkOrderWidget::inkOrderChanged);
    QSignalSpy doubleClickSpy(tabBar, &QTabBar::tabBarDoubleClicked);
    LogCapture log;

    QTest::mouseDClick(tabBar, Qt::LeftButton, {}, QPoint(tabBar->tabRect(0).right() + 10, 5));

    QCOMPARE(doubleClickSpy.count(), 1);
    QCOMPARE(doubleClickSpy.at(0).at(0).toInt(), -1);
    QCOMPARE(spy.count(), 0);
    QVERIFY(getTabData(tabBar, 0)->isOn);
    QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("check your code")), 0);
}

void InkOrderWidgetTest::tabs_arePaintedInTheirInkColour()
{
    Window window;
    window.widget->setOffBackgroundColor(kOffBackground);
    window.widget->setOffTextColor(kOffText);
    window.widget->setInkInfos(processInks()); // C M Y K(off)
    QVERIFY(window.show());
    QTabBar *tabBar = window.tabBar();
    const QImage image = window.grab();

    const QList<QColor> fills{Qt::cyan, Qt::magenta, Qt::yellow, kOffBackground};
    for (int i = 0; i < tabBar->count(); ++i) {
        for (int j = 0; j < fills.size(); ++j) {
            const int pixels = countPixels(image, tabBar->tabRect(i), fills.at(j));
            if (i == j)
                QVERIFY2(pixels > 50, qPrintable(QStringLiteral("tab %1 lacks its fill").arg(i)));
            else
                QVERIFY2(pixels == 0, qPrintable(QStringLiteral("tab %1 shows fill %2").arg(i).arg(j)));
        }
    }
    QVERIFY(textPixels(image, tabBar->tabRect(0), Qt::red) > 0); // complement of cyan
}

void InkOrderWidgetTest::setOffBackgroundColor_newColour_repaintsOffTabs()
{
    Window window;
    window.widget->setInkInfos(processInks()); // K is off
    QVERIFY(window.show());
    QTabBar *tabBar = window.tabBar();
    const QRect blackTab = tabBar->tabRect(3);
    QVERIFY(countPixels(window.grab(), blackTab, Qt::gray) > 50);
    PaintCounter paints(tabBar);

    const QColor newColor(90, 60, 30);
    window.widget->setOffBackgroundColor(newColor);

    QCOMPARE(window.widget->offBackgroundColor(), newColor);
    QCOMPARE(getTabData(tabBar, 3)->offColor, newColor);
    QCOMPARE(getTabData(tabBar, 0)->offColor, newColor);
    QTRY_VERIFY(paints.count > 0);
    const QImage image = window.grab();
    QVERIFY(countPixels(image, blackTab, newColor) > 50);
    QCOMPARE(countPixels(image, blackTab, Qt::gray), 0);
    // Inks that are on keep their colour.
    QCOMPARE(countPixels(image, tabBar->tabRect(0), newColor), 0);
}

void InkOrderWidgetTest::setOffTextColor_newColour_recoloursOffTexts()
{
    Window window;
    window.widget->setInkInfos(processInks()); // K is off
    QVERIFY(window.show());
    QTabBar *tabBar = window.tabBar();
    PaintCounter paints(tabBar);

    const QColor newColor(250, 200, 0);
    window.widget->setOffTextColor(newColor);

    QCOMPARE(window.widget->offTextColor(), newColor);
    QCOMPARE(tabBar->tabTextColor(3), newColor);
    QCOMPARE(tabBar->tabTextColor(0), QColor(Qt::red));
    QTRY_VERIFY(paints.count > 0);
    QVERIFY(textPixels(window.grab(), tabBar->tabRect(3), newColor) > 0);
}

void InkOrderWidgetTest::offColours_currentOnes_causeNoRepaint()
{
    Window window;
    window.widget->setInkInfos(processInks());
    QVERIFY(window.show());
    QTabBar *tabBar = window.tabBar();
    PaintCounter tabBarPaints(tabBar);
    PaintCounter markerPaints(window.marker);

    window.widget->setOffBackgroundColor(QColor(Qt::gray));
    window.widget->setOffTextColor(QColor(Qt::lightGray));
    // The window's next repaint handles every widget marked for one; once the
    // marker is painted, a tab bar marked as well would have been too.
    window.marker->update();
    QTRY_VERIFY(markerPaints.count > 0);

    QCOMPARE(tabBarPaints.count, 0);
    QCOMPARE(tabBar->tabTextColor(3), QColor(Qt::lightGray));
}

void InkOrderWidgetTest::onTab_invalidInkColour_isNotFilled()
{
    Window window;
    window.widget->setInkInfos({ink(0, 0, true, QStringLiteral("Varnish"), QColor()),
                                ink(1, 1, true, QStringLiteral("C"), Qt::cyan)});
    QVERIFY(window.show());
    QTabBar *tabBar = window.tabBar();

    QVERIFY(!getTabData(tabBar, 0)->backgroundColor().isValid());
    QVERIFY(!tabBar->tabTextColor(0).isValid());
    // The unfilled tab looks like the same tab of a plain bar.
    QTabBar plain;
    plain.setDrawBase(false);
    plain.setExpanding(false);
    plain.addTab(QStringLiteral("Varnish"));
    plain.addTab(QStringLiteral("C"));
    plain.resize(tabBar->size());
    const QImage expected = plain.grab(plain.tabRect(0)).toImage().convertToFormat(QImage::Format_ARGB32);
    const QImage actual = tabBar->grab(tabBar->tabRect(0)).toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(actual, expected);
}

void InkOrderWidgetTest::inkOrderChanged_leavesTabsWithForeignDataOut()
{
    InkOrderWidget widget(nullptr);
    widget.setInkInfos(processInks()); // C M Y K
    QTabBar *tabBar = widget.findChild<QTabBar *>();
    tabBar->setTabData(1, QStringLiteral("not an ink"));
    QSignalSpy spy(&widget, &InkOrderWidget::inkOrderChanged);
    LogCapture log;

    tabBar->moveTab(0, 3);

    QCOMPARE(spy.count(), 1);
    QCOMPARE(inkIds(spyArgument(spy, 0)), (QList<int>{0, 2, 1}));
    QCOMPARE(orders(spyArgument(spy, 0)), (QList<int>{1, 2, 3}));
    QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("check your code!")), 1);
}

QTEST_MAIN(InkOrderWidgetTest)
#include "tst_inkorderwidget.moc"
