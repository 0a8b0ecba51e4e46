// Speed and memory of the driver property dialog on a large driver:
// 8 resolutions x 40 media x 12 ink sets (3,840 combinations, ICC settings on
// every other one), 16 channels and 30 common properties, with the open
// print-parameter library.
//
//   QT_QPA_PLATFORM=offscreen bench_propertydlg
//
// Reported, all in one run:
//   - time until the dialog is ready (construction, which reads the driver),
//     beside the floor: the same handler calls replayed without any widget;
//   - one change of the combined type;
//   - resident memory before and after 1,000 open/close cycles.
// Debug lines are switched off, as a host does in production.

#include "ResidentMemory.h"

#include "Config/PrinterDriverConfig.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverPropertyDlg.h"

#include <IUIPrintParamsHandler.h>

#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QtTest>

#include <algorithm>
#include <list>
#include <string>
#include <vector>

namespace {

constexpr int Resolutions = 8;
constexpr int Media = 40;
constexpr int InkSets = 12;
constexpr int Channels = 16;
constexpr int CommonProperties = 30;

QJsonObject enumItem(int enumId, const char *kind, const QString &key, int count, const QString &valuePrefix)
{
    QJsonArray values;
    for (int i = 0; i < count; ++i) {
        QJsonObject value{{QStringLiteral("text"), valuePrefix + QString::number(i)}};
        if (QLatin1String(kind) == QLatin1String("resolution")) {
            value.insert(QStringLiteral("xDpi"), 360 * (1 + i % 4));
            value.insert(QStringLiteral("yDpi"), 300 * (1 + i / 4));
        }
        values.append(value);
    }
    QJsonObject item{{QStringLiteral("enumId"), enumId},
                     {QStringLiteral("key"), key},
                     {QStringLiteral("selected"), count / 2},
                     {QStringLiteral("values"), values}};
    if (kind)
        item.insert(QStringLiteral("kind"), QLatin1String(kind));
    return item;
}

QByteArray syntheticDriver()
{
    QJsonArray enums;
    enums.append(enumItem(1, "resolution", QStringLiteral("打印精度"), Resolutions, QStringLiteral("精度 ")));
    enums.append(enumItem(2, "paper", QStringLiteral("纸张"), Media, QStringLiteral("介质 ")));
    enums.append(enumItem(3, "ink", QStringLiteral("墨水"), InkSets, QStringLiteral("墨水组 ")));
    for (int i = 0; i < CommonProperties; ++i)
        enums.append(
            enumItem(10 + i, nullptr, QStringLiteral("属性 %1").arg(i), 2 + i % 6, QStringLiteral("值 ")));
    QJsonArray channels;
    for (int i = 0; i < Channels; ++i) {
        channels.append(QJsonObject{{QStringLiteral("name"), i < 4 ? QStringList{"C", "M", "Y", "K"}.at(i)
                                                                   : QStringLiteral("Spot%1").arg(i)},
                                    {QStringLiteral("density"), 0.0},
                                    {QStringLiteral("maxInk"), 0.9},
                                    {QStringLiteral("order"), Channels - 1 - i},
                                    {QStringLiteral("on"), true}});
    }
    QJsonArray combinations;
    for (int r = 0; r < Resolutions; ++r) {
        for (int p = 0; p < Media; ++p) {
            for (int k = 0; k < InkSets; ++k) {
                if ((r + p + k) % 2 != 0)
                    continue;
                combinations.append(
                    QJsonObject{{QStringLiteral("resolution"), r},
                                {QStringLiteral("paper"), p},
                                {QStringLiteral("ink"), k},
                                {QStringLiteral("icc"),
                                 QJsonObject{{QStringLiteral("rgb"), QStringLiteral("Bex sRGB v4.icc")},
                                             {QStringLiteral("cmyk"), QStringLiteral("Bex Coated CMYK.icc")},
                                             {QStringLiteral("output"),
                                              QStringLiteral("Curve_%1_%2_%3.icc").arg(r).arg(p).arg(k)},
                                             {QStringLiteral("intent"), (r + p) % 4}}}});
            }
        }
    }
    const QJsonObject driver{{QStringLiteral("format"), QStringLiteral("BexPrinterDescription")},
                             {QStringLiteral("formatVersion"), 1},
                             {QStringLiteral("driverName"), QStringLiteral("Bench flatbed 16C")},
                             {QStringLiteral("modeId"), 0},
                             {QStringLiteral("enums"), enums},
                             {QStringLiteral("channels"), channels},
                             {QStringLiteral("combinations"), combinations}};
    return QJsonDocument(driver).toJson(QJsonDocument::Compact);
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values.at(values.size() / 2);
}

} // namespace

class BenchPropertyDlg : public QObject
{
    Q_OBJECT

private:
    QString driverId_;

    IUIPrintParamsHandler *handler() const { return PrinterDriverManager::instance()->getHandler(); }

