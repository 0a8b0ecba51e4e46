// The extra option form in English. The language is chosen for the whole
// process, so these checks run in an executable of their own.

#include "Config/UIModuleConfig.h"
#include "UI/SubWidget/ExtraOptionWidget.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QtTest>

class ExtraOptionWidgetEnglishTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void texts_showInEnglish_data();
    void texts_showInEnglish();
    void title_staysUntranslated();
};

void ExtraOptionWidgetEnglishTest::initTestCase()
{
    UIModuleConfig::instance()->setLanguage(QLocale::English);
}

void ExtraOptionWidgetEnglishTest::texts_showInEnglish_data()
{
    QTest::addColumn<QString>("objectName");
    QTest::addColumn<QString>("english");
    QTest::newRow("label") << QStringLiteral("label") << QStringLiteral("Print mode");
    QTest::newRow("manual") << QStringLiteral("radioButton_manualPrintAfterRIP_")
                            << QStringLiteral("Manual print after RIP");
    QTest::newRow("automatic") << QStringLiteral("radioButton_automatedPrintAfterRIP_")
                               << QStringLiteral("Automatic print after RIP");
    QTest::newRow("while ripping") << QStringLiteral("radioButton_printWhileRIP_")
                                   << QStringLiteral("Print while RIP");
    QTest::newRow("mirror") << QStringLiteral("checkBox_horMirror_") << QStringLiteral("Mirror print");
}

void ExtraOptionWidgetEnglishTest::texts_showInEnglish()
{
    QFETCH(QString, objectName);
    QFETCH(QString, english);
    ExtraOptionWidget widget(nullptr);
    QWidget *child = widget.findChild<QWidget *>(objectName);
    QVERIFY2(child, qPrintable(objectName));
    if (auto *label = qobject_cast<QLabel *>(child))
        QCOMPARE(label->text(), english);
    else if (auto *button = qobject_cast<QAbstractButton *>(child))
        QCOMPARE(button->text(), english);
    else
        QFAIL("neither a label nor a button");
}

void ExtraOptionWidgetEnglishTest::title_staysUntranslated()
{
    ExtraOptionWidget widget(nullptr);
    QCOMPARE(widget.windowTitle(), QStringLiteral("Form"));
}

QTEST_MAIN(ExtraOptionWidgetEnglishTest)
#include "tst_extraoptionwidget_english.moc"
