#pragma once

// Helpers shared by the property dialog's tests: finding its widgets by
// object name and answering the modal windows it opens (message boxes and the
// file dialog) the way a user does.

#include "UI/CommonPropertyRows.h"
#include "UI/IccProfileRow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMap>
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

// The profile row that shows its profile in `edit`.
inline IccProfileRow *iccRow(const QWidget *dialog, const QLineEdit *edit)
{
    for (IccProfileRow *row : dialog->findChildren<IccProfileRow *>()) {
        if (row->lineEdit() == edit)
            return row;
    }
    return nullptr;
}

// The profile name that OK hands back to the handler for the row of `edit`.
inline QString storedProfileName(const QWidget *dialog, const QLineEdit *edit)
{
    IccProfileRow *row = iccRow(dialog, edit);
    return row ? row->filePath() : QStringLiteral("<no profile row>");
}

// The combo box of the common property `enumId`, by its object name.
inline QComboBox *commonCombo(const QWidget *dialog, int enumId)
{
    return dialog->findChild<QComboBox *>(CommonPropertyRows::objectName(enumId));
}

// The combo boxes of the common properties, in the order of their ids.
inline QList<QComboBox *> commonCombos(const QWidget *dialog)
{
    const QString prefix = CommonPropertyRows::objectName(0).chopped(1);
    QMap<int, QComboBox *> byId;
    for (QComboBox *combo : dialog->findChildren<QComboBox *>()) {
        if (combo->objectName().startsWith(prefix))
            byId.insert(combo->objectName().mid(prefix.size()).toInt(), combo);
    }
    return byId.values();
}

// The id of a common property's combo box.
inline int commonComboId(const QComboBox *combo)
{
    const QString prefix = CommonPropertyRows::objectName(0).chopped(1);
    return combo->objectName().mid(prefix.size()).toInt();
}

// Waits for a modal window other than `owner` to become active and hands it
// to `act`. Gives up after a time limit (counted on the clock, not in timer
// rounds, so that a loaded machine does not end the wait early), so that a
// test whose window never appears fails instead of hanging. Keep the returned object alive until the
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
                if (waited_.hasExpired(giveUpMs))
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
        waited_.start();
        timer_.start();
    }

    bool answered() const { return answered_; }

private:
    QPointer<QWidget> owner_;
    std::function<void(QWidget *)> act_;
    static constexpr qint64 giveUpMs = 20000;
    QTimer timer_;
    QElapsedTimer waited_;
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

// Types the file's absolute path into the dialog's name field and presses
// its accept button, as an operator does. An absolute path does not depend
// on the folder the dialog's file model is still loading in the background,
// which selectFile() followed by accept() does.
inline void chooseFile(QFileDialog *dialog, const QString &path)
{
    auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    auto *box = dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
    if (!edit || !box) {
        static_cast<QDialog *>(dialog)->reject();
        return;
    }
    edit->setText(QFileInfo(path).absoluteFilePath());
    QPushButton *accept = box->button(QDialogButtonBox::Open);
    if (!accept)
        accept = box->button(QDialogButtonBox::Save);
    if (accept)
        accept->click();
    else
        static_cast<QDialog *>(dialog)->reject();
}

inline void recordFileDialog(const QFileDialog *dialog, FileDialogSeen *seen)
{
    if (!seen)
        return;
    seen->caption = dialog->windowTitle();
    seen->directory = dialog->directory().absolutePath();
    seen->filters = dialog->nameFilters();
}

inline std::unique_ptr<ModalAnswer> answerFileDialog(QWidget *owner, const QString &path,
                                                     FileDialogSeen *seen)
{
    return std::make_unique<ModalAnswer>(owner, [path, seen](QWidget *modal) {
        auto *dialog = qobject_cast<QFileDialog *>(modal);
        if (!dialog)
            return;
        recordFileDialog(dialog, seen);
        if (path.isEmpty()) {
            dialog->reject();
            return;
        }
        chooseFile(dialog, path);
    });
}

// Chooses `path` in the open-file dialog and then answers the message box
// that the choice brings up with the button `buttonText`. Where no box is
// expected, boxAnswered() tells whether one came all the same (it was
// answered, so the test goes on and fails instead of waiting).
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
            recordFileDialog(dialog, fileSeen);
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
