// The printer management dialog with the open print-parameter library, the
// sample drivers and the real archiver: the list and its roles, the default
// mark, every operation driven as an operator drives it (buttons, file
// dialogs, message boxes), and after each step the library's list, the
// settings file and the files on disk.

#include "DialogTestSupport.h"
#include "FormTable.h"
#include "LogCapture.h"
#include "SampleDriverFiles.h"
#include "TestAppDir.h"
#include "UserScript.h"

#include "Config/PrinterDriverConfig.h"
#include "FramelessWidget/Common/CommonFramelessTitleBar.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverManagerDlg.h"
#include "UI/PrinterDriverPackageHelper.h"

#include <QBoxLayout>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

using namespace DialogTestSupport;

namespace {

const QString dialogClass = QStringLiteral("PrinterDriverManagerDlg");
const QString dialogSource = QStringLiteral("source/UI/PrinterDriverManagerDlg");
const QString uv2513 = QStringLiteral("BexUV2513_CMYKWV");
const QString uv3220 = QStringLiteral("BexUV3220_8C");
const QString uv1610 = QStringLiteral("BexUV1610_CMYKLcLm");
const QString name2513 = QStringLiteral("Bex UV2513 CMYK+W+V");
const QString name3220 = QStringLiteral("Bex UV3220 8色 CMYK+Lc+Lm+Or+Gr");
const QString name1610 = QStringLiteral("Bex UV1610 CMYK+Lc+Lm");
const QString defaultMark = QStringLiteral(" (默认)");
constexpr int idRole = Qt::UserRole + 1;
constexpr int nameRole = Qt::UserRole + 2;
constexpr int leftVCenter = int(Qt::AlignLeft | Qt::AlignVCenter);

// The eight operations, in the order of their buttons and of their slots
// ("btn_%1_", "on_%1()").
const QStringList operations = {
    QStringLiteral("installPrinterDriver"),  QStringLiteral("delPrinterDriver"),
    QStringLiteral("printerDriverProperty"), QStringLiteral("setDefaultPrinterDriver"),
    QStringLiteral("modifyDriverShowName"),  QStringLiteral("installCustomizedPrinterDriver"),
    QStringLiteral("importDriverPackage"),   QStringLiteral("exportDriverPackage")};

// The form as designed: window, widgets with their texts, layouts; the
// operations' buttons in the order above.
const FormTable::Form designedForm = {
    QSize(491, 432),
    "打印机管理",
    {
        {"label", "label", "QLabel", "已安装的打印机"},
        {"install", "btn_installPrinterDriver_", "QPushButton", "安装打印机"},
        {"delete", "btn_delPrinterDriver_", "QPushButton", "删除打印机"},
        {"property", "btn_printerDriverProperty_", "QPushButton", "打印机属性"},
        {"default", "btn_setDefaultPrinterDriver_", "QPushButton", "设置为默认"},
        {"rename", "btn_modifyDriverShowName_", "QPushButton", "修改打印机名"},
        {"customized", "btn_installCustomizedPrinterDriver_", "QPushButton", "自定义打印机"},
        {"import", "btn_importDriverPackage_", "QPushButton", "导入打印机"},
        {"export", "btn_exportDriverPackage_", "QPushButton", "导出打印机"},
        {"quit", "btn_quit_", "QPushButton", "退出"},
        {"list", "listWidget_", "QListWidget", ""},
    },
    {
        "QVBoxLayout verticalLayout_3 spacing 0 margins 0,0,0,0",
        "  QHBoxLayout titleBarLayout_",
        "    CommonFramelessTitleBar",
        "  QVBoxLayout verticalLayout_2 margins 6,6,6,6",
        "    QLabel label",
        "    QHBoxLayout horizontalLayout spacing 10",
        "      QListWidget listWidget_",
        "      QVBoxLayout verticalLayout spacing 6",
        "        QPushButton btn_installPrinterDriver_",
        "        QPushButton btn_delPrinterDriver_",
        "        QPushButton btn_printerDriverProperty_",
        "        QPushButton btn_setDefaultPrinterDriver_",
        "        QPushButton btn_modifyDriverShowName_",
        "        QPushButton btn_installCustomizedPrinterDriver_",
        "        QPushButton btn_importDriverPackage_",
        "        QPushButton btn_exportDriverPackage_",
        "        QSpacerItem 20x40 Minimum/Expanding",
        "        QPushButton btn_quit_",
    },
};

const QStringList rowButtonNames = {QStringLiteral("btn_delPrinterDriver_"),
                                    QStringLiteral("btn_printerDriverProperty_"),
                                    QStringLiteral("btn_setDefaultPrinterDriver_")};

PrinterDriverManager *manager()
{
    return PrinterDriverManager::instance();
}

QListWidget *listOf(QWidget *dialog)
{
    return dialog->findChild<QListWidget *>(QStringLiteral("listWidget_"));
}

QPushButton *button(QWidget *dialog, const QString &name)
{
    return dialog->findChild<QPushButton *>(name);
}

// "111" when delete, property and set-default are all enabled.
QString rowButtonStates(QWidget *dialog)
{
    QString states;
    for (const QString &name : rowButtonNames)
        states += button(dialog, name)->isEnabled() ? QLatin1Char('1') : QLatin1Char('0');
    return states;
}

QString settingInFile(const QString &key)
{
    QSettings settings(TestAppDir::filePath(QStringLiteral("PrinterDriverConfig.ini")), QSettings::IniFormat);
    return settings.value(key, QStringLiteral("<absent>")).toString();
}

// Show names of the drivers in the library's own list, in its order.
QStringList libraryShowNames()
{
    QStringList names;
    for (const auto &driver : manager()->obtainInstalledDrivers())
        names << driver->showName;
    return names;
}

QStringList dialogLines(const LogCapture &log, QtMsgType type)
{
    QStringList lines;
    for (const LogCapture::Entry &entry : log.entries()) {
        if (entry.type == type && entry.file == dialogSource)
            lines << entry.message;
    }
    return lines;
}

// Ends a script: looks at the rows, quits the dialog, and runs it all.
QStringList rowsAtQuit(UserScript &script, PrinterDriverManagerDlg &dialog)
{
    QStringList texts;
    script.inspect(dialogClass, [&texts](QWidget *window) { texts = rowTexts(listOf(window)); });
    script.click(dialogClass, QStringLiteral("btn_quit_"));
    script.exec(dialog);
    return texts;
}

#define VERIFY_SCRIPT(script)                                                                                \
    QVERIFY2((script).problems().isEmpty(), qPrintable((script).problems().join(QLatin1Char('\n'))))

} // namespace

class PrinterDriverManagerDlgTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir packages_;
    QString id2513_;
    QString id3220_;

    // Installs two samples; 3220 becomes the default when makeDefault.
    void installTwo(bool makeDefault)
    {
        id2513_ = installSample(uv2513);
        id3220_ = installSample(uv3220);
        QVERIFY(!id2513_.isEmpty() && !id3220_.isEmpty());
        if (makeDefault)
            QVERIFY(manager()->setDefaultDriverId(id3220_));
    }

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void form_matchesTheDesign();
    void buttons_areStyledAndQuitIsTheDefault();
    void metaObject_declaresTheSlotsInOrder();

    void emptyList_leavesRowButtonsDisabled();
    void list_withoutDefault_makesTheFirstRowCurrentWithoutMark();
    void rows_carryIdNamePathAndDefaultMark();
    void customizedButton_neverShowsAndDoesNothing();
    void slots_withoutRow_logAnEmptyLineAndStop();

    void delete_defaultRow_clearsTheDefaultUntilSetDefaultMarksOneRow();
    void delete_lastRow_leavesRowButtonsDisabled();
    void setDefault_alreadyDefault_logsNothingAndKeepsText();
    void setDefault_failure_warnsAndKeepsTheList();
    void rename_defaultRow_keepsTheMark();
    void rename_refusedName_showsErrorAndKeepsRow();
    void rename_cancelled_changesNothing();

    void install_throughInstallDialog_appendsAndSelectsRow();
    void install_cancelled_changesNothing();
    void property_opensThePropertyDialogOfTheRow();

    void fileDialogs_cancelled_changeNeitherSettingsNorList();
    void export_writesPackageAndRemembersFolder();
    void export_failure_showsErrorAndLogsPrsPath();
    void import_packageOfADeletedDriver_addsItBack();
    void import_overwriteRefused_showsErrorAndChangesNothing();
    void import_everyPrsAlreadyInstalled_addsNoRowAndShowsNothing();
    void import_brokenPackage_showsError();
    void import_driverRefusedByLibrary_showsInstallError();

    void quit_accepts();
};

void PrinterDriverManagerDlgTest::initTestCase()
{
    QVERIFY(packages_.isValid());
    QVERIFY2(QFileInfo(PrinterDriverPackageHelper::archiverPath()).isExecutable(),
             "the archiver link is missing from the test's application directory");
}

void PrinterDriverManagerDlgTest::init()
{
    QVERIFY(startWithNothingInstalled());
    id2513_.clear();
    id3220_.clear();
}

void PrinterDriverManagerDlgTest::cleanupTestCase()
{
    manager()->unload();
}

void PrinterDriverManagerDlgTest::form_matchesTheDesign()
{
    QWidget parent;
    PrinterDriverManagerDlg dialog(&parent);
    QCOMPARE(dialog.parentWidget(), &parent);
    FormTable::verifyForm(&dialog, designedForm);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(dialog.layout()->itemAt(0)->layout()->itemAt(0)->widget(),
             static_cast<QWidget *>(dialog.framelessTitleBar()));
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("label"))->alignment(),
             Qt::AlignLeft | Qt::AlignVCenter);
    // One line a row: the list lays out a thousand drivers without measuring each.
    QVERIFY(listOf(&dialog)->uniformItemSizes());
}

void PrinterDriverManagerDlgTest::buttons_areStyledAndQuitIsTheDefault()
{
    PrinterDriverManagerDlg dialog(nullptr);
    const QList<QPushButton *> buttons =
        dialog.findChildren<QPushButton *>(QRegularExpression(QStringLiteral("^btn_")));
    QCOMPARE(buttons.size(), 9);
    for (QPushButton *b : buttons)
        QVERIFY2(b->property("defaultStyle_normal") == QVariant(true), qPrintable(b->objectName()));
    for (const QString &name :
         {QStringLiteral("btn_installPrinterDriver_"), QStringLiteral("btn_delPrinterDriver_"),
          QStringLiteral("btn_printerDriverProperty_"), QStringLiteral("btn_setDefaultPrinterDriver_"),
          QStringLiteral("btn_installCustomizedPrinterDriver_")})
        QVERIFY2(!button(&dialog, name)->autoDefault(), qPrintable(name));
    QVERIFY(button(&dialog, QStringLiteral("btn_quit_"))->isDefault());
}

