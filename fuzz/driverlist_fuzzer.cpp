// libFuzzer target for the print-parameter library's list of installed
// drivers: any file content must be refused as damaged or give a list whose
// texts fit the handler's records and whose ids are unique; a list that was
// read survives one more driver added and read back.

#include "FuzzSupport.h"

#include "DriverRegistry.h"

#include <IUIPrintParamsHandler.h>

#include <QByteArray>
#include <QFile>
#include <QSet>
#include <QString>
#include <QTemporaryDir>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {
std::unique_ptr<QTemporaryDir> workDir;

bool fits(const QString &text, std::size_t capacity)
{
    return std::size_t(text.toLocal8Bit().size()) < capacity;
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    silenceQtMessages();
    workDir = std::make_unique<QTemporaryDir>();
    return workDir->isValid() ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using bex::printparams::DriverRegistry;
    using bex::printparams::InstalledDriver;
    const QString path = workDir->filePath(QStringLiteral("drivers.json"));
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            std::abort();
        file.write(reinterpret_cast<const char *>(data), qint64(size));
    }

    DriverRegistry registry(path);
    if (!registry.load()) {
        // Refused: nothing is listed.
        if (!registry.drivers().isEmpty())
            std::abort();
        return 0;
    }
    QSet<QString> ids;
    for (const InstalledDriver &driver : registry.drivers()) {
        if (driver.id.isEmpty() || ids.contains(driver.id) || !fits(driver.id, kPrinterIdSize) ||
            !fits(driver.name, kPrinterNameSize) || !fits(driver.showName, kPrinterShowNameSize) ||
            !fits(driver.prsPath, kPrinterPrsPathSize))
            std::abort();
        ids.insert(driver.id);
    }

    InstalledDriver added;
    added.id = registry.newId();
    added.name = QStringLiteral("Fuzz");
    added.showName = QStringLiteral("模糊测试");
    added.prsPath = workDir->filePath(QStringLiteral("fuzz.prs"));
    if (ids.contains(added.id) || !registry.add(added))
        std::abort();
    DriverRegistry reread(path);
    if (!reread.load() || reread.drivers().size() != registry.drivers().size() || !reread.find(added.id))
        std::abort();
    return 0;
}
