#pragma once

#include "IRipEngineDriverUI.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

class QWidget;

// The two things a RIP host asks of the driver UI module, each with what it
// got back, so that the demo window and the headless tour show the same.

// The driver manager: what showDriverManagerDlg() returned and what its
// callback was told.
struct ManagerReport
{
    bool returned = false;
    int callbacks = 0;
    QString showName;
    QStringList spotColorSampleNameList;

    // The call succeeded and called back once.
    bool ok() const { return returned && callbacks == 1; }
    QStringList lines() const;
};

ManagerReport openDriverManager(IRipEngineDriverUI *ui, QWidget *parent);

// One job: the property step, the driver information handed back, the
// engine's driver object made of it, that object kept as bytes and restored,
// and the job's temporary .prs copy deleted at the end.
struct JobReport
{
    bool returned = false;
    int callbacks = 0;
    RipExtraOption option;
    QString prsFilePath;
    QString showName;
    quint32 dpiX = 0;
    quint32 dpiY = 0;
    QStringList spotColorSampleNameList;
    qint32 modeId = -1;
    QString driverKind;
    QByteArray serialized;
    bool restored = false;
    QByteArray restoredSerialized;
    bool copyExisted = false;
    qint32 removed = 0;
    bool copyGone = false;

    // Every step did what a host expects of it.
    bool ok() const;
    QStringList lines() const;
};

JobReport ripJob(IRipEngineDriverUI *ui, QWidget *parent, const RipExtraOption &option);