void PrinterDriverManagerDlgTest::metaObject_declaresTheSlotsInOrder()
{
    QStringList expected;
    for (const QString &operation : operations)
        expected << QStringLiteral("on_%1()").arg(operation);
    expected << QStringLiteral("on_itemClicked(QListWidgetItem*)") << QStringLiteral("on_quit()");
    QCOMPARE(ownMethods(PrinterDriverManagerDlg::staticMetaObject), expected);
}

void PrinterDriverManagerDlgTest::emptyList_leavesRowButtonsDisabled()
{
    PrinterDriverManagerDlg dialog(nullptr);
    QCOMPARE(listOf(&dialog)->count(), 0);
    QVERIFY(!listOf(&dialog)->currentItem());
    QCOMPARE(rowButtonStates(&dialog), QStringLiteral("000"));
    QVERIFY(button(&dialog, QStringLiteral("btn_installPrinterDriver_"))->isEnabled());
    QVERIFY(button(&dialog, QStringLiteral("btn_modifyDriverShowName_"))->isEnabled());
}

void PrinterDriverManagerDlgTest::list_withoutDefault_makesTheFirstRowCurrentWithoutMark()
{
    installTwo(false);
    PrinterDriverManagerDlg dialog(nullptr);
    QListWidget *list = listOf(&dialog);
    QCOMPARE(rowTexts(list), (QStringList{name2513, name3220}));
    QCOMPARE(list->currentRow(), 0);
    QCOMPARE(rowButtonStates(&dialog), QStringLiteral("111"));
}

void PrinterDriverManagerDlgTest::rows_carryIdNamePathAndDefaultMark()
{
    installTwo(true);
    PrinterDriverManagerDlg dialog(nullptr);
    QListWidget *list = listOf(&dialog);
    QCOMPARE(rowTexts(list), (QStringList{name2513, name3220 + defaultMark}));
    QCOMPARE(rowData(list, idRole), (QStringList{id2513_, id3220_}));
    QCOMPARE(rowData(list, nameRole), (QStringList{name2513, name3220}));
    QCOMPARE(list->item(0)->toolTip(), SampleDriverFiles::prsPath(uv2513));
    QCOMPARE(list->item(1)->toolTip(), SampleDriverFiles::prsPath(uv3220));
    QCOMPARE(list->item(0)->textAlignment(), leftVCenter);
    // The default driver's row is the current one.
    QCOMPARE(list->currentRow(), 1);
    QCOMPARE(rowButtonStates(&dialog), QStringLiteral("111"));
}

void PrinterDriverManagerDlgTest::customizedButton_neverShowsAndDoesNothing()
{
    installTwo(true);
    PrinterDriverManagerDlg dialog(nullptr);
    dialog.show();
    QPushButton *customized = button(&dialog, QStringLiteral("btn_installCustomizedPrinterDriver_"));
    QVERIFY(!customized->isVisible());
    const QStringList before = rowTexts(listOf(&dialog));
    const int topLevels = QApplication::topLevelWidgets().size();
    LogCapture log;
    customized->click();
    QCOMPARE(rowTexts(listOf(&dialog)), before);
    QCOMPARE(QApplication::topLevelWidgets().size(), topLevels);
    QVERIFY(dialogLines(log, QtDebugMsg).isEmpty());
    QCOMPARE(libraryShowNames().size(), 2);
}

void PrinterDriverManagerDlgTest::slots_withoutRow_logAnEmptyLineAndStop()
{
    PrinterDriverManagerDlg dialog(nullptr);
    const QStringList slotNames = {
        QStringLiteral("on_delPrinterDriver"), QStringLiteral("on_printerDriverProperty"),
        QStringLiteral("on_setDefaultPrinterDriver"), QStringLiteral("on_modifyDriverShowName"),
        QStringLiteral("on_exportDriverPackage")};
    LogCapture log;
    for (const QString &slot : slotNames)
        QVERIFY(QMetaObject::invokeMethod(&dialog, qPrintable(slot)));
    QStringList lines;
    for (const LogCapture::Entry &entry : log.entries()) {
        if (entry.file == dialogSource)
            lines << QStringLiteral("%1 [%2] %3").arg(entry.function).arg(entry.type).arg(entry.message);
    }
    // The rename slot writes no line of its own.
    QCOMPARE(lines,
             (QStringList{QStringLiteral("void PrinterDriverManagerDlg::on_delPrinterDriver() [0] "),
                          QStringLiteral("void PrinterDriverManagerDlg::on_printerDriverProperty() [0] "),
                          QStringLiteral("void PrinterDriverManagerDlg::on_setDefaultPrinterDriver() [0] "),
                          QStringLiteral("void PrinterDriverManagerDlg::on_exportDriverPackage() [0] ")}));
    QVERIFY(!QApplication::activeModalWidget());
}

