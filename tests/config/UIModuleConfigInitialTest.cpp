#include "TranslationTable.h"

#include "Config/UIModuleConfig.h"

#include <QCoreApplication>
#include <QTranslator>
#include <QtTest>

// The language configuration before the host chooses any language. Nothing
// in this executable calls setLanguage(), so every test sees that state.
class UIModuleConfigInitialTest : public QObject
{
    Q_OBJECT

private slots:
    void languageIsAnyBeforeFirstChoice();
    void noTranslatorExistsBeforeFirstChoice();
    void sourceTextsAreShownBeforeFirstChoice_data();
    void sourceTextsAreShownBeforeFirstChoice();
};

void UIModuleConfigInitialTest::languageIsAnyBeforeFirstChoice()
{
    QCOMPARE(UIModuleConfig::instance()->language(), QLocale::AnyLanguage);
    QCOMPARE(int(UIModuleConfig::instance()->language()), 0);
}

void UIModuleConfigInitialTest::noTranslatorExistsBeforeFirstChoice()
{
    QVERIFY(UIModuleConfig::instance()->findChildren<QTranslator *>().isEmpty());
}

void UIModuleConfigInitialTest::sourceTextsAreShownBeforeFirstChoice_data()
{
    addSourceTextRows();
}

void UIModuleConfigInitialTest::sourceTextsAreShownBeforeFirstChoice()
{
    QFETCH(QByteArray, context);
    QFETCH(QString, source);
    // The configuration exists (its directories are in use) yet no language
    // has been chosen: the Chinese source text is what users see.
    QVERIFY(UIModuleConfig::instance());
    QCOMPARE(QCoreApplication::translate(context.constData(), source.toUtf8().constData()), source);
}

QTEST_GUILESS_MAIN(UIModuleConfigInitialTest)
#include "UIModuleConfigInitialTest.moc"
