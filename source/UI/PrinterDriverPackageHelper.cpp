#include "UI/PrinterDriverPackageHelper.h"

#include <QCoreApplication>

PrinterDriverPackageHelper::PrinterDriverPackageHelper(QWidget *parent)
    : parent_(parent)
{}

bool PrinterDriverPackageHelper::exportPackage(const QString &, const QString &, const QString &)
{
    return false;
}

bool PrinterDriverPackageHelper::importPackage(const QString &, QStringList &)
{
    return false;
}

bool PrinterDriverPackageHelper::readDriverInfo(const QString &, Package &)
{
    return false;
}

bool PrinterDriverPackageHelper::encode(const QString &, const QString &, const Package &)
{
    return false;
}

QString PrinterDriverPackageHelper::obtainDstFilePath(const QString &, const QString &, const QString &)
{
    return QString();
}

QString PrinterDriverPackageHelper::entryRefusalReason(const QString &)
{
    return QString();
}

QString PrinterDriverPackageHelper::archiverPath()
{
#ifdef Q_OS_WIN
    return QCoreApplication::applicationDirPath() + QStringLiteral("/7z.exe");
#else
    return QCoreApplication::applicationDirPath() + QStringLiteral("/7z");
#endif
}
