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
    void language_beforeFirstChoice_isAny();
    void translators_beforeFirstChoice_noneExists();
    void texts_beforeFirstChoice_areTheSourceTexts_data();
    void texts_beforeFirstChoice_areTheSourceTexts();
};

void UIModuleConfigInitialTest::language_beforeFirstChoice_isAny()
{
    QCOMPARE(UIModuleConfig::instance()->language(), QLocale::AnyLanguage);
    QCOMPARE(int(UIModuleConfig::instance()->language()), 0);
}

void UIModuleConfigInitialTest::translators_beforeFirstChoice_noneExists()
{
    QVERIFY(UIModuleConfig::instance()->findChildren<QTranslator *>().isEmpty());
}

void UIModuleConfigInitialTest::texts_beforeFirstChoice_areTheSourceTexts_data()
{
    addSourceTextRows();
}

void UIModuleConfigInitialTest::texts_beforeFirstChoice_areTheSourceTexts()
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
