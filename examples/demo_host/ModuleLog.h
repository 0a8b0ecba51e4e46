#pragma once

#include <QObject>
#include <QString>

// Collects the module's log lines (categories below "bex.") for the demo's
// log panel while it is alive. Every line still goes on to the handler that
// was installed before, so the terminal keeps it too.
class ModuleLog : public QObject
{
    Q_OBJECT

public:
    ModuleLog();
    ~ModuleLog() override;
    ModuleLog(const ModuleLog &) = delete;
    ModuleLog &operator=(const ModuleLog &) = delete;

signals:
    // One line as the panel shows it: level, category, text and where it was
    // written.
    void lineLogged(const QString &line);

private:
    static void handler(QtMsgType type, const QMessageLogContext &context, const QString &message);

    QtMessageHandler previous_ = nullptr;
};
