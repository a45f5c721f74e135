#pragma once

#include "BluetoothError.h"
#include "PlatformCentralDelegate.h"
#include "core/PacketSink.h"
#include "protocol/Bytes.h"

#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <functional>
#include <memory>

namespace ostrel {

struct PlatformCharacteristicInfo {
    QString uuid;   // normalized (BluetoothUuid)
    int properties; // GATT property bits: 0x02 read, 0x04 write without response, 0x10 notify...
};

// The platform's BLE central, reduced to what the wrappers need. Peripherals, services and
// characteristics are named by identifier text and UUIDs so the wrappers above stay
// platform-free. Requests are asynchronous unless they return a value; results go to the
// delegate. Implementations: QtPlatformCentral (real radio) and VirtualCentral (built-in desks).
class PlatformCentral : public QObject {
public:
    enum ManagerState {
        StateUnknown = 0,
        StateResetting = 1,
        StateUnsupported = 2,
        StateUnauthorized = 3,
        StatePoweredOff = 4,
        StatePoweredOn = 5,
    };
    enum PeripheralState {
        PeripheralDisconnected = 0,
        PeripheralConnecting = 1,
        PeripheralConnected = 2,
        PeripheralDisconnecting = 3,
    };
    static constexpr char kLocalNameKey[] = "LocalName";
    static constexpr char kServiceUUIDsKey[] = "ServiceUUIDs";

    using QObject::QObject;

    void setDelegate(PlatformCentralDelegate* delegate) { m_delegate = delegate; }

    virtual int state() const = 0;
    // Beyond the radio's state: a platform stack the application cannot use at all.
    enum StackProblem {
        StackUsable = 0,
        StackNotRunning = 1,
        StackRefusesUser = 2,
    };
    virtual int stackProblem() const { return StackUsable; }

    // Scanning is a request that outlives a powered-off radio: isScanning() stays true from
    // scanForPeripherals until stopScan, and sightings resume when the radio comes back.
    virtual void scanForPeripherals(const QStringList& services, const QVariantMap& options) = 0;
    virtual void stopScan() = 0;
    virtual bool isScanning() const = 0;
    virtual QStringList retrieveConnectedPeripherals(const QStringList& services) const = 0;
    virtual bool isKnownPeripheral(const QString& identifier) const = 0;
    virtual QString peripheralName(const QString& identifier) const = 0;
    virtual int peripheralState(const QString& identifier) const = 0;

    // A connect request stays pending until the peripheral answers or it is cancelled;
    // cancelling a pending request reports nothing.
    virtual void connectPeripheral(const QString& identifier, const QVariantMap& options) = 0;
    virtual void cancelPeripheralConnection(const QString& identifier) = 0;

    virtual void discoverServices(const QString& identifier, const QStringList& uuids) = 0;
    virtual QStringList services(const QString& identifier) const = 0;
    virtual void discoverCharacteristics(const QString& identifier, const QString& service,
                                         const QStringList& uuids) = 0;
    virtual QList<PlatformCharacteristicInfo> characteristics(const QString& identifier,
                                                              const QString& service) const = 0;
    virtual void discoverDescriptors(const GattPath& path) = 0;
    virtual QStringList descriptors(const GattPath& path) const = 0;

    virtual void readValue(const GattPath& path) = 0;
    // Hands the bytes to the radio at once; an error means they did not go out.
    virtual OptionalError writeValueWithoutResponse(const GattPath& path, const Bytes& value) = 0;
    virtual void setNotifyValue(const GattPath& path, bool enabled) = 0;
    virtual void readDescriptor(const GattPath& path, const QString& descriptor) = 0;
    virtual void writeDescriptor(const GattPath& path, const QString& descriptor,
                                 const Bytes& value) = 0;
    virtual void readRSSI(const QString& identifier) = 0;

    // A link's frame channel (LinkChannel), resolved once when it opens. From now on what
    // `path` notifies goes to `sink` as it arrives instead of to the delegate, until the link
    // ends or another sink takes the place of this one.
    virtual void setNotifySink(const GattPath& path, std::shared_ptr<PacketSink> sink) = 0;
    // Writes one frame without response to `path` with nothing left to look up; false when it
    // did not go out (a refusal afterwards may go unreported). Empty when the link has no such
    // characteristic. Valid while the link lasts.
    using ChannelWriter = std::function<bool(const Bytes& frame)>;
    virtual ChannelWriter channelWriter(const GattPath& path) = 0;

protected:
    PlatformCentralDelegate* delegate() const { return m_delegate; }

private:
    PlatformCentralDelegate* m_delegate = nullptr;
};

} // namespace ostrel
