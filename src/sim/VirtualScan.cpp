#include "sim/VirtualScan.h"

#include "core/Scheduler.h"
#include "sim/VirtualDesk.h"
#include "sim/VirtualGattLayout.h"
#include "sim/VirtualLinkTable.h"
#include "transport/BluetoothUuid.h"

namespace ostrel {

VirtualScan::VirtualScan(const VirtualLinkTable& links, std::chrono::milliseconds interval,
                         QObject* context, Sighted sighted)
    : m_links(links), m_context(context), m_sighted(std::move(sighted)), m_interval(interval) {}

void VirtualScan::start(const QStringList& services) {
    m_requested = true;
    m_services.clear();
    for (const QString& service : services)
        m_services.append(BluetoothUuid::normalized(service));
    update();
}

void VirtualScan::stop() {
    m_requested = false;
    update();
}

void VirtualScan::setPowered(bool powered) {
    m_powered = powered;
    update();
}

void VirtualScan::inject(const QString& identifier, const QVariantMap& advertisement, int rssi) {
    if (m_requested && m_powered)
        m_sighted(identifier, advertisement, rssi);
}

void VirtualScan::update() {
    const bool wanted = m_requested && m_powered;
    if (wanted && m_timer.isNull()) {
        m_timer = Scheduler::instance().every(m_interval, m_context, [this] { advertise(); });
    } else if (!wanted && !m_timer.isNull()) {
        m_timer.cancel();
        m_timer = {};
    }
}

void VirtualScan::advertise() {
    // Sightings may lead to connects and new desks: a snapshot of the identifiers.
    for (const QString& identifier : m_links.identifiers()) {
        const VirtualLink* link = m_links.find(identifier);
        if (!link || !link->desk->isAdvertising() ||
            link->state == PlatformCentral::PeripheralConnected)
            continue;
        const QString service = VirtualGattLayout(*link->desk).service();
        if (!m_services.isEmpty() && !m_services.contains(service))
            continue;
        if (!m_requested)
            return;
        m_sighted(
            identifier,
            QVariantMap{
                {QString::fromLatin1(PlatformCentral::kLocalNameKey), link->desk->name()},
                {QString::fromLatin1(PlatformCentral::kServiceUUIDsKey), QStringList{service}}},
            link->desk->config().rssi);
    }
}

} // namespace ostrel
