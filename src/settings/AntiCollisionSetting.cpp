#include "settings/AntiCollisionSetting.h"

#include "protocol/BluetoothProtocol.h"
#include "transport/RBBluetoothManager.h"

#include <QCoreApplication>

namespace ostrel {

bool AntiCollisionSetting::isOn(const OMBluetoothModel& record) {
    return record.encounterResistanceGoBack == "1";
}

int AntiCollisionSetting::sensitivity(const OMBluetoothModel& record) {
    return QString::fromStdString(record.resistanceSensitivity.value_or(std::string())).toInt();
}

int AntiCollisionSetting::level(const OMBluetoothModel& record) {
    if (record.resistanceSensitivity == "1")
        return 1;
    return record.resistanceSensitivity == "2" ? 2 : 3;
}

QString AntiCollisionSetting::levelName(int level) {
    switch (level) {
    case 1:
        return QCoreApplication::translate("ostrel::AntiCollisionSetting", "Low");
    case 2:
        return QCoreApplication::translate("ostrel::AntiCollisionSetting", "Middle");
    default:
        return QCoreApplication::translate("ostrel::AntiCollisionSetting", "High");
    }
}

void AntiCollisionSetting::actionSetResistanceGoBack(const OMBluetoothModel& record) {
    const std::string state = record.encounterResistanceGoBack.value_or(std::string());
    RBBluetoothManager::sharedInstance().writeDataWithCurrentperipheral(
        BluetoothProtocol::cmdForResistanceGoBackWithState(state, sensitivity(record)), nullptr);
}

} // namespace ostrel
