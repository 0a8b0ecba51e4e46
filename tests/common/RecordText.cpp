#include "RecordText.h"

#include <QStringList>

#include <cstring>

namespace {

template <std::size_t N>
QString text(const char (&field)[N])
{
    return QString::fromLocal8Bit(field, int(strnlen(field, N)));
}

} // namespace

namespace RecordText {

QString describe(const printerChannelColorInfo &info)
{
    QStringList parts;
    for (int i = 0; i < info.pcciChanneNum; ++i) {
        const inkChannelInfo &c = info.channels[i];
        parts << QStringLiteral("%1:%2:%3")
                     .arg(text(c.iciName))
                     .arg(c.iciDepth, 0, 'g', 17)
                     .arg(c.iciMaxInk, 0, 'g', 17);
    }
    return parts.join(QLatin1Char(' '));
}

QString describe(const printerIccColorInfo &info)
{
    return QStringLiteral("%1,%2,%3,%4")
        .arg(text(info.iccFilePath_RGB), text(info.iccFilePath_CMYK), text(info.iccFilePath_OUTPUT))
        .arg(info.iccIntentType);
}

QString describe(const printerInkOrderInfo &info)
{
    QStringList order;
    QStringList off;
    for (int i = 0; i < info.pioiInkNum; ++i) {
        order << QString::number(info.pioiInkOrder[i]);
        off << QString::number(info.PioiInkOFFON[i]);
    }
    return QStringLiteral("order=%1 off=%2").arg(order.join(QLatin1Char(',')), off.join(QLatin1Char(',')));
}

} // namespace RecordText
