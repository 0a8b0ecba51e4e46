// The open print-parameter library end to end, through its two exported
// functions only: installing the sample drivers, listing, renaming,
// selecting, reading and changing every record kind, committing, and reading
// the committed values back with a new handler; bad input is refused.

#include "LogCapture.h"
#include "SampleDriverFiles.h"
#include "TestAppDir.h"

#include <IUIPrintParamsHandler.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <cmath>
#include <cstring>
#include <list>
#include <string>

namespace {

const QString uv2513 = QStringLiteral("BexUV2513_CMYKWV");
const QString uv1610 = QStringLiteral("BexUV1610_CMYKLcLm");
const QString uv3220 = QStringLiteral("BexUV3220_8C");

// Enum ids and value indices of the BexUV2513 sample.
constexpr std::uint32_t resolutionId = 1;
constexpr std::uint32_t paperId = 2;
constexpr std::uint32_t inkId = 3;
constexpr std::uint32_t featheringId = 12;
constexpr int acrylic = 0;
constexpr int glass = 1;
constexpr int metal = 2;
constexpr int wood = 3;

std::string local(const QString &text)
{
    return text.toLocal8Bit().toStdString();
}

QString text(const char *value)
{
    return QString::fromLocal8Bit(value);
}

struct Driver
{
    QString id;
    QString name;
    QString showName;
    QString prs;
};

QStringList values(const printerEnumItem *item)
{
    QStringList result;
    for (int i = 0; i < item->valueSize; ++i)
        result << text(item->values[i]);
    return result;
}

QStringList channelNames(const printerChannelColorInfo *info)
{
    QStringList result;
    for (int i = 0; i < info->pcciChanneNum; ++i)
        result << text(info->channels[i].iciName);
    return result;
}

QVector<int> orders(const printerInkOrderInfo *info)
{
    QVector<int> result;
    for (int i = 0; i < info->pioiInkNum; ++i)
        result << info->pioiInkOrder[i];
    return result;
}

QVector<int> offFlags(const printerInkOrderInfo *info)
{
    QVector<int> result;
    for (int i = 0; i < info->pioiInkNum; ++i)
        result << info->PioiInkOFFON[i];
    return result;
}

} // namespace

class TestUIPrintParamsHandler : public QObject
{
    Q_OBJECT

private:
    IUIPrintParamsHandler *handler_ = nullptr;

    QVector<Driver> list()
    {
        std::list<printerInfoItem *> items;
        handler_->GetAllPrinterDriverList(items);
        QVector<Driver> result;
        for (const printerInfoItem *item : items)
            result.append(
                {text(item->piiId), text(item->piiName), text(item->piiShowName), text(item->piiPrs)});
        return result;
    }

    QString install(const QString &sample)
    {
        const std::string path = local(SampleDriverFiles::prsPath(sample));
        const printerInfoItem *item = handler_->AddPrinterDriverPrs(path.c_str(), 0);
        return item ? text(item->piiId) : QString();
    }

    // A sample's description as JSON, to derive other descriptions from.
    static QJsonObject sampleDocument(const QString &sample)
    {
        return QJsonDocument::fromJson(
                   TestAppDir::readFile(QStringLiteral("dtp/driver/") + sample + QStringLiteral(".prs")))
            .object();
    }

    // Writes a description into "dtp/driver/" and installs it; its id, or
    // empty when the library refused it.
    QString installDocument(const QString &fileName, const QJsonObject &document)
    {
        const QString file = QStringLiteral("dtp/driver/") + fileName;
        if (!TestAppDir::writeFile(file, QJsonDocument(document).toJson()))
            return QString();
        const printerInfoItem *item =
            handler_->AddPrinterDriverPrs(local(TestAppDir::filePath(file)).c_str(), 0);
        return item ? text(item->piiId) : QString();
    }

    bool select(const QString &id, unsigned int language = 0)
    {
        return handler_->SelectPrinterDriverPrs(local(id).c_str(), language);
    }

    // Commits the selected driver, replaces the handler and selects the
    // driver again, so that what follows reads the committed file.
    bool commitAndSelectAgain(const QString &id)
    {
        if (!handler_->CommitPrinterDriverPrs(0))
            return false;
        restartHandler();
        return select(id);
    }

    void restartHandler()
    {
        DestroyUIPrintParamsHandler(handler_);
        handler_ = CreateUIPrintParamsHandler();
    }

    QByteArray registryBytes() const
    {
        QFile file(SampleDriverFiles::registryPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
    }

private slots:
    void init()
    {
        QVERIFY(SampleDriverFiles::restage());
        handler_ = CreateUIPrintParamsHandler();
        QVERIFY(handler_);
    }

    void cleanup()
    {
        DestroyUIPrintParamsHandler(handler_);
        handler_ = nullptr;
    }

    void installedDrivers_areListedWithStableIds()
    {
        QVERIFY(list().isEmpty());
        const QString a = install(uv2513);
        const QString b = install(uv1610);
        const QString c = install(uv3220);
        QVERIFY(!a.isEmpty() && !b.isEmpty() && !c.isEmpty());
        QCOMPARE(QSet<QString>({a, b, c}).size(), 3);

        const auto before = list();
        QCOMPARE(before.size(), 3);
        QCOMPARE(before.at(0).id, a);
        QCOMPARE(before.at(0).name, QStringLiteral("Bex UV2513 CMYK+W+V"));
        QCOMPARE(before.at(0).showName, before.at(0).name);
        QCOMPARE(before.at(0).prs, SampleDriverFiles::prsPath(uv2513));
        QCOMPARE(before.at(2).name, QStringLiteral("Bex UV3220 8色 CMYK+Lc+Lm+Or+Gr"));

        restartHandler();
        const auto after = list();
        QCOMPARE(after.size(), 3);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(after.at(i).id, before.at(i).id);
            QCOMPARE(after.at(i).name, before.at(i).name);
            QCOMPARE(after.at(i).prs, before.at(i).prs);
        }
    }

    void install_sameFileTwice_isRefused()
    {
        QVERIFY(!install(uv2513).isEmpty());
        QVERIFY(install(uv2513).isEmpty());
        QCOMPARE(list().size(), 1);
    }

    void rename_changesTheShownNameAcrossRestarts()
    {
        const QString id = install(uv1610);
        QVERIFY(handler_->RechristenDriverShowName(local(id).c_str(),
                                                   local(QStringLiteral("二号机 PVC")).c_str()));
        restartHandler();
        QCOMPARE(list().first().showName, QStringLiteral("二号机 PVC"));
        QCOMPARE(list().first().name, QStringLiteral("Bex UV1610 CMYK+Lc+Lm"));
    }

    void rename_quotesBackslashesAndControlCharacters_surviveARestart()
    {
        const QString id = install(uv1610);
        const QString name = QStringLiteral("\"二号机\" C:\\UV\\1610\tline\nnext\x01 end");

        QVERIFY(handler_->RechristenDriverShowName(local(id).c_str(), local(name).c_str()));
        restartHandler();

        QCOMPARE(list().first().showName, name);
        const QJsonDocument json = QJsonDocument::fromJson(registryBytes());
        const QJsonArray drivers = json.object().value(QStringLiteral("drivers")).toArray();
        QCOMPARE(drivers.size(), 1);
        QCOMPARE(drivers.at(0).toObject().value(QStringLiteral("showName")).toString(), name);
        QCOMPARE(json.object().value(QStringLiteral("format")).toString(),
                 QStringLiteral("BexInstalledPrinterDrivers"));
    }

    void rename_refusesUnknownIdsAndUnusableNames()
    {
        const QString id = install(uv1610);
        const QByteArray registry = registryBytes();
        const std::string tooLong(kPrinterShowNameSize, 'n');

        QVERIFY(!handler_->RechristenDriverShowName("no-such-id", "x"));
        QVERIFY(!handler_->RechristenDriverShowName(local(id).c_str(), tooLong.c_str()));
        QVERIFY(!handler_->RechristenDriverShowName(local(id).c_str(), ""));
        QVERIFY(!handler_->RechristenDriverShowName(local(id).c_str(), nullptr));
        QVERIFY(!handler_->RechristenDriverShowName(nullptr, "x"));

        QCOMPARE(list().first().showName, QStringLiteral("Bex UV1610 CMYK+Lc+Lm"));
        QCOMPARE(registryBytes(), registry);
        // The longest name that fits is taken.
        const std::string longest(kPrinterShowNameSize - 1, 'n');
        QVERIFY(handler_->RechristenDriverShowName(local(id).c_str(), longest.c_str()));
        QCOMPARE(list().first().showName, QString::fromStdString(longest));
    }

