#include "UI/InkChannelRows.h"

#include "Driver/InkNames.h"
#include "UI/SubWidget/DoubleSlider.h"

#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

namespace {

// The rows speak as part of the property dialog.
QString translated(const char *text)
{
    return QCoreApplication::translate("PrinterDriverPropertyDlg", text);
}

} // namespace

InkChannelRows::InkChannelRows(QGridLayout *densityGrid, QGridLayout *maxInkGrid, QObject *parent)
    : QObject(parent)
    , densityGrid_(densityGrid)
    , maxInkGrid_(maxInkGrid)
{}

void InkChannelRows::show(const QVector<ChannelSetting> &channels)
{
    for (const Row &row : qAsConst(rows_))
        row.setVisible(false);
    for (const ChannelSetting &channel : channels) {
        const bex::InkName ink = bex::inkName(channel.name);
        const QString label = ink.label ? translated(ink.label) : channel.name;
        const Row &rows = row(channel.name, ink.styleWord);
        rows.setVisible(true);
        rows.densityLabel->setText(label);
        rows.maxInkLabel->setText(label);
        // Named by their channel for a screen reader, which does not see
        // the row's label beside them.
        const QString densityName =
            translated(QT_TRANSLATE_NOOP("PrinterDriverPropertyDlg", "%1 浓度")).arg(label);
        const QString maxInkName =
            translated(QT_TRANSLATE_NOOP("PrinterDriverPropertyDlg", "%1 最大墨量")).arg(label);
        rows.densitySlider->setAccessibleName(densityName);
        rows.densitySpinBox->setAccessibleName(densityName);
        rows.maxInkSlider->setAccessibleName(maxInkName);
        rows.maxInkSpinBox->setAccessibleName(maxInkName);
        const bool densityEditable = !bex::densityFollowsFullInk(channel.name);
        rows.densitySlider->setEnabled(densityEditable);
        rows.densitySpinBox->setEnabled(densityEditable);
        rows.densitySpinBox->setValue(channel.density);
        rows.maxInkSpinBox->setValue(channel.maxInkPercent);
    }
}

QVector<ChannelSetting> InkChannelRows::settings() const
{
    QVector<ChannelSetting> channels;
    channels.reserve(rows_.size());
    for (auto it = rows_.cbegin(); it != rows_.cend(); ++it)
        channels << ChannelSetting{it.key(), it->densitySpinBox->value(), it->maxInkSpinBox->value()};
    return channels;
}

InkChannelRows::Row &InkChannelRows::row(const QString &name, const char *styleWord)
{
    auto found = rows_.find(name);
    if (found != rows_.end())
        return *found;
    const int index = rows_.size();
    Row row;
    addDensityRow(row, index, styleWord);
    addMaxInkRow(row, index, styleWord);
    return *rows_.insert(name, row);
}

void InkChannelRows::addDensityRow(Row &row, int index, const char *styleWord)
{
    row.densityLabel = new QLabel;
    auto *slider = new DoubleSlider(Qt::Horizontal);
    slider->setDecimals(2);
    slider->setRange(-3.0, 3.0);
    slider->setProperty(styleWord, true);
    slider->setFocusPolicy(Qt::StrongFocus);
    row.densitySlider = slider;
    auto *spinBox = new QDoubleSpinBox;
    spinBox->setRange(-3.0, 3.0);
    spinBox->setDecimals(2);
    spinBox->setSingleStep(0.01);
    spinBox->setButtonSymbols(QAbstractSpinBox::NoButtons);
    spinBox->setProperty("NoButtons", true);
    spinBox->setFocusPolicy(Qt::StrongFocus);
    row.densitySpinBox = spinBox;
    connect(slider, qOverload<double>(&DoubleSlider::valueChanged), spinBox, &QDoubleSpinBox::setValue);
    // The slider only holds whole hundredths: a typed value is not echoed
    // back in its truncated form.
    connect(spinBox, qOverload<double>(&QDoubleSpinBox::valueChanged), slider, [slider](double value) {
        const QSignalBlocker blocker(slider);
        slider->setValue(value);
    });
    densityGrid_->addWidget(row.densityLabel, index, 0);
    densityGrid_->addWidget(slider, index, 1);
    densityGrid_->addWidget(spinBox, index, 2);
}

void InkChannelRows::addMaxInkRow(Row &row, int index, const char *styleWord)
{
    row.maxInkLabel = new QLabel;
    auto *slider = new QSlider(Qt::Horizontal);
    slider->setRange(0, 100);
    slider->setProperty(styleWord, true);
    row.maxInkSlider = slider;
    auto *spinBox = new QSpinBox;
    spinBox->setRange(0, 100);
    spinBox->setSingleStep(1);
    spinBox->setButtonSymbols(QAbstractSpinBox::NoButtons);
    spinBox->setProperty("NoButtons", true);
    row.maxInkSpinBox = spinBox;
    connect(slider, &QSlider::valueChanged, spinBox, &QSpinBox::setValue);
    connect(spinBox, qOverload<int>(&QSpinBox::valueChanged), slider, &QSlider::setValue);
    row.percentLabel = new QLabel(QStringLiteral("%"));
    maxInkGrid_->addWidget(row.maxInkLabel, index, 0);
    maxInkGrid_->addWidget(slider, index, 1);
    maxInkGrid_->addWidget(spinBox, index, 2);
    maxInkGrid_->addWidget(row.percentLabel, index, 3);
}

void InkChannelRows::Row::setVisible(bool visible) const
{
    for (QWidget *widget :
         {static_cast<QWidget *>(densityLabel), densitySlider, static_cast<QWidget *>(densitySpinBox),
          static_cast<QWidget *>(maxInkLabel), maxInkSlider, static_cast<QWidget *>(maxInkSpinBox),
          static_cast<QWidget *>(percentLabel)})
        widget->setVisible(visible);
}
