#pragma once

#include <QString>
#include <QStringList>

class QListWidget;
struct QMetaObject;
class QWidget;

// What the dialog tests share: a fresh set of sample drivers in the test's
// application directory with nothing installed, and a user's hand on lists.
namespace DialogTestSupport {

// Uninstalls everything: the manager forgets its default driver, "dtp/"
// gets fresh sample files, the library a fresh handler with an empty list
// of installed drivers, and the settings file is removed. False when the
// samples could not be staged.
bool startWithNothingInstalled();

// Copies the sample driver's .prs file into "dtp/bin/", where the install
// dialog offers it; returns the copy's absolute path.
QString offerSample(const QString &baseName);

// The folder of the files offered for installation ("dtp/bin/").
QString offerFolder();

// Installs a sample driver through the manager; returns its id, empty on
// failure.
QString installSample(const QString &baseName);

// Clicks the row of the list as a user does (the list must be shown).
bool clickRow(QListWidget *list, int row);

QStringList rowTexts(const QListWidget *list);

// The signatures of the methods a class declares itself, in meta-object order.
QStringList ownMethods(const QMetaObject &meta);

QStringList rowData(const QListWidget *list, int role);

} // namespace DialogTestSupport
