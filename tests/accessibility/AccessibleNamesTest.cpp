#include "AccessibleNamesTest.h"

#include "AccessibleWalk.h"
#include "DialogTestSupport.h"
#include "MessageBoxDriver.h"

#include "Config/UIModuleConfig.h"
#include "FramelessWidget/Common/CommonFramelessMessageBox.h"
#include "FramelessWidget/Common/CommonFramelessTitleBar.h"
#include "UI/InstallPrinterDriverDlg.h"
#include "UI/ModifyPrinterDriverNameDlg.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverManagerDlg.h"
#include "UI/PrinterDriverPropertyDlg.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

using namespace DialogTestSupport;

namespace {

const QString uv2513 = QStringLiteral("BexUV2513_CMYKWV");
const QString uv3220 = QStringLiteral("BexUV3220_8C");

// Fails naming every nameless control of window, one a line (written out
// first: a failure message is cut short).
bool everyControlNamed(QWidget *window)
{
    const QStringList nameless = AccessibleWalk::namelessControls(window);
    for (const QString &control : nameless)
        qWarning().noquote() << "no accessible name:" << control;
    return nameless.isEmpty();
}

#define VERIFY_EVERY_CONTROL_NAMED(window)                                                                   \
    QVERIFY2(everyControlNamed(window), "a screen reader finds controls without a name (listed above)")

// The walk must have reached the window's controls at all: a tree cut off
// at the window would name nothing and pass.
#define VERIFY_WALK_REACHES(window, minimum)                                                                 \
    QVERIFY2(AccessibleWalk::interactiveControls(window).size() >= (minimum),                                \
             "the accessible tree of the window holds fewer controls than its form")

} // namespace

AccessibleNamesTest::AccessibleNamesTest(QLocale::Language language, const ExpectedNames &expected)
    : language_(language)
    , expected_(expected)
{}

void AccessibleNamesTest::initTestCase()
{
    UIModuleConfig::instance()->setLanguage(language_);
    QCOMPARE(UIModuleConfig::instance()->language(), language_);
}

void AccessibleNamesTest::init()
{
    QVERIFY(startWithNothingInstalled());
}

void AccessibleNamesTest::cleanupTestCase()
{
    PrinterDriverManager::instance()->unload();
}

void AccessibleNamesTest::managerDialog_everyControlHasAName()
{
    QVERIFY(!installSample(uv2513).isEmpty());
    QVERIFY(!installSample(uv3220).isEmpty());
    PrinterDriverManagerDlg dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));

    // Title bar buttons, the list and the nine operations.
    VERIFY_WALK_REACHES(&dialog, 13);
    VERIFY_EVERY_CONTROL_NAMED(&dialog);
}

void AccessibleNamesTest::managerDialog_titleBarButtonsAndListAreNamed()
{
    QVERIFY(!installSample(uv2513).isEmpty());
    PrinterDriverManagerDlg dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));

    const CommonFramelessTitleBar *titleBar = dialog.framelessTitleBar();
    QCOMPARE(AccessibleWalk::accessibleNameOf(titleBar->closeButton()), expected_.close);
    QCOMPARE(AccessibleWalk::accessibleNameOf(titleBar->maximizeButton()), expected_.maximize);
    QCOMPARE(AccessibleWalk::accessibleNameOf(titleBar->minimizeButton()), expected_.minimize);
    QVERIFY(!AccessibleWalk::accessibleNameOf(titleBar->labelIcon()).isEmpty());

    auto *list = dialog.findChild<QListWidget *>(QStringLiteral("listWidget_"));
    QVERIFY(list);
    QCOMPARE(AccessibleWalk::accessibleNameOf(list), expected_.installedList);
}

void AccessibleNamesTest::installDialog_everyControlHasAName()
{
    QVERIFY(!offerSample(uv2513).isEmpty());
    QVERIFY(!offerSample(uv3220).isEmpty());
    InstallPrinterDriverDlg dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));

    // Title bar buttons, two lists and three buttons.
    VERIFY_WALK_REACHES(&dialog, 8);
    VERIFY_EVERY_CONTROL_NAMED(&dialog);
}

