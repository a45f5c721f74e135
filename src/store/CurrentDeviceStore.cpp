#include "store/CurrentDeviceStore.h"

#include "core/Scheduler.h"
#include "store/DQToolHelper.h"
#include "store/FileManager.h"
#include "store/ListLookup.h"
#include "store/OMPlistManager.h"

#include <QStringList>
#include <cstdio>
#include <string>

namespace ostrel {

namespace {

QString fileName() {
    return QString::fromLatin1(CurrentDeviceStore::kFileName);
}

QString now(const char* format) {
    return DQToolHelper::getDateStrWithDate(Scheduler::instance().wallNow(),
                                            QString::fromLatin1(format));
}

// The leading whole number of a text, as a desk record's numbers have always been read: "72",
// " 72.6" and "72cm" all give 72; a text without digits gives 0.
int leadingInteger(const QString& text) {
    const QString trimmed = text.trimmed();
    qsizetype end = 0;
    if (end < trimmed.size() && (trimmed[end] == u'-' || trimmed[end] == u'+'))
        ++end;
    while (end < trimmed.size() && trimmed[end].isDigit())
        ++end;
    return trimmed.left(end).toInt();
}

} // namespace

OMBluetoothModel CurrentDeviceStore::load() {
    return fromPropertyForm<OMBluetoothModel>(
        FileManager::readDictionaryFileName(fileName()).value_or(QVariantMap{}));
}

void CurrentDeviceStore::save(const OMBluetoothModel& record) {
    const QVariantMap dictionary = toPropertyForm(record);
    std::optional<QString> name;
    if (record.bluetoothName)
        name = QString::fromStdString(*record.bluetoothName);
    OMPlistManager::saveDeviceInfoWithBlueToothName(name, dictionary);
    FileManager::writeDictionary(dictionary, fileName());
}

void CurrentDeviceStore::writeCurrent(const OMBluetoothModel& record) {
    FileManager::writeDictionary(toPropertyForm(record), fileName());
}

void CurrentDeviceStore::remove() {
    FileManager::deleteFileName(fileName());
}

OMBluetoothModel CurrentDeviceStore::freshRecord(const QString& name, const QString& identifier) {
    const std::string zero = "0";
    OMBluetoothModel record;
    record.deviceName = name.toStdString();
    record.bluetoothName = name.toStdString();
    record.bluetoothMacAddress = identifier.toStdString();
    record.createTime = now("yyyy-MM-dd HH:mm:ss").toStdString();
    record.sitOrStand = zero;
    record.remindType = zero;
    record.remindInterval = zero;
    record.notificationsound = zero;
    record.encounterResistanceGoBack = zero;
    record.memoryHeight = std::string(kNoPresets);
    record.resistanceSensitivity.emplace("1");
    record.lastConnectionTime = now("yyyy-MM-dd HH:mm").toStdString();
    return record;
}

void CurrentDeviceStore::bindDevice(const QString& name, const QString& identifier) {
    OMPlistManager::saveBindDeviceWithDevice(toPropertyForm(freshRecord(name, identifier)));
    setCurrentDeviceWithperipheral(name, identifier);
}

void CurrentDeviceStore::setCurrentDeviceWithperipheral(const QString& name,
                                                        const QString& identifier) {
    const QVariantList devices = OMPlistManager::getBindDevice();
    const qsizetype index = ListLookup::indexOf(devices, QStringLiteral("bluetoothName"), name);
    if (index < 0) {
        writeCurrent(freshRecord(name, identifier));
        return;
    }
    // Edit the stored dictionary itself, so keys this build does not know survive.
    QVariantMap device = devices.at(index).toMap();
    device.insert(QStringLiteral("lastConnectionTime"), now("yyyy-MM-dd HH:mm"));
    FileManager::writeDictionary(device, fileName());
}

std::optional<CurrentDeviceStore::Presets>
CurrentDeviceStore::parsePresets(const std::optional<std::string>& memoryHeight) {
    if (!memoryHeight || memoryHeight->empty())
        return std::nullopt;
    const QStringList parts = QString::fromStdString(*memoryHeight).split(u',');
    Presets presets{};
    if (parts.size() != int(presets.size()))
        return std::nullopt;
    for (std::size_t i = 0; i < presets.size(); ++i)
        presets[i] = leadingInteger(parts[qsizetype(i)]);
    return presets;
}

std::string CurrentDeviceStore::presetsText(const Presets& presets, int slot, double heightTenths) {
    if (slot < 0 || slot >= int(presets.size()))
        return {};
    std::array<char, 32> height{};
    std::snprintf(height.data(), height.size(), "%.0f", heightTenths / 10.0);
    std::string text;
    for (int i = 0; i < int(presets.size()); ++i) {
        if (i > 0)
            text += ',';
        text += i == slot ? height.data() : std::to_string(presets[std::size_t(i)]);
    }
    return text;
}

} // namespace ostrel
