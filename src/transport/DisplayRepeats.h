#pragma once

#include "protocol/Bytes.h"

namespace ostrel {

// A desk at rest mirrors the same display twenty times a second. Handing a frame to the main
// thread wakes it, and the wake-up costs more than all the session then does with the frame,
// while a repeat tells the session nothing new. So while no key is held, a display frame equal
// to the last one passed on is passed on only every kPassEvery-th time. Any change, any other
// frame and every frame while a key is held pass at once: whatever times a movement sees it
// whole.
class DisplayRepeats {
public:
    static constexpr int kPassEvery = 5; // at 20 Hz, a repeat every quarter of a second

    // Whether this frame of the desk's goes on to the session.
    bool passes(const Bytes& bytes, bool keyHeld);

private:
    Bytes m_last; // the last display frame passed on; assigning keeps its capacity
    int m_heldBack = 0;
};

} // namespace ostrel
