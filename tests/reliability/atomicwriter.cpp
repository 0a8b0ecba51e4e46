// Child process of tst_atomicfiles: writes one of the module's files over and
// over, flipping between two known contents, until it is killed.
//
//   atomicwriter prs <prs path> [once <0|1>]  commits the installed driver
//                                            of that .prs file through the
//                                            print-parameter library
//   atomicwriter list [once <0|1>]           renames the first installed
//                                            driver (rewrites the list)
//   atomicwriter ini [once <0|1>]            changes "saveRootDir" in the
//                                            module's settings file
//
// It prints "ready" once everything is set up and the writing begins, and
// "written" after each write; with "once" it writes the given version a
// single time and exits.

#include "AtomicFileVersions.h"

#include "Config/PrinterDriverConfig.h"

#include <IUIPrintParamsHandler.h>

#include <QCoreApplication>
#include <QString>
#include <QTextStream>

#include <cstdio>
#include <list>
#include <string>

namespace {

void quietMessages(QtMsgType, const QMessageLogContext &, const QString &) {}

void announce(const char *line)
{
    std::fputs(line, stdout);
    std::fflush(stdout);
}

void announceReady()
{
    announce("ready\n");
}

void announceWritten()
{
    announce("written\n");
}

// The installed driver whose .prs file is prsPath; empty when none is.
std::string driverOfPrs(IUIPrintParamsHandler &handler, const QString &prsPath)
{
    std::list<printerInfoItem *> drivers;
    handler.GetAllPrinterDriverList(drivers);
    for (const printerInfoItem *item : drivers) {
        if (item && QString::fromLocal8Bit(item->piiPrs) == prsPath)
            return item->piiId;
    }
    return {};
}

int writePrs(const QString &prsPath, int onlyVersion)
{
    IUIPrintParamsHandler *handler = CreateUIPrintParamsHandler();
    if (!handler)
        return 2;
    const std::string id = driverOfPrs(*handler, prsPath);
    if (id.empty() || !handler->SelectPrinterDriverPrs(id.c_str(), 0))
        return 3;
    const printerEnumItem *resolution = handler->GetSelectEnumItem(kEnumKindResolution);
    if (!resolution)
        return 4;
    const std::uint32_t enumId = resolution->enumId;
    if (onlyVersion >= 0) {
        const bool ok = handler->SetEnumItem(enumId, onlyVersion) && handler->CommitPrinterDriverPrs(0);
        DestroyUIPrintParamsHandler(handler);
        return ok ? 0 : 5;
    }
    announceReady();
    for (unsigned i = 0;; ++i) {
        handler->SetEnumItem(enumId, std::int32_t(i % 2));
        handler->CommitPrinterDriverPrs(0);
        announceWritten();
    }
}

int writeList(int onlyVersion)
{
    IUIPrintParamsHandler *handler = CreateUIPrintParamsHandler();
    if (!handler)
        return 2;
    std::list<printerInfoItem *> drivers;
    handler->GetAllPrinterDriverList(drivers);
    if (drivers.empty() || !drivers.front())
        return 3;
    const std::string id = drivers.front()->piiId;
    const std::string names[2] = {AtomicFileVersions::showName(0).toLocal8Bit().toStdString(),
                                  AtomicFileVersions::showName(1).toLocal8Bit().toStdString()};
    if (onlyVersion >= 0) {
        const bool ok = handler->RechristenDriverShowName(id.c_str(), names[onlyVersion].c_str());
        DestroyUIPrintParamsHandler(handler);
        return ok ? 0 : 5;
    }
    announceReady();
    for (unsigned i = 0;; ++i) {
        handler->RechristenDriverShowName(id.c_str(), names[i % 2].c_str());
        announceWritten();
    }
}

int writeIni(int onlyVersion)
{
    const std::shared_ptr<PrinterDriverConfig> config = PrinterDriverConfig::instance();
    const QString roots[2] = {AtomicFileVersions::saveRootDir(0), AtomicFileVersions::saveRootDir(1)};
    if (onlyVersion >= 0) {
        config->setSaveRootDir(roots[onlyVersion]);
        return 0;
    }
    announceReady();
    for (unsigned i = 0;; ++i) {
        config->setSaveRootDir(roots[i % 2]);
        announceWritten();
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    qInstallMessageHandler(quietMessages);
    QStringList args = application.arguments().mid(1);
    int onlyVersion = -1;
    if (args.size() >= 2 && args.at(args.size() - 2) == QLatin1String("once")) {
        onlyVersion = args.last().toInt() % 2;
        args = args.mid(0, args.size() - 2);
    }
    const QString mode = args.value(0);
    if (mode == QLatin1String("prs") && args.size() == 2)
        return writePrs(args.at(1), onlyVersion);
    if (mode == QLatin1String("list") && args.size() == 1)
        return writeList(onlyVersion);
    if (mode == QLatin1String("ini") && args.size() == 1)
        return writeIni(onlyVersion);
    QTextStream(stderr) << "usage: atomicwriter prs <path> | list | ini [once <0|1>]\n";
    return 1;
}
