#include "Config/UIModuleConfig.h"
#include "FramelessWidget/Common/CommonFramelessTitleBar.h"
#include "UI/ModifyPrinterDriverNameDlg.h"

#include "FormTable.h"

#include <QLabel>
#include <QLineEdit>
#include <QtTest>

namespace {

// The widgets in English.
const std::vector<FormTable::Widget> englishWidgets = {
    {"label", "label", "QLabel", "Printer Name"},
    {"ok", "btn_ok_", "QPushButton", "Ok"},
    {"cancel", "btn_cancel_", "QPushButton", "Cancel"},
};

} // namespace

// The rename dialog after the host has chosen English. The language is
// process-wide, so these checks live in an executable of their own.
class ModifyPrinterDriverNameDlgEnglishTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void texts_showInEnglish();
    void title_showsInEnglishInWindowAndTitleBar();
    void name_isNotTranslated();
};

void ModifyPrinterDriverNameDlgEnglishTest::initTestCase()
{
    UIModuleConfig::instance()->setLanguage(QLocale::English);
    QCOMPARE(UIModuleConfig::instance()->language(), QLocale::English);
}

void ModifyPrinterDriverNameDlgEnglishTest::texts_showInEnglish()
{
    ModifyPrinterDriverNameDlg dialog(QStringLiteral("UV 2513"), nullptr);
    FormTable::verifyWidgets(&dialog, englishWidgets);
}

void ModifyPrinterDriverNameDlgEnglishTest::title_showsInEnglishInWindowAndTitleBar()
{
    ModifyPrinterDriverNameDlg dialog(QStringLiteral("UV 2513"), nullptr);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Modify printer name"));
    QCOMPARE(dialog.framelessTitleBar()->labelText()->text(), QStringLiteral("Modify printer name"));
}

void ModifyPrinterDriverNameDlgEnglishTest::name_isNotTranslated()
{
    // A driver called like one of the dialog's texts keeps its name.
    ModifyPrinterDriverNameDlg dialog(QStringLiteral("取消"), nullptr);
    auto *edit = dialog.findChild<QLineEdit *>(QStringLiteral("lineEdit_driverShowName_"));
    QVERIFY(edit);
    QCOMPARE(edit->text(), QStringLiteral("取消"));
}

QTEST_MAIN(ModifyPrinterDriverNameDlgEnglishTest)
#include "tst_modifyprinterdrivernamedlg_english.moc"
