// The driver property dialog against the recording handler: the handler calls
// it makes (names and arguments, in order) when it opens, when the combined
// type changes and when OK is pressed; what it shows; the records it hands
// back; and the operator's way through it with mouse and message boxes.
#include "FakePrintParamsHandler.h"
#include "IccTestProfiles.h"
#include "LogCapture.h"
#include "PropertyDlgTestSupport.h"
#include "TestAppDir.h"

#include "Config/PrinterDriverConfig.h"
#include "UI/IccProfileFiles.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverPropertyDlg.h"
#include "UI/SubWidget/DoubleSlider.h"
#include "UI/SubWidget/ExtraOptionWidget.h"
#include "UI/SubWidget/InkOrderWidget.h"

#include <QAccessible>
#include <QAction>
#include <QBuffer>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDirIterator>
#include <QDoubleSpinBox>
#include <QFile>
#include <QGridLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QSlider>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QToolButton>
#include <QWheelEvent>
#include <QtTest>

using namespace PropertyDlgTest;

namespace {

const QString driverId = QStringLiteral("D1");
const QString showName = QStringLiteral("UV 平板 2513");
// The dialog's own lines, and those of the driver session it talks to the
// handler through.
const QString dialogSource = QStringLiteral("source/UI/PrinterDriverPropertyDlg");
const QString sessionSource = QStringLiteral("source/Driver/DriverSession");
const QString settingsFile = QStringLiteral("PrinterDriverConfig.ini");

constexpr std::uint32_t dpiId = 10;
constexpr std::uint32_t paperId = 11;
constexpr std::uint32_t inkId = 12;
constexpr std::uint32_t directionId = 20;
constexpr std::uint32_t passesId = 21;

const QStringList dpiValues = {QStringLiteral("720x600"), QStringLiteral("1440x1200")};
const QStringList paperValues = {QStringLiteral("PP"), QStringLiteral("Vinyl"), QStringLiteral("Canvas")};
const QStringList inkValues = {QStringLiteral("CMYK"), QStringLiteral("CMYK+W")};

QString setEnum(std::uint32_t id, int index)
{
    return QStringLiteral("SetEnumItem(%1,%2)").arg(id).arg(index);
}

QString combinationLabel(int dpi, int paper, int ink)
{
    const QString separator = QStringLiteral("    \t");
    return dpiValues.at(dpi) + separator + paperValues.at(paper) + separator + inkValues.at(ink);
}

QStringList messages(const LogCapture &log, QtMsgType type)
{
    QStringList result;
    for (const LogCapture::Entry &entry : log.entries()) {
        if (entry.type == type && (entry.file == dialogSource || entry.file == sessionSource))
            result << entry.message;
    }
    return result;
}

QComboBox *combinedType(QWidget *dialog)
{
    return child<QComboBox>(dialog, QStringLiteral("comboBox_combinedType_"));
}

QTabBar *inkTabs(QWidget *dialog)
{
    return child<InkOrderWidget>(dialog, QStringLiteral("inkOrderWidget_"))->findChild<QTabBar *>();
}

// The spin boxes of the ink section, per row label, in row order.
template <typename SpinBox>
QList<SpinBox *> rowSpinBoxes(QWidget *dialog, const QString &gridName)
{
    auto *grid = dialog->findChild<QGridLayout *>(gridName);
    QList<SpinBox *> boxes;
    for (int row = 0; grid && row < grid->rowCount(); ++row) {
        QLayoutItem *item = grid->itemAtPosition(row, 2);
        if (item && qobject_cast<SpinBox *>(item->widget()))
            boxes << static_cast<SpinBox *>(item->widget());
    }
    return boxes;
}

QString rowLabel(QWidget *dialog, const QString &gridName, int row)
{
    auto *grid = dialog->findChild<QGridLayout *>(gridName);
    QLayoutItem *item = grid ? grid->itemAtPosition(row, 0) : nullptr;
    auto *label = item ? qobject_cast<QLabel *>(item->widget()) : nullptr;
    return label ? label->text() : QStringLiteral("<none>");
}

// A wheel turn over the middle of `widget`, delivered as the application
// delivers one from the window system: to the widget, then on to its parents
// while none accepts it. (An event sent by a program goes to the widget
// alone, so the walk up is done here.)
void sendWheel(QWidget *widget, int delta)
{
    const QPoint global = widget->mapToGlobal(widget->rect().center());
    for (QWidget *target = widget; target; target = target->parentWidget()) {
        QWheelEvent event(QPointF(target->mapFromGlobal(global)), QPointF(global), QPoint(), QPoint(0, delta),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(target, &event);
        if (event.isAccepted() || target->isWindow())
            return;
    }
}

QWidget *rowWidget(QWidget *dialog, const QString &gridName, int row, int column)
{
    auto *grid = dialog->findChild<QGridLayout *>(gridName);
    QLayoutItem *item = grid ? grid->itemAtPosition(row, column) : nullptr;
    return item ? item->widget() : nullptr;
}

// A key pressed and released on the widget that has the keyboard focus, as
// the window system delivers it.
void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget *target = QApplication::focusWidget();
    if (!target)
        target = QApplication::activeWindow();
    QTest::keyClick(target, key, modifiers);
}

// Presses Tab until `target` has the focus; false when a whole round of the
// dialog's controls went by without reaching it.
bool tabTo(QWidget *dialog, QWidget *target)
{
    const int rounds = dialog->findChildren<QWidget *>().size() + 1;
    for (int i = 0; i < rounds; ++i) {
        if (QApplication::focusWidget() == target || target->isAncestorOf(QApplication::focusWidget()))
            return true;
        press(Qt::Key_Tab);
    }
    return false;
}

// The controls that Tab visits in `dialog`, in the order of its focus chain,
// starting with the one that reads first.
QList<QWidget *> tabChain(QWidget *dialog)
{
    QList<QWidget *> chain;
    for (QWidget *w = dialog->nextInFocusChain(); w && w != dialog; w = w->nextInFocusChain()) {
        if ((w->focusPolicy() & Qt::TabFocus) && w->isVisibleTo(dialog) && w->isEnabled() &&
            !w->focusProxy() && !qobject_cast<QScrollArea *>(w) && w->window() == dialog)
            chain << w;
    }
    return chain;
}

// Sorts controls as one reads the dialog: rows from top to bottom (controls
// whose heights overlap stand in one row), each row from left to right.
void sortInReadingOrder(QWidget *dialog, QList<QWidget *> *widgets)
{
    auto rectOf = [dialog](QWidget *w) { return QRect(w->mapTo(dialog, QPoint(0, 0)), w->size()); };
    std::stable_sort(widgets->begin(), widgets->end(),
                     [&](QWidget *a, QWidget *b) { return rectOf(a).center().y() < rectOf(b).center().y(); });
    QList<QWidget *> sorted;
    for (int start = 0; start < widgets->size();) {
        int end = start + 1;
        const QRect first = rectOf(widgets->at(start));
        while (end < widgets->size() && rectOf(widgets->at(end)).center().y() <= first.bottom())
            ++end;
        QList<QWidget *> row = widgets->mid(start, end - start);
        std::stable_sort(row.begin(), row.end(),
                         [&](QWidget *a, QWidget *b) { return rectOf(a).x() < rectOf(b).x(); });
        sorted << row;
        start = end;
    }
    *widgets = sorted;
}

QStringList names(const QList<QWidget *> &widgets)
{
    QStringList result;
    for (QWidget *w : widgets)
        result << (w->objectName().isEmpty()
                       ? QLatin1String(w->metaObject()->className()) + QLatin1Char(':') + w->accessibleName()
                       : w->objectName());
    return result;
}

struct ChannelValues
{
    const char *name;
    double depth;
    double maxInk;
};

// A channel record as the recording handler writes it into its call log.
QString expectedChannels(const std::vector<ChannelValues> &values)
{
    std::vector<inkChannelInfo> channels;
    for (const ChannelValues &v : values)
        channels.push_back(FakePrintParamsHandler::channel(QLatin1String(v.name), v.depth, v.maxInk));
    printerChannelColorInfo info{};
    info.channels = channels.data();
    info.pcciChanneNum = int(channels.size());
    return RecordText::describe(info);
}

const QString densityGrid = QStringLiteral("gridLayout_inkConcentration_");
const QString limitGrid = QStringLiteral("gridLayout_inkLimit_");

} // namespace

class PrinterDriverPropertyDlgTest : public QObject
{
    Q_OBJECT

private:
    FakePrintParamsHandler *fake_ = nullptr;
    QTemporaryDir prsDir_;

    PrinterDriverManager *manager() const { return PrinterDriverManager::instance(); }

    // A driver of four channels (two of them spot channels), three enum
    // kinds, two common properties, ICC settings and an ink order that is
    // not 0, 1, 2, 3.
    void scriptDriver()
    {
        fake_->curDriverName = QStringLiteral("UV2513");
        fake_->addEnumItem(QStringLiteral("Resolution"), dpiId, dpiValues, 1);
        fake_->addEnumItem(QStringLiteral("PrintDirection"), directionId,
                           {QStringLiteral("Bidirectional"), QStringLiteral("Unidirectional")}, 1);
        fake_->addEnumItem(QStringLiteral("Media"), paperId, paperValues, 0);
        fake_->addEnumItem(QStringLiteral("InkSet"), inkId, inkValues, 1);
        fake_->addEnumItem(QStringLiteral("Passes"), passesId,
                           {QStringLiteral("4"), QStringLiteral("6"), QStringLiteral("8")}, 2);
        fake_->setSelectKind(kEnumKindResolution, dpiId);
        fake_->setSelectKind(kEnumKindPaper, paperId);
        fake_->setSelectKind(kEnumKindInk, inkId);
        fake_->setChannels({FakePrintParamsHandler::channel(QStringLiteral("C"), 0.5, 0.29),
                            FakePrintParamsHandler::channel(QStringLiteral("Magenta"), -0.25, 0.999),
                            FakePrintParamsHandler::channel(QStringLiteral("lc"), 0.1, 0.8),
                            FakePrintParamsHandler::channel(QStringLiteral("White"), 1.5, 1.0)});
        fake_->setIcc(QStringLiteral("sRGB.icc"), QStringLiteral("Coated.icc"), QStringLiteral("UV-PP.icm"),
                      2);
        fake_->setInkOrder({3, 1, 0, 2}, {0, 1, 0, 0});
    }

    // The calls of opening the dialog on the scripted driver, where `icc`
    // tells which (dpi, paper, ink) combinations have colour calibration and
    // `chosen` is the combination the handler is set back to.
    QStringList openingCalls(const std::function<bool(int, int, int)> &icc, int dpi, int paper, int ink) const
    {
        QStringList calls = {
            QStringLiteral("SelectPrinterDriverPrs(D1,0)"), QStringLiteral("GetCurDriverName"),
            QStringLiteral("GetSelectEnumItem(0)"),         QStringLiteral("GetSelectEnumItem(1)"),
            QStringLiteral("GetSelectEnumItem(2)"),         QStringLiteral("GetAllEnumItemList")};
        bool any = false;
        for (int i = 0; i < inkValues.size(); ++i) {
            calls << setEnum(inkId, i);
            for (int j = 0; j < paperValues.size(); ++j) {
                calls << setEnum(paperId, j);
                for (int k = 0; k < dpiValues.size(); ++k) {
                    calls << setEnum(dpiId, k) << QStringLiteral("GetIccSettingInfo");
                    any = any || icc(k, j, i);
                }
            }
        }
        if (any)
            calls << setEnum(dpiId, dpi) << setEnum(paperId, paper) << setEnum(inkId, ink);
        calls << QStringLiteral("GetIccSettingInfo") << QStringLiteral("GetChannelColorInfo")
              << QStringLiteral("GetChannelColorInfo") << QStringLiteral("GetInkOrderInfo");
        return calls;
    }

