#pragma once

#include "BluetoothCenterManager.h"
#include "BluetoothError.h"
#include "BluetoothToolOptions.h"
#include "NotificationFrames.h"

#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>
#include <optional>
#include <variant>

namespace ostrel {

// Whole link operations over the wrappers: scan with a condition, connect with a time-out,
// find a characteristic, write, subscribe and cut the notification stream into desk frames.
// Every failure is a BluetoothError with one of the codes below; nothing throws. The operations
// the application does not use are in BluetoothToolExtras.
class BluetoothTool : public QObject {
public:
    // Link steps reported to bluetoothStateChanged.
    enum LinkState {
        StateRadioOff = 0, // the radio went off or is unavailable: scans find nothing
        StatePoweredOn = 1,
        StateFound = 2,
        StateConnected = 3,
        StateServiceFound = 4,
        StateCharacteristicFound = 5,
        StateNotified = 6,
        StateRead = 7,
        StateWritten = 8,
    };
    enum ErrorCode {
        ErrorPoweredOffWaiting = 0,
        ErrorPoweredOff = 1,
        ErrorNotFound = 2,
        ErrorConnectFailed = 3,
        ErrorNotConnected = 4,
        ErrorLinkLost = 5,
        ErrorLinkLostReconnecting = 6,
        ErrorNoService = 7,
        ErrorNoCharacteristic = 8,
        ErrorWrite = 9,
        ErrorRead = 10,
        ErrorNotify = 11,
        ErrorNoDescriptor = 12,
        ErrorIdentifier = 13,
    };
    // The texts are matched by callers as they stand, spelling included.
    static constexpr char kTextPoweredOffWaiting[] =
        "center manager state powered off and wraiting to turn on !";
    static constexpr char kTextPoweredOff[] = "center manager state powered off";
    static constexpr char kTextNotFound[] = "device not found !";
    static constexpr char kTextConditionNil[] = "the condition is nil";
    static constexpr char kTextNotConnected[] =
        "the device does't connected ! please operation after connected !";
    static constexpr char kTextNoService[] = "you privode serviceuuid is not exited !";
    static constexpr char kTextNoDescriptor[] = "the characteristic no have descripotor";
    static constexpr char kTextIdentifierEmpty[] = "the identifier is empty !";
    static constexpr char kTextIdentifierInvalid[] = "the identifier is not effect !";
    static constexpr int kDefaultTimeOut = 30; // seconds, for a time-out left unset

    using StateCallback = std::function<void(const PeripheralPtr& peripheral, int state)>;
    using PeripheralCallback =
        std::function<void(const PeripheralPtr& peripheral, const OptionalError& error)>;
    using ScanEventCallback =
        std::function<void(const PeripheralPtr& peripheral, int flags, const OptionalError& error)>;
    using ListCallback =
        std::function<void(const QList<PeripheralPtr>& peripherals, const OptionalError& error)>;
    using CharacteristicCallback =
        std::function<void(const CharacteristicPtr& characteristic, const OptionalError& error)>;
    // Frame data (or a read value) is absent when only an error is reported.
    using DataCallback =
        std::function<void(const std::optional<Bytes>& data, const OptionalError& error)>;
    using Rule = std::function<bool(const PeripheralPtr& peripheral)>;
    // A name to match exactly, a rule, or nothing (which fails the scan at once).
    using ScanCondition = std::variant<std::monostate, QString, Rule>;

    // A null name or an empty rule is no condition at all.
    static ScanCondition conditionOf(const QString& name);
    static ScanCondition conditionOf(Rule rule);

    // `central` is adopted when it has no parent; otherwise its owner keeps it alive.
    explicit BluetoothTool(PlatformCentral* central, QObject* parent = nullptr);
    ~BluetoothTool() override;

    // The process-wide tool; made over the real radio unless one was installed.
    static BluetoothTool& shareInstance();
    // Installs `tool` as the shared instance (tests, demo mode) and returns the previous one.
    static std::unique_ptr<BluetoothTool> replaceShareInstance(std::unique_ptr<BluetoothTool> tool);

