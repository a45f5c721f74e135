#include "SingleInstance.h"

#include "AppConfig.h"
#include "DeskBusAdaptor.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace ostrel {

SingleInstance::SingleInstance(QDBusConnection connection, QObject* parent)
    : QObject(parent), m_connection(std::move(connection)) {}

SingleInstance::~SingleInstance() {
    if (!m_owner)
        return;
    m_connection.unregisterObject(QLatin1String(config::kDeskPath));
    m_connection.unregisterObject(QLatin1String(config::kDBusPath));
    m_connection.unregisterService(QLatin1String(config::kDBusService));
}

bool SingleInstance::claim() {
    if (!m_connection.isConnected())
        return true;
    QDBusConnectionInterface* bus = m_connection.interface();
    const auto reply = bus->registerService(QLatin1String(config::kDBusService),
                                            QDBusConnectionInterface::DontQueueService,
                                            QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid() || reply.value() != QDBusConnectionInterface::ServiceRegistered)
        return false;
    m_owner = m_connection.registerObject(QLatin1String(config::kDBusPath), this,
                                          QDBusConnection::ExportScriptableSlots);
    exportDesk();
    return true;
}

bool SingleInstance::activateRunning() {
    const QDBusMessage call = QDBusMessage::createMethodCall(
        QLatin1String(config::kDBusService), QLatin1String(config::kDBusPath),
        QLatin1String(config::kDBusInterface), QStringLiteral("Activate"));
    // BlockWithGui keeps events flowing, so the answer may come from this very process.
    return m_connection.call(call, QDBus::BlockWithGui).type() == QDBusMessage::ReplyMessage;
}

void SingleInstance::exportDesk() {
    auto* desk = new QObject(this);
    new DeskBusAdaptor(m_connection, desk);
    m_connection.registerObject(QLatin1String(config::kDeskPath), desk,
                                QDBusConnection::ExportAdaptors);
}

void SingleInstance::Activate() {
    emit activated();
}

} // namespace ostrel