void PrinterDriverManagerDlgTest::delete_defaultRow_clearsTheDefaultUntilSetDefaultMarksOneRow()
{
    installTwo(true);
    const QString id1610 = installSample(uv1610);
    QVERIFY(!id1610.isEmpty());
    QCOMPARE(settingInFile(QStringLiteral("defaultDriverId")), id3220_);

    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    QStringList afterDelete;
    QString statesAfterDelete;
    int currentAfterDelete = -1;
    QString defaultAfterDelete;
    script.click(dialogClass, QStringLiteral("btn_delPrinterDriver_")); // row 1, the default
    script.inspect(dialogClass, [&](QWidget *window) {
        afterDelete = rowTexts(listOf(window));
        statesAfterDelete = rowButtonStates(window);
        currentAfterDelete = listOf(window)->currentRow();
        defaultAfterDelete = settingInFile(QStringLiteral("defaultDriverId"));
        if (!clickRow(listOf(window), 1))
            script.problem(QStringLiteral("cannot click row 1"));
    });
    script.click(dialogClass, QStringLiteral("btn_setDefaultPrinterDriver_"));
    QStringList afterSetDefault;
    script.inspect(dialogClass, [&](QWidget *window) { afterSetDefault = rowTexts(listOf(window)); });
    script.click(dialogClass, QStringLiteral("btn_quit_"));
    QCOMPARE(script.exec(dialog), int(QDialog::Accepted));
    VERIFY_SCRIPT(script);

    QCOMPARE(afterDelete, (QStringList{name2513, name1610}));
    // Row 0 is selected again after a deletion.
    QCOMPARE(currentAfterDelete, 0);
    QCOMPARE(statesAfterDelete, QStringLiteral("111"));
    QCOMPARE(defaultAfterDelete, QString());
    QCOMPARE(afterSetDefault, (QStringList{name2513, name1610 + defaultMark}));
    QCOMPARE(manager()->defaultDriverId(), id1610);
    QCOMPARE(settingInFile(QStringLiteral("defaultDriverId")), id1610);
    QCOMPARE(libraryShowNames(), (QStringList{name2513, name1610}));
    // Deleting uninstalls; the driver's files stay where they are.
    QVERIFY(QFile::exists(SampleDriverFiles::prsPath(uv3220)));
}

void PrinterDriverManagerDlgTest::delete_lastRow_leavesRowButtonsDisabled()
{
    QVERIFY(!installSample(uv2513).isEmpty());
    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    QString states;
    int rows = -1;
    script.click(dialogClass, QStringLiteral("btn_delPrinterDriver_"));
    script.inspect(dialogClass, [&](QWidget *window) {
        states = rowButtonStates(window);
        rows = listOf(window)->count();
    });
    script.click(dialogClass, QStringLiteral("btn_quit_"));
    script.exec(dialog);
    VERIFY_SCRIPT(script);
    QCOMPARE(rows, 0);
    QCOMPARE(states, QStringLiteral("000"));
    QVERIFY(libraryShowNames().isEmpty());
    QVERIFY(script.messageBoxes().isEmpty());
}

void PrinterDriverManagerDlgTest::setDefault_alreadyDefault_logsNothingAndKeepsText()
{
    installTwo(true);
    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    LogCapture log;
    script.click(dialogClass, QStringLiteral("btn_setDefaultPrinterDriver_"));
    const QStringList texts = rowsAtQuit(script, dialog);
    VERIFY_SCRIPT(script);
    QCOMPARE(texts, (QStringList{name2513, name3220 + defaultMark}));
    QVERIFY(!log.contains(QtDebugMsg, QStringLiteral("默认的打印机驱动变化了")));
    QCOMPARE(manager()->defaultDriverId(), id3220_);
}

void PrinterDriverManagerDlgTest::setDefault_failure_warnsAndKeepsTheList()
{
    installTwo(true);
    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    script.inspect(dialogClass, [&](QWidget *window) {
        if (!clickRow(listOf(window), 0))
            script.problem(QStringLiteral("cannot click row 0"));
        // The driver's file goes while the dialog is open: the library can
        // no longer select it.
        QFile::remove(SampleDriverFiles::prsPath(uv2513));
    });
    script.click(dialogClass, QStringLiteral("btn_setDefaultPrinterDriver_"));
    script.answerMessageBox(QStringLiteral("确定"));
    const QStringList texts = rowsAtQuit(script, dialog);
    VERIFY_SCRIPT(script);
    QCOMPARE(script.messageBoxes().size(), 1);
    const UserScript::MessageBoxSeen box = script.messageBoxes().first();
    QCOMPARE(box.title, QStringLiteral("温馨提示"));
    QCOMPARE(box.text, QStringLiteral("设置默认打印机失败"));
    QCOMPARE(box.buttons, QStringList{QStringLiteral("确定")});
    QCOMPARE(box.icon, QStringLiteral("warning"));
    QCOMPARE(texts, (QStringList{name2513, name3220 + defaultMark}));
    QCOMPARE(manager()->defaultDriverId(), id3220_);
    QCOMPARE(settingInFile(QStringLiteral("defaultDriverId")), id3220_);
}

