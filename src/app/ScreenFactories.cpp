#include "ScreenFactories.h"

#include "session/DeskControlVC.h"
#include "transport/screens/BluetoothSearchVC.h"
#include "transport/screens/DeskTypeVC.h"
#include "transport/screens/NoBluetoothVC.h"
#include "widgets/OMScreenRouter.h"

namespace ostrel {

namespace {

template <class Screen> OMScreenRouter::Factory factory() {
    return [] { return new Screen; };
}

} // namespace

void ScreenFactories::registerAll() {
    OMScreenRouter& router = OMScreenRouter::instance();
    router.registerScreen(QLatin1String(screens::kDeskType), factory<DeskTypeVC>());
    router.registerScreen(QLatin1String(screens::kBluetoothSearch), factory<BluetoothSearchVC>());
    router.registerScreen(QLatin1String(screens::kNoBluetooth), factory<NoBluetoothVC>());
    router.registerScreen(QLatin1String(screens::kDeskControl), factory<DeskControlVC>());
}

} // namespace ostrel
