#include "platform/PortalGlobalKeys.h"

#include "platform/PortalShortcut.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>

namespace ostrel {

namespace {

constexpr char kRequestInterface[] = "org.freedesktop.portal.Request";
constexpr char kSessionInterface[] = "org.freedesktop.portal.Session";
constexpr int kVersionTimeoutMs = 2000;

// What the desktop shows the user for each key, in the order of GlobalKeyBackend::kKeys.
constexpr const char* kDescriptions[] = {
    QT_TRANSLATE_NOOP("ostrel::PortalGlobalKeys", "Move the desk up"),
    QT_TRANSLATE_NOOP("ostrel::PortalGlobalKeys", "Move the desk down"),
    QT_TRANSLATE_NOOP("ostrel::PortalGlobalKeys", "Sitting height"),
    QT_TRANSLATE_NOOP("ostrel::PortalGlobalKeys", "Standing height"),
    QT_TRANSLATE_NOOP("ostrel::PortalGlobalKeys", "M1 height"),
    QT_TRANSLATE_NOOP("ostrel::PortalGlobalKeys", "M2 height"),
};
static_assert(std::size(kDescriptions) == GlobalKeyBackend::kKeys.size());

QDBusConnection bus() {
    return QDBusConnection::sessionBus();
}

QDBusMessage portalCall(const char* method) {
    return QDBusMessage::createMethodCall(
        QLatin1String(PortalGlobalKeys::kService), QLatin1String(PortalGlobalKeys::kPath),
        QLatin1String(PortalGlobalKeys::kInterface), QLatin1String(method));
}

} // namespace

std::unique_ptr<PortalGlobalKeys> PortalGlobalKeys::create() {
    if (!bus().isConnected())
        return nullptr;
    QDBusMessage get = QDBusMessage::createMethodCall(
        QLatin1String(kService), QLatin1String(kPath),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    get << QLatin1String(kInterface) << QStringLiteral("version");
    const QDBusReply<QDBusVariant> version = bus().call(get, QDBus::Block, kVersionTimeoutMs);
    if (!version.isValid())
        return nullptr;
    return std::make_unique<PortalGlobalKeys>();
}

PortalGlobalKeys::PortalGlobalKeys() {
    PortalShortcut::registerTypes();
    bus().connect(QLatin1String(kService), QLatin1String(kPath), QLatin1String(kInterface),
                  QStringLiteral("Activated"), this, SLOT(onActivated(QDBusMessage)));
}

PortalGlobalKeys::~PortalGlobalKeys() {
    release();
}

QString PortalGlobalKeys::preferredTrigger(Combination combination, const char* key) {
    const char* modifiers = combination == kCtrlSuper  ? "CTRL+LOGO+"
                            : combination == kAltSuper ? "ALT+LOGO+"
                                                       : "SHIFT+";
    return QLatin1String(modifiers) + QLatin1String(key);
}

QList<int> PortalGlobalKeys::grab(Combination combination) {
    release();
    m_combination = combination;
    m_wanted = true;
    QDBusMessage create = portalCall("CreateSession");
    const QString token = expectResponse(SLOT(sessionCreated(uint, QVariantMap)));
    create << QVariantMap{{QStringLiteral("handle_token"), token},
                          {QStringLiteral("session_handle_token"), token}};
    bus().asyncCall(create);
    return {};
}

void PortalGlobalKeys::release() {
    m_wanted = false;
    if (m_session.isEmpty())
        return;
    bus().asyncCall(QDBusMessage::createMethodCall(QLatin1String(kService), m_session,
                                                   QLatin1String(kSessionInterface),
                                                   QStringLiteral("Close")));
    m_session.clear();
}

QString PortalGlobalKeys::expectResponse(const char* slot) {
    const QString token =
        QStringLiteral("ostrel%1_%2").arg(QCoreApplication::applicationPid()).arg(++m_nextToken);
    QString sender = bus().baseService().mid(1);
    sender.replace(u'.', u'_');
    m_pendingRequest = QStringLiteral("%1/request/%2/%3").arg(QLatin1String(kPath), sender, token);
    bus().connect(QLatin1String(kService), m_pendingRequest, QLatin1String(kRequestInterface),
                  QStringLiteral("Response"), this, slot);
    return token;
}

void PortalGlobalKeys::stopListening(const char* slot) {
    bus().disconnect(QLatin1String(kService), m_pendingRequest, QLatin1String(kRequestInterface),
                     QStringLiteral("Response"), this, slot);
}

void PortalGlobalKeys::sessionCreated(uint response, const QVariantMap& results) {
    stopListening(SLOT(sessionCreated(uint, QVariantMap)));
    if (response != 0)
        return;
    // A string in the portal's documentation, an object path in some implementations.
    const QVariant handle = results.value(QStringLiteral("session_handle"));
    m_session = handle.metaType() == QMetaType::fromType<QDBusObjectPath>()
                    ? handle.value<QDBusObjectPath>().path()
                    : handle.toString();
    if (!m_wanted) { // let go while the portal was still answering
        release();
        return;
    }
    bindShortcuts();
}

void PortalGlobalKeys::bindShortcuts() {
    QList<PortalShortcut> shortcuts;
    for (std::size_t i = 0; i < kKeys.size(); ++i)
        shortcuts.append({QString::number(kKeys[i].id),
                          {{QStringLiteral("description"), tr(kDescriptions[i])},
                           {QStringLiteral("preferred_trigger"),
                            preferredTrigger(m_combination, kKeys[i].trigger)}}});
    QDBusMessage bind = portalCall("BindShortcuts");
    const QString token = expectResponse(SLOT(shortcutsBound(uint, QVariantMap)));
    bind << QVariant::fromValue(QDBusObjectPath(m_session)) << QVariant::fromValue(shortcuts)
         << QString() << QVariantMap{{QStringLiteral("handle_token"), token}};
    bus().asyncCall(bind);
}

void PortalGlobalKeys::shortcutsBound(uint, const QVariantMap&) {
    stopListening(SLOT(shortcutsBound(uint, QVariantMap)));
}

void PortalGlobalKeys::onActivated(const QDBusMessage& message) {
    const QList<QVariant> arguments = message.arguments();
    const QString session = arguments.value(0).value<QDBusObjectPath>().path();
    if (!m_session.isEmpty() && session == m_session)
        emit activated(arguments.value(1).toString().toInt());
}

} // namespace ostrel
