#include "SettingsTour.h"

#include "session/HeightSaveHelpVC.h"
#include "session/NotificationAlert.h"
#include "session/OMTimeManager.h"
#include "session/SitStandReminder.h"
#include "settings/ColorManageView.h"
#include "settings/ShortcutComboRowView.h"
#include "settings/ShortcutSwitchRowView.h"
#include "settings/ViewIntelligentControl.h"
#include "settings/ViewReminderInterval.h"
#include "settings/ViewSetting.h"
#include "settings/ViewShortcutKeys.h"
#include "settings/ViewSitStand.h"
#include "settings/ViewSystemSetting.h"
#include "transport/screens/DeviceManagerRowView.h"
#include "transport/screens/ViewDeviceDetail.h"
#include "transport/screens/ViewDeviceManagement.h"
#include "widgets/OMImageButton.h"
#include "widgets/OMWindowIdentifier.h"

#include <QLineEdit>
#include <QPushButton>

using namespace std::chrono_literals;

namespace ostrel {

std::deque<Step> SettingsTour::settingsPages() const {
    const TourNavigator& nav = m_nav;
    return {
        {QStringLiteral("6-settings-menu"), nav.openSettingsMenu(), 800ms},
        {QStringLiteral("7-system-settings"),
         nav.onPage<ViewSetting>([](ViewSetting& menu) { menu.actionPushToSysSetting(); }), 800ms},
        {QStringLiteral("8-unit"),
         nav.onPage<ViewSystemSetting>([](ViewSystemSetting& page) { page.actionSelectUnit(); }),
         800ms},
        {QStringLiteral("9-shortcut-keys"),
         nav.backThen<ViewSystemSetting>(
             [](ViewSystemSetting& page) { page.actionSelectShortcut(); }),
         800ms},
        {QStringLiteral("9-shortcut-keys-alt-cmd"),
         nav.onPage<ViewShortcutKeys>([](ViewShortcutKeys& page) {
             page.comboRow()->actionMenuSelect(ShortcutComboRowView::kFirstTag + 1);
             page.switchRow()->actionSwitch();
         }),
         800ms},
        // Going back to Shift asks first, naming the conflict.
        {QStringLiteral("9-shortcut-keys-shift-warning"),
         nav.onPage<ViewShortcutKeys>([](ViewShortcutKeys& page) {
             page.comboRow()->actionMenuSelect(ShortcutComboRowView::kFirstTag);
         }),
         800ms},
        {QStringLiteral("10-presets-help"), nav.onControl([&nav](DeskControlVC& control) {
             nav.closePages();
             control.actionShowHelp();
         }),
         800ms},
        {QStringLiteral("11-presets-and-anti-collision"),
         [] {
             if (auto* help = qobject_cast<HeightSaveHelpVC*>(
                     OMWindowIdentifier::find(OMWindowIdentifier::setting())))
                 help->customizeButton()->click();
         },
         800ms},
        {QStringLiteral("12-sensitivity"),
         nav.onPage<ViewIntelligentControl>(
             [](ViewIntelligentControl& page) { page.actionSelectSensitivity(); }),
         800ms},
        {QStringLiteral("13-anti-collision-help"),
         nav.backThen<ViewIntelligentControl>(
             [](ViewIntelligentControl& page) { page.actionAntiHelp(); }),
         800ms},
        {QStringLiteral("14-automatic-reset-help"),
         nav.backThen<ViewIntelligentControl>(
             [](ViewIntelligentControl& page) { page.actionResetHelp(); }),
         800ms},
        // The strip switched on first: the desk's report of it would replace a colour picked
        // before it arrives.
        {QString(), nav.onControl([&nav](DeskControlVC& control) {
             nav.closePages();
             control.lightStripButton()->click();
             nav.onPage<ColorManageView>([](ColorManageView& page) { page.actionLightOpen(); })();
         }),
         500ms},
        {QStringLiteral("15-light-strip"), nav.onPage<ColorManageView>([](ColorManageView& page) {
             page.changeColorWithMode(ColorManageView::kCustomMode, QColor(0x2F, 0x80, 0xED));
         }),
         800ms},
        {QString(), [&nav] { nav.closePages(); }, 300ms},
    };
}

namespace {

// Brings the running countdown to its last second, so that it ends a moment later.
void endCountdownSoon() {
    OMTimeManager& counter = OMTimeManager::sharedInstance();
    counter.setTime(SitStandReminder::countdownLength(counter.type(), counter.total()) - 1);
}

} // namespace

std::deque<Step> SettingsTour::reminder() const {
    const TourNavigator& nav = m_nav;
    const auto alertShown = [] { return NotificationAlert::current() != nullptr; };
    return {
        {QString(), nav.openSettingsMenu(), 800ms},
        {QStringLiteral("18-sit-stand"), nav.onPage<ViewSetting>([&nav](ViewSetting& menu) {
             menu.actionPushToSitStand();
             nav.onPage<ViewSitStand>([](ViewSitStand& page) { page.actionSitStandSwitch(); })();
         }),
         800ms},
        {QStringLiteral("19-reminder-interval"),
         nav.onPage<ViewSitStand>([](ViewSitStand& page) { page.actionSelectInterval(); }), 800ms},
        {QStringLiteral("20-reminder-custom"),
         nav.onPage<ViewReminderInterval>([](ViewReminderInterval& page) {
             page.actionSelectInterval(ViewReminderInterval::kFirstTag +
                                       ViewReminderInterval::kCustomSelection);
             page.minutesField()->setText(QStringLiteral("30"));
             page.actionSelectRepeat();
         }),
         800ms},
        {QStringLiteral("21-countdown"),
         nav.onPage<ViewReminderInterval>([&nav](ViewReminderInterval& page) {
             page.actionConfirm();
             nav.closePages();
         }),
         1500ms},
        {QStringLiteral("22-reminder-repeating"), endCountdownSoon, 800ms, alertShown},
        // Answered; the next round reminds once.
        {QString(), nav.onControl([&nav](DeskControlVC& control) {
             if (NotificationAlert* alert = NotificationAlert::current())
                 alert->actionConfirm();
             emit control.settingsRequested();
             nav.onPage<ViewSetting>([](ViewSetting& menu) { menu.actionPushToSitStand(); })();
             nav.onPage<ViewSitStand>([](ViewSitStand& page) {
                 page.intervalChosen(ViewReminderInterval::kCustomSelection, 30, false);
             })();
             nav.closePages();
         }),
         500ms},
        {QStringLiteral("23-reminder-single"), endCountdownSoon, 800ms, alertShown},
        {QString(),
         [] {
             if (NotificationAlert* alert = NotificationAlert::current())
                 alert->actionCancel();
         },
         300ms},
    };
}

std::deque<Step> SettingsTour::devices() const {
    const TourNavigator& nav = m_nav;
    return {
        {QString(), nav.openSettingsMenu(), 500ms},
        {QStringLiteral("24-device-management"),
         nav.onPage<ViewSetting>([](ViewSetting& menu) { menu.actionPushToDevice(); }), 800ms,
         [&nav] {
             auto* page = nav.topPage<ViewDeviceManagement>();
             return page && !page->unPairedRows().isEmpty();
         }},
        {QStringLiteral("25-device-detail"),
         nav.onPage<ViewDeviceManagement>([](ViewDeviceManagement& page) {
             if (!page.pairedRows().isEmpty())
                 emit page.pairedRows().first()->clicked();
         }),
         800ms},
        {QStringLiteral("26-device-name-edit"),
         nav.onPage<ViewDeviceDetail>([](ViewDeviceDetail& page) { page.actionEditName(); }),
         800ms},
        {QString(), [&nav] { nav.closePages(); }, 300ms},
    };
}

} // namespace ostrel
