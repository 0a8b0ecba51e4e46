#include "UI/SubWidget/TabBarStyle.h"

#include <QPainter>
#include <QTabBar>
#include <QVariant>

TabBarStyle::TabBarStyle(QTabBar *tabBar, QObject *parent)
    : QProxyStyle(nullptr)
    , tabBar_(tabBar)
{
    setParent(parent);
}

TabBarStyle::~TabBarStyle() = default;

void TabBarStyle::setTextBackgroundColors(const QMap<QString, QColor> &colors)
{
    textBackgroundColors_ = colors;
}

void TabBarStyle::drawItemText(QPainter *painter, const QRect &rect, int flags, const QPalette &palette,
                               bool enabled, const QString &text, QPalette::ColorRole textRole) const
{
    if (tabBar_ && painter) {
        int index = tabBar_->tabAt(rect.center());
        // A tab being dragged is drawn onto a surface of its own, where the
        // rectangle says nothing about its place in the bar; it is the
        // current tab, since pressing it made it current.
        if (tabBar_->isMovable() && painter->device() != tabBar_)
            index = tabBar_->currentIndex();

        if (index >= 0 && index < tabBar_->count()) {
            QColor fill;
            if (!textBackgroundColors_.isEmpty()) {
                fill = textBackgroundColors_.value(tabBar_->tabText(index));
            } else {
                const auto data = tabBar_->tabData(index).value<QSharedPointer<ITabData>>();
                if (data)
                    fill = data->backgroundColor();
            }
            if (fill.isValid()) {
                painter->save();
                painter->setPen(Qt::NoPen);
                painter->setBrush(QBrush(fill, Qt::SolidPattern));
                painter->drawRect(rect);
                painter->restore();
            }
        }
    }
    QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, text, textRole);
}
