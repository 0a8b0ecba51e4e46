#include "ConfigTestSupport.h"
#include "LogCapture.h"
#include "TestAppDir.h"

#include "Config/PrinterDriverConfig.h"

#include <QFileInfo>
#include <QSettings>
#include <QtTest>

#include <functional>

namespace {

const QString iniName = QStringLiteral("PrinterDriverConfig.ini");

QString iniPath()
{
    return TestAppDir::filePath(iniName);
}

// One setter of the settings, with the key it writes and the getter that
// reads the field back.
struct Setting
{
    const char *name;
    QString key;
    std::function<QVariant()> get;
    std::function<void(const QVariant &)> set;
};

std::shared_ptr<PrinterDriverConfig> config()
{
    return PrinterDriverConfig::instance();
}

Setting stringSetting(const char *name, const char *key, QString (PrinterDriverConfig::*getter)() const,
                      void (PrinterDriverConfig::*setter)(const QString &))
{
    return {name, QLatin1String(key), [getter] { return QVariant((*config().*getter)()); },
            [setter](const QVariant &value) { (*config().*setter)(value.toString()); }};
}

Setting flagSetting(const char *name, const char *key, bool (PrinterDriverConfig::*getter)() const,
                    void (PrinterDriverConfig::*setter)(bool))
{
    return {name, QLatin1String(key), [getter] { return QVariant((*config().*getter)()); },
            [setter](const QVariant &value) { (*config().*setter)(value.toBool()); }};
}

const QList<Setting> &settings()
{
    static const QList<Setting> all{
        stringSetting("saveRootDir", "saveRootDir", &PrinterDriverConfig::saveRootDir,
                      &PrinterDriverConfig::setSaveRootDir),
        stringSetting("openRootDir", "openRootDir", &PrinterDriverConfig::openRootDir,
                      &PrinterDriverConfig::setOpenRootDir),
        stringSetting("iccOpenRootDir", "iccOpenRootDir", &PrinterDriverConfig::iccOpenRootDir,
                      &PrinterDriverConfig::setIccOpenRootDir),
        stringSetting("defaultDriverId", "defaultDriverId", &PrinterDriverConfig::defaultDriverId,
                      &PrinterDriverConfig::setDefaultDriverId),
        flagSetting("bShowIccDetail", "bShowIccDetail", &PrinterDriverConfig::bShowIccDetail,
                    &PrinterDriverConfig::setShowIccDetail),
        flagSetting("bShowInkDetail", "bShowInkDetail", &PrinterDriverConfig::bShowInkDetail,
                    &PrinterDriverConfig::setShowInkDetail),
        flagSetting("bShowOtherPropertyDetail", "bShowOtherPropertyDetail",
                    &PrinterDriverConfig::bShowOtherPropertyDetail,
                    &PrinterDriverConfig::setShowOtherPropertyDetail),
        flagSetting("bShowExtraOptionDetail", "bShowExtraOptionDetail",
                    &PrinterDriverConfig::bShowExtraOptionDetail,
                    &PrinterDriverConfig::setShowExtraOptionDetail),
        flagSetting("bPromptDriverPropertyDlg", "bPromptDriverPropertyDlg",
                    &PrinterDriverConfig::bPromptDriverPropertyDlg,
                    &PrinterDriverConfig::setPromptDriverPropertyDlg),
    };
    return all;
}

// A value different from the current one: the other flag, or a new folder.
QVariant changedValue(const QVariant &current)
{
    if (current.userType() == QMetaType::Bool)
        return !current.toBool();
    static int serial = 0;
    return QStringLiteral("E:/打印 机/%1").arg(++serial);
}

} // namespace

