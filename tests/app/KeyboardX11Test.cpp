// The control screen and its sheets from the keyboard alone, with real keys on a real X server:
// the tab order, holding Up with Space while the keyboard auto-repeats, what ends such a hold,
// and Escape and Enter on pages and sheets. The virtual desk says whether it moves.
#include "X11AppTest.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "protocol/BluetoothProtocol.h"
#include "session/ActivityRecorder.h"
#include "session/CountdownView.h"
#include "session/GoToHeightDialog.h"
#include "session/HeightSaveHelpVC.h"
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
#include "store/CurrentDeviceStore.h"
#include "transport/screens/DeviceManagerRowView.h"
#include "transport/screens/ViewDeviceDetail.h"
#include "transport/screens/ViewDeviceManagement.h"
#include "transport/screens/ViewNameEdit.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/OMHoverButton.h"
#include "widgets/OMImageButton.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <gtest/gtest.h>

namespace ostrel::test {
namespace {

// Counts the auto-repeated key presses the application receives, so a test knows the keyboard
// really repeated while it held a key.
class RepeatCounter : public QObject {
public:
    RepeatCounter() { qApp->installEventFilter(this); }
    ~RepeatCounter() override { qApp->removeEventFilter(this); }
    int repeats = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->isAutoRepeat() &&
            watched == QApplication::focusWidget())
            ++repeats;
        return false;
    }
};

class KeyboardX11Test : public X11AppTest {
protected:
    static void key(const char* name) { xdotool({QStringLiteral("key"), QLatin1String(name)}); }

    // Tabs through the screen from its start until `target` has the focus; the widgets met on
    // the way, in order.
    QList<QWidget*> tabTo(QWidget* target) {
        QList<QWidget*> met;
        for (int presses = 0; presses < 20 && QApplication::focusWidget() != target; ++presses) {
            QWidget* before = QApplication::focusWidget();
            key("Tab");
            EXPECT_TRUE(waitUntil([&] { return QApplication::focusWidget() != before; }));
            met.append(QApplication::focusWidget());
        }
        return met;
    }

    // The desk moves with a held key, the keyboard repeating it at 30 a second after 150 ms.
    void holdSpaceOnUp() {
        xdotool({QStringLiteral("windowfocus"),
                 QString::number(runner->delegate().modalWindow()->winId())});
        ASSERT_EQ(QProcess::execute(QStringLiteral("xset"), {"r", "on"}), 0);
        ASSERT_EQ(QProcess::execute(QStringLiteral("xset"), {"r", "rate", "150", "30"}), 0);
        tabTo(control()->upButton());
        ASSERT_EQ(QApplication::focusWidget(), control()->upButton());
        xdotool({QStringLiteral("keydown"), QStringLiteral("space")});
        ASSERT_TRUE(waitUntil([&] { return desk->isMoving(); }));
        EXPECT_TRUE(control()->upButton()->isDown()) << "no pressed state while held";
    }

    // Stand set in the record: the screen sends the key of a set preset only. Where the desk
    // then goes is the desk's own memory.
    static void setStand() {
        OMBluetoothModel record = CurrentDeviceStore::load();
        record.memoryHeight = "0,110,0,0";
        CurrentDeviceStore::save(record);
        NotificationCenter::defaultCenter().post(QLatin1String(notifications::kMemoryKeyChange));
    }

    static int standKeys() {
        const Bytes frame = BluetoothProtocol::cmdForTableResponseType(command::kStandKey);
        return frame[3] | frame[4] << 8;
    }

    // The runs of Stand key frames the desk received since `from`: how many polls each answered
    // in a row. A frame that answered no poll fails the test.
    std::vector<int> standRuns(std::size_t from) const {
        std::vector<int> runs;
        int previous = -1;
        for (std::size_t i = from; i < desk->keyFrames().size(); ++i) {
            const VirtualDesk::KeyFrame& key = desk->keyFrames()[i];
            EXPECT_TRUE(key.answeredPoll) << "key " << key.keys << " came unasked";
            if (key.keys == standKeys() && previous != key.keys)
                runs.push_back(0);
            if (key.keys == standKeys())
                ++runs.back();
            previous = key.keys;
        }
        return runs;
    }

    // The desk heard the Stand key since `from`, then another.
    bool standLetGo(std::size_t from) const {
        return !standRuns(from).empty() && desk->keyFrames().back().keys != standKeys();
    }

    bool stoppedWithinPolls(int polls) {
        waitForPolls(polls);
        return !desk->isMoving();
    }
};

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

