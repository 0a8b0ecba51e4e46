#pragma once

#include "UI/SubWidget/InkOrderWidget.h"

#include "PixelCount.h"

#include <QColor>
#include <QEvent>
#include <QObject>
#include <QString>
#include <QVector>

namespace InkTestSupport {

inline InkOrderWidget::InkInfo ink(int inkId, int order, bool isOn, const QString &name, const QColor &color)
{
    InkOrderWidget::InkInfo info;
    info.inkId = inkId;
    info.order = order;
    info.isOn = isOn;
    info.inkName = name;
    info.color = color;
    return info;
}

using PixelCount::countPixels;
using PixelCount::countPixelsNear;

// Counts the paint events a widget receives.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QObject *watched)
        : QObject(watched)
    {
        watched->installEventFilter(this);
    }
    int count = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++count;
        return false;
    }
};

} // namespace InkTestSupport
