// The English translation and the code's tr() texts stay in step: lupdate
// reads the texts of the sources (C++ and Designer forms) the way the
// translators' update_translations target does, and every one of them must
// have its entry in English.ts, while English.ts holds no text that no code
// uses any more.

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

// One translatable text: its context and its source text.
using Message = QPair<QString, QString>;

// The messages of a .ts file that are in use: entries lupdate marked as
// vanished or obsolete are left out.
QSet<Message> readMessages(const QString &path, QString *error)
{
    QSet<Message> messages;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return messages;
    }
    QXmlStreamReader xml(&file);
    QString context;
    QString source;
    bool inUse = true;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            if (xml.name() == QLatin1String("name"))
                context = xml.readElementText();
            else if (xml.name() == QLatin1String("message")) {
                source.clear();
                inUse = true;
            } else if (xml.name() == QLatin1String("source")) {
                source = xml.readElementText();
            } else if (xml.name() == QLatin1String("translation")) {
                const QStringRef type = xml.attributes().value(QLatin1String("type"));
                inUse = type != QLatin1String("vanished") && type != QLatin1String("obsolete");
            }
        } else if (xml.isEndElement() && xml.name() == QLatin1String("message") && inUse) {
            messages.insert({context, source});
        }
    }
    if (xml.hasError())
        *error = xml.errorString();
    return messages;
}

QString describe(const QSet<Message> &messages)
{
    QStringList lines;
    for (const Message &message : messages)
        lines << message.first + QStringLiteral(": \"") + message.second + QLatin1Char('"');
    lines.sort();
    return lines.join(QLatin1Char('\n'));
}

} // namespace

class TranslationSourcesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void english_hasAnEntryForEveryTextOfTheCode();
    void english_holdsNoTextThatNoCodeUses();

private:
    QTemporaryDir dir_;
    QSet<Message> code_;
    QSet<Message> english_;
};

void TranslationSourcesTest::initTestCase()
{
#ifdef BEX_SCANNED_TS
    // Scanned by the build machine's lupdate just before (a cross build).
    const QString scanned = QStringLiteral(BEX_SCANNED_TS);
    QVERIFY2(QFileInfo(scanned).isFile(), qPrintable(scanned + QStringLiteral(" was not made")));
#else
    QVERIFY(dir_.isValid());
    const QString scanned = dir_.filePath(QStringLiteral("scanned.ts"));
    QStringList arguments{QStringLiteral("-silent"), QStringLiteral("-locations"), QStringLiteral("none")};
    arguments << QString::fromUtf8(BEX_TRANSLATED_SOURCE_DIRS).split(QLatin1Char('|'));
    arguments << QStringLiteral("-ts") << scanned;
    QProcess lupdate;
    lupdate.start(QStringLiteral(BEX_LUPDATE), arguments);
    QVERIFY2(lupdate.waitForFinished(120000), qPrintable(lupdate.errorString()));
    QVERIFY2(lupdate.exitStatus() == QProcess::NormalExit && lupdate.exitCode() == 0,
             lupdate.readAllStandardError().constData());
#endif

    QString error;
    code_ = readMessages(scanned, &error);
    QVERIFY2(error.isEmpty(), qPrintable(error));
    english_ = readMessages(QStringLiteral(BEX_ENGLISH_TS), &error);
    QVERIFY2(error.isEmpty(), qPrintable(error));

    // Both sides were read: the title bar's close button is in each.
    const Message close{QStringLiteral("CommonFramelessTitleBar"), QStringLiteral("关闭")};
    QVERIFY2(code_.contains(close), qPrintable(describe(code_)));
    QVERIFY2(english_.contains(close), qPrintable(describe(english_)));
}

void TranslationSourcesTest::english_hasAnEntryForEveryTextOfTheCode()
{
    const QSet<Message> missing = QSet<Message>(code_).subtract(english_);
    QVERIFY2(
        missing.isEmpty(),
        qPrintable(QStringLiteral("English users would see these texts in Chinese:\n") + describe(missing)));
}

void TranslationSourcesTest::english_holdsNoTextThatNoCodeUses()
{
    const QSet<Message> unused = QSet<Message>(english_).subtract(code_);
    QVERIFY2(
        unused.isEmpty(),
        qPrintable(QStringLiteral("English.ts translates texts that no code shows:\n") + describe(unused)));
}

QTEST_GUILESS_MAIN(TranslationSourcesTest)
#include "TranslationSourcesTest.moc"
