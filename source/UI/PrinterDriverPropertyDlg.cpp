#include "UI/PrinterDriverPropertyDlg.h"
#include "ui_PrinterDriverPropertyDlg.h"

#include "Common/HandlerRecords.h"
#include "Common/HandlerText.h"
#include "Common/Logging.h"
#include "Config/PrinterDriverConfig.h"
#include "Config/UIModuleConfig.h"
#include "FramelessWidget/Common/CommonFramelessMessageBox.h"
#include "Icc/IccProfileCache.h"
#include "UI/IccProfileFiles.h"
#include "UI/IccProfileRow.h"
#include "UI/PrinterDriverManager.h"
#include "UI/SubWidget/DoubleSlider.h"
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
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpacerItem>
#include <QSpinBox>
#include <QStandardItem>
#include <QStandardItemModel>
#include <QStyle>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <list>
#include <string>

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

// Text handed to the print-parameter library: local 8-bit, through a
// standard string so that it lives for the whole call.
std::string toLocal(const QString &text)
{
    return text.toLocal8Bit().toStdString();
}

// Copies text into a fixed field of a handler record. Text that does not fit
// with its terminating zero is refused rather than cut, since a cut file name
// would name another file.
template <std::size_t N>
bool setFieldText(char (&field)[N], const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit();
    if (std::size_t(bytes.size()) >= N)
        return false;
    std::memset(field, 0, N);
    std::memcpy(field, bytes.constData(), std::size_t(bytes.size()));
    return true;
}

// A fraction (1.0 = 100 %) as a whole percent, truncated. The nudge keeps
// binary fractions from falling below the percent they stand for
// (0.29 x 100 is 28.999...96 in a double).
int percentFromFraction(double fraction)
{
    if (!std::isfinite(fraction))
        return 0;
    const double scaled = fraction * 100.0;
    const double nudge = scaled >= 0.0 ? 1e-7 : -1e-7;
    return int(std::clamp(std::trunc(scaled + nudge), -1.0e9, 1.0e9));
}

// The four process colours as the ink section labels them; every other
// channel is a spot channel.
struct ProcessColour
{
    const char *label;
    const char *word;
};

const ProcessColour *processColour(const QString &name)
{
    static const struct
    {
        const char *shortName;
        const char *longName;
        ProcessColour colour;
    } table[] = {
        {"C", "Cyan", {QT_TRANSLATE_NOOP("PrinterDriverPropertyDlg", "青色(C)"), "Cyan"}},
        {"M", "Magenta", {QT_TRANSLATE_NOOP("PrinterDriverPropertyDlg", "品红(M)"), "Magenta"}},
        {"Y", "Yellow", {QT_TRANSLATE_NOOP("PrinterDriverPropertyDlg", "黄色(Y)"), "Yellow"}},
        {"K", "Black", {QT_TRANSLATE_NOOP("PrinterDriverPropertyDlg", "黑色(K)"), "Black"}},
    };
    for (const auto &entry : table) {
        if (name.compare(QLatin1String(entry.shortName), Qt::CaseInsensitive) == 0 ||
            name.compare(QLatin1String(entry.longName), Qt::CaseInsensitive) == 0)
            return &entry.colour;
    }
    return nullptr;
}

// The colour of an ink's tab in the ink order panel.
QColor inkColour(const QString &name)
{
    static const struct
    {
        const char *name;
        QColor colour;
    } table[] = {
        {"C", Qt::cyan},
        {"Cyan", Qt::cyan},
        {"M", Qt::magenta},
        {"Magenta", Qt::magenta},
        {"Y", Qt::yellow},
        {"Yellow", Qt::yellow},
        {"K", Qt::black},
        {"Black", Qt::black},
        {"R", QColor(252, 16, 16)},
        {"B", QColor(82, 50, 141)},
        {"LC", QColor(224, 255, 255)},
        {"LM", QColor(255, 224, 255)},
    };
    for (const auto &entry : table) {
        if (name.compare(QLatin1String(entry.name), Qt::CaseInsensitive) == 0)
            return entry.colour;
    }
    return Qt::white;
}

// No driver property offers more values than this; a record claiming more is
// damaged, and reading it would run past its array.
constexpr int maxEnumValueCount = 512;

