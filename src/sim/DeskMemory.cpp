#include "sim/DeskMemory.h"

#include "core/Scheduler.h"

namespace ostrel {

void DeskMemory::enterSetMode() {
    m_setMode = true;
    m_timeout.cancel();
    m_timeout = Scheduler::instance().after(kSetWindow, this, [this] { m_setMode = false; });
}

void DeskMemory::leaveSetMode() {
    m_setMode = false;
    m_timeout.cancel();
}

void DeskMemory::store(int slot, int heightTenths) {
    m_heights.at(static_cast<std::size_t>(slot)) = heightTenths;
    leaveSetMode();
}

} // namespace ostrel
