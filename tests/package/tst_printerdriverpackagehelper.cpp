// PrinterDriverPackageHelper with the open print-parameter library, the
// sample drivers and the real archiver staged in the application directory:
// packages made by an export are laid out as a driver's "dtp/" files, come
// back whole on import, never replace a file without the operator's "是",
// and packages from elsewhere that could write outside "dtp/" are refused
// with nothing copied.

#include "LogCapture.h"
#include "PackageTestSupport.h"
#include "SampleDriverFiles.h"
#include "TestAppDir.h"
#include "ZipWriter.h"

#include "Config/PrinterDriverConfig.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverPackageHelper.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

using namespace PackageTestSupport;

namespace {

const QString kSample = QStringLiteral("BexUV2513_CMYKWV");

PrinterDriverManager *manager()
{
    return PrinterDriverManager::instance();
}

QString packagePath(const QString &name)
{
    return TestAppDir::filePath(QStringLiteral("packages/") + name);
}

// Every profile that any combination of a sample driver names, as the
// archive holds it: read from the sample's own .prs text.
QSet<QString> profilesNamedBy(const QString &prsFilePath)
{
    QFile file(prsFilePath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString text = QString::fromUtf8(file.readAll());
    static const QRegularExpression iccName(QStringLiteral("\"(rgb|cmyk|output)\"\\s*:\\s*\"([^\"]+)\""));
    const QMap<QString, QString> folders = {
        {QStringLiteral("rgb"), QStringLiteral("bin/ICC Profile/RGB/")},
        {QStringLiteral("cmyk"), QStringLiteral("bin/ICC Profile/CMYK/")},
        {QStringLiteral("output"), QStringLiteral("bin/ICC Profile/OUTPUT/")}};
    QSet<QString> result;
    auto it = iccName.globalMatch(text);
    while (it.hasNext()) {
        const auto match = it.next();
        result.insert(folders.value(match.captured(1)) + match.captured(2));
    }
    return result;
}

QStringList folderEntries(const QString &relative)
{
    return QDir(TestAppDir::filePath(relative))
        .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
}

// The application directory without the folders that the helper works in
// and the tests keep their packages in.
QMap<QString, QByteArray> appDirSnapshot()
{
    return snapshot(TestAppDir::path(), {QStringLiteral("cache"), QStringLiteral("packages")});
}

// A package that an export would make for a driver "H", to which the hostile
// rows add or from which they drop entries.
void addValidEntries(ZipWriter &zip, bool withBin = true, bool withDriver = true, int prsFiles = 1)
{
    if (withBin) {
        zip.add("H/", QByteArray(), ZipWriter::Kind::Folder);
        zip.add("H/bin/", QByteArray(), ZipWriter::Kind::Folder);
        zip.add("H/bin/ICC Profile/RGB/h.icc", "rgb profile");
    }
    if (withDriver) {
        zip.add("H/driver/", QByteArray(), ZipWriter::Kind::Folder);
        zip.add("H/driver/H.pdv", "pdv");
        for (int i = 0; i < prsFiles; ++i)
            zip.add(i == 0 ? QByteArray("H/driver/H.prs") : "H/driver/H" + QByteArray::number(i) + ".prs",
                    "prs");
    }
}

} // namespace

class TestPrinterDriverPackageHelper : public QObject
{
    Q_OBJECT

private:
    // Fresh samples, no installed driver, no settings, no working folders.
    bool resetAppDir()
    {
        manager()->unload();
        if (!SampleDriverFiles::restage())
            return false;
        TestAppDir::remove(QStringLiteral("PrinterDriverConfig.ini"));
        TestAppDir::remove(QStringLiteral("cache/export"));
        TestAppDir::remove(QStringLiteral("cache/import"));
        TestAppDir::remove(QStringLiteral("packages"));
        PrinterDriverConfig::instance()->readConfig();
        if (!manager()->load())
            return false;
        manager()->obtainInstalledDrivers();
        return QDir().mkpath(TestAppDir::filePath(QStringLiteral("packages")));
    }

    // The installed driver of a sample, installing it first if needed.
    PrinterDriverManager::DriverInfoPtr installSample(const QString &baseName)
    {
        const QString prs = SampleDriverFiles::prsPath(baseName);
        const auto installed = manager()->obtainInstalledDrivers();
        for (const auto &driver : installed) {
            if (driver->prsPath == prs)
                return driver;
        }
        return manager()->installDriver(prs);
    }

    // Exports a sample, installed first if needed, into
    // packages/<baseName>.bex_driver.
    bool exportSample(const QString &baseName, QString *package = nullptr)
    {
        const auto driver = installSample(baseName);
        if (!driver)
            return false;
        const QString path = packagePath(baseName + QStringLiteral(".bex_driver"));
        if (package)
            *package = path;
        PrinterDriverPackageHelper helper(nullptr);
        return helper.exportPackage(path, driver->prsPath, driver->id) && QFileInfo(path).isFile();
    }

    // Imports a package that must be refused and checks that nothing changed.
    void expectRefused(const QString &package, const QString &criticalText)
    {
        const QMap<QString, QByteArray> before = appDirSnapshot();
        LogCapture log;
        MessageBoxAnswerer answerer(QStringLiteral("是"));
        QStringList prsFiles;

        const bool imported = PrinterDriverPackageHelper(nullptr).importPackage(package, prsFiles);

        QVERIFY2(!imported, qPrintable(log.dump()));
        QVERIFY(prsFiles.isEmpty());
        QVERIFY2(log.contains(QtCriticalMsg, criticalText), qPrintable(log.dump()));
        QVERIFY2(answerer.texts().isEmpty(), "a refused package reached the overwrite question");
        QCOMPARE(appDirSnapshot(), before);
        QCOMPARE(folderEntries(QStringLiteral("cache/import")), QStringList());
    }

    // Writes bytes as a package in packages/.
    static QString writePackage(const QString &name, const QByteArray &bytes)
    {
        const QString path = packagePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return QString();
        return path;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(QFileInfo(PrinterDriverPackageHelper::archiverPath()).isExecutable());
        QVERIFY(resetAppDir());
    }

    void init() { QVERIFY(resetAppDir()); }

    void cleanupTestCase() { manager()->unload(); }

    void archiver_standsInTheApplicationDirectory()
    {
#ifdef Q_OS_WIN
        QCOMPARE(PrinterDriverPackageHelper::archiverPath(), TestAppDir::filePath(QStringLiteral("7z.exe")));
#else
        QCOMPARE(PrinterDriverPackageHelper::archiverPath(), TestAppDir::filePath(QStringLiteral("7z")));
#endif
    }