bool channelsUsable(const printerChannelColorInfo &info)
{
    if (bex::channelCountUsable(info.pcciChanneNum, info.channels))
        return true;
    BEX_CRITICAL(lcDialog) << "printerChannelColorInfo is damaged - pcciChanneNum:" << info.pcciChanneNum
                           << "channels:" << static_cast<const void *>(info.channels);
    return false;
}

bool inkOrderUsable(const printerInkOrderInfo &info)
{
    if (bex::channelCountUsable(info.pioiInkNum, info.pioiInkOrder) &&
        bex::channelCountUsable(info.pioiInkNum, info.PioiInkOFFON))
        return true;
    BEX_CRITICAL(lcDialog) << "printerInkOrderInfo is damaged - pioiInkNum:" << info.pioiInkNum;
    return false;
}

// The value texts of an enum item; none when the item lists none or claims
// more than it can hold.
QStringList enumValues(const printerEnumItem &item)
{
    QStringList values;
    if (!item.values || item.valueSize <= 0)
        return values;
    if (item.valueSize > maxEnumValueCount) {
        BEX_CRITICAL(lcDialog) << "printerEnumItem is damaged - key:" << fieldText(item.key)
                               << "valueSize:" << item.valueSize;
        return values;
    }
    values.reserve(item.valueSize);
    for (int i = 0; i < item.valueSize; ++i)
        values << fieldText(item.values[i]);
    return values;
}

QString enumKey(const printerEnumItem *item)
{
    return item ? fieldText(item->key) : QString();
}

// The combo box of a common property. Its popup is a plain list view (so
// that style sheets reach its items), made when the list is first opened: a
// driver with dozens of properties opens without building dozens of popups.
class CommonPropertyComboBox : public QComboBox
{
public:
    using QComboBox::QComboBox;

    void showPopup() override
    {
        if (!listViewMade_) {
            listViewMade_ = true;
            const QString name = view()->accessibleName();
            setView(new QListView(this));
            view()->setAccessibleName(name);
        }
        QComboBox::showPopup();
    }

private:
    bool listViewMade_ = false;
};

} // namespace

PrinterDriverPropertyDlg::PrinterDriverPropertyDlg(const QString &driverId, QWidget *parent)
    : CommonFramelessDialog(parent)
    , ui_(std::make_unique<Ui::PrinterDriverPropertyDlg>())
    , driverId_(driverId)
    , handler_(PrinterDriverManager::instance()->getHandler())
    , wheelGuard_(new WheelGuard(this))
    , iccProfiles_(std::make_unique<IccProfileCache>(UIModuleConfig::instance()->language()))
{
    ui_->setupUi(this);
    Qt::WindowFlags flags = windowFlags();
    flags &= ~Qt::WindowContextHelpButtonHint;
    flags &= ~Qt::WindowMinimizeButtonHint;
    setWindowFlags(flags);
    setupFramelessTitleBar(ui_->titleBarLayout_);
    iccRgb_ = new IccProfileRow(ui_->lineEdit_ICC_RGB_, IccProfileSlot::Rgb, iccProfiles_.get(), this);
    iccCmyk_ = new IccProfileRow(ui_->lineEdit_ICC_CMYK_, IccProfileSlot::Cmyk, iccProfiles_.get(), this);
    iccCurve_ =
        new IccProfileRow(ui_->lineEdit_ICC_Curve_, IccProfileSlot::Equipment, iccProfiles_.get(), this);

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
    if (!handler_)
        return false;
    if (driverId_.isEmpty()) {
        BEX_CRITICAL(lcDialog) << "driverId_ is empty";
        return false;
    }
    const unsigned int languageFlag = UIModuleConfig::instance()->language() == QLocale::English ? 4 : 0;
    if (!handler_->SelectPrinterDriverPrs(toLocal(driverId_).c_str(), languageFlag)) {
        BEX_CRITICAL(lcDialog) << "SelectPrinterDriverPrs:" << driverId_ << "failed!";
        return false;
    }
    BEX_DEBUG(lcDialog) << "curDriverName:" << QString::fromLocal8Bit(handler_->GetCurDriverName());

    readEnumItems();
    adjustCommonPropertyUI();
    readICC();
    readChannelColorInfo();
    readInkOrderInfo();
    return true;
}

