#pragma once

#include "FramelessCore/FramelessWidget.h"

#include <QDialog>

// The frameless dialog every dialog of the module derives from.
class CommonFramelessDialog : public FramelessWidget<QDialog>
{
    Q_OBJECT

public:
    explicit CommonFramelessDialog(QWidget *parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~CommonFramelessDialog() override;
};
