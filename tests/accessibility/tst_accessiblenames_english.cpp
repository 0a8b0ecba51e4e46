// The accessible names after the host has chosen English. The language is
// process-wide, so they get an executable of their own.

#include "AccessibleNamesTest.h"

#include <QtTest>

class AccessibleNamesEnglishTest : public AccessibleNamesTest
{
    Q_OBJECT

public:
    AccessibleNamesEnglishTest()
        : AccessibleNamesTest(QLocale::English,
                              {QStringLiteral("Close"), QStringLiteral("Maximize"),
                               QStringLiteral("Minimize"), QStringLiteral("Installed printer"),
                               QStringLiteral("List of printers"), QStringLiteral("Printer Name"),
                               QStringLiteral("Never ask again")})
    {}
};

QTEST_MAIN(AccessibleNamesEnglishTest)
#include "tst_accessiblenames_english.moc"