QWidget* sheet(const std::function<void()>& present) {
    QWidget* const main = QApplication::activeWindow();
    present();
    QWidget* shown = nullptr;
    EXPECT_TRUE(waitUntil([&] {
        shown = QApplication::activeWindow() != main ? QApplication::activeWindow() : nullptr;
        return shown != nullptr;
    }));
    return shown;
}

QWidget* openDetail(DeskControlVC* c) {
    auto* devices = qobject_cast<ViewDeviceManagement*>(pushed(c, DevicePages::create(c)));
    if (devices && !devices->pairedRows().isEmpty())
        emit devices->pairedRows().first()->clicked();
    return qobject_cast<ViewDeviceDetail*>(c->topView());
}

const TabbedScreen kTabbedScreens[] = {
    {"ControlScreen", [](DeskControlVC* control) -> QWidget* { return control; }},
    {"Settings", [](DeskControlVC* c) { return pushed(c, new ViewSetting(c)); }},
    {"SitStand", [](DeskControlVC* c) { return pushed(c, new ViewSitStand(c)); }},
    {"ReminderInterval", [](DeskControlVC* c) { return pushed(c, new ViewReminderInterval(c)); }},
    {"SystemSettings", [](DeskControlVC* c) { return pushed(c, new ViewSystemSetting(c)); }},
    {"Unit", [](DeskControlVC* c) { return pushed(c, new ViewUnit(c)); }},
    {"ShortcutKeys", [](DeskControlVC* c) { return pushed(c, new ViewShortcutKeys(c)); }},
    {"HomeAutomation",
     [](DeskControlVC* c) {
         return pushed(c, SettingsPages::instance().create(SettingsPages::Page::HomeAutomation, c));
     }},
    {"IntelligentControl",
     [](DeskControlVC* c) { return pushed(c, new ViewIntelligentControl(c)); }},
    {"Sensitivity", [](DeskControlVC* c) { return pushed(c, new ViewSensitivity(c)); }},
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
    {"PresetsHelpSheet", [](DeskControlVC* c) { return sheet([c] { c->actionShowHelp(); }); }},
    {"GoToHeightDialog", [](DeskControlVC* c) { return sheet([c] { c->actionGoToHeight(); }); }},
    {"PresetSaveSheet",
     [](DeskControlVC* c) {
         return sheet([c] {
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
    for (int presses = 0; presses < 40; ++presses) {
        QWidget* before = QApplication::focusWidget();
        xdotool({QStringLiteral("key"), QStringLiteral("Tab")});
        if (!waitUntil([&] { return QApplication::focusWidget() != before; }, 2000))
            break;
        QWidget* now = QApplication::focusWidget();
        if (met.contains(now)) {
            met = met.mid(met.indexOf(now));
            break;
        }
        met.append(now);
    }
    QList<QWidget*> live;
    for (const QPointer<QWidget>& widget : met) {
        if (widget)
            live.append(widget);
    }
    return live;
}

QRect placeIn(const QWidget* screen, const QWidget* widget) {
    return {widget->mapToGlobal(QPoint(0, 0)) - screen->mapToGlobal(QPoint(0, 0)), widget->size()};
}

QString describe(const QWidget* screen, const QList<QWidget*>& order) {
    QStringList names;
    for (const QWidget* widget : order) {
        if (!widget) {
            names << QStringLiteral("nothing");
            continue;
        }
        const QRect at = placeIn(screen, widget);
        names << QStringLiteral("%1@%2,%3")
                     .arg(QLatin1String(widget->metaObject()->className()))
                     .arg(at.x())
                     .arg(at.y());
    }
    return names.join(QStringLiteral(" -> "));
}

void expectTopToBottom(const QWidget* screen, QList<QWidget*> order) {
    ASSERT_FALSE(order.isEmpty()) << "Tab reaches nothing";
    for (const QWidget* widget : order)
        ASSERT_TRUE(widget && screen->isAncestorOf(widget))
            << describe(screen, order).toStdString();
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
        EXPECT_TRUE(below || sameRowRight || firstInside) << describe(screen, order).toStdString();
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

TEST_F(KeyboardX11Test, TabFollowsEveryScreenPageAndSheetFromTopToBottom) {
    run([&] {
        ASSERT_NO_FATAL_FAILURE(pairDesk());
        DeskControlVC* control = this->control();
        // The reminder on, so the control screen shows its countdown.
        auto* sitStand = new ViewSitStand(control);
        control->pushViewControlWithView(sitStand);
        sitStand->actionSitStandSwitch();
        control->popViewControl();
        ASSERT_TRUE(waitUntil([&] { return control->countdownView()->isVisible(); }));
        for (const TabbedScreen& entry : kTabbedScreens) {
            SCOPED_TRACE(entry.name);
            xdotool({QStringLiteral("windowfocus"), QString::number(control->window()->winId())});
            ASSERT_TRUE(
                waitUntil([&] { return QApplication::activeWindow() == control->window(); }));
            QWidget* screen = entry.open(control);
            ASSERT_TRUE(screen && waitUntil([&] { return screen->isVisible(); }));
            expectTopToBottom(screen, tabCycle());
            if (screen->isWindow()) {
                const QPointer<QWidget> shown(screen); // a sheet may go once closed
                xdotool({QStringLiteral("key"), QStringLiteral("Escape")});
                ASSERT_TRUE(waitUntil([&] { return !shown || !shown->isVisible(); }));
            }
            while (control->pageCount() > 0)
                control->popViewControl();
            // Gone before the next page opens, so Tab can meet nothing of them.
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    });
}

TEST_F(KeyboardX11Test, SpaceHoldsUpThroughAutoRepeatAndReleasesWithTheKey) {
    run([&] {
        ASSERT_NO_FATAL_FAILURE(pairDesk());
        RepeatCounter counter;
        int stops = 0;
        bool wasMoving = false;
        const auto watch = QObject::connect(desk, &VirtualDesk::keysReceived, [&] {
            if (wasMoving && !desk->isMoving())
                ++stops;
            wasMoving = desk->isMoving();
        });
        ASSERT_NO_FATAL_FAILURE(holdSpaceOnUp());
        const int start = desk->heightTenths();
        waitForPolls(16); // 0.8 s: the keyboard repeats about 20 times
        EXPECT_GT(counter.repeats, 5) << "the keyboard did not repeat: the test proves nothing";
        EXPECT_EQ(stops, 0) << "auto-repeat stopped the desk";
        EXPECT_GT(desk->heightTenths(), start);

        xdotool({QStringLiteral("keyup"), QStringLiteral("space")});
        EXPECT_TRUE(waitUntil([&] { return !desk->isMoving(); }, 500));
        EXPECT_TRUE(stoppedWithinPolls(6)) << "moving again after the release";
        EXPECT_FALSE(control()->upButton()->isDown());
        QObject::disconnect(watch);
    });
}

// A preset is recalled once per press, and at least two polls hear its key: Space on the focused
// button held long enough for the keyboard to repeat (short of a long press), then a 25 ms tap
// of the touchpad.
TEST_F(KeyboardX11Test, APresetKeyPressOrShortClickRecallsOnceForTwoPolls) {
    run([&] {
        ASSERT_NO_FATAL_FAILURE(pairDesk());
        setStand();
        xdotool({QStringLiteral("windowfocus"),
                 QString::number(runner->delegate().modalWindow()->winId())});
        ASSERT_EQ(QProcess::execute(QStringLiteral("xset"), {"r", "rate", "150", "30"}), 0);
        tabTo(control()->presetButton(1));
        RepeatCounter counter;
        std::size_t from = desk->keyFrames().size();
        xdotool({QStringLiteral("keydown"), QStringLiteral("space")});
        EXPECT_TRUE(waitUntil([&] { return counter.repeats >= 3; }, 400)) << "no auto-repeat";
        xdotool({QStringLiteral("keyup"), QStringLiteral("space")});
        EXPECT_TRUE(waitUntil([&] { return standLetGo(from); }));
        waitForPolls(20); // longer than a press takes to be reported
        EXPECT_EQ(standRuns(from).size(), 1u) << "auto-repeat recalled the preset again";
        EXPECT_GE(standRuns(from).front(), 2);

        from = desk->keyFrames().size();
        xdotool(pointAt(control()->presetButton(1))
                << QStringLiteral("mousedown") << QStringLiteral("1") << QStringLiteral("sleep")
                << QStringLiteral("0.025") << QStringLiteral("mouseup") << QStringLiteral("1"));
        ASSERT_TRUE(waitUntil([&] { return standLetGo(from); }));
        EXPECT_GE(standRuns(from).front(), 2);
    });
}

// Escape, a second key and the focus moving on (Tab) each end the hold, although Space is still
// down and repeating; its release later changes nothing.
class EndsKeyHoldTest : public KeyboardX11Test,
                        public ::testing::WithParamInterface<const char*> {};

TEST_P(EndsKeyHoldTest, StopsTheDesk) {
    run([&] {
        ASSERT_NO_FATAL_FAILURE(pairDesk());
        ASSERT_NO_FATAL_FAILURE(holdSpaceOnUp());
        waitForPolls(6);
        key(GetParam());
        EXPECT_TRUE(waitUntil([&] { return !desk->isMoving(); }, 500));
        EXPECT_TRUE(stoppedWithinPolls(8)) << "auto-repeat started the desk again";
        xdotool({QStringLiteral("keyup"), QStringLiteral("space")});
        EXPECT_TRUE(stoppedWithinPolls(4));
    });
}

INSTANTIATE_TEST_SUITE_P(Endings, EndsKeyHoldTest, ::testing::Values("Escape", "a", "Tab"),
                         [](const ::testing::TestParamInfo<const char*>& tested) {
                             return std::string(tested.param) == "a" ? std::string("SecondKey")
                                                                     : std::string(tested.param);
                         });

// Enter on the height asks for one; Enter in the dialog moves the desk there and the dialog
// shows the move; Escape stops it and closes the dialog.
TEST_F(KeyboardX11Test, GoToHeightByKeyboardShowsTheMoveAndEscapeStopsIt) {
    run([&] {
        ASSERT_NO_FATAL_FAILURE(pairDesk());
        tabTo(control()->heightLabel());
        key("Return");
        GoToHeightDialog* dialog = nullptr;
        ASSERT_TRUE(waitUntil([&] {
            dialog = qobject_cast<GoToHeightDialog*>(QApplication::activeWindow());
            return dialog && dialog->isVisible();
        }));
        EXPECT_EQ(dialog->rangeText(), QStringLiteral("Between 23.6 and 47.2 in")); // inches first
        xdotool({QStringLiteral("key"), QStringLiteral("ctrl+a")});
        xdotool({QStringLiteral("type"), QStringLiteral("45")});
        key("Return");
        ASSERT_TRUE(waitUntil([&] { return desk->isMoving() && dialog->showsMoving(); }));
        key("Escape");
        EXPECT_TRUE(waitUntil([&] { return !desk->isMoving(); }, 1500));
        EXPECT_LT(desk->heightTenths(), 1140) << "Escape did not stop the move";
        EXPECT_TRUE(stoppedWithinPolls(6));
    });
}

// Escape leaves a settings page; the help sheet closes with Escape, the save sheet takes Enter
// as its default, Confirm.
TEST_F(KeyboardX11Test, EscapeLeavesPagesAndSheetsAndEnterConfirms) {
    run([&] {
        ASSERT_NO_FATAL_FAILURE(pairDesk());
        emit control()->settingsRequested();
        ASSERT_TRUE(waitUntil([&] { return control()->pageCount() == 1; }));
        key("Escape");
        EXPECT_TRUE(waitUntil([&] { return control()->pageCount() == 0; }));

        key("F1");
        QWidget* help = nullptr;
        ASSERT_TRUE(waitUntil([&] {
            help = qobject_cast<HeightSaveHelpVC*>(QApplication::activeWindow());
            return help != nullptr;
        }));
        key("Escape");
        EXPECT_TRUE(waitUntil([&] { return !help->isVisible(); }));

        // Space held on Sit past the long press opens the save sheet; Enter confirms it and the
        // desk is asked to store its height.
        xdotool({QStringLiteral("windowfocus"),
                 QString::number(runner->delegate().modalWindow()->winId())});
        tabTo(control()->presetButton(0));
        const int height = desk->heightTenths();
        xdotool({QStringLiteral("keydown"), QStringLiteral("space")});
        QWidget* sheet = nullptr;
        ASSERT_TRUE(waitUntil([&] {
            sheet = QApplication::activeWindow() != runner->delegate().modalWindow()
                        ? QApplication::activeWindow()
                        : nullptr;
            return sheet != nullptr;
        }));
        xdotool({QStringLiteral("keyup"), QStringLiteral("space")});
        key("Return");
        EXPECT_TRUE(waitUntil([&] { return !sheet->isVisible(); }));
        EXPECT_TRUE(waitUntil([&] {
            return CurrentDeviceStore::load().memoryHeight.value_or("").starts_with(
                std::to_string((height + 5) / 10) + ",");
        }));
    });
}

} // namespace
} // namespace ostrel::test
