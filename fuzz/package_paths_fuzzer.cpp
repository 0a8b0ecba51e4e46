// libFuzzer target for the path rules of driver package imports.
//
// The first byte chooses what the rest is:
//   0: a path inside a package. If entryRefusalReason() accepts it, mapping
//      it from a package's top folder into "dtp/" must succeed and land
//      below "dtp/" even after "." and ".." are resolved.
//   1: three texts separated by NUL bytes, handed to obtainDstFilePath() as
//      source, source root and destination root. A result must begin with
//      the destination root, stay below it once resolved, and keep the
//      source's tail.
//   2: an archiver listing ("7z l -slt" output). An accepted listing must
//      only hold entries that entryRefusalReason() accepts.
// Any violation aborts.

#include "UI/PrinterDriverPackageHelper.h"

#include <QByteArray>
#include <QDir>
#include <QList>
#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void quietMessages(QtMsgType, const QMessageLogContext &, const QString &) {}

const QString kTopFolder = QStringLiteral("/app/cache/import/1_0_0/H/");
const QString kDtpDir = QStringLiteral("/app/dtp/");

bool staysBelow(const QString &path, const QString &root)
{
    return QDir::cleanPath(path).startsWith(QDir::cleanPath(root) + QLatin1Char('/'));
}

void checkEntryPath(const QByteArray &bytes)
{
    const QString path = QString::fromUtf8(bytes);
    if (!PrinterDriverPackageHelper::entryRefusalReason(path).isEmpty())
        return;
    const QString mapped =
        PrinterDriverPackageHelper::obtainDstFilePath(kTopFolder + path, kTopFolder, kDtpDir);
    if (mapped.isEmpty() || !staysBelow(mapped, kDtpDir))
        std::abort();
}

void checkMapping(const QByteArray &bytes)
{
    const QList<QByteArray> parts = bytes.split('\0');
    if (parts.size() != 3)
        return;
    const QString source = QString::fromUtf8(parts.at(0));
    const QString sourceRoot = QString::fromUtf8(parts.at(1));
    const QString destinationRoot = QString::fromUtf8(parts.at(2));
    const QString mapped = PrinterDriverPackageHelper::obtainDstFilePath(source, sourceRoot, destinationRoot);
    if (mapped.isEmpty())
        return;
    QString root = destinationRoot;
    root.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (!root.endsWith(QLatin1Char('/')))
        root.append(QLatin1Char('/'));
    if (!mapped.startsWith(root) || mapped.size() <= root.size())
        std::abort();
    // Only a destination root that is itself free of "." and ".." can be
    // compared once resolved.
    if (QDir::cleanPath(root) + QLatin1Char('/') == root && root.startsWith(QLatin1Char('/')) &&
        !staysBelow(mapped, root))
        std::abort();
    QString tail = source;
    tail.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (!tail.endsWith(mapped.mid(root.size())))
        std::abort();
}

void checkListing(const QByteArray &bytes)
{
    if (!PrinterDriverPackageHelper::listingRefusalReason(bytes).isEmpty())
        return;
    // Entries follow the first line that is exactly "----------"; the block
    // above it describes the archive itself.
    bool inEntries = false;
    const QList<QByteArray> lines = bytes.split('\n');
    for (QByteArray line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
        if (!inEntries) {
            inEntries = line == "----------";
            continue;
        }
        if (!line.startsWith("Path = "))
            continue;
        if (!PrinterDriverPackageHelper::entryRefusalReason(QString::fromUtf8(line.mid(7))).isEmpty())
            std::abort();
    }
    if (!inEntries)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    qInstallMessageHandler(quietMessages);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray input(reinterpret_cast<const char *>(data) + 1, static_cast<int>(size - 1));
    switch (data[0] % 3) {
    case 0:
        checkEntryPath(input);
        break;
    case 1:
        checkMapping(input);
        break;
    default:
        checkListing(input);
        break;
    }
    return 0;
}
