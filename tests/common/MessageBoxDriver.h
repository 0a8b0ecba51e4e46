#pragma once

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <memory>

// Drives the next modal message box the way a user meets it: once it is the
// application's active modal widget, `user` gets it and clicks or types.
//
// A check that fails inside `user` returns from it early and leaves the box
// open; the box is then ended here (with -1, as if dismissed), so the static
// function comes back at once and the test reports the failure instead of
// hanging until the CTest timeout. `leftOpen` is called for such a box;
// by default it records a failure unless one is already recorded.
//
// The box must appear within maxRounds timer rounds of 10 ms; otherwise the
// wait ends quietly (the test's own checks then fail).
namespace MessageBoxDriver {

constexpr int maxRounds = 500;

inline void failLeftOpen()
{
    if (!QTest::currentTestFailed())
        QTest::qFail("the message box was left open", __FILE__, __LINE__);
}

template <typename Box = QDialog>
void whenShown(std::function<void(Box *)> user, std::function<void()> leftOpen = failLeftOpen)
{
    auto *timer = new QTimer(qApp);
    timer->setInterval(10);
    auto rounds = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, rounds, user, leftOpen]() {
        const QPointer<Box> box = qobject_cast<Box *>(QApplication::activeModalWidget());
        if (box.isNull() && ++*rounds < maxRounds)
            return;
        timer->stop();
        timer->deleteLater();
        if (box.isNull())
            return;
        user(box.data());
        if (box && box->isVisible()) {
            leftOpen();
            if (box)
                box->done(-1);
        }
    });
    timer->start();
}

} // namespace MessageBoxDriver