void PrinterDriverManagerDlgTest::rename_defaultRow_keepsTheMark()
{
    installTwo(true);
    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    QString shownInRenameDialog;
    QStringList texts;
    QStringList names;
    script.click(dialogClass, QStringLiteral("btn_modifyDriverShowName_"));
    script.inspect(QStringLiteral("ModifyPrinterDriverNameDlg"), [&](QWidget *window) {
        auto *edit = window->findChild<QLineEdit *>(QStringLiteral("lineEdit_driverShowName_"));
        shownInRenameDialog = edit->text();
        edit->selectAll();
        QTest::keyClicks(edit, QStringLiteral("Hall B"));
        script.clickButton(window, QStringLiteral("btn_ok_"));
    });
    script.inspect(dialogClass, [&](QWidget *window) {
        texts = rowTexts(listOf(window));
        names = rowData(listOf(window), nameRole);
    });
    script.click(dialogClass, QStringLiteral("btn_quit_"));
    script.exec(dialog);
    VERIFY_SCRIPT(script);
    QCOMPARE(shownInRenameDialog, name3220);
    QCOMPARE(texts, (QStringList{name2513, QStringLiteral("Hall B") + defaultMark}));
    QCOMPARE(names, (QStringList{name2513, QStringLiteral("Hall B")}));
    QCOMPARE(libraryShowNames(), (QStringList{name2513, QStringLiteral("Hall B")}));
    QVERIFY(TestAppDir::readFile(QStringLiteral("dtp/BexUIPrintParamsProcessing.json")).contains("Hall B"));
}

void PrinterDriverManagerDlgTest::rename_refusedName_showsErrorAndKeepsRow()
{
    installTwo(true);
    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_modifyDriverShowName_"));
    script.inspect(QStringLiteral("ModifyPrinterDriverNameDlg"), [&](QWidget *window) {
        auto *edit = window->findChild<QLineEdit *>(QStringLiteral("lineEdit_driverShowName_"));
        edit->selectAll();
        // Blanks pass the rename dialog; the library refuses them.
        QTest::keyClicks(edit, QStringLiteral("   "));
        script.clickButton(window, QStringLiteral("btn_ok_"));
    });
    script.answerMessageBox(QStringLiteral("确定"));
    const QStringList texts = rowsAtQuit(script, dialog);
    VERIFY_SCRIPT(script);
    QCOMPARE(script.messageBoxes().size(), 1);
    QCOMPARE(script.messageBoxes().first().title, QStringLiteral("温馨提示"));
    QCOMPARE(script.messageBoxes().first().text, QStringLiteral("打印机名称修改失败"));
    QCOMPARE(script.messageBoxes().first().buttons, QStringList{QStringLiteral("确定")});
    QCOMPARE(script.messageBoxes().first().icon, QStringLiteral("error"));
    QCOMPARE(texts, (QStringList{name2513, name3220 + defaultMark}));
    QCOMPARE(libraryShowNames(), (QStringList{name2513, name3220}));
}

void PrinterDriverManagerDlgTest::rename_cancelled_changesNothing()
{
    installTwo(false);
    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_modifyDriverShowName_"));
    script.inspect(QStringLiteral("ModifyPrinterDriverNameDlg"), [&](QWidget *window) {
        auto *edit = window->findChild<QLineEdit *>(QStringLiteral("lineEdit_driverShowName_"));
        edit->selectAll();
        QTest::keyClicks(edit, QStringLiteral("Not taken"));
        script.clickButton(window, QStringLiteral("btn_cancel_"));
    });
    const QStringList texts = rowsAtQuit(script, dialog);
    VERIFY_SCRIPT(script);
    QCOMPARE(texts, (QStringList{name2513, name3220}));
    QCOMPARE(libraryShowNames(), (QStringList{name2513, name3220}));
}

void PrinterDriverManagerDlgTest::install_throughInstallDialog_appendsAndSelectsRow()
{
    QVERIFY(!installSample(uv2513).isEmpty());
    const QString offered = offerSample(uv3220);
    QVERIFY(!offered.isEmpty());

    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    QStringList texts;
    int current = -1;
    QString states;
    script.click(dialogClass, QStringLiteral("btn_installPrinterDriver_"));
    script.click(QStringLiteral("InstallPrinterDriverDlg"), QStringLiteral("btn_install_"));
    script.inspect(dialogClass, [&](QWidget *window) {
        texts = rowTexts(listOf(window));
        current = listOf(window)->currentRow();
        states = rowButtonStates(window);
    });
    script.click(dialogClass, QStringLiteral("btn_quit_"));
    LogCapture log;
    script.exec(dialog);
    VERIFY_SCRIPT(script);

    const auto installed = manager()->findDriverInfoByPrsPath(offered);
    QVERIFY(installed);
    QCOMPARE(texts, (QStringList{name2513, name3220}));
    QCOMPARE(current, 1);
    QCOMPARE(states, QStringLiteral("111"));
    QCOMPARE(libraryShowNames(), texts);
    QVERIFY(dialogLines(log, QtDebugMsg).contains(QStringLiteral("\"%1\"").arg(installed->id)));
}

void PrinterDriverManagerDlgTest::install_cancelled_changesNothing()
{
    QVERIFY(!installSample(uv2513).isEmpty());
    QVERIFY(!offerSample(uv3220).isEmpty());
    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_installPrinterDriver_"));
    script.click(QStringLiteral("InstallPrinterDriverDlg"), QStringLiteral("btn_cancel_"));
    const QStringList texts = rowsAtQuit(script, dialog);
    VERIFY_SCRIPT(script);
    QCOMPARE(texts, QStringList{name2513});
    QCOMPARE(libraryShowNames(), texts);
}

