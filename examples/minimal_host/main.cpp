// The smallest host of the driver UI module: load it at run time, initialise
// it, create a module object, keep a driver through serialize() and
// unserialize(), and shut down in the required order.
//
//   minimal_host <path of libBexRipEngineDriverUI_RipServer.so or .dll>
//
// Prints the module's kind and version and the restored driver's document.

#include "DriverUiExports.h"
#include "IRipEngineDriverUI.h"

#include <QApplication>
#include <QLibrary>
#include <QTextStream>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    if (argc < 2) {
        err << "usage: minimal_host <module library>\n";
        return 2;
    }

    QLibrary module(QString::fromLocal8Bit(argv[1]));
    if (!module.load()) {
        err << module.errorString() << '\n';
        return 1;
    }
    // Each of the six exports resolved by its name, as the type the header
    // gives it (DriverUiExports.h).
    DriverUiExports exports;
    if (!exports.resolve(module)) {
        err << "not a driver UI module: " << module.fileName() << '\n';
        return 1;
    }

    unsigned major = 0, minor = 0, patch = 0;
    exports.version(&major, &minor, &patch);
    out << "kind " << QString::fromWCharArray(exports.kind()) << ", version " << major << '.' << minor << '.'
        << patch << '\n';

    // Initialize first, and go on only when it succeeded.
    if (!exports.initialize()) {
        err << "the print-parameter library made no handler\n";
        exports.unInitialize();
        return 1;
    }

    IRipEngineDriverUI *ui = exports.create();
    ui->setLanguage(QLocale::English);

    // A job keeps its driver as a small document and rebuilds it later. Here
    // the document stands for one saved with an earlier job.
    const QByteArray saved = R"({"info":{"modeId":3,"prsFilePath":"dtp/bin/1700000000000_4242_0.temp.prs"},)"
                             R"("meta":{"mainVersion":1,"subVersion":0,"type":"BexRipEngine_RipServer"}})";
    const QSharedPointer<IRipEngine::IDriver> driver = ui->unserialize(saved);
    if (driver.isNull()) {
        err << "the saved driver was refused\n";
    } else {
        out << "restored driver of kind " << QString::fromWCharArray(driver->kind()) << '\n';
        out << "serialized again: " << QString::fromUtf8(ui->serialize(driver)) << '\n';
    }

    exports.destroy(ui);
    exports.unInitialize();
    return driver.isNull() ? 1 : 0;
}
