#include "UI/PrinterDriverPackageHelper.h"

#include "Common/Logging.h"
#include "Config/PrinterDriverConfig.h"
#include "Driver/DriverSession.h"
#include "TempPrsFileName.h"
#include "UI/PrinterDriverManager.h"

#include "FramelessWidget/Common/CommonFramelessMessageBox.h"

#include <IUIPrintParamsHandler.h>

#include <QApplication>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QVector>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <string>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#else
#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>
#endif

namespace {

// The longest file name component most file systems hold, in bytes.
constexpr int kMaxComponentBytes = 255;

std::atomic<std::uint32_t> workFolderCounter{0};

// "<pid>_<call counter>_<UTC ms>/" below tempDir + kind ("export/", "import/").
QString makeWorkFolder(const QString &tempDir, const QString &kind)
{
    const std::uint32_t number = workFolderCounter.fetch_add(1);
    const qint64 now = QDateTime::currentDateTimeUtc().toMSecsSinceEpoch();
    return tempDir + kind +
           QStringLiteral("%1_%2_%3").arg(cachedProcessId(), 0, 10).arg(number, 0, 10).arg(now, 0, 10) +
           QLatin1Char('/');
}

QString withTrailingSlash(QString root)
{
    root.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (!root.endsWith(QLatin1Char('/')))
        root.append(QLatin1Char('/'));
    return root;
}

// Shows the wait cursor while the archiver runs, and restores it however
// the run ends.
class WaitCursor
{
public:
    WaitCursor()
        : active_(qobject_cast<QApplication *>(QCoreApplication::instance()) != nullptr)
    {
        if (active_)
            QApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ~WaitCursor()
    {
        if (active_)
            QApplication::restoreOverrideCursor();
    }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;

private:
    bool active_;
};

struct ArchiverRun
{
    bool started = false;
    int exitCode = -1;
    QByteArray output;

