#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

namespace bex::printparams {

// A printer description (.prs file): the driver's name, its .pdv file, its
// mode id, its enumerated settings and its ink channels, plus the settings
// that belong to one combination of resolution, paper and ink (ICC profiles,
// and channels that differ from the driver-wide ones). The file format is
// described in docs/prs-format.md.
//
// A document is only ever made by parse(), which accepts nothing that would
// not fit the fixed fields of the handler's records; the setters of the
// handler keep it that way.

enum class EnumKind
{
    Common = -1,
    Resolution = 0,
    Paper = 1,
    Ink = 2,
};

struct PrsEnumValue
{
    QString text;
    QString textEn;   // empty when the value has no English text
    quint32 xDpi = 0; // resolution values only
    quint32 yDpi = 0;
};

struct PrsEnum
{
    quint32 enumId = 0;
    EnumKind kind = EnumKind::Common;
    QString key;
    QString keyEn;
    QVector<PrsEnumValue> values;
    int selected = 0;
};

struct PrsChannel
{
    QString name;
    double density = 0.0;
    double maxInk = 1.0;
    int order = 0;
    bool on = true;
};

struct PrsIcc
{
    QString rgb;
    QString cmyk;
    QString output;
    int intent = 0;
};

struct PrsCombination
{
    int resolution = 0;
    int paper = 0;
    int ink = 0;
    std::optional<PrsIcc> icc;
    std::optional<QVector<PrsChannel>> channels;
};

// Limits a document must keep, besides the text capacities of the records.
constexpr int kMaxEnums = 64;
constexpr int kMaxEnumValues = 256;
constexpr int kMaxChannels = 32;
constexpr int kMaxCombinations = 4096;
constexpr quint32 kMaxDpi = 100000;
constexpr double kMinDensity = -3.0;
constexpr double kMaxDensity = 3.0;
constexpr double kMinMaxInk = 0.0;
constexpr double kMaxMaxInk = 1.0;
constexpr qint64 kMaxPrsFileSize = 4 * 1024 * 1024;

class PrsDocument
{
public:
    // Reads and checks a .prs file; nullopt with a reason in error when it
    // is missing, unreadable or not a valid description.
    static std::optional<PrsDocument> load(const QString &path, QString *error);
    static std::optional<PrsDocument> parse(const QByteArray &data, QString *error);

    QByteArray toJson() const;
    // Writes the file atomically: either the whole new file or the old one.
    bool save(const QString &path, QString *error) const;

    QString driverName;
    QString pdvFile; // empty when the driver has none
    qint32 modeId = 0;
    QVector<PrsEnum> enums;
    QVector<PrsChannel> channels;
    QVector<PrsCombination> combinations;

    // Position in enums of the setting with this id or kind, -1 if none.
    int indexOfEnum(quint32 enumId) const;
    int indexOfKind(EnumKind kind) const;

    // The combination of the selected resolution, paper and ink; null when
    // the file holds nothing for it.
    const PrsCombination *currentCombination() const;
    PrsCombination *currentCombination();
    // The current combination, added when the file holds none yet.
    PrsCombination &ensureCurrentCombination();
    // The channels that apply now: the combination's own, else the driver's.
    const QVector<PrsChannel> &currentChannels() const;
    QVector<PrsChannel> &currentChannels();

private:
    int selectedOf(EnumKind kind) const;
};

// True when text, in the local 8-bit encoding and with its terminating zero,
// fits a field of capacity bytes and holds no zero of its own.
bool fitsField(const QString &text, int capacity);

} // namespace bex::printparams
