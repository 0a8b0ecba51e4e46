#include "UI/PrinterDriverPropertyDlg.h"
#include "ui_PrinterDriverPropertyDlg.h"

#include "Common/Logging.h"
#include "Config/PrinterDriverConfig.h"
#include "Config/UIModuleConfig.h"
#include "Driver/DriverSession.h"
#include "Driver/InkNames.h"
#include "FramelessWidget/Common/CommonFramelessMessageBox.h"
#include "Icc/IccProfileCache.h"
#include "UI/CommonPropertyRows.h"
#include "UI/DialogForm.h"
#include "UI/IccProfileFiles.h"
#include "UI/IccProfileRow.h"
#include "UI/InkChannelRows.h"
#include "UI/PrinterDriverManager.h"
#include "UI/SubWidget/ExtraOptionWidget.h"
#include "UI/SubWidget/InkOrderWidget.h"
#include "UI/TabOrder.h"
#include "UI/WheelGuard.h"

#include <IUIPrintParamsHandler.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSpacerItem>
#include <QStandardItem>
#include <QStandardItemModel>
#include <QStyle>

#include <algorithm>

namespace {

// Item data roles of the combined-type combo box.
constexpr int DpiIndexRole = Qt::UserRole + 1;
constexpr int PaperIndexRole = Qt::UserRole + 2;
constexpr int InkIndexRole = Qt::UserRole + 3;

// Height up to which the other-property list grows before it scrolls.
constexpr int MaxCommonListHeight = 320;

// The least room between a button's text and each of its edges: a host's
// look may give buttons no padding of their own.
constexpr int ButtonTextRoom = 6;

// A session on the manager's handler; none while the manager holds no
// handler.
std::unique_ptr<DriverSession> makeSession()
{
    IUIPrintParamsHandler *handler = PrinterDriverManager::instance()->getHandler();
    return handler ? std::make_unique<DriverSession>(handler, lcDialog) : nullptr;
}

} // namespace

PrinterDriverPropertyDlg::PrinterDriverPropertyDlg(const QString &driverId, QWidget *parent)
    : CommonFramelessDialog(parent)
    , ui_(setupDialogForm<Ui::PrinterDriverPropertyDlg>(*this))
    , driverId_(driverId)
    , session_(makeSession())
    , wheelGuard_(new WheelGuard(this))
    , iccProfiles_(std::make_unique<IccProfileCache>(UIModuleConfig::instance()->language()))
{
    iccRgb_ = new IccProfileRow(ui_->lineEdit_ICC_RGB_, IccProfileSlot::Rgb, iccProfiles_.get(), this);
    iccCmyk_ = new IccProfileRow(ui_->lineEdit_ICC_CMYK_, IccProfileSlot::Cmyk, iccProfiles_.get(), this);
    iccCurve_ =
        new IccProfileRow(ui_->lineEdit_ICC_Curve_, IccProfileSlot::Equipment, iccProfiles_.get(), this);
    iccRgb_->setObjectName(QStringLiteral("iccProfileRow_RGB"));
    iccCmyk_->setObjectName(QStringLiteral("iccProfileRow_CMYK"));
    iccCurve_->setObjectName(QStringLiteral("iccProfileRow_Curve"));
    commonProperties_ = new CommonPropertyRows(ui_->verLayout_Common_, this);
    channelRows_ = new InkChannelRows(ui_->gridLayout_inkConcentration_, ui_->gridLayout_inkLimit_, this);

    for (QPushButton *button : {ui_->btn_selectICC_CMYK_, ui_->btn_selectICC_RGB_, ui_->btn_selectICC_Curve_})
        button->setProperty("defaultStyle_small", true);
    for (QPushButton *button : {ui_->btn_ok_, ui_->btn_cancel_})
        button->setProperty("defaultStyle_normal", true);
    for (QWidget *detail : {ui_->widget_iccDetail_, ui_->widget_inkDetail_, ui_->widget_otherPropertyDetail_,
                            ui_->widget_extraOptionDetail_})
        detail->setProperty("detailWidget", true);
    for (QPushButton *button : {ui_->btn_showIccDetail_, ui_->btn_showInkDetail_,
                                ui_->btn_showOtherPropertyDetail_, ui_->btn_showExtraOptionDetail_})
        button->setProperty("showDetailWidget", true);

    const PrinterDriverManager::DriverInfoPtr info =
        PrinterDriverManager::instance()->findDriverInfo(driverId_);
    setWindowTitle(tr("打印机驱动 - ") + (info ? info->showName : QString()));

    ui_->checkBox_advanced_->setChecked(false);
    ui_->checkBox_advanced_->hide();
    ui_->inkOrderWidget_->setOffBackgroundColor(QColor(153, 153, 153));
    ui_->inkOrderWidget_->setOffTextColor(QColor(205, 205, 205));
    ui_->inkOrderWidget_->setInkSwitchEnabled(true);
    // The extra options belong to a job: the section shows once a job's
    // option is given.
    ui_->widget_extraOptionWrapper_->hide();

    loaded_ = read();
    if (!loaded_)
        BEX_CRITICAL(lcDialog) << "init failed";

    setupConnections();
    setupDetailSections();
    restoreGeometryFromSettings();
    wheelGuard_->guardChildren(ui_->scrollAreaWidgetContents_main_);
    setupKeyboardAndNames();
}

