// Files the module and its print-parameter library write are replaced
// atomically: a writer killed (SIGKILL) at any moment leaves each file
// either as it was or as it was going to be, never torn.
//
// A child process (atomicwriter) rewrites one file over and over, flipping
// between two known contents; the test kills it at a random moment after it
// has begun, many times, and compares the file with the two contents byte
// for byte. Runs per file: BEX_KILL_RUNS (default 40).

#include "AtomicFileVersions.h"
#include "TestAppDir.h"

#include <IUIPrintParamsHandler.h>

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTimer>
#include <QtTest>

#include <algorithm>

namespace {

const QString samplePrs = QStringLiteral("dtp/driver/BexUV2513_CMYKWV.prs");
const QString bigPrs = QStringLiteral("dtp/driver/atomic/big.prs");
const QString listFile = QStringLiteral("dtp/BexUIPrintParamsProcessing.json");
const QString settingsFile = QStringLiteral("PrinterDriverConfig.ini");

int killRuns()
{
    const int runs = qEnvironmentVariableIntValue("BEX_KILL_RUNS");
    return runs > 0 ? runs : 40;
}

// The writer program beside this test ("atomicwriter.exe" on Windows);
// empty when it is missing.
QString writerPath()
{
    return QStandardPaths::findExecutable(QStringLiteral("atomicwriter"),
                                          {QCoreApplication::applicationDirPath()});
}

// Starts the writer. In a sanitizer build it keeps AddressSanitizer's checks
// of every access, but skips the leak check at exit and the slow full
// stacks of every allocation: it is killed, not ended, and its speed decides
// how many kills fit in the test's time.
void startWriter(QProcess &writer, const QStringList &args)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString asan = environment.value(QStringLiteral("ASAN_OPTIONS"));
    environment.insert(QStringLiteral("ASAN_OPTIONS"),
                       asan + (asan.isEmpty() ? QString() : QStringLiteral(":")) +
                           QStringLiteral("detect_leaks=0:fast_unwind_on_malloc=1"));
    writer.setProcessEnvironment(environment);
    // Text mode: on Windows the writer's C library ends its lines in "\r\n".
    writer.start(writerPath(), args, QIODevice::ReadWrite | QIODevice::Text);
}

// A copy of the sample driver grown to about two megabytes with extra
// settings of 256 long values each, well inside what a .prs file may hold.
QByteArray bigDescription(const QByteArray &sample)
{
    QJsonObject root = QJsonDocument::fromJson(sample).object();
    QJsonArray enums = root.value(QStringLiteral("enums")).toArray();
    for (int e = 0; e < 48; ++e) {
        QJsonArray values;
        for (int v = 0; v < 256; ++v) {
            QJsonObject value;
            value.insert(QStringLiteral("text"),
                         QStringLiteral("option %1.%2 ").arg(e).arg(v) + QString(100, QLatin1Char('o')));
            values.append(value);
        }
        QJsonObject item;
        item.insert(QStringLiteral("enumId"), 1000 + e);
        item.insert(QStringLiteral("key"), QStringLiteral("extra %1").arg(e));
        item.insert(QStringLiteral("selected"), 0);
        item.insert(QStringLiteral("values"), values);
        enums.append(item);
    }
    root.insert(QStringLiteral("enums"), enums);
    return QJsonDocument(root).toJson();
}

struct Tally
{
    int runs = 0;
    int old = 0;
    int fresh = 0;
    int torn = 0;
    int leftovers = 0;
    int emptyLocks = 0;
};

} // namespace

class AtomicFilesTest : public QObject
{
    Q_OBJECT

private:
    // Runs the writer once to write version v and returns the file then.
    QByteArray writeOnce(const QStringList &args, int version, const QString &file)
    {
        QProcess writer;
        startWriter(writer, args + QStringList{QStringLiteral("once"), QString::number(version)});
        if (!writer.waitForFinished(60000) || writer.exitStatus() != QProcess::NormalExit ||
            writer.exitCode() != 0) {
            qWarning() << "writer" << args << "failed:" << writer.exitCode() << writer.readAllStandardError();
            return {};
        }
        return TestAppDir::readFile(file);
    }

    // A lock file holds the process id of its owner, and the next writer
    // takes over one whose owner is gone. An empty one was being made when
    // the kill came: it names no owner, so it would hold the next writer up
    // until it is 30 seconds old. Under Wine a lock file stays empty for a
    // large share of each write, so kills often leave one; it is removed.
    static bool removeEmptyLock(const QString &path)
    {
        const QFileInfo lock(path + QStringLiteral(".lock"));
        return lock.exists() && lock.size() == 0 && QFile::remove(lock.filePath());
    }

    // Starts the writer and reads its output until it has printed line
    // `count` times; false when it stops first.
    static bool waitForLines(QProcess &writer, const QByteArray &line, int count)
    {
        QByteArray out;
        while (out.count(line + '\n') < count) {
            if (!writer.waitForReadyRead(60000))
                return false;
            out += writer.readAllStandardOutput();
        }
        return true;
    }

    // How long one write takes now, in milliseconds (the machine may be
    // busy, and the sanitizers slow everything down).
    int writeDuration(const QStringList &args)
    {
        QProcess writer;
        startWriter(writer, args);
        if (!waitForLines(writer, "written", 1))
            return -1;
        QElapsedTimer clock;
        clock.start();
        const bool wrote = waitForLines(writer, "written", 4);
        const qint64 elapsed = clock.elapsed();
        writer.kill();
        writer.waitForFinished(30000);
        return wrote ? int(std::max<qint64>(1, elapsed / 4)) : -1;
    }