// The resolution, paper and ink selections, and one row per other enumerated
// property of the driver.
void PrinterDriverPropertyDlg::readEnumItems()
{
    const QString dpiKey = enumKey(handler_->GetSelectEnumItem(kEnumKindResolution));
    const QString paperKey = enumKey(handler_->GetSelectEnumItem(kEnumKindPaper));
    const QString inkKey = enumKey(handler_->GetSelectEnumItem(kEnumKindInk));
    BEX_DEBUG(lcDialog) << "dpiKey:" << dpiKey;
    BEX_DEBUG(lcDialog) << "paperKey:" << paperKey;
    BEX_DEBUG(lcDialog) << "inkKey:" << inkKey;

    BEX_DEBUG(lcDialog) << "GetAllEnumItemList begin ***************";
    std::list<printerEnumItem *> items;
    handler_->GetAllEnumItemList(items);
    BEX_DEBUG(lcDialog) << "size:" << items.size();

    auto *grid = new QGridLayout;
    grid->setContentsMargins(0, 0, 0, 0);
    int row = 0;
    for (const printerEnumItem *item : items) {
        if (!item)
            continue;
        const QString key = fieldText(item->key);
        const int enumId = int(item->enumId);
        BEX_DEBUG(lcDialog) << "-----------------------------------------";
        BEX_DEBUG(lcDialog) << "key:" << key;
        BEX_DEBUG(lcDialog) << "index:" << item->index;
        BEX_DEBUG(lcDialog) << "enumId:" << enumId;
        BEX_DEBUG(lcDialog) << "valuesize:" << item->valueSize;

        EnumSelection *selection = key == dpiKey     ? &dpi_
                                   : key == paperKey ? &paper_
                                   : key == inkKey   ? &ink_
                                                     : nullptr;
        if (selection) {
            *selection = EnumSelection{enumId, item->index, enumValues(*item)};
            continue;
        }

        auto *label = new QLabel(key);
        label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        auto *combo = new CommonPropertyComboBox;
        combo->setFocusPolicy(Qt::StrongFocus);
        label->setBuddy(combo);
        combo->setProperty("enumId", enumId);
        const QStringList values = enumValues(*item);
        for (int i = 0; i < values.size(); ++i)
            combo->addItem(values.at(i), i);
        if (!values.isEmpty())
            combo->setCurrentIndex(item->index);
        grid->addWidget(label, row, 0);
        grid->addWidget(combo, row, 1);
        commonProperties_.insert(enumId, combo);
        ++row;
    }
    BEX_DEBUG(lcDialog) << "GetAllEnumItemList end ***************";
    ui_->verLayout_Common_->addLayout(grid);
    ui_->verLayout_Common_->addStretch();
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
        const EnumSelection &selection;
    } combos[] = {{ui_->comboBox_dpi_, dpi_}, {ui_->comboBox_paper_, paper_}, {ui_->comboBox_ink_, ink_}};
    for (const auto &entry : combos) {
        const QSignalBlocker blocker(entry.combo);
        entry.combo->clear();
        entry.combo->addItems(entry.selection.values);
        entry.combo->setCurrentIndex(entry.selection.index);
    }
}

