#include "ConfigTestSupport.h"
#include "LogCapture.h"
#include "TestAppDir.h"

#include "Config/UIModuleConfig.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTranslator>
#include <QtTest>

namespace {

// Counts the language-change events the application receives: Qt sends one
// each time a translator with messages is installed or removed.
class LanguageChangeCounter : public QObject
{
public:
    LanguageChangeCounter() { QCoreApplication::instance()->installEventFilter(this); }
    ~LanguageChangeCounter() override { QCoreApplication::instance()->removeEventFilter(this); }

    int count() const { return count_; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == QCoreApplication::instance() && event->type() == QEvent::LanguageChange)
            ++count_;
        return false;
    }

private:
    int count_ = 0;
};

int translatorCount()
{
    return UIModuleConfig::instance()
        ->findChildren<QTranslator *>(QString(), Qt::FindDirectChildrenOnly)
        .size();
}

QString closeButtonText()
{
    return QCoreApplication::translate("CommonFramelessTitleBar", "关闭");
}

// Chooses a language other than the one given, so that the next call with
// that language is a real switch whatever the earlier tests chose. German
// has no translation file: nothing is installed on the way.
void leaveLanguage(QLocale::Language language)
{
    UIModuleConfig *config = UIModuleConfig::instance();
    if (config->language() == language)
        config->setLanguage(language == QLocale::German ? QLocale::French : QLocale::German);
}

} // namespace

class UIModuleConfigTest : public QObject
{
    Q_OBJECT

private slots:
    void instance_isOneObjectWithoutParent();
    void directories_followTheApplicationDirectory();
    void setLanguage_sameLanguageTwice_doesNothingTheSecondTime_data();
    void setLanguage_sameLanguageTwice_doesNothingTheSecondTime();
    void setLanguage_german_isRecordedAndLogsTheLoadFailure();
    void setLanguage_german_leavesTheInstalledLanguage();
    void setLanguage_english_showsEnglishTexts();
    void setLanguage_englishChineseEnglish_createsThreeTranslatorsAndInstallsThoseLoaded();
};

void UIModuleConfigTest::instance_isOneObjectWithoutParent()
{
    UIModuleConfig *config = UIModuleConfig::instance();
    QVERIFY(config);
    QCOMPARE(UIModuleConfig::instance(), config);
    QCOMPARE(config->parent(), nullptr);
}

void UIModuleConfigTest::directories_followTheApplicationDirectory()
{
    const UIModuleConfig *config = UIModuleConfig::instance();
    QCOMPARE(config->configDir(), TestAppDir::path());
    QCOMPARE(config->cacheDir(), TestAppDir::path() + QStringLiteral("/cache"));
}

void UIModuleConfigTest::setLanguage_sameLanguageTwice_doesNothingTheSecondTime_data()
{
    QTest::addColumn<QLocale::Language>("language");
    QTest::newRow("English") << QLocale::English;
    QTest::newRow("Chinese") << QLocale::Chinese;
    QTest::newRow("German") << QLocale::German;
}

void UIModuleConfigTest::setLanguage_sameLanguageTwice_doesNothingTheSecondTime()
{
    QFETCH(QLocale::Language, language);
    UIModuleConfig *config = UIModuleConfig::instance();
    config->setLanguage(language);
    QCOMPARE(config->language(), language);

    const int translators = translatorCount();
    const QString shown = closeButtonText();
    LanguageChangeCounter changes;
    LogCapture log;

    config->setLanguage(language);

    QCOMPARE(config->language(), language);
    QCOMPARE(translatorCount(), translators);
    QCOMPARE(changes.count(), 0);
    QVERIFY2(log.entries().isEmpty(), qPrintable(log.dump()));
    QCOMPARE(closeButtonText(), shown);
}