// Enter confirms, Tab follows the layout, and every control has a name that
// a screen reader can speak (a label beside a control names it as its buddy).
void PrinterDriverPropertyDlg::setupKeyboardAndNames()
{
    ui_->btn_ok_->setDefault(true);
    ui_->label_dpi_->setBuddy(ui_->comboBox_dpi_);
    ui_->label_paper_->setBuddy(ui_->comboBox_paper_);
    ui_->label_ink_->setBuddy(ui_->comboBox_ink_);
    ui_->label_combinedType_->setBuddy(ui_->comboBox_combinedType_);
    ui_->label_iccEquipment_->setBuddy(ui_->lineEdit_ICC_Curve_);
    ui_->label_intent_->setBuddy(ui_->comboBox_intent_);
    ui_->lineEdit_ICC_RGB_->setAccessibleName(tr("RGB 配置文件"));
    ui_->lineEdit_ICC_CMYK_->setAccessibleName(tr("CMYK 配置文件"));
    // A combo box's list is a window of its own: it carries the name of
    // the box (its label's text) for a screen reader that reads the list.
    for (QComboBox *combo : findChildren<QComboBox *>()) {
        if (QAccessibleInterface *box = QAccessible::queryAccessibleInterface(combo))
            combo->view()->setAccessibleName(box->text(QAccessible::Name));
    }
    TabOrder::followLayout(this);
}

PrinterDriverPropertyDlg::~PrinterDriverPropertyDlg() = default;

void PrinterDriverPropertyDlg::setExtraOption(const RipExtraOption &option)
{
    ui_->extraOptionWidget_->setExtraOption(option);
    ui_->widget_extraOptionWrapper_->show();
}

const RipExtraOption &PrinterDriverPropertyDlg::extraOption() const
{
    return ui_->extraOptionWidget_->extraOption();
}

void PrinterDriverPropertyDlg::setupConnections()
{
    connect(ui_->checkBox_advanced_, &QCheckBox::stateChanged, this,
            &PrinterDriverPropertyDlg::on_advancedStateChanged);
    connect(ui_->comboBox_dpi_, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &PrinterDriverPropertyDlg::on_dpiChanged);
    connect(ui_->comboBox_paper_, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &PrinterDriverPropertyDlg::on_paperChanged);
    connect(ui_->comboBox_ink_, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &PrinterDriverPropertyDlg::on_inkChanged);
    connect(ui_->comboBox_combinedType_, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &PrinterDriverPropertyDlg::on_combinedTypeChanged);
    connect(ui_->btn_selectICC_RGB_, &QPushButton::clicked, this,
            &PrinterDriverPropertyDlg::on_selectICC_RGB);
    connect(ui_->btn_selectICC_CMYK_, &QPushButton::clicked, this,
            &PrinterDriverPropertyDlg::on_selectICC_CMYK);
    connect(ui_->btn_selectICC_Curve_, &QPushButton::clicked, this,
            &PrinterDriverPropertyDlg::on_selectICC_Curve);
    connect(ui_->btn_ok_, &QPushButton::clicked, this, &PrinterDriverPropertyDlg::on_ok);
    connect(ui_->btn_cancel_, &QPushButton::clicked, this, &PrinterDriverPropertyDlg::on_cancel);
    connect(ui_->checkBox_notPromptDriverPropertyDlg_, &QCheckBox::stateChanged, this, [](int state) {
        PrinterDriverConfig::instance()->setPromptDriverPropertyDlg(state != Qt::Checked);
    });
}

