#pragma once

#include "FramelessWidget/Common/CommonFramelessDialog.h"

#include <QString>
#include <QStringList>

#include <memory>

class QListWidgetItem;

namespace Ui {
class InstallPrinterDriverDlg;
}

// Lists the printer description files (.prs) that lie ready in the
// application's "dtp/bin/" folder, marks those already installed, installs
// the chosen one through the driver manager and can delete a file that is
// not installed. After exec() returned QDialog::Accepted the caller reads
// the new driver's id from installedDriverId().
class InstallPrinterDriverDlg : public CommonFramelessDialog
{
    Q_OBJECT

public:
    explicit InstallPrinterDriverDlg(QWidget *parent);
    ~InstallPrinterDriverDlg() override;

    // Id of the driver installed by this dialog; empty unless an install
    // succeeded.
    const QString &installedDriverId() const { return installedDriverId_; }

    // The files of directory whose suffix, or else whose complete suffix,
    // equals suffix (one leading dot ignored, case ignored), as absolute
    // paths sorted by name. "*" and ".*" take every file. Only the folder
    // itself is listed, not its subfolders; a missing folder gives nothing.
    static QStringList listFiles(const QString &directory, const QString &suffix);

private slots:
    void on_itemClicked_vendor(QListWidgetItem *item);
    void on_itemClicked_printerDriver(QListWidgetItem *item);
    void on_installPrinterDriver();
    void on_deletePrinterDriver();
    void on_cancel();

private:
    void initialize();
    // Whether the file of a printer row is an installed driver's.
    static bool isInstalled(const QListWidgetItem &item);
    // Install and delete are for a file that is not installed.
    void enableButtonsFor(const QListWidgetItem &item);

    std::unique_ptr<Ui::InstallPrinterDriverDlg> ui_;
    QString installedDriverId_;
};
