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
        if (activeCapture) {
            activeCapture->entries_.append({type, QString::fromUtf8(context.category),
                                            QString::fromUtf8(context.file), context.line,
                                            QString::fromUtf8(context.function), message});
            forward = activeCapture->previous_;
        }
    }
    if (forward)
        forward(type, context, message);
    else
        qt_message_output(type, context, message);
}