// Lists the combinations of resolution, paper and ink that have colour
// calibration (an ICC record), and leaves the handler on the one chosen.
void PrinterDriverPropertyDlg::fillCombinedTypes()
{
    QComboBox *combo = ui_->comboBox_combinedType_;
    const QSignalBlocker blocker(combo);
    combo->clear();

    static const QString separator = QStringLiteral("    \t");
    QList<QStandardItem *> rows;
    int selected = -1;
    for (int i = 0; i < ink_.values.size(); ++i) {
        handler_->SetEnumItem(std::uint32_t(ink_.enumId), i);
        for (int j = 0; j < paper_.values.size(); ++j) {
            handler_->SetEnumItem(std::uint32_t(paper_.enumId), j);
            for (int k = 0; k < dpi_.values.size(); ++k) {
                handler_->SetEnumItem(std::uint32_t(dpi_.enumId), k);
                if (!handler_->GetIccSettingInfo())
                    continue;
                const QString label =
                    dpi_.values.at(k) + separator + paper_.values.at(j) + separator + ink_.values.at(i);
                auto *row = new QStandardItem(label);
                row->setToolTip(label);
                row->setData(k, DpiIndexRole);
                row->setData(j, PaperIndexRole);
                row->setData(i, InkIndexRole);
                if (i == ink_.index && j == paper_.index && k == dpi_.index)
                    selected = rows.size();
                rows << row;
            }
        }
    }
    if (rows.isEmpty()) {
        // The handler stays on the last combination visited until write()
        // selects the stored one again.
        BEX_DEBUG(lcDialog) << "该驱动所有组合都没有校色";
        return;
    }
    if (auto *model = qobject_cast<QStandardItemModel *>(combo->model()))
        model->invisibleRootItem()->appendRows(rows);

    const int current = std::max(selected, 0);
    dpi_.index = combo->itemData(current, DpiIndexRole).toInt();
    paper_.index = combo->itemData(current, PaperIndexRole).toInt();
    ink_.index = combo->itemData(current, InkIndexRole).toInt();
    handler_->SetEnumItem(std::uint32_t(dpi_.enumId), dpi_.index);
    handler_->SetEnumItem(std::uint32_t(paper_.enumId), paper_.index);
    handler_->SetEnumItem(std::uint32_t(ink_.enumId), ink_.index);
    combo->setCurrentIndex(current);
    combo->setToolTip(combo->itemText(current));
}

bool PrinterDriverPropertyDlg::readICC()
{
    const printerIccColorInfo *info = handler_->GetIccSettingInfo();
    ui_->widget_iccWrapper_->setVisible(info != nullptr);
    if (!info) {
        BEX_DEBUG(lcDialog) << "printerIccColorInfo is nullptr";
        return true;
    }
    BEX_DEBUG(lcDialog) << "printerIccColorInfo is valid";
    const QString rgb = fieldText(info->iccFilePath_RGB);
    const QString cmyk = fieldText(info->iccFilePath_CMYK);
    const QString curve = fieldText(info->iccFilePath_OUTPUT);
    BEX_DEBUG(lcDialog) << "iccFilePath_RGB:" << rgb;
    BEX_DEBUG(lcDialog) << "iccFilePath_CMYK:" << cmyk;
    BEX_DEBUG(lcDialog) << "iccFilePath_Curve:" << curve;
    BEX_DEBUG(lcDialog) << "ICCINTENTTYPE:" << info->iccIntentType;

    const PrinterDriverConfig &config = *PrinterDriverConfig::instance();
    iccRgb_->showStored(rgb, config.iccRgbDir());
    iccCmyk_->showStored(cmyk, config.iccCmykDir());
    iccCurve_->showStored(curve, config.iccOutputDir());

    // Listed by how often they are chosen, not by their numbers.
    QComboBox *intent = ui_->comboBox_intent_;
    intent->clear();
    intent->addItem(tr("感性"), int(kIccIntentPerceptual));
    intent->addItem(tr("相对色"), int(kIccIntentRelativeColorimetric));
    intent->addItem(tr("饱和度"), int(kIccIntentSaturation));
    intent->addItem(tr("绝对色"), int(kIccIntentAbsoluteColorimetric));
    intent->setCurrentIndex(intent->findData(int(info->iccIntentType)));
    return true;
}

