#pragma once

#include "platform/PresenceSource.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <functional>

namespace ostrel {

// A source that is a service on the bus. Derived sources subscribe to its signals when made (the
// bus follows the name to whoever owns it) and ask for the state in attach(), called at the
// start and whenever the service comes on the bus. A service that leaves the bus takes what it
// said with it: the user counts as present.
class BusPresenceSource : public PresenceSource {
    Q_OBJECT
public:
    BusPresenceSource(const QDBusConnection& bus, const QString& service, QObject* parent);

protected:
    // Asks the service for the current state.
    virtual void attach() = 0;
    // Called when it left; what was asked of it is gone with it.
    virtual void detach() {}
    // Sends `call` to the service; `done` gets the reply, and is not called when it failed.
    void ask(const QDBusMessage& call, std::function<void(const QDBusMessage&)> done);

    QDBusConnection m_bus;
    const QString m_service;

private:
    QDBusServiceWatcher m_watcher;
};

} // namespace ostrel
