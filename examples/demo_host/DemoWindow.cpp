#include "DemoWindow.h"

#include "DriverUiModule.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

DemoWindow::DemoWindow(DriverUiModule &module, QWidget *parent)
    : QWidget(parent)
    , module_(module)
{
    setWindowTitle(tr("Driver UI demo host — module %1, kind %2").arg(module.version(), module.kind()));

    language_ = new QComboBox;
    language_->addItem(QStringLiteral("中文"), int(QLocale::Chinese));
    language_->addItem(QStringLiteral("English"), int(QLocale::English));
    languageNote_ = new QLabel(tr("Choose before the first dialog: once English has been chosen, the module "
                                  "keeps showing English."));
    languageNote_->setWordWrap(true);
    auto *languageRow = new QHBoxLayout;
    languageRow->addWidget(new QLabel(tr("Interface language:")));
    languageRow->addWidget(language_);
    languageRow->addWidget(languageNote_, 1);

    manager_ = new QPushButton(tr("Driver manager…"));
    defaultDriver_ = new QLabel(tr("Default driver: not asked yet"));
    defaultDriver_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *managerRow = new QHBoxLayout;
    managerRow->addWidget(manager_);
    managerRow->addWidget(defaultDriver_, 1);
    auto *managerBox = new QGroupBox(tr("Printer drivers"));
    managerBox->setLayout(managerRow);

    printMode_ = new QComboBox;
    printMode_->addItem(tr("0: manual print after RIP"), 0);
    printMode_->addItem(tr("1: automatic print after RIP"), 1);
    printMode_->addItem(tr("2: print while ripping"), 2);
    mirror_ = new QCheckBox(tr("Mirror horizontally"));
    rip_ = new QPushButton(tr("Rip a job…"));
    auto *jobRow = new QHBoxLayout;
    jobRow->addWidget(new QLabel(tr("Print mode:")));
    jobRow->addWidget(printMode_);
    jobRow->addWidget(mirror_);
    jobRow->addStretch(1);
    jobRow->addWidget(rip_);
    result_ = new QPlainTextEdit;
    result_->setReadOnly(true);
    result_->setPlaceholderText(tr("What the property step hands back appears here."));
    auto *jobLayout = new QVBoxLayout;
    jobLayout->addLayout(jobRow);
    jobLayout->addWidget(result_);
    auto *jobBox = new QGroupBox(tr("Job"));
    jobBox->setLayout(jobLayout);

    log_ = new QPlainTextEdit;
    log_->setReadOnly(true);
    log_->setMaximumBlockCount(5000);
    log_->setLineWrapMode(QPlainTextEdit::NoWrap);
    auto *logLayout = new QVBoxLayout;
    logLayout->addWidget(log_);
    auto *logBox = new QGroupBox(tr("Module log"));
    logBox->setLayout(logLayout);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(languageRow);
    layout->addWidget(managerBox);
    layout->addWidget(jobBox, 2);
    layout->addWidget(logBox, 1);
    resize(960, 720);

    connect(language_, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &DemoWindow::on_languageChanged);
    connect(manager_, &QPushButton::clicked, this, &DemoWindow::on_openDriverManager);
    connect(rip_, &QPushButton::clicked, this, &DemoWindow::on_ripJob);
}

void DemoWindow::useLanguage(QLocale::Language language)
{
    const int index = language_->findData(int(language));
    if (index == language_->currentIndex())
        module_.ui()->setLanguage(language);
    else
        language_->setCurrentIndex(index);
}

void DemoWindow::on_languageChanged(int index)
{
    module_.ui()->setLanguage(QLocale::Language(language_->itemData(index).toInt()));
}

ManagerReport DemoWindow::runDriverManager()
{
    const ManagerReport report = openDriverManager(module_.ui(), this);
    defaultDriver_->setText(report.lines().mid(2).join(QStringLiteral("; ")));
    return report;
}

void DemoWindow::on_openDriverManager()
{
    runDriverManager();
}

void DemoWindow::setJobOption(const RipExtraOption &option)
{
    printMode_->setCurrentIndex(printMode_->findData(option.printMode));
    mirror_->setChecked(option.horizontalMirror);
}

RipExtraOption DemoWindow::jobOption() const
{
    RipExtraOption option;
    option.printMode = printMode_->currentData().toInt();
    option.horizontalMirror = mirror_->isChecked();
    return option;
}

JobReport DemoWindow::runJob()
{
    const JobReport report = ripJob(module_.ui(), this, jobOption());
    result_->setPlainText(report.lines().join(QLatin1Char('\n')));
    // The job's option as the operator left it in the property dialog.
    if (report.callbacks > 0)
        setJobOption(report.option);
    return report;
}

void DemoWindow::on_ripJob()
{
    runJob();
}
