#pragma once

// The print properties of one driver as plain values: what the driver
// session reads from the print-parameter handler and writes back, and what
// the property dialog shows and collects. No widgets, no handler records.

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

// One enumerated property: the handler's id of it, its key, the chosen
// value's position and all value texts.
struct EnumChoice
{
    int enumId = -1;
    QString key;
    int index = -1;
    QStringList values;
};

// One combination of resolution, paper and ink, as value positions.
struct Combination
{
    int dpi = -1;
    int paper = -1;
    int ink = -1;

    bool operator==(const Combination &other) const
    {
        return dpi == other.dpi && paper == other.paper && ink == other.ink;
    }
};

// The enumerated properties of the selected driver: resolution, paper and
// ink (which together choose the combination) and every other ("common")
// property, in the handler's order.
struct DriverChoices
{
    EnumChoice dpi;
    EnumChoice paper;
    EnumChoice ink;
    QVector<EnumChoice> common;

    Combination combination() const { return {dpi.index, paper.index, ink.index}; }
};

// The ICC profiles (file names within their folders) and the rendering
// intent of one combination. Written back without an intent, the handler's
// intent stays as it is.
struct IccSettings
{
    QString rgb;
    QString cmyk;
    QString output;
    std::optional<int> intent;
};

// Density and maximum ink of one ink channel. The maximum ink is a whole
// percent here; the handler keeps a fraction.
struct ChannelSetting
{
    QString name;
    double density = 0.0;
    int maxInkPercent = 0;
};

// One ink of the ink order: its channel (inkId), its place in the print
// order and whether it prints.
struct InkSlot
{
    int inkId = -1;
    int order = -1;
    bool isOn = true;
    QString name;
};

// The settings that belong to the selected combination. A section the
// driver has no record for is absent.
struct CombinationSettings
{
    std::optional<IccSettings> icc;
    std::optional<QVector<ChannelSetting>> channels;
    // Absent as well when the ink order cannot be shown: no channel record,
    // or counts that disagree with the channels.
    std::optional<QVector<InkSlot>> inks;
};

// Everything OK hands to the handler.
struct DriverSettings
{
    DriverChoices choices;
    CombinationSettings combination;
};
