#pragma once

#include "platform/SystemSleep.h"

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>

namespace ostrel {

// Sleep and shutdown through logind: a "delay" inhibitor for both, whose descriptor is the
// lock, and the PrepareForSleep / PrepareForShutdown signals.
class LogindSleep : public SystemSleep {
    Q_OBJECT
public:
    static constexpr const char* kService = "org.freedesktop.login1";
    static constexpr const char* kPath = "/org/freedesktop/login1";
    static constexpr const char* kInterface = "org.freedesktop.login1.Manager";

    explicit LogindSleep(const QDBusConnection& bus, QObject* parent = nullptr);

    void holdOff() override;
    void letGo() override;
    bool isHeld() const override { return m_lock.isValid(); }

private slots:
    void prepareForSleep(bool starting);
    void prepareForShutdown(bool starting);

private:
    QDBusConnection m_bus;
    QDBusUnixFileDescriptor m_lock;
    bool m_asking = false;
};

} // namespace ostrel
