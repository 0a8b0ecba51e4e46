#include "FramelessCore/FramelessHelper/FramelessGeometry.h"

#include <QtTest>

using namespace FramelessGeometry;

Q_DECLARE_METATYPE(FramelessGeometry::HitTestInput)
Q_DECLARE_METATYPE(FramelessGeometry::HitRegion)

namespace {

// A 200 x 150 resizable window with a 30-pixel title bar across its top.
HitTestInput normalWindow(const QPoint &pos)
{
    HitTestInput in;
    in.windowSize = QSize(200, 150);
    in.borderPos = pos;
    in.pos = pos;
    in.borderWidth = 4;
    in.minimumSize = QSize(100, 80);
    in.maximumSize = QSize(1000, 800);
    in.hasTitleBar = true;
    in.titleBarRect = QRect(0, 0, 200, 30);
    return in;
}

} // namespace

class FramelessGeometryTest : public QObject
{
    Q_OBJECT

private slots:
    void hitTest_decidesRegion_data();
    void hitTest_decidesRegion();
    void hitTest_usesBorderPositionOnlyForBorder();
    void isFixedSize_needsBothExtents_data();
    void isFixedSize_needsBothExtents();
    void clampSize_ordersBounds_data();
    void clampSize_ordersBounds();
    void resizedGeometry_anchorsOppositeEdgeWithinLimits_data();
    void resizedGeometry_anchorsOppositeEdgeWithinLimits();
    void compareEdges_alignsOnMovedEdges_data();
    void compareEdges_alignsOnMovedEdges();
    void maximizedArea_choosesMonitorOrScreen_data();
    void maximizedArea_choosesMonitorOrScreen();
    void maximizedRect_keepsProposedWhenWindowCannotGrow_data();
    void maximizedRect_keepsProposedWhenWindowCannotGrow();
    void edgesOf_matchesBorderRegions_data();
    void edgesOf_matchesBorderRegions();
};

