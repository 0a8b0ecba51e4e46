#pragma once

#include "CommonFramelessDialog.h"

#include <QPixmap>
#include <QPlainTextEdit>
#include <QSize>
#include <QStringList>

class QButtonGroup;
class QCheckBox;
class QHBoxLayout;
class QLabel;

// The read-only text of a message box. Its minimum size hint fits the text:
// lines up to 600 pixels wide, long lines wrapped, high enough for every
// line as the edit lays it out, at most 400 pixels high (then it scrolls).
// It never scrolls sideways: every line wraps inside its width.
class MessageBoxTextEdit : public QPlainTextEdit
{
    Q_OBJECT

public:
    static constexpr int MaximumWidth = 600;
    static constexpr int MinimumWidth = 150;
    static constexpr int MaximumHeight = 400;
    static constexpr int LinePadding = 36;

    explicit MessageBoxTextEdit(QWidget *parent = nullptr);

    QString messageText() const { return text_; }
    void setMessageText(const QString &text);

    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent *event) override;

private:
    // The height in pixels that the text takes in the edit's viewport when
    // that is viewportWidth wide, margins of the document included.
    int laidOutTextHeight(int viewportWidth) const;

    QString text_;
    QStringList lines_;
    mutable QSize cachedHint_;
};

// The module's modal message box: icon, text, an optional check box and one
// or two buttons. Every function returns the index of the pressed button,
// or -1 when the box was closed without one: through its title bar, with
// Escape, by the window manager, or because its parent went away while it
// was open. Callers read 0 as "yes", so a box that was only dismissed must
// never answer 0.
class CommonFramelessMessageBox : public CommonFramelessDialog
{
    Q_OBJECT

public:
    enum IconKind
    {
        Question = 2,
        Warning = 3,
        Error = 4
    };

    static int question(QWidget *parent, const QString &title, const QString &text, const QString &button0,
                        const QString &button1, int defaultButton = 0,
                        const QString &checkBoxText = QString(), bool *checked = nullptr,
                        Qt::Alignment buttonAlignment = Qt::AlignRight);
    static int warning(QWidget *parent, const QString &title, const QString &text, const QString &button0,
                       int defaultButton = 0, const QString &checkBoxText = QString(),
                       bool *checked = nullptr, Qt::Alignment buttonAlignment = Qt::AlignRight);
    static int warning(QWidget *parent, const QString &title, const QString &text, const QString &button0,
                       const QString &button1, int defaultButton = 0, const QString &checkBoxText = QString(),
                       bool *checked = nullptr, Qt::Alignment buttonAlignment = Qt::AlignRight);
    static int error(QWidget *parent, const QString &title, const QString &text, const QString &button0,
                     int defaultButton = 0, const QString &checkBoxText = QString(), bool *checked = nullptr,
                     Qt::Alignment buttonAlignment = Qt::AlignRight);
    static int error(QWidget *parent, const QString &title, const QString &text, const QString &button0,
                     const QString &button1, int defaultButton = 0, const QString &checkBoxText = QString(),
                     bool *checked = nullptr, Qt::Alignment buttonAlignment = Qt::AlignRight);

    // The image shown for an icon kind.
    static QPixmap iconPixmap(int iconKind);

    // Runs the box; every negative result, and a box destroyed while it
    // runs, gives -1.
    int exec() override;
    // Escape and a close by the window manager answer "no" (-1), like the
    // title bar's close button, never the first button: a box that asks
    // before deleting or replacing files must not agree by a key press.
    void reject() override;

private:
    CommonFramelessMessageBox(QWidget *parent, Qt::Alignment buttonAlignment);
    ~CommonFramelessMessageBox() override;

    static int showMessageBox(QWidget *parent, int iconKind, const QString &title, const QString &text,
                              const QStringList &buttons, int defaultButton, const QString &checkBoxText,
                              bool *checked, Qt::Alignment buttonAlignment);

    void buildWidgets();
    void setText(const QString &text);
    void addButton(const QString &text, bool isDefault);

    Qt::Alignment buttonAlignment_;
    int nextButtonId_ = 0;
    QButtonGroup *buttonGroup_ = nullptr;
    QHBoxLayout *buttonLayout_ = nullptr;
    QLabel *labelIcon_ = nullptr;
    MessageBoxTextEdit *textEdit_ = nullptr;
    QCheckBox *checkBox_ = nullptr;
    bool checked_ = false;
};