void PrinterDriverManagerDlgTest::property_opensThePropertyDialogOfTheRow()
{
    installTwo(true);
    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    QString title;
    script.inspect(dialogClass, [&](QWidget *window) {
        if (!clickRow(listOf(window), 0))
            script.problem(QStringLiteral("cannot click row 0"));
    });
    script.click(dialogClass, QStringLiteral("btn_printerDriverProperty_"));
    script.inspect(QStringLiteral("PrinterDriverPropertyDlg"), [&](QWidget *window) {
        title = window->windowTitle();
        script.clickButton(window, QStringLiteral("framelessTitleBar_btnClose"));
    });
    const QStringList texts = rowsAtQuit(script, dialog);
    VERIFY_SCRIPT(script);
    QVERIFY(!title.isEmpty());
    QCOMPARE(texts, (QStringList{name2513, name3220 + defaultMark}));
    QCOMPARE(manager()->defaultDriverId(), id3220_);
}

void PrinterDriverManagerDlgTest::fileDialogs_cancelled_changeNeitherSettingsNorList()
{
    installTwo(true);
    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_importDriverPackage_"));
    script.answerFileDialog(QString());
    script.click(dialogClass, QStringLiteral("btn_exportDriverPackage_"));
    script.answerFileDialog(QString());
    const QStringList texts = rowsAtQuit(script, dialog);
    VERIFY_SCRIPT(script);
    QCOMPARE(script.fileDialogs().size(), 2);
    QCOMPARE(script.fileDialogs().at(0).caption, QStringLiteral("安装自定义打印机"));
    QCOMPARE(script.fileDialogs().at(0).nameFilters, QStringList{QStringLiteral("打印机 (*.bex_driver)")});
    QVERIFY(!script.fileDialogs().at(0).saving);
    QCOMPARE(script.fileDialogs().at(1).caption, QStringLiteral("导出打印机"));
    QCOMPARE(script.fileDialogs().at(1).nameFilters, QStringList{QStringLiteral("打印机 (*.bex_driver)")});
    QVERIFY(script.fileDialogs().at(1).saving);
    QCOMPARE(script.fileDialogs().at(1).selectedFile, uv3220 + QStringLiteral(".bex_driver"));
    QCOMPARE(settingInFile(QStringLiteral("openRootDir")), QStringLiteral("<absent>"));
    QCOMPARE(settingInFile(QStringLiteral("saveRootDir")), QStringLiteral("<absent>"));
    QCOMPARE(texts, (QStringList{name2513, name3220 + defaultMark}));
}

void PrinterDriverManagerDlgTest::export_writesPackageAndRemembersFolder()
{
    installTwo(true);
    const QString folder = packages_.filePath(QStringLiteral("export-ok"));
    QVERIFY(QDir().mkpath(folder));
    PrinterDriverConfig::instance()->setSaveRootDir(folder);
    const QString package = folder + QStringLiteral("/hall b.bex_driver");

    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_exportDriverPackage_"));
    script.answerFileDialog(package);
    script.click(dialogClass, QStringLiteral("btn_quit_"));
    LogCapture log;
    script.exec(dialog);
    VERIFY_SCRIPT(script);
    QCOMPARE(script.fileDialogs().size(), 1);
    QCOMPARE(script.fileDialogs().first().directory, folder);
    QCOMPARE(script.fileDialogs().first().selectedFile, uv3220 + QStringLiteral(".bex_driver"));
    QVERIFY(script.messageBoxes().isEmpty());
    QVERIFY(QFileInfo(package).size() > 0);
    QCOMPARE(settingInFile(QStringLiteral("saveRootDir")), folder);
    QVERIFY(dialogLines(log, QtCriticalMsg).isEmpty());

    // The archive holds the driver under one top folder named after it.
    QProcess list;
    list.start(PrinterDriverPackageHelper::archiverPath(),
               {QStringLiteral("l"), QStringLiteral("-slt"), package});
    QVERIFY(list.waitForFinished(60000));
    // The archiver writes its platform's separator between folder names.
    const QString listing = QString::fromLocal8Bit(list.readAllStandardOutput())
                                .replace(PrinterDriverPackageHelper::archiverSeparator(), QLatin1Char('/'));
    QVERIFY2(listing.contains(QStringLiteral("Path = %1/driver/%1.prs").arg(uv3220)), qPrintable(listing));
    QVERIFY2(listing.contains(QStringLiteral("Path = %1/driver/%1.pdv").arg(uv3220)), qPrintable(listing));
}

