// Shows every screen of the home window on the demo desks, one after another, and saves a
// picture of what is on the display after each: screenshot-tour --lang en|zh-Hans --out DIR.
// Run it on a real X server (tools/screenshots.sh starts one).
#include "Tour.h"
#include "app/AppDelegate.h"
#include "app/DemoDesks.h"
#include "app/HomeErrorVC.h"
#include "app/LocalPreference.h"
#include "app/OMBaseModalWindow.h"
#include "app/ScreenFactories.h"
#include "core/Scheduler.h"
#include "session/DeskControlVC.h"
#include "session/HeightSaveHelpVC.h"
#include "session/NotificationAlert.h"
#include "session/OMTimeManager.h"
#include "session/ShortcutsHeightSetVC.h"
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
#include "sim/VirtualCentral.h"
#include "sim/VirtualDesk.h"
#include "transport/RBBluetoothManager.h"
#include "transport/screens/DeskSearchRowView.h"
#include "transport/screens/DeviceManagerRowView.h"
#include "transport/screens/ViewDeviceDetail.h"
#include "transport/screens/ViewDeviceManagement.h"
#include "widgets/OMImageButton.h"
#include "widgets/OMScreenRouter.h"
#include "widgets/OMWindowIdentifier.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <algorithm>
#include <deque>
#include <iterator>

using namespace ostrel;
using namespace std::chrono_literals;

namespace {

void clickFirstDesk(QWidget& home) {
    if (auto* row = home.findChild<DeskSearchRowView*>())
        QTest::mouseClick(row, Qt::LeftButton);
}

DeskControlVC* controlIn(QWidget& home) {
    return home.findChild<DeskControlVC*>();
}

// The desk the application bound: the one it subscribed to.
VirtualDesk& boundDesk(DemoDesks& demo) {
    for (VirtualDesk* desk : demo.desks()) {
        if (desk->isSubscribed())
            return *desk;
    }
    return *demo.desks().first();
}

void logDesk(const VirtualDesk& desk) {
    const RBBluetoothManager& facade = RBBluetoothManager::sharedInstance();
    qInfo("desk %s: subscribed %d, height %d; link %d to %s", qPrintable(desk.name()),
          desk.isSubscribed(), desk.heightTenths(), facade.isConnect(),
          facade.currentPeripheral() ? qPrintable(facade.currentPeripheral()->name()) : "none");
}

bool promptShown() {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && qobject_cast<const QMessageBox*>(window))
            return true;
    }
    return false;
}

void closeWindowsExceptHome(QWidget& home);

// The page on top of the control screen's stack, when it is a `Page`.
template <class Page> Page* topPage(QWidget& home) {
    DeskControlVC* control = controlIn(home);
    return control ? qobject_cast<Page*>(control->topView()) : nullptr;
}

void closePages(QWidget& home) {
    if (DeskControlVC* control = controlIn(home)) {
        while (control->pageCount() > 0)
            control->popViewControl();
    }
}

// Runs `action` on the control screen, when there is one.
std::function<void()> onControl(QWidget& home, std::function<void(DeskControlVC&)> action) {
    return [&home, action] {
        if (DeskControlVC* control = controlIn(home))
            action(*control);
    };
}

// Runs `action` on the page on top, when it is a `Page`.
template <class Page>
std::function<void()> onPage(QWidget& home, std::function<void(Page&)> action) {
    return [&home, action] {
        if (Page* page = topPage<Page>(home))
            action(*page);
    };
}

// Closes the page on top, then runs `action` on the one below, when it is a `Page`.
template <class Page>
std::function<void()> backThen(QWidget& home, std::function<void(Page&)> action) {
    return [&home, action] {
        if (DeskControlVC* control = controlIn(home))
            control->popViewControl();
        onPage<Page>(home, action)();
    };
}

// Opens the settings menu from the control screen, with no other window in the way.
std::function<void()> openSettingsMenu(QWidget& home) {
    return onControl(home, [&home](DeskControlVC& control) {
        closeWindowsExceptHome(home);
        emit control.settingsRequested();
    });
}

