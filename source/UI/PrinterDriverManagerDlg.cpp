#include "UI/PrinterDriverManagerDlg.h"
#include "ui_PrinterDriverManagerDlg.h"

#include "Common/Logging.h"
#include "Config/PrinterDriverConfig.h"
#include "FramelessWidget/Common/CommonFramelessMessageBox.h"
#include "UI/DialogForm.h"
#include "UI/InstallPrinterDriverDlg.h"
#include "UI/ListItems.h"
#include "UI/ModifyPrinterDriverNameDlg.h"
#include "UI/PrinterDriverPackageHelper.h"
#include "UI/PrinterDriverPropertyDlg.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

#include <utility>

namespace {

// Every row keeps its driver's id and its shown name without the default
// mark, from which the text is made again when the mark goes.
constexpr int driverIdRole = Qt::UserRole + 1;
constexpr int showNameRole = Qt::UserRole + 2;

const QString packageSuffix = QStringLiteral(".bex_driver");

QString driverIdOf(const QListWidgetItem *item)
{
    return item->data(driverIdRole).toString();
}

} // namespace

PrinterDriverManagerDlg::PrinterDriverManagerDlg(QWidget *parent)
    : CommonFramelessDialog(parent)
    , ui_(setupDialogForm<Ui::PrinterDriverManagerDlg>(*this))
{
    initialize();
}

PrinterDriverManagerDlg::~PrinterDriverManagerDlg() = default;

void PrinterDriverManagerDlg::initialize()
{
    // A list speaks no title of its own: a screen reader names it by the
    // label above it.
    ui_->label->setBuddy(ui_->listWidget_);
    ui_->listWidget_->setAccessibleName(ui_->label->text());

    PrinterDriverManager *manager = PrinterDriverManager::instance();
    const QVector<PrinterDriverManager::DriverInfoPtr> drivers = manager->obtainInstalledDrivers();
    const QString defaultId = manager->defaultDriverId();
    for (const PrinterDriverManager::DriverInfoPtr &driver : drivers) {
        const bool isDefault = driver->id == defaultId;
        QListWidgetItem *item = createItem(*driver, isDefault);
        ui_->listWidget_->addItem(item);
        if (isDefault)
            defaultItem_ = item;
    }

    setRowButtonsEnabled(false);
    connect(ui_->listWidget_, &QListWidget::itemClicked, this, &PrinterDriverManagerDlg::on_itemClicked);

    if (ui_->listWidget_->count() > 0)
        ListItems::select(ui_->listWidget_, defaultItem_ ? defaultItem_ : ui_->listWidget_->item(0));

    // The eight operations and quit: styled alike, each on its own slot.
    using Slot = void (PrinterDriverManagerDlg::*)();
    const std::pair<QPushButton *, Slot> operations[] = {
        {ui_->btn_installPrinterDriver_, &PrinterDriverManagerDlg::on_installPrinterDriver},
        {ui_->btn_delPrinterDriver_, &PrinterDriverManagerDlg::on_delPrinterDriver},
        {ui_->btn_printerDriverProperty_, &PrinterDriverManagerDlg::on_printerDriverProperty},
        {ui_->btn_setDefaultPrinterDriver_, &PrinterDriverManagerDlg::on_setDefaultPrinterDriver},
        {ui_->btn_modifyDriverShowName_, &PrinterDriverManagerDlg::on_modifyDriverShowName},
        {ui_->btn_installCustomizedPrinterDriver_,
         &PrinterDriverManagerDlg::on_installCustomizedPrinterDriver},
        {ui_->btn_importDriverPackage_, &PrinterDriverManagerDlg::on_importDriverPackage},
        {ui_->btn_exportDriverPackage_, &PrinterDriverManagerDlg::on_exportDriverPackage},
        {ui_->btn_quit_, &PrinterDriverManagerDlg::on_quit}};
    for (const auto &[button, slot] : operations)
        button->setProperty("defaultStyle_normal", true);
    ui_->btn_quit_->setDefault(true);
    for (const auto &[button, slot] : operations)
        connect(button, &QPushButton::clicked, this, slot);

    ui_->btn_installCustomizedPrinterDriver_->setVisible(false);
}

