#pragma once

#include <QPoint>
#include <QSize>
#include <QString>

#include <memory>

// The module's per-installation settings ("PrinterDriverConfig.ini" in the
// application directory) and the directories it works in.
//
// One shared instance per process (instance()); callers keep their copy of
// the pointer only while they work. The file is read once, at creation.
// Every setter writes its one key at once, and only when the value changed;
// the window record is written on every call. The directory fields are
// derived from the application directory and never stored.
class PrinterDriverConfig
{
public:
    static std::shared_ptr<PrinterDriverConfig> instance();

    PrinterDriverConfig(const PrinterDriverConfig &) = delete;
    PrinterDriverConfig &operator=(const PrinterDriverConfig &) = delete;

    // Reads the file into the fields; missing keys give their defaults.
    void readConfig();

    QString configFilePath() const { return configFilePath_; }
    QString tempDir() const { return tempDir_; }
    QString dtpDir() const { return dtpDir_; }
    QString dtpBinDir() const { return dtpBinDir_; }
    QString iccRgbDir() const { return iccRgbDir_; }
    QString iccCmykDir() const { return iccCmykDir_; }
    QString iccOutputDir() const { return iccOutputDir_; }
    QString driverDir() const { return driverDir_; }

    QString saveRootDir() const { return saveRootDir_; }
    QString openRootDir() const { return openRootDir_; }
    // Read only: nothing in the module changes it.
    QString iccSaveRootDir() const { return iccSaveRootDir_; }
    QString iccOpenRootDir() const { return iccOpenRootDir_; }
    QString defaultDriverId() const { return defaultDriverId_; }
    bool bShowIccDetail() const { return bShowIccDetail_; }
    bool bShowInkDetail() const { return bShowInkDetail_; }
    bool bShowOtherPropertyDetail() const { return bShowOtherPropertyDetail_; }
    bool bShowExtraOptionDetail() const { return bShowExtraOptionDetail_; }
    bool bPromptDriverPropertyDlg() const { return bPromptDriverPropertyDlg_; }
    QPoint windowPos() const { return windowPos_; }
    QSize windowSize() const { return windowSize_; }

    void setSaveRootDir(const QString &dir);
    void setOpenRootDir(const QString &dir);
    void setIccOpenRootDir(const QString &dir);
    void setDefaultDriverId(const QString &id);
    void setShowIccDetail(bool show);
    void setShowInkDetail(bool show);
    void setShowOtherPropertyDetail(bool show);
    void setShowExtraOptionDetail(bool show);
    void setPromptDriverPropertyDlg(bool prompt);
    // Stores and writes both values every time, changed or not.
    void setWindowRecord(const QPoint &pos, const QSize &size);

private:
    PrinterDriverConfig();

    template <typename T>
    void writeThrough(T &field, const T &value, const QString &key);

    QString configFilePath_;
    QString tempDir_;
    QString dtpDir_;
    QString dtpBinDir_;
    QString iccRgbDir_;
    QString iccCmykDir_;
    QString iccOutputDir_;
    QString driverDir_;
    QString saveRootDir_;
    QString openRootDir_;
    QString iccSaveRootDir_;
    QString iccOpenRootDir_;
    QString defaultDriverId_;
    bool bShowIccDetail_ = true;
    bool bShowInkDetail_ = false;
    bool bShowOtherPropertyDetail_ = true;
    bool bShowExtraOptionDetail_ = true;
    bool bPromptDriverPropertyDlg_ = true;
    QPoint windowPos_{0, 0};
    QSize windowSize_;
};
