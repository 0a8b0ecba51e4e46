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

    bool operator==(const PrsChannel &other) const
    {
        return name == other.name && density == other.density && maxInk == other.maxInk &&
               order == other.order && on == other.on;
    }
    bool operator!=(const PrsChannel &other) const { return !(*this == other); }
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
    // The current combination, added when the file holds none yet; null
    // when it would have to be added and the file already holds
    // kMaxCombinations.
    PrsCombination *ensureCurrentCombination();
    // The channels that apply now: the combination's own, else the driver's.
    const QVector<PrsChannel> &currentChannels() const;
    // Makes edited the channels of the current combination. The driver-wide
    // list is never changed: a combination that has no channels of its own
    // gets a copy on its first change, so that an ink limit set for one
    // medium does not reach the others. Writing back what applies already
    // changes nothing. False when the combination would have to be added to
    // a file that holds kMaxCombinations.
    bool setCurrentChannels(const QVector<PrsChannel> &edited);

private:
    int selectedOf(EnumKind kind) const;
};

// True when the local 8-bit encoding holds text exactly (decoding its bytes
// gives text back) and the bytes, with their terminating zero, fit a field
// of capacity bytes and hold no zero of their own.
bool fitsField(const QString &text, int capacity);

// True when name can be an ICC profile name: empty (no profile), or a path
// relative to its ICC folder that stays inside it: not absolute, no drive
// letter or other colon, no empty, "." or ".." component, no control
// character. Both '/' and '\\' count as separators, as on Windows.
bool isIccProfileName(const QString &name);

} // namespace bex::printparams
