#pragma once

#include "BluetoothDescriptor.h"
#include "BluetoothError.h"
#include "PlatformCentralDelegate.h"
#include "protocol/Bytes.h"

#include <QList>
#include <QString>
#include <chrono>
#include <deque>
#include <functional>
#include <memory>

namespace ostrel {

class BluetoothPeripheral;
class BluetoothService;

// One GATT characteristic of a connected peripheral. Writes go out without response in pieces
// of kWritePieceSize bytes, kWritePieceInterval apart: the desk's controller takes no more.
class BluetoothCharacteristic : public std::enable_shared_from_this<BluetoothCharacteristic> {
public:
    using CharacteristicPtr = std::shared_ptr<BluetoothCharacteristic>;
    using WriteCallback =
        std::function<void(const CharacteristicPtr& characteristic, const OptionalError& error)>;
    using ValueCallback = std::function<void(const CharacteristicPtr& characteristic,
                                             const Bytes& value, const OptionalError& error)>;
    using DescriptorsCallback =
        std::function<void(const QList<DescriptorPtr>& descriptors, const OptionalError& error)>;

    enum DataType { WriteData = 0, ReadData = 1, NotifyData = 2 };
    static constexpr std::size_t kWritePieceSize = 20;
    static constexpr std::chrono::milliseconds kWritePieceInterval{200};
    // A radio stack refuses a write without response only after it has taken the bytes; a write
    // reports "written" once this long after its last piece has gone without a refusal.
    static constexpr std::chrono::milliseconds kWriteRefusalWindow{500};
    // The history lists keep only the newest entries: a desk polls many times a second.
    static constexpr qsizetype kHistoryLimit = 32;

    BluetoothCharacteristic(const QString& uuid, int properties,
                            const std::shared_ptr<BluetoothService>& service);

    QString UUID() const { return m_uuid; }
    QString name() const { return m_uuid; }
    int properties() const { return m_properties; }
    QString propertiesString() const;
    static QString propertiesString(int properties);
    const Bytes& value() const { return m_value; }
    bool isNotifying() const { return m_isNotifying; }
    std::shared_ptr<BluetoothService> service() const { return m_service.lock(); }
    std::shared_ptr<BluetoothPeripheral> peripheral() const;
    const QList<DescriptorPtr>& descriptorArray() const { return m_descriptorArray; }
    const QList<Bytes>& readDataArray() const { return m_readDataArray; }
    const QList<Bytes>& writeDataArray() const { return m_writeDataArray; }
    const QList<Bytes>& notifyDataArray() const { return m_notifyDataArray; }
    void addDataToArrayWithType(int type, const Bytes& data);

    void writeValueWithData(const Bytes& data, WriteCallback callback);
    void writeValueWithByte(std::uint8_t byte, WriteCallback callback) {
        writeValueWithData({byte}, std::move(callback));
    }
    void readValueWithCallback(ValueCallback callback);
    // The subscriber receives every later notification value; a new call replaces it, so a
    // repeated subscription never delivers a value twice.
    void notifyWithValue(bool enabled, ValueCallback callback);
    void discoverDescriptorWithCallback(DescriptorsCallback callback);

    GattPath path() const;
    // The link went away: the platform object behind this wrapper is gone for good.
    void invalidate();
    bool isValid() const { return m_valid; }
    DescriptorPtr searchDescriptor(const QString& uuid) const;

    // Platform events, routed here by the peripheral.
    void didReadValue(const Bytes& value, const OptionalError& error);
    void didNotifyValue(const Bytes& value);
    // The last write was refused: its callback hears the error, unless it has already reported.
    void didFailToWrite(const BluetoothError& error);
    void didUpdateNotificationState(bool notifying, const OptionalError& error);
    void didDiscoverDescriptors(const OptionalError& error);

private:
    struct PendingWrite;
    // Write timers end with the central manager that the link belongs to.
    QObject* timerContext() const;
    void writePiece(const std::shared_ptr<PendingWrite>& write, std::size_t index);
    // Each write reports exactly once, whichever of success and refusal comes first.
    void report(const std::shared_ptr<PendingWrite>& write, const OptionalError& error);

    QString m_uuid;
    int m_properties;
    std::weak_ptr<BluetoothService> m_service;
    bool m_valid = true;
    Bytes m_value;
    bool m_isNotifying = false;
    QList<DescriptorPtr> m_descriptorArray;
    QList<Bytes> m_readDataArray;
    QList<Bytes> m_writeDataArray;
    QList<Bytes> m_notifyDataArray;
    // Kept after completion, since a refusal arrives late; dropped by the next write or the link.
    std::shared_ptr<PendingWrite> m_lastWrite;
    std::deque<ValueCallback> m_readCallbackArray;
    std::deque<DescriptorsCallback> m_descriptorCallbackArray;
    ValueCallback m_notifyCallback;
};

using CharacteristicPtr = BluetoothCharacteristic::CharacteristicPtr;

} // namespace ostrel
