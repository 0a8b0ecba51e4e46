// libFuzzer target for the module's settings file ("PrinterDriverConfig.ini")
// as the module reads it: any file content must read without a crash, the
// same way each time it is read, and never reach the folders the module
// derives from the application directory.

#include "FuzzSupport.h"

#include "Config/PrinterDriverConfig.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {
int argc = 1;
char programName[] = "settings_fuzzer";
char *argv[] = {programName, nullptr};

// Every value read from the file, as one text.
QString snapshot(const PrinterDriverConfig &config)
{
    QString text;
    QDebug(&text) << config.saveRootDir() << config.openRootDir() << config.iccSaveRootDir()
                  << config.iccOpenRootDir() << config.defaultDriverId() << config.bShowIccDetail()
                  << config.bShowInkDetail() << config.bShowOtherPropertyDetail()
                  << config.bShowExtraOptionDetail() << config.bPromptDriverPropertyDlg()
                  << config.windowPos() << config.windowSize();
    return text;
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    silenceQtMessages();
    // The settings file lives in the application directory.
    static QCoreApplication application(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::shared_ptr<PrinterDriverConfig> config = PrinterDriverConfig::instance();
    {
        QFile file(config->configFilePath());
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            std::abort();
        file.write(reinterpret_cast<const char *>(data), qint64(size));
    }
    config->readConfig();
    const QString first = snapshot(*config);
    // Reading holds no state of its own: the same file reads the same.
    config->readConfig();
    if (snapshot(*config) != first)
        std::abort();
    // The derived folders never come from the file.
    if (config->dtpBinDir() != QCoreApplication::applicationDirPath() + QStringLiteral("/dtp/bin/"))
        std::abort();
    return 0;
}
