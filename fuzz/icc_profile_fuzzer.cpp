// libFuzzer target for the ICC profile check (IccProfileInfo::fromData): any
// bytes must be checked without a crash, a leak or a read outside them, and
// every answer must hold together:
//   - checking the same bytes twice gives the same answer;
//   - bytes after the size the header declares change nothing but, perhaps,
//     the description's language, which that check asks in English;
//   - a valid profile has a class and a colour space, no error, and is usable
//     for a slot only as the slot's rules allow;
//   - an invalid one has an error, is usable for nothing and is refused by
//     every slot;
//   - the summary is never empty.
// Any violation aborts.
//
// No QCoreApplication: tr() returns the source text without one, and the
// check reads nothing but the bytes it is given.

#include "FuzzSupport.h"

#include "Icc/IccProfileInfo.h"

#include <QByteArray>
#include <QLocale>
#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr std::uint32_t signature(const char (&text)[5])
{
    return (std::uint32_t(std::uint8_t(text[0])) << 24) | (std::uint32_t(std::uint8_t(text[1])) << 16) |
           (std::uint32_t(std::uint8_t(text[2])) << 8) | std::uint32_t(std::uint8_t(text[3]));
}

constexpr IccProfileSlot kSlots[] = {IccProfileSlot::Rgb, IccProfileSlot::Cmyk, IccProfileSlot::Equipment};

// Everything the check tells apart from the description, as one text.
QString answerWithoutDescription(const IccProfileInfo &info)
{
    QString text = info.error();
    text += QLatin1Char('\n') + QString::number(info.deviceClass()) + QLatin1Char(' ') +
            QString::number(info.colorSpace()) + QLatin1Char(' ') + QString::number(info.connectionSpace()) +
            QLatin1Char(' ') + QString::number(info.encodedVersion());
    text += QLatin1Char('\n') + info.deviceClassName() + QLatin1Char('\n') + info.colorSpaceName() +
            QLatin1Char('\n') + info.connectionSpaceName() + QLatin1Char('\n') + info.versionText();
    text += QLatin1Char('\n') + QString::number(int(info.usableAsInput())) +
            QString::number(int(info.usableAsOutput())) + QString::number(int(info.usableAsLink()));
    for (const IccProfileSlot slot : kSlots)
        text += QLatin1Char('\n') + info.refusalFor(slot);
    return text;
}

QString answer(const IccProfileInfo &info)
{
    return answerWithoutDescription(info) + QLatin1Char('\n') + info.description() + QLatin1Char('\n') +
           info.summary();
}

void checkConsistent(const IccProfileInfo &info)
{
    if (info.summary().isEmpty())
        std::abort();
    if (!info.isValid()) {
        if (info.error().isEmpty() || info.usableAsInput() || info.usableAsOutput() || info.usableAsLink())
            std::abort();
        for (const IccProfileSlot slot : kSlots) {
            if (info.refusalFor(slot).isEmpty())
                std::abort();
        }
        return;
    }
    if (!info.error().isEmpty() || info.deviceClass() == 0 || info.colorSpace() == 0)
        std::abort();
    if (info.summary().indexOf(info.versionText()) < 0)
        std::abort();
    const std::uint32_t deviceClass = info.deviceClass();
    const bool link = deviceClass == signature("link");
    if (info.usableAsLink() && !link)
        std::abort();
    if (link && (info.usableAsInput() || info.usableAsOutput()))
        std::abort();
    // A slot takes a profile only of its own colour space and class, and
    // only one that builds the transform the slot needs. The input slots take
    // profiles of input devices, displays, output devices and colour spaces.
    const bool inputClass = deviceClass == signature("scnr") || deviceClass == signature("mntr") ||
                            deviceClass == signature("prtr") || deviceClass == signature("spac");
    const auto inputFits = [&](std::uint32_t space) {
        return info.colorSpace() == space && inputClass && info.usableAsInput();
    };
    if (info.refusalFor(IccProfileSlot::Rgb).isEmpty() != inputFits(signature("RGB ")))
        std::abort();
    if (info.refusalFor(IccProfileSlot::Cmyk).isEmpty() != inputFits(signature("CMYK")))
        std::abort();
    const bool equipmentFits =
        link ? info.usableAsLink() : deviceClass == signature("prtr") && info.usableAsOutput();
    if (info.refusalFor(IccProfileSlot::Equipment).isEmpty() != equipmentFits)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    silenceQtMessages();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // A copy of exactly the input's bytes, so that a read past them is a
    // read past the allocation.
    const QByteArray input(reinterpret_cast<const char *>(data), int(size));
    const IccProfileInfo first = IccProfileInfo::fromData(input, QLocale::Chinese);
    checkConsistent(first);

    // The check keeps no state between calls.
    const IccProfileInfo again = IccProfileInfo::fromData(input, QLocale::Chinese);
    if (answer(again) != answer(first))
        std::abort();

    // Where the header declares a size that fits, nothing after it counts:
    // not even bytes that would complete a tag pointing past that size.
    constexpr std::size_t kTagTableOffset = IccProfileInfo::kHeaderSize + 4;
    if (size >= kTagTableOffset) {
        const quint64 declared =
            (quint64(data[0]) << 24) | (quint64(data[1]) << 16) | (quint64(data[2]) << 8) | quint64(data[3]);
        if (declared >= kTagTableOffset && declared <= size) {
            QByteArray longer = input;
            longer.append(QByteArray(256, '\xa5'));
            const IccProfileInfo extended = IccProfileInfo::fromData(longer, QLocale::English);
            checkConsistent(extended);
            if (answerWithoutDescription(extended) != answerWithoutDescription(first))
                std::abort();
        }
    }
    return 0;
}
