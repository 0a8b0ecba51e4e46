// Speed of the open print-parameter library with many installed drivers:
// listing, selecting a driver and reading all of its records, and writing
// its settings back.
//
//   bench_printparams [-- QtTest options, e.g. -iterations 50]
// The driver count is BEX_BENCH_DRIVERS (default 500).

#include <IUIPrintParamsHandler.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QtTest>

#include <list>
#include <string>

class BenchPrintParams : public QObject
{
    Q_OBJECT

private:
    IUIPrintParamsHandler *handler_ = nullptr;
    std::string lastId_;
    int drivers_ = 500;

private slots:
    void initTestCase()
    {
        drivers_ = qEnvironmentVariableIntValue("BEX_BENCH_DRIVERS");
        if (drivers_ <= 0)
            drivers_ = 500;
        QDir dtp(QCoreApplication::applicationDirPath() + QStringLiteral("/dtp"));
        QVERIFY(dtp.removeRecursively());
        QVERIFY(dtp.mkpath(QStringLiteral("driver")));
        const QString sample = QStringLiteral(BEX_SAMPLE_DRIVERS_DIR "/driver/BexUV3220_8C.prs");
        handler_ = CreateUIPrintParamsHandler();
        QVERIFY(handler_);
        for (int i = 0; i < drivers_; ++i) {
            const QString copy = dtp.filePath(QStringLiteral("driver/bench_%1.prs").arg(i));
            QVERIFY(QFile::copy(sample, copy));
            const printerInfoItem *item = handler_->AddPrinterDriverPrs(copy.toLocal8Bit().constData(), 0);
            QVERIFY(item);
            lastId_ = item->piiId;
        }
        qInfo("installed drivers: %d", drivers_);
    }

    void cleanupTestCase() { DestroyUIPrintParamsHandler(handler_); }

    void listInstalledDrivers()
    {
        QBENCHMARK
        {
            std::list<printerInfoItem *> items;
            handler_->GetAllPrinterDriverList(items);
            QCOMPARE(int(items.size()), drivers_);
        }
    }

    void createHandlerReadingTheDriverList()
    {
        QBENCHMARK
        {
            IUIPrintParamsHandler *handler = CreateUIPrintParamsHandler();
            DestroyUIPrintParamsHandler(handler);
        }
    }

    void selectAndReadEveryRecord()
    {
        QBENCHMARK
        {
            QVERIFY(handler_->SelectPrinterDriverPrs(lastId_.c_str(), 0));
            std::list<printerEnumItem *> items;
            handler_->GetAllEnumItemList(items);
            for (std::int32_t kind = 0; kind < 3; ++kind)
                QVERIFY(handler_->GetSelectEnumItem(kind));
            QVERIFY(handler_->GetChannelColorInfo());
            QVERIFY(handler_->GetInkOrderInfo());
            handler_->GetIccSettingInfo();
        }
    }

    void changeAndCommit()
    {
        QVERIFY(handler_->SelectPrinterDriverPrs(lastId_.c_str(), 0));
        std::int32_t paper = 0;
        QBENCHMARK
        {
            paper = (paper + 1) % 4;
            QVERIFY(handler_->SetEnumItem(2, paper));
            printerChannelColorInfo *channels = handler_->GetChannelColorInfo();
            QVERIFY(handler_->SetChannelColorInfo(channels));
            QVERIFY(handler_->CommitPrinterDriverPrs(0));
        }
    }
};

QTEST_GUILESS_MAIN(BenchPrintParams)
#include "bench_printparams.moc"