// Binds each show-detail button to its detail widget and to the setting that
// remembers it, then shows each section as it was left last time.
void PrinterDriverPropertyDlg::setupDetailSections()
{
    const struct
    {
        QPushButton *button;
        QWidget *detail;
        bool (PrinterDriverConfig::*shown)() const;
        void (PrinterDriverConfig::*setShown)(bool);
    } sections[] = {
        {ui_->btn_showIccDetail_, ui_->widget_iccDetail_, &PrinterDriverConfig::bShowIccDetail,
         &PrinterDriverConfig::setShowIccDetail},
        {ui_->btn_showInkDetail_, ui_->widget_inkDetail_, &PrinterDriverConfig::bShowInkDetail,
         &PrinterDriverConfig::setShowInkDetail},
        {ui_->btn_showOtherPropertyDetail_, ui_->widget_otherPropertyDetail_,
         &PrinterDriverConfig::bShowOtherPropertyDetail, &PrinterDriverConfig::setShowOtherPropertyDetail},
        {ui_->btn_showExtraOptionDetail_, ui_->widget_extraOptionDetail_,
         &PrinterDriverConfig::bShowExtraOptionDetail, &PrinterDriverConfig::setShowExtraOptionDetail},
    };
    for (const auto &section : sections) {
        QWidget *detail = section.detail;
        const auto setShown = section.setShown;
        connect(section.button, &QPushButton::toggled, detail, [this, detail, setShown](bool shown) {
            detail->setVisible(shown);
            (PrinterDriverConfig::instance().get()->*setShown)(shown);
            if (detail == ui_->widget_otherPropertyDetail_) {
                // While the other properties are hidden the spacer takes the
                // room their list would use.
                const QSizePolicy::Policy policy = shown ? QSizePolicy::Preferred : QSizePolicy::Expanding;
                ui_->verticalSpacer_otherProperty_->changeSize(1, 1, policy, policy);
                ui_->verLayout_otherPropertyWapper_->invalidate();
            }
        });
    }

    const std::shared_ptr<PrinterDriverConfig> config = PrinterDriverConfig::instance();
    for (const auto &section : sections) {
        const bool shown = (config.get()->*section.shown)();
        // Emitted also when the button already stands so, so that the detail
        // widget and the spacer always follow the setting.
        if (section.button->isChecked() == shown)
            emit section.button->toggled(shown);
        else
            section.button->setChecked(shown);
    }
    ui_->checkBox_notPromptDriverPropertyDlg_->setChecked(!config->bPromptDriverPropertyDlg());
}

// First opening: a size that fits the screen. Later openings: where the
// operator left the dialog, kept on the screen.
void PrinterDriverPropertyDlg::restoreGeometryFromSettings()
{
    const QRect available = screen()->availableGeometry();
    const std::shared_ptr<PrinterDriverConfig> config = PrinterDriverConfig::instance();
    const QSize savedSize = config->windowSize();
    if (savedSize.isEmpty()) {
        resize(std::min(available.width() - 100, 720), std::min(available.height() - 80, 750));
        return;
    }
    resize(savedSize.boundedTo(available.size()));
    const QPoint savedPos = config->windowPos();
    const int x = std::min(savedPos.x(), available.width() - 200);
    const int y = std::min(savedPos.y(), available.height() - 200);
    move(std::max(x, 0), std::max(y, 0));
}

void PrinterDriverPropertyDlg::saveWindowRecord()
{
    PrinterDriverConfig::instance()->setWindowRecord(pos(), size());
}

