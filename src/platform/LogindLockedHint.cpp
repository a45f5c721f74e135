#include "platform/LogindLockedHint.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace ostrel {

namespace {

const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kLockedHint = QStringLiteral("LockedHint");

} // namespace

LogindLockedHint::LogindLockedHint(const QDBusConnection& bus, QObject* parent)
    : BusPresenceSource(bus, QString::fromLatin1(kService), parent) {}

void LogindLockedHint::attach() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        m_service, QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("GetSession"));
    // "auto": the caller's own session, or the user's graphical one when it runs outside any.
    const QString id = qEnvironmentVariable("XDG_SESSION_ID");
    call << (id.isEmpty() ? QStringLiteral("auto") : id);
    ask(call, [this](const QDBusMessage& reply) {
        follow(reply.arguments().value(0).value<QDBusObjectPath>().path());
    });
}

void LogindLockedHint::detach() {
    subscribe(false);
    m_session.clear();
}

void LogindLockedHint::follow(const QString& sessionPath) {
    if (sessionPath.isEmpty())
        return;
    subscribe(false);
    m_session = sessionPath;
    subscribe(true);
    readHint();
}

void LogindLockedHint::subscribe(bool on) {
    if (m_session.isEmpty())
        return;
    const QString signal = QStringLiteral("PropertiesChanged");
    const char* slot = SLOT(propertiesChanged(QString, QVariantMap, QStringList));
    if (on)
        m_bus.connect(m_service, m_session, kProperties, signal, this, slot);
    else
        m_bus.disconnect(m_service, m_session, kProperties, signal, this, slot);
}

void LogindLockedHint::readHint() {
    QDBusMessage get =
        QDBusMessage::createMethodCall(m_service, m_session, kProperties, QStringLiteral("Get"));
    get << QString::fromLatin1(kSessionInterface) << kLockedHint;
    ask(get, [this](const QDBusMessage& reply) {
        setAway(reply.arguments().value(0).value<QDBusVariant>().variant().toBool());
    });
}

void LogindLockedHint::propertiesChanged(const QString& interface, const QVariantMap& changed,
                                         const QStringList& invalidated) {
    if (interface != QLatin1String(kSessionInterface))
        return;
    if (changed.contains(kLockedHint))
        setAway(changed.value(kLockedHint).toBool());
    else if (invalidated.contains(kLockedHint))
        readHint();
}

} // namespace ostrel