    QString channelsNow() const { return RecordText::describe(fake_->channelInfo); }
    QString iccNow() const { return RecordText::describe(fake_->icc); }
    QString inkOrderNow() const { return RecordText::describe(fake_->inkOrderInfo); }

    // The calls of write() when every step succeeds, with the records as
    // they stand in the handler afterwards.
    QStringList writeCalls(int dpi, int paper, int ink, int direction, int passes) const
    {
        return {setEnum(dpiId, dpi),
                setEnum(paperId, paper),
                setEnum(inkId, ink),
                QStringLiteral("GetIccSettingInfo"),
                QStringLiteral("SetIccSettingInfo(%1)").arg(iccNow()),
                QStringLiteral("GetChannelColorInfo"),
                QStringLiteral("SetChannelColorInfo(%1)").arg(channelsNow()),
                QStringLiteral("GetInkOrderInfo"),
                QStringLiteral("SetInkOrderInfo(%1)").arg(inkOrderNow()),
                setEnum(directionId, direction),
                setEnum(passesId, passes),
                QStringLiteral("CommitPrinterDriverPrs(0)")};
    }

    static void clickOk(QWidget *dialog)
    {
        QTest::mouseClick(child<QPushButton>(dialog, QStringLiteral("btn_ok_")), Qt::LeftButton);
    }

private slots:
    void initTestCase()
    {
        QVERIFY(prsDir_.isValid());
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QVERIFY(!manager()->getHandler());
    }

    void init()
    {
        TestAppDir::remove(settingsFile);
        PrinterDriverConfig::instance()->readConfig();
        fake_ = new FakePrintParamsHandler;
        const QString prs = prsDir_.filePath(QStringLiteral("D1.prs"));
        QFile file(prs);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("{}");
        file.close();
        fake_->drivers.push_back(
            FakePrintParamsHandler::makeItem(driverId, QStringLiteral("UV2513"), showName, prs));
        FakePrintParamsHandler::setNextHandler(fake_);
        QVERIFY(manager()->load());
        QCOMPARE(manager()->obtainInstalledDrivers().size(), 1);
        scriptDriver();
        fake_->calls.clear();
    }

    void cleanup()
    {
        manager()->unload();
        fake_ = nullptr;
    }

    // ---- opening ---------------------------------------------------------

    void open_callsTheHandlerInOrderAndSetsItBackToTheStoredCombination()
    {
        LogCapture log;
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        QCOMPARE(fake_->calls, openingCalls([](int, int, int) { return true; }, 1, 0, 1));
        QCOMPARE(fake_->selectedIndex(kEnumKindResolution), 1);
        QCOMPARE(fake_->selectedIndex(kEnumKindPaper), 0);
        QCOMPARE(fake_->selectedIndex(kEnumKindInk), 1);
        const QStringList debug = messages(log, QtDebugMsg);
        QVERIFY2(debug.contains(QStringLiteral("curDriverName: \"UV2513\"")), qPrintable(log.dump()));
        QVERIFY(debug.contains(QStringLiteral("dpiKey: \"Resolution\"")));
        QVERIFY(debug.contains(QStringLiteral("paperKey: \"Media\"")));
        QVERIFY(debug.contains(QStringLiteral("inkKey: \"InkSet\"")));
        QVERIFY(debug.contains(QStringLiteral("size: 5")));
        QVERIFY(debug.contains(QStringLiteral("GetAllEnumItemList begin ***************")));
        QVERIFY(debug.contains(QStringLiteral("GetAllEnumItemList end ***************")));
        QVERIFY(!log.contains(QtCriticalMsg, QStringLiteral("init failed")));
    }

