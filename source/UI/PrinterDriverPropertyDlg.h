#pragma once

#include "FramelessWidget/Common/CommonFramelessDialog.h"
#include "IRipEngineDriverUI.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

#include <memory>

class IccProfileCache;
class IccProfileRow;
class IUIPrintParamsHandler;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QSpinBox;
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
// Every value lives in the print-parameter handler. Construction selects the
// driver in the handler and reads it into the widgets; OK writes everything
// back and commits the driver. Browsing combined types already stores the
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
    // One enumerated property the dialog edits through its own combo boxes:
    // the handler's id of the property, the chosen value and all values.
    struct EnumSelection
    {
        int enumId = -1;
        int index = -1;
        QStringList values;
    };

    // The widgets of one ink channel, made once per channel name.
    struct ChannelRows
    {
        QLabel *densityLabel = nullptr;
        QWidget *densitySlider = nullptr;
        QDoubleSpinBox *densitySpinBox = nullptr;
        QLabel *maxInkLabel = nullptr;
        QWidget *maxInkSlider = nullptr;
        QSpinBox *maxInkSpinBox = nullptr;
        QLabel *percentLabel = nullptr;

        // Shows or hides every widget of the channel in both grids.
        void setVisible(bool visible) const;
    };

    void setupDetailSections();
    void setupKeyboardAndNames();
    void setupConnections();
    void restoreGeometryFromSettings();
    void settleLayout();
    void saveWindowRecord();

    bool read();
    void readEnumItems();
    void adjustCommonPropertyUI();
    void fillCombinedTypes();
    bool readICC();
    bool readChannelColorInfo();
    bool readInkOrderInfo();
    ChannelRows &channelRows(const QString &name, const char *colourWord);

    bool write();
    bool writeDPI();
    bool writePaper();
    bool writeInk();
    bool writeICC();
    bool writeChannelColorInfo();
    bool writeInkOrderInfo();
    bool writeCommonProperties();
    bool setEnumItem(const EnumSelection &selection);

    // Stores the edits of the combination being left, selects the new one in
    // the handler through `writeSelection` and shows its values.
    template <typename WriteSelection>
    void switchCombination(WriteSelection writeSelection);

    void selectIccFile(const QString &caption, const QString &targetDir, IccProfileRow *row);
    QString copyIccFile(const QString &srcFilePath, QString dstDir);

    std::unique_ptr<Ui::PrinterDriverPropertyDlg> ui_;
    QString driverId_;
    IUIPrintParamsHandler *handler_ = nullptr;
    // Lets the mouse wheel scroll the page over controls without focus.
    WheelGuard *wheelGuard_ = nullptr;
    // True once read() has selected the driver: nothing is written before.
    bool loaded_ = false;
    bool advancedMode_ = false;
    EnumSelection dpi_;
    EnumSelection paper_;
    EnumSelection ink_;
    // enumId -> combo box of a common property; ordered, so that writing
    // visits the properties in a fixed order.
    QMap<int, QComboBox *> commonProperties_;
    QHash<QString, ChannelRows> channelRows_;
    // The stored profiles' checks, and the three profile rows of the ICC
    // section.
    std::unique_ptr<IccProfileCache> iccProfiles_;
    IccProfileRow *iccRgb_ = nullptr;
    IccProfileRow *iccCmyk_ = nullptr;
    IccProfileRow *iccCurve_ = nullptr;
};
