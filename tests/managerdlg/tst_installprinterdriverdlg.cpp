// The install dialog with the open print-parameter library: what it offers
// from "dtp/bin/", what it marks as installed, installing and deleting as an
// operator does it, the files on disk and the log lines after each step.

#include "DialogTestSupport.h"
#include "FormTable.h"
#include "LogCapture.h"
#include "SampleDriverFiles.h"
#include "TestAppDir.h"
#include "UserScript.h"

#include "Config/PrinterDriverConfig.h"
#include "FramelessWidget/Common/CommonFramelessTitleBar.h"
#include "UI/InstallPrinterDriverDlg.h"
#include "UI/PrinterDriverManager.h"

#include <QBoxLayout>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

using namespace DialogTestSupport;

namespace {

const QString dialogClass = QStringLiteral("InstallPrinterDriverDlg");
const QString dialogSource = QStringLiteral("source/UI/InstallPrinterDriverDlg");
const QString sample = QStringLiteral("BexUV2513_CMYKWV");
const QString otherSample = QStringLiteral("BexUV3220_8C");
constexpr int vendorDirRole = Qt::UserRole + 1;
constexpr int prsPathRole = Qt::UserRole + 2;
constexpr int leftVCenter = int(Qt::AlignLeft | Qt::AlignVCenter);

// The form as designed: window, widgets with their texts, layouts.
const FormTable::Form designedForm = {
    QSize(544, 510),
    "安装打印机",
    {
        {"vendor label", "label_vendorList_", "QLabel", "生产商列表"},
        {"printer label", "label_2", "QLabel", "打印机列表"},
        {"delete", "btn_del_", "QPushButton", "删除"},
        {"install", "btn_install_", "QPushButton", "安装"},
        {"cancel", "btn_cancel_", "QPushButton", "取消"},
        {"vendor list", "listWidget_vendorList_", "QListWidget", ""},
        {"printer list", "listWidget_printerDriverList_", "QListWidget", ""},
    },
    {
        "QVBoxLayout verticalLayout_4 spacing 0 margins 0,0,0,0",
        "  QHBoxLayout titleBarLayout_",
        "    CommonFramelessTitleBar",
        "  QVBoxLayout verticalLayout_3 spacing 6 margins 6,6,6,6",
        "    QHBoxLayout horizontalLayout_2 spacing 6",
        "      QVBoxLayout verticalLayout",
        "        QLabel label_vendorList_",
        "        QListWidget listWidget_vendorList_",
        "      QVBoxLayout verticalLayout_2",
        "        QLabel label_2",
        "        QListWidget listWidget_printerDriverList_",
        "    QHBoxLayout horizontalLayout",
        "      QPushButton btn_del_",
        "      QSpacerItem 40x20 Expanding/Minimum",
        "      QPushButton btn_install_",
        "      QPushButton btn_cancel_",
    },
};

QListWidget *printerList(QWidget *dialog)
{
    return dialog->findChild<QListWidget *>(QStringLiteral("listWidget_printerDriverList_"));
}

QPushButton *button(QWidget *dialog, const QString &name)
{
    return dialog->findChild<QPushButton *>(name);
}

bool writeOffered(const QString &fileName, const QByteArray &content = QByteArrayLiteral("not a driver"))
{
    return TestAppDir::writeFile(QStringLiteral("dtp/bin/") + fileName, content);
}

// The messages of the dialog's own lines of one level, in order.
QStringList dialogLines(const LogCapture &log, QtMsgType type)
{
    QStringList lines;
    for (const LogCapture::Entry &entry : log.entries()) {
        if (entry.type == type && entry.file == dialogSource)
            lines << entry.message;
    }
    return lines;
}

struct ButtonStates
{
    bool install = false;
    bool del = false;
};

ButtonStates statesOf(QWidget *dialog)
{
    return {button(dialog, QStringLiteral("btn_install_"))->isEnabled(),
            button(dialog, QStringLiteral("btn_del_"))->isEnabled()};
}

} // namespace

class InstallPrinterDriverDlgTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanupTestCase();

    void form_matchesTheDesign();
    void buttons_areStyledAndCancelIsTheDefault();
    void metaObject_declaresTheSlotsInOrder();
    void vendorList_isHiddenAndHoldsTheOfferFolder();

    void listing_leavesOutTempCopiesButKeepsTempPrs();
    void listing_comparesTheSuffixWithoutCase();
    void listing_takesOnlyTheFolderItselfSortedByName();
    void listing_givesEachRowItsPathToolTipAndAlignment();
    void listing_logsTheVendor();
    void listFiles_withStarSuffix_listsEveryFile();
    void listFiles_missingFolder_givesNothing();

    void installedRow_isMarkedAndDisablesBoth();
    void uninstalledRow_enablesBoth();
    void buttons_withoutFile_disableInstallAndLeaveDeleteDoingNothing();
    void missingOfferFolder_leavesTheListEmpty();

    void install_clickedRow_acceptsWithTheNewId();
    void install_failure_showsErrorAndRejects();
    void delete_confirmed_removesRowAndFile();
    void delete_readOnlyFile_isRemovedToo();
    void delete_notConfirmed_keepsRowAndFile_data();
    void delete_notConfirmed_keepsRowAndFile();
    void install_afterDeletingTheLastRow_closesThroughCheckYourCode();
    void cancel_rejectsWithoutId();
    void titleBarClose_rejectsWithoutId();
};

void InstallPrinterDriverDlgTest::init()
{
    QVERIFY(startWithNothingInstalled());
}

void InstallPrinterDriverDlgTest::cleanupTestCase()
{
    PrinterDriverManager::instance()->unload();
}

void InstallPrinterDriverDlgTest::form_matchesTheDesign()
{
    QWidget parent;
    InstallPrinterDriverDlg dialog(&parent);
    QCOMPARE(dialog.parentWidget(), &parent);
    FormTable::verifyForm(&dialog, designedForm);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(dialog.layout()->itemAt(0)->layout()->itemAt(0)->widget(),
             static_cast<QWidget *>(dialog.framelessTitleBar()));
    QVERIFY(dialog.installedDriverId().isEmpty());
}

void InstallPrinterDriverDlgTest::buttons_areStyledAndCancelIsTheDefault()
{
    InstallPrinterDriverDlg dialog(nullptr);
    for (const QString &name :
         {QStringLiteral("btn_install_"), QStringLiteral("btn_del_"), QStringLiteral("btn_cancel_")})
        QCOMPARE(button(&dialog, name)->property("defaultStyle_normal"), QVariant(true));
    QVERIFY(button(&dialog, QStringLiteral("btn_cancel_"))->isDefault());
    QVERIFY(!button(&dialog, QStringLiteral("btn_install_"))->isDefault());
}

void InstallPrinterDriverDlgTest::metaObject_declaresTheSlotsInOrder()
{
    QCOMPARE(ownMethods(InstallPrinterDriverDlg::staticMetaObject),
             (QStringList{QStringLiteral("on_itemClicked_vendor(QListWidgetItem*)"),
                          QStringLiteral("on_itemClicked_printerDriver(QListWidgetItem*)"),
                          QStringLiteral("on_installPrinterDriver()"),
                          QStringLiteral("on_deletePrinterDriver()"), QStringLiteral("on_cancel()")}));
}

void InstallPrinterDriverDlgTest::vendorList_isHiddenAndHoldsTheOfferFolder()
{
    InstallPrinterDriverDlg dialog(nullptr);
    dialog.show();
    auto *vendors = dialog.findChild<QListWidget *>(QStringLiteral("listWidget_vendorList_"));
    QVERIFY(!vendors->isVisible());
    QVERIFY(!dialog.findChild<QLabel *>(QStringLiteral("label_vendorList_"))->isVisible());
    QVERIFY(printerList(&dialog)->isVisible());
    QCOMPARE(vendors->count(), 1);
    QListWidgetItem *vendor = vendors->item(0);
    QCOMPARE(vendor->text(), QStringLiteral("Bex"));
    QCOMPARE(vendor->toolTip(), QStringLiteral("Bex"));
    QCOMPARE(vendor->textAlignment(), leftVCenter);
    QCOMPARE(vendor->data(vendorDirRole).toString(), TestAppDir::filePath(QStringLiteral("dtp/bin/")));
    QCOMPARE(vendors->currentItem(), vendor);
}

