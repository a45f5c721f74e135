// Shows every screen of the home window on the demo desks, one after another, and saves a
// picture of what is on the display after each: screenshot-tour --lang en|zh-Hans --out DIR.
// Run it on a real X server (tools/screenshots.sh starts one).
#include "Tour.h"
#include "app/ActivityService.h"
#include "app/AppDelegate.h"
#include "app/DemoDesks.h"
#include "app/LocalPreference.h"
#include "app/OMBaseModalWindow.h"
#include "app/ScreenFactories.h"
#include "app/StatusMenu.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "core/Scheduler.h"
#include "session/ActivityRecorder.h"
#include "session/DeskControlVC.h"
#include "session/DeskRelease.h"
#include "session/DeskSession.h"
#include "session/GoToHeightDialog.h"
#include "session/HeightSaveHelpVC.h"
#include "session/NotificationAlert.h"
#include "session/OMTimeManager.h"
#include "session/ShortcutsHeightSetVC.h"
#include "session/SitStandReminder.h"
#include "session/StandingProgressView.h"
#include "settings/ActivityView.h"
#include "settings/ColorManageView.h"
#include "settings/ColorWellView.h"
#include "settings/ShortcutComboRowView.h"
#include "settings/ShortcutSwitchRowView.h"
#include "settings/ViewIntelligentControl.h"
#include "settings/ViewReminderInterval.h"
#include "settings/ViewSetting.h"
#include "settings/ViewShortcutKeys.h"
#include "settings/ViewSitStand.h"
#include "settings/ViewSystemSetting.h"
#include "sim/ActivitySample.h"
#include "sim/VirtualCentral.h"
#include "sim/VirtualDesk.h"
#include "store/ActivityStore.h"
#include "store/CurrentDeviceStore.h"
#include "transport/RBBluetoothManager.h"
#include "transport/screens/DeskSearchRowView.h"
#include "transport/screens/DeviceManagerRowView.h"
#include "transport/screens/ViewDeviceDetail.h"
#include "transport/screens/ViewDeviceManagement.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/OMImageButton.h"
#include "widgets/OMScreenRouter.h"
#include "widgets/OMWindowIdentifier.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>
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

// A month of made-up days at the desk, in a window of its own.
class SampleActivity {
public:
    void show() {
        m_store = std::make_unique<ActivityStore>(m_folder.filePath(QStringLiteral("a.sqlite")));
        ActivitySample::fill(*m_store, QDateTime::currentDateTime(), 30);
        m_recorder = std::make_unique<ActivityRecorder>(*m_store);
        m_window = std::make_unique<QWidget>();
        m_window->resize(460, 640);
        auto* view = new ActivityView(*m_recorder, m_window.get());
        view->setChartDays(30);
        (new QVBoxLayout(m_window.get()))->addWidget(view);
        m_window->show();
    }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<ActivityStore> m_store;
    std::unique_ptr<ActivityRecorder> m_recorder;
    std::unique_ptr<QWidget> m_window;
};

// The activity page as a fresh installation shows it, opened from today's standing time on
// the control screen; then over a month of days with moves.
std::deque<Step> activitySteps(QWidget& home, SampleActivity& sample) {
    return {
        {QStringLiteral("30-activity-fresh"),
         onControl(home,
                   [&home](DeskControlVC& control) {
                       closeWindowsExceptHome(home);
                       emit control.standingProgress()->clicked();
                   }),
         1000ms},
        {QStringLiteral("31-activity-days"),
         [&home, &sample] {
             closePages(home);
             sample.show();
         },
         1200ms},
        {QString(), [&home] { closeWindowsExceptHome(home); }, 300ms},
    };
}

// Runs `action` on the go-to-height dialog that is open, if any.
std::function<void()> onGoToHeight(std::function<void(GoToHeightDialog&)> action) {
    return [action] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* dialog = qobject_cast<GoToHeightDialog*>(window);
                dialog && dialog->isVisible())
                action(*dialog);
        }
    };
}