void UIModuleConfigTest::setLanguage_german_isRecordedAndLogsTheLoadFailure()
{
    leaveLanguage(QLocale::German);
    UIModuleConfig *config = UIModuleConfig::instance();
    const int translators = translatorCount();
    LogCapture log;

    config->setLanguage(QLocale::German);

    QCOMPARE(config->language(), QLocale::German);
    const QList<LogCapture::Entry> failures = log.find(QtWarningMsg, QStringLiteral("语言文件加载失败"));
    QVERIFY2(failures.size() == 1, qPrintable(log.dump()));
    const LogCapture::Entry &failure = failures.first();
    QCOMPARE(failure.message, QStringLiteral("语言文件加载失败"));
    QCOMPARE(failure.file, ConfigFiles::uiModuleConfig());
    QCOMPARE(failure.function, ConfigSignatures::setLanguage());
    QCOMPARE(failure.category, ConfigFiles::category());
    QVERIFY(failure.line > 0);
    // The translator made for the attempt is gone again.
    QCOMPARE(translatorCount(), translators);
    QVERIFY2(!log.contains(QtDebugMsg, QStringLiteral("英文")), qPrintable(log.dump()));
    QVERIFY2(!log.contains(QtDebugMsg, QStringLiteral("中文")), qPrintable(log.dump()));
}

void UIModuleConfigTest::setLanguage_german_leavesTheInstalledLanguage()
{
    UIModuleConfig *config = UIModuleConfig::instance();
    leaveLanguage(QLocale::English);
    config->setLanguage(QLocale::English);
    QCOMPARE(closeButtonText(), QStringLiteral("Close"));
    LanguageChangeCounter changes;

    config->setLanguage(QLocale::German);

    QCOMPARE(config->language(), QLocale::German);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(closeButtonText(), QStringLiteral("Close"));
}

void UIModuleConfigTest::setLanguage_english_showsEnglishTexts()
{
    UIModuleConfig *config = UIModuleConfig::instance();
    leaveLanguage(QLocale::English);
    LogCapture log;

    config->setLanguage(QLocale::English);

    QCOMPARE(config->language(), QLocale::English);
    QCOMPARE(log.count(QtDebugMsg, QStringLiteral("英文")), 1);
    QVERIFY2(!log.contains(QtWarningMsg, QStringLiteral("语言文件加载失败")), qPrintable(log.dump()));
    QVERIFY2(!log.contains(QtCriticalMsg, QStringLiteral("语言文件安装失败")), qPrintable(log.dump()));
    QCOMPARE(closeButtonText(), QStringLiteral("Close"));
    QCOMPARE(QCoreApplication::translate("PrinterDriverPropertyDlg", "其他选项"),
             QStringLiteral("Ohter options"));
    QCOMPARE(QCoreApplication::translate("QObject", "温馨提示"), QStringLiteral("Reminder"));
}

void UIModuleConfigTest::setLanguage_englishChineseEnglish_createsThreeTranslatorsAndInstallsThoseLoaded()
{
    UIModuleConfig *config = UIModuleConfig::instance();
    leaveLanguage(QLocale::English);
    const int translators = translatorCount();
    LanguageChangeCounter changes;
    LogCapture log;

    config->setLanguage(QLocale::English);
    QCOMPARE(translatorCount(), translators + 1);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(closeButtonText(), QStringLiteral("Close"));

    config->setLanguage(QLocale::Chinese);
    QCOMPARE(config->language(), QLocale::Chinese);
    QCOMPARE(translatorCount(), translators + 2);
    // The Chinese file holds no message, so installing it changes no text:
    // the English translator installed before stays underneath and still
    // answers every text.
    QCOMPARE(changes.count(), 1);
    QCOMPARE(closeButtonText(), QStringLiteral("Close"));

    config->setLanguage(QLocale::English);
    QCOMPARE(config->language(), QLocale::English);
    QCOMPARE(translatorCount(), translators + 3);
    QCOMPARE(changes.count(), 2);
    QCOMPARE(closeButtonText(), QStringLiteral("Close"));

    QCOMPARE(log.count(QtDebugMsg, QStringLiteral("英文")), 2);
    QCOMPARE(log.count(QtDebugMsg, QStringLiteral("中文")), 1);
    QVERIFY2(!log.contains(QtWarningMsg, QStringLiteral("语言文件加载失败")), qPrintable(log.dump()));
    // Only the empty Chinese translator is declined by the application.
    QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("语言文件安装失败")), 1);
    // Every translator made belongs to the configuration.
    const QList<QTranslator *> children = config->findChildren<QTranslator *>();
    QCOMPARE(children.size(), translators + 3);
}

QTEST_GUILESS_MAIN(UIModuleConfigTest)
#include "UIModuleConfigTest.moc"
