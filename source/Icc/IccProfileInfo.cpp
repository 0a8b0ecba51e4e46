#include "Icc/IccProfileInfo.h"

#include <QFile>
#include <QFileInfo>

#include <lcms2.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <type_traits>
#include <vector>

namespace {

constexpr std::uint32_t signature(char a, char b, char c, char d)
{
    return (std::uint32_t(std::uint8_t(a)) << 24) | (std::uint32_t(std::uint8_t(b)) << 16) |
           (std::uint32_t(std::uint8_t(c)) << 8) | std::uint32_t(std::uint8_t(d));
}

constexpr std::uint32_t kProfileFileSignature = signature('a', 'c', 's', 'p');
constexpr std::uint32_t kClassInput = signature('s', 'c', 'n', 'r');
constexpr std::uint32_t kClassDisplay = signature('m', 'n', 't', 'r');
constexpr std::uint32_t kClassOutput = signature('p', 'r', 't', 'r');
constexpr std::uint32_t kClassLink = signature('l', 'i', 'n', 'k');
constexpr std::uint32_t kClassAbstract = signature('a', 'b', 's', 't');
constexpr std::uint32_t kClassColorSpace = signature('s', 'p', 'a', 'c');
constexpr std::uint32_t kClassNamedColor = signature('n', 'm', 'c', 'l');
constexpr std::uint32_t kSpaceRgb = signature('R', 'G', 'B', ' ');
constexpr std::uint32_t kSpaceCmyk = signature('C', 'M', 'Y', 'K');
constexpr std::uint32_t kSpaceGray = signature('G', 'R', 'A', 'Y');
constexpr std::uint32_t kSpaceXyz = signature('X', 'Y', 'Z', ' ');
constexpr std::uint32_t kSpaceLab = signature('L', 'a', 'b', ' ');

// Where the header keeps what the check reads (ICC.1, 7.2).
constexpr int kSizeOffset = 0;
constexpr int kVersionOffset = 8;
constexpr int kClassOffset = 12;
constexpr int kSpaceOffset = 16;
constexpr int kConnectionSpaceOffset = 20;
constexpr int kFileSignatureOffset = 36;
constexpr int kTagTableOffset = IccProfileInfo::kHeaderSize + 4;
constexpr int kTagEntrySize = 12;

std::uint32_t bigEndian32(const QByteArray &data, int offset)
{
    const auto *p = reinterpret_cast<const std::uint8_t *>(data.constData()) + offset;
    return (std::uint32_t(p[0]) << 24) | (std::uint32_t(p[1]) << 16) | (std::uint32_t(p[2]) << 8) |
           std::uint32_t(p[3]);
}

// Little CMS objects, released with their own functions.
struct ContextRelease
{
    void operator()(std::remove_pointer_t<cmsContext> *context) const { cmsDeleteContext(context); }
};
struct ProfileRelease
{
    void operator()(void *profile) const { cmsCloseProfile(profile); }
};
struct TransformRelease
{
    void operator()(void *transform) const { cmsDeleteTransform(transform); }
};
using Context = std::unique_ptr<std::remove_pointer_t<cmsContext>, ContextRelease>;
using Profile = std::unique_ptr<void, ProfileRelease>;
using Transform = std::unique_ptr<void, TransformRelease>;

// The first error Little CMS reports within one context; later ones tend to
// be consequences of it.
struct ErrorText
{
    QString text;
};

void collectError(cmsContext context, cmsUInt32Number, const char *text)
{
    auto *errors = static_cast<ErrorText *>(cmsGetContextUserData(context));
    if (errors && errors->text.isEmpty() && text)
        errors->text = QString::fromUtf8(text);
}

// Every colour table the profile has for `direction`, each rendering intent
// and both precisions, so that a damaged table of an intent the operator may
// choose later is caught too. Tables that share their data are read once:
// Little CMS keeps what it read.
bool readsTables(cmsHPROFILE profile, int direction)
{
    static const cmsTagSignature toConnectionSpace[] = {cmsSigAToB0Tag, cmsSigAToB1Tag, cmsSigAToB2Tag,
                                                        cmsSigDToB0Tag, cmsSigDToB1Tag, cmsSigDToB2Tag};
    static const cmsTagSignature toDevice[] = {cmsSigBToA0Tag, cmsSigBToA1Tag, cmsSigBToA2Tag,
                                               cmsSigBToD0Tag, cmsSigBToD1Tag, cmsSigBToD2Tag};
    for (cmsTagSignature tag : direction == LCMS_USED_AS_INPUT ? toConnectionSpace : toDevice) {
        if (cmsIsTag(profile, tag) && !cmsReadTag(profile, tag))
            return false;
    }
    return true;
}

// The transform for the first rendering intent that the profile supports in
// `direction`, after all of the direction's tables were read. Only builds
// it: no table is precalculated and no pixel is converted, but every tag the
// transform needs (matrix and curves included) is read and checked.
bool buildsTransform(cmsContext context, cmsHPROFILE profile, int direction)
{
    if (!readsTables(profile, direction))
        return false;
    const cmsUInt32Number flags = cmsFLAGS_NOOPTIMIZE | cmsFLAGS_NOCACHE;
    const cmsUInt32Number device = cmsFormatterForColorspaceOfProfile(profile, 2, FALSE);
    const Profile lab(cmsCreateLab4ProfileTHR(context, nullptr));
    if (!lab)
        return false;
    for (cmsUInt32Number intent = INTENT_PERCEPTUAL; intent <= INTENT_ABSOLUTE_COLORIMETRIC; ++intent) {
        if (!cmsIsIntentSupported(profile, intent, cmsUInt32Number(direction)))
            continue;
        const Transform transform(
            direction == LCMS_USED_AS_INPUT
                ? cmsCreateTransformTHR(context, profile, device, lab.get(), TYPE_Lab_16, intent, flags)
                : cmsCreateTransformTHR(context, lab.get(), TYPE_Lab_16, profile, device, intent, flags));
        return transform != nullptr;
    }
    return false;
}

bool buildsLink(cmsContext context, cmsHPROFILE link)
{
    const cmsUInt32Number flags = cmsFLAGS_NOOPTIMIZE | cmsFLAGS_NOCACHE;
    const Transform transform(cmsCreateTransformTHR(
        context, link, cmsFormatterForColorspaceOfProfile(link, 2, FALSE), nullptr,
        cmsFormatterForPCSOfProfile(link, 2, FALSE), cmsGetHeaderRenderingIntent(link), flags));
    return transform != nullptr;
}

QString descriptionOf(cmsHPROFILE profile, QLocale::Language language)
{
    // Chinese is the interface's own language; English its one translation.
    const bool english = language == QLocale::English;
    const char *languageCode = english ? "en" : "zh";
    const char *countryCode = english ? "US" : "CN";
    const cmsUInt32Number bytes =
        cmsGetProfileInfo(profile, cmsInfoDescription, languageCode, countryCode, nullptr, 0);
    if (bytes == 0)
        return QString();
    // One more character, so the text always ends in a terminator.
    std::vector<wchar_t> text(bytes / sizeof(wchar_t) + 1, L'\0');
    cmsGetProfileInfo(profile, cmsInfoDescription, languageCode, countryCode, text.data(), bytes);
    return QString::fromWCharArray(text.data()).trimmed();
}

// The seven device classes a profile header may name, with their names in
// the interface.
struct DeviceClass
{
    std::uint32_t signature;
    const char *name;
};
constexpr DeviceClass kDeviceClasses[] = {
    {kClassInput, QT_TRANSLATE_NOOP("IccProfileInfo", "输入设备")},
    {kClassDisplay, QT_TRANSLATE_NOOP("IccProfileInfo", "显示器")},
    {kClassOutput, QT_TRANSLATE_NOOP("IccProfileInfo", "输出设备")},
    {kClassLink, QT_TRANSLATE_NOOP("IccProfileInfo", "设备链接")},
    {kClassAbstract, QT_TRANSLATE_NOOP("IccProfileInfo", "抽象")},
    {kClassColorSpace, QT_TRANSLATE_NOOP("IccProfileInfo", "色彩空间转换")},
    {kClassNamedColor, QT_TRANSLATE_NOOP("IccProfileInfo", "命名颜色")},
};

// The entry of kDeviceClasses for a header's class; null for another value.
const DeviceClass *findDeviceClass(std::uint32_t signature)
{
    const auto found =
        std::find_if(std::begin(kDeviceClasses), std::end(kDeviceClasses),
                     [signature](const DeviceClass &known) { return known.signature == signature; });
    return found == std::end(kDeviceClasses) ? nullptr : found;
}

bool isKnownClass(std::uint32_t deviceClass)
{
    return findDeviceClass(deviceClass) != nullptr;
}

// A colour space that Little CMS can convert: the ICC's, and its own
// 'MCH1' to 'MCHF'.
bool isKnownSpace(std::uint32_t space)
{
    return _cmsLCMScolorSpace(cmsColorSpaceSignature(space)) != 0;
}

bool isInputClass(std::uint32_t deviceClass)
{
    return deviceClass == kClassInput || deviceClass == kClassDisplay || deviceClass == kClassOutput ||
           deviceClass == kClassColorSpace;
}

} // namespace

