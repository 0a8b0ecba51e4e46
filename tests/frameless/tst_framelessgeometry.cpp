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
    in.clientSize = QSize(200, 150);
    in.borderPos = pos;
    in.pos = pos;
    in.borderWidth = 4;
    in.minimumSize = QSize(100, 80);
    in.maximumSize = QSize(1000, 800);
    in.hasTitleBar = true;
    in.titleBarRect = QRect(0, 0, 200, 30);
    return in;
}

// A 400 x 300 (device-independent) resizable window with a 30-pixel title bar
// whose close button sits at its right end, on a monitor of the given origin
// and scale, its client area 150 x 100 physical pixels from the monitor's
// top-left corner.
struct ScaledWindow
{
    QPoint monitorOrigin;
    qreal scale = 1.0;

    QSize logicalSize() const { return QSize(400, 300); }
    QRect titleBar() const { return QRect(0, 0, 400, 30); }
    QRect closeButton() const { return QRect(370, 2, 26, 26); }
    QSize physicalClientSize() const
    {
        return QSize(qRound(logicalSize().width() * scale), qRound(logicalSize().height() * scale));
    }
    QPoint clientOrigin() const { return monitorOrigin + QPoint(150, 100); }
};

// The lParam of a mouse message for a screen point, as Windows packs it: x
// in the low and y in the high word.
qint64 packLParam(const QPoint &screenPos)
{
    return static_cast<qint64>((static_cast<quint32>(screenPos.y()) & 0xffffu) << 16 |
                               (static_cast<quint32>(screenPos.x()) & 0xffffu));
}

// What the window reports for a cursor at a point of its client area given in
// physical pixels: the point goes through the message's lParam, back into
// the client area (what ScreenToClient does for a window that is not
// mirrored) and into the shared decision.
HitRegion nativeHit(const ScaledWindow &window, const QPoint &physicalClientPos)
{
    const QPoint screenPos = pointFromLParam(packLParam(window.clientOrigin() + physicalClientPos));
    const ClientCursor cursor =
        clientCursor(screenPos - window.clientOrigin(), window.physicalClientSize(), window.scale);
    HitTestInput in;
    in.clientSize = cursor.physicalClientSize;
    in.borderPos = cursor.physicalPos;
    in.pos = cursor.logicalPos;
    in.minimumSize = QSize(200, 150);
    in.maximumSize = QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    in.hasTitleBar = true;
    in.titleBarRect = window.titleBar();
    if (window.closeButton().contains(cursor.logicalPos))
        in.titleBarChild = ChildUnderCursor::Other;
    return hitTest(in);
}

} // namespace

Q_DECLARE_METATYPE(ScaledWindow)

