#include "CommonFramelessDialog.h"

CommonFramelessDialog::CommonFramelessDialog(QWidget *parent, Qt::WindowFlags flags)
    : FramelessWidget<QDialog>(parent, flags)
{
    setObjectName(QStringLiteral("FramelessDialog"));
    setProperty("FramelessDialog", true);
}

CommonFramelessDialog::~CommonFramelessDialog() = default;
