// The driver management dialogs driven with the keyboard alone: every key
// goes to the widget that has the focus, as a keyboard sends it; no mouse
// event, no slot called. Tab follows the layout, arrows move through the
// lists, Space presses the focused button, Enter the default one, Escape
// cancels (a message box answers "no").

#include "DialogTestSupport.h"
#include "SampleDriverFiles.h"
#include "UserScript.h"

#include "UI/InstallPrinterDriverDlg.h"
#include "UI/ModifyPrinterDriverNameDlg.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverManagerDlg.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>

using namespace DialogTestSupport;

namespace {

const QString managerClass = QStringLiteral("PrinterDriverManagerDlg");
const QString installClass = QStringLiteral("InstallPrinterDriverDlg");
const QString renameClass = QStringLiteral("ModifyPrinterDriverNameDlg");
const QString uv1610 = QStringLiteral("BexUV1610_CMYKLcLm");
const QString uv2513 = QStringLiteral("BexUV2513_CMYKWV");
const QString uv3220 = QStringLiteral("BexUV3220_8C");
const QString name2513 = QStringLiteral("Bex UV2513 CMYK+W+V");
const QString name3220 = QStringLiteral("Bex UV3220 8色 CMYK+Lc+Lm+Or+Gr");
// A file offered for installation that the round deletes.
const QString spareFile = QStringLiteral("Spare_UV1610.prs");
const QString newName = QStringLiteral("Keyboard UV1610");

PrinterDriverManager *manager()
{
    return PrinterDriverManager::instance();
}

QString focusName()
{
    const QWidget *focus = QApplication::focusWidget();
    return focus ? focus->objectName() : QStringLiteral("<no focus>");
}

// Sends one key to the widget with the focus; false when no widget has it.
bool press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget *focus = QApplication::focusWidget();
    if (!focus)
        return false;
    QTest::keyClick(focus, key, modifiers);
    return true;
}

// The object names the focus visits from where it stands, Tab after Tab,
// until it comes back (at most limit presses).
QStringList tabChain(int limit)
{
    const QWidget *start = QApplication::focusWidget();
    QStringList names{focusName()};
    for (int i = 0; i < limit; ++i) {
        if (!press(Qt::Key_Tab))
            break;
        if (QApplication::focusWidget() == start)
            break;
        names << focusName();
    }
    return names;
}

QListWidget *listOf(QWidget *window, const QString &objectName)
{
    return window->findChild<QListWidget *>(objectName);
}

bool isEnabled(QWidget *window, const QString &buttonName)
{
    const auto *button = window->findChild<QPushButton *>(buttonName);
    return button && button->isEnabled();
}

// A step for the window that matches once the keyboard focus is in it.
// When a nested window closes, a window manager activates the window below
// it, which gives the focus back to the widget that had it; the offscreen
// platform has no window manager, so the step asks for that activation as
// the window manager would.
void whenFocused(UserScript &script, const QString &what, const UserScript::Matcher &matches,
                 const UserScript::Action &act)
{
    script.then(
        what,
        [matches](QWidget *window) {
            if (!matches(window))
                return false;
            if (QApplication::activeWindow() != window)
                window->activateWindow();
            const QWidget *focus = QApplication::focusWidget();
            return focus && focus->window() == window;
        },
        act);
}

void whenFocused(UserScript &script, const QString &windowClass, const UserScript::Action &act)
{
    whenFocused(script, windowClass + QStringLiteral(": keys"), UserScript::windowOfClass(windowClass), act);
}

// The install dialog's question before it deletes the spare file.
bool isDeleteQuestion(QWidget *box)
{
    const auto *text = box->findChild<QPlainTextEdit *>(QStringLiteral("framelessMessageBox_textEdit"));
    return text && text->toPlainText().contains(spareFile);
}

// Ends every modal window at once: a failed check in a step must not leave
// the test waiting in an event loop.
void closeAllModalWindows()
{
    for (int guard = 0; guard < 16; ++guard) {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        if (UserScript::isMessageBox(dialog))
            dialog->done(-1);
        else
            dialog->reject();
    }
}

