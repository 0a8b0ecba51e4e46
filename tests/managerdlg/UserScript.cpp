#include "UserScript.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

namespace {

// 10 ms a round: a window has 5 s to come, and 1 s to go after the last step.
constexpr int pollInterval = 10;
constexpr int roundsToAppear = 500;
constexpr int roundsToClose = 100;

QString iconName(const QLabel *label)
{
    if (!label)
        return QString();
    const QImage shown = label->pixmap(Qt::ReturnByValue).toImage().convertToFormat(QImage::Format_ARGB32);
    if (shown.isNull())
        return QStringLiteral("none");
    for (const char *kind : {"question", "warning", "error"}) {
        const QString image = QStringLiteral(":/frameless/img/messageBox/%1.png").arg(QLatin1String(kind));
        if (QPixmap(image).toImage().convertToFormat(QImage::Format_ARGB32) == shown)
            return QString::fromLatin1(kind);
    }
    return QStringLiteral("unknown");
}

} // namespace

void UserScript::then(const QString &what, const Matcher &matches, const Action &act)
{
    steps_.append(Step{what, matches, act});
}

void UserScript::click(const QString &windowClass, const QString &buttonName)
{
    then(windowClass + QStringLiteral(": click ") + buttonName, windowOfClass(windowClass),
         [this, buttonName](QWidget *window) { clickButton(window, buttonName); });
}

void UserScript::inspect(const QString &windowClass, const Action &act)
{
    then(windowClass + QStringLiteral(": look"), windowOfClass(windowClass), act);
}

void UserScript::answerMessageBox(const QString &buttonText)
{
    then(
        QStringLiteral("message box: answer ") + buttonText, &UserScript::isMessageBox,
        [this, buttonText](QWidget *box) {
            MessageBoxSeen seen;
            seen.title = box->windowTitle();
            if (auto *edit = box->findChild<QPlainTextEdit *>(QStringLiteral("framelessMessageBox_textEdit")))
                seen.text = edit->toPlainText();
            seen.icon = iconName(box->findChild<QLabel *>(QStringLiteral("framelessMessageBox_labelIcon")));
            QPushButton *chosen = nullptr;
            const QList<QPushButton *> buttons =
                box->findChildren<QPushButton *>(QStringLiteral("framelessMessageBox_btn"));
            for (QPushButton *button : buttons) {
                if (button->isDefault())
                    seen.defaultButton = seen.buttons.size();
                seen.buttons << button->text();
                if (button->text() == buttonText && !chosen)
                    chosen = button;
            }
            messageBoxes_.append(seen);
            if (!chosen) {
                problem(QStringLiteral("message box \"%1\" has no button \"%2\"").arg(seen.text, buttonText));
                return;
            }
            QTest::mouseClick(chosen, Qt::LeftButton);
        });
}

void UserScript::answerFileDialog(const QString &path)
{
    then(QStringLiteral("file dialog: answer ") + path, &UserScript::isFileDialog,
         [this, path](QWidget *window) {
             auto *dialog = static_cast<QFileDialog *>(window);
             FileDialogSeen seen;
             seen.caption = dialog->windowTitle();
             seen.directory = dialog->directory().absolutePath();
             seen.nameFilters = dialog->nameFilters();
             seen.saving = dialog->acceptMode() == QFileDialog::AcceptSave;
             auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
             if (edit)
                 seen.selectedFile = edit->text();
             fileDialogs_.append(seen);

             auto *box = dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
             if (!edit || !box) {
                 problem(QStringLiteral("the file dialog is not Qt's own widget dialog"));
                 return;
             }
             if (path.isEmpty()) {
                 QTest::mouseClick(box->button(QDialogButtonBox::Cancel), Qt::LeftButton);
                 return;
             }
             edit->setFocus();
             edit->selectAll();
             QTest::keyClicks(edit, path);
             QPushButton *accept = box->button(seen.saving ? QDialogButtonBox::Save : QDialogButtonBox::Open);
             if (!accept || !accept->isEnabled()) {
                 problem(QStringLiteral("the file dialog does not take ") + path);
                 return;
             }
             QTest::mouseClick(accept, Qt::LeftButton);
         });
}

int UserScript::exec(QDialog &dialog)
{
    int result = 0;
    run([&dialog, &result]() { result = dialog.exec(); });
    return result;
}

void UserScript::run(const std::function<void()> &call)
{
    next_ = 0;
    waited_ = 0;
    stopped_ = false;
    schedule();
    call();
    stopped_ = true;
    if (next_ < steps_.size() && problems_.isEmpty())
        problems_ << QStringLiteral("the dialog closed before the step: ") + steps_.at(next_).what;
}

UserScript::Matcher UserScript::windowOfClass(const QString &className)
{
    return [className](QWidget *window) {
        return QString::fromLatin1(window->metaObject()->className()) == className;
    };
}

bool UserScript::isMessageBox(QWidget *window)
{
    return window->property("framelessMessageBox").toBool();
}

bool UserScript::isFileDialog(QWidget *window)
{
    return qobject_cast<QFileDialog *>(window) != nullptr;
}

void UserScript::clickButton(QWidget *window, const QString &objectName)
{
    auto *button = window->findChild<QPushButton *>(objectName);
    if (!button) {
        problem(QStringLiteral("no button ") + objectName);
        return;
    }
    if (!button->isEnabled() || !button->isVisible()) {
        problem(QStringLiteral("the button %1 cannot be clicked").arg(objectName));
        return;
    }
    QTest::mouseClick(button, Qt::LeftButton);
}

void UserScript::schedule()
{
    QTimer::singleShot(pollInterval, this, &UserScript::poll);
}

void UserScript::poll()
{
    if (stopped_)
        return;
    QWidget *window = QApplication::activeModalWidget();
    if (next_ < steps_.size()) {
        const Step &step = steps_.at(next_);
        if (window && step.matches(window)) {
            const Action act = step.act;
            ++next_;
            waited_ = 0;
            // The next poll is due before the action runs: an action that
            // opens a window blocks in that window's own event loop, where
            // the next step has to be played.
            schedule();
            act(window);
            return;
        }
        if (++waited_ >= roundsToAppear) {
            problem(QStringLiteral("waited for \"%1\", found %2").arg(step.what, describe(window)));
            closeEverything();
            return;
        }
        schedule();
        return;
    }
    if (window && ++waited_ >= roundsToClose) {
        problem(QStringLiteral("left open after the last step: ") + describe(window));
        closeEverything();
        return;
    }
    schedule();
}

void UserScript::closeEverything()
{
    stopped_ = true;
    for (int guard = 0; guard < 16; ++guard) {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        if (isMessageBox(dialog))
            dialog->done(-1);
        else
            dialog->reject();
    }
}

QString UserScript::describe(QWidget *window)
{
    if (!window)
        return QStringLiteral("no modal window");
    return QStringLiteral("%1 \"%2\"")
        .arg(QString::fromLatin1(window->metaObject()->className()), window->windowTitle());
}