    void delete_removesTheDriverAndItsSelection()
    {
        const QString a = install(uv2513);
        const QString b = install(uv3220);
        QVERIFY(select(a));

        QVERIFY(handler_->DeletePrinterDriverPrs(local(a).c_str()));

        QCOMPARE(list().size(), 1);
        QCOMPARE(list().first().id, b);
        QVERIFY(!handler_->GetCurDriverName());
        QVERIFY(!handler_->DeletePrinterDriverPrs(local(a).c_str()));
        QVERIFY(!handler_->DeletePrinterDriverPrs(nullptr));
        QVERIFY(QFile::exists(SampleDriverFiles::prsPath(uv2513)));
        restartHandler();
        QCOMPARE(list().size(), 1);
    }

    void getters_nothingSelected_giveNoRecords()
    {
        install(uv2513);
        std::list<printerEnumItem *> items;
        std::uint32_t x = 1;
        std::uint32_t y = 1;
        printerChannelColorInfo channels{};
        printerIccColorInfo icc{};
        printerInkOrderInfo inks{};

        QVERIFY(!select(QStringLiteral("no-such-id")));
        QVERIFY(!handler_->SelectPrinterDriverPrs(nullptr, 0));
        QVERIFY(!handler_->GetCurDriverName());
        QVERIFY(!handler_->GetCurDriverPdvName());
        handler_->GetAllEnumItemList(items);
        QVERIFY(items.empty());
        QVERIFY(!handler_->GetEnumItem(resolutionId));
        QVERIFY(!handler_->SetEnumItem(resolutionId, 0));
        QVERIFY(!handler_->CommitPrinterDriverPrs(0));
        QCOMPARE(handler_->GetCurModeId(), -1);
        QVERIFY(!handler_->GetSelectEnumItem(kEnumKindResolution));
        QVERIFY(!handler_->GetChannelColorInfo());
        QVERIFY(!handler_->SetChannelColorInfo(&channels));
        QVERIFY(!handler_->GetIccSettingInfo());
        QVERIFY(!handler_->SetIccSettingInfo(&icc));
        QVERIFY(!handler_->GetSelectEnumItemDpi(0, x, y));
        QVERIFY(!handler_->GetInkOrderInfo());
        QVERIFY(!handler_->SetInkOrderInfo(&inks));
    }

    void selectedDriver_reportsNamePdvAndModeId()
    {
        const QString id = install(uv1610);
        QVERIFY(select(id));

        QCOMPARE(text(handler_->GetCurDriverName()), QStringLiteral("Bex UV1610 CMYK+Lc+Lm"));
        QCOMPARE(text(handler_->GetCurDriverPdvName()), QStringLiteral("BexUV1610_CMYKLcLm.pdv"));
        QVERIFY(QFile::exists(TestAppDir::filePath(QStringLiteral("dtp/driver/BexUV1610_CMYKLcLm.pdv"))));
        QCOMPARE(handler_->GetCurModeId(), 2);
    }

    void enumItems_listEverySettingWithItsSelection()
    {
        QVERIFY(select(install(uv2513)));
        std::list<printerEnumItem *> items;

        handler_->GetAllEnumItemList(items);

        QCOMPARE(int(items.size()), 10);
        QStringList keys;
        QVector<std::uint32_t> ids;
        for (const printerEnumItem *item : items) {
            keys << text(item->key);
            ids << item->enumId;
        }
        QCOMPARE(keys,
                 (QStringList{QStringLiteral("打印精度"), QStringLiteral("纸张"), QStringLiteral("墨水"),
                              QStringLiteral("打印方向"), QStringLiteral("白墨模式"), QStringLiteral("羽化"),
                              QStringLiteral("PASS数"), QStringLiteral("喷头电压"),
                              QStringLiteral("光油模式"), QStringLiteral("UV灯功率")}));
        QCOMPARE(ids, (QVector<std::uint32_t>{1, 2, 3, 10, 11, 12, 15, 14, 16, 17}));
        const printerEnumItem *resolution = items.front();
        QCOMPARE(resolution->index, 1);
        QCOMPARE(resolution->valueSize, 3);
        QCOMPARE(values(resolution),
                 (QStringList{QStringLiteral("720x600 dpi 4pass"), QStringLiteral("720x900 dpi 6pass"),
                              QStringLiteral("1440x1200 dpi 8pass")}));

        const printerEnumItem *paper = handler_->GetSelectEnumItem(kEnumKindPaper);
        const printerEnumItem *ink = handler_->GetSelectEnumItem(kEnumKindInk);
        const printerEnumItem *dpi = handler_->GetSelectEnumItem(kEnumKindResolution);
        QVERIFY(paper && ink && dpi);
        // Each kind has its own record: asking for one keeps the others.
        QCOMPARE(text(paper->key), QStringLiteral("纸张"));
        QCOMPARE(values(paper).size(), 4);
        QCOMPARE(text(ink->key), QStringLiteral("墨水"));
        QCOMPARE(dpi->enumId, resolutionId);
        QVERIFY(!handler_->GetSelectEnumItem(3));
        QVERIFY(!handler_->GetSelectEnumItem(-1));

        const printerEnumItem *feathering = handler_->GetEnumItem(featheringId);
        QVERIFY(feathering);
        QCOMPARE(text(feathering->key), QStringLiteral("羽化"));
        QCOMPARE(feathering->index, 1);
        QVERIFY(!handler_->GetEnumItem(999));
    }

    void select_languageFlagFour_givesEnglishTexts()
    {
        const QString id = install(uv3220);
        QVERIFY(select(id, 4));
        std::list<printerEnumItem *> items;
        handler_->GetAllEnumItemList(items);
        QStringList keys;
        QVector<const printerEnumItem *> byPosition;
        for (const printerEnumItem *item : items) {
            keys << text(item->key);
            byPosition << item;
        }

        QCOMPARE(keys,
                 (QStringList{QStringLiteral("Resolution"), QStringLiteral("Media"), QStringLiteral("Ink"),
                              QStringLiteral("Print direction"), QStringLiteral("Head voltage"),
                              QStringLiteral("Pass count"), QStringLiteral("Print speed"),
                              QStringLiteral("UV lamp power"), QStringLiteral("Flash spitting")}));
        QCOMPARE(values(items.front()).first(), QStringLiteral("600x900 dpi 4 pass"));
        QCOMPARE(values(handler_->GetSelectEnumItem(kEnumKindPaper)),
                 (QStringList{QStringLiteral("Wood"), QStringLiteral("Ceramic tile"),
                              QStringLiteral("Leather"), QStringLiteral("Cardboard")}));
        QCOMPARE(values(byPosition.at(4)), (QStringList{QStringLiteral("Standard"), QStringLiteral("High")}));
        QCOMPARE(values(items.back()), (QStringList{QStringLiteral("Off"), QStringLiteral("While printing"),
                                                    QStringLiteral("While idle")}));

        QVERIFY(select(id, 0));
        QCOMPARE(text(handler_->GetSelectEnumItem(kEnumKindPaper)->key), QStringLiteral("纸张"));
    }

    void select_languageFlagFour_keepsTheDriversOwnTextsWhereEnglishIsMissing()
    {
        // The sample with the head voltage's English texts taken out.
        QJsonObject document = sampleDocument(uv3220);
        QJsonArray enums = document.value(QStringLiteral("enums")).toArray();
        bool found = false;
        for (QJsonValueRef entry : enums) {
            QJsonObject item = entry.toObject();
            if (item.value(QStringLiteral("key")).toString() != QStringLiteral("喷头电压"))
                continue;
            found = true;
            item.remove(QStringLiteral("keyEn"));
            QJsonArray values = item.value(QStringLiteral("values")).toArray();
            for (QJsonValueRef value : values) {
                QJsonObject withoutEnglish = value.toObject();
                withoutEnglish.remove(QStringLiteral("textEn"));
                value = withoutEnglish;
            }
            item.insert(QStringLiteral("values"), values);
            entry = item;
        }
        QVERIFY(found);
        document.insert(QStringLiteral("enums"), enums);
        const QString id = installDocument(QStringLiteral("NoEnglishVoltage.prs"), document);
        QVERIFY(!id.isEmpty());
        QVERIFY(select(id, 4));

        std::list<printerEnumItem *> items;
        handler_->GetAllEnumItemList(items);
        const printerEnumItem *voltage = nullptr;
        for (const printerEnumItem *item : items) {
            if (item->enumId == 14)
                voltage = item;
        }
        QVERIFY(voltage);
        QCOMPARE(text(voltage->key), QStringLiteral("喷头电压"));
        QCOMPARE(values(voltage), (QStringList{QStringLiteral("标准"), QStringLiteral("高")}));
        // Its neighbours keep their English texts.
        QCOMPARE(text(items.front()->key), QStringLiteral("Resolution"));
    }