void FramelessGeometryTest::hitTest_decidesRegion_data()
{
    QTest::addColumn<HitTestInput>("input");
    QTest::addColumn<HitRegion>("expected");

    QTest::newRow("3 px inside the left edge") << normalWindow({3, 75}) << HitRegion::Left;
    QTest::newRow("4 px inside the left edge") << normalWindow({4, 75}) << HitRegion::Client;
    QTest::newRow("3 px inside the right edge") << normalWindow({197, 75}) << HitRegion::Right;
    QTest::newRow("4 px inside the right edge") << normalWindow({196, 75}) << HitRegion::Client;
    QTest::newRow("3 px inside the top edge, in the title bar") << normalWindow({100, 3}) << HitRegion::Top;
    QTest::newRow("3 px inside the bottom edge") << normalWindow({100, 147}) << HitRegion::Bottom;
    QTest::newRow("top-left corner") << normalWindow({3, 3}) << HitRegion::TopLeft;
    QTest::newRow("top-right corner") << normalWindow({197, 3}) << HitRegion::TopRight;
    QTest::newRow("bottom-left corner") << normalWindow({3, 147}) << HitRegion::BottomLeft;
    QTest::newRow("bottom-right corner") << normalWindow({197, 147}) << HitRegion::BottomRight;
    QTest::newRow("client area") << normalWindow({100, 90}) << HitRegion::Client;

    HitTestInput fixed = normalWindow({3, 75});
    fixed.minimumSize = fixed.maximumSize = QSize(200, 150);
    QTest::newRow("fixed size: left edge") << fixed << HitRegion::Client;
    fixed.borderPos = fixed.pos = QPoint(3, 3);
    QTest::newRow("fixed size: top-left corner is caption") << fixed << HitRegion::Caption;
    HitTestInput fixedWidthOnly = normalWindow({3, 75});
    fixedWidthOnly.minimumSize = QSize(200, 100);
    fixedWidthOnly.maximumSize = QSize(200, 800);
    QTest::newRow("fixed width only still resizes") << fixedWidthOnly << HitRegion::Left;

    HitTestInput notResizable = normalWindow({3, 75});
    notResizable.resizable = false;
    QTest::newRow("not resizable") << notResizable << HitRegion::Client;

    HitTestInput maximized = normalWindow({3, 3});
    maximized.maximized = true;
    QTest::newRow("maximised: corner is caption") << maximized << HitRegion::Caption;
    HitTestInput fullScreen = normalWindow({3, 75});
    fullScreen.fullScreen = true;
    QTest::newRow("full screen: no border") << fullScreen << HitRegion::Client;

    QTest::newRow("empty title bar") << normalWindow({100, 15}) << HitRegion::Caption;
    HitTestInput button = normalWindow({180, 15});
    button.titleBarChild = ChildUnderCursor::Other;
    QTest::newRow("button in the title bar") << button << HitRegion::Client;
    HitTestInput titleText = normalWindow({40, 15});
    titleText.titleBarChild = ChildUnderCursor::DragArea;
    QTest::newRow("title text added as drag area") << titleText << HitRegion::Caption;

    HitTestInput notMovable = normalWindow({100, 15});
    notMovable.movable = false;
    QTest::newRow("not movable: title bar") << notMovable << HitRegion::Client;
    notMovable.borderPos = notMovable.pos = QPoint(3, 75);
    QTest::newRow("not movable: border still resizes") << notMovable << HitRegion::Left;

    HitTestInput noTitleBar = normalWindow({100, 15});
    noTitleBar.hasTitleBar = false;
    QTest::newRow("no title bar, no drag areas") << noTitleBar << HitRegion::Client;

    HitTestInput dummy = normalWindow({50, 110});
    dummy.dummyTitleBars.append({QRect(0, 100, 200, 20), false, ChildUnderCursor::None});
    QTest::newRow("dummy title bar") << dummy << HitRegion::Caption;
    dummy.dummyTitleBars[0].child = ChildUnderCursor::Other;
    QTest::newRow("child of a dummy title bar") << dummy << HitRegion::Client;
    dummy.dummyTitleBars[0].child = ChildUnderCursor::DragArea;
    QTest::newRow("dummy title bar inside a dummy title bar") << dummy << HitRegion::Caption;
    dummy.dummyTitleBars[0] = {QRect(0, 100, 200, 20), true, ChildUnderCursor::None};
    QTest::newRow("dummy title bar whose parent is the title bar") << dummy << HitRegion::Client;

    HitTestInput overlapping = normalWindow({50, 110});
    overlapping.dummyTitleBars.append({QRect(0, 100, 200, 20), false, ChildUnderCursor::Other});
    overlapping.dummyTitleBars.append({QRect(0, 90, 200, 40), false, ChildUnderCursor::None});
    QTest::newRow("first dummy title bar under the cursor decides") << overlapping << HitRegion::Client;
    overlapping.pos = overlapping.borderPos = QPoint(50, 125);
    QTest::newRow("second dummy title bar where the first is not") << overlapping << HitRegion::Caption;
    HitTestInput outside = normalWindow({50, 60});
    outside.dummyTitleBars.append({QRect(0, 100, 200, 20), false, ChildUnderCursor::None});
    QTest::newRow("outside every dummy title bar") << outside << HitRegion::Client;
}

void FramelessGeometryTest::hitTest_decidesRegion()
{
    QFETCH(HitTestInput, input);
    QFETCH(HitRegion, expected);
    QCOMPARE(hitTest(input), expected);
}

void FramelessGeometryTest::hitTest_usesBorderPositionOnlyForBorder()
{
    // Twice the device pixel ratio: the border is tested in physical
    // pixels, the title bar in device-independent ones.
    HitTestInput in = normalWindow({100, 15});
    in.borderPos = QPoint(200, 30);
    QCOMPARE(hitTest(in), HitRegion::Right);
    in.borderPos = QPoint(100, 90);
    QCOMPARE(hitTest(in), HitRegion::Caption);
}

void FramelessGeometryTest::isFixedSize_needsBothExtents_data()
{
    QTest::addColumn<QSize>("minimum");
    QTest::addColumn<QSize>("maximum");
    QTest::addColumn<bool>("fixed");
    QTest::newRow("equal") << QSize(300, 200) << QSize(300, 200) << true;
    QTest::newRow("minimum above maximum") << QSize(400, 300) << QSize(300, 200) << true;
    QTest::newRow("only width fixed") << QSize(300, 100) << QSize(300, 200) << false;
    QTest::newRow("only height fixed") << QSize(100, 200) << QSize(300, 200) << false;
    QTest::newRow("free") << QSize(0, 0) << QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX) << false;
}

void FramelessGeometryTest::isFixedSize_needsBothExtents()
{
    QFETCH(QSize, minimum);
    QFETCH(QSize, maximum);
    QFETCH(bool, fixed);
    QCOMPARE(isFixedSize(minimum, maximum), fixed);
}

