#pragma once

#include "PlatformCentral.h"

#include <QBluetoothUuid>
#include <QHash>
#include <QObject>
#include <functional>

class QDBusConnection;
class QLowEnergyController;
class QLowEnergyService;

namespace ostrel {

class BluezDataPath;

// One connected link's GATT: services, characteristics and descriptors through QtBluetooth,
// frames (writes without response and notifications) through BluezDataPath wherever BlueZ shows
// the characteristic, so the 20 Hz poll costs no QtBluetooth round trip. Lives and dies with
// the link's controller; reports go to the central's delegate of the moment, later from the
// event loop, never from inside a request.
class QtGattLink : public QObject {
    Q_OBJECT
public:
    using DelegateSource = std::function<PlatformCentralDelegate*()>;

    QtGattLink(QLowEnergyController* controller, const QString& identifier,
               const QDBusConnection& bus, DelegateSource delegate);
    ~QtGattLink() override;

    // A UUID as the central's users name it (BluetoothUuid::normalized).
    static QString uuidText(const QBluetoothUuid& uuid);
    // Stops every report, for a link that is being closed.
    void silence();

    void discoverCharacteristics(const QString& service);
    QList<PlatformCharacteristicInfo> characteristics(const QString& service) const;
    QStringList descriptors(const GattPath& path) const;
    void readValue(const GattPath& path);
    OptionalError writeValueWithoutResponse(const GattPath& path, const Bytes& value);
    void setNotifyValue(const GattPath& path, bool enabled);
    void readDescriptor(const GattPath& path, const QString& descriptor);
    void writeDescriptor(const GattPath& path, const QString& descriptor, const Bytes& value);
    void setNotifySink(const GattPath& path, std::shared_ptr<PacketSink> sink);
    PlatformCentral::ChannelWriter channelWriter(const GattPath& path);

signals:
    // An acquired socket hung up: the link is gone, whatever the controller says yet.
    void linkLost();

private:
    PlatformCentralDelegate* delegate() const;
    void report(std::function<void(PlatformCentralDelegate&)> call);
    void reportLater(std::function<void(PlatformCentralDelegate&)> call);
    QLowEnergyService* serviceAt(const QString& service) const;
    QLowEnergyService* ensureService(const QString& service);
    void watchService(QLowEnergyService* service);
    void watchValues(QLowEnergyService* service, const QString& serviceUuid);
    void watchDescriptors(QLowEnergyService* service, const QString& serviceUuid);
    // The characteristics are reported once the data path knows its routes.
    void reportCharacteristics(const QString& service, const OptionalError& error);
    void watchDataPath();

    QLowEnergyController* m_controller;
    QString m_identifier;
    DelegateSource m_delegate;
    BluezDataPath* m_dataPath;
    QHash<QString, QLowEnergyService*> m_services; // by normalized UUID, children of the controller
    // The characteristic last written on each service, to pin a late write refusal on it.
    QHash<const QLowEnergyService*, QString> m_lastWritten;
    // The link channel's sink, for values that come through QtBluetooth rather than a socket.
    std::shared_ptr<PacketSink> m_sink;
    GattPath m_sinkPath;
    QBluetoothUuid m_sinkCharacteristic;
};

} // namespace ostrel
