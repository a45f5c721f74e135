// A desktop's implementation of global shortcuts, as xdg-desktop-portal finds it through a
// .portal file: org.freedesktop.impl.portal.GlobalShortcuts on the session bus. The real portal
// frontend talks to it on the application's behalf. It grants every shortcut its preferred
// trigger, records the bindings and closed sessions, and on request emits Activated as a user
// pressing a bound shortcut would. Tests steer it through com.ostrel.test.PortalStandin at
// /standin.
#include "platform/PortalShortcut.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QStringList>

namespace {

constexpr char kBusName[] = "org.freedesktop.impl.portal.desktop.ostreltest";
constexpr char kDesktop[] = "/org/freedesktop/portal/desktop";
constexpr char kShortcuts[] = "org.freedesktop.impl.portal.GlobalShortcuts";

} // namespace

namespace {

class Backend : public QDBusVirtualObject {
public:
    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        const QString member = message.member();
        const QList<QVariant> arguments = message.arguments();
        if (message.interface() == u"org.freedesktop.DBus.Properties")
            return properties(message, bus);
        if (member == u"CreateSession") {
            m_session = arguments.value(1).value<QDBusObjectPath>().path();
            return respond(bus, message, {{QStringLiteral("session_handle"), m_session}});
        }
        if (member == u"BindShortcuts") {
            QList<ostrel::PortalShortcut> granted;
            m_bindings.clear();
            const auto shortcuts = qdbus_cast<QList<ostrel::PortalShortcut>>(arguments.value(2));
            for (ostrel::PortalShortcut shortcut : shortcuts) {
                const QString trigger =
                    shortcut.properties.value(QStringLiteral("preferred_trigger")).toString();
                m_bindings << shortcut.id + u' ' + trigger;
                shortcut.properties.insert(QStringLiteral("trigger_description"), trigger);
                granted << shortcut;
            }
            return respond(bus, message,
                           {{QStringLiteral("shortcuts"), QVariant::fromValue(granted)}});
        }
        if (member == u"ListShortcuts")
            return respond(bus, message, {});
        if (message.interface() == u"org.freedesktop.impl.portal.Session" && member == u"Close") {
            m_closed << message.path();
            return bus.send(message.createReply());
        }
        return false;
    }

    QString m_session;
    QStringList m_bindings;
    QStringList m_closed;

private:
    static bool properties(const QDBusMessage& message, const QDBusConnection& bus) {
        const QVariantMap all{{QStringLiteral("version"), 1u}};
        QDBusMessage reply = message.createReply();
        if (message.member() == u"GetAll")
            reply << all;
        else
            reply << QVariant::fromValue(QDBusVariant(all.value(QStringLiteral("version"))));
        return bus.send(reply);
    }

    // Implementations answer with (response, results) directly; the frontend makes the Request.
    static bool respond(const QDBusConnection& bus, const QDBusMessage& message,
                        const QVariantMap& results) {
        QDBusMessage reply = message.createReply();
        reply << 0u << results;
        return bus.send(reply);
    }
};

class Control : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.ostrel.test.PortalStandin")
public:
    explicit Control(Backend& backend) : m_backend(backend) {}

public slots:
    QStringList Bindings() const { return m_backend.m_bindings; }
    QStringList Closed() const { return m_backend.m_closed; }
    void Activate(const QString& shortcut) {
        QDBusMessage activated = QDBusMessage::createSignal(
            QLatin1String(kDesktop), QLatin1String(kShortcuts), QStringLiteral("Activated"));
        activated << QVariant::fromValue(QDBusObjectPath(m_backend.m_session)) << shortcut
                  << qulonglong(0) << QVariantMap{};
        QDBusConnection::sessionBus().send(activated);
    }

private:
    Backend& m_backend;
};

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ostrel::PortalShortcut::registerTypes();
    QDBusConnection bus = QDBusConnection::sessionBus();
    Backend backend;
    Control control(backend);
    if (!bus.registerVirtualObject(QLatin1String(kDesktop), &backend, QDBusConnection::SubPath) ||
        !bus.registerObject(QStringLiteral("/standin"), &control,
                            QDBusConnection::ExportAllSlots) ||
        !bus.registerService(QLatin1String(kBusName)))
        return 1;
    return app.exec();
}

#include "PortalBackendStandin.moc"
