#include "platform/FreedesktopNotifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QStringList>
#include <QVariantMap>
#include <utility>

namespace ostrel {

namespace {

const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kInterface = kService;
const QString kDefaultKey = QStringLiteral("default"); // a click on the notification itself
const QString kActionKey = QStringLiteral("action");
const QString kCancelKey = QStringLiteral("cancel");
constexpr int kServerDefaultTimeout = -1;

QDBusMessage call(const QString& method) {
    return QDBusMessage::createMethodCall(kService, kPath, kInterface, method);
}

QStringList actionsFor(const DesktopNotifications::Request& request) {
    QStringList actions{kDefaultKey, request.actionTitle, kActionKey, request.actionTitle};
    if (!request.cancelTitle.isEmpty())
        actions << kCancelKey << request.cancelTitle;
    return actions;
}

} // namespace

FreedesktopNotifications::FreedesktopNotifications(const QDBusConnection& bus, QObject* parent)
    : DesktopNotifications(parent), m_bus(bus) {
    m_bus.connect(kService, kPath, kInterface, QStringLiteral("ActionInvoked"), this,
                  SLOT(onActionInvoked(uint, QString)));
    m_bus.connect(kService, kPath, kInterface, QStringLiteral("NotificationClosed"), this,
                  SLOT(onNotificationClosed(uint, uint)));
}

// The server is asked every time: it may start, stop or be told not to disturb between two
// reminders. One that does not know the property is not inhibited.
void FreedesktopNotifications::notify(const Request& request) {
    QDBusMessage get = QDBusMessage::createMethodCall(
        kService, kPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    get << kInterface << QStringLiteral("Inhibited");
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(get), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, request, generation = m_generation](QDBusPendingCallWatcher* w) {
                w->deleteLater();
                const QDBusPendingReply<QDBusVariant> inhibited = *w;
                // Not disturbing: the in-app alert reminds alone, without a sound.
                if (!inhibited.isValid() || !inhibited.value().variant().toBool())
                    present(request, generation);
            });
}

void FreedesktopNotifications::present(const Request& request, unsigned generation) {
    if (m_actions) {
        send(request, generation);
        return;
    }
    // Asked until a server answers: one may start after the application did.
    auto* watcher =
        new QDBusPendingCallWatcher(m_bus.asyncCall(call(QStringLiteral("GetCapabilities"))), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, request, generation](QDBusPendingCallWatcher* w) {
                w->deleteLater();
                const QDBusPendingReply<QStringList> reply = *w;
                if (reply.isError())
                    return; // no server: the in-app alert alone reminds
                m_actions = reply.value().contains(QStringLiteral("actions"));
                if (generation == m_generation) // not answered in the meantime
                    send(request, generation);
            });
}

void FreedesktopNotifications::send(const Request& request, unsigned generation) {
    QVariantMap hints;
    // Lets the desktop show the application's icon and group its notifications.
    if (!QGuiApplication::desktopFileName().isEmpty())
        hints.insert(QStringLiteral("desktop-entry"), QGuiApplication::desktopFileName());
    if (request.sound)
        hints.insert(QStringLiteral("sound-name"), QString::fromLatin1(kSoundName));
    QDBusMessage message = call(QStringLiteral("Notify"));
    message << QGuiApplication::applicationDisplayName() << uint(0) << QString() << request.title
            << request.body << (*m_actions ? actionsFor(request) : QStringList()) << hints
            << kServerDefaultTimeout;
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, request, generation](QDBusPendingCallWatcher* w) {
                w->deleteLater();
                const QDBusPendingReply<uint> reply = *w;
                if (reply.isError())
                    return;
                // Answered before the server said which notification it showed: take it away.
                if (generation != m_generation)
                    close(reply.value());
                else
                    m_shown.emplace(reply.value(), request);
            });
}

void FreedesktopNotifications::removeAllDelivered() {
    ++m_generation;
    for (const auto& [id, request] : std::exchange(m_shown, {}))
        close(id);
}

void FreedesktopNotifications::close(uint id) {
    QDBusMessage message = call(QStringLiteral("CloseNotification"));
    message << id;
    m_bus.asyncCall(message);
}

void FreedesktopNotifications::onActionInvoked(uint id, const QString& key) {
    const auto shown = m_shown.find(id);
    if (shown == m_shown.end())
        return; // another application's notification
    const Request request = shown->second;
    if (key == kDefaultKey || key == kActionKey)
        emit answered(request.actionTitle);
    else if (key == kCancelKey)
        emit answered(request.cancelTitle);
}

// Closed without a click (expired, dismissed): no answer, as a notification swiped away gives
// none. The in-app alert still waits for one.
void FreedesktopNotifications::onNotificationClosed(uint id, uint) {
    m_shown.erase(id);
}

} // namespace ostrel
