#include "Config/PrinterDriverConfig.h"

#include "Common/Logging.h"
#include "Config/UIModuleConfig.h"

#include <QCoreApplication>
#include <QDir>
#include <QSettings>

#include <mutex>

namespace {
const QString keySaveRootDir = QStringLiteral("saveRootDir");
const QString keyOpenRootDir = QStringLiteral("openRootDir");
const QString keyIccSaveRootDir = QStringLiteral("iccSaveRootDir");
const QString keyIccOpenRootDir = QStringLiteral("iccOpenRootDir");
const QString keyDefaultDriverId = QStringLiteral("defaultDriverId");
const QString keyShowIccDetail = QStringLiteral("bShowIccDetail");
const QString keyShowInkDetail = QStringLiteral("bShowInkDetail");
const QString keyShowOtherPropertyDetail = QStringLiteral("bShowOtherPropertyDetail");
const QString keyShowExtraOptionDetail = QStringLiteral("bShowExtraOptionDetail");
const QString keyPromptDriverPropertyDlg = QStringLiteral("bPromptDriverPropertyDlg");
const QString groupWindowRecord = QStringLiteral("windowRecord");
const QString keyPos = QStringLiteral("pos");
const QString keySize = QStringLiteral("size");
const QString defaultRootDir = QStringLiteral("D:");
} // namespace

std::shared_ptr<PrinterDriverConfig> PrinterDriverConfig::instance()
{
    static std::once_flag once;
    static std::shared_ptr<PrinterDriverConfig> config;
    std::call_once(once, [] { config.reset(new PrinterDriverConfig); });
    return config;
}

PrinterDriverConfig::PrinterDriverConfig()
{
    const UIModuleConfig *moduleConfig = UIModuleConfig::instance();
    const QString configDir = moduleConfig->configDir();
    const QString cacheDir = moduleConfig->cacheDir();
    configFilePath_ = configDir + QStringLiteral("/PrinterDriverConfig.ini");
    tempDir_ = cacheDir + QStringLiteral("/");

    // The logged path is the settings file's, not the folder's: the message
    // has always named the file.
    if (!QDir().mkpath(configDir))
        BEX_CRITICAL(lcConfig) << "目录 -" << configFilePath_ << "创建失败";
    if (!QDir().mkpath(cacheDir))
        BEX_CRITICAL(lcConfig) << "目录 -" << tempDir_ << "创建失败";

    const QString appDir = QCoreApplication::applicationDirPath();
    dtpDir_ = appDir + QStringLiteral("/dtp/");
    dtpBinDir_ = appDir + QStringLiteral("/dtp/bin/");
    iccRgbDir_ = dtpBinDir_ + QStringLiteral("ICC Profile/RGB/");
    iccCmykDir_ = dtpBinDir_ + QStringLiteral("ICC Profile/CMYK/");
    iccOutputDir_ = dtpBinDir_ + QStringLiteral("ICC Profile/OUTPUT/");
    driverDir_ = appDir + QStringLiteral("/dtp/driver/");

    readConfig();
}

void PrinterDriverConfig::readConfig()
{
    QSettings settings(configFilePath_, QSettings::IniFormat);
    saveRootDir_ = settings.value(keySaveRootDir, defaultRootDir).toString();
    openRootDir_ = settings.value(keyOpenRootDir, defaultRootDir).toString();
    iccSaveRootDir_ = settings.value(keyIccSaveRootDir, defaultRootDir).toString();
    iccOpenRootDir_ = settings.value(keyIccOpenRootDir, defaultRootDir).toString();
    defaultDriverId_ = settings.value(keyDefaultDriverId, QString()).toString();

    bShowIccDetail_ = settings.value(keyShowIccDetail, bShowIccDetail_).toBool();
    bShowInkDetail_ = settings.value(keyShowInkDetail, bShowInkDetail_).toBool();
    bShowOtherPropertyDetail_ =
        settings.value(keyShowOtherPropertyDetail, bShowOtherPropertyDetail_).toBool();
    bShowExtraOptionDetail_ = settings.value(keyShowExtraOptionDetail, bShowExtraOptionDetail_).toBool();
    bPromptDriverPropertyDlg_ =
        settings.value(keyPromptDriverPropertyDlg, bPromptDriverPropertyDlg_).toBool();
    BEX_DEBUG(lcConfig) << "bShowIccDetail:" << bShowIccDetail_;
    BEX_DEBUG(lcConfig) << "bShowInkDetail:" << bShowInkDetail_;
    BEX_DEBUG(lcConfig) << "bShowOtherPropertyDetail:" << bShowOtherPropertyDetail_;
    BEX_DEBUG(lcConfig) << "bShowExtraOptionDetail:" << bShowExtraOptionDetail_;
    BEX_DEBUG(lcConfig) << "bPromptDriverPropertyDlg:" << bPromptDriverPropertyDlg_;

    settings.beginGroup(groupWindowRecord);
    windowPos_ = settings.value(keyPos, QPoint(0, 0)).toPoint();
    windowSize_ = settings.value(keySize, QSize()).toSize();
    settings.endGroup();
}

template <typename T>
void PrinterDriverConfig::writeThrough(T &field, const T &value, const QString &key)
{
    if (field == value)
        return;
    field = value;
    QSettings settings(configFilePath_, QSettings::IniFormat);
    settings.setValue(key, value);
}

void PrinterDriverConfig::setSaveRootDir(const QString &dir)
{
    writeThrough(saveRootDir_, dir, keySaveRootDir);
}

void PrinterDriverConfig::setOpenRootDir(const QString &dir)
{
    writeThrough(openRootDir_, dir, keyOpenRootDir);
}

void PrinterDriverConfig::setIccOpenRootDir(const QString &dir)
{
    writeThrough(iccOpenRootDir_, dir, keyIccOpenRootDir);
}

void PrinterDriverConfig::setDefaultDriverId(const QString &id)
{
    writeThrough(defaultDriverId_, id, keyDefaultDriverId);
}

void PrinterDriverConfig::setShowIccDetail(bool show)
{
    writeThrough(bShowIccDetail_, show, keyShowIccDetail);
}

void PrinterDriverConfig::setShowInkDetail(bool show)
{
    writeThrough(bShowInkDetail_, show, keyShowInkDetail);
}

void PrinterDriverConfig::setShowOtherPropertyDetail(bool show)
{
    writeThrough(bShowOtherPropertyDetail_, show, keyShowOtherPropertyDetail);
}

void PrinterDriverConfig::setShowExtraOptionDetail(bool show)
{
    writeThrough(bShowExtraOptionDetail_, show, keyShowExtraOptionDetail);
}

void PrinterDriverConfig::setPromptDriverPropertyDlg(bool prompt)
{
    writeThrough(bPromptDriverPropertyDlg_, prompt, keyPromptDriverPropertyDlg);
}

void PrinterDriverConfig::setWindowRecord(const QPoint &pos, const QSize &size)
{
    windowPos_ = pos;
    windowSize_ = size;
    QSettings settings(configFilePath_, QSettings::IniFormat);
    settings.beginGroup(groupWindowRecord);
    settings.setValue(keyPos, pos);
    settings.setValue(keySize, size);
    settings.endGroup();
}
