#include "store/CurrentDeviceStore.h"

#include "StoreFixture.h"
#include "core/ManualScheduler.h"
#include "store/FileManager.h"
#include "store/OMPlistManager.h"

using namespace std::chrono_literals;

namespace ostrel {
namespace {

class CurrentDeviceStoreTest : public StoreFixture {
protected:
    void SetUp() override {
        StoreFixture::SetUp();
        m_previous = Scheduler::setInstance(&clock);
    }
    void TearDown() override {
        Scheduler::setInstance(m_previous);
        StoreFixture::TearDown();
    }
    static QVariantMap current() {
        return FileManager::readDictionaryFileName(CurrentDeviceStore::kFileName)
            .value_or(QVariantMap{});
    }

    ManualScheduler clock; // starts 2024-01-01 09:00

private:
    Scheduler* m_previous = nullptr;
};

TEST_F(CurrentDeviceStoreTest, PairingABoundDeskAgainKeepsItsPresetsAndRefreshesItsTime) {
    CurrentDeviceStore::bindDevice(QStringLiteral("QWJ-1"), QStringLiteral("id-1"));
    QVariantMap bound = OMPlistManager::getDeviceInfoWithBlueToothName(QStringLiteral("QWJ-1"));
    bound.insert(QStringLiteral("memoryHeight"), QStringLiteral("70,110,0,0"));
    OMPlistManager::saveDeviceInfoWithBlueToothName(QStringLiteral("QWJ-1"), bound);

    clock.advance(2min);
    CurrentDeviceStore::bindDevice(QStringLiteral("QWJ-1"), QStringLiteral("id-1"));

    ASSERT_EQ(OMPlistManager::getBindDevice().size(), 1);
    const QVariantMap stored = OMPlistManager::getDeviceInfoWithBlueToothName("QWJ-1");
    const QVariantMap now = current();
    for (const QVariantMap& record : {stored, now}) {
        EXPECT_EQ(record.value("memoryHeight").toString(), "70,110,0,0");
        EXPECT_EQ(record.value("lastConnectionTime").toString(), "2024-01-01 09:02");
        EXPECT_EQ(record.value("createTime").toString(), "2024-01-01 09:00:00");
    }
}

TEST_F(CurrentDeviceStoreTest, PresetsParseOnlyFromFourParts) {
    using P = CurrentDeviceStore::Presets;
    EXPECT_EQ(CurrentDeviceStore::parsePresets("70,110,0,95"), (P{70, 110, 0, 95}));
    EXPECT_EQ(CurrentDeviceStore::parsePresets("70.6, 110cm,x,-1"), (P{70, 110, 0, -1}));
    EXPECT_FALSE(CurrentDeviceStore::parsePresets("70,110,0"));
    EXPECT_FALSE(CurrentDeviceStore::parsePresets(""));
    EXPECT_FALSE(CurrentDeviceStore::parsePresets(std::nullopt));
}

} // namespace
} // namespace ostrel
