// The accessible names in Chinese, the module's default language.

#include "AccessibleNamesTest.h"

#include <QtTest>

class AccessibleNamesChineseTest : public AccessibleNamesTest
{
    Q_OBJECT

public:
    AccessibleNamesChineseTest()
        : AccessibleNamesTest(QLocale::Chinese,
                              {QStringLiteral("关闭"), QStringLiteral("最大化"), QStringLiteral("最小化"),
                               QStringLiteral("已安装的打印机"), QStringLiteral("打印机列表"),
                               QStringLiteral("打印机名"), QStringLiteral("下次不再询问")})
    {}
};

QTEST_MAIN(AccessibleNamesChineseTest)
#include "tst_accessiblenames.moc"
