#include "PackageTestSupport.h"

#include "TestAppDir.h"
#include "UI/PrinterDriverPackageHelper.h"

#include "FramelessWidget/Common/CommonFramelessMessageBox.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
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
    for (const QByteArray &line : lines) {
        if (line.startsWith("Path = "))
            entries.append(QString::fromUtf8(line.mid(7).trimmed()));
    }
    return entries;
}

namespace {

#ifdef Q_OS_WIN
std::wstring nativePath(const QString &path)
{
    return QDir::toNativeSeparators(path).toStdWString();
}

bool setReadOnly(const QString &filePath, bool readOnly)
{
    const std::wstring native = nativePath(filePath);
    const DWORD attributes = ::GetFileAttributesW(native.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return false;
    const DWORD changed =
        readOnly ? (attributes | FILE_ATTRIBUTE_READONLY) : (attributes & ~DWORD(FILE_ATTRIBUTE_READONLY));
    return ::SetFileAttributesW(native.c_str(), changed) != 0;
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
    // Windows neither deletes nor overwrites a read-only file.
    return setReadOnly(filePath, true);
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
    setReadOnly(filePath, false);
#else
    setImmutable(filePath, false);
    QFile::setPermissions(QFileInfo(filePath).absolutePath(),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                              QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser);
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

bool makeSymbolicLink(const QString &target, const QString &linkPath)
{
#ifdef Q_OS_WIN
    DWORD flags = SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE;
    if (QFileInfo(target).isDir())
        flags |= SYMBOLIC_LINK_FLAG_DIRECTORY;
    return ::CreateSymbolicLinkW(nativePath(linkPath).c_str(), nativePath(target).c_str(), flags) != 0;
#else
    return QFile::link(target, linkPath);
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
