#pragma once

#include "platform/BusPresenceSource.h"

namespace ostrel {

// The screen locker on the session bus: away while it is active. Desktops offer it under
// org.freedesktop.ScreenSaver, GNOME also under org.gnome.ScreenSaver; both speak alike, at the
// path their name spells.
class ScreenSaverLock : public BusPresenceSource {
    Q_OBJECT
public:
    static constexpr const char* kFreedesktop = "org.freedesktop.ScreenSaver";
    static constexpr const char* kGnome = "org.gnome.ScreenSaver";

    ScreenSaverLock(const QDBusConnection& bus, const char* service, QObject* parent = nullptr);

protected:
    void attach() override;

private slots:
    // Named by text: the bus connects signals by signature.
    void activeChanged(bool active);

private:
    QString path() const;
};

} // namespace ostrel