    const BluetoothToolOptions& managerOptions() const { return m_managerOptions; }
    void setManagerOptions(const BluetoothToolOptions& options) { m_managerOptions = options; }
    int bluetoothState() const { return m_bluetoothState; }
    void setBluetoothStateChanged(StateCallback callback) {
        m_bluetoothStateChanged = std::move(callback);
    }
    BluetoothCenterManager& centerManager();
    const FrameSplitter& bluethoothData() const { return m_bluethoothData.splitter(); }

    // Scanning.
    void scanDeviceWithCondition(const ScanCondition& condition, PeripheralCallback callback);
    void scanDeviceWithName(const QString& name, PeripheralCallback callback);
    void scanDeviceWithRule(Rule rule, PeripheralCallback callback);
    void scanAllDeviceAsyncWithRule(Rule rule, ScanEventCallback callback);
    void scanAllDeviceWithCondition(const ScanCondition& condition, ListCallback callback);
    void scanAllDeviceWithName(const QString& name, ListCallback callback);
    void scanAllDeviceWithRule(Rule rule, ListCallback callback);
    static bool isExitObject(const PeripheralPtr& peripheral, const QList<PeripheralPtr>& list);
    void startScanDevice();
    void stopScanDevice();

    // Connecting. The callback hears every later report of the peripheral too.
    void connectDeviceWithPeripheral(const PeripheralPtr& peripheral, PeripheralCallback callback);
    void scanAndConnectDeviceWithCondition(const ScanCondition& condition,
                                           PeripheralCallback callback);
    void scanAndConnectDeviceWithName(const QString& name, PeripheralCallback callback);
    void disconnectWithPeripheral(const PeripheralPtr& peripheral);
    void disconnectAllPeripheral();

    // GATT operations.
    void searchCharacteristicWithPeripheral(const PeripheralPtr& peripheral,
                                            const QString& serviceUUID,
                                            const QString& operationUUID,
                                            CharacteristicCallback callback);
    void writeDataWithPeripheral(const PeripheralPtr& peripheral, const QString& serviceUUID,
                                 const QString& writeUUID, const Bytes& data,
                                 CharacteristicCallback callback);
    void notifyDataWithPeripheral(const PeripheralPtr& peripheral, const QString& serviceUUID,
                                  const QString& notifyUUID, bool notifyValue,
                                  DataCallback callback);
    // Subscribes to `notifyUUID` over a channel of the link (LinkChannel) that knows both
    // characteristics from now on: the desk's keypad polls are answered in it, and every other
    // frame reaches `callback` as notifyDataWithPeripheral delivers them. For each new link.
    void openChannelWithPeripheral(const PeripheralPtr& peripheral, const QString& serviceUUID,
                                   const QString& notifyUUID, const QString& writeUUID,
                                   DataCallback callback);

private:
    // The operations the application does not use report their steps here too.
    friend class BluetoothToolExtras;

    void setBluetoothState(int state, const PeripheralPtr& peripheral);
    void startScan(BluetoothCenterManager::ScanCallback handler);
    BluetoothError scanEndError() const;
    static bool meetsCondition(const ScanCondition& condition, const PeripheralPtr& peripheral,
                               int flags);
    void handleConnectReport(const PeripheralPtr& peripheral, const OptionalError& error, int kind,
                             const PeripheralCallback& callback);
    // An unset time-out becomes the default, in the options too.
    static int settleTimeOut(int& seconds);
    void openChannel(const CharacteristicPtr& write, const CharacteristicPtr& notify,
                     const DataCallback& callback);

    QPointer<PlatformCentral> m_central;
    std::unique_ptr<BluetoothCenterManager> m_centerManager;
    BluetoothToolOptions m_managerOptions;
    int m_bluetoothState = 0;
    StateCallback m_bluetoothStateChanged;
    NotificationFrames m_bluethoothData;
};

} // namespace ostrel
