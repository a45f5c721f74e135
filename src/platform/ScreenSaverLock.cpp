#include "platform/ScreenSaverLock.h"

#include <QDBusMessage>

namespace ostrel {

ScreenSaverLock::ScreenSaverLock(const QDBusConnection& bus, const char* service, QObject* parent)
    : BusPresenceSource(bus, QString::fromLatin1(service), parent) {
    m_bus.connect(m_service, path(), m_service, QStringLiteral("ActiveChanged"), this,
                  SLOT(activeChanged(bool)));
}

QString ScreenSaverLock::path() const {
    return u'/' + QString(m_service).replace(u'.', u'/');
}

void ScreenSaverLock::attach() {
    ask(QDBusMessage::createMethodCall(m_service, path(), m_service, QStringLiteral("GetActive")),
        [this](const QDBusMessage& reply) { setAway(reply.arguments().value(0).toBool()); });
}

void ScreenSaverLock::activeChanged(bool active) {
    setAway(active);
}

} // namespace ostrel
