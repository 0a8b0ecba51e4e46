#include "TranslationTable.h"

#include <QCoreApplication>
#include <QTranslator>
#include <QtTest>

namespace {
const QString englishPath = QStringLiteral(":/BexRipEngineDriverUI_RipServer/language/English.qm");
const QString chinesePath = QStringLiteral(":/BexRipEngineDriverUI_RipServer/language/Chinese.qm");
} // namespace

// What users see through each embedded translation file: the English file
// installed in the application turns every source text into its English
// wording, and leaves texts without English wording as they are written.
class TranslationsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void englishMode_showsTheEnglishText_data();
    void englishMode_showsTheEnglishText();
    void englishMode_textWithoutEnglishWording_isShownUnchanged_data();
    void englishMode_textWithoutEnglishWording_isShownUnchanged();
    void chineseFile_translatesNoText_data();
    void chineseFile_translatesNoText();

private:
    QTranslator english_;
};

void TranslationsTest::initTestCase()
{
    QVERIFY(english_.load(englishPath));
    QVERIFY(QCoreApplication::installTranslator(&english_));
}

void TranslationsTest::cleanupTestCase()
{
    QCoreApplication::removeTranslator(&english_);
}

void TranslationsTest::englishMode_showsTheEnglishText_data()
{
    QTest::addColumn<QByteArray>("context");
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("shown");

    const QList<TranslationEntry> &table = englishTranslationTable();
    QCOMPARE(table.size(), 94);
    for (const TranslationEntry &entry : table) {
        const QString shown = entry.english.isNull() ? entry.source : entry.english;
        QTest::addRow("%s: %s", entry.context, qPrintable(entry.source))
            << QByteArray(entry.context) << entry.source << shown;
    }
}

void TranslationsTest::englishMode_showsTheEnglishText()
{
    QFETCH(QByteArray, context);
    QFETCH(QString, source);
    QFETCH(QString, shown);

    QCOMPARE(QCoreApplication::translate(context.constData(), source.toUtf8().constData()), shown);
}

void TranslationsTest::englishMode_textWithoutEnglishWording_isShownUnchanged_data()
{
    QTest::addColumn<QByteArray>("context");
    QTest::addColumn<QString>("source");

    QTest::newRow("Form") << QByteArray("ExtraOptionWidget") << QStringLiteral("Form");
    QTest::newRow("CMYK") << QByteArray("PrinterDriverPropertyDlg") << QStringLiteral("CMYK");
    QTest::newRow("RGB") << QByteArray("PrinterDriverPropertyDlg") << QStringLiteral("RGB");
    QTest::newRow("icc filter") << QByteArray("PrinterDriverPropertyDlg")
                                << QStringLiteral("icc (*.icc *.icm)");
}

void TranslationsTest::englishMode_textWithoutEnglishWording_isShownUnchanged()
{
    QFETCH(QByteArray, context);
    QFETCH(QString, source);

    // English mode is on: a neighbour of the same context is translated.
    QCOMPARE(QCoreApplication::translate("PrinterDriverPropertyDlg", "取消"), QStringLiteral("Cancel"));
    QCOMPARE(QCoreApplication::translate(context.constData(), source.toUtf8().constData()), source);
}

void TranslationsTest::chineseFile_translatesNoText_data()
{
    englishMode_showsTheEnglishText_data();
}

void TranslationsTest::chineseFile_translatesNoText()
{
    QFETCH(QByteArray, context);
    QFETCH(QString, source);

    QTranslator chinese;
    QVERIFY(chinese.load(chinesePath));
    QCOMPARE(chinese.translate(context.constData(), source.toUtf8().constData()), QString());
}

QTEST_GUILESS_MAIN(TranslationsTest)
#include "TranslationsTest.moc"