PrinterDriverPropertyDlg::ChannelRows &PrinterDriverPropertyDlg::channelRows(const QString &name,
                                                                             const char *colourWord)
{
    auto found = channelRows_.find(name);
    if (found != channelRows_.end())
        return *found;

    const int row = channelRows_.size();
    ChannelRows rows;

    QGridLayout *densityGrid = ui_->gridLayout_inkConcentration_;
    rows.densityLabel = new QLabel;
    auto *densitySlider = new DoubleSlider(Qt::Horizontal);
    densitySlider->setDecimals(2);
    densitySlider->setRange(-3.0, 3.0);
    densitySlider->setProperty(colourWord, true);
    densitySlider->setFocusPolicy(Qt::StrongFocus);
    rows.densitySlider = densitySlider;
    rows.densitySpinBox = new QDoubleSpinBox;
    rows.densitySpinBox->setRange(-3.0, 3.0);
    rows.densitySpinBox->setDecimals(2);
    rows.densitySpinBox->setSingleStep(0.01);
    rows.densitySpinBox->setButtonSymbols(QAbstractSpinBox::NoButtons);
    rows.densitySpinBox->setProperty("NoButtons", true);
    rows.densitySpinBox->setFocusPolicy(Qt::StrongFocus);
    QDoubleSpinBox *densitySpinBox = rows.densitySpinBox;
    connect(densitySlider, qOverload<double>(&DoubleSlider::valueChanged), densitySpinBox,
            &QDoubleSpinBox::setValue);
    // The slider only holds whole hundredths: a typed value is not echoed
    // back in its truncated form.
    connect(densitySpinBox, qOverload<double>(&QDoubleSpinBox::valueChanged), densitySlider,
            [densitySlider](double value) {
                const QSignalBlocker blocker(densitySlider);
                densitySlider->setValue(value);
            });
    densityGrid->addWidget(rows.densityLabel, row, 0);
    densityGrid->addWidget(densitySlider, row, 1);
    densityGrid->addWidget(densitySpinBox, row, 2);

    QGridLayout *limitGrid = ui_->gridLayout_inkLimit_;
    rows.maxInkLabel = new QLabel;
    auto *maxInkSlider = new QSlider(Qt::Horizontal);
    maxInkSlider->setRange(0, 100);
    maxInkSlider->setProperty(colourWord, true);
    rows.maxInkSlider = maxInkSlider;
    rows.maxInkSpinBox = new QSpinBox;
    rows.maxInkSpinBox->setRange(0, 100);
    rows.maxInkSpinBox->setSingleStep(1);
    rows.maxInkSpinBox->setButtonSymbols(QAbstractSpinBox::NoButtons);
    rows.maxInkSpinBox->setProperty("NoButtons", true);
    connect(maxInkSlider, &QSlider::valueChanged, rows.maxInkSpinBox, &QSpinBox::setValue);
    connect(rows.maxInkSpinBox, qOverload<int>(&QSpinBox::valueChanged), maxInkSlider, &QSlider::setValue);
    limitGrid->addWidget(rows.maxInkLabel, row, 0);
    limitGrid->addWidget(maxInkSlider, row, 1);
    limitGrid->addWidget(rows.maxInkSpinBox, row, 2);
    rows.percentLabel = new QLabel(QStringLiteral("%"));
    limitGrid->addWidget(rows.percentLabel, row, 3);

    return *channelRows_.insert(name, rows);
}

void PrinterDriverPropertyDlg::ChannelRows::setVisible(bool visible) const
{
    for (QWidget *widget :
         {static_cast<QWidget *>(densityLabel), densitySlider, static_cast<QWidget *>(densitySpinBox),
          static_cast<QWidget *>(maxInkLabel), maxInkSlider, static_cast<QWidget *>(maxInkSpinBox),
          static_cast<QWidget *>(percentLabel)})
        widget->setVisible(visible);
}

