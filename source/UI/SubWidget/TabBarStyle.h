#pragma once

#include <QColor>
#include <QMap>
#include <QMetaType>
#include <QPointer>
#include <QProxyStyle>
#include <QSharedPointer>
#include <QString>

class QTabBar;

// A proxy of the application style for one tab bar: it fills the text area of
// each tab with a colour before the text is drawn on it. The colour comes from
// a text-to-colour map when one is set, otherwise from the ITabData kept in
// the tab's data.
class TabBarStyle : public QProxyStyle
{
    Q_OBJECT

public:
    // What a tab carries in its data (as QSharedPointer<ITabData>) to be
    // painted by this style.
    class ITabData
    {
    public:
        virtual ~ITabData() = default;
        // Names the concrete class behind the interface.
        virtual int type() const = 0;
        // Fill of the tab's text area; an invalid colour means no fill.
        virtual QColor backgroundColor() const = 0;
    };

    explicit TabBarStyle(QTabBar *tabBar, QObject *parent = nullptr);
    ~TabBarStyle() override;

    // Fills by tab text instead of by tab data while the map is not empty;
    // a tab whose text is not in it gets no fill.
    void setTextBackgroundColors(const QMap<QString, QColor> &colors);
    QMap<QString, QColor> textBackgroundColors() const { return textBackgroundColors_; }

    void drawItemText(QPainter *painter, const QRect &rect, int flags, const QPalette &palette, bool enabled,
                      const QString &text, QPalette::ColorRole textRole = QPalette::NoRole) const override;

private:
    QPointer<QTabBar> tabBar_;
    QMap<QString, QColor> textBackgroundColors_;
};

Q_DECLARE_METATYPE(QSharedPointer<TabBarStyle::ITabData>)
