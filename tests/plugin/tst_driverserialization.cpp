// The module object's driver objects: getRipEngineDriver(), serialize(),
// unserialize() and removePrsFile().

#include "BexRipEngineDriverUI_RipServer_p.h"

#include "LogCapture.h"
#include "TestAppDir.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <limits>

namespace {

const char exampleDocument[] =
    R"({"info":{"modeId":3,"prsFilePath":"D:/app/dtp/bin/1700000000000_4242_0.temp.prs"},)"
    R"("meta":{"mainVersion":1,"subVersion":0,"type":"BexRipEngine_RipServer"}})";

const char sourceFile[] = "source/BexRipEngineDriverUI_RipServer_p";

// Function names as the compiler spells them in log lines (Q_FUNC_INFO).
#ifdef _MSC_VER
const char serializeFunction[] = "class QByteArray __cdecl BexRipEngineDriverUI_RipServer::serialize("
                                 "const class QSharedPointer<struct IRipEngine::IDriver> &)";
const char unserializeFunction[] = "class QSharedPointer<struct IRipEngine::IDriver> __cdecl "
                                   "BexRipEngineDriverUI_RipServer::unserialize(const class QByteArray &)";
const char getRipEngineDriverFunction[] =
    "class QSharedPointer<struct IRipEngine::IDriver> __cdecl "
    "BexRipEngineDriverUI_RipServer::getRipEngineDriver("
    "const class QSharedPointer<class IRipEngineDriverUI::DriverInfo> &)";
#else
const char serializeFunction[] = "virtual QByteArray BexRipEngineDriverUI_RipServer::serialize(const "
                                 "QSharedPointer<IRipEngine::IDriver>&)";
const char unserializeFunction[] = "virtual QSharedPointer<IRipEngine::IDriver> "
                                   "BexRipEngineDriverUI_RipServer::unserialize(const QByteArray&)";
const char getRipEngineDriverFunction[] = "virtual QSharedPointer<IRipEngine::IDriver> "
                                          "BexRipEngineDriverUI_RipServer::getRipEngineDriver("
                                          "const QSharedPointer<IRipEngineDriverUI::DriverInfo>&)";
#endif

// The one line the log holds: its level, exact text, source file and
// function.
void verifyOnlyLine(const LogCapture &log, QtMsgType type, const QString &message, const char *function)
{
    const QList<LogCapture::Entry> entries = log.entries();
    QVERIFY2(entries.size() == 1, qPrintable(log.dump()));
    const LogCapture::Entry &entry = entries.first();
    QCOMPARE(entry.type, type);
    QCOMPARE(entry.message, message);
    QCOMPARE(entry.file, QString::fromLatin1(sourceFile));
    QCOMPARE(entry.function, QString::fromLatin1(function));
    QCOMPARE(entry.category, QStringLiteral("bex.driverui.plugin"));
}

// unserialize() refuses document: the trace of the meta data comes first,
// then the one refusal line.
void verifyRefusedAfterMetaTrace(const QByteArray &document, QtMsgType type, const QString &message)
{
    LogCapture log;
    BexRipEngineDriverUI_RipServer module;
    QVERIFY(module.unserialize(document).isNull());
    const QList<LogCapture::Entry> entries = log.entries();
    QVERIFY2(entries.size() == 2, qPrintable(log.dump()));
    QCOMPARE(entries.at(0).type, QtDebugMsg);
    QVERIFY(entries.at(0).message.startsWith(QStringLiteral("metaType:")));
    const LogCapture::Entry &refusal = entries.at(1);
    QCOMPARE(refusal.type, type);
    QCOMPARE(refusal.message, message);
    QCOMPARE(refusal.file, QString::fromLatin1(sourceFile));
    QCOMPARE(refusal.function, QString::fromLatin1(unserializeFunction));
    QCOMPARE(refusal.category, QStringLiteral("bex.driverui.plugin"));
}

// A driver or driver information of another engine module.
const wchar_t foreignKind[] = L"OtherRipEngine";

struct ForeignDriver : IRipEngine::IDriver
{
    const wchar_t *kind() const override { return foreignKind; }
    std::int32_t removePrsFile() override { return 0; }
};

struct ForeignDriverInfo : IRipEngineDriverUI::DriverInfo
{
    const wchar_t *kind() const override { return foreignKind; }
};

QSharedPointer<BexRipEngineDriver_RipServer> makeDriver(int modeId, const QString &path)
{
    auto driver = QSharedPointer<BexRipEngineDriver_RipServer>::create();
    driver->modeId = modeId;
    driver->prsFilePath = path.toStdWString();
    return driver;
}

// The module's own driver behind a host-facing pointer; null for anything else.
QSharedPointer<const BexRipEngineDriver_RipServer> asOurs(const QSharedPointer<IRipEngine::IDriver> &driver)
{
    if (driver.isNull() || !isBexRipEngineKind(driver->kind()))
        return {};
    return driver.staticCast<const BexRipEngineDriver_RipServer>();
}

} // namespace

