#include "UI/SubWidget/InkOrderWidget.h"
#include "UI/SubWidget/TabBarStyle.h"

#include "InkTestSupport.h"
#include "LogCapture.h"

#include <QApplication>
#include <QPainter>
#include <QTabBar>
#include <QtTest>

using InkTestSupport::countPixels;

namespace {

const QColor kCanvas(1, 2, 3);

void addInkTab(QTabBar *tabBar, const QString &text, bool isOn, const QColor &color, const QColor &offColor)
{
    const int index = tabBar->addTab(text);
    const QSharedPointer<TabBarStyle::ITabData> data(new TabData(index, isOn, color, offColor));
    tabBar->setTabData(index, QVariant::fromValue(data));
}

// A bar of three tabs C, M, Y (Y switched off) painted by a TabBarStyle.
struct StyledBar
{
    explicit StyledBar(bool movable)
        : style(&bar, nullptr)
    {
        bar.setStyle(&style);
        bar.setMovable(movable);
        bar.setExpanding(false);
        addInkTab(&bar, QStringLiteral("C"), true, Qt::cyan, Qt::gray);
        addInkTab(&bar, QStringLiteral("M"), true, Qt::magenta, Qt::gray);
        addInkTab(&bar, QStringLiteral("Y"), false, Qt::yellow, Qt::gray);
        bar.resize(bar.sizeHint() + QSize(100, 0));
    }

    // Draws the text of a tab onto a canvas of the bar's size, in the bar's
    // coordinates, as the style is asked to do for a tab's label.
    QImage paint(const QRect &rect, const QString &text = QString()) const
    {
        QImage image(bar.size(), QImage::Format_ARGB32);
        image.fill(kCanvas);
        QPalette palette;
        palette.setColor(QPalette::WindowText, Qt::black);
        QPainter painter(&image);
        style.drawItemText(&painter, rect, Qt::AlignCenter, palette, true, text, QPalette::WindowText);
        return image;
    }

    QTabBar bar;
    TabBarStyle style;
};

// The style the application's widgets are built on. Under an application
// style sheet QApplication::style() is Qt's style-sheet style, which keeps the
// style it wraps as its child.
QStyle *applicationBaseStyle()
{
    QStyle *style = QApplication::style();
    if (qApp->styleSheet().isEmpty())
        return style;
    return style->findChild<QStyle *>(QString(), Qt::FindDirectChildrenOnly);
}

int area(const QRect &rect)
{
    return rect.width() * rect.height();
}

} // namespace

class TabBarStyleTest : public QObject
{
    Q_OBJECT

private slots:
    void style_proxiesTheApplicationStyle();
    void fill_takesTheColourOfTheTabUnderIt();
    void fill_inkSwitchedOff_takesTheOffColour();
    void fill_draggedTab_takesTheCurrentTab();
    void text_isDrawnOnTopOfTheFill();
    void fill_outsideTheTabs_isLeftOut();
    void fill_invalidColour_isLeftOut();
    void fill_dataOfAnotherKind_isLeftOut();
    void fill_withATextMap_takesItsColour();
};

void TabBarStyleTest::style_proxiesTheApplicationStyle()
{
    QObject owner;
    QTabBar bar;
    auto *style = new TabBarStyle(&bar, &owner);
    QCOMPARE(style->parent(), &owner);
    QVERIFY(style->textBackgroundColors().isEmpty());
    QVERIFY(style->baseStyle());
    QStyle *applicationStyle = applicationBaseStyle();
    QVERIFY(applicationStyle);
    QCOMPARE(style->baseStyle()->objectName().toLower(), applicationStyle->objectName().toLower());
}

void TabBarStyleTest::fill_takesTheColourOfTheTabUnderIt()
{
    StyledBar styled(false);
    const QRect rect = styled.bar.tabRect(1).adjusted(4, 4, -4, -4);

    const QImage image = styled.paint(rect);

    QCOMPARE(countPixels(image, rect, Qt::magenta), area(rect));
    QCOMPARE(countPixels(image, image.rect(), Qt::magenta), area(rect));
}

