#include "platform/BusPresenceSource.h"

#include <QDBusPendingCallWatcher>

namespace ostrel {

BusPresenceSource::BusPresenceSource(const QDBusConnection& bus, const QString& service,
                                     QObject* parent)
    : PresenceSource(parent), m_bus(bus), m_service(service),
      m_watcher(service, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString& oldOwner, const QString& newOwner) {
                if (!oldOwner.isEmpty()) {
                    detach();
                    setAway(false);
                }
                if (!newOwner.isEmpty())
                    attach();
            });
    // Asked once the derived source is complete; without the service the questions fail and
    // the user stays present.
    QMetaObject::invokeMethod(this, &BusPresenceSource::attach, Qt::QueuedConnection);
}

void BusPresenceSource::ask(const QDBusMessage& call,
                            std::function<void(const QDBusMessage&)> done) {
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [done = std::move(done)](QDBusPendingCallWatcher* w) {
                w->deleteLater();
                if (!w->isError())
                    done(w->reply());
            });
}

} // namespace ostrel
