#include "CommonFramelessTitleBar.h"

#include "FramelessCore/FramelessLogging.h"
#include "FramelessCore/Repoint.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QStyleOption>
#include <QVBoxLayout>

namespace {

constexpr int TitleBarHeight = 30;

// Object name and a dynamic property of the same name, for the style sheet.
void nameWidget(QWidget *widget, const char *name)
{
    widget->setObjectName(QString::fromLatin1(name));
    widget->setProperty(name, true);
}

QHBoxLayout *extraLayout()
{
    auto *layout = new QHBoxLayout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}

} // namespace

LabelIconEventFilter::LabelIconEventFilter(CommonFramelessTitleBar *titleBar, QLabel *labelIcon)
    : QObject(labelIcon)
    , titleBar_(titleBar)
    , labelIcon_(labelIcon)
{}

bool LabelIconEventFilter::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == labelIcon_) {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            emit titleBar_->labelIconClicked(labelIcon_->mapToGlobal(QPoint(0, labelIcon_->height())));
            return true;
        case QEvent::Leave:
            labelIcon_->update();
            break;
        default:
            break;
        }
    }
    return QObject::eventFilter(watched, event);
}

CommonFramelessTitleBar::CommonFramelessTitleBar(QWidget *parent)
    : QWidget(parent)
{
    for (QWidget *w = parent; w; w = w->parentWidget()) {
        if (w->isWindow()) {
            window_ = w;
            break;
        }
    }
    if (!window_)
        BEX_CRITICAL(lcFrameless) << parent << "is not child of QMainWindow or QDialog";
    else
        window_->installEventFilter(this);

    realTitleBar_ = new QWidget(this);
    nameWidget(realTitleBar_, "framelessTitleBar");

    labelIcon_ = new QLabel(realTitleBar_);
    nameWidget(labelIcon_, "framelessTitleBar_labelIcon");
    labelIcon_->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
    labelIcon_->installEventFilter(new LabelIconEventFilter(this, labelIcon_));
    // Shows an image only: a screen reader speaks its name.
    labelIcon_->setAccessibleName(tr("窗口图标"));
    showWindowIcon();

    labelText_ = new QLabel(realTitleBar_);
    nameWidget(labelText_, "framelessTitleBar_labelText");
    labelText_->setIndent(5);
    labelText_->setMinimumWidth(30);
    labelText_->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
    if (window_ && !window_->windowTitle().isEmpty())
        labelText_->setText(window_->windowTitle());

    // The buttons show images only: a screen reader speaks their names, the
    // words of their tool tips.
    btnMin_ = new QPushButton(realTitleBar_);
    nameWidget(btnMin_, "framelessTitleBar_btnMin");
    btnMin_->setToolTip(tr("最小化"));
    btnMin_->setAccessibleName(btnMin_->toolTip());

    btnRestore_ = new QPushButton(realTitleBar_);
    nameWidget(btnRestore_, "framelessTitleBar_btnRestore");
    btnRestore_->setToolTip(tr("最大化"));
    btnRestore_->setAccessibleName(btnRestore_->toolTip());
    btnRestore_->setCheckable(true);
    btnRestore_->setChecked(false);

    btnClose_ = new QPushButton(realTitleBar_);
    nameWidget(btnClose_, "framelessTitleBar_btnClose");
    btnClose_->setToolTip(tr("关闭"));
    btnClose_->setAccessibleName(btnClose_->toolTip());

    // Like a native caption's buttons they are for the mouse only: with
    // keyboard focus, the first of them would take the focus of a window
    // without other focusable widgets (drawn with a focus frame by the
    // Windows style), and Space or Enter would minimise or close the window.
    for (QPushButton *button : {btnMin_, btnRestore_, btnClose_})
        button->setFocusPolicy(Qt::NoFocus);

    auto *barLayout = new QHBoxLayout(realTitleBar_);
    barLayout->setContentsMargins(8, 0, 2, 0);
    barLayout->setSpacing(0);
    barLayout->addWidget(labelIcon_, 0, Qt::AlignVCenter);
    iconExtraLayout_ = extraLayout();
    iconExtraLayout_->setContentsMargins(1, 0, 1, 0);
    barLayout->addLayout(iconExtraLayout_);
    fixedSpacer_ = new QSpacerItem(0, 0, QSizePolicy::Fixed, QSizePolicy::Fixed);
    barLayout->addItem(fixedSpacer_);
    barLayout->addWidget(labelText_);
    textExtraLayout_ = extraLayout();
    barLayout->addLayout(textExtraLayout_);
    barLayout->addStretch();
    buttonExtraLayout_ = extraLayout();
    barLayout->addLayout(buttonExtraLayout_);
    barLayout->addWidget(btnMin_, 0, Qt::AlignVCenter);
    barLayout->addWidget(btnRestore_, 0, Qt::AlignVCenter);
    barLayout->addWidget(btnClose_, 0, Qt::AlignVCenter);
    realTitleBar_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    realTitleBar_->setMinimumHeight(TitleBarHeight);
    realTitleBar_->setMaximumHeight(TitleBarHeight);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(realTitleBar_);
    menuBarLayout_ = extraLayout();
    layout->addLayout(menuBarLayout_);

    connect(btnMin_, &QPushButton::clicked, this, &CommonFramelessTitleBar::on_windowMinimized);
    connect(btnRestore_, &QPushButton::toggled, this, &CommonFramelessTitleBar::on_windowRestored);
    connect(btnClose_, &QPushButton::clicked, this, &CommonFramelessTitleBar::on_windowClosed);
}