class FramelessGeometryTest : public QObject
{
    Q_OBJECT

private slots:
    void hitTest_decidesRegion_data();
    void hitTest_decidesRegion();
    void hitTest_usesBorderPositionOnlyForBorder();
    void pointFromLParam_readsSignedWords_data();
    void pointFromLParam_readsSignedWords();
    void clientCursor_dividesOnlyTheWidgetPosition_data();
    void clientCursor_dividesOnlyTheWidgetPosition();
    void nativeHit_answersAtAnyScaleOnAnyMonitor_data();
    void nativeHit_answersAtAnyScaleOnAnyMonitor();
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
    void toPhysical_scalesScreenAreasAboutTheScreenOrigin_data();
    void toPhysical_scalesScreenAreasAboutTheScreenOrigin();
    void toLogical_undoesToPhysicalAboutTheScreenOrigin_data();
    void toLogical_undoesToPhysicalAboutTheScreenOrigin();
    void toPhysical_scalesSizeLimitsButKeepsUnbounded_data();
    void toPhysical_scalesSizeLimitsButKeepsUnbounded();
    void maximizedRect_windowCannotGrow_keepsTheProposedOne_data();
    void maximizedRect_windowCannotGrow_keepsTheProposedOne();
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

void FramelessGeometryTest::pointFromLParam_readsSignedWords_data()
{
    QTest::addColumn<qint64>("lParam");
    QTest::addColumn<QPoint>("expected");
    QTest::newRow("origin") << qint64(0) << QPoint(0, 0);
    QTest::newRow("primary monitor") << qint64(0x02d00500) << QPoint(1280, 720);
    QTest::newRow("monitor to the left") << qint64(0x0064fc18) << QPoint(-1000, 100);
    QTest::newRow("monitor above") << qint64(0xfe0c0320) << QPoint(800, -500);
    QTest::newRow("monitor above and to the left") << qint64(0xffffffff) << QPoint(-1, -1);
    QTest::newRow("far right of a wide desktop") << qint64(0x00007fff) << QPoint(32767, 0);
    QTest::newRow("far left") << qint64(0x00008000) << QPoint(-32768, 0);
    // Only the low 32 bits carry the point; a 64-bit lParam may have its
    // upper half set by sign extension.
    QTest::newRow("sign-extended upper half") << qint64(-1) << QPoint(-1, -1);
}

void FramelessGeometryTest::pointFromLParam_readsSignedWords()
{
    QFETCH(qint64, lParam);
    QFETCH(QPoint, expected);
    QCOMPARE(pointFromLParam(lParam), expected);
}

void FramelessGeometryTest::clientCursor_dividesOnlyTheWidgetPosition_data()
{
    QTest::addColumn<QPoint>("physical");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<QPoint>("logical");
    QTest::newRow("100 %") << QPoint(301, 17) << 1.0 << QPoint(301, 17);
    QTest::newRow("125 %") << QPoint(301, 17) << 1.25 << QPoint(241, 14);
    QTest::newRow("150 %") << QPoint(301, 17) << 1.5 << QPoint(201, 11);
    QTest::newRow("200 %") << QPoint(301, 17) << 2.0 << QPoint(151, 9);
    QTest::newRow("200 %, on the border") << QPoint(0, 0) << 2.0 << QPoint(0, 0);
}

void FramelessGeometryTest::clientCursor_dividesOnlyTheWidgetPosition()
{
    QFETCH(QPoint, physical);
    QFETCH(qreal, ratio);
    QFETCH(QPoint, logical);
    const ClientCursor cursor = clientCursor(physical, QSize(900, 600), ratio);
    QCOMPARE(cursor.physicalPos, physical);
    QCOMPARE(cursor.physicalClientSize, QSize(900, 600));
    QCOMPARE(cursor.logicalPos, logical);
}

void FramelessGeometryTest::nativeHit_answersAtAnyScaleOnAnyMonitor_data()
{
    QTest::addColumn<ScaledWindow>("window");
    QTest::addColumn<QPoint>("physicalClientPos");
    QTest::addColumn<HitRegion>("expected");

    const QList<qreal> scales{1.0, 1.25, 1.5, 2.0};
    // Origins of the monitor the window is on, in the desktop's physical
    // coordinates, whose origin is the primary monitor's top-left corner.
    const QList<QPair<const char *, QPoint>> monitors{
        {"primary", QPoint(0, 0)},
        {"left of the primary", QPoint(-2560, 0)},
        {"above the primary", QPoint(0, -1440)},
        {"right of the primary", QPoint(1920, 0)},
        {"left of and above the primary", QPoint(-3840, -2160)}};
    for (const auto &monitor : monitors) {
        for (const qreal scale : scales) {
            ScaledWindow w{monitor.second, scale};
            const int width = w.physicalClientSize().width();
            const int height = w.physicalClientSize().height();
            // Device-independent points, in physical pixels at this scale.
            const auto at = [scale](int x, int y) { return QPoint(qRound(x * scale), qRound(y * scale)); };
            const QByteArray row =
                QByteArray(monitor.first) + ", " + QByteArray::number(scale * 100) + " %: ";
            const auto add = [&](const char *name, const QPoint &pos, HitRegion expected) {
                QTest::newRow((row + name).constData()) << w << pos << expected;
            };
            // The border is 4 physical pixels wide at every scale.
            add("3 px inside the left edge", QPoint(3, height / 2), HitRegion::Left);
            add("4 px inside the left edge", QPoint(4, height / 2), HitRegion::Client);
            add("3 px inside the right edge", QPoint(width - 3, height / 2), HitRegion::Right);
            add("4 px inside the right edge", QPoint(width - 4, height / 2), HitRegion::Client);
            add("3 px inside the bottom edge", QPoint(width / 2, height - 3), HitRegion::Bottom);
            add("top-left corner", QPoint(3, 3), HitRegion::TopLeft);
            add("top-right corner", QPoint(width - 3, 3), HitRegion::TopRight);
            add("bottom-left corner", QPoint(3, height - 3), HitRegion::BottomLeft);
            add("bottom-right corner", QPoint(width - 3, height - 3), HitRegion::BottomRight);
            add("3 px inside the top edge, in the title bar", QPoint(width / 2, 3), HitRegion::Top);
            add("empty title bar near its left end", at(10, 15), HitRegion::Caption);
            add("empty title bar", at(200, 15), HitRegion::Caption);
            add("title bar just left of the close button", at(368, 15), HitRegion::Caption);
            add("close button", at(383, 15), HitRegion::Client);
            add("just below the title bar", at(200, 31), HitRegion::Client);
            add("middle of the window", at(200, 150), HitRegion::Client);
        }
    }
}

void FramelessGeometryTest::nativeHit_answersAtAnyScaleOnAnyMonitor()
{
    QFETCH(ScaledWindow, window);
    QFETCH(QPoint, physicalClientPos);
    QFETCH(HitRegion, expected);
    QCOMPARE(nativeHit(window, physicalClientPos), expected);
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
    QTest::addColumn<bool>("haveScreen");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<QRect>("expected");
    QTest::newRow("maximised: work area") << false << true << true << 1.0 << QRect(0, 0, 1920, 1040);
    QTest::newRow("full screen: monitor") << true << true << true << 1.0 << QRect(0, 0, 1920, 1080);
    QTest::newRow("no monitor, maximised: available geometry")
        << false << false << true << 1.0 << QRect(0, 30, 1280, 770);
    QTest::newRow("no monitor, full screen: virtual geometry")
        << true << false << true << 1.0 << QRect(0, 0, 3200, 800);
    // The screen's areas are scaled about its top-left corner, which Qt
    // keeps at its physical place.
    QTest::newRow("no monitor, maximised at 150 %: physical available geometry")
        << false << false << true << 1.5 << QRect(0, 45, 1920, 1155);
    QTest::newRow("no monitor, full screen at 200 %: physical virtual geometry")
        << true << false << true << 2.0 << QRect(0, 0, 6400, 1600);
    QTest::newRow("no monitor, no screen: proposed rectangle")
        << false << false << false << 1.0 << QRect(-8, -8, 1936, 1056);
}

void FramelessGeometryTest::maximizedArea_choosesMonitorOrScreen()
{
    QFETCH(bool, fullScreen);
    QFETCH(bool, haveMonitor);
    QFETCH(bool, haveScreen);
    QFETCH(qreal, ratio);
    QFETCH(QRect, expected);
    MonitorAreas monitor;
    monitor.monitor = toRect(QRect(0, 0, 1920, 1080));
    monitor.work = toRect(QRect(0, 0, 1920, 1040));
    ScreenGeometry screen;
    screen.geometry = QRect(0, 0, 1280, 800);
    screen.availableGeometry = QRect(0, 30, 1280, 770);
    screen.virtualGeometry = QRect(0, 0, 3200, 800);
    screen.devicePixelRatio = ratio;
    QCOMPARE(maximizedArea(fullScreen, haveMonitor ? &monitor : nullptr, haveScreen ? &screen : nullptr,
                           toRect(QRect(-8, -8, 1936, 1056))),
             toRect(expected));
}

void FramelessGeometryTest::toLogical_undoesToPhysicalAboutTheScreenOrigin_data()
{
    QTest::addColumn<QPoint>("physical");
    QTest::addColumn<QPoint>("origin");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<QPoint>("expected");
    QTest::newRow("100 %") << QPoint(545, 344) << QPoint(0, 0) << 1.0 << QPoint(545, 344);
    QTest::newRow("200 %") << QPoint(1090, 688) << QPoint(0, 0) << 2.0 << QPoint(545, 344);
    QTest::newRow("150 %, rounded") << QPoint(301, 151) << QPoint(0, 0) << 1.5 << QPoint(201, 101);
    QTest::newRow("left of the primary, 200 %")
        << QPoint(-2000, 100) << QPoint(-2560, 0) << 2.0 << QPoint(-2280, 50);
    QTest::newRow("above the primary, 125 %")
        << QPoint(250, -1190) << QPoint(0, -1440) << 1.25 << QPoint(200, -1240);
    QTest::newRow("no ratio known") << QPoint(7, 9) << QPoint(0, 0) << 0.0 << QPoint(7, 9);
}

void FramelessGeometryTest::toLogical_undoesToPhysicalAboutTheScreenOrigin()
{
    QFETCH(QPoint, physical);
    QFETCH(QPoint, origin);
    QFETCH(qreal, ratio);
    QFETCH(QPoint, expected);
    QCOMPARE(toLogical(physical, origin, ratio), expected);
    if (ratio > 0) {
        // And back: the physical corner of the logical point is within one
        // scaled pixel of where it came from.
        const Rect back = toPhysical(QRect(expected, QSize(1, 1)), origin, ratio);
        QVERIFY(qAbs(back.left - physical.x()) <= qCeil(ratio));
        QVERIFY(qAbs(back.top - physical.y()) <= qCeil(ratio));
    }
}

void FramelessGeometryTest::toPhysical_scalesScreenAreasAboutTheScreenOrigin_data()
{
    QTest::addColumn<QRect>("logical");
    QTest::addColumn<QPoint>("origin");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<QRect>("expected");
    // A 2560 x 1440 monitor whose taskbar takes 40 physical pixels at the
    // bottom, at each scale, as Qt reports its available geometry.
    QTest::newRow("primary, 100 %") << QRect(0, 0, 2560, 1400) << QPoint(0, 0) << 1.0
                                    << QRect(0, 0, 2560, 1400);
    QTest::newRow("primary, 125 %") << QRect(0, 0, 2048, 1120) << QPoint(0, 0) << 1.25
                                    << QRect(0, 0, 2560, 1400);
    QTest::newRow("primary, 150 %") << QRect(0, 0, 1707, 933) << QPoint(0, 0) << 1.5
                                    << QRect(0, 0, 2561, 1400);
    QTest::newRow("primary, 200 %") << QRect(0, 0, 1280, 700) << QPoint(0, 0) << 2.0
                                    << QRect(0, 0, 2560, 1400);
    QTest::newRow("left of the primary, 150 %")
        << QRect(-2560, 0, 1707, 933) << QPoint(-2560, 0) << 1.5 << QRect(-2560, 0, 2561, 1400);
    QTest::newRow("above the primary, 200 %")
        << QRect(0, -1440, 1280, 700) << QPoint(0, -1440) << 2.0 << QRect(0, -1440, 2560, 1400);
    QTest::newRow("right of the primary, 125 %")
        << QRect(1920, 0, 2048, 1120) << QPoint(1920, 0) << 1.25 << QRect(1920, 0, 2560, 1400);
    // A taskbar at the top or left moves the available area's corner away
    // from the screen's.
    QTest::newRow("taskbar on the left, 200 %, left of the primary")
        << QRect(-2540, 0, 1270, 720) << QPoint(-2560, 0) << 2.0 << QRect(-2520, 0, 2540, 1440);
}

void FramelessGeometryTest::toPhysical_scalesScreenAreasAboutTheScreenOrigin()
{
    QFETCH(QRect, logical);
    QFETCH(QPoint, origin);
    QFETCH(qreal, ratio);
    QFETCH(QRect, expected);
    QCOMPARE(toPhysical(logical, origin, ratio), toRect(expected));
}

void FramelessGeometryTest::toPhysical_scalesSizeLimitsButKeepsUnbounded_data()
{
    QTest::addColumn<QSize>("logical");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<QSize>("expected");
    QTest::newRow("100 %") << QSize(800, 600) << 1.0 << QSize(800, 600);
    QTest::newRow("125 %") << QSize(800, 600) << 1.25 << QSize(1000, 750);
    QTest::newRow("150 %") << QSize(801, 601) << 1.5 << QSize(1202, 902);
    QTest::newRow("200 %") << QSize(800, 600) << 2.0 << QSize(1600, 1200);
    QTest::newRow("unbounded stays unbounded")
        << QSize(QWIDGETSIZE_MAX, 600) << 2.0 << QSize(QWIDGETSIZE_MAX, 1200);
    QTest::newRow("never beyond unbounded")
        << QSize(QWIDGETSIZE_MAX - 1, QWIDGETSIZE_MAX - 2) << 1.5 << QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
}

void FramelessGeometryTest::toPhysical_scalesSizeLimitsButKeepsUnbounded()
{
    QFETCH(QSize, logical);
    QFETCH(qreal, ratio);
    QFETCH(QSize, expected);
    QCOMPARE(toPhysical(logical, ratio), expected);
}

void FramelessGeometryTest::maximizedRect_windowCannotGrow_keepsTheProposedOne_data()
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

void FramelessGeometryTest::maximizedRect_windowCannotGrow_keepsTheProposedOne()
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