bool PrinterDriverPropertyDlg::readChannelColorInfo()
{
    const printerChannelColorInfo *info = handler_->GetChannelColorInfo();
    ui_->widget_inkWrapper_->setVisible(info != nullptr);
    if (!info) {
        BEX_DEBUG(lcDialog) << "printerChannelColorInfo is nullptr";
        return true;
    }
    if (!channelsUsable(*info))
        return false;
    BEX_DEBUG(lcDialog) << "printerChannelColorInfo is valid";
    // Rows are kept per channel name across combinations; those of channels
    // that this combination lacks are hidden, never left to be edited and
    // then ignored.
    for (const ChannelRows &rows : qAsConst(channelRows_))
        rows.setVisible(false);
    const int count = info->channels ? info->pcciChanneNum : 0;
    for (int c = 0; c < count; ++c) {
        const inkChannelInfo &channel = info->channels[c];
        const QString name = fieldText(channel.iciName);
        BEX_DEBUG(lcDialog) << "iciDepth:" << channel.iciDepth;
        BEX_DEBUG(lcDialog) << "iciMaxInk:" << channel.iciMaxInk;
        BEX_DEBUG(lcDialog) << "iciName:" << name;

        QString label = name;
        const char *colourWord = "White";
        if (const ProcessColour *colour = processColour(name)) {
            label = tr(colour->label);
            colourWord = colour->word;
        } else {
            BEX_DEBUG(lcDialog) << "专色通道名:" << name;
        }

        const ChannelRows &rows = channelRows(name, colourWord);
        rows.setVisible(true);
        rows.densityLabel->setText(label);
        rows.maxInkLabel->setText(label);
        // Named by their channel for a screen reader, which does not see
        // the row's label beside them.
        const QString densityName = tr("%1 浓度").arg(label);
        const QString maxInkName = tr("%1 最大墨量").arg(label);
        rows.densitySlider->setAccessibleName(densityName);
        rows.densitySpinBox->setAccessibleName(densityName);
        rows.maxInkSlider->setAccessibleName(maxInkName);
        rows.maxInkSpinBox->setAccessibleName(maxInkName);
        // Light inks follow the density of their full-strength ink.
        const bool densityEditable = !name.startsWith(QLatin1Char('L'), Qt::CaseInsensitive);
        rows.densitySlider->setEnabled(densityEditable);
        rows.densitySpinBox->setEnabled(densityEditable);
        rows.densitySpinBox->setValue(channel.iciDepth);
        rows.maxInkSpinBox->setValue(percentFromFraction(channel.iciMaxInk));
    }
    return true;
}

bool PrinterDriverPropertyDlg::readInkOrderInfo()
{
    // Whatever this combination offers replaces what another one showed.
    ui_->inkOrderWidget_->setInkInfos({});
    const printerChannelColorInfo *channels = handler_->GetChannelColorInfo();
    const printerInkOrderInfo *inks = handler_->GetInkOrderInfo();
    if (!channels) {
        BEX_DEBUG(lcDialog) << "printerChannelColorInfo is nullptr";
        return true;
    }
    if (!inks) {
        BEX_DEBUG(lcDialog) << "printerInkOrderInfo is nullptr";
        return true;
    }
    if (!channelsUsable(*channels) || !inkOrderUsable(*inks))
        return false;
    if (channels->pcciChanneNum != inks->pioiInkNum) {
        BEX_DEBUG(lcDialog) << "pcciChanneNum:" << channels->pcciChanneNum
                            << " - pioiInkNum:" << inks->pioiInkNum << " is not same";
        return true;
    }
    const int count = channels->channels && inks->pioiInkOrder && inks->PioiInkOFFON ? inks->pioiInkNum : 0;
    QVector<InkOrderWidget::InkInfo> infos;
    infos.reserve(count);
    for (int i = 0; i < count; ++i) {
        InkOrderWidget::InkInfo info;
        info.inkId = i;
        info.order = inks->pioiInkOrder[i];
        info.isOn = inks->PioiInkOFFON[i] == 0;
        info.inkName = fieldText(channels->channels[i].iciName);
        info.color = inkColour(info.inkName);
        BEX_DEBUG(lcDialog) << "inkName:" << info.inkName;
        BEX_DEBUG(lcDialog) << "pioiInkOrder:" << inks->pioiInkOrder[i];
        BEX_DEBUG(lcDialog) << "PioiInkOFFON:" << inks->PioiInkOFFON[i];
        infos << info;
    }
    ui_->inkOrderWidget_->setInkInfos(infos);
    return true;
}

// ---------------------------------------------------------------------------
// Switching combinations

template <typename WriteSelection>
void PrinterDriverPropertyDlg::switchCombination(WriteSelection writeSelection)
{
    if (!loaded_)
        return;
    writeICC();
    writeChannelColorInfo();
    writeInkOrderInfo();
    writeSelection();
    readICC();
    readChannelColorInfo();
    readInkOrderInfo();
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
    dpi_.index = combo->itemData(index, DpiIndexRole).toInt();
    paper_.index = combo->itemData(index, PaperIndexRole).toInt();
    ink_.index = combo->itemData(index, InkIndexRole).toInt();
    BEX_DEBUG(lcDialog) << "dpi enumId:" << dpi_.enumId << "index:" << dpi_.index;
    BEX_DEBUG(lcDialog) << "paper enumId:" << paper_.enumId << "index:" << paper_.index;
    BEX_DEBUG(lcDialog) << "ink enumId:" << ink_.enumId << "index:" << ink_.index;
    switchCombination([this]() {
        writePaper();
        writeDPI();
        writeInk();
    });
}

