#include "BluezTypes.h"

#include <QDBusMetaType>

namespace ostrel::bluez {

QString fullUuid(const QString& shortUuid) {
    const QString lower = shortUuid.toLower();
    if (lower.size() != 4)
        return lower;
    return QStringLiteral("0000%1-0000-1000-8000-00805f9b34fb").arg(lower);
}

void registerTypes() {
    qDBusRegisterMetaType<InterfaceList>();
    qDBusRegisterMetaType<ManagedObjectList>();
    qDBusRegisterMetaType<QList<qint64>>();
}

QDBusMessage failure(const QDBusMessage& message, const char* name, const QString& text) {
    return message.createErrorReply(QString::fromLatin1(name), text);
}

QDBusMessage notSupported(const QDBusMessage& message) {
    return failure(message, kErrorNotSupported, QStringLiteral("Not supported"));
}

} // namespace ostrel::bluez
