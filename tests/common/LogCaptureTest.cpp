#include "LogCapture.h"

#include <QtTest>

namespace {

QStringList messages(const LogCapture &log)
{
    QStringList texts;
    const QList<LogCapture::Entry> entries = log.entries();
    for (const LogCapture::Entry &entry : entries)
        texts << entry.message;
    return texts;
}

// Records what reaches the handler installed before any capture.
QStringList forwarded;

void recordForwarded(QtMsgType, const QMessageLogContext &, const QString &message)
{
    forwarded << message;
}

} // namespace

// The test helper that captures log lines: what it records and what it
// passes on, alone and with one capture inside another.
class LogCaptureTest : public QObject
{
    Q_OBJECT

private slots:
    void capture_recordsLevelAndMessageAndPassesLinesOn();
    void innerCapture_leavesTheOuterCaptureRecording();
    void capture_stopsRecordingWhenGone();
    void find_matchesLevelAndText();
};

void LogCaptureTest::capture_recordsLevelAndMessageAndPassesLinesOn()
{
    forwarded.clear();
    const QtMessageHandler before = qInstallMessageHandler(recordForwarded);
    {
        LogCapture log;
        qWarning("one warning");
        const QList<LogCapture::Entry> entries = log.entries();
        QCOMPARE(entries.size(), 1);
        QCOMPARE(entries.first().type, QtWarningMsg);
        QCOMPARE(entries.first().message, QStringLiteral("one warning"));
    }
    qInstallMessageHandler(before);
    QCOMPARE(forwarded, QStringList{QStringLiteral("one warning")});
}

void LogCaptureTest::innerCapture_leavesTheOuterCaptureRecording()
{
    forwarded.clear();
    const QtMessageHandler before = qInstallMessageHandler(recordForwarded);
    {
        LogCapture outer;
        qWarning("before inner");
        {
            LogCapture inner;
            qWarning("during inner");
            QCOMPARE(messages(inner), QStringList{QStringLiteral("during inner")});
        }
        qWarning("after inner");
        QCOMPARE(messages(outer), (QStringList{QStringLiteral("before inner"), QStringLiteral("during inner"),
                                               QStringLiteral("after inner")}));
    }
    qInstallMessageHandler(before);
    // Each line reaches the earlier handler exactly once.
    QCOMPARE(forwarded, (QStringList{QStringLiteral("before inner"), QStringLiteral("during inner"),
                                     QStringLiteral("after inner")}));
}

void LogCaptureTest::capture_stopsRecordingWhenGone()
{
    LogCapture outer;
    {
        LogCapture inner;
    }
    qWarning("outer only");
    QCOMPARE(messages(outer), QStringList{QStringLiteral("outer only")});
}

void LogCaptureTest::find_matchesLevelAndText()
{
    LogCapture log;
    qWarning("findable line");
    qCritical("findable line");
    qCritical("other");
    QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("findable")), 1);
    QCOMPARE(log.count(QtWarningMsg, QStringLiteral("findable")), 1);
    QCOMPARE(log.count(QtDebugMsg, QStringLiteral("findable")), 0);
    QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("other")));
    log.clear();
    QVERIFY(log.entries().isEmpty());
}

QTEST_GUILESS_MAIN(LogCaptureTest)
#include "LogCaptureTest.moc"
