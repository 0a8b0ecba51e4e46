// The manager, the module object and the rename dialog served by a
// print-parameter library that answers with broken records: each case must
// be refused with a log line, or read within the record's bounds, and the
// caller goes on.

#include "HostilePrintParamsHandler.h"
#include "LogCapture.h"
#include "TestAppDir.h"

#include "../dialogs/ModalDriver.h"

#include "BexRipEngineDriverUI_RipServer_p.h"
#include "UI/ModifyPrinterDriverNameDlg.h"
#include "UI/PrinterDriverManager.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QtTest>

#include <climits>

using Case = HostilePrintParamsHandler::Case;
Q_DECLARE_METATYPE(HostilePrintParamsHandler::Case)

namespace {

PrinterDriverManager *manager()
{
    return PrinterDriverManager::instance();
}

void addCaseRows()
{
    QTest::addColumn<Case>("hostility");
    for (const Case c : HostilePrintParamsHandler::allCases())
        QTest::newRow(qPrintable(HostilePrintParamsHandler::caseName(c))) << c;
}

// A driver's texts never exceed the capacity of their fields.
void verifyBounded(const PrinterDriverManager::DriverInfo &info)
{
    QVERIFY(info.id.toLocal8Bit().size() <= int(kPrinterIdSize));
    QVERIFY(info.name.toLocal8Bit().size() <= int(kPrinterNameSize));
    QVERIFY(info.showName.toLocal8Bit().size() <= int(kPrinterShowNameSize));
    QVERIFY(info.prsPath.toLocal8Bit().size() <= int(kPrinterPrsPathSize));
}

} // namespace

class HostileHandlerTest : public QObject
{
    Q_OBJECT

private:
    HostilePrintParamsHandler *hostile_ = nullptr;
    QString prsPath_;

    void serve(Case c)
    {
        manager()->unload();
        hostile_ = new HostilePrintParamsHandler(c);
        hostile_->existingPrs = prsPath_;
        HostilePrintParamsHandler::setNextHandler(hostile_);
        QVERIFY(manager()->load());
        QCOMPARE(manager()->getHandler(), static_cast<IUIPrintParamsHandler *>(hostile_));
    }

private slots:
    void initTestCase()
    {
        prsPath_ = TestAppDir::filePath(QStringLiteral("dtp/driver/hostile.prs"));
        QVERIFY(TestAppDir::writeFile(QStringLiteral("dtp/driver/hostile.prs"), "{}"));
    }

    void cleanup()
    {
        manager()->unload();
        hostile_ = nullptr;
    }

    void listing_refusesDamagedItemsAndGoesOn_data() { addCaseRows(); }
    void listing_refusesDamagedItemsAndGoesOn()
    {
        QFETCH(Case, hostility);
        serve(hostility);
        LogCapture log;

        const auto first = manager()->obtainInstalledDrivers();
        const auto second = manager()->obtainInstalledDrivers();

        QSet<QString> ids;
        for (const auto &info : first) {
            verifyBounded(*info);
            QVERIFY2(!ids.contains(info->id), qPrintable(info->id));
            ids.insert(info->id);
        }
        switch (hostility) {
        case Case::NullRecords:
            QCOMPARE(first.size(), 1);
            QCOMPARE(log.count(QtWarningMsg, QStringLiteral("printerInfoItem is nullptr, skipped")), 4);
            break;
        case Case::SharedRecord:
            QCOMPARE(first.size(), 2);
            QCOMPARE(log.count(QtWarningMsg, QStringLiteral("listed twice, skipped")), 2);
            break;
        case Case::UnterminatedTexts:
            // Ids and names end at their field's last byte; the .prs path,
            // read the same way, names no file, so the driver is uninstalled.
            QVERIFY(first.isEmpty());
            QCOMPARE(log.count(QtDebugMsg, QStringLiteral("piiId: \"A")), 2);
            QVERIFY(log.contains(QtDebugMsg, QStringLiteral("piiId: \"") + QLatin1Char('A') +
                                                 QString(int(kPrinterIdSize) - 1, QLatin1Char('Z')) +
                                                 QLatin1Char('"')));
            QVERIFY(hostile_->calls.contains(QStringLiteral("DeletePrinterDriverPrs")));
            break;
        case Case::ChangingRecords:
            // Each answer stands on its own: nothing of the first is kept.
            QCOMPARE(first.size(), 2);
            QCOMPARE(second.size(), 3);
            QCOMPARE(first.first()->id, QStringLiteral("hostile-0-r1"));
            QCOMPARE(second.first()->id, QStringLiteral("hostile-0-r2"));
            break;
        default:
            QCOMPARE(first.size(), 2);
            QCOMPARE(second.size(), 2);
            break;
        }
    }