QListWidgetItem *PrinterDriverManagerDlg::createItem(const PrinterDriverManager::DriverInfo &driver,
                                                     bool isDefault) const
{
    const QString text = isDefault ? driver.showName + tr(" (默认)") : driver.showName;
    QListWidgetItem *item = ListItems::create(text, driver.prsPath);
    item->setData(driverIdRole, driver.id);
    item->setData(showNameRole, driver.showName);
    return item;
}

void PrinterDriverManagerDlg::appendInstalledDriver(const PrinterDriverManager::DriverInfo &driver)
{
    QListWidgetItem *item = createItem(driver, false);
    ui_->listWidget_->addItem(item);
    ListItems::select(ui_->listWidget_, item);
}

void PrinterDriverManagerDlg::setRowButtonsEnabled(bool enabled)
{
    ui_->btn_delPrinterDriver_->setEnabled(enabled);
    ui_->btn_printerDriverProperty_->setEnabled(enabled);
    ui_->btn_setDefaultPrinterDriver_->setEnabled(enabled);
}

void PrinterDriverManagerDlg::on_installPrinterDriver()
{
    BEX_DEBUG(lcDialog) << "";

    InstallPrinterDriverDlg dialog(this);
    if (dialog.exec() != QDialog::Accepted || dialog.installedDriverId().isEmpty())
        return;

    const QString id = dialog.installedDriverId();
    BEX_DEBUG(lcDialog) << id;
    // The install dialog has just put the driver into the manager's table.
    const PrinterDriverManager::DriverInfoPtr driver = PrinterDriverManager::instance()->findDriverInfo(id);
    if (!driver) {
        BEX_CRITICAL(lcDialog) << "check your code";
        return;
    }
    appendInstalledDriver(*driver);
}

void PrinterDriverManagerDlg::on_delPrinterDriver()
{
    BEX_DEBUG(lcDialog) << "";

    QListWidgetItem *item = ui_->listWidget_->currentItem();
    if (!item)
        return;

    // The row goes whatever the library answers: a driver it no longer
    // knows is as good as deleted, and the manager logs the refusal.
    PrinterDriverManager::instance()->deleteInstalledDriver(driverIdOf(item));

    delete ui_->listWidget_->takeItem(ui_->listWidget_->row(item));
    if (item == defaultItem_)
        defaultItem_ = nullptr;

    setRowButtonsEnabled(false);
    if (QListWidgetItem *first = ui_->listWidget_->item(0))
        ListItems::select(ui_->listWidget_, first);
}

void PrinterDriverManagerDlg::on_printerDriverProperty()
{
    BEX_DEBUG(lcDialog) << "";

    const QListWidgetItem *item = ui_->listWidget_->currentItem();
    if (!item)
        return;

    PrinterDriverPropertyDlg dialog(driverIdOf(item), this);
    dialog.exec();
}

void PrinterDriverManagerDlg::on_setDefaultPrinterDriver()
{
    BEX_DEBUG(lcDialog) << "";

    QListWidgetItem *item = ui_->listWidget_->currentItem();
    if (!item)
        return;

    if (!PrinterDriverManager::instance()->setDefaultDriverId(driverIdOf(item))) {
        CommonFramelessMessageBox::warning(this, tr("温馨提示"), tr("设置默认打印机失败"), tr("确定"), 0,
                                           QString(), nullptr, Qt::AlignHCenter);
        return;
    }

    if (item != defaultItem_) {
        BEX_DEBUG(lcDialog) << "默认的打印机驱动变化了";
        if (defaultItem_)
            defaultItem_->setText(defaultItem_->data(showNameRole).toString());
        item->setText(item->data(showNameRole).toString() + tr(" (默认)"));
    }
    defaultItem_ = item;
}

