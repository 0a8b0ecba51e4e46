#pragma once

#include <QLocale>
#include <QObject>
#include <QString>

// Every management window, the property dialog and the message box, walked
// as a screen reader walks them: each control the operator can act on has a
// name to speak, in the language the host chose. The language is
// process-wide, so each language runs in an executable of its own, which
// derives from this class and says which names it expects.
class AccessibleNamesTest : public QObject
{
    Q_OBJECT

public:
    // A few names as the operator hears them in the tested language.
    struct ExpectedNames
    {
        QString close;
        QString maximize;
        QString minimize;
        QString installedList;
        QString offeredList;
        QString newName;
        QString neverAskAgain;
    };

    AccessibleNamesTest(QLocale::Language language, const ExpectedNames &expected);

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void managerDialog_everyControlHasAName();
    void managerDialog_titleBarButtonsAndListAreNamed();
    void installDialog_everyControlHasAName();
    void installDialog_listIsNamedByItsLabel();
    void renameDialog_everyControlHasAName();
    void renameDialog_nameFieldIsNamedByItsLabel();
    void propertyDialog_everyControlHasAName();
    void messageBox_everyControlHasAName();
    void maximizedWindow_restoreButtonIsNamedForWhatItDoes();

private:
    QLocale::Language language_;
    ExpectedNames expected_;
};
