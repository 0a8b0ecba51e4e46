#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QLocale>
#include <QString>

#include <cstdint>

// The three places of the property dialog's ICC section that take a profile.
enum class IccProfileSlot
{
    Rgb,      // RGB input profile
    Cmyk,     // CMYK input profile
    Equipment // the printer's own output profile, or a device link
};

// What an ICC profile is, as Little CMS reads it, or why a file is not a
// usable profile. Pure data: no widgets, no state between checks.
//
// A file is checked in two steps. First its header and tag table are
// validated against the bytes that are really there (size, the "acsp"
// signature, a known class, colour space and connection space, every tag
// inside the profile), because Little CMS itself opens a header of any
// class and silently skips a tag that points past the end. Then Little CMS
// opens it from memory, with a context of its own that collects its error
// text, reads every colour table of each direction and builds the
// transforms the profile claims to serve (device to Lab, Lab to device, or
// the link itself). A profile that opens but whose tables are damaged is
// caught there, not at print time.
class IccProfileInfo
{
    Q_DECLARE_TR_FUNCTIONS(IccProfileInfo)

public:
    // Larger files are refused before a byte is read: the biggest real
    // output profiles (33-point CMYK tables in 16 bits) stay well below.
    static constexpr qint64 kMaxFileSize = 64 * 1024 * 1024;
    // The fixed header, then the tag count.
    static constexpr int kHeaderSize = 128;

    // `language` picks the description's text where the profile has several
    // (Chinese or English); without a match the profile's first text is used.
    static IccProfileInfo fromFile(const QString &path, QLocale::Language language);
    static IccProfileInfo fromData(const QByteArray &data, QLocale::Language language);

    bool isValid() const { return error_.isEmpty(); }
    // Why the file is not a usable profile, in the interface language;
    // empty for a valid one.
    QString error() const { return error_; }

    // Header signatures ('mntr', 'RGB ', ...); 0 where the header was not read.
    std::uint32_t deviceClass() const { return deviceClass_; }
    std::uint32_t colorSpace() const { return colorSpace_; }
    std::uint32_t connectionSpace() const { return connectionSpace_; }
    // The header's version field, e.g. 0x04400000 for 4.4.
    std::uint32_t encodedVersion() const { return version_; }

    QString description() const { return description_; }
    QString deviceClassName() const;
    QString colorSpaceName() const { return spaceName(colorSpace_); }
    QString connectionSpaceName() const { return spaceName(connectionSpace_); }
    QString versionText() const;
    // Description, class, colour spaces and version, one a line, for a tool tip.
    QString summary() const;

    bool usableAsInput() const { return usableAsInput_; }
    bool usableAsOutput() const { return usableAsOutput_; }
    bool usableAsLink() const { return usableAsLink_; }

    // Empty when the profile fits the slot; otherwise one sentence, in the
    // interface language, that says what the file is and what the slot needs.
    QString refusalFor(IccProfileSlot slot) const;

    // A signature as its four characters ("mntr"), or in hex where they are
    // not printable.
    static QString signatureText(std::uint32_t signature);

private:
    static QString spaceName(std::uint32_t space);
    QString inputRefusal(std::uint32_t neededSpace, const QString &neededName) const;

    // Why the bytes do not hold the profile their header describes: too
    // short, no "acsp", a size the bytes do not have, a tag outside the
    // profile. Empty when they do.
    static QString layoutError(const QByteArray &data);
    // Why the header's class, colour space and connection space are not
    // those of a profile Little CMS can use, or an empty text.
    static QString signaturesError(const QByteArray &data);
    void readHeader(const QByteArray &data);
    void readWithLittleCms(const QByteArray &data, QLocale::Language language);

    QString error_;
    QString description_;
    std::uint32_t deviceClass_ = 0;
    std::uint32_t colorSpace_ = 0;
    std::uint32_t connectionSpace_ = 0;
    std::uint32_t version_ = 0;
    bool usableAsInput_ = false;
    bool usableAsOutput_ = false;
    bool usableAsLink_ = false;
    QString inputError_;
    QString outputError_;
};
