#include "platform/LogindSleep.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace ostrel {

LogindSleep::LogindSleep(const QDBusConnection& bus, QObject* parent)
    : SystemSleep(parent), m_bus(bus) {
    const auto service = QLatin1String(kService);
    const auto path = QLatin1String(kPath);
    const auto interface = QLatin1String(kInterface);
    m_bus.connect(service, path, interface, QStringLiteral("PrepareForSleep"), this,
                  SLOT(prepareForSleep(bool)));
    m_bus.connect(service, path, interface, QStringLiteral("PrepareForShutdown"), this,
                  SLOT(prepareForShutdown(bool)));
}

void LogindSleep::holdOff() {
    if (isHeld() || m_asking || !m_bus.isConnected())
        return;
    QDBusMessage call =
        QDBusMessage::createMethodCall(QLatin1String(kService), QLatin1String(kPath),
                                       QLatin1String(kInterface), QStringLiteral("Inhibit"));
    call << QStringLiteral("sleep:shutdown") << QStringLiteral("Ostrel Motion")
         << QStringLiteral("Letting go of the desk") << QStringLiteral("delay");
    m_asking = true;
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        m_asking = false;
        const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *watcher;
        // Refused or absent: the desk is let go as before, only without the system waiting.
        if (reply.isValid())
            m_lock = reply.value();
        watcher->deleteLater();
    });
}

void LogindSleep::letGo() {
    // The descriptor is shared with the reply that brought it; the watcher is gone by now.
    m_lock = QDBusUnixFileDescriptor();
}

void LogindSleep::prepareForSleep(bool starting) {
    if (starting)
        emit coming();
    else
        emit resumed();
}

void LogindSleep::prepareForShutdown(bool starting) {
    if (starting)
        emit coming();
}

} // namespace ostrel
