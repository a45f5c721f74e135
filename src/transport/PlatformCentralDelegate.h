#pragma once

#include "BluetoothError.h"
#include "protocol/Bytes.h"

#include <QString>
#include <QVariantMap>

namespace ostrel {

// Where one characteristic lives: peripheral identifier, service and characteristic UUIDs.
struct GattPath {
    QString peripheral;
    QString service;
    QString characteristic;
};

// What a platform central reports. Calls arrive on the thread that owns the central (the main
// thread here), never re-entrantly from inside the request that caused them.
class PlatformCentralDelegate {
public:
    virtual ~PlatformCentralDelegate() = default;

    virtual void centralDidUpdateState(int state) = 0;
    // advertisementData carries the advertised local name under PlatformCentral::kLocalNameKey.
    virtual void centralDidDiscoverPeripheral(const QString& identifier,
                                              const QVariantMap& advertisementData, int rssi) = 0;
    virtual void centralDidConnectPeripheral(const QString& identifier) = 0;
    virtual void centralDidFailToConnectPeripheral(const QString& identifier,
                                                   const BluetoothError& error) = 0;
    // Only for links that had been reported connected.
    virtual void centralDidDisconnectPeripheral(const QString& identifier,
                                                const OptionalError& error) = 0;

    virtual void peripheralDidDiscoverServices(const QString& identifier,
                                               const OptionalError& error) = 0;
    virtual void peripheralDidDiscoverCharacteristics(const QString& identifier,
                                                      const QString& service,
                                                      const OptionalError& error) = 0;
    virtual void peripheralDidDiscoverDescriptors(const GattPath& path,
                                                  const OptionalError& error) = 0;
    virtual void peripheralDidReadValue(const GattPath& path, const Bytes& value,
                                        const OptionalError& error) = 0;
    virtual void peripheralDidNotifyValue(const GattPath& path, const Bytes& value) = 0;
    // A write without response reports nothing when it succeeds, but the radio stack may still
    // refuse it afterwards; this is that late refusal of the last write on `path`.
    virtual void peripheralDidFailToWrite(const GattPath& path, const BluetoothError& error) = 0;
    virtual void peripheralDidUpdateNotificationState(const GattPath& path, bool notifying,
                                                      const OptionalError& error) = 0;
    virtual void peripheralDidReadDescriptor(const GattPath& path, const QString& descriptor,
                                             const Bytes& value, const OptionalError& error) = 0;
    virtual void peripheralDidWriteDescriptor(const GattPath& path, const QString& descriptor,
                                              const OptionalError& error) = 0;
    virtual void peripheralDidReadRSSI(const QString& identifier, int rssi,
                                       const OptionalError& error) = 0;
};

} // namespace ostrel
