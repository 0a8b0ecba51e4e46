// The driver property dialog after the host has chosen English. The language
// is process-wide, so these checks live in an executable of their own.
#include "FakePrintParamsHandler.h"
#include "IccTestProfiles.h"
#include "PropertyDlgTestSupport.h"
#include "TestAppDir.h"

#include "Config/PrinterDriverConfig.h"
#include "Config/UIModuleConfig.h"
#include "FramelessWidget/Common/CommonFramelessTitleBar.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverPropertyDlg.h"

#include <QAction>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QTemporaryDir>
#include <QtTest>

using namespace PropertyDlgTest;

class PrinterDriverPropertyDlgEnglishTest : public QObject
{
    Q_OBJECT

private:
    FakePrintParamsHandler *fake_ = nullptr;
    QTemporaryDir prsDir_;

private slots:
    void initTestCase()
    {
        QVERIFY(prsDir_.isValid());
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        UIModuleConfig::instance()->setLanguage(QLocale::English);
        QCOMPARE(UIModuleConfig::instance()->language(), QLocale::English);
    }

    void init()
    {
        fake_ = new FakePrintParamsHandler;
        const QString prs = prsDir_.filePath(QStringLiteral("D1.prs"));
        QFile file(prs);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        fake_->drivers.push_back(FakePrintParamsHandler::makeItem(
            QStringLiteral("D1"), QStringLiteral("UV2513"), QStringLiteral("取消"), prs));
        fake_->addEnumItem(QStringLiteral("Resolution"), 1, {QStringLiteral("720x600")}, 0);
        fake_->addEnumItem(QStringLiteral("Media"), 2, {QStringLiteral("PP")}, 0);
        fake_->addEnumItem(QStringLiteral("Ink"), 3, {QStringLiteral("CMYK")}, 0);
        fake_->setSelectKind(kEnumKindResolution, 1);
        fake_->setSelectKind(kEnumKindPaper, 2);
        fake_->setSelectKind(kEnumKindInk, 3);
        fake_->setChannels({FakePrintParamsHandler::channel(QStringLiteral("Cyan"), 0, 1),
                            FakePrintParamsHandler::channel(QStringLiteral("M"), 0, 1),
                            FakePrintParamsHandler::channel(QStringLiteral("yellow"), 0, 1),
                            FakePrintParamsHandler::channel(QStringLiteral("K"), 0, 1)});
        fake_->setIcc(QStringLiteral("a.icc"), QStringLiteral("b.icc"), QStringLiteral("c.icc"), 1);
        FakePrintParamsHandler::setNextHandler(fake_);
        QVERIFY(PrinterDriverManager::instance()->load());
        QCOMPARE(PrinterDriverManager::instance()->obtainInstalledDrivers().size(), 1);
        fake_->calls.clear();
    }

    void cleanup() { PrinterDriverManager::instance()->unload(); }

    void texts_showInEnglish_data()
    {
        QTest::addColumn<QString>("objectName");
        QTest::addColumn<QString>("property");
        QTest::addColumn<QString>("english");
        const auto row = [](const char *name, const char *property, const char *english) {
            QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(property)
                                << QString::fromLatin1(english);
        };
        row("checkBox_advanced_", "text", "Colour correction pattern");
        row("label_dpi_", "text", "Resolution");
        row("label_paper_", "text", "Media");
        row("label_ink_", "text", "Ink");
        row("label_combinedType_", "text", "Combination");
        row("btn_showIccDetail_", "text", "ICC settings");
        row("label_iccSelect_", "text", "Select");
        row("btn_selectICC_RGB_", "text", "RGB");
        row("btn_selectICC_CMYK_", "text", "CMYK");
        row("label_iccEquipment_", "text", "Equipment");
        row("btn_selectICC_Curve_", "text", "Loading Equipment icc...");
        row("label_intent_", "text", "Intent");
        row("btn_showInkDetail_", "text", "Ink settings");
        row("groupBox_inkConcentration_", "title", "Density");
        row("groupBox_inkLimit_", "title", "Maximum ink");
        row("btn_showOtherPropertyDetail_", "text", "Other Properties");
        row("btn_showExtraOptionDetail_", "text", "Ohter options");
        row("checkBox_notPromptDriverPropertyDlg_", "text", "Never ask again");
        row("btn_cancel_", "text", "Cancel");
        row("btn_ok_", "text", "Confirm");
    }

