#pragma once

#include "app/TrayPresence.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>

namespace ostrel {

// The desktop's tray: a StatusNotifierItem host registered with the StatusNotifierWatcher on
// the session bus (KDE Plasma, waybar, swaybar, GNOME with its AppIndicator extension) or, on
// X11, an XEmbed tray. It follows the watcher and its hosts as they come and go.
//
// Qt decides once per process whether its tray icons go over D-Bus, the first time anything
// asks it about trays. So this asks the bus itself, and asks Qt (for XEmbed, on X11 only) just
// when no host is there: a host that appears later can then still carry the icon.
class DesktopTrayPresence : public TrayPresence {
    Q_OBJECT
public:
    static constexpr char kWatcherService[] = "org.kde.StatusNotifierWatcher";
    static constexpr char kWatcherPath[] = "/StatusNotifierWatcher";

    explicit DesktopTrayPresence(QDBusConnection bus, QObject* parent = nullptr);

private slots:
    void recheck();

private:
    bool hostRegistered() const;
    static bool xembedTray();

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
};

} // namespace ostrel
