// The module object's language and dialog slots.

#include "BexRipEngineDriverUI_RipServer_p.h"
#include "Config/UIModuleConfig.h"

#include "LogCapture.h"

#include <QtTest>

namespace {

struct ManagerCallback : IRipEngineDriverUI::ICallback_DriverManagerDlg
{
    int calls = 0;
    bool onFinished(const QString &, const QStringList &) override
    {
        ++calls;
        return true;
    }
};

struct PropertyCallback : IRipEngineDriverUI::ICallback_DriverPropertyDlg
{
    int calls = 0;
    bool onFinished(const RipExtraOption &, const QSharedPointer<IRipEngineDriverUI::DriverInfo> &) override
    {
        ++calls;
        return true;
    }
};

} // namespace

class ModuleObjectTest : public QObject
{
    Q_OBJECT

private slots:
    void setLanguageSwitchesTheModuleLanguage();
    void driverManagerDialogIsRefusedUntilItIsBuilt();
    void driverPropertyDialogIsRefusedUntilItIsBuilt();
};

void ModuleObjectTest::setLanguageSwitchesTheModuleLanguage()
{
    BexRipEngineDriverUI_RipServer module;
    module.setLanguage(QLocale::English);
    QCOMPARE(UIModuleConfig::instance()->language(), QLocale::English);
    QCOMPARE(QCoreApplication::translate("QObject", "温馨提示"), QStringLiteral("Reminder"));
}

void ModuleObjectTest::driverManagerDialogIsRefusedUntilItIsBuilt()
{
    LogCapture log;
    BexRipEngineDriverUI_RipServer module;
    ManagerCallback callback;
    QVERIFY(!module.showDriverManagerDlg(nullptr, &callback));
    QCOMPARE(callback.calls, 0);
    const auto lines = log.find(QtCriticalMsg, QStringLiteral("not built yet"));
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().file, QStringLiteral("source/BexRipEngineDriverUI_RipServer_p"));
}

void ModuleObjectTest::driverPropertyDialogIsRefusedUntilItIsBuilt()
{
    LogCapture log;
    BexRipEngineDriverUI_RipServer module;
    PropertyCallback callback;
    QVERIFY(!module.showDriverPropertyDlg(nullptr, RipExtraOption{1, true}, &callback));
    QCOMPARE(callback.calls, 0);
    QCOMPARE(log.count(QtCriticalMsg, QStringLiteral("not built yet")), 1);
}

QTEST_MAIN(ModuleObjectTest)
#include "tst_moduleobject.moc"
