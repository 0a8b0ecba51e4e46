// The module object's language slot.

#include "BexRipEngineDriverUI_RipServer_p.h"
#include "Config/UIModuleConfig.h"

#include <QtTest>

class ModuleObjectTest : public QObject
{
    Q_OBJECT

private slots:
    void setLanguage_switchesTheModuleLanguage();
};

void ModuleObjectTest::setLanguage_switchesTheModuleLanguage()
{
    BexRipEngineDriverUI_RipServer module;
    module.setLanguage(QLocale::English);
    QCOMPARE(UIModuleConfig::instance()->language(), QLocale::English);
    QCOMPARE(QCoreApplication::translate("QObject", "温馨提示"), QStringLiteral("Reminder"));
}

QTEST_MAIN(ModuleObjectTest)
#include "tst_moduleobject.moc"