    void texts_showInEnglish()
    {
        QFETCH(QString, objectName);
        QFETCH(QString, property);
        QFETCH(QString, english);
        PrinterDriverPropertyDlg dialog(QStringLiteral("D1"), nullptr);
        QWidget *widget = child(&dialog, objectName);
        QVERIFY2(widget, qPrintable(objectName));
        QCOMPARE(widget->property(property.toLatin1().constData()).toString(), english);
    }

    void title_showsTheEnglishPrefixAndTheDriverNameUntranslated()
    {
        PrinterDriverPropertyDlg dialog(QStringLiteral("D1"), nullptr);
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Driver - 取消"));
        QCOMPARE(dialog.framelessTitleBar()->labelText()->text(), QStringLiteral("Driver - 取消"));
    }

    void driverSelection_asksForTheEnglishTexts()
    {
        PrinterDriverPropertyDlg dialog(QStringLiteral("D1"), nullptr);
        QCOMPARE(fake_->calls.first(), QStringLiteral("SelectPrinterDriverPrs(D1,4)"));
    }

    void intentsAndProcessColours_showInEnglish()
    {
        PrinterDriverPropertyDlg dialog(QStringLiteral("D1"), nullptr);
        auto *intent = child<QComboBox>(&dialog, QStringLiteral("comboBox_intent_"));
        QStringList items;
        for (int i = 0; i < intent->count(); ++i)
            items << intent->itemText(i);
        QCOMPARE(items, (QStringList{QStringLiteral("Perceptual"), QStringLiteral("Relative colorimetric"),
                                     QStringLiteral("Saturation"), QStringLiteral("Absolute colorimetric")}));
        auto *grid = dialog.findChild<QGridLayout *>(QStringLiteral("gridLayout_inkConcentration_"));
        QStringList labels;
        for (int row = 0; row < 4; ++row)
            labels << qobject_cast<QLabel *>(grid->itemAtPosition(row, 0)->widget())->text();
        QCOMPARE(labels, (QStringList{QStringLiteral("C"), QStringLiteral("M"), QStringLiteral("Y"),
                                      QStringLiteral("K")}));
    }

    void ok_failing_reportsInEnglish()
    {
        fake_->commitResult = true;
        fake_->setChannelResult = false;
        PrinterDriverPropertyDlg dialog(QStringLiteral("D1"), nullptr);
        dialog.show();
        BoxSeen seen;
        auto answer = answerMessageBox(&dialog, QStringLiteral("Confirm"), &seen);
        QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_ok_")), Qt::LeftButton);
        QVERIFY(answer->answered());
        QCOMPARE(seen.title, QStringLiteral("Reminder"));
        QCOMPARE(seen.text, QStringLiteral("Property setting failure"));
        QCOMPARE(seen.buttons, QStringList{QStringLiteral("Confirm")});
    }

    void iccNameClash_asksInEnglish()
    {
        const QString dir = PrinterDriverConfig::instance()->iccRgbDir();
        QVERIFY(QDir().mkpath(dir));
        QVERIFY(writeFile(dir + QStringLiteral("x.icc"), "taken"));
        QTemporaryDir source;
        const QString chosen = source.filePath(QStringLiteral("x.icc"));
        QVERIFY(writeFile(
            chosen, IccTestProfiles::readAll(IccTestProfiles::ghostscript(QStringLiteral("srgb.icc")))));
        PrinterDriverConfig::instance()->setIccOpenRootDir(source.path());

        PrinterDriverPropertyDlg dialog(QStringLiteral("D1"), nullptr);
        dialog.show();
        BoxSeen seen;
        FileDialogSeen fileSeen;
        FileThenBox user(&dialog, chosen, QStringLiteral("Cancel"), &seen, &fileSeen);
        QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_selectICC_RGB_")), Qt::LeftButton);
        QVERIFY(user.boxAnswered());
        QCOMPARE(fileSeen.caption, QStringLiteral("icc (RGB)"));
        QCOMPARE(seen.text,
                 QStringLiteral(
                     "\"x.icc\"existed, cover or not?\n(Select cancel, icc file rename as \"x_1.icc\")"));
        QCOMPARE(seen.buttons, (QStringList{QStringLiteral("Cancel"), QStringLiteral("Confirm")}));
        QDir(dir).removeRecursively();
    }

