// The ICC profile check on real profiles from Debian's packages, on device
// links made from them, on the project's own sample profiles and on files
// that are not profiles or are damaged.

#include "Icc/IccProfileCache.h"
#include "Icc/IccProfileInfo.h"

#include "IccTestProfiles.h"

#include <QDirIterator>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

using IccTestProfiles::colord;
using IccTestProfiles::deviceLink;
using IccTestProfiles::ghostscript;
using IccTestProfiles::installed;

namespace {

// What an operator reads of a profile, as one line a test can compare.
QString classified(const IccProfileInfo &info)
{
    return QStringLiteral("%1 %2 %3 %4 '%5'")
        .arg(IccProfileInfo::signatureText(info.deviceClass()), info.colorSpaceName(),
             info.connectionSpaceName(), info.versionText(), info.description());
}

// The header's own bytes, read without Little CMS: the check must agree.
QString headerSignatures(const QString &path)
{
    const QByteArray bytes = IccTestProfiles::readAll(path);
    return QString::fromLatin1(bytes.mid(12, 4) + ' ' + bytes.mid(16, 4) + ' ' + bytes.mid(20, 4));
}

QString sampleProfile(const QString &relative)
{
    return QStringLiteral(BEX_SAMPLE_ICC_DIR "/") + relative;
}

} // namespace

