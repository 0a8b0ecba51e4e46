#pragma once

// Helpers shared by the property dialog's tests: finding its widgets by
// object name and answering the modal windows it opens (message boxes and the
// file dialog) the way a user does.

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabBar>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <memory>

namespace PropertyDlgTest {

template <typename T = QWidget>
T *child(const QWidget *parent, const QString &name)
{
    return parent->findChild<T *>(name);
}

// Waits for a modal window other than `owner` to become active and hands it
// to `act`. Gives up after a few seconds, so that a test whose window never
// appears fails instead of hanging. Keep the returned object alive until the
// action that opens the window has returned.
class ModalAnswer
{
public:
    ModalAnswer(QWidget *owner, std::function<void(QWidget *)> act)
        : owner_(owner)
        , act_(std::move(act))
    {
        timer_.setInterval(10);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this]() {
            QWidget *modal = QApplication::activeModalWidget();
            if (!modal || modal == owner_) {
                if (++rounds_ > 500)
                    timer_.stop();
                return;
            }
            timer_.stop();
            answered_ = true;
            QPointer<QWidget> guard(modal);
            act_(modal);
            // A window the action left open is closed, so exec() returns.
            if (guard && guard->isVisible())
                if (auto *dialog = qobject_cast<QDialog *>(guard.data()))
                    dialog->reject();
        });
        timer_.start();
    }

    bool answered() const { return answered_; }

private:
    QPointer<QWidget> owner_;
    std::function<void(QWidget *)> act_;
    QTimer timer_;
    int rounds_ = 0;
    bool answered_ = false;
};

// What a message box showed, and the click that answered it.
struct BoxSeen
{
    QString title;
    QString text;
    QStringList buttons;
};

// Clicks the message box button with the given text (an empty text closes
// the box through its title bar) and records what the box showed.
inline std::unique_ptr<ModalAnswer> answerMessageBox(QWidget *owner, const QString &buttonText, BoxSeen *seen)
{
    return std::make_unique<ModalAnswer>(owner, [buttonText, seen](QWidget *box) {
        if (seen) {
            seen->title = box->windowTitle();
            if (auto *edit = box->findChild<QPlainTextEdit *>(QStringLiteral("framelessMessageBox_textEdit")))
                seen->text = edit->toPlainText();
        }
        const auto buttons = box->findChildren<QPushButton *>(QStringLiteral("framelessMessageBox_btn"));
        for (QPushButton *button : buttons) {
            if (seen)
                seen->buttons << button->text();
        }
        for (QPushButton *button : buttons) {
            if (!buttonText.isEmpty() && button->text() == buttonText) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        box->close();
    });
}

// Chooses `path` in the open-file dialog (an empty path cancels it) and
// records its caption, folder and filter.
struct FileDialogSeen
{
    QString caption;
    QString directory;
    QStringList filters;
};

// Selects the file and presses the dialog's accept button.
inline void chooseFile(QFileDialog *dialog, const QString &path)
{
    dialog->selectFile(path);
    static_cast<QDialog *>(dialog)->accept();
}

inline std::unique_ptr<ModalAnswer> answerFileDialog(QWidget *owner, const QString &path,
                                                     FileDialogSeen *seen)
{
    return std::make_unique<ModalAnswer>(owner, [path, seen](QWidget *modal) {
        auto *dialog = qobject_cast<QFileDialog *>(modal);
        if (!dialog)
            return;
        if (seen) {
            seen->caption = dialog->windowTitle();
            seen->directory = dialog->directory().absolutePath();
            seen->filters = dialog->nameFilters();
        }
        if (path.isEmpty()) {
            dialog->reject();
            return;
        }
        chooseFile(dialog, path);
    });
}

// Chooses `path` in the open-file dialog and then answers the message box
// that the choice brings up with the button `buttonText`.
class FileThenBox
{
public:
    FileThenBox(QWidget *owner, const QString &path, const QString &buttonText, BoxSeen *seen,
                FileDialogSeen *fileSeen)
    {
        fileDialog_ = std::make_unique<ModalAnswer>(owner, [=](QWidget *modal) {
            auto *dialog = qobject_cast<QFileDialog *>(modal);
            if (!dialog)
                return;
            if (fileSeen)
                fileSeen->caption = dialog->windowTitle();
            box_ = answerMessageBox(modal, buttonText, seen);
            chooseFile(dialog, path);
        });
    }

    bool fileChosen() const { return fileDialog_->answered(); }
    bool boxAnswered() const { return box_ && box_->answered(); }

private:
    std::unique_ptr<ModalAnswer> fileDialog_;
    std::unique_ptr<ModalAnswer> box_;
};

// Writes a file outside the application directory (a profile the operator
// picks from elsewhere, for example).
inline bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline QStringList tabTexts(const QTabBar *tabBar)
{
    QStringList texts;
    for (int i = 0; i < tabBar->count(); ++i)
        texts << tabBar->tabText(i);
    return texts;
}

// Double-clicks a tab of the ink order panel, as the operator switches an
// ink on or off.
inline void doubleClickTab(QTabBar *tabBar, int index)
{
    QTest::mouseDClick(tabBar, Qt::LeftButton, Qt::NoModifier, tabBar->tabRect(index).center());
}

} // namespace PropertyDlgTest
