// This file defines the library's two factories: see PrintParamsFactories.h.
#define BEXUIPRINTPARAMSPROCESSING_LIBRARY
#include "FakePrintParamsHandler.h"

BEX_SCRIPTED_PRINT_PARAMS_FACTORIES()

FakePrintParamsHandler::~FakePrintParamsHandler()
{
    if (destroyed)
        *destroyed = true;
}

printerInfoItem FakePrintParamsHandler::makeItem(const QString &id, const QString &name,
                                                 const QString &showName, const QString &prsPath)
{
    printerInfoItem item{};
    setText(item.piiId, id.toLocal8Bit());
    setText(item.piiName, name.toLocal8Bit());
    setText(item.piiShowName, showName.toLocal8Bit());
    setText(item.piiPrs, prsPath.toLocal8Bit());
    return item;
}

void FakePrintParamsHandler::setChannelNames(const QStringList &names)
{
    std::vector<inkChannelInfo> list(std::size_t(names.size()), inkChannelInfo{});
    for (int i = 0; i < names.size(); ++i)
        setText(list[std::size_t(i)].iciName, names.at(i).toLocal8Bit());
    setChannels(list);
}

void FakePrintParamsHandler::setResolution(std::int32_t index)
{
    hasResolution = true;
    resolution = printerEnumItem{};
    setText(resolution.key, QByteArrayLiteral("Resolution"));
    resolution.index = index;
}

void FakePrintParamsHandler::setChannels(const std::vector<inkChannelInfo> &list)
{
    hasChannels = true;
    channels = list;
    channelInfo.channels = channels.data();
    channelInfo.pcciChanneNum = std::int32_t(channels.size());
}

inkChannelInfo FakePrintParamsHandler::channel(const QString &name, double depth, double maxInk)
{
    inkChannelInfo info{};
    info.iciDepth = depth;
    info.iciMaxInk = maxInk;
    setText(info.iciName, name.toLocal8Bit());
    return info;
}

void FakePrintParamsHandler::setIcc(const QString &rgb, const QString &cmyk, const QString &output,
                                    std::int32_t intent)
{
    hasIcc = true;
    icc = printerIccColorInfo{};
    setText(icc.iccFilePath_RGB, rgb.toLocal8Bit());
    setText(icc.iccFilePath_CMYK, cmyk.toLocal8Bit());
    setText(icc.iccFilePath_OUTPUT, output.toLocal8Bit());
    icc.iccIntentType = intent;
}

void FakePrintParamsHandler::setInkOrder(const std::vector<std::int32_t> &order,
                                         const std::vector<std::int32_t> &off)
{
    hasInkOrder = true;
    inkOrder = order;
    inkOff = off;
    inkOrderInfo.pioiInkNum = std::int32_t(order.size());
    inkOrderInfo.pioiInkOrder = inkOrder.data();
    inkOrderInfo.PioiInkOFFON = inkOff.data();
}