    void iccUnfitProfile_isRefusedInEnglish()
    {
        QTemporaryDir source;
        const QString chosen = source.filePath(QStringLiteral("lab.icc"));
        QVERIFY(QFile::copy(IccTestProfiles::ghostscript(QStringLiteral("lab.icc")), chosen));
        PrinterDriverConfig::instance()->setIccOpenRootDir(source.path());
        PrinterDriverPropertyDlg dialog(QStringLiteral("D1"), nullptr);
        dialog.show();
        BoxSeen seen;
        FileThenBox user(&dialog, chosen, QStringLiteral("Confirm"), &seen, nullptr);
        QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_selectICC_RGB_")), Qt::LeftButton);
        QVERIFY(user.boxAnswered());
        QCOMPARE(seen.title, QStringLiteral("Reminder"));
        QCOMPARE(seen.text, QStringLiteral("\"lab.icc\": This is a profile of the Lab colour space; "
                                           "a profile of the RGB colour space is needed here"));
        QCOMPARE(seen.buttons, QStringList{QStringLiteral("Confirm")});
    }

    void iccToolTipAndMark_showInEnglish()
    {
        PrinterDriverConfig &config = *PrinterDriverConfig::instance();
        QDir(config.dtpBinDir() + QStringLiteral("ICC Profile")).removeRecursively();
        QVERIFY(QDir().mkpath(config.iccRgbDir()));
        QVERIFY(writeFile(
            config.iccRgbDir() + QStringLiteral("a.icc"),
            IccTestProfiles::readAll(IccTestProfiles::ghostscript(QStringLiteral("default_gray.icc")))));
        QVERIFY(QDir().mkpath(config.iccOutputDir()));
        QVERIFY(writeFile(
            config.iccOutputDir() + QStringLiteral("c.icc"),
            IccTestProfiles::readAll(IccTestProfiles::ghostscript(QStringLiteral("default_cmyk.icc")))));
        PrinterDriverPropertyDlg dialog(QStringLiteral("D1"), nullptr);
        auto *rgb = child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_RGB_"));
        auto *cmyk = child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_CMYK_"));
        auto *curve = child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_Curve_"));
        QCOMPARE(curve->toolTip(),
                 QStringLiteral("c.icc\nDescription: Artifex CMYK SWOP Profile\n"
                                "Class: output device (prtr)\n"
                                "Colour space: CMYK, connection space: Lab\nICC version: 2.1"));
        QVERIFY(curve->actions().isEmpty());
        QCOMPARE(rgb->actions().size(), 1);
        QCOMPARE(rgb->actions().first()->text(), QStringLiteral("Problem with this profile"));
        QCOMPARE(rgb->actions().first()->toolTip(),
                 QStringLiteral("This is a profile of the Gray colour space; a profile of the RGB colour "
                                "space is needed here"));
        QCOMPARE(cmyk->actions().size(), 1);
        QCOMPARE(cmyk->actions().first()->toolTip(),
                 QStringLiteral("The profile folder has no such file:\n") +
                     QDir::toNativeSeparators(config.iccCmykDir() + QStringLiteral("b.icc")));
        QDir(config.dtpBinDir() + QStringLiteral("ICC Profile")).removeRecursively();
    }
};

QTEST_MAIN(PrinterDriverPropertyDlgEnglishTest)
#include "tst_printerdriverpropertydlg_english.moc"
