#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <vector>

namespace ostrel::test {

// A desktop notification server for tests, on a connection of its own to the test's private
// session bus: it records what it is asked to show and close, and clicks buttons on request.
class NotificationServer : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    struct Shown {
        uint id;
        QString appName;
        QString summary;
        QString body;
        QStringList actions;
        QVariantMap hints;
    };

    // Takes the server's name on the bus; `actions` says whether it shows buttons.
    explicit NotificationServer(bool actions = true);
    ~NotificationServer() override;

    const std::vector<Shown>& shown() const { return m_shown; }
    const std::vector<uint>& closed() const { return m_closed; }
    // Clicks the button of that key ("default" for the notification itself) on a notification.
    void click(uint id, const QString& key);
    // The user swiped it away.
    void dismiss(uint id);

public slots:
    QStringList GetCapabilities();
    uint Notify(const QString& appName, uint replacesId, const QString& appIcon,
                const QString& summary, const QString& body, const QStringList& actions,
                const QVariantMap& hints, int expireTimeout);
    void CloseNotification(uint id);
    QString GetServerInformation(QString& vendor, QString& version, QString& specVersion);

signals:
    void ActionInvoked(uint id, const QString& actionKey);
    void NotificationClosed(uint id, uint reason);

private:
    QDBusConnection m_bus;
    bool m_actions;
    uint m_nextId = 1;
    std::vector<Shown> m_shown;
    std::vector<uint> m_closed;
};

} // namespace ostrel::test
