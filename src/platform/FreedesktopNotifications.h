#pragma once

#include "platform/DesktopNotifications.h"

#include <QDBusConnection>
#include <map>
#include <optional>

namespace ostrel {

// The reminder's notifications on the desktop, through the notification server on the session
// bus (org.freedesktop.Notifications). Every call is asynchronous, so a slow server never holds
// up the screen, and without a server nothing is shown and nothing fails: the in-app alert
// carries the reminder alone.
class FreedesktopNotifications : public DesktopNotifications {
    Q_OBJECT
public:
    // The freedesktop sound theme's name for a short alert.
    static constexpr char kSoundName[] = "message-new-instant";

    explicit FreedesktopNotifications(const QDBusConnection& bus, QObject* parent = nullptr);

    // Shows nothing while the server is inhibited (do not disturb). Otherwise asks the server
    // whether it shows buttons (until it has answered once), then shows the notification: with
    // its buttons when the server has them, as plain text otherwise.
    void notify(const Request& request) override;
    void removeAllDelivered() override;

    // Whether the server said it shows buttons; nothing until it answered.
    std::optional<bool> hasActions() const { return m_actions; }

private slots:
    // Named by text: the bus connects signals by signature.
    void onActionInvoked(uint id, const QString& key);
    void onNotificationClosed(uint id, uint reason);

private:
    // `generation` is the count of removals when the reminder asked for the notification.
    void present(const Request& request, unsigned generation);
    void send(const Request& request, unsigned generation);
    void close(uint id);

    QDBusConnection m_bus;
    std::optional<bool> m_actions;
    std::map<uint, Request> m_shown;
    // Counts removals, so that a notification still on its way when the reminder was answered
    // is taken away as soon as it shows.
    unsigned m_generation = 0;
};

} // namespace ostrel