class DriverSerializationTest : public QObject
{
    Q_OBJECT

private slots:
    void serialize_writesTheCompactSortedDocument();
    void roundTrip_keepsModeIdAndPath();
    void roundTrip_keepsANonAsciiPath();
    void serialize_writesWhatQJsonDocumentWrites_data();
    void serialize_writesWhatQJsonDocumentWrites();
    void serialize_writesEveryCharacterAsQJsonDocumentDoes();
    void serialize_nullDriver_isEmptyAndSilent();
    void serialize_refusesAForeignKind();
    void unserialize_emptyInput_isNullAndSilent();
    void unserialize_refusesASyntaxErrorWithItsCode();
    void unserialize_whitespaceOnly_isRefusedAsParseError();
    void unserialize_refusesAWrongVersion_data();
    void unserialize_refusesAWrongVersion();
    void unserialize_refusesATypeMismatch_data();
    void unserialize_refusesATypeMismatch();
    void unserialize_withoutInfo_givesModeZeroAndEmptyPath();
    void unserialize_refusesAPathWithNul_data();
    void unserialize_refusesAPathWithNul();
    void unserialize_acceptsAnyKeyOrderAndWhitespace();
    void unserialize_logsTheMetaData();

    void getRipEngineDriver_ofNull_isNull();
    void getRipEngineDriver_refusesAForeignKind();
    void getRipEngineDriver_copiesPathAndModeId();

    void removePrsFile_deletesTheFile();
    void removePrsFile_missingFile_returnsZero();

    void driverInfo_startsEmptyWithModeMinusOne();
    void kind_isTheSamePointerForEveryObject();
};

void DriverSerializationTest::serialize_writesTheCompactSortedDocument()
{
    BexRipEngineDriverUI_RipServer module;
    const QByteArray bytes =
        module.serialize(makeDriver(3, QStringLiteral("D:/app/dtp/bin/1700000000000_4242_0.temp.prs")));
    QCOMPARE(bytes, QByteArray(exampleDocument));
}

void DriverSerializationTest::roundTrip_keepsModeIdAndPath()
{
    BexRipEngineDriverUI_RipServer module;
    const auto original = makeDriver(-7, QStringLiteral("/srv/rip/app/dtp/bin/1_2_3.temp.prs"));
    const auto restored = asOurs(module.unserialize(module.serialize(original)));
    QVERIFY(restored);
    QCOMPARE(restored->modeId, -7);
    QCOMPARE(QString::fromStdWString(restored->prsFilePath),
             QStringLiteral("/srv/rip/app/dtp/bin/1_2_3.temp.prs"));
}

void DriverSerializationTest::roundTrip_keepsANonAsciiPath()
{
    BexRipEngineDriverUI_RipServer module;
    const QString path = QStringLiteral("D:/打印 机/dtp/bin/\"quoted\"\\back.temp.prs");
    const auto restored = asOurs(module.unserialize(module.serialize(makeDriver(2, path))));
    QVERIFY(restored);
    QCOMPARE(QString::fromStdWString(restored->prsFilePath), path);
}

// The document as QJsonDocument writes it for the driver's object. The path
// is taken as the driver holds it: a wide string, in which a lone surrogate
// becomes U+FFFD where wchar_t is 32 bits wide.
QByteArray documentOf(int modeId, const QString &givenPath)
{
    const QString path = QString::fromStdWString(givenPath.toStdWString());
    QJsonObject meta{{QStringLiteral("type"), QStringLiteral("BexRipEngine_RipServer")},
                     {QStringLiteral("mainVersion"), 1},
                     {QStringLiteral("subVersion"), 0}};
    QJsonObject info{{QStringLiteral("modeId"), modeId}, {QStringLiteral("prsFilePath"), path}};
    return QJsonDocument(QJsonObject{{QStringLiteral("meta"), meta}, {QStringLiteral("info"), info}})
        .toJson(QJsonDocument::Compact);
}