    // Starts the writer, kills it at a random moment of its second or third
    // write, and sorts the file it leaves.
    void killAndCheck(const QStringList &args, const QString &file, const QByteArray &old,
                      const QByteArray &fresh, Tally &tally)
    {
        const int duration = writeDuration(args);
        QVERIFY2(duration > 0, "the writer does not write");
        const int window = duration;
        const QString folder = QFileInfo(TestAppDir::filePath(file)).absolutePath();
        const QString prefix = QFileInfo(file).fileName() + QLatin1Char('.');
        if (removeEmptyLock(TestAppDir::filePath(file)))
            ++tally.emptyLocks;
        for (int run = 0; run < killRuns(); ++run) {
            QProcess writer;
            startWriter(writer, args);
            QVERIFY2(writer.waitForStarted(30000), qPrintable(writer.errorString()));
            // One or two writes done (the file then holds one version or the
            // other), then the kill at a random moment of the next write.
            QVERIFY2(waitForLines(writer, "written", 1 + run % 2), "the writer never wrote");
            QEventLoop wait;
            QTimer::singleShot(int(QRandomGenerator::global()->bounded(window + 1)), Qt::PreciseTimer, &wait,
                               &QEventLoop::quit);
            wait.exec();
            writer.kill();
            QVERIFY(writer.waitForFinished(30000));
            QCOMPARE(writer.exitStatus(), QProcess::CrashExit);

            const QByteArray now = TestAppDir::readFile(file);
            ++tally.runs;
            if (now == old)
                ++tally.old;
            else if (now == fresh)
                ++tally.fresh;
            else
                ++tally.torn;
            if (removeEmptyLock(TestAppDir::filePath(file)))
                ++tally.emptyLocks;
            // Temporary files of interrupted writes stay beside the file;
            // they are counted and removed, the file itself is what counts.
            const QStringList stray =
                QDir(folder).entryList({prefix + QStringLiteral("*")}, QDir::Files | QDir::Hidden);
            for (const QString &name : stray) {
                if (name.endsWith(QStringLiteral(".lock")))
                    continue;
                ++tally.leftovers;
                QFile::remove(QDir(folder).filePath(name));
            }
        }
        qInfo("%s: %d kills at random within a write of %d ms, %d old, %d new, %d torn, "
              "%d temporary files and %d empty lock files left behind",
              qPrintable(file), tally.runs, window, tally.old, tally.fresh, tally.torn, tally.leftovers,
              tally.emptyLocks);
        QCOMPARE(tally.torn, 0);
        // Kills landed both before and after completed writes.
        QVERIFY(tally.old > 0);
        QVERIFY(tally.fresh > 0);
    }

    // Learns the writer's two versions of the file, then kills it many times.
    void checkWriter(const QStringList &args, const QString &file, int minimumSize)
    {
        const QByteArray v0 = writeOnce(args, 0, file);
        const QByteArray v1 = writeOnce(args, 1, file);
        QVERIFY(v0.size() > minimumSize);
        QVERIFY(v1.size() > minimumSize);
        QVERIFY(v0 != v1);
        // The file holds version 1 now; the writer begins with version 0.
        Tally tally;
        killAndCheck(args, file, v1, v0, tally);
    }

private slots:
    void initTestCase()
    {
        QVERIFY2(!writerPath().isEmpty(), "atomicwriter is not built beside the test");
        QVERIFY(TestAppDir::remove(QStringLiteral("dtp/driver/atomic")));
        QVERIFY(TestAppDir::remove(listFile));
        const QByteArray big = bigDescription(TestAppDir::readFile(samplePrs));
        QVERIFY(big.size() > 1024 * 1024);
        QVERIFY(TestAppDir::writeFile(bigPrs, big));

        // Install the big driver and enough others for a long list.
        IUIPrintParamsHandler *handler = CreateUIPrintParamsHandler();
        QVERIFY(handler);
        const std::string path = TestAppDir::filePath(bigPrs).toLocal8Bit().toStdString();
        QVERIFY(handler->AddPrinterDriverPrs(path.c_str(), 0));
        const QByteArray sample = TestAppDir::readFile(samplePrs);
        for (int i = 0; i < 200; ++i) {
            const QString copy = QStringLiteral("dtp/driver/atomic/copy%1.prs").arg(i);
            QVERIFY(TestAppDir::writeFile(copy, sample));
            const std::string copyPath = TestAppDir::filePath(copy).toLocal8Bit().toStdString();
            QVERIFY(handler->AddPrinterDriverPrs(copyPath.c_str(), 0));
        }
        DestroyUIPrintParamsHandler(handler);
    }

    void prsCommit_killedAnywhere_leavesOldOrNew()
    {
        checkWriter({QStringLiteral("prs"), TestAppDir::filePath(bigPrs)}, bigPrs, 1024 * 1024);
    }

    void driverList_killedAnywhere_leavesOldOrNew()
    {
        checkWriter({QStringLiteral("list")}, listFile, 50 * 1024);
    }

    void settingsFile_killedAnywhere_leavesOldOrNew()
    {
        QVERIFY(TestAppDir::remove(settingsFile));
        checkWriter({QStringLiteral("ini")}, settingsFile, 256 * 1024);
    }
};

QTEST_GUILESS_MAIN(AtomicFilesTest)
#include "tst_atomicfiles.moc"