void PrinterDriverPropertyDlg::closeEvent(QCloseEvent *event)
{
    saveWindowRecord();
    CommonFramelessDialog::closeEvent(event);
}

void PrinterDriverPropertyDlg::done(int result)
{
    // OK, Cancel and Escape end the dialog without a close event; the window
    // record is kept for them as well.
    if (isVisible())
        saveWindowRecord();
    CommonFramelessDialog::done(result);
}

// ---------------------------------------------------------------------------
// Reading

bool PrinterDriverPropertyDlg::read()
{
    if (!session_)
        return false;
    if (driverId_.isEmpty()) {
        BEX_CRITICAL(lcDialog) << "driverId_ is empty";
        return false;
    }
    const bool english = UIModuleConfig::instance()->language() == QLocale::English;
    if (!session_->select(driverId_, DriverSession::languageFlag(english))) {
        BEX_CRITICAL(lcDialog) << "SelectPrinterDriverPrs:" << driverId_ << "failed!";
        return false;
    }
    BEX_DEBUG(lcDialog) << "curDriverName:" << session_->driverName();

    choices_ = session_->readChoices();
    commonProperties_->show(choices_.common);
    adjustCommonPropertyUI();
    showCombination(session_->readCombination());
    return true;
}

void PrinterDriverPropertyDlg::showEvent(QShowEvent *event)
{
    // The other-property list shows whole up to a dozen rows or so and
    // scrolls beyond; its scroll area alone would offer the height of its
    // contents before they were filled. Measured here, where the widgets are
    // polished (style and font metrics known) for showing anyway, so that
    // opening the dialog stays quick.
    const int listHeight = ui_->scrollAreaWidgetContents_common_->sizeHint().height();
    ui_->scrollArea_common_->setMinimumHeight(std::min(listHeight, MaxCommonListHeight));
    settleLayout();
    CommonFramelessDialog::showEvent(event);
}

// Lays the content out now, from the innermost layouts outwards, and fits
// both scroll areas to it. A changed size hint only posts a layout request,
// and a window system may paint the new window before that request is
// delivered (Windows does, inside a host's modal loop): the window would
// first show the layout made while the dialog was built, before the list
// had its height, with scroll bars and the spare height in the wrong place.
void PrinterDriverPropertyDlg::settleLayout()
{
    QList<QWidget *> widgets = ui_->scrollAreaWidgetContents_main_->findChildren<QWidget *>();
    // Each widget is listed before its descendants: backwards, every inner
    // layout is settled before the one that sizes it.
    std::reverse(widgets.begin(), widgets.end());
    widgets << ui_->scrollAreaWidgetContents_main_;
    for (QWidget *widget : qAsConst(widgets)) {
        if (QLayout *layout = widget->layout()) {
            layout->invalidate();
            layout->activate();
        }
    }

    // Measured with the font the style gives each button.
    for (QPushButton *button : {ui_->btn_selectICC_RGB_, ui_->btn_selectICC_CMYK_, ui_->btn_selectICC_Curve_,
                                ui_->btn_ok_, ui_->btn_cancel_})
        button->setMinimumWidth(button->fontMetrics().horizontalAdvance(button->text()) + 2 * ButtonTextRoom);

    // The main area never scrolls sideways: it is at least as wide as its
    // content beside a vertical scroll bar, so the content fits whether
    // that bar shows or not.
    QScrollArea *main = ui_->scrollArea_main_;
    const int frame = 2 * main->frameWidth();
    const int bar =
        main->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, main->verticalScrollBar());
    main->setMinimumWidth(ui_->scrollAreaWidgetContents_main_->minimumSizeHint().width() + bar + frame);

    // Setting the policies again places the scroll bars at once, as the
    // ranges now ask, instead of on the next round of the event loop.
    for (QScrollArea *area : {main, ui_->scrollArea_common_}) {
        area->setWidgetResizable(true);
        area->setVerticalScrollBarPolicy(area->verticalScrollBarPolicy());
        area->setHorizontalScrollBarPolicy(area->horizontalScrollBarPolicy());
    }
    ui_->verLayout_main_->activate();
}

