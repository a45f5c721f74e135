#include "sim/DeskDrive.h"

#include "core/Scheduler.h"
#include "sim/DeskFaults.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ostrel {

namespace {

constexpr int kUpKey = 0x01;
constexpr int kDownKey = 0x02;
constexpr int kMemorySetKey = 0x20;
constexpr std::array<int, DeskMemory::kSlots> kMemoryKeys{0x04, 0x08, 0x10, 0x100};
constexpr int kObstacleBackOff = 20; // tenths of a cm

int memorySlot(int keys) {
    const auto* found = std::find(kMemoryKeys.begin(), kMemoryKeys.end(), keys);
    return found == kMemoryKeys.end() ? -1 : static_cast<int>(found - kMemoryKeys.begin());
}

} // namespace

DeskDrive::DeskDrive(DeskMotor motor, DeskFaults& faults, std::function<void()> motionChanged)
    : m_motor(motor), m_faults(faults), m_motionChanged(std::move(motionChanged)) {}

int DeskDrive::heightTenths() const {
    return static_cast<int>(std::lround(m_motor.height()));
}

void DeskDrive::keys(int keys) {
    m_lastKeysAt = Scheduler::instance().now();
    const int previous = m_heldKeys;
    m_heldKeys = keys;
    if (keys == kNoKey)
        m_latched = false;
    else if (keys != previous)
        keyPressed(keys);
    applyHeldKey();
    finishResetAtBottom();
}

void DeskDrive::releaseIfSilentFor(std::chrono::milliseconds silence) {
    if (m_heldKeys != kNoKey && Scheduler::instance().now() - m_lastKeysAt >= silence)
        keys(kNoKey);
}

// What a key does at the moment it goes down; holding it only matters for Up and Down.
void DeskDrive::keyPressed(int keys) {
    if (m_faults.blocksKeys() || m_faults.resetNeeded())
        return;
    if (m_motor.isAutomatic()) {
        // Any key ends a one-touch move, and only that.
        m_motor.stop();
        m_latched = true;
        return;
    }
    const int slot = memorySlot(keys);
    if (keys == kMemorySetKey) {
        m_memory.enterSetMode();
    } else if (slot >= 0 && m_memory.isSetMode()) {
        m_memory.store(slot, heightTenths());
    } else if (slot >= 0) {
        if (m_memory.height(slot) > 0)
            moveTo(m_memory.height(slot));
    } else {
        m_memory.leaveSetMode();
    }
}

void DeskDrive::applyHeldKey() {
    if (!m_motor.isAutomatic()) {
        int direction = 0;
        if (!m_latched && !m_faults.blocksKeys()) {
            // During a reset only Down works: the desk must be driven to the bottom.
            if (m_heldKeys == kUpKey && !m_faults.resetNeeded())
                direction = 1;
            else if (m_heldKeys == kDownKey)
                direction = -1;
        }
        m_motor.run(direction);
    }
    m_motionChanged();
}

void DeskDrive::moveTo(int heightTenths) {
    if (m_faults.blocksKeys() || m_faults.resetNeeded())
        return;
    m_motor.runTo(heightTenths);
    m_motionChanged();
}

// Holding Down at the bottom completes a reset; the controller forgets its presets with it.
void DeskDrive::finishResetAtBottom() {
    if (m_faults.resetNeeded() && m_heldKeys == kDownKey && heightTenths() <= m_motor.minHeight()) {
        m_faults.setResetNeeded(false);
        m_memory.clear();
    }
}

void DeskDrive::faultChanged(bool raised) {
    if (raised) {
        m_motor.stop();
        m_memory.leaveSetMode();
    }
    applyHeldKey();
}

void DeskDrive::powerOff() {
    m_motor.stop();
    m_memory.leaveSetMode();
}

void DeskDrive::hitObstacle(bool antiCollision) {
    m_motor.update();
    if (!m_motor.isMoving())
        return;
    const int direction = m_motor.direction();
    m_motor.stop();
    m_latched = m_heldKeys != kNoKey;
    if (antiCollision)
        m_motor.runTo(heightTenths() - direction * kObstacleBackOff);
    m_motionChanged();
}

} // namespace ostrel
