#pragma once

#include "sim/DeskMemory.h"
#include "sim/DeskMotor.h"

#include <chrono>
#include <functional>

namespace ostrel {

class DeskFaults;

// What the controller does with keys and move commands: Up and Down drive the columns while
// held, a memory key recalls its preset (or stores the height in memory-set mode), any key ends
// a one-touch move, and a lost host lets go of a held key. Faults block keys; during a reset
// only Down works, and holding it to the bottom completes the reset. Kept apart from the desk's
// frames and link so that the motion rules read on their own.
class DeskDrive {
public:
    // Key bitmap of a key frame: first byte | second byte << 8.
    static constexpr int kNoKey = 0;

    // `motionChanged` runs after anything that may start or stop the columns.
    DeskDrive(DeskMotor motor, DeskFaults& faults, std::function<void()> motionChanged);

    // The keys of a key frame (kNoKey when all are released).
    void keys(int keys);
    // Lets go of a held key once no key frame has come for `silence`: a lost or frozen host
    // must not keep the desk moving.
    void releaseIfSilentFor(std::chrono::milliseconds silence);
    // A one-touch move to a height, tenths of a cm.
    void moveTo(int heightTenths);
    // A fault came or went; keys held across it take effect again once it clears.
    void faultChanged(bool raised);
    void powerOff();
    // Hit while moving: stops, and with anti-collision on backs off to free whatever it hit.
    void hitObstacle(bool antiCollision);

    void update() { m_motor.update(); }
    const DeskMotor& motor() const { return m_motor; }
    int heightTenths() const;
    bool isMemorySetMode() const { return m_memory.isSetMode(); }

private:
    void keyPressed(int keys);
    void applyHeldKey();
    void finishResetAtBottom();

    DeskMotor m_motor;
    DeskFaults& m_faults;
    std::function<void()> m_motionChanged;
    DeskMemory m_memory;
    int m_heldKeys = kNoKey; // key bitmap of the last key frame
    std::chrono::milliseconds m_lastKeysAt{};
    bool m_latched = false; // a press was consumed; held keys count again after a release
};

} // namespace ostrel
