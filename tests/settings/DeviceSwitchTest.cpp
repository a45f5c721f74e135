#include "SettingsTestSupport.h"
#include "settings/DevicePages.h"
#include "settings/ViewSetting.h"
#include "transport/screens/DeviceManagerRowView.h"
#include "transport/screens/ViewDeviceDetail.h"
#include "transport/screens/ViewDeviceManagement.h"
#include "transport/screens/ViewNameEdit.h"

#include <QLineEdit>
#include <QTest>
#include <algorithm>

namespace ostrel::test {
namespace {

const QString kOtherName = QStringLiteral("QWJ-0002");

// Two bound desks: the session's, linked, and another. The device pages open
// from the settings menu over the running session.
class DeviceSwitchTest : public SettingsTest {
protected:
    void SetUp() override {
        SettingsTest::SetUp();
        SettingsPages::instance().registerPage(SettingsPages::Page::Device, &DevicePages::create);
        first = &bindDesk();
        other = &addOther();
    }

    VirtualDesk& addOther() {
        VirtualDesk& desk = addDesk({.name = kOtherName.toStdString(), .startHeight = 900});
        OMPlistManager::saveBindDeviceWithDevice(toPropertyForm(
            CurrentDeviceStore::freshRecord(kOtherName, central->identifierOf(&desk))));
        return desk;
    }

    // Gear, menu row "Device", and a second of scanning.
    ViewDeviceManagement* openDevices() {
        openControlWithSettings();
        clickGear();
        click(top<ViewSetting>()->row(1));
        advance(1000ms);
        return top<ViewDeviceManagement>();
    }

    DeviceManagerRowView* pairedRow(ViewDeviceManagement* page, const QString& name) {
        for (DeviceManagerRowView* row : page->pairedRows())
            if (row->record().value(QStringLiteral("bluetoothName")) == name)
                return row;
        return nullptr;
    }

    // A bound desk's detail page, from the device list (opened now unless given).
    void openDetail(const QString& name, ViewDeviceManagement* page = nullptr) {
        if (!page)
            page = openDevices();
        ASSERT_NE(page, nullptr);
        DeviceManagerRowView* row = pairedRow(page, name);
        ASSERT_NE(row, nullptr) << name.toStdString();
        click(row);
        detail = top<ViewDeviceDetail>();
        ASSERT_NE(detail, nullptr);
    }

    static QStringList boundNames() {
        QStringList names;
        for (const QVariant& entry : OMPlistManager::getBindDevice())
            names.append(entry.toMap().value(QStringLiteral("bluetoothName")).toString());
        return names;
    }

