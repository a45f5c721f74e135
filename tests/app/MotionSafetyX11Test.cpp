// Motion safety with real input: the application runs on a virtual desk on a real X server,
// xdotool presses the mouse and keys as a user would, and the desk itself says when it stops.
// A held key must end within 150 ms of whatever takes the release away (250 ms for a focus
// change, which the X11 platform reports about 100 ms late), and quitting must let the desk
// hear the released key before the link goes.
#include "X11AppTest.h"
#include "platform/LogindSleep.h"
#include "platform/Platform.h"
#include "protocol/BluetoothResultHandle.h"
#include "session/ShortcutsHeightSetVC.h"
#include "support/LogindStandin.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/OMAlert.h"
#include "widgets/OMHoverButton.h"

#include <QElapsedTimer>
#include <QPushButton>
#include <csignal>
#include <cstdio>
#include <optional>
#include <xcb/xcb.h>

namespace ostrel::test {
namespace {

constexpr qint64 kStopLimitMs = 150;
constexpr qint64 kFocusStopLimitMs = 250;

class MotionSafetyX11Test : public X11AppTest {
protected:
    void SetUp() override {
        X11AppTest::SetUp();
        clock.start();
        // The desk acts on a key frame as it arrives: a stop is timed to that moment.
        QObject::connect(desk, &VirtualDesk::keysReceived, [this] { sample(); });
    }

    void sample() {
        if (watching && !stoppedAtMs && !desk->isMoving()) {
            stoppedAtMs = clock.elapsed();
            stoppedWhileLinked = desk->isSubscribed();
        }
        // The window's menu runs an event loop of its own until it closes: close it once the
        // desk has stopped, from inside that loop.
        if (QWidget* menu = QApplication::activePopupWidget(); menu && stoppedAtMs)
            QTimer::singleShot(0, menu, &QWidget::close);
    }

    void holdUp() {
        mouse("mousedown", control()->upButton());
        ASSERT_TRUE(waitUntil([&] { return desk->isMoving(); }));
    }

    // From now on, the first moment the desk stands still is recorded.
    void markEvent() {
        stoppedAtMs.reset();
        eventAtMs = clock.elapsed();
        watching = true;
    }

    std::optional<qint64> stopLatency() const {
        return stoppedAtMs ? std::optional(*stoppedAtMs - eventAtMs) : std::nullopt;
    }

    void expectStoppedWithin(qint64 limitMs) {
        EXPECT_TRUE(waitUntil([&] { return stoppedAtMs.has_value(); }, 2000));
        ASSERT_TRUE(stopLatency().has_value()) << "the desk kept moving";
        std::printf("desk stopped %lld ms after the event\n",
                    static_cast<long long>(*stopLatency()));
        EXPECT_LE(*stopLatency(), limitMs);
        EXPECT_TRUE(stoppedWhileLinked) << "stopped by losing the link, not by the released key";
    }

    // The desk stays still for a few more polls, the mouse button up again.
    void expectStaysStopped() {
        mouse("mouseup");
        EXPECT_TRUE(stillAfterPolls(4));
        EXPECT_EQ(BluetoothResultHandle::sharedInstance().currentCommandType(), 0);
    }

