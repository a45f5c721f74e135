#include "NotificationServer.h"

namespace ostrel::test {

namespace {

const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
constexpr uint kDismissedByUser = 2;
constexpr uint kClosedByCall = 3;

} // namespace

NotificationServer::NotificationServer(bool actions)
    : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus,
                                          QStringLiteral("notification-server"))),
      m_actions(actions) {
    m_bus.registerObject(kPath, this,
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
    m_bus.registerService(kService);
}

NotificationServer::~NotificationServer() {
    m_bus.unregisterService(kService);
    m_bus.unregisterObject(kPath);
    QDBusConnection::disconnectFromBus(QStringLiteral("notification-server"));
}

QStringList NotificationServer::GetCapabilities() {
    QStringList capabilities{QStringLiteral("body"), QStringLiteral("sound")};
    if (m_actions)
        capabilities << QStringLiteral("actions");
    return capabilities;
}

uint NotificationServer::Notify(const QString& appName, uint, const QString&,
                                const QString& summary, const QString& body,
                                const QStringList& actions, const QVariantMap& hints, int) {
    m_shown.push_back({m_nextId, appName, summary, body, actions, hints});
    return m_nextId++;
}

void NotificationServer::CloseNotification(uint id) {
    m_closed.push_back(id);
    emit NotificationClosed(id, kClosedByCall);
}

QString NotificationServer::GetServerInformation(QString& vendor, QString& version,
                                                 QString& specVersion) {
    vendor = QStringLiteral("ostrel-tests");
    version = QStringLiteral("1");
    specVersion = QStringLiteral("1.2");
    return QStringLiteral("test-notifications");
}

void NotificationServer::click(uint id, const QString& key) {
    emit ActionInvoked(id, key);
    emit NotificationClosed(id, kDismissedByUser);
}

void NotificationServer::dismiss(uint id) {
    emit NotificationClosed(id, kDismissedByUser);
}

} // namespace ostrel::test
