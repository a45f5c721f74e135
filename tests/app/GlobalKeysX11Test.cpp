// Global hot keys with real keys: the application grabs the shortcuts on a real X server,
// xdotool types them through XTEST as a keyboard would, and the virtual desk says whether it
// moves. A second X client checks which combinations the application holds. What a key does
// once it arrived (toggling, presets, watchdogs) is the session's, tested there.
#include "X11AppTest.h"
#include "protocol/CommandType.h"
#include "session/DQGlobalKeyHelper.h"
#include "session/PresetKeys.h"
#include "settings/ShortcutComboRowView.h"
#include "settings/ShortcutSwitchRowView.h"
#include "settings/ViewShortcutKeys.h"
#include "store/DQDataSessionHelper.h"
#include "widgets/OMAlert.h"
#include "widgets/OMSwitchButton.h"

#include <QPushButton>
#include <X11/keysym.h>
#include <cstdlib>
#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

namespace ostrel::test {
namespace {

// Another application on the same display, trying the keys for itself.
class OtherClient {
public:
    OtherClient() : m_connection(xcb_connect(nullptr, nullptr)) {
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    }
    ~OtherClient() { xcb_disconnect(m_connection); }
    xcb_window_t root() const { return m_root; }

    // Whether the key could be grabbed with exactly these modifiers (no lock keys on).
    bool grab(std::uint16_t modifiers, xcb_keysym_t keysym) {
        xcb_key_symbols_t* symbols = xcb_key_symbols_alloc(m_connection);
        xcb_keycode_t* codes = xcb_key_symbols_get_keycode(symbols, keysym);
        xcb_generic_error_t* error = xcb_request_check(
            m_connection, xcb_grab_key_checked(m_connection, 1, m_root, modifiers, codes[0],
                                               XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        const bool granted = error == nullptr;
        std::free(codes);
        xcb_key_symbols_free(symbols);
        std::free(error);
        return granted;
    }
    void releaseAll() {
        xcb_ungrab_key(m_connection, XCB_GRAB_ANY, m_root, XCB_MOD_MASK_ANY);
        xcb_flush(m_connection);
    }

private:
    xcb_connection_t* m_connection;
    xcb_window_t m_root;
};

constexpr std::uint16_t kShift = XCB_MOD_MASK_SHIFT;

class GlobalKeysX11Test : public X11AppTest {
protected:
    static void storeShortcuts(const char* open) {
        DQDataSessionHelper::userSaveSystemSetting(
            {{QStringLiteral("unit"), "0"}, {QStringLiteral("combinationopen"), open}});
    }

    // A few polls pass and the desk heard no key.
    void expectNoKeyHeard() {
        const int keys = desk->keyFramesReceived();
        EXPECT_TRUE(stillAfterPolls(6));
        EXPECT_EQ(desk->keyFramesReceived(), keys);
    }
};

// Switched off nothing is taken; switched on the keys are, with Caps Lock too; a new combination
// moves the grabs, and quitting frees them.
TEST_F(GlobalKeysX11Test, TheSwitchAndTheCombinationMoveTheGrabsAndQuittingFreesThem) {
    constexpr std::uint16_t kAltSuper = XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
    OtherClient other;
    run(
        [&] {
            storeShortcuts("0");
            ASSERT_NO_FATAL_FAILURE(pairDesk());
            EXPECT_TRUE(other.grab(kShift, XK_Up));
            EXPECT_TRUE(other.grab(kShift, XK_4));
            other.releaseAll();
            key("shift+Up");
            expectNoKeyHeard();

            // Shift, the default, kept when the page asks.
            const OMAlert::Presenter previous = OMAlert::setPresenter(
                [](QWidget*, const OMAlertContent&) { return OMAlert::kFirstButton + 1; });
            ViewShortcutKeys& panel = *new ViewShortcutKeys(control()); // the screen owns it
            panel.switchRow()->switchButton()->click();
            OMAlert::setPresenter(previous);
            for (xcb_keysym_t key : {XK_Up, XK_Down, XK_1, XK_2, XK_3, XK_4})
                EXPECT_FALSE(other.grab(kShift, key)) << "switched on: the keys are taken";
            EXPECT_FALSE(other.grab(kShift | XCB_MOD_MASK_LOCK, XK_4)) << "with Caps Lock on too";

            panel.comboRow()->button(1)->click(); // Alt + Cmd
            EXPECT_TRUE(other.grab(kShift, XK_Up)) << "Shift+Up was let go";
            EXPECT_FALSE(other.grab(kAltSuper, XK_Up));
            other.releaseAll();
            key("shift+Up");
            expectNoKeyHeard();
            key("alt+super+Up");
            EXPECT_TRUE(waitUntil([&] { return desk->isMoving(); }));
            key("alt+super+Up");
            EXPECT_TRUE(waitUntil([&] { return !desk->isMoving(); }));
            key("ctrl+q"); // quit as a user does
        },
        true);
    EXPECT_TRUE(other.grab(kAltSuper, XK_Up)) << "the application quit: the keys are free";
    EXPECT_TRUE(other.grab(kAltSuper, XK_1));
}

// A key another application holds is found out; the others work, also with the focus elsewhere.
TEST_F(GlobalKeysX11Test, HotKeysWorkWithTheFocusElsewhereAndKeysHeldByOthersAreFoundOut) {
    OtherClient other;
    ASSERT_TRUE(other.grab(kShift, XK_3));
    run([&] {
        storeShortcuts("1");
        ASSERT_NO_FATAL_FAILURE(pairDesk());
        // How the page words it is the shortcut page's test.
        EXPECT_EQ(DQGlobalKeyHelper::shareInstance().unavailableKeys(), QList<int>{20});
        // The Sit preset stored the way the control screen stores it.
        const int sitHeight = desk->heightTenths();
        control()->session().presetKeys().actionSetMemoryKeyWithtype(command::kSitKey);
        ASSERT_TRUE(presetSaved(sitHeight));
        key("shift+Up");
        EXPECT_TRUE(waitUntil([&] { return desk->isMoving(); }));
        // The user works in another application meanwhile, on purpose: the desk goes on.
        focusWindow(other.root());
        ASSERT_TRUE(waitUntil([&] { return desk->heightTenths() > sitHeight + 20; }));
        EXPECT_TRUE(desk->isMoving());
        key("shift+Up");
        EXPECT_TRUE(waitUntil([&] { return !desk->isMoving(); }));
        EXPECT_TRUE(stillAfterPolls(4)) << "stays stopped";

        key("shift+1"); // a digit recalls its preset
        EXPECT_TRUE(waitUntil([&] { return desk->isMoving(); }));
        EXPECT_TRUE(waitUntil([&] { return std::abs(desk->heightTenths() - sitHeight) <= 5; }));
    });
}

} // namespace
} // namespace ostrel::test