void DriverSerializationTest::serialize_writesWhatQJsonDocumentWrites_data()
{
    QTest::addColumn<int>("modeId");
    QTest::addColumn<QString>("path");
    QTest::newRow("lowest mode id") << std::numeric_limits<int>::min() << QStringLiteral("a.prs");
    QTest::newRow("highest mode id") << std::numeric_limits<int>::max() << QStringLiteral("a.prs");
    QTest::newRow("constructed") << -1 << QString();
    QTest::newRow("quotes and backslashes") << 0 << QStringLiteral(R"(C:\dtp\"bin"\x.prs)");
    QTest::newRow("control characters") << 1 << QStringLiteral("\b\f\n\r\t\x01\x1f\x7f");
    QTest::newRow("outside the BMP") << 2 << QString::fromUtf8("\xF0\x9F\x96\xA8 печать 打印.prs");
    QTest::newRow("lone surrogates") << 3 << (QString(QChar(0xD800)) + QChar(0x41) + QChar(0xDC00));
}

void DriverSerializationTest::serialize_writesWhatQJsonDocumentWrites()
{
    QFETCH(int, modeId);
    QFETCH(QString, path);
    BexRipEngineDriverUI_RipServer module;
    QCOMPARE(module.serialize(makeDriver(modeId, path)), documentOf(modeId, path));
}

void DriverSerializationTest::serialize_writesEveryCharacterAsQJsonDocumentDoes()
{
    BexRipEngineDriverUI_RipServer module;
    for (uint unit = 0; unit <= 0xFFFF; ++unit) {
        const QString path = QStringLiteral("x") + QChar(ushort(unit)) + QStringLiteral("y");
        const QByteArray written = module.serialize(makeDriver(7, path));
        if (written != documentOf(7, path))
            QFAIL(qPrintable(QStringLiteral("U+%1: %2 instead of %3")
                                 .arg(unit, 4, 16, QLatin1Char('0'))
                                 .arg(QString::fromUtf8(written.toPercentEncoding()),
                                      QString::fromUtf8(documentOf(7, path).toPercentEncoding()))));
    }
}

void DriverSerializationTest::serialize_nullDriver_isEmptyAndSilent()
{
    LogCapture log;
    BexRipEngineDriverUI_RipServer module;
    QVERIFY(module.serialize({}).isEmpty());
    QVERIFY2(log.entries().isEmpty(), qPrintable(log.dump()));
}

void DriverSerializationTest::serialize_refusesAForeignKind()
{
    LogCapture log;
    BexRipEngineDriverUI_RipServer module;
    QVERIFY(module.serialize(QSharedPointer<ForeignDriver>::create()).isEmpty());
    verifyOnlyLine(log, QtCriticalMsg, QStringLiteral("kind is different! check your code"),
                   serializeFunction);
}

void DriverSerializationTest::unserialize_emptyInput_isNullAndSilent()
{
    LogCapture log;
    BexRipEngineDriverUI_RipServer module;
    QVERIFY(module.unserialize(QByteArray()).isNull());
    QVERIFY2(log.entries().isEmpty(), qPrintable(log.dump()));
}

void DriverSerializationTest::unserialize_refusesASyntaxErrorWithItsCode()
{
    LogCapture log;
    BexRipEngineDriverUI_RipServer module;
    const QByteArray broken = R"({"meta":{"mainVersion":1,)";
    QJsonParseError expected;
    QJsonDocument::fromJson(broken, &expected);
    QVERIFY(expected.error != QJsonParseError::NoError);

    QVERIFY(module.unserialize(broken).isNull());
    verifyOnlyLine(log, QtCriticalMsg, QStringLiteral("解析错误 - 原因: %1").arg(int(expected.error)),
                   unserializeFunction);
}

void DriverSerializationTest::unserialize_whitespaceOnly_isRefusedAsParseError()
{
    // Qt reports a parse error for every input that would give an empty
    // document, so white space alone ends at the parse error.
    LogCapture log;
    BexRipEngineDriverUI_RipServer module;
    QVERIFY(module.unserialize(QByteArray("  \n ")).isNull());
    QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("解析错误 - 原因:")), 1);
    QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("解析的json为空")), 0);
}