void TabBarStyleTest::fill_inkSwitchedOff_takesTheOffColour()
{
    StyledBar styled(false);
    const QRect rect = styled.bar.tabRect(2).adjusted(4, 4, -4, -4);

    const QImage image = styled.paint(rect);

    QCOMPARE(countPixels(image, rect, Qt::gray), area(rect));
    QCOMPARE(countPixels(image, image.rect(), Qt::yellow), 0);
}

void TabBarStyleTest::fill_draggedTab_takesTheCurrentTab()
{
    // A movable bar's dragged tab is painted on a surface other than the bar,
    // where the rectangle does not locate the tab.
    StyledBar styled(true);
    styled.bar.setCurrentIndex(1);
    const QRect rect = styled.bar.tabRect(0).adjusted(4, 4, -4, -4);

    const QImage image = styled.paint(rect);

    QCOMPARE(countPixels(image, rect, Qt::magenta), area(rect));
    QCOMPARE(countPixels(image, rect, Qt::cyan), 0);
}

void TabBarStyleTest::text_isDrawnOnTopOfTheFill()
{
    StyledBar styled(false);
    const QRect rect = styled.bar.tabRect(0);

    const QImage image = styled.paint(rect, QStringLiteral("WWW"));

    const int cyan = countPixels(image, rect, Qt::cyan);
    QVERIFY(cyan > area(rect) / 2);
    QVERIFY(cyan < area(rect));
    QVERIFY(countPixels(image, rect, Qt::black) > 0);
}

void TabBarStyleTest::fill_outsideTheTabs_isLeftOut()
{
    StyledBar styled(false);
    QVERIFY(styled.bar.tabAt(QPoint(styled.bar.width() - 10, 5)) < 0);
    const QRect rect(styled.bar.width() - 30, 0, 30, styled.bar.height());

    const QImage image = styled.paint(rect, QStringLiteral("W"));

    for (const QColor &fill : {QColor(Qt::cyan), QColor(Qt::magenta), QColor(Qt::gray)})
        QCOMPARE(countPixels(image, image.rect(), fill), 0);
    QVERIFY(countPixels(image, rect, kCanvas) > area(rect) / 2);
    QVERIFY(countPixels(image, rect, Qt::black) > 0);
}

void TabBarStyleTest::fill_invalidColour_isLeftOut()
{
    StyledBar styled(false);
    addInkTab(&styled.bar, QStringLiteral("Varnish"), true, QColor(), Qt::gray);
    styled.bar.resize(styled.bar.sizeHint());
    const QRect rect = styled.bar.tabRect(3).adjusted(4, 4, -4, -4);

    const QImage image = styled.paint(rect);

    QCOMPARE(countPixels(image, image.rect(), kCanvas), area(image.rect()));
}

void TabBarStyleTest::fill_dataOfAnotherKind_isLeftOut()
{
    StyledBar styled(false);
    styled.bar.setTabData(1, QStringLiteral("magenta"));
    const QRect rect = styled.bar.tabRect(1).adjusted(4, 4, -4, -4);
    LogCapture log;

    const QImage image = styled.paint(rect);

    QCOMPARE(countPixels(image, image.rect(), kCanvas), area(image.rect()));
    QCOMPARE(log.entries().size(), 0);
}

void TabBarStyleTest::fill_withATextMap_takesItsColour()
{
    StyledBar styled(false);
    styled.style.setTextBackgroundColors({{QStringLiteral("M"), QColor(Qt::red)}});
    const QRect magenta = styled.bar.tabRect(1).adjusted(4, 4, -4, -4);
    const QRect cyan = styled.bar.tabRect(0).adjusted(4, 4, -4, -4);

    QImage image = styled.paint(magenta);
    QCOMPARE(countPixels(image, magenta, Qt::red), area(magenta));

    // A text missing from the map gets no fill, whatever its data says.
    image = styled.paint(cyan);
    QCOMPARE(countPixels(image, image.rect(), kCanvas), area(image.rect()));

    styled.style.setTextBackgroundColors({});
    image = styled.paint(cyan);
    QCOMPARE(countPixels(image, cyan, Qt::cyan), area(cyan));
}

QTEST_MAIN(TabBarStyleTest)
#include "tst_tabbarstyle.moc"
