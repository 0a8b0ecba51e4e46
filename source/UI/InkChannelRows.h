#pragma once

#include "Driver/DriverSettings.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QVector>

class QDoubleSpinBox;
class QGridLayout;
class QLabel;
class QSpinBox;

// The ink section's rows of the property dialog: per ink channel a density
// row (label, double slider, value box) and a maximum-ink row (label,
// slider, value box, "%"). A row is made the first time its channel name
// shows and kept for that name; rows of channels that the shown
// combination lacks are hidden, never left to be edited and then ignored.
class InkChannelRows : public QObject
{
    Q_OBJECT

public:
    InkChannelRows(QGridLayout *densityGrid, QGridLayout *maxInkGrid, QObject *parent);

    // Shows these channels, in this order of first appearance, with their
    // values; every other row is hidden.
    void show(const QVector<ChannelSetting> &channels);
    // The values of every row made so far.
    QVector<ChannelSetting> settings() const;

private:
    struct Row
    {
        QLabel *densityLabel = nullptr;
        QWidget *densitySlider = nullptr;
        QDoubleSpinBox *densitySpinBox = nullptr;
        QLabel *maxInkLabel = nullptr;
        QWidget *maxInkSlider = nullptr;
        QSpinBox *maxInkSpinBox = nullptr;
        QLabel *percentLabel = nullptr;

        void setVisible(bool visible) const;
    };

    Row &row(const QString &name, const char *styleWord);
    void addDensityRow(Row &row, int index, const char *styleWord);
    void addMaxInkRow(Row &row, int index, const char *styleWord);

    QGridLayout *densityGrid_;
    QGridLayout *maxInkGrid_;
    QHash<QString, Row> rows_;
};