    // 7-Zip's exit codes: 0 done, 1 done with warnings (a file it could not
    // read while packing), 2 and above errors (a damaged entry, an archive
    // it cannot open). Remarks about the archive itself, such as data after
    // its end, are printed as warnings but leave the code at 0.
    bool succeeded() const { return started && exitCode == 0; }
    bool warned() const { return started && exitCode == 1; }
    bool failed() const { return !succeeded() && !warned(); }
};

// Runs the archiver and waits for it without a time limit, on the calling
// thread. Its input is closed, so a question it asks (a password, a name
// that appears twice) ends the run instead of waiting forever.
ArchiverRun runArchiver(const QString &program, const QStringList &arguments, bool keepOutput)
{
    const WaitCursor waitCursor;
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    if (keepOutput) {
        process.setProcessChannelMode(QProcess::SeparateChannels);
    } else {
        // Progress lines are of no use to anyone; errors still reach the
        // host's error output.
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    }
    ArchiverRun run;
    process.start();
    if (!process.waitForStarted(-1)) {
        BEX_WARNING(lcManager) << "archiver could not be started -" << process.errorString();
        return run;
    }
    run.started = true;
    process.waitForFinished(-1);
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    if (keepOutput)
        run.output = process.readAllStandardOutput();
    return run;
}

// How a path in the working folder or in "dtp/" is seen without following
// links.
enum class NodeKind
{
    Missing,
    File,
    Directory,
    Link,
    HardLinkedFile,
    Other
};

NodeKind nodeKind(const QString &path)
{
#ifdef Q_OS_WIN
    const std::wstring native = QDir::toNativeSeparators(path).toStdWString();
    const DWORD attributes = GetFileAttributesW(native.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return NodeKind::Missing;
    if (attributes & FILE_ATTRIBUTE_REPARSE_POINT)
        return NodeKind::Link;
    if (attributes & FILE_ATTRIBUTE_DIRECTORY)
        return NodeKind::Directory;
    HANDLE file = CreateFileW(native.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return NodeKind::Other;
    BY_HANDLE_FILE_INFORMATION info = {};
    const bool known = GetFileInformationByHandle(file, &info) != 0;
    CloseHandle(file);
    if (!known)
        return NodeKind::Other;
    return info.nNumberOfLinks > 1 ? NodeKind::HardLinkedFile : NodeKind::File;
#else
    const QByteArray native = QFile::encodeName(path);
    struct stat status = {};
    if (::lstat(native.constData(), &status) != 0)
        return NodeKind::Missing;
    if (S_ISLNK(status.st_mode))
        return NodeKind::Link;
    if (S_ISDIR(status.st_mode))
        return NodeKind::Directory;
    if (!S_ISREG(status.st_mode))
        return NodeKind::Other;
    return status.st_nlink > 1 ? NodeKind::HardLinkedFile : NodeKind::File;
#endif
}

// Why a node of the working folder may not be installed, or an empty text.
QString nodeKindRefusal(NodeKind kind)
{
    switch (kind) {
    case NodeKind::File:
    case NodeKind::Directory:
        break;
    case NodeKind::Link:
        return QStringLiteral("link");
    case NodeKind::HardLinkedFile:
        return QStringLiteral("hard link");
    case NodeKind::Missing:
        // Listed by its decoded name but not found under it: the name on
        // disk is not valid text.
        return QStringLiteral("name that is not valid text");
    case NodeKind::Other:
        return QStringLiteral("not a file or folder");
    }
    return QString();
}

QString entryRefusedText(const QString &path, const QString &reason)
{
    return QStringLiteral("package entry refused - %1: %2").arg(path, reason);
}

// 7-Zip for Windows lists and writes a name as Windows can hold it: a
// backslash inside a name made on another system becomes U+F05C, and a byte
// that is not valid UTF-8 becomes U+EF00 plus the byte. The listing is judged
// by the names as the package wrote them, so the backslash comes back and
// such a byte reads as text that is not valid.
QString withWindowsStandInsRead(QString path)
{
    for (QChar &c : path) {
        const ushort code = c.unicode();
        if (code == 0xf05c)
            c = QLatin1Char('\\');
        else if (code >= 0xef80 && code <= 0xefff)
            c = QChar(QChar::ReplacementCharacter);
    }
    return path;
}

// "Warnings: <count>", the line 7-Zip ends a listing with when it warned
// about the archive.
bool isWarningCount(const QByteArray &line)
{
    static const QByteArray prefix("Warnings: ");
    if (!line.startsWith(prefix) || line.size() == prefix.size())
        return false;
    for (int i = prefix.size(); i < line.size(); ++i) {
        if (line.at(i) < '0' || line.at(i) > '9')
            return false;
    }
    return true;
}

// One entry of the archiver's technical listing ("l -slt").
struct ListedEntry
{
    QString path;
    QString attributes;
    bool link = false;
};

// Reads the archiver's technical listing. Returns false when a line does not
// have the "key = value" form it expects inside the entry blocks, which a
// name with a line break in it would cause.
bool parseListing(const QByteArray &output, QChar separator, QString &archiveType,
                  QVector<ListedEntry> &entries)
{
    const QList<QByteArray> lines = output.split('\n');
    bool inEntries = false;
    bool inEntry = false;
    for (QByteArray line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
        if (!inEntries) {
            if (line == "----------")
                inEntries = true;
            else if (line.startsWith("Type = ") && archiveType.isEmpty())
                archiveType = QString::fromUtf8(line.mid(7));
            continue;
        }
        if (line.isEmpty()) {
            inEntry = false;
            continue;
        }
        // After the last entry 7-Zip counts the warnings it printed about
        // the archive ("Warnings: 1" for data after its end).
        if (!inEntry && isWarningCount(line))
            continue;
        const int equals = line.indexOf(" = ");
        const int bareEquals = line.endsWith(" =") ? line.size() - 2 : -1;
        const int split = equals >= 0 ? equals : bareEquals;
        if (split <= 0)
            return false;
        const QByteArray key = line.left(split);
        const QString value = QString::fromUtf8(line.mid(split + 3));
        if (key == "Path") {
            QString path = value;
            if (separator != QLatin1Char('/'))
                path.replace(separator, QLatin1Char('/'));
            if (separator == QLatin1Char('\\'))
                path = withWindowsStandInsRead(path);
            entries.append(ListedEntry{path, QString(), false});
            inEntry = true;
            continue;
        }
        if (!inEntry)
            continue;
        ListedEntry &entry = entries.last();
        if (key == "Attributes")
            entry.attributes = value;
        else if ((key == "Symbolic Link" || key == "Hard Link" || key == "Link") && !value.isEmpty())
            entry.link = true;
    }
    return inEntries;
}

// The Unix type letter in a listed entry's attributes ("D drwxr-xr-x",
// " -rw-r--r--", " lrwxrwxrwx"), or 0 when the attributes carry none.
QChar unixTypeLetter(const QString &attributes)
{
    const QStringList words = attributes.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &word : words) {
        if (word.size() == 10 && (word.endsWith(QLatin1Char('x')) || word.endsWith(QLatin1Char('-')) ||
                                  word.endsWith(QLatin1Char('t')) || word.endsWith(QLatin1Char('T'))))
            return word.at(0);
    }
    return QChar();
}

// Why a listed entry may not be unpacked, or an empty text.
QString listedEntryRefusal(const ListedEntry &entry)
{
    const QString reason = PrinterDriverPackageHelper::entryRefusalReason(entry.path);
    if (!reason.isEmpty())
        return reason;
    const QChar type = unixTypeLetter(entry.attributes);
    if (entry.link || type == QLatin1Char('l'))
        return QStringLiteral("link");
    if (!type.isNull() && type != QLatin1Char('-') && type != QLatin1Char('d') && type != QLatin1Char('0'))
        return QStringLiteral("not a file or folder");
    return QString();
}

bool isReservedWindowsName(const QString &component)
{
    static const QStringList reserved = {
        QStringLiteral("CON"),  QStringLiteral("PRN"),  QStringLiteral("AUX"),  QStringLiteral("NUL"),
        QStringLiteral("COM1"), QStringLiteral("COM2"), QStringLiteral("COM3"), QStringLiteral("COM4"),
        QStringLiteral("COM5"), QStringLiteral("COM6"), QStringLiteral("COM7"), QStringLiteral("COM8"),
        QStringLiteral("COM9"), QStringLiteral("LPT1"), QStringLiteral("LPT2"), QStringLiteral("LPT3"),
        QStringLiteral("LPT4"), QStringLiteral("LPT5"), QStringLiteral("LPT6"), QStringLiteral("LPT7"),
        QStringLiteral("LPT8"), QStringLiteral("LPT9")};
    const QString stem = component.section(QLatin1Char('.'), 0, 0).trimmed();
    return reserved.contains(stem, Qt::CaseInsensitive);
}

QString componentRefusalReason(const QString &component)
{
    if (component.isEmpty())
        return QStringLiteral("empty name");
    if (component == QLatin1String(".") || component == QLatin1String(".."))
        return QStringLiteral("relative folder \"%1\"").arg(component);
    for (const QChar c : component) {
        const ushort code = c.unicode();
        if (code < 0x20 || code == 0x7f)
            return QStringLiteral("control character");
        if (QStringLiteral("<>:\"|?*\\").contains(c))
            return QStringLiteral("character '%1' that file systems cannot hold").arg(c);
        if (code == 0xfffd)
            return QStringLiteral("name that is not valid text");
    }
    if (component.endsWith(QLatin1Char('.')) || component.endsWith(QLatin1Char(' ')))
        return QStringLiteral("name ending in a dot or a space");
    if (isReservedWindowsName(component))
        return QStringLiteral("reserved device name");
    if (component.toUtf8().size() > kMaxComponentBytes)
        return QStringLiteral("name longer than %1 bytes").arg(kMaxComponentBytes);
    return QString();
}

// Puts a file into an export's working folder. Where the file system
// allows, a second name for the same file is made instead of a copy: the
// archiver reads the same bytes, and a driver with hundreds of megabytes of
// profiles is not written twice before it is packed.
bool linkOrCopy(const QString &source, const QString &destination)
{
#ifndef Q_OS_WIN
    if (::link(QFile::encodeName(source).constData(), QFile::encodeName(destination).constData()) == 0)
        return true;
#endif
    return QFile::copy(source, destination);
}

#ifndef Q_OS_WIN
// Removes a file or a folder with everything below it, by the names as they
// are stored, so that names which are not valid text go too. Links are
// removed, never followed.
bool removeTree(const QByteArray &path)
{
    struct stat status = {};
    if (::lstat(path.constData(), &status) != 0)
        return errno == ENOENT;
    if (!S_ISDIR(status.st_mode))
        return ::unlink(path.constData()) == 0;
    std::vector<QByteArray> names;
    if (DIR *dir = ::opendir(path.constData())) {
        while (const dirent *entry = ::readdir(dir)) {
            if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0)
                names.emplace_back(entry->d_name);
        }
        ::closedir(dir);
    }
    bool removed = true;
    for (const QByteArray &name : names)
        removed = removeTree(path + '/' + name) && removed;
    return ::rmdir(path.constData()) == 0 && removed;
}
#endif

// Puts source in the place of target in one step: target is either still
// the old file or already the new one, never missing or half written.
bool replaceFile(const QString &source, const QString &target, QString *reason)
{
#ifdef Q_OS_WIN
    const QString from = QDir::toNativeSeparators(source);
    const QString to = QDir::toNativeSeparators(target);
    if (::MoveFileExW(reinterpret_cast<const wchar_t *>(from.utf16()),
                      reinterpret_cast<const wchar_t *>(to.utf16()),
                      MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return true;
    *reason = QStringLiteral("error %1").arg(::GetLastError());
    return false;
#else
    if (::rename(QFile::encodeName(source).constData(), QFile::encodeName(target).constData()) == 0)
        return true;
    *reason = QString::fromLocal8Bit(std::strerror(errno));
    return false;
#endif
}

// Removes a working folder with its contents, whatever names a package left
// in it.
void removeWorkFolder(const QString &workDir)
{
#ifdef Q_OS_WIN
    QDir(workDir).removeRecursively();
#else
    QString path = workDir;
    while (path.size() > 1 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    removeTree(QFile::encodeName(path));
#endif
}

// A file of the unpacked package and where it goes.
struct ImportFile
{
    QString source;
    QString destination;
    bool isPrs = false;
};

} // namespace

PrinterDriverPackageHelper::PrinterDriverPackageHelper(QWidget *parent)
    : parent_(parent)
{}

QString PrinterDriverPackageHelper::archiverPath()
{
#ifdef Q_OS_WIN
    return QCoreApplication::applicationDirPath() + QStringLiteral("/7z.exe");
#else
    return QCoreApplication::applicationDirPath() + QStringLiteral("/7z");
#endif
}

QString PrinterDriverPackageHelper::obtainDstFilePath(const QString &srcFilePath, const QString &srcRoot,
                                                      const QString &dstRoot)
{
    const QString source = withTrailingSlash(srcRoot);
    const QString destination = withTrailingSlash(dstRoot);
    QString path = srcFilePath;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (!path.startsWith(source, Qt::CaseInsensitive)) {
        BEX_CRITICAL(lcManager) << "check your code!" << srcFilePath << srcRoot;
        return QString();
    }
    // The part below the root must stay below it: "." and ".." would let a
    // name reported by the library or found in a package climb out.
    const QString relative = path.mid(source.size());
    const QStringList components = relative.split(QLatin1Char('/'));
    for (const QString &component : components) {
        if (component.isEmpty() || component == QLatin1String(".") || component == QLatin1String("..")) {
            BEX_CRITICAL(lcManager) << "check your code!" << srcFilePath << srcRoot;
            return QString();
        }
    }
    return destination + relative;
}

QString PrinterDriverPackageHelper::entryRefusalReason(const QString &relativePath)
{
    if (relativePath.isEmpty())
        return QStringLiteral("empty name");
    if (relativePath.startsWith(QLatin1Char('/')) || relativePath.startsWith(QLatin1Char('\\')))
        return QStringLiteral("absolute path");
    if (relativePath.size() >= 2 && relativePath.at(1) == QLatin1Char(':') && relativePath.at(0).isLetter())
        return QStringLiteral("drive letter");
    const QStringList components = relativePath.split(QLatin1Char('/'));
    for (const QString &component : components) {
        const QString reason = componentRefusalReason(component);
        if (!reason.isEmpty())
            return reason;
    }
    return QString();
}

QChar PrinterDriverPackageHelper::archiverSeparator()
{
#ifdef Q_OS_WIN
    return QLatin1Char('\\');
#else
    return QLatin1Char('/');
#endif
}

QString PrinterDriverPackageHelper::listingRefusalReason(const QByteArray &listing, QChar separator)
{
    QString type;
    QVector<ListedEntry> entries;
    if (!parseListing(listing, separator, type, entries))
        return QStringLiteral("package listing not understood");
    QSet<QString> seen;
    for (const ListedEntry &entry : qAsConst(entries)) {
        const QString reason = listedEntryRefusal(entry);
        if (!reason.isEmpty())
            return entryRefusedText(entry.path, reason);
        // Two entries that a case-insensitive file system takes for one
        // would make the archiver ask which to keep.
        const QString folded = entry.path.toCaseFolded();
        if (seen.contains(folded))
            return entryRefusedText(entry.path, QStringLiteral("name appears twice"));
        seen.insert(folded);
    }
    if (type.compare(QLatin1String("zip"), Qt::CaseInsensitive) != 0)
        return QStringLiteral("package is not a zip archive - %1").arg(type);
    return QString();
}

namespace {

quint32 readLittleEndian(const QByteArray &bytes, qint64 at, int size)
{
    quint64 value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = value << 8 | quint8(bytes.at(int(at + i)));
    return quint32(value);
}

quint64 readLittleEndian64(const QByteArray &bytes, qint64 at)
{
    return quint64(readLittleEndian(bytes, at + 4, 4)) << 32 | readLittleEndian(bytes, at, 4);
}

quint32 crc32Of(const QByteArray &bytes)
{
    quint32 crc = 0xffffffffu;
    for (const char byte : bytes) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) ? (crc >> 1) ^ 0xedb88320u : crc >> 1;
    }
    return ~crc;
}

// The name of one central directory record as the archiver reads it: the
// stored bytes, or, for a name not flagged UTF-8, the UTF-8 form in its
// Info-ZIP Unicode Path field (0x7075) when that field belongs to these
// bytes (its CRC-32 matches them). 7-Zip for Windows writes names in the
// OEM code page with such a field unless told to write UTF-8.
QByteArray recordName(const QByteArray &directory, qint64 record, qint64 nameSize, qint64 extraSize)
{
    const QByteArray stored = directory.mid(int(record + 46), int(nameSize));
    const bool utf8Flag = readLittleEndian(directory, record + 8, 2) & 0x0800;
    if (utf8Flag)
        return stored;
    qint64 field = record + 46 + nameSize;
    const qint64 end = field + extraSize;
    while (field + 4 <= end) {
        const quint32 id = readLittleEndian(directory, field, 2);
        const qint64 size = readLittleEndian(directory, field + 2, 2);
        if (field + 4 + size > end)
            break;
        if (id == 0x7075 && size >= 5 && directory.at(int(field + 4)) == 1 &&
            readLittleEndian(directory, field + 5, 4) == crc32Of(stored))
            return directory.mid(int(field + 9), int(size - 5));
        field += 4 + size;
    }
    return stored;
}

// The central directory of a driver package is a few kilobytes; one that
// claims more than this is not read.
constexpr qint64 kMaxCentralDirectoryBytes = qint64(64) << 20;

// Where an end record places the central directory: its record count,
// size and offset, and the position in the file where it must end.
struct DirectoryLocation
{
    quint64 count = 0;
    quint64 size = 0;
    quint64 offset = 0;
    qint64 end = 0;
};

// Reads the end record at `at` in tail, the last bytes of a file of
// fileSize bytes that start at tailStart, and follows it to the ZIP64 end
// record when one of its fields says so. False when the ZIP64 records are
// not where they must be.
bool readEndRecord(QFile &file, qint64 fileSize, const QByteArray &tail, qint64 at, qint64 tailStart,
                   DirectoryLocation &location)
{
    location.count = readLittleEndian(tail, at + 10, 2);
    location.size = readLittleEndian(tail, at + 12, 4);
    location.offset = readLittleEndian(tail, at + 16, 4);
    location.end = tailStart + at;
    if (location.count != 0xffff && location.size != 0xffffffffu && location.offset != 0xffffffffu)
        return true;
    // ZIP64: the locator stands just before the end record.
    if (at < 20 || readLittleEndian(tail, at - 20, 4) != 0x07064b50u)
        return false;
    const quint64 zip64End = readLittleEndian64(tail, at - 20 + 8);
    if (zip64End > quint64(fileSize) || quint64(fileSize) - zip64End < 56 || !file.seek(qint64(zip64End)))
        return false;
    const QByteArray record = file.read(56);
    if (record.size() != 56 || readLittleEndian(record, 0, 4) != 0x06064b50u)
        return false;
    location.count = readLittleEndian64(record, 32);
    location.size = readLittleEndian64(record, 40);
    location.offset = readLittleEndian64(record, 48);
    location.end = qint64(zip64End);
    return true;
}

// The central directory's bytes, where location puts them. False when it
// is too large, does not fit before its end or cannot be read whole.
bool readCentralDirectory(QFile &file, const DirectoryLocation &location, QByteArray &directory)
{
    if (location.size > quint64(kMaxCentralDirectoryBytes) || location.size > quint64(location.end))
        return false;
    // Data before the archive (a self-extractor) moves every offset.
    const qint64 directoryStart = location.end - qint64(location.size);
    if (location.offset > quint64(directoryStart) || !file.seek(directoryStart))
        return false;
    directory = file.read(qint64(location.size));
    return directory.size() == qint64(location.size);
}

// The names of the first count records of a central directory
// (recordName()). names is left as it was when a record is not there whole.
bool readRecordNames(const QByteArray &directory, quint64 count, QVector<QByteArray> &names)
{
    QVector<QByteArray> found;
    qint64 position = 0;
    for (quint64 i = 0; i < count; ++i) {
        if (position + 46 > directory.size() || readLittleEndian(directory, position, 4) != 0x02014b50u)
            return false;
        const qint64 nameSize = readLittleEndian(directory, position + 28, 2);
        const qint64 extraSize = readLittleEndian(directory, position + 30, 2);
        const qint64 commentSize = readLittleEndian(directory, position + 32, 2);
        const qint64 next = position + 46 + nameSize + extraSize + commentSize;
        if (next > directory.size())
            return false;
        found.append(recordName(directory, position, nameSize, extraSize));
        position = next;
    }
    names = found;
    return true;
}

// The entry names of a zip archive's central directory (recordName()),
// found through its end record: the last one in the file's final 64 KiB and
// a little, so that a little data after the end of the archive does not hide
// it; ZIP64 end records are followed. False when the file holds no readable
// central directory.
bool readStoredNames(const QString &path, QVector<QByteArray> &names)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const qint64 size = file.size();
    constexpr qint64 kEndRecordBytes = 22;
    const qint64 tailSize = qMin(size, kEndRecordBytes + 0xffff + 1024);
    if (tailSize < kEndRecordBytes || !file.seek(size - tailSize))
        return false;
    const QByteArray tail = file.read(tailSize);
    if (tail.size() != tailSize)
        return false;
    const qint64 tailStart = size - tailSize;
    // An end record that leads nowhere readable may be bytes of an entry
    // that happen to look like one: the search goes on before it.
    for (qint64 at = tailSize - kEndRecordBytes; at >= 0; --at) {
        if (readLittleEndian(tail, at, 4) != 0x06054b50u)
            continue;
        DirectoryLocation location;
        QByteArray directory;
        if (readEndRecord(file, size, tail, at, tailStart, location) &&
            readCentralDirectory(file, location, directory) &&
            readRecordNames(directory, location.count, names))
            return true;
    }
    return false;
}

} // namespace

QString PrinterDriverPackageHelper::storedNamesRefusalReason(const QString &packageFilePath)
{
    QVector<QByteArray> names;
    if (!readStoredNames(packageFilePath, names))
        return QStringLiteral("package names cannot be read from its central directory");
    for (QByteArray name : qAsConst(names)) {
        // A folder entry ends with "/".
        if (name.endsWith('/'))
            name.chop(1);
        // Read as UTF-8 whatever the entry's encoding flag says: a name that
        // is not UTF-8 reads differently on every machine, in every code
        // page.
        const QString text = QString::fromUtf8(name);
        const QString reason =
            text.toUtf8() == name ? entryRefusalReason(text) : QStringLiteral("name that is not valid text");
        if (!reason.isEmpty())
            return entryRefusedText(text, reason);
    }
    return QString();
}

namespace {

// Adds the profiles that one combination names, as paths in their folders.
void collectProfiles(const IccSettings &icc, const PrinterDriverConfig &config,
                     PrinterDriverPackageHelper::Package &package)
{
    const struct
    {
        const QString &name;
        QString folder;
        QStringList &paths;
        const char *logKey;
    } slots_[] = {
        {icc.rgb, config.iccRgbDir(), package.rgbIccFilePaths, "iccFilePath_RGB:"},
        {icc.cmyk, config.iccCmykDir(), package.cmykIccFilePaths, "iccFilePath_CMYK:"},
        {icc.output, config.iccOutputDir(), package.outputIccFilePaths, "iccFilePath_OUTPUT:"},
    };
    for (const auto &slot : slots_) {
        if (slot.name.isEmpty())
            continue;
        slot.paths.append(slot.folder + slot.name);
        BEX_DEBUG(lcManager) << slot.logKey << slot.paths.last();
    }
}

} // namespace

std::optional<PrinterDriverPackageHelper::Package>
PrinterDriverPackageHelper::readDriverInfo(const QString &driverId)
{
    IUIPrintParamsHandler *handler = PrinterDriverManager::instance()->getHandler();
    if (!handler) {
        BEX_CRITICAL(lcManager) << "handler is nullptr";
        return std::nullopt;
    }
    DriverSession session(handler, lcManager);
    if (!session.select(driverId, DriverSession::languageFlag(false))) {
        BEX_CRITICAL(lcManager) << "SelectPrinterDriverPrs failed";
        return std::nullopt;
    }
    const std::shared_ptr<PrinterDriverConfig> config = PrinterDriverConfig::instance();
    const QString pdvName = session.pdvName();
    const QString pdvFilePath = config->driverDir() + pdvName;
    if (pdvName.isEmpty() || !QFileInfo(pdvFilePath).isFile()) {
        BEX_CRITICAL(lcManager) << "pdv is not existed -" << pdvFilePath;
        return std::nullopt;
    }
    BEX_DEBUG(lcManager) << "pdvFilePath:" << pdvFilePath;
    Package package;
    package.pdvFilePath = pdvFilePath;

    QString problem;
    const DriverChoices choices = session.readChoices(&problem);
    if (!problem.isEmpty()) {
        BEX_CRITICAL(lcManager).noquote() << problem;
        return std::nullopt;
    }
    const bool walked = session.forEachCombination(choices, [&](const Combination &) {
        if (const std::optional<IccSettings> icc = session.iccSettings())
            collectProfiles(*icc, *config, package);
    });
    if (!walked) {
        BEX_CRITICAL(lcManager) << "SetEnumItem failed - the driver refused to select a combination";
        return std::nullopt;
    }
    return package;
}

namespace {

// Lays the package's files out below driverWorkDir as they lie below dtpDir.
// A file that two lists name is put there once.
bool copyIntoWorkFolder(const PrinterDriverPackageHelper::Package &package, const QString &dtpDir,
                        const QString &driverWorkDir)
{
    QStringList files = {package.prsFilePath, package.pdvFilePath};
    files << package.rgbIccFilePaths << package.cmykIccFilePaths << package.outputIccFilePaths;
    for (const QString &file : qAsConst(files)) {
        const QString destination =
            PrinterDriverPackageHelper::obtainDstFilePath(file, dtpDir, driverWorkDir);
        if (destination.isEmpty())
            return false;
        if (!QDir().mkpath(QFileInfo(destination).absolutePath())) {
            BEX_CRITICAL(lcManager) << "目录创建失败" << QFileInfo(destination).absolutePath();
            return false;
        }
        if (QFileInfo::exists(destination))
            continue;
        if (!linkOrCopy(file, destination)) {
            BEX_CRITICAL(lcManager) << "copy failed -" << file << destination;
            return false;
        }
    }
    return true;
}

} // namespace

bool PrinterDriverPackageHelper::encode(const QString &packageFilePath, const QString &workDir,
                                        const Package &package)
{
    const QString driverWorkDir =
        withTrailingSlash(workDir) + QFileInfo(package.prsFilePath).baseName() + QLatin1Char('/');
    if (!copyIntoWorkFolder(package, PrinterDriverConfig::instance()->dtpDir(), driverWorkDir))
        return false;

    const QString program = archiverPath();
    BEX_DEBUG(lcManager) << "program:" << program;
    // The archiver adds to an archive that exists already, so it writes the
    // new package into a folder of its own made beside the chosen file, under
    // a name nobody else uses; the chosen file is replaced with it in one
    // step only once the archive is complete. An old package is never mixed
    // into the new one, and it is kept whole when the archiver or the
    // replacement fails. The folder is in the chosen file's folder, so the
    // replacement is a rename on one file system.
    const QFileInfo target(packageFilePath);
    QTemporaryDir stagingDir(target.absolutePath() + QStringLiteral("/.") + target.fileName() +
                             QStringLiteral(".XXXXXX"));
    if (!stagingDir.isValid()) {
        BEX_CRITICAL(lcManager) << "package folder cannot be written -" << packageFilePath
                                << stagingDir.errorString();
        return false;
    }
    const QString stagedPath = stagingDir.filePath(QStringLiteral("package.zip"));
    // 7-Zip for Windows writes a name that is not ASCII in the OEM code page
    // with its UTF-8 form in an Info-ZIP Unicode Path field, which every
    // 7-Zip reads back (storedNamesRefusalReason() does too).
    const ArchiverRun run = runArchiver(
        program, {QStringLiteral("a"), QStringLiteral("-tzip"), stagedPath, driverWorkDir}, false);
    if (run.started && !run.succeeded()) {
        // Even a warning means a file of the driver is missing from the
        // archive: such a package never takes the place of the chosen file.
        BEX_CRITICAL(lcManager) << "archiver could not pack the driver -" << packageFilePath << "exit code"
                                << run.exitCode;
        return true;
    }
    if (QFileInfo(stagedPath).isFile()) {
        QString reason;
        if (!replaceFile(stagedPath, packageFilePath, &reason)) {
            BEX_CRITICAL(lcManager) << "package could not be moved into place -" << packageFilePath << reason;
            return false;
        }
    }
    return true;
}

bool PrinterDriverPackageHelper::exportPackage(const QString &packageFilePath, const QString &prsFilePath,
                                               const QString &driverId)
{
    BEX_DEBUG(lcManager) << "packageFilePath:" << packageFilePath << "prsFilePath:" << prsFilePath
                         << "driverId:" << driverId;
    std::optional<Package> package = readDriverInfo(driverId);
    if (!package)
        return false;
    package->prsFilePath = prsFilePath;
    const QString workDir =
        makeWorkFolder(PrinterDriverConfig::instance()->tempDir(), QStringLiteral("export/"));
    if (!encode(packageFilePath, workDir, *package))
        return false;
    removeWorkFolder(workDir);
    return true;
}

namespace {

// Checks the archive's listing before anything is unpacked, so that the
// archiver is never asked to write a refused entry.
bool checkListing(const QString &program, const QString &packageFilePath)
{
    const ArchiverRun run = runArchiver(
        program, {QStringLiteral("l"), QStringLiteral("-slt"), QStringLiteral("-sccUTF-8"), packageFilePath},
        true);
    if (run.failed()) {
        BEX_CRITICAL(lcManager) << "package cannot be read -" << packageFilePath << "exit code"
                                << run.exitCode;
        return false;
    }
    // A warning does not stop the import: every listed entry is still
    // judged below, and what is unpacked is judged again. 7-Zip prints
    // warnings about the archive itself, such as data after its end, with
    // exit code 0.
    if (run.warned() || run.output.contains("\nWARNINGS:"))
        BEX_WARNING(lcManager) << "archiver warned while listing the package -" << packageFilePath;
    QString reason = PrinterDriverPackageHelper::listingRefusalReason(run.output);
    // The names as the archive stores them, which the listing may show
    // changed.
    if (reason.isEmpty())
        reason = PrinterDriverPackageHelper::storedNamesRefusalReason(packageFilePath);
    if (!reason.isEmpty()) {
        BEX_CRITICAL(lcManager).noquote() << reason;
        return false;
    }
    return true;
}

// Checks what the archiver left in the working folder, without following
// anything: only plain folders and files with a single name are accepted.
bool checkUnpackedTree(const QString &workDir)
{
    QDirIterator it(workDir, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString relative = path.mid(workDir.size());
        QString reason = nodeKindRefusal(nodeKind(path));
        if (reason.isEmpty())
            reason = PrinterDriverPackageHelper::entryRefusalReason(relative);
        if (!reason.isEmpty()) {
            BEX_CRITICAL(lcManager).noquote() << entryRefusedText(relative, reason);
            return false;
        }
    }
    return true;
}

// A destination below dtpDir may be written when every existing folder on
// its way is a plain folder and the file itself is missing or a plain file.
bool checkDestination(const QString &dtpDir, const QString &destination, QSet<QString> &checkedFolders)
{
    const QString root = withTrailingSlash(dtpDir);
    const QStringList components = destination.mid(root.size()).split(QLatin1Char('/'));
    QString folder = root;
    for (int i = 0; i + 1 < components.size(); ++i) {
        folder += components.at(i) + QLatin1Char('/');
        if (checkedFolders.contains(folder))
            continue;
        const NodeKind kind = nodeKind(folder.chopped(1));
        if (kind != NodeKind::Missing && kind != NodeKind::Directory) {
            BEX_CRITICAL(lcManager) << "destination folder refused, not a plain folder -" << folder;
            return false;
        }
        checkedFolders.insert(folder);
    }
    const NodeKind kind = nodeKind(destination);
    if (kind != NodeKind::Missing && kind != NodeKind::File && kind != NodeKind::HardLinkedFile) {
        BEX_CRITICAL(lcManager) << "destination refused, not a plain file -" << destination;
        return false;
    }
    return true;
}

// A free name for an incoming .prs file: "<complete base name>_<n>.<suffix>".
QString freePrsName(const QString &destination)
{
    const QFileInfo info(destination);
    for (int number = 1;; ++number) {
        const QString candidate = info.path() + QLatin1Char('/') + info.completeBaseName() +
                                  QLatin1Char('_') + QString::number(number) + QLatin1Char('.') +
                                  info.suffix();
        if (nodeKind(candidate) == NodeKind::Missing)
            return candidate;
    }
}

bool askToOverwrite(QWidget *parent, const QStringList &destinations)
{
    QString text = QObject::tr("如果继续安装，将会覆盖以下文件:");
    for (const QString &destination : destinations)
        text += QStringLiteral("\n  ") + destination;
    text += QStringLiteral("\n\n") + QObject::tr("是否继续？");
    // "否" is the default answer: Enter alone never replaces a file.
    const int answer = CommonFramelessMessageBox::question(parent, QObject::tr("温馨提示"), text,
                                                           QObject::tr("是"), QObject::tr("否"), 1);
    return answer == 0;
}

// Lists the package, then unpacks it into workDir and checks what the
// archiver left there. False when the package is refused.
bool unpackChecked(const QString &program, const QString &packageFilePath, const QString &workDir)
{
    if (!checkListing(program, packageFilePath))
        return false;
    const ArchiverRun unpacked =
        runArchiver(program, {QStringLiteral("x"), packageFilePath, QStringLiteral("-o") + workDir}, false);
    if (unpacked.failed()) {
        // A damaged entry (a CRC error) is left out or cut short.
        BEX_CRITICAL(lcManager) << "package cannot be unpacked -" << packageFilePath << "exit code"
                                << unpacked.exitCode;
        return false;
    }
    if (unpacked.warned())
        BEX_WARNING(lcManager) << "archiver warned while unpacking the package -" << packageFilePath;
    return checkUnpackedTree(workDir);
}

// The one top folder of the unpacked package, with "/" at its end, or an
// empty text when there is not exactly one or it lacks "bin" or "driver".
QString packageTopFolder(const QString &workDir)
{
    const QStringList topFolders = QDir(workDir).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    if (topFolders.size() != 1) {
        BEX_CRITICAL(lcManager) << "package must hold exactly one top folder -" << topFolders.size();
        return QString();
    }
    const QString topDir = workDir + topFolders.first() + QLatin1Char('/');
    if (!QFileInfo(topDir + QStringLiteral("bin")).isDir() ||
        !QFileInfo(topDir + QStringLiteral("driver")).isDir()) {
        BEX_CRITICAL(lcManager) << "bin or driver folder is not existed!";
        return QString();
    }
    return topDir;
}

// Every file below the top folder's "bin" and "driver", sorted by name:
// files are copied in this order, the same on every machine, whatever order
// the file system lists them in.
QStringList packageFiles(const QString &topDir)
{
    QStringList sources;
    for (const QString &folder : {QStringLiteral("bin"), QStringLiteral("driver")}) {
        QDirIterator it(topDir + folder, QDir::Files | QDir::Hidden | QDir::System,
                        QDirIterator::Subdirectories);
        while (it.hasNext())
            sources.append(it.next());
    }
    sources.sort();
    return sources;
}

// Where each file of the package unpacked in workDir goes below dtpDir: an
// incoming .prs file takes a free name, any other file replaces what is
// there, which overwritten lists. False when the package's folders or a
// destination are refused or the package does not hold exactly one .prs
// file.
bool planImport(const QString &workDir, const QString &dtpDir, QVector<ImportFile> &files,
                QStringList &overwritten)
{
    const QString topDir = packageTopFolder(workDir);
    if (topDir.isEmpty())
        return false;
    QSet<QString> checkedFolders;
    int prsCount = 0;
    const QStringList sources = packageFiles(topDir);
    for (const QString &source : sources) {
        ImportFile file;
        file.source = source;
        file.destination = PrinterDriverPackageHelper::obtainDstFilePath(file.source, topDir, dtpDir);
        if (file.destination.isEmpty() || !checkDestination(dtpDir, file.destination, checkedFolders))
            return false;
        file.isPrs = QFileInfo(file.source).suffix().compare(QLatin1String("prs"), Qt::CaseInsensitive) == 0;
        const bool exists = nodeKind(file.destination) != NodeKind::Missing;
        if (file.isPrs) {
            ++prsCount;
            if (exists)
                file.destination = freePrsName(file.destination);
        } else if (exists) {
            overwritten.append(file.destination);
        }
        files.append(file);
    }
    if (prsCount == 0) {
        BEX_CRITICAL(lcManager) << "此包中没有prs文件";
        return false;
    }
    if (prsCount > 1) {
        BEX_CRITICAL(lcManager) << "此包中有多个prs文件";
        return false;
    }
    return true;
}

// Moves the planned files into place, in order; prsFilePaths receives the
// .prs file's destination. The working folder goes once every file is in
// place, and stays when one is not.
bool moveIntoPlace(const QVector<ImportFile> &files, const QString &workDir, QStringList &prsFilePaths)
{
    for (const ImportFile &file : files) {
        if (!QDir().mkpath(QFileInfo(file.destination).absolutePath())) {
            BEX_CRITICAL(lcManager) << "目录 -" + workDir + "创建失败";
            return false;
        }
        if (nodeKind(file.destination) != NodeKind::Missing) {
            QFile::setPermissions(file.destination, QFileDevice::WriteOther);
            QFile::remove(file.destination);
        }
        // The unpacked file is moved rather than copied: the working folder
        // goes afterwards anyway, and a package of hundreds of megabytes is
        // not written twice. Across file systems this falls back to a copy.
        if (!QFile::rename(file.source, file.destination)) {
            // Deliberately reported as done: the caller installs what the
            // list holds, and the working folder stays for a look.
            BEX_CRITICAL(lcManager) << "copy failed -" << file.source << file.destination;
            return true;
        }
        if (file.isPrs)
            prsFilePaths.append(file.destination);
    }
    removeWorkFolder(workDir);
    return true;
}

} // namespace

bool PrinterDriverPackageHelper::importPackage(const QString &packageFilePath, QStringList &prsFilePaths)
{
    BEX_DEBUG(lcManager) << "packageFilePath:" << packageFilePath;
    const std::shared_ptr<PrinterDriverConfig> config = PrinterDriverConfig::instance();
    const QString workDir = makeWorkFolder(config->tempDir(), QStringLiteral("import/"));
    const QString program = archiverPath();
    BEX_DEBUG(lcManager) << "program:" << program;
    if (!QFileInfo::exists(program)) {
        BEX_CRITICAL(lcManager) << "7z.exe is not existed!";
        return false;
    }
    if (!QDir().mkpath(workDir)) {
        BEX_CRITICAL(lcManager) << "目录 -" + workDir + "创建失败";
        return false;
    }

    QVector<ImportFile> files;
    QStringList overwritten;
    if (!unpackChecked(program, packageFilePath, workDir) ||
        !planImport(workDir, config->dtpDir(), files, overwritten) ||
        (!overwritten.isEmpty() && !askToOverwrite(parent_, overwritten))) {
        // Whatever is refused leaves nothing of the package behind.
        removeWorkFolder(workDir);
        return false;
    }
    return moveIntoPlace(files, workDir, prsFilePaths);
}
