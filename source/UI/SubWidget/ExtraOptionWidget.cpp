#include "UI/SubWidget/ExtraOptionWidget.h"
#include "ui_ExtraOptionWidget.h"

#include "Common/Logging.h"

#include <QButtonGroup>

namespace {

// Button-group ids, which are the printMode values.
constexpr int ManualPrintAfterRip = 0;
constexpr int AutomatedPrintAfterRip = 1;
constexpr int PrintWhileRip = 2;

} // namespace

ExtraOptionWidget::ExtraOptionWidget(QWidget *parent)
    : QWidget(parent)
    , ui_(std::make_unique<Ui::ExtraOptionWidget>())
{
    extraOption_.printMode = ManualPrintAfterRip;
    extraOption_.horizontalMirror = false;
    ui_->setupUi(this);

    buttonGroup_ = new QButtonGroup(this);
    buttonGroup_->setExclusive(true);
    buttonGroup_->addButton(ui_->radioButton_manualPrintAfterRIP_, ManualPrintAfterRip);
    buttonGroup_->addButton(ui_->radioButton_automatedPrintAfterRIP_, AutomatedPrintAfterRip);
    buttonGroup_->addButton(ui_->radioButton_printWhileRIP_, PrintWhileRip);

    connect(
        buttonGroup_, &QButtonGroup::idClicked, buttonGroup_,
        [this](int id) {
            extraOption_.printMode = id;
            BEX_DEBUG(lcWidget) << "打印模式:" << id;
        },
        Qt::DirectConnection);
    connect(
        ui_->checkBox_horMirror_, &QCheckBox::stateChanged, ui_->checkBox_horMirror_,
        [this](int state) {
            extraOption_.horizontalMirror = state == Qt::Checked;
            BEX_DEBUG(lcWidget) << "是否水平镜像输出:" << extraOption_.horizontalMirror;
        },
        Qt::DirectConnection);
}

ExtraOptionWidget::~ExtraOptionWidget() = default;

void ExtraOptionWidget::setExtraOption(const RipExtraOption &option)
{
    if (QAbstractButton *button = buttonGroup_->button(option.printMode))
        button->click();
    ui_->checkBox_horMirror_->setCheckState(option.horizontalMirror ? Qt::Checked : Qt::Unchecked);
    // Kept as given, whatever the handlers stored on the way: a print mode
    // without a button is still the job's.
    extraOption_ = option;
}
