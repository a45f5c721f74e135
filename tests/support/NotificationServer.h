#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <vector>

namespace ostrel::test {

// A desktop notification server on the test's private session bus, on a connection of its own:
// it records what it is asked to show and close, and clicks or dismisses on request, and says
// it is inhibited when told to.
class NotificationServer : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
    // Do not disturb.
    Q_PROPERTY(bool Inhibited MEMBER inhibited)
public:
    struct Shown {
        uint id;
        QString summary, body;
        QStringList actions;
        QVariantMap hints;
    };
    static constexpr uint kDismissed = 2, kClosedByCall = 3;

    explicit NotificationServer(bool actions = true) : m_actions(actions) {
        m_bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this,
                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                                 QDBusConnection::ExportAllProperties);
        m_bus.registerService(QStringLiteral("org.freedesktop.Notifications"));
    }
    ~NotificationServer() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    std::vector<Shown> shown;
    std::vector<uint> closed;
    bool inhibited = false;

    void click(uint id, const QString& key) {
        emit ActionInvoked(id, key);
        emit NotificationClosed(id, kDismissed);
    }
    void dismiss(uint id) { emit NotificationClosed(id, kDismissed); }

public slots:
    QStringList GetCapabilities() {
        return m_actions ? QStringList{"body", "actions"} : QStringList{"body"};
    }
    uint Notify(const QString&, uint, const QString&, const QString& summary, const QString& body,
                const QStringList& actions, const QVariantMap& hints, int) {
        shown.push_back({uint(shown.size() + 1), summary, body, actions, hints});
        return uint(shown.size());
    }
    void CloseNotification(uint id) {
        closed.push_back(id);
        emit NotificationClosed(id, kClosedByCall);
    }

signals:
    void ActionInvoked(uint id, const QString& actionKey);
    void NotificationClosed(uint id, uint reason);

private:
    QDBusConnection m_bus =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("server"));
    bool m_actions;
};

} // namespace ostrel::test
