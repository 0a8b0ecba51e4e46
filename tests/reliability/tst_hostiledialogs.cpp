// The manager dialog, the install dialog and the property dialog served by a
// print-parameter library that answers with broken records: each dialog
// opens, shows what it can, refuses what it cannot use with a log line and
// comes back from exec(); a message box it raises on a refusal is closed
// here, as the operator would close it.

#include "HostilePrintParamsHandler.h"
#include "LogCapture.h"
#include "TestAppDir.h"

#include "../dialogs/ModalDriver.h"
#include "../propertydlg/PropertyDlgTestSupport.h"

#include "UI/InstallPrinterDriverDlg.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverManagerDlg.h"
#include "UI/PrinterDriverPropertyDlg.h"

#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QSet>
#include <QtTest>

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

// Clicks `button` of the dialog and closes the message box the click may
// raise, so that a refusal's box never keeps the dialog waiting.
void clickClosingAnyBox(QDialog *dialog, const QString &button, bool *boxShown)
{
    auto *target = dialog->findChild<QPushButton *>(button);
    QVERIFY2(target, qPrintable(button));
    PropertyDlgTest::BoxSeen seen;
    const auto answer = PropertyDlgTest::answerMessageBox(dialog, QString(), &seen);
    QTest::mouseClick(target, Qt::LeftButton);
    if (boxShown)
        *boxShown = answer->answered();
}

} // namespace

