#pragma once

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QMap>
#include <QString>
#include <QVariantMap>

namespace ostrel {

// The object manager's shapes: a{sa{sv}} for one object, a{oa{sa{sv}}} for the tree.
using InterfaceList = QMap<QString, QVariantMap>;
using ManagedObjectList = QMap<QDBusObjectPath, InterfaceList>;

namespace bluez {

inline constexpr char kService[] = "org.bluez";
inline constexpr char kAdapterInterface[] = "org.bluez.Adapter1";
inline constexpr char kDeviceInterface[] = "org.bluez.Device1";
inline constexpr char kServiceInterface[] = "org.bluez.GattService1";
inline constexpr char kCharacteristicInterface[] = "org.bluez.GattCharacteristic1";
inline constexpr char kDescriptorInterface[] = "org.bluez.GattDescriptor1";
inline constexpr char kPropertiesInterface[] = "org.freedesktop.DBus.Properties";
inline constexpr char kObjectManagerInterface[] = "org.freedesktop.DBus.ObjectManager";
inline constexpr char kIntrospectableInterface[] = "org.freedesktop.DBus.Introspectable";

inline constexpr char kErrorFailed[] = "org.bluez.Error.Failed";
inline constexpr char kErrorNotReady[] = "org.bluez.Error.NotReady";
inline constexpr char kErrorNotConnected[] = "org.bluez.Error.NotConnected";
inline constexpr char kErrorDoesNotExist[] = "org.bluez.Error.DoesNotExist";
inline constexpr char kErrorInvalidArguments[] = "org.bluez.Error.InvalidArguments";
inline constexpr char kErrorNotSupported[] = "org.bluez.Error.NotSupported";
inline constexpr char kErrorNotPermitted[] = "org.bluez.Error.NotPermitted";
inline constexpr char kErrorInProgress[] = "org.bluez.Error.InProgress";

// "180d" -> "0000180d-0000-1000-8000-00805f9b34fb"; longer forms are only lower-cased.
QString fullUuid(const QString& shortUuid);

// An error answer to `message`, as bluetoothd gives it.
QDBusMessage failure(const QDBusMessage& message, const char* name, const QString& text);
QDBusMessage notSupported(const QDBusMessage& message);

// Registers the container types above with QtDBus; safe to call more than once.
void registerTypes();

} // namespace bluez
} // namespace ostrel

Q_DECLARE_METATYPE(ostrel::InterfaceList)
Q_DECLARE_METATYPE(ostrel::ManagedObjectList)