void PrinterDriverManagerDlgTest::export_failure_showsErrorAndLogsPrsPath()
{
    installTwo(true);
    const QString folder = packages_.filePath(QStringLiteral("export-failure"));
    QVERIFY(QDir().mkpath(folder));
    PrinterDriverConfig::instance()->setSaveRootDir(folder);
    // Without its .pdv file the driver cannot be packed.
    QVERIFY(QFile::remove(TestAppDir::filePath(QStringLiteral("dtp/driver/%1.pdv").arg(uv3220))));
    const QString package = folder + QStringLiteral("/broken.bex_driver");

    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_exportDriverPackage_"));
    script.answerFileDialog(package);
    script.answerMessageBox(QStringLiteral("确认"));
    script.click(dialogClass, QStringLiteral("btn_quit_"));
    LogCapture log;
    script.exec(dialog);
    VERIFY_SCRIPT(script);
    QCOMPARE(script.messageBoxes().size(), 1);
    QCOMPARE(script.messageBoxes().first().title, QStringLiteral("温馨提示"));
    QCOMPARE(script.messageBoxes().first().text, QStringLiteral("驱动导出失败"));
    QCOMPARE(script.messageBoxes().first().buttons, QStringList{QStringLiteral("确认")});
    QCOMPARE(script.messageBoxes().first().icon, QStringLiteral("error"));
    QCOMPARE(
        dialogLines(log, QtCriticalMsg),
        QStringList{
            QStringLiteral("exportPackage failed - file: \"%1\"").arg(SampleDriverFiles::prsPath(uv3220))});
    QVERIFY(!QFile::exists(package));
    // The folder is remembered even though the export failed.
    QCOMPARE(settingInFile(QStringLiteral("saveRootDir")), folder);
}

void PrinterDriverManagerDlgTest::import_packageOfADeletedDriver_addsItBack()
{
    installTwo(true);
    const QString folder = packages_.filePath(QStringLiteral("import-ok"));
    QVERIFY(QDir().mkpath(folder));
    const QString package = folder + QStringLiteral("/uv3220.bex_driver");
    QVERIFY(PrinterDriverPackageHelper(nullptr).exportPackage(package, SampleDriverFiles::prsPath(uv3220),
                                                              id3220_));
    QVERIFY(QFile::exists(package));
    PrinterDriverConfig::instance()->setOpenRootDir(packages_.path());

    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_delPrinterDriver_"));
    script.click(dialogClass, QStringLiteral("btn_importDriverPackage_"));
    script.answerFileDialog(package);
    // The driver's .pdv and profiles are on disk already: the operator
    // agrees to replace them.
    script.answerMessageBox(QStringLiteral("是"));
    QStringList texts;
    QStringList tips;
    int current = -1;
    script.inspect(dialogClass, [&](QWidget *window) {
        texts = rowTexts(listOf(window));
        current = listOf(window)->currentRow();
        for (int row = 0; row < listOf(window)->count(); ++row)
            tips << listOf(window)->item(row)->toolTip();
    });
    script.click(dialogClass, QStringLiteral("btn_quit_"));
    script.exec(dialog);
    VERIFY_SCRIPT(script);

    QCOMPARE(script.fileDialogs().size(), 1);
    QCOMPARE(script.fileDialogs().first().directory, packages_.path());
    QCOMPARE(script.messageBoxes().size(), 1);
    QVERIFY2(script.messageBoxes().first().text.startsWith(QStringLiteral("如果继续安装，将会覆盖以下文件:")),
             qPrintable(script.messageBoxes().first().text));
    QCOMPARE(script.messageBoxes().first().buttons,
             (QStringList{QStringLiteral("是"), QStringLiteral("否")}));
    // The .prs file already on disk is kept; the package's copy gets "_1".
    const QString copy = TestAppDir::filePath(QStringLiteral("dtp/driver/%1_1.prs").arg(uv3220));
    QVERIFY(QFile::exists(copy));
    QCOMPARE(texts, (QStringList{name2513, name3220}));
    QCOMPARE(tips.last(), copy);
    QCOMPARE(current, 1);
    QCOMPARE(libraryShowNames(), texts);
    QCOMPARE(settingInFile(QStringLiteral("openRootDir")), folder);
}

void PrinterDriverManagerDlgTest::import_overwriteRefused_showsErrorAndChangesNothing()
{
    installTwo(false);
    const QString package = packages_.filePath(QStringLiteral("refused.bex_driver"));
    QVERIFY(PrinterDriverPackageHelper(nullptr).exportPackage(package, SampleDriverFiles::prsPath(uv2513),
                                                              id2513_));
    const QString pdv = TestAppDir::filePath(QStringLiteral("dtp/driver/%1.pdv").arg(uv2513));
    QVERIFY(TestAppDir::writeFile(QStringLiteral("dtp/driver/%1.pdv").arg(uv2513), "edited here"));

    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_importDriverPackage_"));
    script.answerFileDialog(package);
    script.answerMessageBox(QStringLiteral("否"));
    script.answerMessageBox(QStringLiteral("确认"));
    QStringList texts;
    script.inspect(dialogClass, [&](QWidget *window) { texts = rowTexts(listOf(window)); });
    script.click(dialogClass, QStringLiteral("btn_quit_"));
    LogCapture log;
    script.exec(dialog);
    VERIFY_SCRIPT(script);
    QCOMPARE(script.messageBoxes().size(), 2);
    QCOMPARE(script.messageBoxes().at(1).text, QStringLiteral("驱动导入失败"));
    QCOMPARE(script.messageBoxes().at(1).buttons, QStringList{QStringLiteral("确认")});
    QCOMPARE(dialogLines(log, QtCriticalMsg),
             QStringList{QStringLiteral("importPackage failed - file: \"%1\"").arg(package)});
    QCOMPARE(TestAppDir::readFile(QStringLiteral("dtp/driver/%1.pdv").arg(uv2513)),
             QByteArray("edited here"));
    QVERIFY(QFile::exists(pdv));
    QVERIFY(!QFile::exists(TestAppDir::filePath(QStringLiteral("dtp/driver/%1_1.prs").arg(uv2513))));
    QCOMPARE(texts, (QStringList{name2513, name3220}));
    QCOMPARE(libraryShowNames(), texts);
}

