#pragma once

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

class QWidget;

// Answers the message boxes that appear while a test runs, the way an
// operator does: it waits for the box to become the active modal window,
// notes its text and clicks the button with the given text. A box without
// that button is closed through its title bar, so a test never hangs on it.
class MessageBoxAnswerer : public QObject
{
    Q_OBJECT

public:
    explicit MessageBoxAnswerer(const QString &buttonText);

    // The texts of the boxes answered so far.
    QStringList texts() const { return texts_; }
    // Their titles, and the texts of their buttons in order ("是|否").
    QStringList titles() const { return titles_; }
    QStringList buttonRows() const { return buttonRows_; }
    // The text of the default button of each box.
    QStringList defaultButtons() const { return defaultButtons_; }
    bool buttonMissing() const { return buttonMissing_; }
    // Whether an override cursor (the wait cursor) was set while a box was
    // open.
    bool cursorOverriddenWhileOpen() const { return cursorOverridden_; }

private:
    void poll();

    QString buttonText_;
    QStringList texts_;
    QStringList titles_;
    QStringList buttonRows_;
    QStringList defaultButtons_;
    bool buttonMissing_ = false;
    bool cursorOverridden_ = false;
    QTimer timer_;
};

namespace PackageTestSupport {

// What lies below a folder, without following links: relative path ->
// "dir", "link:<target>" or the file's bytes prefixed with "file:".
// Folders listed in skip (relative, no trailing slash) are left out.
QMap<QString, QByteArray> snapshot(const QString &folder, const QStringList &skip = {});

// Runs the staged archiver in the test's application directory and returns
// its standard output; exitCode receives its exit code.
QByteArray runArchiver(const QStringList &arguments, int *exitCode = nullptr);

// The entry paths of an archive, from the archiver's technical listing.
QStringList archiveEntries(const QString &archivePath);

// Makes a file unremovable and unchangeable, so that a copy onto it fails:
// on Windows the file is held open without sharing its deletion; elsewhere
// it gets the immutable attribute when the process may set it, else its
// folder loses its write permission. Returns false when that is not
// possible. restoreWritable() undoes it.
bool makeUnreplaceable(const QString &filePath);
void restoreWritable(const QString &filePath);

// Puts at filePath a file that the archiver cannot read while it packs, so
// that it warns (exit code 1): on Windows a new file held open without any
// sharing, elsewhere a symbolic link to nothing (7-Zip follows links when it
// packs). releaseUnreadableFile() lets go of it.
bool placeUnreadableFile(const QString &filePath);
void releaseUnreadableFile(const QString &filePath);

// A second name for a file (a hard link), and a symbolic link to a file or a
// folder, as the platform makes them: link() and symlink() on POSIX,
// CreateHardLinkW() and CreateSymbolicLinkW() on Windows (Qt's own
// QFile::link() makes a shell shortcut there, which is not a link).
// failure receives what went wrong: on Windows a link counts as made only
// when it is then found as a reparse point.
bool makeHardLink(const QString &existingFile, const QString &newName);
bool makeSymbolicLink(const QString &target, const QString &linkPath, QString *failure = nullptr);

// Whether the process is a Windows program running under Wine.
bool runningUnderWine();

// Takes the staged archiver out of the application directory, and puts it
// back, so that a test can run the module without one.
bool hideArchiver();
bool restoreArchiver();

} // namespace PackageTestSupport
