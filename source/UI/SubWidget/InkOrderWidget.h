#pragma once

#include "UI/SubWidget/TabBarStyle.h"

#include <QColor>
#include <QMetaType>
#include <QSharedPointer>
#include <QString>
#include <QVector>
#include <QWidget>

class QTabBar;

// The inks of a printer driver as a row of tabs in print order, each tab
// filled with its ink's colour. Dragging a tab changes the order,
// double-clicking it switches the ink on or off; after each change the whole
// list is emitted in the new order.
class InkOrderWidget : public QWidget
{
    Q_OBJECT

public:
    struct InkInfo
    {
        int inkId = -1;
        // Position in the print order: input is sorted by it, emitted lists
        // carry the tab position (0 = leftmost).
        int order = -1;
        bool isOn = true;
        QString inkName;
        QColor color;
    };

    explicit InkOrderWidget(QWidget *parent = nullptr);
    ~InkOrderWidget() override;

    // Rebuilds the tabs sorted by order; emits nothing. Two inks with the
    // same order leave the widget empty.
    void setInkInfos(const QVector<InkInfo> &inkInfos);
    // The last accepted input in ascending order, or the last emitted list.
    QVector<InkInfo> inkInfos() const { return inkInfos_; }

    void setOffBackgroundColor(const QColor &color);
    QColor offBackgroundColor() const { return offBackgroundColor_; }
    void setOffTextColor(const QColor &color);
    QColor offTextColor() const { return offTextColor_; }
    void setInkSwitchEnabled(bool enabled) { inkSwitchEnabled_ = enabled; }
    bool isInkSwitchEnabled() const { return inkSwitchEnabled_; }

signals:
    void inkOrderChanged(QVector<InkInfo> inkInfos);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void refreshAndEmit();
    void switchInk(int index);
    QColor textColor(bool isOn, const QColor &inkColor) const;

    QTabBar *tabBar_ = nullptr;
    QColor offBackgroundColor_{Qt::gray};
    QColor offTextColor_{Qt::lightGray};
    QVector<InkInfo> inkInfos_;
    bool inkSwitchEnabled_ = true;
};

Q_DECLARE_METATYPE(InkOrderWidget::InkInfo)

// What each tab of the ink order widget keeps in its data.
class TabData : public TabBarStyle::ITabData
{
public:
    static constexpr int Type = 1;

    TabData(int inkId, bool isOn, const QColor &color, const QColor &offColor);

    int type() const override { return Type; }
    // The ink colour while the ink is on, the off colour otherwise.
    QColor backgroundColor() const override { return isOn ? color : offColor; }

    int inkId = -1;
    bool isOn = true;
    QColor color;
    QColor offColor;
};

// The TabData of a tab of the ink order widget; null for an index out of
// range, and null with a critical log line for data of another kind.
QSharedPointer<TabData> getTabData(QTabBar *tabBar, int index);
