#pragma once

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>

#include <functional>

// Drives a modal dialog the way a user does: once exec() has shown it, a
// timer picks up the application's active modal widget and hands it to
// `user`, which finds children by object name and clicks or types into them.
// If the dialog is still open when `user` returns, it is rejected so that
// exec() always comes back; `leftOpen` then tells the test so.
struct ModalDriver
{
    // Number of timer rounds to wait for the dialog to become the active
    // modal widget before giving up.
    static constexpr int maxRounds = 500;

    int exec(QDialog &dialog, const std::function<void(QDialog *)> &user)
    {
        found = false;
        leftOpen = false;
        int rounds = 0;
        QTimer timer;
        timer.setInterval(10);
        QObject::connect(&timer, &QTimer::timeout, &timer, [&]() {
            QPointer<QDialog> modal = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            if (!modal) {
                if (++rounds >= maxRounds) {
                    timer.stop();
                    dialog.reject();
                }
                return;
            }
            timer.stop();
            found = true;
            user(modal);
            if (modal && modal->isVisible()) {
                leftOpen = true;
                modal->reject();
            }
        });
        timer.start();
        return dialog.exec();
    }

    bool found = false;
    bool leftOpen = false;
};
