#include "UI/InstallPrinterDriverDlg.h"
#include "ui_InstallPrinterDriverDlg.h"

#include "Common/Logging.h"
#include "Config/PrinterDriverConfig.h"
#include "FramelessWidget/Common/CommonFramelessMessageBox.h"
#include "UI/DialogForm.h"
#include "UI/ListItems.h"
#include "UI/PrinterDriverManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

// The vendor row keeps the folder of the available .prs files, a printer
// row the absolute path of its file.
constexpr int vendorDirRole = Qt::UserRole + 1;
constexpr int prsPathRole = Qt::UserRole + 2;

// Temporary copies handed to the host lie in the same folder; they are no
// drivers to install.
const QString temporaryPrsSuffix = QStringLiteral("temp.prs");

} // namespace

InstallPrinterDriverDlg::InstallPrinterDriverDlg(QWidget *parent)
    : CommonFramelessDialog(parent)
    , ui_(setupDialogForm<Ui::InstallPrinterDriverDlg>(*this))
{
    initialize();

    ui_->btn_install_->setProperty("defaultStyle_normal", true);
    ui_->btn_del_->setProperty("defaultStyle_normal", true);
    ui_->btn_cancel_->setProperty("defaultStyle_normal", true);
    ui_->btn_cancel_->setDefault(true);
}

InstallPrinterDriverDlg::~InstallPrinterDriverDlg() = default;

QStringList InstallPrinterDriverDlg::listFiles(const QString &directory, const QString &suffix)
{
    const QDir dir(directory);
    if (!dir.exists())
        return {};

    const QFileInfoList entries = dir.entryInfoList(QDir::Files | QDir::NoDotAndDotDot, QDir::Name);
    const bool everyFile = suffix == QLatin1String("*") || suffix == QLatin1String(".*");
    const QString wanted = suffix.startsWith(QLatin1Char('.')) ? suffix.mid(1) : suffix;

    QStringList files;
    for (const QFileInfo &entry : entries) {
        if (everyFile || entry.suffix().compare(wanted, Qt::CaseInsensitive) == 0 ||
            entry.completeSuffix().compare(wanted, Qt::CaseInsensitive) == 0)
            files << entry.absoluteFilePath();
    }
    return files;
}

void InstallPrinterDriverDlg::initialize()
{
    // A list speaks no title of its own: a screen reader names it by the
    // label above it.
    ui_->label_vendorList_->setBuddy(ui_->listWidget_vendorList_);
    ui_->listWidget_vendorList_->setAccessibleName(ui_->label_vendorList_->text());
    ui_->label_2->setBuddy(ui_->listWidget_printerDriverList_);
    ui_->listWidget_printerDriverList_->setAccessibleName(ui_->label_2->text());

    const QString dtpBinDir = PrinterDriverConfig::instance()->dtpBinDir();

    const QString vendor = QObject::tr("Bex");
    QListWidgetItem *vendorItem = ListItems::create(vendor, vendor);
    vendorItem->setData(vendorDirRole, dtpBinDir);
    ui_->listWidget_vendorList_->addItem(vendorItem);

    // One vendor only: its list stays out of sight and fills the printer
    // list at once.
    ui_->label_vendorList_->setVisible(false);
    ui_->listWidget_vendorList_->setVisible(false);

    connect(ui_->listWidget_vendorList_, &QListWidget::itemClicked, this,
            &InstallPrinterDriverDlg::on_itemClicked_vendor);
    connect(ui_->listWidget_printerDriverList_, &QListWidget::itemClicked, this,
            &InstallPrinterDriverDlg::on_itemClicked_printerDriver);
    // The arrow keys move the current row without a click: the buttons
    // follow the current row all the same.
    connect(ui_->listWidget_printerDriverList_, &QListWidget::currentItemChanged, this,
            [this](QListWidgetItem *current) {
                if (current)
                    enableButtonsFor(*current);
            });
    connect(ui_->btn_install_, &QPushButton::clicked, this,
            &InstallPrinterDriverDlg::on_installPrinterDriver);
    connect(ui_->btn_del_, &QPushButton::clicked, this, &InstallPrinterDriverDlg::on_deletePrinterDriver);
    connect(ui_->btn_cancel_, &QPushButton::clicked, this, &InstallPrinterDriverDlg::on_cancel);

    if (QListWidgetItem *first = ui_->listWidget_vendorList_->item(0))
        ListItems::select(ui_->listWidget_vendorList_, first);
}