class PrinterDriverConfigTest : public QObject
{
    Q_OBJECT

private slots:
    void instance_isSharedByEveryCaller();
    void directories_deriveFromTheApplicationDirectory_data();
    void directories_deriveFromTheApplicationDirectory();
    void iccDirectories_containSpaceAndEndInSlash_data();
    void iccDirectories_containSpaceAndEndInSlash();
    void directories_cacheOneIsCreatedButDtpOnesAreNot();
    void setter_unchangedValue_doesNotCreateTheFile_data();
    void setter_unchangedValue_doesNotCreateTheFile();
    void setter_unchangedValue_doesNotModifyTheFile_data();
    void setter_unchangedValue_doesNotModifyTheFile();
    void setter_writesExactlyItsKeyAndValueType_data();
    void setter_writesExactlyItsKeyAndValueType();
    void windowRecord_unchanged_isWrittenAnyway();
    void windowRecord_writesPointAndSizeValues();
    void readConfig_readsEveryKey();
    void readConfig_logsEveryFlag();
};

void PrinterDriverConfigTest::instance_isSharedByEveryCaller()
{
    const std::shared_ptr<PrinterDriverConfig> first = PrinterDriverConfig::instance();
    const long users = first.use_count();
    const std::shared_ptr<PrinterDriverConfig> second = PrinterDriverConfig::instance();
    QVERIFY(first);
    QCOMPARE(second.get(), first.get());
    QCOMPARE(first.use_count(), users + 1);
}

void PrinterDriverConfigTest::directories_deriveFromTheApplicationDirectory_data()
{
    QTest::addColumn<QString>("actual");
    QTest::addColumn<QString>("expected");

    const auto c = config();
    const QString app = TestAppDir::path();
    QTest::newRow("configFilePath") << c->configFilePath()
                                    << app + QStringLiteral("/PrinterDriverConfig.ini");
    QTest::newRow("tempDir") << c->tempDir() << app + QStringLiteral("/cache/");
    QTest::newRow("dtpDir") << c->dtpDir() << app + QStringLiteral("/dtp/");
    QTest::newRow("dtpBinDir") << c->dtpBinDir() << app + QStringLiteral("/dtp/bin/");
    QTest::newRow("iccRgbDir") << c->iccRgbDir() << app + QStringLiteral("/dtp/bin/ICC Profile/RGB/");
    QTest::newRow("iccCmykDir") << c->iccCmykDir() << app + QStringLiteral("/dtp/bin/ICC Profile/CMYK/");
    QTest::newRow("iccOutputDir") << c->iccOutputDir()
                                  << app + QStringLiteral("/dtp/bin/ICC Profile/OUTPUT/");
    QTest::newRow("driverDir") << c->driverDir() << app + QStringLiteral("/dtp/driver/");
}

void PrinterDriverConfigTest::directories_deriveFromTheApplicationDirectory()
{
    QFETCH(QString, actual);
    QFETCH(QString, expected);
    QCOMPARE(actual, expected);
}

void PrinterDriverConfigTest::iccDirectories_containSpaceAndEndInSlash_data()
{
    QTest::addColumn<QString>("dir");
    const auto c = config();
    QTest::newRow("RGB") << c->iccRgbDir();
    QTest::newRow("CMYK") << c->iccCmykDir();
    QTest::newRow("OUTPUT") << c->iccOutputDir();
}

void PrinterDriverConfigTest::iccDirectories_containSpaceAndEndInSlash()
{
    QFETCH(QString, dir);
    QVERIFY2(dir.contains(QStringLiteral("ICC Profile")), qPrintable(dir));
    QVERIFY2(dir.endsWith(QLatin1Char('/')), qPrintable(dir));
    QVERIFY2(dir.startsWith(config()->dtpBinDir()), qPrintable(dir));
}

void PrinterDriverConfigTest::directories_cacheOneIsCreatedButDtpOnesAreNot()
{
    const auto c = config();
    QVERIFY(QFileInfo(c->tempDir()).isDir());
    QVERIFY(!QFileInfo::exists(c->dtpDir()));
    QVERIFY(!QFileInfo::exists(c->driverDir()));
}

void PrinterDriverConfigTest::setter_unchangedValue_doesNotCreateTheFile_data()
{
    QTest::addColumn<int>("setting");
    for (int i = 0; i < settings().size(); ++i)
        QTest::newRow(settings().at(i).name) << i;
}

