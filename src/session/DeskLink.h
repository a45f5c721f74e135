#pragma once

#include "core/Scheduler.h"
#include "transport/BluetoothPeripheral.h"

#include <QObject>
#include <QString>
#include <functional>

namespace ostrel {

// The session's link to the bound desk: taking over the link desk search made, subscribing to
// the desk's frames, the endless reconnection scan for the bound name and the connection that
// ends it. Frames go to the classifier; what the link does is told through signals.
class DeskLink : public QObject {
    Q_OBJECT
public:
    static constexpr int kScanRuleType = 2;
    static constexpr int kScanRoundSeconds = 30;

    explicit DeskLink(QObject* parent = nullptr);

    const QString& blutoothName() const { return m_blutoothName; }
    bool isReConnect() const { return m_isReConnect; }
    // Taken once per reconnection: the first refresh after it must leave the countdown alone.
    bool takeReConnect();

    // Attaches to the desk the facade has linked; false when there is none.
    bool initBluetooth();
    // Another desk became current: follow it.
    void followCurrentPeripheral();
    void startScan();
    void startScanAgain();
    void stopScan();
    void reconnect() { startScan(); }
    // Ends the reconnection scan for good: no further round starts until the next reconnect.
    void stopLooking();
    void connectBluetoothWithPeripheral(const PeripheralPtr& peripheral);
    void actionAddDeviceToLocalWithperipheral(const PeripheralPtr& peripheral);

signals:
    // A new link is up and no poll of it has been answered yet.
    void linkStarting();
    // The reconnected desk is bound and current again.
    void linked();
    // An attempt to link the desk failed (a loss of the link is a disconnect, not this).
    void connectFailed();

private:
    using Task = std::function<void(DeskLink&)>;

    void later(Task task);
    void adoptLinkedPeripheral();
    void subscribeToCurrentPeripheral();
    void scanRound(Task onEnded);
    void connected(const PeripheralPtr& peripheral);

    QString m_blutoothName;
    bool m_isReConnect = false;
    bool m_looking = false;
};

} // namespace ostrel
