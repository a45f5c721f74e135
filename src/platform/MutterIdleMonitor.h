#pragma once

#include "platform/BusPresenceSource.h"

namespace ostrel {

// GNOME's idle time on Wayland, where no client sees the others' input: Mutter's IdleMonitor
// fires one watch when the user has been idle for the limit, and a one-shot watch at the next
// input, which is the way back.
class MutterIdleMonitor : public BusPresenceSource {
    Q_OBJECT
public:
    static constexpr const char* kService = "org.gnome.Mutter.IdleMonitor";
    static constexpr const char* kPath = "/org/gnome/Mutter/IdleMonitor/Core";

    explicit MutterIdleMonitor(const QDBusConnection& bus, QObject* parent = nullptr);

    void setIdleLimit(Duration idle) override;

protected:
    void attach() override;
    void detach() override;

private slots:
    // Named by text: the bus connects signals by signature.
    void watchFired(uint id);

private:
    QDBusMessage call(const char* method) const;
    // Sets the idle watch for the current limit, and looks whether the user is idle already.
    void watchIdle();
    void goneIdle();
    void removeWatch(uint id);
    // A watch may fire before the reply that numbers it has been read; handles that fire.
    bool claimEarlyFire(uint id);

    Duration m_limit{0};
    uint m_idleWatch = 0;
    uint m_activeWatch = 0;
    bool m_askingActive = false;
    uint m_earlyFire = 0;
};

} // namespace ostrel
