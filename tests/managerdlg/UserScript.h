#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

class QDialog;
class QWidget;

// Plays the operator's part through a run of nested modal windows: the
// manager dialog, the install or rename dialog it opens, a message box on
// top of that, a file dialog. Each step waits until the application's
// active modal window is the one it expects, then acts on it (clicks
// buttons found by object name or text, types a file name).
//
// Every wait has a limit. A step whose window never comes, or a window
// left open after the last step, is written to problems() and every open
// modal window is closed, so exec() always returns and the test fails fast
// instead of hanging. Message boxes are closed as with their title bar's
// close button (-1, "no"), never with a button that could change data.
class UserScript : public QObject
{
public:
    using Matcher = std::function<bool(QWidget *)>;
    using Action = std::function<void(QWidget *)>;

    // What a message box showed when the script answered it.
    struct MessageBoxSeen
    {
        QString title;
        QString text;
        QStringList buttons;
        int defaultButton = -1;
        QString icon; // "question", "warning" or "error", from the pixmap
    };

    // Appends a step: when the active modal window satisfies matches, act
    // is called with it.
    void then(const QString &what, const Matcher &matches, const Action &act);

    // Convenience steps.
    // Clicks the button of the given object name in the window of the
    // given class (its meta-object class name).
    void click(const QString &windowClass, const QString &buttonName);
    // Lets act look at the window of the given class.
    void inspect(const QString &windowClass, const Action &act);
    // Answers the next message box by clicking the button with this text,
    // recording what the box showed.
    void answerMessageBox(const QString &buttonText);
    // Answers the next file dialog: types path into its file name field
    // and presses its accept button. An empty path presses Cancel. What the
    // dialog showed (caption, folder, filters) is recorded first.
    void answerFileDialog(const QString &path);

    // Runs dialog.exec() while the steps play; returns exec()'s result.
    int exec(QDialog &dialog);
    // Runs call, which opens its windows itself (a host's call into the
    // module), while the steps play.
    void run(const std::function<void()> &call);

    const QStringList &problems() const { return problems_; }
    const QList<MessageBoxSeen> &messageBoxes() const { return messageBoxes_; }
    struct FileDialogSeen
    {
        QString caption;
        QString directory;
        QString selectedFile; // the file name field as the dialog opened
        QStringList nameFilters;
        bool saving = false;
    };
    const QList<FileDialogSeen> &fileDialogs() const { return fileDialogs_; }

    // Matchers.
    static Matcher windowOfClass(const QString &className);
    static bool isMessageBox(QWidget *window);
    static bool isFileDialog(QWidget *window);

    // Clicks a push button of window by object name; a missing or disabled
    // button is a problem.
    void clickButton(QWidget *window, const QString &objectName);
    void problem(const QString &text) { problems_ << text; }

private:
    struct Step
    {
        QString what;
        Matcher matches;
        Action act;
    };

    void poll();
    void schedule();
    void closeEverything();
    static QString describe(QWidget *window);

    QList<Step> steps_;
    int next_ = 0;
    int waited_ = 0;
    bool stopped_ = true;
    QStringList problems_;
    QList<MessageBoxSeen> messageBoxes_;
    QList<FileDialogSeen> fileDialogs_;
};
