#pragma once

#include <QPoint>
#include <QSize>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QPushButton;
class QSpacerItem;
class CommonFramelessTitleBar;

// Reports clicks on the title bar's icon through the title bar.
class LabelIconEventFilter : public QObject
{
    Q_OBJECT

public:
    LabelIconEventFilter(CommonFramelessTitleBar *titleBar, QLabel *labelIcon);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    CommonFramelessTitleBar *titleBar_ = nullptr;
    QLabel *labelIcon_ = nullptr;
};

// The custom title bar of a frameless window: icon, title and the minimize,
// maximize/restore and close buttons. It follows its window's title, icon
// and state, and reports the buttons through signals. Its look comes from
// the style sheet, by object name.
class CommonFramelessTitleBar : public QWidget
{
    Q_OBJECT

public:
    explicit CommonFramelessTitleBar(QWidget *parent);
    ~CommonFramelessTitleBar() override;

    // The top-level window the title bar follows; null when there is none.
    QWidget *followedWindow() const { return window_; }
    // The bar itself ("framelessTitleBar"), the drag area of the window.
    QWidget *realTitleBar() const { return realTitleBar_; }
    QLabel *labelIcon() const { return labelIcon_; }
    QLabel *labelText() const { return labelText_; }
    QPushButton *minimizeButton() const { return btnMin_; }
    QPushButton *maximizeButton() const { return btnRestore_; }
    QPushButton *closeButton() const { return btnClose_; }

    // Extra widgets: beside the icon, after the title, before the buttons.
    QHBoxLayout *iconExtraLayout() const { return iconExtraLayout_; }
    QHBoxLayout *textExtraLayout() const { return textExtraLayout_; }
    QHBoxLayout *buttonExtraLayout() const { return buttonExtraLayout_; }

    // An optional widget shown below the bar.
    QWidget *menuBar() const { return menuBar_; }
    void setMenuBar(QWidget *menuBar);
    // While set (the default), the title bar keeps its height when a menu
    // bar is shown; cleared, the first show makes room for the menu bar.
    bool keepsHeight() const { return keepHeight_; }
    void setKeepsHeight(bool keep) { keepHeight_ = keep; }

    QSize iconSize() const { return iconSize_; }

signals:
    void windowMinimized();
    void windowMaximized();
    void windowNormal();
    void windowClosed();
    void labelIconClicked(QPoint globalPos);

public slots:
    void on_windowMinimized();
    void on_windowRestored(bool checked);
    void on_windowClosed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void followWindowState();
    void showWindowIcon();

    QLabel *labelIcon_ = nullptr;
    QLabel *labelText_ = nullptr;
    QPushButton *btnMin_ = nullptr;
    QPushButton *btnRestore_ = nullptr;
    QPushButton *btnClose_ = nullptr;
    QHBoxLayout *iconExtraLayout_ = nullptr;
    QHBoxLayout *textExtraLayout_ = nullptr;
    QHBoxLayout *buttonExtraLayout_ = nullptr;
    QHBoxLayout *menuBarLayout_ = nullptr;
    QSpacerItem *fixedSpacer_ = nullptr;
    QWidget *window_ = nullptr;
    QWidget *realTitleBar_ = nullptr;
    QWidget *menuBar_ = nullptr;
    bool heightAdjusted_ = false;
    bool keepHeight_ = true;
    QSize iconSize_ = QSize(16, 16);
};
