#include "FramelessWidget/Common/CommonFramelessDialog.h"
#include "FramelessWidget/Common/CommonFramelessTitleBar.h"
#include "UI/ModifyPrinterDriverNameDlg.h"

#include "FormTable.h"
#include "ModalDriver.h"

#include <QBoxLayout>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest>

namespace {

const QString currentName = QStringLiteral("Flatbed UV 2513 (White + Varnish)");

// The form as designed: window, widgets with their texts, layouts.
const FormTable::Form designedForm = {
    QSize(312, 156),
    "修改打印机名",
    {
        {"label", "label", "QLabel", "打印机名"},
        {"ok", "btn_ok_", "QPushButton", "确认"},
        {"cancel", "btn_cancel_", "QPushButton", "取消"},
        {"line edit", "lineEdit_driverShowName_", "QLineEdit", currentName},
    },
    {
        "QVBoxLayout verticalLayout_2 spacing 0 margins 0,0,0,0",
        "  QHBoxLayout titleBarLayout_ spacing 0 margins 0,0,0,0",
        "    CommonFramelessTitleBar",
        "  QVBoxLayout verticalLayout margins 9,9,9,9",
        "    QHBoxLayout horizontalLayout_2 spacing 6",
        "      QLabel label",
        "      QLineEdit lineEdit_driverShowName_",
        "    QSpacerItem 20x40 Minimum/Expanding",
        "    QHBoxLayout horizontalLayout spacing 6",
        "      QSpacerItem 40x20 Expanding/Minimum",
        "      QPushButton btn_ok_",
        "      QPushButton btn_cancel_",
        "      QSpacerItem 40x20 Expanding/Minimum",
    },
};

QLineEdit *lineEditOf(QWidget *dialog)
{
    return dialog->findChild<QLineEdit *>(QStringLiteral("lineEdit_driverShowName_"));
}

QPushButton *buttonOf(QWidget *dialog, const QString &name)
{
    return dialog->findChild<QPushButton *>(name);
}

// Types text into the widget: ASCII through key presses, everything else
// the way an input method (Chinese pinyin, for example) commits it.
void type(QWidget *widget, const QString &text)
{
    for (const QChar c : text) {
        if (c.unicode() < 0x80) {
            QTest::keyClicks(widget, QString(c));
        } else {
            QInputMethodEvent commit;
            commit.setCommitString(QString(c));
            QCoreApplication::sendEvent(widget, &commit);
        }
    }
}

// Replaces the line edit's text the way a user does: select all, type.
void retype(QLineEdit *edit, const QString &text)
{
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty())
        QTest::keyClick(edit, Qt::Key_Delete);
    else
        type(edit, text);
}

void clickOk(QWidget *dialog)
{
    if (QPushButton *ok = buttonOf(dialog, QStringLiteral("btn_ok_")))
        QTest::mouseClick(ok, Qt::LeftButton);
}

void clickCancel(QWidget *dialog)
{
    if (QPushButton *cancel = buttonOf(dialog, QStringLiteral("btn_cancel_")))
        QTest::mouseClick(cancel, Qt::LeftButton);
}

} // namespace

class ModifyPrinterDriverNameDlgTest : public QObject
{
    Q_OBJECT

private slots:
    void construction_showsCurrentNameAndKeepsNoNameYet();
    void form_matchesTheDesign();
    void buttons_sitCentredBetweenTheirTwoSpacers();
    void lineEdit_hasClearButton();
    void clearButton_emptiesTheName();
    void buttons_carryTheNormalStyleProperty();
    void metaObject_hasNoSignalsOrSlotsOfItsOwn();

    void ok_withNewName_acceptsAndKeepsTheName();
    void ok_withEmptyName_keepsDialogOpenAndNameEmpty();
    void ok_withEmptyThenTypedName_acceptsTheTypedName();
    void ok_withBlanksOnly_acceptsThemAsTheyStand();
    void ok_withSurroundingBlanks_keepsThemUntrimmed();
    void ok_withUnchangedName_accepts();
    void ok_closesOnceOnly();
    void cancel_rejectsAndKeepsNoName();
    void titleBarClose_rejects();
    void accept_calledDirectly_followsTheSameRules();
    void name_isTheTextAtTheLastOkPress();
};

void ModifyPrinterDriverNameDlgTest::construction_showsCurrentNameAndKeepsNoNameYet()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    QLineEdit *edit = lineEditOf(&dialog);
    QVERIFY(edit);
    QCOMPARE(edit->text(), currentName);
    QVERIFY(dialog.driverShowName().isEmpty());
}

void ModifyPrinterDriverNameDlgTest::form_matchesTheDesign()
{
    QWidget parent;
    ModifyPrinterDriverNameDlg dialog(currentName, &parent);
    QCOMPARE(dialog.parentWidget(), &parent);
    QCOMPARE(dialog.objectName(), QStringLiteral("FramelessDialog"));
    QCOMPARE(dialog.property("FramelessDialog"), QVariant(true));
    FormTable::verifyForm(&dialog, designedForm);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(dialog.framelessTitleBar());
    QCOMPARE(dialog.layout()->itemAt(0)->layout()->itemAt(0)->widget(),
             static_cast<QWidget *>(dialog.framelessTitleBar()));
}

