// libFuzzer target for the print-parameter library's .prs parser: any byte
// string must be refused or give a document that writes out and reads back
// to the same document, never a crash.

#include "FuzzSupport.h"

#include "PrsDocument.h"

#include <QByteArray>
#include <QString>
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
    using bex::printparams::PrsDocument;
    if (size > std::size_t(bex::printparams::kMaxPrsFileSize))
        return 0;
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<int>(size));
    QString error;
    const auto document = PrsDocument::parse(input, &error);
    if (!document) {
        // A refusal always says why.
        if (error.isEmpty())
            std::abort();
        return 0;
    }
    const QByteArray written = document->toJson();
    const auto again = PrsDocument::parse(written, &error);
    if (!again || again->toJson() != written)
        std::abort();
    return 0;
}
