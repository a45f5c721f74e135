// Where Tab goes on each screen, page and sheet, with real keys on a real X server.
#include "X11AppTest.h"
#include "session/ActivityRecorder.h"
#include "session/CountdownView.h"
#include "session/PresetKeys.h"
#include "session/ShortcutsHeightSetVC.h"
#include "settings/ActivityPage.h"
#include "settings/ColorManageView.h"
#include "settings/DevicePages.h"
#include "settings/SettingsPages.h"
#include "settings/ViewIntelligentControl.h"
#include "settings/ViewReminderInterval.h"
#include "settings/ViewSensitivity.h"
#include "settings/ViewSetting.h"
#include "settings/ViewShortcutKeys.h"
#include "settings/ViewSitStand.h"
#include "settings/ViewSystemSetting.h"
#include "settings/ViewUnit.h"
#include "transport/screens/DeviceManagerRowView.h"
#include "transport/screens/ViewDeviceDetail.h"
#include "transport/screens/ViewDeviceManagement.h"
#include "transport/screens/ViewNameEdit.h"

#include <QDebug>
#include <QPointer>

namespace ostrel::test {
namespace {

using TabOrderX11Test = X11AppTest;

// Where Tab goes on each screen, page and sheet: every control the keyboard can reach comes in
// turn, each below the one before or to its right on the same row. The control screen runs its
// countdown, whose clear button is only drawn while pointed at or focused.
struct TabbedScreen {
    const char* name;
    // Opens the page or sheet over the control screen and returns it.
    std::function<QWidget*(DeskControlVC*)> open;
};

QWidget* pushed(DeskControlVC* control, QWidget* page) {
    control->pushViewControlWithView(page);
    return page;
}

template <class Page> QWidget* page(DeskControlVC* control) {
    return pushed(control, new Page(control));
}

QWidget* openDetail(DeskControlVC* c) {
    auto* devices = qobject_cast<ViewDeviceManagement*>(pushed(c, DevicePages::create(c)));
    if (devices && !devices->pairedRows().isEmpty())
        emit devices->pairedRows().first()->clicked();
    return qobject_cast<ViewDeviceDetail*>(c->topView());
}

const TabbedScreen kTabbedScreens[] = {
    {"ControlScreen", [](DeskControlVC* control) -> QWidget* { return control; }},
    {"Settings", page<ViewSetting>},
    {"SitStand", page<ViewSitStand>},
    {"ReminderInterval", page<ViewReminderInterval>},
    {"SystemSettings", page<ViewSystemSetting>},
    {"Unit", page<ViewUnit>},
    {"ShortcutKeys", page<ViewShortcutKeys>},
    {"HomeAutomation",
     [](DeskControlVC* c) {
         return pushed(c, SettingsPages::instance().create(SettingsPages::Page::HomeAutomation, c));
     }},
    {"IntelligentControl", page<ViewIntelligentControl>},
    {"Sensitivity", page<ViewSensitivity>},
    {"LightStrip",
     [](DeskControlVC* c) { return pushed(c, new ColorManageView(c, Object_LightColor{})); }},
    {"Activity",
     [](DeskControlVC* c) { return pushed(c, new ActivityPage(c, *ActivityRecorder::current())); }},
    {"DeviceManagement", [](DeskControlVC* c) { return pushed(c, DevicePages::create(c)); }},
    {"DeviceDetail", &openDetail},
    {"Rename",
     [](DeskControlVC* c) -> QWidget* {
         if (auto* detail = qobject_cast<ViewDeviceDetail*>(openDetail(c)))
             emit detail->nameRow()->clicked();
         return qobject_cast<ViewNameEdit*>(c->topView());
     }},
    {"PresetsHelpSheet",
     [](DeskControlVC* c) { return windowAfter([c] { c->actionShowHelp(); }); }},
    {"GoToHeightDialog",
     [](DeskControlVC* c) { return windowAfter([c] { c->actionGoToHeight(); }); }},
    {"PresetSaveSheet",
     [](DeskControlVC* c) {
         return windowAfter([c] {
             ShortcutsHeightSetVC::present(c, PresetKeys::presetImageName(0, true),
                                           PresetKeys::presetSaveTip(0), [] {});
         });
     }},
};

// Tab from wherever the focus is until the focus comes round again: the reachable controls in
// Tab order. A list rebuilt meanwhile (the device list, as the scan reports) leaves out rows
// that are gone; the focus stays on the same desk's new row.
QList<QWidget*> tabCycle() {
    QList<QPointer<QWidget>> met;
    for (int presses = 0; presses < 40 && tab(2000); ++presses) {
        QWidget* now = QApplication::focusWidget();
        if (met.contains(now)) {
            met = met.mid(met.indexOf(now));
            break;
        }
        met.append(now);
    }
    QList<QWidget*> live;
    std::copy_if(met.begin(), met.end(), std::back_inserter(live), [](QWidget* w) { return w; });
    return live;
}

QRect placeIn(const QWidget* screen, const QWidget* widget) {
    return {widget->mapToGlobal(QPoint(0, 0)) - screen->mapToGlobal(QPoint(0, 0)), widget->size()};
}

std::string describe(const QWidget* screen, const QList<QWidget*>& order) {
    QString text;
    for (const QWidget* widget : order)
        QDebug(&text) << (widget ? widget->metaObject()->className() : "nothing")
                      << (widget ? placeIn(screen, widget) : QRect()) << "->";
    return text.toStdString();
}

void expectTopToBottom(const QWidget* screen, QList<QWidget*> order) {
    ASSERT_FALSE(order.isEmpty()) << "Tab reaches nothing";
    for (const QWidget* widget : order)
        ASSERT_TRUE(widget && screen->isAncestorOf(widget)) << describe(screen, order);
    const auto first = std::min_element(order.begin(), order.end(), [&](auto* a, auto* b) {
        const QRect ra = placeIn(screen, a);
        const QRect rb = placeIn(screen, b);
        return std::pair(ra.top(), ra.left()) < std::pair(rb.top(), rb.left());
    });
    std::rotate(order.begin(), first, order.end());
    for (qsizetype i = 1; i < order.size(); ++i) {
        const QRect before = placeIn(screen, order[i - 1]);
        const QRect after = placeIn(screen, order[i]);
        const bool below = after.center().y() > before.bottom();
        const bool sameRowRight = after.top() < before.bottom() && after.bottom() > before.top() &&
                                  after.center().x() > before.center().x();
        const bool firstInside = order[i - 1]->isAncestorOf(order[i]); // a list, then its rows
        EXPECT_TRUE(below || sameRowRight || firstInside) << describe(screen, order);
    }
    for (QWidget* widget : screen->findChildren<QWidget*>()) {
        const bool reachable = widget->isVisible() && widget->isEnabled() &&
                               (widget->focusPolicy() & Qt::TabFocus) &&
                               widget->window() == screen->window();
        // The parts of a compound control (a spin box's editor) go with it.
        const bool reached = std::any_of(order.begin(), order.end(), [&](const QWidget* met) {
            return met == widget || met->isAncestorOf(widget) || met->focusProxy() == widget;
        });
        EXPECT_TRUE(!reachable || reached)
            << widget->metaObject()->className() << " cannot be reached with Tab";
    }
}

TEST_F(TabOrderX11Test, TabFollowsEveryScreenPageAndSheetFromTopToBottom) {
    runPaired([&] {
        DeskControlVC* control = this->control();
        // The reminder on, so the control screen shows its countdown.
        static_cast<ViewSitStand*>(page<ViewSitStand>(control))->actionSitStandSwitch();
        control->popViewControl();
        ASSERT_TRUE(waitUntil([&] { return control->countdownView()->isVisible(); }));
        for (const TabbedScreen& entry : kTabbedScreens) {
            SCOPED_TRACE(entry.name);
            focusApp();
            ASSERT_TRUE(
                waitUntil([&] { return QApplication::activeWindow() == control->window(); }));
            QWidget* screen = entry.open(control);
            ASSERT_TRUE(screen && waitUntil([&] { return screen->isVisible(); }));
            expectTopToBottom(screen, tabCycle());
            if (screen->isWindow()) {
                const QPointer<QWidget> shown(screen); // a sheet may go once closed
                key("Escape");
                ASSERT_TRUE(waitUntil([&] { return !shown || !shown->isVisible(); }));
            }
            while (control->pageCount() > 0)
                control->popViewControl();
            // Gone before the next page opens, so Tab can meet nothing of them.
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    });
}

} // namespace
} // namespace ostrel::test
