#include "UI/IccProfileRow.h"

#include "Common/Logging.h"
#include "Icc/IccProfileCache.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QLineEdit>

#include <algorithm>

namespace {
const QString kWarningIcon = QStringLiteral(":/frameless/img/messageBox/warning.png");
}

IccProfileRow::IccProfileRow(QLineEdit *lineEdit, IccProfileSlot slot, IccProfileCache *profiles,
                             QObject *parent)
    : QObject(parent)
    , lineEdit_(lineEdit)
    , slot_(slot)
    , profiles_(profiles)
    , mark_(new QAction(QIcon(kWarningIcon), tr("配置文件有问题"), this))
{}

QString IccProfileRow::fileNamePart(const QString &path)
{
    const int slash = std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
    return path.mid(slash + 1);
}

void IccProfileRow::showStored(const QString &storedPath, const QString &folder)
{
    const QString name = fileNamePart(storedPath);
    if (name.isEmpty()) {
        show(name, storedPath);
        setWarning(QString());
        return;
    }
    const QString path = QDir(folder).filePath(name);
    if (!QFileInfo(path).isFile()) {
        show(name, storedPath);
        setWarning(tr("配置文件文件夹里没有这个文件：\n%1").arg(QDir::toNativeSeparators(path)));
        return;
    }
    const IccProfileInfo profile = profiles_->check(path);
    show(name, profile.isValid() ? storedPath + QLatin1Char('\n') + profile.summary() : storedPath);
    setWarning(profile.refusalFor(slot_));
}

void IccProfileRow::showChosen(const QString &path, const IccProfileInfo &profile)
{
    show(QFileInfo(path).fileName(), path.isEmpty() ? path : path + QLatin1Char('\n') + profile.summary());
    setWarning(QString());
}

void IccProfileRow::show(const QString &name, const QString &toolTip)
{
    lineEdit_->setText(name);
    filePath_ = name;
    lineEdit_->setToolTip(toolTip);
}

void IccProfileRow::setWarning(const QString &why)
{
    if (why == warning_)
        return;
    warning_ = why;
    mark_->setToolTip(why);
    lineEdit_->setAccessibleDescription(why);
    if (why.isEmpty()) {
        lineEdit_->removeAction(mark_);
        return;
    }
    BEX_WARNING(lcDialog) << "icc profile marked:" << lineEdit_->objectName() << why;
    lineEdit_->addAction(mark_, QLineEdit::LeadingPosition);
}
