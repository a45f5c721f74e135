#pragma once

#include "transport/BluetoothError.h"
#include "transport/BluetoothPeripheral.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QVariantMap>
#include <functional>

namespace ostrel {

// The desks behind the device pages: the bound desks with whether each is in range, the desks
// in range that are not bound, switching the session to another desk by name, renaming and
// forgetting desks. The pages only draw what it holds; it reaches the link through the shared
// facade and the session through the hooks it is given.
class DeviceManagement : public QObject {
    Q_OBJECT
public:
    static constexpr int kScanTimeOut = 30; // seconds
    static constexpr char kOnLineKey[] = "isOnLine";

    // What the session behind the pages must do when its desk changes or goes.
    struct SessionHooks {
        // The current desk is about to be dropped for another: its loss is expected. The hook
        // calls its argument once the desk may be let go.
        std::function<void(std::function<void()>)> changeStarting;
        // The other desk could not be connected: the session has no desk any more.
        std::function<void()> changeFailed;
        // The current desk was forgotten: the session ends.
        std::function<void()> endSession;
    };

    explicit DeviceManagement(SessionHooks hooks, QObject* parent = nullptr);
    ~DeviceManagement() override;

    // Bound records as stored, each with "isOnLine" "1" or "0"; then records made for the
    // desks in range that are not bound, all "1".
    const QList<QVariantMap>& arrayPaired() const { return m_arrayPaired; }
    const QList<QVariantMap>& arrayUnPaired() const { return m_arrayUnPaired; }
    bool isScanning() const { return m_isScanning; }
    bool isConnecting() const { return m_isConnecting; }
    // Whether `bluetoothName` is the desk the session is linked to now.
    static bool isCurrentDesk(const QString& bluetoothName);
    bool isInRange(const QString& bluetoothName) const;
    // The bound record stored under that name, empty when there is none.
    static QVariantMap boundRecord(const QString& bluetoothName);

    void blueToothStartScan();
    void refreshDevices();
    // Makes the desk in range of that name the session's desk.
    void actionConnectWithBluetoothName(const QString& bluetoothName);
    // Forgets the desk of the record; returns true when that ended the session.
    bool deleteDevice(const QVariantMap& record);
    // Gives the bound desk a name of the user's own, in the bound list and, when it is the
    // current desk, in the current-device file. A blank name changes nothing.
    void renameDevice(const QString& bluetoothName, const QString& deviceName);

signals:
    void devicesChanged();
    void scanningChanged(bool scanning);
    // "Connecting" while a switch runs; an empty text hides it.
    void statusChanged(const QString& status);
    // The outcome of a switch, for a toast.
    void messageRequested(const QString& message);

private:
    void scanEvent(const PeripheralPtr& peripheral, int flags);
    void setScanning(bool scanning);
    PeripheralPtr peripheralInRange(const QString& bluetoothName) const;
    static void switchTo(const QPointer<DeviceManagement>& self, const SessionHooks& hooks,
                         const PeripheralPtr& peripheral);
    static void finishSwitch(const QPointer<DeviceManagement>& self, const SessionHooks& hooks,
                             const PeripheralPtr& peripheral, const OptionalError& error);

    SessionHooks m_hooks;
    QList<QVariantMap> m_arrayPaired;
    QList<QVariantMap> m_arrayUnPaired;
    bool m_isScanning = false;
    bool m_isConnecting = false;
};

} // namespace ostrel
