#pragma once

#include "Driver/DriverSettings.h"

#include <QLoggingCategory>
#include <QString>
#include <QVector>

#include <functional>

class IUIPrintParamsHandler;

// The talk with the print-parameter handler about one driver's print
// properties: selecting the driver, reading its settings as plain values,
// walking its combinations of resolution, paper and ink, and writing the
// settings back. The property dialog and the package export use it; neither
// calls the handler for these itself.
//
// The handler keeps one selected driver and, for it, one selected
// combination whose records (ICC profiles, ink channels, ink order) are
// read and written. Every read and write below works on what the handler has
// selected at that moment. The session logs what it reads and every refusal
// under the logging category its user gives.
class DriverSession
{
public:
    using LogCategory = const QLoggingCategory &(*)();

    // What one write step did.
    enum class StepResult
    {
        Written,  // the handler took the value or record
        NoRecord, // the driver has no such record: nothing to write
        NotSent,  // the record and the settings do not match: left alone
        Failed,   // the handler refused, or the record is damaged
    };

    // `handler` must outlive the session.
    DriverSession(IUIPrintParamsHandler *handler, LogCategory category);

    // The handler's language flag for the interface language: 4 English,
    // 0 Chinese.
    static unsigned int languageFlag(bool english);

    // Selects the driver in the handler; false when the handler refuses it.
    bool select(const QString &driverId, unsigned int languageFlag);
    // The selected driver's name and its .pdv file name (empty when the
    // handler names none).
    QString driverName() const;
    QString pdvName() const;

    // The selected driver's enumerated properties. `problem` (when given)
    // receives why the combinations of resolution, paper and ink cannot be
    // walked: the handler does not name three distinct properties for them,
    // one is not listed, or they multiply beyond any real driver; it is
    // emptied when they can.
    DriverChoices readChoices(QString *problem = nullptr) const;

    // Visits every combination, ink outermost and resolution innermost,
    // each selected in the handler while `visit` runs; afterwards the
    // combination of `choices` is selected again. False when the handler
    // refused a selection (the walk still visits every combination).
    bool forEachCombination(const DriverChoices &choices,
                            const std::function<void(const Combination &)> &visit);
    // The combinations that have colour calibration (an ICC record), in
    // the walk's order. Afterwards the handler is left on `choices`'
    // combination when it is calibrated, else on the first calibrated one,
    // else where the walk ended.
    QVector<Combination> calibratedCombinations(const DriverChoices &choices);
    // Selects a combination: resolution, then paper, then ink.
    bool selectCombination(const DriverChoices &choices, const Combination &combination);

    // The records of the selected combination.
    CombinationSettings readCombination() const;
    std::optional<IccSettings> readIcc() const;
    // The ICC record as readIcc() gives it, without logging it.
    std::optional<IccSettings> iccSettings() const;
    std::optional<QVector<ChannelSetting>> readChannels() const;
    std::optional<QVector<InkSlot>> readInks() const;

    // The three properties that choose the combination.
    enum class Level
    {
        Dpi,
        Paper,
        Ink,
    };
    // The value of one of them as `choices` holds it.
    StepResult writeChoice(const DriverChoices &choices, Level level);
    // The edits of the selected combination: ICC profiles, channels and ink
    // order, in this order; every step is tried.
    void writeCombination(const CombinationSettings &settings);
    StepResult writeIcc(const IccSettings &icc);
    // Channels are matched by name; a channel without a setting keeps its
    // record values.
    StepResult writeChannels(const QVector<ChannelSetting> &channels);
    // Each slot goes back to its own ink (inkId), whatever its place.
    StepResult writeInks(const QVector<InkSlot> &inks);

    // Writes everything and commits the driver: resolution, paper, ink, ICC
    // profiles, channels, ink order, then the other properties. The first
    // step that fails ends it, without the commit; true once committed.
    bool write(const DriverSettings &settings);

private:
    template <typename Visit>
    bool walk(const DriverChoices &choices, Visit visit);
    bool writeCommonChoices(const QVector<EnumChoice> &common);
    StepResult handedBack(bool accepted, const char *call) const;
    void readEnumItems(DriverChoices &choices) const;

    IUIPrintParamsHandler *handler_;
    LogCategory category_;
};