// A check inside a step: on failure it is written down and every window is
// closed, so exec() returns and the test fails at once.
#define STEP_CHECK(script, condition, text)                                                                  \
    do {                                                                                                     \
        if (!(condition)) {                                                                                  \
            (script).problem(text);                                                                          \
            closeAllModalWindows();                                                                          \
            return;                                                                                          \
        }                                                                                                    \
    } while (false)

#define STEP_PRESS(script, ...)                                                                              \
    STEP_CHECK(script, press(__VA_ARGS__), QStringLiteral("no widget has the focus for a key"))

} // namespace

class ManagementDialogsKeyboardTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanupTestCase();

    void managerDialog_tabFollowsTheLayout();
    void installDialog_tabFollowsTheLayout();
    void renameDialog_tabFollowsTheLayout();
    void installDialog_arrowsSetTheButtonsOfTheCurrentRow();
    void renameDialog_enterAcceptsAndEscapeCancels();
    void managerDialog_enterPressesQuit();
    void managerDialog_withTheKeyboardOnly_completesAWholeRound();
};

void ManagementDialogsKeyboardTest::init()
{
    QVERIFY(startWithNothingInstalled());
}

void ManagementDialogsKeyboardTest::cleanupTestCase()
{
    manager()->unload();
}

void ManagementDialogsKeyboardTest::managerDialog_tabFollowsTheLayout()
{
    QVERIFY(!installSample(uv2513).isEmpty());
    PrinterDriverManagerDlg dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    // The list first, then the buttons from top to bottom; the hidden one
    // and the title bar's buttons are skipped.
    QCOMPARE(focusName(), QStringLiteral("listWidget_"));
    QCOMPARE(
        tabChain(20),
        (QStringList{QStringLiteral("listWidget_"), QStringLiteral("btn_installPrinterDriver_"),
                     QStringLiteral("btn_delPrinterDriver_"), QStringLiteral("btn_printerDriverProperty_"),
                     QStringLiteral("btn_setDefaultPrinterDriver_"),
                     QStringLiteral("btn_modifyDriverShowName_"), QStringLiteral("btn_importDriverPackage_"),
                     QStringLiteral("btn_exportDriverPackage_"), QStringLiteral("btn_quit_")}));
}

void ManagementDialogsKeyboardTest::installDialog_tabFollowsTheLayout()
{
    QVERIFY(!offerSample(uv1610).isEmpty());
    InstallPrinterDriverDlg dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    // The printer list, then the buttons from left to right.
    QCOMPARE(focusName(), QStringLiteral("listWidget_printerDriverList_"));
    QCOMPARE(tabChain(10),
             (QStringList{QStringLiteral("listWidget_printerDriverList_"), QStringLiteral("btn_del_"),
                          QStringLiteral("btn_install_"), QStringLiteral("btn_cancel_")}));
}

