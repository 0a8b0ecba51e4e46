#pragma once

#include "DriverUiExports.h"

#include <QLibrary>
#include <QString>

// The driver UI module as a RIP host holds it: the shared library loaded at
// run time by its file name from the application directory, its six exports
// resolved, Initialize() called, and one module object. Closing destroys the
// object and calls UnInitialize(), in the required order.
class DriverUiModule
{
public:
    DriverUiModule();
    ~DriverUiModule();
    DriverUiModule(const DriverUiModule &) = delete;
    DriverUiModule &operator=(const DriverUiModule &) = delete;

    // The module's file name on this platform.
    static QString fileName();

    // Loads the module from dir and makes it ready; false with error() set
    // when any step fails.
    bool open(const QString &dir);
    void close();

    IRipEngineDriverUI *ui() const { return ui_; }
    QString error() const { return error_; }
    // "1.0.0" and the kind string, as the module reports them.
    QString version() const;
    QString kind() const;

private:
    QLibrary library_;
    DriverUiExports exports_;
    IRipEngineDriverUI *ui_ = nullptr;
    bool initialized_ = false;
    QString error_;
};
