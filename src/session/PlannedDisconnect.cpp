#include "session/PlannedDisconnect.h"

#include "session/HeldKeyOwner.h"
#include "transport/RBBluetoothManager.h"

#include <QPointer>

namespace ostrel {

void PlannedDisconnect::start(std::function<void()> gone) {
    m_planned = true;
    m_gone = std::move(gone);
    QPointer<PlannedDisconnect> self(this);
    HeldKeyOwner::instance().releaseThen([self] {
        if (self && self->m_planned)
            self->letLinkGo();
    });
}

void PlannedDisconnect::letLinkGo() {
    m_limit = Scheduler::instance().after(kDisconnectLimit, this, [this] { finish(); });
    RBBluetoothManager::sharedInstance().disconnectAllPeripheral();
}

void PlannedDisconnect::linkGone() {
    if (m_planned)
        finish();
}

void PlannedDisconnect::finish() {
    m_limit.cancel();
    if (auto gone = std::exchange(m_gone, {}))
        gone();
}

void PlannedDisconnect::end() {
    m_planned = false;
    m_limit.cancel();
    m_gone = {};
}

} // namespace ostrel
