#pragma once

#include "core/TimerHandle.h"

#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <chrono>
#include <functional>

namespace ostrel {

class VirtualLinkTable;

// What a scanning virtual radio hears: while a scan runs on a powered radio, every advertising
// interval each reachable desk that is not connected (a connected one stops advertising, as BLE
// peripherals do) and offers a service the scan asks for is sighted.
class VirtualScan {
public:
    using Sighted =
        std::function<void(const QString& identifier, const QVariantMap& advertisement, int rssi)>;

    // `sighted` runs, while `context` lives, for each sighting.
    VirtualScan(const VirtualLinkTable& links, std::chrono::milliseconds interval, QObject* context,
                Sighted sighted);

    // Services as the scan was asked for them; none means every desk.
    void start(const QStringList& services);
    void stop();
    bool isScanning() const { return m_requested; }
    void setPowered(bool powered);
    void setInterval(std::chrono::milliseconds interval) { m_interval = interval; }
    // A sighting of something else, heard only while scanning.
    void inject(const QString& identifier, const QVariantMap& advertisement, int rssi);

private:
    void update();
    void advertise();

    const VirtualLinkTable& m_links;
    QObject* m_context;
    Sighted m_sighted;
    bool m_powered = true;
    bool m_requested = false;
    QStringList m_services;
    std::chrono::milliseconds m_interval;
    TimerHandle m_timer;
};

} // namespace ostrel