void AccessibleNamesTest::installDialog_listIsNamedByItsLabel()
{
    QVERIFY(!offerSample(uv2513).isEmpty());
    InstallPrinterDriverDlg dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));

    auto *list = dialog.findChild<QListWidget *>(QStringLiteral("listWidget_printerDriverList_"));
    QVERIFY(list);
    QCOMPARE(AccessibleWalk::accessibleNameOf(list), expected_.offeredList);
    QCOMPARE(AccessibleWalk::accessibleNameOf(dialog.framelessTitleBar()->closeButton()), expected_.close);
}

void AccessibleNamesTest::renameDialog_everyControlHasAName()
{
    ModifyPrinterDriverNameDlg dialog(QStringLiteral("Bex UV2513"), nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));

    // Title bar buttons, the name field and two buttons.
    VERIFY_WALK_REACHES(&dialog, 6);
    VERIFY_EVERY_CONTROL_NAMED(&dialog);
}

void AccessibleNamesTest::renameDialog_nameFieldIsNamedByItsLabel()
{
    ModifyPrinterDriverNameDlg dialog(QStringLiteral("Bex UV2513"), nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));

    auto *edit = dialog.findChild<QLineEdit *>(QStringLiteral("lineEdit_driverShowName_"));
    QVERIFY(edit);
    QCOMPARE(AccessibleWalk::accessibleNameOf(edit), expected_.newName);
}

void AccessibleNamesTest::propertyDialog_everyControlHasAName()
{
    const QString id = installSample(uv2513);
    QVERIFY(!id.isEmpty());
    PrinterDriverPropertyDlg dialog(id, nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));

    VERIFY_WALK_REACHES(&dialog, 10);
    VERIFY_EVERY_CONTROL_NAMED(&dialog);
}

void AccessibleNamesTest::messageBox_everyControlHasAName()
{
    int controls = 0;
    bool named = false;
    QString checkBoxName;
    MessageBoxDriver::whenShown<QDialog>([&](QDialog *box) {
        controls = AccessibleWalk::interactiveControls(box).size();
        named = everyControlNamed(box);
        if (auto *checkBox = box->findChild<QCheckBox *>())
            checkBoxName = AccessibleWalk::accessibleNameOf(checkBox);
        box->done(-1);
    });
    bool checked = false;
    const int answer = CommonFramelessMessageBox::question(
        nullptr, QStringLiteral("Title"), QStringLiteral("Replace the file?"), QStringLiteral("Yes"),
        QStringLiteral("No"), 0, expected_.neverAskAgain, &checked);
    QCOMPARE(answer, -1);

    // Title bar buttons, the text, the check box and two buttons.
    QVERIFY2(controls >= 7, "the accessible tree of the message box holds fewer controls than its form");
    QCOMPARE(checkBoxName, expected_.neverAskAgain);
    QVERIFY2(named, "a screen reader finds controls without a name (listed above)");
}

void AccessibleNamesTest::maximizedWindow_restoreButtonIsNamedForWhatItDoes()
{
    ModifyPrinterDriverNameDlg dialog(QStringLiteral("Bex UV2513"), nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QPushButton *restore = dialog.framelessTitleBar()->maximizeButton();
    QCOMPARE(AccessibleWalk::accessibleNameOf(restore), expected_.maximize);

    // The button speaks what pressing it does, as its tool tip shows.
    dialog.showMaximized();
    QTRY_VERIFY(restore->isChecked());
    QCOMPARE(AccessibleWalk::accessibleNameOf(restore), restore->toolTip());
    QVERIFY(AccessibleWalk::accessibleNameOf(restore) != expected_.maximize);
    dialog.showNormal();
    QTRY_VERIFY(!restore->isChecked());
    QCOMPARE(AccessibleWalk::accessibleNameOf(restore), expected_.maximize);
}