    void listing_isReadWithTheArchiversSeparator_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QChar>("separator");
        QTest::addColumn<QString>("refusal");
        const QChar backslash = QLatin1Char('\\');
        const QChar slash = QLatin1Char('/');
        // 7-Zip for Windows lists "H\\driver\\H.prs" where 7-Zip elsewhere
        // lists "H/driver/H.prs".
        QTest::newRow("Windows folders") << QByteArray("H\\driver\\H.prs") << backslash << QString();
        QTest::newRow("POSIX folders") << QByteArray("H/driver/H.prs") << slash << QString();
        QTest::newRow("backslash in a POSIX name")
            << QByteArray("H\\driver\\H.prs") << slash
            << QStringLiteral("character '\\' that file systems cannot hold");
        // 7-Zip for Windows shows a backslash inside a name from another
        // system as U+F05C, and a byte that is not valid UTF-8 as U+EF00
        // plus the byte.
        QTest::newRow("Windows stand-in for a backslash")
            << QByteArray("H\\bin\\a\xef\x81\x9c..\xef\x81\x9c"
                          "b.icc")
            << backslash << QStringLiteral("character '\\' that file systems cannot hold");
        QTest::newRow("Windows stand-in for a byte that is not UTF-8")
            << QByteArray("H\\bin\\\xee\xbf\xbf\xee\xbf\xbe.icc") << backslash
            << QStringLiteral("name that is not valid text");
        QTest::newRow("private character in a POSIX name")
            << QByteArray("H/bin/a\xef\x81\x9c\xee\xbf\xbf.icc") << slash << QString();
        QTest::newRow("Windows parent folder")
            << QByteArray("H\\..\\..\\evil.txt") << backslash << QStringLiteral("relative folder \"..\"");
        QTest::newRow("Windows root")
            << QByteArray("\\evil.txt") << backslash << QStringLiteral("absolute path");
        QTest::newRow("Windows drive")
            << QByteArray("C:\\evil.txt") << backslash << QStringLiteral("drive letter");
        QTest::newRow("Windows device name")
            << QByteArray("H\\bin\\NUL.icc") << backslash << QStringLiteral("reserved device name");
        QTest::newRow("Windows empty folder name")
            << QByteArray("H\\\\bin\\a.icc") << backslash << QStringLiteral("empty name");
    }

    void listing_isReadWithTheArchiversSeparator()
    {
        QFETCH(QByteArray, path);
        QFETCH(QChar, separator);
        QFETCH(QString, refusal);
        const QByteArray listing = "Path = p.bex_driver\r\nType = zip\r\n\r\n----------\r\nPath = " + path +
                                   "\r\nFolder = -\r\nAttributes = A\r\n\r\n";

        const QString reason = PrinterDriverPackageHelper::listingRefusalReason(listing, separator);

        if (refusal.isEmpty())
            QVERIFY2(reason.isEmpty(), qPrintable(reason));
        else
            QVERIFY2(reason.endsWith(QStringLiteral(": ") + refusal), qPrintable(reason));
    }

    // 7-Zip ends the listing of an archive it warned about with a count of
    // the warnings; inside an entry's block such a line is not understood.
    void listing_endingWithAWarningCount_isRead_data()
    {
        QTest::addColumn<QByteArray>("tail");
        QTest::addColumn<QString>("refusal");
        QTest::newRow("after the last entry") << QByteArray("\r\nWarnings: 1\r\n") << QString();
        QTest::newRow("inside the last entry")
            << QByteArray("Warnings: 1\r\n") << QStringLiteral("package listing not understood");
        QTest::newRow("not a count") << QByteArray("\r\nWarnings: some\r\n")
                                     << QStringLiteral("package listing not understood");
    }

    void listing_endingWithAWarningCount_isRead()
    {
        QFETCH(QByteArray, tail);
        QFETCH(QString, refusal);
        const QByteArray listing =
            "Path = p.bex_driver\r\nType = zip\r\nWARNINGS:\r\nThere are data after the "
            "end of archive\r\n\r\n----------\r\nPath = H/driver/H.prs\r\nFolder = "
            "-\r\nAttributes = A\r\n" +
            tail;

        QCOMPARE(PrinterDriverPackageHelper::listingRefusalReason(listing, QLatin1Char('/')), refusal);
    }

    void archiverSeparator_isThePlatformsOwn()
    {
        QCOMPARE(PrinterDriverPackageHelper::archiverSeparator(), QDir::separator());
    }

