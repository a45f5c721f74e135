#include "BluetoothCharacteristic.h"

#include "BluetoothCenterManager.h"
#include "BluetoothPeripheral.h"
#include "BluetoothService.h"
#include "BluetoothUuid.h"
#include "PlatformCentral.h"
#include "core/Scheduler.h"

#include <algorithm>
#include <array>

namespace ostrel {

struct BluetoothCharacteristic::PendingWrite {
    Bytes data;
    std::size_t pieceCount;
    WriteCallback callback;
    bool finished = false; // no further pieces go out
    bool reported = false;
};

BluetoothCharacteristic::BluetoothCharacteristic(const QString& uuid, int properties,
                                                 const std::shared_ptr<BluetoothService>& service)
    : m_uuid(uuid), m_properties(properties), m_service(service) {}

std::shared_ptr<BluetoothPeripheral> BluetoothCharacteristic::peripheral() const {
    const auto owner = service();
    return owner ? owner->peripheral() : nullptr;
}

GattPath BluetoothCharacteristic::path() const {
    const auto owner = service();
    const auto device = peripheral();
    return GattPath{device ? device->identifierString() : QString(),
                    owner ? owner->UUID() : QString(), m_uuid};
}

QString BluetoothCharacteristic::propertiesString() const {
    return propertiesString(m_properties);
}

QString BluetoothCharacteristic::propertiesString(int properties) {
    static const std::array<std::pair<int, const char*>, 7> names{{
        {0x01, "Broadcast "},
        {0x02, "Read "},
        {0x04, "WriteWithoutResponse "},
        {0x08, "Write "},
        {0x10, "Notify "},
        {0x20, "Indicate "},
        {0x40, "AuthenticatedSignedWrites "},
    }};
    QString text;
    for (const auto& [bit, name] : names) {
        if (properties & bit)
            text += QString::fromLatin1(name);
    }
    if (text.size() >= 2)
        text.chop(1);
    return text;
}

void BluetoothCharacteristic::addDataToArrayWithType(int type, const Bytes& data) {
    QList<Bytes>& history = type == WriteData  ? m_writeDataArray
                            : type == ReadData ? m_readDataArray
                                               : m_notifyDataArray;
    history.append(data);
    if (history.size() > kHistoryLimit)
        history.removeFirst();
}

void BluetoothCharacteristic::invalidate() {
    m_valid = false;
    m_isNotifying = false;
    m_notifyCallback = nullptr;
    m_lastWrite = nullptr;
    // Reads still waiting will never be answered by this link.
    auto waiting = std::exchange(m_readCallbackArray, {});
    for (const ValueCallback& callback : waiting)
        callback(shared_from_this(), {},
                 BluetoothError{0, QStringLiteral("the device is disconnected")});
}

void BluetoothCharacteristic::writeValueWithData(const Bytes& data, WriteCallback callback) {
    addDataToArrayWithType(WriteData, data);
    const std::size_t pieces =
        std::max<std::size_t>(1, (data.size() + kWritePieceSize - 1) / kWritePieceSize);
    auto write = std::make_shared<PendingWrite>(PendingWrite{data, pieces, std::move(callback)});
    m_lastWrite = write;
    // The first piece goes out now, so a poll is answered while it is being handled.
    writePiece(write, 0);
    std::weak_ptr<BluetoothCharacteristic> weak = weak_from_this();
    for (std::size_t k = 1; k < pieces; ++k) {
        Scheduler::instance().after(kWritePieceInterval * static_cast<int>(k), timerContext(),
                                    [weak, write, k] {
                                        if (const auto self = weak.lock())
                                            self->writePiece(write, k);
                                    });
    }
}

QObject* BluetoothCharacteristic::timerContext() const {
    const auto device = peripheral();
    return device ? device->centerManager() : nullptr;
}

void BluetoothCharacteristic::writePiece(const std::shared_ptr<PendingWrite>& write,
                                         std::size_t index) {
    if (write->finished)
        return;
    const auto begin =
        write->data.begin() +
        static_cast<std::ptrdiff_t>(std::min(index * kWritePieceSize, write->data.size()));
    const auto end =
        write->data.begin() +
        static_cast<std::ptrdiff_t>(std::min((index + 1) * kWritePieceSize, write->data.size()));
    const auto device = peripheral();
    PlatformCentral* central = device ? device->platform() : nullptr;
    OptionalError error;
    if (!m_valid || !central)
        error = BluetoothError{0, QStringLiteral("the device is disconnected")};
    else if (begin != end)
        error = central->writeValueWithoutResponse(path(), Bytes(begin, end));
    if (error) {
        write->finished = true;
        report(write, error);
    } else if (index + 1 == write->pieceCount) {
        write->finished = true;
        Scheduler::instance().after(
            kWriteRefusalWindow, timerContext(),
            [self = shared_from_this(), write] { self->report(write, std::nullopt); });
    }
}

void BluetoothCharacteristic::didFailToWrite(const BluetoothError& error) {
    if (const auto write = m_lastWrite) {
        write->finished = true; // no further pieces of a refused write
        report(write, error);
    }
}

void BluetoothCharacteristic::report(const std::shared_ptr<PendingWrite>& write,
                                     const OptionalError& error) {
    if (std::exchange(write->reported, true))
        return;
    if (write->callback)
        write->callback(shared_from_this(), error);
}

void BluetoothCharacteristic::readValueWithCallback(ValueCallback callback) {
    const auto device = peripheral();
    PlatformCentral* central = device ? device->platform() : nullptr;
    if (!central || !m_valid)
        return;
    m_readCallbackArray.push_back(std::move(callback));
    central->readValue(path());
}

void BluetoothCharacteristic::didReadValue(const Bytes& value, const OptionalError& error) {
    if (!error) {
        m_value = value;
        addDataToArrayWithType(ReadData, value);
    }
    auto waiting = std::exchange(m_readCallbackArray, {});
    for (const ValueCallback& callback : waiting)
        callback(shared_from_this(), value, error);
}

void BluetoothCharacteristic::notifyWithValue(bool enabled, ValueCallback callback) {
    const auto device = peripheral();
    if (!device || !m_valid)
        return;
    m_notifyCallback = std::move(callback);
    if (enabled)
        device->notifyCharacteristic(shared_from_this());
    else
        device->cancelNotifyCharacteristic(shared_from_this());
}

void BluetoothCharacteristic::didNotifyValue(const Bytes& value) {
    m_value = value;
    addDataToArrayWithType(NotifyData, value);
    // The subscriber may replace itself while handling the value: call a copy.
    if (const ValueCallback callback = m_notifyCallback)
        callback(shared_from_this(), value, std::nullopt);
}

void BluetoothCharacteristic::didUpdateNotificationState(bool notifying,
                                                         const OptionalError& error) {
    if (!error) {
        m_isNotifying = notifying;
        return;
    }
    if (const ValueCallback callback = m_notifyCallback)
        callback(shared_from_this(), {}, error);
}

void BluetoothCharacteristic::discoverDescriptorWithCallback(DescriptorsCallback callback) {
    const auto device = peripheral();
    PlatformCentral* central = device ? device->platform() : nullptr;
    if (!central || !m_valid)
        return;
    m_descriptorCallbackArray.push_back(std::move(callback));
    central->discoverDescriptors(path());
}

DescriptorPtr BluetoothCharacteristic::searchDescriptor(const QString& uuid) const {
    return BluetoothUuid::findIn(m_descriptorArray, uuid);
}

void BluetoothCharacteristic::didDiscoverDescriptors(const OptionalError& error) {
    const auto device = peripheral();
    const PlatformCentral* central = device ? device->platform() : nullptr;
    if (!error && central) {
        for (const QString& uuid : central->descriptors(path())) {
            if (!searchDescriptor(uuid))
                m_descriptorArray.append(std::make_shared<BluetoothDescriptor>(
                    BluetoothUuid::normalized(uuid), shared_from_this()));
        }
    }
    auto waiting = std::exchange(m_descriptorCallbackArray, {});
    for (const DescriptorsCallback& callback : waiting)
        callback(m_descriptorArray, error);
}

} // namespace ostrel
