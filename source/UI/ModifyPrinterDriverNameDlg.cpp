#include "UI/ModifyPrinterDriverNameDlg.h"
#include "ui_ModifyPrinterDriverNameDlg.h"

#include <QLineEdit>
#include <QPushButton>

ModifyPrinterDriverNameDlg::ModifyPrinterDriverNameDlg(const QString &currentShowName, QWidget *parent)
    : CommonFramelessDialog(parent)
    , ui_(std::make_unique<Ui::ModifyPrinterDriverNameDlg>())
{
    ui_->setupUi(this);

    setupFramelessTitleBar(ui_->titleBarLayout_);
    Qt::WindowFlags flags = windowFlags();
    flags &= ~Qt::WindowContextHelpButtonHint;
    flags &= ~Qt::WindowMinimizeButtonHint;
    setWindowFlags(flags);

    ui_->lineEdit_driverShowName_->setText(currentShowName);

    ui_->btn_ok_->setProperty("defaultStyle_normal", true);
    ui_->btn_cancel_->setProperty("defaultStyle_normal", true);

    connect(ui_->btn_ok_, &QPushButton::clicked, this, &ModifyPrinterDriverNameDlg::accept);
    connect(ui_->btn_cancel_, &QPushButton::clicked, this, &ModifyPrinterDriverNameDlg::reject);
}

ModifyPrinterDriverNameDlg::~ModifyPrinterDriverNameDlg() = default;

void ModifyPrinterDriverNameDlg::accept()
{
    driverShowName_ = ui_->lineEdit_driverShowName_->text();
    if (driverShowName_.isEmpty())
        return;
    QDialog::accept();
}
