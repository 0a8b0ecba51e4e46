// The driver property dialog end to end, with the open print-parameter
// library and the sample drivers: what OK writes survives a restart of the
// handler, each (resolution, paper, ink) combination keeps its own values,
// an untouched OK changes nothing, and Cancel commits nothing.
#include "LogCapture.h"
#include "PropertyDlgTestSupport.h"
#include "RecordText.h"
#include "SampleDriverFiles.h"
#include "TestAppDir.h"

#include "Config/PrinterDriverConfig.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverPropertyDlg.h"
#include "UI/SubWidget/InkOrderWidget.h"

#include <IUIPrintParamsHandler.h>

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QGridLayout>
#include <QLineEdit>
#include <QSpinBox>
#include <QtTest>

#include <list>

using namespace PropertyDlgTest;

namespace {

const QStringList sampleNames = {QStringLiteral("BexUV2513_CMYKWV"), QStringLiteral("BexUV1610_CMYKLcLm"),
                                 QStringLiteral("BexUV3220_8C")};

template <typename SpinBox>
SpinBox *rowSpinBox(QWidget *dialog, const char *gridName, int row)
{
    auto *grid = dialog->findChild<QGridLayout *>(QLatin1String(gridName));
    QLayoutItem *item = grid ? grid->itemAtPosition(row, 2) : nullptr;
    return item ? qobject_cast<SpinBox *>(item->widget()) : nullptr;
}

QDoubleSpinBox *densityBox(QWidget *dialog, int row)
{
    return rowSpinBox<QDoubleSpinBox>(dialog, "gridLayout_inkConcentration_", row);
}

QSpinBox *maxInkBox(QWidget *dialog, int row)
{
    return rowSpinBox<QSpinBox>(dialog, "gridLayout_inkLimit_", row);
}

QTabBar *inkTabs(QWidget *dialog)
{
    return child<InkOrderWidget>(dialog, QStringLiteral("inkOrderWidget_"))->findChild<QTabBar *>();
}

QComboBox *combinedType(QWidget *dialog)
{
    return child<QComboBox>(dialog, QStringLiteral("comboBox_combinedType_"));
}

void clickOk(QWidget *dialog)
{
    QTest::mouseClick(child<QPushButton>(dialog, QStringLiteral("btn_ok_")), Qt::LeftButton);
}

} // namespace

class PrinterDriverPropertyDlgLibraryTest : public QObject
{
    Q_OBJECT

private:
    QHash<QString, QString> ids_; // sample name -> driver id

    PrinterDriverManager *manager() const { return PrinterDriverManager::instance(); }
    IUIPrintParamsHandler *handler() const { return manager()->getHandler(); }

    // A restart of the host: the handler is destroyed and a new one reads
    // the installed drivers from their files.
    void restart()
    {
        manager()->unload();
        PrinterDriverConfig::instance()->readConfig();
        QVERIFY(manager()->load());
        QCOMPARE(manager()->obtainInstalledDrivers().size(), sampleNames.size());
    }

    // The three records of the driver's current combination, as text.
    QString records() const
    {
        QString text;
        if (const printerIccColorInfo *icc = handler()->GetIccSettingInfo())
            text += RecordText::describe(*icc);
        text += QLatin1Char('|');
        if (const printerChannelColorInfo *channels = handler()->GetChannelColorInfo())
            text += RecordText::describe(*channels);
        text += QLatin1Char('|');
        if (const printerInkOrderInfo *inks = handler()->GetInkOrderInfo())
            text += RecordText::describe(*inks);
        return text;
    }