// The settings pages, each reached the way a user reaches it.
std::deque<Step> settingsSteps(QWidget& home) {
    return {
        {QStringLiteral("6-settings-menu"), openSettingsMenu(home), 800ms},
        {QStringLiteral("7-system-settings"),
         onPage<ViewSetting>(home, [](ViewSetting& menu) { menu.actionPushToSysSetting(); }),
         800ms},
        {QStringLiteral("8-unit"),
         onPage<ViewSystemSetting>(home, [](ViewSystemSetting& page) { page.actionSelectUnit(); }),
         800ms},
        {QStringLiteral("9-shortcut-keys"),
         backThen<ViewSystemSetting>(home,
                                     [](ViewSystemSetting& page) { page.actionSelectShortcut(); }),
         800ms},
        {QStringLiteral("9-shortcut-keys-alt-cmd"),
         onPage<ViewShortcutKeys>(home,
                                  [](ViewShortcutKeys& page) {
                                      page.comboRow()->actionMenuSelect(
                                          ShortcutComboRowView::kFirstTag + 1);
                                      page.switchRow()->actionSwitch();
                                  }),
         800ms},
        // Going back to Shift asks first, naming the conflict.
        {QStringLiteral("9-shortcut-keys-shift-warning"),
         onPage<ViewShortcutKeys>(home,
                                  [](ViewShortcutKeys& page) {
                                      page.comboRow()->actionMenuSelect(
                                          ShortcutComboRowView::kFirstTag);
                                  }),
         800ms},
        {QStringLiteral("10-presets-help"),
         onControl(home,
                   [&home](DeskControlVC& control) {
                       closePages(home);
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
         onPage<ViewIntelligentControl>(
             home, [](ViewIntelligentControl& page) { page.actionSelectSensitivity(); }),
         800ms},
        {QStringLiteral("13-anti-collision-help"),
         backThen<ViewIntelligentControl>(
             home, [](ViewIntelligentControl& page) { page.actionAntiHelp(); }),
         800ms},
        {QStringLiteral("14-automatic-reset-help"),
         backThen<ViewIntelligentControl>(
             home, [](ViewIntelligentControl& page) { page.actionResetHelp(); }),
         800ms},
        // The strip switched on first: the desk's report of it would replace a colour picked
        // before it arrives.
        {QString(),
         onControl(home,
                   [&home](DeskControlVC& control) {
                       closePages(home);
                       control.lightStripButton()->click();
                       onPage<ColorManageView>(
                           home, [](ColorManageView& page) { page.actionLightOpen(); })();
                   }),
         500ms},
        {QStringLiteral("15-light-strip"),
         onPage<ColorManageView>(home,
                                 [](ColorManageView& page) {
                                     page.changeColorWithMode(ColorManageView::kCustomMode,
                                                              QColor(0x2F, 0x80, 0xED));
                                 }),
         800ms},
        {QString(), [&home] { closePages(home); }, 300ms},
    };
}

// Brings the running countdown to its last second, so that it ends a moment later.
void endCountdownSoon() {
    OMTimeManager& counter = OMTimeManager::sharedInstance();
    counter.setTime(SitStandReminder::countdownLength(counter.type(), counter.total()) - 1);
}

// The sit-stand reminder: its pages, the countdown, and the alert in both forms.
std::deque<Step> reminderSteps(QWidget& home) {
    const auto alertShown = [] { return NotificationAlert::current() != nullptr; };
    return {
        {QString(), openSettingsMenu(home), 800ms},
        {QStringLiteral("18-sit-stand"),
         onPage<ViewSetting>(home,
                             [&home](ViewSetting& menu) {
                                 menu.actionPushToSitStand();
                                 onPage<ViewSitStand>(home, [](ViewSitStand& page) {
                                     page.actionSitStandSwitch();
                                 })();
                             }),
         800ms},
        {QStringLiteral("19-reminder-interval"),
         onPage<ViewSitStand>(home, [](ViewSitStand& page) { page.actionSelectInterval(); }),
         800ms},
        {QStringLiteral("20-reminder-custom"),
         onPage<ViewReminderInterval>(home,
                                      [](ViewReminderInterval& page) {
                                          page.actionSelectInterval(
                                              ViewReminderInterval::kFirstTag +
                                              ViewReminderInterval::kCustomSelection);
                                          page.minutesField()->setText(QStringLiteral("30"));
                                          page.actionSelectRepeat();
                                      }),
         800ms},
        {QStringLiteral("21-countdown"),
         onPage<ViewReminderInterval>(home,
                                      [&home](ViewReminderInterval& page) {
                                          page.actionConfirm();
                                          closePages(home);
                                      }),
         1500ms},
        {QStringLiteral("22-reminder-repeating"), endCountdownSoon, 800ms, alertShown},
        // Answered; the next round reminds once.
        {QString(),
         onControl(home,
                   [&home](DeskControlVC& control) {
                       if (NotificationAlert* alert = NotificationAlert::current())
                           alert->actionConfirm();
                       emit control.settingsRequested();
                       onPage<ViewSetting>(
                           home, [](ViewSetting& menu) { menu.actionPushToSitStand(); })();
                       onPage<ViewSitStand>(home, [](ViewSitStand& page) {
                           page.intervalChosen(ViewReminderInterval::kCustomSelection, 30, false);
                       })();
                       closePages(home);
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

// The device pages: the list once a scan has found the other demo desk, the bound desk's
// details, and its rename page.
std::deque<Step> deviceSteps(QWidget& home) {
    return {
        {QString(), openSettingsMenu(home), 500ms},
        {QStringLiteral("24-device-management"),
         onPage<ViewSetting>(home, [](ViewSetting& menu) { menu.actionPushToDevice(); }), 800ms,
         [&home] {
             auto* page = topPage<ViewDeviceManagement>(home);
             return page && !page->unPairedRows().isEmpty();
         }},
        {QStringLiteral("25-device-detail"),
         onPage<ViewDeviceManagement>(home,
                                      [](ViewDeviceManagement& page) {
                                          if (!page.pairedRows().isEmpty())
                                              emit page.pairedRows().first()->clicked();
                                      }),
         800ms},
        {QStringLiteral("26-device-name-edit"),
         onPage<ViewDeviceDetail>(home, [](ViewDeviceDetail& page) { page.actionEditName(); }),
         800ms},
        {QString(), [&home] { closePages(home); }, 300ms},
    };
}

void closeWindowsExceptHome(QWidget& home) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window != &home && window->isVisible())
            window->close();
    }
}

std::deque<Step> tourSteps(Tour& tour) {
    QWidget& home = tour.home();
    auto show = [](const char* screen) {
        return [screen] { OMScreenRouter::instance().show(QLatin1String(screen)); };
    };
    std::deque<Step> steps = {
        {QStringLiteral("1-search"),
         {},
         500ms,
         [&home] { return home.findChildren<DeskSearchRowView*>().size() >= 2; }},
        {QStringLiteral("2-desk-type"), show(screens::kDeskType), 800ms},
        {QStringLiteral("3-no-bluetooth"),
         [&tour, show] {
             tour.demo().central()->setPowered(false);
             show(screens::kNoBluetooth)();
         },
         800ms},
        {QString(),
         [&tour, show] {
             tour.demo().central()->setPowered(true);
             show(screens::kBluetoothSearch)();
         },
         500ms, [&home] { return !home.findChildren<DeskSearchRowView*>().isEmpty(); }},
        {QString(), [&home] { clickFirstDesk(home); }, 1500ms,
         [&tour] { return boundDesk(tour.demo()).isSubscribed(); }},
        // The height shows once the desk moves: hold Up for a moment.
        {QString(),
         [&home, &tour] {
             logDesk(boundDesk(tour.demo()));
             if (DeskControlVC* control = controlIn(home))
                 control->touchDwon(control->upButton());
         },
         1500ms},
        {QStringLiteral("4-desk-control"),
         [&home] {
             if (DeskControlVC* control = controlIn(home))
                 control->touchUp(control->upButton());
         },
         2500ms},
        {QStringLiteral("5-save-sheet"),
         [&home, &tour] {
             logDesk(boundDesk(tour.demo()));
             if (DeskControlVC* control = controlIn(home))
                 control->longHoverPress(control->presetButton(0));
         },
         800ms},
    };
    // The settings pages, then the error and the link loss, which end the session.
    std::ranges::move(settingsSteps(home), std::back_inserter(steps));
    std::ranges::move(reminderSteps(home), std::back_inserter(steps));
    std::ranges::move(deviceSteps(home), std::back_inserter(steps));
    steps.insert(steps.end(), {
                                  {QStringLiteral("16-error"),
                                   [&home] {
                                       closeWindowsExceptHome(home);
                                       home.hide(); // the error window alone in the picture
                                       HomeErrorVC::showError(30);
                                   },
                                   800ms},
                                  {QStringLiteral("17-link-loss"),
                                   [&tour, &home] {
                                       closeWindowsExceptHome(home);
                                       home.show();
                                       boundDesk(tour.demo()).dropLink();
                                   },
                                   500ms, [] { return promptShown(); }},
                              });
    return steps;
}

// Under a Wayland compositor: the control screen with a height, and the shortcut page, which
// there offers the commands to bind in the desktop's own settings when no portal offers
// global shortcuts.
std::deque<Step> waylandSteps(Tour& tour) {
    QWidget& home = tour.home();
    return {
        {QString(),
         {},
         300ms,
         [&home] { return !home.findChildren<DeskSearchRowView*>().isEmpty(); }},
        {QString(), [&home] { clickFirstDesk(home); }, 1500ms,
         [&tour] { return boundDesk(tour.demo()).isSubscribed(); }},
        {QString(),
         onControl(home, [](DeskControlVC& control) { control.touchDwon(control.upButton()); }),
         1500ms},
        {QStringLiteral("wayland-1-desk-control"),
         onControl(home, [](DeskControlVC& control) { control.touchUp(control.upButton()); }),
         2500ms},
        {QString(), openSettingsMenu(home), 500ms},
        {QString(),
         onPage<ViewSetting>(home, [](ViewSetting& menu) { menu.actionPushToSysSetting(); }),
         500ms},
        {QStringLiteral("wayland-2-shortcut-keys"),
         onPage<ViewSystemSetting>(home,
                                   [](ViewSystemSetting& page) { page.actionSelectShortcut(); }),
         800ms, [&home] { return topPage<ViewShortcutKeys>(home) != nullptr; }},
    };
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("ostrel"));
    QApplication::setApplicationName(QStringLiteral("ostrel-motion-tour"));
    QApplication::setDesktopFileName(QStringLiteral("com.ostrel.motion"));
    QCommandLineParser parser;
    const QCommandLineOption lang(QStringLiteral("lang"), QStringLiteral("en or zh-Hans"),
                                  QStringLiteral("language"), QStringLiteral("en"));
    const QCommandLineOption out(QStringLiteral("out"), QStringLiteral("Folder for the pictures"),
                                 QStringLiteral("folder"), QStringLiteral("screenshots"));
    const QCommandLineOption wayland(
        QStringLiteral("wayland"),
        QStringLiteral("Only the Wayland pictures, taken with grim (run under a compositor)"));
    parser.addOptions({lang, out, wayland});
    parser.process(application);
    QDir().mkpath(parser.value(out));

    QSettings().setValue(QLatin1String(LocalPreference::kLanguageKey), parser.value(lang));
    LocalPreference::installTranslators(application);
    DemoDesks demo;
    ScreenFactories::registerAll();
    AppDelegate delegate;
    Tour tour(parser.value(out), delegate, demo);
    delegate.applicationDidFinishLaunching();
    if (parser.isSet(wayland))
        tour.useGrim();
    tour.run(parser.isSet(wayland) ? waylandSteps(tour) : tourSteps(tour));
    const int status = QApplication::exec();
    AppDelegate::releaseTransport();
    return status;
}
