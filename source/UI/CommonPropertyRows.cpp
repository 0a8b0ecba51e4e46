#include "UI/CommonPropertyRows.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QListView>

namespace {

// The combo box of a common property. Its popup is a plain list view (so
// that style sheets reach its items), made when the list is first opened: a
// driver with dozens of properties opens without building dozens of popups.
class CommonPropertyComboBox : public QComboBox
{
public:
    using QComboBox::QComboBox;

    void showPopup() override
    {
        if (!listViewMade_) {
            listViewMade_ = true;
            const QString name = view()->accessibleName();
            setView(new QListView(this));
            view()->setAccessibleName(name);
        }
        QComboBox::showPopup();
    }

private:
    bool listViewMade_ = false;
};

} // namespace

CommonPropertyRows::CommonPropertyRows(QBoxLayout *layout, QObject *parent)
    : QObject(parent)
    , layout_(layout)
{}

void CommonPropertyRows::show(const QVector<EnumChoice> &properties)
{
    auto *grid = new QGridLayout;
    grid->setContentsMargins(0, 0, 0, 0);
    int row = 0;
    for (const EnumChoice &property : properties) {
        auto *label = new QLabel(property.key);
        label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        auto *combo = new CommonPropertyComboBox;
        combo->setObjectName(objectName(property.enumId));
        combo->setFocusPolicy(Qt::StrongFocus);
        label->setBuddy(combo);
        for (int i = 0; i < property.values.size(); ++i)
            combo->addItem(property.values.at(i), i);
        if (!property.values.isEmpty())
            combo->setCurrentIndex(property.index);
        grid->addWidget(label, row, 0);
        grid->addWidget(combo, row, 1);
        boxes_.insert(property.enumId, combo);
        ++row;
    }
    layout_->addLayout(grid);
    layout_->addStretch();
}

QVector<EnumChoice> CommonPropertyRows::settings() const
{
    QVector<EnumChoice> properties;
    for (auto it = boxes_.cbegin(); it != boxes_.cend(); ++it)
        properties << EnumChoice{it.key(), QString(), it.value()->currentIndex(), QStringList()};
    return properties;
}

QString CommonPropertyRows::objectName(int enumId)
{
    return QStringLiteral("comboBox_common_%1").arg(enumId);
}