void PrinterDriverManagerDlg::on_modifyDriverShowName()
{
    QListWidgetItem *item = ui_->listWidget_->currentItem();
    if (!item)
        return;

    const QString id = driverIdOf(item);
    PrinterDriverManager *manager = PrinterDriverManager::instance();
    const PrinterDriverManager::DriverInfoPtr driver = manager->findDriverInfo(id);
    if (!driver)
        return;

    ModifyPrinterDriverNameDlg dialog(driver->showName, this);
    if (dialog.exec() != QDialog::Accepted)
        return;

    const QString newName = dialog.driverShowName();
    if (!manager->setDriverShowName(id, newName)) {
        CommonFramelessMessageBox::error(this, tr("温馨提示"), tr("打印机名称修改失败"), tr("确定"), 0,
                                         QString(), nullptr, Qt::AlignHCenter);
        return;
    }

    item->setData(showNameRole, newName);
    item->setText(item == defaultItem_ ? newName + tr(" (默认)") : newName);
}

void PrinterDriverManagerDlg::on_installCustomizedPrinterDriver()
{
    // The button is hidden: customised drivers are not installed from here.
}

void PrinterDriverManagerDlg::on_importDriverPackage()
{
    BEX_DEBUG(lcDialog) << "";

    const std::shared_ptr<PrinterDriverConfig> config = PrinterDriverConfig::instance();
    const QString packagePath = QFileDialog::getOpenFileName(
        this, tr("安装自定义打印机"), config->openRootDir(), tr("打印机 (*.bex_driver)"));
    if (packagePath.isEmpty())
        return;
    config->setOpenRootDir(QFileInfo(packagePath).absolutePath());

    PrinterDriverPackageHelper helper(this);
    QStringList prsPaths;
    if (!helper.importPackage(packagePath, prsPaths)) {
        BEX_CRITICAL(lcDialog) << "importPackage failed - file:" << packagePath;
        CommonFramelessMessageBox::error(this, tr("温馨提示"), tr("驱动导入失败"), tr("确认"), 0, QString(),
                                         nullptr, Qt::AlignHCenter);
        return;
    }
    if (prsPaths.isEmpty()) {
        BEX_CRITICAL(lcDialog) << "check your code";
        return;
    }

    PrinterDriverManager *manager = PrinterDriverManager::instance();
    for (const QString &prsPath : qAsConst(prsPaths)) {
        if (manager->findDriverInfoByPrsPath(prsPath))
            continue;
        const PrinterDriverManager::DriverInfoPtr driver = manager->installDriver(prsPath);
        if (!driver) {
            BEX_CRITICAL(lcDialog) << "installPrinterDriver failed";
            CommonFramelessMessageBox::error(this, tr("温馨提示"), tr("驱动安装失败"), tr("确认"), 0,
                                             QString(), nullptr, Qt::AlignHCenter);
            return;
        }
        appendInstalledDriver(*driver);
    }
}

void PrinterDriverManagerDlg::on_exportDriverPackage()
{
    BEX_DEBUG(lcDialog) << "";

    const QListWidgetItem *item = ui_->listWidget_->currentItem();
    if (!item)
        return;

    const QString id = driverIdOf(item);
    const PrinterDriverManager::DriverInfoPtr driver = PrinterDriverManager::instance()->findDriverInfo(id);
    if (!driver)
        return;

    const std::shared_ptr<PrinterDriverConfig> config = PrinterDriverConfig::instance();
    const QString suggestedPath =
        QDir(config->saveRootDir()).absoluteFilePath(QFileInfo(driver->prsPath).baseName() + packageSuffix);
    const QString packagePath =
        QFileDialog::getSaveFileName(this, tr("导出打印机"), suggestedPath, tr("打印机 (*.bex_driver)"));
    if (packagePath.isEmpty())
        return;
    config->setSaveRootDir(QFileInfo(packagePath).absolutePath());

    PrinterDriverPackageHelper helper(this);
    if (!helper.exportPackage(packagePath, driver->prsPath, id)) {
        BEX_CRITICAL(lcDialog) << "exportPackage failed - file:" << driver->prsPath;
        CommonFramelessMessageBox::error(this, tr("温馨提示"), tr("驱动导出失败"), tr("确认"), 0, QString(),
                                         nullptr, Qt::AlignHCenter);
    }
}

void PrinterDriverManagerDlg::on_itemClicked(QListWidgetItem *item)
{
    Q_UNUSED(item)
    setRowButtonsEnabled(true);
}

void PrinterDriverManagerDlg::on_quit()
{
    QDialog::accept();
}
