// The one place that knows which implementation serves each desktop adapter.
#include "platform/Platform.h"

#include "platform/AutostartEntry.h"
#include "platform/BluezAccess.h"
#include "platform/DesktopPresence.h"
#include "platform/DesktopSecretStore.h"
#include "platform/FreedesktopNotifications.h"
#include "platform/LogindLockedHint.h"
#include "platform/LogindSleep.h"
#include "platform/MutterIdleMonitor.h"
#include "platform/NoGlobalKeys.h"
#include "platform/PortalGlobalKeys.h"
#include "platform/ScreenSaverLock.h"
#include "platform/UnixTerminationSignals.h"
#include "platform/X11GlobalKeys.h"
#include "platform/X11IdleTime.h"

#include <QGuiApplication>
#include <QStandardPaths>

namespace ostrel {

namespace {

// On a Wayland session the X server (Xwayland) sees only what is typed into X11 windows.
bool isWaylandSession() {
    return qEnvironmentVariable("XDG_SESSION_TYPE") == u"wayland" ||
           QGuiApplication::platformName() == u"wayland";
}

} // namespace

// On a Wayland session an X11 grab would see only the keys typed into X11 windows, which looks
// like shortcuts that work now and then: there the portal or none (the shortcut page then offers
// commands to bind in the desktop's settings). X11 grabs serve X11 sessions.
std::unique_ptr<GlobalKeyBackend> GlobalKeyBackend::forDesktop() {
    if (isWaylandSession()) {
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

// Idle time from the X server on X11, from GNOME's compositor on Wayland (others keep it to
// themselves); the lockers and logind wherever they run. Whatever is missing counts as present.
std::unique_ptr<Presence> Presence::forDesktop() {
    auto presence = std::make_unique<DesktopPresence>();
    const QDBusConnection session = QDBusConnection::sessionBus();
    std::unique_ptr<X11IdleTime> x11 = isWaylandSession() ? nullptr : X11IdleTime::create();
    if (x11)
        presence->add(std::move(x11));
    else
        presence->add(std::make_unique<MutterIdleMonitor>(session));
    for (const char* locker : {ScreenSaverLock::kFreedesktop, ScreenSaverLock::kGnome})
        presence->add(std::make_unique<ScreenSaverLock>(session, locker));
    presence->add(std::make_unique<LogindLockedHint>(QDBusConnection::systemBus()));
    return presence;
}

std::unique_ptr<SecretStore> SecretStore::forDesktop() {
    return std::make_unique<DesktopSecretStore>(
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
}

std::unique_ptr<TerminationSignals> TerminationSignals::forDesktop() {
    return std::make_unique<UnixTerminationSignals>();
}

} // namespace ostrel
