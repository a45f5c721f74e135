#pragma once

#include "sim/VirtualLinkTable.h"
#include "sim/VirtualScan.h"
#include "transport/PlatformCentral.h"

#include <chrono>
#include <functional>

namespace ostrel {

class VirtualDesk;

// A radio that reaches the built-in virtual desks instead of real ones, for the demo mode and
// the tests. Desks advertise every advertising interval while the central scans, connect and
// answer discovery after a small latency, and carry each desk's GATT layout: subscribing starts
// the desk's polls, writes reach the desk, the desk's notifications arrive as value updates and
// a desk ending the link is a disconnection. Everything is timed through Scheduler::instance().
class VirtualCentral final : public PlatformCentral {
public:
    using WriteObserver = std::function<void(const GattPath& path, const Bytes& value)>;

    static constexpr std::chrono::milliseconds kDefaultAdvertisingInterval{100};
    static constexpr std::chrono::milliseconds kDefaultLatency{20};

    explicit VirtualCentral(QObject* parent = nullptr);
    ~VirtualCentral() override;

    // Desks are not owned; one that is destroyed simply disappears from the air.
    void addDesk(VirtualDesk* desk);
    QString identifierOf(const VirtualDesk* desk) const;

    void setPowered(bool powered);
    void setAdvertisingInterval(std::chrono::milliseconds interval) {
        m_scan.setInterval(interval);
    }
    void setLatency(std::chrono::milliseconds latency) { m_latency = latency; }
    // Connect attempts to `desk` fail with this text until it is cleared with an empty one.
    void setConnectFailure(const VirtualDesk* desk, const QString& text);
    // Writes to `desk` leave the host but are refused a moment later with this text, as a radio
    // stack reports a write without response it could not deliver; an empty text clears it.
    void setWriteRefusal(const VirtualDesk* desk, const QString& text);
    // Sees every write that reaches a desk, as it leaves the host.
    void setWriteObserver(WriteObserver observer) { m_writeObserver = std::move(observer); }
    // A sighting of a device that is no desk at all (odd names, no name), for robustness tests.
    void injectSighting(const QString& identifier, const QVariantMap& advertisementData, int rssi);
    // A notification value the desk never meant to send (garbage, stray bytes).
    void injectNotification(const VirtualDesk* desk, const Bytes& value);

    int state() const override;
    int stackProblem() const override { return m_stackProblem; }
    // For tests and the demo: the stack as if the system refused it or did not run it.
    void setStackProblem(int problem) { m_stackProblem = problem; }
    void scanForPeripherals(const QStringList& services, const QVariantMap& options) override;
    void stopScan() override;
    bool isScanning() const override { return m_scan.isScanning(); }
    QStringList retrieveConnectedPeripherals(const QStringList& services) const override;
    bool isKnownPeripheral(const QString& identifier) const override;
    QString peripheralName(const QString& identifier) const override;
    int peripheralState(const QString& identifier) const override;
    void connectPeripheral(const QString& identifier, const QVariantMap& options) override;
    void cancelPeripheralConnection(const QString& identifier) override;
    void discoverServices(const QString& identifier, const QStringList& uuids) override;
    QStringList services(const QString& identifier) const override;
    void discoverCharacteristics(const QString& identifier, const QString& service,
                                 const QStringList& uuids) override;
    QList<PlatformCharacteristicInfo> characteristics(const QString& identifier,
                                                      const QString& service) const override;
    void discoverDescriptors(const GattPath& path) override;
    QStringList descriptors(const GattPath& path) const override;
    void readValue(const GattPath& path) override;
    OptionalError writeValueWithoutResponse(const GattPath& path, const Bytes& value) override;
    void setNotifyValue(const GattPath& path, bool enabled) override;
    void readDescriptor(const GattPath& path, const QString& descriptor) override;
    void writeDescriptor(const GattPath& path, const QString& descriptor,
                         const Bytes& value) override;
    void readRSSI(const QString& identifier) override;
    void setNotifySink(const GattPath& path, std::shared_ptr<PacketSink> sink) override;
    ChannelWriter channelWriter(const GattPath& path) override;

private:
    int m_stackProblem = StackUsable;

    void tryConnect(const QString& identifier);
    void endLink(const QString& identifier, const OptionalError& error);
    static void unlink(VirtualLink& link);
    void deskNotified(const QString& identifier, const Bytes& value);
    void setNotifying(const QString& identifier, bool enabled);
    // Reports after the radio's latency, if the central still exists.
    void later(std::function<void(PlatformCentralDelegate&)> report);

    bool m_powered = true;
    std::chrono::milliseconds m_latency = kDefaultLatency;
    VirtualLinkTable m_links;
    VirtualScan m_scan;
    WriteObserver m_writeObserver;
};

} // namespace ostrel
