#pragma once

#include <QtGlobal>

#ifdef Q_OS_WIN

#include "FramelessHelper.h"

#include <qt_windows.h>

// Frameless windows on Windows: the window keeps its native styles (snap,
// shadow, animations) while WM_NCCALCSIZE makes the whole window client
// area, and WM_NCHITTEST answers the shared hit-test decision with the
// native hit codes.
class WinFramelessHelper : public FramelessHelper
{
    Q_OBJECT

public:
    explicit WinFramelessHelper(QWidget *window);
    ~WinFramelessHelper() override;

    void setResizable(bool resizable) override;
    void setWindowFlags(Qt::WindowFlags flags) override;
    bool handleNativeEvent(const QByteArray &eventType, void *message, long *result, bool *handled) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void updateNativeStyle();
    bool handleSize(MSG *msg, bool *handled);
    bool handleNcCalcSize(MSG *msg, long *result, bool *handled);
    bool handleNcHitTest(MSG *msg, long *result);

    HWND hwnd_ = nullptr;
};

#endif // Q_OS_WIN
