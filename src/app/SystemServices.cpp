#include "SystemServices.h"

#include "session/DQGlobalKeyHelper.h"
#include "session/DQNotificationHelper.h"

#include <utility>

namespace ostrel {

namespace {

SystemServices*& installed() {
    static SystemServices* services = nullptr;
    return services;
}

} // namespace

void SystemServices::addDeskGlobalHotKeyWithCombineKeyType(int type) {
    DQGlobalKeyHelper::shareInstance().addDeskGlobalHotKeyWithCombineKeyType(type);
}

void SystemServices::removeDeskGlobalHotKey() {
    DQGlobalKeyHelper::shareInstance().removeDeskGlobalHotKey();
}

SystemServices& SystemServices::instance() {
    static SystemServices defaults;
    SystemServices* services = installed();
    return services ? *services : defaults;
}

void SystemServices::openNotification() {
    DQNotificationHelper::shareInstance().openNotification();
}

void SystemServices::closeNotification() {
    DQNotificationHelper::shareInstance().closeNotification();
}

SystemServices* SystemServices::setInstance(SystemServices* services) {
    return std::exchange(installed(), services);
}

} // namespace ostrel
