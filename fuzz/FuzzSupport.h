#pragma once

#include <QtGlobal>

// The code under test logs every refusal; at millions of inputs a second
// that output would drown libFuzzer's own, so the fuzz targets drop it.
inline void silenceQtMessages()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}
