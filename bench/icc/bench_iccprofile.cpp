// What the ICC profile check costs on the largest profiles an operator
// picks: CMYK output profiles of about 1 MB and 10 MB, beside a bare copy
// of the same file.
//
//   bench_iccprofile [runs]
//
// Both profiles are written at run time with Little CMS: an A2B0 table of
// 4 inputs and 3 outputs in 16 bits whose grid gives the size (20 points:
// about 1 MB; 36 points: about 10 MB) and a small B2A0 table back. Each run
// times IccProfileInfo::fromFile() and QFile::copy() of the file into a
// temporary folder, the two taking turns at going first; one untimed run of
// each comes before, so that both read from the page cache. Prints, per
// profile, the median and the worst of the runs (default 20) and the ratio
// of the medians. Exits non-zero when a profile does not pass the check as
// an output profile and a CMYK input profile.

#include "Icc/IccProfileInfo.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTextStream>

#include <lcms2.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace {

QTextStream &out()
{
    static QTextStream stream(stdout);
    return stream;
}

struct PipelineRelease
{
    void operator()(cmsPipeline *pipeline) const { cmsPipelineFree(pipeline); }
};
struct MluRelease
{
    void operator()(cmsMLU *mlu) const { cmsMLUfree(mlu); }
};
struct ProfileRelease
{
    void operator()(void *profile) const { cmsCloseProfile(profile); }
};
using Pipeline = std::unique_ptr<cmsPipeline, PipelineRelease>;
using Mlu = std::unique_ptr<cmsMLU, MluRelease>;
using Profile = std::unique_ptr<void, ProfileRelease>;

// A smooth stand-in for a measured printer: CMYK to Lab, in the 16-bit Lab
// encoding of version 4 (L 0..100 on 0..0xffff, a and b offset by 128).
cmsInt32Number cmykToLab(const cmsUInt16Number in[], cmsUInt16Number out[], void *)
{
    const double c = in[0] / 65535.0;
    const double m = in[1] / 65535.0;
    const double y = in[2] / 65535.0;
    const double k = in[3] / 65535.0;
    const double lightness = 100.0 * (1.0 - k) * (1.0 - 0.25 * c - 0.45 * m - 0.08 * y);
    const double a = 60.0 * m - 35.0 * c - 5.0 * y;
    const double b = 70.0 * y - 45.0 * c - 10.0 * m;
    const auto encode = [](double value, double offset, double scale) {
        return cmsUInt16Number(std::lround(std::clamp((value + offset) * scale, 0.0, 65535.0)));
    };
    out[0] = encode(std::max(lightness, 0.0), 0.0, 65535.0 / 100.0);
    out[1] = encode(a, 128.0, 257.0);
    out[2] = encode(b, 128.0, 257.0);
    return TRUE;
}

// The way back, as crude as the way there: lightness to black, the
// opponent axes to the chromatic inks.
cmsInt32Number labToCmyk(const cmsUInt16Number in[], cmsUInt16Number out[], void *)
{
    const double lightness = in[0] / 65535.0;
    const double a = in[1] / 65535.0 - 0.5;
    const double b = in[2] / 65535.0 - 0.5;
    const auto encode = [](double value) {
        return cmsUInt16Number(std::lround(std::clamp(value, 0.0, 1.0) * 65535.0));
    };
    out[0] = encode(0.8 * (1.0 - lightness) - a - 0.5 * b);
    out[1] = encode(0.8 * (1.0 - lightness) + a);
    out[2] = encode(0.8 * (1.0 - lightness) + b);
    out[3] = encode(0.5 * (1.0 - lightness));
    return TRUE;
}

// Curves, table, curves: the table form a version 4 profile stores as
// lutAtoBType and lutBtoAType.
Pipeline tablePipeline(cmsUInt32Number inputs, cmsUInt32Number outputs, cmsUInt32Number grid,
                       cmsSAMPLER16 sampler)
{
    Pipeline pipeline(cmsPipelineAlloc(nullptr, inputs, outputs));
    if (!pipeline)
        return nullptr;
    cmsStage *table = cmsStageAllocCLut16bit(nullptr, grid, inputs, outputs, nullptr);
    if (!table || !cmsStageSampleCLut16bit(table, sampler, nullptr, 0)) {
        if (table)
            cmsStageFree(table);
        return nullptr;
    }
    if (!cmsPipelineInsertStage(pipeline.get(), cmsAT_END,
                                cmsStageAllocToneCurves(nullptr, inputs, nullptr)) ||
        !cmsPipelineInsertStage(pipeline.get(), cmsAT_END, table) ||
        !cmsPipelineInsertStage(pipeline.get(), cmsAT_END,
                                cmsStageAllocToneCurves(nullptr, outputs, nullptr)))
        return nullptr;
    return pipeline;
}

Mlu text(const char *english, const wchar_t *chinese)
{
    Mlu mlu(cmsMLUalloc(nullptr, 2));
    if (mlu && (!cmsMLUsetASCII(mlu.get(), "en", "US", english) ||
                (chinese && !cmsMLUsetWide(mlu.get(), "zh", "CN", chinese))))
        return nullptr;
    return mlu;
}

