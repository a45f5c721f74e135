// What a desktop tells about its user, on the session bus, for the tests and for trying the
// application's presence without that desktop: GNOME's idle monitor (org.gnome.Mutter.IdleMonitor,
// its watches firing as Mutter's do) and the screen lockers org.freedesktop.ScreenSaver and
// org.gnome.ScreenSaver. Driven through com.ostrel.PresenceStandin at /com/ostrel/PresenceStandin:
//   Idle(t ms)              the user has been idle this long: idle watches reached now fire
//   Input()                 the user touched something: user-active watches fire, once
//   Lock(s locker, b on)    a locker becomes active or inactive
//   SetOnBus(s name, b on)  a service leaves the bus or comes back (Mutter forgets its watches)
// e.g. gdbus call --session --dest com.ostrel.PresenceStandin --object-path
//          /com/ostrel/PresenceStandin --method x.Lock org.gnome.ScreenSaver true
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <algorithm>
#include <map>
#include <vector>

namespace {

const QString kMutter = QStringLiteral("org.gnome.Mutter.IdleMonitor");
const QString kMutterPath = QStringLiteral("/org/gnome/Mutter/IdleMonitor/Core");
const QString kControl = QStringLiteral("com.ostrel.PresenceStandin");
const QString kControlPath = QStringLiteral("/com/ostrel/PresenceStandin");
const QStringList kLockers{QStringLiteral("org.freedesktop.ScreenSaver"),
                           QStringLiteral("org.gnome.ScreenSaver")};
constexpr quint64 kActiveWatch = 0; // the interval of a user-active watch

// Each service at the path its name spells.
QString pathOf(const QString& service) {
    return u'/' + QString(service).replace(u'.', u'/');
}

class Desktop : public QDBusVirtualObject {
public:
    explicit Desktop(QDBusConnection bus) : m_bus(std::move(bus)) {
        for (const QString& service : kLockers + QStringList{kMutter, kControl}) {
            m_bus.registerVirtualObject(service == kMutter ? kMutterPath : pathOf(service), this);
            m_bus.registerService(service);
        }
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        QVariantList reply;
        const bool known = message.path() == kMutterPath    ? mutter(message, reply)
                           : message.path() == kControlPath ? control(message)
                                                            : locker(message, reply);
        return known && connection.send(message.createReply(reply));
    }
    QString introspect(const QString&) const override { return {}; }

private:
    struct Watch {
        uint id;
        quint64 interval;
    };

    bool mutter(const QDBusMessage& message, QVariantList& reply) {
        const QString member = message.member();
        if (member == u"GetIdletime") {
            reply << m_idleMs;
        } else if (member == u"AddIdleWatch" || member == u"AddUserActiveWatch") {
            m_watches.push_back(
                {++m_lastId, message.arguments().value(0, kActiveWatch).toULongLong()});
            reply << m_lastId;
        } else if (member == u"RemoveWatch") {
            const uint id = message.arguments().value(0).toUInt();
            std::erase_if(m_watches, [id](const Watch& watch) { return watch.id == id; });
        } else {
            return false;
        }
        return true;
    }

    bool locker(const QDBusMessage& message, QVariantList& reply) {
        if (message.member() != u"GetActive")
            return false;
        reply << m_active[message.interface()];
        return true;
    }

    bool control(const QDBusMessage& message) {
        const QString member = message.member();
        const QVariantList arguments = message.arguments();
        if (member == u"Idle")
            idleFor(arguments.value(0).toULongLong());
        else if (member == u"Input")
            input();
        else if (member == u"Lock")
            lock(arguments.value(0).toString(), arguments.value(1).toBool());
        else if (member == u"SetOnBus")
            setOnBus(arguments.value(0).toString(), arguments.value(1).toBool());
        else
            return false;
        return true;
    }

    void idleFor(quint64 ms) {
        for (const Watch& watch : std::vector(m_watches))
            if (watch.interval != kActiveWatch && m_idleMs < watch.interval && watch.interval <= ms)
                fire(watch.id);
        m_idleMs = ms;
    }

    void input() {
        m_idleMs = 0;
        const auto active = [](const Watch& watch) { return watch.interval == kActiveWatch; };
        for (const Watch& watch : m_watches)
            if (active(watch))
                fire(watch.id);
        std::erase_if(m_watches, active);
    }

    void fire(uint id) {
        QDBusMessage signal =
            QDBusMessage::createSignal(kMutterPath, kMutter, QStringLiteral("WatchFired"));
        signal << id;
        m_bus.send(signal);
    }

    void lock(const QString& service, bool active) {
        m_active[service] = active;
        QDBusMessage signal =
            QDBusMessage::createSignal(pathOf(service), service, QStringLiteral("ActiveChanged"));
        signal << active;
        m_bus.send(signal);
    }

    void setOnBus(const QString& service, bool on) {
        if (on) {
            m_bus.registerService(service);
            return;
        }
        m_bus.unregisterService(service);
        if (service == kMutter)
            m_watches.clear();
    }

    QDBusConnection m_bus;
    std::vector<Watch> m_watches;
    std::map<QString, bool> m_active;
    quint64 m_idleMs = 0;
    uint m_lastId = 0;
};

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    Desktop desktop(QDBusConnection::sessionBus());
    return QCoreApplication::exec();
}
