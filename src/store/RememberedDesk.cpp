#include "store/RememberedDesk.h"

#include "store/CurrentDeskModel.h"
#include "store/CurrentDeviceStore.h"
#include "store/DQDataSessionHelper.h"
#include "store/ListLookup.h"
#include "store/OMPlistManager.h"
#include "store/Object_SystemSetting.h"
#include "store/RecordDictionary.h"

namespace ostrel {

namespace {

QString currentDeskName() {
    return QString::fromStdString(CurrentDeviceStore::load().bluetoothName.value_or(""));
}

bool isBound(const QString& desk, const QString& model) {
    return ListLookup::indexOf(OMPlistManager::getBindDeviceOfModel(model),
                               QStringLiteral("bluetoothName"), desk) >= 0;
}

} // namespace

bool RememberedDesk::isOn() {
    return fromPropertyForm<Object_SystemSetting>(DQDataSessionHelper::userGetSystemSettinginfo())
               .rememberdesk == "1";
}

std::optional<QString> RememberedDesk::modelOfCurrentDesk(const QStringList& models) {
    const QString desk = isOn() ? currentDeskName() : QString();
    if (desk.isEmpty())
        return std::nullopt;
    for (const QString& model : models) {
        if (isBound(desk, model))
            return model;
    }
    return std::nullopt;
}

QString RememberedDesk::name() {
    const QString desk = isOn() ? currentDeskName() : QString();
    return !desk.isEmpty() && isBound(desk, CurrentDeskModel::name()) ? desk : QString();
}

} // namespace ostrel
