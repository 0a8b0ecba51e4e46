#include "ModuleLog.h"

namespace {

ModuleLog *current = nullptr;

const char *levelName(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "debug";
    case QtInfoMsg:
        return "info";
    case QtWarningMsg:
        return "warning";
    case QtCriticalMsg:
        return "critical";
    case QtFatalMsg:
        return "fatal";
    }
    return "?";
}

} // namespace

ModuleLog::ModuleLog()
{
    current = this;
    previous_ = qInstallMessageHandler(&ModuleLog::handler);
}

ModuleLog::~ModuleLog()
{
    qInstallMessageHandler(previous_);
    current = nullptr;
}

void ModuleLog::handler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    ModuleLog *log = current;
    if (!log)
        return;
    const QString category = QString::fromLatin1(context.category);
    if (category.startsWith(QLatin1String("bex."))) {
        const QString line =
            QStringLiteral("%1 %2: %3  [%4:%5]")
                .arg(QLatin1String(levelName(type)), category, message, QString::fromUtf8(context.file))
                .arg(context.line);
        // Queued when a line comes from another thread; the panel lives on
        // the GUI thread.
        emit log->lineLogged(line);
    }
    if (log->previous_)
        log->previous_(type, context, message);
}
