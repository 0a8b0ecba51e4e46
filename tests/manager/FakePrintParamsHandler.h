#pragma once

#include "RecordText.h"
#include "ScriptedPrintParamsHandler.h"

#include <QString>
#include <QStringList>

#include <vector>

// The print-parameter handler of the manager's and the property dialog's
// tests: records every call with its arguments ("SelectPrinterDriverPrs(A,0)")
// and answers with the records and results the test scripts.
//
// The test executable defines the library's two exports itself, so the
// manager gets its handlers from here: see
// ScriptedPrintParamsHandler::setNextHandler().
class FakePrintParamsHandler : public ScriptedPrintParamsHandler
{
public:
    FakePrintParamsHandler() = default;
    ~FakePrintParamsHandler() override;

    static printerInfoItem makeItem(const QString &id, const QString &name, const QString &showName,
                                    const QString &prsPath);
    void setChannelNames(const QStringList &names);
    void setResolution(std::int32_t index);

    // Channels with density, maximum ink (fraction) and name.
    void setChannels(const std::vector<inkChannelInfo> &list);
    static inkChannelInfo channel(const QString &name, double depth, double maxInk);
    void setIcc(const QString &rgb, const QString &cmyk, const QString &output, std::int32_t intent);
    void setInkOrder(const std::vector<std::int32_t> &order, const std::vector<std::int32_t> &off);

    // Set to true by the destructor.
    bool *destroyed = nullptr;
};