    void resolutionValues_carryTheirDpi_data()
    {
        QTest::addColumn<QString>("sample");
        QTest::addColumn<int>("index");
        QTest::addColumn<quint32>("x");
        QTest::addColumn<quint32>("y");
        QTest::newRow("UV2513 720x600") << uv2513 << 0 << 720u << 600u;
        QTest::newRow("UV2513 1440x1200") << uv2513 << 2 << 1440u << 1200u;
        QTest::newRow("UV1610 540x720") << uv1610 << 0 << 540u << 720u;
        QTest::newRow("UV3220 1200x2400") << uv3220 << 2 << 1200u << 2400u;
    }

    void resolutionValues_carryTheirDpi()
    {
        QFETCH(QString, sample);
        QFETCH(int, index);
        QFETCH(quint32, x);
        QFETCH(quint32, y);
        QVERIFY(select(install(sample)));
        std::uint32_t xDpi = 0;
        std::uint32_t yDpi = 0;

        QVERIFY(handler_->GetSelectEnumItemDpi(index, xDpi, yDpi));

        QCOMPARE(xDpi, x);
        QCOMPARE(yDpi, y);
    }

    void dpi_indexOutOfRange_isRefused()
    {
        QVERIFY(select(install(uv2513)));
        std::uint32_t x = 5;
        std::uint32_t y = 6;

        QVERIFY(!handler_->GetSelectEnumItemDpi(3, x, y));
        QVERIFY(!handler_->GetSelectEnumItemDpi(-1, x, y));

        QCOMPARE(x, 5u);
        QCOMPARE(y, 6u);
    }

    void setEnumItem_changesItsSelectionOnly()
    {
        QVERIFY(select(install(uv2513)));

        QVERIFY(!handler_->SetEnumItem(999, 0));
        QVERIFY(!handler_->SetEnumItem(paperId, 4));
        QVERIFY(!handler_->SetEnumItem(paperId, -1));
        QCOMPARE(handler_->GetSelectEnumItem(kEnumKindPaper)->index, acrylic);

        QVERIFY(handler_->SetEnumItem(paperId, metal));
        QCOMPARE(handler_->GetSelectEnumItem(kEnumKindPaper)->index, metal);
        QCOMPARE(handler_->GetSelectEnumItem(kEnumKindResolution)->index, 1);
    }

    void iccSettings_existOnSomeCombinationsOnly()
    {
        QVERIFY(select(install(uv2513)));

        const printerIccColorInfo *icc = handler_->GetIccSettingInfo();
        QVERIFY(icc);
        QCOMPARE(text(icc->iccFilePath_RGB), QStringLiteral("Bex sRGB v4.icc"));
        QCOMPARE(text(icc->iccFilePath_CMYK), QStringLiteral("Bex Coated CMYK.icc"));
        QCOMPARE(text(icc->iccFilePath_OUTPUT), QStringLiteral("BexUV2513_Acrylic_720x900.icc"));
        QCOMPARE(icc->iccIntentType, int(kIccIntentPerceptual));
        for (const char *folder :
             {"RGB/Bex sRGB v4.icc", "CMYK/Bex Coated CMYK.icc", "OUTPUT/BexUV2513_Acrylic_720x900.icc"})
            QVERIFY2(QFile::exists(TestAppDir::filePath(QStringLiteral("dtp/bin/ICC Profile/") +
                                                        QString::fromLatin1(folder))),
                     folder);

        QVERIFY(handler_->SetEnumItem(paperId, wood));
        QVERIFY(!handler_->GetIccSettingInfo());

        QVERIFY(handler_->SetEnumItem(paperId, glass));
        icc = handler_->GetIccSettingInfo();
        QVERIFY(icc);
        QCOMPARE(text(icc->iccFilePath_OUTPUT), QStringLiteral("BexUV2513_Glass_720x900.icc"));
        QCOMPARE(icc->iccIntentType, int(kIccIntentRelativeColorimetric));
    }

    void channelsAndInkOrder_followTheCombination()
    {
        QVERIFY(select(install(uv2513)));
        const QStringList names = {QStringLiteral("C"), QStringLiteral("M"),     QStringLiteral("Y"),
                                   QStringLiteral("K"), QStringLiteral("White"), QStringLiteral("Varnish")};

        const printerChannelColorInfo *channels = handler_->GetChannelColorInfo();
        QVERIFY(channels);
        QCOMPARE(channelNames(channels), names);
        QCOMPARE(channels->channels[4].iciMaxInk, 0.9);
        QCOMPARE(channels->channels[4].iciDepth, 0.0);
        const printerInkOrderInfo *inks = handler_->GetInkOrderInfo();
        QVERIFY(inks);
        QCOMPARE(inks->pioiInkNum, channels->pcciChanneNum);
        QCOMPARE(orders(inks), (QVector<int>{1, 2, 3, 4, 0, 5}));
        QCOMPARE(offFlags(inks), (QVector<int>{0, 0, 0, 0, 0, 0}));

        QVERIFY(handler_->SetEnumItem(paperId, glass));
        channels = handler_->GetChannelColorInfo();
        QCOMPARE(channels->channels[4].iciMaxInk, 0.8);
        QCOMPARE(channels->channels[4].iciDepth, 0.5);

        QVERIFY(handler_->SetEnumItem(paperId, wood));
        QVERIFY(handler_->SetEnumItem(inkId, 1));
        inks = handler_->GetInkOrderInfo();
        QCOMPARE(orders(inks), (QVector<int>{0, 1, 2, 3, 4, 5}));
        QCOMPARE(offFlags(inks), (QVector<int>{0, 0, 0, 0, 1, 1}));
    }

    void records_stayValidUntilTheNextRequestOfTheirKind()
    {
        QVERIFY(select(install(uv3220)));
        const printerChannelColorInfo *channels = handler_->GetChannelColorInfo();
        const printerInkOrderInfo *inks = handler_->GetInkOrderInfo();
        const printerIccColorInfo *icc = handler_->GetIccSettingInfo();
        const printerEnumItem *paper = handler_->GetSelectEnumItem(kEnumKindPaper);
        std::list<printerEnumItem *> items;
        handler_->GetAllEnumItemList(items);
        QVERIFY(handler_->SetEnumItem(1, 2));
        handler_->GetCurDriverName();

        QCOMPARE(channelNames(channels).last(), QStringLiteral("Green"));
        QCOMPARE(orders(inks).size(), 8);
        QCOMPARE(text(icc->iccFilePath_OUTPUT), QStringLiteral("BexUV3220_Wood_600x900.icc"));
        QCOMPARE(values(paper).first(), QStringLiteral("木板"));
        QCOMPARE(int(items.size()), 9);
    }

    void samples_carryCommonSettingsAndAStoredInkOrder_data()
    {
        QTest::addColumn<QString>("sample");
        QTest::addColumn<QVector<int>>("order");
        QTest::newRow("UV2513") << uv2513 << QVector<int>{1, 2, 3, 4, 0, 5};
        QTest::newRow("UV1610") << uv1610 << QVector<int>{2, 3, 4, 5, 0, 1};
        QTest::newRow("UV3220") << uv3220 << QVector<int>{3, 2, 1, 0, 6, 7, 4, 5};
    }

    void samples_carryCommonSettingsAndAStoredInkOrder()
    {
        QFETCH(QString, sample);
        QFETCH(QVector<int>, order);
        QVERIFY(select(install(sample)));
        const QSet<std::uint32_t> special = {handler_->GetSelectEnumItem(kEnumKindResolution)->enumId,
                                             handler_->GetSelectEnumItem(kEnumKindPaper)->enumId,
                                             handler_->GetSelectEnumItem(kEnumKindInk)->enumId};
        std::list<printerEnumItem *> items;
        handler_->GetAllEnumItemList(items);
        QStringList common;
        for (const printerEnumItem *item : items) {
            if (!special.contains(item->enumId)) {
                common << text(item->key);
                QVERIFY(item->valueSize >= 2);
            }
        }

        // Print direction, pass count and head voltage on every sample, and
        // at least two more.
        QVERIFY2(common.size() >= 5, qPrintable(common.join(QLatin1Char(','))));
        for (const QString &key :
             {QStringLiteral("打印方向"), QStringLiteral("PASS数"), QStringLiteral("喷头电压")})
            QVERIFY2(common.contains(key), qPrintable(key));
        QCOMPARE(orders(handler_->GetInkOrderInfo()), order);
    }

