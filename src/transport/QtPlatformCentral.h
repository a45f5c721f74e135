#pragma once

#include "PlatformCentral.h"

#include <QBluetoothDeviceInfo>
#include <QHash>
#include <QPointer>

class QBluetoothDeviceDiscoveryAgent;
class QBluetoothLocalDevice;
class QLowEnergyController;

namespace ostrel {

class QtGattLink;

// The real radio through QtBluetooth (BlueZ over D-Bus on Linux). Without an adapter it
// reports StateUnsupported; with the adapter off, StatePoweredOff. Each link's GATT is a
// QtGattLink.
class QtPlatformCentral final : public PlatformCentral {
public:
    explicit QtPlatformCentral(QObject* parent = nullptr);
    ~QtPlatformCentral() override;

    int state() const override;
    // Asks BlueZ itself, since an invalid local device can mean either problem.
    int stackProblem() const override;
    void scanForPeripherals(const QStringList& services, const QVariantMap& options) override;
    void stopScan() override;
    bool isScanning() const override { return m_scanRequested; }
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
    struct Link {
        QBluetoothDeviceInfo info;
        QLowEnergyController* controller = nullptr;
        int state = PeripheralDisconnected;
        bool servicesDiscovered = false;
        bool lost = false;          // an acquired socket hung up: ending with an error
        QtGattLink* gatt = nullptr; // a child of the controller
    };

    static QString identifierOf(const QBluetoothDeviceInfo& info);
    void updateState();
    void startAgentIfWanted();
    void deviceSighted(const QBluetoothDeviceInfo& info);
    void watchController(const QString& identifier, QLowEnergyController* controller);
    void closeLink(const QString& identifier, const OptionalError& error);
    QtGattLink* gattOf(const QString& identifier) const;
    // Reports later from the event loop, never from inside the request.
    void later(std::function<void()> report);

    QBluetoothLocalDevice* m_local = nullptr;
    QBluetoothDeviceDiscoveryAgent* m_agent = nullptr;
    int m_state = StateUnknown;
    bool m_scanRequested = false;
    QStringList m_scanServices;
    QHash<QString, Link> m_links;
};

} // namespace ostrel
