#pragma once

#include "BluetoothError.h"
#include "PlatformCentral.h"

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <functional>
#include <vector>

class QDBusMessage;

namespace ostrel {

class PacketReader;
class PacketSender;
class PacketSocket;

// One link's frames straight through BlueZ, past QtBluetooth's per-write property look-ups and
// reply waits. The characteristics are found in BlueZ's object tree under the device; where
// BlueZ offers them as sockets (NotifyAcquired, WriteAcquired), frames travel over those with
// no bus message at all, else writes are WriteValue calls on the known object path that never
// wait for each other. Notifications over a socket are read on a thread of their own, where a
// channel's sink answers polls; a hang-up on an acquired socket means the link is gone.
class BluezDataPath : public QObject {
    Q_OBJECT
public:
    // `address` is the device's Address as BlueZ shows it, also the link's identifier.
    BluezDataPath(const QDBusConnection& bus, const QString& address, QObject* parent = nullptr);
    ~BluezDataPath() override;

    // Finds the link's characteristics and acquires the write sockets, once; `done` runs from
    // the event loop when that is over, whether BlueZ showed them or not.
    void resolve(std::function<void()> done);
    // Whether writes to `characteristic` (normalized UUID) go through here.
    bool handlesWrite(const QString& characteristic) const;
    // An error when the bytes did not go out; a later refusal arrives as writeRefused.
    OptionalError write(const QString& characteristic, const QByteArray& value);
    // A link channel's writer, for any thread: the acquired socket while the link lasts, else
    // WriteValue on the known object path without waiting for the reply. Empty when
    // `characteristic` does not go through here.
    PlatformCentral::ChannelWriter channelWriter(const QString& characteristic) const;
    // A link channel's sink: what `characteristic` notifies over its socket goes there, on the
    // socket's reading thread, rather than to `notified`.
    void setNotifySink(const QString& characteristic, std::shared_ptr<PacketSink> sink);
    // False when BlueZ offers no socket for these notifications: the caller's own path takes
    // them. Otherwise the outcome arrives as notifyingChanged, or notifyRefused when BlueZ
    // would not hand the socket out after all.
    bool setNotifying(const QString& characteristic, bool enabled);

signals:
    void notified(const ostrel::GattPath& path, const QByteArray& value);
    void notifyingChanged(const ostrel::GattPath& path, bool notifying);
    void notifyRefused(const ostrel::GattPath& path);
    void writeRefused(const ostrel::GattPath& path, const QString& message);
    void linkLost();

private:
    struct Route {
        QString objectPath;
        GattPath gatt;
        bool notifyOffered = false;
        bool writeOffered = false;
        bool notifyWanted = false;
        bool notifyAcquiring = false;
        QPointer<PacketReader> notifySocket;
        QPointer<PacketSocket> writeSocket;   // watched for a hang-up
        std::shared_ptr<PacketSender> writer; // every write through the socket goes here
        std::shared_ptr<PacketSink> sink;
    };
    enum class Resolution { Pending, Running, Done };

    void objectsArrived(const QDBusMessage& reply);
    void acquire(Route& route, bool notify);
    void acquired(const QString& characteristic, bool notify, const QDBusMessage& reply);
    void adoptWriteSocket(Route& route, int descriptor);
    void adoptNotifySocket(Route& route, int descriptor);
    void finishResolving();
    void callWithReply(const QDBusMessage& call, std::function<void(const QDBusMessage&)> reply);

    QDBusConnection m_bus;
    QString m_address;
    QHash<QString, Route> m_routes; // by normalized characteristic UUID
    Resolution m_resolution = Resolution::Pending;
    int m_acquiring = 0; // write sockets asked for while resolving
    std::vector<std::function<void()>> m_waiting;
};

} // namespace ostrel