    void commit_editsAreReadBackByANewHandler()
    {
        const QString id = install(uv2513);
        QVERIFY(select(id));
        QVERIFY(handler_->SetEnumItem(resolutionId, 2));
        QVERIFY(handler_->SetEnumItem(paperId, metal));
        QVERIFY(handler_->SetEnumItem(featheringId, 2));

        printerIccColorInfo *icc = handler_->GetIccSettingInfo();
        QVERIFY(icc);
        QCOMPARE(text(icc->iccFilePath_OUTPUT), QStringLiteral("BexUV2513_Metal_1440x1200.icc"));
        std::strcpy(icc->iccFilePath_RGB, "Bex sRGB v4.icc");
        std::strcpy(icc->iccFilePath_CMYK, "");
        icc->iccIntentType = kIccIntentAbsoluteColorimetric;
        QVERIFY(handler_->SetIccSettingInfo(icc));

        printerChannelColorInfo *channels = handler_->GetChannelColorInfo();
        channels->channels[0].iciDepth = -1.25;
        channels->channels[4].iciMaxInk = 0.45;
        QVERIFY(handler_->SetChannelColorInfo(channels));

        printerInkOrderInfo *inks = handler_->GetInkOrderInfo();
        const int newOrder[] = {5, 4, 3, 2, 1, 0};
        for (int i = 0; i < 6; ++i)
            inks->pioiInkOrder[i] = newOrder[i];
        inks->PioiInkOFFON[5] = 1;
        QVERIFY(handler_->SetInkOrderInfo(inks));

        QVERIFY(commitAndSelectAgain(id));

        QCOMPARE(handler_->GetSelectEnumItem(kEnumKindResolution)->index, 2);
        QCOMPARE(handler_->GetSelectEnumItem(kEnumKindPaper)->index, metal);
        QCOMPARE(handler_->GetEnumItem(featheringId)->index, 2);
        icc = handler_->GetIccSettingInfo();
        QVERIFY(icc);
        QCOMPARE(text(icc->iccFilePath_RGB), QStringLiteral("Bex sRGB v4.icc"));
        QCOMPARE(text(icc->iccFilePath_CMYK), QString());
        QCOMPARE(text(icc->iccFilePath_OUTPUT), QStringLiteral("BexUV2513_Metal_1440x1200.icc"));
        QCOMPARE(icc->iccIntentType, int(kIccIntentAbsoluteColorimetric));
        channels = handler_->GetChannelColorInfo();
        QCOMPARE(channels->channels[0].iciDepth, -1.25);
        QCOMPARE(channels->channels[4].iciMaxInk, 0.45);
        inks = handler_->GetInkOrderInfo();
        QCOMPARE(orders(inks), (QVector<int>{5, 4, 3, 2, 1, 0}));
        QCOMPARE(offFlags(inks), (QVector<int>{0, 0, 0, 0, 0, 1}));

        // No temporary file of the atomic write is left behind.
        const QStringList left = QDir(TestAppDir::filePath(QStringLiteral("dtp/driver")))
                                     .entryList(QDir::Files | QDir::Hidden | QDir::System);
        QCOMPARE(left.size(), 6);
    }

    void inkLimit_setForOneMedium_doesNotReachAnother()
    {
        // Acrylic at 720x900 has ICC settings of its own but uses the
        // driver-wide channels, as do metal and wood.
        const QString id = install(uv2513);
        QVERIFY(select(id));
        QVERIFY(handler_->SetEnumItem(paperId, acrylic));
        printerChannelColorInfo *channels = handler_->GetChannelColorInfo();
        channels->channels[4].iciMaxInk = 0.55;
        channels->channels[0].iciDepth = 0.75;
        QVERIFY(handler_->SetChannelColorInfo(channels));

        QVERIFY(handler_->SetEnumItem(paperId, metal));
        QCOMPARE(handler_->GetChannelColorInfo()->channels[4].iciMaxInk, 0.9);
        QCOMPARE(handler_->GetChannelColorInfo()->channels[0].iciDepth, 0.0);
        QVERIFY(handler_->SetEnumItem(paperId, acrylic));
        QCOMPARE(handler_->GetChannelColorInfo()->channels[4].iciMaxInk, 0.55);

        QVERIFY(commitAndSelectAgain(id));
        QCOMPARE(handler_->GetSelectEnumItem(kEnumKindPaper)->index, acrylic);
        channels = handler_->GetChannelColorInfo();
        QCOMPARE(channels->channels[4].iciMaxInk, 0.55);
        QCOMPARE(channels->channels[0].iciDepth, 0.75);
        // The ICC settings of the combination are kept beside its channels.
        QCOMPARE(text(handler_->GetIccSettingInfo()->iccFilePath_OUTPUT),
                 QStringLiteral("BexUV2513_Acrylic_720x900.icc"));
        QVERIFY(handler_->SetEnumItem(paperId, wood));
        QCOMPARE(handler_->GetChannelColorInfo()->channels[4].iciMaxInk, 0.9);
        QVERIFY(handler_->SetEnumItem(resolutionId, 0));
        QVERIFY(handler_->SetEnumItem(paperId, acrylic));
        QCOMPARE(handler_->GetChannelColorInfo()->channels[4].iciMaxInk, 0.9);

        // The driver-wide list in the file is the one it was.
        const QJsonObject root =
            QJsonDocument::fromJson(TestAppDir::readFile(QStringLiteral("dtp/driver/BexUV2513_CMYKWV.prs")))
                .object();
        const QJsonArray wide = root.value(QStringLiteral("channels")).toArray();
        QCOMPARE(wide.at(4).toObject().value(QStringLiteral("maxInk")).toDouble(), 0.9);
        QCOMPARE(wide.at(0).toObject().value(QStringLiteral("density")).toDouble(), 0.0);
    }

    void inkOrder_setForOneCombination_doesNotReachAnother()
    {
        const QString id = install(uv2513);
        QVERIFY(select(id));
        QVERIFY(handler_->SetEnumItem(paperId, metal));
        QVERIFY(!handler_->GetIccSettingInfo());
        printerInkOrderInfo *inks = handler_->GetInkOrderInfo();
        const int newOrder[] = {0, 5, 4, 3, 2, 1};
        for (int i = 0; i < 6; ++i)
            inks->pioiInkOrder[i] = newOrder[i];
        inks->PioiInkOFFON[5] = 1;
        QVERIFY(handler_->SetInkOrderInfo(inks));

        QVERIFY(handler_->SetEnumItem(paperId, wood));
        QCOMPARE(orders(handler_->GetInkOrderInfo()), (QVector<int>{1, 2, 3, 4, 0, 5}));
        QCOMPARE(offFlags(handler_->GetInkOrderInfo()), (QVector<int>{0, 0, 0, 0, 0, 0}));
        QVERIFY(commitAndSelectAgain(id));
        QVERIFY(handler_->SetEnumItem(paperId, metal));

        QCOMPARE(orders(handler_->GetInkOrderInfo()), (QVector<int>{0, 5, 4, 3, 2, 1}));
        QCOMPARE(offFlags(handler_->GetInkOrderInfo()), (QVector<int>{0, 0, 0, 0, 0, 1}));
        // The change gave the combination channels only, no ICC settings.
        QVERIFY(!handler_->GetIccSettingInfo());
        QCOMPARE(handler_->GetChannelColorInfo()->channels[4].iciMaxInk, 0.9);
    }

    void setters_unchangedRecords_addNoCombination()
    {
        const QString id = install(uv2513);
        const QString file = QStringLiteral("dtp/driver/BexUV2513_CMYKWV.prs");
        QVERIFY(select(id));
        QVERIFY(handler_->CommitPrinterDriverPrs(0));
        const QByteArray before = TestAppDir::readFile(file);
        // Every combination is visited and its records written back as
        // they came, as a dialog does when its user browses combinations.
        for (int resolution = 0; resolution < 3; ++resolution) {
            for (int paper = 0; paper < 4; ++paper) {
                for (int ink = 0; ink < 2; ++ink) {
                    QVERIFY(handler_->SetEnumItem(resolutionId, resolution));
                    QVERIFY(handler_->SetEnumItem(paperId, paper));
                    QVERIFY(handler_->SetEnumItem(inkId, ink));
                    QVERIFY(handler_->SetChannelColorInfo(handler_->GetChannelColorInfo()));
                    QVERIFY(handler_->SetInkOrderInfo(handler_->GetInkOrderInfo()));
                    if (printerIccColorInfo *icc = handler_->GetIccSettingInfo())
                        QVERIFY(handler_->SetIccSettingInfo(icc));
                }
            }
        }
        QVERIFY(handler_->SetEnumItem(resolutionId, 1));
        QVERIFY(handler_->SetEnumItem(paperId, acrylic));
        QVERIFY(handler_->SetEnumItem(inkId, 0));

        QVERIFY(handler_->CommitPrinterDriverPrs(0));

        QCOMPARE(TestAppDir::readFile(file), before);
    }