    void obtainDstFilePath_mapsBelowTheRoot_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("sourceRoot");
        QTest::addColumn<QString>("destinationRoot");
        QTest::addColumn<QString>("expected");
        QTest::newRow("roots with slash") << "/app/dtp/bin/a.icc"
                                          << "/app/dtp/"
                                          << "/work/H/"
                                          << "/work/H/bin/a.icc";
        QTest::newRow("roots without slash") << "/app/dtp/driver/H.prs"
                                             << "/app/dtp"
                                             << "/work/H"
                                             << "/work/H/driver/H.prs";
        QTest::newRow("backslashes everywhere") << "C:\\app\\dtp\\bin\\ICC Profile\\RGB\\a.icc"
                                                << "C:\\app\\dtp\\"
                                                << "D:\\work\\H"
                                                << "D:/work/H/bin/ICC Profile/RGB/a.icc";
        QTest::newRow("root compared ignoring case") << "C:/APP/Dtp/bin/a.icc"
                                                     << "c:/app/dtp/"
                                                     << "/w/"
                                                     << "/w/bin/a.icc";
        QTest::newRow("chinese names") << "/应用/dtp/driver/平板机.prs"
                                       << "/应用/dtp/"
                                       << "/w/"
                                       << "/w/driver/平板机.prs";
    }

    void obtainDstFilePath_mapsBelowTheRoot()
    {
        QFETCH(QString, source);
        QFETCH(QString, sourceRoot);
        QFETCH(QString, destinationRoot);
        QFETCH(QString, expected);
        LogCapture log;
        QCOMPARE(PrinterDriverPackageHelper::obtainDstFilePath(source, sourceRoot, destinationRoot),
                 expected);
        QCOMPARE(log.count(QtCriticalMsg, QString()), 0);
    }

    void obtainDstFilePath_refusesWhatLiesOutside_data()
    {
        QTest::addColumn<QString>("source");
        QTest::newRow("other folder") << "/app/other/a.icc";
        QTest::newRow("root's sibling with the same prefix") << "/app/dtp2/a.icc";
        QTest::newRow("the root itself") << "/app/dtp";
        QTest::newRow("climbing out") << "/app/dtp/bin/../../etc/passwd";
        QTest::newRow("current folder") << "/app/dtp/./bin/a.icc";
        QTest::newRow("empty component") << "/app/dtp/bin//a.icc";
    }

    void obtainDstFilePath_refusesWhatLiesOutside()
    {
        QFETCH(QString, source);
        LogCapture log;
        QCOMPARE(PrinterDriverPackageHelper::obtainDstFilePath(source, QStringLiteral("/app/dtp/"),
                                                               QStringLiteral("/work/")),
                 QString());
        const auto lines = log.find(QtCriticalMsg, QStringLiteral("check your code!"));
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines.first().file, QStringLiteral("source/UI/PrinterDriverPackageHelper"));
        QVERIFY2(
            lines.first().function.contains(QStringLiteral("PrinterDriverPackageHelper::obtainDstFilePath(")),
            qPrintable(lines.first().function));
    }

    void entryRefusalReason_namesWhatCannotBeUnpacked_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("reason");
        QTest::newRow("profile") << "bin/ICC Profile/RGB/Bex sRGB v4.icc" << QString();
        QTest::newRow("chinese driver") << "driver/平板机 A.prs" << QString();
        QTest::newRow("dot inside a name") << "driver/a..b.prs" << QString();
        QTest::newRow("255 bytes") << "bin/" + QString(255, QLatin1Char('a')) << QString();
        QTest::newRow("empty") << QString() << "empty name";
        QTest::newRow("parent folder") << "bin/../../x"
                                       << "relative folder \"..\"";
        QTest::newRow("current folder") << "bin/./x"
                                        << "relative folder \".\"";
        QTest::newRow("absolute") << "/etc/passwd"
                                  << "absolute path";
        QTest::newRow("absolute with backslash") << "\\Windows\\x"
                                                 << "absolute path";
        QTest::newRow("drive letter") << "C:/Windows/x"
                                      << "drive letter";
        QTest::newRow("drive letter without slash") << "c:x"
                                                    << "drive letter";
        QTest::newRow("backslash") << "bin\\..\\..\\x"
                                   << "character '\\'";
        QTest::newRow("colon") << "bin/a:b"
                               << "character ':'";
        QTest::newRow("question mark") << "bin/a?.icc"
                                       << "character '?'";
        QTest::newRow("empty component") << "bin//a"
                                         << "empty name";
        QTest::newRow("trailing slash") << "bin/"
                                        << "empty name";
        QTest::newRow("line break") << "bin/a\nb"
                                    << "control character";
        QTest::newRow("delete character") << QStringLiteral("bin/a\x7f") << "control character";
        QTest::newRow("not valid text") << QStringLiteral("bin/a\uFFFD.icc") << "not valid text";
        QTest::newRow("trailing dot") << "bin/a."
                                      << "ending in a dot or a space";
        QTest::newRow("trailing space") << "bin/a "
                                        << "ending in a dot or a space";
        QTest::newRow("device name") << "bin/CON"
                                     << "reserved device name";
        QTest::newRow("device name with suffix") << "driver/nul.prs"
                                                 << "reserved device name";
        QTest::newRow("256 bytes") << "bin/" + QString(256, QLatin1Char('a')) << "longer than 255 bytes";
        QTest::newRow("86 chinese characters")
            << "bin/" + QString(86, QChar(0x5e73)) << "longer than 255 bytes";
    }

    void entryRefusalReason_namesWhatCannotBeUnpacked()
    {
        QFETCH(QString, path);
        QFETCH(QString, reason);
        const QString actual = PrinterDriverPackageHelper::entryRefusalReason(path);
        if (reason.isEmpty())
            QCOMPARE(actual, QString());
        else
            QVERIFY2(actual.contains(reason), qPrintable(actual));
    }

    void export_holdsOneTopFolderWithEveryProfileOnce_data()
    {
        QTest::addColumn<QString>("baseName");
        QTest::newRow("1610") << "BexUV1610_CMYKLcLm";
        QTest::newRow("2513") << "BexUV2513_CMYKWV";
        QTest::newRow("3220") << "BexUV3220_8C";
    }

    void export_holdsOneTopFolderWithEveryProfileOnce()
    {
        QFETCH(QString, baseName);
        LogCapture log;
        QString package;
        QVERIFY2(exportSample(baseName, &package), qPrintable(log.dump()));

        const QStringList entries = archiveEntries(package);
        QStringList files;
        for (const QString &entry : entries) {
            QVERIFY2(entry == baseName || entry.startsWith(baseName + QLatin1Char('/')), qPrintable(entry));
            if (QFileInfo(TestAppDir::filePath(QStringLiteral("dtp/")) + entry.mid(baseName.size() + 1))
                    .isFile())
                files.append(entry.mid(baseName.size() + 1));
        }
        QVERIFY(entries.contains(baseName + QStringLiteral("/bin")));
        QVERIFY(entries.contains(baseName + QStringLiteral("/driver")));
        QSet<QString> expected = profilesNamedBy(SampleDriverFiles::prsPath(baseName));
        QVERIFY(!expected.isEmpty());
        expected << QStringLiteral("driver/") + baseName + QStringLiteral(".prs")
                 << QStringLiteral("driver/") + baseName + QStringLiteral(".pdv");
        QCOMPARE(QSet<QString>(files.cbegin(), files.cend()), expected);
        QCOMPARE(files.size(), expected.size());
        QCOMPARE(folderEntries(QStringLiteral("cache/export")), QStringList());
        QVERIFY(log.contains(QtDebugMsg, QStringLiteral("program:")));
    }

    void export_profileOfManyCombinations_isListedEachTimeAndPackedOnce()
    {
        const auto driver = installSample(kSample);
        QVERIFY(driver);
        LogCapture log;
        PrinterDriverPackageHelper helper(nullptr);
        const auto read = helper.readDriverInfo(driver->id);
        QVERIFY(read);
        PrinterDriverPackageHelper::Package package = *read;
        package.prsFilePath = driver->prsPath;

        const QString srgb = PrinterDriverConfig::instance()->iccRgbDir() + QStringLiteral("Bex sRGB v4.icc");
        QVERIFY2(package.rgbIccFilePaths.count(srgb) > 1, qPrintable(package.rgbIccFilePaths.join('\n')));
        QCOMPARE(package.pdvFilePath,
                 TestAppDir::filePath(QStringLiteral("dtp/driver/BexUV2513_CMYKWV.pdv")));
        QVERIFY(log.contains(QtDebugMsg, QStringLiteral("pdvFilePath:")));
        QCOMPARE(log.count(QtDebugMsg, QStringLiteral("is common property")), 3);
        QCOMPARE(log.count(QtDebugMsg, QStringLiteral("iccFilePath_RGB:")), package.rgbIccFilePaths.size());
        QCOMPARE(log.count(QtDebugMsg, QStringLiteral("iccFilePath_OUTPUT:")),
                 package.outputIccFilePaths.size());

        const QString work = TestAppDir::filePath(QStringLiteral("cache/export/once/"));
        const QString archive = packagePath(QStringLiteral("once.bex_driver"));
        QVERIFY(helper.encode(archive, work, package));
        const QStringList entries = archiveEntries(archive);
        QCOMPARE(entries.count(QStringLiteral("BexUV2513_CMYKWV/bin/ICC Profile/RGB/Bex sRGB v4.icc")), 1);
        QVERIFY(QFileInfo(work + QStringLiteral("BexUV2513_CMYKWV/bin/ICC Profile/RGB/Bex sRGB v4.icc"))
                    .isFile());
    }

    void readDriverInfo_unknownDriver_fails()
    {
        LogCapture log;
        QVERIFY(!PrinterDriverPackageHelper(nullptr).readDriverInfo(QStringLiteral("no such driver")));
        QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("SelectPrinterDriverPrs failed")));
    }

    void exportAndImport_keepAnExistingPackageApart()
    {
        QString package;
        QVERIFY(exportSample(kSample, &package));
        const QStringList first = archiveEntries(package);
        // The second export replaces the file instead of adding to it.
        QVERIFY(exportSample(kSample, &package));
        QCOMPARE(archiveEntries(package), first);
        QVERIFY(!QFileInfo::exists(package + QStringLiteral(".partial")));
    }

    // The package is written under a name of its own before it takes the
    // chosen file's place: a file of the user's that bears the chosen name
    // with some suffix is never touched, and nothing else is left.
    void export_keepsAUserFileNamedLikeThePackageWithASuffix()
    {
        QVERIFY(TestAppDir::writeFile(QStringLiteral("packages/BexUV2513_CMYKWV.bex_driver.partial"),
                                      "user data"));
        QVERIFY(TestAppDir::writeFile(QStringLiteral("packages/BexUV2513_CMYKWV.bex_driver"), "old package"));
        QString package;
        QVERIFY(exportSample(kSample, &package));

        QCOMPARE(TestAppDir::readFile(QStringLiteral("packages/BexUV2513_CMYKWV.bex_driver.partial")),
                 QByteArray("user data"));
        QVERIFY(
            archiveEntries(package).contains(QStringLiteral("BexUV2513_CMYKWV/driver/BexUV2513_CMYKWV.prs")));
        QCOMPARE(folderEntries(QStringLiteral("packages")),
                 QStringList({QStringLiteral("BexUV2513_CMYKWV.bex_driver"),
                              QStringLiteral("BexUV2513_CMYKWV.bex_driver.partial")}));
    }

    // A package that cannot take the chosen file's place makes the export
    // fail (the manager dialog then says so); what stood there is kept as
    // it was and the new package is not left lying beside it.
    void export_chosenFolderCannotBeReplaced_failsAndKeepsIt()
    {
        QVERIFY(TestAppDir::writeFile(QStringLiteral("packages/taken.bex_driver/inside.txt"), "kept"));
        const auto driver = installSample(kSample);
        QVERIFY(driver);
        const QString package = packagePath(QStringLiteral("taken.bex_driver"));
        LogCapture log;

        const bool exported =
            PrinterDriverPackageHelper(nullptr).exportPackage(package, driver->prsPath, driver->id);

        QVERIFY(!exported);
        QVERIFY2(log.contains(QtCriticalMsg, QStringLiteral("package could not be moved into place")),
                 qPrintable(log.dump()));
        QVERIFY(QFileInfo(package).isDir());
        QCOMPARE(TestAppDir::readFile(QStringLiteral("packages/taken.bex_driver/inside.txt")),
                 QByteArray("kept"));
        QCOMPARE(folderEntries(QStringLiteral("packages")), QStringList{QStringLiteral("taken.bex_driver")});
        QCOMPARE(folderEntries(QStringLiteral("packages/taken.bex_driver")),
                 QStringList{QStringLiteral("inside.txt")});
    }

    // An old package that may not be replaced (immutable, or its folder
    // not writable) stays byte for byte, and the export fails.
    void export_replaceFails_keepsTheOldPackage()
    {
        QString package;
        QVERIFY(exportSample(kSample, &package));
        QFile oldFile(package);
        QVERIFY(oldFile.open(QIODevice::ReadOnly));
        const QByteArray old = oldFile.readAll();
        oldFile.close();
        QVERIFY(!old.isEmpty());
        if (!makeUnreplaceable(package))
            QSKIP("the old package cannot be made unreplaceable here");
        const auto driver = installSample(kSample);
        QVERIFY(driver);

        const bool exported =
            PrinterDriverPackageHelper(nullptr).exportPackage(package, driver->prsPath, driver->id);
        const QStringList left = folderEntries(QStringLiteral("packages"));
        restoreWritable(package);

        QVERIFY(!exported);
        QVERIFY(oldFile.open(QIODevice::ReadOnly));
        QCOMPARE(oldFile.readAll(), old);
        QCOMPARE(left, QStringList{QStringLiteral("BexUV2513_CMYKWV.bex_driver")});
    }

    void import_intoAFreshApplicationDirectory_installsTheSameDriver()
    {
        QString package;
        const auto original = installSample(kSample);
        QVERIFY(original);
        QVERIFY(manager()->setDefaultDriverId(original->id));
        quint32 xDpi = 0;
        quint32 yDpi = 0;
        QVERIFY(manager()->getDefaultDriverDpi(xDpi, yDpi));
        QVERIFY(exportSample(kSample, &package));
        const QMap<QString, QByteArray> samples = snapshot(
            TestAppDir::filePath(QStringLiteral("dtp")), {QStringLiteral("BexUIPrintParamsProcessing.json")});
        const QSet<QString> profiles = profilesNamedBy(SampleDriverFiles::prsPath(kSample));

        // A machine that has never seen the driver: no dtp/, no settings.
        manager()->unload();
        QVERIFY(TestAppDir::remove(QStringLiteral("dtp")));
        QVERIFY(TestAppDir::remove(QStringLiteral("PrinterDriverConfig.ini")));
        PrinterDriverConfig::instance()->readConfig();
        QVERIFY(manager()->load());
        QVERIFY(manager()->obtainInstalledDrivers().isEmpty());

        MessageBoxAnswerer answerer(QStringLiteral("否"));
        QStringList prsFiles;
        QVERIFY(PrinterDriverPackageHelper(nullptr).importPackage(package, prsFiles));

        QCOMPARE(answerer.texts(), QStringList());
        QCOMPARE(prsFiles, QStringList{SampleDriverFiles::prsPath(kSample)});
        const auto imported = manager()->installDriver(prsFiles.first());
        QVERIFY(imported);
        QCOMPARE(imported->name, original->name);
        QVERIFY(manager()->setDefaultDriverId(imported->id));
        quint32 importedX = 0;
        quint32 importedY = 0;
        QVERIFY(manager()->getDefaultDriverDpi(importedX, importedY));
        QCOMPARE(importedX, xDpi);
        QCOMPARE(importedY, yDpi);
        const QMap<QString, QByteArray> unpacked = snapshot(
            TestAppDir::filePath(QStringLiteral("dtp")), {QStringLiteral("BexUIPrintParamsProcessing.json")});
        for (const QString &file : profiles)
            QCOMPARE(unpacked.value(file), samples.value(file));
        QCOMPARE(unpacked.value(QStringLiteral("driver/BexUV2513_CMYKWV.prs")),
                 samples.value(QStringLiteral("driver/BexUV2513_CMYKWV.prs")));
        QCOMPARE(unpacked.value(QStringLiteral("driver/BexUV2513_CMYKWV.pdv")),
                 samples.value(QStringLiteral("driver/BexUV2513_CMYKWV.pdv")));
        QCOMPARE(folderEntries(QStringLiteral("cache/import")), QStringList());
    }

    void import_again_addsTheDriverWithSuffixOne()
    {
        QString package;
        QVERIFY(exportSample(kSample, &package));
        const QString installedPrs = SampleDriverFiles::prsPath(kSample);
        const QByteArray installedBytes =
            TestAppDir::readFile(QStringLiteral("dtp/driver/BexUV2513_CMYKWV.prs"));
        LogCapture log;
        MessageBoxAnswerer answerer(QStringLiteral("是"));

        QStringList prsFiles;
        QVERIFY(PrinterDriverPackageHelper(nullptr).importPackage(package, prsFiles));

        const QString renamed = TestAppDir::filePath(QStringLiteral("dtp/driver/BexUV2513_CMYKWV_1.prs"));
        QCOMPARE(prsFiles, QStringList{renamed});
        QCOMPARE(TestAppDir::readFile(QStringLiteral("dtp/driver/BexUV2513_CMYKWV.prs")), installedBytes);
        QCOMPARE(TestAppDir::readFile(QStringLiteral("dtp/driver/BexUV2513_CMYKWV_1.prs")), installedBytes);
        // The other files exist already, so the operator was asked about
        // them, never about the .prs file.
        QCOMPARE(answerer.texts().size(), 1);
        const QString question = answerer.texts().first();
        QVERIFY(question.startsWith(QStringLiteral("如果继续安装，将会覆盖以下文件:\n  ")));
        QVERIFY(question.endsWith(QStringLiteral("\n\n是否继续？")));
        QVERIFY(question.contains(TestAppDir::filePath(QStringLiteral("dtp/driver/BexUV2513_CMYKWV.pdv"))));
        QVERIFY(!question.contains(installedPrs));
        const auto second = manager()->installDriver(renamed);
        QVERIFY(second);

        // And once more: the next free number.
        prsFiles.clear();
        QVERIFY(PrinterDriverPackageHelper(nullptr).importPackage(package, prsFiles));
        QCOMPARE(prsFiles,
                 QStringList{TestAppDir::filePath(QStringLiteral("dtp/driver/BexUV2513_CMYKWV_2.prs"))});
    }

    void overwriteQuestion_answeredNo_changesNothing()
    {
        QString package;
        QVERIFY(exportSample(kSample, &package));
        // The operator has tuned a profile on this machine since.
        QVERIFY(
            TestAppDir::writeFile(QStringLiteral("dtp/bin/ICC Profile/RGB/Bex sRGB v4.icc"), "tuned here"));
        const QMap<QString, QByteArray> before = appDirSnapshot();
        MessageBoxAnswerer answerer(QStringLiteral("否"));

        QStringList prsFiles;
        QVERIFY(!PrinterDriverPackageHelper(nullptr).importPackage(package, prsFiles));

        QCOMPARE(answerer.texts().size(), 1);
        QVERIFY(!answerer.buttonMissing());
        QVERIFY(answerer.texts().first().contains(QStringLiteral("Bex sRGB v4.icc")));
        QCOMPARE(answerer.titles(), QStringList{QStringLiteral("温馨提示")});
        QCOMPARE(answerer.buttonRows(), QStringList{QStringLiteral("是|否")});
        // Enter alone answers no.
        QCOMPARE(answerer.defaultButtons(), QStringList{QStringLiteral("否")});
        // The wait cursor is gone while the operator is asked, and after.
        QVERIFY(!answerer.cursorOverriddenWhileOpen());
        QCOMPARE(QApplication::overrideCursor(), nullptr);
        QCOMPARE(prsFiles, QStringList());
        QCOMPARE(appDirSnapshot(), before);
        QCOMPARE(folderEntries(QStringLiteral("cache/import")), QStringList());
    }

    void overwriteQuestion_closed_changesNothing()
    {
        QString package;
        QVERIFY(exportSample(kSample, &package));
        const QMap<QString, QByteArray> before = appDirSnapshot();
        MessageBoxAnswerer answerer(QStringLiteral("no such button"));

        QStringList prsFiles;
        QVERIFY(!PrinterDriverPackageHelper(nullptr).importPackage(package, prsFiles));

        QVERIFY(answerer.buttonMissing());
        QCOMPARE(appDirSnapshot(), before);
    }

    void export_withoutArchiver_reportsSuccessAndLeavesNothing()
    {
        QVERIFY(hideArchiver());
        QString package;
        const bool exported = exportSample(kSample, &package);
        const bool packageWritten = QFileInfo::exists(package);
        QVERIFY(restoreArchiver());

        QVERIFY(!exported); // exportSample also requires the file
        QVERIFY(!packageWritten);
        QCOMPARE(folderEntries(QStringLiteral("cache/export")), QStringList());
        // The helper's own answer was success.
        QVERIFY(hideArchiver());
        const auto driver = installSample(kSample);
        QVERIFY(driver);
        const bool result =
            PrinterDriverPackageHelper(nullptr).exportPackage(package, driver->prsPath, driver->id);
        QVERIFY(restoreArchiver());
        QVERIFY(result);
        QVERIFY(!QFileInfo::exists(package));
    }

    void import_withoutArchiver_isRefused()
    {
        QString package;
        QVERIFY(exportSample(kSample, &package));
        QVERIFY(hideArchiver());
        LogCapture log;
        QStringList prsFiles;
        const bool imported = PrinterDriverPackageHelper(nullptr).importPackage(package, prsFiles);
        QVERIFY(restoreArchiver());

        QVERIFY(!imported);
        const auto lines = log.find(QtCriticalMsg, QStringLiteral("7z.exe is not existed!"));
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines.first().file, QStringLiteral("source/UI/PrinterDriverPackageHelper"));
        QVERIFY2(lines.first().function.contains(QStringLiteral(
                     "PrinterDriverPackageHelper::importPackage(const QString&, QStringList&)")),
                 qPrintable(lines.first().function));
    }

    void export_fileOutsideDtp_endsWithCheckYourCode()
    {
        QVERIFY(TestAppDir::writeFile(QStringLiteral("elsewhere/H.pdv"), "pdv"));
        PrinterDriverPackageHelper::Package package;
        package.prsFilePath = SampleDriverFiles::prsPath(kSample);
        package.pdvFilePath = TestAppDir::filePath(QStringLiteral("elsewhere/H.pdv"));
        LogCapture log;
        const QString work = TestAppDir::filePath(QStringLiteral("cache/export/outside/"));

        QVERIFY(!PrinterDriverPackageHelper(nullptr).encode(packagePath(QStringLiteral("outside.bex_driver")),
                                                            work, package));

        QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("check your code!")));
        QVERIFY(!QFileInfo::exists(packagePath(QStringLiteral("outside.bex_driver"))));
        // A failed export leaves its working folder for a look.
        QVERIFY(QFileInfo(work + QStringLiteral("BexUV2513_CMYKWV/driver/BexUV2513_CMYKWV.prs")).isFile());
    }

    void import_copyFails_reportsSuccessAndKeepsTheWorkingFolder_data()
    {
        QTest::addColumn<QString>("blocked");
        QTest::addColumn<bool>("prsListed");
        QTest::newRow("before the prs file") << "bin/ICC Profile/RGB/h.icc" << false;
        QTest::newRow("after the prs file") << "driver/zz.dat" << true;
    }

    void import_copyFails_reportsSuccessAndKeepsTheWorkingFolder()
    {
        QFETCH(QString, blocked);
        QFETCH(bool, prsListed);
        ZipWriter zip;
        addValidEntries(zip);
        zip.add("H/driver/zz.dat", "new data");
        const QString package = packagePath(QStringLiteral("blocked.bex_driver"));
        QVERIFY(zip.write(package));
        QVERIFY(TestAppDir::writeFile(QStringLiteral("dtp/") + blocked, "kept"));
        const QString blockedPath = TestAppDir::filePath(QStringLiteral("dtp/") + blocked);
        QVERIFY(makeUnreplaceable(blockedPath));
        LogCapture log;
        MessageBoxAnswerer answerer(QStringLiteral("是"));

        QStringList prsFiles;
        const bool imported = PrinterDriverPackageHelper(nullptr).importPackage(package, prsFiles);
        restoreWritable(blockedPath);

        QVERIFY(imported);
        QCOMPARE(answerer.texts().size(), 1);
        QVERIFY(log.contains(QtCriticalMsg, QStringLiteral("copy failed")));
        QCOMPARE(TestAppDir::readFile(QStringLiteral("dtp/") + blocked), QByteArray("kept"));
        const QString prs = TestAppDir::filePath(QStringLiteral("dtp/driver/H.prs"));
        QCOMPARE(prsFiles, prsListed ? QStringList{prs} : QStringList());
        QCOMPARE(QFileInfo::exists(prs), prsListed);
        QCOMPARE(folderEntries(QStringLiteral("cache/import")).size(), 1);
    }

    // 7-Zip's exit code 1 means it packed with warnings, a file it could
    // not read: the package would lack it, so none is written and an old
    // one stays.
    void export_archiverWarns_writesNoPackage()
    {
        const auto driver = installSample(kSample);
        QVERIFY(driver);
        PrinterDriverPackageHelper helper(nullptr);
        const auto read = helper.readDriverInfo(driver->id);
        QVERIFY(read);
        PrinterDriverPackageHelper::Package package = *read;
        package.prsFilePath = driver->prsPath;
        const QString work = TestAppDir::filePath(QStringLiteral("cache/export/warned/"));
        const QString unreadable = work + QStringLiteral("BexUV2513_CMYKWV/bin/unreadable.dat");
        QVERIFY(placeUnreadableFile(unreadable));
        const QString archive = packagePath(QStringLiteral("warned.bex_driver"));
        QVERIFY(TestAppDir::writeFile(QStringLiteral("packages/warned.bex_driver"), "old package"));
        LogCapture log;

        const bool encoded = helper.encode(archive, work, package);
        releaseUnreadableFile(unreadable);

        QVERIFY(encoded);
        QVERIFY2(log.contains(QtCriticalMsg, QStringLiteral("archiver could not pack the driver")),
                 qPrintable(log.dump()));
        QVERIFY2(log.contains(QtCriticalMsg, QStringLiteral("exit code 1")), qPrintable(log.dump()));
        QCOMPARE(TestAppDir::readFile(QStringLiteral("packages/warned.bex_driver")),
                 QByteArray("old package"));
        QVERIFY(!QFileInfo::exists(archive + QStringLiteral(".partial")));
        // Without the unreadable file the same working folder packs.
        QVERIFY(QFile::remove(unreadable));
        LogCapture secondLog;
        QVERIFY(helper.encode(archive, work, package));
        QCOMPARE(secondLog.count(QtCriticalMsg, QString()), 0);
        QVERIFY(
            archiveEntries(archive).contains(QStringLiteral("BexUV2513_CMYKWV/driver/BexUV2513_CMYKWV.prs")));
    }

    // An entry whose bytes do not match its CRC is an error (exit code 2):
    // the import is refused.
    void import_damagedEntry_isAnErrorAndRefused()
    {
        ZipWriter zip;
        addValidEntries(zip);
        QByteArray bytes = zip.archive();
        const int data = bytes.indexOf("rgb profile");
        QVERIFY(data > 0);
        bytes[data] = 'R';
        const QString package = writePackage(QStringLiteral("damaged.bex_driver"), bytes);
        QVERIFY(!package.isEmpty());
        int listed = -1;
        runArchiver({QStringLiteral("l"), package}, &listed);
        QCOMPARE(listed, 0);
        int tested = -1;
        runArchiver({QStringLiteral("t"), package}, &tested);
        QCOMPARE(tested, 2);

        expectRefused(package, QStringLiteral("package cannot be unpacked"));
    }

    // Data after the end of an archive is a remark of the archiver, printed
    // as a warning with exit code 0: the package is imported.
    void import_dataAfterTheEndOfThePackage_doesNotStopIt()
    {
        QString package;
        QVERIFY(exportSample(kSample, &package));
        {
            QFile file(package);
            QVERIFY(file.open(QIODevice::Append));
            QVERIFY(file.write(QByteArray(100, 'x')) == 100);
        }
        int exitCode = -1;
        const QByteArray listing = runArchiver({QStringLiteral("l"), package}, &exitCode);
        QCOMPARE(exitCode, 0);
        QVERIFY2(listing.contains("There are data after the end of archive"), listing.constData());
        QCOMPARE(PrinterDriverPackageHelper::storedNamesRefusalReason(package), QString());
        LogCapture log;
        MessageBoxAnswerer answerer(QStringLiteral("是"));

        QStringList prsFiles;
        QVERIFY(PrinterDriverPackageHelper(nullptr).importPackage(package, prsFiles));

        QCOMPARE(prsFiles,
                 QStringList{TestAppDir::filePath(QStringLiteral("dtp/driver/BexUV2513_CMYKWV_1.prs"))});
        QCOMPARE(log.count(QtCriticalMsg, QString()), 0);
        QVERIFY2(log.contains(QtWarningMsg, QStringLiteral("archiver warned while listing the package")),
                 qPrintable(log.dump()));
        QCOMPARE(folderEntries(QStringLiteral("cache/import")), QStringList());
    }

    // 7-Zip for Windows, unless told to write UTF-8, writes a Chinese name
    // in the OEM code page with its UTF-8 form in an extra field: every
    // platform installs the file under the name as it was written.
    void import_codePageNameWithItsUtf8Form_isImported()
    {
        const QByteArray gbk("H/bin/ICC Profile/RGB/\xc6\xbd\xb0\xe5\xbb\xfa.icc");
        const QString name = QStringLiteral("bin/ICC Profile/RGB/平板机.icc");
        ZipWriter zip;
        addValidEntries(zip);
        zip.add(gbk, "chinese profile", ZipWriter::Kind::File, false,
                ZipWriter::unicodePathField(gbk, QByteArray("H/") + name.toUtf8()));
        const QString package = writePackage(QStringLiteral("gbk.bex_driver"), zip.archive());
        QVERIFY(!package.isEmpty());
        LogCapture log;

        QStringList prsFiles;
        QVERIFY2(PrinterDriverPackageHelper(nullptr).importPackage(package, prsFiles),
                 qPrintable(log.dump()));

        QCOMPARE(prsFiles, QStringList{TestAppDir::filePath(QStringLiteral("dtp/driver/H.prs"))});
        QCOMPARE(TestAppDir::readFile(QStringLiteral("dtp/") + name), QByteArray("chinese profile"));
        QCOMPARE(log.count(QtCriticalMsg, QString()), 0);
    }

    void import_readsStoredNamesFromTheCentralDirectory_data()
    {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<QString>("refusal");
        ZipWriter zip;
        addValidEntries(zip);
        const QByteArray valid = zip.archive();
        QTest::newRow("package") << valid << QString();
        QTest::newRow("data after the end") << valid + QByteArray(5000, 'x') << QString();
        QTest::newRow("data before the start") << QByteArray(3000, 'x') + valid << QString();
        zip.add("H/bin/a\tb.icc", "tab");
        QTest::newRow("tab in a name") << zip.archive() << "control character";
        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H/bin/\xc3\xa9\xc0\xaf.icc", "overlong slash", ZipWriter::Kind::File, false);
        QTest::newRow("overlong UTF-8") << zip.archive() << "not valid text";
        // "平板机" in code page 936, with its UTF-8 form beside it, as 7-Zip
        // for Windows writes names unless told to write UTF-8.
        const QByteArray gbk("H/bin/\xc6\xbd\xb0\xe5\xbb\xfa.icc");
        const QByteArray utf8 = QStringLiteral("H/bin/平板机.icc").toUtf8();
        zip = ZipWriter();
        addValidEntries(zip);
        zip.add(gbk, "gbk", ZipWriter::Kind::File, false, ZipWriter::unicodePathField(gbk, utf8));
        QTest::newRow("code page name with its UTF-8 form") << zip.archive() << QString();
        zip = ZipWriter();
        addValidEntries(zip);
        zip.add(gbk, "gbk", ZipWriter::Kind::File, false, ZipWriter::unicodePathField("H/bin/x.icc", utf8));
        QTest::newRow("UTF-8 form of another name") << zip.archive() << "not valid text";
        zip = ZipWriter();
        addValidEntries(zip);
        zip.add(gbk, "gbk", ZipWriter::Kind::File, false,
                ZipWriter::unicodePathField(gbk, "H/bin/../../../x.icc"));
        QTest::newRow("UTF-8 form that climbs out") << zip.archive() << "relative folder";
        zip = ZipWriter();
        addValidEntries(zip);
        zip.add(gbk, "gbk", ZipWriter::Kind::File, false, ZipWriter::unicodePathField(gbk, "H/bin/\xff.icc"));
        QTest::newRow("UTF-8 form that is not UTF-8") << zip.archive() << "not valid text";
        zip = ZipWriter();
        addValidEntries(zip);
        zip.add(utf8, "utf8", ZipWriter::Kind::File, true, ZipWriter::unicodePathField(utf8, "H/bin/a\nb"));
        QTest::newRow("UTF-8 flag wins over the field") << zip.archive() << QString();
        QTest::newRow("no end record") << valid.left(valid.size() - 22) << "cannot be read";
        QByteArray countTooHigh = valid;
        countTooHigh[countTooHigh.size() - 22 + 10] =
            char(countTooHigh.at(countTooHigh.size() - 22 + 10) + 1);
        QTest::newRow("more entries claimed than stored") << countTooHigh << "cannot be read";
    }

    void import_readsStoredNamesFromTheCentralDirectory()
    {
        QFETCH(QByteArray, archive);
        QFETCH(QString, refusal);
        const QString package = writePackage(QStringLiteral("names.bex_driver"), archive);
        QVERIFY(!package.isEmpty());

        const QString reason = PrinterDriverPackageHelper::storedNamesRefusalReason(package);

        if (refusal.isEmpty())
            QVERIFY2(reason.isEmpty(), qPrintable(reason));
        else
            QVERIFY2(reason.contains(refusal), qPrintable(reason));
    }

    void import_hostilePackage_isRefused_data()
    {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<QString>("critical");
        const QByteArray pid = QByteArray::number(QCoreApplication::applicationPid());
        const QByteArray climb = QByteArray("../").repeated(40);
        ZipWriter zip;

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H/bin/" + climb + "tmp/bex-escape-" + pid + ".txt", "escaped");
        QTest::newRow("parent folder entries") << zip.archive() << "relative folder";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("/tmp/bex-absolute-" + pid + ".txt", "escaped");
        QTest::newRow("absolute path") << zip.archive() << "absolute path";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("C:/bex-drive-" + pid + ".txt", "escaped");
        QTest::newRow("drive letter") << zip.archive() << "drive letter";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H\\bin\\..\\..\\..\\bex-backslash.txt", "escaped");
        QTest::newRow("backslash path") << zip.archive() << "file systems cannot hold";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H/bin/passwd", "/etc/passwd", ZipWriter::Kind::SymbolicLink);
        QTest::newRow("symbolic link to a file outside") << zip.archive() << "link";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H/bin/out", "/tmp/bex-link-dir-" + pid, ZipWriter::Kind::SymbolicLink);
        zip.add("H/bin/out/through-link.txt", "escaped");
        QTest::newRow("symbolic link to a folder outside, then a file in it") << zip.archive() << "link";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H/bin/up", "../../..", ZipWriter::Kind::SymbolicLink);
        QTest::newRow("relative symbolic link") << zip.archive() << "link";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H/bin/pipe", QByteArray(), ZipWriter::Kind::Fifo);
        QTest::newRow("named pipe") << zip.archive() << "not a file or folder";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H/bin/ICC Profile/RGB/h.icc", "second copy");
        QTest::newRow("same name twice") << zip.archive() << "name appears twice";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H/bin/ICC Profile/RGB/H.ICC", "other case");
        QTest::newRow("names differing in case only") << zip.archive() << "name appears twice";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H/bin/\xff\xfe.icc", "latin", ZipWriter::Kind::File, true);
        QTest::newRow("name flagged UTF-8 that is not") << zip.archive() << "not valid text";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H/bin/\xff\xfe.icc", "raw", ZipWriter::Kind::File, false);
        QTest::newRow("name in no declared encoding") << zip.archive() << "not valid text";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H/bin/a\nPath = H/bin/b", "line break");
        QTest::newRow("line break in a name") << zip.archive() << "control character";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H/bin/CON", "device");
        QTest::newRow("device name") << zip.archive() << "reserved device name";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H/bin/" + QByteArray(300, 'a'), "long");
        QTest::newRow("name too long") << zip.archive() << "longer than 255 bytes";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("G/bin/x.icc", "second top folder");
        QTest::newRow("two top folders") << zip.archive() << "exactly one top folder";

        zip = ZipWriter();
        zip.add("H.prs", "prs");
        zip.add("H.pdv", "pdv");
        QTest::newRow("no top folder") << zip.archive() << "exactly one top folder";

        zip = ZipWriter();
        addValidEntries(zip, false, true);
        QTest::newRow("no bin folder") << zip.archive() << "bin or driver folder is not existed!";

        zip = ZipWriter();
        addValidEntries(zip, true, false);
        QTest::newRow("no driver folder") << zip.archive() << "bin or driver folder is not existed!";

        zip = ZipWriter();
        addValidEntries(zip, true, true, 0);
        QTest::newRow("no prs file") << zip.archive() << "此包中没有prs文件";

        zip = ZipWriter();
        addValidEntries(zip, true, true, 2);
        QTest::newRow("two prs files") << zip.archive() << "此包中有多个prs文件";

        zip = ZipWriter();
        addValidEntries(zip, true, true, 0);
        zip.add("H/bin/sub/H.PRS", "prs in bin");
        zip.add("H/driver/H.Prs", "prs in driver");
        QTest::newRow("two prs files, suffix in any case") << zip.archive() << "此包中有多个prs文件";

        zip = ZipWriter();
        addValidEntries(zip, true, true, 0);
        for (int i = 0; i < 10000; ++i)
            zip.add("H/bin/many/f" + QByteArray::number(i) + ".dat", QByteArray::number(i));
        QTest::newRow("10000 small files") << zip.archive() << "此包中没有prs文件";

        QByteArray corrupt(4096, '\0');
        for (int i = 0; i < corrupt.size(); ++i)
            corrupt[i] = char((i * 131 + 7) % 251);
        QTest::newRow("corrupt archive") << corrupt << "package cannot be read";

        zip = ZipWriter();
        addValidEntries(zip);
        zip.add("H/bin/big.icc", QByteArray(20000, 'x'));
        QTest::newRow("truncated archive") << zip.archive().left(10000) << "package cannot be read";

        QTest::newRow("empty file") << QByteArray() << "package cannot be read";
    }

    void import_hostilePackage_isRefused()
    {
        QFETCH(QByteArray, archive);
        QFETCH(QString, critical);
        const QString pid = QString::number(QCoreApplication::applicationPid());
        const QString linkTarget = QStringLiteral("/tmp/bex-link-dir-") + pid;
        QVERIFY(QDir().mkpath(linkTarget));
        const QString package = packagePath(QStringLiteral("hostile.bex_driver"));
        QFile file(package);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(archive), qint64(archive.size()));
        file.close();

        expectRefused(package, critical);

        QVERIFY(!QFileInfo::exists(QStringLiteral("/tmp/bex-escape-") + pid + QStringLiteral(".txt")));
        QVERIFY(!QFileInfo::exists(QStringLiteral("/tmp/bex-absolute-") + pid + QStringLiteral(".txt")));
        QCOMPARE(QDir(linkTarget).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
        QVERIFY(QDir(linkTarget).removeRecursively());
    }

    void import_hardLinkedFiles_areRefused()
    {
        // 7-Zip keeps hard links in tar archives; the package's name does not
        // tell what kind of archive it is.
        const QString source = TestAppDir::filePath(QStringLiteral("packages/hard/"));
        QVERIFY(TestAppDir::writeFile(QStringLiteral("packages/hard/H/bin/a.icc"), "shared"));
        QVERIFY(TestAppDir::writeFile(QStringLiteral("packages/hard/H/driver/H.prs"), "prs"));
        QVERIFY(makeHardLink(source + QStringLiteral("H/bin/a.icc"), source + QStringLiteral("H/bin/b.icc")));
        const QString package = packagePath(QStringLiteral("hard.bex_driver"));
        int exitCode = -1;
        runArchiver({QStringLiteral("a"), QStringLiteral("-ttar"), QStringLiteral("-snh"), package,
                     source + QStringLiteral("H")},
                    &exitCode);
        QCOMPARE(exitCode, 0);

        expectRefused(package, QStringLiteral("link"));
    }

    void import_tarArchive_isRefused()
    {
        QVERIFY(TestAppDir::writeFile(QStringLiteral("packages/tar/H/bin/a.icc"), "icc"));
        QVERIFY(TestAppDir::writeFile(QStringLiteral("packages/tar/H/driver/H.prs"), "prs"));
        const QString package = packagePath(QStringLiteral("tar.bex_driver"));
        int exitCode = -1;
        runArchiver({QStringLiteral("a"), QStringLiteral("-ttar"), package,
                     TestAppDir::filePath(QStringLiteral("packages/tar/H"))},
                    &exitCode);
        QCOMPARE(exitCode, 0);

        expectRefused(package, QStringLiteral("not a zip archive"));
    }

    void import_destinationFolderIsALink_isRefused()
    {
        // The installation's own folder leads elsewhere: an import never
        // writes through it.
        const QString outside = TestAppDir::filePath(QStringLiteral("outside-rgb"));
        QVERIFY(QDir().mkpath(outside));
        QVERIFY(TestAppDir::remove(QStringLiteral("dtp/bin/ICC Profile/RGB")));
        const QString link = TestAppDir::filePath(QStringLiteral("dtp/bin/ICC Profile/RGB"));
        QString failure;
        if (!makeSymbolicLink(outside, link, &failure)) {
            // Wine 8's CreateSymbolicLinkW is a stub that answers success
            // and makes nothing; anywhere else a link that cannot be made
            // fails the test.
            QVERIFY2(runningUnderWine(), qPrintable(failure));
            QSKIP(qPrintable(QStringLiteral("Wine made no symbolic link %1: %2").arg(link, failure)));
        }
        ZipWriter zip;
        addValidEntries(zip);
        const QString package = packagePath(QStringLiteral("through-link.bex_driver"));
        QVERIFY(zip.write(package));

        expectRefused(package, QStringLiteral("destination folder refused"));
        QCOMPARE(QDir(outside).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    }

    void import_destinationFileIsALink_isRefused()
    {
        const QString outside = TestAppDir::filePath(QStringLiteral("outside.icc"));
        QVERIFY(TestAppDir::writeFile(QStringLiteral("outside.icc"), "outside"));
        const QString link = TestAppDir::filePath(QStringLiteral("dtp/bin/ICC Profile/RGB/h.icc"));
        QString failure;
        if (!makeSymbolicLink(outside, link, &failure)) {
            // Wine 8's CreateSymbolicLinkW is a stub that answers success
            // and makes nothing; anywhere else a link that cannot be made
            // fails the test.
            QVERIFY2(runningUnderWine(), qPrintable(failure));
            QSKIP(qPrintable(QStringLiteral("Wine made no symbolic link %1: %2").arg(link, failure)));
        }
        ZipWriter zip;
        addValidEntries(zip);
        const QString package = packagePath(QStringLiteral("onto-link.bex_driver"));
        QVERIFY(zip.write(package));

        expectRefused(package, QStringLiteral("destination refused"));
        QCOMPARE(TestAppDir::readFile(QStringLiteral("outside.icc")), QByteArray("outside"));
    }
};

QTEST_MAIN(TestPrinterDriverPackageHelper)
#include "tst_printerdriverpackagehelper.moc"
