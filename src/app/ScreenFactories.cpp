#include "ScreenFactories.h"

#include "app/HomeErrorVC.h"
#include "app/SystemServices.h"
#include "session/DeskControlVC.h"
#include "settings/DevicePages.h"
#include "settings/SettingsNavigation.h"
#include "settings/SettingsPages.h"
#include "settings/ViewShortcutKeys.h"
#include "settings/ViewSitStand.h"
#include "settings/ViewSystemSetting.h"
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
    DeskControlVC::setErrorScreenFactory(&HomeErrorVC::makeWindow);
    router.registerScreen(QLatin1String(screens::kDeskControl), [] {
        auto* control = new DeskControlVC;
        SettingsNavigation::attach(*control);
        return control;
    });
    SettingsPages& pages = SettingsPages::instance();
    pages.registerPage(SettingsPages::Page::SitStand,
                       [](DeskControlVC* father) { return new ViewSitStand(father); });
    pages.registerPage(SettingsPages::Page::Device, &DevicePages::create);
    pages.registerPage(SettingsPages::Page::Shortcuts,
                       [](DeskControlVC* father) { return new ViewShortcutKeys(father); });
    ViewSystemSetting::setHotKeyRemover(
        [] { SystemServices::instance().removeDeskGlobalHotKey(); });
}

} // namespace ostrel