void PrinterDriverPropertyDlg::on_dpiChanged(int index)
{
    dpi_.index = index;
    switchCombination([this]() { writeDPI(); });
}

void PrinterDriverPropertyDlg::on_paperChanged(int index)
{
    paper_.index = index;
    switchCombination([this]() { writePaper(); });
}

void PrinterDriverPropertyDlg::on_inkChanged(int index)
{
    ink_.index = index;
    switchCombination([this]() { writeInk(); });
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
    static const struct
    {
        const char *name;
        bool (PrinterDriverPropertyDlg::*run)();
    } steps[] = {
        {"writeDPI", &PrinterDriverPropertyDlg::writeDPI},
        {"writePaper", &PrinterDriverPropertyDlg::writePaper},
        {"writeInk", &PrinterDriverPropertyDlg::writeInk},
        {"writeICC", &PrinterDriverPropertyDlg::writeICC},
        {"writeChannelColorInfo", &PrinterDriverPropertyDlg::writeChannelColorInfo},
        {"writeInkOrderInfo", &PrinterDriverPropertyDlg::writeInkOrderInfo},
    };
    for (const auto &step : steps) {
        BEX_DEBUG(lcDialog).noquote() << QLatin1String(step.name) + QLatin1String(" begin");
        if (!(this->*step.run)())
            return false;
        BEX_DEBUG(lcDialog).noquote() << QLatin1String(step.name) + QLatin1String(" end");
    }
    if (!writeCommonProperties())
        return false;
    handler_->CommitPrinterDriverPrs(0);
    return true;
}

bool PrinterDriverPropertyDlg::setEnumItem(const EnumSelection &selection)
{
    return handler_->SetEnumItem(std::uint32_t(selection.enumId), selection.index);
}

bool PrinterDriverPropertyDlg::writeDPI()
{
    if (setEnumItem(dpi_))
        return true;
    BEX_CRITICAL(lcDialog) << "SetEnumItem failed [dpi]. enumId:" << dpi_.enumId << "index:" << dpi_.index;
    return false;
}

bool PrinterDriverPropertyDlg::writePaper()
{
    if (setEnumItem(paper_))
        return true;
    BEX_CRITICAL(lcDialog) << "SetEnumItem failed [paper]. enumId:" << paper_.enumId
                           << "index:" << paper_.index;
    return false;
}

bool PrinterDriverPropertyDlg::writeInk()
{
    BEX_DEBUG(lcDialog) << "ink index:" << ink_.index;
    if (setEnumItem(ink_))
        return true;
    BEX_CRITICAL(lcDialog) << "SetEnumItem failed [ink]. enumId:" << ink_.enumId << "index:" << ink_.index;
    return false;
}

bool PrinterDriverPropertyDlg::writeCommonProperties()
{
    for (auto it = commonProperties_.cbegin(); it != commonProperties_.cend(); ++it) {
        const int index = it.value()->currentIndex();
        if (!handler_->SetEnumItem(std::uint32_t(it.key()), index)) {
            BEX_CRITICAL(lcDialog) << "SetEnumItem failed. enumId:" << it.key() << "index:" << index;
            return false;
        }
    }
    return true;
}

