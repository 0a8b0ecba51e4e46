#pragma once

#include "HostCalls.h"

#include <QLocale>
#include <QWidget>

class DriverUiModule;
class QCheckBox;
class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;

// The demo host's window: the interface language, the driver manager with
// the default driver it reports, a job to rip with its print mode and mirror,
// everything the property step handed back, and the module's log lines.
class DemoWindow : public QWidget
{
    Q_OBJECT

public:
    explicit DemoWindow(DriverUiModule &module, QWidget *parent = nullptr);

    // The panel that shows the module's log lines.
    QPlainTextEdit *logPanel() const { return log_; }

    // What the buttons do, for the headless tour as well.
    void useLanguage(QLocale::Language language);
    ManagerReport runDriverManager();
    JobReport runJob();
    void setJobOption(const RipExtraOption &option);

private:
    void on_languageChanged(int index);
    void on_openDriverManager();
    void on_ripJob();
    RipExtraOption jobOption() const;

    DriverUiModule &module_;
    QComboBox *language_ = nullptr;
    QLabel *languageNote_ = nullptr;
    QPushButton *manager_ = nullptr;
    QLabel *defaultDriver_ = nullptr;
    QComboBox *printMode_ = nullptr;
    QCheckBox *mirror_ = nullptr;
    QPushButton *rip_ = nullptr;
    QPlainTextEdit *result_ = nullptr;
    QPlainTextEdit *log_ = nullptr;
};