    QElapsedTimer clock;
    bool watching = false;
    qint64 eventAtMs = 0;
    std::optional<qint64> stoppedAtMs;
    bool stoppedWhileLinked = false;
};

// The root window of the display the application runs on.
WId rootWindow() {
    auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    return xcb_setup_roots_iterator(xcb_get_setup(x11->connection())).data->root;
}

void sendSignal(int number) {
    ASSERT_EQ(QProcess::execute(QStringLiteral("kill"),
                                {QStringLiteral("-%1").arg(number),
                                 QString::number(QCoreApplication::applicationPid())}),
              0);
}

// What takes the release away while Up is held: a right click (the window's menu), the window's
// own keys, hide (Ctrl+H), minimise (Ctrl+M) and the presets help sheet (F1), which is
// window-modal; the focus going to another application (the root window takes it); and quitting
// from the keyboard and the signals that end a session, where the desk must have heard the
// released key before the link is let go.
struct Interruption {
    const char* name;
    std::function<void()> interrupt;
    bool quits = false;
    qint64 limitMs = kStopLimitMs;
};

class InterruptedHoldTest : public MotionSafetyX11Test,
                            public ::testing::WithParamInterface<Interruption> {};

TEST_P(InterruptedHoldTest, StopsTheDeskBeforeTheLinkGoes) {
    const Interruption& interruption = GetParam();
    runPaired(
        [&] {
            ASSERT_NO_FATAL_FAILURE(holdUp());
            markEvent();
            interruption.interrupt();
            if (!interruption.quits) {
                expectStoppedWithin(interruption.limitMs);
                expectStaysStopped();
            }
        },
        interruption.quits);
    if (interruption.quits) {
        expectStoppedWithin(interruption.limitMs);
        mouse("mouseup");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Interruptions, InterruptedHoldTest,
    // The click runs on while the application goes on answering the desk, as with a user's.
    ::testing::Values(Interruption{"RightClick",
                                   [] {
                                       QProcess::startDetached("xdotool", {"click", "3"});
                                   }},
                      Interruption{"Hide", [] { key("ctrl+h"); }},
                      Interruption{"Minimise", [] { key("ctrl+m"); }},
                      Interruption{"HelpSheet", [] { key("F1"); }},
                      Interruption{"FocusLeavesTheApplication", [] { focusWindow(rootWindow()); },
                                   false, kFocusStopLimitMs},
                      Interruption{"QuitKey", [] { key("ctrl+q"); }, true},
                      Interruption{"SIGTERM", [] { sendSignal(SIGTERM); }, true},
                      Interruption{"SIGINT", [] { sendSignal(SIGINT); }, true},
                      Interruption{"SIGHUP", [] { sendSignal(SIGHUP); }, true}),
    kRowName);

// A long press opens the save sheet while the mouse is down; the click after it must recall.
TEST_F(MotionSafetyX11Test, TheClickAfterTheSaveSheetRecallsThePreset) {
    runPaired([&] {
        OMHoverButton* sit = control()->presetButton(0);
        const int presetHeight = desk->heightTenths();
        auto longPressSit = [&](bool confirm) {
            mouse("mousedown", sit);
            ShortcutsHeightSetVC* sheet = nullptr;
            ASSERT_TRUE(waitUntil([&] {
                sheet = sit->window()->findChild<ShortcutsHeightSetVC*>();
                return sheet && sheet->isVisible();
            }));
            mouse("mouseup");
            mouse("click", confirm ? sheet->confirmButton() : sheet->cancelButton());
            ASSERT_TRUE(waitUntil([&] { return !sheet->isVisible(); }));
        };

        longPressSit(true);
        ASSERT_TRUE(presetSaved(presetHeight));
        ASSERT_NO_FATAL_FAILURE(holdUp());
        ASSERT_TRUE(waitUntil([&] { return desk->heightTenths() > presetHeight + 30; }));
        mouse("mouseup");
        ASSERT_TRUE(waitUntil([&] { return !desk->isMoving(); }));

        longPressSit(false);
        // A click as long as a person's, four polls of the desk: the preset key is held for
        // the click's length from 0.7 s after the press, and a press of 0.5 s would be long.
        const int keysBefore = desk->keyFramesReceived();
        mouse("mousedown", sit);
        waitForPolls(4);
        mouse("mouseup");
        EXPECT_TRUE(waitUntil([&] { return desk->keyFramesReceived() > keysBefore; }, 3000))
            << "the click sent no preset key";
        EXPECT_TRUE(waitUntil([&] { return std::abs(desk->heightTenths() - presetHeight) <= 5; }));
    });
}

// Sleep with Up held: logind on a private bus announces it; the desk must stop on a poll answered
// with no key while still linked, the link goes through BlueZ, and only then is the delay lock
// closed. No alert, and after wake the desk is linked again with nothing held.
class SleepWhileHoldingTest : public MotionSafetyX11Test {
protected:
    void SetUp() override {
        MotionSafetyX11Test::SetUp();
        OMAlert::setPresenter([this](QWidget*, const OMAlertContent& content) {
            alerts << content.message;
            return OMAlert::kFirstButton + 1;
        });
    }
    void TearDown() override {
        runner.reset(); // the session lets go of its lock through the installed adapter
        OMAlert::setPresenter(nullptr);
    }

    qint64 after(qint64 startMs) const { return clock.elapsed() - startMs; }

    LogindStandin logind{clock};
    LogindSleep systemSleep{logind.client()};
    PlatformOverride<SystemSleep> sleepOverride{systemSleep};
    QStringList alerts;
};

TEST_F(SleepWhileHoldingTest, StopsOnNoKeyThenDisconnectsThenLetsTheSystemSleep) {
    runPaired([&] {
        ASSERT_TRUE(waitUntil([&] { return systemSleep.isHeld(); }))
            << "no lock taken while linked";
        ASSERT_NO_FATAL_FAILURE(holdUp());
        markEvent();
        logind.announceSleep(true);
        expectStoppedWithin(kStopLimitMs);
        ASSERT_TRUE(waitUntil([&] { return !desk->isSubscribed(); }, 3000)) << "still linked";
        const qint64 disconnectedMs = after(eventAtMs);
        ASSERT_TRUE(waitUntil([&] { return logind.releasedAtMs().has_value(); }, 3000));
        EXPECT_GE(*logind.releasedAtMs(), *stoppedAtMs) << "the lock went before the desk stopped";
        std::printf("sleep: desk stopped after %lld ms, link gone after %lld ms, lock closed "
                    "after %lld ms\n",
                    static_cast<long long>(*stopLatency()), static_cast<long long>(disconnectedMs),
                    static_cast<long long>(*logind.releasedAtMs() - eventAtMs));
        EXPECT_LE(disconnectedMs, 3000);

        mouse("mouseup");
        const qint64 wokeAtMs = clock.elapsed();
        logind.announceSleep(false);
        ASSERT_TRUE(waitUntil([&] { return desk->isSubscribed() && systemSleep.isHeld(); }));
        std::printf("wake: linked again after %lld ms\n", static_cast<long long>(after(wokeAtMs)));
        EXPECT_EQ(logind.inhibitions(), 2) << "the lock is taken again after wake";
        EXPECT_TRUE(stillAfterPolls(4)) << "a movement resumed after wake";
        EXPECT_TRUE(control() != nullptr) << "the session's screen ended";
        EXPECT_TRUE(alerts.isEmpty()) << alerts.join(' ').toStdString();
    });
}

} // namespace
} // namespace ostrel::test
