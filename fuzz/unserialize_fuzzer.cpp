// libFuzzer target for the module object's unserialize(): any byte string
// must give either a null driver or one that serializes and reads back to the
// same mode id and path, never a crash.

#include "FuzzSupport.h"

#include "BexRipEngineDriverUI_RipServer_p.h"

#include <QByteArray>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    silenceQtMessages();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    BexRipEngineDriverUI_RipServer module;
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const QSharedPointer<IRipEngine::IDriver> driver = module.unserialize(input);
    if (driver.isNull())
        return 0;

    const QByteArray again = module.serialize(driver);
    const QSharedPointer<IRipEngine::IDriver> restored = module.unserialize(again);
    const auto *first = static_cast<const BexRipEngineDriver_RipServer *>(driver.data());
    const auto *second = static_cast<const BexRipEngineDriver_RipServer *>(restored.data());
    if (!second || first->modeId != second->modeId || first->prsFilePath != second->prsFilePath)
        std::abort();
    return 0;
}
