#pragma once

#include "Driver/DriverSettings.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QVector>

class QBoxLayout;
class QComboBox;

// The property dialog's list of the driver's other ("common") enumerated
// properties: per property a label with its key and a combo box of its
// values, the box named by the property's id (objectName(enumId)).
class CommonPropertyRows : public QObject
{
    Q_OBJECT

public:
    // The rows go into `layout`, followed by a stretch.
    CommonPropertyRows(QBoxLayout *layout, QObject *parent);

    // Makes one row per property, in this order.
    void show(const QVector<EnumChoice> &properties);
    // Each property with the value its box stands on, in the order of
    // their ids.
    QVector<EnumChoice> settings() const;

    // The object name of the combo box of the property `enumId`.
    static QString objectName(int enumId);

private:
    QBoxLayout *layout_;
    // enumId -> combo box; ordered, so that writing visits the properties
    // in a fixed order.
    QMap<int, QComboBox *> boxes_;
};