void InstallPrinterDriverDlgTest::listing_leavesOutTempCopiesButKeepsTempPrs()
{
    QVERIFY(writeOffered(QStringLiteral("a.temp.prs")));
    QVERIFY(writeOffered(QStringLiteral("b.TEMP.PRS")));
    QVERIFY(writeOffered(QStringLiteral("temp.prs")));
    QVERIFY(writeOffered(QStringLiteral("1234_1_5.temp.prs")));

    InstallPrinterDriverDlg dialog(nullptr);
    QCOMPARE(rowTexts(printerList(&dialog)), QStringList{QStringLiteral("temp.prs")});
}

void InstallPrinterDriverDlgTest::listing_comparesTheSuffixWithoutCase()
{
    QVERIFY(writeOffered(QStringLiteral("A.PRS")));
    QVERIFY(writeOffered(QStringLiteral("a.prs.bak")));
    QVERIFY(writeOffered(QStringLiteral("c.Prs")));
    QVERIFY(writeOffered(QStringLiteral("prs")));
    QVERIFY(writeOffered(QStringLiteral("d.prsx")));

    InstallPrinterDriverDlg dialog(nullptr);
    QCOMPARE(rowTexts(printerList(&dialog)), (QStringList{QStringLiteral("A.PRS"), QStringLiteral("c.Prs")}));
}

void InstallPrinterDriverDlgTest::listing_takesOnlyTheFolderItselfSortedByName()
{
    QVERIFY(!offerSample(otherSample).isEmpty());
    QVERIFY(!offerSample(sample).isEmpty());
    QVERIFY(writeOffered(QStringLiteral("ICC Profile/RGB/inside.prs")));
    QVERIFY(QDir().mkpath(offerFolder() + QStringLiteral("folder.prs")));

    InstallPrinterDriverDlg dialog(nullptr);
    QCOMPARE(rowTexts(printerList(&dialog)),
             (QStringList{sample + QStringLiteral(".prs"), otherSample + QStringLiteral(".prs")}));
}

void InstallPrinterDriverDlgTest::listing_givesEachRowItsPathToolTipAndAlignment()
{
    const QString path = offerSample(sample);
    QVERIFY(!path.isEmpty());
    InstallPrinterDriverDlg dialog(nullptr);
    QListWidget *list = printerList(&dialog);
    QCOMPARE(list->count(), 1);
    QListWidgetItem *item = list->item(0);
    QCOMPARE(item->text(), sample + QStringLiteral(".prs"));
    QCOMPARE(item->toolTip(), path);
    QCOMPARE(item->data(prsPathRole).toString(), path);
    QCOMPARE(item->textAlignment(), leftVCenter);
    // Row 0 is made current and reported as clicked at once.
    QCOMPARE(list->currentItem(), item);
}

void InstallPrinterDriverDlgTest::listing_logsTheVendor()
{
    const QString path = offerSample(sample);
    LogCapture log;
    InstallPrinterDriverDlg dialog(nullptr);
    QCOMPARE(dialogLines(log, QtDebugMsg),
             (QStringList{QStringLiteral("vendor: \"Bex\""), QStringLiteral("item: \"%1.prs\"").arg(sample),
                          QStringLiteral("driverFilePath: \"%1\"").arg(path), QStringLiteral("未安装了")}));
    const QList<LogCapture::Entry> vendorLines = log.find(QtDebugMsg, QStringLiteral("vendor:"));
    QCOMPARE(vendorLines.size(), 1);
    QCOMPARE(vendorLines.first().function,
             QStringLiteral("void InstallPrinterDriverDlg::on_itemClicked_vendor(QListWidgetItem*)"));
    QCOMPARE(vendorLines.first().category, QStringLiteral("bex.driverui.dialog"));
}

void InstallPrinterDriverDlgTest::listFiles_withStarSuffix_listsEveryFile()
{
    QVERIFY(writeOffered(QStringLiteral("b.txt")));
    QVERIFY(writeOffered(QStringLiteral("a.prs")));
    QVERIFY(writeOffered(QStringLiteral("noSuffix")));
    const QStringList all = {offerFolder() + QStringLiteral("a.prs"), offerFolder() + QStringLiteral("b.txt"),
                             offerFolder() + QStringLiteral("noSuffix")};
    QCOMPARE(InstallPrinterDriverDlg::listFiles(offerFolder(), QStringLiteral("*")), all);
    QCOMPARE(InstallPrinterDriverDlg::listFiles(offerFolder(), QStringLiteral(".*")), all);
    QCOMPARE(InstallPrinterDriverDlg::listFiles(offerFolder(), QStringLiteral("TXT")),
             QStringList{offerFolder() + QStringLiteral("b.txt")});
    QCOMPARE(InstallPrinterDriverDlg::listFiles(offerFolder(), QStringLiteral(".prs")),
             QStringList{offerFolder() + QStringLiteral("a.prs")});
}