IccProfileInfo IccProfileInfo::fromFile(const QString &path, QLocale::Language language)
{
    IccProfileInfo info;
    const QFileInfo file(path);
    if (!file.exists()) {
        info.error_ = tr("文件不存在");
        return info;
    }
    if (!file.isFile()) {
        info.error_ = tr("这不是一个文件");
        return info;
    }
    if (file.size() > kMaxFileSize) {
        info.error_ = tr("文件太大（%1 字节，最多 %2 字节）").arg(file.size()).arg(kMaxFileSize);
        return info;
    }
    QFile in(path);
    if (!in.open(QIODevice::ReadOnly)) {
        info.error_ = tr("文件无法读取：%1").arg(in.errorString());
        return info;
    }
    // Never more than the limit, even if the file grew since it was measured.
    // One byte more than measured shows a file that grew in the meantime;
    // never more than the limit allows.
    const QByteArray data = in.read(std::min(file.size(), kMaxFileSize) + 1);
    if (data.size() > kMaxFileSize) {
        info.error_ = tr("文件太大（%1 字节，最多 %2 字节）").arg(data.size()).arg(kMaxFileSize);
        return info;
    }
    return fromData(data, language);
}

IccProfileInfo IccProfileInfo::fromData(const QByteArray &data, QLocale::Language language)
{
    IccProfileInfo info;
    if (data.size() > kMaxFileSize) {
        info.error_ = tr("文件太大（%1 字节，最多 %2 字节）").arg(data.size()).arg(kMaxFileSize);
        return info;
    }
    info.readHeader(data);
    if (info.isValid())
        info.readWithLittleCms(data.left(int(bigEndian32(data, kSizeOffset))), language);
    return info;
}

