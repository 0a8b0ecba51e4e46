#pragma once

#include "FramelessWidget/Common/CommonFramelessDialog.h"

#include <memory>

// A dialog's Designer form, with the dialog's widgets built from it: the
// context help and minimise buttons are taken off the window and the
// frameless title bar goes into the form's title bar layout
// (titleBarLayout_). Made while the dialog's members are initialised, so
// that its constructor starts with the widgets in place.
template <typename Form>
std::unique_ptr<Form> setupDialogForm(CommonFramelessDialog &dialog)
{
    auto form = std::make_unique<Form>();
    form->setupUi(&dialog);

    dialog.setWindowFlags(dialog.windowFlags() &
                          ~(Qt::WindowContextHelpButtonHint | Qt::WindowMinimizeButtonHint));
    dialog.setupFramelessTitleBar(form->titleBarLayout_);
    return form;
}
