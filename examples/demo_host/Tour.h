#pragma once

#include <QDir>
#include <QObject>
#include <QStringList>

#include <functional>

class DemoWindow;
class QWidget;

// The headless tour: walks the demo's path by itself with the sample drivers,
// first in Chinese, then in English (the module cannot go back to Chinese
// once English is installed). It plays the operator in every window the
// module opens, saves a picture of each into the tour's folder, prints what
// every step returned, and reports whether all of them did what a host
// expects.
class Tour : public QObject
{
    Q_OBJECT

public:
    Tour(DemoWindow &window, const QString &screenshotDir);

    // Runs the tour; 0 when every step succeeded.
    int run();

private:
    // One window the operator expects, and what they do in it.
    struct Expectation
    {
        QString what;
        std::function<bool(QWidget *)> matches;
        std::function<void(QWidget *)> act;
    };

    bool offerSampleDrivers();
    bool tourLanguage(const QString &tag);
    bool managerStep(const QString &tag);
    bool jobStep(const QString &tag);

    // Plays the expectations in order while call runs (call opens the
    // windows); true when each came and nothing was left open.
    bool play(const std::function<void()> &call);
    void expect(const QString &windowClass, const std::function<void(QWidget *)> &act);
    void expectMessageBox(const std::function<void(QWidget *)> &act);
    void poll();
    void closeModalWindows();

    bool screenshot(QWidget *window, const QString &name);
    void clickButton(QWidget *window, const char *objectName);
    // Clicks the first row of the window's list whose text contains text.
    void clickRow(QWidget *window, const char *listName, const QString &text);
    void problem(const QString &text);
    bool report(const QString &step, bool ok, const QStringList &lines);

    DemoWindow &window_;
    QDir dir_;
    QString tag_;
    int pictures_ = 0;
    QList<Expectation> expectations_;
    int next_ = 0;
    int rounds_ = 0;
    bool playing_ = false;
    QStringList problems_;
    QStringList screenshots_;
};