void ManagementDialogsKeyboardTest::renameDialog_tabFollowsTheLayout()
{
    ModifyPrinterDriverNameDlg dialog(name2513, nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    QCOMPARE(focusName(), QStringLiteral("lineEdit_driverShowName_"));
    QCOMPARE(tabChain(10), (QStringList{QStringLiteral("lineEdit_driverShowName_"), QStringLiteral("btn_ok_"),
                                        QStringLiteral("btn_cancel_")}));
}

void ManagementDialogsKeyboardTest::installDialog_arrowsSetTheButtonsOfTheCurrentRow()
{
    QVERIFY(!offerSample(uv1610).isEmpty());
    QVERIFY(manager()->installDriver(offerSample(uv2513)));
    InstallPrinterDriverDlg dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QListWidget *list = listOf(&dialog, QStringLiteral("listWidget_printerDriverList_"));
    QCOMPARE(QApplication::focusWidget(), list);
    QCOMPARE(list->currentRow(), 0);
    QVERIFY(isEnabled(&dialog, QStringLiteral("btn_install_")));

    // Down to the installed driver: nothing to install or delete there.
    QVERIFY(press(Qt::Key_Down));
    QCOMPARE(list->currentRow(), 1);
    QVERIFY2(!isEnabled(&dialog, QStringLiteral("btn_install_")),
             "install stays enabled on an installed row");
    QVERIFY2(!isEnabled(&dialog, QStringLiteral("btn_del_")), "delete stays enabled on an installed row");

    // Up again to the file not installed yet.
    QVERIFY(press(Qt::Key_Up));
    QCOMPARE(list->currentRow(), 0);
    QVERIFY2(isEnabled(&dialog, QStringLiteral("btn_install_")), "install stays disabled on a new row");
    QVERIFY2(isEnabled(&dialog, QStringLiteral("btn_del_")), "delete stays disabled on a new row");
}

void ManagementDialogsKeyboardTest::renameDialog_enterAcceptsAndEscapeCancels()
{
    {
        ModifyPrinterDriverNameDlg dialog(name2513, nullptr);
        UserScript script;
        whenFocused(script, renameClass, [&script](QWidget *) {
            STEP_CHECK(script, focusName() == QStringLiteral("lineEdit_driverShowName_"),
                       QStringLiteral("the name field has no focus: ") + focusName());
            STEP_PRESS(script, Qt::Key_End);
            QTest::keyClicks(QApplication::focusWidget(), QStringLiteral(" 2"));
            STEP_PRESS(script, Qt::Key_Return);
        });
        QCOMPARE(script.exec(dialog), int(QDialog::Accepted));
        QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
        QCOMPARE(dialog.driverShowName(), name2513 + QStringLiteral(" 2"));
    }
    {
        ModifyPrinterDriverNameDlg dialog(name2513, nullptr);
        UserScript script;
        whenFocused(script, renameClass, [&script](QWidget *) {
            QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("x"));
            STEP_PRESS(script, Qt::Key_Escape);
        });
        QCOMPARE(script.exec(dialog), int(QDialog::Rejected));
        QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
        QCOMPARE(dialog.driverShowName(), QString());
    }
}

void ManagementDialogsKeyboardTest::managerDialog_enterPressesQuit()
{
    QVERIFY(!installSample(uv2513).isEmpty());
    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;
    whenFocused(script, managerClass, [&script](QWidget *) {
        STEP_CHECK(script, focusName() == QStringLiteral("listWidget_"),
                   QStringLiteral("the list has no focus: ") + focusName());
        STEP_PRESS(script, Qt::Key_Return);
    });
    QCOMPARE(script.exec(dialog), int(QDialog::Accepted));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
}

