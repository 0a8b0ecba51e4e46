// The driver session against the recording handler, without any widget:
// what it reads, which combinations it lists, that its walk restores the
// selection, and what it writes back in which order.

#include "Common/Logging.h"
#include "Driver/DriverSession.h"
#include "FakePrintParamsHandler.h"
#include "LogCapture.h"
#include "RecordText.h"

#include <QtTest>

#include <cstring>
#include <memory>

namespace {

constexpr std::uint32_t dpiId = 10;
constexpr std::uint32_t paperId = 11;
constexpr std::uint32_t inkId = 12;
constexpr std::uint32_t passesId = 20;
constexpr std::uint32_t directionId = 21;

QString setEnum(std::uint32_t id, int index)
{
    return QStringLiteral("SetEnumItem(%1,%2)").arg(id).arg(index);
}

} // namespace

class DriverSessionTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<FakePrintParamsHandler> fake_;
    std::unique_ptr<DriverSession> session_;

    // Two resolutions, three papers, two inks; the stored combination is
    // (1, 0, 1). Two other properties, listed with the higher id first.
    void scriptDriver()
    {
        fake_->addEnumItem(QStringLiteral("Resolution"), dpiId,
                           {QStringLiteral("720"), QStringLiteral("1440")}, 1);
        fake_->addEnumItem(QStringLiteral("Direction"), directionId,
                           {QStringLiteral("Bi"), QStringLiteral("Uni")}, 0);
        fake_->addEnumItem(QStringLiteral("Paper"), paperId,
                           {QStringLiteral("PP"), QStringLiteral("Vinyl"), QStringLiteral("Canvas")}, 0);
        fake_->addEnumItem(QStringLiteral("Ink"), inkId, {QStringLiteral("CMYK"), QStringLiteral("CMYK+W")},
                           1);
        fake_->addEnumItem(QStringLiteral("Passes"), passesId, {QStringLiteral("4"), QStringLiteral("8")}, 1);
        fake_->setSelectKind(kEnumKindResolution, dpiId);
        fake_->setSelectKind(kEnumKindPaper, paperId);
        fake_->setSelectKind(kEnumKindInk, inkId);
        fake_->setChannels({FakePrintParamsHandler::channel(QStringLiteral("C"), 0.5, 0.29),
                            FakePrintParamsHandler::channel(QStringLiteral("LC"), -0.25, 0.999),
                            FakePrintParamsHandler::channel(QStringLiteral("White"), 1.5, 1.0)});
        fake_->setIcc(QStringLiteral("sRGB.icc"), QStringLiteral("Coated.icc"), QStringLiteral("UV-PP.icm"),
                      2);
        fake_->setInkOrder({2, 0, 1}, {0, 1, 0});
    }

    Combination selectedNow() const
    {
        return {fake_->currentIndex(dpiId), fake_->currentIndex(paperId), fake_->currentIndex(inkId)};
    }

