#pragma once

#include "platform/Platform.h"
#include "platform/Presence.h"
#include "protocol/BluetoothProtocol.h"
#include "session/ActivityFeed.h"
#include "session/ActivityRecorder.h"
#include "session/DeskControlVC.h"
#include "session/DeskLink.h"
#include "session/DeskSession.h"
#include "session/OMTimeManager.h"
#include "session/PresetKeys.h"
#include "session/ShortcutsHeightSetVC.h"
#include "store/ActivityStore.h"
#include "store/CurrentDeskModel.h"
#include "store/CurrentDeviceStore.h"
#include "store/DQDataSessionHelper.h"
#include "store/OMPlistManager.h"
#include "store/Object_SystemSetting.h"
#include "store/RecordDictionary.h"
#include "support/ShellTestSupport.h"
#include "widgets/SJHUD.h"

#include <QTemporaryDir>
#include <QWidget>
#include <utility>

namespace ostrel::test {

// A standing-time record in a file of its own, fed by whichever control screen shows.
struct RecordedActivity {
    QTemporaryDir folder;
    ActivityStore store{folder.filePath(QStringLiteral("activity.sqlite"))};
    ActivityRecorder recorder{store};
    ActivityFeed feed{recorder};
};

// The user at the computer or away, as the test says.
class ManualPresence : public Presence {
public:
    bool isPresent() const override { return m_present; }
    void setAwayAfter(Duration) override {}
    void setPresent(bool present) {
        if (std::exchange(m_present, present) != present)
            emit presentChanged(present);
    }

private:
    bool m_present = true;
};

// A bound virtual desk, the store in a private folder, all in virtual time. The desk is linked
// as desk search leaves it: connected, frames flowing to the classifier, the record written to
// the bound list and the current-device file.
class SessionTest : public ShellTest {
protected:
    static inline const QString kDeskName = QString::fromStdString(VirtualDeskConfig{}.name);

    void SetUp() override {
        ShellTest::SetUp();
        CurrentDeskModel::setName(QStringLiteral("D5"));
        setUnit("0");
    }

    void TearDown() override {
        control.reset();
        searchFacade.reset();
        ShortcutsHeightSetVC::setPresenter(nullptr);
        counter().stop();
        counter().setTime(0);
        counter().setPaused(false);
        counter().setType(0);
        counter().setTotal(0);
        ShellTest::TearDown();
    }

    static OMTimeManager& counter() { return OMTimeManager::sharedInstance(); }

    // A height report from the desk, as the classifier passes it on.
    void report(int height) {
        BluetoothResultHandle::sharedInstance().bluetoothResultHandle_HeightChange(height);
        scheduler.runDue();
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

    // Advances virtual time in poll-sized steps until a move to a height ends, and a second more.
    void finishMove() {
        for (int step = 0; step < 600 && session().goToHeight().isMoving(); ++step)
            advance(50ms);
        advance(1s);
    }

    // The command types the desk's polls were answered with, from its key frame `from` on.
    static std::vector<int> answersSince(const VirtualDesk& desk, std::size_t from) {
        std::vector<int> types;
        const auto& frames = desk.keyFrames();
        for (auto frame = frames.begin() + std::ptrdiff_t(from); frame != frames.end(); ++frame)
            types.push_back(typeOf(frame->keys));
        return types;
    }
    static int typeOf(int keys) {
        if (keys == VirtualDesk::kTargetCommand)
            return command::kTargetHeight;
        for (int type : {0, 1, 2, 9, 10, 11, 12, 13}) {
            const Bytes frame = BluetoothProtocol::cmdForTableResponseType(type);
            if ((frame[3] | frame[4] << 8) == keys)
                return type;
        }
        return -1;
    }

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
    // A field of the desk's record as both the current-device file and the bound list hold it,
    // or "differ".
    static std::string inBothStores(const char* key) {
        const QString name = QString::fromLatin1(key);
        const QString current = toPropertyForm(CurrentDeviceStore::load()).value(name).toString();
        const QString bound =
            OMPlistManager::getDeviceInfoWithBlueToothName(kDeskName).value(name).toString();
        return current == bound ? current.toStdString() : "differ";
    }

    PeripheralPtr peripheral;
    std::unique_ptr<RBBluetoothManager> searchFacade;
    std::unique_ptr<DeskControlVC> control;
    ManualPresence presence;
    PlatformOverride<Presence> presenceOverride{presence};
};

} // namespace ostrel::test
