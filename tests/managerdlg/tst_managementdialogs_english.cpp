// The install and manager dialogs after the host has chosen English: the
// forms, the marks added to rows, the file dialogs and the message boxes.
// The language is process-wide, so these checks live in an executable of
// their own.

#include "DialogTestSupport.h"
#include "FormTable.h"
#include "SampleDriverFiles.h"
#include "TestAppDir.h"
#include "UserScript.h"

#include "Config/UIModuleConfig.h"
#include "FramelessWidget/Common/CommonFramelessTitleBar.h"
#include "UI/InstallPrinterDriverDlg.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverManagerDlg.h"

#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QtTest>

using namespace DialogTestSupport;

namespace {

// The install dialog's widgets in English.
const std::vector<FormTable::Widget> installDialogWidgets = {
    {"vendor label", "label_vendorList_", "QLabel", "List of manufacturers"},
    {"printer label", "label_2", "QLabel", "List of printers"},
    {"delete", "btn_del_", "QPushButton", "Delete"},
    {"install", "btn_install_", "QPushButton", "Install"},
    {"cancel", "btn_cancel_", "QPushButton", "Cancel"},
};

// The manager dialog's widgets in English.
const std::vector<FormTable::Widget> managerDialogWidgets = {
    {"label", "label", "QLabel", "Installed printer"},
    {"install", "btn_installPrinterDriver_", "QPushButton", "Install printer"},
    {"delete", "btn_delPrinterDriver_", "QPushButton", "Delete printer"},
    {"property", "btn_printerDriverProperty_", "QPushButton", "Property"},
    {"default", "btn_setDefaultPrinterDriver_", "QPushButton", "Set as default"},
    {"rename", "btn_modifyDriverShowName_", "QPushButton", "Modify printer name"},
    {"customized", "btn_installCustomizedPrinterDriver_", "QPushButton", "Customize printer"},
    {"import", "btn_importDriverPackage_", "QPushButton", "Import printer"},
    {"export", "btn_exportDriverPackage_", "QPushButton", "Export printer"},
    {"quit", "btn_quit_", "QPushButton", "Quit"},
};

} // namespace

class ManagementDialogsEnglishTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void installDialog_showsItsTextsInEnglish();
    void installDialog_showsVendorAndInstalledMarkInEnglish();
    void installDialog_asksAndReportsInEnglish();
    void managerDialog_showsItsTextsInEnglish();
    void managerDialog_showsDefaultMarkAndFileDialogsInEnglish();
    void managerDialog_reportsAFailedSetDefaultInEnglish();
};

void ManagementDialogsEnglishTest::initTestCase()
{
    UIModuleConfig::instance()->setLanguage(QLocale::English);
    QCOMPARE(UIModuleConfig::instance()->language(), QLocale::English);
}

void ManagementDialogsEnglishTest::init()
{
    QVERIFY(startWithNothingInstalled());
}

void ManagementDialogsEnglishTest::cleanupTestCase()
{
    PrinterDriverManager::instance()->unload();
}

void ManagementDialogsEnglishTest::installDialog_showsItsTextsInEnglish()
{
    InstallPrinterDriverDlg dialog(nullptr);
    FormTable::verifyWidgets(&dialog, installDialogWidgets);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Install printer"));
    QCOMPARE(dialog.framelessTitleBar()->labelText()->text(), QStringLiteral("Install printer"));
}

void ManagementDialogsEnglishTest::installDialog_showsVendorAndInstalledMarkInEnglish()
{
    const QString installed = offerSample(QStringLiteral("BexUV2513_CMYKWV"));
    QVERIFY(!offerSample(QStringLiteral("BexUV3220_8C")).isEmpty());
    QVERIFY(PrinterDriverManager::instance()->installDriver(installed));
    InstallPrinterDriverDlg dialog(nullptr);
    auto *vendors = dialog.findChild<QListWidget *>(QStringLiteral("listWidget_vendorList_"));
    QCOMPARE(vendors->item(0)->text(), QStringLiteral("Bex"));
    QCOMPARE(rowTexts(dialog.findChild<QListWidget *>(QStringLiteral("listWidget_printerDriverList_"))),
             (QStringList{QStringLiteral("BexUV2513_CMYKWV.prs (Installed)"),
                          QStringLiteral("BexUV3220_8C.prs")}));
}

