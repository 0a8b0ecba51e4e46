#pragma once

#include "FramelessHelper.h"

#include <QPointer>
#include <QRect>

class QMouseEvent;
class QWindow;

// Frameless windows through Qt's own events: on every platform but Windows,
// and on Windows under a platform plugin without native windows. The window's native
// window delivers every mouse event before any child widget sees it; a press
// on the resize border starts a system resize, a drag on the caption a
// system move, and a double click on the caption maximises or restores.
// Where the window system refuses (offscreen, X without a window manager),
// the window is moved or resized by hand.
class QtFramelessHelper : public FramelessHelper
{
    Q_OBJECT

public:
    explicit QtFramelessHelper(QWidget *window);
    ~QtFramelessHelper() override;

    bool handleNativeEvent(const QByteArray &eventType, void *message, long *result, bool *handled) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

    // Hand the drag over to the window system; false when it refuses.
    virtual bool startSystemMove();
    virtual bool startSystemResize(Qt::Edges edges);

private:
    enum class Drag
    {
        None,
        Pending,      // pressed on the caption, not yet moved far enough
        ManualMove,   // the window system refused: moving by hand
        ManualResize, // the window system refused: resizing by hand
    };

    void trackWindowHandle();
    // The window's position as the window system has it, where Qt may
    // have missed it (X11); false where it cannot be asked.
    bool windowSystemPosition(QPoint *pos) const;
    void followWindowSystemPosition();
    // Moves the window on the window system (X11) without telling Qt, which
    // learns the new place from the window system's answer. Qt hands a
    // system move the pointer's position as it maps it through the geometry
    // it last heard of: the window system must get the press position, so
    // that geometry must stay the one of the press until then.
    bool moveBehindQt(const QPoint &pos);
    bool handleMouseEvent(QMouseEvent *event);
    bool handlePress(QMouseEvent *event);
    bool handleMove(QMouseEvent *event);
    void updateCursor(FramelessGeometry::HitRegion region);
    void releaseAfterSystemDrag(QMouseEvent *event);
    void endDrag();

    QPointer<QWindow> handle_;
    Drag drag_ = Drag::None;
    Qt::Edges edges_;
    QPoint pressGlobalPos_;
    QRect pressGeometry_;
    bool cursorSet_ = false;
};