    void install_refusesNullAndBoundsTheItem_data() { addCaseRows(); }
    void install_refusesNullAndBoundsTheItem()
    {
        QFETCH(Case, hostility);
        serve(hostility);
        LogCapture log;

        const auto info = manager()->installDriver(prsPath_);

        if (hostility == Case::NullRecords) {
            QVERIFY(info.isNull());
            QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("AddPrinterDriverPrs - driverFilePath:")));
            return;
        }
        QVERIFY(info);
        verifyBounded(*info);
        QCOMPARE(manager()->findDriverInfo(info->id), info);
    }

    void spotColours_refuseDamagedChannelRecords_data() { addCaseRows(); }
    void spotColours_refuseDamagedChannelRecords()
    {
        QFETCH(Case, hostility);
        serve(hostility);
        LogCapture log;
        QStringList names{QStringLiteral("stale")};

        QVERIFY(manager()->getDefaultSpotColorSampleNameList(names));

        switch (hostility) {
        case Case::NullRecords:
        case Case::NegativeCounts:
        case Case::HugeCounts:
        case Case::CountsBeyondRecord:
            QVERIFY(names.isEmpty());
            QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("printerChannelColorInfo is damaged")), 1);
            QVERIFY(!log.contains(QtDebugMsg, QStringLiteral("strChannelName:")));
            break;
        case Case::UnterminatedTexts:
            QCOMPARE(names.size(), HostilePrintParamsHandler::heldChannels);
            for (const QString &name : qAsConst(names))
                QCOMPARE(name.size(), int(kInkChannelNameSize));
            break;
        case Case::ChangingRecords: {
            // The second answer is read afresh, not through the first's arrays.
            QCOMPARE(names, QStringList{QStringLiteral("White")});
            QVERIFY(manager()->getDefaultSpotColorSampleNameList(names));
            QCOMPARE(names, (QStringList{QStringLiteral("White"), QStringLiteral("Varnish")}));
            break;
        }
        default:
            QCOMPARE(names, (QStringList{QStringLiteral("White"), QStringLiteral("Varnish")}));
            QVERIFY(!log.contains(QtCriticalMsg, QStringLiteral("printerChannelColorInfo is damaged")));
            break;
        }
    }

    void dpi_takesOnlyWhatTheLibraryConfirms_data() { addCaseRows(); }
    void dpi_takesOnlyWhatTheLibraryConfirms()
    {
        QFETCH(Case, hostility);
        serve(hostility);
        LogCapture log;
        quint32 x = 11;
        quint32 y = 22;

        const bool ok = manager()->getDefaultDriverDpi(x, y);

        switch (hostility) {
        case Case::NullRecords:
            QVERIFY(!ok);
            QCOMPARE(x, 11u);
            QCOMPARE(y, 22u);
            QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("GetSelectEnumItem failed")));
            break;
        case Case::NegativeCounts:
            QVERIFY(!ok);
            QCOMPARE(x, 0u);
            QCOMPARE(y, 0u);
            QVERIFY(log.contains(QtDebugMsg, QStringLiteral("index: -1")));
            QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("GetSelectEnumItemDpi failed")));
            break;
        case Case::HugeCounts:
            QVERIFY(ok);
            QCOMPARE(x, quint32(UINT32_MAX));
            QCOMPARE(y, quint32(UINT32_MAX));
            break;
        case Case::ChangingRecords:
            QVERIFY(ok);
            QCOMPARE(x, 100u);
            QCOMPARE(y, 200u);
            break;
        default:
            QVERIFY(ok);
            QCOMPARE(x, 720u);
            QCOMPARE(y, 600u);
            break;
        }
    }

    void defaultRenameDelete_followTheLibrarysAnswers_data() { addCaseRows(); }
    void defaultRenameDelete_followTheLibrarysAnswers()
    {
        QFETCH(Case, hostility);
        serve(hostility);
        const auto drivers = manager()->obtainInstalledDrivers();
        const QString id = drivers.isEmpty() ? QStringLiteral("hostile-0") : drivers.first()->id;
        const bool libraryAgrees = hostility != Case::NullRecords;

        QVERIFY(manager()->setDefaultDriverId(id));
        QCOMPARE(manager()->defaultDriverId(), id);
        QCOMPARE(manager()->setDriverShowName(id, QStringLiteral("新名字")), libraryAgrees);
        QCOMPARE(manager()->deleteInstalledDriver(id), libraryAgrees);
        QVERIFY(manager()->findDriverInfo(id).isNull());
        QVERIFY(manager()->defaultDriverId().isEmpty());
    }

    void moduleObject_carriesHostileModeIdAndPathThroughSerialization_data() { addCaseRows(); }
    void moduleObject_carriesHostileModeIdAndPathThroughSerialization()
    {
        QFETCH(Case, hostility);
        serve(hostility);
        const auto drivers = manager()->obtainInstalledDrivers();
        BexRipEngineDriverUI_RipServer module;

        auto info = QSharedPointer<DriverInfo_RipServer>::create();
        info->modeId = manager()->getHandler()->GetCurModeId();
        info->prsFilePath = drivers.isEmpty() ? QString(int(kPrinterPrsPathSize), QLatin1Char('Z'))
                                              : drivers.first()->prsPath;
        const auto driver = module.getRipEngineDriver(info);
        QVERIFY(driver);
        const auto restored = module.unserialize(module.serialize(driver));
        QVERIFY(restored);
        const auto *ours = static_cast<const BexRipEngineDriver_RipServer *>(restored.data());
        QCOMPARE(ours->modeId, info->modeId);
        QCOMPARE(QString::fromStdWString(ours->prsFilePath), info->prsFilePath);
    }

    void renameDialog_takesTheShownNameOfAHostileRecord_data() { addCaseRows(); }
    void renameDialog_takesTheShownNameOfAHostileRecord()
    {
        QFETCH(Case, hostility);
        serve(hostility);
        const auto info = manager()->installDriver(prsPath_);
        const QString shown = info ? info->showName : QString();

        ModifyPrinterDriverNameDlg dialog(shown, nullptr);
        QString seen;
        ModalDriver driver;
        const int result = driver.exec(dialog, [&seen](QDialog *d) {
            auto *edit = d->findChild<QLineEdit *>(QStringLiteral("lineEdit_driverShowName_"));
            QVERIFY(edit);
            seen = edit->text();
            edit->setText(seen.isEmpty() ? QStringLiteral("新名字") : seen);
            QTest::mouseClick(d->findChild<QPushButton *>(QStringLiteral("btn_ok_")), Qt::LeftButton);
        });

        QVERIFY(driver.found);
        QVERIFY(!driver.leftOpen);
        QCOMPARE(result, int(QDialog::Accepted));
        QCOMPARE(seen, shown);
        if (info)
            QCOMPARE(manager()->setDriverShowName(info->id, dialog.driverShowName()),
                     hostility != Case::NullRecords);
    }
};

QTEST_MAIN(HostileHandlerTest)
#include "tst_hostilehandler.moc"