void PrinterDriverConfigTest::setter_unchangedValue_doesNotCreateTheFile()
{
    QFETCH(int, setting);
    const Setting &s = settings().at(setting);
    QVERIFY(TestAppDir::remove(iniName));
    const QVariant current = s.get();

    s.set(current);

    QCOMPARE(s.get(), current);
    QVERIFY(!QFileInfo::exists(iniPath()));
}

void PrinterDriverConfigTest::setter_unchangedValue_doesNotModifyTheFile_data()
{
    setter_unchangedValue_doesNotCreateTheFile_data();
}

void PrinterDriverConfigTest::setter_unchangedValue_doesNotModifyTheFile()
{
    QFETCH(int, setting);
    const Setting &s = settings().at(setting);
    const QByteArray content("[General]\nwrittenByHand=1\n");
    QVERIFY(TestAppDir::writeFile(iniName, content));
    const QDateTime modified = QFileInfo(iniPath()).lastModified();

    s.set(s.get());

    QCOMPARE(TestAppDir::readFile(iniName), content);
    QCOMPARE(QFileInfo(iniPath()).lastModified(), modified);
}

void PrinterDriverConfigTest::setter_writesExactlyItsKeyAndValueType_data()
{
    setter_unchangedValue_doesNotCreateTheFile_data();
}

void PrinterDriverConfigTest::setter_writesExactlyItsKeyAndValueType()
{
    QFETCH(int, setting);
    const Setting &s = settings().at(setting);
    QVERIFY(TestAppDir::remove(iniName));
    const QVariant value = changedValue(s.get());

    s.set(value);

    QCOMPARE(s.get(), value);
    QSettings ini(iniPath(), QSettings::IniFormat);
    QCOMPARE(ini.allKeys(), QStringList{s.key});
    QCOMPARE(ini.value(s.key).toString(), value.toString());
    const QString text = QString::fromUtf8(TestAppDir::readFile(iniName));
    if (value.userType() == QMetaType::Bool) {
        // A boolean, in the INI spelling of one.
        const QString line = s.key + (value.toBool() ? QStringLiteral("=true") : QStringLiteral("=false"));
        QVERIFY2(text.contains(line), qPrintable(text));
    } else {
        // A plain string, not a serialized variant.
        QVERIFY2(!text.contains(QStringLiteral("@Variant")), qPrintable(text));
        QCOMPARE(ini.value(s.key).userType(), int(QMetaType::QString));
    }
}

void PrinterDriverConfigTest::windowRecord_unchanged_isWrittenAnyway()
{
    const auto c = config();
    c->setWindowRecord(QPoint(5, 6), QSize(640, 480));
    QVERIFY(TestAppDir::remove(iniName));

    c->setWindowRecord(c->windowPos(), c->windowSize());

    QVERIFY(QFileInfo::exists(iniPath()));
    QSettings ini(iniPath(), QSettings::IniFormat);
    QCOMPARE(ini.allKeys(),
             (QStringList{QStringLiteral("windowRecord/pos"), QStringLiteral("windowRecord/size")}));
    QCOMPARE(ini.value(QStringLiteral("windowRecord/pos")).toPoint(), QPoint(5, 6));
    QCOMPARE(ini.value(QStringLiteral("windowRecord/size")).toSize(), QSize(640, 480));
}

void PrinterDriverConfigTest::windowRecord_writesPointAndSizeValues()
{
    const auto c = config();
    QVERIFY(TestAppDir::remove(iniName));

    c->setWindowRecord(QPoint(-12, 34), QSize(800, 600));

    QCOMPARE(c->windowPos(), QPoint(-12, 34));
    QCOMPARE(c->windowSize(), QSize(800, 600));
    QSettings ini(iniPath(), QSettings::IniFormat);
    ini.beginGroup(QStringLiteral("windowRecord"));
    QCOMPARE(ini.value(QStringLiteral("pos")).userType(), int(QMetaType::QPoint));
    QCOMPARE(ini.value(QStringLiteral("pos")).toPoint(), QPoint(-12, 34));
    QCOMPARE(ini.value(QStringLiteral("size")).userType(), int(QMetaType::QSize));
    QCOMPARE(ini.value(QStringLiteral("size")).toSize(), QSize(800, 600));
    const QString text = QString::fromUtf8(TestAppDir::readFile(iniName));
    QVERIFY2(text.contains(QStringLiteral("[windowRecord]")), qPrintable(text));
}

