#pragma once

#include <IUIPrintParamsHandler.h>

#include <QString>

// Handler records as one line of text, so that tests compare them whole:
//   channels   "C:0.5:0.29 M:0:1"  (name:density:maximum ink, all digits)
//   ICC        "rgb.icc,cmyk.icc,output.icc,intent"
//   ink order  "order=3,1,0,2 off=0,1,0,0"
namespace RecordText {

QString describe(const printerChannelColorInfo &info);
QString describe(const printerIccColorInfo &info);
QString describe(const printerInkOrderInfo &info);

} // namespace RecordText