void PrinterDriverPropertyDlg::on_advancedStateChanged(int state)
{
    advancedMode_ = state == Qt::Checked;
    adjustCommonPropertyUI();
}

void PrinterDriverPropertyDlg::adjustCommonPropertyUI()
{
    ui_->widget_advanced_->setVisible(advancedMode_);
    ui_->widget_simple_->setVisible(!advancedMode_);
    if (!advancedMode_) {
        fillCombinedTypes();
        return;
    }
    const struct
    {
        QComboBox *combo;
        const EnumChoice &choice;
    } combos[] = {{ui_->comboBox_dpi_, choices_.dpi},
                  {ui_->comboBox_paper_, choices_.paper},
                  {ui_->comboBox_ink_, choices_.ink}};
    for (const auto &entry : combos) {
        const QSignalBlocker blocker(entry.combo);
        entry.combo->clear();
        entry.combo->addItems(entry.choice.values);
        entry.combo->setCurrentIndex(entry.choice.index);
    }
}

// Lists the combinations of resolution, paper and ink that have colour
// calibration; the session leaves the handler on the one shown.
void PrinterDriverPropertyDlg::fillCombinedTypes()
{
    QComboBox *combo = ui_->comboBox_combinedType_;
    const QSignalBlocker blocker(combo);
    combo->clear();
    const QVector<Combination> combinations = session_->calibratedCombinations(choices_);
    if (combinations.isEmpty())
        return;

    static const QString separator = QStringLiteral("    \t");
    QList<QStandardItem *> rows;
    const Combination stored = choices_.combination();
    int selected = 0;
    for (const Combination &combination : combinations) {
        const QString label = choices_.dpi.values.at(combination.dpi) + separator +
                              choices_.paper.values.at(combination.paper) + separator +
                              choices_.ink.values.at(combination.ink);
        auto *row = new QStandardItem(label);
        row->setToolTip(label);
        row->setData(combination.dpi, DpiIndexRole);
        row->setData(combination.paper, PaperIndexRole);
        row->setData(combination.ink, InkIndexRole);
        if (combination == stored)
            selected = rows.size();
        rows << row;
    }
    if (auto *model = qobject_cast<QStandardItemModel *>(combo->model()))
        model->invisibleRootItem()->appendRows(rows);
    const Combination shown = combinations.at(selected);
    choices_.dpi.index = shown.dpi;
    choices_.paper.index = shown.paper;
    choices_.ink.index = shown.ink;
    combo->setCurrentIndex(selected);
    combo->setToolTip(combo->itemText(selected));
}

// The records of the combination the handler is on: the ICC section, the
// ink rows and the ink order panel. A section without a record is hidden.
void PrinterDriverPropertyDlg::showCombination(const CombinationSettings &settings)
{
    ui_->widget_iccWrapper_->setVisible(settings.icc.has_value());
    if (settings.icc)
        showIcc(*settings.icc);
    ui_->widget_inkWrapper_->setVisible(settings.channels.has_value());
    if (settings.channels)
        channelRows_->show(*settings.channels);
    QVector<InkOrderWidget::InkInfo> infos;
    for (const InkSlot &slot : settings.inks.value_or(QVector<InkSlot>())) {
        InkOrderWidget::InkInfo info;
        info.inkId = slot.inkId;
        info.order = slot.order;
        info.isOn = slot.isOn;
        info.inkName = slot.name;
        info.color = bex::inkName(slot.name).colour;
        infos << info;
    }
    // Whatever this combination offers replaces what another one showed.
    ui_->inkOrderWidget_->setInkInfos(infos);
}

void PrinterDriverPropertyDlg::showIcc(const IccSettings &icc)
{
    const PrinterDriverConfig &config = *PrinterDriverConfig::instance();
    iccRgb_->showStored(icc.rgb, config.iccRgbDir());
    iccCmyk_->showStored(icc.cmyk, config.iccCmykDir());
    iccCurve_->showStored(icc.output, config.iccOutputDir());

    // Listed by how often they are chosen, not by their numbers.
    QComboBox *intent = ui_->comboBox_intent_;
    intent->clear();
    intent->addItem(tr("感性"), int(kIccIntentPerceptual));
    intent->addItem(tr("相对色"), int(kIccIntentRelativeColorimetric));
    intent->addItem(tr("饱和度"), int(kIccIntentSaturation));
    intent->addItem(tr("绝对色"), int(kIccIntentAbsoluteColorimetric));
    intent->setCurrentIndex(intent->findData(icc.intent.value_or(-1)));
}

