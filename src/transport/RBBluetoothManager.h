#pragma once

#include "BluetoothModel.h"
#include "BluetoothTool.h"
#include "BluetoothToolOptions.h"

#include <QObject>
#include <QPointer>
#include <memory>
#include <optional>

namespace ostrel {

// The one way screens reach the desk's link. Callers never name a UUID: before every
// subscription and write the controller type is derived from the desk's advertised name.
//
// The shared instance serves every screen but desk search, which makes a plain instance of its
// own; all instances work over the one shared BluetoothTool, and whichever spoke last decides
// its time-outs and reconnect flag. Class-level use is sharedInstance().operation(...): C++
// cannot give a static and a member function the same name and parameters.
class RBBluetoothManager : public QObject {
public:
    using ConnectCallback = BluetoothTool::PeripheralCallback;
    using FrameCallback = BluetoothTool::DataCallback;
    using ScanCallback = BluetoothTool::ScanEventCallback;
    using ScanAllCallback = BluetoothTool::ListCallback;
    using WriteCallback = BluetoothTool::CharacteristicCallback;
    using StateCallback = BluetoothTool::StateCallback;

    static constexpr char kManagerQueueLabel[] = "bluetooth.queue";
    static constexpr int kDefaultTimeOut = 30; // seconds, scan and connect

    explicit RBBluetoothManager(QObject* parent = nullptr);
    ~RBBluetoothManager() override;

    static RBBluetoothManager& sharedInstance();
    // Installs `manager` as the shared instance (tests, demo mode) and returns the previous one.
    static std::unique_ptr<RBBluetoothManager>
    replaceSharedInstance(std::unique_ptr<RBBluetoothManager> manager);

    bool isConnect() const { return m_isConnect; }
    BluetoothTool& bluetoothTool();
    BluetoothType bluetoothType() const { return m_bluetoothType; }
    void setBluetoothType(BluetoothType type) { m_bluetoothType = type; }
    const PeripheralPtr& currentPeripheral() const { return m_currentPeripheral; }
    void setCurrentPeripheral(const PeripheralPtr& peripheral) { m_currentPeripheral = peripheral; }
    const QList<PeripheralPtr>& nDevices() const { return m_nDevices; }
    void setNDevices(const QList<PeripheralPtr>& devices) { m_nDevices = devices; }
    const BluetoothToolOptions& toolOptions();

    bool blueToothIsOpen();
    void bluetoothStateChanged(StateCallback callback);
    void setScanTimeOut(int seconds);
    void setConnectTimeOut(int seconds);
    void setAutoConnectAfterDisconnect(bool enabled);

    // Scanning for desks whose advertised name passes the scan rule of `type`.
    void scanWithType(BluetoothType type, ScanCallback callback);
    void scanAllWithType(BluetoothType type, ScanAllCallback callback);
    void stopScanDevice();

    // Connecting. The connect callback hears every later link event of the desk as well.
    void connectDeviceWithPeripheral(const PeripheralPtr& peripheral,
                                     ConnectCallback connectCallback);
    void connectDeviceWithPeripheral(const PeripheralPtr& peripheral,
                                     ConnectCallback connectCallback,
                                     FrameCallback operationCallback);
    void connectDeviceWithPeripheralName(const QString& name, ConnectCallback connectCallback,
                                         FrameCallback operationCallback);

    // Frames and writes; both do nothing for a desk whose type has no identifiers. The desk's
    // keypad polls are answered on the link itself (BluetoothTool::openChannelWithPeripheral):
    // the frame callback hears every other frame.
    void setNotifyDataWithPeripheral(const PeripheralPtr& peripheral,
                                     FrameCallback operationCallback);
    void writeData(const Bytes& data, const PeripheralPtr& peripheral, WriteCallback callback);
    void writeDataWithCurrentperipheral(const Bytes& data, WriteCallback callback);

    // Teardown. The session's key owner has let every key go before it lets a desk go.
    void disconnectWithPeripheral(const PeripheralPtr& peripheral);
    void disconnectAllPeripheral();
    void resetManager();
    void resetScanManager();

private:
    static BluetoothModel modelFor(const PeripheralPtr& peripheral);
    ConnectCallback reportingTo(ConnectCallback connectCallback, FrameCallback operationCallback);

    bool m_isConnect = false;
    QPointer<BluetoothTool> m_bluetoothTool;
    BluetoothType m_bluetoothType = 2;
    PeripheralPtr m_currentPeripheral;
    QList<PeripheralPtr> m_nDevices;
    std::optional<BluetoothToolOptions> m_toolOptions;
};

} // namespace ostrel
