#include "UI/SubWidget/InkOrderWidget.h"

#include "Common/Logging.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMap>
#include <QTabBar>

namespace {

// The colour whose red, green and blue are the opposite of the given one's,
// with the same alpha: legible on any fill. Invalid stays invalid.
QColor complementOf(const QColor &color)
{
    if (!color.isValid())
        return QColor();
    return QColor(255 - color.red(), 255 - color.green(), 255 - color.blue(), color.alpha());
}

void registerMetaTypes()
{
    // The signal's argument is declared as "QVector<InkInfo>", the name under
    // which queued connections and signal spies look it up.
    static const int id = qRegisterMetaType<QVector<InkOrderWidget::InkInfo>>("QVector<InkInfo>");
    Q_UNUSED(id)
}

// Hands the data of every tab of tabBar, with its index, to change, then
// repaints the bar.
template <typename Change>
void changeEveryTab(QTabBar *tabBar, Change change)
{
    for (int i = 0; i < tabBar->count(); ++i) {
        if (const auto data = getTabData(tabBar, i))
            change(i, *data);
    }
    tabBar->update();
}

} // namespace

TabData::TabData(int inkId, bool isOn, const QColor &color, const QColor &offColor)
    : inkId(inkId)
    , isOn(isOn)
    , color(color)
    , offColor(offColor)
{}

QSharedPointer<TabData> getTabData(QTabBar *tabBar, int index)
{
    if (tabBar && (index < 0 || index >= tabBar->count()))
        return {};
    if (tabBar) {
        const auto data = tabBar->tabData(index).value<QSharedPointer<TabBarStyle::ITabData>>();
        if (data && data->type() == TabData::Type) {
            auto tabData = data.dynamicCast<TabData>();
            if (tabData)
                return tabData;
        }
    }
    BEX_CRITICAL(lcWidget) << "check your code!";
    return {};
}

InkOrderWidget::InkOrderWidget(QWidget *parent)
    : QWidget(parent)
    , tabBar_(new QTabBar(this))
{
    registerMetaTypes();

    tabBar_->setStyle(new TabBarStyle(tabBar_, this));
    tabBar_->setDrawBase(false);
    tabBar_->setExpanding(false);
    tabBar_->setMovable(true);

    BEX_DEBUG(lcWidget) << "tabBar sizePolicy:" << tabBar_->sizePolicy();
    tabBar_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);

    auto *layout = new QHBoxLayout(this);
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tabBar_, 1);

    connect(
        tabBar_, &QTabBar::tabMoved, tabBar_, [this](int, int) { refreshAndEmit(); }, Qt::DirectConnection);
    connect(
        tabBar_, &QTabBar::tabBarDoubleClicked, tabBar_, [this](int index) { switchInk(index); },
        Qt::DirectConnection);
    // The keyboard does what the mouse does: arrows choose an ink, Space
    // switches it on or off, Ctrl with an arrow moves it in the order.
    tabBar_->setFocusPolicy(Qt::StrongFocus);
    tabBar_->setAccessibleName(tr("墨水顺序"));
    tabBar_->installEventFilter(this);
}

bool InkOrderWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != tabBar_ || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    const int current = tabBar_->currentIndex();
    if (current < 0)
        return false;
    if (key->key() == Qt::Key_Space && key->modifiers() == Qt::NoModifier) {
        switchInk(current);
        return true;
    }
    if (key->modifiers() == Qt::ControlModifier &&
        (key->key() == Qt::Key_Left || key->key() == Qt::Key_Right)) {
        const int target = current + (key->key() == Qt::Key_Left ? -1 : 1);
        if (target >= 0 && target < tabBar_->count()) {
            // tabMoved refreshes the order and tells the listeners.
            tabBar_->moveTab(current, target);
            tabBar_->setCurrentIndex(target);
        }
        return true;
    }
    return false;
}

InkOrderWidget::~InkOrderWidget() = default;

void InkOrderWidget::setInkInfos(const QVector<InkInfo> &inkInfos)
{
    if (tabBar_->count() > 0) {
        const QSignalBlocker blocker(tabBar_);
        for (int i = tabBar_->count() - 1; i >= 0; --i)
            tabBar_->removeTab(i);
    }
    inkInfos_.clear();

    QMap<int, InkInfo> byOrder;
    for (const InkInfo &info : inkInfos)
        byOrder.insert(info.order, info);
    if (byOrder.size() < inkInfos.size()) {
        // Two inks claim the same place in the print order.
        BEX_CRITICAL(lcWidget) << "check your code!";
        return;
    }

    for (const InkInfo &info : qAsConst(byOrder)) {
        inkInfos_.append(info);
        const int index = tabBar_->addTab(info.inkName);
        const QSharedPointer<TabBarStyle::ITabData> data(
            new TabData(info.inkId, info.isOn, info.color, offBackgroundColor_));
        tabBar_->setTabData(index, QVariant::fromValue(data));
        tabBar_->setTabTextColor(index, textColor(info.isOn, info.color));
    }
    // A tab bar that is not shown yet does not tell its layout that its size
    // changed with the new tabs; without this the widget keeps the height
    // of an empty bar once its window opens.
    tabBar_->updateGeometry();
}

void InkOrderWidget::setOffBackgroundColor(const QColor &color)
{
    if (color == offBackgroundColor_)
        return;
    offBackgroundColor_ = color;
    changeEveryTab(tabBar_, [&color](int, TabData &data) { data.offColor = color; });
}

void InkOrderWidget::setOffTextColor(const QColor &color)
{
    if (color == offTextColor_)
        return;
    offTextColor_ = color;
    changeEveryTab(tabBar_, [this](int index, const TabData &data) {
        tabBar_->setTabTextColor(index, textColor(data.isOn, data.color));
    });
}

void InkOrderWidget::refreshAndEmit()
{
    inkInfos_.clear();
    for (int i = 0; i < tabBar_->count(); ++i) {
        const auto data = getTabData(tabBar_, i);
        if (!data)
            continue;
        InkInfo info;
        info.inkId = data->inkId;
        info.order = i;
        info.isOn = data->isOn;
        info.inkName = tabBar_->tabText(i);
        info.color = data->color;
        inkInfos_.append(info);
    }
    emit inkOrderChanged(inkInfos_);
}

void InkOrderWidget::switchInk(int index)
{
    if (!inkSwitchEnabled_)
        return;
    // A double-click beside the tabs reports index -1.
    const auto data = getTabData(tabBar_, index);
    if (!data)
        return;
    data->isOn = !data->isOn;
    tabBar_->setTabTextColor(index, textColor(data->isOn, data->color));
    tabBar_->update();
    refreshAndEmit();
}

QColor InkOrderWidget::textColor(bool isOn, const QColor &inkColor) const
{
    return isOn ? complementOf(inkColor) : offTextColor_;
}
