// The install and manager dialogs after the host has chosen English: the
// forms, the marks added to rows, the file dialogs and the message boxes.
// The language is process-wide, so these checks live in an executable of
// their own.

#include "DialogTestSupport.h"
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

QString textOf(QWidget *dialog, const QString &objectName)
{
    QWidget *widget = dialog->findChild<QWidget *>(objectName);
    return widget ? widget->property("text").toString() : QStringLiteral("<no %1>").arg(objectName);
}

} // namespace

class ManagementDialogsEnglishTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void installDialog_texts_data();
    void installDialog_texts();
    void installDialog_installedMarkAndVendor();
    void installDialog_failureAndDeleteBoxes();
    void managerDialog_texts_data();
    void managerDialog_texts();
    void managerDialog_defaultMarkAndFileDialogs();
    void managerDialog_setDefaultFailureBox();
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

void ManagementDialogsEnglishTest::installDialog_texts_data()
{
    QTest::addColumn<QString>("objectName");
    QTest::addColumn<QString>("english");
    QTest::newRow("vendor label") << QStringLiteral("label_vendorList_")
                                  << QStringLiteral("List of manufacturers");
    QTest::newRow("printer label") << QStringLiteral("label_2") << QStringLiteral("List of printers");
    QTest::newRow("delete") << QStringLiteral("btn_del_") << QStringLiteral("Delete");
    QTest::newRow("install") << QStringLiteral("btn_install_") << QStringLiteral("Install");
    QTest::newRow("cancel") << QStringLiteral("btn_cancel_") << QStringLiteral("Cancel");
}

void ManagementDialogsEnglishTest::installDialog_texts()
{
    QFETCH(QString, objectName);
    QFETCH(QString, english);
    InstallPrinterDriverDlg dialog(nullptr);
    QCOMPARE(textOf(&dialog, objectName), english);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Install printer"));
    QCOMPARE(dialog.framelessTitleBar()->labelText()->text(), QStringLiteral("Install printer"));
}

void ManagementDialogsEnglishTest::installDialog_installedMarkAndVendor()
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

void ManagementDialogsEnglishTest::installDialog_failureAndDeleteBoxes()
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

void ManagementDialogsEnglishTest::managerDialog_texts_data()
{
    QTest::addColumn<QString>("objectName");
    QTest::addColumn<QString>("english");
    QTest::newRow("label") << QStringLiteral("label") << QStringLiteral("Installed printer");
    QTest::newRow("install") << QStringLiteral("btn_installPrinterDriver_")
                             << QStringLiteral("Install printer");
    QTest::newRow("delete") << QStringLiteral("btn_delPrinterDriver_") << QStringLiteral("Delete printer");
    QTest::newRow("property") << QStringLiteral("btn_printerDriverProperty_") << QStringLiteral("Property");
    QTest::newRow("default") << QStringLiteral("btn_setDefaultPrinterDriver_")
                             << QStringLiteral("Set as default");
    QTest::newRow("rename") << QStringLiteral("btn_modifyDriverShowName_")
                            << QStringLiteral("Modify printer name");
    QTest::newRow("customized") << QStringLiteral("btn_installCustomizedPrinterDriver_")
                                << QStringLiteral("Customize printer");
    QTest::newRow("import") << QStringLiteral("btn_importDriverPackage_") << QStringLiteral("Import printer");
    QTest::newRow("export") << QStringLiteral("btn_exportDriverPackage_") << QStringLiteral("Export printer");
    QTest::newRow("quit") << QStringLiteral("btn_quit_") << QStringLiteral("Quit");
}

void ManagementDialogsEnglishTest::managerDialog_texts()
{
    QFETCH(QString, objectName);
    QFETCH(QString, english);
    PrinterDriverManagerDlg dialog(nullptr);
    QCOMPARE(textOf(&dialog, objectName), english);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Printer management"));
    QCOMPARE(dialog.framelessTitleBar()->labelText()->text(), QStringLiteral("Printer management"));
}

void ManagementDialogsEnglishTest::managerDialog_defaultMarkAndFileDialogs()
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

void ManagementDialogsEnglishTest::managerDialog_setDefaultFailureBox()
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
