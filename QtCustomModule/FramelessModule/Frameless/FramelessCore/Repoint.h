#pragma once

namespace Frameless {

// Points `current` at `next`, detaching the object it pointed at before and
// attaching the new one (each only when there is one); nothing happens when
// both are the same. For a pointer that some connection, event filter or
// layout must follow.
template <typename Pointer, typename Object, typename Detach, typename Attach>
void repoint(Pointer &current, Object *next, Detach detach, Attach attach)
{
    if (current == next)
        return;
    if (current)
        detach(current);
    current = next;
    if (current)
        attach(current);
}

} // namespace Frameless