void DriverSerializationTest::unserialize_refusesAWrongVersion_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::newRow("1.1") << QByteArray(
        R"({"meta":{"type":"BexRipEngine_RipServer","mainVersion":1,"subVersion":1},"info":{"modeId":1}})");
    QTest::newRow("2.0") << QByteArray(
        R"({"meta":{"type":"BexRipEngine_RipServer","mainVersion":2,"subVersion":0},"info":{"modeId":1}})");
    QTest::newRow("versions missing")
        << QByteArray(R"({"meta":{"type":"BexRipEngine_RipServer"},"info":{"modeId":1}})");
    QTest::newRow("versions as strings") << QByteArray(
        R"({"meta":{"type":"BexRipEngine_RipServer","mainVersion":"1","subVersion":"0"},"info":{"modeId":1}})");
}

void DriverSerializationTest::unserialize_refusesAWrongVersion()
{
    QFETCH(QByteArray, document);
    verifyRefusedAfterMetaTrace(document, QtWarningMsg, QStringLiteral("版本不匹配"));
}

void DriverSerializationTest::unserialize_refusesAPathWithNul_data()
{
    QTest::addColumn<QByteArray>("document");
    // removePrsFile() would have deleted "D:/app/dtp/bin/keep.prs".
    QTest::newRow("inside") << QByteArray(
        R"({"meta":{"type":"BexRipEngine_RipServer","mainVersion":1,"subVersion":0},)"
        R"("info":{"modeId":3,"prsFilePath":"D:/app/dtp/bin/keep.prs\u0000.temp.prs"}})");
    QTest::newRow("at the end") << QByteArray(
        R"({"meta":{"type":"BexRipEngine_RipServer","mainVersion":1,"subVersion":0},)"
        R"("info":{"modeId":3,"prsFilePath":"a.temp.prs\u0000"}})");
    QTest::newRow("alone") << QByteArray(
        R"({"meta":{"type":"BexRipEngine_RipServer","mainVersion":1,"subVersion":0},)"
        R"("info":{"prsFilePath":"\u0000"}})");
}

void DriverSerializationTest::unserialize_refusesAPathWithNul()
{
    QFETCH(QByteArray, document);
    verifyRefusedAfterMetaTrace(document, QtWarningMsg, QStringLiteral("路径含有空字符"));
}

void DriverSerializationTest::unserialize_refusesATypeMismatch_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::newRow("meta missing") << QByteArray(R"({"info":{"modeId":3,"prsFilePath":"x.prs"}})");
    QTest::newRow("other engine") << QByteArray(
        R"({"meta":{"type":"OtherRipEngine","mainVersion":1,"subVersion":0},"info":{"modeId":3}})");
    QTest::newRow("case differs") << QByteArray(
        R"({"meta":{"type":"bexripengine_ripserver","mainVersion":1,"subVersion":0},"info":{"modeId":3}})");
    QTest::newRow("type not a string")
        << QByteArray(R"({"meta":{"type":1,"mainVersion":1,"subVersion":0},"info":{"modeId":3}})");
    QTest::newRow("top-level array") << QByteArray(R"([{"meta":{"type":"BexRipEngine_RipServer"}}])");
    QTest::newRow("empty array") << QByteArray("[]");
    QTest::newRow("empty object") << QByteArray("{}");
}

void DriverSerializationTest::unserialize_refusesATypeMismatch()
{
    QFETCH(QByteArray, document);
    // Neither a parse error nor an empty document is reported.
    verifyRefusedAfterMetaTrace(document, QtCriticalMsg, QStringLiteral("类型不匹配"));
}

void DriverSerializationTest::unserialize_withoutInfo_givesModeZeroAndEmptyPath()
{
    BexRipEngineDriverUI_RipServer module;
    const auto driver = asOurs(
        module.unserialize(R"({"meta":{"type":"BexRipEngine_RipServer","mainVersion":1,"subVersion":0}})"));
    QVERIFY(driver);
    QCOMPARE(driver->modeId, 0);
    QVERIFY(driver->prsFilePath.empty());
}

void DriverSerializationTest::unserialize_acceptsAnyKeyOrderAndWhitespace()
{
    BexRipEngineDriverUI_RipServer module;
    const QByteArray document =
        "\n{\n  \"meta\" : { \"subVersion\" : 0 , \"type\" : \"BexRipEngine_RipServer\",\r\n"
        "    \"mainVersion\" : 1 },\n\t\"info\" : { \"prsFilePath\" : \"a/b.prs\", "
        "\"modeId\" : 12 }\n}\n";
    const auto driver = asOurs(module.unserialize(document));
    QVERIFY(driver);
    QCOMPARE(driver->modeId, 12);
    QCOMPARE(QString::fromStdWString(driver->prsFilePath), QStringLiteral("a/b.prs"));
}