void ManagementDialogsEnglishTest::installDialog_asksAndReportsInEnglish()
{
    QVERIFY(TestAppDir::writeFile(QStringLiteral("dtp/bin/a-broken.prs"), "no driver"));
    QVERIFY(TestAppDir::writeFile(QStringLiteral("dtp/bin/b-spare.prs"), "no driver either"));
    InstallPrinterDriverDlg dialog(nullptr);
    UserScript script;
    script.inspect(QStringLiteral("InstallPrinterDriverDlg"), [&](QWidget *window) {
        if (!clickRow(window->findChild<QListWidget *>(QStringLiteral("listWidget_printerDriverList_")), 1))
            script.problem(QStringLiteral("cannot click row 1"));
    });
    script.click(QStringLiteral("InstallPrinterDriverDlg"), QStringLiteral("btn_del_"));
    script.answerMessageBox(QStringLiteral("Cancel"));
    script.inspect(QStringLiteral("InstallPrinterDriverDlg"), [&](QWidget *window) {
        if (!clickRow(window->findChild<QListWidget *>(QStringLiteral("listWidget_printerDriverList_")), 0))
            script.problem(QStringLiteral("cannot click row 0"));
    });
    script.click(QStringLiteral("InstallPrinterDriverDlg"), QStringLiteral("btn_install_"));
    script.answerMessageBox(QStringLiteral("Ok"));
    QCOMPARE(script.exec(dialog), int(QDialog::Rejected));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QCOMPARE(script.messageBoxes().size(), 2);
    QCOMPARE(script.messageBoxes().at(0).title, QStringLiteral("Reminder"));
    QCOMPARE(script.messageBoxes().at(0).text,
             QStringLiteral("Are you sure to delete the driver \"b-spare.prs\"?"));
    QCOMPARE(script.messageBoxes().at(0).buttons,
             (QStringList{QStringLiteral("Ok"), QStringLiteral("Cancel")}));
    QCOMPARE(script.messageBoxes().at(1).title, QStringLiteral("Reminder"));
    QCOMPARE(script.messageBoxes().at(1).text, QStringLiteral("Installation failure"));
    QVERIFY(QFile::exists(TestAppDir::filePath(QStringLiteral("dtp/bin/b-spare.prs"))));
}

void ManagementDialogsEnglishTest::managerDialog_showsItsTextsInEnglish()
{
    PrinterDriverManagerDlg dialog(nullptr);
    FormTable::verifyWidgets(&dialog, managerDialogWidgets);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Printer management"));
    QCOMPARE(dialog.framelessTitleBar()->labelText()->text(), QStringLiteral("Printer management"));
}

void ManagementDialogsEnglishTest::managerDialog_showsDefaultMarkAndFileDialogsInEnglish()
{
    const QString id = installSample(QStringLiteral("BexUV2513_CMYKWV"));
    QVERIFY(PrinterDriverManager::instance()->setDefaultDriverId(id));
    PrinterDriverManagerDlg dialog(nullptr);
    QCOMPARE(rowTexts(dialog.findChild<QListWidget *>(QStringLiteral("listWidget_"))),
             QStringList{QStringLiteral("Bex UV2513 CMYK+W+V (Default)")});

    UserScript script;
    script.click(QStringLiteral("PrinterDriverManagerDlg"), QStringLiteral("btn_importDriverPackage_"));
    script.answerFileDialog(QString());
    script.click(QStringLiteral("PrinterDriverManagerDlg"), QStringLiteral("btn_exportDriverPackage_"));
    script.answerFileDialog(QString());
    script.click(QStringLiteral("PrinterDriverManagerDlg"), QStringLiteral("btn_quit_"));
    script.exec(dialog);
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QCOMPARE(script.fileDialogs().size(), 2);
    QCOMPARE(script.fileDialogs().at(0).caption, QStringLiteral("Install customized printer"));
    QCOMPARE(script.fileDialogs().at(0).nameFilters, QStringList{QStringLiteral("Printer (*.bex_driver)")});
    QCOMPARE(script.fileDialogs().at(1).caption, QStringLiteral("Export printer"));
    QCOMPARE(script.fileDialogs().at(1).nameFilters, QStringList{QStringLiteral("Printer (*.bex_driver)")});
}

void ManagementDialogsEnglishTest::managerDialog_reportsAFailedSetDefaultInEnglish()
{
    QVERIFY(!installSample(QStringLiteral("BexUV2513_CMYKWV")).isEmpty());
    PrinterDriverManagerDlg dialog(nullptr);
    QVERIFY(QFile::remove(SampleDriverFiles::prsPath(QStringLiteral("BexUV2513_CMYKWV"))));
    UserScript script;
    script.click(QStringLiteral("PrinterDriverManagerDlg"), QStringLiteral("btn_setDefaultPrinterDriver_"));
    script.answerMessageBox(QStringLiteral("Confirm"));
    script.click(QStringLiteral("PrinterDriverManagerDlg"), QStringLiteral("btn_quit_"));
    script.exec(dialog);
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QCOMPARE(script.messageBoxes().size(), 1);
    QCOMPARE(script.messageBoxes().first().title, QStringLiteral("Reminder"));
    QCOMPARE(script.messageBoxes().first().text, QStringLiteral("Default printer loading failure"));
    QCOMPARE(script.messageBoxes().first().buttons, QStringList{QStringLiteral("Confirm")});
}

QTEST_MAIN(ManagementDialogsEnglishTest)
#include "tst_managementdialogs_english.moc"