void InstallPrinterDriverDlg::on_itemClicked_vendor(QListWidgetItem *item)
{
    ui_->listWidget_printerDriverList_->clear();
    BEX_DEBUG(lcDialog) << "vendor:" << item->text();

    const PrinterDriverManager *manager = PrinterDriverManager::instance();
    const QStringList files = listFiles(item->data(vendorDirRole).toString(), QStringLiteral(".prs"));
    for (const QString &path : files) {
        if (path.isEmpty())
            continue;
        const QFileInfo info(path);
        if (info.completeSuffix().compare(temporaryPrsSuffix, Qt::CaseInsensitive) == 0)
            continue;
        QString text = info.fileName();
        if (manager->findDriverInfoByPrsPath(path))
            text += tr(" (已安装)");
        QListWidgetItem *printerItem = ListItems::create(text, path);
        printerItem->setData(prsPathRole, path);
        ui_->listWidget_printerDriverList_->addItem(printerItem);
    }

    ui_->btn_install_->setEnabled(false);

    if (QListWidgetItem *first = ui_->listWidget_printerDriverList_->item(0))
        ListItems::select(ui_->listWidget_printerDriverList_, first);
}

void InstallPrinterDriverDlg::on_itemClicked_printerDriver(QListWidgetItem *item)
{
    const QString path = item->data(prsPathRole).toString();
    BEX_DEBUG(lcDialog) << "item:" << item->text();
    BEX_DEBUG(lcDialog) << "driverFilePath:" << path;

    if (isInstalled(*item))
        BEX_DEBUG(lcDialog) << "已经安装了";
    else
        BEX_DEBUG(lcDialog) << "未安装了";

    enableButtonsFor(*item);
}

bool InstallPrinterDriverDlg::isInstalled(const QListWidgetItem &item)
{
    return !PrinterDriverManager::instance()
                ->findDriverInfoByPrsPath(item.data(prsPathRole).toString())
                .isNull();
}

void InstallPrinterDriverDlg::enableButtonsFor(const QListWidgetItem &item)
{
    const bool installed = isInstalled(item);
    ui_->btn_install_->setEnabled(!installed);
    ui_->btn_del_->setEnabled(!installed);
}

void InstallPrinterDriverDlg::on_installPrinterDriver()
{
    QListWidgetItem *item = ui_->listWidget_printerDriverList_->currentItem();
    if (!item) {
        BEX_CRITICAL(lcDialog) << "check your code";
        reject();
        return;
    }

    const QString path = item->data(prsPathRole).toString();
    const PrinterDriverManager::DriverInfoPtr driver = PrinterDriverManager::instance()->installDriver(path);
    if (driver) {
        BEX_DEBUG(lcDialog) << "printerDriver:" << path << "安装成功";
        installedDriverId_ = driver->id;
        accept();
        return;
    }

    CommonFramelessMessageBox::error(this, tr("温馨提示"), tr("安装失败"), tr("确定"));
    reject();
}

void InstallPrinterDriverDlg::on_deletePrinterDriver()
{
    QListWidgetItem *item = ui_->listWidget_printerDriverList_->currentItem();
    if (!item)
        return;

    const QString path = item->data(prsPathRole).toString();
    if (PrinterDriverManager::instance()->findDriverInfoByPrsPath(path))
        return;

    const QString question = tr("确认删除驱动\"%1\"吗?").arg(QFileInfo(path).fileName());
    if (CommonFramelessMessageBox::error(this, tr("温馨提示"), question, tr("确定"), tr("取消"), 0) != 0)
        return;

    ui_->listWidget_printerDriverList_->removeItemWidget(item);
    delete item;
    // A read-only file would refuse the removal; the owner's write bit alone
    // is enough for it.
    QFile::setPermissions(path, QFileDevice::WriteOwner);
    QFile::remove(path);
}

void InstallPrinterDriverDlg::on_cancel()
{
    reject();
}