CommonFramelessTitleBar::~CommonFramelessTitleBar() = default;

void CommonFramelessTitleBar::setMenuBar(QWidget *menuBar)
{
    Frameless::repoint(
        menuBar_, menuBar, [this](QWidget *old) { menuBarLayout_->removeWidget(old); },
        [this](QWidget *bar) { menuBarLayout_->addWidget(bar); });
}

void CommonFramelessTitleBar::on_windowMinimized()
{
    emit windowMinimized();
}

void CommonFramelessTitleBar::on_windowRestored(bool checked)
{
    BEX_DEBUG(lcFrameless) << "checked:" << checked;
    if (window_ && (window_->isMaximized() || window_->isFullScreen()))
        emit windowNormal();
    else
        emit windowMaximized();
}

void CommonFramelessTitleBar::on_windowClosed()
{
    emit windowClosed();
}

void CommonFramelessTitleBar::showWindowIcon()
{
    const QIcon icon = window_ ? window_->windowIcon() : QIcon();
    labelIcon_->setPixmap(icon.isNull() ? QPixmap() : icon.pixmap(iconSize_));
}

void CommonFramelessTitleBar::followWindowState()
{
    const Qt::WindowStates state = window_->windowState();
    if (!(state & (Qt::WindowMaximized | Qt::WindowFullScreen)) && (state & Qt::WindowMinimized))
        return;
    const bool maximized = state & (Qt::WindowMaximized | Qt::WindowFullScreen);

    // Following the window must not ask the window to change again.
    disconnect(btnRestore_, &QPushButton::toggled, this, &CommonFramelessTitleBar::on_windowRestored);
    btnRestore_->setToolTip(maximized ? tr("向下还原") : tr("最大化"));
    // A screen reader speaks what a press does, as the tool tip shows it.
    btnRestore_->setAccessibleName(btnRestore_->toolTip());
    btnRestore_->setChecked(maximized);
    connect(btnRestore_, &QPushButton::toggled, this, &CommonFramelessTitleBar::on_windowRestored);
}

bool CommonFramelessTitleBar::eventFilter(QObject *watched, QEvent *event)
{
    if (window_ && watched == window_) {
        switch (event->type()) {
        case QEvent::WindowTitleChange:
            labelText_->setText(window_->windowTitle());
            break;
        case QEvent::WindowIconChange:
            showWindowIcon();
            break;
        case QEvent::WindowStateChange:
            followWindowState();
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void CommonFramelessTitleBar::showEvent(QShowEvent *event)
{
    if (!heightAdjusted_ && menuBar_ && !keepHeight_) {
        heightAdjusted_ = true;
        BEX_DEBUG(lcFrameless) << "realTitleBar maxSize:" << realTitleBar_->maximumSize();
        BEX_DEBUG(lcFrameless) << "realTitleBar minSize:" << realTitleBar_->minimumSize();
        BEX_DEBUG(lcFrameless) << "realTitleBar size:" << realTitleBar_->size();
        BEX_DEBUG(lcFrameless) << "realTitleBar sizeHint:" << realTitleBar_->sizeHint();
        BEX_DEBUG(lcFrameless) << "menuBar maxSize:" << menuBar_->maximumSize();
        BEX_DEBUG(lcFrameless) << "menuBar minSize:" << menuBar_->minimumSize();
        BEX_DEBUG(lcFrameless) << "menuBar size:" << menuBar_->size();
        BEX_DEBUG(lcFrameless) << "menuBar sizeHint" << menuBar_->sizeHint();
        const int height = menuBar_->sizeHint().height() + realTitleBar_->maximumHeight();
        setMinimumHeight(height);
        setMaximumHeight(height);
    }
    QWidget::showEvent(event);
}

void CommonFramelessTitleBar::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    // A plain QWidget subclass draws no style-sheet background by itself.
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}