void PrinterDriverConfigTest::readConfig_readsEveryKey()
{
    const auto c = config();
    const bool ink = !c->bShowInkDetail();
    QVERIFY(TestAppDir::remove(iniName));
    {
        QSettings ini(iniPath(), QSettings::IniFormat);
        ini.setValue(QStringLiteral("saveRootDir"), QStringLiteral("E:/save"));
        ini.setValue(QStringLiteral("openRootDir"), QStringLiteral("E:/open"));
        ini.setValue(QStringLiteral("iccSaveRootDir"), QStringLiteral("E:/icc save"));
        ini.setValue(QStringLiteral("iccOpenRootDir"), QStringLiteral("E:/icc open"));
        ini.setValue(QStringLiteral("defaultDriverId"), QStringLiteral("驱动-7"));
        ini.setValue(QStringLiteral("bShowIccDetail"), false);
        ini.setValue(QStringLiteral("bShowInkDetail"), ink);
        ini.setValue(QStringLiteral("bShowOtherPropertyDetail"), false);
        ini.setValue(QStringLiteral("bShowExtraOptionDetail"), false);
        ini.setValue(QStringLiteral("bPromptDriverPropertyDlg"), false);
        ini.setValue(QStringLiteral("windowRecord/pos"), QPoint(100, 200));
        ini.setValue(QStringLiteral("windowRecord/size"), QSize(1024, 768));
    }

    c->readConfig();

    QCOMPARE(c->saveRootDir(), QStringLiteral("E:/save"));
    QCOMPARE(c->openRootDir(), QStringLiteral("E:/open"));
    QCOMPARE(c->iccSaveRootDir(), QStringLiteral("E:/icc save"));
    QCOMPARE(c->iccOpenRootDir(), QStringLiteral("E:/icc open"));
    QCOMPARE(c->defaultDriverId(), QStringLiteral("驱动-7"));
    QCOMPARE(c->bShowIccDetail(), false);
    QCOMPARE(c->bShowInkDetail(), ink);
    QCOMPARE(c->bShowOtherPropertyDetail(), false);
    QCOMPARE(c->bShowExtraOptionDetail(), false);
    QCOMPARE(c->bPromptDriverPropertyDlg(), false);
    QCOMPARE(c->windowPos(), QPoint(100, 200));
    QCOMPARE(c->windowSize(), QSize(1024, 768));
}

void PrinterDriverConfigTest::readConfig_logsEveryFlag()
{
    const auto c = config();
    LogCapture log;

    c->readConfig();

    const auto text = [](bool value) { return value ? QStringLiteral("true") : QStringLiteral("false"); };
    const QStringList expected{
        QStringLiteral("bShowIccDetail: ") + text(c->bShowIccDetail()),
        QStringLiteral("bShowInkDetail: ") + text(c->bShowInkDetail()),
        QStringLiteral("bShowOtherPropertyDetail: ") + text(c->bShowOtherPropertyDetail()),
        QStringLiteral("bShowExtraOptionDetail: ") + text(c->bShowExtraOptionDetail()),
        QStringLiteral("bPromptDriverPropertyDlg: ") + text(c->bPromptDriverPropertyDlg()),
    };
    QStringList messages;
    const QList<LogCapture::Entry> entries = log.entries();
    for (const LogCapture::Entry &entry : entries) {
        QCOMPARE(entry.type, QtDebugMsg);
        QCOMPARE(entry.file, ConfigFiles::printerDriverConfig());
        QCOMPARE(entry.function, ConfigSignatures::readConfig());
        QCOMPARE(entry.category, ConfigFiles::category());
        messages << entry.message;
    }
    QCOMPARE(messages, expected);
}

QTEST_GUILESS_MAIN(PrinterDriverConfigTest)
#include "PrinterDriverConfigTest.moc"
