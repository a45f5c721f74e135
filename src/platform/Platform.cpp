// The one place that knows which implementation serves each desktop adapter.
#include "platform/Platform.h"

#include "platform/AutostartEntry.h"
#include "platform/BluezAccess.h"
#include "platform/FreedesktopNotifications.h"
#include "platform/LogindSleep.h"
#include "platform/NoGlobalKeys.h"
#include "platform/PortalGlobalKeys.h"
#include "platform/SecretFileStore.h"
#include "platform/SecretServiceStore.h"
#include "platform/UnixTerminationSignals.h"
#include "platform/X11GlobalKeys.h"

#include <QGuiApplication>
#include <QStandardPaths>

namespace ostrel {

// On a Wayland session an X11 grab would see only the keys typed into X11 windows, which looks
// like shortcuts that work now and then: there the portal or none (the shortcut page then offers
// commands to bind in the desktop's settings). X11 grabs serve X11 sessions.
std::unique_ptr<GlobalKeyBackend> GlobalKeyBackend::forDesktop() {
    const bool waylandSession = qEnvironmentVariable("XDG_SESSION_TYPE") == u"wayland" ||
                                QGuiApplication::platformName() == u"wayland";
    if (waylandSession) {
        if (auto portal = PortalGlobalKeys::create())
            return portal;
        return std::make_unique<NoGlobalKeys>();
    }
    if (auto x11 = X11GlobalKeys::create())
        return x11;
    return std::make_unique<NoGlobalKeys>();
}

std::unique_ptr<DesktopNotifications> DesktopNotifications::forDesktop() {
    return std::make_unique<FreedesktopNotifications>(QDBusConnection::sessionBus());
}

std::unique_ptr<BluetoothAccess> BluetoothAccess::forDesktop() {
    return std::make_unique<BluezAccess>();
}

std::unique_ptr<Autostart> Autostart::forDesktop() {
    return std::make_unique<AutostartEntry>();
}

std::unique_ptr<SystemSleep> SystemSleep::forDesktop() {
    return std::make_unique<LogindSleep>(QDBusConnection::systemBus());
}

// Chosen once, at the first password asked for: a secret service that starts later is not used
// until the next start, and the password stays where it was put.
std::unique_ptr<SecretStore> SecretStore::forDesktop() {
    if (SecretServiceStore::isRunning())
        return std::make_unique<SecretServiceStore>();
    return std::make_unique<SecretFileStore>(
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
}

std::unique_ptr<TerminationSignals> TerminationSignals::forDesktop() {
    return std::make_unique<UnixTerminationSignals>();
}

} // namespace ostrel
