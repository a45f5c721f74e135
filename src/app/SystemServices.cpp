#include "SystemServices.h"

#include "session/DQNotificationHelper.h"
#include "session/DesktopNotifications.h"

#include <utility>

namespace ostrel {

namespace {

SystemServices*& installed() {
    static SystemServices* services = nullptr;
    return services;
}

} // namespace

SystemServices& SystemServices::instance() {
    static SystemServices inactive;
    SystemServices* services = installed();
    return services ? *services : inactive;
}

void SystemServices::openNotification() {
    DQNotificationHelper::shareInstance().openNotification();
}

void SystemServices::closeNotification() {
    DQNotificationHelper::shareInstance().closeNotification();
}

void SystemServices::removeAllDeliveredNotifications() {
    DesktopNotifications::instance().removeAllDelivered();
}

SystemServices* SystemServices::setInstance(SystemServices* services) {
    return std::exchange(installed(), services);
}

} // namespace ostrel
