#pragma once

#include "TransportTestSupport.h"
#include "session/DeskControlVC.h"
#include "session/DeskLink.h"
#include "session/DeskSession.h"
#include "session/OMTimeManager.h"
#include "session/PresetKeys.h"
#include "session/ShortcutsHeightSetVC.h"
#include "store/CurrentDeskModel.h"
#include "store/CurrentDeviceStore.h"
#include "store/DQDataSessionHelper.h"
#include "store/OMPlistManager.h"
#include "store/Object_SystemSetting.h"
#include "store/RecordDictionary.h"
#include "widgets/OMAlert.h"
#include "widgets/OMScreenRouter.h"
#include "widgets/SJHUD.h"

#include <QDir>
#include <QStandardPaths>
#include <QWidget>

namespace ostrel::test {

// A bound virtual desk, the store in a private folder, alerts and screen changes recorded, all
// in virtual time. The desk is linked as desk search leaves it: connected, frames flowing to
// the classifier, the record written to the bound list and the current-device file.
class SessionTest : public TransportTest {
protected:
    static inline const QString kDeskName = QString::fromStdString(VirtualDeskConfig{}.name);

    void SetUp() override {
        TransportTest::SetUp();
        QDir store(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
        store.removeRecursively();
        ASSERT_TRUE(QDir().mkpath(store.path()));
        CurrentDeskModel::setName(QStringLiteral("D5"));
        setUnit("0");

        OMAlert::setPresenter([this](QWidget*, const OMAlertContent& content) {
            alerts.push_back(content);
            return alertAnswer;
        });
        OMScreenRouter& router = OMScreenRouter::instance();
        for (const char* name : {screens::kBluetoothSearch, screens::kNoBluetooth})
            router.registerScreen(QString::fromLatin1(name), [this, name] {
                routedTo.push_back(QString::fromLatin1(name));
                return new QWidget;
            });
        router.setHost([this](QWidget* screen) { hosted.emplace_back(screen); });
    }

    void TearDown() override {
        control.reset();
        hosted.clear();
        searchFacade.reset();
        OMScreenRouter::instance().clear();
        OMAlert::setPresenter(nullptr);
        ShortcutsHeightSetVC::setPresenter(nullptr);
        OMTimeManager::sharedInstance().stop();
        OMTimeManager::sharedInstance().setTime(0);
        TransportTest::TearDown();
    }

    static void setUnit(const char* unit) {
        Object_SystemSetting setting;
        setting.unit = unit;
        DQDataSessionHelper::userSaveSystemSetting(toPropertyForm(setting));
    }

    // Links the desk as desk search does, through a facade of its own and without subscribing,
    // and stores it as bound and current with the given presets.
    VirtualDesk& bindDesk(VirtualDeskConfig config = {}, const char* presets = "0,0,0,0") {
        VirtualDesk& desk = addDesk(std::move(config));
        peripheral = discover(desk);
        searchFacade = std::make_unique<RBBluetoothManager>();
        searchFacade->connectDeviceWithPeripheral(peripheral, {});
        advance(200ms);
        EXPECT_TRUE(facade().isConnect());
        storeRecord(presets, peripheral->identifierString());
        return desk;
    }

    static void storeRecord(const char* presets, const QString& identifier = {}) {
        OMBluetoothModel record = CurrentDeviceStore::freshRecord(kDeskName, identifier);
        record.memoryHeight = presets;
        OMPlistManager::saveBindDeviceWithDevice(toPropertyForm(record));
        CurrentDeviceStore::writeCurrent(record);
    }

    // The control screen as the search screen opens it, shown and given time for a few polls.
    DeskControlVC& openControl() {
        control = std::make_unique<DeskControlVC>();
        control->resize(420, 640);
        control->show();
        advance(300ms);
        return *control;
    }

    DeskSession& session() { return control->session(); }

    QString toast() const {
        // A dismissed toast lingers hidden until deleted.
        for (const SJHUD* toast : control->findChildren<SJHUD*>()) {
            if (!toast->isHidden())
                return toast->text();
        }
        return {};
    }

    static std::optional<std::string> storedPresets() {
        return CurrentDeviceStore::load().memoryHeight;
    }
    std::optional<std::string> boundPresets() const {
        const QVariant stored = OMPlistManager::getDeviceInfoWithBlueToothName(kDeskName).value(
            QStringLiteral("memoryHeight"));
        return stored.isValid() ? std::optional(stored.toString().toStdString()) : std::nullopt;
    }

    PeripheralPtr peripheral;
    std::unique_ptr<RBBluetoothManager> searchFacade;
    std::unique_ptr<DeskControlVC> control;
    std::vector<OMAlertContent> alerts;
    int alertAnswer = OMAlert::kFirstButton;
    std::vector<QString> routedTo;
    std::vector<std::unique_ptr<QWidget>> hosted;
};

} // namespace ostrel::test