void DriverSerializationTest::unserialize_logsTheMetaData()
{
    LogCapture log;
    BexRipEngineDriverUI_RipServer module;
    QVERIFY(!module.unserialize(QByteArray(exampleDocument)).isNull());
    verifyOnlyLine(log, QtDebugMsg,
                   QStringLiteral("metaType: \"BexRipEngine_RipServer\" mainVersion: 1 subVersion: 0"),
                   unserializeFunction);
}

void DriverSerializationTest::getRipEngineDriver_ofNull_isNull()
{
    LogCapture log;
    BexRipEngineDriverUI_RipServer module;
    QVERIFY(module.getRipEngineDriver({}).isNull());
    QVERIFY(log.entries().isEmpty());
}

void DriverSerializationTest::getRipEngineDriver_refusesAForeignKind()
{
    LogCapture log;
    BexRipEngineDriverUI_RipServer module;
    auto info = QSharedPointer<ForeignDriverInfo>::create();
    info->prsFilePath = QStringLiteral("x.prs");
    QVERIFY(module.getRipEngineDriver(info).isNull());
    verifyOnlyLine(log, QtCriticalMsg, QStringLiteral("kind is different! check your code"),
                   getRipEngineDriverFunction);
}

void DriverSerializationTest::getRipEngineDriver_copiesPathAndModeId()
{
    BexRipEngineDriverUI_RipServer module;
    auto info = QSharedPointer<DriverInfo_RipServer>::create();
    info->prsFilePath = QStringLiteral("/app/dtp/bin/5_6_7.temp.prs");
    info->showName = QStringLiteral("UV 2513");
    info->modeId = 4;
    const auto driver = module.getRipEngineDriver(info);
    const auto ours = asOurs(driver);
    QVERIFY(ours);
    QCOMPARE(QString::fromStdWString(ours->prsFilePath), info->prsFilePath);
    QCOMPARE(ours->modeId, 4);
}

void DriverSerializationTest::removePrsFile_deletesTheFile()
{
    const QString relative = QStringLiteral("dtp/bin/remove me 删除.temp.prs");
    QVERIFY(TestAppDir::writeFile(relative, "prs"));
    BexRipEngineDriver_RipServer driver;
    driver.prsFilePath = TestAppDir::filePath(relative).toStdWString();
    QVERIFY(driver.removePrsFile() != 0);
    QVERIFY(!QFile::exists(TestAppDir::filePath(relative)));
}

void DriverSerializationTest::removePrsFile_missingFile_returnsZero()
{
    BexRipEngineDriver_RipServer driver;
    driver.prsFilePath = TestAppDir::filePath(QStringLiteral("dtp/bin/never-made.temp.prs")).toStdWString();
    QCOMPARE(driver.removePrsFile(), 0);
    BexRipEngineDriver_RipServer empty;
    QCOMPARE(empty.removePrsFile(), 0);
}

void DriverSerializationTest::driverInfo_startsEmptyWithModeMinusOne()
{
    DriverInfo_RipServer info;
    QVERIFY(info.prsFilePath.isEmpty());
    QVERIFY(info.showName.isEmpty());
    QCOMPARE(info.dpiX, 0u);
    QCOMPARE(info.dpiY, 0u);
    QVERIFY(info.spotColorSampleNameList.isEmpty());
    QVERIFY(info.remark.isEmpty());
    QCOMPARE(info.modeId, -1);
    BexRipEngineDriver_RipServer driver;
    QVERIFY(driver.prsFilePath.empty());
    QCOMPARE(driver.modeId, -1);
}

void DriverSerializationTest::kind_isTheSamePointerForEveryObject()
{
    BexRipEngineDriverUI_RipServer module;
    DriverInfo_RipServer info;
    BexRipEngineDriver_RipServer driver;
    QCOMPARE(module.kind(), bexRipEngineKind());
    QCOMPARE(info.kind(), bexRipEngineKind());
    QCOMPARE(driver.kind(), bexRipEngineKind());
    QCOMPARE(QString::fromWCharArray(bexRipEngineKind()), QStringLiteral("BexRipEngine_RipServer"));
    QVERIFY(!isBexRipEngineKind(nullptr));
    QVERIFY(!isBexRipEngineKind(L"BexRipEngine_RipServe"));
}

QTEST_GUILESS_MAIN(DriverSerializationTest)
#include "tst_driverserialization.moc"