void ModifyPrinterDriverNameDlgTest::buttons_sitCentredBetweenTheirTwoSpacers()
{
    // Shown, the two buttons sit in the middle of their row, between its
    // two spacers.
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    auto *row = dialog.findChild<QHBoxLayout *>(QStringLiteral("horizontalLayout"));
    QVERIFY(row);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    const QRect ok = buttonOf(&dialog, QStringLiteral("btn_ok_"))->geometry();
    const QRect cancel = buttonOf(&dialog, QStringLiteral("btn_cancel_"))->geometry();
    const int leftGap = ok.left() - row->geometry().left();
    const int rightGap = row->geometry().right() - cancel.right();
    QVERIFY2(qAbs(leftGap - rightGap) <= 1,
             qPrintable(QStringLiteral("left gap %1, right gap %2").arg(leftGap).arg(rightGap)));
}

void ModifyPrinterDriverNameDlgTest::lineEdit_hasClearButton()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    QVERIFY(lineEditOf(&dialog)->isClearButtonEnabled());
}

void ModifyPrinterDriverNameDlgTest::clearButton_emptiesTheName()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QLineEdit *edit = lineEditOf(&dialog);
    QToolButton *clear = nullptr;
    QTRY_VERIFY((clear = edit->findChild<QToolButton *>()) && clear->isVisible());
    QTest::mouseClick(clear, Qt::LeftButton);
    QVERIFY(edit->text().isEmpty());
}

void ModifyPrinterDriverNameDlgTest::buttons_carryTheNormalStyleProperty()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    for (const QString &name : {QStringLiteral("btn_ok_"), QStringLiteral("btn_cancel_")}) {
        QPushButton *button = buttonOf(&dialog, name);
        QVERIFY2(button, qPrintable(name));
        QCOMPARE(button->property("defaultStyle_normal"), QVariant(true));
    }
}

void ModifyPrinterDriverNameDlgTest::metaObject_hasNoSignalsOrSlotsOfItsOwn()
{
    const QMetaObject &meta = ModifyPrinterDriverNameDlg::staticMetaObject;
    QCOMPARE(QByteArray(meta.className()), QByteArray("ModifyPrinterDriverNameDlg"));
    QCOMPARE(meta.superClass(), &CommonFramelessDialog::staticMetaObject);
    QCOMPARE(meta.methodCount(), meta.methodOffset());
    QCOMPARE(meta.methodCount(), CommonFramelessDialog::staticMetaObject.methodCount());
}

void ModifyPrinterDriverNameDlgTest::ok_withNewName_acceptsAndKeepsTheName()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    ModalDriver driver;
    const int result = driver.exec(dialog, [](QDialog *modal) {
        retype(lineEditOf(modal), QStringLiteral("Hall B printer"));
        clickOk(modal);
    });
    QVERIFY(driver.found);
    QVERIFY(!driver.leftOpen);
    QCOMPARE(result, int(QDialog::Accepted));
    QCOMPARE(dialog.driverShowName(), QStringLiteral("Hall B printer"));
}

void ModifyPrinterDriverNameDlgTest::ok_withEmptyName_keepsDialogOpenAndNameEmpty()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    QSignalSpy finished(&dialog, &QDialog::finished);
    bool openAfterOk = false;
    QWidget *modalAfterOk = nullptr;
    int topLevelsBefore = -1;
    int topLevelsAfter = -1;
    QString nameAfterOk = QStringLiteral("(not pressed)");
    ModalDriver driver;
    const int result = driver.exec(dialog, [&](QDialog *modal) {
        topLevelsBefore = QApplication::topLevelWidgets().size();
        retype(lineEditOf(modal), QString());
        clickOk(modal);
        openAfterOk = modal->isVisible();
        modalAfterOk = QApplication::activeModalWidget();
        topLevelsAfter = QApplication::topLevelWidgets().size();
        nameAfterOk = static_cast<ModifyPrinterDriverNameDlg *>(modal)->driverShowName();
        clickCancel(modal);
    });
    QVERIFY(driver.found);
    QVERIFY(openAfterOk);
    QCOMPARE(modalAfterOk, static_cast<QWidget *>(&dialog));
    // No message box or other window came up.
    QCOMPARE(topLevelsAfter, topLevelsBefore);
    QVERIFY(nameAfterOk.isEmpty());
    QVERIFY(!driver.leftOpen);
    QCOMPARE(result, int(QDialog::Rejected));
    QCOMPARE(finished.count(), 1);
    QVERIFY(dialog.driverShowName().isEmpty());
}

