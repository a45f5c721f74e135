#pragma once

#include "StandinBus.h"
#include "protocol/BluetoothResultHandle.h"
#include "transport/BluetoothTool.h"
#include "transport/RBBluetoothManager.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace ostrel::test {

// One scan callback call.
struct ScanEvent {
    PeripheralPtr peripheral;
    QString name;
    int flags = 0;
    std::optional<int> errorCode;
};

// The real transport (facade, tool, QtBluetooth central) on a fresh set of process-wide
// instances, talking to the stand-in over D-Bus in real time. Everything the callbacks report
// lands in members, which outlive every callback the transport may still hold.
class BluezTest : public ::testing::Test {
protected:
    static constexpr int kWaitMs = 10000;

    void SetUp() override;
    void TearDown() override;

    static RBBluetoothManager& facade() { return RBBluetoothManager::sharedInstance(); }
    static BluetoothResultHandle& handle() { return BluetoothResultHandle::sharedInstance(); }
    static bool waitFor(const std::function<bool()>& condition, int timeoutMs = kWaitMs);

    // Control of the stand-in; an error reply fails the test.
    QDBusMessage control(const QString& method, const QVariantList& arguments = {});
    void addDesk(const QString& name, int type, const QVariantMap& options = {});
    int deskHeight(const QString& name);
    // The desk's NotifyAcquired and WriteAcquired properties as BlueZ shows them; none where it
    // offers no sockets.
    QVariantMap acquiredState(const QString& name);
    // A property of the desk's Device1 object (without a desk, the adapter's) as BlueZ shows it.
    QVariant bluezProperty(const char* property, const QString& desk = {});
    // Whether links set up from now on are offered sockets; offered again after each test.
    void offerSockets(bool offered);

    // A continuous scan for `type`; every event goes to scanEvents.
    void startScan(BluetoothType type);
    const ScanEvent* firstEvent(const QString& name, int flags) const;
    // Scans until `name` is first sighted, stops scanning and returns the peripheral.
    PeripheralPtr discover(const QString& name);
    // Connects and subscribes; reports go to connectReports, frames to the classifier, whose
    // heights land in heights.
    void connectDesk(const PeripheralPtr& peripheral);

    std::vector<ScanEvent> scanEvents;
    std::vector<std::optional<int>> connectReports; // error code of each report, if any
    int frames = 0;
    std::vector<int> heights;

private:
    QHash<QString, QString> m_deskPaths; // by name
    std::unique_ptr<BluetoothTool> m_previousTool;
    std::unique_ptr<BluetoothResultHandle> m_previousHandle;
    std::unique_ptr<RBBluetoothManager> m_previousFacade;
};

} // namespace ostrel::test
