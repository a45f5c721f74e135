#pragma once

#include "BluezTypes.h"
#include "StandinGatt.h"
#include "sim/VirtualDesk.h"

#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <chrono>
#include <memory>
#include <optional>

namespace ostrel {

// One virtual desk as BlueZ would show it: a Device1 object under the adapter and, while
// linked, its GATT service, characteristics and client-configuration descriptor. Calls on
// those objects are answered here; what changes on the bus leaves through the signals.
//
// The Device1 object exists from the first sighting by a discovering adapter until the
// desk is forgotten (RemoveDevice), or until it has been out of reach and unlinked for
// BlueZ's temporary-device time-out. A Connect while it is out of reach waits for it, as
// BlueZ's does, until it is back or the attempt times out. The GATT objects and their calls
// are StandinGatt's.
class StandinDesk : public QObject {
    Q_OBJECT
public:
    StandinDesk(VirtualDeskConfig config, const QString& address, const QString& adapterPath,
                QObject* parent = nullptr);
    ~StandinDesk() override;

    QString name() const { return m_desk->name(); }
    QString path() const { return m_path; }
    VirtualDesk& desk() { return *m_desk; }
    bool isExported() const { return m_exported; }
    bool isConnected() const { return m_connected; }
    // True for the device object and everything below it.
    bool owns(const QString& objectPath) const;
    ManagedObjectList objects() const;

    // The desk's advertisement was heard: it appears on the bus, or its RSSI moves.
    void sight();
    // Removes the device object, ending the link (or the attempt) first.
    void forget();
    // The radio went away under the link (or the attempt).
    void dropLink();
    // Closes the acquired sockets while the link stays up on the bus.
    void hangUpSockets() { m_gatt->hangUpSockets(); }
    // WriteValue is refused, and an acquired write socket is no longer read.
    void setWriteError(bool failing) { m_gatt->setWriteError(failing); }
    // Whether links set up from now on offer AcquireNotify and AcquireWrite.
    void setAcquireOffered(bool offered) { m_gatt->setAcquireOffered(offered); }
    void setMtu(quint16 mtu) { m_gatt->setMtu(mtu); }
    // Microseconds from each keypad poll sent on the current link to the host's next write.
    const QList<qint64>& pollRoundTrips() const { return m_gatt->pollRoundTrips(); }
    // The desk model has no setter for its poll period, so a new one takes over at the same
    // height. Presets, faults and reach are not carried over.
    void setPollPeriod(std::chrono::milliseconds period);

    // A Device1, GattCharacteristic1 or GattDescriptor1 call on one of this desk's objects.
    // A call answered later is marked delayed and its answer leaves through lateReply.
    QDBusMessage call(const QDBusMessage& message);

signals:
    void propertiesChanged(const QString& path, const QString& interface,
                           const QVariantMap& changed);
    void interfacesAdded(const QString& path, const ostrel::InterfaceList& interfaces);
    void interfacesRemoved(const QString& path, const QStringList& interfaces);
    void lateReply(const QDBusMessage& reply);

private:
    void adopt(std::unique_ptr<VirtualDesk> desk);
    InterfaceList deviceInterfaces() const;
    QDBusMessage connectLink(const QDBusMessage& message);
    void establishLink();
    void reachChanged(bool advertising);
    void finishConnect(bool linked);
    void tearDown();
    void deviceChanged(const QVariantMap& changed);

    std::unique_ptr<VirtualDesk> m_desk;
    StandinGatt* m_gatt = nullptr;
    QString m_address;
    QString m_adapterPath;
    QString m_path;
    bool m_exported = false;
    bool m_connected = false;
    bool m_servicesResolved = false;
    int m_sightings = 0;
    std::optional<QDBusMessage> m_pendingConnect; // a Connect waiting for the desk
    TimerHandle m_connectTimeout;
    TimerHandle m_expiry; // forgets the desk a while after it left reach
};

} // namespace ostrel