    // What opening the dialog asks of the handler, without a widget.
    void replayOpening()
    {
        IUIPrintParamsHandler *h = handler();
        const std::string id = driverId_.toLocal8Bit().toStdString();
        h->SelectPrinterDriverPrs(id.c_str(), 0);
        h->GetCurDriverName();
        const printerEnumItem *dpi = h->GetSelectEnumItem(kEnumKindResolution);
        const printerEnumItem *paper = h->GetSelectEnumItem(kEnumKindPaper);
        const printerEnumItem *ink = h->GetSelectEnumItem(kEnumKindInk);
        std::list<printerEnumItem *> items;
        h->GetAllEnumItemList(items);
        const std::uint32_t dpiId = dpi->enumId;
        const std::uint32_t paperId = paper->enumId;
        const std::uint32_t inkId = ink->enumId;
        const int dpiIndex = dpi->index;
        const int paperIndex = paper->index;
        const int inkIndex = ink->index;
        for (int i = 0; i < InkSets; ++i) {
            h->SetEnumItem(inkId, i);
            for (int j = 0; j < Media; ++j) {
                h->SetEnumItem(paperId, j);
                for (int k = 0; k < Resolutions; ++k) {
                    h->SetEnumItem(dpiId, k);
                    h->GetIccSettingInfo();
                }
            }
        }
        h->SetEnumItem(dpiId, dpiIndex);
        h->SetEnumItem(paperId, paperIndex);
        h->SetEnumItem(inkId, inkIndex);
        h->GetIccSettingInfo();
        h->GetChannelColorInfo();
        h->GetChannelColorInfo();
        h->GetInkOrderInfo();
    }

private slots:
    void initTestCase()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("bex.*.debug=false"));
        const QString prs = PrinterDriverConfig::instance()->driverDir() + QStringLiteral("bench_16c.prs");
        QVERIFY(QDir().mkpath(PrinterDriverConfig::instance()->driverDir()));
        QFile file(prs);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(syntheticDriver());
        file.close();
        QVERIFY(handler());
        auto info = PrinterDriverManager::instance()->findDriverInfoByPrsPath(prs);
        if (!info)
            info = PrinterDriverManager::instance()->installDriver(prs);
        QVERIFY(info);
        driverId_ = info->id;
        PrinterDriverPropertyDlg dialog(driverId_, nullptr);
        const auto *combo = dialog.findChild<QComboBox *>(QStringLiteral("comboBox_combinedType_"));
        qInfo("combined types listed: %d of %d", combo->count(), Resolutions * Media * InkSets);
        QCOMPARE(combo->count(), Resolutions * Media * InkSets / 2);
    }

    void cleanupTestCase() { PrinterDriverManager::instance()->unload(); }

    void timeToReadyBesideTheFloor()
    {
        constexpr int rounds = 30;
        std::vector<double> dialogMs;
        std::vector<double> floorMs;
        QElapsedTimer timer;
        for (int round = 0; round < rounds; ++round) {
            timer.start();
            replayOpening();
            floorMs.push_back(timer.nsecsElapsed() / 1e6);
            timer.start();
            {
                PrinterDriverPropertyDlg dialog(driverId_, nullptr);
                dialogMs.push_back(timer.nsecsElapsed() / 1e6);
            }
        }
        const double dialog = median(dialogMs);
        const double floor = median(floorMs);
        qInfo("time to ready: %.2f ms (median of %d); floor (handler calls only): %.2f ms; ratio %.2f",
              dialog, rounds, floor, dialog / floor);
    }

    void combinedTypeChange()
    {
        PrinterDriverPropertyDlg dialog(driverId_, nullptr);
        auto *combo = dialog.findChild<QComboBox *>(QStringLiteral("comboBox_combinedType_"));
        std::vector<double> ms;
        QElapsedTimer timer;
        for (int i = 1; i <= 200; ++i) {
            timer.start();
            combo->setCurrentIndex((i * 37) % combo->count());
            ms.push_back(timer.nsecsElapsed() / 1e6);
        }
        qInfo("combined-type change: %.3f ms median, %.3f ms worst of %zu", median(ms),
              *std::max_element(ms.begin(), ms.end()), ms.size());
    }

    void residentMemoryOver1000Cycles()
    {
        for (int i = 0; i < 50; ++i)
            PrinterDriverPropertyDlg warmUp(driverId_, nullptr);
        const long before = residentKiB();
        QStringList steps;
        for (int i = 1; i <= 1000; ++i) {
            PrinterDriverPropertyDlg dialog(driverId_, nullptr);
            dialog.show();
            dialog.close();
            if (i % 250 == 0)
                steps << QStringLiteral("%1: %2").arg(i).arg(residentKiB());
        }
        const long after = residentKiB();
        qInfo("resident memory by cycles (KiB): %s", qPrintable(steps.join(QStringLiteral(", "))));
        qInfo("resident memory: %ld KiB after warm-up, %ld KiB after 1000 open/close cycles (%+ld KiB)",
              before, after, after - before);
        QVERIFY(before > 0);
    }
};

QTEST_MAIN(BenchPropertyDlg)
#include "bench_propertydlg.moc"
