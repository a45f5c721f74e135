#pragma once

#include "BluetoothPeripheral.h"
#include "PlatformCentral.h"
#include "PlatformCentralDelegate.h"
#include "core/TimerHandle.h"

#include <QHash>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

namespace ostrel {

// The platform central with its bookkeeping: the peripherals found by the running scan, the
// connected ones, the one-in-ten throttle on repeated sightings, the 5 s lost-device timer and
// the end of the scan. Everything platform-specific sits behind PlatformCentral.
class BluetoothCenterManager : public QObject, private PlatformCentralDelegate {
    Q_OBJECT
public:
    // Scan event flags, one per call.
    enum ScanFlag {
        FlagScanEnded = 2,
        FlagDisconnected = 4,
        FlagFirstSighting = 8,
        FlagRefreshed = 16,
        FlagLost = 32,
    };
    using ScanCallback = std::function<void(const PeripheralPtr& peripheral, int flags)>;
    using StateChangeCallback = std::function<void(BluetoothCenterManager* manager, int state)>;
    // Shows the alert for hardware without BLE, and for a radio switched off when the options
    // ask for it (BluetoothToolOptions::kShowPowerAlertKey); the application installs a dialog.
    // Arguments, already translated: message, informative text, button.
    using AlertHandler = std::function<void(const QString&, const QString&, const QString&)>;

    static constexpr int kRepeatReportInterval = 10;
    static constexpr std::chrono::milliseconds kLostDeviceTimeout{5000};
    static constexpr double kDefaultScanTimeInterval = 30.0;

    // `central` is not owned. `options` is kept for the platform's sake (see BluetoothToolOptions).
    explicit BluetoothCenterManager(PlatformCentral* central, const QVariantMap& options = {},
                                    QObject* parent = nullptr);
    ~BluetoothCenterManager() override;

    static void setAlertHandler(AlertHandler handler);

    int centerState() const { return m_centerState; }
    bool blueToothIsOpen() const { return m_blueToothIsOpen; }
    bool isScanning() const { return m_isScanning; }
    double scanTimeInterval() const { return m_scanTimeInterval; }
    const QStringList& scanServicesArray() const { return m_scanServicesArray; }
    const QVariantMap& scanOptionsDictionary() const { return m_scanOptionsDictionary; }
    const QVariantMap& options() const { return m_options; }
    PlatformCentral* manager() const { return m_manager; }
    int stackProblem() const {
        return m_manager ? m_manager->stackProblem() : PlatformCentral::StackUsable;
    }
    void setStateChangeCallback(StateChangeCallback callback) {
        m_stateChangeCallback = std::move(callback);
    }
    const QMap<QString, PeripheralPtr>& connectedDeviceDict() const {
        return m_connectedDeviceDict;
    }
    const QMap<QString, PeripheralPtr>& foundDeviceDict() const { return m_foundDeviceDict; }

    void scanDeviceWithTimeInterval(double seconds, const QStringList& services,
                                    const QVariantMap& options, ScanCallback callback);
    void scanDeviceWithTimeInterval(double seconds, ScanCallback callback);
    void scanDeviceWithTimeCallback(ScanCallback callback);
    void scanConnectDeviceWithTimeInterval(double seconds, const QStringList& services,
                                           const QVariantMap& options, ScanCallback callback);
    void startScanDevice();
    void stopScanDevice();
    void removeAllScanFoundDevice();
    void disConnectAllDevice();
    PeripheralPtr searchDeviceWithPeripheral(const QString& identifier) const;
    QList<PeripheralPtr> retrieveConnectedPeripheralsWithServices(const QStringList& services);
    QList<PeripheralPtr> retrievePeripheralsWithIdentifiers(const QStringList& identifiers);

    // The live wrapper of a platform peripheral, made on first need; one per identifier, so
    // every holder sees the same link.
    PeripheralPtr peripheralFor(const QString& identifier);
    // Called by a peripheral's lost-device timer.
    void foundDeviceTimeout(const PeripheralPtr& peripheral);

private:
    void scanTimeEnded();
    bool showsPowerAlert() const;
    void showAlert(const QString& text);
    PeripheralPtr liveWrapper(const QString& identifier) const;

    void centralDidUpdateState(int state) override;
    void centralDidDiscoverPeripheral(const QString& identifier,
                                      const QVariantMap& advertisementData, int rssi) override;
    void centralDidConnectPeripheral(const QString& identifier) override;
    void centralDidFailToConnectPeripheral(const QString& identifier,
                                           const BluetoothError& error) override;
    void centralDidDisconnectPeripheral(const QString& identifier,
                                        const OptionalError& error) override;
    void peripheralDidDiscoverServices(const QString& identifier,
                                       const OptionalError& error) override;
    void peripheralDidDiscoverCharacteristics(const QString& identifier, const QString& service,
                                              const OptionalError& error) override;
    void peripheralDidDiscoverDescriptors(const GattPath& path,
                                          const OptionalError& error) override;
    void peripheralDidReadValue(const GattPath& path, const Bytes& value,
                                const OptionalError& error) override;
    void peripheralDidNotifyValue(const GattPath& path, const Bytes& value) override;
    void peripheralDidFailToWrite(const GattPath& path, const BluetoothError& error) override;
    void peripheralDidUpdateNotificationState(const GattPath& path, bool notifying,
                                              const OptionalError& error) override;
    void peripheralDidReadDescriptor(const GattPath& path, const QString& descriptor,
                                     const Bytes& value, const OptionalError& error) override;
    void peripheralDidWriteDescriptor(const GattPath& path, const QString& descriptor,
                                      const OptionalError& error) override;
    void peripheralDidReadRSSI(const QString& identifier, int rssi,
                               const OptionalError& error) override;

    QPointer<PlatformCentral> m_manager;
    QVariantMap m_options;
    int m_centerState = PlatformCentral::StateUnknown;
    bool m_blueToothIsOpen = false;
    double m_scanTimeInterval = kDefaultScanTimeInterval;
    QStringList m_scanServicesArray;
    QVariantMap m_scanOptionsDictionary;
    ScanCallback m_blueToothSearchDeviceCallback;
    TimerHandle m_scanBlock;
    bool m_isScanning = false;
    StateChangeCallback m_stateChangeCallback;
    QMap<QString, PeripheralPtr> m_connectedDeviceDict;
    QMap<QString, PeripheralPtr> m_foundDeviceDict;
    QHash<QString, std::weak_ptr<BluetoothPeripheral>> m_wrappers;
};

} // namespace ostrel