class HostileDialogsTest : public QObject
{
    Q_OBJECT

private:
    HostilePrintParamsHandler *hostile_ = nullptr;
    QString prsPath_;
    QString uninstalledPrs_;

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
        // A driver file the install dialog offers for installation.
        uninstalledPrs_ = TestAppDir::filePath(QStringLiteral("dtp/bin/offered.prs"));
        QVERIFY(TestAppDir::writeFile(QStringLiteral("dtp/bin/offered.prs"), "{}"));
    }

    void cleanup()
    {
        manager()->unload();
        hostile_ = nullptr;
    }

    void managerDialog_listsOnlyUsableDriversAndCloses_data() { addCaseRows(); }
    void managerDialog_listsOnlyUsableDriversAndCloses()
    {
        QFETCH(Case, hostility);
        serve(hostility);
        LogCapture log;

        PrinterDriverManagerDlg dialog(nullptr);
        int listed = -1;
        QSet<QString> ids;
        ModalDriver driver;
        driver.exec(dialog, [&](QDialog *d) {
            auto *list = d->findChild<QListWidget *>(QStringLiteral("listWidget_"));
            QVERIFY(list);
            listed = list->count();
            for (int i = 0; i < list->count(); ++i)
                ids.insert(list->item(i)->data(Qt::UserRole + 1).toString());
            QTest::mouseClick(d->findChild<QPushButton *>(QStringLiteral("btn_quit_")), Qt::LeftButton);
        });

        QVERIFY(driver.found);
        QVERIFY(!driver.leftOpen);
        QVERIFY(listed >= 0);
        switch (hostility) {
        case Case::NullRecords:
            // Four null entries refused, the one real driver listed.
            QCOMPARE(listed, 1);
            QVERIFY(log.contains(QtWarningMsg, QStringLiteral("printerInfoItem is nullptr, skipped")));
            break;
        case Case::SharedRecord:
            QCOMPARE(listed, 2);
            QVERIFY(log.contains(QtWarningMsg, QStringLiteral("listed twice, skipped")));
            break;
        case Case::UnterminatedTexts:
            // The .prs path read within its field names no file.
            QCOMPARE(listed, 0);
            break;
        default:
            QVERIFY(listed >= 2);
            break;
        }
        // Each driver is listed once, under its own id.
        QCOMPARE(ids.size(), listed);
    }

    void installDialog_refusesAFailedInstallAndCloses_data() { addCaseRows(); }
    void installDialog_refusesAFailedInstallAndCloses()
    {
        QFETCH(Case, hostility);
        serve(hostility);
        LogCapture log;

        InstallPrinterDriverDlg dialog(nullptr);
        bool offered = false;
        bool boxShown = false;
        ModalDriver driver;
        const int result = driver.exec(dialog, [&](QDialog *d) {
            auto *list = d->findChild<QListWidget *>(QStringLiteral("listWidget_printerDriverList_"));
            QVERIFY(list);
            for (int i = 0; i < list->count(); ++i) {
                QListWidgetItem *item = list->item(i);
                if (item->data(Qt::UserRole + 2).toString() == uninstalledPrs_ ||
                    item->text().startsWith(QStringLiteral("offered.prs"))) {
                    list->setCurrentItem(item);
                    emit list->itemClicked(item);
                    offered = true;
                }
            }
            QVERIFY(offered);
            clickClosingAnyBox(d, QStringLiteral("btn_install_"), &boxShown);
        });

        QVERIFY(driver.found);
        QVERIFY(!driver.leftOpen);
        QVERIFY(offered);
        if (hostility == Case::NullRecords) {
            // The library answered the installation with a null record.
            QCOMPARE(result, int(QDialog::Rejected));
            QVERIFY(boxShown);
            QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("AddPrinterDriverPrs - driverFilePath:")));
        } else {
            QCOMPARE(result, int(QDialog::Accepted));
            QVERIFY(!boxShown);
            QVERIFY(hostile_->calls.contains(QStringLiteral("AddPrinterDriverPrs")));
        }
    }

    void propertyDialog_refusesDamagedRecordsAndCloses_data()
    {
        QTest::addColumn<Case>("hostility");
        QTest::addColumn<bool>("ok");
        for (const Case c : HostilePrintParamsHandler::allCases()) {
            const QString name = HostilePrintParamsHandler::caseName(c);
            QTest::newRow(qPrintable(name + QStringLiteral(" OK"))) << c << true;
            QTest::newRow(qPrintable(name + QStringLiteral(" Cancel"))) << c << false;
        }
    }
    void propertyDialog_refusesDamagedRecordsAndCloses()
    {
        QFETCH(Case, hostility);
        QFETCH(bool, ok);
        serve(hostility);
        const auto drivers = manager()->obtainInstalledDrivers();
        const QString id = drivers.isEmpty() ? QStringLiteral("hostile-0") : drivers.first()->id;
        LogCapture log;

        PrinterDriverPropertyDlg dialog(id, nullptr);
        int combinations = -1;
        bool boxShown = false;
        ModalDriver driver;
        const int result = driver.exec(dialog, [&](QDialog *d) {
            auto *combo = d->findChild<QComboBox *>(QStringLiteral("comboBox_combinedType_"));
            QVERIFY(combo);
            combinations = combo->count();
            if (combinations > 0)
                combo->setCurrentIndex(combinations - 1);
            clickClosingAnyBox(d, ok ? QStringLiteral("btn_ok_") : QStringLiteral("btn_cancel_"), &boxShown);
        });

        QVERIFY(driver.found);
        QVERIFY(!driver.leftOpen);
        QVERIFY(combinations >= 0);
        if (!ok) {
            QCOMPARE(result, int(QDialog::Rejected));
            QVERIFY(!boxShown);
            QVERIFY(!hostile_->calls.contains(QStringLiteral("CommitPrinterDriverPrs")));
        }
        switch (hostility) {
        case Case::NullRecords:
            // The library refuses every setting: OK reports the failure and
            // commits nothing.
            if (ok) {
                QCOMPARE(result, int(QDialog::Rejected));
                QVERIFY(boxShown);
                QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("SetEnumItem failed")));
            }
            QVERIFY(!hostile_->calls.contains(QStringLiteral("CommitPrinterDriverPrs")));
            break;
        case Case::NegativeCounts:
        case Case::HugeCounts:
        case Case::CountsBeyondRecord:
            // The channel records are refused on reading and never handed
            // back to the library.
            QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("printerChannelColorInfo is damaged")));
            QVERIFY(!hostile_->calls.contains(QStringLiteral("SetChannelColorInfo")));
            break;
        default:
            QVERIFY(!log.contains(QtCriticalMsg, QStringLiteral("is damaged")));
            break;
        }
        if (hostility == Case::HugeCounts || hostility == Case::CountsBeyondRecord)
            QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("printerEnumItem is damaged")));
        if (ok && result == int(QDialog::Rejected))
            QVERIFY(boxShown);
        if (ok && result == int(QDialog::Accepted))
            QVERIFY(hostile_->calls.contains(QStringLiteral("CommitPrinterDriverPrs")));
    }
};

QTEST_MAIN(HostileDialogsTest)
#include "tst_hostiledialogs.moc"