    // Every calibrated combination's records and every enum's selection of
    // a driver, selected afresh.
    QStringList driverState(const QString &id)
    {
        QStringList state;
        if (!handler()->SelectPrinterDriverPrs(id.toLocal8Bit().constData(), 0))
            return {QStringLiteral("<select failed>")};
        std::list<printerEnumItem *> items;
        handler()->GetAllEnumItemList(items);
        for (const printerEnumItem *item : items)
            state << QStringLiteral("%1=%2").arg(QString::fromLocal8Bit(item->key)).arg(item->index);
        const printerEnumItem *dpi = handler()->GetSelectEnumItem(kEnumKindResolution);
        const printerEnumItem *paper = handler()->GetSelectEnumItem(kEnumKindPaper);
        const printerEnumItem *ink = handler()->GetSelectEnumItem(kEnumKindInk);
        const std::uint32_t ids[3] = {dpi->enumId, paper->enumId, ink->enumId};
        const int counts[3] = {dpi->valueSize, paper->valueSize, ink->valueSize};
        const int selected[3] = {dpi->index, paper->index, ink->index};
        for (int i = 0; i < counts[2]; ++i) {
            for (int j = 0; j < counts[1]; ++j) {
                for (int k = 0; k < counts[0]; ++k) {
                    handler()->SetEnumItem(ids[2], i);
                    handler()->SetEnumItem(ids[1], j);
                    handler()->SetEnumItem(ids[0], k);
                    state << QStringLiteral("%1/%2/%3 %4").arg(k).arg(j).arg(i).arg(records());
                }
            }
        }
        // Back to the stored selection, so that the next reader starts
        // where the file stands.
        for (int kind = 0; kind < 3; ++kind)
            handler()->SetEnumItem(ids[kind], selected[kind]);
        return state;
    }

    QByteArray prsBytes(const QString &sample) const
    {
        QFile file(manager()->findDriverInfo(ids_.value(sample))->prsPath);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
    }

private slots:
    void initTestCase()
    {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QVERIFY(SampleDriverFiles::restage());
        TestAppDir::remove(QStringLiteral("PrinterDriverConfig.ini"));
        PrinterDriverConfig::instance()->readConfig();
        QVERIFY(handler());
        for (const QString &name : sampleNames) {
            const auto info = manager()->installDriver(SampleDriverFiles::prsPath(name));
            QVERIFY(info);
            ids_.insert(name, info->id);
        }
    }

    void cleanupTestCase() { manager()->unload(); }

    void ok_untouched_leavesEveryRecordAsItWas_data()
    {
        QTest::addColumn<QString>("sample");
        for (const QString &name : sampleNames)
            QTest::newRow(qPrintable(name)) << name;
    }

    void ok_untouched_leavesEveryRecordAsItWas()
    {
        QFETCH(QString, sample);
        const QString id = ids_.value(sample);
        const QStringList before = driverState(id);
        QVERIFY(before.size() > 10);
        {
            PrinterDriverPropertyDlg dialog(id, nullptr);
            // The stored ink order is not 0, 1, 2, ...: the panel shows it
            // sorted, and OK must give each ink its own place back.
            QVERIFY(inkTabs(&dialog)->count() > 0);
            clickOk(&dialog);
            QCOMPARE(dialog.result(), int(QDialog::Accepted));
        }
        restart();
        QCOMPARE(driverState(id), before);
    }

    // The samples' profiles lie in their folders and fit their rows: no
    // row of any calibrated combination is marked.
    void sampleProfiles_markNoRowInAnyCombination_data() { ok_untouched_leavesEveryRecordAsItWas_data(); }

    void sampleProfiles_markNoRowInAnyCombination()
    {
        QFETCH(QString, sample);
        PrinterDriverPropertyDlg dialog(ids_.value(sample), nullptr);
        auto *combined = dialog.findChild<QComboBox *>(QStringLiteral("comboBox_combinedType_"));
        QVERIFY(combined->count() > 0);
        int named = 0;
        for (int i = 0; i < combined->count(); ++i) {
            combined->setCurrentIndex(i);
            for (const char *name : {"lineEdit_ICC_RGB_", "lineEdit_ICC_CMYK_", "lineEdit_ICC_Curve_"}) {
                auto *edit = dialog.findChild<QLineEdit *>(QLatin1String(name));
                QVERIFY2(edit->actions().isEmpty(),
                         qPrintable(combined->currentText() + QLatin1Char(' ') + QLatin1String(name) +
                                    QStringLiteral(": ") + edit->accessibleDescription()));
                if (!edit->text().isEmpty()) {
                    ++named;
                    QVERIFY2(edit->toolTip().contains(QStringLiteral("\n描述：")),
                             qPrintable(edit->toolTip()));
                }
            }
        }
        QVERIFY(named > 0);
    }