void ModifyPrinterDriverNameDlgTest::ok_withEmptyThenTypedName_acceptsTheTypedName()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    ModalDriver driver;
    const int result = driver.exec(dialog, [](QDialog *modal) {
        retype(lineEditOf(modal), QString());
        clickOk(modal);
        type(lineEditOf(modal), QStringLiteral("Proof printer"));
        clickOk(modal);
    });
    QVERIFY(!driver.leftOpen);
    QCOMPARE(result, int(QDialog::Accepted));
    QCOMPARE(dialog.driverShowName(), QStringLiteral("Proof printer"));
}

void ModifyPrinterDriverNameDlgTest::ok_withBlanksOnly_acceptsThemAsTheyStand()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    ModalDriver driver;
    const int result = driver.exec(dialog, [](QDialog *modal) {
        retype(lineEditOf(modal), QStringLiteral("   "));
        clickOk(modal);
    });
    QVERIFY(!driver.leftOpen);
    QCOMPARE(result, int(QDialog::Accepted));
    QCOMPARE(dialog.driverShowName(), QStringLiteral("   "));
}

void ModifyPrinterDriverNameDlgTest::ok_withSurroundingBlanks_keepsThemUntrimmed()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    ModalDriver driver;
    const int result = driver.exec(dialog, [](QDialog *modal) {
        retype(lineEditOf(modal), QStringLiteral("  平板 UV 打印机 "));
        clickOk(modal);
    });
    QVERIFY(!driver.leftOpen);
    QCOMPARE(result, int(QDialog::Accepted));
    QCOMPARE(dialog.driverShowName(), QStringLiteral("  平板 UV 打印机 "));
}

void ModifyPrinterDriverNameDlgTest::ok_withUnchangedName_accepts()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    ModalDriver driver;
    const int result = driver.exec(dialog, [](QDialog *modal) { clickOk(modal); });
    QVERIFY(driver.found);
    QVERIFY(!driver.leftOpen);
    QCOMPARE(result, int(QDialog::Accepted));
    // The caller gets the same name back and sets it again.
    QCOMPARE(dialog.driverShowName(), currentName);
}

void ModifyPrinterDriverNameDlgTest::ok_closesOnceOnly()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    QSignalSpy accepted(&dialog, &QDialog::accepted);
    QSignalSpy finished(&dialog, &QDialog::finished);
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    ModalDriver driver;
    const int result = driver.exec(dialog, [](QDialog *modal) { clickOk(modal); });
    QCOMPARE(result, int(QDialog::Accepted));
    // One click, one close: the button is connected once, by the dialog.
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(rejected.count(), 0);
}

void ModifyPrinterDriverNameDlgTest::cancel_rejectsAndKeepsNoName()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    ModalDriver driver;
    const int result = driver.exec(dialog, [](QDialog *modal) {
        retype(lineEditOf(modal), QStringLiteral("Not taken"));
        clickCancel(modal);
    });
    QVERIFY(driver.found);
    QVERIFY(!driver.leftOpen);
    QCOMPARE(result, int(QDialog::Rejected));
    QCOMPARE(rejected.count(), 1);
    QVERIFY(dialog.driverShowName().isEmpty());
}

void ModifyPrinterDriverNameDlgTest::titleBarClose_rejects()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    ModalDriver driver;
    const int result = driver.exec(dialog, [](QDialog *modal) {
        retype(lineEditOf(modal), QStringLiteral("Not taken either"));
        if (auto *close = modal->findChild<QPushButton *>(QStringLiteral("framelessTitleBar_btnClose")))
            QTest::mouseClick(close, Qt::LeftButton);
    });
    QVERIFY(driver.found);
    QVERIFY(!driver.leftOpen);
    QCOMPARE(result, int(QDialog::Rejected));
    QCOMPARE(rejected.count(), 1);
    QVERIFY(dialog.driverShowName().isEmpty());
}

void ModifyPrinterDriverNameDlgTest::accept_calledDirectly_followsTheSameRules()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    QSignalSpy accepted(&dialog, &QDialog::accepted);
    dialog.show();
    QLineEdit *edit = lineEditOf(&dialog);

    edit->clear();
    QDialog &asDialog = dialog;
    asDialog.accept();
    QVERIFY(dialog.isVisible());
    QCOMPARE(accepted.count(), 0);

    edit->setText(QStringLiteral("Line 2"));
    asDialog.accept();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.driverShowName(), QStringLiteral("Line 2"));
}

void ModifyPrinterDriverNameDlgTest::name_isTheTextAtTheLastOkPress()
{
    ModifyPrinterDriverNameDlg dialog(currentName, nullptr);
    ModalDriver driver;
    const int result = driver.exec(dialog, [](QDialog *modal) {
        retype(lineEditOf(modal), QStringLiteral("Taken"));
        clickOk(modal);
    });
    QCOMPARE(result, int(QDialog::Accepted));

    // Editing after the dialog closed does not change what the caller reads.
    lineEditOf(&dialog)->setText(QStringLiteral("Typed later"));
    QCOMPARE(dialog.driverShowName(), QStringLiteral("Taken"));
}

QTEST_MAIN(ModifyPrinterDriverNameDlgTest)
#include "tst_modifyprinterdrivernamedlg.moc"
