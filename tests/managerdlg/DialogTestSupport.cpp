#include "DialogTestSupport.h"

#include "SampleDriverFiles.h"
#include "TestAppDir.h"

#include "Config/PrinterDriverConfig.h"
#include "UI/PrinterDriverManager.h"

#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QMetaMethod>
#include <QtTest>

namespace DialogTestSupport {

bool startWithNothingInstalled()
{
    PrinterDriverManager *manager = PrinterDriverManager::instance();
    // The manager forgets a driver, and its default, only when the driver
    // is deleted through it; ids start again with a fresh list, so a stale
    // entry would stand for a new driver.
    for (const auto &driver : manager->obtainInstalledDrivers())
        manager->deleteInstalledDriver(driver->id);
    const QString staleDefault = manager->defaultDriverId();
    if (!staleDefault.isEmpty())
        manager->deleteInstalledDriver(staleDefault);
    manager->unload();
    if (!SampleDriverFiles::restage())
        return false;
    TestAppDir::remove(QStringLiteral("PrinterDriverConfig.ini"));
    PrinterDriverConfig::instance()->readConfig();
    if (!manager->load())
        return false;
    return manager->obtainInstalledDrivers().isEmpty() && manager->defaultDriverId().isEmpty();
}

QString offerFolder()
{
    return PrinterDriverConfig::instance()->dtpBinDir();
}

QString offerSample(const QString &baseName)
{
    const QString target = offerFolder() + baseName + QStringLiteral(".prs");
    QDir().mkpath(offerFolder());
    QFile::remove(target);
    return QFile::copy(SampleDriverFiles::prsPath(baseName), target) ? target : QString();
}

QString installSample(const QString &baseName)
{
    const auto driver = PrinterDriverManager::instance()->installDriver(SampleDriverFiles::prsPath(baseName));
    return driver ? driver->id : QString();
}

bool clickRow(QListWidget *list, int row)
{
    QListWidgetItem *item = list->item(row);
    if (!item || !list->isVisible())
        return false;
    list->scrollToItem(item);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, list->visualItemRect(item).center());
    return list->currentItem() == item;
}

QStringList ownMethods(const QMetaObject &meta)
{
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods << QString::fromLatin1(meta.method(i).methodSignature());
    return methods;
}

QStringList rowTexts(const QListWidget *list)
{
    QStringList texts;
    for (int row = 0; row < list->count(); ++row)
        texts << list->item(row)->text();
    return texts;
}

QStringList rowData(const QListWidget *list, int role)
{
    QStringList values;
    for (int row = 0; row < list->count(); ++row)
        values << list->item(row)->data(role).toString();
    return values;
}

} // namespace DialogTestSupport