private slots:
    void init()
    {
        fake_ = std::make_unique<FakePrintParamsHandler>();
        scriptDriver();
        session_ = std::make_unique<DriverSession>(fake_.get(), lcDialog);
        fake_->calls.clear();
    }

    void cleanup()
    {
        session_.reset();
        fake_.reset();
    }

    // ---- selecting and reading -------------------------------------------

    void select_passesTheIdAndTheLanguageFlag()
    {
        QVERIFY(session_->select(QStringLiteral("D1"), DriverSession::languageFlag(true)));
        QVERIFY(session_->select(QStringLiteral("D2"), DriverSession::languageFlag(false)));
        fake_->selectResult = false;
        QVERIFY(!session_->select(QStringLiteral("D3"), 0));
        QCOMPARE(fake_->calls, (QStringList{QStringLiteral("SelectPrinterDriverPrs(D1,4)"),
                                            QStringLiteral("SelectPrinterDriverPrs(D2,0)"),
                                            QStringLiteral("SelectPrinterDriverPrs(D3,0)")}));
    }

    void pdvName_handlerNamesNone_isEmpty() { QCOMPARE(session_->pdvName(), QString()); }

    void readChoices_sortsResolutionPaperInkFromTheOtherProperties()
    {
        QString problem = QStringLiteral("not emptied");
        const DriverChoices choices = session_->readChoices(&problem);
        QCOMPARE(problem, QString());
        QCOMPARE(choices.dpi.enumId, int(dpiId));
        QCOMPARE(choices.dpi.values, (QStringList{QStringLiteral("720"), QStringLiteral("1440")}));
        QCOMPARE(choices.paper.enumId, int(paperId));
        QCOMPARE(choices.paper.values.size(), 3);
        QCOMPARE(choices.ink.enumId, int(inkId));
        QVERIFY(choices.combination() == (Combination{1, 0, 1}));
        QCOMPARE(choices.common.size(), 2);
        // In the handler's order.
        QCOMPARE(choices.common.at(0).key, QStringLiteral("Direction"));
        QCOMPARE(choices.common.at(1).key, QStringLiteral("Passes"));
        QCOMPARE(choices.common.at(1).index, 1);
        QCOMPARE(fake_->calls,
                 (QStringList{QStringLiteral("GetSelectEnumItem(0)"), QStringLiteral("GetSelectEnumItem(1)"),
                              QStringLiteral("GetSelectEnumItem(2)"), QStringLiteral("GetAllEnumItemList")}));
    }

    void readChoices_whenTheyCannotBeWalked_namesWhy_data()
    {
        QTest::addColumn<int>("breakage");
        QTest::addColumn<QString>("problem");
        QTest::newRow("no paper item") << 0 << "GetSelectEnumItem failed - 1";
        QTest::newRow("paper is the resolution") << 1 << "resolution, paper and ink do not have three keys";
        QTest::newRow("too many combinations") << 3 << "too many enum combinations - 125000000";
    }

    void readChoices_whenTheyCannotBeWalked_namesWhy()
    {
        QFETCH(int, breakage);
        QFETCH(QString, problem);
        switch (breakage) {
        case 0:
            fake_->setSelectKind(kEnumKindPaper, 999);
            break;
        case 1:
            fake_->setSelectKind(kEnumKindPaper, dpiId);
            break;
        case 3: {
            QStringList many;
            for (int i = 0; i < 500; ++i)
                many << QString::number(i);
            fake_->addEnumItem(QStringLiteral("Big resolution"), 30, many, 0);
            fake_->addEnumItem(QStringLiteral("Big paper"), 31, many, 0);
            fake_->addEnumItem(QStringLiteral("Big ink"), 32, many, 0);
            fake_->setSelectKind(kEnumKindResolution, 30);
            fake_->setSelectKind(kEnumKindPaper, 31);
            fake_->setSelectKind(kEnumKindInk, 32);
            break;
        }
        }
        QString found;
        session_->readChoices(&found);
        QCOMPARE(found, problem);
    }

    void readChoices_selectedKeyNotListed_namesTheKey()
    {
        // The handler selects an item that its list does not hold.
        static printerEnumItem stray{};
        std::strcpy(stray.key, "Coating");
        fake_->hasResolution = true;
        fake_->resolution = stray;
        QString problem;
        session_->readChoices(&problem);
        QCOMPARE(problem, QStringLiteral("enum not listed - Coating"));
    }

    void readCombination_givesTheRecordsAsPlainValues()
    {
        const CombinationSettings settings = session_->readCombination();
        QVERIFY(settings.icc);
        QCOMPARE(settings.icc->rgb, QStringLiteral("sRGB.icc"));
        QCOMPARE(settings.icc->cmyk, QStringLiteral("Coated.icc"));
        QCOMPARE(settings.icc->output, QStringLiteral("UV-PP.icm"));
        QCOMPARE(settings.icc->intent, std::optional<int>(2));
        QVERIFY(settings.channels);
        QCOMPARE(settings.channels->size(), 3);
        QCOMPARE(settings.channels->at(0).name, QStringLiteral("C"));
        QCOMPARE(settings.channels->at(0).density, 0.5);
        // Whole percents that binary fractions do not pull down.
        QCOMPARE(settings.channels->at(0).maxInkPercent, 29);
        QCOMPARE(settings.channels->at(1).maxInkPercent, 99);
        QCOMPARE(settings.channels->at(2).maxInkPercent, 100);
        QVERIFY(settings.inks);
        QCOMPARE(settings.inks->size(), 3);
        QCOMPARE(settings.inks->at(0).order, 2);
        QVERIFY(!settings.inks->at(1).isOn);
        QCOMPARE(settings.inks->at(2).name, QStringLiteral("White"));
        QCOMPARE(fake_->calls,
                 (QStringList{QStringLiteral("GetIccSettingInfo"), QStringLiteral("GetChannelColorInfo"),
                              QStringLiteral("GetChannelColorInfo"), QStringLiteral("GetInkOrderInfo")}));
    }

    void readCombination_withoutRecords_everySectionAbsent()
    {
        fake_->hasIcc = false;
        fake_->hasChannels = false;
        fake_->hasInkOrder = false;
        const CombinationSettings settings = session_->readCombination();
        QVERIFY(!settings.icc);
        QVERIFY(!settings.channels);
        QVERIFY(!settings.inks);
    }

    void readInks_countsDiffer_inkOrderAbsentChannelsShown()
    {
        fake_->setInkOrder({0, 1}, {0, 0});
        const CombinationSettings settings = session_->readCombination();
        QVERIFY(settings.channels);
        QVERIFY(!settings.inks);
    }

    void readChannels_logsSpotInksOnly_asTheManagerListsThem()
    {
        LogCapture log;
        session_->readChannels();
        QVERIFY(log.contains(QtDebugMsg, QStringLiteral("专色通道名: \"White\"")));
        QVERIFY(!log.contains(QtDebugMsg, QStringLiteral("专色通道名: \"LC\"")));
        QVERIFY(!log.contains(QtDebugMsg, QStringLiteral("专色通道名: \"C\"")));
    }

    // ---- combinations ----------------------------------------------------

    void calibratedCombinations_listsOnlyCalibratedOnes_inkOutermost()
    {
        fake_->iccFor = [](int dpi, int paper, int ink) { return paper == 2 || (dpi == 0 && ink == 1); };
        const DriverChoices choices = session_->readChoices();
        fake_->calls.clear();
        const QVector<Combination> calibrated = session_->calibratedCombinations(choices);
        const QVector<Combination> expected = {{0, 2, 0}, {1, 2, 0}, {0, 0, 1},
                                               {0, 1, 1}, {0, 2, 1}, {1, 2, 1}};
        QCOMPARE(calibrated.size(), expected.size());
        for (int i = 0; i < expected.size(); ++i)
            QVERIFY2(calibrated.at(i) == expected.at(i), qPrintable(QString::number(i)));
        QCOMPARE(fake_->calls.mid(0, 4),
                 (QStringList{setEnum(inkId, 0), setEnum(paperId, 0), setEnum(dpiId, 0),
                              QStringLiteral("GetIccSettingInfo")}));
    }

    void calibratedCombinations_storedOneCalibrated_handlerBackOnIt()
    {
        const DriverChoices choices = session_->readChoices();
        fake_->calls.clear();
        QCOMPARE(session_->calibratedCombinations(choices).size(), 12);
        QVERIFY(selectedNow() == (Combination{1, 0, 1}));
        QCOMPARE(fake_->calls.mid(fake_->calls.size() - 3),
                 (QStringList{setEnum(dpiId, 1), setEnum(paperId, 0), setEnum(inkId, 1)}));
    }

    void calibratedCombinations_storedOneNotCalibrated_handlerOnTheFirstCalibrated()
    {
        fake_->iccFor = [](int, int paper, int) { return paper == 2; };
        const DriverChoices choices = session_->readChoices();
        session_->calibratedCombinations(choices);
        QVERIFY(selectedNow() == (Combination{0, 2, 0}));
    }

    void calibratedCombinations_noneCalibrated_handlerLeftWhereTheWalkEnded()
    {
        fake_->iccFor = [](int, int, int) { return false; };
        const DriverChoices choices = session_->readChoices();
        fake_->calls.clear();
        QVERIFY(session_->calibratedCombinations(choices).isEmpty());
        QCOMPARE(fake_->calls.last(), QStringLiteral("GetIccSettingInfo"));
        QVERIFY(selectedNow() == (Combination{1, 2, 1}));
    }

    void forEachCombination_visitsEveryOneSelected_andRestoresTheSelection()
    {
        const DriverChoices choices = session_->readChoices();
        QVector<Combination> visited;
        const bool walked = session_->forEachCombination(choices, [&](const Combination &combination) {
            // Each combination is selected in the handler while visited.
            QVERIFY(selectedNow() == combination);
            visited << combination;
        });
        QVERIFY(walked);
        QCOMPARE(visited.size(), 2 * 3 * 2);
        QVERIFY(selectedNow() == (Combination{1, 0, 1}));
    }

    void forEachCombination_selectionRefused_visitsAllAndSaysSo()
    {
        const DriverChoices choices = session_->readChoices();
        fake_->failingEnumIds.insert(paperId);
        int visits = 0;
        QVERIFY(!session_->forEachCombination(choices, [&visits](const Combination &) { ++visits; }));
        QCOMPARE(visits, 12);
    }

    // ---- writing ---------------------------------------------------------

    void write_everyStepInOrder_thenCommits()
    {
        DriverSettings settings{session_->readChoices(), session_->readCombination()};
        settings.choices.common[1].index = 0;
        settings.combination.icc->output = QStringLiteral("new.icm");
        settings.combination.icc->intent = 3;
        (*settings.combination.channels)[2].maxInkPercent = 80;
        (*settings.combination.inks)[1].isOn = true;
        fake_->calls.clear();
        QVERIFY(session_->write(settings));
        QCOMPARE(RecordText::describe(fake_->icc).contains(QStringLiteral("new.icm")), true);
        QCOMPARE(fake_->icc.iccIntentType, 3);
        QCOMPARE(fake_->channels.at(2).iciMaxInk, 0.8);
        QCOMPARE(fake_->inkOrderInfo.PioiInkOFFON[1], 0);
        QCOMPARE(
            fake_->calls,
            (QStringList{
                setEnum(dpiId, 1), setEnum(paperId, 0), setEnum(inkId, 1),
                QStringLiteral("GetIccSettingInfo"),
                QStringLiteral("SetIccSettingInfo(%1)").arg(RecordText::describe(fake_->icc)),
                QStringLiteral("GetChannelColorInfo"),
                QStringLiteral("SetChannelColorInfo(%1)").arg(RecordText::describe(fake_->channelInfo)),
                QStringLiteral("GetInkOrderInfo"),
                QStringLiteral("SetInkOrderInfo(%1)").arg(RecordText::describe(fake_->inkOrderInfo)),
                setEnum(directionId, 0), setEnum(passesId, 0), QStringLiteral("CommitPrinterDriverPrs(0)")}));
    }

    void write_paperRefused_stopsThereWithoutCommit()
    {
        const DriverSettings settings{session_->readChoices(), session_->readCombination()};
        fake_->failingEnumIds.insert(paperId);
        LogCapture log;
        fake_->calls.clear();
        QVERIFY(!session_->write(settings));
        QCOMPARE(fake_->calls, (QStringList{setEnum(dpiId, 1), setEnum(paperId, 0)}));
        QVERIFY(
            log.contains(QtCriticalMsg, QStringLiteral("SetEnumItem failed [paper]. enumId: 11 index: 0")));
    }

    void writeIcc_nameTooLong_refusedAndTheRecordKept()
    {
        const QString before = RecordText::describe(fake_->icc);
        IccSettings icc = *session_->readIcc();
        icc.rgb = QString(300, QLatin1Char('a'));
        icc.output = QStringLiteral("other.icm");
        fake_->calls.clear();
        QCOMPARE(session_->writeIcc(icc), DriverSession::StepResult::Failed);
        QCOMPARE(RecordText::describe(fake_->icc), before);
        QCOMPARE(fake_->calls, QStringList{QStringLiteral("GetIccSettingInfo")});
    }

    void writeIcc_withoutIntent_keepsTheHandlersIntent()
    {
        IccSettings icc = *session_->readIcc();
        icc.intent.reset();
        QCOMPARE(session_->writeIcc(icc), DriverSession::StepResult::Written);
        QCOMPARE(fake_->icc.iccIntentType, 2);
    }

    void writeChannels_matchedByName_othersKeepTheirValues()
    {
        QCOMPARE(session_->writeChannels({ChannelSetting{QStringLiteral("White"), 0.75, 50},
                                          ChannelSetting{QStringLiteral("Orange"), 1.0, 10}}),
                 DriverSession::StepResult::Written);
        QCOMPARE(fake_->channels.at(2).iciDepth, 0.75);
        QCOMPARE(fake_->channels.at(2).iciMaxInk, 0.5);
        QCOMPARE(fake_->channels.at(0).iciDepth, 0.5);
        QCOMPARE(fake_->channels.at(0).iciMaxInk, 0.29);
    }

    void writeInks_notEveryInkOnce_notSent_data()
    {
        QTest::addColumn<QVector<int>>("ids");
        QTest::newRow("one missing") << QVector<int>{0, 1};
        QTest::newRow("one twice") << QVector<int>{0, 1, 1};
        QTest::newRow("beyond the record") << QVector<int>{0, 1, 3};
        QTest::newRow("negative") << QVector<int>{0, -1, 2};
    }

    void writeInks_notEveryInkOnce_notSent()
    {
        QFETCH(QVector<int>, ids);
        QVector<InkSlot> inks;
        for (int id : ids)
            inks << InkSlot{id, 0, true, QString()};
        LogCapture log;
        fake_->calls.clear();
        QCOMPARE(session_->writeInks(inks), DriverSession::StepResult::NotSent);
        QCOMPARE(fake_->calls, QStringList{QStringLiteral("GetInkOrderInfo")});
        QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("check your code!")));
        QVERIFY(log.contains(QtDebugMsg, QStringLiteral("ink order not sent")));
    }

    void writeSteps_withoutRecords_touchNothing()
    {
        fake_->hasIcc = false;
        fake_->hasChannels = false;
        fake_->hasInkOrder = false;
        fake_->calls.clear();
        QCOMPARE(session_->writeIcc(IccSettings()), DriverSession::StepResult::NoRecord);
        QCOMPARE(session_->writeChannels({}), DriverSession::StepResult::NoRecord);
        QCOMPARE(session_->writeInks({}), DriverSession::StepResult::NoRecord);
        QCOMPARE(fake_->calls,
                 (QStringList{QStringLiteral("GetIccSettingInfo"), QStringLiteral("GetChannelColorInfo"),
                              QStringLiteral("GetInkOrderInfo")}));
    }
};

QTEST_GUILESS_MAIN(DriverSessionTest)
#include "tst_driversession.moc"