void FramelessGeometryTest::clampSize_ordersBounds_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("minimum");
    QTest::addColumn<QSize>("maximum");
    QTest::addColumn<QSize>("expected");
    QTest::newRow("inside") << QSize(300, 200) << QSize(100, 100) << QSize(400, 400) << QSize(300, 200);
    QTest::newRow("too small") << QSize(50, 20) << QSize(100, 100) << QSize(400, 400) << QSize(100, 100);
    QTest::newRow("too large") << QSize(900, 900) << QSize(100, 100) << QSize(400, 300) << QSize(400, 300);
    QTest::newRow("bounds swapped") << QSize(900, 10) << QSize(400, 300) << QSize(100, 100)
                                    << QSize(400, 100);
}

void FramelessGeometryTest::clampSize_ordersBounds()
{
    QFETCH(QSize, size);
    QFETCH(QSize, minimum);
    QFETCH(QSize, maximum);
    QFETCH(QSize, expected);
    QCOMPARE(clampSize(size, minimum, maximum), expected);
}

void FramelessGeometryTest::resizedGeometry_anchorsOppositeEdgeWithinLimits_data()
{
    QTest::addColumn<int>("edges");
    QTest::addColumn<QPoint>("delta");
    QTest::addColumn<QRect>("expected");
    // Start: 100,100 300 x 200; limits 200 x 150 .. 400 x 300.
    QTest::newRow("right grows") << int(Qt::RightEdge) << QPoint(50, 7) << QRect(100, 100, 350, 200);
    QTest::newRow("right stops at maximum")
        << int(Qt::RightEdge) << QPoint(500, 0) << QRect(100, 100, 400, 200);
    QTest::newRow("left grows, right edge stays")
        << int(Qt::LeftEdge) << QPoint(-60, 0) << QRect(40, 100, 360, 200);
    QTest::newRow("left stops at minimum, right edge stays")
        << int(Qt::LeftEdge) << QPoint(500, 0) << QRect(200, 100, 200, 200);
    QTest::newRow("top shrinks") << int(Qt::TopEdge) << QPoint(0, 30) << QRect(100, 130, 300, 170);
    QTest::newRow("bottom-right corner")
        << int(Qt::BottomEdge | Qt::RightEdge) << QPoint(20, 1000) << QRect(100, 100, 320, 300);
    QTest::newRow("top-left corner") << int(Qt::TopEdge | Qt::LeftEdge) << QPoint(-20, -20)
                                     << QRect(80, 80, 320, 220);
}

void FramelessGeometryTest::resizedGeometry_anchorsOppositeEdgeWithinLimits()
{
    QFETCH(int, edges);
    QFETCH(QPoint, delta);
    QFETCH(QRect, expected);
    QCOMPARE(
        resizedGeometry(QRect(100, 100, 300, 200), Qt::Edges(edges), delta, QSize(200, 150), QSize(400, 300)),
        expected);
}

void FramelessGeometryTest::compareEdges_alignsOnMovedEdges_data()
{
    QTest::addColumn<QRect>("newRect");
    QTest::addColumn<QRect>("expectedRect");
    QTest::addColumn<QString>("expectedFlags");
    const QRect old(100, 100, 300, 200);
    QTest::newRow("unchanged") << old << old << QString();
    QTest::newRow("left moved left") << QRect(90, 100, 310, 200) << QRect(90, 100, 311, 200) << "H AR";
    QTest::newRow("left moved right") << QRect(110, 100, 290, 200) << QRect(110, 100, 290, 200) << "H AR";
    QTest::newRow("right moved") << QRect(100, 100, 320, 200) << QRect(100, 100, 320, 200) << "H AL";
    QTest::newRow("top moved up") << QRect(100, 80, 300, 220) << QRect(100, 80, 300, 221) << "V AB";
    QTest::newRow("top moved down") << QRect(100, 120, 300, 180) << QRect(100, 120, 300, 180) << "V AB";
    QTest::newRow("bottom moved") << QRect(100, 100, 300, 250) << QRect(100, 100, 300, 250) << "V AT";
    QTest::newRow("whole window moved")
        << QRect(50, 60, 300, 200) << QRect(50, 60, 301, 201) << "H V AL AR AT AB";
}

void FramelessGeometryTest::compareEdges_alignsOnMovedEdges()
{
    QFETCH(QRect, newRect);
    QFETCH(QRect, expectedRect);
    QFETCH(QString, expectedFlags);
    const EdgeComparison out = compareEdges(toRect(newRect), toRect(QRect(100, 100, 300, 200)));
    QCOMPARE(out.rect, toRect(expectedRect));
    QStringList flags;
    if (out.horizontalRedraw)
        flags << QStringLiteral("H");
    if (out.verticalRedraw)
        flags << QStringLiteral("V");
    if (out.alignLeft)
        flags << QStringLiteral("AL");
    if (out.alignRight)
        flags << QStringLiteral("AR");
    if (out.alignTop)
        flags << QStringLiteral("AT");
    if (out.alignBottom)
        flags << QStringLiteral("AB");
    QCOMPARE(flags.join(QLatin1Char(' ')), expectedFlags);
}