    void prsFile_withoutCombinations_loadsAndTakesPerCombinationChanges()
    {
        // A description as first written by hand: driver-wide channels and
        // no "combinations" at all.
        QJsonObject root = sampleDocument(uv1610);
        root.remove(QStringLiteral("combinations"));
        const QString file = QStringLiteral("dtp/driver/plain.prs");
        const QString id = installDocument(QStringLiteral("plain.prs"), root);
        QVERIFY(select(id));
        QVERIFY(!handler_->GetIccSettingInfo());
        printerChannelColorInfo *channels = handler_->GetChannelColorInfo();
        QCOMPARE(channels->channels[1].iciMaxInk, 1.0);
        channels->channels[1].iciMaxInk = 0.25;
        QVERIFY(handler_->SetChannelColorInfo(channels));
        QVERIFY(commitAndSelectAgain(id));

        QCOMPARE(handler_->GetChannelColorInfo()->channels[1].iciMaxInk, 0.25);
        QVERIFY(handler_->SetEnumItem(paperId, 1));
        QCOMPARE(handler_->GetChannelColorInfo()->channels[1].iciMaxInk, 1.0);
        const QJsonArray combinations = QJsonDocument::fromJson(TestAppDir::readFile(file))
                                            .object()
                                            .value(QStringLiteral("combinations"))
                                            .toArray();
        QCOMPARE(combinations.size(), 1);
        QVERIFY(!combinations.at(0).toObject().contains(QStringLiteral("icc")));
    }

    void select_again_dropsUncommittedEdits()
    {
        const QString id = install(uv1610);
        QVERIFY(select(id));
        QVERIFY(handler_->SetEnumItem(paperId, 3));
        printerChannelColorInfo *channels = handler_->GetChannelColorInfo();
        channels->channels[1].iciMaxInk = 0.1;
        QVERIFY(handler_->SetChannelColorInfo(channels));
        const QByteArray before = TestAppDir::readFile(QStringLiteral("dtp/driver/BexUV1610_CMYKLcLm.prs"));

        QVERIFY(select(id));

        QCOMPARE(handler_->GetSelectEnumItem(kEnumKindPaper)->index, 0);
        QCOMPARE(handler_->GetChannelColorInfo()->channels[1].iciMaxInk, 1.0);
        QCOMPARE(TestAppDir::readFile(QStringLiteral("dtp/driver/BexUV1610_CMYKLcLm.prs")), before);
    }

    void iccSettings_canBeAddedToACombinationWithoutThem()
    {
        const QString id = install(uv2513);
        QVERIFY(select(id));
        QVERIFY(handler_->SetEnumItem(paperId, wood));
        QVERIFY(!handler_->GetIccSettingInfo());
        printerIccColorInfo icc{};
        std::strcpy(icc.iccFilePath_OUTPUT, "BexUV2513_Glass_720x900.icc");
        icc.iccIntentType = kIccIntentSaturation;

        QVERIFY(handler_->SetIccSettingInfo(&icc));
        QVERIFY(commitAndSelectAgain(id));

        QCOMPARE(handler_->GetSelectEnumItem(kEnumKindPaper)->index, wood);
        const printerIccColorInfo *read = handler_->GetIccSettingInfo();
        QVERIFY(read);
        QCOMPARE(text(read->iccFilePath_OUTPUT), QStringLiteral("BexUV2513_Glass_720x900.icc"));
        QCOMPARE(read->iccIntentType, int(kIccIntentSaturation));
        QVERIFY(handler_->SetEnumItem(paperId, acrylic));
        QCOMPARE(text(handler_->GetIccSettingInfo()->iccFilePath_OUTPUT),
                 QStringLiteral("BexUV2513_Acrylic_720x900.icc"));
    }

    void iccSettings_noRoomForAnotherCombination_areRefused()
    {
        // 16 x 16 x 17 combinations are possible; the file holds the first
        // 4096, the most a .prs file may hold.
        const auto values = [](int count, bool resolution) {
            QJsonArray array;
            for (int i = 0; i < count; ++i) {
                QJsonObject value{{QStringLiteral("text"), QStringLiteral("v%1").arg(i)}};
                if (resolution) {
                    value.insert(QStringLiteral("xDpi"), 360 + i);
                    value.insert(QStringLiteral("yDpi"), 360 + i);
                }
                array.append(value);
            }
            return array;
        };
        const auto enumItem = [&](int id, const QString &kind, int count) {
            return QJsonObject{{QStringLiteral("enumId"), id},
                               {QStringLiteral("kind"), kind},
                               {QStringLiteral("key"), kind},
                               {QStringLiteral("selected"), count - 1},
                               {QStringLiteral("values"), values(count, id == 1)}};
        };
        QJsonArray combinations;
        for (int r = 0; r < 16 && combinations.size() < 4096; ++r) {
            for (int p = 0; p < 16 && combinations.size() < 4096; ++p) {
                for (int i = 0; i < 17 && combinations.size() < 4096; ++i)
                    combinations.append(QJsonObject{{QStringLiteral("resolution"), r},
                                                    {QStringLiteral("paper"), p},
                                                    {QStringLiteral("ink"), i}});
            }
        }
        QCOMPARE(combinations.size(), 4096);
        const QJsonObject document{
            {QStringLiteral("format"), QStringLiteral("BexPrinterDescription")},
            {QStringLiteral("formatVersion"), 1},
            {QStringLiteral("driverName"), QStringLiteral("Full")},
            {QStringLiteral("modeId"), 0},
            {QStringLiteral("enums"),
             QJsonArray{enumItem(1, QStringLiteral("resolution"), 16),
                        enumItem(2, QStringLiteral("paper"), 16), enumItem(3, QStringLiteral("ink"), 17)}},
            {QStringLiteral("channels"), QJsonArray{QJsonObject{{QStringLiteral("name"), QStringLiteral("K")},
                                                                {QStringLiteral("density"), 0.0},
                                                                {QStringLiteral("maxInk"), 1.0},
                                                                {QStringLiteral("order"), 0},
                                                                {QStringLiteral("on"), true}}}},
            {QStringLiteral("combinations"), combinations}};
        const QString id = installDocument(QStringLiteral("full.prs"), document);
        QVERIFY(select(id));
        printerIccColorInfo icc{};
        std::strcpy(icc.iccFilePath_OUTPUT, "BexUV2513_Glass_720x900.icc");

        // The selected values, the last of each, name a combination the file
        // does not hold.
        QVERIFY(!handler_->GetIccSettingInfo());
        QVERIFY(!handler_->SetIccSettingInfo(&icc));
        QVERIFY(!handler_->GetIccSettingInfo());
        // Channels and ink order written back unchanged need no room; a
        // change would need a combination of its own and is refused.
        printerChannelColorInfo *channels = handler_->GetChannelColorInfo();
        QVERIFY(handler_->SetChannelColorInfo(channels));
        channels->channels[0].iciMaxInk = 0.5;
        QVERIFY(!handler_->SetChannelColorInfo(channels));
        QCOMPARE(handler_->GetChannelColorInfo()->channels[0].iciMaxInk, 1.0);
        printerInkOrderInfo *inks = handler_->GetInkOrderInfo();
        QVERIFY(handler_->SetInkOrderInfo(inks));
        inks->PioiInkOFFON[0] = 1;
        QVERIFY(!handler_->SetInkOrderInfo(inks));
        QCOMPARE(offFlags(handler_->GetInkOrderInfo()), QVector<int>{0});

        // A combination the file holds takes ICC settings, and the file stays
        // one that can be selected again.
        QVERIFY(handler_->SetEnumItem(1, 0));
        QVERIFY(handler_->SetEnumItem(2, 0));
        QVERIFY(handler_->SetEnumItem(3, 0));
        QVERIFY(handler_->SetIccSettingInfo(&icc));
        QVERIFY(commitAndSelectAgain(id));
        QCOMPARE(text(handler_->GetIccSettingInfo()->iccFilePath_OUTPUT),
                 QStringLiteral("BexUV2513_Glass_720x900.icc"));
    }

