#pragma once

#include "FramelessCore/FramelessHelper/FramelessHelper.h"
#include "FramelessCore/FramelessLogging.h"
#include "FramelessWidget/Common/CommonFramelessTitleBar.h"

#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QWidget>

#include "FramelessCore/FramelessHelper/QtFramelessHelper.h"
#ifdef Q_OS_WIN
#include "FramelessCore/FramelessHelper/WinFramelessHelper.h"

#include <QGuiApplication>
#endif

// The frameless back end for a new window. On Windows the native one answers
// the window's own messages, which exist only under the native platform
// plugin; under another one (offscreen, minimal) Qt's events carry the
// frameless behaviour there too.
inline FramelessHelper *createPlatformFramelessHelper(QWidget *window)
{
#ifdef Q_OS_WIN
    if (QGuiApplication::platformName() == QLatin1String("windows"))
        return new WinFramelessHelper(window);
#endif
    return new QtFramelessHelper(window);
}

// A frameless top-level window of the given widget class: it owns the
// platform's frameless helper and the custom title bar, and routes the
// title bar's buttons to its own show and close operations.
template <typename Base>
class FramelessWidget : public Base
{
public:
    explicit FramelessWidget(QWidget *parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags())
        : Base(parent, flags)
        , helper_(createPlatformFramelessHelper(this))
    {}

    FramelessHelper *framelessHelper() const { return helper_; }
    CommonFramelessTitleBar *framelessTitleBar() const { return titleBar_; }

    // Puts a new title bar into layout and makes it the window's drag area.
    void setupFramelessTitleBar(QLayout *layout)
    {
        if (!layout)
            return;
        titleBar_ = new CommonFramelessTitleBar(this);
        if (QLayout *windowLayout = this->layout())
            windowLayout->setContentsMargins(0, 0, 0, 0);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(titleBar_);

        helper_->setTitleBar(titleBar_->realTitleBar());
        // The title text lies inside the bar: dragging on it moves the window.
        helper_->addDummyTitleBar(titleBar_->labelText());
        applyWindowFlags(this->windowFlags());

        QObject::connect(titleBar_, &CommonFramelessTitleBar::windowMinimized, this,
                         &FramelessWidget::showMinimized);
        QObject::connect(titleBar_, &CommonFramelessTitleBar::windowMaximized, this,
                         &FramelessWidget::showMaximized);
        QObject::connect(titleBar_, &CommonFramelessTitleBar::windowNormal, this,
                         &FramelessWidget::showNormal);
        QObject::connect(titleBar_, &CommonFramelessTitleBar::windowClosed, this, &QWidget::close);
    }

    bool isResizable() const { return helper_->isResizable(); }
    void setResizable(bool resizable)
    {
        helper_->setResizable(resizable);
        updateTitleBarButtons(this->windowFlags());
    }

    void setWindowFlags(Qt::WindowFlags flags) { applyWindowFlags(flags); }
    void setWindowFlag(Qt::WindowType flag, bool on = true)
    {
        QWidget::setWindowFlag(flag, on);
        applyWindowFlags(this->windowFlags());
    }

    void showMinimized()
    {
        BEX_DEBUG(lcFrameless) << "showMinimized";
        showHelperTitleBar();
        QWidget::showMinimized();
    }

    void showMaximized()
    {
        BEX_DEBUG(lcFrameless) << "showMaximized";
        showHelperTitleBar();
        if (!helper_->isResizable())
            return;
        QWidget::showMaximized();
    }

    void showNormal()
    {
        BEX_DEBUG(lcFrameless) << "showNormal";
        showHelperTitleBar();
        QWidget::showNormal();
    }

protected:
    bool nativeEvent(const QByteArray &eventType, void *message, long *result) override
    {
        if (helper_) {
            bool handled = false;
            const bool answer = helper_->handleNativeEvent(eventType, message, result, &handled);
            if (handled)
                return answer;
        }
        return QWidget::nativeEvent(eventType, message, result);
    }

private:
    void showHelperTitleBar()
    {
        if (QWidget *bar = helper_->titleBar())
            bar->setVisible(true);
    }

    void applyWindowFlags(Qt::WindowFlags flags)
    {
        helper_->setWindowFlags(flags);
        updateTitleBarButtons(flags);
    }

    void updateTitleBarButtons(Qt::WindowFlags flags)
    {
        if (!titleBar_)
            return;
        titleBar_->minimizeButton()->setVisible(flags.testFlag(Qt::WindowMinimizeButtonHint));
        titleBar_->maximizeButton()->setVisible(helper_->isResizable() &&
                                                flags.testFlag(Qt::WindowMaximizeButtonHint));
        titleBar_->closeButton()->setVisible(flags.testFlag(Qt::WindowCloseButtonHint));
    }

    FramelessHelper *helper_ = nullptr;
    CommonFramelessTitleBar *titleBar_ = nullptr;
};