void InstallPrinterDriverDlgTest::listFiles_missingFolder_givesNothing()
{
    QVERIFY(InstallPrinterDriverDlg::listFiles(TestAppDir::filePath(QStringLiteral("no such folder")),
                                               QStringLiteral("prs"))
                .isEmpty());
}

void InstallPrinterDriverDlgTest::installedRow_isMarkedAndDisablesBoth()
{
    const QString installedPath = offerSample(sample);
    QVERIFY(!offerSample(otherSample).isEmpty());
    QVERIFY(PrinterDriverManager::instance()->installDriver(installedPath));

    InstallPrinterDriverDlg dialog(nullptr);
    QListWidget *list = printerList(&dialog);
    QCOMPARE(rowTexts(list),
             (QStringList{sample + QStringLiteral(".prs (已安装)"), otherSample + QStringLiteral(".prs")}));
    // The installed row is current from the start: nothing to do with it.
    QCOMPARE(statesOf(&dialog).install, false);
    QCOMPARE(statesOf(&dialog).del, false);

    UserScript script;
    ButtonStates afterOther;
    ButtonStates afterInstalled;
    QString logged;
    LogCapture log;
    script.inspect(dialogClass, [&](QWidget *window) {
        if (!clickRow(printerList(window), 1))
            script.problem(QStringLiteral("row 1 cannot be clicked"));
        afterOther = statesOf(window);
        log.clear();
        if (!clickRow(printerList(window), 0))
            script.problem(QStringLiteral("row 0 cannot be clicked"));
        afterInstalled = statesOf(window);
        logged = dialogLines(log, QtDebugMsg).join(QLatin1Char('|'));
    });
    script.click(dialogClass, QStringLiteral("btn_cancel_"));
    QCOMPARE(script.exec(dialog), int(QDialog::Rejected));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QVERIFY(afterOther.install && afterOther.del);
    QVERIFY(!afterInstalled.install && !afterInstalled.del);
    QCOMPARE(logged, QStringLiteral("item: \"%1.prs (已安装)\"|driverFilePath: \"%2\"|已经安装了")
                         .arg(sample, installedPath));
}

void InstallPrinterDriverDlgTest::uninstalledRow_enablesBoth()
{
    QVERIFY(!offerSample(sample).isEmpty());
    InstallPrinterDriverDlg dialog(nullptr);
    QCOMPARE(rowTexts(printerList(&dialog)), QStringList{sample + QStringLiteral(".prs")});
    QVERIFY(statesOf(&dialog).install);
    QVERIFY(statesOf(&dialog).del);
}

void InstallPrinterDriverDlgTest::buttons_withoutFile_disableInstallAndLeaveDeleteDoingNothing()
{
    QVERIFY(QDir(offerFolder()).exists());
    QVERIFY(InstallPrinterDriverDlg::listFiles(offerFolder(), QStringLiteral("prs")).isEmpty());
    const QStringList before = QDir(offerFolder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);

    InstallPrinterDriverDlg dialog(nullptr);
    QCOMPARE(printerList(&dialog)->count(), 0);
    QVERIFY(!statesOf(&dialog).install);
    QVERIFY(statesOf(&dialog).del);

    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_del_"));
    // No message box comes: the next window seen is the dialog itself.
    script.inspect(dialogClass, [&](QWidget *window) {
        if (!window->isVisible())
            script.problem(QStringLiteral("the dialog closed"));
    });
    script.click(dialogClass, QStringLiteral("btn_cancel_"));
    QCOMPARE(script.exec(dialog), int(QDialog::Rejected));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QVERIFY(script.messageBoxes().isEmpty());
    QCOMPARE(QDir(offerFolder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), before);
}

void InstallPrinterDriverDlgTest::missingOfferFolder_leavesTheListEmpty()
{
    QVERIFY(TestAppDir::remove(QStringLiteral("dtp/bin")));
    InstallPrinterDriverDlg dialog(nullptr);
    QCOMPARE(printerList(&dialog)->count(), 0);
    QVERIFY(!statesOf(&dialog).install);
    QVERIFY(statesOf(&dialog).del);
}