    void setters_refuseBadRecords()
    {
        QVERIFY(select(install(uv2513)));
        QVERIFY(!handler_->SetChannelColorInfo(nullptr));
        QVERIFY(!handler_->SetIccSettingInfo(nullptr));
        QVERIFY(!handler_->SetInkOrderInfo(nullptr));

        printerChannelColorInfo *channels = handler_->GetChannelColorInfo();
        const auto refusedChannels = [&](auto change) {
            channels = handler_->GetChannelColorInfo();
            change(channels);
            return !handler_->SetChannelColorInfo(channels);
        };
        QVERIFY(refusedChannels([](printerChannelColorInfo *c) { c->pcciChanneNum = 5; }));
        QVERIFY(refusedChannels([](printerChannelColorInfo *c) { c->channels = nullptr; }));
        QVERIFY(
            refusedChannels([](printerChannelColorInfo *c) { std::strcpy(c->channels[2].iciName, "Z"); }));
        QVERIFY(refusedChannels([](printerChannelColorInfo *c) {
            std::memset(c->channels[2].iciName, 'Y', kInkChannelNameSize);
        }));
        QVERIFY(refusedChannels([](printerChannelColorInfo *c) { c->channels[0].iciDepth = 3.5; }));
        QVERIFY(refusedChannels([](printerChannelColorInfo *c) { c->channels[0].iciDepth = std::nan(""); }));
        QVERIFY(refusedChannels([](printerChannelColorInfo *c) { c->channels[0].iciMaxInk = 1.01; }));
        QVERIFY(refusedChannels([](printerChannelColorInfo *c) { c->channels[0].iciMaxInk = -0.1; }));
        QCOMPARE(handler_->GetChannelColorInfo()->channels[0].iciDepth, 0.0);
        QCOMPARE(handler_->GetChannelColorInfo()->channels[0].iciMaxInk, 1.0);

        const auto refusedIcc = [&](auto change) {
            printerIccColorInfo *icc = handler_->GetIccSettingInfo();
            change(icc);
            return !handler_->SetIccSettingInfo(icc);
        };
        QVERIFY(refusedIcc([](printerIccColorInfo *i) { i->iccIntentType = 4; }));
        QVERIFY(refusedIcc([](printerIccColorInfo *i) { i->iccIntentType = -1; }));
        QVERIFY(
            refusedIcc([](printerIccColorInfo *i) { std::memset(i->iccFilePath_CMYK, 'c', kIccPathSize); }));
        QCOMPARE(text(handler_->GetIccSettingInfo()->iccFilePath_CMYK),
                 QStringLiteral("Bex Coated CMYK.icc"));

        const auto refusedInks = [&](auto change) {
            printerInkOrderInfo *inks = handler_->GetInkOrderInfo();
            change(inks);
            return !handler_->SetInkOrderInfo(inks);
        };
        QVERIFY(refusedInks([](printerInkOrderInfo *i) { i->pioiInkNum = 7; }));
        QVERIFY(refusedInks([](printerInkOrderInfo *i) { i->pioiInkOrder[0] = i->pioiInkOrder[1]; }));
        QVERIFY(refusedInks([](printerInkOrderInfo *i) { i->pioiInkOrder[0] = 6; }));
        QVERIFY(refusedInks([](printerInkOrderInfo *i) { i->pioiInkOrder[0] = -1; }));
        QVERIFY(refusedInks([](printerInkOrderInfo *i) { i->PioiInkOFFON = nullptr; }));
        QVERIFY(refusedInks([](printerInkOrderInfo *i) { i->pioiInkOrder = nullptr; }));
        QCOMPARE(orders(handler_->GetInkOrderInfo()), (QVector<int>{1, 2, 3, 4, 0, 5}));
        QVERIFY(!handler_->CommitPrinterDriverPrs(1));
    }

    void install_badPrsFile_isRefused_data()
    {
        QTest::addColumn<QString>("path");
        const QDir corpus(QStringLiteral(BEX_BAD_PRS_DIR));
        const QStringList files = corpus.entryList({QStringLiteral("*.prs")}, QDir::Files, QDir::Name);
        QVERIFY(files.size() >= 40);
        for (const QString &file : files)
            QTest::newRow(qPrintable(file)) << corpus.filePath(file);
        QTest::newRow("missing file") << TestAppDir::filePath(QStringLiteral("dtp/driver/none.prs"));
        QTest::newRow("a folder") << TestAppDir::filePath(QStringLiteral("dtp/driver"));
        QTest::newRow("empty path") << QString();
    }

    void install_badPrsFile_isRefused()
    {
        QFETCH(QString, path);
        const QString good = install(uv2513);
        QVERIFY(!good.isEmpty());
        const QByteArray registry = registryBytes();
        LogCapture log;

        QVERIFY(!handler_->AddPrinterDriverPrs(local(path).c_str(), 0));

        QCOMPARE(list().size(), 1);
        QCOMPARE(registryBytes(), registry);
        QVERIFY2(log.contains(QtWarningMsg, QStringLiteral("refused")), qPrintable(log.dump()));
    }