class IccProfileInfoTest : public QObject
{
    Q_OBJECT

private slots:
    void realProfile_isClassifiedAsLittleCmsReadsIt_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("expected");
        const auto row = [](const QString &path, const char *expected) {
            QTest::newRow(qPrintable(QFileInfo(path).fileName())) << path << QString::fromUtf8(expected);
        };
        // Ghostscript (libgs-common)
        row(ghostscript("a98.icc"), "mntr RGB XYZ 2.1 'Artifex Software A98 ICC Profile'");
        row(ghostscript("default_cmyk.icc"), "prtr CMYK Lab 2.1 'Artifex CMYK SWOP Profile'");
        row(ghostscript("default_gray.icc"), "mntr 灰度 XYZ 2.1 'Artifex Software sGray ICC Profile'");
        row(ghostscript("default_rgb.icc"), "mntr RGB XYZ 2.1 'Artifex Software sRGB ICC Profile'");
        row(ghostscript("esrgb.icc"), "mntr RGB XYZ 2.1 'Artifex Software esRGB ICCProfile'");
        row(ghostscript("gray_to_k.icc"), "prtr CMYK XYZ 4.2 'Artifex PS CMYK Profile'");
        row(ghostscript("lab.icc"), "spac Lab Lab 2.1 'Lab2Lab'");
        row(ghostscript("ps_cmyk.icc"), "prtr CMYK XYZ 4.2 'Artifex PS CMYK Profile'");
        row(ghostscript("ps_gray.icc"), "mntr 灰度 XYZ 4.2 'Artifex PS Gray Profile'");
        row(ghostscript("ps_rgb.icc"), "mntr RGB XYZ 4.2 'Artifex PS RGB Profile'");
        row(ghostscript("rommrgb.icc"), "mntr RGB XYZ 2.1 'Artifex Software ROMMRGB ICC'");
        row(ghostscript("scrgb.icc"), "mntr RGB XYZ 2.1 'Artifex Software scRGB ICCProfile'");
        row(ghostscript("sgray.icc"), "mntr 灰度 XYZ 2.1 'Artifex Software sGray ICC Profile'");
        row(ghostscript("srgb.icc"), "mntr RGB XYZ 2.1 'Artifex Software sRGB ICC Profile'");
        // colord (colord-data): RGB working spaces and named colours
        row(colord("AdobeRGB1998.icc"), "mntr RGB XYZ 4.4 'Compatible with Adobe RGB (1998)'");
        row(colord("AppleRGB.icc"), "mntr RGB XYZ 4.4 'Apple RGB'");
        row(colord("BestRGB.icc"), "mntr RGB XYZ 4.4 'Best RGB'");
        row(colord("BetaRGB.icc"), "mntr RGB XYZ 4.4 'Beta RGB'");
        row(colord("Bluish.icc"), "mntr RGB XYZ 4.4 'Blue'");
        row(colord("BruceRGB.icc"), "mntr RGB XYZ 4.4 'Bruce RGB'");
        row(colord("CIE-RGB.icc"), "mntr RGB XYZ 4.4 'CIE RGB'");
        row(colord("ColorMatchRGB.icc"), "mntr RGB XYZ 4.4 'ColorMatch RGB'");
        row(colord("Crayons.icc"), "nmcl Lab Lab 4.4 'Crayon Colors'");
        row(colord("DonRGB4.icc"), "mntr RGB XYZ 4.4 'Don RGB 4'");
        row(colord("ECI-RGBv1.icc"), "mntr RGB XYZ 4.4 'eciRGB v1'");
        row(colord("ECI-RGBv2.icc"), "mntr RGB XYZ 4.4 'eciRGB v2'");
        row(colord("EktaSpacePS5.icc"), "mntr RGB XYZ 4.4 'Ekta Space PS5'");
        row(colord("Gamma5000K.icc"), "mntr RGB XYZ 4.4 'D50'");
        row(colord("Gamma5500K.icc"), "mntr RGB XYZ 4.4 'D55'");
        row(colord("Gamma6500K.icc"), "mntr RGB XYZ 4.4 'D65'");
        row(colord("NTSC-RGB.icc"), "mntr RGB XYZ 4.4 'NTSC RGB'");
        row(colord("PAL-RGB.icc"), "mntr RGB XYZ 4.4 'PAL/SECAM RGB'");
        row(colord("ProPhotoRGB.icc"), "mntr RGB XYZ 4.4 'ProPhoto RGB'");
        row(colord("Rec709.icc"), "mntr RGB XYZ 4.4 'Rec. 709'");
        row(colord("SMPTE-C-RGB.icc"), "mntr RGB XYZ 4.4 'SMPTE-C RGB'");
        row(colord("SwappedRedAndGreen.icc"), "mntr RGB XYZ 4.4 'Swapped Red and Green'");
        row(colord("WideGamutRGB.icc"), "mntr RGB XYZ 4.4 'Wide Gamut RGB'");
        row(colord("sRGB.icc"), "mntr RGB XYZ 4.4 'sRGB'");
        row(colord("x11-colors.icc"), "nmcl Lab Lab 4.4 'X11 Colors'");
        // icc-profiles-free: abstract, Lab and XYZ identities, gray
        row(installed("CineLogCurve.icc"), "abst Lab Lab 2.3 'CineLogCurve'");
        row(installed("Gray-CIE_L.icc"), "mntr 灰度 Lab 2.3 'Gray CIE*L'");
        row(installed("ITULab.icc"), "spac Lab Lab 2.3 'ITULab'");
        row(installed("LCMSLABI.ICM"), "mntr Lab Lab 2.1 'little cms Relative L*a*b* identity profile'");
        row(installed("LCMSXYZI.ICM"), "mntr XYZ XYZ 2.1 'little cms Relative XYZ identity profile'");
        row(installed("compatibleWithAdobeRGB1998.icc"),
            "mntr RGB XYZ 2.2 'Compatible with Adobe RGB (1998)'");
        // Device links made by linkicc at test time
        row(deviceLink("rgb-to-cmyk.icc"), "link RGB CMYK 4.3 'sRGB to SWOP CMYK'");
        row(deviceLink("cmyk-to-cmyk.icc"), "link CMYK CMYK 4.3 'SWOP CMYK to PS CMYK'");
    }

    void realProfile_isClassifiedAsLittleCmsReadsIt()
    {
        QFETCH(QString, path);
        QFETCH(QString, expected);
        const IccProfileInfo info = IccProfileInfo::fromFile(path, QLocale::English);
        QVERIFY2(info.isValid(), qPrintable(info.error()));
        QCOMPARE(info.error(), QString());
        QCOMPARE(classified(info), expected);
        QCOMPARE(headerSignatures(path), QStringLiteral("%1 %2 %3")
                                             .arg(IccProfileInfo::signatureText(info.deviceClass()),
                                                  IccProfileInfo::signatureText(info.colorSpace()),
                                                  IccProfileInfo::signatureText(info.connectionSpace())));
    }

    // Every profile the packages install passes the check, so that none is
    // left out of the table above by a Debian update without a test noticing.
    void everyInstalledProfile_passesTheCheck()
    {
        int checked = 0;
        QDirIterator it(QStringLiteral(BEX_SYSTEM_ICC_DIR),
                        {QStringLiteral("*.icc"), QStringLiteral("*.ICC"), QStringLiteral("*.icm"),
                         QStringLiteral("*.ICM")},
                        QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            const IccProfileInfo info = IccProfileInfo::fromFile(path, QLocale::Chinese);
            QVERIFY2(info.isValid(), qPrintable(path + QStringLiteral(": ") + info.error()));
            ++checked;
        }
        QVERIFY2(checked >= 52, qPrintable(QString::number(checked)));
    }

    void sampleProfiles_passTheCheckAndFitTheirFolder_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<int>("slot");
        QTest::newRow("RGB") << QStringLiteral("RGB") << int(IccProfileSlot::Rgb);
        QTest::newRow("CMYK") << QStringLiteral("CMYK") << int(IccProfileSlot::Cmyk);
        QTest::newRow("OUTPUT") << QStringLiteral("OUTPUT") << int(IccProfileSlot::Equipment);
    }

    void sampleProfiles_passTheCheckAndFitTheirFolder()
    {
        QFETCH(QString, folder);
        QFETCH(int, slot);
        const QDir dir(sampleProfile(folder));
        const QStringList names = dir.entryList(QDir::Files);
        QVERIFY(!names.isEmpty());
        for (const QString &name : names) {
            const IccProfileInfo info = IccProfileInfo::fromFile(dir.filePath(name), QLocale::Chinese);
            QVERIFY2(info.isValid(), qPrintable(name + QStringLiteral(": ") + info.error()));
            QCOMPARE(info.refusalFor(IccProfileSlot(slot)), QString());
            QCOMPARE(info.description(),
                     QFileInfo(name).completeBaseName().replace(QLatin1Char('_'), QLatin1Char(' ')));
        }
    }

    void slots_takeExactlyTheProfilesThatFit_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("rgb");
        QTest::addColumn<bool>("cmyk");
        QTest::addColumn<bool>("equipment");
        const auto row = [](const QString &path, bool rgb, bool cmyk, bool equipment) {
            QTest::newRow(qPrintable(QFileInfo(path).fileName())) << path << rgb << cmyk << equipment;
        };
        row(ghostscript("srgb.icc"), true, false, false);
        row(ghostscript("ps_rgb.icc"), true, false, false);
        row(ghostscript("a98.icc"), true, false, false);
        row(colord("ProPhotoRGB.icc"), true, false, false);
        row(installed("compatibleWithAdobeRGB1998.icc"), true, false, false);
        // Output profiles serve as CMYK input too (proofing a CMYK job).
        row(ghostscript("default_cmyk.icc"), false, true, true);
        row(ghostscript("ps_cmyk.icc"), false, true, true);
        row(ghostscript("gray_to_k.icc"), false, true, true);
        row(ghostscript("sgray.icc"), false, false, false);
        row(ghostscript("lab.icc"), false, false, false);
        row(installed("ITULab.icc"), false, false, false);
        row(installed("CineLogCurve.icc"), false, false, false);
        row(installed("LCMSXYZI.ICM"), false, false, false);
        row(colord("Crayons.icc"), false, false, false);
        row(colord("x11-colors.icc"), false, false, false);
        row(deviceLink("rgb-to-cmyk.icc"), false, false, true);
        row(deviceLink("cmyk-to-cmyk.icc"), false, false, true);
    }

    void slots_takeExactlyTheProfilesThatFit()
    {
        QFETCH(QString, path);
        QFETCH(bool, rgb);
        QFETCH(bool, cmyk);
        QFETCH(bool, equipment);
        const IccProfileInfo info = IccProfileInfo::fromFile(path, QLocale::Chinese);
        QVERIFY2(info.isValid(), qPrintable(info.error()));
        QCOMPARE(info.refusalFor(IccProfileSlot::Rgb).isEmpty(), rgb);
        QCOMPARE(info.refusalFor(IccProfileSlot::Cmyk).isEmpty(), cmyk);
        QCOMPARE(info.refusalFor(IccProfileSlot::Equipment).isEmpty(), equipment);
    }

    void refusal_saysWhatTheFileIsAndWhatTheSlotNeeds_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("slot");
        QTest::addColumn<QString>("refusal");
        QTest::newRow("Lab in the RGB slot")
            << ghostscript("lab.icc") << int(IccProfileSlot::Rgb)
            << QStringLiteral("这是一个 Lab 色彩空间的配置文件，此处需要 RGB 配置文件");
        QTest::newRow("RGB in the CMYK slot")
            << ghostscript("srgb.icc") << int(IccProfileSlot::Cmyk)
            << QStringLiteral("这是一个 RGB 色彩空间的配置文件，此处需要 CMYK 配置文件");
        QTest::newRow("gray in the CMYK slot")
            << ghostscript("sgray.icc") << int(IccProfileSlot::Cmyk)
            << QStringLiteral("这是一个 灰度 色彩空间的配置文件，此处需要 CMYK 配置文件");
        QTest::newRow("device link in the RGB slot")
            << deviceLink("rgb-to-cmyk.icc") << int(IccProfileSlot::Rgb)
            << QStringLiteral("这是一个设备链接配置文件，此处需要 RGB 输入配置文件");
        QTest::newRow("display profile as the equipment")
            << ghostscript("srgb.icc") << int(IccProfileSlot::Equipment)
            << QStringLiteral("这是一个显示器配置文件，此处需要输出设备配置文件或设备链接");
        QTest::newRow("named colours as the equipment")
            << colord("Crayons.icc") << int(IccProfileSlot::Equipment)
            << QStringLiteral("这是一个命名颜色配置文件，此处需要输出设备配置文件或设备链接");
    }

    void refusal_saysWhatTheFileIsAndWhatTheSlotNeeds()
    {
        QFETCH(QString, path);
        QFETCH(int, slot);
        QFETCH(QString, refusal);
        QCOMPARE(IccProfileInfo::fromFile(path, QLocale::Chinese).refusalFor(IccProfileSlot(slot)), refusal);
    }

    void summary_describesTheProfileLineByLine()
    {
        const IccProfileInfo info =
            IccProfileInfo::fromFile(ghostscript("default_cmyk.icc"), QLocale::Chinese);
        QCOMPARE(info.summary(), QStringLiteral("描述：Artifex CMYK SWOP Profile\n"
                                                "类别：输出设备（prtr）\n"
                                                "色彩空间：CMYK，连接空间：Lab\n"
                                                "ICC 版本：2.1"));
    }

    void description_followsTheLanguageElseTheFirstText()
    {
        QTemporaryDir dir;
        const QString both = dir.filePath(QStringLiteral("both.icc"));
        QVERIFY(IccTestProfiles::write(both,
                                       IccTestProfiles::srgbDescribed({{"en_US", QStringLiteral("Vivid")},
                                                                       {"zh_CN", QStringLiteral("鲜艳")}})));
        QCOMPARE(IccProfileInfo::fromFile(both, QLocale::English).description(), QStringLiteral("Vivid"));
        QCOMPARE(IccProfileInfo::fromFile(both, QLocale::Chinese).description(), QStringLiteral("鲜艳"));
        // The module's default, before any language is chosen, is Chinese.
        QCOMPARE(IccProfileInfo::fromFile(both, QLocale::AnyLanguage).description(), QStringLiteral("鲜艳"));
        const QString neither = dir.filePath(QStringLiteral("neither.icc"));
        QVERIFY(IccTestProfiles::write(neither,
                                       IccTestProfiles::srgbDescribed({{"de_DE", QStringLiteral("Lebhaft")},
                                                                       {"fr_FR", QStringLiteral("Vif")}})));
        QCOMPARE(IccProfileInfo::fromFile(neither, QLocale::English).description(),
                 QStringLiteral("Lebhaft"));
        QCOMPARE(IccProfileInfo::fromFile(neither, QLocale::Chinese).description(),
                 QStringLiteral("Lebhaft"));
    }

    // ---- files that are not usable profiles --------------------------------

    void notAProfile_isRefusedWithTheReason_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("error");
        const QByteArray srgb = IccTestProfiles::readAll(ghostscript("srgb.icc"));
        QVERIFY(srgb.size() > 1000);

        QByteArray jpeg;
        {
            QImage image(32, 32, QImage::Format_RGB32);
            image.fill(Qt::red);
            QBuffer buffer(&jpeg);
            QVERIFY(buffer.open(QIODevice::WriteOnly));
            QVERIFY(image.save(&buffer, "JPG"));
        }
        QCOMPARE(jpeg.left(2), QByteArray("\xff\xd8"));
        QTest::newRow("JPEG") << jpeg << QStringLiteral("文件头里没有 ICC 配置文件的标记 \"acsp\"");
        QTest::newRow("empty") << QByteArray() << QStringLiteral("文件是空的");
        QTest::newRow("cut after 128 bytes")
            << srgb.left(128) << QStringLiteral("文件只有 128 字节，放不下 ICC 文件头");
        QTest::newRow("cut in a tag")
            << srgb.left(1000)
            << QStringLiteral("文件不完整：文件头写明 %1 字节，文件只有 1000 字节").arg(srgb.size());

        QByteArray pastEnd = srgb;
        IccTestProfiles::putBigEndian32(pastEnd, 132 + 4, quint32(srgb.size()) - 8); // first tag's offset
        QTest::newRow("tag pointing past the end")
            << pastEnd
            << QStringLiteral("标签 \"%1\" 指向配置文件之外").arg(QString::fromLatin1(srgb.mid(132, 4)));

        QByteArray tooManyTags = srgb;
        IccTestProfiles::putBigEndian32(tooManyTags, 128, 0x10000000);
        QTest::newRow("tag table past the end")
            << tooManyTags << QStringLiteral("标签表（268435456 个标签）超出了配置文件的末尾");

        QByteArray smallSize = srgb;
        IccTestProfiles::putBigEndian32(smallSize, 0, 100);
        QTest::newRow("declared size below the header")
            << smallSize << QStringLiteral("文件头写明的大小（100 字节）放不下文件头");
    }

    void notAProfile_isRefusedWithTheReason()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, error);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("profile.icc"));
        QVERIFY(IccTestProfiles::write(path, bytes));
        const IccProfileInfo info = IccProfileInfo::fromFile(path, QLocale::Chinese);
        QVERIFY(!info.isValid());
        QCOMPARE(info.error(), error);
        for (IccProfileSlot slot : {IccProfileSlot::Rgb, IccProfileSlot::Cmyk, IccProfileSlot::Equipment})
            QCOMPARE(info.refusalFor(slot), QStringLiteral("这不是可用的 ICC 配置文件：") + error);
        QCOMPARE(info.summary(), error);
        // The same bytes from memory give the same answer.
        QCOMPARE(IccProfileInfo::fromData(bytes, QLocale::Chinese).error(), error);
    }

    // A profile whose header and tag table are sound but whose colour table
    // Little CMS cannot read: caught when the check builds the transform.
    void damagedTable_isRefusedForTheDirectionsThatNeedIt()
    {
        QByteArray cmyk = IccTestProfiles::readAll(ghostscript("default_cmyk.icc"));
        const int a2b0 = IccTestProfiles::tagOffset(cmyk, "A2B0");
        const int b2a0 = IccTestProfiles::tagOffset(cmyk, "B2A0");
        QVERIFY(a2b0 > 0 && b2a0 > 0);
        cmyk.replace(b2a0, 4, "bad!"); // the table's type signature
        const IccProfileInfo info = IccProfileInfo::fromData(cmyk, QLocale::Chinese);
        QVERIFY2(info.isValid(), qPrintable(info.error()));
        QVERIFY(info.usableAsInput());
        QVERIFY(!info.usableAsOutput());
        QCOMPARE(info.refusalFor(IccProfileSlot::Cmyk), QString());
        QVERIFY(info.refusalFor(IccProfileSlot::Equipment)
                    .startsWith(QStringLiteral("这个输出设备配置文件不能把连接空间转换到设备颜色：")));
    }

    void tooLargeFile_isRefusedBeforeItIsRead()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("huge.icc"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.resize(IccProfileInfo::kMaxFileSize + 1));
        file.close();
        const IccProfileInfo info = IccProfileInfo::fromFile(path, QLocale::Chinese);
        QCOMPARE(info.error(), QStringLiteral("文件太大（%1 字节，最多 %2 字节）")
                                   .arg(IccProfileInfo::kMaxFileSize + 1)
                                   .arg(IccProfileInfo::kMaxFileSize));
    }

    void missingFileOrFolder_isRefused()
    {
        QTemporaryDir dir;
        QCOMPARE(IccProfileInfo::fromFile(dir.filePath(QStringLiteral("gone.icc")), QLocale::Chinese).error(),
                 QStringLiteral("文件不存在"));
        QCOMPARE(IccProfileInfo::fromFile(dir.path(), QLocale::Chinese).error(),
                 QStringLiteral("这不是一个文件"));
    }

    // The cache answers from memory while the file keeps its size and time,
    // and checks again as soon as either changes.
    void cache_checksAgainOnlyWhenTheFileChanged()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("profile.icc"));
        const QByteArray srgb = IccTestProfiles::readAll(ghostscript("srgb.icc"));
        QVERIFY(IccTestProfiles::write(path, srgb));
        IccProfileCache cache(QLocale::Chinese);
        QVERIFY(cache.check(path).isValid());

        // Other bytes of the same size under the same time: still the
        // answer of the first check.
        const QDateTime modified = QFileInfo(path).lastModified();
        QByteArray damaged = srgb;
        damaged.replace(36, 4, "xxxx");
        QVERIFY(IccTestProfiles::write(path, damaged));
        {
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(modified, QFileDevice::FileModificationTime));
        }
        QVERIFY(cache.check(path).isValid());

        // A new time: checked again.
        {
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(modified.addSecs(5), QFileDevice::FileModificationTime));
        }
        QCOMPARE(cache.check(path).error(), QStringLiteral("文件头里没有 ICC 配置文件的标记 \"acsp\""));
        // A new size: checked again.
        QVERIFY(IccTestProfiles::write(path, srgb.left(200)));
        QVERIFY(cache.check(path).error().startsWith(QStringLiteral("文件不完整")));
        // Gone: said so, and nothing kept.
        QVERIFY(QFile::remove(path));
        QCOMPARE(cache.check(path).error(), QStringLiteral("文件不存在"));
        QVERIFY(IccTestProfiles::write(path, srgb));
        QVERIFY(cache.check(path).isValid());
    }

    void signatureText_isPrintableOrHex()
    {
        QCOMPARE(IccProfileInfo::signatureText(0x6d6e7472), QStringLiteral("mntr"));
        QCOMPARE(IccProfileInfo::signatureText(0x00000001), QStringLiteral("0x00000001"));
    }
};

QTEST_MAIN(IccProfileInfoTest)
#include "tst_iccprofileinfo.moc"
