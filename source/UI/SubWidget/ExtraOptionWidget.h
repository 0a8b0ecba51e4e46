#pragma once

#include "IRipEngineDriverUI.h"

#include <QWidget>

#include <memory>

class QButtonGroup;

namespace Ui {
class ExtraOptionWidget;
}

// The job's extra options as the user edits them: one of three print modes
// (the button ids are the printMode values) and the horizontal mirror.
class ExtraOptionWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ExtraOptionWidget(QWidget *parent = nullptr);
    ~ExtraOptionWidget() override;

    // Shows the option in the form and keeps it as given, also a print mode
    // that has no button.
    void setExtraOption(const RipExtraOption &option);
    const RipExtraOption &extraOption() const { return extraOption_; }

private:
    std::unique_ptr<Ui::ExtraOptionWidget> ui_;
    QButtonGroup *buttonGroup_ = nullptr;
    RipExtraOption extraOption_;
};