    void install_badPrsFile_isRefusedForItsReason_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("reason");
        const QString outside = QStringLiteral("leaves its ICC folder");
        QTest::newRow("absolute") << QStringLiteral("icc-absolute-path.prs") << outside;
        QTest::newRow("UNC") << QStringLiteral("icc-windows-absolute-path.prs") << outside;
        QTest::newRow("drive letter") << QStringLiteral("icc-drive-letter.prs") << outside;
        QTest::newRow("..") << QStringLiteral("icc-parent-folder.prs") << outside;
        QTest::newRow(".. with backslashes") << QStringLiteral("icc-parent-folder-backslash.prs") << outside;
        QTest::newRow(".") << QStringLiteral("icc-this-folder.prs") << outside;
        QTest::newRow("empty component") << QStringLiteral("icc-empty-component.prs") << outside;
        QTest::newRow("control character") << QStringLiteral("icc-control-character.prs") << outside;
        QTest::newRow("channel names alike") << QStringLiteral("channel-names-differ-in-case.prs")
                                             << QStringLiteral("used twice (ignoring case)");
        QTest::newRow("key shown twice in English")
            << QStringLiteral("enum-key-shown-twice-in-english.prs") << QStringLiteral("key used twice");
        QTest::newRow("English key twice")
            << QStringLiteral("enum-english-key-twice.prs") << QStringLiteral("key used twice");
        QTest::newRow("lone surrogate") << QStringLiteral("text-lone-surrogate.prs")
                                        << QStringLiteral("local 8-bit encoding cannot hold");
        QTest::newRow("invalid UTF-8")
            << QStringLiteral("text-invalid-utf8.prs") << QStringLiteral("not JSON");
    }

    void install_badPrsFile_isRefusedForItsReason()
    {
        QFETCH(QString, file);
        QFETCH(QString, reason);
        const QString path = QStringLiteral(BEX_BAD_PRS_DIR "/") + file;
        QVERIFY(QFile::exists(path));
        LogCapture log;

        QVERIFY(!handler_->AddPrinterDriverPrs(local(path).c_str(), 0));

        QVERIFY(list().isEmpty());
        QCOMPARE(log.count(QtWarningMsg, QStringLiteral("refused")), 1);
        QVERIFY2(log.contains(QtWarningMsg, reason), qPrintable(log.dump()));
    }

    void iccNames_handedIn_stayInsideTheirFolder_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("absolute") << QByteArray("/etc/passwd");
        QTest::newRow("UNC") << QByteArray("\\\\server\\share\\x.icc");
        QTest::newRow("drive letter") << QByteArray("C:\\x.icc");
        QTest::newRow("drive letter, relative") << QByteArray("c:x.icc");
        QTest::newRow("..") << QByteArray("../x.icc");
        QTest::newRow("inner ..") << QByteArray("RGB/../../x.icc");
        QTest::newRow(".. with backslashes") << QByteArray("..\\x.icc");
        QTest::newRow("only ..") << QByteArray("..");
        QTest::newRow("trailing separator") << QByteArray("RGB/");
        QTest::newRow("control character") << QByteArray("a\tb.icc");
        QTest::newRow("not local 8-bit text") << QByteArray("Bex \xff.icc");
    }

    void iccNames_handedIn_stayInsideTheirFolder()
    {
        QFETCH(QByteArray, name);
        QVERIFY(select(install(uv2513)));
        LogCapture log;
        for (auto field : {&printerIccColorInfo::iccFilePath_RGB, &printerIccColorInfo::iccFilePath_CMYK,
                           &printerIccColorInfo::iccFilePath_OUTPUT}) {
            printerIccColorInfo *icc = handler_->GetIccSettingInfo();
            QVERIFY(icc);
            char *target = icc->*field;
            std::memset(target, 0, kIccPathSize);
            std::memcpy(target, name.constData(), std::size_t(name.size()));

            QVERIFY(!handler_->SetIccSettingInfo(icc));
        }

        QCOMPARE(log.count(QtWarningMsg, QStringLiteral("refused")), 3);
        const printerIccColorInfo *icc = handler_->GetIccSettingInfo();
        QCOMPARE(text(icc->iccFilePath_RGB), QStringLiteral("Bex sRGB v4.icc"));
        QCOMPARE(text(icc->iccFilePath_CMYK), QStringLiteral("Bex Coated CMYK.icc"));
        QCOMPARE(text(icc->iccFilePath_OUTPUT), QStringLiteral("BexUV2513_Acrylic_720x900.icc"));
    }

    void iccNames_mayNameAFileInASubfolder()
    {
        const QString id = install(uv2513);
        QVERIFY(select(id));
        printerIccColorInfo *icc = handler_->GetIccSettingInfo();
        std::strcpy(icc->iccFilePath_OUTPUT, "UV2513/Acrylic v2.icc");
        QVERIFY(handler_->SetIccSettingInfo(icc));
        QVERIFY(commitAndSelectAgain(id));

        QCOMPARE(text(handler_->GetIccSettingInfo()->iccFilePath_OUTPUT),
                 QStringLiteral("UV2513/Acrylic v2.icc"));
    }

    void channelNames_areComparedAsTheirBytes()
    {
        // Bytes the local 8-bit encoding cannot decode do not come back as
        // themselves: UTF-8 turns "\xFF" into U+FFFD, code page 936 drops a
        // lead byte without its trail byte. A channel named with what such
        // bytes decode to must not take a record whose name holds them.
        QByteArray undecodable;
        QString standIn;
        for (const QByteArray &bytes : {QByteArray("\xFF"), QByteArray("Q\xFF"), QByteArray("Q\x81")}) {
            const QString decoded = QString::fromLocal8Bit(bytes);
            if (!decoded.isEmpty() && decoded.toLocal8Bit() != bytes &&
                QString::fromLocal8Bit(decoded.toLocal8Bit()) == decoded) {
                undecodable = bytes;
                standIn = decoded;
                break;
            }
        }
        if (undecodable.isEmpty())
            QSKIP("the local 8-bit encoding decodes \\xFF and \\x81 as characters of their own, so "
                  "no two byte strings of this test decode to the same name");
        QJsonObject root = sampleDocument(uv1610);
        QJsonArray channels = root.value(QStringLiteral("channels")).toArray();
        QJsonObject last = channels.at(5).toObject();
        last.insert(QStringLiteral("name"), standIn);
        channels.replace(5, last);
        root.insert(QStringLiteral("channels"), channels);
        root.remove(QStringLiteral("combinations"));
        QVERIFY(select(installDocument(QStringLiteral("replacement.prs"), root)));
        printerChannelColorInfo *record = handler_->GetChannelColorInfo();
        QCOMPARE(QByteArray(record->channels[5].iciName), standIn.toLocal8Bit());
        record->channels[5].iciMaxInk = 0.5;
        QVERIFY(handler_->SetChannelColorInfo(record));

        record = handler_->GetChannelColorInfo();
        std::strcpy(record->channels[5].iciName, undecodable.constData());
        QCOMPARE(QString::fromLocal8Bit(record->channels[5].iciName), standIn);
        record->channels[5].iciMaxInk = 0.25;
        QVERIFY(!handler_->SetChannelColorInfo(record));
        QCOMPARE(handler_->GetChannelColorInfo()->channels[5].iciMaxInk, 0.5);
    }

    void textLimits_areCountedInLocalBytes()
    {
        // A fixed field holds its capacity less one byte of text in the
        // local 8-bit encoding, then the zero. Chinese characters take two
        // bytes in code page 936 and three in UTF-8: the limit is counted
        // in the bytes the field would hold, whatever the encoding.
        const QString wide = QStringLiteral("方");
        QCOMPARE(QString::fromLocal8Bit(wide.toLocal8Bit()), wide);
        const auto localText = [&](int bytes) {
            QString text;
            while ((text + wide).toLocal8Bit().size() <= bytes)
                text += wide;
            while (text.toLocal8Bit().size() < bytes)
                text += QLatin1Char('x');
            return text;
        };
        const auto withKeyAndChannel = [&](const QString &key, const QString &channel) {
            QJsonObject root = sampleDocument(uv1610);
            QJsonArray enums = root.value(QStringLiteral("enums")).toArray();
            QJsonObject direction = enums.at(3).toObject();
            direction.insert(QStringLiteral("key"), key);
            enums.replace(3, direction);
            root.insert(QStringLiteral("enums"), enums);
            QJsonArray channels = root.value(QStringLiteral("channels")).toArray();
            QJsonObject last = channels.at(5).toObject();
            last.insert(QStringLiteral("name"), channel);
            channels.replace(5, last);
            root.insert(QStringLiteral("channels"), channels);
            root.remove(QStringLiteral("combinations"));
            return root;
        };
        const QString key = localText(int(kEnumKeySize) - 1);
        const QString channel = localText(int(kInkChannelNameSize) - 1);
        QVERIFY(key.contains(wide));
        QVERIFY(channel.contains(wide));
        // The fourth enum of the BexUV1610 sample, its print direction.
        constexpr std::uint32_t directionId = 10;
        LogCapture log;

        QVERIFY(select(installDocument(QStringLiteral("full-fields.prs"), withKeyAndChannel(key, channel))));
        const printerEnumItem *item = handler_->GetEnumItem(directionId);
        QVERIFY(item);
        QCOMPARE(QByteArray(item->key), key.toLocal8Bit());
        QCOMPARE(QByteArray(handler_->GetChannelColorInfo()->channels[5].iciName), channel.toLocal8Bit());

        const QString oneByteMore = QStringLiteral("x");
        QVERIFY(installDocument(QStringLiteral("long-key.prs"), withKeyAndChannel(key + oneByteMore, channel))
                    .isEmpty());
        QVERIFY(
            installDocument(QStringLiteral("long-channel.prs"), withKeyAndChannel(key, channel + oneByteMore))
                .isEmpty());
        QCOMPARE(log.count(QtWarningMsg, QStringLiteral("too long")), 2);
        QCOMPARE(list().size(), 1);
    }

    void arguments_beyondTheLocalEncoding_areRefused()
    {
        const QString id = install(uv2513);
        const QByteArray registry = registryBytes();

        QVERIFY(!handler_->RechristenDriverShowName(local(id).c_str(), "Bex \xff\xfe"));
        QVERIFY(!handler_->AddPrinterDriverPrs("/tmp/\xff.prs", 0));
        QVERIFY(!handler_->SelectPrinterDriverPrs("\xff", 0));

        QCOMPARE(registryBytes(), registry);
        QCOMPARE(list().first().showName, QStringLiteral("Bex UV2513 CMYK+W+V"));
    }

    void oversizedFilesAndArguments_areRefused()
    {
        QByteArray huge = TestAppDir::readFile(QStringLiteral("dtp/driver/BexUV2513_CMYKWV.prs"));
        huge.chop(huge.size() - huge.lastIndexOf('}'));
        huge += ", \"padding\": \"" + QByteArray(4 * 1024 * 1024, 'x') + "\"}";
        QVERIFY(TestAppDir::writeFile(QStringLiteral("dtp/driver/huge.prs"), huge));
        QVERIFY(!handler_->AddPrinterDriverPrs(
            local(TestAppDir::filePath(QStringLiteral("dtp/driver/huge.prs"))).c_str(), 0));

        const std::string longPath(kPrinterPrsPathSize + 10, 'p');
        QVERIFY(!handler_->AddPrinterDriverPrs(longPath.c_str(), 0));
        QVERIFY(!handler_->AddPrinterDriverPrs(nullptr, 0));
        QVERIFY(!handler_->AddPrinterDriverPrs(local(SampleDriverFiles::prsPath(uv2513)).c_str(), 1));
        const std::string longId(kPrinterIdSize + 10, 'i');
        QVERIFY(!handler_->DeletePrinterDriverPrs(longId.c_str()));
        QVERIFY(!handler_->SelectPrinterDriverPrs(longId.c_str(), 0));
        QVERIFY(list().isEmpty());
    }

    void select_prsDamagedAfterInstall_fails()
    {
        const QString id = install(uv3220);
        QVERIFY(select(id));
        const QByteArray good = TestAppDir::readFile(QStringLiteral("dtp/driver/BexUV3220_8C.prs"));
        QVERIFY(
            TestAppDir::writeFile(QStringLiteral("dtp/driver/BexUV3220_8C.prs"), good.left(good.size() / 3)));

        QVERIFY(!select(id));

        QVERIFY(!handler_->GetCurDriverName());
        QVERIFY(!handler_->GetChannelColorInfo());
        QCOMPARE(list().size(), 1);
        QVERIFY(TestAppDir::remove(QStringLiteral("dtp/driver/BexUV3220_8C.prs")));
        QVERIFY(!select(id));
    }

    void damagedDriverList_isLeftInPlaceUntilTheNextChange()
    {
        install(uv2513);
        DestroyUIPrintParamsHandler(handler_);
        handler_ = nullptr;
        const QByteArray damaged = "{\"format\": \"BexInstalledPrinterDrivers\", \"drivers\": [";
        QVERIFY(TestAppDir::writeFile(QStringLiteral("dtp/BexUIPrintParamsProcessing.json"), damaged));
        LogCapture log;

        handler_ = CreateUIPrintParamsHandler();

        QVERIFY(handler_);
        QVERIFY(list().isEmpty());
        QVERIFY(select(QStringLiteral("anything")) == false);
        QCOMPARE(registryBytes(), damaged);
        QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("installed driver list damaged, ignored")), 1);
        QVERIFY(!QFile::exists(SampleDriverFiles::registryPath() + QStringLiteral(".bad")));
    }

    void damagedDriverList_isKeptAsideBeforeTheNextInstall()
    {
        const QString a = install(uv2513);
        const QString b = install(uv1610);
        const QByteArray whole = registryBytes();
        const QByteArray damaged = whole.left(whole.size() - 20);
        DestroyUIPrintParamsHandler(handler_);
        handler_ = nullptr;
        QVERIFY(TestAppDir::writeFile(QStringLiteral("dtp/BexUIPrintParamsProcessing.json"), damaged));
        LogCapture log;
        handler_ = CreateUIPrintParamsHandler();

        const QString c = install(uv3220);

        // The list now holds what was installed since; the lost entries are
        // in the kept file, byte for byte as they were.
        QVERIFY(!c.isEmpty());
        QCOMPARE(list().size(), 1);
        QCOMPARE(list().first().id, c);
        const QString kept = SampleDriverFiles::registryPath() + QStringLiteral(".bad");
        QFile keptFile(kept);
        QVERIFY(keptFile.open(QIODevice::ReadOnly));
        const QByteArray keptBytes = keptFile.readAll();
        QCOMPARE(keptBytes, damaged);
        QVERIFY(keptBytes.contains(a.toUtf8()));
        QVERIFY(keptBytes.contains(b.toUtf8()));
        // The loss is reported once, and where it went once.
        QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("installed driver list damaged")), 1);
        const auto keptLines = log.find(QtCriticalMsg, QStringLiteral("kept aside as"));
        QCOMPARE(keptLines.size(), 1);
        QVERIFY2(keptLines.first().message.contains(kept), qPrintable(keptLines.first().message));
        QCOMPARE(keptLines.first().file, QStringLiteral("PrintParams/DriverRegistry"));

        // Later changes write the new list only.
        QVERIFY(handler_->RechristenDriverShowName(local(c).c_str(), "UV3220 车间"));
        QVERIFY(handler_->DeletePrinterDriverPrs(local(c).c_str()));
        QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("kept aside")), 1);
        QVERIFY(keptFile.seek(0));
        QCOMPARE(keptFile.readAll(), damaged);
        restartHandler();
        QVERIFY(list().isEmpty());
        QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("installed driver list damaged")), 1);
    }

    void keptDriverList_isNeverReplaced()
    {
        install(uv2513);
        DestroyUIPrintParamsHandler(handler_);
        handler_ = nullptr;
        const QString registry = SampleDriverFiles::registryPath();
        QVERIFY(
            TestAppDir::writeFile(QStringLiteral("dtp/BexUIPrintParamsProcessing.json.bad"), "first loss"));
        QVERIFY(TestAppDir::writeFile(QStringLiteral("dtp/BexUIPrintParamsProcessing.json"), "second loss"));
        handler_ = CreateUIPrintParamsHandler();

        QVERIFY(!install(uv1610).isEmpty());

        QCOMPARE(TestAppDir::readFile(QStringLiteral("dtp/BexUIPrintParamsProcessing.json.bad")),
                 QByteArray("first loss"));
        QCOMPARE(TestAppDir::readFile(QStringLiteral("dtp/BexUIPrintParamsProcessing.json.bad.1")),
                 QByteArray("second loss"));
        QCOMPARE(list().size(), 1);
        QVERIFY(QFile::exists(registry));
    }

    void unreadableDriverList_isKeptAsideToo()
    {
        // A folder where the list file should be cannot be read as a list.
        QVERIFY(TestAppDir::remove(QStringLiteral("dtp/BexUIPrintParamsProcessing.json")));
        QVERIFY(TestAppDir::writeFile(QStringLiteral("dtp/BexUIPrintParamsProcessing.json/inside"), "x"));
        DestroyUIPrintParamsHandler(handler_);
        LogCapture log;
        handler_ = CreateUIPrintParamsHandler();
        QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("installed driver list damaged")), 1);

        const QString id = install(uv2513);

        QVERIFY(!id.isEmpty());
        QCOMPARE(TestAppDir::readFile(QStringLiteral("dtp/BexUIPrintParamsProcessing.json.bad/inside")),
                 QByteArray("x"));
        restartHandler();
        QCOMPARE(list().size(), 1);
        QCOMPARE(list().first().id, id);
    }

    void prsPaths_areStoredAbsoluteAndComparedNormalised()
    {
        const QString clean = SampleDriverFiles::prsPath(uv2513);
        const QString winding =
            TestAppDir::filePath(QStringLiteral("dtp//bin/../driver/./BexUV2513_CMYKWV.prs"));
        const printerInfoItem *item = handler_->AddPrinterDriverPrs(local(winding).c_str(), 0);
        QVERIFY(item);
        QCOMPARE(text(item->piiPrs), clean);
        QCOMPARE(list().first().prs, clean);

        // The same file by any other spelling is installed already; file
        // names are compared ignoring case, as on Windows.
        LogCapture log;
        QVERIFY(!handler_->AddPrinterDriverPrs(local(clean).c_str(), 0));
        QVERIFY(!handler_->AddPrinterDriverPrs(local(clean.toUpper()).c_str(), 0));
        QVERIFY(!handler_->AddPrinterDriverPrs(local(clean + QStringLiteral("/.")).c_str(), 0));
        QCOMPARE(log.count(QtWarningMsg, QStringLiteral("already installed")), 3);

        // A relative path is taken against the working folder and stored
        // absolute.
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(TestAppDir::filePath(QStringLiteral("dtp"))));
        item = handler_->AddPrinterDriverPrs("driver/BexUV1610_CMYKLcLm.prs", 0);
        QVERIFY(QDir::setCurrent(previous));
        QVERIFY(item);
        QCOMPARE(text(item->piiPrs), SampleDriverFiles::prsPath(uv1610));
        restartHandler();
        QCOMPARE(list().size(), 2);
        QCOMPARE(list().last().prs, SampleDriverFiles::prsPath(uv1610));
        QVERIFY(select(list().last().id));
    }

    void install_fileOfADeletedDriver_succeedsAgain()
    {
        const QString id = install(uv2513);
        QVERIFY(handler_->DeletePrinterDriverPrs(local(id).c_str()));

        const QString again = install(uv2513);

        QVERIFY(!again.isEmpty());
        QVERIFY(again != id);
        QCOMPARE(list().size(), 1);
    }

    void destroy_nullHandler_isHarmless()
    {
        DestroyUIPrintParamsHandler(nullptr);
        QVERIFY(handler_);
    }
};

QTEST_GUILESS_MAIN(TestUIPrintParamsHandler)
#include "tst_uiprintparamshandler.moc"
