#include "platform/BluezAccess.h"

#include <QDBusError>
#include <QDBusMessage>

namespace ostrel {

BluezAccess::Problem BluezAccess::check(const QDBusConnection& systemBus) {
    if (!systemBus.isConnected())
        return NotRunning;
    // The first call every BlueZ client makes; the bus answers it without starting bluetoothd.
    const QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.bluez"), QStringLiteral("/"),
        QStringLiteral("org.freedesktop.DBus.ObjectManager"), QStringLiteral("GetManagedObjects"));
    const QDBusMessage reply = QDBusConnection(systemBus).call(call, QDBus::Block, 5000);
    if (reply.type() != QDBusMessage::ErrorMessage)
        return NoProblem;
    switch (QDBusError(reply).type()) {
    case QDBusError::AccessDenied:
        return Refused;
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
        return NotRunning;
    default:
        return NoProblem; // BlueZ answered; what it said is the scan's business
    }
}

} // namespace ostrel
