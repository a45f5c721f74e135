#pragma once

// GNOME's idle monitor on a test bus: the test says how long the user has been idle, and the
// watches fire as Mutter's do (an idle watch each time the idle time reaches its interval, a
// user-active watch once, at the next input). It can leave the bus and come back.
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <algorithm>
#include <vector>

namespace ostrel::test {

class IdleMonitorStandin : public QDBusVirtualObject {
public:
    static constexpr quint64 kActive = 0; // the interval of a user-active watch

    explicit IdleMonitorStandin(const QDBusConnection& bus) : m_bus(bus) {
        m_bus.registerVirtualObject(path(), this);
        appear();
    }
    ~IdleMonitorStandin() override {
        vanish();
        m_bus.unregisterObject(path());
    }

    void appear() { m_bus.registerService(service()); }
    // A compositor that leaves forgets its watches.
    void vanish() {
        m_bus.unregisterService(service());
        m_watches.clear();
    }

    void idleFor(quint64 ms) {
        for (const Watch& watch : std::vector(m_watches))
            if (watch.interval != kActive && m_idleMs < watch.interval && watch.interval <= ms)
                fire(watch.id);
        m_idleMs = ms;
    }
    void input() {
        m_idleMs = 0;
        const auto active = [](const Watch& watch) { return watch.interval == kActive; };
        for (const Watch& watch : std::vector(m_watches))
            if (active(watch))
                fire(watch.id);
        std::erase_if(m_watches, active);
    }
    bool watchesForInput() const {
        return std::ranges::any_of(m_watches,
                                   [](const Watch& watch) { return watch.interval == kActive; });
    }
    // The intervals of the idle watches set now.
    std::vector<quint64> idleWatches() const {
        std::vector<quint64> intervals;
        for (const Watch& watch : m_watches)
            if (watch.interval != kActive)
                intervals.push_back(watch.interval);
        return intervals;
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        const QString member = message.member();
        if (member == u"GetIdletime")
            return connection.send(message.createReply(m_idleMs));
        if (member == u"AddIdleWatch" || member == u"AddUserActiveWatch") {
            const quint64 interval = message.arguments().value(0, kActive).toULongLong();
            m_watches.push_back({++m_lastId, interval});
            return connection.send(message.createReply(m_lastId));
        }
        if (member == u"RemoveWatch") {
            const uint id = message.arguments().value(0).toUInt();
            std::erase_if(m_watches, [id](const Watch& watch) { return watch.id == id; });
            return connection.send(message.createReply());
        }
        return false;
    }
    QString introspect(const QString&) const override { return {}; }

private:
    struct Watch {
        uint id;
        quint64 interval;
    };
    static QString service() { return QStringLiteral("org.gnome.Mutter.IdleMonitor"); }
    static QString path() { return QStringLiteral("/org/gnome/Mutter/IdleMonitor/Core"); }

    void fire(uint id) {
        QDBusMessage signal =
            QDBusMessage::createSignal(path(), service(), QStringLiteral("WatchFired"));
        signal << id;
        m_bus.send(signal);
    }

    QDBusConnection m_bus;
    std::vector<Watch> m_watches;
    quint64 m_idleMs = 0;
    uint m_lastId = 0;
};

} // namespace ostrel::test
