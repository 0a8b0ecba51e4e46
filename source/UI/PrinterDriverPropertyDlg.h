#pragma once

#include "Driver/DriverSettings.h"
#include "FramelessWidget/Common/CommonFramelessDialog.h"
#include "IRipEngineDriverUI.h"

#include <QString>

#include <functional>
#include <memory>

class CommonPropertyRows;
class DriverSession;
class IccProfileCache;
class IccProfileRow;
class InkChannelRows;
class WheelGuard;

namespace Ui {
class PrinterDriverPropertyDlg;
}

// The print properties of one installed driver, as the operator checks and
// edits them before a job: resolution, paper and ink (as one combined type),
// ICC profiles and rendering intent, ink density and maximum ink per channel,
// the ink order, the driver's other enumerated properties and the job's extra
// options.
//
// Every value lives in the print-parameter handler, which the dialog reaches
// through a DriverSession only. Construction selects the driver and shows
// its settings; OK collects them from the widgets, writes them back and
// commits the driver. Browsing combined types already stores the
// edits of the combination being left in the handler's working state, so
// that each combination keeps its own values; only OK commits them.
//
// Run it with exec(); it closes with Accepted when the properties were
// written, Rejected otherwise.
class PrinterDriverPropertyDlg : public CommonFramelessDialog
{
    Q_OBJECT

public:
    PrinterDriverPropertyDlg(const QString &driverId, QWidget *parent);
    ~PrinterDriverPropertyDlg() override;

    // Loads the job's extra option into the extra-option section and shows
    // that section; without a call the section stays hidden.
    void setExtraOption(const RipExtraOption &option);
    // The extra option as the operator left it (the loaded one when the
    // section was not touched).
    const RipExtraOption &extraOption() const;

private slots:
    void on_advancedStateChanged(int state);
    void on_paperChanged(int index);
    void on_dpiChanged(int index);
    void on_inkChanged(int index);
    void on_combinedTypeChanged(int index);
    void on_selectICC_RGB();
    void on_selectICC_CMYK();
    void on_selectICC_Curve();
    void on_ok();
    void on_cancel();

protected:
    void closeEvent(QCloseEvent *event) override;
    void done(int result) override;
    void showEvent(QShowEvent *event) override;

private:
    void setupDetailSections();
    void setupKeyboardAndNames();
    void setupConnections();
    void restoreGeometryFromSettings();
    void settleLayout();
    void saveWindowRecord();

    bool read();
    void adjustCommonPropertyUI();
    void fillCombinedTypes();
    void showCombination(const CombinationSettings &settings);
    void showIcc(const IccSettings &icc);

    CombinationSettings collectCombination() const;
    DriverSettings collect() const;
    bool write();

    // Stores the edits of the combination being left in the handler,
    // selects the new one through `select` and shows its values.
    void switchCombination(const std::function<void()> &select);

    void selectIccFile(const QString &caption, const QString &targetDir, IccProfileRow *row);
    QString copyIccFile(const QString &srcFilePath, QString dstDir);

    std::unique_ptr<Ui::PrinterDriverPropertyDlg> ui_;
    QString driverId_;
    // The talk with the print-parameter handler; none without a handler.
    std::unique_ptr<DriverSession> session_;
    // Lets the mouse wheel scroll the page over controls without focus.
    WheelGuard *wheelGuard_ = nullptr;
    // True once read() has selected the driver: nothing is written before.
    bool loaded_ = false;
    bool advancedMode_ = false;
    // Resolution, paper and ink as chosen in the dialog, and the other
    // properties as read.
    DriverChoices choices_;
    CommonPropertyRows *commonProperties_ = nullptr;
    InkChannelRows *channelRows_ = nullptr;
    // The stored profiles' checks, and the three profile rows of the ICC
    // section.
    std::unique_ptr<IccProfileCache> iccProfiles_;
    IccProfileRow *iccRgb_ = nullptr;
    IccProfileRow *iccCmyk_ = nullptr;
    IccProfileRow *iccCurve_ = nullptr;
};
