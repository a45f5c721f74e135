// A tray as StatusNotifierItem hosts (KDE Plasma, waybar, swaybar) offer it: the
// StatusNotifierWatcher on the session bus, with a host registered, recording the items that
// register. Started in the middle of a test, it is a tray that appears later.
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QStringList>

namespace {

constexpr char kWatcher[] = "org.kde.StatusNotifierWatcher";

class Watcher : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hostRegistered)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)
public:
    QStringList items() const { return m_items; }
    static bool hostRegistered() { return true; }
    static int protocolVersion() { return 0; }

public slots:
    // A service name, or an object path on the caller's connection.
    void RegisterStatusNotifierItem(const QString& service) {
        const QString item = service.startsWith(u'/') ? message().service() + service : service;
        m_items << item;
        emit StatusNotifierItemRegistered(item);
    }
    void RegisterStatusNotifierHost(const QString&) { emit StatusNotifierHostRegistered(); }

signals:
    void StatusNotifierItemRegistered(const QString& service);
    void StatusNotifierItemUnregistered(const QString& service);
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    QStringList m_items;
};

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QDBusConnection bus = QDBusConnection::sessionBus();
    Watcher watcher;
    if (!bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), &watcher,
                            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                                QDBusConnection::ExportAllProperties) ||
        !bus.registerService(QLatin1String(kWatcher)))
        return 1;
    return app.exec();
}

#include "StatusNotifierWatcherStandin.moc"
