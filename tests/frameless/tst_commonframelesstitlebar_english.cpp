#include "Config/UIModuleConfig.h"
#include "FramelessWidget/Common/CommonFramelessTitleBar.h"

#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>

// The title bar's tool tips after the host has chosen English. The language
// is process-wide, so these checks live in an executable of their own.
class CommonFramelessTitleBarEnglishTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void toolTips_showInEnglish_data();
    void toolTips_showInEnglish();
    void maximizeButton_followsStateWithEnglishToolTips();
};

namespace {

QPushButton *buttonOf(const CommonFramelessTitleBar *titleBar, const QString &name)
{
    return titleBar->findChild<QPushButton *>(name);
}

} // namespace

void CommonFramelessTitleBarEnglishTest::initTestCase()
{
    UIModuleConfig::instance()->setLanguage(QLocale::English);
    QCOMPARE(UIModuleConfig::instance()->language(), QLocale::English);
}

void CommonFramelessTitleBarEnglishTest::toolTips_showInEnglish_data()
{
    QTest::addColumn<QString>("objectName");
    QTest::addColumn<QString>("english");

    QTest::newRow("minimize") << QStringLiteral("framelessTitleBar_btnMin") << QStringLiteral("Minimize");
    QTest::newRow("maximize") << QStringLiteral("framelessTitleBar_btnRestore") << QStringLiteral("Maximize");
    QTest::newRow("close") << QStringLiteral("framelessTitleBar_btnClose") << QStringLiteral("Close");
}

void CommonFramelessTitleBarEnglishTest::toolTips_showInEnglish()
{
    QFETCH(QString, objectName);
    QFETCH(QString, english);

    QWidget window;
    auto *titleBar = new CommonFramelessTitleBar(&window);
    QPushButton *button = buttonOf(titleBar, objectName);
    QVERIFY2(button, qPrintable(objectName));
    QCOMPARE(button->toolTip(), english);
}

void CommonFramelessTitleBarEnglishTest::maximizeButton_followsStateWithEnglishToolTips()
{
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *titleBar = new CommonFramelessTitleBar(&window);
    layout->addWidget(titleBar);
    QPushButton *button = buttonOf(titleBar, QStringLiteral("framelessTitleBar_btnRestore"));
    QVERIFY(button);

    window.setWindowState(Qt::WindowMaximized);
    QCOMPARE(button->toolTip(), QStringLiteral("Restore"));
    window.setWindowState(Qt::WindowNoState);
    QCOMPARE(button->toolTip(), QStringLiteral("Maximize"));
}

QTEST_MAIN(CommonFramelessTitleBarEnglishTest)
#include "tst_commonframelesstitlebar_english.moc"