void InstallPrinterDriverDlgTest::install_clickedRow_acceptsWithTheNewId()
{
    QVERIFY(!offerSample(otherSample).isEmpty());
    const QString path = offerSample(sample);

    InstallPrinterDriverDlg dialog(nullptr);
    UserScript script;
    script.inspect(dialogClass, [&](QWidget *window) {
        if (!clickRow(printerList(window), 0))
            script.problem(QStringLiteral("row 0 cannot be clicked"));
    });
    LogCapture log;
    script.click(dialogClass, QStringLiteral("btn_install_"));
    QCOMPARE(script.exec(dialog), int(QDialog::Accepted));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));

    const auto installed = PrinterDriverManager::instance()->findDriverInfoByPrsPath(path);
    QVERIFY(installed);
    QCOMPARE(dialog.installedDriverId(), installed->id);
    QCOMPARE(installed->name, QStringLiteral("Bex UV2513 CMYK+W+V"));
    QVERIFY(QFile::exists(path));
    // The library's own list holds it, so it survives a restart.
    QVERIFY(
        TestAppDir::readFile(QStringLiteral("dtp/BexUIPrintParamsProcessing.json")).contains(path.toUtf8()));
    QCOMPARE(dialogLines(log, QtDebugMsg).last(), QStringLiteral("printerDriver: \"%1\" 安装成功").arg(path));
    QVERIFY(dialogLines(log, QtCriticalMsg).isEmpty());
}

void InstallPrinterDriverDlgTest::install_failure_showsErrorAndRejects()
{
    QVERIFY(writeOffered(QStringLiteral("broken.prs"), QByteArrayLiteral("\x01\x02 this is no driver")));
    const QString path = offerFolder() + QStringLiteral("broken.prs");

    InstallPrinterDriverDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_install_"));
    script.answerMessageBox(QStringLiteral("确定"));
    QCOMPARE(script.exec(dialog), int(QDialog::Rejected));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QVERIFY(dialog.installedDriverId().isEmpty());
    QCOMPARE(script.messageBoxes().size(), 1);
    const UserScript::MessageBoxSeen box = script.messageBoxes().first();
    QCOMPARE(box.title, QStringLiteral("温馨提示"));
    QCOMPARE(box.text, QStringLiteral("安装失败"));
    QCOMPARE(box.buttons, QStringList{QStringLiteral("确定")});
    QCOMPARE(box.icon, QStringLiteral("error"));
    QVERIFY(!PrinterDriverManager::instance()->findDriverInfoByPrsPath(path));
    QVERIFY(QFile::exists(path));
}

void InstallPrinterDriverDlgTest::delete_confirmed_removesRowAndFile()
{
    QVERIFY(!offerSample(otherSample).isEmpty());
    const QString path = offerSample(sample);

    InstallPrinterDriverDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_del_"));
    script.answerMessageBox(QStringLiteral("确定"));
    QStringList rowsAfter;
    ButtonStates statesAfter;
    script.inspect(dialogClass, [&](QWidget *window) {
        rowsAfter = rowTexts(printerList(window));
        statesAfter = statesOf(window);
    });
    script.click(dialogClass, QStringLiteral("btn_cancel_"));
    QCOMPARE(script.exec(dialog), int(QDialog::Rejected));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));

    QCOMPARE(script.messageBoxes().size(), 1);
    const UserScript::MessageBoxSeen box = script.messageBoxes().first();
    QCOMPARE(box.title, QStringLiteral("温馨提示"));
    QCOMPARE(box.text, QStringLiteral("确认删除驱动\"%1.prs\"吗?").arg(sample));
    QCOMPARE(box.buttons, (QStringList{QStringLiteral("确定"), QStringLiteral("取消")}));
    QCOMPARE(box.defaultButton, 0);
    QCOMPARE(box.icon, QStringLiteral("error"));

    QCOMPARE(rowsAfter, QStringList{otherSample + QStringLiteral(".prs")});
    QVERIFY(!QFile::exists(path));
    QVERIFY(QFile::exists(offerFolder() + otherSample + QStringLiteral(".prs")));
    // Nothing is selected again and the buttons stay as they were.
    QVERIFY(statesAfter.install && statesAfter.del);
}