QString IccProfileInfo::layoutError(const QByteArray &data)
{
    if (data.isEmpty())
        return tr("文件是空的");
    if (data.size() < kTagTableOffset)
        return tr("文件只有 %1 字节，放不下 ICC 文件头").arg(data.size());
    if (bigEndian32(data, kFileSignatureOffset) != kProfileFileSignature)
        return tr("文件头里没有 ICC 配置文件的标记 \"acsp\"");
    const quint64 declared = bigEndian32(data, kSizeOffset);
    if (declared > quint64(data.size()))
        return tr("文件不完整：文件头写明 %1 字节，文件只有 %2 字节").arg(declared).arg(data.size());
    if (declared < quint64(kTagTableOffset))
        return tr("文件头写明的大小（%1 字节）放不下文件头").arg(declared);
    const quint64 tagCount = bigEndian32(data, IccProfileInfo::kHeaderSize);
    if (kTagTableOffset + tagCount * kTagEntrySize > declared)
        return tr("标签表（%1 个标签）超出了配置文件的末尾").arg(tagCount);
    for (quint64 i = 0; i < tagCount; ++i) {
        const int entry = int(kTagTableOffset + i * kTagEntrySize);
        const quint64 offset = bigEndian32(data, entry + 4);
        const quint64 size = bigEndian32(data, entry + 8);
        if (offset < quint64(kTagTableOffset) || offset + size > declared)
            return tr("标签 \"%1\" 指向配置文件之外").arg(signatureText(bigEndian32(data, entry)));
    }
    return QString();
}

