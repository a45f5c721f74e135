#include "platform/MutterIdleMonitor.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <utility>

namespace ostrel {

MutterIdleMonitor::MutterIdleMonitor(const QDBusConnection& bus, QObject* parent)
    : BusPresenceSource(bus, QString::fromLatin1(kService), parent) {
    m_bus.connect(m_service, QLatin1String(kPath), m_service, QStringLiteral("WatchFired"), this,
                  SLOT(watchFired(uint)));
}

QDBusMessage MutterIdleMonitor::call(const char* method) const {
    return QDBusMessage::createMethodCall(m_service, QLatin1String(kPath), m_service,
                                          QString::fromLatin1(method));
}

void MutterIdleMonitor::setIdleLimit(Duration idle) {
    m_limit = idle;
    if (m_idleWatch != 0) // otherwise the watch on its way or the next attach() takes it
        watchIdle();
}

void MutterIdleMonitor::attach() {
    watchIdle();
}

void MutterIdleMonitor::detach() {
    m_idleWatch = m_activeWatch = 0;
    m_askingActive = false;
}

void MutterIdleMonitor::watchIdle() {
    removeWatch(std::exchange(m_idleWatch, 0u));
    const auto limit = quint64(m_limit.count());
    QDBusMessage add = call("AddIdleWatch");
    add << limit;
    ask(add, [this, limit](const QDBusMessage& reply) {
        const uint id = reply.arguments().value(0).toUInt();
        if (limit != quint64(m_limit.count())) { // changed in the meantime
            removeWatch(id);
            watchIdle();
            return;
        }
        m_idleWatch = id;
        claimEarlyFire(id);
    });
    // The watch fires when the limit is reached, not when it was passed before the watch began.
    ask(call("GetIdletime"), [this, limit](const QDBusMessage& reply) {
        if (reply.arguments().value(0).toULongLong() >= limit)
            goneIdle();
        else if (m_activeWatch == 0 && !m_askingActive)
            setAway(false);
    });
}

void MutterIdleMonitor::goneIdle() {
    setAway(true);
    if (m_activeWatch != 0 || m_askingActive)
        return;
    m_askingActive = true;
    ask(call("AddUserActiveWatch"), [this](const QDBusMessage& reply) {
        m_askingActive = false;
        m_activeWatch = reply.arguments().value(0).toUInt();
        if (claimEarlyFire(m_activeWatch))
            return;
        // An input before the watch began fires nothing: the idle time tells.
        ask(call("GetIdletime"), [this](const QDBusMessage& idle) {
            if (m_activeWatch != 0 &&
                idle.arguments().value(0).toULongLong() < quint64(m_limit.count())) {
                removeWatch(std::exchange(m_activeWatch, 0u));
                setAway(false);
            }
        });
    });
}

void MutterIdleMonitor::watchFired(uint id) {
    if (id == 0)
        return;
    if (id == m_idleWatch) {
        goneIdle();
    } else if (id == m_activeWatch) { // fires once and is gone
        m_activeWatch = 0;
        setAway(false);
    } else {
        m_earlyFire = id; // its watch's number may still be on its way
    }
}

bool MutterIdleMonitor::claimEarlyFire(uint id) {
    if (id == 0 || m_earlyFire != id)
        return false;
    m_earlyFire = 0;
    watchFired(id);
    return true;
}

void MutterIdleMonitor::removeWatch(uint id) {
    if (id == 0)
        return;
    QDBusMessage remove = call("RemoveWatch");
    remove << id;
    m_bus.asyncCall(remove);
}

} // namespace ostrel
