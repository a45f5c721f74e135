#include "app/DesktopTrayPresence.h"

#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QSystemTrayIcon>

namespace ostrel {

namespace {

constexpr int kAnswerTimeoutMs = 1000;

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

} // namespace

DesktopTrayPresence::DesktopTrayPresence(QDBusConnection bus, QObject* parent)
    : TrayPresence(false, parent), m_bus(std::move(bus)),
      m_watcher(text(kWatcherService), m_bus,
                QDBusServiceWatcher::WatchForRegistration |
                    QDBusServiceWatcher::WatchForUnregistration) {
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this,
            &DesktopTrayPresence::recheck);
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this,
            &DesktopTrayPresence::recheck);
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        m_bus.connect(text(kWatcherService), text(kWatcherPath), text(kWatcherService),
                      text(signal), this, SLOT(recheck()));
    recheck();
}

void DesktopTrayPresence::recheck() {
    setAvailable(hostRegistered() || xembedTray());
}

bool DesktopTrayPresence::hostRegistered() const {
    if (!m_bus.isConnected())
        return false;
    QDBusMessage get = QDBusMessage::createMethodCall(
        text(kWatcherService), text(kWatcherPath),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    get << text(kWatcherService) << QStringLiteral("IsStatusNotifierHostRegistered");
    const QDBusReply<QDBusVariant> reply = m_bus.call(get, QDBus::Block, kAnswerTimeoutMs);
    return reply.isValid() && reply.value().variant().toBool();
}

bool DesktopTrayPresence::xembedTray() {
    return QGuiApplication::platformName() == u"xcb" && QSystemTrayIcon::isSystemTrayAvailable();
}

} // namespace ostrel
