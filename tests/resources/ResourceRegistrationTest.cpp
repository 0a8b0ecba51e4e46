#include <QFile>
#include <QLibrary>
#include <QResource>
#include <QtTest>

namespace {

// Every resource the module carries.
const QStringList modulePaths = {
    QStringLiteral(":/frameless/img/titleBar/close_normal.png"),
    QStringLiteral(":/frameless/img/titleBar/close_hover.png"),
    QStringLiteral(":/frameless/img/titleBar/close_disabled.png"),
    QStringLiteral(":/frameless/img/titleBar/restore.png"),
    QStringLiteral(":/frameless/img/titleBar/menu.png"),
    QStringLiteral(":/frameless/img/titleBar/maximize.png"),
    QStringLiteral(":/frameless/img/titleBar/minimize.png"),
    QStringLiteral(":/frameless/img/background/shadow.png"),
    QStringLiteral(":/frameless/img/messageBox/warning.png"),
    QStringLiteral(":/frameless/img/messageBox/question.png"),
    QStringLiteral(":/frameless/img/messageBox/info.png"),
    QStringLiteral(":/frameless/img/messageBox/error.png"),
    QStringLiteral(":/frameless/img/messageBox/success.png"),
    QStringLiteral(":/frameless/qss/frameless_style.qss"),
    QStringLiteral(":/BexRipEngineDriverUI_RipServer/language/English.qm"),
    QStringLiteral(":/BexRipEngineDriverUI_RipServer/language/Chinese.qm"),
};

QStringList present()
{
    QStringList found;
    for (const QString &path : modulePaths) {
        if (QFile::exists(path) && QResource(path).isValid())
            found << path;
    }
    return found;
}

} // namespace

// The host's view: the module's resources exist in the process while the
// module is loaded, and only then. This executable does not link the
// module's code, so nothing but the loaded module can provide them.
class ResourceRegistrationTest : public QObject
{
    Q_OBJECT

private slots:
    void resources_existOnlyWhileTheModuleIsLoaded();
};

void ResourceRegistrationTest::resources_existOnlyWhileTheModuleIsLoaded()
{
    QCOMPARE(present(), QStringList());

    QLibrary module(QStringLiteral(BEX_MODULE_FILE));
    QVERIFY2(module.load(), qPrintable(module.errorString()));
    QCOMPARE(present(), modulePaths);

    QVERIFY2(module.unload(), qPrintable(module.errorString()));
    QCOMPARE(present(), QStringList());
}

QTEST_GUILESS_MAIN(ResourceRegistrationTest)
#include "ResourceRegistrationTest.moc"
