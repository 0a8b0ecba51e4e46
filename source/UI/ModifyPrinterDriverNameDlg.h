#pragma once

#include "FramelessWidget/Common/CommonFramelessDialog.h"

#include <QString>

#include <memory>

namespace Ui {
class ModifyPrinterDriverNameDlg;
}

// Asks the user for a new shown name of an installed driver. The dialog only
// collects the name: after exec() returns QDialog::Accepted the caller reads
// driverShowName() and stores it itself.
class ModifyPrinterDriverNameDlg : public CommonFramelessDialog
{
    Q_OBJECT

public:
    ModifyPrinterDriverNameDlg(const QString &currentShowName, QWidget *parent);
    ~ModifyPrinterDriverNameDlg() override;

    // Keeps the typed name exactly as it stands (blanks included) and closes
    // the dialog only when it is not empty; an empty name leaves it open.
    void accept() override;

    // The line edit's text at the last press of OK; empty before that.
    const QString &driverShowName() const { return driverShowName_; }

private:
    std::unique_ptr<Ui::ModifyPrinterDriverNameDlg> ui_;
    QString driverShowName_;
};