    // A profile deleted from its folder behind the driver's back marks its
    // row when the dialog opens; put back, the mark goes.
    void storedProfileDeleted_marksItsRow()
    {
        const QString id = ids_.value(QStringLiteral("BexUV2513_CMYKWV"));
        QString profile;
        {
            PrinterDriverPropertyDlg dialog(id, nullptr);
            profile = dialog.findChild<QLineEdit *>(QStringLiteral("lineEdit_ICC_Curve_"))->text();
        }
        QVERIFY(!profile.isEmpty());
        const QString path = PrinterDriverConfig::instance()->iccOutputDir() + profile;
        const QByteArray bytes = TestAppDir::readFile(QDir(TestAppDir::path()).relativeFilePath(path));
        QVERIFY(!bytes.isEmpty());
        QVERIFY(QFile::remove(path));
        {
            PrinterDriverPropertyDlg dialog(id, nullptr);
            auto *curve = dialog.findChild<QLineEdit *>(QStringLiteral("lineEdit_ICC_Curve_"));
            QCOMPARE(curve->text(), profile);
            QCOMPARE(curve->actions().size(), 1);
            QCOMPARE(curve->actions().first()->toolTip(),
                     QStringLiteral("配置文件文件夹里没有这个文件：\n") + QDir::toNativeSeparators(path));
        }
        QVERIFY(TestAppDir::writeFile(QDir(TestAppDir::path()).relativeFilePath(path), bytes));
        PrinterDriverPropertyDlg dialog(id, nullptr);
        QVERIFY(dialog.findChild<QLineEdit *>(QStringLiteral("lineEdit_ICC_Curve_"))->actions().isEmpty());
    }

    void ok_afterEditingEverySection_survivesARestart()
    {
        const QString id = ids_.value(QStringLiteral("BexUV2513_CMYKWV"));
        QString combination;
        QString channelName;
        int passesId = -1;
        QStringList tabsAfter;
        {
            PrinterDriverPropertyDlg dialog(id, nullptr);
            dialog.show();
            QVERIFY(QTest::qWaitForWindowExposed(&dialog));
            QComboBox *combo = combinedType(&dialog);
            QVERIFY(combo->count() >= 2);
            combo->setCurrentIndex(1);
            combination = combo->currentText();

            densityBox(&dialog, 0)->setValue(0.37);
            maxInkBox(&dialog, 1)->setValue(83);
            QTabBar *tabs = inkTabs(&dialog);
            tabs->moveTab(0, 2);
            doubleClickTab(tabs, 1);
            tabsAfter = tabTexts(tabs);
            auto *intent = child<QComboBox>(&dialog, QStringLiteral("comboBox_intent_"));
            intent->setCurrentIndex(intent->findData(3));

            // An output profile chosen through the file dialog from the
            // installed profiles.
            const QString profile = PrinterDriverConfig::instance()->iccOutputDir() +
                                    QStringLiteral("BexUV2513_Metal_1440x1200.icc");
            QVERIFY(QFileInfo::exists(profile));
            PrinterDriverConfig::instance()->setIccOpenRootDir(QFileInfo(profile).absolutePath());
            auto answer = answerFileDialog(&dialog, profile, nullptr);
            QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_selectICC_Curve_")),
                              Qt::LeftButton);
            QVERIFY(answer->answered());

            QComboBox *passes = nullptr;
            for (QComboBox *candidate : commonCombos(&dialog)) {
                if (candidate->count() == 5)
                    passes = candidate;
            }
            QVERIFY(passes);
            passesId = commonComboId(passes);
            passes->setCurrentIndex(4);

            channelName = dialog.findChild<QGridLayout *>(QStringLiteral("gridLayout_inkLimit_"))
                              ->itemAtPosition(1, 0)
                              ->widget()
                              ->property("text")
                              .toString();
            clickOk(&dialog);
            QCOMPARE(dialog.result(), int(QDialog::Accepted));
        }

