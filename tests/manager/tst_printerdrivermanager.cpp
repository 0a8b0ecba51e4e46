// PrinterDriverManager against a scripted print-parameter handler: the
// handler calls it makes, in order, the default driver it keeps in step with
// the settings file, and its log lines.

#include "FakePrintParamsHandler.h"
#include "LogCapture.h"
#include "TestAppDir.h"

#include "Config/PrinterDriverConfig.h"
#include "UI/PrinterDriverManager.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

namespace {
const QString settingsFile = QStringLiteral("PrinterDriverConfig.ini");
const QString managerSource = QStringLiteral("source/UI/PrinterDriverManager");

QStringList ids(const QVector<PrinterDriverManager::DriverInfoPtr> &drivers)
{
    QStringList result;
    for (const auto &driver : drivers)
        result << driver->id;
    return result;
}

// The messages of the captured lines of one level that contain text.
QStringList messages(const LogCapture &log, QtMsgType type, const QString &text)
{
    QStringList result;
    for (const LogCapture::Entry &entry : log.find(type, text))
        result << entry.message;
    return result;
}

QString configuredDefaultInFile()
{
    QSettings settings(TestAppDir::filePath(settingsFile), QSettings::IniFormat);
    return settings.value(QStringLiteral("defaultDriverId"), QStringLiteral("<absent>")).toString();
}
} // namespace

class TestPrinterDriverManager : public QObject
{
    Q_OBJECT

private:
    PrinterDriverManager *manager() const { return PrinterDriverManager::instance(); }
    // A .prs file that exists, named for the driver.
    QString existingPrs(const QString &id)
    {
        const QString path = prsDir_.filePath(id + QStringLiteral(".prs"));
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write("{}");
        return path;
    }
    void scriptDrivers(const QStringList &existing, const QStringList &missing = {})
    {
        for (const QString &id : existing)
            fake_->drivers.push_back(FakePrintParamsHandler::makeItem(
                id, id + QStringLiteral(" name"), id + QStringLiteral(" shown"), existingPrs(id)));
        for (const QString &id : missing)
            fake_->drivers.push_back(FakePrintParamsHandler::makeItem(
                id, id, id, prsDir_.filePath(QStringLiteral("gone-") + id + QStringLiteral(".prs"))));
    }
    // Leaves the manager with default driver id and the settings key both
    // equal to id, and the fake's call log empty.
    void establishDefault(const QString &id)
    {
        fake_->selectResult = true;
        QVERIFY(manager()->setDefaultDriverId(id));
        QCOMPARE(manager()->defaultDriverId(), id);
        fake_->calls.clear();
    }

