#pragma once

#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

namespace ostrel {

// One shortcut as the GlobalShortcuts portal passes it, an (sa{sv}): its id and its
// properties ("description", "preferred_trigger", "trigger_description").
struct PortalShortcut {
    QString id;
    QVariantMap properties;

    // Makes PortalShortcut and lists of it known to QtDBus; needed once before either is sent
    // or read.
    static void registerTypes();
};

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcut& shortcut);
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcut& shortcut);

} // namespace ostrel

Q_DECLARE_METATYPE(ostrel::PortalShortcut)
