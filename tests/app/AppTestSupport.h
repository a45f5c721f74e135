#pragma once

#include "TransportTestSupport.h"
#include "app/AppDelegate.h"
#include "app/OMBaseModalWindow.h"
#include "app/SystemServices.h"
#include "store/DQDataCatchHelper.h"
#include "widgets/OMAlert.h"
#include "widgets/OMScreenRouter.h"

#include <QDir>
#include <QLabel>
#include <vector>

namespace ostrel::test {

// Records what the shell asks of the hot-key registry and the notification helper.
struct RecordingServices : SystemServices {
    void addDeskGlobalHotKeyWithCombineKeyType(int type) override { hotKeyTypes.push_back(type); }
    void removeDeskGlobalHotKey() override { ++hotKeyRemovals; }
    void openNotification() override { notifications.push_back(true); }
    void closeNotification() override { notifications.push_back(false); }
    void removeAllDeliveredNotifications() override { ++deliveredRemovals; }

    std::vector<int> hotKeyTypes;
    int hotKeyRemovals = 0;
    std::vector<bool> notifications;
    int deliveredRemovals = 0;
};

// The shell over a virtual radio in virtual time, with an empty data folder, stand-in screens
// named after their router names, and alerts answered by `alertAnswer` and recorded.
class AppTest : public TransportTest {
protected:
    void SetUp() override {
        TransportTest::SetUp();
        QDir(DQDataCatchHelper::getDocPath()).removeRecursively();
        QDir(DQDataCatchHelper::getLibCatchesPath()).removeRecursively();
        QDir().mkpath(DQDataCatchHelper::getDocPath());
        m_previousServices = SystemServices::setInstance(&services);
        for (const char* name : {screens::kBluetoothSearch, screens::kNoBluetooth})
            OMScreenRouter::instance().registerScreen(QLatin1String(name), [name] {
                auto* screen = new QLabel(QLatin1String(name));
                screen->setObjectName(QLatin1String(name));
                return screen;
            });
        OMAlert::setPresenter([this](QWidget*, const OMAlertContent& content) {
            alerts.push_back(content);
            return alertAnswer;
        });
        delegate = std::make_unique<AppDelegate>();
    }

    void TearDown() override {
        delegate.reset();
        OMAlert::setPresenter({});
        OMScreenRouter::instance().clear();
        SystemServices::setInstance(m_previousServices);
        TransportTest::TearDown();
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
    std::vector<OMAlertContent> alerts;
    int alertAnswer = OMAlert::kFirstButton;
    std::unique_ptr<AppDelegate> delegate;

private:
    SystemServices* m_previousServices = nullptr;
};

} // namespace ostrel::test
