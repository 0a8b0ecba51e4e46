#pragma once

#include "Icc/IccProfileInfo.h"

class IccProfileCache;

#include <QObject>
#include <QString>

class QAction;
class QLineEdit;

// One profile row of the property dialog's ICC section: the read-only line
// edit that shows the profile's file name, its tool tip (the path, then what
// the profile is) and a warning mark, shown in the field, when the profile
// that the driver names is missing from its folder or cannot be used in the
// row. filePath() is the name handed back to the print-parameter handler.
class IccProfileRow : public QObject
{
    Q_OBJECT

public:
    // `profiles` checks the stored profiles; it outlives the row.
    IccProfileRow(QLineEdit *lineEdit, IccProfileSlot slot, IccProfileCache *profiles, QObject *parent);

    // A profile the driver names: `storedPath` as the handler gives it,
    // looked for by its file name in `folder` (never outside it).
    void showStored(const QString &storedPath, const QString &folder);
    // A profile the operator chose, now at `path`; an empty path (the copy
    // failed) clears the field.
    void showChosen(const QString &path, const IccProfileInfo &profile);

    IccProfileSlot slot() const { return slot_; }
    QLineEdit *lineEdit() const { return lineEdit_; }
    // The profile's name as the handler keeps it: the file name shown in
    // the field; empty when there is none or the copy failed.
    QString filePath() const { return filePath_; }
    // Why the row is marked; empty when it is not.
    QString warning() const { return warning_; }
    // The mark in the field (shown only while there is a warning).
    QAction *warningMark() const { return mark_; }

    // The last component of a path, with either separator.
    static QString fileNamePart(const QString &path);

private:
    void show(const QString &name, const QString &toolTip);
    void setWarning(const QString &why);

    QLineEdit *lineEdit_;
    IccProfileSlot slot_;
    IccProfileCache *profiles_;
    QAction *mark_;
    QString warning_;
    QString filePath_;
};
