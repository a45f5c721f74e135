#include "SystemServices.h"

#include "session/DQGlobalKeyHelper.h"

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
    static SystemServices inactive;
    SystemServices* services = installed();
    return services ? *services : inactive;
}

SystemServices* SystemServices::setInstance(SystemServices* services) {
    return std::exchange(installed(), services);
}

} // namespace ostrel
