#include "CommonFramelessMessageBox.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHash>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTextDocument>
#include <QTextLayout>
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

// The framework's own image for each icon kind; none for another kind.
QString defaultIconPath(int iconKind)
{
    static const QHash<int, QString> paths = {
        {CommonFramelessMessageBox::Question, QStringLiteral(":/frameless/img/messageBox/question.png")},
        {CommonFramelessMessageBox::Warning, QStringLiteral(":/frameless/img/messageBox/warning.png")},
        {CommonFramelessMessageBox::Error, QStringLiteral(":/frameless/img/messageBox/error.png")},
    };
    return paths.value(iconKind);
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
    // The style sheet may change the font, the border and the padding.
    ensurePolished();

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

    // A line count times the font's line spacing can fall short of what the
    // text needs: a Chinese line is drawn with a fallback font of its own
    // height, and the edit's frame, padding and document margins take room
    // too. So the text is laid out at the width it gets, as the edit lays it
    // out, and the hint is never lower than that.
    const QMargins margins = contentsMargins() + viewportMargins();
    const int viewportWidth = width - margins.left() - margins.right();
    const int textHeight = laidOutTextHeight(viewportWidth) + margins.top() + margins.bottom();
    int height = std::max(lineSpacing * (displayLines + 1), textHeight);
    auto *self = const_cast<MessageBoxTextEdit *>(this);
    if (textHeight <= MaximumHeight) {
        // Everything fits: no scroll bar.
        self->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        height = std::min(height, MaximumHeight);
    } else {
        self->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        height = MaximumHeight;
    }
    height = std::max(height, lineSpacing);

    cachedHint_ = QSize(width, height);
    return cachedHint_;
}

int MessageBoxTextEdit::laidOutTextHeight(int viewportWidth) const
{
    // Every line of the text is laid out as the plain text edit lays out a
    // block: wrapped the edit's way inside the viewport less the document
    // margins, each text line as high as its tallest glyphs with the leading
    // included. The edit leaves the document margin above the first block
    // and below the last. One pixel more, as the edit only scrolls when the
    // text is higher than its viewport less one.
    const QTextDocument *doc = document();
    const qreal margin = doc->documentMargin();
    const qreal lineWidth = std::max(qreal(viewportWidth) - 2 * margin, qreal(1));
    qreal height = 2 * margin;
    for (const QString &line : lines_) {
        QTextLayout layout(line, font());
        layout.setTextOption(doc->defaultTextOption());
        layout.beginLayout();
        // A negative leading moves the next line up; the block ends at the
        // bottom of its last line.
        qreal top = 0;
        qreal bottom = 0;
        for (QTextLine textLine = layout.createLine(); textLine.isValid(); textLine = layout.createLine()) {
            textLine.setLeadingIncluded(true);
            textLine.setLineWidth(lineWidth);
            bottom = top + textLine.height();
            top = bottom + std::min(std::ceil(textLine.leading()), qreal(0));
        }
        layout.endLayout();
        height += bottom;
    }
    return int(std::ceil(height)) + 1;
}

void MessageBoxTextEdit::changeEvent(QEvent *event)
{
    // A new font or style sheet measures the text anew.
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        cachedHint_ = QSize();
        updateGeometry();
    }
    QPlainTextEdit::changeEvent(event);
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
    // A screen reader names the text after the box.
    box->textEdit_->setAccessibleName(title);
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