void PrinterDriverManagerDlgTest::import_everyPrsAlreadyInstalled_addsNoRowAndShowsNothing()
{
    installTwo(false);
    const QString package = packages_.filePath(QStringLiteral("installed.bex_driver"));
    QVERIFY(PrinterDriverPackageHelper(nullptr).exportPackage(package, SampleDriverFiles::prsPath(uv2513),
                                                              id2513_));
    const QString prs = SampleDriverFiles::prsPath(uv2513);
    const QString aside = prs + QStringLiteral(".aside");

    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    script.inspect(dialogClass, [&](QWidget *) {
        // The installed file is moved away while the dialog is open, so the
        // import puts its .prs file at the installed driver's own path.
        if (!QFile::rename(prs, aside))
            script.problem(QStringLiteral("cannot move the .prs file aside"));
    });
    script.click(dialogClass, QStringLiteral("btn_importDriverPackage_"));
    script.answerFileDialog(package);
    script.answerMessageBox(QStringLiteral("是"));
    const QStringList texts = rowsAtQuit(script, dialog);
    VERIFY_SCRIPT(script);
    QVERIFY(QFile::exists(prs));
    // Only the overwrite question was shown: no error, no new row.
    QCOMPARE(script.messageBoxes().size(), 1);
    QVERIFY(script.messageBoxes().first().text.startsWith(QStringLiteral("如果继续安装")));
    QCOMPARE(texts, (QStringList{name2513, name3220}));
    QCOMPARE(libraryShowNames(), texts);
}

void PrinterDriverManagerDlgTest::import_brokenPackage_showsError()
{
    installTwo(false);
    const QString package = packages_.filePath(QStringLiteral("garbage.bex_driver"));
    {
        QFile file(package);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("PK\x03\x04 this is not a zip archive at all");
    }
    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_importDriverPackage_"));
    script.answerFileDialog(package);
    script.answerMessageBox(QStringLiteral("确认"));
    script.click(dialogClass, QStringLiteral("btn_quit_"));
    LogCapture log;
    script.exec(dialog);
    VERIFY_SCRIPT(script);
    QCOMPARE(script.messageBoxes().size(), 1);
    QCOMPARE(script.messageBoxes().first().text, QStringLiteral("驱动导入失败"));
    QCOMPARE(dialogLines(log, QtCriticalMsg),
             QStringList{QStringLiteral("importPackage failed - file: \"%1\"").arg(package)});
    QCOMPARE(libraryShowNames().size(), 2);
    QCOMPARE(settingInFile(QStringLiteral("openRootDir")), packages_.path());
}

void PrinterDriverManagerDlgTest::import_driverRefusedByLibrary_showsInstallError()
{
    // A well-formed package whose .prs file the library cannot read.
    const QString top = packages_.filePath(QStringLiteral("refusedByLibrary/Unreadable"));
    QVERIFY(QDir().mkpath(top + QStringLiteral("/bin")));
    QVERIFY(QDir().mkpath(top + QStringLiteral("/driver")));
    {
        QFile prs(top + QStringLiteral("/driver/Unreadable.prs"));
        QVERIFY(prs.open(QIODevice::WriteOnly));
        prs.write("no driver in here");
    }
    const QString package = packages_.filePath(QStringLiteral("unreadable.bex_driver"));
    QProcess zip;
    zip.setWorkingDirectory(packages_.filePath(QStringLiteral("refusedByLibrary")));
    zip.start(PrinterDriverPackageHelper::archiverPath(),
              {QStringLiteral("a"), QStringLiteral("-tzip"), package, QStringLiteral("Unreadable/")});
    QVERIFY(zip.waitForFinished(60000));
    QVERIFY(QFile::exists(package));

    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_importDriverPackage_"));
    script.answerFileDialog(package);
    script.answerMessageBox(QStringLiteral("确认"));
    QStringList texts;
    script.inspect(dialogClass, [&](QWidget *window) { texts = rowTexts(listOf(window)); });
    script.click(dialogClass, QStringLiteral("btn_quit_"));
    LogCapture log;
    script.exec(dialog);
    VERIFY_SCRIPT(script);
    QCOMPARE(script.messageBoxes().size(), 1);
    QCOMPARE(script.messageBoxes().first().text, QStringLiteral("驱动安装失败"));
    QCOMPARE(script.messageBoxes().first().buttons, QStringList{QStringLiteral("确认")});
    QCOMPARE(dialogLines(log, QtCriticalMsg), QStringList{QStringLiteral("installPrinterDriver failed")});
    QVERIFY(texts.isEmpty());
    QVERIFY(QFile::exists(TestAppDir::filePath(QStringLiteral("dtp/driver/Unreadable.prs"))));
}

void PrinterDriverManagerDlgTest::quit_accepts()
{
    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_quit_"));
    QCOMPARE(script.exec(dialog), int(QDialog::Accepted));
    VERIFY_SCRIPT(script);
}

QTEST_MAIN(PrinterDriverManagerDlgTest)
#include "tst_printerdrivermanagerdlg.moc"