// ---------------------------------------------------------------------------
// Collecting

CombinationSettings PrinterDriverPropertyDlg::collectCombination() const
{
    CombinationSettings settings;
    const QVariant intent = ui_->comboBox_intent_->currentData();
    settings.icc = IccSettings{iccRgb_->filePath(), iccCmyk_->filePath(), iccCurve_->filePath(),
                               intent.isValid() ? std::optional<int>(intent.toInt()) : std::nullopt};
    settings.channels = channelRows_->settings();
    QVector<InkSlot> inks;
    for (const InkOrderWidget::InkInfo &info : ui_->inkOrderWidget_->inkInfos())
        inks << InkSlot{info.inkId, info.order, info.isOn, info.inkName};
    settings.inks = inks;
    return settings;
}

DriverSettings PrinterDriverPropertyDlg::collect() const
{
    DriverSettings settings{choices_, collectCombination()};
    settings.choices.common = commonProperties_->settings();
    return settings;
}

// ---------------------------------------------------------------------------
// Switching combinations

// Stores the edits of the combination being left in the handler, selects
// the new one through `select` and shows its values.
void PrinterDriverPropertyDlg::switchCombination(const std::function<void()> &select)
{
    if (!loaded_)
        return;
    session_->writeCombination(collectCombination());
    select();
    showCombination(session_->readCombination());
    // A combination with channels not seen before made new rows.
    wheelGuard_->guardChildren(ui_->widget_inkDetail_);
    TabOrder::followLayout(this);
}

void PrinterDriverPropertyDlg::on_combinedTypeChanged(int index)
{
    QComboBox *combo = ui_->comboBox_combinedType_;
    if (index < 0 || index >= combo->count()) {
        combo->setToolTip(QString());
        return;
    }
    combo->setToolTip(combo->itemText(index));
    choices_.dpi.index = combo->itemData(index, DpiIndexRole).toInt();
    choices_.paper.index = combo->itemData(index, PaperIndexRole).toInt();
    choices_.ink.index = combo->itemData(index, InkIndexRole).toInt();
    BEX_DEBUG(lcDialog) << "dpi enumId:" << choices_.dpi.enumId << "index:" << choices_.dpi.index;
    BEX_DEBUG(lcDialog) << "paper enumId:" << choices_.paper.enumId << "index:" << choices_.paper.index;
    BEX_DEBUG(lcDialog) << "ink enumId:" << choices_.ink.enumId << "index:" << choices_.ink.index;
    switchCombination([this]() {
        session_->writeChoice(choices_, DriverSession::Level::Paper);
        session_->writeChoice(choices_, DriverSession::Level::Dpi);
        session_->writeChoice(choices_, DriverSession::Level::Ink);
    });
}

void PrinterDriverPropertyDlg::on_dpiChanged(int index)
{
    choices_.dpi.index = index;
    switchCombination([this]() { session_->writeChoice(choices_, DriverSession::Level::Dpi); });
}

void PrinterDriverPropertyDlg::on_paperChanged(int index)
{
    choices_.paper.index = index;
    switchCombination([this]() { session_->writeChoice(choices_, DriverSession::Level::Paper); });
}

void PrinterDriverPropertyDlg::on_inkChanged(int index)
{
    choices_.ink.index = index;
    switchCombination([this]() { session_->writeChoice(choices_, DriverSession::Level::Ink); });
}

// ---------------------------------------------------------------------------
// Writing

