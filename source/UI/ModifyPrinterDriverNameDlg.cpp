#include "UI/ModifyPrinterDriverNameDlg.h"
#include "ui_ModifyPrinterDriverNameDlg.h"

#include "UI/DialogForm.h"

#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

ModifyPrinterDriverNameDlg::ModifyPrinterDriverNameDlg(const QString &currentShowName, QWidget *parent)
    : CommonFramelessDialog(parent)
    , ui_(setupDialogForm<Ui::ModifyPrinterDriverNameDlg>(*this))
{
    ui_->lineEdit_driverShowName_->setText(currentShowName);
    // A screen reader names the field by its label, and the field's clear
    // button, an image only, by what it does.
    ui_->label->setBuddy(ui_->lineEdit_driverShowName_);
    const QList<QToolButton *> fieldButtons = ui_->lineEdit_driverShowName_->findChildren<QToolButton *>();
    for (QToolButton *button : fieldButtons)
        button->setAccessibleName(tr("清除"));

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
