#include "SystemServices.h"

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

SystemServices* SystemServices::setInstance(SystemServices* services) {
    return std::exchange(installed(), services);
}

} // namespace ostrel
