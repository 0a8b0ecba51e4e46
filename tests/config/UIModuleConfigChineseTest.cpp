#include "ConfigTestSupport.h"
#include "LogCapture.h"
#include "TranslationTable.h"

#include "Config/UIModuleConfig.h"

#include <QCoreApplication>
#include <QTranslator>
#include <QtTest>

// Choosing Chinese in a process where English has never been chosen. No test
// here chooses English, so no English translator can answer underneath.
class UIModuleConfigChineseTest : public QObject
{
    Q_OBJECT

private slots:
    void setLanguage_chinese_loadsItsEmptyTranslation();
    void texts_afterChoosingChinese_stayChinese_data();
    void texts_afterChoosingChinese_stayChinese();
};

void UIModuleConfigChineseTest::setLanguage_chinese_loadsItsEmptyTranslation()
{
    UIModuleConfig *config = UIModuleConfig::instance();
    if (config->language() == QLocale::Chinese)
        config->setLanguage(QLocale::German);
    const int translators = config->findChildren<QTranslator *>().size();
    LogCapture log;

    config->setLanguage(QLocale::Chinese);

    QCOMPARE(config->language(), QLocale::Chinese);
    const QList<LogCapture::Entry> traces = log.find(QtDebugMsg, QStringLiteral("中文"));
    QVERIFY2(traces.size() == 1, qPrintable(log.dump()));
    QCOMPARE(traces.first().message, QStringLiteral("中文"));
    QCOMPARE(traces.first().file, ConfigFiles::uiModuleConfig());
    QCOMPARE(traces.first().function, ConfigSignatures::setLanguage());
    // The file was found and read: no load failure, and the translator that
    // read it is kept by the configuration.
    QVERIFY2(!log.contains(QtWarningMsg, QStringLiteral("语言文件加载失败")), qPrintable(log.dump()));
    QCOMPARE(config->findChildren<QTranslator *>().size(), translators + 1);
    // Qt declines to install a translator that holds no message; that is
    // reported, and the translator stays with the configuration regardless.
    const QList<LogCapture::Entry> refusals = log.find(QtCriticalMsg, QStringLiteral("语言文件安装失败"));
    QVERIFY2(refusals.size() == 1, qPrintable(log.dump()));
    QCOMPARE(refusals.first().file, ConfigFiles::uiModuleConfig());
    QCOMPARE(refusals.first().function, ConfigSignatures::setLanguage());
}

void UIModuleConfigChineseTest::texts_afterChoosingChinese_stayChinese_data()
{
    addSourceTextRows();
}

void UIModuleConfigChineseTest::texts_afterChoosingChinese_stayChinese()
{
    QFETCH(QByteArray, context);
    QFETCH(QString, source);

    UIModuleConfig::instance()->setLanguage(QLocale::Chinese);

    QCOMPARE(UIModuleConfig::instance()->language(), QLocale::Chinese);
    QCOMPARE(QCoreApplication::translate(context.constData(), source.toUtf8().constData()), source);
}

QTEST_GUILESS_MAIN(UIModuleConfigChineseTest)
#include "UIModuleConfigChineseTest.moc"