void FramelessGeometryTest::maximizedArea_choosesMonitorOrScreen_data()
{
    QTest::addColumn<bool>("fullScreen");
    QTest::addColumn<bool>("haveMonitor");
    QTest::addColumn<QRect>("expected");
    QTest::newRow("maximised: work area") << false << true << QRect(0, 0, 1920, 1040);
    QTest::newRow("full screen: monitor") << true << true << QRect(0, 0, 1920, 1080);
    QTest::newRow("no monitor, maximised: available geometry") << false << false << QRect(0, 30, 1280, 770);
    QTest::newRow("no monitor, full screen: virtual geometry") << true << false << QRect(0, 0, 3200, 800);
}

void FramelessGeometryTest::maximizedArea_choosesMonitorOrScreen()
{
    QFETCH(bool, fullScreen);
    QFETCH(bool, haveMonitor);
    QFETCH(QRect, expected);
    MonitorAreas monitor;
    monitor.monitor = toRect(QRect(0, 0, 1920, 1080));
    monitor.work = toRect(QRect(0, 0, 1920, 1040));
    QCOMPARE(maximizedArea(fullScreen, haveMonitor ? &monitor : nullptr, QRect(0, 0, 3200, 800),
                           QRect(0, 30, 1280, 770)),
             toRect(expected));
}

void FramelessGeometryTest::maximizedRect_keepsProposedWhenWindowCannotGrow_data()
{
    QTest::addColumn<QSize>("minimum");
    QTest::addColumn<QSize>("maximum");
    QTest::addColumn<bool>("fillsArea");
    QTest::newRow("unlimited") << QSize(0, 0) << QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX) << true;
    QTest::newRow("maximum exactly the area") << QSize(0, 0) << QSize(1920, 1040) << true;
    QTest::newRow("maximum smaller than the work area") << QSize(0, 0) << QSize(800, 600) << false;
    QTest::newRow("only the width too small") << QSize(0, 0) << QSize(1000, 5000) << false;
    QTest::newRow("minimum above a small maximum") << QSize(2000, 2000) << QSize(800, 600) << true;
}

void FramelessGeometryTest::maximizedRect_keepsProposedWhenWindowCannotGrow()
{
    QFETCH(QSize, minimum);
    QFETCH(QSize, maximum);
    QFETCH(bool, fillsArea);
    const Rect proposed = toRect(QRect(-8, -8, 1936, 1056));
    const Rect area = toRect(QRect(0, 0, 1920, 1040));
    QCOMPARE(maximizedRect(proposed, area, minimum, maximum), fillsArea ? area : proposed);
}

void FramelessGeometryTest::edgesOf_matchesBorderRegions_data()
{
    QTest::addColumn<HitRegion>("region");
    QTest::addColumn<int>("edges");
    QTest::newRow("left") << HitRegion::Left << int(Qt::LeftEdge);
    QTest::newRow("right") << HitRegion::Right << int(Qt::RightEdge);
    QTest::newRow("top") << HitRegion::Top << int(Qt::TopEdge);
    QTest::newRow("bottom") << HitRegion::Bottom << int(Qt::BottomEdge);
    QTest::newRow("top-left") << HitRegion::TopLeft << int(Qt::TopEdge | Qt::LeftEdge);
    QTest::newRow("top-right") << HitRegion::TopRight << int(Qt::TopEdge | Qt::RightEdge);
    QTest::newRow("bottom-left") << HitRegion::BottomLeft << int(Qt::BottomEdge | Qt::LeftEdge);
    QTest::newRow("bottom-right") << HitRegion::BottomRight << int(Qt::BottomEdge | Qt::RightEdge);
    QTest::newRow("caption") << HitRegion::Caption << 0;
    QTest::newRow("client") << HitRegion::Client << 0;
}

void FramelessGeometryTest::edgesOf_matchesBorderRegions()
{
    QFETCH(HitRegion, region);
    QFETCH(int, edges);
    QCOMPARE(int(edgesOf(region)), edges);
}

QTEST_APPLESS_MAIN(FramelessGeometryTest)
#include "tst_framelessgeometry.moc"
