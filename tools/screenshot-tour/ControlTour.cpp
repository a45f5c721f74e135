#include "ControlTour.h"

#include "SampleActivity.h"
#include "app/AppDelegate.h"
#include "app/DemoDesks.h"
#include "app/StatusMenu.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "session/DeskRelease.h"
#include "session/DeskSession.h"
#include "session/GoToHeightDialog.h"
#include "session/PresetButtonRow.h"
#include "session/StandingProgressView.h"
#include "settings/ColorManageView.h"
#include "settings/ColorWellView.h"
#include "settings/ViewSetting.h"
#include "settings/ViewShortcutKeys.h"
#include "settings/ViewSystemSetting.h"
#include "sim/VirtualCentral.h"
#include "sim/VirtualDesk.h"
#include "store/CurrentDeviceStore.h"
#include "transport/screens/DeskSearchRowView.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/OMImageButton.h"
#include "widgets/OMScreenRouter.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QTest>

using namespace std::chrono_literals;

namespace ostrel {

namespace {

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

} // namespace

ControlTour::ControlTour(const TourNavigator& navigator, AppDelegate& delegate,
                         SampleActivity& sample)
    : m_nav(navigator), m_delegate(delegate), m_sample(sample) {}

std::deque<Step> ControlTour::searchAndControl() const {
    const TourNavigator& nav = m_nav;
    auto show = [](const char* screen) {
        return [screen] { OMScreenRouter::instance().show(QLatin1String(screen)); };
    };
    return {
        {QStringLiteral("1-search"),
         {},
         500ms,
         [&nav] { return nav.home().findChildren<DeskSearchRowView*>().size() >= 2; }},
        {QStringLiteral("2-desk-type"), show(screens::kDeskType), 800ms},
        {QStringLiteral("3-no-bluetooth"),
         [&nav, show] {
             nav.tour().demo().central()->setPowered(false);
             show(screens::kNoBluetooth)();
         },
         800ms},
        {QString(),
         [&nav, show] {
             nav.tour().demo().central()->setPowered(true);
             show(screens::kBluetoothSearch)();
         },
         500ms, [&nav] { return !nav.home().findChildren<DeskSearchRowView*>().isEmpty(); }},
        {QString(), [&nav] { nav.clickFirstDesk(); }, 1500ms,
         [&nav] { return nav.boundDesk().isSubscribed(); }},
        // The height shows once the desk moves: hold Up for a moment.
        {QString(),
         [&nav] {
             nav.logDesk();
             if (DeskControlVC* control = nav.control())
                 control->touchDwon(control->upButton());
         },
         1500ms},
        {QStringLiteral("4-desk-control"),
         [&nav] {
             if (DeskControlVC* control = nav.control())
                 control->touchUp(control->upButton());
         },
         2500ms},
        {QStringLiteral("5-save-sheet"),
         [&nav] {
             nav.logDesk();
             if (DeskControlVC* control = nav.control())
                 control->presetRow()->longHoverPress(control->presetButton(0));
         },
         800ms},
    };
}

std::deque<Step> ControlTour::activity() const {
    const TourNavigator& nav = m_nav;
    return {
        {QStringLiteral("30-activity-fresh"), nav.onControl([&nav](DeskControlVC& control) {
             nav.closeWindowsExceptHome();
             emit control.standingProgress()->clicked();
         }),
         1000ms},
        {QStringLiteral("31-activity-days"),
         [&nav, &sample = m_sample] {
             nav.closePages();
             sample.show();
         },
         1200ms},
        {QString(), [&nav] { nav.closeWindowsExceptHome(); }, 300ms},
    };
}

std::deque<Step> ControlTour::keyboardAndTray() const {
    const TourNavigator& nav = m_nav;
    return {
        {QStringLiteral("40-focus-ring"), nav.onControl([&nav](DeskControlVC& control) {
             nav.closeWindowsExceptHome();
             nav.closePages();
             nav.home().activateWindow();
             control.upButton()->setFocus(Qt::TabFocusReason);
         }),
         800ms},
        {QStringLiteral("41-pressed-up"), nav.onControl([](DeskControlVC& control) {
             QTest::keyPress(control.upButton(), Qt::Key_Space);
         }),
         600ms},
        {QString(), nav.onControl([](DeskControlVC& control) {
             QTest::keyRelease(control.upButton(), Qt::Key_Space);
         }),
         800ms},
        {QStringLiteral("42-toast"), nav.onControl([](DeskControlVC& control) {
             control.presetRow()->touchHoverDwon(control.presetButton(3));
             control.presetRow()->touchHoverUp(control.presetButton(3));
         }),
         300ms},
        {QStringLiteral("43-go-to-height"),
         nav.onControl([](DeskControlVC& control) { control.actionGoToHeight(); }), 1500ms},
        {QStringLiteral("44-go-to-height-moving"), onGoToHeight([](GoToHeightDialog& dialog) {
             dialog.heightField()->setValue(dialog.heightField()->maximum() - 5);
             dialog.accept();
         }),
         1200ms},
        {QString(), onGoToHeight([](GoToHeightDialog& dialog) { dialog.reject(); }), 800ms},
        {QString(), nav.onControl([&nav](DeskControlVC& control) {
             control.lightStripButton()->click();
             nav.onPage<ColorManageView>([](ColorManageView& page) { page.actionLightOpen(); })();
         }),
         500ms},
        {QStringLiteral("45-light-strip-mark"),
         [&nav] {
             if (auto* well = nav.home().findChild<ColorWellView*>(); well && well->isVisible())
                 QTest::mouseClick(well, Qt::LeftButton, {},
                                   QPoint(well->width() / 3, well->height() / 3));
         },
         800ms},
        {QStringLiteral("46-tray-menu"),
         [&nav, &delegate = m_delegate] {
             nav.closePages();
             // Two presets set, so that the menu offers them.
             OMBluetoothModel record = CurrentDeviceStore::load();
             record.memoryHeight = "72,110,0,0";
             CurrentDeviceStore::save(record);
             NotificationCenter::defaultCenter().post(
                 QLatin1String(notifications::kMemoryKeyChange));
             delegate.menu()->popup(nav.home().mapToGlobal(QPoint(16, 48)));
         },
         800ms},
        {QString(), [&delegate = m_delegate] { delegate.menu()->close(); }, 300ms},
        {QStringLiteral("47-about"), [&delegate = m_delegate] { delegate.showAbout(); }, 800ms},
        {QString(), [&nav] { nav.closeWindowsExceptHome(); }, 300ms},
    };
}

std::deque<Step> ControlTour::faults() const {
    const TourNavigator& nav = m_nav;
    // The desk is known only once the tour has bound one.
    const auto onDesk = [&nav](std::function<void(VirtualDesk&)> action) {
        return [&nav, action] { action(nav.boundDesk()); };
    };
    const auto errorShown = [&nav] {
        DeskControlVC* control = nav.control();
        return control && control->errorWindow() && control->errorWindow()->isVisible();
    };
    return {
        {QString(), onDesk([&nav](VirtualDesk& desk) {
             nav.closeWindowsExceptHome();
             desk.injectError(30);
         }),
         500ms, errorShown},
        {QStringLiteral("16-error"), [&nav] { nav.home().hide(); }, 500ms},
        {QStringLiteral("16a-status-error"),
         [&nav] {
             nav.home().show();
             nav.hideErrorWindow();
         },
         600ms},
        {QString(), onDesk([](VirtualDesk& desk) {
             desk.injectError(0);
             desk.setChildLock(true);
         }),
         500ms, errorShown},
        {QStringLiteral("16b-status-child-lock"), [&nav] { nav.hideErrorWindow(); }, 600ms},
        {QString(), onDesk([](VirtualDesk& desk) {
             desk.setChildLock(false);
             desk.setResetNeeded(true);
         }),
         500ms, errorShown},
        {QStringLiteral("16c-status-reset"), [&nav] { nav.hideErrorWindow(); }, 600ms},
        {QString(), onDesk([](VirtualDesk& desk) { desk.setResetNeeded(false); }), 300ms},
    };
}

std::deque<Step> ControlTour::releaseAndLinkLoss() const {
    const TourNavigator& nav = m_nav;
    // The desk let go of for the phone app, then connected again.
    return {
        {QStringLiteral("16d-released"),
         nav.onControl([](DeskControlVC& control) { control.session().release().releaseDesk(); }),
         800ms, [&nav] { return !nav.boundDesk().isSubscribed(); }},
        {QString(),
         nav.onControl([](DeskControlVC& control) { control.session().release().connectDesk(); }),
         500ms, [&nav] { return nav.boundDesk().isSubscribed(); }},
        {QStringLiteral("17-link-loss"),
         [&nav] {
             nav.closeWindowsExceptHome();
             nav.boundDesk().dropLink();
         },
         500ms, [] { return TourNavigator::promptShown(); }},
    };
}

std::deque<Step> ControlTour::wayland() const {
    const TourNavigator& nav = m_nav;
    return {
        {QString(),
         {},
         300ms,
         [&nav] { return !nav.home().findChildren<DeskSearchRowView*>().isEmpty(); }},
        {QString(), [&nav] { nav.clickFirstDesk(); }, 1500ms,
         [&nav] { return nav.boundDesk().isSubscribed(); }},
        {QString(),
         nav.onControl([](DeskControlVC& control) { control.touchDwon(control.upButton()); }),
         1500ms},
        {QStringLiteral("wayland-1-desk-control"),
         nav.onControl([](DeskControlVC& control) { control.touchUp(control.upButton()); }),
         2500ms},
        {QString(), nav.openSettingsMenu(), 500ms},
        {QString(),
         nav.onPage<ViewSetting>([](ViewSetting& menu) { menu.actionPushToSysSetting(); }), 500ms},
        {QStringLiteral("wayland-2-shortcut-keys"),
         nav.onPage<ViewSystemSetting>(
             [](ViewSystemSetting& page) { page.actionSelectShortcut(); }),
         800ms, [&nav] { return nav.topPage<ViewShortcutKeys>() != nullptr; }},
    };
}

} // namespace ostrel
