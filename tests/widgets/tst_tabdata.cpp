#include "UI/SubWidget/InkOrderWidget.h"
#include "UI/SubWidget/TabBarStyle.h"

#include "LogCapture.h"

#include <QTabBar>
#include <QtTest>

namespace {

// Tab data of a kind the ink order widget does not know.
class OtherTabData : public TabBarStyle::ITabData
{
public:
    explicit OtherTabData(int type)
        : type_(type)
    {}
    int type() const override { return type_; }
    QColor backgroundColor() const override { return Qt::red; }

private:
    int type_;
};

void setData(QTabBar *tabBar, int index, TabBarStyle::ITabData *data)
{
    tabBar->setTabData(index, QVariant::fromValue(QSharedPointer<TabBarStyle::ITabData>(data)));
}

} // namespace

class TabDataTest : public QObject
{
    Q_OBJECT

private slots:
    void construction_setsTypeOneAndTheInk();
    void fillColour_isTheInkColourOnlyWhileOn();
    void tabData_returnsTheTabsOwnData();
    void tabData_indexOutOfRange_isNullWithoutALog_data();
    void tabData_indexOutOfRange_isNullWithoutALog();
    void tabData_reportsDataOfAnotherKind_data();
    void tabData_reportsDataOfAnotherKind();
};

void TabDataTest::construction_setsTypeOneAndTheInk()
{
    const TabData data(4, true, Qt::cyan, Qt::gray);
    QCOMPARE(data.type(), 1);
    QCOMPARE(data.inkId, 4);
    QVERIFY(data.isOn);
    QCOMPARE(data.color, QColor(Qt::cyan));
    QCOMPARE(data.offColor, QColor(Qt::gray));
}

void TabDataTest::fillColour_isTheInkColourOnlyWhileOn()
{
    TabData data(0, true, Qt::magenta, QColor(153, 153, 153));
    QCOMPARE(data.backgroundColor(), QColor(Qt::magenta));
    data.isOn = false;
    QCOMPARE(data.backgroundColor(), QColor(153, 153, 153));
    data.offColor = QColor();
    QVERIFY(!data.backgroundColor().isValid());
}

void TabDataTest::tabData_returnsTheTabsOwnData()
{
    QTabBar tabBar;
    tabBar.addTab(QStringLiteral("C"));
    auto *data = new TabData(7, true, Qt::cyan, Qt::gray);
    setData(&tabBar, 0, data);

    const QSharedPointer<TabData> found = getTabData(&tabBar, 0);
    QCOMPARE(found.data(), data);
    // Shared, not copied: a change shows in the tab's data.
    found->isOn = false;
    const auto stored = tabBar.tabData(0).value<QSharedPointer<TabBarStyle::ITabData>>();
    QCOMPARE(stored->backgroundColor(), QColor(Qt::gray));
}

void TabDataTest::tabData_indexOutOfRange_isNullWithoutALog_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("-1") << -1;
    QTest::newRow("count") << 1;
    QTest::newRow("far") << 100;
}

void TabDataTest::tabData_indexOutOfRange_isNullWithoutALog()
{
    QFETCH(int, index);
    QTabBar tabBar;
    tabBar.addTab(QStringLiteral("C"));
    setData(&tabBar, 0, new TabData(0, true, Qt::cyan, Qt::gray));
    LogCapture log;

    QVERIFY(!getTabData(&tabBar, index));
    QCOMPARE(log.entries().size(), 0);
}

void TabDataTest::tabData_reportsDataOfAnotherKind_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("no data") << QStringLiteral("none");
    QTest::newRow("text") << QStringLiteral("text");
    QTest::newRow("null pointer") << QStringLiteral("null");
    QTest::newRow("another type") << QStringLiteral("type2");
    QTest::newRow("type 1 of another class") << QStringLiteral("type1");
}

void TabDataTest::tabData_reportsDataOfAnotherKind()
{
    QFETCH(QString, kind);
    QTabBar tabBar;
    tabBar.addTab(QStringLiteral("C"));
    if (kind == QLatin1String("text"))
        tabBar.setTabData(0, QStringLiteral("C"));
    else if (kind == QLatin1String("null"))
        setData(&tabBar, 0, nullptr);
    else if (kind == QLatin1String("type2"))
        setData(&tabBar, 0, new OtherTabData(2));
    else if (kind == QLatin1String("type1"))
        setData(&tabBar, 0, new OtherTabData(1));
    LogCapture log;

    QVERIFY(!getTabData(&tabBar, 0));

    const auto lines = log.find(QtCriticalMsg, QStringLiteral("check your code!"));
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().file, QStringLiteral("source/UI/SubWidget/InkOrderWidget"));
    QVERIFY2(lines.first().function.contains(QStringLiteral("getTabData(QTabBar*, int)")),
             qPrintable(lines.first().function));
}

QTEST_MAIN(TabDataTest)
#include "tst_tabdata.moc"
