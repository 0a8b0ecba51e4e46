#pragma once

// Sanity limits for the print-parameter library's records. The library is a
// vendor's binary: a record whose counts cannot be true is damaged, and
// reading it as far as it claims would run past its arrays.

#include <IUIPrintParamsHandler.h>

namespace bex {

// No printer has more ink channels than this.
constexpr int maxInkChannelCount = 64;

// No driver property offers more values than this.
constexpr int maxEnumValueCount = 512;

// Whether a channel count and its array can be read: the count within the
// limit, and an array behind any count above zero.
inline bool channelCountUsable(int count, const void *array)
{
    return count >= 0 && count <= maxInkChannelCount && (count == 0 || array != nullptr);
}

// Whether every array of the record can be read as far as its count says.
inline bool recordUsable(const printerChannelColorInfo &info)
{
    return channelCountUsable(info.pcciChanneNum, info.channels);
}

inline bool recordUsable(const printerInkOrderInfo &info)
{
    return channelCountUsable(info.pioiInkNum, info.pioiInkOrder) &&
           channelCountUsable(info.pioiInkNum, info.PioiInkOFFON);
}

} // namespace bex
