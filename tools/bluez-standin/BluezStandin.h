#pragma once

#include "BluezTypes.h"
#include "StandinControl.h"
#include "core/TimerHandle.h"
#include "sim/VirtualDesk.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <chrono>
#include <memory>
#include <vector>

namespace ostrel {

class StandinDesk;

// A stand-in for bluetoothd: the object manager at /, one adapter and a device per virtual
// desk, answered from one virtual object so that objects can come and go as BlueZ's do.
// The control interface (StandinControl) lives on the same connection.
class BluezStandin : public QDBusVirtualObject {
    Q_OBJECT
public:
    static constexpr char kAdapterPath[] = "/org/bluez/hci0";
    static constexpr char kAdapterAddress[] = "00:1A:7D:0C:5E:01";
    static constexpr std::chrono::milliseconds kDefaultAdvertisingInterval{100};

    explicit BluezStandin(const QDBusConnection& connection, QObject* parent = nullptr);
    ~BluezStandin() override;

    // Exports the tree and takes both service names; false when the bus refuses either.
    bool publish();

    bool isPowered() const { return m_powered; }
    void setPowered(bool powered);
    void setRefuseAccess(bool refuse) { m_refuseAccess = refuse; }
    // Whether links set up from now on offer AcquireNotify and AcquireWrite, as bluetoothd does.
    void setAcquireOffered(bool offered);
    bool isDiscovering() const { return m_discovering; }
    // How often a discovering adapter hears each advertising desk.
    void setAdvertisingInterval(std::chrono::milliseconds interval);

    // Null when the name is empty or taken, or the type has no GATT layout (only 1 and 2
    // have one). Desks get consecutive addresses.
    StandinDesk* addDesk(VirtualDeskConfig config);
    bool removeDesk(const QString& name);
    StandinDesk* desk(const QString& name) const;

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    QDBusMessage dispatch(const QDBusMessage& message);
    QDBusMessage adapterCall(const QDBusMessage& message);
    QDBusMessage propertiesCall(const QDBusMessage& message);
    QDBusMessage deskCall(StandinDesk& desk, const QDBusMessage& message);
    StandinDesk* deskOwning(const QString& path) const;
    InterfaceList interfacesAt(const QString& path) const;
    ManagedObjectList managedObjects() const;
    QStringList knownPaths() const;

    QVariantMap adapterProperties() const;
    void adapterChanged(const QVariantMap& changed);
    void setDiscovering(bool discovering);
    // (Re)starts hearing advertisements at the current interval while discovering.
    void listen();
    void hearAdvertisements();

    void sendPropertiesChanged(const QString& path, const QString& interface,
                               const QVariantMap& changed);
    void sendInterfacesAdded(const QString& path, const InterfaceList& interfaces);
    void sendInterfacesRemoved(const QString& path, const QStringList& interfaces);

    QDBusConnection m_connection;
    StandinControl m_control;
    std::vector<std::unique_ptr<StandinDesk>> m_desks;
    bool m_powered = true;
    bool m_refuseAccess = false;
    bool m_acquireOffered = true;
    bool m_discovering = false;
    std::chrono::milliseconds m_advertisingInterval = kDefaultAdvertisingInterval;
    TimerHandle m_advertising;
    int m_nextAddress = 1;
};

} // namespace ostrel
