#pragma once

#include "app/AppDelegate.h"
#include "app/OMBaseModalWindow.h"
#include "app/SystemServices.h"
#include "app/TrayPresence.h"
#include "platform/DesktopNotifications.h"
#include "platform/Platform.h"
#include "store/DQDataCatchHelper.h"
#include "support/ShellTestSupport.h"

#include <vector>

namespace ostrel::test {

// Records what the shell asks of the hot-key registry, the notification helper and the
// desktop's notifications.
struct RecordingServices : DesktopNotifications, SystemServices {
    void addDeskGlobalHotKeyWithCombineKeyType(int type) override { hotKeyTypes.push_back(type); }
    void removeDeskGlobalHotKey() override { ++hotKeyRemovals; }
    void openNotification() override { notifications.push_back(true); }
    void closeNotification() override { notifications.push_back(false); }
    void notify(const Request&) override {}
    void removeAllDelivered() override { ++deliveredRemovals; }

    std::vector<int> hotKeyTypes;
    int hotKeyRemovals = 0;
    std::vector<bool> notifications;
    int deliveredRemovals = 0;
};

// The shell over a virtual radio in virtual time, with an empty data and cache folder and
// stand-in screens named after their router names.
class AppTest : public ShellTest {
protected:
    void SetUp() override {
        ShellTest::SetUp();
        QDir(DQDataCatchHelper::getLibCatchesPath()).removeRecursively();
        m_previousServices = SystemServices::setInstance(&services);
        delegate = std::make_unique<AppDelegate>();
        auto presence = std::make_unique<TrayPresence>(true);
        tray = presence.get();
        delegate->setTrayPresence(std::move(presence));
    }

    void TearDown() override {
        delegate.reset();
        SystemServices::setInstance(m_previousServices);
        ShellTest::TearDown();
    }

    // Launches and lets the radio settle.
    void launch() {
        delegate->applicationDidFinishLaunching();
        advance(AppDelegate::kBluetoothSettlePause);
    }

    QString screenName() const {
        QWidget* content = delegate->modalWindow()->content();
        return content ? content->objectName() : QString();
    }

    RecordingServices services;
    PlatformOverride<DesktopNotifications> notifications{services};
    std::unique_ptr<AppDelegate> delegate;
    TrayPresence* tray = nullptr; // owned by the delegate; a tray unless a test takes it away

private:
    SystemServices* m_previousServices = nullptr;
};

} // namespace ostrel::test
