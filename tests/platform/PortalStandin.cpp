// A stand-in for the desktop portal's GlobalShortcuts interface on a private session bus. It
// answers CreateSession and BindShortcuts through Request objects as the portal does, records
// the bindings and closed sessions, and on request emits Activated, as a user pressing a bound
// shortcut would. The tests steer it through com.ostrel.test.PortalStandin at /standin.
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QTimer>

namespace {

constexpr char kDesktop[] = "/org/freedesktop/portal/desktop";
constexpr char kShortcuts[] = "org.freedesktop.portal.GlobalShortcuts";

class Portal : public QDBusVirtualObject {
public:
    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        const QString member = message.member();
        if (message.interface() == u"org.freedesktop.DBus.Properties" && member == u"Get")
            return reply(bus, message, QVariant::fromValue(QDBusVariant(1u)));
        if (member == u"CreateSession") {
            const auto options = qdbus_cast<QVariantMap>(message.arguments().value(0));
            m_session = QStringLiteral("%1/session/%2")
                            .arg(QLatin1String(kDesktop),
                                 options.value(QStringLiteral("session_handle_token")).toString());
            return answer(bus, message, options, {{QStringLiteral("session_handle"), m_session}});
        }
        if (member == u"BindShortcuts") {
            const QList<QVariant> arguments = message.arguments();
            m_bindings.clear();
            const auto shortcuts = arguments.value(1).value<QDBusArgument>();
            shortcuts.beginArray();
            while (!shortcuts.atEnd()) {
                QString id;
                QVariantMap properties;
                shortcuts.beginStructure();
                shortcuts >> id >> properties;
                shortcuts.endStructure();
                m_bindings << id + u' ' +
                                  properties.value(QStringLiteral("preferred_trigger")).toString();
            }
            shortcuts.endArray();
            return answer(bus, message, qdbus_cast<QVariantMap>(arguments.value(3)), {});
        }
        if (message.interface() == u"org.freedesktop.portal.Session" && member == u"Close") {
            m_closed << message.path();
            return reply(bus, message, {});
        }
        return false;
    }

    QString m_session;
    QStringList m_bindings;
    QStringList m_closed;

private:
    static bool reply(const QDBusConnection& bus, const QDBusMessage& message,
                      const QVariant& value) {
        QDBusMessage answer = message.createReply();
        if (value.isValid())
            answer << value;
        return bus.send(answer);
    }

    // Replies with the Request path, then answers on it, as the portal does.
    static bool answer(const QDBusConnection& bus, const QDBusMessage& message,
                       const QVariantMap& options, const QVariantMap& results) {
        QString sender = message.service().mid(1);
        sender.replace(u'.', u'_');
        const QString request = QStringLiteral("%1/request/%2/%3")
                                    .arg(QLatin1String(kDesktop), sender,
                                         options.value(QStringLiteral("handle_token")).toString());
        reply(bus, message, QVariant::fromValue(QDBusObjectPath(request)));
        QTimer::singleShot(0, [bus, request, results] {
            QDBusMessage response = QDBusMessage::createSignal(
                request, QStringLiteral("org.freedesktop.portal.Request"),
                QStringLiteral("Response"));
            response << 0u << results;
            QDBusConnection(bus).send(response);
        });
        return true;
    }
};

class Control : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.ostrel.test.PortalStandin")
public:
    explicit Control(Portal& portal) : m_portal(portal) {}

public slots:
    QStringList Bindings() const { return m_portal.m_bindings; }
    QStringList Closed() const { return m_portal.m_closed; }
    void Activate(const QString& shortcut) {
        QDBusMessage activated = QDBusMessage::createSignal(
            QLatin1String(kDesktop), QLatin1String(kShortcuts), QStringLiteral("Activated"));
        activated << QVariant::fromValue(QDBusObjectPath(m_portal.m_session)) << shortcut
                  << qulonglong(0) << QVariantMap{};
        QDBusConnection::sessionBus().send(activated);
    }

private:
    Portal& m_portal;
};

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QDBusConnection bus = QDBusConnection::sessionBus();
    Portal portal;
    Control control(portal);
    if (!bus.registerVirtualObject(QLatin1String(kDesktop), &portal, QDBusConnection::SubPath) ||
        !bus.registerObject(QStringLiteral("/standin"), &control,
                            QDBusConnection::ExportAllSlots) ||
        !bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop")))
        return 1;
    return app.exec();
}

#include "PortalStandin.moc"
