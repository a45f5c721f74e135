#pragma once

#include "core/TimerHandle.h"

#include <QObject>
#include <array>
#include <chrono>

namespace ostrel {

// The controller's four memory slots and its memory-set mode: after the memory-set key the
// display shows "S-", and a memory key within the window stores the height in its slot.
class DeskMemory : public QObject {
public:
    static constexpr int kSlots = 4;
    static constexpr std::chrono::seconds kSetWindow{5};

    explicit DeskMemory(QObject* parent = nullptr) : QObject(parent) {}

    bool isSetMode() const { return m_setMode; }
    // Opens (or reopens) the window in which a memory key stores.
    void enterSetMode();
    void leaveSetMode();
    // Stores and ends the set mode, as the controller does.
    void store(int slot, int heightTenths);
    // Tenths of a cm; 0 = empty.
    int height(int slot) const { return m_heights.at(static_cast<std::size_t>(slot)); }
    void clear() { m_heights.fill(0); }

private:
    bool m_setMode = false;
    TimerHandle m_timeout;
    std::array<int, kSlots> m_heights{};
};

} // namespace ostrel