QString IccProfileInfo::signaturesError(const QByteArray &data)
{
    // Little CMS opens a profile whatever its header names, so a header of
    // zeros or noise would pass as a profile of an unnamed class and space.
    // A device link's connection space is the colour space it converts to;
    // every other class connects through XYZ or Lab.
    const std::uint32_t deviceClass = bigEndian32(data, kClassOffset);
    if (!isKnownClass(deviceClass))
        return tr("文件头写明的类别 \"%1\" 不是 ICC 配置文件的类别").arg(signatureText(deviceClass));
    const std::uint32_t space = bigEndian32(data, kSpaceOffset);
    if (!isKnownSpace(space))
        return tr("文件头写明的色彩空间 \"%1\" 无法识别").arg(signatureText(space));
    const std::uint32_t connectionSpace = bigEndian32(data, kConnectionSpaceOffset);
    if (deviceClass == kClassLink ? !isKnownSpace(connectionSpace)
                                  : connectionSpace != kSpaceXyz && connectionSpace != kSpaceLab)
        return tr("文件头写明的连接空间 \"%1\" 不适用于这类配置文件").arg(signatureText(connectionSpace));
    return QString();
}

void IccProfileInfo::readHeader(const QByteArray &data)
{
    error_ = layoutError(data);
    if (error_.isEmpty())
        error_ = signaturesError(data);
    if (!error_.isEmpty())
        return;
    version_ = bigEndian32(data, kVersionOffset);
    deviceClass_ = bigEndian32(data, kClassOffset);
    colorSpace_ = bigEndian32(data, kSpaceOffset);
    connectionSpace_ = bigEndian32(data, kConnectionSpaceOffset);
}

void IccProfileInfo::readWithLittleCms(const QByteArray &data, QLocale::Language language)
{
    ErrorText errors;
    const Context context(cmsCreateContext(nullptr, &errors));
    if (!context) {
        error_ = tr("Little CMS 无法启动");
        return;
    }
    cmsSetLogErrorHandlerTHR(context.get(), collectError);
    const Profile profile(
        cmsOpenProfileFromMemTHR(context.get(), data.constData(), cmsUInt32Number(data.size())));
    if (!profile) {
        error_ = tr("Little CMS 无法读取这个配置文件：%1")
                     .arg(errors.text.isEmpty() ? tr("原因不明") : errors.text);
        return;
    }
    description_ = descriptionOf(profile.get(), language);

    // Each direction on its own, so that one direction's error does not
    // stand for the other's.
    const auto tryDirection = [&](auto build, QString &why) {
        errors.text.clear();
        const bool built = build();
        if (!built)
            why = errors.text.isEmpty() ? tr("配置文件里没有所需的转换表") : errors.text;
        return built;
    };
    if (deviceClass_ == kClassLink) {
        usableAsLink_ = tryDirection([&] { return buildsLink(context.get(), profile.get()); }, outputError_);
    } else if (deviceClass_ != kClassNamedColor) {
        usableAsInput_ = tryDirection(
            [&] { return buildsTransform(context.get(), profile.get(), LCMS_USED_AS_INPUT); }, inputError_);
        usableAsOutput_ = tryDirection(
            [&] { return buildsTransform(context.get(), profile.get(), LCMS_USED_AS_OUTPUT); }, outputError_);
    }
}

