#include "PackageTestSupport.h"

#include "TestAppDir.h"
#include "UI/PrinterDriverPackageHelper.h"

#include "FramelessWidget/Common/CommonFramelessMessageBox.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QPushButton>

#include <algorithm>
#include <string>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#else
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>
#endif

MessageBoxAnswerer::MessageBoxAnswerer(const QString &buttonText)
    : buttonText_(buttonText)
{
    timer_.setInterval(10);
    connect(&timer_, &QTimer::timeout, this, &MessageBoxAnswerer::poll);
    timer_.start();
}

void MessageBoxAnswerer::poll()
{
    auto *box = qobject_cast<CommonFramelessMessageBox *>(QApplication::activeModalWidget());
    if (!box || !box->isVisible())
        return;
    const auto *text = box->findChild<MessageBoxTextEdit *>();
    texts_.append(text ? text->messageText() : QString());
    titles_.append(box->windowTitle());
    cursorOverridden_ = cursorOverridden_ || QApplication::overrideCursor() != nullptr;
    QList<QPushButton *> buttons;
    const QList<QPushButton *> children = box->findChildren<QPushButton *>();
    for (QPushButton *button : children) {
        if (button->objectName() == QLatin1String("framelessMessageBox_btn"))
            buttons.append(button);
    }
    std::sort(buttons.begin(), buttons.end(),
              [](const QPushButton *a, const QPushButton *b) { return a->x() < b->x(); });
    QStringList row;
    QString defaultButton;
    for (const QPushButton *button : qAsConst(buttons)) {
        row.append(button->text());
        if (button->isDefault())
            defaultButton = button->text();
    }
    buttonRows_.append(row.join(QLatin1Char('|')));
    defaultButtons_.append(defaultButton);
    for (QPushButton *button : qAsConst(buttons)) {
        if (button->text() == buttonText_) {
            button->click();
            return;
        }
    }
    buttonMissing_ = true;
    box->done(-1);
}

namespace PackageTestSupport {

QMap<QString, QByteArray> snapshot(const QString &folder, const QStringList &skip)
{
    QMap<QString, QByteArray> result;
    const QDir root(folder);
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString relative = root.relativeFilePath(path);
        bool skipped = false;
        for (const QString &prefix : skip)
            skipped = skipped || relative == prefix || relative.startsWith(prefix + QLatin1Char('/'));
        if (skipped)
            continue;
        const QFileInfo info(path);
        if (info.isSymLink()) {
            result.insert(relative, "link:" + QFile::encodeName(info.symLinkTarget()));
        } else if (info.isDir()) {
            result.insert(relative, "dir");
        } else {
            QFile file(path);
            result.insert(relative, file.open(QIODevice::ReadOnly) ? "file:" + file.readAll() : "unreadable");
        }
    }
    return result;
}

QByteArray runArchiver(const QStringList &arguments, int *exitCode)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(TestAppDir::filePath(QStringLiteral("7z")), arguments);
    process.waitForFinished(-1);
    if (exitCode)
        *exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return process.readAllStandardOutput();
}

QStringList archiveEntries(const QString &archivePath)
{
    const QByteArray listing =
        runArchiver({QStringLiteral("l"), QStringLiteral("-slt"), QStringLiteral("-sccUTF-8"), archivePath});
    QStringList entries;
    const int start = listing.indexOf("----------");
    if (start < 0)
        return entries;
    const QList<QByteArray> lines = listing.mid(start).split('\n');
    const QChar separator = PrinterDriverPackageHelper::archiverSeparator();
    for (const QByteArray &line : lines) {
        if (line.startsWith("Path = "))
            entries.append(QString::fromUtf8(line.mid(7).trimmed()).replace(separator, QLatin1Char('/')));
    }
    return entries;
}

namespace {

#ifdef Q_OS_WIN
std::wstring nativePath(const QString &path)
{
    return QDir::toNativeSeparators(path).toStdWString();
}

// The files held open by makeUnreplaceable(), by path.
QHash<QString, HANDLE> &heldFiles()
{
    static QHash<QString, HANDLE> files;
    return files;
}
#else
bool setImmutable(const QString &filePath, bool immutable)
{
    const int fd = ::open(QFile::encodeName(filePath).constData(), O_RDONLY | O_NONBLOCK);
    if (fd < 0)
        return false;
    int flags = 0;
    bool done = ::ioctl(fd, FS_IOC_GETFLAGS, &flags) == 0;
    if (done) {
        flags = immutable ? (flags | FS_IMMUTABLE_FL) : (flags & ~FS_IMMUTABLE_FL);
        done = ::ioctl(fd, FS_IOC_SETFLAGS, &flags) == 0;
    }
    ::close(fd);
    return done;
}
#endif

QString hiddenArchiverPath()
{
    return PrinterDriverPackageHelper::archiverPath() + QStringLiteral(".hidden");
}

} // namespace

