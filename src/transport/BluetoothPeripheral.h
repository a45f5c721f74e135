#pragma once

#include "BluetoothError.h"
#include "BluetoothService.h"
#include "core/TimerHandle.h"

#include <QList>
#include <QPointer>
#include <QString>
#include <QVariantMap>
#include <deque>
#include <functional>
#include <memory>

namespace ostrel {

class BluetoothCenterManager;
class PlatformCentral;

// One discovered desk. Holds the connect request (time-out, options, callback) so a lost link
// can be retried as it was made, and the services found on it.
class BluetoothPeripheral : public std::enable_shared_from_this<BluetoothPeripheral> {
public:
    using PeripheralPtr = std::shared_ptr<BluetoothPeripheral>;
    enum ConnectKind { KindConnected = 0, KindFailed = 1, KindTimedOut = 2, KindDisconnected = 3 };
    using ConnectCallback =
        std::function<void(const PeripheralPtr& peripheral, const OptionalError& error, int kind)>;
    using ServicesCallback =
        std::function<void(const QList<ServicePtr>& services, const OptionalError& error)>;
    using RSSICallback = std::function<void(int rssi, const OptionalError& error)>;

    static constexpr int kConnectTimeoutCode = -101;
    static constexpr char kConnectTimeoutText[] = "connect device timeout ~~";
    static constexpr int kDefaultConnectTimeOut = 30; // seconds

    // Created by the central manager only; it routes the platform's events here.
    BluetoothPeripheral(const QString& identifier, BluetoothCenterManager* centerManager);
    static PeripheralPtr initWithPeripheral(const QString& identifier,
                                            BluetoothCenterManager* centerManager) {
        return std::make_shared<BluetoothPeripheral>(identifier, centerManager);
    }

    QString identifierString() const { return m_identifier; }
    QString identifier() const { return m_identifier; }
    // The advertised local name when there is a usable one, else the platform's name.
    QString name() const;
    bool isConnected() const;
    int state() const;
    int RSSI() const { return m_RSSI; }
    void setRSSI(int rssi) { m_RSSI = rssi; }
    const QVariantMap& advertisementData() const { return m_advertisementData; }
    void setAdvertisementData(const QVariantMap& data) { m_advertisementData = data; }
    unsigned deviceScanCount() const { return m_deviceScanCount; }
    // Every assignment restarts the 5 s lost-device timer.
    void setDeviceScanCount(unsigned count);
    void cancelDeviceTimeoutTimer() { m_deviceTimeoutTimer.cancel(); }
    int connectTimeOut() const { return m_connectTimeOut; }
    const QVariantMap& connectOpertion() const { return m_connectOpertion; }
    bool isReconnectDevice() const { return m_isReconnectDevice; }
    // Set when this side asked for the disconnection; cleared when a link is made again.
    bool isDisconnectRequested() const { return m_disconnectRequested; }
    const QList<ServicePtr>& serviceArray() const { return m_serviceArray; }
    QString connectErrorDescription() const { return m_connectErrorDescription; }
    void setConnectErrorDescription(const QString& text) { m_connectErrorDescription = text; }
    BluetoothCenterManager* centerManager() const;
    PlatformCentral* platform() const;

    void connectDeviceWithCallback(ConnectCallback callback);
    void connectDeviceWithTimeOut(int seconds, ConnectCallback callback);
    void connectDeviceWithTimeOut(int seconds, const QVariantMap& options,
                                  ConnectCallback callback);
    void reconnectDevice();
    void disconnectDevice();

    void discoverAllDeviceServiceWithCallback(ServicesCallback callback);
    // Answers at once when every wanted service is already known (see BluetoothService).
    void discoverDeviceServiceWithUUIDArray(const QStringList& uuids, ServicesCallback callback);
    ServicePtr searchServiceWithService(const QString& uuid) const;
    void readDeviceRSSIWithCallback(RSSICallback callback);
    void notifyCharacteristic(const CharacteristicPtr& characteristic);
    void cancelNotifyCharacteristic(const CharacteristicPtr& characteristic);

    void dealDeviceConnectWithError(const OptionalError& error, int kind);

    // Platform events, routed here by the central manager.
    void didConnect();
    void didFailToConnect(const BluetoothError& error);
    void didDisconnect(const OptionalError& error);
    void didDiscoverServices(const OptionalError& error);
    void didDiscoverCharacteristics(const QString& service, const OptionalError& error);
    void didDiscoverDescriptors(const GattPath& path, const OptionalError& error);
    void didReadValue(const GattPath& path, const Bytes& value, const OptionalError& error);
    void didNotifyValue(const GattPath& path, const Bytes& value);
    void didFailToWrite(const GattPath& path, const BluetoothError& error);
    void didUpdateNotificationState(const GattPath& path, bool notifying,
                                    const OptionalError& error);
    void didReadDescriptor(const GattPath& path, const QString& descriptor, const Bytes& value,
                           const OptionalError& error);
    void didWriteDescriptor(const GattPath& path, const QString& descriptor,
                            const OptionalError& error);
    void didReadRSSI(int rssi, const OptionalError& error);

private:
    CharacteristicPtr characteristicAt(const GattPath& path) const;
    void checkConnectTimeout();
    void finishConnecting();
    void resetServices();

    QString m_identifier;
    QPointer<BluetoothCenterManager> m_centerManager;
    int m_connectTimeOut = kDefaultConnectTimeOut;
    QVariantMap m_connectOpertion;
    ConnectCallback m_connectCallback;
    bool m_isReconnectDevice = false;
    bool m_isConnecting = false;
    bool m_disconnectRequested = false;
    TimerHandle m_connectTimeoutTimer;
    TimerHandle m_deviceTimeoutTimer;
    unsigned m_deviceScanCount = 0;
    int m_RSSI = 0;
    QVariantMap m_advertisementData;
    QString m_connectErrorDescription;
    QList<ServicePtr> m_serviceArray;
    std::deque<ServicesCallback> m_findServiceCallbackArray;
    std::deque<RSSICallback> m_readRSSICallbackArray;
};

using PeripheralPtr = BluetoothPeripheral::PeripheralPtr;

} // namespace ostrel
