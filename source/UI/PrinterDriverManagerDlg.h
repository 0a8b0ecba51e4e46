#pragma once

#include "FramelessWidget/Common/CommonFramelessDialog.h"

#include "UI/PrinterDriverManager.h"

#include <memory>

class QListWidgetItem;

namespace Ui {
class PrinterDriverManagerDlg;
}

// The printer management window: lists the installed drivers, marks the
// default one, and installs, deletes, renames, edits, exports and imports
// drivers. Every change goes straight to the driver manager (or to the
// package helper) at the moment the operator asks for it; the dialog keeps
// nothing but its rows. When exec() returns, the caller reads the default
// driver from the manager.
class PrinterDriverManagerDlg : public CommonFramelessDialog
{
    Q_OBJECT

public:
    explicit PrinterDriverManagerDlg(QWidget *parent);
    ~PrinterDriverManagerDlg() override;

private slots:
    void on_installPrinterDriver();
    void on_delPrinterDriver();
    void on_printerDriverProperty();
    void on_setDefaultPrinterDriver();
    void on_modifyDriverShowName();
    void on_installCustomizedPrinterDriver();
    void on_importDriverPackage();
    void on_exportDriverPackage();
    void on_itemClicked(QListWidgetItem *item);
    void on_quit();

private:
    void initialize();
    // A row for driver, its text marked when it is the default driver.
    QListWidgetItem *createItem(const PrinterDriverManager::DriverInfo &driver, bool isDefault) const;
    // Appends a row for a driver just installed and selects it.
    void appendInstalledDriver(const PrinterDriverManager::DriverInfo &driver);
    // Turns the three buttons that act on the selected row on or off.
    void setRowButtonsEnabled(bool enabled);

    std::unique_ptr<Ui::PrinterDriverManagerDlg> ui_;
    // The row of the default driver; null when no listed driver is it.
    QListWidgetItem *defaultItem_ = nullptr;
};
