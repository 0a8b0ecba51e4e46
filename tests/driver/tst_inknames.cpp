// The one table of ink names: what kind of ink a channel name stands for,
// how the ink section labels it and which colour its tab shows.

#include "Driver/InkNames.h"

#include <QtTest>

Q_DECLARE_METATYPE(bex::InkKind)

class InkNamesTest : public QObject
{
    Q_OBJECT

private slots:
    void inkName_byChannelName_givesKindLabelStyleAndColour_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bex::InkKind>("kind");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("styleWord");
        QTest::addColumn<QColor>("colour");
        const auto process = bex::InkKind::Process;
        const auto light = bex::InkKind::Light;
        const auto spot = bex::InkKind::Spot;
        QTest::newRow("C") << "C" << process << "青色(C)"
                           << "Cyan" << QColor(Qt::cyan);
        QTest::newRow("cyan") << "cyan" << process << "青色(C)"
                              << "Cyan" << QColor(Qt::cyan);
        QTest::newRow("m") << "m" << process << "品红(M)"
                           << "Magenta" << QColor(Qt::magenta);
        QTest::newRow("MAGENTA") << "MAGENTA" << process << "品红(M)"
                                 << "Magenta" << QColor(Qt::magenta);
        QTest::newRow("Y") << "Y" << process << "黄色(Y)"
                           << "Yellow" << QColor(Qt::yellow);
        QTest::newRow("Yellow") << "Yellow" << process << "黄色(Y)"
                                << "Yellow" << QColor(Qt::yellow);
        QTest::newRow("k") << "k" << process << "黑色(K)"
                           << "Black" << QColor(Qt::black);
        QTest::newRow("Black") << "Black" << process << "黑色(K)"
                               << "Black" << QColor(Qt::black);
        QTest::newRow("LC") << "LC" << light << ""
                            << "White" << QColor(224, 255, 255);
        QTest::newRow("lc") << "lc" << light << ""
                            << "White" << QColor(224, 255, 255);
        QTest::newRow("Lm") << "Lm" << light << ""
                            << "White" << QColor(255, 224, 255);
        QTest::newRow("R") << "R" << spot << ""
                           << "White" << QColor(252, 16, 16);
        QTest::newRow("b") << "b" << spot << ""
                           << "White" << QColor(82, 50, 141);
        QTest::newRow("White") << "White" << spot << ""
                               << "White" << QColor(Qt::white);
        QTest::newRow("Varnish") << "Varnish" << spot << ""
                                 << "White" << QColor(Qt::white);
        QTest::newRow("Orange") << "Orange" << spot << ""
                                << "White" << QColor(Qt::white);
        QTest::newRow("Cy") << "Cy" << spot << ""
                            << "White" << QColor(Qt::white);
        QTest::newRow("empty") << "" << spot << ""
                               << "White" << QColor(Qt::white);
    }

    void inkName_byChannelName_givesKindLabelStyleAndColour()
    {
        QFETCH(QString, name);
        QFETCH(bex::InkKind, kind);
        QFETCH(QString, label);
        QFETCH(QString, styleWord);
        QFETCH(QColor, colour);
        const bex::InkName ink = bex::inkName(name);
        QCOMPARE(int(ink.kind), int(kind));
        QCOMPARE(ink.label ? QString::fromUtf8(ink.label) : QString(), label);
        QCOMPARE(QString::fromLatin1(ink.styleWord), styleWord);
        QCOMPARE(ink.colour, colour);
        // The host's spot colours are exactly the spot inks of the table.
        QCOMPARE(bex::isSpotInk(name), kind == bex::InkKind::Spot);
    }

    void densityFollowsFullInk_namesBeginningWithL_only_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("follows");
        QTest::newRow("LC") << "LC" << true;
        QTest::newRow("lm") << "lm" << true;
        QTest::newRow("LK") << "LK" << true;
        QTest::newRow("Lemon") << "Lemon" << true;
        QTest::newRow("C") << "C" << false;
        QTest::newRow("White") << "White" << false;
        QTest::newRow("empty") << "" << false;
    }

    void densityFollowsFullInk_namesBeginningWithL_only()
    {
        QFETCH(QString, name);
        QFETCH(bool, follows);
        QCOMPARE(bex::densityFollowsFullInk(name), follows);
    }
};

QTEST_GUILESS_MAIN(InkNamesTest)
#include "tst_inknames.moc"
