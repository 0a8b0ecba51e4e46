#include "LogCapture.h"

#include <QMutex>
#include <QMutexLocker>

namespace {
QMutex captureMutex;
LogCapture *activeCapture = nullptr;
} // namespace

LogCapture::LogCapture()
{
    QMutexLocker lock(&captureMutex);
    outer_ = activeCapture;
    activeCapture = this;
    previous_ = qInstallMessageHandler(&LogCapture::handler);
}

LogCapture::~LogCapture()
{
    QMutexLocker lock(&captureMutex);
    qInstallMessageHandler(previous_);
    activeCapture = outer_;
}

QList<LogCapture::Entry> LogCapture::entries() const
{
    QMutexLocker lock(&captureMutex);
    return entries_;
}

void LogCapture::clear()
{
    QMutexLocker lock(&captureMutex);
    entries_.clear();
}

QList<LogCapture::Entry> LogCapture::find(QtMsgType type, const QString &text) const
{
    QList<Entry> found;
    const QList<Entry> all = entries();
    for (const Entry &entry : all) {
        if (entry.type == type && entry.message.contains(text))
            found.append(entry);
    }
    return found;
}

QString LogCapture::dump() const
{
    QString text;
    const QList<Entry> all = entries();
    for (const Entry &entry : all) {
        text += QStringLiteral("[%1] %2:%3 %4: %5\n")
                    .arg(entry.type)
                    .arg(entry.file)
                    .arg(entry.line)
                    .arg(entry.function, entry.message);
    }
    return text;
}

void LogCapture::handler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    QtMessageHandler forward = nullptr;
    {
        QMutexLocker lock(&captureMutex);
        // Every capture alive records the line: a capture made inside
        // another one does not hide the line from the outer one. The line is
        // then passed to the handler that was installed before the outermost
        // capture; the handlers in between are this function again.
        const Entry entry{type,         QString::fromUtf8(context.category), QString::fromUtf8(context.file),
                          context.line, QString::fromUtf8(context.function), message};
        for (LogCapture *capture = activeCapture; capture; capture = capture->outer_) {
            capture->entries_.append(entry);
            forward = capture->previous_;
        }
    }
    if (forward)
        forward(type, context, message);
    else
        qt_message_output(type, context, message);
}
