#pragma once

#include "BluezTypes.h"
#include "protocol/Bytes.h"

#include <QDBusMessage>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <optional>

namespace ostrel {

class PacketSocket;
class VirtualDesk;

// The GATT side of one linked desk as bluetoothd shows it: its service, the notify and write
// characteristics (one carrying both where the desk has one), the client-configuration
// descriptor, and the calls on them. Like bluetoothd it offers the characteristics as sockets
// too (AcquireNotify, AcquireWrite): packets then travel over the socket instead of the bus.
class StandinGatt : public QObject {
    Q_OBJECT
public:
    StandinGatt(VirtualDesk& desk, const QString& devicePath, QObject* parent = nullptr);
    ~StandinGatt() override;

    // The desk was replaced by one of the same model.
    void setDesk(VirtualDesk& desk) { m_desk = &desk; }
    ManagedObjectList objects() const;
    // A GattCharacteristic1 or GattDescriptor1 call on one of these objects.
    QDBusMessage call(const QDBusMessage& message);
    // A notification of the desk, delivered while the host listens.
    void deliver(const Bytes& value);
    // A new link: no poll timed yet.
    void linkStarted();
    // The link ended: the acquired sockets hang up and nothing is listened to any more.
    void linkEnded();

    // Closes the acquired sockets while the link stays up on the bus.
    void hangUpSockets();
    // WriteValue is refused, and an acquired write socket is no longer read.
    void setWriteError(bool failing);
    void setAcquireOffered(bool offered) { m_acquireOffered = offered; }
    void setMtu(quint16 mtu) { m_mtu = mtu; }
    const QList<qint64>& pollRoundTrips() const { return m_pollRoundTrips; }

signals:
    void propertiesChanged(const QString& path, const QString& interface,
                           const QVariantMap& changed);

private:
    struct Characteristic {
        QString path;
        QString uuid;
        QStringList flags;
        bool notifies = false;
        bool writable = false;
        QString descriptorPath;
    };

    void build(const QString& devicePath);
    const Characteristic* characteristicAt(const QString& path) const;
    const Characteristic& notifyCharacteristic() const;
    const Characteristic& writeCharacteristic() const;
    QDBusMessage characteristicCall(const Characteristic& characteristic,
                                    const QDBusMessage& message);
    QDBusMessage descriptorCall(const QDBusMessage& message);
    QDBusMessage writeValue(const Characteristic& characteristic, const QDBusMessage& message);
    QDBusMessage acquire(const Characteristic& characteristic, const QDBusMessage& message);
    QVariantMap acquireProperties(const Characteristic& characteristic) const;
    // Hands one end of a new socket pair to the caller and keeps the other in `kept`.
    QDBusMessage handOutSocket(const QDBusMessage& message, QPointer<PacketSocket>& kept);
    void releaseAcquired(bool notify);
    void hostWrote(const QByteArray& value);
    void setNotifying(bool notifying);
    void characteristicChanged(const Characteristic& characteristic, const QVariantMap& changed);

    VirtualDesk* m_desk;
    QString m_devicePath;
    QString m_servicePath;
    QString m_serviceUuid;
    QList<Characteristic> m_characteristics;
    QByteArray m_value; // last value of the notify characteristic
    bool m_notifying = false;
    bool m_writeError = false;
    bool m_acquireOffered = true;
    quint16 m_mtu;
    QPointer<PacketSocket> m_notifySocket; // while the host holds AcquireNotify's socket
    QPointer<PacketSocket> m_writeSocket;  // while the host holds AcquireWrite's socket
    QElapsedTimer m_clock;
    std::optional<qint64> m_pollSentAt; // ns on m_clock, until answered
    QList<qint64> m_pollRoundTrips;
};

} // namespace ostrel
