// Names of the temporary .prs copies made for jobs.

#include "TempPrsFileName.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QRegularExpression>
#include <QtTest>

#include <algorithm>
#include <thread>
#include <vector>

class TempPrsFileNameTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void name_isTimeProcessAndSequenceUnderBinDir();
    void name_backslashesInTheFolder_becomeSlashes();
    void names_inTheSameMillisecond_differ();
    void sequence_growsByOneEachName();
    void names_aMillionFromSeveralThreads_areDistinct();
};

namespace {

const QRegularExpression namePattern(QStringLiteral("^(\\d+)_(\\d+)_(\\d+)\\.temp\\.prs$"));

QRegularExpressionMatch matchName(const QString &path, const QString &dir)
{
    if (!path.startsWith(dir))
        return {};
    return namePattern.match(path.mid(dir.size()));
}

} // namespace

void TempPrsFileNameTest::initTestCase()
{
    // The first name of the process carries sequence number 0: the counter
    // is read before it is incremented.
    const QString dir = QStringLiteral("/first/");
    const QRegularExpressionMatch first = matchName(makeTempPrsFilePath(dir), dir);
    QVERIFY(first.hasMatch());
    QCOMPARE(first.captured(3), QStringLiteral("0"));
}

void TempPrsFileNameTest::name_isTimeProcessAndSequenceUnderBinDir()
{
    const QString dir = QStringLiteral("/opt/rip/dtp/bin/");
    const qint64 before = QDateTime::currentDateTimeUtc().toMSecsSinceEpoch();
    const QString path = makeTempPrsFilePath(dir);
    const qint64 after = QDateTime::currentDateTimeUtc().toMSecsSinceEpoch();

    const QRegularExpressionMatch match = matchName(path, dir);
    QVERIFY2(match.hasMatch(), qPrintable(path));
    const qint64 stamp = match.captured(1).toLongLong();
    QVERIFY(stamp >= before && stamp <= after);
    QCOMPARE(match.captured(2).toLongLong(), QCoreApplication::applicationPid());
}

void TempPrsFileNameTest::name_backslashesInTheFolder_becomeSlashes()
{
    const QString path = makeTempPrsFilePath(QStringLiteral("C:\\Program Files\\Bex\\dtp\\bin\\"));
    QVERIFY(!path.contains(QLatin1Char('\\')));
    QVERIFY2(matchName(path, QStringLiteral("C:/Program Files/Bex/dtp/bin/")).hasMatch(), qPrintable(path));
}

void TempPrsFileNameTest::names_inTheSameMillisecond_differ()
{
    // Make names until two share their millisecond: the sequence alone must
    // tell them apart.
    const QString dir = QStringLiteral("/tmp/");
    for (int attempt = 0; attempt < 1000; ++attempt) {
        const QString first = makeTempPrsFilePath(dir);
        const QString second = makeTempPrsFilePath(dir);
        const auto a = matchName(first, dir);
        const auto b = matchName(second, dir);
        QVERIFY(a.hasMatch() && b.hasMatch());
        if (a.captured(1) == b.captured(1)) {
            QVERIFY(first != second);
            QCOMPARE(b.captured(3).toLongLong(), a.captured(3).toLongLong() + 1);
            return;
        }
    }
    QFAIL("no two names were made within one millisecond");
}

void TempPrsFileNameTest::sequence_growsByOneEachName()
{
    const QString dir = QStringLiteral("/x/");
    const qint64 first = matchName(makeTempPrsFilePath(dir), dir).captured(3).toLongLong();
    const qint64 second = matchName(makeTempPrsFilePath(dir), dir).captured(3).toLongLong();
    const qint64 third = matchName(makeTempPrsFilePath(dir), dir).captured(3).toLongLong();
    QCOMPARE(second, first + 1);
    QCOMPARE(third, second + 1);
}

void TempPrsFileNameTest::names_aMillionFromSeveralThreads_areDistinct()
{
    constexpr int threadCount = 4;
    constexpr int perThread = 250000;
    const QString dir = QStringLiteral("/app/dtp/bin/");
    std::vector<std::vector<QString>> names(threadCount);
    std::vector<std::thread> threads;
    for (int t = 0; t < threadCount; ++t) {
        threads.emplace_back([&names, &dir, t] {
            names[t].reserve(perThread);
            for (int i = 0; i < perThread; ++i)
                names[t].push_back(makeTempPrsFilePath(dir));
        });
    }
    for (std::thread &thread : threads)
        thread.join();

    std::vector<QString> all;
    all.reserve(threadCount * perThread);
    for (const auto &list : names)
        all.insert(all.end(), list.begin(), list.end());
    QCOMPARE(int(all.size()), threadCount * perThread);
    std::sort(all.begin(), all.end());
    QVERIFY(std::adjacent_find(all.begin(), all.end()) == all.end());
}

QTEST_GUILESS_MAIN(TempPrsFileNameTest)
#include "tst_tempprsfilename.moc"