bool makeUnreplaceable(const QString &filePath)
{
#ifdef Q_OS_WIN
    // A read-only attribute is no obstacle: the module clears it before it
    // replaces a file. A file held open without sharing its deletion can
    // be neither deleted, renamed nor replaced until it is closed.
    if (heldFiles().contains(filePath))
        return true;
    const HANDLE file = ::CreateFileW(nativePath(filePath).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    heldFiles().insert(filePath, file);
    return true;
#else
    if (setImmutable(filePath, true))
        return true;
    // Without the right to set the attribute the process is not root, so a
    // folder without write permission keeps the file in place.
    const QString folder = QFileInfo(filePath).absolutePath();
    return ::geteuid() != 0 &&
           QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::ExeOwner |
                                             QFileDevice::ReadUser | QFileDevice::ExeUser);
#endif
}

void restoreWritable(const QString &filePath)
{
#ifdef Q_OS_WIN
    const HANDLE file = heldFiles().take(filePath);
    if (file)
        ::CloseHandle(file);
#else
    setImmutable(filePath, false);
    QFile::setPermissions(QFileInfo(filePath).absolutePath(),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                              QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser);
#endif
}

bool placeUnreadableFile(const QString &filePath)
{
    if (!QDir().mkpath(QFileInfo(filePath).absolutePath()))
        return false;
#ifdef Q_OS_WIN
    const HANDLE file = ::CreateFileW(nativePath(filePath).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                      CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    heldFiles().insert(filePath, file);
    return true;
#else
    const QString nowhere = QFileInfo(filePath).absolutePath() + QStringLiteral("/no-such-file");
    return !QFileInfo::exists(nowhere) &&
           ::symlink(QFile::encodeName(nowhere).constData(), QFile::encodeName(filePath).constData()) == 0;
#endif
}

void releaseUnreadableFile(const QString &filePath)
{
#ifdef Q_OS_WIN
    const HANDLE file = heldFiles().take(filePath);
    if (file)
        ::CloseHandle(file);
#else
    Q_UNUSED(filePath)
#endif
}

bool makeHardLink(const QString &existingFile, const QString &newName)
{
#ifdef Q_OS_WIN
    return ::CreateHardLinkW(nativePath(newName).c_str(), nativePath(existingFile).c_str(), nullptr) != 0;
#else
    return ::link(QFile::encodeName(existingFile).constData(), QFile::encodeName(newName).constData()) == 0;
#endif
}

bool makeSymbolicLink(const QString &target, const QString &linkPath, QString *failure)
{
#ifdef Q_OS_WIN
    DWORD flags = SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE;
    if (QFileInfo(target).isDir())
        flags |= SYMBOLIC_LINK_FLAG_DIRECTORY;
    const std::wstring link = nativePath(linkPath);
    if (!::CreateSymbolicLinkW(link.c_str(), nativePath(target).c_str(), flags)) {
        if (failure)
            *failure = QStringLiteral("CreateSymbolicLinkW failed with error %1").arg(::GetLastError());
        return false;
    }
    // The call may answer success without having made anything: the link
    // is made only when it is there as a reparse point.
    const DWORD attributes = ::GetFileAttributesW(link.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        if (failure)
            *failure = QStringLiteral("CreateSymbolicLinkW returned success, but GetFileAttributesW on the "
                                      "link then failed with error %1: no link was made")
                           .arg(::GetLastError());
        return false;
    }
    if (!(attributes & FILE_ATTRIBUTE_REPARSE_POINT)) {
        if (failure)
            *failure = QStringLiteral("CreateSymbolicLinkW returned success, but the link has the attributes "
                                      "0x%1 without FILE_ATTRIBUTE_REPARSE_POINT")
                           .arg(attributes, 0, 16);
        return false;
    }
    return true;
#else
    if (QFile::link(target, linkPath))
        return true;
    if (failure)
        *failure = QStringLiteral("symlink() failed");
    return false;
#endif
}

bool runningUnderWine()
{
#ifdef Q_OS_WIN
    const HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
    return ntdll && ::GetProcAddress(ntdll, "wine_get_version") != nullptr;
#else
    return false;
#endif
}

bool hideArchiver()
{
    return QFile::rename(PrinterDriverPackageHelper::archiverPath(), hiddenArchiverPath());
}

bool restoreArchiver()
{
    return QFile::rename(hiddenArchiverPath(), PrinterDriverPackageHelper::archiverPath());
}

} // namespace PackageTestSupport