bool PrinterDriverPropertyDlg::writeICC()
{
    printerIccColorInfo *info = handler_->GetIccSettingInfo();
    if (!info) {
        BEX_DEBUG(lcDialog) << "printerIccColorInfo is nullptr";
        return true;
    }
    BEX_DEBUG(lcDialog) << "printerIccColorInfo is valid";
    const QString rgb = ui_->lineEdit_ICC_RGB_->property("filePath").toString();
    const QString cmyk = ui_->lineEdit_ICC_CMYK_->property("filePath").toString();
    const QString curve = ui_->lineEdit_ICC_Curve_->property("filePath").toString();
    // Checked before the record is touched, so that a refused name leaves
    // the whole record as it was.
    for (const QString &name : {rgb, cmyk, curve}) {
        if (std::size_t(name.toLocal8Bit().size()) >= kIccPathSize) {
            BEX_CRITICAL(lcDialog) << "icc file name too long:" << name;
            return false;
        }
    }
    setFieldText(info->iccFilePath_RGB, rgb);
    setFieldText(info->iccFilePath_CMYK, cmyk);
    setFieldText(info->iccFilePath_OUTPUT, curve);
    const QVariant intent = ui_->comboBox_intent_->currentData();
    if (intent.isValid())
        info->iccIntentType = intent.toInt();
    if (!handler_->SetIccSettingInfo(info)) {
        BEX_CRITICAL(lcDialog) << "SetIccSettingInfo failed";
        return false;
    }
    return true;
}

bool PrinterDriverPropertyDlg::writeChannelColorInfo()
{
    printerChannelColorInfo *info = handler_->GetChannelColorInfo();
    if (!info) {
        BEX_DEBUG(lcDialog) << "printerChannelColorInfo is nullptr";
        return true;
    }
    // A damaged record is not handed back: the library would read it as far
    // as it claims.
    if (!channelsUsable(*info))
        return false;
    BEX_DEBUG(lcDialog) << "printerChannelColorInfo is valid";
    BEX_DEBUG(lcDialog) << "pcciChanneNum:" << info->pcciChanneNum;
    const int count = info->channels ? info->pcciChanneNum : 0;
    for (int c = 0; c < count; ++c) {
        inkChannelInfo &channel = info->channels[c];
        const QString name = fieldText(channel.iciName);
        BEX_DEBUG(lcDialog) << "strChannelName:" << name;
        const auto rows = channelRows_.constFind(name);
        if (rows == channelRows_.cend())
            continue;
        channel.iciDepth = rows->densitySpinBox->value();
        // Whole percents back to the record's fraction: an untouched 29 %
        // goes back as 0.29, so repeated confirmations never drift.
        channel.iciMaxInk = rows->maxInkSpinBox->value() / 100.0;
    }
    BEX_DEBUG(lcDialog) << "SetChannelColorInfo begin";
    if (!handler_->SetChannelColorInfo(info)) {
        BEX_CRITICAL(lcDialog) << "SetChannelColorInfo failed";
        return false;
    }
    BEX_DEBUG(lcDialog) << "SetChannelColorInfo end";
    return true;
}

// Each entry of the ink order panel goes back to its own ink (its inkId),
// whatever its place in the panel: the panel reorders its entries, the
// record keeps one slot per ink.
bool PrinterDriverPropertyDlg::writeInkOrderInfo()
{
    printerInkOrderInfo *info = handler_->GetInkOrderInfo();
    if (!info) {
        BEX_WARNING(lcDialog) << "printerInkOrderInfo is nullptr";
        return true;
    }
    if (!inkOrderUsable(*info))
        return false;
    const QVector<InkOrderWidget::InkInfo> infos = ui_->inkOrderWidget_->inkInfos();
    const int count = info->pioiInkNum;
    bool matches = infos.size() == count && info->pioiInkOrder && info->PioiInkOFFON;
    QVector<bool> seen(std::max(count, 0), false);
    for (const InkOrderWidget::InkInfo &ink : infos) {
        if (!matches)
            break;
        matches = ink.inkId >= 0 && ink.inkId < count && !seen.at(ink.inkId);
        if (matches)
            seen[ink.inkId] = true;
    }
    if (!matches) {
        BEX_CRITICAL(lcDialog) << "check your code!";
        return true;
    }
    for (const InkOrderWidget::InkInfo &ink : infos) {
        info->pioiInkOrder[ink.inkId] = ink.order;
        info->PioiInkOFFON[ink.inkId] = ink.isOn ? 0 : 1;
        BEX_DEBUG(lcDialog) << "pioiInkOrder:" << ink.order;
        BEX_DEBUG(lcDialog) << "PioiInkOFFON:" << info->PioiInkOFFON[ink.inkId];
    }
    if (!handler_->SetInkOrderInfo(info)) {
        BEX_CRITICAL(lcDialog) << "SetInkOrderInfo failed";
        return false;
    }
    return true;
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
