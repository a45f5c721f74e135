#pragma once

#include <memory>

namespace ostrel {

// Whether the system's Bluetooth stack will serve this application at all, asked when the radio
// looks absent, so that the user can be told what to do.
class BluetoothAccess {
public:
    enum Problem {
        NoProblem = 0,
        NotRunning = 1, // no Bluetooth stack, or no way to reach it
        Refused = 2,    // the stack is there but turns this user away
    };

    virtual ~BluetoothAccess() = default;

    // BlueZ on the system bus.
    static std::unique_ptr<BluetoothAccess> forDesktop();

    virtual Problem problem() const = 0;
};

} // namespace ostrel
