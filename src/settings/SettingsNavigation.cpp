#include "settings/SettingsNavigation.h"

#include "session/ActivityRecorder.h"
#include "session/DeskControlVC.h"
#include "session/DeskSession.h"
#include "settings/ActivityPage.h"
#include "settings/ColorManageView.h"
#include "settings/ViewIntelligentControl.h"
#include "settings/ViewSetting.h"

namespace ostrel {

void SettingsNavigation::attach(DeskControlVC& control) {
    DeskControlVC* screen = &control;
    QObject::connect(screen, &DeskControlVC::settingsRequested, screen,
                     [screen] { screen->pushViewControlWithView(new ViewSetting(screen)); });
    QObject::connect(screen, &DeskControlVC::lightStripRequested, screen, [screen] {
        const Object_LightColor light =
            screen->session().objectLightColor().value_or(Object_LightColor{});
        screen->pushViewControlWithView(new ColorManageView(screen, light));
    });
    QObject::connect(screen, &DeskControlVC::intelligentControlRequested, screen, [screen] {
        screen->pushViewControlWithView(new ViewIntelligentControl(screen));
    });
    QObject::connect(screen, &DeskControlVC::activityRequested, screen, [screen] {
        if (ActivityRecorder* recorder = ActivityRecorder::current())
            screen->pushViewControlWithView(new ActivityPage(screen, *recorder));
    });
}

} // namespace ostrel