void PrinterDriverPropertyDlg::on_ok()
{
    if (write()) {
        BEX_DEBUG(lcDialog).noquote() << QStringLiteral("驱动") + driverId_ + QStringLiteral("属性设置成功");
        accept();
        return;
    }
    BEX_CRITICAL(lcDialog).noquote() << QStringLiteral("驱动") + driverId_ + QStringLiteral("属性设置失败");
    CommonFramelessMessageBox::warning(this, tr("温馨提示"), tr("属性设置失败"), tr("确定"));
    reject();
}

void PrinterDriverPropertyDlg::on_cancel()
{
    reject();
}

bool PrinterDriverPropertyDlg::write()
{
    if (!loaded_) {
        // The handler may hold another driver: writing now would change it.
        BEX_CRITICAL(lcDialog) << "driver not loaded, nothing written";
        return false;
    }
    return session_->write(collect());
}

// ---------------------------------------------------------------------------
// ICC profiles

void PrinterDriverPropertyDlg::on_selectICC_RGB()
{
    selectIccFile(tr("请选择icc (RGB)"), PrinterDriverConfig::instance()->iccRgbDir(), iccRgb_);
}

void PrinterDriverPropertyDlg::on_selectICC_CMYK()
{
    selectIccFile(tr("请选择icc (CMYK)"), PrinterDriverConfig::instance()->iccCmykDir(), iccCmyk_);
}

void PrinterDriverPropertyDlg::on_selectICC_Curve()
{
    selectIccFile(tr("请选择设备曲线"), PrinterDriverConfig::instance()->iccOutputDir(), iccCurve_);
}

// The chosen file is checked before anything is copied: a file that is not a
// profile, or a profile that does not fit the row, is refused with one box
// and the row keeps what it had.
void PrinterDriverPropertyDlg::selectIccFile(const QString &caption, const QString &targetDir,
                                             IccProfileRow *row)
{
    const QString chosen = QFileDialog::getOpenFileName(
        this, caption, PrinterDriverConfig::instance()->iccOpenRootDir(), tr("icc (*.icc *.icm)"));
    if (chosen.isEmpty())
        return;
    PrinterDriverConfig::instance()->setIccOpenRootDir(QFileInfo(chosen).absolutePath());
    const IccProfileInfo profile = IccProfileInfo::fromFile(chosen, UIModuleConfig::instance()->language());
    const QString refusal = profile.refusalFor(row->slot());
    if (!refusal.isEmpty()) {
        BEX_WARNING(lcDialog) << "icc profile refused:" << chosen << refusal;
        CommonFramelessMessageBox::warning(
            this, tr("温馨提示"), tr("\"%1\"：%2").arg(QFileInfo(chosen).fileName(), refusal), tr("确定"));
        return;
    }
    row->showChosen(copyIccFile(chosen, targetDir), profile);
}

QString PrinterDriverPropertyDlg::copyIccFile(const QString &srcFilePath, QString dstDir)
{
    dstDir = IccProfileFiles::targetDirectory(dstDir);
    QDir().mkpath(dstDir);
    const QFileInfo source(srcFilePath);
    const QString target = dstDir + source.fileName();
    const auto copyFailed = [this]() {
        CommonFramelessMessageBox::warning(this, tr("温馨提示"), tr("拷贝icc失败"), tr("确定"));
        return QString();
    };

    if (!QFileInfo::exists(target))
        return QFile::copy(srcFilePath, target) ? target : copyFailed();

    if (source.absoluteDir().canonicalPath() == QDir(dstDir).canonicalPath()) {
        BEX_DEBUG(lcDialog) << "就在该目录下";
        return srcFilePath;
    }

    const QString candidate = IccProfileFiles::freeAlternativeName(dstDir, source);
    const QString text = tr("\"%1\"已经存在.是否覆盖?").arg(source.fileName()) +
                         tr("\n(选择取消,将会将icc文件名改为\"%2\")").arg(QFileInfo(candidate).fileName());
    const int answer =
        CommonFramelessMessageBox::question(this, tr("温馨提示"), text, tr("取消"), tr("确定"));
    if (answer == 1) {
        QFile::remove(target);
        QFile::copy(srcFilePath, target);
        return target;
    }
    // "取消", and a box closed without an answer: nothing is replaced.
    return QFile::copy(srcFilePath, candidate) ? candidate : copyFailed();
}