    QTemporaryDir prsDir_;
    FakePrintParamsHandler *fake_ = nullptr;

private slots:
    void initTestCase()
    {
        QVERIFY(prsDir_.isValid());
        LogCapture log;
        // The first use creates the manager; no handler is on offer yet, so
        // it stays empty without asking for the driver list.
        QVERIFY(!manager()->getHandler());
        QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("CreateUIPrintParamsHandler failed")));
        QVERIFY(!log.contains(QtDebugMsg, QStringLiteral("GetAllPrinterDriverList begin")));
    }

    // Every test gets a fresh fake handler through unload() and load(), the
    // way the host's uninitialise and initialise calls replace the handler.
    void init()
    {
        fake_ = new FakePrintParamsHandler;
        FakePrintParamsHandler::setNextHandler(fake_);
        QVERIFY(manager()->load());
        QCOMPARE(manager()->getHandler(), static_cast<IUIPrintParamsHandler *>(fake_));
    }

    void cleanup()
    {
        manager()->unload();
        fake_ = nullptr;
    }

    void listing_emptyList_keepsDefaultAndLeavesSettingsFileAlone()
    {
        establishDefault(QStringLiteral("A"));
        QVERIFY(TestAppDir::remove(settingsFile));
        LogCapture log;

        const auto drivers = manager()->obtainInstalledDrivers();

        QVERIFY(drivers.isEmpty());
        QCOMPARE(manager()->defaultDriverId(), QStringLiteral("A"));
        QCOMPARE(PrinterDriverConfig::instance()->defaultDriverId(), QStringLiteral("A"));
        QVERIFY2(!QFile::exists(TestAppDir::filePath(settingsFile)), "the settings file was written");
        QCOMPARE(fake_->calls, QStringList{QStringLiteral("GetAllPrinterDriverList")});
        QCOMPARE(messages(log, QtDebugMsg, QStringLiteral("打印机列表为空")),
                 QStringList{QStringLiteral("打印机列表为空")});
        QVERIFY(log.contains(QtDebugMsg, QStringLiteral("GetAllPrinterDriverList begin ***************")));
        QVERIFY(log.contains(QtDebugMsg, QStringLiteral("GetAllPrinterDriverList end ***************")));
    }

    void listing_configuredDefaultGone_clearsIt()
    {
        PrinterDriverConfig::instance()->setDefaultDriverId(QStringLiteral("gone"));
        QCOMPARE(configuredDefaultInFile(), QStringLiteral("gone"));
        scriptDrivers({QStringLiteral("A"), QStringLiteral("B")});

        const auto drivers = manager()->obtainInstalledDrivers();

        QCOMPARE(ids(drivers), (QStringList{QStringLiteral("A"), QStringLiteral("B")}));
        QVERIFY(manager()->defaultDriverId().isEmpty());
        QVERIFY(PrinterDriverConfig::instance()->defaultDriverId().isEmpty());
        QCOMPARE(configuredDefaultInFile(), QString());
        QCOMPARE(fake_->calls, QStringList{QStringLiteral("GetAllPrinterDriverList")});
    }

    void listing_configuredDefault_isSelected()
    {
        PrinterDriverConfig::instance()->setDefaultDriverId(QStringLiteral("B"));
        scriptDrivers({QStringLiteral("A"), QStringLiteral("B")});
        LogCapture log;

        const auto drivers = manager()->obtainInstalledDrivers();

        QCOMPARE(ids(drivers), (QStringList{QStringLiteral("A"), QStringLiteral("B")}));
        QCOMPARE(manager()->defaultDriverId(), QStringLiteral("B"));
        QCOMPARE(fake_->calls, (QStringList{QStringLiteral("GetAllPrinterDriverList"),
                                            QStringLiteral("SelectPrinterDriverPrs(B,0)")}));
        QCOMPARE(messages(log, QtDebugMsg, QStringLiteral("SelectPrinterDriverPrs success - ")),
                 QStringList{QStringLiteral("SelectPrinterDriverPrs success -  \"B\"")});
        const auto b = manager()->findDriverInfo(QStringLiteral("B"));
        QVERIFY(b);
        QCOMPARE(b->name, QStringLiteral("B name"));
        QCOMPARE(b->showName, QStringLiteral("B shown"));
        QCOMPARE(b->prsPath, prsDir_.filePath(QStringLiteral("B.prs")));
        QVERIFY(log.contains(QtDebugMsg, QStringLiteral("piiShowName:")));
    }

    void listing_prsFileVanished_uninstallsTheDriver()
    {
        PrinterDriverConfig::instance()->setDefaultDriverId(QStringLiteral("V"));
        scriptDrivers({QStringLiteral("A")}, {QStringLiteral("V")});
        LogCapture log;

        const auto drivers = manager()->obtainInstalledDrivers();

        QCOMPARE(ids(drivers), QStringList{QStringLiteral("A")});
        QCOMPARE(fake_->calls, (QStringList{QStringLiteral("GetAllPrinterDriverList"),
                                            QStringLiteral("DeletePrinterDriverPrs(V)")}));
        QVERIFY(!manager()->findDriverInfo(QStringLiteral("V")));
        QVERIFY(manager()->findDriverInfo(QStringLiteral("A")));
        QCOMPARE(messages(log, QtDebugMsg, QStringLiteral("prs文件不存在 -")),
                 QStringList{QStringLiteral("prs文件不存在 - \"%1\"")
                                 .arg(prsDir_.filePath(QStringLiteral("gone-V.prs")))});
        QVERIFY(manager()->defaultDriverId().isEmpty());
        QCOMPARE(configuredDefaultInFile(), QString());
    }

    void delete_defaultDriver_leavesNoDefault()
    {
        PrinterDriverConfig::instance()->setDefaultDriverId(QStringLiteral("A"));
        scriptDrivers({QStringLiteral("A"), QStringLiteral("B")});
        manager()->obtainInstalledDrivers();
        QCOMPARE(manager()->defaultDriverId(), QStringLiteral("A"));
        fake_->calls.clear();
        LogCapture log;

        QVERIFY(manager()->deleteInstalledDriver(QStringLiteral("A")));

        QVERIFY(manager()->defaultDriverId().isEmpty());
        QVERIFY(PrinterDriverConfig::instance()->defaultDriverId().isEmpty());
        QCOMPARE(configuredDefaultInFile(), QString());
        QCOMPARE(fake_->calls, QStringList{QStringLiteral("DeletePrinterDriverPrs(A)")});
        QVERIFY(!manager()->findDriverInfo(QStringLiteral("A")));
        QVERIFY(manager()->findDriverInfo(QStringLiteral("B")));
        QCOMPARE(messages(log, QtDebugMsg, QStringLiteral("默认的驱动被删除了")),
                 QStringList{QStringLiteral("默认的驱动被删除了")});
        QVERIFY(log.contains(QtDebugMsg, QStringLiteral("DeletePrinterDriverPrs: true")));
    }

    void delete_unknownId_stillAsksTheLibrary()
    {
        fake_->deleteResult = false;
        LogCapture log;

        QVERIFY(!manager()->deleteInstalledDriver(QStringLiteral("nope")));

        QCOMPARE(fake_->calls, QStringList{QStringLiteral("DeletePrinterDriverPrs(nope)")});
        // Not a refusal: the library is asked all the same, so it is a trace.
        const auto lines = log.find(QtDebugMsg, QStringLiteral("没有被安装"));
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines.first().message, QStringLiteral("driverId -  \"nope\" 没有被安装"));
        QCOMPARE(lines.first().file, managerSource);
        QVERIFY(!log.contains(QtWarningMsg, QStringLiteral("没有被安装")));
        QVERIFY(log.contains(QtDebugMsg, QStringLiteral("DeletePrinterDriverPrs: false")));
    }

    void delete_anotherDriver_keepsTheDefault()
    {
        establishDefault(QStringLiteral("A"));

        QVERIFY(manager()->deleteInstalledDriver(QStringLiteral("B")));

        QCOMPARE(manager()->defaultDriverId(), QStringLiteral("A"));
        QCOMPARE(configuredDefaultInFile(), QStringLiteral("A"));
    }

    void setDefault_selectsItAndWritesTheSettings()
    {
        LogCapture log;

        QVERIFY(manager()->setDefaultDriverId(QStringLiteral("D")));

        QCOMPARE(fake_->calls, QStringList{QStringLiteral("SelectPrinterDriverPrs(D,0)")});
        QCOMPARE(manager()->defaultDriverId(), QStringLiteral("D"));
        QCOMPARE(configuredDefaultInFile(), QStringLiteral("D"));
        const auto lines = log.find(QtDebugMsg, QStringLiteral("SelectPrinterDriverPrs success - "));
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines.first().file, managerSource);
        QVERIFY2(lines.first().function.contains(
                     QStringLiteral("PrinterDriverManager::setDefaultDriverId(const QString&)")),
                 qPrintable(lines.first().function));
    }

    void setDefault_selectionFails_keepsTheDefault()
    {
        establishDefault(QStringLiteral("A"));
        fake_->selectResult = false;
        LogCapture log;

        QVERIFY(!manager()->setDefaultDriverId(QStringLiteral("B")));

        QCOMPARE(manager()->defaultDriverId(), QStringLiteral("A"));
        QCOMPARE(configuredDefaultInFile(), QStringLiteral("A"));
        QCOMPARE(messages(log, QtCriticalMsg, QStringLiteral("SelectPrinterDriverPrs failed - ")),
                 QStringList{QStringLiteral("SelectPrinterDriverPrs failed -  \"B\"")});
    }

    void install_returnsTheDriverAndFindsIt()
    {
        fake_->addSucceeds = true;
        const QString path = existingPrs(QStringLiteral("N"));
        fake_->added = FakePrintParamsHandler::makeItem(QStringLiteral("N"), QStringLiteral("New"),
                                                        QStringLiteral("New shown"), path);

        const auto info = manager()->installDriver(path);

        QVERIFY(info);
        QCOMPARE(fake_->calls, QStringList{QStringLiteral("AddPrinterDriverPrs(%1,0)").arg(path)});
        QCOMPARE(info->id, QStringLiteral("N"));
        QCOMPARE(info->name, QStringLiteral("New"));
        QCOMPARE(info->showName, QStringLiteral("New shown"));
        QCOMPARE(info->prsPath, path);
        QCOMPARE(manager()->findDriverInfo(QStringLiteral("N")), info);
        QCOMPARE(manager()->findDriverInfoByPrsPath(path.toUpper()), info);
    }

    void install_fails_yieldsNullAndLogsThePath()
    {
        LogCapture log;

        QVERIFY(!manager()->installDriver(QStringLiteral("/no/such.prs")));

        QCOMPARE(fake_->calls, QStringList{QStringLiteral("AddPrinterDriverPrs(/no/such.prs,0)")});
        const auto lines = log.find(QtCriticalMsg, QStringLiteral("AddPrinterDriverPrs - driverFilePath:"));
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines.first().message,
                 QStringLiteral("AddPrinterDriverPrs - driverFilePath: \"/no/such.prs\"  failed!"));
    }

    void findDriverInfoByPrsPath_ignoresCaseAndMissesUnknownPaths()
    {
        scriptDrivers({QStringLiteral("CasePath")});
        manager()->obtainInstalledDrivers();
        const QString path = prsDir_.filePath(QStringLiteral("CasePath.prs"));

        QCOMPARE(manager()->findDriverInfoByPrsPath(path.toLower())->id, QStringLiteral("CasePath"));
        QVERIFY(!manager()->findDriverInfoByPrsPath(path + QStringLiteral(".old")));
        QVERIFY(!manager()->findDriverInfo(QStringLiteral("never installed")));
    }

    void findDriverInfoByPrsPath_comparesNormalisedPaths()
    {
        scriptDrivers({QStringLiteral("Winding")});
        manager()->obtainInstalledDrivers();
        const QString dir = prsDir_.path();

        for (const QString &spelling :
             {dir + QStringLiteral("/Winding.prs"), dir + QStringLiteral("//./Winding.prs"),
              dir + QStringLiteral("/sub/../WINDING.prs"), dir + QStringLiteral("/Winding.prs/.")}) {
            const auto found = manager()->findDriverInfoByPrsPath(spelling);
            QVERIFY2(found, qPrintable(spelling));
            QCOMPARE(found->id, QStringLiteral("Winding"));
        }
        // A relative path is taken against the working folder.
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(dir));
        const auto relative = manager()->findDriverInfoByPrsPath(QStringLiteral("Winding.prs"));
        QVERIFY(QDir::setCurrent(previous));
        QVERIFY(relative);
        QVERIFY(!manager()->findDriverInfoByPrsPath(dir + QStringLiteral("/sub/Winding.prs")));
    }

    void findDriverInfoByPrsPath_deletedDriver_isNoLongerFound()
    {
        scriptDrivers({QStringLiteral("Leaving"), QStringLiteral("Staying")});
        manager()->obtainInstalledDrivers();
        fake_->deleteResult = true;

        QVERIFY(manager()->deleteInstalledDriver(QStringLiteral("Leaving")));

        QVERIFY(!manager()->findDriverInfoByPrsPath(prsDir_.filePath(QStringLiteral("Leaving.prs"))));
        QCOMPARE(manager()->findDriverInfoByPrsPath(prsDir_.filePath(QStringLiteral("Staying.prs")))->id,
                 QStringLiteral("Staying"));
    }

    void rename_updatesTheShownName()
    {
        scriptDrivers({QStringLiteral("R")});
        manager()->obtainInstalledDrivers();
        fake_->calls.clear();

        QVERIFY(manager()->setDriverShowName(QStringLiteral("R"), QStringLiteral("车间一号机")));

        QCOMPARE(fake_->calls, QStringList{QStringLiteral("RechristenDriverShowName(R,车间一号机)")});
        QCOMPARE(manager()->findDriverInfo(QStringLiteral("R"))->showName, QStringLiteral("车间一号机"));
    }

    void rename_fails_keepsTheShownName()
    {
        scriptDrivers({QStringLiteral("R2")});
        manager()->obtainInstalledDrivers();
        fake_->renameResult = false;
        LogCapture log;

        QVERIFY(!manager()->setDriverShowName(QStringLiteral("R2"), QStringLiteral("other")));

        QCOMPARE(manager()->findDriverInfo(QStringLiteral("R2"))->showName, QStringLiteral("R2 shown"));
        QCOMPARE(messages(log, QtCriticalMsg, QStringLiteral("RechristenDriverShowName failed - ")),
                 QStringList{QStringLiteral("RechristenDriverShowName failed -  \"R2\"")});
    }

    void rename_driverMissingFromTheTable_reportsAProgrammingError()
    {
        LogCapture log;

        QVERIFY(manager()->setDriverShowName(QStringLiteral("unlisted"), QStringLiteral("x")));

        const auto lines = log.find(QtCriticalMsg, QStringLiteral("check your code"));
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines.first().message.endsWith(QStringLiteral("check your code")),
                 qPrintable(lines.first().message));
    }

    void dpi_comesFromTheSelectedResolution()
    {
        fake_->setResolution(2);
        fake_->xDpi = 720;
        fake_->yDpi = 900;
        quint32 x = 0;
        quint32 y = 0;

        QVERIFY(manager()->getDefaultDriverDpi(x, y));

        QCOMPARE(x, 720u);
        QCOMPARE(y, 900u);
        QCOMPARE(fake_->calls, (QStringList{QStringLiteral("GetSelectEnumItem(0)"),
                                            QStringLiteral("GetSelectEnumItemDpi(2)")}));
    }

    void dpi_queryFails_yieldsZeroByZero()
    {
        fake_->setResolution(2);
        fake_->dpiResult = false;
        quint32 x = 77;
        quint32 y = 77;
        LogCapture log;

        QVERIFY(!manager()->getDefaultDriverDpi(x, y));

        QCOMPARE(x, 0u);
        QCOMPARE(y, 0u);
        QCOMPARE(fake_->calls, (QStringList{QStringLiteral("GetSelectEnumItem(0)"),
                                            QStringLiteral("GetSelectEnumItemDpi(2)")}));
        QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("GetSelectEnumItemDpi failed")));
        QVERIFY(log.contains(QtDebugMsg, QStringLiteral("index: 2")));
    }

    void dpi_missingResolution_leavesTheDpiUntouched()
    {
        quint32 x = 77;
        quint32 y = 66;

        QVERIFY(!manager()->getDefaultDriverDpi(x, y));

        QCOMPARE(x, 77u);
        QCOMPARE(y, 66u);
        QCOMPARE(fake_->calls, QStringList{QStringLiteral("GetSelectEnumItem(0)")});
    }

    void spotColours_listOnlyTheSpotChannels_data()
    {
        QTest::addColumn<QString>("channel");
        QTest::addColumn<bool>("isSpot");
        const QStringList process = {
            QStringLiteral("C"),       QStringLiteral("c"),       QStringLiteral("Cyan"),
            QStringLiteral("cyan"),    QStringLiteral("CYAN"),    QStringLiteral("M"),
            QStringLiteral("Magenta"), QStringLiteral("magenta"), QStringLiteral("Y"),
            QStringLiteral("yellow"),  QStringLiteral("K"),       QStringLiteral("black"),
            QStringLiteral("LC"),      QStringLiteral("lc"),      QStringLiteral("Lc"),
            QStringLiteral("LM"),      QStringLiteral("lm")};
        for (const QString &name : process)
            QTest::newRow(qPrintable(QStringLiteral("process ") + name)) << name << false;
        const QStringList spot = {QStringLiteral("Orange"),  QStringLiteral("White"),
                                  QStringLiteral("Varnish"), QStringLiteral("Green"),
                                  QStringLiteral("LK"),      QStringLiteral("Cyan2"),
                                  QStringLiteral("白墨"),    QStringLiteral("light cyan")};
        for (const QString &name : spot)
            QTest::newRow(qPrintable(QStringLiteral("spot ") + name)) << name << true;
    }

    void spotColours_listOnlyTheSpotChannels()
    {
        QFETCH(QString, channel);
        QFETCH(bool, isSpot);
        fake_->setChannelNames({channel});
        QStringList names{QStringLiteral("stale")};

        QVERIFY(manager()->getDefaultSpotColorSampleNameList(names));

        QCOMPARE(names, isSpot ? QStringList{channel} : QStringList());
    }

    void spotColours_keepTheChannelOrder()
    {
        fake_->setChannelNames({QStringLiteral("C"), QStringLiteral("M"), QStringLiteral("Y"),
                                QStringLiteral("K"), QStringLiteral("White"), QStringLiteral("Varnish")});
        QStringList names;
        LogCapture log;

        QVERIFY(manager()->getDefaultSpotColorSampleNameList(names));

        QCOMPARE(names, (QStringList{QStringLiteral("White"), QStringLiteral("Varnish")}));
        QCOMPARE(fake_->calls, QStringList{QStringLiteral("GetChannelColorInfo")});
        QVERIFY(log.contains(QtDebugMsg, QStringLiteral("printerChannelColorInfo is valid")));
        QCOMPARE(log.count(QtDebugMsg, QStringLiteral("strChannelName:")), 6);
        QCOMPARE(messages(log, QtDebugMsg, QStringLiteral("专色通道名:")),
                 (QStringList{QStringLiteral("专色通道名: \"White\""),
                              QStringLiteral("专色通道名: \"Varnish\"")}));
    }

    void spotColours_missingChannelInfo_giveAnEmptyListAndTrue()
    {
        QStringList names{QStringLiteral("stale")};
        LogCapture log;

        QVERIFY(manager()->getDefaultSpotColorSampleNameList(names));

        QVERIFY(names.isEmpty());
        QVERIFY(log.contains(QtDebugMsg, QStringLiteral("printerChannelColorInfo is nullptr")));
    }

    void load_keepsTheHandlerItHolds()
    {
        QVERIFY(manager()->load());

        QCOMPARE(manager()->getHandler(), static_cast<IUIPrintParamsHandler *>(fake_));
        QVERIFY(fake_->calls.isEmpty());
    }

    void unload_freesTheHandlerAndLoadCreatesANewOne()
    {
        bool destroyed = false;
        fake_->destroyed = &destroyed;

        manager()->unload();

        QVERIFY(destroyed);
        QVERIFY(!manager()->getHandler());
        fake_ = nullptr;     // freed through DestroyUIPrintParamsHandler
        manager()->unload(); // nothing held: nothing happens

        auto *next = new FakePrintParamsHandler;
        FakePrintParamsHandler::setNextHandler(next);
        QVERIFY(manager()->load());
        QCOMPARE(manager()->getHandler(), static_cast<IUIPrintParamsHandler *>(next));
        // A new handler does not list the drivers again.
        QVERIFY(next->calls.isEmpty());
        manager()->unload();
        QVERIFY(!manager()->getHandler());
    }

    void load_libraryCannotMakeAHandler_fails()
    {
        manager()->unload();
        fake_ = nullptr;
        LogCapture log;

        QVERIFY(!manager()->load());

        QVERIFY(!manager()->getHandler());
        QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("CreateUIPrintParamsHandler failed")));
    }

    void operations_withoutHandler_failCleanly()
    {
        manager()->unload();
        fake_ = nullptr;
        QVERIFY(!manager()->getHandler());
        quint32 x = 5;
        quint32 y = 5;
        QStringList names{QStringLiteral("stale")};

        QVERIFY(manager()->obtainInstalledDrivers().isEmpty());
        QVERIFY(!manager()->installDriver(QStringLiteral("/x.prs")));
        QVERIFY(!manager()->deleteInstalledDriver(QStringLiteral("x")));
        QVERIFY(!manager()->setDefaultDriverId(QStringLiteral("x")));
        QVERIFY(!manager()->setDriverShowName(QStringLiteral("x"), QStringLiteral("y")));
        QVERIFY(!manager()->getDefaultDriverDpi(x, y));
        QVERIFY(manager()->getDefaultSpotColorSampleNameList(names));
        QVERIFY(names.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestPrinterDriverManager)
#include "tst_printerdrivermanager.moc"
