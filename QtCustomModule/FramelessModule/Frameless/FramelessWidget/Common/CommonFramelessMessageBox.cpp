#include "CommonFramelessMessageBox.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHash>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

// Images registered for icon kinds; empty unless a user of the framework
// adds its own, so the default images below apply.
QHash<int, QPixmap> &iconTable()
{
    static QHash<int, QPixmap> table;
    return table;
}

QString defaultIconPath(int iconKind)
{
    switch (iconKind) {
    case CommonFramelessMessageBox::Question:
        return QStringLiteral(":/frameless/img/messageBox/question.png");
    case CommonFramelessMessageBox::Warning:
        return QStringLiteral(":/frameless/img/messageBox/warning.png");
    case CommonFramelessMessageBox::Error:
        return QStringLiteral(":/frameless/img/messageBox/error.png");
    default:
        return QString();
    }
}

} // namespace

MessageBoxTextEdit::MessageBoxTextEdit(QWidget *parent)
    : QPlainTextEdit(parent)
{
    // The text wraps at the edit's width (a word wider than that is broken
    // too), so nothing lies right of the viewport and a horizontal scroll bar
    // has nothing to show. As needed, it showed anyway when the box appeared:
    // the text is laid out as soon as it is set, at the edit's initial width,
    // before the box's layout gives the edit its own, and the scroll bar
    // range from that first layout is what the edit is shown with.
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void MessageBoxTextEdit::setMessageText(const QString &text)
{
    text_ = text;
    lines_ = text.split(QLatin1Char('\n'));
    cachedHint_ = QSize();
    setPlainText(text);
}

QSize MessageBoxTextEdit::minimumSizeHint() const
{
    if (text_.isEmpty())
        return QPlainTextEdit::minimumSizeHint();
    if (cachedHint_.isValid())
        return cachedHint_;

    const QFontMetrics metrics(font());
    const int lineSpacing = metrics.lineSpacing();
    int displayLines = 0;
    int widest = 0;
    for (const QString &line : lines_) {
        const int w = metrics.boundingRect(line).width() + LinePadding;
        displayLines += w > MaximumWidth ? int(std::ceil(double(w) / MaximumWidth)) : 1;
        widest = std::max(widest, std::min(w, MaximumWidth));
    }
    const int width = std::clamp(widest, MinimumWidth, MaximumWidth);

    int height = lineSpacing * (displayLines + 1);
    if (height <= MaximumHeight) {
        // Everything fits: no scroll bar.
        const_cast<MessageBoxTextEdit *>(this)->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    } else {
        height = MaximumHeight;
    }
    height = std::max(height, lineSpacing);

    cachedHint_ = QSize(width, height);
    return cachedHint_;
}

CommonFramelessMessageBox::CommonFramelessMessageBox(QWidget *parent, Qt::Alignment buttonAlignment)
    : CommonFramelessDialog(parent)
    , buttonAlignment_(buttonAlignment)
{
    buildWidgets();
}

CommonFramelessMessageBox::~CommonFramelessMessageBox() = default;

void CommonFramelessMessageBox::buildWidgets()
{
    setProperty("framelessMessageBox", true);

    buttonGroup_ = new QButtonGroup(this);
    connect(buttonGroup_, &QButtonGroup::idClicked, this, &QDialog::done);

    auto *titleBarRow = new QHBoxLayout;
    titleBarRow->setContentsMargins(0, 0, 0, 0);
    titleBarRow->setSpacing(0);

    auto *contentRow = new QHBoxLayout;
    contentRow->setContentsMargins(9, 9, 9, 6);
    contentRow->setSpacing(6);
    labelIcon_ = new QLabel(this);
    labelIcon_->setObjectName(QStringLiteral("framelessMessageBox_labelIcon"));
    labelIcon_->setScaledContents(true);
    labelIcon_->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
    contentRow->addWidget(labelIcon_, 0, Qt::AlignTop);
    textEdit_ = new MessageBoxTextEdit(this);
    textEdit_->setObjectName(QStringLiteral("framelessMessageBox_textEdit"));
    textEdit_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    textEdit_->setReadOnly(true);
    textEdit_->hide();
    contentRow->addWidget(textEdit_);

    checkBox_ = new QCheckBox(this);
    checkBox_->setObjectName(QStringLiteral("framelessMessageBox_checkbox"));
    checkBox_->hide();
    connect(checkBox_, &QCheckBox::stateChanged, this,
            [this](int state) { checked_ = state == Qt::Checked; });

    buttonLayout_ = new QHBoxLayout;
    buttonLayout_->setContentsMargins(25, 0, 25, 0);
    buttonLayout_->setSpacing(6);
    auto *buttonRow = new QHBoxLayout;
    buttonRow->setContentsMargins(0, 6, 0, 9);
    buttonRow->setSpacing(0);
    buttonRow->addStretch();
    buttonRow->addLayout(buttonLayout_);
    if (buttonAlignment_ == Qt::AlignHCenter)
        buttonRow->addStretch();

    auto *mainLayout = new QVBoxLayout(this);
    mainLayout->setContentsMargins(0, 0, 0, 0);
    mainLayout->addLayout(titleBarRow);
    mainLayout->addLayout(contentRow);
    mainLayout->addStretch();
    mainLayout->addWidget(checkBox_, 0, Qt::AlignHCenter);
    mainLayout->addLayout(buttonRow);

    setupFramelessTitleBar(titleBarRow);
    setWindowFlag(Qt::WindowMinimizeButtonHint, false);
    setWindowFlag(Qt::WindowMaximizeButtonHint, false);
    setResizable(false);

    // Closing through the title bar ends the box with a negative id.
    buttonGroup_->addButton(framelessTitleBar()->closeButton());
}

void CommonFramelessMessageBox::setText(const QString &text)
{
    textEdit_->setMessageText(text);
    textEdit_->show();
    resize(sizeHint());
}

void CommonFramelessMessageBox::addButton(const QString &text, bool isDefault)
{
    auto *button = new QPushButton(QIcon(), text, this);
    button->setObjectName(QStringLiteral("framelessMessageBox_btn"));
    buttonLayout_->addWidget(button);
    buttonGroup_->addButton(button, nextButtonId_++);
    if (isDefault)
        button->setDefault(true);
}

QPixmap CommonFramelessMessageBox::iconPixmap(int iconKind)
{
    const auto found = iconTable().constFind(iconKind);
    if (found != iconTable().constEnd())
        return found.value();
    const QString path = defaultIconPath(iconKind);
    return path.isEmpty() ? QPixmap() : QPixmap(path);
}

int CommonFramelessMessageBox::exec()
{
    // QDialog::exec() answers Rejected (0) for a dialog deleted while it
    // runs, which would read as the first button.
    const QPointer<CommonFramelessMessageBox> guard(this);
    const int result = QDialog::exec();
    if (guard.isNull())
        return -1;
    return result < 0 ? -1 : result;
}

void CommonFramelessMessageBox::reject()
{
    // QDialog::reject() would end the box with 0, the first button's index.
    done(-1);
}

int CommonFramelessMessageBox::showMessageBox(QWidget *parent, int iconKind, const QString &title,
                                              const QString &text, const QStringList &buttons,
                                              int defaultButton, const QString &checkBoxText, bool *checked,
                                              Qt::Alignment buttonAlignment)
{
    const QPixmap icon = iconPixmap(iconKind);

    // The box is a child of parent: if parent is destroyed while the box
    // runs, the box goes with it, and neither it nor its state may be
    // touched afterwards.
    const QPointer<CommonFramelessMessageBox> box = new CommonFramelessMessageBox(parent, buttonAlignment);
    box->setWindowTitle(title);
    box->labelIcon_->setPixmap(icon);
    box->setText(text);
    if (!checkBoxText.isEmpty()) {
        box->checkBox_->setText(checkBoxText);
        box->checkBox_->show();
    }
    for (int i = 0; i < buttons.size(); ++i)
        box->addButton(buttons.at(i), i == defaultButton);

    const int result = box->exec();
    if (box.isNull()) {
        if (checked)
            *checked = false;
        return -1;
    }
    if (checked)
        *checked = box->checked_;
    delete box.data();
    return result;
}

int CommonFramelessMessageBox::question(QWidget *parent, const QString &title, const QString &text,
                                        const QString &button0, const QString &button1, int defaultButton,
                                        const QString &checkBoxText, bool *checked,
                                        Qt::Alignment buttonAlignment)
{
    return showMessageBox(parent, Question, title, text, {button0, button1}, defaultButton, checkBoxText,
                          checked, buttonAlignment);
}

int CommonFramelessMessageBox::warning(QWidget *parent, const QString &title, const QString &text,
                                       const QString &button0, int defaultButton, const QString &checkBoxText,
                                       bool *checked, Qt::Alignment buttonAlignment)
{
    return showMessageBox(parent, Warning, title, text, {button0}, defaultButton, checkBoxText, checked,
                          buttonAlignment);
}

int CommonFramelessMessageBox::warning(QWidget *parent, const QString &title, const QString &text,
                                       const QString &button0, const QString &button1, int defaultButton,
                                       const QString &checkBoxText, bool *checked,
                                       Qt::Alignment buttonAlignment)
{
    return showMessageBox(parent, Warning, title, text, {button0, button1}, defaultButton, checkBoxText,
                          checked, buttonAlignment);
}

int CommonFramelessMessageBox::error(QWidget *parent, const QString &title, const QString &text,
                                     const QString &button0, int defaultButton, const QString &checkBoxText,
                                     bool *checked, Qt::Alignment buttonAlignment)
{
    return showMessageBox(parent, Error, title, text, {button0}, defaultButton, checkBoxText, checked,
                          buttonAlignment);
}

int CommonFramelessMessageBox::error(QWidget *parent, const QString &title, const QString &text,
                                     const QString &button0, const QString &button1, int defaultButton,
                                     const QString &checkBoxText, bool *checked,
                                     Qt::Alignment buttonAlignment)
{
    return showMessageBox(parent, Error, title, text, {button0, button1}, defaultButton, checkBoxText,
                          checked, buttonAlignment);
}
