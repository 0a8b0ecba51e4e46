// The installed-driver list of the print-parameter library on its own, for
// what cannot be arranged through the handler: a damaged list that cannot
// be moved aside.

#include "DriverRegistry.h"
#include "LogCapture.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using bex::printparams::DriverRegistry;
using bex::printparams::InstalledDriver;

class TestDriverRegistry : public QObject
{
    Q_OBJECT

private slots:
    void damagedList_cannotBeMovedAside_isNeverOverwritten()
    {
        // The longest file name the file system takes: "<name>.bad" is one
        // it cannot hold, so the list cannot be moved aside.
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString file = dir.filePath(QString(250, QLatin1Char('l')) + QStringLiteral(".json"));
        const QByteArray damaged = "{\"format\": \"BexInstalledPrinterDrivers\", \"drivers\": [{\"id\": ";
        {
            QFile out(file);
            QVERIFY2(out.open(QIODevice::WriteOnly), qPrintable(out.errorString()));
            QCOMPARE(out.write(damaged), qint64(damaged.size()));
        }
        DriverRegistry registry(file);
        QVERIFY(!registry.load());
        LogCapture log;

        InstalledDriver driver;
        driver.id = registry.newId();
        driver.name = QStringLiteral("Bex UV2513 CMYK+W+V");
        driver.showName = driver.name;
        driver.prsPath = dir.filePath(QStringLiteral("BexUV2513_CMYKWV.prs"));
        QVERIFY(!registry.add(driver));

        // Nothing written, nothing kept in memory, and the reason logged.
        QFile in(file);
        QVERIFY(in.open(QIODevice::ReadOnly));
        QCOMPARE(in.readAll(), damaged);
        QCOMPARE(registry.size(), 0);
        QVERIFY(!registry.find(driver.id));
        QVERIFY(registry.keptAsidePath().isEmpty());
        const auto lines =
            log.find(QtCriticalMsg, QStringLiteral("cannot move the unusable installed driver list"));
        QCOMPARE(lines.size(), 1);
        QVERIFY(lines.first().message.contains(QStringLiteral("nothing written")));
    }

    void change_writeFails_isUndone()
    {
        // The list's folder is a file: nothing can be written below it.
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        QFile blocker(dir.filePath(QStringLiteral("dtp")));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        DriverRegistry registry(dir.filePath(QStringLiteral("dtp/list.json")));
        QVERIFY(registry.load());
        InstalledDriver driver;
        driver.id = registry.newId();
        driver.name = QStringLiteral("Bex UV1610");
        driver.showName = driver.name;
        driver.prsPath = dir.filePath(QStringLiteral("a.prs"));
        LogCapture log;

        QVERIFY(!registry.add(driver));

        QCOMPARE(registry.size(), 0);
        QVERIFY(!registry.find(driver.id));
        QVERIFY(!registry.findByPrs(driver.prsPath));
        QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("cannot")), 1);
    }
};

QTEST_GUILESS_MAIN(TestDriverRegistry)
#include "tst_driverregistry.moc"