        restart();

        PrinterDriverPropertyDlg dialog(id, nullptr);
        QCOMPARE(combinedType(&dialog)->currentText(), combination);
        QCOMPARE(densityBox(&dialog, 0)->value(), 0.37);
        QCOMPARE(maxInkBox(&dialog, 1)->value(), 83);
        QCOMPARE(tabTexts(inkTabs(&dialog)), tabsAfter);
        const auto infos = child<InkOrderWidget>(&dialog, QStringLiteral("inkOrderWidget_"))->inkInfos();
        QVERIFY(!infos.at(1).isOn);
        QCOMPARE(child<QComboBox>(&dialog, QStringLiteral("comboBox_intent_"))->currentData().toInt(), 3);
        QCOMPARE(child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_Curve_"))->text(),
                 QStringLiteral("BexUV2513_Metal_1440x1200.icc"));
        QCOMPARE(commonCombo(&dialog, passesId)->currentIndex(), 4);
        QVERIFY(!channelName.isEmpty());
    }

    void inkLimitOfOneMedium_doesNotLeakIntoAnother()
    {
        const QString id = ids_.value(QStringLiteral("BexUV1610_CMYKLcLm"));
        int firstValue = -1;
        int secondValue = -1;
        {
            PrinterDriverPropertyDlg dialog(id, nullptr);
            QComboBox *combo = combinedType(&dialog);
            QVERIFY(combo->count() >= 2);
            combo->setCurrentIndex(0);
            firstValue = maxInkBox(&dialog, 0)->value();
            maxInkBox(&dialog, 0)->setValue(firstValue == 61 ? 62 : 61);
            firstValue = maxInkBox(&dialog, 0)->value();
            combo->setCurrentIndex(1);
            secondValue = maxInkBox(&dialog, 0)->value();
            QVERIFY(secondValue != firstValue);
            combo->setCurrentIndex(0);
            QCOMPARE(maxInkBox(&dialog, 0)->value(), firstValue);
            clickOk(&dialog);
        }
        restart();
        PrinterDriverPropertyDlg dialog(id, nullptr);
        QComboBox *combo = combinedType(&dialog);
        QCOMPARE(combo->currentIndex(), 0);
        QCOMPARE(maxInkBox(&dialog, 0)->value(), firstValue);
        combo->setCurrentIndex(1);
        QCOMPARE(maxInkBox(&dialog, 0)->value(), secondValue);
    }

    void cancel_afterBrowsing_commitsNothing()
    {
        const QString sample = QStringLiteral("BexUV3220_8C");
        const QString id = ids_.value(sample);
        const QByteArray before = prsBytes(sample);
        const QStringList stateBefore = driverState(id);
        {
            PrinterDriverPropertyDlg dialog(id, nullptr);
            QComboBox *combo = combinedType(&dialog);
            for (int i = 0; i < combo->count(); ++i) {
                combo->setCurrentIndex(i);
                maxInkBox(&dialog, 0)->setValue(50 + i);
                densityBox(&dialog, 0)->setValue(0.1 * i);
            }
            combo->setCurrentIndex(0);
            QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_cancel_")), Qt::LeftButton);
            QCOMPARE(dialog.result(), int(QDialog::Rejected));
        }
        QCOMPARE(prsBytes(sample), before);
        restart();
        QCOMPARE(driverState(id), stateBefore);
    }
};

QTEST_MAIN(PrinterDriverPropertyDlgLibraryTest)
#include "tst_printerdriverpropertydlg_library.moc"