    VirtualDesk* first = nullptr;
    VirtualDesk* other = nullptr;
    ViewDeviceDetail* detail = nullptr;
    const int& deskChanges = countPosts(notifications::kGlobeBlueToothIsConnect);
};

TEST_F(DeviceSwitchTest, OnlineMarksFollowTheScanAndTheLinkedDeskCountsAsOnline) {
    other->setPowered(false);
    addDesk({.name = "QWJ-0003"});

    ViewDeviceManagement* page = openDevices();
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(page->title(), "Device management");
    EXPECT_EQ(page->sectionText(), "Devices");
    EXPECT_TRUE(page->isRefreshRotating());
    // The linked desk no longer advertises, yet it is online.
    ASSERT_EQ(page->pairedRows().size(), 2);
    EXPECT_EQ(pairedRow(page, kDeskName)->markText(), "Connected");
    EXPECT_TRUE(pairedRow(page, kDeskName)->isOnLine());
    EXPECT_FALSE(pairedRow(page, kOtherName)->isOnLine());
    EXPECT_EQ(pairedRow(page, kOtherName)->markText(), "Offline");
    ASSERT_EQ(page->unPairedRows().size(), 1);
    EXPECT_EQ(page->unPairedRows()[0]->title(), "QWJ-0003");
    EXPECT_EQ(page->unPairedRows()[0]->record().value("isOnLine"), "1");

    advance(30s);
    EXPECT_FALSE(page->isRefreshRotating());
    EXPECT_FALSE(pairedRow(page, kOtherName)->isOnLine());

    other->setPowered(true);
    page->actionRefresh();
    advance(1000ms);
    EXPECT_TRUE(pairedRow(page, kOtherName)->isOnLine());
    // A refresh starts a fresh list: nothing is listed twice.
    EXPECT_EQ(page->pairedRows().size(), 2);
    EXPECT_EQ(page->unPairedRows().size(), 1);
}

// The old desk stops hearing answers and the new one moves on Up. What a desk moving at the
// switch hears is DeskLetGoTest's.
TEST_F(DeviceSwitchTest, ChangingDeviceMovesTheSessionToTheOtherDesk) {
    ASSERT_NO_FATAL_FAILURE(openDetail(kOtherName));
    ASSERT_TRUE(detail->changeButton()->isEnabled());

    detail->changeButton()->click();
    EXPECT_EQ(toast(), "Connecting");
    EXPECT_FALSE(CurrentDeviceStore::load().bluetoothName.has_value());
    advance(500ms);

    EXPECT_EQ(toast(), "Connected successfully");
    EXPECT_EQ(deskChanges, 1);
    EXPECT_TRUE(alerts.empty()); // the old desk's loss was expected: no break tip
    EXPECT_EQ(CurrentDeviceStore::load().bluetoothName, kOtherName.toStdString());
    EXPECT_EQ(facade().currentPeripheral()->name(), kOtherName);
    EXPECT_FALSE(first->isSubscribed());
    EXPECT_TRUE(other->isSubscribed());
    advance(1000ms);
    EXPECT_EQ(other->heightTenths(), 900);
    EXPECT_FALSE(detail->changeButton()->isEnabled()); // it is the current desk now

    const int firstHeight = first->heightTenths();
    session().holdKey(command::kUpKey);
    advance(1000ms);
    session().releaseKey();
    advance(300ms);
    EXPECT_GT(other->heightTenths(), 920);
    EXPECT_EQ(first->heightTenths(), firstHeight);
    EXPECT_GT(session().currentHeight(), 920.0f); // the control screen shows the new desk

    // The switch is over: losing the new desk is a lost link like any other.
    other->dropLink();
    advance(300ms);
    EXPECT_EQ(alerts.size(), 1u);
    EXPECT_NE(toast(), "Connection failed");
}

// The session waits for the switch: closing the pages meanwhile must not leave it without a desk.
TEST_F(DeviceSwitchTest, LeavingThePagesDuringASwitchStillCompletesIt) {
    ASSERT_NO_FATAL_FAILURE(openDetail(kOtherName));
    detail->changeButton()->click();
    for (int page = 0; page < 2; ++page)
        qobject_cast<DevicePage*>(control->topView())->backButton()->click();
    goBack();
    ASSERT_EQ(control->pageCount(), 0);
    advance(500ms);
    EXPECT_EQ(deskChanges, 1);
    EXPECT_TRUE(other->isSubscribed());
    EXPECT_EQ(CurrentDeviceStore::load().bluetoothName, kOtherName.toStdString());
    EXPECT_TRUE(alerts.empty());
}

// Switched off between the scan and the click: the attempt times out, the user is told, and the
// session, which no longer has a desk, asks to go back to search. Nothing bound is lost.
TEST_F(DeviceSwitchTest, ADeskSwitchedOffAfterTheScanFailsClearlyAndLosesNoRecord) {
    ASSERT_NO_FATAL_FAILURE(openDetail(kOtherName));
    other->setPowered(false);
    alertAnswer = OMAlert::kFirstButton + 1; // leave the break tip unanswered for now
    detail->changeButton()->click();
    advance(29s);
    EXPECT_EQ(toast(), "Connecting");
    EXPECT_TRUE(alerts.empty());
    advance(2s);
    EXPECT_EQ(toast(), "Connection failed");
    EXPECT_EQ(deskChanges, 0);
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(alerts[0].informativeText, "The Bluetooth connection of the device is disconnected");
    EXPECT_EQ(boundNames(), QStringList({kDeskName, kOtherName}));
}

TEST_F(DeviceSwitchTest, DeletingTheCurrentDeskEndsTheSessionAndForgetsIt) {
    ASSERT_NO_FATAL_FAILURE(openDetail(kDeskName));

    alertAnswer = OMAlert::kFirstButton + 1; // "Cancel"
    detail->deleteButton()->click();
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(QStringList({alerts[0].message, alerts[0].informativeText}) + alerts[0].buttons,
              QStringList({"Prompt", "Delete current desk?", "Confirm", "Cancel"}));
    EXPECT_EQ(boundNames(), QStringList({kDeskName, kOtherName}));

    alertAnswer = OMAlert::kFirstButton;
    detail->deleteButton()->click();
    EXPECT_EQ(boundNames(), QStringList({kOtherName}));
    EXPECT_FALSE(central->isScanning());
    advance(50ms);
    EXPECT_TRUE(routed.isEmpty()); // the link goes 0.1 s after the scan stops
    advance(100ms);
    EXPECT_EQ(routed, QStringList({QString::fromLatin1(screens::kBluetoothSearch)}));
    EXPECT_FALSE(facade().isConnect());
    advance(200ms);
    EXPECT_FALSE(first->isSubscribed());
}

// Whether the desk moves on a held key or by itself, the session lets its link go only once it
// has heard no key; a desk on its own move first hears the key of its own direction. Nothing
// reaches it unasked, and nothing ever sends it the other way.
struct LetGoCase {
    const char* name;
    bool ownMove;    // a move to a height rather than Up held on the screen
    bool deleteDesk; // the current desk deleted rather than another desk chosen
};

class DeskLetGoTest : public DeviceSwitchTest, public ::testing::WithParamInterface<LetGoCase> {};

TEST_P(DeskLetGoTest, TheDeskHearsNoKeyBeforeItsLinkGoes) {
    constexpr int kUpBit = 0x01, kDownBit = 0x02;
    ASSERT_NO_FATAL_FAILURE(openDetail(GetParam().deleteDesk ? kDeskName : kOtherName));
    if (GetParam().ownMove) {
        ASSERT_EQ(session().moveTo(1100), GoToHeight::Refusal::None);
    } else {
        session().holdKey(command::kUpKey);
    }
    advance(1s);
    ASSERT_TRUE(first->isMoving());

    const std::size_t from = first->keyFrames().size();
    (GetParam().deleteDesk ? detail->deleteButton() : detail->changeButton())->click();
    advance(1500ms);
    EXPECT_FALSE(first->isSubscribed());
    std::vector<int> keys;
    for (auto frame = first->keyFrames().begin() + std::ptrdiff_t(from);
         frame != first->keyFrames().end(); ++frame) {
        EXPECT_TRUE(frame->answeredPoll);
        keys.push_back(frame->keys);
    }
    ASSERT_FALSE(keys.empty()) << "the link went before the desk heard a released key";
    EXPECT_EQ(keys.back(), 0);
    EXPECT_EQ(std::count(keys.begin(), keys.end(), kDownBit), 0);
    // The first answer after whatever moved the desk so far.
    const int moving = GetParam().ownMove ? VirtualDesk::kTargetCommand : kUpBit;
    const auto after =
        std::find_if(keys.begin(), keys.end(), [moving](int key) { return key != moving; });
    ASSERT_NE(after, keys.end());
    EXPECT_EQ(*after, GetParam().ownMove ? kUpBit : 0);
    const int height = first->heightTenths();
    advance(2s);
    EXPECT_EQ(first->heightTenths(), height);
}

INSTANTIATE_TEST_SUITE_P(SwitchAndDelete, DeskLetGoTest,
                         ::testing::Values(LetGoCase{"SwitchDuringHeldKey", false, false},
                                           LetGoCase{"SwitchDuringMoveToHeight", true, false},
                                           LetGoCase{"DeleteDuringHeldKey", false, true},
                                           LetGoCase{"DeleteDuringMoveToHeight", true, true}),
                         [](const auto& testParam) { return std::string(testParam.param.name); });

TEST_F(DeviceSwitchTest, DeletingAnotherDeskKeepsTheSessionAndRescans) {
    ViewDeviceManagement* page = openDevices();
    advance(30s);
    ASSERT_NO_FATAL_FAILURE(openDetail(kOtherName, page));
    detail->deleteButton()->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    EXPECT_EQ(control->topView(), page);
    EXPECT_EQ(boundNames(), QStringList({kDeskName}));
    EXPECT_TRUE(page->isRefreshRotating());
    advance(1000ms);
    // Still in range, it is now listed as a desk nearby.
    ASSERT_EQ(page->unPairedRows().size(), 1);
    EXPECT_EQ(page->unPairedRows()[0]->title(), kOtherName);
    EXPECT_TRUE(routed.isEmpty());
    EXPECT_TRUE(first->isSubscribed());
    EXPECT_TRUE(facade().isConnect());
}

TEST_F(DeviceSwitchTest, RenamingPersistsInBothStoresAndABlankNameChangesNothing) {
    ASSERT_NO_FATAL_FAILURE(openDetail(kDeskName));
    click(detail->nameRow());
    ViewNameEdit* edit = top<ViewNameEdit>();
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(edit->nameField()->text(), kDeskName);

    edit->nameField()->setText(QStringLiteral("   "));
    EXPECT_FALSE(edit->confirmButton()->isEnabled()) << "a blank name looks confirmable";
    EXPECT_FALSE(edit->confirmButton()->toolTip().isEmpty()) << "greyed without a reason";
    QTest::keyClick(edit->nameField(), Qt::Key_Return);
    EXPECT_EQ(control->topView(), edit);
    EXPECT_EQ(CurrentDeviceStore::load().deviceName, kDeskName.toStdString());

    edit->nameField()->clear();
    QTest::keyClicks(edit->nameField(), QStringLiteral("Standing desk by the big window"));
    EXPECT_TRUE(edit->confirmButton()->isEnabled());
    EXPECT_TRUE(edit->confirmButton()->toolTip().isEmpty());
    click(edit->confirmButton());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const std::string renamed = "Standing desk by the big"; // cut at the longest name
    ASSERT_EQ(renamed.size(), std::size_t(ViewNameEdit::kMaxNameLength));
    EXPECT_EQ(control->topView(), detail);
    EXPECT_EQ(detail->values().first().toStdString(), renamed);
    EXPECT_EQ(inBothStores("deviceName"), renamed);
}

} // namespace
} // namespace ostrel::test
