#pragma once

// ICC profiles for the tests. Real ones come from Debian's packages
// (libgs-common: Ghostscript's; colord-data: colord's; icc-profiles-free),
// device links are made from them with linkicc by the test fixture
// "icc_device_links", and the few profiles a test needs with particular
// content (several description languages, a damaged table) are written here
// with Little CMS, never by hand.

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

#include <lcms2.h>

#include <utility>
#include <vector>

namespace IccTestProfiles {

// Where Debian installs ICC profiles.
inline QString installed(const QString &relative)
{
    return QStringLiteral(BEX_SYSTEM_ICC_DIR "/") + relative;
}

inline QString ghostscript(const QString &name)
{
    return installed(QStringLiteral("ghostscript/") + name);
}

inline QString colord(const QString &name)
{
    return installed(QStringLiteral("colord/") + name);
}

// The device links made by the fixture from Ghostscript's profiles:
// "rgb-to-cmyk.icc" (sRGB to SWOP CMYK) and "cmyk-to-cmyk.icc" (SWOP CMYK to
// Ghostscript's v4 CMYK).
inline QString deviceLink(const QString &name)
{
    return QStringLiteral(BEX_ICC_LINK_DIR "/") + name;
}

inline QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

// An sRGB display profile whose description holds `texts`, each a
// (language, country, text) triple, in that order.
inline QByteArray srgbDescribed(const std::vector<std::pair<QByteArray, QString>> &texts)
{
    cmsHPROFILE profile = cmsCreate_sRGBProfile();
    cmsMLU *description = cmsMLUalloc(nullptr, cmsUInt32Number(texts.size()));
    for (const auto &text : texts) {
        const std::wstring wide = text.second.toStdWString();
        cmsMLUsetWide(description, text.first.left(2).constData(), text.first.mid(3, 2).constData(),
                      wide.c_str());
    }
    cmsWriteTag(profile, cmsSigProfileDescriptionTag, description);
    cmsMLUfree(description);
    cmsUInt32Number size = 0;
    QByteArray bytes;
    if (cmsSaveProfileToMem(profile, nullptr, &size)) {
        bytes.resize(int(size));
        cmsSaveProfileToMem(profile, bytes.data(), &size);
    }
    cmsCloseProfile(profile);
    return bytes;
}

// The offset of a tag's data in a profile, or -1.
inline int tagOffset(const QByteArray &profile, const char (&signature)[5])
{
    const auto be32 = [&](int at) {
        const auto *p = reinterpret_cast<const unsigned char *>(profile.constData()) + at;
        return (quint32(p[0]) << 24) | (quint32(p[1]) << 16) | (quint32(p[2]) << 8) | quint32(p[3]);
    };
    const quint32 count = be32(128);
    for (quint32 i = 0; i < count; ++i) {
        const int entry = int(132 + 12 * i);
        if (profile.mid(entry, 4) == QByteArray(signature))
            return int(be32(entry + 4));
    }
    return -1;
}

inline void putBigEndian32(QByteArray &bytes, int at, quint32 value)
{
    for (int i = 0; i < 4; ++i)
        bytes[at + i] = char((value >> (24 - 8 * i)) & 0xff);
}

} // namespace IccTestProfiles
