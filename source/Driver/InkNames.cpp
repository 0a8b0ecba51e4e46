#include "Driver/InkNames.h"

#include <QCoreApplication>

namespace bex {

InkName inkName(const QString &channelName)
{
    static const struct
    {
        const char *shortName;
        const char *longName;
        InkName ink;
    } table[] = {
        {"C",
         "Cyan",
         {InkKind::Process, QT_TRANSLATE_NOOP("PrinterDriverPropertyDlg", "青色(C)"), "Cyan", Qt::cyan}},
        {"M",
         "Magenta",
         {InkKind::Process, QT_TRANSLATE_NOOP("PrinterDriverPropertyDlg", "品红(M)"), "Magenta",
          Qt::magenta}},
        {"Y",
         "Yellow",
         {InkKind::Process, QT_TRANSLATE_NOOP("PrinterDriverPropertyDlg", "黄色(Y)"), "Yellow", Qt::yellow}},
        {"K",
         "Black",
         {InkKind::Process, QT_TRANSLATE_NOOP("PrinterDriverPropertyDlg", "黑色(K)"), "Black", Qt::black}},
        {"LC", nullptr, {InkKind::Light, nullptr, "White", QColor(224, 255, 255)}},
        {"LM", nullptr, {InkKind::Light, nullptr, "White", QColor(255, 224, 255)}},
        {"R", nullptr, {InkKind::Spot, nullptr, "White", QColor(252, 16, 16)}},
        {"B", nullptr, {InkKind::Spot, nullptr, "White", QColor(82, 50, 141)}},
    };
    const auto named = [&channelName](const char *name) {
        return name && channelName.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
    };
    for (const auto &entry : table) {
        if (named(entry.shortName) || named(entry.longName))
            return entry.ink;
    }
    return InkName();
}

bool densityFollowsFullInk(const QString &channelName)
{
    return channelName.startsWith(QLatin1Char('L'), Qt::CaseInsensitive);
}

} // namespace bex