    void open_setsWindowTitleFlagsAndStyleHooks()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        // The frameless base names every dialog so for the style sheet.
        QCOMPARE(dialog.objectName(), QStringLiteral("FramelessDialog"));
        QCOMPARE(dialog.windowTitle(), QStringLiteral("打印机驱动 - ") + showName);
        QVERIFY(!(dialog.windowFlags() & Qt::WindowContextHelpButtonHint));
        QVERIFY(!(dialog.windowFlags() & Qt::WindowMinimizeButtonHint));
        for (const char *name : {"btn_selectICC_CMYK_", "btn_selectICC_RGB_", "btn_selectICC_Curve_"})
            QCOMPARE(child(&dialog, QLatin1String(name))->property("defaultStyle_small"), QVariant(true));
        for (const char *name : {"btn_ok_", "btn_cancel_"})
            QCOMPARE(child(&dialog, QLatin1String(name))->property("defaultStyle_normal"), QVariant(true));
        for (const char *name : {"widget_iccDetail_", "widget_inkDetail_", "widget_otherPropertyDetail_",
                                 "widget_extraOptionDetail_"})
            QCOMPARE(child(&dialog, QLatin1String(name))->property("detailWidget"), QVariant(true));
        for (const char *name : {"btn_showIccDetail_", "btn_showInkDetail_", "btn_showOtherPropertyDetail_",
                                 "btn_showExtraOptionDetail_"}) {
            auto *button = child<QPushButton>(&dialog, QLatin1String(name));
            QCOMPARE(button->property("showDetailWidget"), QVariant(true));
            QVERIFY(button->isCheckable());
        }
        QVERIFY(child(&dialog, QStringLiteral("scrollArea_main_")));
        QVERIFY(child(&dialog, QStringLiteral("widget_otherPropertyWapper_")));
    }

    void open_showsSimpleModeOnlyWithTheAdvancedSwitchHidden()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        auto *advanced = child<QCheckBox>(&dialog, QStringLiteral("checkBox_advanced_"));
        QVERIFY(!advanced->isChecked());
        QVERIFY(!advanced->isVisibleTo(&dialog));
        QVERIFY(child(&dialog, QStringLiteral("widget_simple_"))->isVisibleTo(&dialog));
        QVERIFY(!child(&dialog, QStringLiteral("widget_advanced_"))->isVisibleTo(&dialog));
    }

    void open_commonPropertiesGetOneRowEach()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        const QList<QComboBox *> combos = commonCombos(&dialog);
        QCOMPARE(combos.size(), 2);
        QCOMPARE(commonComboId(combos.at(0)), int(directionId));
        QCOMPARE(combos.at(0)->count(), 2);
        QCOMPARE(combos.at(0)->currentIndex(), 1);
        QCOMPARE(combos.at(0)->itemText(1), QStringLiteral("Unidirectional"));
        QCOMPARE(combos.at(0)->itemData(1).toInt(), 1);
        QCOMPARE(combos.at(0)->focusPolicy(), Qt::StrongFocus);
        // The popup is a plain list view once the operator opens it.
        dialog.show();
        combos.at(0)->showPopup();
        QCOMPARE(QString::fromLatin1(combos.at(0)->view()->metaObject()->className()),
                 QStringLiteral("QListView"));
        combos.at(0)->hidePopup();
        QCOMPARE(commonComboId(combos.at(1)), int(passesId));
        QCOMPARE(combos.at(1)->currentText(), QStringLiteral("8"));
        QStringList labels;
        for (QLabel *label :
             child(&dialog, QStringLiteral("widget_otherPropertyDetail_"))->findChildren<QLabel *>())
            labels << label->text();
        labels.sort();
        QCOMPARE(labels, (QStringList{QStringLiteral("Passes"), QStringLiteral("PrintDirection")}));
    }

    void open_combinedTypesListOnlyCalibratedCombinations()
    {
        fake_->iccFor = [](int dpi, int paper, int) { return paper != 1 && !(dpi == 0 && paper == 2); };
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        QComboBox *combo = combinedType(&dialog);
        QStringList labels;
        for (int i = 0; i < combo->count(); ++i)
            labels << combo->itemText(i);
        QStringList expected;
        for (int i = 0; i < inkValues.size(); ++i)
            for (int j = 0; j < paperValues.size(); ++j)
                for (int k = 0; k < dpiValues.size(); ++k)
                    if (fake_->iccFor(k, j, i))
                        expected << combinationLabel(k, j, i);
        QCOMPARE(labels, expected);
        QCOMPARE(combo->currentText(), combinationLabel(1, 0, 1));
        QCOMPARE(combo->toolTip(), combinationLabel(1, 0, 1));
        QCOMPARE(combo->itemData(combo->currentIndex(), Qt::ToolTipRole).toString(),
                 combinationLabel(1, 0, 1));
        QCOMPARE(combo->itemData(combo->currentIndex(), Qt::UserRole + 1).toInt(), 1);
        QCOMPARE(combo->itemData(combo->currentIndex(), Qt::UserRole + 2).toInt(), 0);
        QCOMPARE(combo->itemData(combo->currentIndex(), Qt::UserRole + 3).toInt(), 1);
    }

    void open_storedCombinationWithoutCalibration_fallsBackToTheFirstItem()
    {
        fake_->iccFor = [](int, int paper, int ink) { return paper == 2 && ink == 0; };
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        QCOMPARE(combinedType(&dialog)->currentIndex(), 0);
        QCOMPARE(combinedType(&dialog)->currentText(), combinationLabel(0, 2, 0));
        QCOMPARE(fake_->calls, openingCalls(fake_->iccFor, 0, 2, 0));
        QCOMPARE(fake_->selectedIndex(kEnumKindPaper), 2);
        QCOMPARE(fake_->selectedIndex(kEnumKindInk), 0);
    }

    void open_noCalibratedCombination_leavesTheBoxEmptyLogsAndKeepsTheIndices()
    {
        fake_->iccFor = [](int, int, int) { return false; };
        LogCapture log;
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        QCOMPARE(combinedType(&dialog)->count(), 0);
        QVERIFY(messages(log, QtDebugMsg).contains(QStringLiteral("该驱动所有组合都没有校色")));
        QCOMPARE(fake_->calls, openingCalls(fake_->iccFor, 0, 0, 0));
        // The handler stays on the last combination visited ...
        QCOMPARE(fake_->selectedIndex(kEnumKindResolution), 1);
        QCOMPARE(fake_->selectedIndex(kEnumKindPaper), 2);
        QCOMPARE(fake_->selectedIndex(kEnumKindInk), 1);
        QVERIFY(!child(&dialog, QStringLiteral("widget_iccWrapper_"))->isVisibleTo(&dialog));
        // ... until OK writes the stored selection.
        fake_->calls.clear();
        clickOk(&dialog);
        QCOMPARE(fake_->calls.mid(0, 3),
                 (QStringList{setEnum(dpiId, 1), setEnum(paperId, 0), setEnum(inkId, 1)}));
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
    }

    void open_iccSectionShowsFileNamesAndIntent()
    {
        fake_->setIcc(QStringLiteral("sub/sRGB.icc"), QStringLiteral("..\\Coated.icc"),
                      QStringLiteral("UV-PP.icm"), 2);
        LogCapture log;
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        auto *rgb = child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_RGB_"));
        auto *cmyk = child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_CMYK_"));
        auto *curve = child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_Curve_"));
        QCOMPARE(rgb->text(), QStringLiteral("sRGB.icc"));
        QCOMPARE(storedProfileName(&dialog, rgb), QStringLiteral("sRGB.icc"));
        QCOMPARE(rgb->toolTip(), QStringLiteral("sub/sRGB.icc"));
        QCOMPARE(cmyk->text(), QStringLiteral("Coated.icc"));
        QCOMPARE(storedProfileName(&dialog, curve), QStringLiteral("UV-PP.icm"));
        auto *intent = child<QComboBox>(&dialog, QStringLiteral("comboBox_intent_"));
        QStringList items;
        QList<int> data;
        for (int i = 0; i < intent->count(); ++i) {
            items << intent->itemText(i);
            data << intent->itemData(i).toInt();
        }
        QCOMPARE(items, (QStringList{QStringLiteral("感性"), QStringLiteral("相对色"),
                                     QStringLiteral("饱和度"), QStringLiteral("绝对色")}));
        QCOMPARE(data, (QList<int>{0, 1, 2, 3}));
        QCOMPARE(intent->currentData().toInt(), 2);
        const QStringList debug = messages(log, QtDebugMsg);
        QVERIFY(debug.contains(QStringLiteral("printerIccColorInfo is valid")));
        QVERIFY(debug.contains(QStringLiteral("iccFilePath_Curve: \"UV-PP.icm\"")));
        QVERIFY(debug.contains(QStringLiteral("ICCINTENTTYPE: 2")));
    }

    void open_showsChannelRowsWithLabelsRangesAndValues()
    {
        LogCapture log;
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        QCOMPARE(rowLabel(&dialog, densityGrid, 0), QStringLiteral("青色(C)"));
        QCOMPARE(rowLabel(&dialog, densityGrid, 1), QStringLiteral("品红(M)"));
        QCOMPARE(rowLabel(&dialog, densityGrid, 2), QStringLiteral("lc"));
        QCOMPARE(rowLabel(&dialog, limitGrid, 3), QStringLiteral("White"));
        const auto density = rowSpinBoxes<QDoubleSpinBox>(&dialog, densityGrid);
        const auto limit = rowSpinBoxes<QSpinBox>(&dialog, limitGrid);
        QCOMPARE(density.size(), 4);
        QCOMPARE(limit.size(), 4);
        QCOMPARE(density.at(0)->value(), 0.5);
        QCOMPARE(density.at(1)->value(), -0.25);
        QCOMPARE(density.at(3)->value(), 1.5);
        QCOMPARE(density.at(0)->minimum(), -3.0);
        QCOMPARE(density.at(0)->maximum(), 3.0);
        QCOMPARE(density.at(0)->decimals(), 2);
        QCOMPARE(density.at(0)->singleStep(), 0.01);
        QCOMPARE(density.at(0)->buttonSymbols(), QAbstractSpinBox::NoButtons);
        QCOMPARE(density.at(0)->property("NoButtons"), QVariant(true));
        QCOMPARE(density.at(0)->focusPolicy(), Qt::StrongFocus);
        // Maximum ink: truncated whole percents that binary fractions do
        // not pull down (0.29 is 29, not 28; 0.999 is 99).
        QCOMPARE(limit.at(0)->value(), 29);
        QCOMPARE(limit.at(1)->value(), 99);
        QCOMPARE(limit.at(2)->value(), 80);
        QCOMPARE(limit.at(3)->value(), 100);
        QCOMPARE(limit.at(0)->maximum(), 100);
        QCOMPARE(limit.at(0)->property("NoButtons"), QVariant(true));
        QCOMPARE(qobject_cast<QLabel *>(rowWidget(&dialog, limitGrid, 0, 3))->text(), QStringLiteral("%"));
        auto *slider = qobject_cast<DoubleSlider *>(rowWidget(&dialog, densityGrid, 0, 1));
        QVERIFY(slider);
        QCOMPARE(slider->value(), 50);
        QCOMPARE(slider->minimum(), -300);
        QCOMPARE(slider->maximum(), 300);
        QCOMPARE(slider->property("Cyan"), QVariant(true));
        QCOMPARE(rowWidget(&dialog, densityGrid, 1, 1)->property("Magenta"), QVariant(true));
        QCOMPARE(rowWidget(&dialog, limitGrid, 3, 1)->property("White"), QVariant(true));
        QCOMPARE(qobject_cast<QSlider *>(rowWidget(&dialog, limitGrid, 1, 1))->value(), 99);
        QVERIFY(messages(log, QtDebugMsg).contains(QStringLiteral("专色通道名: \"White\"")));
        QVERIFY(messages(log, QtDebugMsg).contains(QStringLiteral("iciMaxInk: 0.999")));
    }

    void open_lightChannelIsLabelledByItsNameWithDensityLocked()
    {
        LogCapture log;
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        QCOMPARE(rowLabel(&dialog, densityGrid, 2), QStringLiteral("lc"));
        QCOMPARE(rowWidget(&dialog, densityGrid, 2, 1)->property("White"), QVariant(true));
        QVERIFY(!rowWidget(&dialog, densityGrid, 2, 1)->isEnabled());
        QVERIFY(!rowWidget(&dialog, densityGrid, 2, 2)->isEnabled());
        QVERIFY(rowWidget(&dialog, limitGrid, 2, 2)->isEnabled());
        QVERIFY(rowWidget(&dialog, densityGrid, 0, 2)->isEnabled());
        // A light ink is no spot colour: the dialog's log says what the
        // manager tells the host.
        QVERIFY(messages(log, QtDebugMsg).contains(QStringLiteral("iciName: \"lc\"")));
        QVERIFY(!messages(log, QtDebugMsg).contains(QStringLiteral("专色通道名: \"lc\"")));
    }

    void densityRow_sliderAndSpinBoxFollowEachOther()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        auto *slider = qobject_cast<DoubleSlider *>(rowWidget(&dialog, densityGrid, 0, 1));
        auto *spin = qobject_cast<QDoubleSpinBox *>(rowWidget(&dialog, densityGrid, 0, 2));
        QSignalSpy sliderMoves(slider, qOverload<double>(&DoubleSlider::valueChanged));
        spin->setValue(-0.29);
        QCOMPARE(slider->value(), -29);
        QCOMPARE(sliderMoves.count(), 0); // not echoed back into the spin box
        slider->QSlider::setValue(125);
        QCOMPARE(spin->value(), 1.25);
        auto *limitSlider = qobject_cast<QSlider *>(rowWidget(&dialog, limitGrid, 0, 1));
        auto *limitSpin = qobject_cast<QSpinBox *>(rowWidget(&dialog, limitGrid, 0, 2));
        limitSlider->setValue(64);
        QCOMPARE(limitSpin->value(), 64);
        limitSpin->setValue(12);
        QCOMPARE(limitSlider->value(), 12);
    }

    void open_inkOrderPanelShowsInksByOrderWithOffFlagsAndColours()
    {
        fake_->setChannels({FakePrintParamsHandler::channel(QStringLiteral("C"), 0, 1),
                            FakePrintParamsHandler::channel(QStringLiteral("LC"), 0, 1),
                            FakePrintParamsHandler::channel(QStringLiteral("R"), 0, 1),
                            FakePrintParamsHandler::channel(QStringLiteral("Varnish"), 0, 1)});
        PrinterDriverConfig::instance()->setShowInkDetail(true);
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        QCOMPARE(tabTexts(inkTabs(&dialog)), (QStringList{QStringLiteral("R"), QStringLiteral("LC"),
                                                          QStringLiteral("Varnish"), QStringLiteral("C")}));
        const auto infos = child<InkOrderWidget>(&dialog, QStringLiteral("inkOrderWidget_"))->inkInfos();
        QCOMPARE(infos.size(), 4);
        QCOMPARE(infos.at(0).inkId, 2);
        QCOMPARE(infos.at(0).color, QColor(252, 16, 16));
        QCOMPARE(infos.at(1).inkId, 1);
        QCOMPARE(infos.at(1).color, QColor(224, 255, 255));
        QVERIFY(!infos.at(1).isOn);
        QCOMPARE(infos.at(2).color, QColor(Qt::white));
        QCOMPARE(infos.at(3).inkId, 0);
        QCOMPARE(infos.at(3).order, 3);
        QCOMPARE(infos.at(3).color, QColor(Qt::cyan));
        auto *panel = child<InkOrderWidget>(&dialog, QStringLiteral("inkOrderWidget_"));
        QCOMPARE(panel->offBackgroundColor(), QColor(153, 153, 153));
        QCOMPARE(panel->offTextColor(), QColor(205, 205, 205));
        QVERIFY(panel->isInkSwitchEnabled());
        // Filled before the window opened, the panel still gets the height
        // of its tabs once it is shown.
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QVERIFY(panel->height() > 0);
        QCOMPARE(panel->sizeHint().height(), inkTabs(&dialog)->sizeHint().height());
    }

    void open_channelAndInkCountsDiffer_showsRowsAndLeavesInkOrderUntouched()
    {
        fake_->setInkOrder({0, 1, 2}, {0, 0, 0});
        LogCapture log;
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        QCOMPARE(rowSpinBoxes<QSpinBox>(&dialog, limitGrid).size(), 4);
        QCOMPARE(inkTabs(&dialog)->count(), 0);
        QVERIFY2(messages(log, QtDebugMsg)
                     .contains(QStringLiteral("pcciChanneNum: 4  - pioiInkNum: 3  is not same")),
                 qPrintable(log.dump()));
    }

    void open_withoutRecords_hidesTheSections()
    {
        fake_->hasIcc = false;
        fake_->hasChannels = false;
        fake_->hasInkOrder = false;
        LogCapture log;
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        QVERIFY(!child(&dialog, QStringLiteral("widget_iccWrapper_"))->isVisibleTo(&dialog));
        QVERIFY(!child(&dialog, QStringLiteral("widget_inkWrapper_"))->isVisibleTo(&dialog));
        QVERIFY(messages(log, QtDebugMsg).contains(QStringLiteral("printerChannelColorInfo is nullptr")));
        QVERIFY(messages(log, QtDebugMsg).contains(QStringLiteral("printerIccColorInfo is nullptr")));
    }

    void open_selectionRefused_failsInitAndOkWritesNothing()
    {
        fake_->selectResult = false;
        LogCapture log;
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        QCOMPARE(messages(log, QtCriticalMsg),
                 (QStringList{QStringLiteral("SelectPrinterDriverPrs: \"D1\" failed!"),
                              QStringLiteral("init failed")}));
        QCOMPARE(fake_->calls, QStringList{QStringLiteral("SelectPrinterDriverPrs(D1,0)")});
        fake_->calls.clear();
        BoxSeen seen;
        auto answer = answerMessageBox(&dialog, QStringLiteral("确定"), &seen);
        dialog.show();
        clickOk(&dialog);
        QVERIFY(answer->answered());
        QCOMPARE(seen.text, QStringLiteral("属性设置失败"));
        QCOMPARE(fake_->calls, QStringList());
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
    }

    void open_emptyDriverId_isLogged()
    {
        LogCapture log;
        PrinterDriverPropertyDlg dialog(QString(), nullptr);
        QCOMPARE(messages(log, QtCriticalMsg),
                 (QStringList{QStringLiteral("driverId_ is empty"), QStringLiteral("init failed")}));
        QVERIFY(fake_->calls.isEmpty());
    }

    // ---- combined types and the advanced path ----------------------------

    void combinedTypeChange_storesTheOldCombinationThenShowsTheNewOne()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        rowSpinBoxes<QSpinBox>(&dialog, limitGrid).at(0)->setValue(45);
        fake_->calls.clear();
        LogCapture log;
        QComboBox *combo = combinedType(&dialog);
        const int target = combo->findText(combinationLabel(0, 2, 0));
        combo->setCurrentIndex(target);
        const QString edited = expectedChannels(
            {{"C", 0.5, 0.45}, {"Magenta", -0.25, 0.99}, {"lc", 0.1, 0.8}, {"White", 1.5, 1.0}});
        QCOMPARE(fake_->calls,
                 (QStringList{QStringLiteral("GetIccSettingInfo"),
                              QStringLiteral("SetIccSettingInfo(sRGB.icc,Coated.icc,UV-PP.icm,2)"),
                              QStringLiteral("GetChannelColorInfo"),
                              QStringLiteral("SetChannelColorInfo(%1)").arg(edited),
                              QStringLiteral("GetInkOrderInfo"),
                              QStringLiteral("SetInkOrderInfo(order=3,1,0,2 off=0,1,0,0)"),
                              setEnum(paperId, 2), setEnum(dpiId, 0), setEnum(inkId, 0),
                              QStringLiteral("GetIccSettingInfo"), QStringLiteral("GetChannelColorInfo"),
                              QStringLiteral("GetChannelColorInfo"), QStringLiteral("GetInkOrderInfo")}));
        QCOMPARE(combo->toolTip(), combinationLabel(0, 2, 0));
        const QStringList debug = messages(log, QtDebugMsg);
        QVERIFY(debug.contains(QStringLiteral("dpi enumId: 10 index: 0")));
        QVERIFY(debug.contains(QStringLiteral("paper enumId: 11 index: 2")));
        QVERIFY(debug.contains(QStringLiteral("ink enumId: 12 index: 0")));
        // OK now writes the new combination.
        fake_->calls.clear();
        clickOk(&dialog);
        QCOMPARE(fake_->calls.mid(0, 3),
                 (QStringList{setEnum(dpiId, 0), setEnum(paperId, 2), setEnum(inkId, 0)}));
    }

    void combinedTypeChange_sameChannelNames_reuseTheRows()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        const int densityWidgets =
            child(&dialog, QStringLiteral("groupBox_inkConcentration_"))->findChildren<QWidget *>().size();
        const auto before = rowSpinBoxes<QDoubleSpinBox>(&dialog, densityGrid);
        combinedType(&dialog)->setCurrentIndex(0);
        combinedType(&dialog)->setCurrentIndex(3);
        QCOMPARE(rowSpinBoxes<QDoubleSpinBox>(&dialog, densityGrid), before);
        QCOMPARE(
            child(&dialog, QStringLiteral("groupBox_inkConcentration_"))->findChildren<QWidget *>().size(),
            densityWidgets);
        QCOMPARE(rowLabel(&dialog, densityGrid, 0), QStringLiteral("青色(C)"));
        QCOMPARE(before.at(0)->value(), 0.5);
    }

    void combinedTypeChange_fewerChannels_hidesTheRowsOfTheMissingOnes()
    {
        PrinterDriverConfig::instance()->setShowInkDetail(true);
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        const auto density = rowSpinBoxes<QDoubleSpinBox>(&dialog, densityGrid);
        const auto limits = rowSpinBoxes<QSpinBox>(&dialog, limitGrid);
        QCOMPARE(limits.size(), 4);

        // The next combination has only C and Magenta, and two inks.
        fake_->setChannels({FakePrintParamsHandler::channel(QStringLiteral("C"), 0.25, 0.5),
                            FakePrintParamsHandler::channel(QStringLiteral("Magenta"), 0.75, 0.6)});
        fake_->setInkOrder({1, 0}, {0, 0});
        combinedType(&dialog)->setCurrentIndex(2);

        for (int row = 0; row < 4; ++row) {
            const bool present = row < 2;
            for (int column = 0; column < 3; ++column) {
                QWidget *density = rowWidget(&dialog, densityGrid, row, column);
                QWidget *limit = rowWidget(&dialog, limitGrid, row, column);
                QVERIFY(density && limit);
                QCOMPARE(density->isVisibleTo(&dialog), present);
                QCOMPARE(limit->isVisibleTo(&dialog), present);
            }
            QCOMPARE(rowWidget(&dialog, limitGrid, row, 3)->isVisibleTo(&dialog), present);
        }
        // The rows show the new combination's record.
        QCOMPARE(density.at(0)->value(), fake_->channelInfo.channels[0].iciDepth);
        QCOMPARE(limits.at(1)->value(), qRound(fake_->channelInfo.channels[1].iciMaxInk * 100));
        QCOMPARE(tabTexts(inkTabs(&dialog)), (QStringList{QStringLiteral("Magenta"), QStringLiteral("C")}));

        // Back to four channels: the rows show again with the new values.
        fake_->setChannels({FakePrintParamsHandler::channel(QStringLiteral("C"), 0.5, 0.29),
                            FakePrintParamsHandler::channel(QStringLiteral("Magenta"), -0.25, 0.999),
                            FakePrintParamsHandler::channel(QStringLiteral("lc"), 0.1, 0.8),
                            FakePrintParamsHandler::channel(QStringLiteral("White"), 1.5, 1.0)});
        fake_->setInkOrder({3, 1, 0, 2}, {0, 1, 0, 0});
        combinedType(&dialog)->setCurrentIndex(0);
        for (int row = 0; row < 4; ++row)
            QVERIFY(rowWidget(&dialog, limitGrid, row, 2)->isVisibleTo(&dialog));
        QCOMPARE(limits.at(3)->value(), 100);
        QCOMPARE(inkTabs(&dialog)->count(), 4);
    }

    void combinedTypeChange_inkOrderUnusable_panelKeepsNoInksOfTheOldCombination()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        QCOMPARE(inkTabs(&dialog)->count(), 4);
        // The next combination's ink order does not match its channels.
        fake_->setInkOrder({0, 1, 2}, {0, 0, 0});
        combinedType(&dialog)->setCurrentIndex(2);
        QCOMPARE(inkTabs(&dialog)->count(), 0);
        QVERIFY(child<InkOrderWidget>(&dialog, QStringLiteral("inkOrderWidget_"))->inkInfos().isEmpty());
        // OK sends no ink order of the old combination.
        fake_->calls.clear();
        clickOk(&dialog);
        QVERIFY2(!fake_->calls.join(QLatin1Char('\n')).contains(QStringLiteral("SetInkOrderInfo")),
                 qPrintable(fake_->calls.join(QLatin1Char('\n'))));
    }

    void wheel_overControlsWithoutFocus_scrollsThePageAndChangesNothing()
    {
        PrinterDriverConfig::instance()->setShowInkDetail(true);
        PrinterDriverConfig::instance()->setShowOtherPropertyDetail(true);
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.resize(720, 400);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        auto *scroll = child<QScrollArea>(&dialog, QStringLiteral("scrollArea_main_"));
        QVERIFY(scroll->verticalScrollBar()->maximum() > 0);

        QComboBox *combo = combinedType(&dialog);
        QWidget *limitSlider = rowWidget(&dialog, limitGrid, 0, 1);
        QSpinBox *limitBox = rowSpinBoxes<QSpinBox>(&dialog, limitGrid).at(0);
        QComboBox *common = nullptr;
        for (QComboBox *box :
             child(&dialog, QStringLiteral("scrollArea_common_"))->findChildren<QComboBox *>())
            common = common ? common : box;
        QVERIFY(limitSlider && common);
        const QList<QWidget *> controls = {combo, limitSlider, limitBox, common};
        for (QWidget *control : controls)
            QVERIFY2(control->focusPolicy() == Qt::StrongFocus, qPrintable(control->objectName()));

        dialog.setFocus();
        for (QWidget *control : controls) {
            scroll->ensureWidgetVisible(control);
            QApplication::processEvents();
            const int comboIndex = combo->currentIndex();
            const int limit = limitBox->value();
            const int commonIndex = common->currentIndex();
            fake_->calls.clear();
            scroll->verticalScrollBar()->setValue(scroll->verticalScrollBar()->maximum() / 2);
            const int scrolled = scroll->verticalScrollBar()->value();
            sendWheel(control, -120);
            QCOMPARE(combo->currentIndex(), comboIndex);
            QCOMPARE(limitBox->value(), limit);
            QCOMPARE(common->currentIndex(), commonIndex);
            QVERIFY2(fake_->calls.isEmpty(), qPrintable(fake_->calls.join(QLatin1Char(','))));
            QVERIFY2(scroll->verticalScrollBar()->value() > scrolled,
                     qPrintable(control->metaObject()->className()));
            QVERIFY(!control->hasFocus());
        }

        // With focus the wheel edits as usual.
        limitBox->setFocus();
        QVERIFY(limitBox->hasFocus());
        const int before = limitBox->value();
        sendWheel(limitBox, -120);
        QCOMPARE(limitBox->value(), before - 1);
    }

    void combinedTypeChange_byMouseOnThePopup_selectsTheCombination()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QComboBox *combo = combinedType(&dialog);
        fake_->calls.clear();
        combo->showPopup();
        QAbstractItemView *view = combo->view();
        QVERIFY(QTest::qWaitForWindowExposed(view->window()));
        const QModelIndex index = view->model()->index(2, 0);
        view->scrollTo(index);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->visualRect(index).center());
        QTRY_COMPARE(combo->currentIndex(), 2);
        QVERIFY(fake_->calls.contains(setEnum(dpiId, combo->itemData(2, Qt::UserRole + 1).toInt())));
        QCOMPARE(fake_->calls.last(), QStringLiteral("GetInkOrderInfo"));
    }

    void advancedMode_toggledTwice_refillsAndKeepsIndices()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        auto *advanced = child<QCheckBox>(&dialog, QStringLiteral("checkBox_advanced_"));
        auto *dpi = child<QComboBox>(&dialog, QStringLiteral("comboBox_dpi_"));
        auto *paper = child<QComboBox>(&dialog, QStringLiteral("comboBox_paper_"));
        auto *ink = child<QComboBox>(&dialog, QStringLiteral("comboBox_ink_"));
        fake_->calls.clear();
        advanced->setChecked(true);
        QVERIFY(child(&dialog, QStringLiteral("widget_advanced_"))->isVisibleTo(&dialog));
        QVERIFY(!child(&dialog, QStringLiteral("widget_simple_"))->isVisibleTo(&dialog));
        QCOMPARE(dpi->count(), 2);
        QCOMPARE(paper->count(), 3);
        QCOMPARE(ink->currentText(), QStringLiteral("CMYK+W"));
        QVERIFY(fake_->calls.isEmpty()); // refilled without switching anything
        advanced->setChecked(false);
        advanced->setChecked(true);
        QCOMPARE(dpi->count(), 2);
        QCOMPARE(dpi->currentIndex(), 1);
        QCOMPARE(paper->currentIndex(), 0);
        QCOMPARE(ink->currentIndex(), 1);
        QCOMPARE(combinedType(&dialog)->currentText(), combinationLabel(1, 0, 1));
    }

    void advancedMode_paperChange_writesTheRecordsAndOnlyThePaper()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        child<QCheckBox>(&dialog, QStringLiteral("checkBox_advanced_"))->setChecked(true);
        fake_->calls.clear();
        child<QComboBox>(&dialog, QStringLiteral("comboBox_paper_"))->setCurrentIndex(2);
        QCOMPARE(fake_->calls,
                 (QStringList{QStringLiteral("GetIccSettingInfo"),
                              QStringLiteral("SetIccSettingInfo(%1)").arg(iccNow()),
                              QStringLiteral("GetChannelColorInfo"),
                              QStringLiteral("SetChannelColorInfo(%1)").arg(channelsNow()),
                              QStringLiteral("GetInkOrderInfo"),
                              QStringLiteral("SetInkOrderInfo(%1)").arg(inkOrderNow()), setEnum(paperId, 2),
                              QStringLiteral("GetIccSettingInfo"), QStringLiteral("GetChannelColorInfo"),
                              QStringLiteral("GetChannelColorInfo"), QStringLiteral("GetInkOrderInfo")}));
        fake_->calls.clear();
        child<QComboBox>(&dialog, QStringLiteral("comboBox_dpi_"))->setCurrentIndex(0);
        QCOMPARE(fake_->calls.at(6), setEnum(dpiId, 0));
        fake_->calls.clear();
        child<QComboBox>(&dialog, QStringLiteral("comboBox_ink_"))->setCurrentIndex(0);
        QCOMPARE(fake_->calls.at(6), setEnum(inkId, 0));
        QCOMPARE(fake_->calls.size(), 11);
    }

    // ---- writing ---------------------------------------------------------

    void ok_untouched_writesEveryRecordBackUnchangedAndCommits()
    {
        const QString channelsBefore = channelsNow();
        const QString iccBefore = iccNow();
        const QString inkOrderBefore = inkOrderNow();
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        fake_->calls.clear();
        LogCapture log;
        clickOk(&dialog);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(fake_->calls, writeCalls(1, 0, 1, 1, 2));
        // Whole-percent limits go back as exact fractions; 0.999 becomes the
        // 0.99 the operator saw, and stays so on every later OK.
        QCOMPARE(channelsBefore,
                 expectedChannels(
                     {{"C", 0.5, 0.29}, {"Magenta", -0.25, 0.999}, {"lc", 0.1, 0.8}, {"White", 1.5, 1.0}}));
        QCOMPARE(channelsNow(),
                 expectedChannels(
                     {{"C", 0.5, 0.29}, {"Magenta", -0.25, 0.99}, {"lc", 0.1, 0.8}, {"White", 1.5, 1.0}}));
        QCOMPARE(iccNow(), iccBefore);
        QCOMPARE(inkOrderNow(), inkOrderBefore);
        QCOMPARE(inkOrderNow(), QStringLiteral("order=3,1,0,2 off=0,1,0,0"));
        QCOMPARE(
            messages(log, QtDebugMsg).filter(QRegularExpression(QStringLiteral(" (begin|end)$"))),
            (QStringList{
                QStringLiteral("writeDPI begin"), QStringLiteral("writeDPI end"),
                QStringLiteral("writePaper begin"), QStringLiteral("writePaper end"),
                QStringLiteral("writeInk begin"), QStringLiteral("writeInk end"),
                QStringLiteral("writeICC begin"), QStringLiteral("writeICC end"),
                QStringLiteral("writeChannelColorInfo begin"), QStringLiteral("SetChannelColorInfo begin"),
                QStringLiteral("SetChannelColorInfo end"), QStringLiteral("writeChannelColorInfo end"),
                QStringLiteral("writeInkOrderInfo begin"), QStringLiteral("writeInkOrderInfo end")}));
        QVERIFY(messages(log, QtDebugMsg).contains(QStringLiteral("驱动D1属性设置成功")));
        QVERIFY(messages(log, QtDebugMsg).contains(QStringLiteral("ink index: 1")));

        // A second OK on a new dialog hands back exactly the same records.
        const QString channelsAfterFirst = channelsNow();
        PrinterDriverPropertyDlg again(driverId, nullptr);
        clickOk(&again);
        QCOMPARE(channelsNow(), channelsAfterFirst);
        QCOMPARE(inkOrderNow(), inkOrderBefore);
    }

    void ok_afterEdits_handsBackTheEditedRecords()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        rowSpinBoxes<QDoubleSpinBox>(&dialog, densityGrid).at(1)->setValue(1.25);
        rowSpinBoxes<QSpinBox>(&dialog, limitGrid).at(3)->setValue(73);
        // The tabs stand by the stored order (3, 1, 0, 2): lc, Magenta,
        // White, C. Move lc to the end and switch White off.
        QTabBar *tabs = inkTabs(&dialog);
        QCOMPARE(tabTexts(tabs), (QStringList{QStringLiteral("lc"), QStringLiteral("Magenta"),
                                              QStringLiteral("White"), QStringLiteral("C")}));
        tabs->moveTab(0, 3);
        doubleClickTab(tabs, 1);
        QCOMPARE(tabTexts(tabs), (QStringList{QStringLiteral("Magenta"), QStringLiteral("White"),
                                              QStringLiteral("C"), QStringLiteral("lc")}));
        auto *intent = child<QComboBox>(&dialog, QStringLiteral("comboBox_intent_"));
        intent->setCurrentIndex(intent->findData(3));
        iccRow(&dialog, child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_Curve_")))
            ->showChosen(QStringLiteral("/elsewhere/new.icm"), IccProfileInfo());
        commonCombo(&dialog, int(passesId))->setCurrentIndex(0);
        fake_->calls.clear();
        clickOk(&dialog);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(channelsNow(),
                 expectedChannels(
                     {{"C", 0.5, 0.29}, {"Magenta", 1.25, 0.99}, {"lc", 0.1, 0.8}, {"White", 1.5, 0.73}}));
        QCOMPARE(iccNow(), QStringLiteral("sRGB.icc,Coated.icc,new.icm,3"));
        // Each ink keeps its own slot: C (ink 0) is third, Magenta (ink 1)
        // first and still off, lc (ink 2) last, White (ink 3) second and off.
        QCOMPARE(inkOrderNow(), QStringLiteral("order=2,0,3,1 off=0,1,0,1"));
        QCOMPARE(fake_->calls, writeCalls(1, 0, 1, 1, 0));
    }

    void keyboard_tabOrderFollowsTheLayout()
    {
        PrinterDriverConfig::instance()->setShowInkDetail(true);
        PrinterDriverConfig::instance()->setShowOtherPropertyDetail(true);
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.setExtraOption(RipExtraOption{1, false});
        // Tall enough that nothing scrolls: the places on the window are
        // the places on the page.
        dialog.resize(720, 2400);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        // A combination with other channels makes rows after the dialog was
        // built: they take their place in the order too.
        fake_->setChannels({FakePrintParamsHandler::channel(QStringLiteral("K"), 0, 1),
                            FakePrintParamsHandler::channel(QStringLiteral("C"), 0, 1),
                            FakePrintParamsHandler::channel(QStringLiteral("Orange"), 0, 1),
                            FakePrintParamsHandler::channel(QStringLiteral("lc"), 0, 1),
                            FakePrintParamsHandler::channel(QStringLiteral("White"), 0, 1)});
        fake_->setInkOrder({0, 1, 2, 3, 4}, {0, 0, 0, 0, 0});
        combinedType(&dialog)->setCurrentIndex(1);
        QApplication::processEvents();

        auto *scroll = child<QScrollArea>(&dialog, QStringLiteral("scrollArea_main_"));
        QCOMPARE(scroll->verticalScrollBar()->maximum(), 0);
        const QList<QWidget *> chain = tabChain(&dialog);
        QList<QWidget *> reading = chain;
        sortInReadingOrder(&dialog, &reading);
        QVERIFY(chain.size() > 20);
        QVERIFY(chain.contains(child(&dialog, QStringLiteral("btn_ok_"))));
        QVERIFY(chain.contains(inkTabs(&dialog)));
        QCOMPARE(names(chain), names(reading));
    }

    void keyboard_completesAFullRoundWithKeysOnly()
    {
        PrinterDriverConfig::instance()->setShowInkDetail(true);
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.show();
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        fake_->calls.clear();

        // The combination: Down chooses the next one, which is read at once.
        QComboBox *combo = combinedType(&dialog);
        QVERIFY(tabTo(&dialog, combo));
        const int combination = combo->currentIndex();
        press(Qt::Key_Down);
        QCOMPARE(combo->currentIndex(), combination + 1);
        QVERIFY(fake_->calls.contains(QStringLiteral("GetChannelColorInfo")));

        // The first maximum-ink box: typed over.
        QSpinBox *limit = rowSpinBoxes<QSpinBox>(&dialog, limitGrid).at(0);
        QVERIFY(tabTo(&dialog, limit));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("45"));
        QCOMPARE(limit->value(), 45);

        // The ink order: Space switches the chosen ink off.
        QTabBar *tabs = inkTabs(&dialog);
        QVERIFY(tabTo(&dialog, tabs));
        const QString ink = tabs->tabText(tabs->currentIndex());
        press(Qt::Key_Space);
        bool switchedOff = false;
        for (const InkOrderWidget::InkInfo &info :
             child<InkOrderWidget>(&dialog, QStringLiteral("inkOrderWidget_"))->inkInfos())
            switchedOff = switchedOff || (info.inkName == ink && !info.isOn);
        QVERIFY2(switchedOff, qPrintable(ink));

        // "Never ask again": Space ticks it, and the setting follows.
        auto *never = child<QCheckBox>(&dialog, QStringLiteral("checkBox_notPromptDriverPropertyDlg_"));
        QVERIFY(tabTo(&dialog, never));
        press(Qt::Key_Space);
        QVERIFY(never->isChecked());
        QVERIFY(!PrinterDriverConfig::instance()->bPromptDriverPropertyDlg());
        // And back, which leaves the setting as the other tests expect it.
        press(Qt::Key_Space);
        QVERIFY(!never->isChecked());
        QVERIFY(PrinterDriverConfig::instance()->bPromptDriverPropertyDlg());

        // Enter confirms from wherever the focus stands but a button.
        QVERIFY(tabTo(&dialog, combo));
        fake_->calls.clear();
        press(Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QVERIFY(!dialog.isVisible());
        QVERIFY2(fake_->calls.contains(QStringLiteral("CommitPrinterDriverPrs(0)")),
                 qPrintable(fake_->calls.join(QLatin1Char(','))));
        QCOMPARE(fake_->channelInfo.channels[0].iciMaxInk, 0.45);
    }

    void keyboard_escapeCancelsAndWritesNothing()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.show();
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QSpinBox *limit = rowSpinBoxes<QSpinBox>(&dialog, limitGrid).at(0);
        limit->setValue(12);
        fake_->calls.clear();
        press(Qt::Key_Escape);
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QVERIFY(!dialog.isVisible());
        for (const QString &call : qAsConst(fake_->calls))
            QVERIFY2(!call.startsWith(QLatin1String("Set")) && !call.startsWith(QLatin1String("Commit")),
                     qPrintable(call));
    }

    void ok_stepFailing_reportsAndRejectsWithoutCommit_data()
    {
        QTest::addColumn<QString>("failing");
        QTest::addColumn<int>("callsMade");
        QTest::addColumn<QString>("logLine");
        QTest::newRow("dpi") << "dpi" << 1 << "SetEnumItem failed [dpi]. enumId: 10 index: 1";
        QTest::newRow("paper") << "paper" << 2 << "SetEnumItem failed [paper]. enumId: 11 index: 0";
        QTest::newRow("ink") << "ink" << 3 << "SetEnumItem failed [ink]. enumId: 12 index: 1";
        QTest::newRow("icc") << "icc" << 5 << "SetIccSettingInfo failed";
        QTest::newRow("channels") << "channels" << 7 << "SetChannelColorInfo failed";
        QTest::newRow("inkOrder") << "inkOrder" << 9 << "SetInkOrderInfo failed";
        QTest::newRow("common") << "common" << 10 << "SetEnumItem failed. enumId: 20 index: 1";
    }

    void ok_stepFailing_reportsAndRejectsWithoutCommit()
    {
        QFETCH(QString, failing);
        QFETCH(int, callsMade);
        QFETCH(QString, logLine);
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        const std::map<QString, std::function<void()>> fail = {
            {QStringLiteral("dpi"), [this]() { fake_->failingEnumIds.insert(dpiId); }},
            {QStringLiteral("paper"), [this]() { fake_->failingEnumIds.insert(paperId); }},
            {QStringLiteral("ink"), [this]() { fake_->failingEnumIds.insert(inkId); }},
            {QStringLiteral("icc"), [this]() { fake_->setIccResult = false; }},
            {QStringLiteral("channels"), [this]() { fake_->setChannelResult = false; }},
            {QStringLiteral("inkOrder"), [this]() { fake_->setInkOrderResult = false; }},
            {QStringLiteral("common"), [this]() { fake_->failingEnumIds.insert(directionId); }},
        };
        fail.at(failing)();
        fake_->calls.clear();
        LogCapture log;
        BoxSeen seen;
        dialog.show();
        auto answer = answerMessageBox(&dialog, QStringLiteral("确定"), &seen);
        clickOk(&dialog);
        QVERIFY(answer->answered());
        // The records are edited in place before they are handed over, so
        // the expected arguments are those the records hold now.
        QCOMPARE(fake_->calls, writeCalls(1, 0, 1, 1, 2).mid(0, callsMade));
        QVERIFY(!fake_->calls.contains(QStringLiteral("CommitPrinterDriverPrs(0)")));
        QCOMPARE(messages(log, QtCriticalMsg), (QStringList{logLine, QStringLiteral("驱动D1属性设置失败")}));
        QCOMPARE(seen.title, QStringLiteral("温馨提示"));
        QCOMPARE(seen.text, QStringLiteral("属性设置失败"));
        QCOMPARE(seen.buttons, QStringList{QStringLiteral("确定")});
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QVERIFY(!dialog.isVisible());
    }

    void ok_withoutRecords_recordStepsSucceedWithoutSetters()
    {
        fake_->hasIcc = false;
        fake_->hasChannels = false;
        fake_->hasInkOrder = false;
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        fake_->calls.clear();
        LogCapture log;
        clickOk(&dialog);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(fake_->calls,
                 (QStringList{setEnum(dpiId, 1), setEnum(paperId, 0), setEnum(inkId, 1),
                              QStringLiteral("GetIccSettingInfo"), QStringLiteral("GetChannelColorInfo"),
                              QStringLiteral("GetInkOrderInfo"), setEnum(directionId, 1),
                              setEnum(passesId, 2), QStringLiteral("CommitPrinterDriverPrs(0)")}));
        QVERIFY(messages(log, QtWarningMsg).contains(QStringLiteral("printerInkOrderInfo is nullptr")));
    }

    void ok_inkListLengthDiffers_sendsNoInkOrderAndStillSucceeds()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        fake_->setInkOrder({0, 1, 2, 3, 4}, {0, 0, 0, 0, 0});
        fake_->calls.clear();
        LogCapture log;
        clickOk(&dialog);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QVERIFY(!fake_->calls.filter(QStringLiteral("SetInkOrderInfo")).size());
        QCOMPARE(fake_->calls.last(), QStringLiteral("CommitPrinterDriverPrs(0)"));
        QCOMPARE(messages(log, QtCriticalMsg), QStringList{QStringLiteral("check your code!")});
    }

    void ok_inkIdOutsideTheRecordOrTwice_isTreatedAsALengthMismatch_data()
    {
        QTest::addColumn<int>("secondInkId");
        QTest::newRow("same id twice") << 0;
        QTest::newRow("id beyond the record") << 4;
        QTest::newRow("negative id") << -1;
    }

    void ok_inkIdOutsideTheRecordOrTwice_isTreatedAsALengthMismatch()
    {
        QFETCH(int, secondInkId);
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        auto *panel = child<InkOrderWidget>(&dialog, QStringLiteral("inkOrderWidget_"));
        QVector<InkOrderWidget::InkInfo> infos = panel->inkInfos();
        QCOMPARE(infos.size(), 4);
        infos[1].inkId = secondInkId == 0 ? infos[0].inkId : secondInkId;
        panel->setInkInfos(infos);
        fake_->calls.clear();
        LogCapture log;
        clickOk(&dialog);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QVERIFY(fake_->calls.filter(QStringLiteral("SetInkOrderInfo")).isEmpty());
        QCOMPARE(fake_->calls.last(), QStringLiteral("CommitPrinterDriverPrs(0)"));
        QCOMPARE(inkOrderNow(), QStringLiteral("order=3,1,0,2 off=0,1,0,0"));
        QCOMPARE(messages(log, QtCriticalMsg), QStringList{QStringLiteral("check your code!")});
    }

    void cancel_rejectsAndWritesNothing()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        fake_->calls.clear();
        QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_cancel_")), Qt::LeftButton);
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QVERIFY(fake_->calls.isEmpty());
    }

    void okAndCancel_inAModalDialog_acceptAndReject()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        ModalAnswer user(nullptr, [](QWidget *modal) { clickOk(modal); });
        QCOMPARE(dialog.exec(), int(QDialog::Accepted));
        QVERIFY(user.answered());
        PrinterDriverPropertyDlg second(driverId, nullptr);
        ModalAnswer closer(nullptr, [](QWidget *modal) {
            QTest::mouseClick(child<QPushButton>(modal, QStringLiteral("btn_cancel_")), Qt::LeftButton);
        });
        QCOMPARE(second.exec(), int(QDialog::Rejected));
    }

    // ---- settings and geometry -------------------------------------------

    void detailButtons_followAndStoreTheSettings()
    {
        {
            QSettings ini(TestAppDir::filePath(settingsFile), QSettings::IniFormat);
            ini.setValue(QStringLiteral("bShowIccDetail"), false);
            ini.setValue(QStringLiteral("bShowInkDetail"), true);
        }
        PrinterDriverConfig::instance()->readConfig();
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        auto *iccButton = child<QPushButton>(&dialog, QStringLiteral("btn_showIccDetail_"));
        auto *inkButton = child<QPushButton>(&dialog, QStringLiteral("btn_showInkDetail_"));
        QVERIFY(!iccButton->isChecked());
        QVERIFY(!child(&dialog, QStringLiteral("widget_iccDetail_"))->isVisibleTo(&dialog));
        QVERIFY(inkButton->isChecked());
        QVERIFY(child(&dialog, QStringLiteral("widget_inkDetail_"))->isVisibleTo(&dialog));
        QVERIFY(child(&dialog, QStringLiteral("widget_otherPropertyDetail_"))->isVisibleTo(&dialog));
        dialog.show();
        QTest::mouseClick(iccButton, Qt::LeftButton);
        QVERIFY(child(&dialog, QStringLiteral("widget_iccDetail_"))->isVisible());
        QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_showOtherPropertyDetail_")),
                          Qt::LeftButton);
        QVERIFY(!child(&dialog, QStringLiteral("widget_otherPropertyDetail_"))->isVisible());
        QSettings ini(TestAppDir::filePath(settingsFile), QSettings::IniFormat);
        QCOMPARE(ini.value(QStringLiteral("bShowIccDetail")).toBool(), true);
        QCOMPARE(ini.value(QStringLiteral("bShowOtherPropertyDetail")).toBool(), false);
        auto *layout = dialog.findChild<QVBoxLayout *>(QStringLiteral("verLayout_otherPropertyWapper_"));
        QSpacerItem *spacer = layout->itemAt(layout->count() - 1)->spacerItem();
        QVERIFY(spacer);
        QCOMPARE(spacer->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
        QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_showOtherPropertyDetail_")),
                          Qt::LeftButton);
        QCOMPARE(spacer->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
        QCOMPARE(spacer->sizeHint(), QSize(1, 1));
    }

    void notPromptCheckBox_storesTheSettingAtOnce()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        auto *box = child<QCheckBox>(&dialog, QStringLiteral("checkBox_notPromptDriverPropertyDlg_"));
        QVERIFY(!box->isChecked());
        dialog.show();
        QTest::mouseClick(box, Qt::LeftButton);
        QCOMPARE(PrinterDriverConfig::instance()->bPromptDriverPropertyDlg(), false);
        QSettings ini(TestAppDir::filePath(settingsFile), QSettings::IniFormat);
        QCOMPARE(ini.value(QStringLiteral("bPromptDriverPropertyDlg")).toBool(), false);
        QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_cancel_")), Qt::LeftButton);
        PrinterDriverPropertyDlg next(driverId, nullptr);
        QVERIFY(child<QCheckBox>(&next, QStringLiteral("checkBox_notPromptDriverPropertyDlg_"))->isChecked());
    }

    void geometry_withoutRecord_neverExceeds720x750()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        const QRect available = dialog.screen()->availableGeometry();
        QCOMPARE(dialog.size(),
                 QSize(std::min(available.width() - 100, 720), std::min(available.height() - 80, 750)));
        QVERIFY(dialog.width() <= 720 && dialog.height() <= 750);
    }

    void geometry_savedRecord_isClampedToTheScreen()
    {
        const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
        PrinterDriverConfig::instance()->setWindowRecord(QPoint(available.width(), -40),
                                                         QSize(available.width() + 500, 600));
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        QCOMPARE(dialog.size(), QSize(available.width(), 600));
        QCOMPARE(dialog.pos(), QPoint(available.width() - 200, 0));
    }

    void close_storesTheWindowRecord()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.show();
        dialog.move(33, 44);
        dialog.resize(640, 560);
        dialog.close();
        QCOMPARE(PrinterDriverConfig::instance()->windowPos(), dialog.pos());
        QCOMPARE(PrinterDriverConfig::instance()->windowSize(), QSize(640, 560));
        QSettings ini(TestAppDir::filePath(settingsFile), QSettings::IniFormat);
        QCOMPARE(ini.value(QStringLiteral("windowRecord/size")).toSize(), QSize(640, 560));
    }

    void okAndCancel_storeTheWindowRecordToo()
    {
        for (const char *button : {"btn_ok_", "btn_cancel_"}) {
            PrinterDriverPropertyDlg dialog(driverId, nullptr);
            dialog.show();
            // Not narrower than the dialog allows: its content never scrolls
            // sideways.
            const QSize size(qMax(600, dialog.minimumWidth()) + int(qstrlen(button)), 500);
            dialog.resize(size);
            QTest::mouseClick(child<QPushButton>(&dialog, QLatin1String(button)), Qt::LeftButton);
            QVERIFY(!dialog.isVisible());
            QCOMPARE(PrinterDriverConfig::instance()->windowSize(), size);
        }
    }

    void extraOption_sectionShowsOnlyWithAJobsOption()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        QVERIFY(!child(&dialog, QStringLiteral("widget_extraOptionWrapper_"))->isVisibleTo(&dialog));
        dialog.setExtraOption(RipExtraOption{2, true});
        QVERIFY(child(&dialog, QStringLiteral("widget_extraOptionWrapper_"))->isVisibleTo(&dialog));
        QCOMPARE(dialog.extraOption().printMode, 2);
        dialog.show();
        QTest::mouseClick(child<QRadioButton>(&dialog, QStringLiteral("radioButton_manualPrintAfterRIP_")),
                          Qt::LeftButton);
        QCOMPARE(dialog.extraOption().printMode, 0);
        QCOMPARE(dialog.extraOption().horizontalMirror, true);
    }

    // ---- ICC profiles ----------------------------------------------------

    void selectIcc_copiesTheProfileAndShowsIt()
    {
        QTemporaryDir source;
        QVERIFY(source.isValid());
        const QString chosen = source.filePath(QStringLiteral("Vivid.icc"));
        const QByteArray srgb =
            IccTestProfiles::readAll(IccTestProfiles::ghostscript(QStringLiteral("srgb.icc")));
        QVERIFY(writeFile(chosen, srgb));
        PrinterDriverConfig::instance()->setIccOpenRootDir(source.path());
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.show();
        FileDialogSeen seen;
        BoxSeen unexpected;
        FileThenBox user(&dialog, chosen, QString(), &unexpected, &seen);
        QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_selectICC_RGB_")), Qt::LeftButton);
        QVERIFY(user.fileChosen());
        QVERIFY2(!user.boxAnswered(), qPrintable(unexpected.text));
        QCOMPARE(seen.caption, QStringLiteral("请选择icc (RGB)"));
        QCOMPARE(seen.directory, QDir(source.path()).absolutePath());
        QCOMPARE(seen.filters, QStringList{QStringLiteral("icc (*.icc *.icm)")});
        const QString target = PrinterDriverConfig::instance()->iccRgbDir() + QStringLiteral("Vivid.icc");
        QCOMPARE(TestAppDir::readFile(QDir(TestAppDir::path()).relativeFilePath(target)), srgb);
        auto *edit = child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_RGB_"));
        QCOMPARE(edit->text(), QStringLiteral("Vivid.icc"));
        QCOMPARE(storedProfileName(&dialog, edit), QStringLiteral("Vivid.icc"));
        // The path first, then what the profile is.
        const QStringList toolTip = edit->toolTip().split(QLatin1Char('\n'));
        QCOMPARE(QDir::cleanPath(toolTip.value(0)), QDir::cleanPath(target));
        QCOMPARE(toolTip.mid(1), (QStringList{QStringLiteral("描述：Artifex Software sRGB ICC Profile"),
                                              QStringLiteral("类别：显示器（mntr）"),
                                              QStringLiteral("色彩空间：RGB，连接空间：XYZ"),
                                              QStringLiteral("ICC 版本：2.1")}));
        QVERIFY(edit->actions().isEmpty());
        fake_->calls.clear();
        clickOk(&dialog);
        QVERIFY(fake_->calls.contains(QStringLiteral("SetIccSettingInfo(Vivid.icc,Coated.icc,UV-PP.icm,2)")));
        QFile::remove(target);
    }

    void selectIcc_fileDialogCancelled_changesNothing()
    {
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.show();
        const QString before = PrinterDriverConfig::instance()->iccOpenRootDir();
        FileDialogSeen seen;
        auto answer = answerFileDialog(&dialog, QString(), &seen);
        QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_selectICC_Curve_")),
                          Qt::LeftButton);
        QVERIFY(answer->answered());
        QCOMPARE(seen.caption, QStringLiteral("请选择设备曲线"));
        QCOMPARE(child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_Curve_"))->text(),
                 QStringLiteral("UV-PP.icm"));
        QCOMPARE(PrinterDriverConfig::instance()->iccOpenRootDir(), before);
    }

    void selectIcc_alreadyInTheTargetFolder_changesNothingOnDisk()
    {
        const QString dir = PrinterDriverConfig::instance()->iccCmykDir();
        QVERIFY(QDir().mkpath(dir));
        const QString inPlace = dir + QStringLiteral("Coated.icc");
        QVERIFY(writeFile(inPlace, IccTestProfiles::readAll(
                                       IccTestProfiles::ghostscript(QStringLiteral("default_cmyk.icc")))));
        PrinterDriverConfig::instance()->setIccOpenRootDir(dir);
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.show();
        LogCapture log;
        BoxSeen unexpected;
        FileThenBox user(&dialog, inPlace, QString(), &unexpected, nullptr);
        QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_selectICC_CMYK_")), Qt::LeftButton);
        QVERIFY(user.fileChosen());
        QVERIFY2(!user.boxAnswered(), qPrintable(unexpected.text));
        QCOMPARE(QDir(dir).entryList(QDir::Files), QStringList{QStringLiteral("Coated.icc")});
        QCOMPARE(child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_CMYK_"))->text(),
                 QStringLiteral("Coated.icc"));
        QVERIFY(messages(log, QtDebugMsg).contains(QStringLiteral("就在该目录下")));
        QDir(dir).removeRecursively();
    }

    void selectIcc_nameTaken_overwritesOrRenamesAsAnswered_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("overwritten");
        QTest::newRow("确定 overwrites") << QStringLiteral("确定") << QStringLiteral("x.icc") << true;
        QTest::newRow("取消 renames") << QStringLiteral("取消") << QStringLiteral("x_3.icc") << false;
        QTest::newRow("closed box renames") << QString() << QStringLiteral("x_3.icc") << false;
    }

    void selectIcc_nameTaken_overwritesOrRenamesAsAnswered()
    {
        QFETCH(QString, answer);
        QFETCH(QString, shown);
        QFETCH(bool, overwritten);
        const QByteArray chosenBytes =
            IccTestProfiles::readAll(IccTestProfiles::ghostscript(QStringLiteral("a98.icc")));
        const QString dir = PrinterDriverConfig::instance()->iccRgbDir();
        QDir(dir).removeRecursively();
        QVERIFY(QDir().mkpath(dir));
        for (const char *name : {"x.icc", "x_1.icc", "x_2.icc"})
            QVERIFY(writeFile(dir + QLatin1String(name), "old"));
        QTemporaryDir source;
        const QString chosen = source.filePath(QStringLiteral("x.icc"));
        QVERIFY(writeFile(chosen, chosenBytes));
        PrinterDriverConfig::instance()->setIccOpenRootDir(source.path());

        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.show();
        BoxSeen seen;
        FileThenBox user(&dialog, chosen, answer, &seen, nullptr);
        QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_selectICC_RGB_")), Qt::LeftButton);
        QVERIFY(user.fileChosen());
        QVERIFY(user.boxAnswered());
        QCOMPARE(seen.title, QStringLiteral("温馨提示"));
        QCOMPARE(seen.text,
                 QStringLiteral("\"x.icc\"已经存在.是否覆盖?\n(选择取消,将会将icc文件名改为\"x_3.icc\")"));
        QCOMPARE(seen.buttons, (QStringList{QStringLiteral("取消"), QStringLiteral("确定")}));
        QCOMPARE(child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_RGB_"))->text(), shown);
        QFile x(dir + QStringLiteral("x.icc"));
        QVERIFY(x.open(QIODevice::ReadOnly));
        QCOMPARE(x.readAll(), overwritten ? chosenBytes : QByteArray("old"));
        QCOMPARE(QFileInfo::exists(dir + QStringLiteral("x_3.icc")), shown == QStringLiteral("x_3.icc"));
        QDir(dir).removeRecursively();
    }

    void selectIcc_copyFails_showsTheMessageAndClearsTheField()
    {
        const QString dir = PrinterDriverConfig::instance()->iccOutputDir();
        QDir(dir).removeRecursively();
        // A file where the folder should be: nothing can be copied into it.
        QVERIFY(QDir().mkpath(QFileInfo(QDir::cleanPath(dir)).absolutePath()));
        QVERIFY(writeFile(QDir::cleanPath(dir), QByteArray()));
        QTemporaryDir source;
        const QString chosen = source.filePath(QStringLiteral("curve.icm"));
        QVERIFY(writeFile(
            chosen, IccTestProfiles::readAll(IccTestProfiles::ghostscript(QStringLiteral("ps_cmyk.icc")))));
        PrinterDriverConfig::instance()->setIccOpenRootDir(source.path());

        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.show();
        BoxSeen seen;
        FileThenBox user(&dialog, chosen, QStringLiteral("确定"), &seen, nullptr);
        QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_selectICC_Curve_")),
                          Qt::LeftButton);
        QVERIFY(user.boxAnswered());
        QCOMPARE(seen.text, QStringLiteral("拷贝icc失败"));
        QCOMPARE(child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_Curve_"))->text(), QString());
        QFile::remove(QDir::cleanPath(dir));
    }

    // A file that is not a profile, or a profile that does not fit the row,
    // is refused before anything is copied: one box, the row unchanged.
    void selectIcc_unfitFile_isRefusedWithOneBoxAndNothingCopied_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("lineEdit");
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        const auto profile = [](const char *name) {
            return IccTestProfiles::readAll(IccTestProfiles::ghostscript(QString::fromLatin1(name)));
        };
        // A picture named like a profile. (The JPEG case is the check's own
        // test: Qt's JPEG writer is a plugin whose loading, late in this
        // long run, trips LeakSanitizer's scan of thread storage at exit.)
        QByteArray png;
        {
            // Varied enough that the file is longer than a profile's header.
            QImage image(64, 64, QImage::Format_RGB32);
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x)
                    image.setPixel(x, y, qRgb(x * 4, y * 4, (x * y) % 256));
            }
            QBuffer buffer(&png);
            buffer.open(QIODevice::WriteOnly);
            image.save(&buffer, "PNG");
        }
        QVERIFY(png.startsWith("\x89PNG"));
        QVERIFY(png.size() > 132);
        QTest::newRow("picture named .icc")
            << QStringLiteral("btn_selectICC_RGB_") << QStringLiteral("lineEdit_ICC_RGB_")
            << QStringLiteral("photo.icc") << png
            << QStringLiteral(
                   "\"photo.icc\"：这不是可用的 ICC 配置文件：文件头里没有 ICC 配置文件的标记 \"acsp\"");
        QTest::newRow("Lab profile as RGB")
            << QStringLiteral("btn_selectICC_RGB_") << QStringLiteral("lineEdit_ICC_RGB_")
            << QStringLiteral("lab.icc") << profile("lab.icc")
            << QStringLiteral("\"lab.icc\"：这是一个 Lab 色彩空间的配置文件，此处需要 RGB 配置文件");
        QTest::newRow("RGB profile as CMYK")
            << QStringLiteral("btn_selectICC_CMYK_") << QStringLiteral("lineEdit_ICC_CMYK_")
            << QStringLiteral("srgb.icc") << profile("srgb.icc")
            << QStringLiteral("\"srgb.icc\"：这是一个 RGB 色彩空间的配置文件，此处需要 CMYK 配置文件");
        QTest::newRow("display profile as the equipment")
            << QStringLiteral("btn_selectICC_Curve_") << QStringLiteral("lineEdit_ICC_Curve_")
            << QStringLiteral("srgb.icm") << profile("srgb.icc")
            << QStringLiteral("\"srgb.icm\"：这是一个显示器配置文件，此处需要输出设备配置文件或设备链接");
        QTest::newRow("empty file as the equipment")
            << QStringLiteral("btn_selectICC_Curve_") << QStringLiteral("lineEdit_ICC_Curve_")
            << QStringLiteral("empty.icc") << QByteArray()
            << QStringLiteral("\"empty.icc\"：这不是可用的 ICC 配置文件：文件是空的");
    }

    void selectIcc_unfitFile_isRefusedWithOneBoxAndNothingCopied()
    {
        QFETCH(QString, button);
        QFETCH(QString, lineEdit);
        QFETCH(QString, fileName);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QTemporaryDir source;
        const QString chosen = source.filePath(fileName);
        QVERIFY(writeFile(chosen, bytes));
        PrinterDriverConfig::instance()->setIccOpenRootDir(source.path());
        const QString iccRoot = PrinterDriverConfig::instance()->dtpBinDir() + QStringLiteral("ICC Profile");
        QDir(iccRoot).removeRecursively();

        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.show();
        auto *edit = child<QLineEdit>(&dialog, lineEdit);
        const QString textBefore = edit->text();
        const QString toolTipBefore = edit->toolTip();
        LogCapture log;
        BoxSeen seen;
        FileThenBox user(&dialog, chosen, QStringLiteral("确定"), &seen, nullptr);
        QTest::mouseClick(child<QPushButton>(&dialog, button), Qt::LeftButton);
        QVERIFY(user.fileChosen());
        QVERIFY(user.boxAnswered());
        QCOMPARE(seen.title, QStringLiteral("温馨提示"));
        QCOMPARE(seen.text, text);
        QCOMPARE(seen.buttons, QStringList{QStringLiteral("确定")});
        QCOMPARE(edit->text(), textBefore);
        QCOMPARE(storedProfileName(&dialog, edit), textBefore);
        QCOMPARE(edit->toolTip(), toolTipBefore);
        // Nothing was copied anywhere under the ICC folders.
        QDirIterator copied(iccRoot, QDir::Files, QDirIterator::Subdirectories);
        QVERIFY2(!copied.hasNext(), qPrintable(copied.hasNext() ? copied.next() : QString()));
        QVERIFY(messages(log, QtWarningMsg)
                    .join(QLatin1Char('\n'))
                    .contains(QStringLiteral("icc profile refused:")));
        fake_->calls.clear();
        clickOk(&dialog);
        QVERIFY(fake_->calls.contains(QStringLiteral("SetIccSettingInfo(sRGB.icc,Coated.icc,UV-PP.icm,2)")));
    }

    void selectIcc_deviceLink_isTakenAsTheEquipment()
    {
        QTemporaryDir source;
        const QString chosen = source.filePath(QStringLiteral("rgb-to-cmyk.icc"));
        QVERIFY(QFile::copy(IccTestProfiles::deviceLink(QStringLiteral("rgb-to-cmyk.icc")), chosen));
        PrinterDriverConfig::instance()->setIccOpenRootDir(source.path());
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.show();
        BoxSeen unexpected;
        FileThenBox user(&dialog, chosen, QString(), &unexpected, nullptr);
        QTest::mouseClick(child<QPushButton>(&dialog, QStringLiteral("btn_selectICC_Curve_")),
                          Qt::LeftButton);
        QVERIFY(user.fileChosen());
        QVERIFY2(!user.boxAnswered(), qPrintable(unexpected.text));
        auto *edit = child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_Curve_"));
        QCOMPARE(edit->text(), QStringLiteral("rgb-to-cmyk.icc"));
        QVERIFY(edit->toolTip().contains(
            QStringLiteral("\n类别：设备链接（link）\n色彩空间：RGB，连接空间：CMYK\n")));
        const QString target =
            PrinterDriverConfig::instance()->iccOutputDir() + QStringLiteral("rgb-to-cmyk.icc");
        QVERIFY(QFileInfo::exists(target));
        QFile::remove(target);
    }

    // The profiles the driver names are looked for in their folders when
    // the dialog opens and after every combined-type change: one that is
    // missing or unusable marks its row, without a box.
    void open_storedProfileMissingOrUnusable_marksTheRow()
    {
        PrinterDriverConfig &config = *PrinterDriverConfig::instance();
        QDir(config.dtpBinDir() + QStringLiteral("ICC Profile")).removeRecursively();
        QVERIFY(TestAppDir::writeFile(
            QDir(TestAppDir::path()).relativeFilePath(config.iccRgbDir() + QStringLiteral("sRGB.icc")),
            IccTestProfiles::readAll(IccTestProfiles::ghostscript(QStringLiteral("srgb.icc")))));
        // An RGB profile where the printer's profile should be.
        QVERIFY(TestAppDir::writeFile(
            QDir(TestAppDir::path()).relativeFilePath(config.iccOutputDir() + QStringLiteral("UV-PP.icm")),
            IccTestProfiles::readAll(IccTestProfiles::ghostscript(QStringLiteral("a98.icc")))));
        PrinterDriverPropertyDlg dialog(driverId, nullptr);
        dialog.show();
        auto *rgb = child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_RGB_"));
        auto *cmyk = child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_CMYK_"));
        auto *curve = child<QLineEdit>(&dialog, QStringLiteral("lineEdit_ICC_Curve_"));
        QVERIFY(QApplication::activeModalWidget() == nullptr);

        QVERIFY(rgb->actions().isEmpty());
        QCOMPARE(rgb->toolTip(),
                 QStringLiteral("sRGB.icc\n描述：Artifex Software sRGB ICC Profile\n类别：显示器（mntr）\n"
                                "色彩空间：RGB，连接空间：XYZ\nICC 版本：2.1"));
        QCOMPARE(cmyk->actions().size(), 1);
        const QString missing = QDir::toNativeSeparators(config.iccCmykDir() + QStringLiteral("Coated.icc"));
        QCOMPARE(cmyk->actions().first()->toolTip(),
                 QStringLiteral("配置文件文件夹里没有这个文件：\n") + missing);
        QCOMPARE(cmyk->actions().first()->text(), QStringLiteral("配置文件有问题"));
        QVERIFY(!cmyk->actions().first()->icon().isNull());
        // A screen reader names the mark by its text.
        QToolButton *markButton = nullptr;
        for (QToolButton *button : cmyk->findChildren<QToolButton *>()) {
            if (button->defaultAction() == cmyk->actions().first())
                markButton = button;
        }
        QVERIFY(markButton);
        QAccessibleInterface *markAccessible = QAccessible::queryAccessibleInterface(markButton);
        QVERIFY(markAccessible);
        QCOMPARE(markAccessible->text(QAccessible::Name), QStringLiteral("配置文件有问题"));
        QCOMPARE(cmyk->toolTip(), QStringLiteral("Coated.icc"));
        QCOMPARE(cmyk->text(), QStringLiteral("Coated.icc"));
        QCOMPARE(curve->actions().size(), 1);
        QCOMPARE(curve->actions().first()->toolTip(),
                 QStringLiteral("这是一个显示器配置文件，此处需要输出设备配置文件或设备链接"));
        QCOMPARE(curve->accessibleDescription(), curve->actions().first()->toolTip());

        // The RGB profile is deleted behind the dialog's back: the next
        // combined type shows its row marked, the CMYK row still marked.
        QVERIFY(QFile::remove(config.iccRgbDir() + QStringLiteral("sRGB.icc")));
        auto *combined = child<QComboBox>(&dialog, QStringLiteral("comboBox_combinedType_"));
        QVERIFY(combined->count() > 1);
        combined->setCurrentIndex((combined->currentIndex() + 1) % combined->count());
        QCOMPARE(rgb->actions().size(), 1);
        QVERIFY(
            rgb->actions().first()->toolTip().startsWith(QStringLiteral("配置文件文件夹里没有这个文件：\n")));
        QCOMPARE(cmyk->actions().size(), 1);
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        QDir(config.dtpBinDir() + QStringLiteral("ICC Profile")).removeRecursively();
    }

    void iccTargetDirectory_endsInOneSeparator()
    {
        // An absolute folder keeps its path and ends in one separator; a
        // path with a file suffix stands for the folder that holds it.
        const QString root = QDir::rootPath(); // "/", or a drive such as "C:/"
        const auto target = [](const QString &dir) { return IccProfileFiles::targetDirectory(dir); };
        QCOMPARE(target(root + QStringLiteral("tmp/icc")), root + QStringLiteral("tmp/icc/"));
        QCOMPARE(target(root + QStringLiteral("tmp/icc/")), root + QStringLiteral("tmp/icc/"));
        QCOMPARE(target(root + QStringLiteral("tmp/icc/profile.icc")), root + QStringLiteral("tmp/icc/"));
#ifdef Q_OS_WIN
        // A backslash is a separator: it ends the folder like "/", and the
        // path comes back with "/" throughout.
        QCOMPARE(target(root + QStringLiteral("tmp\\icc\\")), root + QStringLiteral("tmp/icc/"));
        QCOMPARE(target(root + QStringLiteral("tmp\\icc\\profile.icc")), root + QStringLiteral("tmp/icc/"));
        // "/tmp/icc" has no drive: it is the folder on the current drive.
        const QString current = QDir::currentPath();
        QVERIFY2(current.size() > 2 && current.at(1) == QLatin1Char(':'), qPrintable(current));
        QCOMPARE(target(QStringLiteral("/tmp/icc")), current.left(2) + QStringLiteral("/tmp/icc/"));
#else
        // A backslash is a character of the name here, yet a folder path
        // that ends in one gets no "/" after it.
        QCOMPARE(target(root + QStringLiteral("tmp/icc\\")), root + QStringLiteral("tmp/icc\\"));
#endif
    }

    void iccFreeName_skipsTakenNamesAndUsesTheFirstDot()
    {
        QTemporaryDir dir;
        const QString base = dir.path() + QLatin1Char('/');
        for (const char *name : {"a_1.icc", "a_2.icc"})
            QVERIFY(writeFile(base + QLatin1String(name), QByteArray()));
        QCOMPARE(IccProfileFiles::freeAlternativeName(base, QFileInfo(QStringLiteral("/elsewhere/a.b.icc"))),
                 base + QStringLiteral("a_3.icc"));
        QCOMPARE(IccProfileFiles::freeAlternativeName(base, QFileInfo(QStringLiteral("/elsewhere/z.icm"))),
                 base + QStringLiteral("z_1.icm"));
    }
};

QTEST_MAIN(PrinterDriverPropertyDlgTest)
#include "tst_printerdriverpropertydlg.moc"