void InstallPrinterDriverDlgTest::delete_readOnlyFile_isRemovedToo()
{
    const QString path = offerSample(sample);
    QVERIFY(QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::ReadGroup));

    InstallPrinterDriverDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_del_"));
    script.answerMessageBox(QStringLiteral("确定"));
    script.click(dialogClass, QStringLiteral("btn_cancel_"));
    script.exec(dialog);
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QVERIFY(!QFile::exists(path));
}

void InstallPrinterDriverDlgTest::delete_notConfirmed_keepsRowAndFile_data()
{
    QTest::addColumn<QString>("answer");
    QTest::newRow("cancel button") << QStringLiteral("取消");
    QTest::newRow("title bar close") << QStringLiteral("framelessTitleBar_btnClose");
    QTest::newRow("escape") << QStringLiteral("Escape");
}

void InstallPrinterDriverDlgTest::delete_notConfirmed_keepsRowAndFile()
{
    QFETCH(QString, answer);
    const QString path = offerSample(sample);
    InstallPrinterDriverDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_del_"));
    if (answer == QStringLiteral("取消")) {
        script.answerMessageBox(answer);
    } else {
        script.then(QStringLiteral("leave the question unanswered"), &UserScript::isMessageBox,
                    [&](QWidget *box) {
                        if (answer == QLatin1String("Escape"))
                            QTest::keyClick(box, Qt::Key_Escape);
                        else
                            script.clickButton(box, answer);
                    });
    }
    QStringList rowsAfter;
    script.inspect(dialogClass, [&](QWidget *window) { rowsAfter = rowTexts(printerList(window)); });
    script.click(dialogClass, QStringLiteral("btn_cancel_"));
    script.exec(dialog);
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QCOMPARE(rowsAfter, QStringList{sample + QStringLiteral(".prs")});
    QVERIFY(QFile::exists(path));
}

void InstallPrinterDriverDlgTest::install_afterDeletingTheLastRow_closesThroughCheckYourCode()
{
    const QString path = offerSample(sample);
    InstallPrinterDriverDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_del_"));
    script.answerMessageBox(QStringLiteral("确定"));
    ButtonStates statesAfter;
    int rowsAfter = -1;
    script.inspect(dialogClass, [&](QWidget *window) {
        rowsAfter = printerList(window)->count();
        statesAfter = statesOf(window);
    });
    script.click(dialogClass, QStringLiteral("btn_install_"));
    LogCapture log;
    QCOMPARE(script.exec(dialog), int(QDialog::Rejected));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QCOMPARE(rowsAfter, 0);
    QVERIFY(statesAfter.install && statesAfter.del);
    QVERIFY(!QFile::exists(path));
    QVERIFY(dialog.installedDriverId().isEmpty());
    const QList<LogCapture::Entry> critical = log.find(QtCriticalMsg, QStringLiteral("check your code"));
    QCOMPARE(critical.size(), 1);
    QCOMPARE(critical.first().message, QStringLiteral("check your code"));
    QCOMPARE(critical.first().file, dialogSource);
    QCOMPARE(critical.first().function,
             QStringLiteral("void InstallPrinterDriverDlg::on_installPrinterDriver()"));
    QCOMPARE(script.messageBoxes().size(), 1);
}

void InstallPrinterDriverDlgTest::cancel_rejectsWithoutId()
{
    QVERIFY(!offerSample(sample).isEmpty());
    InstallPrinterDriverDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("btn_cancel_"));
    QCOMPARE(script.exec(dialog), int(QDialog::Rejected));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QVERIFY(dialog.installedDriverId().isEmpty());
    QVERIFY(PrinterDriverManager::instance()->obtainInstalledDrivers().isEmpty());
}

void InstallPrinterDriverDlgTest::titleBarClose_rejectsWithoutId()
{
    QVERIFY(!offerSample(sample).isEmpty());
    InstallPrinterDriverDlg dialog(nullptr);
    UserScript script;
    script.click(dialogClass, QStringLiteral("framelessTitleBar_btnClose"));
    QCOMPARE(script.exec(dialog), int(QDialog::Rejected));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QVERIFY(dialog.installedDriverId().isEmpty());
    QVERIFY(PrinterDriverManager::instance()->obtainInstalledDrivers().isEmpty());
}

QTEST_MAIN(InstallPrinterDriverDlgTest)
#include "tst_installprinterdriverdlg.moc"