void ManagementDialogsKeyboardTest::managerDialog_withTheKeyboardOnly_completesAWholeRound()
{
    // Installed: 2513 and 3220, the default; offered: those two, 1610 and
    // a spare file.
    QVERIFY(manager()->installDriver(offerSample(uv2513)));
    const auto installed3220 = manager()->installDriver(offerSample(uv3220));
    QVERIFY(installed3220);
    QVERIFY(manager()->setDefaultDriverId(installed3220->id));
    QVERIFY(!offerSample(uv1610).isEmpty());
    const QString sparePath = offerFolder() + spareFile;
    QVERIFY(QFile::copy(SampleDriverFiles::prsPath(uv1610), sparePath));

    PrinterDriverManagerDlg dialog(nullptr);
    UserScript script;

    // The list has the focus, on the default row; arrows move through it.
    whenFocused(script, managerClass, [&script](QWidget *window) {
        QListWidget *list = listOf(window, QStringLiteral("listWidget_"));
        STEP_CHECK(script, QApplication::focusWidget() == list,
                   QStringLiteral("the manager opens with the focus on ") + focusName());
        STEP_CHECK(script, list->currentRow() == 1, QStringLiteral("the default row is not current"));
        STEP_PRESS(script, Qt::Key_Up);
        STEP_CHECK(script, list->currentRow() == 0, QStringLiteral("Up does not move to the first row"));
        STEP_PRESS(script, Qt::Key_Down);
        STEP_CHECK(script, list->currentRow() == 1, QStringLiteral("Down does not move to the second row"));
        // Tab to the install button, Space opens the install dialog.
        STEP_PRESS(script, Qt::Key_Tab);
        STEP_CHECK(script, focusName() == QStringLiteral("btn_installPrinterDriver_"),
                   QStringLiteral("Tab from the list goes to ") + focusName());
        STEP_PRESS(script, Qt::Key_Space);
    });

    // Down over the installed rows and up again to 1610, Tab to install,
    // Enter installs it.
    whenFocused(script, installClass, [&script](QWidget *window) {
        QListWidget *list = listOf(window, QStringLiteral("listWidget_printerDriverList_"));
        STEP_CHECK(script, QApplication::focusWidget() == list,
                   QStringLiteral("the install dialog opens with the focus on ") + focusName());
        STEP_CHECK(script, list->count() == 4,
                   QStringLiteral("the install dialog does not offer four files"));
        STEP_PRESS(script, Qt::Key_Down);
        STEP_CHECK(script, list->currentRow() == 1 && !isEnabled(window, QStringLiteral("btn_install_")),
                   QStringLiteral("install stays enabled on the installed row ") +
                       list->currentItem()->text());
        STEP_PRESS(script, Qt::Key_Down);
        STEP_PRESS(script, Qt::Key_Up);
        STEP_PRESS(script, Qt::Key_Up);
        STEP_CHECK(script, list->currentRow() == 0 && isEnabled(window, QStringLiteral("btn_install_")),
                   QStringLiteral("install is disabled on the new row ") + list->currentItem()->text());
        STEP_PRESS(script, Qt::Key_Tab);
        STEP_PRESS(script, Qt::Key_Tab);
        STEP_CHECK(script, focusName() == QStringLiteral("btn_install_"),
                   QStringLiteral("two Tabs from the list go to ") + focusName());
        STEP_PRESS(script, Qt::Key_Return);
    });

    // The new row is current; Tab on to rename, Space opens it.
    whenFocused(script, managerClass, [&script](QWidget *window) {
        QListWidget *list = listOf(window, QStringLiteral("listWidget_"));
        STEP_CHECK(script, list->count() == 3 && list->currentRow() == 2,
                   QStringLiteral("the installed driver is not the current third row"));
        STEP_CHECK(script, focusName() == QStringLiteral("btn_installPrinterDriver_"),
                   QStringLiteral("after installing, the focus is on ") + focusName());
        for (int i = 0; i < 4; ++i)
            STEP_PRESS(script, Qt::Key_Tab);
        STEP_CHECK(script, focusName() == QStringLiteral("btn_modifyDriverShowName_"),
                   QStringLiteral("four Tabs from install go to ") + focusName());
        STEP_PRESS(script, Qt::Key_Space);
    });

    // A new name typed over the old one; Enter confirms.
    whenFocused(script, renameClass, [&script](QWidget *) {
        STEP_CHECK(script, focusName() == QStringLiteral("lineEdit_driverShowName_"),
                   QStringLiteral("the rename dialog opens with the focus on ") + focusName());
        STEP_PRESS(script, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), newName);
        STEP_PRESS(script, Qt::Key_Return);
    });

    // Back to install (Shift+Tab), Space opens the install dialog again.
    whenFocused(script, managerClass, [&script](QWidget *window) {
        QListWidget *list = listOf(window, QStringLiteral("listWidget_"));
        STEP_CHECK(script, list->item(2) && list->item(2)->text() == newName,
                   QStringLiteral("the row does not show the new name"));
        STEP_CHECK(script, focusName() == QStringLiteral("btn_modifyDriverShowName_"),
                   QStringLiteral("after renaming, the focus is on ") + focusName());
        for (int i = 0; i < 4; ++i)
            STEP_PRESS(script, Qt::Key_Backtab, Qt::ShiftModifier);
        STEP_CHECK(script, focusName() == QStringLiteral("btn_installPrinterDriver_"),
                   QStringLiteral("four Shift+Tabs from rename go to ") + focusName());
        STEP_PRESS(script, Qt::Key_Space);
    });

    // End goes to the spare file; Tab to delete, Space asks.
    whenFocused(script, installClass, [&script](QWidget *window) {
        QListWidget *list = listOf(window, QStringLiteral("listWidget_printerDriverList_"));
        STEP_PRESS(script, Qt::Key_End);
        STEP_CHECK(script, list->currentItem() && list->currentItem()->text() == spareFile,
                   QStringLiteral("End does not go to the spare file"));
        STEP_CHECK(script, isEnabled(window, QStringLiteral("btn_del_")),
                   QStringLiteral("delete is disabled on the spare file"));
        STEP_PRESS(script, Qt::Key_Tab);
        STEP_CHECK(script, focusName() == QStringLiteral("btn_del_"),
                   QStringLiteral("Tab from the list goes to ") + focusName());
        STEP_PRESS(script, Qt::Key_Space);
    });
    // Escape answers "no": the file stays.
    whenFocused(script, QStringLiteral("question: Escape"), &UserScript::isMessageBox,
                [&script](QWidget *box) {
                    STEP_CHECK(script, isDeleteQuestion(box),
                               QStringLiteral("the box does not ask to delete the spare file"));
                    STEP_PRESS(script, Qt::Key_Escape);
                });
    whenFocused(script, installClass, [&script, sparePath](QWidget *window) {
        QListWidget *list = listOf(window, QStringLiteral("listWidget_printerDriverList_"));
        STEP_CHECK(script, QFile::exists(sparePath) && list->count() == 4,
                   QStringLiteral("Escape in the question deleted the file"));
        STEP_CHECK(script, focusName() == QStringLiteral("btn_del_"),
                   QStringLiteral("after the question, the focus is on ") + focusName());
        STEP_PRESS(script, Qt::Key_Space);
    });
    // Enter presses the default button, "确定": the file goes.
    whenFocused(script, QStringLiteral("question: Enter"), &UserScript::isMessageBox,
                [&script](QWidget *box) {
                    STEP_CHECK(script, isDeleteQuestion(box),
                               QStringLiteral("the box does not ask to delete the spare file"));
                    STEP_PRESS(script, Qt::Key_Return);
                });
    whenFocused(script, installClass, [&script, sparePath](QWidget *window) {
        QListWidget *list = listOf(window, QStringLiteral("listWidget_printerDriverList_"));
        STEP_CHECK(script, !QFile::exists(sparePath) && list->count() == 3,
                   QStringLiteral("Enter in the question did not delete the file"));
        // Escape cancels the install dialog.
        STEP_PRESS(script, Qt::Key_Escape);
    });
    // Escape closes the manager.
    whenFocused(script, managerClass, [&script](QWidget *) {
        STEP_CHECK(script,
                   listOf(QApplication::activeModalWidget(), QStringLiteral("listWidget_"))->count() == 3,
                   QStringLiteral("cancelling the install dialog changed the list"));
        STEP_PRESS(script, Qt::Key_Escape);
    });

    QCOMPARE(script.exec(dialog), int(QDialog::Rejected));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QVERIFY(dialog.isHidden());

    // What the round changed: 1610 installed under its new name, the
    // default untouched, the spare file gone.
    QStringList names;
    for (const auto &driver : manager()->obtainInstalledDrivers())
        names << driver->showName;
    QCOMPARE(names, (QStringList{name2513, name3220, newName}));
    QCOMPARE(manager()->defaultDriverId(), installed3220->id);
    QVERIFY(!QFile::exists(sparePath));
    QVERIFY(QFile::exists(offerFolder() + uv1610 + QStringLiteral(".prs")));
}

QTEST_MAIN(ManagementDialogsKeyboardTest)
#include "tst_managementdialogs_keyboard.moc"