QString IccProfileInfo::signatureText(std::uint32_t value)
{
    QString text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const char c = char((value >> shift) & 0xff);
        if (c < 0x20 || c > 0x7e)
            return QStringLiteral("0x%1").arg(value, 8, 16, QLatin1Char('0'));
        text += QLatin1Char(c);
    }
    return text;
}

QString IccProfileInfo::spaceName(std::uint32_t space)
{
    if (space == kSpaceGray)
        return tr("灰度");
    // '2CLR' to 'FCLR': a device space of 2 to 15 colourants.
    if ((space & 0x00ffffffu) == (signature(' ', 'C', 'L', 'R') & 0x00ffffffu)) {
        const char digit = char(space >> 24);
        const int count = (digit >= '2' && digit <= '9')   ? digit - '0'
                          : (digit >= 'A' && digit <= 'F') ? digit - 'A' + 10
                                                           : 0;
        if (count > 0)
            return tr("%1 色").arg(count);
    }
    if (space == signature('Y', 'C', 'b', 'r'))
        return QStringLiteral("YCbCr");
    return signatureText(space).trimmed();
}

QString IccProfileInfo::deviceClassName() const
{
    if (const DeviceClass *known = findDeviceClass(deviceClass_))
        return tr(known->name);
    return signatureText(deviceClass_);
}

QString IccProfileInfo::versionText() const
{
    const unsigned major = (version_ >> 24) & 0xff;
    const unsigned minor = (version_ >> 20) & 0xf;
    const unsigned bugFix = (version_ >> 16) & 0xf;
    QString text = QStringLiteral("%1.%2").arg(major).arg(minor);
    if (bugFix != 0)
        text += QStringLiteral(".%1").arg(bugFix);
    return text;
}

QString IccProfileInfo::summary() const
{
    if (!isValid())
        return error_;
    const QString description = description_.isEmpty() ? tr("（没有描述）") : description_;
    return tr("描述：%1").arg(description) + QLatin1Char('\n') +
           tr("类别：%1（%2）").arg(deviceClassName(), signatureText(deviceClass_)) + QLatin1Char('\n') +
           tr("色彩空间：%1，连接空间：%2").arg(colorSpaceName(), connectionSpaceName()) + QLatin1Char('\n') +
           tr("ICC 版本：%1").arg(versionText());
}

QString IccProfileInfo::inputRefusal(std::uint32_t neededSpace, const QString &neededName) const
{
    if (colorSpace_ != neededSpace)
        return tr("这是一个 %1 色彩空间的配置文件，此处需要 %2 配置文件").arg(colorSpaceName(), neededName);
    if (!isInputClass(deviceClass_))
        return tr("这是一个%1配置文件，此处需要 %2 输入配置文件").arg(deviceClassName(), neededName);
    if (!usableAsInput_)
        return tr("这个配置文件不能把 %1 颜色转换到连接空间：%2").arg(neededName, inputError_);
    return QString();
}

QString IccProfileInfo::refusalFor(IccProfileSlot slot) const
{
    if (!isValid())
        return tr("这不是可用的 ICC 配置文件：%1").arg(error_);
    switch (slot) {
    case IccProfileSlot::Rgb:
        return inputRefusal(kSpaceRgb, QStringLiteral("RGB"));
    case IccProfileSlot::Cmyk:
        return inputRefusal(kSpaceCmyk, QStringLiteral("CMYK"));
    case IccProfileSlot::Equipment:
        if (deviceClass_ == kClassLink)
            return usableAsLink_ ? QString() : tr("这个设备链接无法使用：%1").arg(outputError_);
        if (deviceClass_ != kClassOutput)
            return tr("这是一个%1配置文件，此处需要输出设备配置文件或设备链接").arg(deviceClassName());
        if (!usableAsOutput_)
            return tr("这个输出设备配置文件不能把连接空间转换到设备颜色：%1").arg(outputError_);
        return QString();
    }
    return QString();
}