// The keyboard's marks, the pressed state, the go-to-height dialog before and during a move, a
// toast, the picked colour's mark, the tray menu and the About box.
std::deque<Step> keyboardAndTraySteps(QWidget& home, AppDelegate& delegate) {
    return {
        {QStringLiteral("40-focus-ring"),
         onControl(home,
                   [&home](DeskControlVC& control) {
                       closeWindowsExceptHome(home);
                       closePages(home);
                       home.activateWindow();
                       control.upButton()->setFocus(Qt::TabFocusReason);
                   }),
         800ms},
        {QStringLiteral("41-pressed-up"),
         onControl(
             home,
             [](DeskControlVC& control) { QTest::keyPress(control.upButton(), Qt::Key_Space); }),
         600ms},
        {QString(),
         onControl(
             home,
             [](DeskControlVC& control) { QTest::keyRelease(control.upButton(), Qt::Key_Space); }),
         800ms},
        {QStringLiteral("42-toast"),
         onControl(home,
                   [](DeskControlVC& control) {
                       control.touchHoverDwon(control.presetButton(3));
                       control.touchHoverUp(control.presetButton(3));
                   }),
         300ms},
        {QStringLiteral("43-go-to-height"),
         onControl(home, [](DeskControlVC& control) { control.actionGoToHeight(); }), 1500ms},
        {QStringLiteral("44-go-to-height-moving"), onGoToHeight([](GoToHeightDialog& dialog) {
             dialog.heightField()->setValue(dialog.heightField()->maximum() - 5);
             dialog.accept();
         }),
         1200ms},
        {QString(), onGoToHeight([](GoToHeightDialog& dialog) { dialog.reject(); }), 800ms},
        {QString(),
         onControl(home,
                   [&home](DeskControlVC& control) {
                       control.lightStripButton()->click();
                       onPage<ColorManageView>(
                           home, [](ColorManageView& page) { page.actionLightOpen(); })();
                   }),
         500ms},
        {QStringLiteral("45-light-strip-mark"),
         [&home] {
             if (auto* well = home.findChild<ColorWellView*>(); well && well->isVisible())
                 QTest::mouseClick(well, Qt::LeftButton, {},
                                   QPoint(well->width() / 3, well->height() / 3));
         },
         800ms},
        {QStringLiteral("46-tray-menu"),
         [&home, &delegate] {
             closePages(home);
             // Two presets set, so that the menu offers them.
             OMBluetoothModel record = CurrentDeviceStore::load();
             record.memoryHeight = "72,110,0,0";
             CurrentDeviceStore::save(record);
             NotificationCenter::defaultCenter().post(
                 QLatin1String(notifications::kMemoryKeyChange));
             delegate.menu()->popup(home.mapToGlobal(QPoint(16, 48)));
         },
         800ms},
        {QString(), [&delegate] { delegate.menu()->close(); }, 300ms},
        {QStringLiteral("47-about"), [&delegate] { delegate.showAbout(); }, 800ms},
        {QString(), [&home] { closeWindowsExceptHome(home); }, 300ms},
    };
}

void closeWindowsExceptHome(QWidget& home) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window != &home && window->isVisible())
            window->close();
    }
}

// Hides the error window the control screen opened, so the status line shows unobstructed.
void hideErrorWindow(QWidget& home) {
    if (DeskControlVC* control = controlIn(home); control && control->errorWindow())
        control->errorWindow()->hide();
}

// The desk's faults: the error screen its first fault opens, then the status line for an error
// code, the child lock and a reset request, each injected on the desk.
std::deque<Step> faultSteps(Tour& tour) {
    QWidget& home = tour.home();
    // The desk is known only once the tour has bound one.
    const auto onDesk = [&tour](std::function<void(VirtualDesk&)> action) {
        return [&tour, action] { action(boundDesk(tour.demo())); };
    };
    const auto errorShown = [&home] {
        DeskControlVC* control = controlIn(home);
        return control && control->errorWindow() && control->errorWindow()->isVisible();
    };
    return {
        {QString(), onDesk([&home](VirtualDesk& desk) {
             closeWindowsExceptHome(home);
             desk.injectError(30);
         }),
         500ms, errorShown},
        {QStringLiteral("16-error"), [&home] { home.hide(); }, 500ms},
        {QStringLiteral("16a-status-error"),
         [&home] {
             home.show();
             hideErrorWindow(home);
         },
         600ms},
        {QString(), onDesk([](VirtualDesk& desk) {
             desk.injectError(0);
             desk.setChildLock(true);
         }),
         500ms, errorShown},
        {QStringLiteral("16b-status-child-lock"), [&home] { hideErrorWindow(home); }, 600ms},
        {QString(), onDesk([](VirtualDesk& desk) {
             desk.setChildLock(false);
             desk.setResetNeeded(true);
         }),
         500ms, errorShown},
        {QStringLiteral("16c-status-reset"), [&home] { hideErrorWindow(home); }, 600ms},
        {QString(), onDesk([](VirtualDesk& desk) { desk.setResetNeeded(false); }), 300ms},
    };
}

std::deque<Step> tourSteps(Tour& tour, SampleActivity& sample, AppDelegate& delegate) {
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
    std::ranges::move(activitySteps(home, sample), std::back_inserter(steps));
    std::ranges::move(keyboardAndTraySteps(home, delegate), std::back_inserter(steps));
    std::ranges::move(faultSteps(tour), std::back_inserter(steps));
    // The desk let go of for the phone app, then connected again.
    steps.push_back(
        {QStringLiteral("16d-released"),
         onControl(home, [](DeskControlVC& control) { control.session().release().releaseDesk(); }),
         800ms, [&tour] { return !boundDesk(tour.demo()).isSubscribed(); }});
    steps.push_back(
        {QString(),
         onControl(home, [](DeskControlVC& control) { control.session().release().connectDesk(); }),
         500ms, [&tour] { return boundDesk(tour.demo()).isSubscribed(); }});
    steps.push_back({QStringLiteral("17-link-loss"),
                     [&tour, &home] {
                         closeWindowsExceptHome(home);
                         boundDesk(tour.demo()).dropLink();
                     },
                     500ms, [] { return promptShown(); }});
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
    ActivityService activity(delegate);
    SampleActivity sample;
    if (parser.isSet(wayland))
        tour.useGrim();
    tour.run(parser.isSet(wayland) ? waylandSteps(tour) : tourSteps(tour, sample, delegate));
    const int status = QApplication::exec();
    AppDelegate::releaseTransport();
    return status;
}
