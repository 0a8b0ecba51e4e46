#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

class QWidget;

// Moves an installed driver, with every file it depends on, between machines
// as one ".bex_driver" package: a zip archive made and unpacked by the
// external archiver that stands in the application directory ("7z.exe" on
// Windows, "7z" elsewhere).
//
// A package holds one top folder named after the driver's .prs base name,
// with "bin/" and "driver/" inside laid out like the application's "dtp/".
// Packages come from other machines: an import refuses, before anything is
// copied, every entry that could write outside "dtp/" or that is a link,
// and replaces an existing file only after the operator agreed to it.
class PrinterDriverPackageHelper
{
public:
    // The files of one driver, in packing order.
    struct Package
    {
        QString prsFilePath;
        QString pdvFilePath;
        QStringList rgbIccFilePaths;
        QStringList cmykIccFilePaths;
        QStringList outputIccFilePaths;
    };

    // parent: the calling dialog, parent of the overwrite question.
    explicit PrinterDriverPackageHelper(QWidget *parent);

    // Writes the package of the installed driver driverId, whose .prs file
    // is prsFilePath, to packageFilePath.
    bool exportPackage(const QString &packageFilePath, const QString &prsFilePath, const QString &driverId);
    // Unpacks packageFilePath into "dtp/". prsFilePaths receives the
    // destination of the package's .prs file once it has been copied; a copy
    // that fails half-way still returns true, so callers check the list.
    bool importPackage(const QString &packageFilePath, QStringList &prsFilePaths);

    // The .pdv path and the ICC profiles that any combination of the
    // driver's resolution, paper and ink names (prsFilePath stays empty);
    // none when the driver cannot be selected, has no .pdv file or refuses
    // a combination. The driver's own combination is selected again
    // afterwards.
    std::optional<Package> readDriverInfo(const QString &driverId);
    // Copies the package's files below workDir and runs the archiver on them;
    // the new package then takes the place of packageFilePath in one step.
    // False when a file cannot be copied or the package cannot be put in
    // place (an old package is then kept as it was).
    bool encode(const QString &packageFilePath, const QString &workDir, const Package &package);

    // srcFilePath with its srcRoot prefix (compared ignoring case) replaced
    // by dstRoot, all separators turned into "/"; empty when srcFilePath does
    // not lie below srcRoot.
    static QString obtainDstFilePath(const QString &srcFilePath, const QString &srcRoot,
                                     const QString &dstRoot);

    // Why a path inside a package (relative to its top folder, "/"
    // separated) may not be unpacked into "dtp/": an empty text when it may.
    // Refused are empty names and components, ".", "..", absolute paths,
    // drive letters, backslashes, control characters, characters and names
    // that Windows cannot hold, and components longer than a file system
    // allows.
    static QString entryRefusalReason(const QString &relativePath);

    // Why an archive may not be unpacked, judged from the archiver's
    // technical listing of it ("l -slt"): an entry refused by
    // entryRefusalReason, a link or special file, a name that appears twice
    // (ignoring case), an archive that is not a zip, or a listing that cannot
    // be read. An empty text when it may be unpacked. separator is the one
    // the archiver writes between folder names (archiverSeparator()); it is
    // read as "/" before the entries are judged.
    static QString listingRefusalReason(const QByteArray &listing, QChar separator = archiverSeparator());

    // Why a zip archive may not be unpacked, judged from the entry names as
    // its central directory stores them: every name must be valid UTF-8 (or
    // come with its UTF-8 form in an Info-ZIP Unicode Path field, as 7-Zip
    // for Windows writes names of the OEM code page) and pass
    // entryRefusalReason. The archiver's listing alone cannot tell:
    // it shows a line break in a name as "_", and 7-Zip for Windows shows a
    // backslash or a byte that is not valid UTF-8 as a character of its own
    // and writes the file under that name. An empty text when it may be
    // unpacked; a text too when the central directory cannot be read.
    static QString storedNamesRefusalReason(const QString &packageFilePath);

    // The separator between folder names in the archiver's listing: 7-Zip
    // writes the platform's own, "\\" on Windows and "/" elsewhere.
    static QChar archiverSeparator();

    // The archiver in the application directory.
    static QString archiverPath();

private:
    QWidget *parent_;
};
