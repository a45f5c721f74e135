#include "transport/screens/DeskBinding.h"

#include "core/Scheduler.h"
#include "store/DQToolHelper.h"
#include "store/FileManager.h"
#include "store/ListLookup.h"
#include "store/OMPlistManager.h"

namespace ostrel {

namespace {

std::string nowAs(const char* format) {
    return DQToolHelper::getDateStrWithDate(Scheduler::instance().wallNow(),
                                            QString::fromLatin1(format))
        .toStdString();
}

constexpr char kMinuteFormat[] = "yyyy-MM-dd HH:mm";

} // namespace

OMBluetoothModel DeskBinding::newRecord(const QString& name, const QString& identifier) {
    OMBluetoothModel record;
    record.deviceName = name.toStdString();
    record.bluetoothName = name.toStdString();
    // The platform gives no hardware address; its identifier is the closest thing.
    record.bluetoothMacAddress = identifier.toStdString();
    record.createTime = nowAs("yyyy-MM-dd HH:mm:ss");
    record.sitOrStand = "0";
    record.remindType = "0";
    record.remindInterval = "0";
    record.notificationsound = "0";
    record.memoryHeight = "0,0,0,0";
    record.encounterResistanceGoBack = "0";
    record.resistanceSensitivity = "1";
    record.lastConnectionTime = nowAs(kMinuteFormat);
    return record;
}

void DeskBinding::bindDevice(const QString& name, const QString& identifier) {
    OMPlistManager::saveBindDeviceWithDevice(toPropertyForm(newRecord(name, identifier)));
    setCurrentDeviceWithperipheral(name, identifier);
}

void DeskBinding::setCurrentDeviceWithperipheral(const QString& name, const QString& identifier) {
    const QVariantList devices = OMPlistManager::getBindDevice();
    const qsizetype index = ListLookup::indexOf(devices, QStringLiteral("bluetoothName"), name);
    QVariantMap device;
    if (index < 0) {
        device = toPropertyForm(newRecord(name, identifier));
    } else {
        // Edit the stored dictionary itself so keys this build does not know survive.
        device = devices.at(index).toMap();
        device.insert(QStringLiteral("lastConnectionTime"),
                      QString::fromStdString(nowAs(kMinuteFormat)));
    }
    FileManager::writeDictionary(device, QString::fromLatin1(kCurrentDeviceFileName));
}

} // namespace ostrel
