#pragma once

#include <QList>
#include <QString>
#include <QtGlobal>

// Captures the lines written through Qt's message logger while it is alive,
// so that tests can assert texts, levels, source files and functions.
// Lines are still passed on to the previous handler, so a failing test's
// output keeps them.
class LogCapture
{
public:
    struct Entry
    {
        QtMsgType type;
        QString category;
        QString file;
        int line;
        QString function;
        QString message;
    };

    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    QList<Entry> entries() const;
    void clear();

    // Entries of the given level whose message contains text.
    QList<Entry> find(QtMsgType type, const QString &text) const;
    bool contains(QtMsgType type, const QString &text) const { return !find(type, text).isEmpty(); }
    // Number of entries of the given level whose message contains text.
    int count(QtMsgType type, const QString &text) const { return find(type, text).size(); }
    // All messages, one per line, for failure output.
    QString dump() const;

private:
    static void handler(QtMsgType type, const QMessageLogContext &context, const QString &message);

    QtMessageHandler previous_ = nullptr;
    LogCapture *outer_ = nullptr;
    QList<Entry> entries_;
};