// A CMYK output profile whose A2B0 table has `grid` points on each of its
// four inputs.
bool writeOutputProfile(const QString &path, cmsUInt32Number grid)
{
    const Profile profile(cmsCreateProfilePlaceholder(nullptr));
    if (!profile)
        return false;
    cmsSetProfileVersion(profile.get(), 4.3);
    cmsSetDeviceClass(profile.get(), cmsSigOutputClass);
    cmsSetColorSpace(profile.get(), cmsSigCmykData);
    cmsSetPCS(profile.get(), cmsSigLabData);
    cmsSetHeaderRenderingIntent(profile.get(), INTENT_PERCEPTUAL);

    const QByteArray name = QStringLiteral("Bench CMYK %1-point").arg(grid).toLatin1();
    const std::wstring chineseName = QStringLiteral("测试 CMYK %1 点").arg(grid).toStdWString();
    const Mlu description = text(name.constData(), chineseName.c_str());
    const Mlu copyright = text("No copyright, use freely", nullptr);
    const Pipeline toLab = tablePipeline(4, 3, grid, cmykToLab);
    const Pipeline toCmyk = tablePipeline(3, 4, 17, labToCmyk);
    if (!description || !copyright || !toLab || !toCmyk)
        return false;
    return cmsWriteTag(profile.get(), cmsSigProfileDescriptionTag, description.get()) &&
           cmsWriteTag(profile.get(), cmsSigCopyrightTag, copyright.get()) &&
           cmsWriteTag(profile.get(), cmsSigMediaWhitePointTag, cmsD50_XYZ()) &&
           cmsWriteTag(profile.get(), cmsSigAToB0Tag, toLab.get()) &&
           cmsWriteTag(profile.get(), cmsSigBToA0Tag, toCmyk.get()) &&
           cmsSaveProfileToFile(profile.get(), QFile::encodeName(path).constData());
}

struct Figures
{
    double median = 0;
    double worst = 0;
};

Figures figuresOf(std::vector<double> ms)
{
    std::sort(ms.begin(), ms.end());
    return {ms[ms.size() / 2], ms.back()};
}

struct Row
{
    QString name;
    qint64 bytes = 0;
    Figures check;
    Figures copy;
};

// Times the check and the copy of `path`, `runs` times each.
bool measure(const QString &path, const QString &copyDir, int runs, Row &row)
{
    const QString copyPath = copyDir + QStringLiteral("/copy.icc");
    const auto checkOnce = [&]() {
        QElapsedTimer timer;
        timer.start();
        const IccProfileInfo info = IccProfileInfo::fromFile(path, QLocale::Chinese);
        const double ms = timer.nsecsElapsed() / 1e6;
        const bool fits = info.isValid() && info.refusalFor(IccProfileSlot::Equipment).isEmpty() &&
                          info.refusalFor(IccProfileSlot::Cmyk).isEmpty();
        if (!fits)
            out() << row.name << ": the check refuses the profile: "
                  << (info.isValid() ? info.refusalFor(IccProfileSlot::Equipment) : info.error()) << '\n';
        return fits ? ms : -1.0;
    };
    const auto copyOnce = [&]() {
        QFile::remove(copyPath);
        QElapsedTimer timer;
        timer.start();
        const bool copied = QFile::copy(path, copyPath);
        const double ms = timer.nsecsElapsed() / 1e6;
        if (!copied)
            out() << row.name << ": the copy failed\n";
        return copied ? ms : -1.0;
    };
    if (checkOnce() < 0 || copyOnce() < 0)
        return false;
    std::vector<double> checks;
    std::vector<double> copies;
    for (int run = 0; run < runs; ++run) {
        double check = 0;
        double copy = 0;
        if (run % 2 == 0) {
            check = checkOnce();
            copy = copyOnce();
        } else {
            copy = copyOnce();
            check = checkOnce();
        }
        if (check < 0 || copy < 0)
            return false;
        checks.push_back(check);
        copies.push_back(copy);
    }
    QFile::remove(copyPath);
    row.check = figuresOf(checks);
    row.copy = figuresOf(copies);
    return true;
}

QString ms(double value)
{
    return QString::number(value, 'f', 2);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const int runs = args.size() > 1 ? std::max(1, args.at(1).toInt()) : 20;

    QTemporaryDir profileDir;
    QTemporaryDir copyDir;
    if (!profileDir.isValid() || !copyDir.isValid()) {
        out() << "cannot make the temporary folders\n";
        return 1;
    }
    struct Case
    {
        const char *name;
        cmsUInt32Number grid;
    };
    const Case cases[] = {{"1 MB", 20}, {"10 MB", 36}};
    std::vector<Row> rows;
    for (const Case &c : cases) {
        Row row;
        row.name = QString::fromLatin1(c.name);
        const QString path = profileDir.filePath(QStringLiteral("cmyk-%1.icc").arg(c.grid));
        if (!writeOutputProfile(path, c.grid)) {
            out() << row.name << ": Little CMS could not write the profile\n";
            return 1;
        }
        row.bytes = QFileInfo(path).size();
        if (!measure(path, copyDir.path(), runs, row))
            return 1;
        rows.push_back(row);
    }

    out() << "ICC profile check beside a bare copy, " << runs << " runs each, in ms (temporary folder "
          << QDir::tempPath() << ")\n";
    // One line per profile, every column but the first 13 wide.
    const auto line = [](const QStringList &cells) {
        QString text = cells.first().leftJustified(8);
        for (int i = 1; i < cells.size(); ++i)
            text += cells.at(i).rightJustified(13);
        return text + QLatin1Char('\n');
    };
    out() << line({QStringLiteral("profile"), QStringLiteral("bytes"), QStringLiteral("check median"),
                   QStringLiteral("check worst"), QStringLiteral("copy median"), QStringLiteral("copy worst"),
                   QStringLiteral("check/copy")});
    for (const Row &row : rows)
        out() << line({row.name, QString::number(row.bytes), ms(row.check.median), ms(row.check.worst),
                       ms(row.copy.median), ms(row.copy.worst),
                       QString::number(row.check.median / row.copy.median, 'f', 1)});
    return 0;
}
